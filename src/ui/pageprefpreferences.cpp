#include "ui/pageprefpreferences.h"

#include <QRegularExpressionValidator>

#include "core/cles.h"
#include "core/textes.h"
#include "core/valeurs.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

bool DemandeAvantSuppression(const CFenlorApp& app) {
  const std::string valeur = app.Reglages.LitIni(Texte(SecPreferences), Texte(CleDemanderSupprimer));
  return EstVide(valeur) || Parametres::IsOui(valeur);
}

CPagePrefPreferences::CPagePrefPreferences(ContexteUi& contexte)
    : CZNPage(contexte, u"Préférences"_s, "PagePrefPreferences") {
  Formulaire f{*this};
  f.Groupe(u"Saisie"_s)
      .Case(m_virgule, u"&Virgule automatique pour les valeurs numériques"_s, "virgule")
      .Case(m_entree, u"La touche &Entrée change de zone"_s, "entree")
      .Case(m_demander, u"&Demander avant de supprimer"_s, "demander")
      .Astuce(u"Sans question, ce qui est supprimé revient par Ctrl+Z."_s);
  f.Groupe(u"Numéros de compte"_s)
      .Case(m_zeros, u"&Zéros significatifs"_s, "zeros")
      .Champ(u"Nombre de &chiffres : "_s, m_chiffres, "chiffres")
      .Limite(2)
      .Largeur(4);
  f.Groupe(u"Impression"_s)
      .Case(m_brouillon, u"Qualité &brouillon"_s, "brouillon")
      .Case(m_previsualisation, u"&Prévisualisation"_s, "previsualisation")
      .Champ(u"Style des é&tats :"_s, m_style, "style");
  for (const TexteFixe& mot : {MotClassique, MotSoignee}) m_style.Ajoute(Texte(mot));
  f.Groupe(u"Session"_s)
      .Case(m_finDeSession, u"Proposer la &sauvegarde en quittant l'application"_s, "finDeSession")
      .FinGroupe()
      .Pousse();
  m_chiffres.setValidator(new QRegularExpressionValidator(QRegularExpression(u"[0-9]|10"_s), &m_chiffres));
  m_chiffres.setEnabled(false);
  connect(&m_zeros, &QCheckBox::toggled, &m_chiffres, &QWidget::setEnabled);
}

bool CPagePrefPreferences::Charge() {
  const Parametres& reglages = App().Reglages;
  const auto lit = [&](const TexteFixe& cle) { return reglages.LitIni(Texte(SecPreferences), Texte(cle)); };
  m_virgule.setChecked(reglages.IsVirgule());
  m_entree.setChecked(reglages.IsEntree());
  m_demander.setChecked(DemandeAvantSuppression(App()));
  m_zeros.setChecked(Parametres::IsOui(lit(CleZerosSignificatifs)));
  m_chiffres.Pose(lit(CleNombreChiffres));
  m_brouillon.setChecked(reglages.IsBrouillon());
  m_previsualisation.setChecked(reglages.IsPrevisualisation());
  m_style.setCurrentIndex(reglages.IsPapierSoigne() ? 1 : 0);
  m_finDeSession.setChecked(reglages.IsFinDeSession());
  return true;
}

bool CPagePrefPreferences::Enregistre() {
  std::vector<Profil::Changement> changements;
  const auto ecrit = [&](const TexteFixe& cle, const std::string& valeur) {
    changements.push_back({Texte(SecPreferences), Texte(cle), valeur});
  };
  const auto coche = [&](const TexteFixe& cle, const QCheckBox& boite) {
    ecrit(cle, Texte(boite.isChecked() ? MotOui : MotNon));
  };
  coche(CleVirgule, m_virgule);
  coche(CleEntree, m_entree);
  coche(CleDemanderSupprimer, m_demander);
  coche(CleZerosSignificatifs, m_zeros);
  ecrit(CleNombreChiffres, m_chiffres.Valeur());
  coche(CleBrouillon, m_brouillon);
  coche(ClePrevisualisation, m_previsualisation);
  if ((m_style.currentIndex() == 1) != App().Reglages.IsPapierSoigne())
    ecrit(CleStyleEtats, Texte(m_style.currentIndex() == 1 ? MotSoignee : MotClassique));
  coche(CleFinDeSession, m_finDeSession);
  return App().Magasin.Reglages().Ecrit(changements) || DitEchecReglages(App());
}

}  // namespace fenlor
