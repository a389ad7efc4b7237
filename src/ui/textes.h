// Texts of ui/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// What is typed into the fields
/// what was typed
inline constexpr TexteFixe ErrMontantIllisible{3400,
    "\"%s\" ne peut pas être lu comme un nombre.\n\nÉcrivez par exemple 1250,50 ou 1 250,50 : rien "
    "n'a été enregistré."};

// Questions
inline constexpr TexteFixe QuestionEnregistrerSaisie{3341, "Faut-il enregistrer ce qui a été tapé ?"};

// Titles
inline constexpr TexteFixe FormatTitreErreur{5001, "%s - Erreur (%u)"};
inline constexpr TexteFixe FormatTitreTexte{5002, "%s - Erreur"};

// Keys of the other sections
inline constexpr TexteFixe CleCouleurSysteme{5425, "Couleur système"};
inline constexpr TexteFixe ClePoliceDefaut{5426, "Police par défaut"};
inline constexpr TexteFixe CleZerosSignificatifs{5430, "Zéros Significatifs"};
inline constexpr TexteFixe CleNombreChiffres{5431, "Nombre de chiffres"};

// Lists
inline constexpr TexteFixe CleColonnes{5600, "Colonnes"};
inline constexpr TexteFixe CleOrdreColonnes{6746, "Ordre des colonnes"};
inline constexpr TexteFixe TitreColonnes{6748, "Colonnes de la liste"};
inline constexpr TexteFixe ErrAucuneColonne{6749, "Une colonne au moins doit être montrée."};

// Preferences and positions of windows
inline constexpr TexteFixe CleCouleurBordures{5640, "Couleur des bordures"};
inline constexpr TexteFixe CleCouleurImpaire{5641, "Couleur impaire"};
inline constexpr TexteFixe CleCouleurPaires{5642, "Couleur paires"};
inline constexpr TexteFixe CleCouleurFond{5643, "Couleur du fond"};
inline constexpr TexteFixe ClePoliceListes{5644, "Police des listes"};
inline constexpr TexteFixe ClePoliceJournaux{5645, "Police des journaux"};
inline constexpr TexteFixe ClePoliceValidees{5646, "Police des écritures validées"};
inline constexpr TexteFixe ClePoliceSaisies{5647, "Police des saisies"};
inline constexpr TexteFixe ClePoliceTextes{5648, "Police des textes"};
inline constexpr TexteFixe ClePoliceMois{5649, "Police des mois"};
inline constexpr TexteFixe NomFiltre{6722, "Filtre de la liste"};
inline constexpr TexteFixe IndiceFiltre{6723, "Filtrer : les lignes qui ont tous ces mots"};
inline constexpr TexteFixe FermeFiltre{6724, "Fermer le filtre (Échap)"};
inline constexpr TexteFixe FormatFiltre{6725, "%s sur %s"};  ///< rows that show, rows there are
inline constexpr TexteFixe VideFiltre{6730, "Aucune ligne n'a tous ces mots."};
inline constexpr TexteFixe NomPropositions{6731, "Propositions"};
inline constexpr TexteFixe CleDemanderSupprimer{6682, "Demander avant de supprimer"};  ///< on unless "Non"
inline constexpr TexteFixe CleFenetre{5651, "Fenêtre"};
inline constexpr TexteFixe CleAgrandie{5652, "Agrandie"};
inline constexpr TexteFixe CleZoom{6745, "Zoom"};  ///< of the texts, percent
inline constexpr TexteFixe CleContrasteEleve{6740, "Contraste élevé"};
inline constexpr TexteFixe PoliceParDefaut{5653, "MS Sans Serif, -11, 0, 0, 0, 0, 0"};
inline constexpr TexteFixe FormatPolice{5654, "%s, %d, %ld, %d, %d, %d, %d"};
inline constexpr TexteFixe FormatPosition{5655, "%d, %d, %d, %d"};
inline constexpr TexteFixe FormatPourcent{5656, "%d%%"};
inline constexpr TexteFixe MotGras{5657, ", Gras"};
inline constexpr TexteFixe MotItalique{5658, ", Italique"};
inline constexpr TexteFixe MotSouligne{5659, ", Souligné"};
inline constexpr TexteFixe MotBarre{5660, ", Barré"};
inline constexpr TexteFixe PoliceSysteme{5661, "System"};
inline constexpr TexteFixe ExemplePolice{5662, "AaBbCcXxYyZz"};
// clang-format on

}  // namespace fenlor
