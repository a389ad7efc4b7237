// Texts of forms/journal/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Questions
inline constexpr TexteFixe QuestionEnregistrer{3317, "Faut-il enregistrer cette écriture ?"};
inline constexpr TexteFixe QuestionEditerLiee{3319,
    "Voulez-vous éditer cette écriture crée par Quorbane ?", Detruit};
inline constexpr TexteFixe QuestionEnregistrerVirement{3375, "Faut il enregistrer ce virement ?"};

// Words
inline constexpr TexteFixe MotCheque{5348, "Chèque"};
inline constexpr TexteFixe MotAutre{5349, "Autre"};

// Windows of the journals
/// word for the mode
inline constexpr TexteFixe FormatTitreJournal[] = {
    {6053, "Ecritures de recettes - %s "},
    {6054, "Ecritures de dépenses - %s "},
    {6055, "Ecritures d'opérations diverses - %s "},
};
/// validated, draft, all
inline constexpr TexteFixe MotModeListe[] = {
    {6056, "Validées"},
    {6057, "Brouillard"},
    {6058, "Toutes"},
};
inline constexpr TexteFixe CleJournal[] = {
    {6059, "Recettes"},
    {6060, "Depenses"},
    {6061, "Opérations diverses"},
};
inline constexpr TexteFixe NomDuJournal[] = {
    {6062, "Recettes"},
    {6063, "Dépenses"},
    {6064, "Opérations diverses"},
};
/// account, index of the month, mode, 1 when one row an entry
inline constexpr TexteFixe FormatVueJournal{6065, "%s, %d, %s, %d"};
inline constexpr TexteFixe FormatVueJournalOD{6066, "%s, %d, %s"};
inline constexpr TexteFixe FormatEnteteJournal{6067, "%s du mois de"};  ///< name of the journal
inline constexpr TexteFixe FormatMoisJournal{6068, "%s %d"};  ///< month, year
inline constexpr TexteFixe FormatMoisPartiel{6069, "%s %d   *** Liste partielle ***"};
inline constexpr TexteFixe MoisAbreges{6071, "Jan.|Fev.|Mar.|Avr.|Mai.|Juin|Juil.|Aou.|Sep.|Oct.|Nov.|Dec."};
inline constexpr TexteFixe MotTotal{6072, "Total  "};
inline constexpr TexteFixe MotTotalSelection{6073, "Total  Sélectionné   "};
inline constexpr TexteFixe FormatTotal{6077, "%s "};
inline constexpr TexteFixe FormatLigneJournal{6078, " %u "};
inline constexpr TexteFixe FormatJourJournal{6079, " %d "};
inline constexpr TexteFixe VideMois{6080, "Aucune écriture ce mois-ci."};  ///< shown in place of rows
inline constexpr TexteFixe VideCriteres{6081, "Aucune écriture ne répond aux critères d'affichage."};
/// of the mode, as above
inline constexpr TexteFixe VideMode[] = {
    {6082, "Aucune écriture validée ce mois-ci."},
    {6083, "Aucune écriture en brouillard ce mois-ci."},
};
inline constexpr TexteFixe VideTresorerie{6085,
    "Il n'y a pas encore de compte de trésorerie : créez-en un pour saisir des écritures."};
inline constexpr TexteFixe VideAjouter{6086, "« Ajouter » (Inser) en saisit une."};

// Forms of entries
inline constexpr TexteFixe TitreEcriture{6100, "%s : %s"};  ///< what, and "ajout" or "modification"
inline constexpr TexteFixe TitreRecette{6101, "Ecriture de RECETTE"};
inline constexpr TexteFixe TitreDepense{6102, "Ecriture de DEPENSE"};
inline constexpr TexteFixe TitreLigneTresorerie{6103, "Ecriture d'une ligne de trésorerie"};
inline constexpr TexteFixe MotAjout{6104, "ajout"};
inline constexpr TexteFixe MotModification{6105, "modification"};
inline constexpr TexteFixe AucuneLigneTresor{6107, "Aucune ligne. La touche Ins en ajoute une."};
inline constexpr TexteFixe TitreOD{6130, "Ecriture d'OPERATION DIVERSES"};
inline constexpr TexteFixe TitreLigneOD{6131, "Ecriture d'une ligne d'O.D."};

// Periods
inline constexpr TexteFixe FormatMoisAnnee{6162, "%s  %s"};  ///< year, name of the month
inline constexpr TexteFixe TitreSolde{6712, "Solde"};
/// amount, treasury account
inline constexpr TexteFixe FormatOffre{6732, "La dernière fois %s, %s : Ctrl+Entrée"};
// clang-format on

}  // namespace fenlor
