#include "core/textes.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <iterator>
#include <vector>

#include "core/tabletextes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr LigneTexte lignes[] = {
    {3000, "Le répertoire de l'exercice est invalide !"},
    {3001,
     "La visualisation des graphiques ne peut pas se faire si votre écran est configuré avec plus "
     "de 256 couleurs simultanément. Réduisez à 256 le nombre de couleurs et réessayez."},
    {3002, "Index immobilisations"},
    {3003, "Données immobilisations"},
    {3004, "Index amortissements"},
    {3005, "Données amortissements"},
    {3006, "Echec de l'initialisation OLE. Vérifiez que les bibliothèques OLE sont de la bonne version."},
    {3007, "Récupération fichier (%s) impossible"},
    {3008, "Création fichier (%s) impossible"},
    {3009, "Création fichier (%s) impossible"},
    {3010, "Fichier (%s) endommagé\nIndexation recommandé."},
    {3011, "Ouverture fichier (%s) impossible"},
    {3012, "Fermeture fichier (%d) impossible"},
    {3013,
     "Date d'achat\t:%s\nDate de cession\t:%s\n\nLa date de cession est inférieure à la date "
     "d'achat !"},
    {3014,
     "Date du jour\t:%s\nDate de cession\t:%s\n\nLa date de cession est supérieure à la date du "
     "jour !"},
    {3015,
     "Date d'achat\t:%s\nDate de cession\t:%s\n\nLa date d'achat est inférieure à la date de "
     "cession !"},
    {3016, "L'écriture \"%s\" est validée !\nLa suppression est impossible."},
    {3017, "L'opération diverse \"%s\" est validée !\nLa suppression est impossible."},
    {3018, "La date doit être supèrieure au 1er Janvier 1999"},
    {3019, "Il y a trop de fichiers ouverts ce traitement est abandonné !"},
    {3020, "Ouverture du fichier JOURNAL impossible !"},
    {3021, "Création du fichier JOURNAL impossible !"},
    {3022, "Erreur lors de l'écriture dans un fichier."},
    {3023, "Lecture de l'entête du fichier JOURNAL impossible !"},
    {3024, "Ecriture de l'entête du fichier JOURNAL impossible !"},
    {3025, "Lecture du fichier JOURNAL impossible !"},
    {3026, "Ajout de la clé du fichier journal impossible !"},
    {3027, "Ajout d'un enregistrement au fichier journal impossible !"},
    {3028, "Suppression d'un enregistrement du fichier JOURNAL impossible !"},
    {3029, "Suppression de la clé du fichier journal impossible !"},
    {3030,
     "Le compte d'écart en crédit n'est pas défini. Cliquez sur 'OK' pour le choisir, ou 'Annuler' "
     "pour abandonner."},
    {3031,
     "Le compte d'écart en débit n'est pas défini. Cliquez sur 'OK' pour le choisir, ou 'Annuler' "
     "pour abandonner."},
    {3032, "L'opération diverse n'a pas de lignes."},
    {3033, "La cloture de l'exercice %s est impossible ! Toutes les écritures ne sont pas validées."},
    {3034, "La Fenlor ne peut pas convertir les fichiers dont la version est inférieure à la 4.0"},
    {3035, "Pas de lignes en trésorerie"},
    {3036, "Le montant TTC de l'écriture ne correspond pas au montant des lignes en trésorerie"},
    {3037, "Enregistrement d'une ligne de trésorerie impossible"},
    {3038, "Impossible de supprimer cette écriture car elle est liée à Quorbane"},
    {3039, "Il est impossible de supprimer un exercice de moins de 5 ans comportant des écritures."},
    {3040, "Impossible de supprimer cette écriture car elle est liée à une application différente."},
    {3041, "Vous ne pouvez pas saisir d'écriture en Franc après le %s !"},
    {3042, "Vous ne pouvez pas saisir d'acquisition en Franc après le %s !"},
    {3043, "Vous ne pouvez pas saisir de cession en Franc après le %s !"},
    {3044,
     "Impossible d'effectuer une cession de cette acquisition car elle a déjà fait l'objet d'une "
     "mise au rebut."},
    {3045,
     "Impossible d'effectuer une mise au rebut de cette acquisition car elle a déjà fait l'objet "
     "d'une cession."},
    {3046,
     "L'enregistrement de l'échéance \"%s\" du %d est impossible car il est impossible "
     "d'enregistrer une écriture en Franc après le %s.\nIl est nécessaire de modifier l'écriture "
     "automatique en saisissant un montant en Euro."},
    {3047,
     "le type de ce compte ne correspond pas à sa classe . Désirez-vous enregistrer quand même ce "
     "compte ?"},
    {3049, "%s\nFichier = %s\nErreur = %d"},
    {3050, "Erreur %d à l'ouverture de :\n%s."},
    {3051, "Pas assez de mémoire pour cette opération."},
    {3052, "Erreur %d en lecture de :\n%s."},
    {3053, "Erreur %d en ecriture de :\n%s."},
    {3054,
     "Le compte de répartition personnelle n'est pas défini. Activez l'option 'Comptes "
     "particuliers' du menu 'Outils | Options...' pour le choisir."},
    {3055,
     "Le compte de répartition personnelle n'est pas défini. Cliquez sur 'OK' pour le choisir, ou "
     "'Annuler' pour abandonner."},
    {3056, "Action impossible sur un exercice cloturé"},
    {3057, "Le code est obligatoire"},
    {3058, "Ce code existe déjà"},
    {3059, "Le numéro de compte est obligatoire"},
    {3060, "Ce numéro de compte existe déjà"},
    {3061, "Le code de la rubrique est obligatoire"},
    {3062, "%s : Erreur"},
    {3063, "Ce taux de TVA existe déjà !"},
    {3064, "La lecture de la capacité du disque est impossible."},
    {3065, "Il n'y a plus assez de place sur le lecteur de destination !"},
    {3066, "Fin de fichier rencontrée en lecture !"},
    {3067, "La confirmation du mot de passe est différente."},
    {3068, "L'ancien mot de passe est erroné."},
    {3069, "Le taux de TVA est obligatoire"},
    {3070, "Ce numéro de compte existe déjà !"},
    {3071, "Le numéro de compte est obligatoire"},
    {3072, "Il n'y a pas d'exercices !"},
    {3073, "Cet exercice existe déja désirez vous le remplacer ?\n"},
    {3074, "Mot de passe erroné !"},
    {3075, "Cette période est en conflit avec l'exercice %s"},
    {3076, "La date d'opération est obligatoire."},
    {3077, "La montant est obligatoire."},
    {3078, "Il n'y a pas d'opérations sélectionnées."},
    {3079, "Il n'y a pas d'écritures sélectionnées."},
    {3080, "Le total des écritures est différent du montant de l'opération bancaire."},
    {3081, "La date de l'écriture est supérieure à celle de l'opération bancaire."},
    {3082, "Il faut au moins deux comptes de trésorerie pour effectuer un virement"},
    {3083, "Erreur sur le compte de trésorerie d'origine"},
    {3084, "Erreur sur le compte de trésorerie de destination"},
    {3085, "Les deux comptes de trésorerie sont identiques !"},
    {3086, "Le montant du virement est inférieur ou égale à zéro !"},
    {3087,
     "Le compte de virement en dépenses n'est pas défini. Cliquez sur 'OK' pour le choisir, ou "
     "'Annuler' pour abandonner."},
    {3088,
     "Le compte de virement en recettes n'est pas défini. Cliquez sur 'OK' pour le choisir, ou "
     "'Annuler' pour abandonner."},
    {3089, "La date du virement est hors exercice !"},
    {3090, "Le numéro de compte est incorrect."},
    {3091, "Le numéro de compte est obligatoire."},
    {3092, "Le numéro de compte exite déjà."},
    {3093, "Le numéro de compte est obligatoire."},
    {3094, "Le numéro de compte est incorrect."},
    {3095, "Le numéro de compte \"%s\" existe déjà."},
    {3096, "Il y a des écritures enregistrées pour ce compte de TVA !\nLa suppression est impossible."},
    {3097, "Erreur de suppression d'une écriture automatique."},
    {3098, "Impossible de créer plus de %d écritures automatiques."},
    {3099,
     "Les dates de début et de fin d'exercice ne sont pas bonnes.\n Pour ouvrir cet exercice il est "
     "nécessaire d'ajouter les valeurs par défaut suivantes :\n\nDate de début  %s\nDate de fin  %s"},
    {3100, "Il y a des écritures enregistrées pour ce compte de TVA !\nLa modification est impossible."},
    {3101, "Erreur d'enregistrement d'une écriture automatique."},
    {3102, "Erreur de lecture d'une écriture automatique."},
    {3103, "L'écriture est associée à une recette Quorbane.\nVous ne pouvez pas modifier cette écriture !"},
    {3104, "La date est incorrecte."},
    {3105, "Le numéro de compte est incorrect."},
    {3106, "Le montant est égal à zéro."},
    {3107, "Le compte de T.V.A. à %s%% est introuvable !"},
    {3108, "Il est nécessaire de saisir un débit ou un crédit."},
    {3109, "Création du fichier temporaire impossible."},
    {3110, "Ce code  existe déja pour un compte trésorerie."},
    {3111, "Plus assez de mémoire"},
    {3112, "Sélectionnez un ou plusieurs comptes"},
    {3113, "Sélectionnez plusieurs comptes pour faire une comparaison"},
    {3115, "Il n'y a pas d'opérations à rapprocher !"},
    {3116, "Il n'y a pas d'écritures à rapprocher !"},
    {3117, "Ouverture de %s impossible."},
    {3118, "Saisir un taux de conversion."},
    {3119, "Le compte est obligatoire !"},
    {3120, "Erreur %d dans INTREE"},
    {3121, "Erreur (%d) à l'execution de QVUpdate.exe"},
    {3200, "Ligne %s : %s"},
    {3201, "L'écriture \"%s\" est validée !\nLa modification est impossible."},
    {3202, "L'écriture %s n'existe pas."},
    {3203, "Le champ \"%s\" est inconnu."},
    {3204, "Le champ \"%s\" est obligatoire."},
    {3205, "Le champ \"%s\" est incorrect : %s"},
    {3206, "Le champ \"%s\" est trop long : %s caractères au plus."},
    {3207, "Une ligne porte un débit ou un crédit, pas les deux."},
    {3208, "L'exercice %s n'existe pas."},
    {3209, "Aucun exercice n'est ouvert."},
    {3210, "L'exercice %s ne peut pas être tenu en %s."},
    {3211, "Le nom de l'exercice \"%s\" est incorrect : 1 à 4 lettres ou chiffres."},
    {3212, "La période du %s au %s est incorrecte."},
    {3213, "Ce cabinet est déjà ouvert (%s)."},
    {3214, "%s"},
    {3215, "L'écriture \"%s\" est liée à Quorbane et ne peut pas être modifiée ici."},
    {3216, "Le cabinet %s ne peut pas être ouvert : %s"},
    {3217,
     "Le fichier de réglages %s est vide ou endommagé : il ne nomme aucun exercice, mais le dossier contient les "
     "livres de : %s.\n\nAucun livre n'est perdu. Remettez une copie de ce fichier à sa place avant de continuer."},
    {3220, "Les réglages n'ont pas pu être enregistrés dans %s : %s"},
    {3230, "Un taux de conversion existe déjà à la date du %s."},
    {3240, "%s est déjà le raccourci de \"%s\"."},
    {3241,
     "%s ne peut pas servir de raccourci : les formulaires ou les menus ont besoin de cette touche.\n"
     "Ajoutez Ctrl, ou prenez une touche de fonction."},
    {3250, "Le code %s est le nom d'une partie des réglages : il ne peut pas être celui d'un compte de trésorerie."},
    {3251, "Le compte %s est utilisé par %s.\nLa suppression est impossible."},
    {3252, "Le compte %s est utilisé par %s.\nSon numéro et son type ne peuvent pas être changés."},
    {3253,
     "Il y a des écritures enregistrées pour ce compte !\nSon numéro et son type ne peuvent plus être changés."},
    {3254, "Le compte %s est le compte de répartition personnelle : il ne se modifie que dans le plan comptable."},
    {3260, "La formule de la rubrique %s revient sur elle-même : %s"},
    {3270, "Ce fenlorctl est construit sans PDF."},
    {3271, "L'état %s n'a pas pu être construit."},
    {3300, "Le compte de trésorerie a été modifié.\nFaut-il continuer ?"},
    {3301,
     "Attention ! L'ecriture n'est pas équilibrée.\nVoulez-vous l'enregistrer ?\n\nCliquez 'Oui' "
     "pour enregistrer cette écriture. Une opération d'écart sera ajoutée automatiquement pour "
     "l'équilibrer.\nCliquez 'Non' pour modifier cette écriture."},
    {3302, "Suppression de l'écriture\n\"%s\" ?"},
    {3303,
     "Attention !\nUn rapprochement bancaire à été effectué sur l'écriture :\n\n\"%s\"\n\n Faut-il "
     "la supprimer ?"},
    {3304,
     "Attention !\nL'écriture '%s' est associée à une feuille de soins électronique.\n\nVoulez-vous "
     "quand même la supprimer ?"},
    {3305,
     "Attention !\nL'écriture '%s' est associée à une recette Quorbane. En supprimant cette "
     "écriture vous supprimer en même temps la recette associée.\n\nVoulez-vous quand même la "
     "supprimer ?"},
    {3306,
     "Attention !\nL'écriture '%s' est associée à une dépense Quorbane. En supprimant cette "
     "écriture vous supprimer en même temps la dépense associée. \n\nVoulez-vous quand même la "
     "supprimer ?"},
    {3307,
     "Cet utilitaire va recalculer les cumuls de tous les comptes de trésoreries, recettes, "
     "dépenses et T.V.A.\nFaut-il continuer ?"},
    {3308,
     "Cet utilitaire va recalculer les montants en Euros de vos écritures.\nLe Taux Euro dans "
     "Outils/Option/EURO doit etre correct\nFaut-il continuer ?"},
    {3309,
     "Attention !\n\nCette opération rendra inaccessible cet exercice.\n\nFaut-il supprimer "
     "l'exercice %s ?"},
    {3310,
     "%ld écriture(s) de recettes traitée(s)\n%ld écriture(s) de dépenses traitée(s)\n%ld écritures "
     "d'opérations diverses traitée(s)\n%ld écriture(s) pointée(s)\n%ld ligne(s) remise(s)\n%ld "
     "ligne(s) rapprochée(s)\n%ld écriture(s) validée(s)"},
    {3311, "Date\t\t: %s\nLibellé\t\t: %s\n%s\t\t: %s\n\nRapprocher cette écriture?"},
    {3312, "Date\t\t: %s\nLibellé\t\t: %s\n%s\t\t: %s\n\nMarquer cette écriture comme non rapprochée?"},
    {3313, "Date\t\t: %s\nLibellé\t\t: %s\n\nValider cette opération diverse ?"},
    {3314, "Date\t\t: %s\nLibellé\t\t: %s\n%s\t\t: %s\n\nValider cette écriture ?"},
    {3315, "Trésorerie\t: %s\nDate\t\t: %s\nLibellé\t\t: %s\n%s\t\t: %s\n\nValider cette écriture ?"},
    {3316, "Renumérotation du journal ?"},
    {3317, "Faut-il enregistrer cette écriture ?"},
    {3318, "Voulez-vous invalider l'écriture ?"},
    {3319, "Voulez-vous éditer cette écriture crée par Quorbane ?"},
    {3320, "Le dossier %s n'existe pas.\nFaut-il y créer un nouveau cabinet ?"},
    {3330, "Il y a des écritures enregistrées pour ce compte !\nLa suppression est impossible."},
    {3331, "Il y a des écritures enregistrées pour ce compte de trésorerie !\nLa suppression est impossible."},
    {3332, "Suppression du compte %s ?"},
    {3333, "Suppression du compte de trésorerie\n\"%s\" ?"},
    {3334,
     "Attention !\nLe solde initial doit être négatif sauf si votre compte est créditeur.\n\nVoulez-vous "
     "modifier le solde initial ?"},
    {3340, "S'agit-il d'un compte de recettes ?\n\nCliquez 'Non' pour un compte de dépenses."},
    {3345, "Il y a des comptes faisant référence à cette rubrique !\nLa suppression est impossible."},
    {3346, "Suppression de la rubrique %s ?"},
    {3350, "Suppression du libellé\n\"%s\" ?"},
    {3351, "Les libellés n'ont pas pu être enregistrés dans %s : %s"},
    {3352, "Un libellé ne peut pas être vide, ni commencer par \"@\" ou \"[\"."},
    {3375, "Faut il enregistrer ce virement ?"},
    {3380, "Un montant a déjà été enregistré.\n\nFaut-il le remplacer?"},
    {3381,
     "Attention !\nIl existe %ld écriture(s) dans les comptes associés des rubriques utilisant la variable "
     "'&%s'. Si vous confirmez cette opération, ces écritures seront perdues!\n\nFaut-il les supprimer?"},
    {3382, "Suppression du montant?"},
    {5000, "Fenlor"},
    {5001, "%s - Erreur (%u)"},
    {5002, "%s - Erreur"},
    {5003, "Erreur non répertoriée (identificateur inconnu : %u)"},
    {5010, "CREATION de l'enregistrement impossible."},
    {5011, "LECTURE de l'enregistrement impossible."},
    {5012, "ECRITURE de l'enregistrement impossible."},
    {5013, "Suppression de l'enregistrement impossible."},
    {5014, "Ajout de la clé %d impossible."},
    {5015, "Suppression de la clé %d impossible."},
    {5020, "Reconstruction des clés."},
    {5021, "Reconstruction des clés\n\ndu fichier %s\n\nen cours..."},
    {5022, "Calcul des cumuls"},
    {5023, "Mise à zéro du fichier PLAN\n\nen cours..."},
    {5024, "Recalcul des cumuls\n\nen cours..."},
    {5025, "Recalcul des Montants Euros"},
    {5026, "Traitement en cours..."},
    {5027, "Renumérotation du journal en cours..."},
    {5028, "Validation du brouillard"},
    {5029, "Validation des écritures en brouillard en cours..."},
    {5030, "Banques (banque.dat)"},
    {5031, "Comptes (comptes.dat)"},
    {5032, "Journal (journal.dat)"},
    {5033, "Rubriques (rubrique.dat)"},
    {5034, "Immobilisations (immo.dat)"},
    {5035, "Amortissements (amo.dat)"},
    {5339, "Oui"},
    {5340, "Non"},
    {5341, "Crédit"},
    {5342, "Débit"},
    {5343, "Franc"},
    {5344, "Euro"},
    {5345, "Recettes"},
    {5346, "Depenses"},
    {5347, "Opérations diverses"},
    {5348, "Chèque"},
    {5349, "Autre"},
    {5400, "Activite"},
    {5401, "Préférences"},
    {5402, "Fenlor"},
    {5403, "COMPTES"},
    {5404, "TAUX EURO"},
    {5405, "Rapprochement"},
    {5406, "intl"},
    {5410, "Cloture"},
    {5411, "TVA"},
    {5412, "EURO"},
    {5413, "AFFICHERDOUBLE"},
    {5414, "Frais kilométriques"},
    {5415, "Debut"},
    {5416, "Fin"},
    {5417, "Exercice"},
    {5418, "Exercices"},
    {5420, "Brouillon"},
    {5421, "Prévisualisation"},
    {5422, "Virgule"},
    {5423, "Entrée"},
    {5424, "Fin de session"},
    {5425, "Couleur système"},
    {5426, "Police par défaut"},
    {5427, "ModeDebug"},
    {5428, "LimiteFranc"},
    {5429, "Zéro dans boite de dialogue"},
    {5430, "Zéros Significatifs"},
    {5431, "Nombre de chiffres"},
    {5432, "Sauver fenêtres"},
    {5433, "Restaurer fenêtres"},
    {5434, "Especes"},
    {5435, "Prelevement"},
    {5436, "sDecimal"},
    {5600, "Colonnes"},
    {5640, "Couleur des bordures"},
    {5641, "Couleur impaire"},
    {5642, "Couleur paires"},
    {5643, "Couleur du fond"},
    {5644, "Police des listes"},
    {5645, "Police des journaux"},
    {5646, "Police des écritures validées"},
    {5647, "Police des saisies"},
    {5648, "Police des textes"},
    {5649, "Police des mois"},
    {5650, "Police des impressions"},
    {5651, "Fenêtre"},
    {5652, "Agrandie"},
    {5653, "MS Sans Serif, -11, 0, 0, 0, 0, 0"},
    {5654, "%s, %d, %ld, %d, %d, %d, %d"},
    {5655, "%d, %d, %d, %d"},
    {5656, "%d%%"},
    {5657, ", Gras"},
    {5658, ", Italique"},
    {5659, ", Souligné"},
    {5660, ", Barré"},
    {5661, "System"},
    {5662, "AaBbCcXxYyZz"},
    {5680,
     "Le passage de la version 1 à la version 2 a supprimé le mot de passe. Pensez à en remettre un "
     "si vous désirez protéger cet exercice."},
    {5681, "Version"},
    {5682, "Revision"},
    {5683, "Build"},
    {5684, "Mot de Passe"},
    {5685, "Barre d'outils"},
    {5686, "Barre d'outils-Summary"},
    {5687, "Barre d'outils-Bar%d"},
    {5688,
     "L'enregistrement de cette recette est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler l'enregistrement."},
    {5689,
     "L'enregistrement de cette dépense est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler l'enregistrement."},
    {5690,
     "La modification de cette recette est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler la modification."},
    {5691,
     "La modification de cette dépense est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler la modification."},
    {5692,
     "La suppression de cette recette est impossible car l''exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler la suppression."},
    {5693,
     "La suppression de cette dépense est impossible car l'exercice %s n'existe pas en "
     "Fenlor.\nVoulez-vous créer l'exercice ?\n\n- Sélectionner Oui pour le créer\n- Sélectionner "
     "Non pour annuler la suppression."},
    {5694, "SOFTWARE\\Orvelia\\Fenlor"},
    {5695, "SOFTWARE\\Orvelia\\Tessamaris"},
    {5696, "SOFTWARE\\Orvelia\\Quorbane Edition Spéciale"},
    {5697, "SOFTWARE\\Orvelia\\Quorbane"},
    {5698, "SOFTWARE\\Orvelia\\SESAM-VITALE pour Quorbane\\Paramètres"},
    {5699, "Specialite"},
    {5700, "24,26,27,28,29"},
    {5701, "%s : %s enregistrement(s) gardé(s)"},
    {5702, ", %s écarté(s)"},
    {5703, ", %s remplacé(s) par un plus récent"},
    {5704, ", %s illisible(s)"},
    {5705, "\nL'ancien fichier est gardé dans %s"},
    {5706, ", %s clé(s) en double"},
    {5707, "Des fichiers ont été corrigés pendant la reconstruction :\n\n%s"},
    {5708, ", %s mis à zéro"},
    {5709, ", %s octet(s) illisible(s) en fin de fichier"},
    {5710, ", fichier endommagé"},
    {5720, "Association"},
    {5721, "Comptable"},
    {5722, "2035"},
    {5723, "Système"},
    {5724, "Identification"},
    {5725, "SIRET"},
    {5726, "APE"},
    {5727, "Activite"},
    {5728, "Numero"},
    {5729, "Annee"},
    {5730, "RadicalTVA"},
    {5731, "Compte"},
    {5732, "Virement Recette"},
    {5733, "Virement Dépense"},
    {5734, "Ecart Credit"},
    {5735, "Ecart Debit"},
    {5740, "Recettes"},
    {5741, "Depenses"},
    {5742, "Résultat"},
    {5743, "T.V.A."},
    {5744, "1, 7"},
    {5745, "8, 32"},
    {5746, "33, 47"},
    {5747, "48, 52"},
    {5750, "Periode QVUpdate"},
    {5751, "Jours QVUpdate"},
    {5752, "Application QVUpdate"},
    {5753, "fenlor"},
    {5754, "445"},
    {5755, "T.V.A. à %s%%"},
    {5756, "TVA%s"},
    {5757, "%s %%"},
    {5760, "Compte associé|L|20|Nom et adresse|L|46|Numéro de compte|L|34"},
    {5761, "Compte|L|40|Taux|R|60"},
    {5762, "Date de validité|L|40|Taux|R|60"},
    {5800, "zntips.txt"},
    {5801, "Astuce"},
    {5802, "Position"},
    {5803, "Démarrage"},
    {5804, "Calculatrice"},
    {5805, "Aide"},
    {5806, "Erreur"},
    {5807, "Le taux de l'Euro est de %s F."},
    {5808, "Ce texte n'est pas un nombre."},
    {5809, "Astuce %d sur %d"},
    {5810, "Aucune page ne contient « %s »."},
    {5811, "inconnu"},
    {5812, "%s Mo, dont %s Mo disponibles"},
    {5813, "%s x %s, échelle %d %%"},
    {5814, "%s Mo libres sur %s Mo"},
    {5815, "%s Ko"},
    {5816, "Version %s"},
    {5817, "Copié dans le presse-papiers."},
    {5830, "Etat"},
    {5831, "Barre d'état"},
    {5832, "Commandes"},
    {5833, "Taille"},
    {5834, "Textes"},
    {5835, "Dessous"},
    {5836, "A côté"},
    {5837, "Sans"},
    {5838, "Raccourcis"},
    {5850, "Exercice %s"},
    {5851, "Que voulez-vous faire ?"},
    {5852, "Cet exercice est clôturé : tout se consulte, rien ne se modifie."},
    {5853, "Bienvenue dans Fenlor"},
    {5854,
     "Ce cabinet n'a pas encore d'exercice. Commencez par en créer un : Fenlor prépare les comptes, les rubriques "
     "de la 2035 et les journaux. Le cabinet de démonstration montre trois années déjà tenues."},
    {5855, "Aucun exercice n'est ouvert"},
    {5856, "Choisissez un exercice dans la barre d'outils, ou :"},
    {5857, "Fenêtres ouvertes"},
    {5858, "%s %s : %s"},
    {5859, "Exercice"},
    {5860, "Cabinet de démonstration"},
    {5861, "Création de trois exercices\n\nen cours..."},
    {5870, "TRESORERIE"},
    {5871, "Classe"},
    {5872, "RadicalBanque"},
    {5873, "RadicalCaisse"},
    {5874, "510"},
    {5875, "530"},
    {5876, "FRAIS KILOMETRIQUES"},
    {5880, "Code|L|80|Compte|L|80|Rub|L|40|Désignation|L|300|Solde|R|100"},
    {5881, "Code|L|80|Compte|L|80|Rub|L|40|Désignation|L|300|Solde Francs|R|80|Solde Euro|R|80"},
    {5882,
     "Code|L|80|Compte|L|80|Désignation|L|300|Débit |R|100|Crédit |R|100|Solde |R|100|Solde Rapproché|R|100|"
     "Solde réel |R|100"},
    {5883,
     "Code|L|80|Compte|L|80|Désignation|L|300|Débit Franc|R|80|Débit Euro|R|80|Crédit Franc|R|80|"
     "Crédit Euro|R|80|Solde Franc|R|80|Solde Euro|R|80|Solde Rapproché F|R|80|Solde Rapproché €|R|80|"
     "Solde réel F|R|80|Solde réel €|R|80"},
    {5884, "%s%% %s %s"},
    {5890, "les comptes particuliers des options"},
    {5891, "le compte %s, pour sa T.V.A."},
    {5892, "des opérations bancaires à rapprocher"},
    {5893, "une écriture automatique"},
    {5900, "Compte de trésorerie : %s"},
    {5901, "Compte de recettes : %s"},
    {5902, "Compte de dépenses : %s"},
    {5903, "Compte de T.V.A. : %s"},
    {5904, "Compte : %s"},
    {5905, "Ajout d'un compte de trésorerie"},
    {5906, "Ajout d'un compte de recettes"},
    {5907, "Ajout d'un compte de dépenses"},
    {5908, "Ajout d'un compte"},
    {5909, "Comptes de recettes"},
    {5910, "Comptes de dépenses"},
    {5911, "Comptes de trésorerie"},
    {5912, "Plan Comptable"},
    {5930, "Rubriques de l'état fiscal"},
    {5931, "Rub|L|40|Désignation|L|600"},
    {5932, "Rubrique : %s"},
    {5933, "Ajout d'une rubrique fiscale"},
    {5934, "Compte|L|24|Désignation|L|76"},
    {5935, "%s\t%s"},
    {5950, "TEXTES.dat"},
    {5951, "TEXTES.neuf"},
    {5952, "@Texte"},
    {5953, "Libellés|L|300"},
    {5954, "Libellés"},
    {5955, "Ajout d'un libellé"},
    {5956, "Modification d'un libellé"},
    {6030, "Virement interne"},
    {6050, "Ecritures de recettes"},
    {6051, "Ecritures de dépenses"},
    {6052, "Opérations diverses"},
    {6053, "Ecritures de recettes - %s "},
    {6054, "Ecritures de dépenses - %s "},
    {6055, "Ecritures d'opérations diverses - %s "},
    {6056, "Validées"},
    {6057, "Brouillard"},
    {6058, "Toutes"},
    {6059, "Recettes"},
    {6060, "Depenses"},
    {6061, "Opérations diverses"},
    {6062, "Recettes"},
    {6063, "Dépenses"},
    {6064, "Opérations diverses"},
    {6065, "%s, %d, %s, %d"},
    {6066, "%s, %d, %s"},
    {6067, "%s du mois de"},
    {6068, "%s %d"},
    {6069, "%s %d   *** Liste partielle ***"},
    {6070, "< Tous >"},
    {6071, "Jan.|Fev.|Mar.|Avr.|Mai.|Juin|Juil.|Aou.|Sep.|Oct.|Nov.|Dec."},
    {6072, "Total  "},
    {6073, "Total  Sélectionné   "},
    {6074,
     "Ligne|Date|Libellé|Trésorerie|Montant F|Montant €|Débit F|Crédit F|Débit €|Crédit €|Rub|Compte|"
     "Désignation"},
    {6075, "VRBP"},
    {6076, "Pointée|Remise en banque|Rapprochée|Validée"},
    {6077, "%s "},
    {6078, " %u "},
    {6079, " %d "},
    {6080, "Aucune écriture ce mois-ci."},
    {6081, "Aucune écriture ne répond aux critères d'affichage."},
    {6082, "Aucune écriture validée ce mois-ci."},
    {6083, "Aucune écriture en brouillard ce mois-ci."},
    {6085, "Il n'y a pas encore de compte de trésorerie : créez-en un pour saisir des écritures."},
    {6086, "« Ajouter » (Inser) en saisit une."},
    {6100, "%s : %s"},
    {6101, "Ecriture de RECETTE"},
    {6102, "Ecriture de DEPENSE"},
    {6103, "Ecriture d'une ligne de trésorerie"},
    {6104, "ajout"},
    {6105, "modification"},
    {6106, "Compte|L|20|Libellé|L|40|Paiement|R|20|Montant|R|20"},
    {6107, "Aucune ligne. La touche Ins en ajoute une."},
    {6130, "Ecriture d'OPERATION DIVERSES"},
    {6131, "Ecriture d'une ligne d'O.D."},
    {6132, "Compte|L|20|Libellé|L|40|Débit|R|20|Crédit|R|20"},
    {6160, "Periode"},
    {6161, "du %s au %s"},
    {6162, "%s  %s"},
    {6300, "\\I\\B%s    \\0\\I%s\n\\S001\n"},
    {6301, "\\L\\0\\1%s\\2\\B\\U %s \\3\\0Page %u / %u\n\n"},
    {6302, "*** Il n'y a pas de texte à imprimer !\n"},
    {6303, "Erreur placement"},
    {6304, "Erreur de lecture du fichier temporaire."},
    {6305, "Erreur allocation mémoire."},
    {6306, "L'état n'a pas pu être construit jusqu'au bout.\nLe fichier temporaire n'a pas pu être écrit : %s"},
    {6350, "Compteur"},
    {6351, "Ancien relevé"},
    {6352, "Dernier relevé"},
    {6353, "Kms"},
    {6354, "Borne Inf"},
    {6355, "Borne Sup"},
    {6356, "Coef"},
    {6357, "Coef Euro"},
    {6358, "Frs/Km 1"},
    {6359, "Frs/Km 2"},
    {6360, "Frs/Km 3"},
    {6361, "€/Km 1"},
    {6362, "€/Km 2"},
    {6363, "€/Km 3"},
    {6364, "&FRAISKM"},
    {6365, "Jusqu'à %d km :"},
    {6366, "De %d km et jusqu'à %d km :"},
    {6367, "Au-delà de %d km :"},
    {6430, "Le fichier PDF n'a pas pu être écrit.\n%s : %s"},
    {6431, "L'impression n'a pas pu se faire sur %s."},
    {6432, "\nEcriture du fichier PDF\n\nen cours..."},
    {6433, "\nImpression\n\nen cours..."},
    {6434, "Aperçu avant impression"},
    {6435, "%s - Aperçu avant impression"},
    {6436, "Page %u / %u"},
    {6437, "Pages %u et %u / %u"},
    {6438, "Mise en page"},
    {6439, "%s, %d, %d, %d, %d, %d"},
    {6440, "Exporter en PDF"},
    {6441, "Documents PDF (*.pdf)"},
    {6450, "Frais kilométriques"},
};

