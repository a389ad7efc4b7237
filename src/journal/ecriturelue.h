// A receipt or an expense as its form shows it when it is opened.
#pragma once

#include <vector>

#include "journal/saisie.h"
#include "store/texte1252.h"

namespace fenlor {

struct MarquesEcriture {
  bool pointee = false, rapprochee = false, remise = false, validee = false;
};

/// A treasury line with what else its record holds.
struct LigneTresorLue : LigneTresorSaisie {
  MarquesEcriture marques;
  DeuxMonnaies stocke;
};

/// Amounts as they are stored. The tax may differ by a cent from the one that the form shows, which follows
/// from the share as it was rounded.
struct MontantsStockes {
  DeuxMonnaies montant, repartition, taxe;
  std::string compteTaxe;
  f64 taux = 0;
};

struct EcritureLue {
  SaisieEcriture saisie;  ///< all but `tresoreries`
  MontantsStockes stockes;
  std::vector<LigneTresorLue> lignes;
  /// Of a standard entry reconciled and deposited are true when all its bank lines are, and there is one.
  MarquesEcriture marques;
  bool liee = false;  ///< made by the parent application
};

/// What the header of an entry says of it; in Euro, whatever it was typed in, when `enEuro`.
template <class Saisie>
void LitSaisie(const Mouvement& entete, bool enEuro, Saisie& saisie) {
  saisie.journal = entete.Journal;
  saisie.mouvement = entete.Mouvement;
  saisie.ligne = entete.Ligne;
  saisie.date = entete.Date;
  saisie.libelle = LitTexte(entete.Libelle);
  saisie.euro = entete.SaisieEuro != 0 || enEuro;
  saisie.validee = entete.Validee != 0;
}

/// Reads an entry, its figures in its own currency, or in Euro when `enEuro`. The net amount and the tax
/// are computed from the entry's own rate; an entry without account has the personal one. Refuses
/// one that does not exist (3202) and an opération diverse (3205).
Refus LitEcriture(CFenlorApp& app, u32 mouvement, EcritureLue& ecriture, bool enEuro = false);

}  // namespace fenlor
