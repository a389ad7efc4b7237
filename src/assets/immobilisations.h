// Rules of the register of fixed assets: what the form of an acquisition holds, its checks and amounts, and
// how an asset is added, modified and deleted. The register belongs to the practice; all the same nothing of
// it changes (3056) while the open exercice is a closed one.
#pragma once

#include <string>
#include <vector>

#include "core/fiche.h"

namespace fenlor {

/// What the form of an acquisition holds. Texts as typed, Windows-1252.
struct FicheImmobilisation {
  Position position = 0;  ///< 0 for a new asset
  std::string designation;
  Date dateAchat = 0;
  f64 tauxTva = 0;                    ///< percent
  f64 prix = 0, tva = 0, valeur = 0;  ///< in the currency of `monnaie`
  i16 mode = 0;                       ///< what was typed: 0 the life, 1 the annual rate
  i16 type = 0;                       ///< `TypeAmortissement`
  f64 duree = 10, taux = 10;          ///< years, percent; `assets/dureetaux.h` keeps them together
  i16 monnaie = 0;                    ///< 0 Franc, 1 Euro
  /// As it stands in the file; the forms of disposal and scrapping change it (`assets/cessions.h`). What the
  /// fields above show is taken from them when the asset is saved.
  Immobilisation rec{};
  static const TableFiche Table;

  bool EstNouvelle() const { return position == 0; }
};

/// Bought today, over ten years, in the exercice's currency.
FicheImmobilisation NouvelleImmobilisation(CFenlorApp& app);
Refus LitFiche(CFenlorApp& app, Position position, FicheImmobilisation& fiche);
/// Position of the asset of that number, 0 when there is none (or the file cannot be read, told).
Position PositionImmobilisation(CFenlorApp& app, u32 numero);

/// What price and rate of VAT give, to the cent; the depreciable value is proposed as the price without VAT,
/// whatever was typed there.
struct MontantsAchat {
  f64 tva = 0, horsTaxe = 0;
};
MontantsAchat CalculMontantsAchat(f64 prix, f64 taux);

/// Checks of an acquisition in this order: closed exercice (3056), text too long (3206, "designation"), no
/// date (3104, "dateAchat"), a rate of VAT, an amount, a life or rate that was typed out of bounds (3401), a
/// life and a rate that are no row of the degressive table (3483, unless the record has them already) or do
/// not belong together (3485), Franc after the limit (3042, "dateAchat"), a disposal before the purchase
/// (3015, "dateAchat").
Refus ControleAcquisition(const CFenlorApp& app, const FicheImmobilisation& fiche);
/// The fields into `fiche.rec`; the other currency at the rate of the date of purchase. Precondition:
/// checked.
void PoseAcquisition(CFenlorApp& app, FicheImmobilisation& fiche);
/// `ControleAcquisition`, `PoseAcquisition`, `EcritImmobilisation`.
Refus EnregistreFiche(CFenlorApp& app, FicheImmobilisation& fiche);

/// Writes `fiche.rec` as it stands, as one unit: a new one gets the next number, another takes the place of
/// the asset of its number, which stays. 3484 when that is no longer there. A number is never given twice,
/// also when its asset was deleted. `fiche.position` becomes that of the record.
Refus EcritImmobilisation(CFenlorApp& app, FicheImmobilisation& fiche);

/// Asks 3480, then deletes. The corrections of its years stay, and are nobody's.
Refus SupprimeFiche(CFenlorApp& app, const FicheImmobilisation& fiche);

}  // namespace fenlor
