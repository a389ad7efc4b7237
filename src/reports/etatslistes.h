// The lists of accounts, headings, labels and forecast on paper: what their windows show. They ask nothing.
// Amounts are in the currency of the exercice, a balance is credit less debit; sums are those of the printed
// amounts. A list that cannot be read to its end is not shown, and the reason is told.
#pragma once

#include <span>

#include "core/texte.h"
#include "reports/etatcomptable.h"
#include "reports/textes.h"

namespace fenlor {

/// A column of a list: a text fit for markup, or an amount of the record and how it is written. Amounts are
/// summed under the last row.
template <class Fiche>
struct ColonneEtat {
  std::string (*texte)(const Fiche&) = nullptr;
  f64 Fiche::*montant = nullptr;
  std::string (*ecrit)(f64 montant, bool euro) = nullptr;
};

/// Numbers of the texts of a list. 0: there is no row of totals, nothing under the table.
struct TextesListe {
  TexteFixe titre, entete, pied, avancement, rangee, total;
  TexteFixe fin = {};
};

class CEtatListe : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;

 protected:
  /// Title, header and footer. False without an open exercice: told, and the report given up.
  bool Debute(const TextesListe& textes);
  /// The table of `nombre` records at most: `parcourt` hands them to the function that it is given.
  template <class Fiche, class Parcours>
  void EcritTable(const TextesListe& textes, std::span<const ColonneEtat<Fiche>> colonnes, u32 nombre,
                  const Parcours& parcourt);
};

/// Accounts of one type, or of all types, in the order of their numbers. Those of receipts and of expenses
/// show their balance alone, lists with treasury debit, credit, balance, reconciled and real balance.
class CEtatListeComptes : public CEtatListe {
 protected:
  static constexpr i16 TousTypes = -1;
  CEtatListeComptes(CFenlorApp& app, DemandeurCriteres& demandeur, const TexteFixe& titre, i16 type)
      : CEtatListe(app, demandeur), m_titre(titre), m_type(type) {}
  void BuildEtat() override;

 private:
  TexteFixe m_titre;
  i16 m_type;
};

class CEtatPlanDoc : public CEtatListeComptes {
 public:
  /// `type` is `Recette` or `Depense`.
  CEtatPlanDoc(CFenlorApp& app, DemandeurCriteres& demandeur, i16 type)
      : CEtatListeComptes(app, demandeur, type == Recette ? TitreComptesRecettes : TitreComptesDepenses,
                          type) {}
};

class CEtatPlanComptableDoc : public CEtatListeComptes {
 public:
  CEtatPlanComptableDoc(CFenlorApp& app, DemandeurCriteres& demandeur)
      : CEtatListeComptes(app, demandeur, TitrePlanComptable, TousTypes) {}
};

class CEtatTresorerieDoc : public CEtatListeComptes {
 public:
  CEtatTresorerieDoc(CFenlorApp& app, DemandeurCriteres& demandeur)
      : CEtatListeComptes(app, demandeur, TitreComptesTresorerie, Tresorerie) {}
};

class CEtatRubriqueDoc : public CEtatListe {
 public:
  using CEtatListe::CEtatListe;

 protected:
  void BuildEtat() override;
};

/// What the automatic entries bring and cost, month by month (`auto/previsions.h`).
class CEtatPrevisionsDoc : public CEtatListe {
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
