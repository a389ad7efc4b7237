// Texts of reports/: every message, title, word and format that is used here, or here and above.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Windows of the accounts
inline constexpr TexteFixe TitreComptesRecettes{5909, "Comptes de recettes"};
inline constexpr TexteFixe TitreComptesDepenses{5910, "Comptes de dépenses"};
inline constexpr TexteFixe TitreComptesTresorerie{5911, "Comptes de trésorerie"};
inline constexpr TexteFixe TitrePlanComptable{5912, "Plan Comptable"};

// Headings
inline constexpr TexteFixe TitreRubriques{5930, "Rubriques de l'état fiscal"};

// Labels
inline constexpr TexteFixe TitreLibelles{5954, "Libellés"};

// Windows of the journals
/// of receipts; expenses and opérations diverses follow, here and below
inline constexpr TexteFixe TitreJournal[] = {
    {6050, "Ecritures de recettes"},
    {6051, "Ecritures de dépenses"},
    {6052, "Opérations diverses"},
};
inline constexpr TexteFixe MotTousComptes{6070, "< Tous >"};

// Reports of the lines: detail, extract, general ledger
inline constexpr TexteFixe TitreEtatDetail{7000, "Détail des écritures"};
inline constexpr TexteFixe AvancementEtatDetail{7001,
    "\nConstruction du détail des écritures\n\nen cours..."};
/// Franc; Euro, both
inline constexpr TexteFixe EnteteEtatDetail[] = {
    {7002, "\\B\\M002\\N002Lg\\T006Date\\T019Libellé\\T063Rub\\T073Compte\\T090\\R099 Débit "
     "F\\T110\\R114Crédit F\n\\S002\\L\\0"},
    {7003, "\\B\\M002\\N002Lg\\T006Date\\T019Libellé\\T063Rub\\T073Compte\\T090\\R099 Débit "
     "€\\T110\\R114Crédit €\n\\S002\\L\\0"},
    {7004, "\\B\\M002\\N002Lg\\T006Date\\T016Libellé\\T060Rub\\T070Compte\\T085\\R099 Débit "
     "F\\T100\\R114Débit €\\T115\\R129Crédit F\\T130\\R144Crédit €\n\\S002\\L\\0"},
};
inline constexpr TexteFixe PiedEtatDetail{7005, "\\L\\0\\M002\\N002\\S001"};
/// of receipts: period, centralisation; of expenses, of opérations diverses: period
inline constexpr TexteFixe SectionEtatDetail[] = {
    {7006, "\n\n\\B\\M002\\N002Recettes de la période du \\0%s \\Bau \\0%s %s\\0\n\n"},
    {7007, "\n\n\\B\\M002\\N002Dépenses de la période du \\0%s \\Bau \\0%s\\0\n\n"},
    {7008, "\n\n\\B\\M002\\N002Opérations Diverses de la période du \\0%s \\Bau \\0%s\\0\n\n"},
};
/// by `CentralisationEtat`
inline constexpr TexteFixe MotCentralisation[] = {
    {7009, "Détaillée"},
    {7010, "Centralisation par Jour"},
    {7011, "Centralisation par Semaine"},
    {7012, "Centralisation par Mois"},
};
/// one currency; both follows, here and below
inline constexpr TexteFixe RangeeEtatDetail[] = {
    {7013, "\\0\\M002\\N002%s\\T006%s\\T019%s\\T063%s\\T073%s\\T090\\R099%s\\T110\\R114%s\n\\L\\0"},
    {7014, "\\0\\M002\\N001%s\\T004%s\\T016%s\\T060%s\\T070%s\\T085\\R099%s\\T100\\R114%s"
        "\\T115\\R129%s\\T130\\R144%s\n\\L\\0"},
};
/// month
inline constexpr TexteFixe TotalMoisEtatDetail[] = {
    {7015, "\\0\\M002\\N002\\S002\\BTotal Mois %s:\\0\\T090\\R099%s\\T110\\R114%s\\L\n"},
    {7016, "\\0\\M002\\N002\\S002\\BTotal Mois "
     "%s:\\0\\T085\\R099%s\\T100\\R114%s\\T115\\R129%s\\T130\\R144%s\\L\n"},
};
inline constexpr TexteFixe TotalEtatDetail[] = {
    {7017, "\\0\\M002\\N002\\S002\\BTotal:\\0\\T090\\R099%s\\T110\\R114%s\\L\n"},
    {7018, "\\0\\M002\\N002\\S002\\BTotal:\\0\\T085\\R099%s\\T100\\R114%s\\T115\\R129%s\\T130\\R144%s\\L\n"},
};
inline constexpr TexteFixe TitreEtatExtrait{7020, "Extrait de compte"};
inline constexpr TexteFixe AvancementEtatExtrait{7021,
    "\nConstruction de l'extrait de compte\n\nen cours..."};