static_assert(EnOrdre(lignes));

/// A table with its texts in the program's own code page, in the order of its rows.
class Converties {
 public:
  explicit Converties(TableTextes table) : m_table(table) {
    m_textes.reserve(table.size());
    for (const LigneTexte& ligne : table) {
      auto texte = DepuisUtf8(ligne.utf8);
      assert(texte);
      m_textes.push_back(texte.value_or(ligne.utf8));
    }
  }
  const std::string* Trouve(unsigned numero) const {
    const auto ligne = std::lower_bound(m_table.begin(), m_table.end(), numero,
                                        [](const LigneTexte& l, unsigned n) { return l.numero < n; });
    if (ligne == m_table.end() || ligne->numero != numero) return nullptr;
    return &m_textes[static_cast<std::size_t>(ligne - m_table.begin())];
  }

 private:
  TableTextes m_table;
  std::vector<std::string> m_textes;
};

const std::string* Trouve(unsigned numero) {
  static const std::array<Converties, 2> tables = {Converties(lignes), Converties(TextesEtats())};
  return tables[numero >= PremierTexteEtat].Trouve(numero);
}

/// Length of the conversion that begins behind a "%" at `debut`, 0 when none does.
std::size_t TailleConversion(const std::string& format, std::size_t debut) {
  std::size_t i = debut;
  if (i < format.size() && format[i] == 'l') ++i;
  if (i >= format.size()) return 0;
  const char sorte = format[i];
  return sorte == 'd' || sorte == 'u' || (sorte == 's' && i == debut) ? i + 1 - debut : 0;
}

