// What the rules of the automatic entries say.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

/// number of the model
inline constexpr TexteFixe ErrModeleAbsent{3510, "L'écriture automatique %s n'existe pas."};
/// number of a due date
inline constexpr TexteFixe ErrEcheanceAbsente{3511, "Il n'y a pas d'échéance %s à confirmer."};
inline constexpr TexteFixe ErrPeriodicite{3512, "La périodicité est incorrecte."};
inline constexpr TexteFixe ErrNombrePaiements{3513, "Le nombre de paiements va de 1 à %s."};
inline constexpr TexteFixe ErrGenreAuto{3514,
    "Le genre est incorrect : 1 pour une recette, 2 pour une dépense."};
inline constexpr TexteFixe QuestionSupprimeAuto{3515,
    "Faut-il supprimer cette écriture automatique?", Detruit};
inline constexpr TexteFixe QuestionSupprimeEcheance{3516, "Faut-il supprimer cette transaction ?"};
inline constexpr TexteFixe MessageSansEcheance{3517,
    "Il n'y a pas d'échéance à confirmer !\n\nCliquer sur OK pour continuer."};
/// label, due date, limit
inline constexpr TexteFixe ErrEcheanceFranc{3046,
    "L'enregistrement de l'échéance \"%s\" du %s est impossible car il est impossible d'enregistrer "
    "une écriture en Franc après le %s.\nIl est nécessaire de modifier l'écriture automatique en "
    "saisissant un montant en Euro."};

// Tool tip of a model
inline constexpr TexteFixe BulleProchaine{6600, "Prochaine échéance : %s"};
inline constexpr TexteFixe BulleSansProchaine{6601, "Plus d'échéance"};

// The forecast
inline constexpr TexteFixe TitrePrevisions{6602, "Prévisions des écritures automatiques"};
inline constexpr TexteFixe MotTouteTresorerie{6603, "Toute la trésorerie"};

// Settings of an exercice: the day of the last walk
inline constexpr TexteFixe CleConsultation{8850, "Consultation"};

inline constexpr TexteFixe ErrSuppressionAuto{3097, "Erreur de suppression d'une écriture automatique."};
inline constexpr TexteFixe ErrNombreAuto{3098, "Impossible de créer plus de %d écritures automatiques."};
inline constexpr TexteFixe ErrEnregistrementAuto{3101, "Erreur d'enregistrement d'une écriture automatique."};
inline constexpr TexteFixe ErrLectureAuto{3102, "Erreur de lecture d'une écriture automatique."};

// clang-format on

}  // namespace fenlor
