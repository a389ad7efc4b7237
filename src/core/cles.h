// Sections and keys of the settings file that several floors read.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Sections of the settings file
inline constexpr TexteFixe SecActivite{5400, "Activite"};
inline constexpr TexteFixe SecPreferences{5401, "Préférences"};
inline constexpr TexteFixe SecFenlor{5402, "Fenlor"};
inline constexpr TexteFixe SecRapprochement{5405, "Rapprochement"};
inline constexpr TexteFixe SecIntl{5406, "intl"};  ///< of the machine's registry

// Keys of an exercice's section
inline constexpr TexteFixe CleCloture{5410, "Cloture"};
inline constexpr TexteFixe CleTVA{5411, "TVA"};
inline constexpr TexteFixe CleEuro{5412, "EURO"};
inline constexpr TexteFixe CleFraisKm{5414, "Frais kilométriques"};
inline constexpr TexteFixe CleDebut{5415, "Debut"};
inline constexpr TexteFixe CleFin{5416, "Fin"};

// Keys of the other sections
inline constexpr TexteFixe CleExercices{5418, "Exercices"};
inline constexpr TexteFixe CleBrouillon{5420, "Brouillon"};
inline constexpr TexteFixe ClePrevisualisation{5421, "Prévisualisation"};
inline constexpr TexteFixe CleVirgule{5422, "Virgule"};
inline constexpr TexteFixe CleEntree{5423, "Entrée"};
inline constexpr TexteFixe CleFinDeSession{5424, "Fin de session"};
inline constexpr TexteFixe CleModeDebug{5427, "ModeDebug"};
inline constexpr TexteFixe CleLimiteFranc{5428, "LimiteFranc"};
inline constexpr TexteFixe CleZeroDansBoite{5429, "Zéro dans boite de dialogue"};
inline constexpr TexteFixe CleSauverFenetres{5432, "Sauver fenêtres"};
inline constexpr TexteFixe CleEspeces{5434, "Especes"};
inline constexpr TexteFixe CleSDecimal{5436, "sDecimal"};

// Preferences and positions of windows
inline constexpr TexteFixe ClePoliceImpressions{5650, "Police des impressions"};
/// style of paper of the reports, and its two words
inline constexpr TexteFixe CleStyleEtats{6741, "Style des états"};
inline constexpr TexteFixe MotClassique{6742, "Classique"};
inline constexpr TexteFixe MotSoignee{6743, "Soignée"};
inline constexpr TexteFixe SecAssociation{5720, "Association"};
inline constexpr TexteFixe Sec2035{5722, "2035"};
inline constexpr TexteFixe CleIdentification{5724, "Identification"};
inline constexpr TexteFixe CleNatureActivite{5727, "Activite"};
inline constexpr TexteFixe CleNumeroAssociation{5728, "Numero"};
inline constexpr TexteFixe CleAnneeAssociation{5729, "Annee"};
/// Depenses, Résultat, T.V.A. follow
inline constexpr TexteFixe Cle2035Recettes[] = {
    {5740, "Recettes"},
    {5741, "Depenses"},
    {5742, "Résultat"},
    {5743, "T.V.A."},
};
// clang-format on

}  // namespace fenlor
