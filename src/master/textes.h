// Texts of master/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Questions: yes takes away what nobody can bring back
inline constexpr TexteFixe QuestionSupprimeCompte{3332,
    "Suppression du compte %s ?", Detruit};  ///< short number
inline constexpr TexteFixe QuestionSupprimeTresorerie{3333,
    "Suppression du compte de trésorerie\n\"%s\" ?", Detruit};
inline constexpr TexteFixe QuestionSupprimeRubrique{3346,
    "Suppression de la rubrique %s ?", Detruit};  ///< code
inline constexpr TexteFixe QuestionRemplaceFraisKm{3380,
    "Un montant a déjà été enregistré.\n\nFaut-il le remplacer?", Detruit};
/// number of entries, variable
inline constexpr TexteFixe QuestionEcrituresVariable{3381,
    "Attention !\nIl existe %ld écriture(s) dans les comptes associés des rubriques utilisant la "
    "variable '&%s'. Si vous confirmez cette opération, ces écritures seront perdues!\n\nFaut-il les "
    "supprimer?", Detruit};
inline constexpr TexteFixe QuestionSupprimeFraisKm{3382, "Suppression du montant?", Detruit};

/// Name of a unit that may be taken back
inline constexpr TexteFixe ActeLibelles{6678, "modification des libellés"};

// Errors
inline constexpr TexteFixe QuestionClasseCompte{3047,
    "le type de ce compte ne correspond pas à sa classe . Désirez-vous enregistrer quand même ce "
    "compte ?"};
inline constexpr TexteFixe ErrCodeObligatoire{3057, "Le code est obligatoire"};
inline constexpr TexteFixe ErrCodeExistant{3058, "Ce code existe déjà"};
inline constexpr TexteFixe ErrCodeRubriqueObligatoire{3061, "Le code de la rubrique est obligatoire"};
inline constexpr TexteFixe ErrConfirmationMotDePasse{3067, "La confirmation du mot de passe est différente."};
inline constexpr TexteFixe ErrAncienMotDePasse{3068, "L'ancien mot de passe est erroné."};
inline constexpr TexteFixe ErrTauxTvaObligatoire{3069, "Le taux de TVA est obligatoire"};
inline constexpr TexteFixe ErrNumeroExistant{3070, "Ce numéro de compte existe déjà !"};
inline constexpr TexteFixe ErrNumeroTvaObligatoire{3071, "Le numéro de compte est obligatoire"};
inline constexpr TexteFixe ErrClasseCompte{3090, "Le numéro de compte est incorrect."};
inline constexpr TexteFixe ErrNumeroObligatoire{3091, "Le numéro de compte est obligatoire."};
inline constexpr TexteFixe ErrNumeroExistantAuPlan{3092, "Le numéro de compte exite déjà."};
inline constexpr TexteFixe ErrSuppressionTvaMouvementee{3096,
    "Il y a des écritures enregistrées pour ce compte de TVA !\nLa suppression est impossible."};
inline constexpr TexteFixe ErrModificationTvaMouvementee{3100,
    "Il y a des écritures enregistrées pour ce compte de TVA !\nLa modification est impossible."};
inline constexpr TexteFixe ErrCodeTresorerieExistant{3110, "Ce code  existe déja pour un compte trésorerie."};
inline constexpr TexteFixe ErrOuvertureDe{3117, "Ouverture de %s impossible."};
inline constexpr TexteFixe ErrTauxConversion{3118, "Saisir un taux de conversion."};

// Refusals
inline constexpr TexteFixe ErrDateTauxExistante{3230, "Un taux de conversion existe déjà à la date du %s."};
/// code of a treasury account that is a section of the settings
inline constexpr TexteFixe ErrCodeReserve{3250,
    "Le code %s est le nom d'une partie des réglages : il ne peut pas être celui d'un compte de "
    "trésorerie."};
/// deletion: short number, by what
inline constexpr TexteFixe ErrCompteUtilise{3251,
    "Le compte %s est utilisé par %s.\nLa suppression est impossible."};
/// another number or type: short number, by what
inline constexpr TexteFixe ErrCompteUtiliseChange{3252,
    "Le compte %s est utilisé par %s.\nSon numéro et son type ne peuvent pas être changés."};
