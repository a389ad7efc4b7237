// The lists of accounts, headings and labels on paper: what their windows show. They ask nothing. Amounts are
// in the currency of the exercice, a balance is credit less debit; sums are those of the printed amounts. A
// list that cannot be read to its end is not shown, and the reason is told.
#pragma once

#include <functional>
#include <span>

#include "master/comptes.h"
#include "reports/etatcomptable.h"

namespace fenlor {

/// A column of a list: a text fit for markup, or an amount of the record and how it is written. Amounts are
/// summed under the last row.
template <class Fiche>
struct ColonneEtat {
  std::string (*texte)(const Fiche&) = nullptr;
  f64 Fiche::*montant = nullptr;
  std::string (*ecrit)(f64 montant, bool euro) = nullptr;
};

class CEtatListe : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;

 protected:
  /// Numbers of the texts of a list.
  struct Textes {
    unsigned titre, entete, pied, avancement, rangee;
    unsigned total = 0;  ///< 0: there is none
    unsigned fin = 0;    ///< under the table
  };
  /// Title, header and footer; false without an open exercice: told, and the report given up.
  bool Debute(const Textes& textes);
  /// The table of `nombre` records at most: `parcourt` hands over one after the other.
  template <class Fiche>
  void EcritTable(const Textes& textes, std::span<const ColonneEtat<Fiche>> colonnes, u32 nombre,
                  const std::function<void(const std::function<void(const Fiche&)>&)>& parcourt);
  /// Accounts of a type, or of all types when it is negative.
  void EcritComptes(const Textes& textes, bool soldesDetailles, i16 type);
};

class CEtatPlanDoc : public CEtatListe {
 public:
  /// `type` is `Recette` or `Depense`.
  CEtatPlanDoc(CFenlorApp& app, DemandeurCriteres& demandeur, i16 type)
      : CEtatListe(app, demandeur), m_type(type) {}

 protected:
  void BuildEtat() override;

 private:
  i16 m_type;
};

class CEtatPlanComptableDoc : public CEtatListe {
 public:
  using CEtatListe::CEtatListe;

 protected:
  void BuildEtat() override;
};

class CEtatTresorerieDoc : public CEtatListe {
 public:
  using CEtatListe::CEtatListe;

 protected:
  void BuildEtat() override;
};

class CEtatRubriqueDoc : public CEtatListe {
 public:
  using CEtatListe::CEtatListe;

 protected:
  void BuildEtat() override;
};

class CEtatLibelleDoc : public CEtatListe {
 public:
  using CEtatListe::CEtatListe;

 protected:
  void BuildEtat() override;
};

}  // namespace fenlor
