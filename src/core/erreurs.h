// The numbered errors that several floors tell, and those of the table that nothing tells yet. The error of
// one floor stands in the `textes.h` of that floor.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Errors
inline constexpr TexteFixe ErrCouleursEcran{3001,
    "La visualisation des graphiques ne peut pas se faire si votre écran est configuré avec plus de "
    "256 couleurs simultanément. Réduisez à 256 le nombre de couleurs et réessayez."};
inline constexpr TexteFixe MotIndexImmobilisations{3002, "Index immobilisations"};
inline constexpr TexteFixe MotDonneesImmobilisations{3003, "Données immobilisations"};
inline constexpr TexteFixe MotIndexAmortissements{3004, "Index amortissements"};
inline constexpr TexteFixe MotDonneesAmortissements{3005, "Données amortissements"};
inline constexpr TexteFixe ErrOle{3006,
    "Echec de l'initialisation OLE. Vérifiez que les bibliothèques OLE sont de la bonne version."};
inline constexpr TexteFixe ErrRecuperationFichier{3007, "Récupération fichier (%s) impossible"};
inline constexpr TexteFixe ErrCreationFichier{3008, "Création fichier (%s) impossible"};
inline constexpr TexteFixe ErrCreationFichierBis{3009, "Création fichier (%s) impossible"};
inline constexpr TexteFixe ErrOuvertureFichier{3011, "Ouverture fichier (%s) impossible%s"};
inline constexpr TexteFixe ErrReconstruction{3440, "Le fichier (%s) n'a pas pu être reconstruit : %s"};
inline constexpr TexteFixe ErrFermetureFichier{3012, "Fermeture fichier (%d) impossible"};
inline constexpr TexteFixe ErrDateAvantEuro{3018, "La date doit être supèrieure au 1er Janvier 1999"};
inline constexpr TexteFixe ErrTropDeFichiers{3019,
    "Il y a trop de fichiers ouverts ce traitement est abandonné !"};
inline constexpr TexteFixe ErrOuvertureJournal{3020, "Ouverture du fichier JOURNAL impossible !"};
inline constexpr TexteFixe ErrCreationJournal{3021, "Création du fichier JOURNAL impossible !"};
inline constexpr TexteFixe ErrLectureEnteteJournal{3023,
    "Lecture de l'entête du fichier JOURNAL impossible !"};
inline constexpr TexteFixe ErrEcritureEnteteJournal{3024,
    "Ecriture de l'entête du fichier JOURNAL impossible !"};
inline constexpr TexteFixe ErrLectureJournal{3025, "Lecture du fichier JOURNAL impossible !"};
inline constexpr TexteFixe ErrAjoutCleJournal{3026, "Ajout de la clé du fichier journal impossible !"};
inline constexpr TexteFixe ErrAjoutJournal{3027, "Ajout d'un enregistrement au fichier journal impossible !"};
inline constexpr TexteFixe ErrSuppressionJournal{3028,
    "Suppression d'un enregistrement du fichier JOURNAL impossible !"};
inline constexpr TexteFixe ErrSuppressionCleJournal{3029,
    "Suppression de la clé du fichier journal impossible !"};
inline constexpr TexteFixe ErrClotureBrouillard{3033,
    "La cloture de l'exercice %s est impossible ! Toutes les écritures ne sont pas validées."};
inline constexpr TexteFixe ErrVersionAncienne{3034,
    "La Fenlor ne peut pas convertir les fichiers dont la version est inférieure à la 4.0"};
inline constexpr TexteFixe ErrFichierIndexe{3049, "%s\nFichier = %s\nErreur = %d"};
inline constexpr TexteFixe ErrCodeOuverture{3050, "Erreur %d à l'ouverture de :\n%s."};
inline constexpr TexteFixe ErrMemoire{3051, "Pas assez de mémoire pour cette opération."};
inline constexpr TexteFixe ErrCodeEcriture{3053, "Erreur %d en ecriture de :\n%s."};
inline constexpr TexteFixe ErrComptePersonnelOptions{3054,
    "Le compte de répartition personnelle n'est pas défini. Activez l'option 'Comptes particuliers' "
    "du menu 'Outils | Options...' pour le choisir."};