/// another number or type
inline constexpr TexteFixe ErrCompteMouvemente{3253,
    "Il y a des écritures enregistrées pour ce compte !\nSon numéro et son type ne peuvent plus être "
    "changés."};
/// short number
inline constexpr TexteFixe ErrComptePersonnel{3254,
    "Le compte %s est le compte de répartition personnelle : il ne se modifie que dans le plan "
    "comptable."};
/// code; the codes on the way back to it
inline constexpr TexteFixe ErrBoucleRubrique{3260, "La formule de la rubrique %s revient sur elle-même : %s"};

// Questions
inline constexpr TexteFixe InfoCompteMouvemente{3330,
    "Il y a des écritures enregistrées pour ce compte !\nLa suppression est impossible."};
inline constexpr TexteFixe InfoTresorerieMouvementee{3331,
    "Il y a des écritures enregistrées pour ce compte de trésorerie !\nLa suppression est impossible."};
/// yes: change it first
inline constexpr TexteFixe QuestionSoldeCrediteur{3334,
    "Attention !\nLe solde initial doit être négatif sauf si votre compte est "
    "créditeur.\n\nVoulez-vous modifier le solde initial ?"};
inline constexpr TexteFixe InfoRubriqueUtilisee{3345,
    "Il y a des comptes faisant référence à cette rubrique !\nLa suppression est impossible."};
/// path, reason
inline constexpr TexteFixe ErrLibelles{3351, "Les libellés n'ont pas pu être enregistrés dans %s : %s"};

// What is typed into the fields
/// what was typed
inline constexpr TexteFixe ErrLigneRubrique{3402,
    "La ligne \"%s\" est incorrecte : un nombre de 1 à 999, ou rien."};
/// code of the heading; the terms
inline constexpr TexteFixe InfoTermesInconnus{3403,
    "La formule de la rubrique %s nomme ce qui n'est ni une rubrique ni une variable : %s\n\nElle "
    "est enregistrée telle quelle ; ces termes comptent pour zéro."};

// Sections of the settings file
inline constexpr TexteFixe SecComptes{5403, "COMPTES"};
inline constexpr TexteFixe SecTauxEuro{5404, "TAUX EURO"};

// Keys of an exercice's section
inline constexpr TexteFixe CleAfficherDouble{5413, "AFFICHERDOUBLE"};

// Keys of the other sections
inline constexpr TexteFixe ClePrelevement{5435, "Prelevement"};

// Preferences and positions of windows
inline constexpr TexteFixe CleMotDePasseCabinet{5684, "Mot de Passe"};
inline constexpr TexteFixe SecComptable{5721, "Comptable"};
inline constexpr TexteFixe SecMiseAJour{5723, "Système"};  ///< of the user's registry
inline constexpr TexteFixe CleSiret{5725, "SIRET"};
inline constexpr TexteFixe CleApe{5726, "APE"};
inline constexpr TexteFixe CleRadicalTva{5730, "RadicalTVA"};
inline constexpr TexteFixe CleCompteBancaire{5731, "Compte"};  ///< of the section of a bank account
inline constexpr TexteFixe CleVirementRecette{5732, "Virement Recette"};
inline constexpr TexteFixe CleVirementDepense{5733, "Virement Dépense"};
inline constexpr TexteFixe CleEcartCredit{5734, "Ecart Credit"};
inline constexpr TexteFixe CleEcartDebit{5735, "Ecart Debit"};
inline constexpr TexteFixe CleModeMiseAJour{5750, "Periode QVUpdate"};
inline constexpr TexteFixe CleJoursMiseAJour{5751, "Jours QVUpdate"};
inline constexpr TexteFixe CleApplicationMiseAJour{5752, "Application QVUpdate"};
inline constexpr TexteFixe ApplicationMiseAJour{5753, "fenlor"};  ///< default of the above
inline constexpr TexteFixe RadicalTvaDefaut{5754, "445"};
inline constexpr TexteFixe FormatDesignationTva{5755, "T.V.A. à %s %%"};
inline constexpr TexteFixe FormatCodeTva{5756, "TVA%s"};

