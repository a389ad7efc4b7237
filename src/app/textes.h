// Texts of app/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Errors
inline constexpr TexteFixe ErrIntree{3120, "Erreur %d dans INTREE"};

// Refusals
inline constexpr TexteFixe ErrCabinet{3216, "Le cabinet %s ne peut pas être ouvert : %s"};
/// settings that name no exercice though books are there: file, names
inline constexpr TexteFixe ErrReglagesVides{3217,
    "Le fichier de réglages %s est vide ou endommagé : il ne nomme aucun exercice, mais le dossier "
    "contient les livres de : %s.\n\nAucun livre n'est perdu. Remettez une copie de ce fichier à sa "
    "place avant de continuer."};
inline constexpr TexteFixe ErrRaccourciPris{3240, "%s est déjà le raccourci de \"%s\"."};  ///< key, command
/// a key that forms or menus need
inline constexpr TexteFixe ErrRaccourciInterdit{3241,
    "%s ne peut pas servir de raccourci : les formulaires ou les menus ont besoin de cette "
    "touche.\nAjoutez Ctrl, ou prenez une touche de fonction."};

// Questions
inline constexpr TexteFixe QuestionNouveauCabinet{3320,
    "Le dossier %s n'existe pas.\nFaut-il y créer un nouveau cabinet ?"};

// Desk tools
inline constexpr TexteFixe FichierAstuces{5800, "zntips.txt"};
inline constexpr TexteFixe SecAstuce{5801, "Astuce"};  ///< of the user's registry
inline constexpr TexteFixe ClePosition{5802, "Position"};
inline constexpr TexteFixe CleDemarrage{5803, "Démarrage"};
inline constexpr TexteFixe SecCalculatrice{5804, "Calculatrice"};  ///< position of the window
inline constexpr TexteFixe SecAide{5805, "Aide"};  ///< position of the window
inline constexpr TexteFixe CalculErreur{5806, "Erreur"};  ///< shown by the calculator
inline constexpr TexteFixe CalculTaux{5807, "Le taux de l'Euro est de %s F."};  ///< rate
inline constexpr TexteFixe CalculPasNombre{5808, "Ce texte n'est pas un nombre."};
inline constexpr TexteFixe FormatAstuce{5809, "Astuce %d sur %d"};  ///< number of the tip, number of tips
inline constexpr TexteFixe AideRienTrouve{5810, "Aucune page ne contient « %s »."};  ///< what was searched
inline constexpr TexteFixe InfoInconnu{5811, "inconnu"};
inline constexpr TexteFixe InfoMemoire{5812, "%s Mo, dont %s Mo disponibles"};  ///< total, free
inline constexpr TexteFixe InfoEcran{5813, "%s x %s, échelle %d %%"};  ///< width, height, scale
inline constexpr TexteFixe InfoDisque{5814, "%s Mo libres sur %s Mo"};  ///< free, total
inline constexpr TexteFixe InfoKo{5815, "%s Ko"};
inline constexpr TexteFixe FormatVersion{5816, "Version %s"};
inline constexpr TexteFixe InfoCopie{5817, "Copié dans le presse-papiers."};

// Bars and shortcuts
inline constexpr TexteFixe CleEtatBarres{5830, "Etat"};
inline constexpr TexteFixe CleBarreEtat{5831, "Barre d'état"};
inline constexpr TexteFixe CleCommandesBarre{5832, "Commandes"};
inline constexpr TexteFixe CleTailleIcones{5833, "Taille"};
inline constexpr TexteFixe CleTextesIcones{5834, "Textes"};
inline constexpr TexteFixe MotTexteDessous{5835, "Dessous"};
inline constexpr TexteFixe MotTexteACote{5836, "A côté"};
inline constexpr TexteFixe MotTexteSans{5837, "Sans"};
inline constexpr TexteFixe AccueilExercice{5850, "Exercice %s"};  ///< name of the exercice
inline constexpr TexteFixe AccueilQueFaire{5851, "Que voulez-vous faire ?"};
inline constexpr TexteFixe AccueilCloture{5852,
    "Cet exercice est clôturé : tout se consulte, rien ne se modifie."};
