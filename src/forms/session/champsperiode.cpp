#include "forms/session/champsperiode.h"

#include <algorithm>

#include "ui/czndialog.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

Date Valeur(const std::vector<LignePeriode>& lignes, int rang) {
  return rang >= 0 && rang < static_cast<int>(lignes.size()) ? lignes[static_cast<std::size_t>(rang)].valeur
                                                             : 0;
}

void Remplit(EditeurChoix& liste, const std::vector<LignePeriode>& lignes) {
  liste.clear();
  for (const LignePeriode& ligne : lignes) liste.Ajoute(ligne.texte);
  liste.setCurrentIndex(-1);
}

}  // namespace

ChampsPeriode::ChampsPeriode(CFenlorApp& app, FinSemaine fin) : m_app(app), m_finSemaine(fin) {
  m_listeSemaines.setAccessibleName(u"Semaine"_s);
  m_listeMois.setAccessibleName(u"Mois"_s);
}

void ChampsPeriode::Declare(Formulaire& formulaire) {
  const auto bouton = [&](Periode periode, const QString& texte, const char* nom) -> Formulaire& {
    return formulaire.Case(Bouton(periode), texte, nom).SurChangement([this, periode] { Choisit(periode); });
  };
  formulaire.Groupe(u"Période"_s, "groupePeriode");
  bouton(Periode::Aujourdhui, u"Au&jourd'hui"_s, "aujourdhui");
  bouton(Periode::Semaine, u"La &semaine :"_s, "semaine")
      .ACote(m_listeSemaines, "listeSemaines")
      .SurChangement([this] { Choisit(Periode::Semaine); });
  bouton(Periode::Mois, u"Le &mois :"_s, "mois").ACote(m_listeMois, "listeMois").SurChangement([this] {
    Choisit(Periode::Mois);
  });
  bouton(Periode::Exercice, u"L'&exercice"_s, "exercice");
  bouton(Periode::Libre, u"La &période :"_s, "periode")
      .Suite(u"du : "_s, m_du, "du")
      .Limite(10)
      .Suite(u"au :"_s, m_au, "au")
      .Limite(10)
      .FinGroupe();
  int largeur = 0;
  for (const QRadioButton& radio : m_boutons) largeur = std::max(largeur, radio.sizeHint().width());
  for (const Periode periode : {Periode::Semaine, Periode::Mois, Periode::Libre}) {
    Bouton(periode).setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    Bouton(periode).setMinimumWidth(largeur);
  }
}

void ChampsPeriode::Ouvre() {
  m_cadre = LitCadrePeriode(m_app);
  m_semaines = SemainesPeriode(m_cadre, m_finSemaine);
  m_mois = MoisPeriode(m_cadre);
  Remplit(m_listeSemaines, m_semaines);
  Remplit(m_listeMois, m_mois);
  m_du.PoseReference(m_cadre.debut);
  m_au.PoseReference(m_cadre.debut);
  Bouton(Periode::Aujourdhui).setEnabled(m_cadre.Contient());
  Applique(Periode::Semaine);
  Applique(Periode::Mois);
  const Periode retenue = PeriodeRetenue(m_app, m_cadre);
  Bouton(retenue).setChecked(true);
  Applique(retenue);
}

Periode ChampsPeriode::Choix() const {
  const auto coche =
      std::find_if(m_boutons.begin(), m_boutons.end(), [](const QRadioButton& b) { return b.isChecked(); });
  return coche == m_boutons.end() ? Periode::Exercice : static_cast<Periode>(coche - m_boutons.begin());
}

void ChampsPeriode::Applique(Periode periode) {
  if (periode == Periode::Semaine && m_listeSemaines.currentIndex() < 0)
    m_listeSemaines.setCurrentIndex(SemaineProposee(m_cadre, m_semaines));
  if (periode == Periode::Mois && m_listeMois.currentIndex() < 0)
    m_listeMois.setCurrentIndex(MoisPropose(m_cadre));
  m_listeSemaines.setEnabled(periode == Periode::Semaine);
  m_listeMois.setEnabled(periode == Periode::Mois);
  m_du.setEnabled(periode == Periode::Libre);
  m_au.setEnabled(periode == Periode::Libre);
  const Date jour = periode == Periode::Semaine ? Valeur(m_semaines, m_listeSemaines.currentIndex())
                                                : Valeur(m_mois, m_listeMois.currentIndex());
  const BornesPeriode bornes = BornesDe(m_cadre, periode, jour, m_finSemaine);
  m_du.Pose(bornes.du);
  m_au.Pose(bornes.au);
}

void ChampsPeriode::Choisit(Periode periode) {
  Applique(periode);
  QWidget& champ = ChampDuChoix();
  if (&champ != &Bouton(periode)) CZNDialog::Focalise(champ);
}

QWidget* ChampsPeriode::Fautif() {
  if (!m_du.Valeur()) return &m_du;
  if (!m_au.Valeur()) return &m_au;
  return m_du.Valeur() > m_au.Valeur() ? &m_du : nullptr;
}

QWidget& ChampsPeriode::ChampDuChoix() {
  switch (Choix()) {
    case Periode::Semaine:
      return m_listeSemaines;
    case Periode::Mois:
      return m_listeMois;
    case Periode::Libre:
      return m_du;
    default:
      return Bouton(Choix());
  }
}

}  // namespace fenlor
