#include "store/champs.h"

#include <type_traits>
#include <utility>

#include "store/definitions.h"

namespace fenlor {

namespace {

using enum TypeChamp;

template <typename M>
constexpr bool Convient(TypeChamp type) {
  switch (type) {
    case Texte:
      return std::is_same_v<std::remove_extent_t<M>, char> && std::is_array_v<M>;
    case Compte:
      return std::is_same_v<M, char[11]>;
    case Entier16:
      return std::is_same_v<M, i16>;
    case Entier32:
      return std::is_same_v<M, i32>;
    case EntierU8:
      return std::is_same_v<M, u8>;
    case EntierU16:
      return std::is_same_v<M, u16>;
    case EntierU32:
    case DateC:
      return std::is_same_v<M, u32>;
    case Montant:
      return std::is_same_v<M, f64>;
    case Reserve:
      return std::is_integral_v<std::remove_extent_t<M>>;
  }
  return false;
}

// A row whose type does not fit its member does not compile.
template <typename M>
consteval Champ Ligne(const char* nom, TypeChamp type, std::size_t offset) {
  if (!Convient<M>(type)) throw "the type does not fit the member";
  return {nom, type, static_cast<u16>(offset), static_cast<u16>(sizeof(M))};
}

#define CHAMP(rec, membre, type) \
  Ligne<decltype(std::declval<rec>().membre)>(#membre, type, offsetof(rec, membre))

// clang-format off
constexpr Champ ChampsPlan[] = {
  CHAMP(Plan, Reserve0, Reserve), CHAMP(Plan, Compte, Compte), CHAMP(Plan, Code, Texte),
  CHAMP(Plan, Designation, Texte), CHAMP(Plan, Rubrique, Texte), CHAMP(Plan, Type, Entier16),
  CHAMP(Plan, TypeTresorerie, Entier16), CHAMP(Plan, CompteTVA, Compte), CHAMP(Plan, TauxTVA, Montant),
  CHAMP(Plan, PartPro, Montant), CHAMP(Plan, SoldeInitialFranc, Montant),
  CHAMP(Plan, SoldeInitialEuro, Montant), CHAMP(Plan, PersoFranc, Montant), CHAMP(Plan, PersoEuro, Montant),
  CHAMP(Plan, TVAFranc, Montant), CHAMP(Plan, TVAEuro, Montant), CHAMP(Plan, CreditFranc, Montant),
  CHAMP(Plan, CreditEuro, Montant), CHAMP(Plan, DebitFranc, Montant), CHAMP(Plan, DebitEuro, Montant),
  CHAMP(Plan, RappCreditFranc, Montant), CHAMP(Plan, RappCreditEuro, Montant),
  CHAMP(Plan, RappDebitFranc, Montant), CHAMP(Plan, RappDebitEuro, Montant),
  CHAMP(Plan, Reserve250, Reserve),
};

constexpr Champ ChampsRubrique[] = {
  CHAMP(Rubrique, Reserve0, Reserve), CHAMP(Rubrique, Rubrique, Texte), CHAMP(Rubrique, Designation, Texte),
  CHAMP(Rubrique, Ligne, Entier16), CHAMP(Rubrique, Formule, Texte),
  CHAMP(Rubrique, TypeRubrique, Entier16), CHAMP(Rubrique, Manuel, Entier16),
  CHAMP(Rubrique, ManuelFranc, Montant), CHAMP(Rubrique, ManuelEuro, Montant),
  CHAMP(Rubrique, Reserve237, Reserve),
};

constexpr Champ ChampsBanque[] = {
  CHAMP(Banque, Reserve0, Reserve), CHAMP(Banque, Compte, Compte), CHAMP(Banque, Libelle, Texte),
  CHAMP(Banque, Date, DateC), CHAMP(Banque, DateValeur, DateC), CHAMP(Banque, MontantFranc, Montant),
  CHAMP(Banque, MontantEuro, Montant), CHAMP(Banque, Sens, Entier16), CHAMP(Banque, Reserve120, Reserve),
};

constexpr Champ ChampsOperationImportee[] = {
  CHAMP(OperationImportee, Reserve0, Reserve), CHAMP(OperationImportee, Compte, Compte),
  CHAMP(OperationImportee, Date, DateC), CHAMP(OperationImportee, DateValeur, DateC),
  CHAMP(OperationImportee, Montant, Montant), CHAMP(OperationImportee, Monnaie, Texte),
  CHAMP(OperationImportee, Sens, Entier16), CHAMP(OperationImportee, Format, Entier16),
  CHAMP(OperationImportee, Libelle, Texte), CHAMP(OperationImportee, Identifiant, Texte),
  CHAMP(OperationImportee, Reserve247, Reserve),
};

constexpr Champ ChampsMouvement[] = {
  CHAMP(Mouvement, Reserve0, Reserve), CHAMP(Mouvement, Mouvement, EntierU32),
  CHAMP(Mouvement, Journal, Entier16), CHAMP(Mouvement, Genre, Entier16), CHAMP(Mouvement, Libelle, Texte),
  CHAMP(Mouvement, Ligne, EntierU32), CHAMP(Mouvement, Date, DateC), CHAMP(Mouvement, Validee, EntierU32),
  CHAMP(Mouvement, Piece, Texte), CHAMP(Mouvement, Tiers, Texte), CHAMP(Mouvement, LienPoste, EntierU16),
  CHAMP(Mouvement, LienA, Entier32), CHAMP(Mouvement, LienB, EntierU32),
  CHAMP(Mouvement, LienId, EntierU32), CHAMP(Mouvement, Reserve134, Reserve),
  CHAMP(Mouvement, LienApplication, Entier16), CHAMP(Mouvement, SaisieEuro, EntierU32),
  CHAMP(Mouvement, Pointee, EntierU32),
};

constexpr Champ ChampsEcrSimple[] = {
  CHAMP(EcrSimple, Reserve0, Reserve), CHAMP(EcrSimple, Mouvement, EntierU32),
  CHAMP(EcrSimple, Journal, Entier16), CHAMP(EcrSimple, Genre, Entier16), CHAMP(EcrSimple, Libelle, Texte),
  CHAMP(EcrSimple, Ligne, EntierU32), CHAMP(EcrSimple, Date, DateC), CHAMP(EcrSimple, Validee, EntierU32),
  CHAMP(EcrSimple, Piece, Texte), CHAMP(EcrSimple, Tiers, Texte), CHAMP(EcrSimple, LienPoste, EntierU16),
  CHAMP(EcrSimple, LienA, Entier32), CHAMP(EcrSimple, LienB, EntierU32),
  CHAMP(EcrSimple, LienId, EntierU32), CHAMP(EcrSimple, Reserve134, Reserve),
  CHAMP(EcrSimple, LienApplication, Entier16), CHAMP(EcrSimple, SaisieEuro, EntierU32),
  CHAMP(EcrSimple, CompteTresorerie, Compte), CHAMP(EcrSimple, MontantFranc, Montant),
  CHAMP(EcrSimple, MontantEuro, Montant), CHAMP(EcrSimple, Compte, Compte),
  CHAMP(EcrSimple, ComptePerso, Compte), CHAMP(EcrSimple, RepartitionFranc, Montant),
  CHAMP(EcrSimple, RepartitionEuro, Montant), CHAMP(EcrSimple, CompteTaxe, Compte),
  CHAMP(EcrSimple, TaxeFranc, Montant), CHAMP(EcrSimple, TaxeEuro, Montant),
  CHAMP(EcrSimple, TauxTaxe, Montant), CHAMP(EcrSimple, EstRecette, EntierU32),
  CHAMP(EcrSimple, ModePaiement, Entier16), CHAMP(EcrSimple, Rapprochee, EntierU32),
  CHAMP(EcrSimple, Pointee, EntierU32), CHAMP(EcrSimple, Remise, EntierU32),
  CHAMP(EcrSimple, Reserve262, Reserve),
};

constexpr Champ ChampsEcrStandard[] = {
  CHAMP(EcrStandard, Reserve0, Reserve), CHAMP(EcrStandard, Mouvement, EntierU32),
  CHAMP(EcrStandard, Journal, Entier16), CHAMP(EcrStandard, Genre, Entier16),
  CHAMP(EcrStandard, Libelle, Texte), CHAMP(EcrStandard, Ligne, EntierU32), CHAMP(EcrStandard, Date, DateC),
  CHAMP(EcrStandard, Validee, EntierU32), CHAMP(EcrStandard, Piece, Texte),
  CHAMP(EcrStandard, Tiers, Texte), CHAMP(EcrStandard, LienPoste, EntierU16),
  CHAMP(EcrStandard, LienA, Entier32), CHAMP(EcrStandard, LienB, EntierU32),
  CHAMP(EcrStandard, LienId, EntierU32), CHAMP(EcrStandard, Reserve134, Reserve),
  CHAMP(EcrStandard, LienApplication, Entier16), CHAMP(EcrStandard, SaisieEuro, EntierU32),
  CHAMP(EcrStandard, NbLignesTresorerie, EntierU32), CHAMP(EcrStandard, LignesTresorerie, EntierU32),
  CHAMP(EcrStandard, MontantFranc, Montant), CHAMP(EcrStandard, MontantEuro, Montant),
  CHAMP(EcrStandard, Compte, Compte), CHAMP(EcrStandard, ComptePerso, Compte),
  CHAMP(EcrStandard, RepartitionFranc, Montant), CHAMP(EcrStandard, RepartitionEuro, Montant),
  CHAMP(EcrStandard, CompteTaxe, Compte), CHAMP(EcrStandard, TaxeFranc, Montant),
  CHAMP(EcrStandard, TaxeEuro, Montant), CHAMP(EcrStandard, TauxTaxe, Montant),
  CHAMP(EcrStandard, EstRecette, EntierU32), CHAMP(EcrStandard, Pointee, EntierU32),
};

constexpr Champ ChampsLineTresor[] = {
  CHAMP(LineTresor, Compte, Compte), CHAMP(LineTresor, MontantFranc, Montant),
  CHAMP(LineTresor, MontantEuro, Montant), CHAMP(LineTresor, ModePaiement, Entier16),
  CHAMP(LineTresor, Rapprochee, EntierU32), CHAMP(LineTresor, Pointee, EntierU32),
  CHAMP(LineTresor, Remise, EntierU32), CHAMP(LineTresor, Validee, EntierU32),
  CHAMP(LineTresor, Reserve45, Reserve),
};

constexpr Champ ChampsLine[] = {
  CHAMP(Line, Reserve0, Reserve), CHAMP(Line, Mouvement, EntierU32), CHAMP(Line, Journal, Entier16),
  CHAMP(Line, Genre, Entier16), CHAMP(Line, Libelle, Texte), CHAMP(Line, Ligne, EntierU32),
  CHAMP(Line, Date, DateC), CHAMP(Line, Validee, EntierU32), CHAMP(Line, Piece, Texte),
  CHAMP(Line, Tiers, Texte), CHAMP(Line, LienPoste, EntierU16), CHAMP(Line, LienA, Entier32),
  CHAMP(Line, LienB, EntierU32), CHAMP(Line, LienId, EntierU32), CHAMP(Line, Reserve134, Reserve),
  CHAMP(Line, DateLigne, DateC), CHAMP(Line, Rang, EntierU32), CHAMP(Line, Designation, Texte),
  CHAMP(Line, Compte, Compte), CHAMP(Line, TypeCompte, Entier16), CHAMP(Line, Reserve240, Reserve),
  CHAMP(Line, MontantFranc, Montant), CHAMP(Line, MontantEuro, Montant), CHAMP(Line, Sens, EntierU32),
  CHAMP(Line, ComptePrincipal, Compte), CHAMP(Line, TauxTaxe, Montant),
  CHAMP(Line, LienApplication, Entier16), CHAMP(Line, Role, EntierU8), CHAMP(Line, CompteTaxe, Compte),
  CHAMP(Line, Reserve302, Reserve), CHAMP(Line, ModePaiement, Entier16), CHAMP(Line, Rapprochee, EntierU32),
  CHAMP(Line, Pointee, EntierU32), CHAMP(Line, Remise, EntierU32), CHAMP(Line, RappCompte, Compte),
  CHAMP(Line, RappLibelle, Texte), CHAMP(Line, RappDate, DateC), CHAMP(Line, RappDateValeur, DateC),
  CHAMP(Line, RappFranc, Montant), CHAMP(Line, RappEuro, Montant), CHAMP(Line, RappSens, EntierU32),
  CHAMP(Line, Reserve443, Reserve), CHAMP(Line, SaisieEuro, EntierU32), CHAMP(Line, DateRemise, DateC),
  CHAMP(Line, Reserve465, Reserve),
};

constexpr Champ ChampsEcrituresAuto[] = {
  CHAMP(EcrituresAuto, Numero, EntierU32), CHAMP(EcrituresAuto, Genre, Entier16),
  CHAMP(EcrituresAuto, Libelle, Texte), CHAMP(EcrituresAuto, Date, DateC),
  CHAMP(EcrituresAuto, SaisieEuro, EntierU32), CHAMP(EcrituresAuto, Tresorerie, Compte),
  CHAMP(EcrituresAuto, MontantFranc, Montant), CHAMP(EcrituresAuto, MontantEuro, Montant),
  CHAMP(EcrituresAuto, Compte, Compte), CHAMP(EcrituresAuto, RepartitionFranc, Montant),
  CHAMP(EcrituresAuto, RepartitionEuro, Montant), CHAMP(EcrituresAuto, CompteTaxe, Compte),
  CHAMP(EcrituresAuto, TaxeFranc, Montant), CHAMP(EcrituresAuto, TaxeEuro, Montant),
  CHAMP(EcrituresAuto, TauxTaxe, Montant), CHAMP(EcrituresAuto, ModePaiement, Entier16),
  CHAMP(EcrituresAuto, NbPaiements, EntierU32), CHAMP(EcrituresAuto, NbRestants, EntierU32),
  CHAMP(EcrituresAuto, Periodicite, Entier16), CHAMP(EcrituresAuto, DerniereEcheance, DateC),
  CHAMP(EcrituresAuto, Annoncer, EntierU32),
};

constexpr Champ ChampsImmobilisation[] = {
  CHAMP(Immobilisation, Numero, EntierU32), CHAMP(Immobilisation, Designation, Texte),
  CHAMP(Immobilisation, DateAchat, DateC), CHAMP(Immobilisation, TauxTVA, Montant),
  CHAMP(Immobilisation, PrixFranc, Montant), CHAMP(Immobilisation, PrixEuro, Montant),
  CHAMP(Immobilisation, TVAFranc, Montant), CHAMP(Immobilisation, TVAEuro, Montant),
  CHAMP(Immobilisation, ValeurAmortissableFranc, Montant),
  CHAMP(Immobilisation, ValeurAmortissableEuro, Montant), CHAMP(Immobilisation, ModeDuree, EntierU8),
  CHAMP(Immobilisation, TypeAmortissement, EntierU8), CHAMP(Immobilisation, Duree, Montant),
  CHAMP(Immobilisation, TauxAnnuel, Montant), CHAMP(Immobilisation, DateCession, DateC),
  CHAMP(Immobilisation, PrixCessionFranc, Montant), CHAMP(Immobilisation, PrixCessionEuro, Montant),
  CHAMP(Immobilisation, Rebut, EntierU32), CHAMP(Immobilisation, Monnaie, EntierU32),
  CHAMP(Immobilisation, MonnaieCession, EntierU32), CHAMP(Immobilisation, Reserve195, Reserve),
};

constexpr Champ ChampsAmortissement[] = {
  CHAMP(Amortissement, Numero, EntierU32), CHAMP(Amortissement, Annee, EntierU32),
  CHAMP(Amortissement, ReelFranc, Montant), CHAMP(Amortissement, ReelEuro, Montant),
  CHAMP(Amortissement, Reserve24, Reserve),
};

constexpr Champ ChampsTauxDegressif[] = {
  CHAMP(TauxDegressif, Duree, Montant), CHAMP(TauxDegressif, Coefficient, Montant),
  CHAMP(TauxDegressif, TauxAnnuel, Montant),
};

constexpr Champ ChampsRecetteLiee[] = {
  CHAMP(RecetteLiee, Reserve0, Reserve), CHAMP(RecetteLiee, LienPoste, EntierU16),
  CHAMP(RecetteLiee, LienA, Entier32), CHAMP(RecetteLiee, LienB, EntierU32),
  CHAMP(RecetteLiee, LienId, EntierU32), CHAMP(RecetteLiee, Date, DateC),
  CHAMP(RecetteLiee, MontantFranc, Montant), CHAMP(RecetteLiee, MontantEuro, Montant),
  CHAMP(RecetteLiee, Exercice, Texte), CHAMP(RecetteLiee, Libelle, Texte),
  CHAMP(RecetteLiee, Reserve133, Reserve),
};

constexpr Champ ChampsDepenseLiee[] = {
  CHAMP(DepenseLiee, Reserve0, Reserve), CHAMP(DepenseLiee, LienA, Entier32),
  CHAMP(DepenseLiee, LienB, EntierU32), CHAMP(DepenseLiee, LienId, EntierU32),
  CHAMP(DepenseLiee, Date, DateC), CHAMP(DepenseLiee, MontantFranc, Montant),
  CHAMP(DepenseLiee, Tiers, Texte), CHAMP(DepenseLiee, MontantEuro, Montant),
  CHAMP(DepenseLiee, Exercice, Texte), CHAMP(DepenseLiee, Libelle, Texte),
  CHAMP(DepenseLiee, Reserve140, Reserve),
};

constexpr Champ ChampsStatistiques[] = {
  CHAMP(Statistiques, NbRecettes, EntierU32), CHAMP(Statistiques, NbDepenses, EntierU32),
  CHAMP(Statistiques, NbOD, EntierU32), CHAMP(Statistiques, Reserve12, Reserve),
  CHAMP(Statistiques, NbRapprochees, EntierU32), CHAMP(Statistiques, NbPointees, EntierU32),
  CHAMP(Statistiques, NbRemises, EntierU32), CHAMP(Statistiques, NbValidees, EntierU32),
  CHAMP(Statistiques, NbNonRapprochees, EntierU32),
};

// clang-format on

#undef CHAMP

struct Enregistrement {
  const char* nom;
  std::span<const Champ> champs;
  std::size_t taille;
};

constexpr Enregistrement Enregistrements[] = {
    {"Plan", ChampsPlan, sizeof(Plan)},
    {"Rubrique", ChampsRubrique, sizeof(Rubrique)},
    {"Banque", ChampsBanque, sizeof(Banque)},
    {"OperationImportee", ChampsOperationImportee, sizeof(OperationImportee)},
    {"Mouvement", ChampsMouvement, sizeof(Mouvement)},
    {"EcrSimple", ChampsEcrSimple, sizeof(EcrSimple)},
    {"EcrStandard", ChampsEcrStandard, sizeof(EcrStandard)},
    {"LineTresor", ChampsLineTresor, sizeof(LineTresor)},
    {"Line", ChampsLine, sizeof(Line)},
    {"EcrituresAuto", ChampsEcrituresAuto, sizeof(EcrituresAuto)},
    {"Immobilisation", ChampsImmobilisation, sizeof(Immobilisation)},
    {"Amortissement", ChampsAmortissement, sizeof(Amortissement)},
    {"TauxDegressif", ChampsTauxDegressif, sizeof(TauxDegressif)},
    {"RecetteLiee", ChampsRecetteLiee, sizeof(RecetteLiee)},
    {"DepenseLiee", ChampsDepenseLiee, sizeof(DepenseLiee)},
    {"Statistiques", ChampsStatistiques, sizeof(Statistiques)},
};

constexpr bool Couvre(const Enregistrement& e) {
  std::size_t place = 0;
  for (const Champ& c : e.champs) {
    if (c.offset != place || c.taille == 0) return false;
    place += c.taille;
  }
  return place == e.taille;
}

constexpr bool TousCouverts() {
  for (const Enregistrement& e : Enregistrements) {
    if (!Couvre(e)) return false;
  }
  return true;
}
static_assert(TousCouverts(), "a record has bytes without a row, or rows out of order");

}  // namespace

std::span<const Champ> Champs(u16 numFichier) {
  switch (numFichier) {
    case FichierComptes:
      return ChampsPlan;
    case FichierJournal:
      return ChampsLine;
    case FichierRubriques:
      return ChampsRubrique;
    case FichierBanques:
      return ChampsBanque;
    case FichierReleves:
      return ChampsOperationImportee;
    case FichierImmo:
      return ChampsImmobilisation;
    case FichierAmo:
      return ChampsAmortissement;
    case FichierRecettes:
      return ChampsRecetteLiee;
    case FichierDepenses:
      return ChampsDepenseLiee;
    case FichierAuto:
      return ChampsEcrituresAuto;
  }
  return {};
}

std::span<const Champ> ChampsDe(std::string_view enregistrement) {
  for (const Enregistrement& e : Enregistrements) {
    if (enregistrement == e.nom) return e.champs;
  }
  return {};
}

}  // namespace fenlor