inline constexpr TexteFixe AccueilEnLecture{6750,
    "Ce cabinet est ouvert en lecture seule : tout se consulte, rien ne se modifie."};
inline constexpr TexteFixe AccueilBienvenue{5853, "Bienvenue dans Fenlor"};
inline constexpr TexteFixe AccueilPremier{5854,
    "Ce cabinet n'a pas encore d'exercice. Commencez par en créer un : Fenlor prépare les comptes, "
    "les rubriques de la 2035 et les journaux. Une sauvegarde ramène les livres d'une autre machine. Le "
    "cabinet de démonstration montre trois années déjà tenues."};
inline constexpr TexteFixe AccueilAucun{5855, "Aucun exercice n'est ouvert"};
inline constexpr TexteFixe AccueilChoisir{5856, "Choisissez un exercice dans la barre d'outils, ou :"};
inline constexpr TexteFixe SituationTresorerie{6762, "Trésorerie"};
inline constexpr TexteFixe SituationLivres{6763, "Livres"};
inline constexpr TexteFixe SituationRapproche{6764, "Rapproché"};
inline constexpr TexteFixe SituationAutres{6765, "Tous les comptes..."};
inline constexpr TexteFixe SituationResultats{6766, "Résultats"};
inline constexpr TexteFixe SituationRecettes{6767, "Recettes"};
inline constexpr TexteFixe SituationDepenses{6768, "Dépenses"};
inline constexpr TexteFixe SituationResultat{6769, "Résultat"};
inline constexpr TexteFixe SituationZero{6784, "0,00"};
inline constexpr TexteFixe SituationEuro{6782, " €"};
inline constexpr TexteFixe SituationFranc{6783, " F"};
inline constexpr TexteFixe SituationBarres{6781, "Résultat par mois, %s"};
inline constexpr TexteFixe SituationAttente{6770, "En attente"};
inline constexpr TexteFixe SituationBrouillon{6771, "Une écriture à valider"};
inline constexpr TexteFixe SituationBrouillons{6772, "%s écritures à valider"};
inline constexpr TexteFixe SituationOperation{6773, "Une opération à rapprocher"};
inline constexpr TexteFixe SituationOperations{6774, "%s opérations à rapprocher"};
inline constexpr TexteFixe SituationEcheance{6775, "Une écriture automatique d'ici quatorze jours"};
inline constexpr TexteFixe SituationEcheances{6776, "%s écritures automatiques d'ici quatorze jours"};
inline constexpr TexteFixe SituationSauvegarde{6777, "Dernière sauvegarde : aujourd'hui"};
inline constexpr TexteFixe SituationSauvegardeHier{6778, "Dernière sauvegarde : hier"};
inline constexpr TexteFixe SituationSauvegardeJours{6779, "Dernière sauvegarde : il y a %s jours"};
inline constexpr TexteFixe SituationSansSauvegarde{6780, "Aucune sauvegarde"};
inline constexpr TexteFixe CleFenetresOuvertes{5857, "Fenêtres ouvertes"};
inline constexpr TexteFixe FormatTitreExercice{5858, "%s %s : %s"};  ///< product, "Exercice", name
inline constexpr TexteFixe MotExercice{5859, "Exercice"};
inline constexpr TexteFixe MotCommande{6726, "Commande"};
inline constexpr TexteFixe MotEtat{6727, "État"};
inline constexpr TexteFixe MotAide{6728, "Aide"};
inline constexpr TexteFixe MotPageAide{6729, "Page d'aide"};
inline constexpr TexteFixe QuestionAutreExercice{3585,
    "Ce que vous avez choisi est dans l'exercice %s.\nFaut-il ouvrir cet exercice ?"};
inline constexpr TexteFixe TitreDemo{5860, "Cabinet de démonstration"};
inline constexpr TexteFixe TexteDemo{5861, "Création de trois exercices\n\nen cours..."};
inline constexpr TexteFixe CleOnglets{6747, "Onglets"};
// clang-format on

}  // namespace fenlor
