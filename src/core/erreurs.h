// The numbered errors of files, settings and sessions that several floors tell, and those of commands to
// come. What is refused of a typed value stands in `core/erreurssaisie.h`, of an exercice as a whole in
// `core/erreursexercice.h`, the error of one floor in the `textes.h` of that floor.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Errors
inline constexpr TexteFixe ErrRecuperationFichier{3007, "Récupération fichier (%s) impossible"};
inline constexpr TexteFixe ErrCreationFichier{3008, "Création fichier (%s) impossible"};
inline constexpr TexteFixe ErrOuvertureFichier{3011, "Ouverture fichier (%s) impossible%s"};
inline constexpr TexteFixe ErrFermetureFichier{3012, "Fermeture fichier (%d) impossible"};
inline constexpr TexteFixe ErrFichierIndexe{3049, "%s\nFichier = %s\nErreur = %d"};
inline constexpr TexteFixe ErrCodeOuverture{3050, "Erreur %d à l'ouverture de :\n%s."};
inline constexpr TexteFixe ErrCapaciteDisque{3064, "La lecture de la capacité du disque est impossible."};
inline constexpr TexteFixe ErrDisquePlein{3065,
    "Il n'y a plus assez de place sur le lecteur de destination !"};
inline constexpr TexteFixe ErrMotDePasseErrone{3074, "Mot de passe erroné !"};
inline constexpr TexteFixe ErrMiseAJour{3121, "Erreur (%d) à l'execution de QVUpdate.exe"};

// Refusals
inline constexpr TexteFixe ErrCabinetOccupe{3213, "Ce cabinet est déjà ouvert (%s)."};
inline constexpr TexteFixe ErrMagasin{3214, "%s"};  ///< the store's own words
/// path, reason
inline constexpr TexteFixe ErrReglages{3220, "Les réglages n'ont pas pu être enregistrés dans %s : %s"};

inline constexpr TexteFixe ErrExerciceInconnu{3208, "L'exercice %s n'existe pas."};
// clang-format on

}  // namespace fenlor
