// Texts of journal/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Questions: yes takes away what nobody can bring back
inline constexpr TexteFixe QuestionSuppression{3302, "Suppression de l'écriture\n\"%s\" ?", Detruit};
inline constexpr TexteFixe QuestionSuppressionRapprochee{3303,
    "Attention !\nUn rapprochement bancaire à été effectué sur l'écriture :\n\n\"%s\"\n\n Faut-il la "
    "supprimer ?", Detruit};
inline constexpr TexteFixe QuestionRecetteFeuille{3304,
    "Attention !\nL'écriture '%s' est associée à une feuille de soins électronique.\n\nVoulez-vous "
    "quand même la supprimer ?", Detruit};
inline constexpr TexteFixe QuestionRecetteQuorbane{3305,
    "Attention !\nL'écriture '%s' est associée à une recette Quorbane. En supprimant cette écriture "
    "vous supprimer en même temps la recette associée.\n\nVoulez-vous quand même la supprimer ?", Detruit};
inline constexpr TexteFixe QuestionDepenseQuorbane{3306,
    "Attention !\nL'écriture '%s' est associée à une dépense Quorbane. En supprimant cette écriture "
    "vous supprimer en même temps la dépense associée. \n\nVoulez-vous quand même la supprimer ?", Detruit};
inline constexpr TexteFixe QuestionRenumerotation{3316, "Renumérotation du journal ?", Detruit};

// Errors
inline constexpr TexteFixe ErrSuppressionValidee{3016,
    "L'écriture \"%s\" est validée !\nLa suppression est impossible."};
inline constexpr TexteFixe ErrSuppressionODValidee{3017,
    "L'opération diverse \"%s\" est validée !\nLa suppression est impossible."};
inline constexpr TexteFixe ErrCompteEcartCredit{3030,
    "Le compte d'écart en crédit n'est pas défini. Cliquez sur 'OK' pour le choisir, ou 'Annuler' "
    "pour abandonner."};
inline constexpr TexteFixe ErrCompteEcartDebit{3031,
    "Le compte d'écart en débit n'est pas défini. Cliquez sur 'OK' pour le choisir, ou 'Annuler' "
    "pour abandonner."};
inline constexpr TexteFixe ErrODSansLignes{3032, "L'opération diverse n'a pas de lignes."};
inline constexpr TexteFixe ErrSansLigneTresorerie{3035, "Pas de lignes en trésorerie"};
inline constexpr TexteFixe ErrTotalTresorerie{3036,
    "Le montant TTC de l'écriture ne correspond pas au montant des lignes en trésorerie"};
inline constexpr TexteFixe ErrLigneTresorerie{3037, "Enregistrement d'une ligne de trésorerie impossible"};
inline constexpr TexteFixe ErrSuppressionLiee{3038,
    "Impossible de supprimer cette écriture car elle est liée à Quorbane"};
inline constexpr TexteFixe ErrAutreApplication{3040,
    "Impossible de supprimer cette écriture car elle est liée à une application différente."};
inline constexpr TexteFixe ErrFrancApresLimite{3041,
    "Vous ne pouvez pas saisir d'écriture en Franc après le %s !"};
inline constexpr TexteFixe ErrComptePersonnelAbsent{3055,
    "Le compte de répartition personnelle n'est pas défini. Cliquez sur 'OK' pour le choisir, ou "
    "'Annuler' pour abandonner."};
inline constexpr TexteFixe ErrDeuxTresoreries{3082,
    "Il faut au moins deux comptes de trésorerie pour effectuer un virement"};
inline constexpr TexteFixe ErrTresorerieOrigine{3083, "Erreur sur le compte de trésorerie d'origine"};
inline constexpr TexteFixe ErrTresorerieDestination{3084,
    "Erreur sur le compte de trésorerie de destination"};
inline constexpr TexteFixe ErrTresoreriesIdentiques{3085, "Les deux comptes de trésorerie sont identiques !"};
inline constexpr TexteFixe ErrMontantVirement{3086, "Le montant du virement est inférieur ou égale à zéro !"};
inline constexpr TexteFixe ErrCompteVirementDepenses{3087,
    "Le compte de virement en dépenses n'est pas défini. Cliquez sur 'OK' pour le choisir, ou "
    "'Annuler' pour abandonner."};
inline constexpr TexteFixe ErrCompteVirementRecettes{3088,
    "Le compte de virement en recettes n'est pas défini. Cliquez sur 'OK' pour le choisir, ou "
    "'Annuler' pour abandonner."};
inline constexpr TexteFixe ErrDateVirement{3089, "La date du virement est hors exercice !"};
inline constexpr TexteFixe ErrEcritureQuorbane{3103,
    "L'écriture est associée à une recette Quorbane.\nVous ne pouvez pas modifier cette écriture !"};
