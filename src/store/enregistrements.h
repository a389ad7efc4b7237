// Records of the store: the flat, byte-packed, little-endian blocks that the
// data files hold and that callers exchange with the store, copied whole.
//
// Every layout is fixed for ever: size and offsets are asserted below, and
// `Champs(...)` (champs.h) lists each field once for the JSON of fenlorctl and
// for docs/FORMAT.md. Texts are Windows-1252, NUL-terminated in their array.
// Amounts are in units of the currency. Dates are packed (dates.h).
// Reserved stretches are zero when a record is made and kept as read after.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fenlor {

using u8 = std::uint8_t;
using u16 = std::uint16_t;
using u32 = std::uint32_t;
using u64 = std::uint64_t;
using i16 = std::int16_t;
using i32 = std::int32_t;
using i64 = std::int64_t;
using f64 = double;

/// Packed date: year in the high 16 bits, month in bits 15..8, day in bits 7..0.
/// 0 means no date. Two dates compare as numbers.
using Date = u32;

/// Place of a record in its data file, from 1; 0 means no record.
using Position = u32;

/// Largest amount, and largest total, that the store takes in either currency. Below 2^51 cents the
/// way to units and back is exact.
constexpr f64 MontantMax = 2e13;

/// `Plan::Type`.
enum TypeCompte : i16 { Tresorerie = 0, Recette = 1, Depense = 2, Tva = 3, Autre = 4 };
/// `Journal` of an entry.
enum NumeroJournal : i16 { JournalRecettes = 1, JournalDepenses = 2, JournalOD = 3 };
/// `Genre` of an entry.
enum GenreEcriture : i16 { GenreOD = 0, GenreStandard = 1, GenreSimple = 2 };
/// `ModePaiement` of a treasury line.
enum ModeDePaiement : i16 { PaiementCheque = 0, PaiementAutre = 1 };
/// `Line::Role`: what the line stands for in its entry.
enum RoleLigne : u8 {
  RoleCompte = 1,      ///< the income or expense account, without tax
  RoleTva = 2,         ///< the tax
  RolePerso = 3,       ///< the personal share
  RoleTresorerie = 4,  ///< one treasury account
  RoleLibre = 5,       ///< a line of an opération diverse, its deviation line included
};

#pragma pack(push, 1)

/// One account. Store "COMPTES".
struct Plan {
  u16 Reserve0;
  char Compte[11];
  char Code[9];
  char Designation[81];
  char Rubrique[4];
  i16 Type;            ///< TypeCompte; above 4 the record is invalid
  i16 TypeTresorerie;  ///< for `Type` 0: 1 bank, 0 cash
  char CompteTVA[11];
  f64 TauxTVA;            ///< percent
  f64 PartPro;            ///< percent, default 100.0
  f64 SoldeInitialFranc;  ///< credit minus debit
  f64 SoldeInitialEuro;
  f64 PersoFranc;  ///< personal share: positive in journal 1, negative in journal 2
  f64 PersoEuro;
  f64 TVAFranc;  ///< tax, signed alike
  f64 TVAEuro;
  f64 CreditFranc;
  f64 CreditEuro;
  f64 DebitFranc;
  f64 DebitEuro;
  f64 RappCreditFranc;
  f64 RappCreditEuro;
  f64 RappDebitFranc;
  f64 RappDebitEuro;
  u8 Reserve250[50];
};
static_assert(sizeof(Plan) == 300);
static_assert(offsetof(Plan, Code) == 13 && offsetof(Plan, Designation) == 22 &&
              offsetof(Plan, Rubrique) == 103);
static_assert(offsetof(Plan, Type) == 107 && offsetof(Plan, TypeTresorerie) == 109 &&
              offsetof(Plan, CompteTVA) == 111);
static_assert(offsetof(Plan, TauxTVA) == 122 && offsetof(Plan, PartPro) == 130 &&
              offsetof(Plan, SoldeInitialFranc) == 138);
static_assert(offsetof(Plan, PersoFranc) == 154 && offsetof(Plan, CreditFranc) == 186 &&
              offsetof(Plan, RappDebitEuro) == 242);

/// One heading of the fiscal statement. Store "RUBRIQUE".
struct Rubrique {
  u16 Reserve0;
  char Rubrique[4];
  char Designation[81];
  i16 Ligne;
  char Formule[128];
  i16 TypeRubrique;  ///< 0 recette, 1 dépense, 2 résultat, 3 taxe
  i16 Manuel;
  f64 ManuelFranc;
  f64 ManuelEuro;
  u8 Reserve237[146];
};
static_assert(sizeof(Rubrique) == 383);
static_assert(offsetof(Rubrique, Designation) == 6 && offsetof(Rubrique, Ligne) == 87 &&
              offsetof(Rubrique, Formule) == 89);
