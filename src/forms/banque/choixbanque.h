// The bank accounts of the chart, to choose one of.
#pragma once

#include "journal/choixcomptes.h"
#include "ui/editeurs.h"

namespace fenlor {

/// The value of a row is the account's long number; rows read "BQ Banque". What is typed chooses among them;
/// a text that names none leaves the one that the form shows.
class ChoixBanque : public EditeurChoix {
  Q_OBJECT
 public:
  explicit ChoixBanque(QWidget* parent = nullptr);
  /// The bank accounts in the order of their code, the first one chosen.
  void Charge(CFenlorApp& app);
  /// The account chosen; null when there is none.
  const CompteOffert* Choisi() const { return CompteDeNumero(m_comptes, Valeur()); }

 private:
  std::vector<CompteOffert> m_comptes;
};

}  // namespace fenlor
