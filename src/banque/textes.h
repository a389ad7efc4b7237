// What the rules of the bank's operations say.
#pragma once

#include "core/texte.h"

namespace fenlor {

// clang-format off

// Refusals
/// what was given as an account
inline constexpr TexteFixe ErrCompteNonBancaire{3450, "\"%s\" n'est pas un compte bancaire."};
inline constexpr TexteFixe ErrOperationAbsente{3451, "Cette opération bancaire n'existe plus."};

// Questions
/// date, label, amount
inline constexpr TexteFixe QuestionSupprimeOperation{3452, "Suppression de l'opération :\n%s, %s, %s",
                                                     Detruit};

/// date, label, amount of the operation, then of the entry
inline constexpr TexteFixe QuestionRapprochement{3453,
    "Rapprochement de l'opération :\n\n%s, %s, %s\n\navec l'écriture :\n\n%s, %s, %s"};
/// pairs; operations at the start
inline constexpr TexteFixe InfoRapprochements{3454,
    "%d rapprochements bancaires effectués\npour %d opérations enregistrées"};
inline constexpr TexteFixe ErrLigneNonRapprochable{3455,
    "Une des écritures n'est plus à rapprocher sur ce compte."};
/// "Débit" or "Crédit" of the operation, the same of the entries
inline constexpr TexteFixe QuestionMemeSens{3456,
    "L'opération est au %s de la banque et les écritures au %s des livres : les deux ne se compensent "
    "pas.\n\nFaut-il les rapprocher quand même?", Detruit};
/// amount, account
inline constexpr TexteFixe ErrEcritureSansLigne{3457,
    "L'écriture n'a pas de ligne de %s sur le compte %s : elle ne correspond pas à l'opération bancaire."};

// Progress
inline constexpr TexteFixe TitreRapprochement{5926, "Rapprochement bancaire"};
// What a reader of statements says of a row, or of a file
/// number of transactions of one entry
inline constexpr TexteFixe LibelleLot{3596, "%s opérations"};
/// MiB
inline constexpr TexteFixe PlainteTaille{3460, "Le fichier dépasse %s Mio : il n'est pas lu."};
inline constexpr TexteFixe PlainteAucune{3461, "Ce fichier ne contient aucune opération."};
inline constexpr TexteFixe PlainteLigneLongue{3462,
    "Cette ligne est trop longue, ou un guillemet n'y est pas fermé."};
inline constexpr TexteFixe PlainteDate{3463, "La date \"%s\" est illisible."};
inline constexpr TexteFixe PlainteMontant{3464, "Le montant \"%s\" est illisible."};
inline constexpr TexteFixe PlainteMontantNul{3465, "Le montant est nul."};
inline constexpr TexteFixe PlainteInconnu{3466, "\"%s\" n'est pas reconnu à cette place."};
inline constexpr TexteFixe PlainteSoldeInitial{3467, "Un solde initial n'est pas une opération."};
inline constexpr TexteFixe PlainteTropOperations{3468,
    "Le fichier contient trop d'opérations : celle-ci n'est pas lue."};
inline constexpr TexteFixe PlainteInachevee{3469, "L'opération est inachevée : le fichier est coupé."};
inline constexpr TexteFixe PlainteSolde{3471, "Le solde \"%s\" est illisible."};
/// state, as the bank says it
inline constexpr TexteFixe PlainteEnAttente{3472, "La banque n'a pas encore passé cette opération (%s)."};
/// byte
inline constexpr TexteFixe PlainteXml{3473, "Le fichier est abîmé ou coupé à partir de l'octet %s."};
inline constexpr TexteFixe PlainteProfondeur{3474, "Le fichier est imbriqué trop profondément."};
inline constexpr TexteFixe PlainteOfx{3475, "La lecture du fichier OFX a échoué."};
inline constexpr TexteFixe PlainteColonnes{3476,
    "Les colonnes de la date et du montant ne sont pas désignées."};
inline constexpr TexteFixe PlainteMonnaie{3477, "La monnaie \"%s\" n'est ni l'euro ni le franc."};
/// accounts of the file
inline constexpr TexteFixe ErrPlusieursComptes{3478,
    "Ce fichier contient plusieurs comptes : indiquez lequel (%s)."};
/// what was asked for, accounts of the file
inline constexpr TexteFixe ErrNumeroBanque{3479, "Le compte %s n'est pas dans ce fichier (%s)."};
/// new, known, outside, unreadable
inline constexpr TexteFixe InfoReleveImporte{3470,
    "Opérations importées : %s.\n\nDéjà connues : %s, hors de l'exercice : %s, illisibles : %s."};

/// account of the file, account of the last one
inline constexpr TexteFixe AvisAutreCompte{5935,
    "Le fichier est celui du compte %s, le précédent était celui du compte %s."};

inline constexpr TexteFixe AvisSansIdentifiants{6290,
    "La banque numérote de nouveau ses opérations dans chaque fichier : ses numéros ne comptent pas."};
inline constexpr TexteFixe TitreReleve{6291, "Importer un relevé"};
inline constexpr TexteFixe TitreReleveCsv{5946, "Tableau de la banque"};
inline constexpr TexteFixe FiltreFichiersReleve{5947,
    "Relevés (*.ofx *.qfx *.xml *.qif *.cfo *.cfonb *.afb *.asc *.csv *.txt *.tsv);;Tous les fichiers (*)"};
inline constexpr TexteFixe SorteNouvelle{6520, "Nouvelle"};
inline constexpr TexteFixe SorteConnue{6521, "Déjà connue"};
inline constexpr TexteFixe SorteHors{6522, "Hors exercice"};
inline constexpr TexteFixe SorteIllisible{6523, "Illisible"};
inline constexpr TexteFixe FiltreToutes{6524, "Toutes les lignes (%s)"};
inline constexpr TexteFixe FiltreNouvelles{6525, "Nouvelles (%s)"};
inline constexpr TexteFixe FiltreConnues{6526, "Déjà connues (%s)"};
inline constexpr TexteFixe FiltreHors{6527, "Hors de l'exercice (%s)"};
inline constexpr TexteFixe FiltreIllisibles{6528, "Illisibles (%s)"};
inline constexpr TexteFixe ColonneSorte{6529, "Etat"};
inline constexpr TexteFixe ColonneRang{6530, "Ligne"};
inline constexpr TexteFixe ColonneDebit{6531, "Débit"};
inline constexpr TexteFixe ColonneCredit{6532, "Crédit"};
inline constexpr TexteFixe ColonneTexteReleve{6533, "Libellé ou raison"};
inline constexpr TexteFixe MotNonDit{6534, "(le fichier ne le dit pas)"};
/// amount, date
inline constexpr TexteFixe FormatSoldeAu{6535, "%s au %s"};
/// operations, complaints
inline constexpr TexteFixe FormatResultatReleve{6536, "Opérations lues : %s, lignes illisibles : %s."};
/// date, amount, label
inline constexpr TexteFixe FormatExempleReleve{6537, " La première : %s, %s, %s"};

// Settings of the practice: how the statements of an account are written, their account at the bank
inline constexpr TexteFixe SecReleves{5936, "Releves"};
inline constexpr TexteFixe CleFormeCsv{5937, "Csv%s"};
inline constexpr TexteFixe CleDossierReleves{5948, "Dossier"};
inline constexpr TexteFixe CleNumeroBanque{5938, "Numero%s"};

// Settings of an exercice: balance of the last statement of an account, whose number stands behind
inline constexpr TexteFixe CleSoldeReleve{5925, "SoldeReleve%s"};

// Deposit slips
inline constexpr TexteFixe ErrFichierRemise{3495, "Erreur d'ouverture du fichier %s."};
/// number of the entry
inline constexpr TexteFixe ErrSansCheque{3496, "L'écriture %s n'a pas de chèque à remettre."};
inline constexpr TexteFixe MotRemis{8800, "Remis"};
inline constexpr TexteFixe MotAImprimer{8801, "A imprimer"};
/// by `EtatRemise`, from its first value on
inline constexpr TexteFixe MotEtatRemise[] = {
    {8802, "Non Remis"},
    {8803, "Remis"},
    {8804, "Remis à cette date"},
    {8805, "Tous"},
};

inline constexpr TexteFixe ErrDateOperation{3076, "La date d'opération est obligatoire."};
inline constexpr TexteFixe ErrMontantOperation{3077, "La montant est obligatoire."};
inline constexpr TexteFixe ErrSansOperationChoisie{3078, "Il n'y a pas d'opérations sélectionnées."};
inline constexpr TexteFixe ErrSansEcritureChoisie{3079, "Il n'y a pas d'écritures sélectionnées."};
inline constexpr TexteFixe ErrTotalRapprochement{3080,
    "Le total des écritures est différent du montant de l'opération bancaire."};
inline constexpr TexteFixe ErrEcritureApresOperation{3081,
    "La date de l'écriture est supérieure à celle de l'opération bancaire."};
inline constexpr TexteFixe ErrSansOperation{3115, "Il n'y a pas d'opérations à rapprocher !"};

// clang-format on

}  // namespace fenlor
