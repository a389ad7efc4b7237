// What a journal window is narrowed to. The record lives as long as the window; it
// is not kept in the settings.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// Fields in the order of the form. A mark is 1 or 0. Texts are Windows-1252.
struct CritereEcriture {
  u32 Toutes = 1;
  u32 Pointees = 0;
  u32 Remises = 0;
  u32 Rapprochees = 0;
  u32 Associees = 0;
  u32 NonPointees = 0;
  u32 NonRemises = 0;
  u32 NonRapprochees = 0;
  u32 NonAssociees = 0;
  u32 TousMontants = 1;
  f64 MontantMin = 0;
  f64 MontantMax = 0;
  u32 MontantEuro = 1;  ///< currency of the bounds
  u32 TousComptes = 1;
  char CompteDe[11] = {};  ///< short form
  char CompteA[11] = {};
  u32 ToutesRubriques = 1;
  char RubriqueDe[4] = {};
  char RubriqueA[4] = {};
  u32 TousJours = 1;
  u32 JourDe = 0;  ///< 1 to 31
  u32 JourA = 0;
};

/// Everything shows; the currency is that of the exercice.
CritereEcriture CriteresParDefaut(CFenlorApp& app);
/// What the form's Ok makes of its fields: nothing is linked in a standalone edition;
/// no mark at all, two bounds of zero, an empty account, heading or day bound stand for "all".
void NormaliseCriteres(CFenlorApp& app, CritereEcriture& criteres);
/// One of the five "all" marks is off.
bool EstPartielle(const CritereEcriture& criteres);

/// What the criteria look at in one line of an entry.
struct LigneCritere {
  bool credit = false;
  bool pointee = false, remise = false, rapprochee = false, associee = false;
  f64 franc = 0, euro = 0;
  std::string_view compte;    ///< long form
  std::string_view court;     ///< short form of the same
  std::string_view rubrique;  ///< heading of the line's account
  unsigned jour = 0;          ///< of the entry's date
};

/// True when an entry of these lines shows. `filtre`: treasury account of the window (long
/// form), empty for all; it counts for the amount alone. An entry without lines does not show.
bool PasseCriteres(const CritereEcriture& criteres, const std::string& filtre,
                   const std::vector<LigneCritere>& lignes);

}  // namespace fenlor
