// What the reports with a debit and a credit share: the line of totals, and how an account is shown.
#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>

#include "core/btfiles.h"
#include "core/mouvements.h"
#include "reports/etatcomptable.h"

namespace fenlor {

/// What the four columns of a "Crédit / Débit" report show, empty where there is nothing.
using ColonnesEtat = std::array<std::string, 4>;

/// Year and month of a date, to compare; never 0 for a date.
constexpr u32 MoisDe(Date date) { return date >> 8; }

class CEtatTotaux : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;

 protected:
  /// Double display: debit Franc, debit Euro, credit Franc, credit Euro. Otherwise, in the year's
  /// currency: debit, credit, and their difference under "Solde Débit" when the debits are more, else
  /// under "Solde Crédit".
  ColonnesEtat ColonnesTotaux(const SommesEtat& sommes) const;
  /// Credit less debit with the "D " of a debit: Franc and Euro in double display, otherwise the year's
  /// currency alone.
  ColonnesEtat ColonnesMontant(const SommesEtat& sommes) const;
  /// What the columns of this report show of the amounts of a row; the last of them empty, or left out by a
  /// format that has fewer. By default `ColonnesTotaux`, or `ColonnesMontant` when that display was asked
  /// for.
  virtual ColonnesEtat Colonnes(const SommesEtat& sommes) const;
  bool Montant() const { return m_criteres.affichage == AffichageMontant; }
  /// Writes a format of four columns, `Colonnes` in it.
  void EcritTotaux(const FormatEtat& format, const SommesEtat& sommes);

  /// The lines of one table: what they come to, and the month of the last one.
  struct Tableau {
    SommesEtat total;
    u32 mois = 0;
  };
  /// A row of number, date, name and columns; the footer's rule between two months. `nom` as it was typed.
  void EcritLigne(const FormatEtat& format, const Line& ligne, std::string_view nom, Tableau& tableau);

 private:
  std::string m_tampon;
};

/// Which of the texts of `MotNatureCompte` names the kind of an account; an unknown kind is `Autre`.
constexpr unsigned RangNature(i16 type) {
  return static_cast<unsigned>(type < Tresorerie || type > Autre ? i16{Autre} : type);
}

/// A sum without the dust of its additions, so that what comes to nothing shows as nothing. For showing
/// alone: sums go on with the value as it stands.
f64 SommeNette(f64 somme);

/// Typed text of a row, fit for markup. `tampon` is written when the text needs it, and is to live on.
std::string_view TexteSur(std::string_view texte, std::string& tampon);

/// Accounts as the reports show them, each read once. One report's own; as large as the chart.
class FichesComptes {
 public:
  struct Fiche {
    std::string court;     ///< screen form, fit for markup like the other two
    std::string rubrique;  ///< empty when the account is not in the chart
    std::string designation;
  };
  explicit FichesComptes(CFenlorApp& app) : m_app(app), m_plan(app, {}), m_ouvert(m_plan.OpenFile()) {}
  /// Of a long form. Lives as long as the object. Moves the cursor of the chart's first key.
  const Fiche& Compte(std::string_view compte);

 private:
  CFenlorApp& m_app;
  CPlan m_plan;
  bool m_ouvert;
  std::map<std::string, Fiche, std::less<>> m_fiches;
};

}  // namespace fenlor