static_assert(offsetof(Rubrique, TypeRubrique) == 217 && offsetof(Rubrique, ManuelFranc) == 221);

/// One operation of a bank statement waiting for reconciliation. Store "BANQUE".
struct Banque {
  u16 Reserve0;
  char Compte[11];
  char Libelle[81];
  u32 Date;
  u32 DateValeur;
  f64 MontantFranc;
  f64 MontantEuro;
  i16 Sens;  ///< 0 débit, 1 crédit
  u8 Reserve120[50];
};
static_assert(sizeof(Banque) == 170);
static_assert(offsetof(Banque, Libelle) == 13 && offsetof(Banque, Date) == 94 &&
              offsetof(Banque, Sens) == 118);

/// What an operation that came from a statement's file is known again by. It outlives the operation
/// itself: its matching, its deletion. Store "RELEVES".
struct OperationImportee {
  u16 Reserve0;
  char Compte[11];
  u32 Date;
  u32 DateValeur;
  f64 Montant;      ///< in the currency of the statement, above 0
  char Monnaie[4];  ///< "EUR" or "FRF"
  i16 Sens;         ///< 0 débit, 1 crédit
  i16 Format;       ///< 1 OFX, 2 CAMT.053, 3 QIF, 4 CFONB, 5 CSV
  char Libelle[81];
  char Identifiant[129];  ///< the bank's own in that format; empty: none
  u8 Reserve247[33];
};
static_assert(sizeof(OperationImportee) == 280);
static_assert(offsetof(OperationImportee, Date) == 13 && offsetof(OperationImportee, Montant) == 21 &&
              offsetof(OperationImportee, Libelle) == 37);
static_assert(offsetof(OperationImportee, Identifiant) == 118);

/// Header of an entry: the common beginning of every entry form.
struct Mouvement {
  u16 Reserve0;
  u32 Mouvement;  ///< entry number, 0 for a new entry
  i16 Journal;
  i16 Genre;
  char Libelle[81];
  u32 Ligne;  ///< number within journal and month, from 1
  u32 Date;
  u32 Validee;
  char Piece[8];
  char Tiers[9];
  u16 LienPoste;
  i32 LienA;
  u32 LienB;
  u32 LienId;  ///< not 0 when the parent application made the entry
  u32 Reserve134;
  i16 LienApplication;
  u32 SaisieEuro;
  u32 Pointee;
};
static_assert(sizeof(Mouvement) == 148);
static_assert(offsetof(Mouvement, Libelle) == 10 && offsetof(Mouvement, Ligne) == 91 &&
              offsetof(Mouvement, Piece) == 103);
static_assert(offsetof(Mouvement, Tiers) == 111 && offsetof(Mouvement, LienPoste) == 120 &&
              offsetof(Mouvement, LienId) == 130);
static_assert(offsetof(Mouvement, LienApplication) == 138 && offsetof(Mouvement, SaisieEuro) == 140 &&
              offsetof(Mouvement, Pointee) == 144);

/// Entry with one treasury line. Up to `SaisieEuro` as Mouvement.
struct EcrSimple {
  u16 Reserve0;
  u32 Mouvement;
  i16 Journal;
  i16 Genre;
  char Libelle[81];
  u32 Ligne;
  u32 Date;
  u32 Validee;
  char Piece[8];
  char Tiers[9];
  u16 LienPoste;
  i32 LienA;
  u32 LienB;
  u32 LienId;
  u32 Reserve134;
  i16 LienApplication;
  u32 SaisieEuro;
  char CompteTresorerie[11];
  f64 MontantFranc;  ///< with tax
  f64 MontantEuro;
  char Compte[11];
  char ComptePerso[11];
  f64 RepartitionFranc;  ///< professional share of the amount
  f64 RepartitionEuro;
  char CompteTaxe[11];
  f64 TaxeFranc;
  f64 TaxeEuro;
  f64 TauxTaxe;  ///< percent
  u32 EstRecette;
  i16 ModePaiement;
  u32 Rapprochee;
  u32 Pointee;
  u32 Remise;
  u8 Reserve262[120];
};
static_assert(sizeof(EcrSimple) == 382);
static_assert(offsetof(EcrSimple, CompteTresorerie) == 144 && offsetof(EcrSimple, MontantFranc) == 155);
static_assert(offsetof(EcrSimple, Compte) == 171 && offsetof(EcrSimple, RepartitionFranc) == 193 &&
              offsetof(EcrSimple, CompteTaxe) == 209);
static_assert(offsetof(EcrSimple, EstRecette) == 244 && offsetof(EcrSimple, Pointee) == 254 &&
              offsetof(EcrSimple, Remise) == 258);