inline constexpr TexteFixe PiedEtatExtrait{7022, "\\L\\0\\M010\\N010\\S001"};  ///< of the general ledger too
/// kind, short number, designation, period; of the general ledger too
inline constexpr TexteFixe CompteEtatExtrait{7023,
    "\n\n\\B\\M000\\R030%s :\\L\\0\\T040%s %s\n\\B\\R030du :\\L\\0\\T040%s\n\\B\\R030au "
    ":\\L\\0\\T040%s\n\n"};
inline constexpr TexteFixe MotCompteTva{7024, "Compte de T.V.A."};  ///< beside the words of `MotNatureCompte`
/// credit and debit in one currency, in both; amount in one, in both
inline constexpr TexteFixe EnteteEtatExtrait[] = {
    {7025, "\\B\\M010\\N010Lg\\T015Date\\T025Libellé\\T098\\R077Débit\\T118\\R097Crédit\n\\S002\\L\\0"},
    {7026, "\\B\\M010\\N010Lg\\T015Date\\T025Libellé\\T058\\R077Débit F\\T078\\R097Débit "
     "€\\T098\\R117Crédit F\\T118\\R144Crédit €\n\\S002\\L\\0"},
    {7027, "\\B\\M010\\N010Lg\\T015Date\\T025Libellé\\T098\\R117Montant\n\\S002\\L\\0"},
    {7028, "\\B\\M010\\N010Lg\\T015Date\\T025Libellé\\T098\\R117Montant F\\T118\\R144Montant "
     "€\n\\S002\\L\\0"},
};
/// credit and debit in one currency, in both; amount
inline constexpr TexteFixe RangeeEtatExtrait[] = {
    {7029, "\\0\\M010\\N010%d\\T015%s\\T027%s\\T098\\R077%s\\T118\\R097%s\\L\n"},
    {7030, "\\0\\M010\\N010%d\\T013%s\\T025%s\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\\L\n"},
    {7031, "\\0\\M010\\N010%d\\T013%s\\T025%s\\T098\\R117%s\\T118\\R144%s\\L\n"},
};
/// likewise
inline constexpr TexteFixe TotalEtatExtrait[] = {
    {7032, "\\0\\M010\\N010\\S002\\BTotal :\\T098\\R077%s\\T118\\R097%s\\L\\0\n"},
    {7033, "\\0\\M010\\N010\\S002\\BTotal :\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\\L\\0\n"},
    {7034, "\\0\\M010\\N010\\S002\\BTotal :\\T098\\R117%s\\T118\\R144%s\\L\\0\n"},
};
/// with the balance after each line, in the currency of the year alone: credit and debit; amount
inline constexpr TexteFixe EnteteEtatSolde[] = {
    {6733, "\\B\\M010\\N010Lg\\T015Date"
     "\\T025Libellé\\T078\\R097Débit\\T098\\R117Crédit\\T118\\R134Solde\n\\S002\\L\\0"},
    {6734, "\\B\\M010\\N010Lg\\T015Date\\T025Libellé\\T098\\R117Montant\\T118\\R134Solde\n\\S002\\L\\0"},
};
inline constexpr TexteFixe RangeeEtatSolde[] = {
    {6735, "\\0\\M010\\N010%d\\T015%s\\T027%s\\T078\\R097%s\\T098\\R117%s\\T118\\R134%s\\L\n"},
    {6736, "\\0\\M010\\N010%d\\T015%s\\T027%s\\T098\\R117%s\\T118\\R134%s\\L\n"},
};
inline constexpr TexteFixe ReportEtatSolde{6737, "\\0\\M010\\N010\\T027Report\\T118\\R134%s\\L\n"};
inline constexpr TexteFixe TotalEtatSolde[] = {
    {6738, "\\0\\M010\\N010\\S002\\BTotal :\\T078\\R097%s\\T098\\R117%s\\T118\\R134%s\\L\\0\n"},
    {6739, "\\0\\M010\\N010\\S002\\BTotal :\\T098\\R117%s\\T118\\R134%s\\L\\0\n"},
};
inline constexpr TexteFixe TitreGrandLivre{7040, "Grand livre"};
inline constexpr TexteFixe AvancementGrandLivre{7041,
    "\nConstruction du grand livre des écritures\n\nen cours..."};
