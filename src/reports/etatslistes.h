// The lists of accounts, headings and labels on paper: what their windows show. They ask nothing. Amounts are
// in the currency of the exercice, a balance is credit less debit; sums are those of the printed amounts. A
// list that cannot be read to its end is not shown, and the reason is told.
#pragma once

#include "reports/etatcomptable.h"

namespace fenlor {

class CEtatPlanDoc : public CEtatComptable {
 public:
  /// `type` is `Recette` or `Depense`.
  CEtatPlanDoc(CFenlorApp& app, DemandeurCriteres& demandeur, i16 type)
      : CEtatComptable(app, demandeur), m_type(type) {}

 protected:
  bool BuildEtat() override;

 private:
  i16 m_type;
};

/// Accounts with their debit, credit, balance, reconciled and real balance.
class CEtatListeSoldes : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;

 protected:
  /// Treasury accounts in the order of their numbers, or those of all types.
  bool EcritListe(unsigned titre, bool tousTypes);
};

class CEtatPlanComptableDoc : public CEtatListeSoldes {
 public:
  using CEtatListeSoldes::CEtatListeSoldes;

 protected:
  bool BuildEtat() override;
};

class CEtatTresorerieDoc : public CEtatListeSoldes {
 public:
  using CEtatListeSoldes::CEtatListeSoldes;

 protected:
  bool BuildEtat() override;
};

class CEtatRubriqueDoc : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;

 protected:
  bool BuildEtat() override;
};

class CEtatLibelleDoc : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;

 protected:
  bool BuildEtat() override;
};

}  // namespace fenlor