/// Entry with several treasury lines. Up to `SaisieEuro` as Mouvement.
struct EcrStandard {
  u16 Reserve0;
  u32 Mouvement;
  i16 Journal;
  i16 Genre;
  char Libelle[81];
  u32 Ligne;
  u32 Date;
  u32 Validee;
  char Piece[8];
  char Tiers[9];
  u16 LienPoste;
  i32 LienA;
  u32 LienB;
  u32 LienId;
  u32 Reserve134;
  i16 LienApplication;
  u32 SaisieEuro;
  u32 NbLignesTresorerie;
  u32 LignesTresorerie;  ///< ticket of the array of LineTresor (qvapi.h, Entries)
  f64 MontantFranc;
  f64 MontantEuro;
  char Compte[11];
  char ComptePerso[11];
  f64 RepartitionFranc;
  f64 RepartitionEuro;
  char CompteTaxe[11];
  f64 TaxeFranc;
  f64 TaxeEuro;
  f64 TauxTaxe;
  u32 EstRecette;
  u32 Pointee;
};
static_assert(sizeof(EcrStandard) == 249);
static_assert(offsetof(EcrStandard, LignesTresorerie) == 148 && offsetof(EcrStandard, Compte) == 168);
static_assert(offsetof(EcrStandard, CompteTaxe) == 206 && offsetof(EcrStandard, EstRecette) == 241 &&
              offsetof(EcrStandard, Pointee) == 245);

/// One treasury line of a standard entry.
struct LineTresor {
  char Compte[11];
  f64 MontantFranc;
  f64 MontantEuro;
  i16 ModePaiement;
  u32 Rapprochee;
  u32 Pointee;
  u32 Remise;
  u32 Validee;
  u8 Reserve45[120];
};
static_assert(sizeof(LineTresor) == 165);
static_assert(offsetof(LineTresor, ModePaiement) == 27 && offsetof(LineTresor, Validee) == 41);

/// One line of the journal. Store "JOURNAL". Bytes 2 to 133 as Mouvement.
/// There is no header file: an entry's header is rebuilt from its lines, which
/// is why the line also keeps the stretch 269 to 308.
struct Line {
  u16 Reserve0;
  u32 Mouvement;
  i16 Journal;
  i16 Genre;
  char Libelle[81];
  u32 Ligne;
  u32 Date;
  u32 Validee;
  char Piece[8];
  char Tiers[9];
  u16 LienPoste;
  i32 LienA;
  u32 LienB;
  u32 LienId;
  u32 Reserve134;
  u32 DateLigne;
  u32 Rang;  ///< index of the line in its entry, from 0
  char Designation[81];
  char Compte[11];
  i16 TypeCompte;
  u8 Reserve240[9];
  f64 MontantFranc;  ///< absolute value
  f64 MontantEuro;
  u32 Sens;                  ///< 0 débit, other crédit
  char ComptePrincipal[11];  ///< income or expense account of the entry
  f64 TauxTaxe;              ///< percent, of the entry
  i16 LienApplication;
  u8 Role;              ///< RoleLigne
  char CompteTaxe[11];  ///< VAT account of the entry
  u8 Reserve302[7];
  i16 ModePaiement;
  u32 Rapprochee;
  u32 Pointee;
  u32 Remise;
  char RappCompte[11];
  char RappLibelle[81];
  u32 RappDate;
  u32 RappDateValeur;
  f64 RappFranc;
  f64 RappEuro;
  u32 RappSens;
  u8 Reserve443[14];
  u32 SaisieEuro;
  u32 DateRemise;
  u8 Reserve465[40];
};
static_assert(sizeof(Line) == 505);
static_assert(offsetof(Line, Piece) == 103 && offsetof(Line, LienId) == 130 &&
              offsetof(Line, DateLigne) == 138);
static_assert(offsetof(Line, Rang) == 142 && offsetof(Line, Designation) == 146 &&
              offsetof(Line, Compte) == 227);
static_assert(offsetof(Line, TypeCompte) == 238 && offsetof(Line, MontantFranc) == 249 &&
              offsetof(Line, Sens) == 265);
static_assert(offsetof(Line, ComptePrincipal) == 269 && offsetof(Line, Reserve302) == 302 &&
              offsetof(Line, ModePaiement) == 309);
static_assert(offsetof(Line, Rapprochee) == 311 && offsetof(Line, Remise) == 319 &&
              offsetof(Line, RappCompte) == 323);
static_assert(offsetof(Line, RappDate) == 415 && offsetof(Line, RappSens) == 439 &&
              offsetof(Line, SaisieEuro) == 457);
static_assert(offsetof(Line, DateRemise) == 461);