/// as `EnteteEtatExtrait`
inline constexpr TexteFixe EnteteGrandLivre[] = {
    {7042, "\\B\\M010\\N010Lg\\T013Date\\T030Libellé\\T058\\R077Débit\\T078\\R097Crédit\\T098\\R117Solde "
     "Débit\\T118\\R144Solde Crédit\n\\S002\\L\\0"},
    {7043, "\\B\\M010\\N010Lg\\T013Date\\T030Libellé\\T058\\R077Débit F\\T078\\R097Débit "
     "€\\T098\\R117Crédit F\\T118\\R144Crédit €\n\\S002\\L\\0"},
    {7044, "\\B\\M010\\N010Lg\\T015Date\\T032Libellé\\T098\\R117Montant \n\\S002\\L\\0"},
    {7045, "\\B\\M010\\N010Lg\\T015Date\\T032Libellé\\T098\\R117Montant F\\T118\\R144Montant "
     "€\n\\S002\\L\\0"},
};
/// credit and debit; amount follows, here and below
inline constexpr TexteFixe RangeeGrandLivre[] = {
    {7046, "\\0\\M010\\N010%d\\T015%s\\T030%s\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\\L\n"},
    {7047, "\\0\\M010\\N010%d\\T015%s\\T030%s\\T098\\R117%s\\T118\\R144%s\\L\n"},
};
inline constexpr TexteFixe TotalMoisGrandLivre[] = {
    {7048, "\\0\\M010\\N010\\S002\\BTotal du mois "
     ":\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\\L\n"},
    {7049, "\\0\\M010\\N010\\S002\\BTotal du mois :\\T098\\R117%s\\T118\\R144%s\\L\n"},
};
inline constexpr TexteFixe TotalGrandLivre[] = {
    {7050, "\\0\\M010\\N010\\S002\\BTotal :\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\\L\n"},
    {7051, "\\0\\M010\\N010\\S002\\BTotal :\\T098\\R117%s\\T118\\R144%s\\L\n"},
};

// Reports of the journal, balance, centralisation, VAT, reconciled lines
inline constexpr TexteFixe AvancementEtatJournal{7100,
    "\nConstruction de l'impression du journal des écritures\n\nen cours..."};
/// of entries; of lines follows, here and below
inline constexpr TexteFixe EnteteEtatJournal[] = {
    {7101, "\\B\\M002\\N002Lg\\T008Date\\T020Libellé\\T050\\R064Montant F\\T065\\R078Montant "
     "€\\L\\T080P\\T082B\\T084R\\T095V\\T089Rub\\T095Compte\\T105Désignation\n\\S002\\0"},
    {7102, "\\B\\M002\\N002Lg\\T008Date\\T020Libellé\\T038\\R050Débit F\\T051\\R062Crédit "
     "F\\T063\\R074Débit €\\T075\\R086Crédit "
     "€\\L\\T089P\\T091B\\T093R\\T095V\\T098Rub\\T104Compte\\T114Désignation\n\\S002\\0"},
};
inline constexpr TexteFixe RangeeEtatJournal[] = {
    {7103, "\\0\\M002\\N002%d\\T008%s\\T020%s\\T050\\R064%s\\T065\\R078%s\\T080%c\\T082%c\\T084%c"
        "\\T086%c\\T089%s\\T095%s\\T105%s\n"},
    {7104, "\\0\\M002\\N002%s\\T008%s\\T020%s\\T038\\R050%s\\T051\\R062%s\\T063\\R074%s\\T075\\R086%s\\L"
        "\\T089%c\\T091%c\\T093%c\\T095%c\\T098%s\\T104%s\\T114%s\n"},
};
inline constexpr TexteFixe TotalEtatJournal[] = {
    {7105, "\\0\\M002\\N002\\S002\\BTotal :\\T050\\R064%s\\T065\\R078%s\\L\\0\n"},
    {7106, "\\0\\M002\\N002\\S002\\BTotal :\\R050%s\\R062%s\\R074%s\\R086%s\\L\\0\n"},
};
inline constexpr TexteFixe PiedEtatJournal{7107, "\\0\\M002\\N002\\S001"};
/// month, year, code of the account; of a narrowed list follows, here and below
inline constexpr TexteFixe MoisEtatJournal[] = {
    {7108, "\\B\\M000\\R010Mois de :\\0\\L\\T020%s %d\\L\n\\B\\R010Compte :\\0\\L\\T020%s\\L\n\n"},
    {7109, "\\B\\M000\\R010Mois de :\\0\\L\\T020%s %d   *** Liste partielle ***\n\\B\\R010Compte "
     ":\\0\\L\\T020%s\n\n"},
};
inline constexpr TexteFixe MoisEtatJournalOD[] = {
    {7110, "\\B\\M000\\R010Mois de :\\0\\L\\T020%s %d\\L\n\n"},
    {7111, "\\B\\M000\\R010Mois de :\\0\\L\\T020%s %d   *** Liste partielle ***\\L\n\n"},
};
inline constexpr TexteFixe TitreEtatBalance{7120, "Balance des comptes"};
inline constexpr TexteFixe AvancementBalance{7121, "\nConstruction de la balance des comptes\n\nen cours..."};
inline constexpr TexteFixe PiedBalance{7122, "\\L\\0\\M010\\N010\\S001"};  ///< of the VAT report too
/// Franc; Euro, both
inline constexpr TexteFixe EnteteBalance[] = {
    {7123, "\\B\\M010\\N010Compte\\T025Désignation\\T058\\R077Débit F\\T078\\R097Crébit F\\T098\\R117Solde "
     "Débit\\T118\\R144Solde Crédit \n\\S002\\0"},
    {7124, "\\B\\M010\\N010Compte\\T025Désignation\\T058\\R077Débit €\\T078\\R097Crébit €\\T098\\R117Solde "
     "Débit\\T118\\R144Solde Crédit \n\\S002\\0"},
    {7125, "\\B\\M010\\N010Compte\\T025Désignation\\T058\\R077Débit F\\T078\\R097Débit €\\T098\\R117Crédit "
     "F\\T118\\R144Crédit €\n\\S002\\0"},
};
inline constexpr TexteFixe ClasseBalance{7126, "\\L\\0\\M010\\N010\\BClasse %c\\L\\0\n\\S001"};
inline constexpr TexteFixe RangeeBalance{7127,
    "\\L\\0\\M010\\N010%s\\T025%s\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\n\\S002"};