inline constexpr TexteFixe ErrCompteIncorrect{3105, "Le numéro de compte est incorrect."};
inline constexpr TexteFixe ErrDebitOuCredit{3108, "Il est nécessaire de saisir un débit ou un crédit."};
inline constexpr TexteFixe ErrSansEcriture{3116, "Il n'y a pas d'écritures à rapprocher !"};

// Refusals
inline constexpr TexteFixe ErrModificationValidee{3201,
    "L'écriture \"%s\" est validée !\nLa modification est impossible."};
inline constexpr TexteFixe ErrEcritureInconnue{3202, "L'écriture %s n'existe pas."};
inline constexpr TexteFixe ErrChampInvalide{3205, "Le champ \"%s\" est incorrect : %s"};
inline constexpr TexteFixe ErrDebitEtCredit{3207, "Une ligne porte un débit ou un crédit, pas les deux."};

// Questions
inline constexpr TexteFixe QuestionTresorerieChangee{3300,
    "Le compte de trésorerie a été modifié.\nFaut-il continuer ?", Detruit};
/// "Attention ! L'ecriture n'est pas équilibrée. ..."
inline constexpr TexteFixe QuestionNonEquilibree{3301,
    "Attention ! L'ecriture n'est pas équilibrée.\nVoulez-vous l'enregistrer ?\n\nCliquez 'Oui' pour "
    "enregistrer cette écriture. Une opération d'écart sera ajoutée automatiquement pour "
    "l'équilibrer.\nCliquez 'Non' pour modifier cette écriture."};
inline constexpr TexteFixe QuestionRapprocher{3311,
    "Date\t\t: %s\nLibellé\t\t: %s\n%s\t\t: %s\n\nRapprocher cette écriture?"};
inline constexpr TexteFixe QuestionDerapprocher{3312,
    "Date\t\t: %s\nLibellé\t\t: %s\n%s\t\t: %s\n\nMarquer cette écriture comme non rapprochée?", Detruit};
/// date, label
inline constexpr TexteFixe QuestionValiderOD{3313,
    "Date\t\t: %s\nLibellé\t\t: %s\n\nValider cette opération diverse ?"};
/// date, label, "Crédit" or "Débit", amount
inline constexpr TexteFixe QuestionValiderStandard{3314,
    "Date\t\t: %s\nLibellé\t\t: %s\n%s\t\t: %s\n\nValider cette écriture ?"};
/// treasury code, then as above
inline constexpr TexteFixe QuestionValiderSimple{3315,
    "Trésorerie\t: %s\nDate\t\t: %s\nLibellé\t\t: %s\n%s\t\t: %s\n\nValider cette écriture ?"};
inline constexpr TexteFixe QuestionInvalider{3318, "Voulez-vous invalider l'écriture ?", Detruit};

// What is typed into the fields
/// number of entries that are not shown
inline constexpr TexteFixe QuestionRenumeroterPartie{3430,
    "Attention !\n%s écriture(s) de ce mois ne sont pas affichées et garderont leur numéro : "
    "d'autres peuvent recevoir le même.\n\nRenumérotation du journal ?"};
/// commands on a selection: number of refusals, the first one
inline constexpr TexteFixe ErrSerie{3431, "%s écritures n'ont pas été traitées. La première :\n\n%s"};

// Trash
inline constexpr TexteFixe FichierCorbeille{6680, "CORBEILLE.dat"};
inline constexpr TexteFixe ActeRestauration{6681, "restauration de « %s »"};  ///< label
inline constexpr TexteFixe ErrCorbeilleEndommagee{3573, "La corbeille est endommagée :\n%s"};  ///< path
inline constexpr TexteFixe ErrCorbeille{3574,
    "La corbeille ne peut pas être lue ou écrite : %s.\nRien n'a été changé."};  ///< reason
inline constexpr TexteFixe ErrSuppressionAbsente{3575,
    "Il n'y a pas de suppression n° %s dans la corbeille."};

// Progress
inline constexpr TexteFixe TexteTraitement{5026, "Traitement en cours..."};
inline constexpr TexteFixe TexteRenumerotation{5027, "Renumérotation du journal en cours..."};
inline constexpr TexteFixe TitreValidation{5028, "Validation du brouillard"};
inline constexpr TexteFixe TexteValidation{5029, "Validation des écritures en brouillard en cours..."};

// Words
inline constexpr TexteFixe MotCredit{5341, "Crédit"};
inline constexpr TexteFixe MotDebit{5342, "Débit"};

// Commands on many entries, transfer
inline constexpr TexteFixe LibelleVirement{6030, "Virement interne"};  ///< label of a transfer

// The entry that was being typed
inline constexpr TexteFixe TexteReprendre{6760, "Reprendre la saisie du %s"};
inline constexpr TexteFixe TexteReprendreDetail{6761, "Reprendre la saisie du %s (%s)"};

// The journals, in the order of their numbers
inline constexpr TexteFixe MotJournal[] = {
    {5345, "Recettes"},
    {5346, "Depenses"},
    {5347, "Opérations diverses"},
};
// clang-format on

}  // namespace fenlor