/// One recurring entry.
struct EcrituresAuto {
  u32 Numero;  ///< place in the list, from 1, as read; 0 for a new one
  i16 Genre;   ///< journal of the generated entry
  char Libelle[81];
  u32 Date;  ///< next due date
  u32 SaisieEuro;
  char Tresorerie[11];
  f64 MontantFranc;
  f64 MontantEuro;
  char Compte[11];
  f64 RepartitionFranc;
  f64 RepartitionEuro;
  char CompteTaxe[11];
  f64 TaxeFranc;
  f64 TaxeEuro;
  f64 TauxTaxe;
  i16 ModePaiement;
  u32 NbPaiements;  ///< 0: without end
  u32 NbRestants;
  i16 Periodicite;  ///< 1 to 9, see GetPeriodiciteString
  u32 DerniereEcheance;
  u32 Annoncer;
};
static_assert(sizeof(EcrituresAuto) == 204);
static_assert(offsetof(EcrituresAuto, Date) == 87 && offsetof(EcrituresAuto, Compte) == 122 &&
              offsetof(EcrituresAuto, ModePaiement) == 184);
static_assert(offsetof(EcrituresAuto, Periodicite) == 194 && offsetof(EcrituresAuto, Annoncer) == 200);

/// One fixed asset. Store "Immo". It has no leading reserved bytes.
struct Immobilisation {
  u32 Numero;
  char Designation[81];
  u32 DateAchat;
  f64 TauxTVA;
  f64 PrixFranc;
  f64 PrixEuro;
  f64 TVAFranc;
  f64 TVAEuro;
  f64 ValeurAmortissableFranc;
  f64 ValeurAmortissableEuro;
  u8 ModeDuree;          ///< 0 duration, 1 annual rate
  u8 TypeAmortissement;  ///< 0 linéaire, 1 dégressif, 2 exceptionnel
  f64 Duree;             ///< years
  f64 TauxAnnuel;        ///< percent
  u32 DateCession;
  f64 PrixCessionFranc;
  f64 PrixCessionEuro;
  u32 Rebut;
  u32 Monnaie;  ///< 0 Franc, 1 Euro
  u32 MonnaieCession;
  u8 Reserve195[38];
};
static_assert(sizeof(Immobilisation) == 233);
static_assert(offsetof(Immobilisation, DateAchat) == 85 && offsetof(Immobilisation, ModeDuree) == 145);
static_assert(offsetof(Immobilisation, DateCession) == 163 &&
              offsetof(Immobilisation, MonnaieCession) == 191);

/// Real depreciation of one asset for one year. Store "Amo".
struct Amortissement {
  u32 Numero;
  u32 Annee;
  f64 ReelFranc;
  f64 ReelEuro;
  u8 Reserve24[50];
};
static_assert(sizeof(Amortissement) == 74);

/// One row of the table of degressive rates.
struct TauxDegressif {
  f64 Duree;
  f64 Coefficient;
  f64 TauxAnnuel;
};
static_assert(sizeof(TauxDegressif) == 24);

/// Receipt of the parent application. The link key stands at 2 to 11.
struct RecetteLiee {
  u16 Reserve0;
  u16 LienPoste;
  i32 LienA;
  u32 LienB;  ///< its high word is not 0
  u32 LienId;
  u32 Date;
  f64 MontantFranc;
  f64 MontantEuro;
  char Exercice[16];
  char Libelle[81];
  u8 Reserve133[27];
};
static_assert(sizeof(RecetteLiee) == 160);
static_assert(offsetof(RecetteLiee, LienPoste) == 2 && offsetof(RecetteLiee, LienA) == 4 &&
              offsetof(RecetteLiee, LienB) == 8);

/// Expense of the parent application. The link key is LienA, LienB and Tiers.
struct DepenseLiee {
  u16 Reserve0;
  i32 LienA;
  u32 LienB;  ///< below 65536
  u32 LienId;
  u32 Date;
  f64 MontantFranc;
  char Tiers[9];
  f64 MontantEuro;
  char Exercice[16];
  char Libelle[81];
  u8 Reserve140[20];
};
static_assert(sizeof(DepenseLiee) == 160);
static_assert(offsetof(DepenseLiee, LienA) == 2 && offsetof(DepenseLiee, LienB) == 6 &&
              offsetof(DepenseLiee, Tiers) == 26);

/// What QVCalculCompta counted.
struct Statistiques {
  u32 NbRecettes;
  u32 NbDepenses;
  u32 NbOD;
  u32 Reserve12[13];
  u32 NbRapprochees;     ///< lines
  u32 NbPointees;        ///< entries
  u32 NbRemises;         ///< lines
  u32 NbValidees;        ///< entries
  u32 NbNonRapprochees;  ///< entries with an unreconciled line on a bank account
};
static_assert(sizeof(Statistiques) == 84);
static_assert(offsetof(Statistiques, NbRapprochees) == 64 && offsetof(Statistiques, NbNonRapprochees) == 80);

#pragma pack(pop)

}  // namespace fenlor