inline constexpr TexteFixe TotalClasse{7128,
    "\\L\\0\\M010\\N010\\S002\\BTotal : "
    "\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\n\\S002"};
inline constexpr TexteFixe TotalBilan{7129,
    "\\L\\0\\M010\\N010\\S002\\BTotal  Bilan : "
    "\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\n"};
inline constexpr TexteFixe TotalExploitation{7130,
    "\\L\\0\\M010\\N010\\S002\\BTotal  Compte d'Exploitation : "
    "\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\n"};
inline constexpr TexteFixe TotalBalance{7131,
    "\\L\\0\\M010\\N010\\S002\\BTotal : \\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\n"};
inline constexpr TexteFixe TitreEtatCentralisation{7140, "Centralisation"};
inline constexpr TexteFixe AvancementCentralisation{7141,
    "\nConstruction de l'état de centralisation\n\nen cours..."};
/// of the report of reconciled lines too
inline constexpr TexteFixe PiedCentralisation{7142, "\\0\\M010\\N010\\S001"};
/// of the report of reconciled lines too
inline constexpr TexteFixe PeriodeCentralisation{7143,
    "\n\n\\B\\M000\\R030Période du :\\L\\0\\T040%s\n\\B\\R030au :\\L\\0\\T040%s\n\n"};
