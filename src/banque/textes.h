// What the rules of the bank's operations say.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Refusals
/// what was given as an account
inline constexpr TexteFixe ErrCompteNonBancaire{3450, "\"%s\" n'est pas un compte bancaire."};
inline constexpr TexteFixe ErrOperationAbsente{3451, "Cette opération bancaire n'existe plus."};

// Questions
/// date, label, amount
inline constexpr TexteFixe QuestionSupprimeOperation{3452, "Suppression de l'opération :\n%s, %s, %s",
                                                     Detruit};

/// date, label, amount of the operation, then of the entry
inline constexpr TexteFixe QuestionRapprochement{3453,
    "Rapprochement de l'opération :\n\n%s, %s, %s\n\navec l'écriture :\n\n%s, %s, %s"};
/// pairs; operations at the start
inline constexpr TexteFixe InfoRapprochements{3454,
    "%d rapprochements bancaires effectués\npour %d opérations enregistrées"};
inline constexpr TexteFixe ErrLigneNonRapprochable{3455,
    "Une des écritures n'est plus à rapprocher sur ce compte."};
/// "Débit" or "Crédit" of the operation, the same of the entries
inline constexpr TexteFixe QuestionMemeSens{3456,
    "L'opération est au %s de la banque et les écritures au %s des livres : les deux ne se compensent "
    "pas.\n\nFaut-il les rapprocher quand même?", Detruit};
/// amount, account
inline constexpr TexteFixe ErrEcritureSansLigne{3457,
    "L'écriture n'a pas de ligne de %s sur le compte %s : elle ne correspond pas à l'opération bancaire."};

// Progress
inline constexpr TexteFixe TitreRapprochement{5926, "Rapprochement bancaire"};

// Settings of an exercice: balance of the last statement of an account, whose number stands behind
inline constexpr TexteFixe CleSoldeReleve{5925, "SoldeReleve%s"};

// Deposit slips
inline constexpr TexteFixe ErrFichierRemise{3495, "Erreur d'ouverture du fichier %s."};
/// number of the entry
inline constexpr TexteFixe ErrSansCheque{3496, "L'écriture %s n'a pas de chèque à remettre."};
inline constexpr TexteFixe MotRemis{8800, "Remis"};
inline constexpr TexteFixe MotAImprimer{8801, "A imprimer"};
/// by `EtatRemise`, from its first value on
inline constexpr TexteFixe MotEtatRemise[] = {
    {8802, "Non Remis"},
    {8803, "Remis"},
    {8804, "Remis à cette date"},
    {8805, "Tous"},
};
// clang-format on

}  // namespace fenlor
