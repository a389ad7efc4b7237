// The currency in which amounts are typed.
#pragma once

#include <QRadioButton>
#include <functional>

#include "core/fenlorapp.h"
#include "ui/formulaire.h"

namespace fenlor {

/// Group "Monnaie": "Franc", "Euro", with the rules of the Franc limit.
class ChoixMonnaie {
 public:
  explicit ChoixMonnaie(CFenlorApp& app);
  void Declare(Formulaire& formulaire);
  bool Euro() const { return m_euro.isChecked(); }
  void Pose(bool euro);  ///< tells nobody
  /// A date is shown (opening, neighbour): from the limit on the form goes to Euro and "Franc" is
  /// disabled, before it "Franc" is enabled. True when the currency changed.
  bool Ouvre(Date date);
  /// The date field was left: before the limit "Franc" is enabled; from it on it is disabled when the
  /// currency is Euro.
  void QuitteDate(Date date);
  void Permet(bool permis);                          ///< both, beside the limit
  void SurChangement(std::function<void()> action);  ///< by the user
  QRadioButton& Bouton(bool euro) { return euro ? m_euro : m_franc; }

 private:
  void Montre();
  CFenlorApp& m_app;
  QRadioButton m_franc, m_euro;
  bool m_permis = true, m_francPermis = true;
  bool m_dite = true;  ///< currency last told: Euro
};

}  // namespace fenlor