/// kind, short number, designation
inline constexpr TexteFixe CompteCentralisation{7144, "\n\\B\\M000\\R030%s :\\L\\0\\T040%s %s\n\n"};
/// by `Plan::Type`
inline constexpr TexteFixe MotNatureCompte[] = {
    {7145, "Compte de TRESORERIE"},
    {7146, "Compte de RECETTE"},
    {7147, "Compte de DEPENSE"},
    {7148, "Compte de TVA"},
    {7149, "Autre compte"},
};
/// heading, row, total: credit and debit, the same in both currencies; amount, both
inline constexpr TexteFixe TableauMois[] = {
    {7150, "\\B\\M010\\N010Mois\\R070Débit \\R100Crédit \\L\\0\n\\S002"},
    {7151, "\\0\\M010\\N010%s\\R070%s\\R100%s\\L\\0\n"},
    {7152, "\\M010\\N010\\S002\\BTotal : \\R070%s\\R100%s\\L\\0\n"},
    {7153, "\\B\\M010\\N010Mois\\R040Débit F\\R070Débit €\\R100Crédit F\\R130Crédit €\\L\\0\n\\S002"},
    {7154, "\\0\\M010\\N010%s\\R040%s\\R070%s\\R100%s\\R130%s\\L\\0\n"},
    {7155, "\\M010\\N010\\S002\\BTotal : \\R040%s\\R070%s\\R100%s\\R130%s\\L\\0\n"},
    {7156, "\\B\\M010\\N010Mois\\R100Montant\\L\\0\n\\S002"},
    {7157, "\\0\\M010\\N010%s\\R100%s\\L\\0\n"},
    {7158, "\\M010\\N010\\S002\\BTotal :\\R100%s\\L\\0\n"},
    {7159, "\\B\\M010\\N010Mois\\R060Montant F\\R100Montant €\\L\\0\n\\S002"},
    {7160, "\\0\\M010\\N010%s\\R060%s\\R100%s\\L\\0\n"},
    {7161, "\\M010\\N010\\S002\\BTotal : \\R060%s\\R100%s\\L\\0\n"},
};
inline constexpr TexteFixe TitreEtatTva{7165, "Etat de T.V.A."};
inline constexpr TexteFixe AvancementEtatTva{7166, "\nConstruction de l'état de T.V.A.\n\nen cours..."};
/// one currency; both follows, here and below
inline constexpr TexteFixe EnteteEtatTva[] = {
    {7167, "\\B\\M010\\N010Lg\\T015Date\\T035Libellé\\T098\\R117Recette\\T118\\R144Dépense\n\\S002\\L\\0"},
    {7168, "\\B\\M010\\N010Lg\\T015Date\\T035Libellé\\T058\\R077Recette F\\T078\\R097Recette "
     "€\\T098\\R117Dépense F\\T118\\R144Dépense €\n\\S002\\L\\0"},
};
/// short number, designation, period
inline constexpr TexteFixe CompteEtatTva{7169,
    "\n\n\\B\\M000\\R030Compte :\\L\\0\\T040%s %s\n\\B\\R030du :\\L\\0\\T040%s\n\\B\\R030au "
    ":\\L\\0\\T040%s\n\n"};
inline constexpr TexteFixe RangeeEtatTva[] = {
    {7170, "\\0\\M010\\N010%d\\T015%s\\T035%s\\T098\\R117%s\\T118\\R144%s\\L\n"},
    {7171, "\\0\\M010\\N010%d\\T015%s\\T035%s\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\\L\n"},
};
inline constexpr TexteFixe TotalEtatTva[] = {
    {7172, "\\0\\M010\\N010\\S002\\BTotal :\\T098\\R117%s\\T118\\R144%s\\L\\0\n"},
    {7173, "\\0\\M010\\N010\\S002\\BTotal :\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\\L\\0\n"},
};
inline constexpr TexteFixe TitreEtatRapprochement{7180, "Etat de rapprochement"};
inline constexpr TexteFixe AvancementRapprochement{7181,
    "\nConstruction de l'état des rapprochements bancaires\n\nen cours..."};
/// one currency; both follows
inline constexpr TexteFixe EnteteRapprochement[] = {
    {7182, "\\B\\M010\\N010Lg\\T015Date\\T030Libellé\\T058\\R077Recette \\T078\\R097Dépense\n\\S002\\L\\0"},
    {7183, "\\B\\M010\\N010Lg\\T015Date\\T030Libellé\\T058\\R077Recette F\\T078\\R097Recette "
     "€\\T098\\R117Dépense F\\T118\\R144Dépense €\n\\S002\\L\\0"},
};
inline constexpr TexteFixe RangeeRapprochement{7184,
    "\\0\\M010\\N010%d\\T015%s\\T030%s\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\\L\\0\n"};
inline constexpr TexteFixe TotalRapprochement{7185,
    "\n\n\\0\\M010\\T030Total "
    "Rapproché\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\T118\\R144%s\\L\\0\n"};

// Fiscal statement
inline constexpr TexteFixe TitreEtat2035{7200, "REVENUS %s"};  ///< exercice
inline constexpr TexteFixe AvancementEtat2035{7201,
    "\nConstruction de la déclaration fiscale\n\nen cours..."};
inline constexpr TexteFixe Etat2035Resultat{7202, "\\0\\M010\\N010\\C050COMPTE DE RESULTAT FISCAL\\L\\0\n"};
inline constexpr TexteFixe Etat2035Mois{7203, "\\0\\M010\\N010\\C050pour %d mois\\L\n"};
inline constexpr TexteFixe Etat2035Annexe{7204,
    "\n\n\\2\\0\\M010\\N010Annexe à la déclaration N° 2035\\L\\0\\1\n\\S002\n\n"};
inline constexpr TexteFixe Etat2035Declarant{7205,
    "\\0\\M010\\N010Nom et prénom du déclarant ou dénomination :\n\\L\\B\\M040\\N010%s\\0\n\n"};
