#include "app/reprises.h"

#include <algorithm>

#include "app/mainframe.h"
#include "assets/textes.h"
#include "auto/textes.h"
#include "banque/textes.h"
#include "forms/master/textes.h"
#include "journal/textes.h"
#include "master/textes.h"
#include "ui/pageprefpreferences.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int DureeOffre = 8000;        ///< ms
constexpr qsizetype LongueurMenu = 60;  ///< characters of a name in the menu

void Offre(CMainFrame& cadre, const QString& texte, const QString& libelle, Sens sens) {
  Proposition proposition;
  proposition.texte = texte;
  proposition.duree = DureeOffre;
  const u64 version = cadre.App().Magasin.QVVersionReprises();
  // What came in between is not what the bar spoke of.
  proposition.choix.push_back({libelle, [&cadre, sens, version] {
                                 if (cadre.App().Magasin.QVVersionReprises() == version && !cadre.Derriere())
                                   CommandeReprise(cadre, sens);
                               }});
  cadre.Offre(proposition);
}

QString Majuscule(QString texte) {
  if (!texte.isEmpty()) texte[0] = texte[0].toUpper();
  return texte;
}

}  // namespace

QString TexteReprise(CFenlorApp& app, const Commande& commande) {
  const QString mot = QString::fromUtf8(commande.texte);
  QString nom = Q(NomReprise(app, commande.quand == Quand::ARetablir ? Sens::Retablir : Sens::Annuler));
  if (nom.isEmpty()) return mot;
  if (nom.size() > LongueurMenu) nom = nom.first(LongueurMenu - 1) + u'…';
  return mot + u" : "_s + nom.replace(u'&', u"&&"_s);
}

void CommandeReprise(CMainFrame& cadre, Sens sens) {
  CFenlorApp& app = cadre.App();
  const QString nom = Q(NomReprise(app, sens));
  const bool faite = app.Dit(Reprend(app, sens));
  cadre.Actualise();
  if (!faite) return;
  if (sens == Sens::Annuler)
    Offre(cadre, u"Annulé : %1"_s.arg(nom), u"Rétab&lir"_s, Sens::Retablir);
  else
    Offre(cadre, u"Rétabli : %1"_s.arg(nom), u"Ann&uler"_s, Sens::Annuler);
}

bool SansDemander(CFenlorApp& app, unsigned question) {
  // No question that says more than what is deleted is among them.
  static constexpr unsigned reprenables[] = {
      QuestionSuppression,       QuestionSupprimeCompte,  QuestionSupprimeTresorerie,
      QuestionSupprimeRubrique,  QuestionSupprimeLibelle, QuestionSupprimeAuto,
      QuestionSupprimeOperation, QuestionSupprimeCession, QuestionSupprimeImmobilisation};
  return std::ranges::find(reprenables, question) != std::end(reprenables) && !app.PathExercice.empty() &&
         !DemandeAvantSuppression(app);
}

void OffreReprise::Passe(CFenlorApp& app) { m_version = app.Magasin.QVVersionReprises(); }

void OffreReprise::Regarde(CMainFrame& cadre) {
  CFenlorApp& app = cadre.App();
  const u64 avant = m_version;
  Passe(app);
  // Behind a unit of the user nothing can be done again.
  if (m_version == avant || !NomReprise(app, Sens::Retablir).empty() || !EstGardee(app, Sens::Annuler))
    return;
  const std::string nom = NomReprise(app, Sens::Annuler);
  if (nom.starts_with(MotSuppression())) Offre(cadre, Majuscule(Q(nom)), u"Ann&uler"_s, Sens::Annuler);
}

}  // namespace fenlor
