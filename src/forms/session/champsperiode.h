// The group "Période" of the forms that work on a span of days.
#pragma once

#include <QRadioButton>
#include <array>
#include <vector>

#include "session/periodes.h"
#include "ui/editeurs.h"
#include "ui/formulaire.h"

namespace fenlor {

class ChampsPeriode {
 public:
  explicit ChampsPeriode(CFenlorApp& app, FinSemaine fin = FinSemaine::Limite);
  /// The group, with its radio buttons "aujourdhui", "semaine", "mois", "exercice", "periode", their
  /// lists "listeSemaines", "listeMois" and the dates "du", "au".
  void Declare(Formulaire& formulaire);
  /// Fills the lists and takes the choice of the settings. Moves no focus.
  void Ouvre();

  Periode Choix() const;
  Date Du() const { return m_du.Valeur(); }
  Date Au() const { return m_au.Valeur(); }
  /// The date that is none, or the first of two in the wrong order; null when both are right.
  QWidget* Fautif();
  /// Where the user goes on: the list of a week or month, the first date, else the radio button.
  QWidget& ChampDuChoix();
  /// Keeps the choice in the settings.
  void Retient() { RetientPeriode(m_app, Choix()); }

 private:
  QRadioButton& Bouton(Periode periode) { return m_boutons[static_cast<std::size_t>(periode)]; }
  void Applique(Periode periode);
  void Choisit(Periode periode);

  CFenlorApp& m_app;
  const FinSemaine m_finSemaine;
  CadrePeriode m_cadre;
  std::vector<LignePeriode> m_semaines, m_mois;
  std::array<QRadioButton, 5> m_boutons;
  EditeurChoix m_listeSemaines, m_listeMois;
  EditeurDate m_du, m_au;
};

}  // namespace fenlor