/// nature, beginning
inline constexpr TexteFixe Etat2035Activite{7206,
    "\\0\\M010\\N010Nature de l'activité : \\B%s\\0  date de début \\B%s\\0\n"};
/// number, year
inline constexpr TexteFixe Etat2035Association{7207,
    "\\0\\M010\\N010Numéro de l'association agréée : \\B%s\\0  année d'adhésion : \\B%s\\0\n\n"};
/// number, designation, code, two amounts
inline constexpr TexteFixe Etat2035Ligne{7208,
    "\\0\\M010\\N010%s\\T015%s\\T075%s\\T098\\R117%s\\T118\\R144%s\\0\\L\n"};
/// one loop a line
inline constexpr TexteFixe AvisBoucles2035{7213,
    "Des formules reviennent sur elles-mêmes. Leurs rubriques comptent pour 0 dans la déclaration "
    "fiscale :\n\n%s"};

// Lists on paper
inline constexpr TexteFixe PiedListe{7220, "\\0\\M010\\N010\\S001"};
inline constexpr TexteFixe FinListe{7221, "\\0\\M010\\N010\\S001\n"};
inline constexpr TexteFixe AvancementListeComptes{7222,
    "\nConstruction de la liste des comptes\n\nen cours..."};
inline constexpr TexteFixe EnteteListeComptes{7223,
    "\\B\\M010\\N010Code\\T025Compte\\T045Rub\\T057Désignation\\T110\\R144Solde\n\\L\\S002\\0"};
inline constexpr TexteFixe LigneListeComptes{7224,
    "\\0\\M010\\N010%s\\T025%s\\T045%s\\T057%s\\T110\\R144%s\\L\n"};
inline constexpr TexteFixe TotalListeComptes{7225, "\\0\\M010\\N010\\S002\\BTotal : \\T110\\R144%s\\L\\0\n"};
inline constexpr TexteFixe AvancementListeTresorerie{7226,
    "\nConstruction de la liste des comptes de trésorerie\n\nen cours..."};
inline constexpr TexteFixe EnteteListeTresorerie{7227,
    "\\B\\M005\\N005Code\\T017Compte\\T027Désignation\\T074\\R087Débit\\T088\\R101Crédit"
    "\\T102\\R115Solde\\T116\\R129Rapproché\\T130\\R144Solde réel\n\\L\\S002\\0"};
inline constexpr TexteFixe PiedListeTresorerie{7228, "\\0\\M005\\N005\\S001"};
inline constexpr TexteFixe LigneListeTresorerie{7229,
    "\\0\\M005\\N005%s\\T017%s\\T027%s\\T074\\R087%s\\T088\\R101%s\\T102\\R115%s\\T116\\R129%s"
    "\\T130\\R144%s\\L\n"};
inline constexpr TexteFixe TotalListeTresorerie{7230,
    "\\0\\M005\\N005\\S002\\BTotal : "
    "\\T074\\R087%s\\T088\\R101%s\\T102\\R115%s\\T116\\R129%s\\T130\\R144%s\\L\\0\n"};
inline constexpr TexteFixe AvancementListeRubriques{7231,
    "\nConstruction de la liste des rubriques\n\nen cours..."};
inline constexpr TexteFixe EnteteListeRubriques{7232, "\\B\\M010\\N010Code\\T022Désignation\n\\S002\\0"};
inline constexpr TexteFixe LigneListeRubriques{7233, "\\0\\M010\\N010%s\\T022%s\\L\n"};
inline constexpr TexteFixe AvancementListeLibelles{7234,
    "\nConstruction de la liste des libellés\n\nen cours..."};
inline constexpr TexteFixe EnteteListeLibelles{7235, "\\B\\M010\\N010Libellés\n\\S002\\0"};
inline constexpr TexteFixe LigneListeLibelles{7236, "\\0\\M010\\N010%s\\L\n"};
inline constexpr TexteFixe EntetePrevisions{6604,
    "\\B\\M010\\N010Mois\\T030Trésorerie\\T058\\R077Recettes\\T078\\R097Dépenses\\T098\\R117Solde"
    "\n\\S002\\0"};
inline constexpr TexteFixe LignePrevisions{6605,
    "\\0\\M010\\N010%s\\T030%s\\T058\\R077%s\\T078\\R097%s\\T098\\R117%s\\L\n"};
inline constexpr TexteFixe AvancementPrevisions{6606, "\nConstruction des prévisions\n\nen cours..."};

