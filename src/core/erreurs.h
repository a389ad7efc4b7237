// The numbered errors that several floors tell, and those of commands to come. What is refused of an exercice
// as a whole stands in `core/erreursexercice.h`, the error of one floor in the `textes.h` of that floor.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Errors
inline constexpr TexteFixe ErrRecuperationFichier{3007, "Récupération fichier (%s) impossible"};
inline constexpr TexteFixe ErrCreationFichier{3008, "Création fichier (%s) impossible"};
inline constexpr TexteFixe ErrOuvertureFichier{3011, "Ouverture fichier (%s) impossible%s"};
inline constexpr TexteFixe ErrReconstruction{3440, "Le fichier (%s) n'a pas pu être reconstruit : %s"};
inline constexpr TexteFixe ErrFermetureFichier{3012, "Fermeture fichier (%d) impossible"};
inline constexpr TexteFixe ErrDateAvantEuro{3018, "La date doit être supèrieure au 1er Janvier 1999"};
inline constexpr TexteFixe ErrFichierIndexe{3049, "%s\nFichier = %s\nErreur = %d"};
inline constexpr TexteFixe ErrCodeOuverture{3050, "Erreur %d à l'ouverture de :\n%s."};
inline constexpr TexteFixe ErrCapaciteDisque{3064, "La lecture de la capacité du disque est impossible."};
inline constexpr TexteFixe ErrDisquePlein{3065,
    "Il n'y a plus assez de place sur le lecteur de destination !"};
inline constexpr TexteFixe ErrMotDePasseErrone{3074, "Mot de passe erroné !"};
inline constexpr TexteFixe ErrDateOperation{3076, "La date d'opération est obligatoire."};
inline constexpr TexteFixe ErrMontantOperation{3077, "La montant est obligatoire."};
inline constexpr TexteFixe ErrSansOperationChoisie{3078, "Il n'y a pas d'opérations sélectionnées."};
inline constexpr TexteFixe ErrSansEcritureChoisie{3079, "Il n'y a pas d'écritures sélectionnées."};
inline constexpr TexteFixe ErrTotalRapprochement{3080,
    "Le total des écritures est différent du montant de l'opération bancaire."};
inline constexpr TexteFixe ErrEcritureApresOperation{3081,
    "La date de l'écriture est supérieure à celle de l'opération bancaire."};
inline constexpr TexteFixe ErrSuppressionAuto{3097, "Erreur de suppression d'une écriture automatique."};
inline constexpr TexteFixe ErrNombreAuto{3098, "Impossible de créer plus de %d écritures automatiques."};
inline constexpr TexteFixe ErrEnregistrementAuto{3101, "Erreur d'enregistrement d'une écriture automatique."};
inline constexpr TexteFixe ErrLectureAuto{3102, "Erreur de lecture d'une écriture automatique."};
inline constexpr TexteFixe ErrDateIncorrecte{3104, "La date est incorrecte."};
inline constexpr TexteFixe ErrMontantNul{3106, "Le montant est égal à zéro."};
inline constexpr TexteFixe ErrCompteTvaIntrouvable{3107, "Le compte de T.V.A. à %s%% est introuvable !"};
inline constexpr TexteFixe ErrSansCompteChoisi{3112, "Sélectionnez un ou plusieurs comptes"};
inline constexpr TexteFixe ErrComparaisonUnCompte{3113,
    "Sélectionnez plusieurs comptes pour faire une comparaison"};
inline constexpr TexteFixe ErrSansOperation{3115, "Il n'y a pas d'opérations à rapprocher !"};
inline constexpr TexteFixe ErrCompteObligatoire{3119, "Le compte est obligatoire !"};
inline constexpr TexteFixe ErrMiseAJour{3121, "Erreur (%d) à l'execution de QVUpdate.exe"};

// Refusals
inline constexpr TexteFixe ErrTexteTropLong{3206, "Le champ \"%s\" est trop long : %s caractères au plus."};
inline constexpr TexteFixe ErrCabinetOccupe{3213, "Ce cabinet est déjà ouvert (%s)."};
inline constexpr TexteFixe ErrMagasin{3214, "%s"};  ///< the store's own words
/// path, reason
inline constexpr TexteFixe ErrReglages{3220, "Les réglages n'ont pas pu être enregistrés dans %s : %s"};

// Questions
/// blank, or not readable again
inline constexpr TexteFixe ErrLibelleRefuse{3352,
    "Un libellé ne peut pas être vide, ni commencer par \"@\" ou \"[\"."};

// What is typed into the fields
/// what was typed; smallest, largest
inline constexpr TexteFixe ErrMontantBornes{3401, "\"%s\" est hors des limites de ce champ : de %s à %s."};
inline constexpr TexteFixe ErrExerciceInconnu{3208, "L'exercice %s n'existe pas."};
// clang-format on

}  // namespace fenlor
