// Texts of forms/master/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Questions: yes takes away what nobody can bring back
inline constexpr TexteFixe QuestionSupprimeLibelle{3350, "Suppression du libellé\n\"%s\" ?", Detruit};

// Questions
/// which account to make: no is one of expenses
inline constexpr TexteFixe QuestionCompteRecettes{3340,
    "S'agit-il d'un compte de recettes ?\n\nCliquez 'Non' pour un compte de dépenses."};

// Preferences and positions of windows
inline constexpr TexteFixe FormatTaux{5757, "%s %%"};

// Windows of the accounts
/// code; of treasury, then one for each type
inline constexpr TexteFixe TitreCompte[] = {
    {5900, "Compte de trésorerie : %s"},
    {5901, "Compte de recettes : %s"},
    {5902, "Compte de dépenses : %s"},
    {5903, "Compte de T.V.A. : %s"},
    {5904, "Compte : %s"},
};
/// of treasury; receipts and expenses follow
inline constexpr TexteFixe TitreAjoutCompte[] = {
    {5905, "Ajout d'un compte de trésorerie"},
    {5906, "Ajout d'un compte de recettes"},
    {5907, "Ajout d'un compte de dépenses"},
};
inline constexpr TexteFixe TitreAjoutAuPlan{5908, "Ajout d'un compte"};

// Headings
inline constexpr TexteFixe TitreRubrique{5932, "Rubrique : %s"};  ///< code
inline constexpr TexteFixe TitreAjoutRubrique{5933, "Ajout d'une rubrique fiscale"};

// Labels
inline constexpr TexteFixe TitreAjoutLibelle{5955, "Ajout d'un libellé"};
inline constexpr TexteFixe TitreModificationLibelle{5956, "Modification d'un libellé"};

// Form of the kilometre expenses
inline constexpr TexteFixe TitreFraisKm{6450, "Frais kilométriques"};
// clang-format on

}  // namespace fenlor
