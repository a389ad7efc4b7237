#include "forms/master/pageoptionactivite.h"

#include <QPushButton>

#include "forms/master/dialogtauxeuro.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionActivite::CPageOptionActivite(ContexteUi& contexte)
    : CZNPage(contexte, u"Activité"_s, "PageOptionActivite"),
      m_taux(new QPushButton(u"&Taux de conversion à l'EURO..."_s)) {
  m_identification.PoseLignes(4);
  m_taux->setAutoDefault(false);
  Formulaire{*this}
      .Champ(u"&Identification :"_s, m_identification, "identification")
      .Limite(TailleIdentification)
      .Champ(u"&SIRET :"_s, m_siret, "siret")
      .Limite(TailleSiret)
      .Suite(u"Code A&PE :"_s, m_ape, "ape")
      .Limite(TailleApe)
      .Champ(u"Nature de l'a&ctivité :"_s, m_activite, "activite")
      .Limite(TailleIdentification)
      .Champ(u"Date de dé&but :"_s, m_debut, "debut")
      .Limite(TailleDateDebut)
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
  const OptionsActivite options = LitActivite(App());
  m_identification.Pose(options.identification);
  m_siret.Pose(options.siret);
  m_ape.Pose(options.ape);
  m_activite.Pose(options.activite);
  m_debut.setText(Q(options.debut));
  m_double.setChecked(options.afficherDouble);

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

OptionsActivite CPageOptionActivite::Valeur() const {
  return {m_identification.Valeur(), m_siret.Valeur(),       m_ape.Valeur(),
          m_activite.Valeur(),       De1252(m_debut.text()), m_double.isChecked()};
}

bool CPageOptionActivite::Enregistre() {
  const bool avant = App().AfficherDouble;
  if (!EcritActivite(App(), Valeur())) return DitEchecReglages(App());
  if (App().AfficherDouble != avant) Contexte().Cadre.Note(ReglageMonnaies);
  return true;
}

}  // namespace fenlor