constexpr unsigned premiereErreur = 3000;
constexpr unsigned derniereErreur = 3299;

}  // namespace

std::string Texte(unsigned numero) {
  const std::string* texte = Trouve(numero);
  return texte ? *texte : std::string();
}

bool TexteExiste(unsigned numero) { return Trouve(numero) != nullptr; }

std::string RemplitFormat(const std::string& format, std::initializer_list<std::string> arguments) {
  std::string resultat;
  auto suivant = arguments.begin();
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      resultat += format[i];
    } else if (i + 1 < format.size() && format[i + 1] == '%') {
      resultat += '%';
      ++i;
    } else if (const std::size_t taille = TailleConversion(format, i + 1)) {
      if (suivant != arguments.end()) resultat += *suivant++;
      i += taille;
    } else {
      resultat += '%';
    }
  }
  return resultat;
}

std::string TexteFormat(unsigned numero, std::initializer_list<std::string> arguments) {
  return RemplitFormat(Texte(numero), arguments);
}

std::string TexteErreur(unsigned numero, std::initializer_list<std::string> arguments) {
  const bool connue = numero >= premiereErreur && numero <= derniereErreur && TexteExiste(numero);
  return connue ? TexteFormat(numero, arguments)
                : TexteFormat(FormatErreurInconnue, {std::to_string(numero)});
}

}  // namespace fenlor
