// The lists of accounts: the windows of receipts, expenses, treasury and the whole chart.
#pragma once

#include "master/comptes.h"
#include "ui/fichesview.h"

namespace fenlor {

class ComptesView : public FichesView {
  Q_OBJECT
 protected:
  ComptesView(ContexteUi& contexte, const TexteFixe& titre, u32 bit, ListeComptes liste, Fabrique forme);
  void FillList() override;
  std::vector<Position> Positions() override;
  Refus SupprimeA(Position position) override;

 private:
  void Definit();
  const ListeComptes m_liste;
  bool m_deuxMonnaies;
  CPlan m_plan;
  FinDesLiens m_finLiens{*this};
};

/// The accounts of receipts, or those of expenses.
class CPlanView : public ComptesView {
  Q_OBJECT
 public:
  /// `type` is `Recette` or `Depense`.
  CPlanView(ContexteUi& contexte, i16 type);

 private:
  FinDesLiens m_finLiens{*this};
};

/// All accounts of the exercice, in order of their number.
class CPlanComptableView : public ComptesView {
  Q_OBJECT
 public:
  explicit CPlanComptableView(ContexteUi& contexte);

 private:
  FinDesLiens m_finLiens{*this};
};

/// The bank and cash accounts, with their balances.
class CTresorerieView : public ComptesView {
  Q_OBJECT
 public:
  explicit CTresorerieView(ContexteUi& contexte);

 private:
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
