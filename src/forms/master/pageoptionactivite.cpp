#include "forms/master/pageoptionactivite.h"

#include <QPushButton>

#include "forms/master/dialogtauxeuro.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionActivite::CPageOptionActivite(ContexteUi& contexte)
    : PageOptions(contexte, u"Activité"_s, "PageOptionActivite"),
      m_taux(new QPushButton(u"&Taux de conversion à l'EURO..."_s)) {
  m_identification.PoseLignes(4);
  m_taux->setAutoDefault(false);
  Champs()
      .Champ(u"&Identification :"_s, m_identification, "identification")
      .Champ(u"&SIRET :"_s, m_siret, "siret")
      .Suite(u"Code A&PE :"_s, m_ape, "ape")
      .Champ(u"Nature de l'a&ctivité :"_s, m_activite, "activite")
      .Champ(u"Date de dé&but :"_s, m_debut, "debut")
      .Groupe(u"Exercice en cours"_s)
      .Champ(u"Exercice : "_s, m_exercice, "exercice")
      .Suite(u"Clôture : "_s, m_cloture, "cloture")
      .Champ(u"Période du : "_s, m_du, "du")
      .Suite(u"au : "_s, m_au, "au")
      .Champ(u"Assujetti à la T.V.A. :"_s, m_tva, "tva")
      .Inactif()
      .Champ(u"Tenu en EURO :"_s, m_euro, "euro")
      .Inactif()
      .Champ(u"Afficher les Deux &Monnaies : "_s, m_double, "afficherDouble")
      .FinGroupe()
      .Rangee({m_taux})
      .Pousse();
  m_taux->setObjectName(u"tauxEuro"_s);
  connect(m_taux, &QPushButton::clicked, this, [this] { CDialogTauxEuro(Contexte(), window()).Execute(); });
}

bool CPageOptionActivite::Charge() {
  // A failure shows when the options are saved; until then the defaults are but missing.
  CompleteLignes2035(App());
  Montre(LitActivite(App()));
  const ExerciceEnCours exercice = LitExerciceEnCours(App());
  m_exercice.Pose(exercice.annee);
  m_cloture.Pose(exercice.cloture);
  m_du.Pose(StrDate(exercice.debut));
  m_au.Pose(StrDate(exercice.fin));
  m_tva.setChecked(exercice.tva);
  m_euro.setChecked(exercice.euro);
  m_debut.PoseReference(exercice.debut);
  const std::string dernier = App().Magasin.GetLastExercice();
  if (CompareSansCasse(dernier, App().Magasin.NomExercice()) != 0)
    m_double.setText(u"(exercice %1)"_s.arg(Q(dernier)));
  return true;
}

bool CPageOptionActivite::Enregistre() {
  const bool avant = App().AfficherDouble;
  if (!EcritActivite(App(), Saisie())) return DitEchecReglages(App());
  if (App().AfficherDouble != avant) Contexte().Cadre.Note(ReglageMonnaies);
  return true;
}

}  // namespace fenlor