inline constexpr TexteFixe ErrExerciceCloture{3056, "Action impossible sur un exercice cloturé"};
inline constexpr TexteFixe ErrNumeroCompteObligatoire{3059, "Le numéro de compte est obligatoire"};
inline constexpr TexteFixe ErrNumeroCompteExistant{3060, "Ce numéro de compte existe déjà"};
inline constexpr TexteFixe ErrAvecTitre{3062, "%s : Erreur"};
inline constexpr TexteFixe ErrTauxTvaExistant{3063, "Ce taux de TVA existe déjà !"};
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
inline constexpr TexteFixe ErrNumeroObligatoireTvaPlan{3093, "Le numéro de compte est obligatoire."};
inline constexpr TexteFixe ErrNumeroIncorrect{3094, "Le numéro de compte est incorrect."};
inline constexpr TexteFixe ErrNumeroExistantNomme{3095, "Le numéro de compte \"%s\" existe déjà."};
inline constexpr TexteFixe ErrSuppressionAuto{3097, "Erreur de suppression d'une écriture automatique."};
inline constexpr TexteFixe ErrNombreAuto{3098, "Impossible de créer plus de %d écritures automatiques."};
inline constexpr TexteFixe ErrEnregistrementAuto{3101, "Erreur d'enregistrement d'une écriture automatique."};
inline constexpr TexteFixe ErrLectureAuto{3102, "Erreur de lecture d'une écriture automatique."};
inline constexpr TexteFixe ErrDateIncorrecte{3104, "La date est incorrecte."};
inline constexpr TexteFixe ErrMontantNul{3106, "Le montant est égal à zéro."};
inline constexpr TexteFixe ErrCompteTvaIntrouvable{3107, "Le compte de T.V.A. à %s%% est introuvable !"};
inline constexpr TexteFixe ErrPlusDeMemoire{3111, "Plus assez de mémoire"};
inline constexpr TexteFixe ErrSansCompteChoisi{3112, "Sélectionnez un ou plusieurs comptes"};
inline constexpr TexteFixe ErrComparaisonUnCompte{3113,
    "Sélectionnez plusieurs comptes pour faire une comparaison"};
inline constexpr TexteFixe ErrSansOperation{3115, "Il n'y a pas d'opérations à rapprocher !"};
inline constexpr TexteFixe ErrCompteObligatoire{3119, "Le compte est obligatoire !"};
inline constexpr TexteFixe ErrMiseAJour{3121, "Erreur (%d) à l'execution de QVUpdate.exe"};

// Refusals
inline constexpr TexteFixe ErrTexteTropLong{3206, "Le champ \"%s\" est trop long : %s caractères au plus."};
inline constexpr TexteFixe ErrAucunExercice{3209, "Aucun exercice n'est ouvert."};
inline constexpr TexteFixe ErrCabinetOccupe{3213, "Ce cabinet est déjà ouvert (%s)."};
inline constexpr TexteFixe ErrMagasin{3214, "%s"};  ///< the store's own words
inline constexpr TexteFixe ErrEcritureLiee{3215,
    "L'écriture \"%s\" est liée à Quorbane et ne peut pas être modifiée ici."};
/// path, reason
inline constexpr TexteFixe ErrReglages{3220, "Les réglages n'ont pas pu être enregistrés dans %s : %s"};

// Questions
/// blank, or not readable again
inline constexpr TexteFixe ErrLibelleRefuse{3352,
    "Un libellé ne peut pas être vide, ni commencer par \"@\" ou \"[\"."};

// What is typed into the fields
/// what was typed; smallest, largest
inline constexpr TexteFixe ErrMontantBornes{3401, "\"%s\" est hors des limites de ce champ : de %s à %s."};
// clang-format on

}  // namespace fenlor