// Reports of the assets
inline constexpr TexteFixe TitreEtatAmortissements{7240, "Immobilisations et amortissements"};
inline constexpr TexteFixe AvancementEtatBiens{7241, "\nConstruction de l'état.\n\nen cours..."};
inline constexpr TexteFixe EnteteEtatAmortissements{7242,
    "\\L\\B\\M004\\N004\\T055\\R069Prix d'achat\\T070\\R084Montant\\T085\\R099Valeur\n"
    "\\L\\B\\M004\\N004\\T008Nature des\\T040Date\\T055\\R069T.V.A.\\T070\\R084T.V.A.\\T085\\R099hors T.V.A."
    "\\T114\\R128Montant\\T129\\R144Montant\n"
    "\\L\\B\\M004\\N004\\T004\\R007N°\\T008immobilisations\\T040d'achat\\T055\\R069comprise"
    "\\T070\\R084déductible\\T085\\R099déductible\\T100\\R113Taux\\T114\\R128antérieurs"
    "\\T129\\R144de l'année\n\\S002\\0"};
inline constexpr TexteFixe PiedEtatBiens{7243, "\\L\\0\\M004\\N004\\S001"};
inline constexpr TexteFixe AnnexeEtatBiens{7244,
    "\n\n\\2\\0\\M004\\N004Annexe à la déclaration N° 2035\\L\\0\\1\n\\S002\n\n"};
inline constexpr TexteFixe DeclarantEtatBiens{7245,
    "\\0\\M004\\N004Nom et prénom du déclarant ou dénomination :\n\\L\\B\\M070\\N010%s\\0\n\n"};
/// period; of disposals follows
inline constexpr TexteFixe PeriodeEtatBiens[] = {
    {7246, "\n\n\\B\\M004\\N004Immobilisations et amortissements à la période du \\0%s \\Bau \\0%s\\0\n\n"},
    {7247, "\n\n\\B\\M004\\N004Détermination des plus-values et moins-values à la période du \\0%s \\Bau "
     "\\0%s\\0\n\n"},
};
/// number, designation, date, price, VAT, value, rate, former and year's depreciation
inline constexpr TexteFixe RangeeEtatAmortissements{7248,
    "\\L\\0\\M004\\N004\\T004%d\\T008%s\\T040%s\\T055\\R069%s\\T070\\R084%s\\T085\\R099%s\\T100\\R113%s"
    "\\T114\\R128%s\\T129\\R144%s\n"};
/// of the same asset: designation and date blank, the rest
inline constexpr TexteFixe SecondeRangeeAmortissements{7249,
    "\\L\\0\\M004\\N004\\T004\\T008%s\\T040%s\\T055\\R069%s\\T070\\R084%s\\T085\\R099%s\\T100\\R113%s"
    "\\T114\\R128%s\\T129\\R144%s\n"};
inline constexpr TexteFixe FiletEtatBiens{7250, "\\S%03d"};  ///< thickness
/// what stands before the sums of Franc, or of Euro when there are no others; value, former, year's
inline constexpr TexteFixe MotTotalAmortissements{7251,
    "\\L\\M004\\N004\\S002\\L\\M004\\N004\\BTotal :"};
inline constexpr TexteFixe TotalAmortissements[] = {
    {7252, "\\T085\\R099%s\\T114\\R128%s\\T129\\R144%s\\L\\0\n"},
    {7253, "\\L\\M004\\N004\\B\\T085\\R099%s\\T114\\R128%s\\T129\\R144%s\\L\\0\n"},
};
inline constexpr TexteFixe TitreEtatPMV{7260, "Plus-values et moins-values"};
inline constexpr TexteFixe EnteteEtatPMV{7261,
    "\\L\\B\\M004\\N004\\T008Nature des\\T052\\R063Date de\\T064\\R075Prix de"
    "\\T076\\R109Plus et moins-values\\T110\\R144Plus et moins-values\n"
    "\\L\\B\\M004\\N004\\T004\\R007N°\\T008immobilisations\\T052\\R063cession\\T064\\R075cession"
    "\\T076\\R109à court terme\\T110\\R144à long terme\n\\S002\\0"};
/// number, designation, date of disposal, price, short and long term
inline constexpr TexteFixe RangeeEtatPMV{7262,
    "\\L\\0\\M004\\N004\\T004%d\\T008%s\\T052%s\\T064\\R075%s\\T076\\R109%s\\T110\\R144%s\n"};
/// likewise, where the line above does not stand
inline constexpr TexteFixe DesignationEtatPMV{7263, "\\L\\0\\M004\\N004\\T004%d\\T008%s\\T052%s\n"};
inline constexpr TexteFixe RangeeEuroPMV{7264,
    "\\L\\0\\M004\\N004\\T004\\T008\\T052\\T064\\R075%s\\T076\\R109%s\\T110\\R144%s\n"};
