// The register of assets without its window: its rows, their lines, and what stands in them.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "assets/annuites.h"
#include "core/btfiles.h"
#include "core/colonneliste.h"

namespace fenlor {

/// The columns of the register, from left to right, as rows of `ColonnesRegistre`.
enum class ChampRegistre {
  DateAchat,
  Designation,
  Prix,
  TVA,
  Revient,
  Valeur,
  Taux,
  PremiereAnnee,  ///< the leftmost of six
  DerniereAnnee = PremiereAnnee + CCalculLineAmortissements::NbColonnes - 1,
  Total,
  Residuelle,
  DateCession,
  PrixCession,
  Resultat,
};

/// The lines of a row.
struct MonnaiesRegistre {
  bool franc, euro;
  bool operator==(const MonnaiesRegistre&) const = default;
};
/// One line in Franc in exercices before 1999; both from then on with the double display; else one, in Franc
/// before 2002, in Euro after. The year is that of the exercice's name.
MonnaiesRegistre MonnaiesDuRegistre(const CFenlorApp& app);

/// The rows in order of purchase.
struct ListeRegistre {
  std::vector<Position> positions;
  /// Year of the earliest purchase; that of today when there is none before it.
  u32 premiereAnnee = 0;
};
/// `fichier` is open; where it is not the list is empty.
ListeRegistre LitRegistre(CFenlorApp& app, CImmobilisations& fichier);

/// An asset as the register shows it: depreciated to today, not to the end of the exercice.
struct LigneRegistre {
  Immobilisation immo{};
  std::array<CCalculLineAmortissements::Colonne, CCalculLineAmortissements::NbColonnes>
      annees{};  ///< from the right
  f64 cumulFranc = 0, cumulEuro = 0;
  bool avecRebut = true;  ///< a scrapping is told instead of a price; not in exercices before 1999
};
/// `anneeDroite`: the year of the rightmost of the six columns.
LigneRegistre LigneDuRegistre(CFenlorApp& app, const Immobilisation& immo, u32 anneeDroite);

/// A line of a row. The second one, in Euro, tells neither date nor name; the rate stands in Franc lines
/// alone.
struct RangeeRegistre {
  const LigneRegistre* ligne = nullptr;
  bool euro = false;
  bool seconde = false;
};
std::vector<RangeeRegistre> RangeesRegistre(const LigneRegistre& ligne, MonnaiesRegistre monnaies);
/// Widths are in characters; titles have their lines separated by '\n'; those of the years are blank.
const TableColonnes<RangeeRegistre>& ColonnesRegistre();

/// An asset for the clipboard, its fields separated by tabs: date, name, price, VAT, cost, depreciable value
/// in the exercice's currency, and "F" or "E" for it.
std::string TexteRegistre(const CFenlorApp& app, const Immobilisation& immo);

}  // namespace fenlor
