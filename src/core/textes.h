// Texts that several floors share. A text that one floor uses stands in the `textes.h` of that floor.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Titles
inline constexpr TexteFixe TitreApplication{5000, "Fenlor"};

// Messages of the indexed files, shown inside 3049
inline constexpr TexteFixe MessageCreation{5010, "CREATION de l'enregistrement impossible."};
inline constexpr TexteFixe MessageLecture{5011, "LECTURE de l'enregistrement impossible."};
inline constexpr TexteFixe MessageEcriture{5012, "ECRITURE de l'enregistrement impossible."};
inline constexpr TexteFixe MessageSuppression{5013, "Suppression de l'enregistrement impossible."};
inline constexpr TexteFixe MessageAjoutCle{5014, "Ajout de la clé %d impossible."};  ///< index of the key
/// index of the key
inline constexpr TexteFixe MessageSuppressionCle{5015, "Suppression de la clé %d impossible."};

// Words
inline constexpr TexteFixe MotOui{5339, "Oui"};
inline constexpr TexteFixe MotNon{5340, "Non"};

// Fields of the forms of entries, as their labels name them
inline constexpr TexteFixe NomChampTtc{7400, "T.T.C."};
inline constexpr TexteFixe NomChampProfessionnel{7401, "Professionnelle"};
inline constexpr TexteFixe NomChampTva{7402, "T.V.A."};
inline constexpr TexteFixe NomChampMontant{7403, "Montant"};
inline constexpr TexteFixe NomChampDebit{7404, "Débit"};
inline constexpr TexteFixe NomChampCredit{7405, "Crédit"};
inline constexpr TexteFixe NomChampLibelle{7406, "Libellé"};
inline constexpr TexteFixe NomChampCode{7407, "Code"};  ///< of the forms of accounts and headings
inline constexpr TexteFixe NomChampCompte{7408, "Compte"};
inline constexpr TexteFixe NomChampDesignation{7409, "Désignation"};
inline constexpr TexteFixe NomChampRubrique{7410, "Rubrique"};
inline constexpr TexteFixe NomChampFormule{7411, "Formule"};
// clang-format on

}  // namespace fenlor