inline constexpr TexteFixe MotTotalPMV{7265, "\\L\\M004\\N004\\S002\\L\\B\\M004\\N004Solde net:"};
inline constexpr TexteFixe TotalPMV[] = {
    {7266, "\\T076\\R109%s\\T110\\R144%s\\L\\0\n"},
    {7267, "\\L\\M004\\N004\\L\\B\\M004\\N004\\T076\\R109%s\\T110\\R144%s\\L\\0\n"},
};
inline constexpr TexteFixe EnteteEtatRegistre{7270,
    "\\L\\B\\M002\\N002\\T002Date\\T016Nature des\\T054\\R062Prix d'achat\\T063\\R071T.V.A."
    "\\T072\\R080Prix de\\T081\\R089Valeur\\T090\\R098Taux"
    "\\T099\\R107Total\\T108\\R116Valeur\\T117\\R125Date de"
    "\\T126\\R134Prix de\\T135\\R144+ ou -\n"
    "\\L\\B\\M002\\N002\\T002d'achat\\T016immobilisations\\T054\\R062T.T.C.\\T063\\R071déductible"
    "\\T072\\R080revient\\T081\\R089amort.\\T090\\R098annuel\\T099\\R107amort.\\T108\\R116résiduelle"
    "\\T117\\R125cession\\T126\\R134cession\\T135\\R144values\n\\S002\\0"};
inline constexpr TexteFixe PiedEtatRegistre{7271, "\\L\\0\\M002\\N002\\S001"};
/// date, designation, price, VAT, cost, value, rate, total, residual value, disposal: date, price, result
inline constexpr TexteFixe RangeeEtatRegistre{7272,
    "\\L\\0\\M002\\N002\\T002%s\\T016%s\\T054\\R062%s\\T063\\R071%s\\T072\\R080%s\\T081\\R089%s"
    "\\T090\\R098%s\\T099\\R107%s\\T108\\R116%s\\T117\\R125%s\\T126\\R134%s\\T135\\R144%s\n"};
inline constexpr TexteFixe DetailEtatRegistre{7273, "\\L\\B\\M002\\N002\\T016Détail des amortissements"};
/// column and end of the year, the year, column and end of the amount, the amount
inline constexpr TexteFixe AnneeEtatRegistre{7274, "\\B\\T%03d\\R%03d%d :\\L\\0\\T%03d\\R%03d%s\\B"};

// Deposit slip
inline constexpr TexteFixe TitreRemise{8810, "Remise de chèques"};
inline constexpr TexteFixe AvancementRemise{8811,
    "\nConstruction du bordereau de remise en banque\n\nen cours..."};
/// one currency; both follows, here and below
inline constexpr TexteFixe EnteteRemise[] = {
    {8812, "\\B\\M020\\N030Libellé\\T110\\R130Montant \n\\S002\\0"},
    {8813, "\\B\\M020\\N020Libellé\\T080\\R100Montant F\\T110\\R130Montant €\n\\S002\\0"},
};
/// account, date of the slip, first and last day, account number at the bank, who deposits
inline constexpr TexteFixe TeteRemise{8814,
    "\n\n\\B\\M000\\R020Etablissement :\\M030\\L\\0%s\n\n"
    "\\B\\M000\\R020Date :\\M030\\L\\0%s\n\n"
    "\\B\\M000\\R020Periode  :\\M030\\L\\0%s  Au %s\n\n"
    "\\B\\M000\\R020Compte :\\M030\\0\\L%s\n\n"
    "\\B\\M000\\R020Bénéficiaire :\\M030\\0\\L%s\n\n"};
inline constexpr TexteFixe RangeeRemise[] = {
    {8815, "\\0\\M020\\N030%s\\T110\\R130%s\n"},
    {8816, "\\0\\M020\\N020%s\\T080\\R100%s\\T110\\R130%s\n"},
};
inline constexpr TexteFixe MotUnCheque{8817, "1 chèque"};
inline constexpr TexteFixe MotCheques{8818, "%d chèques"};
/// number of cheques, amounts
inline constexpr TexteFixe TotalBordereau[] = {
    {8819, "\\0\\M020\\N030\\S002\\BTotal :\\T050%s\\T110\\R130%s\\L\n"},
    {8820, "\\0\\M020\\N020\\S002\\BTotal :\\T050%s\\T080\\R100%s\\T110\\R130%s\\L\n"},
};
// clang-format on

}  // namespace fenlor