// Bars and shortcuts
inline constexpr TexteFixe SecRaccourcis{5838, "Raccourcis"};

// Accounts
inline constexpr TexteFixe SecTresorerie{5870, "TRESORERIE"};
inline constexpr TexteFixe CleClasse{5871, "Classe"};
inline constexpr TexteFixe CleRadicalBanque{5872, "RadicalBanque"};
inline constexpr TexteFixe CleRadicalCaisse{5873, "RadicalCaisse"};
inline constexpr TexteFixe RadicalBanqueDefaut{5874, "510"};
inline constexpr TexteFixe RadicalCaisseDefaut{5875, "530"};
inline constexpr TexteFixe SecFraisKm{5876, "FRAIS KILOMETRIQUES"};
inline constexpr TexteFixe FormatChoixTva{5884, "%s%% %s %s"};  ///< rate, code, short number
/// what uses an account
inline constexpr TexteFixe MotComptesParticuliers{5890, "les comptes particuliers des options"};
inline constexpr TexteFixe FormatCompteAvecTva{5891, "le compte %s, pour sa T.V.A."};  ///< short number
inline constexpr TexteFixe MotOperationsBancaires{5892, "des opérations bancaires à rapprocher"};
inline constexpr TexteFixe MotEcritureAutomatique{5893, "une écriture automatique"};

// Labels
inline constexpr TexteFixe FichierLibelles{5950, "TEXTES.dat"};
inline constexpr TexteFixe FichierLibellesProvisoire{5951, "TEXTES.neuf"};
inline constexpr TexteFixe LigneLibelles{5952, "@Texte"};  ///< first line of the file

// Kilometre expenses
inline constexpr TexteFixe CleKmCompteur{6350, "Compteur"};
inline constexpr TexteFixe CleKmAncien{6351, "Ancien relevé"};
inline constexpr TexteFixe CleKmDernier{6352, "Dernier relevé"};
inline constexpr TexteFixe CleKmDistance{6353, "Kms"};
inline constexpr TexteFixe CleKmBorneInf{6354, "Borne Inf"};
inline constexpr TexteFixe CleKmBorneSup{6355, "Borne Sup"};
inline constexpr TexteFixe CleKmFixe{6356, "Coef"};
inline constexpr TexteFixe CleKmFixeEuro{6357, "Coef Euro"};
/// Franc, first tier; the two others follow
inline constexpr TexteFixe CleKmTaux[] = {
    {6358, "Frs/Km 1"},
    {6359, "Frs/Km 2"},
    {6360, "Frs/Km 3"},
};
/// likewise
inline constexpr TexteFixe CleKmTauxEuro[] = {
    {6361, "€/Km 1"},
    {6362, "€/Km 2"},
    {6363, "€/Km 3"},
};
inline constexpr TexteFixe FormatTrancheInf{6365, "Jusqu'à %d km :"};  ///< lower bound
/// lower bound plus 1, upper bound
inline constexpr TexteFixe FormatTrancheMilieu{6366, "De %d km et jusqu'à %d km :"};
inline constexpr TexteFixe FormatTrancheSup{6367, "Au-delà de %d km :"};  ///< upper bound

/// blank, or not readable again
inline constexpr TexteFixe ErrLibelleRefuse{3352,
    "Un libellé ne peut pas être vide, ni commencer par \"@\" ou \"[\"."};

// Lines of the fiscal statement
/// first and last line; the three others follow
inline constexpr TexteFixe Lignes2035Recettes[] = {
    {5744, "1, 7"},
    {5745, "8, 32"},
    {5746, "33, 47"},
    {5747, "48, 52"},
};

// Kilometre expenses
inline constexpr TexteFixe VariableFraisKm{6364, "&FRAISKM"};

// Fiscal statement
inline constexpr TexteFixe VariableAmortissements{7209, "&AMORT"};
inline constexpr TexteFixe VariablePlusValues{7210, "&PVC"};
inline constexpr TexteFixe VariableMoinsValues{7211, "&MVC"};
inline constexpr TexteFixe VariableImmobilisations{7212, "&IMMO_HTVA"};
// clang-format on

}  // namespace fenlor
