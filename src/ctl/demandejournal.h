// Which entries of a month of a journal are listed, from the options of `journal` and
// of the journal report.
#pragma once

#include <optional>
#include <string>

#include "ctl/lignecommande.h"
#include "journal/listejournal.h"

namespace fenlor {

/// Texts as typed, in UTF-8; none: not given. Bounds come in pairs.
struct OptionsJournal {
  std::string journal;                ///< "recettes", "depenses", "od"
  std::string mois;                   ///< "MM/AAAA"
  std::string mode = "toutes";        ///< "validees", "brouillard", "toutes"
  std::optional<std::string> compte;  ///< treasury account: code or number
  bool comptable = false;
  bool pointees = false, nonPointees = false;
  bool remises = false, nonRemises = false;
  bool rapprochees = false, nonRapprochees = false;
  bool associees = false, nonAssociees = false;
  std::optional<std::string> montantMin, montantMax;  ///< numbers
  std::optional<std::string> monnaie;                 ///< "franc", "euro"
  std::optional<std::string> compteDe, compteA, rubriqueDe, rubriqueA;
  std::optional<std::string> jourDe, jourA;  ///< 1 to 31
};

void DeclareOptionsJournal(Commande& commande, OptionsJournal& options);
/// What is wrong with them together; empty: nothing.
std::string FauteOptionsJournal(const OptionsJournal& options);
/// The month must lie in the open exercice, the account be one of the treasury. Needs the
/// chart open. False: told.
bool LitDemandeJournal(Contexte& contexte, const OptionsJournal& options, DemandeListe& demande);

}  // namespace fenlor
