// The accounts that the entry forms offer, and what they look up by a typed code.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/fenlorapp.h"
#include "core/texte.h"

namespace fenlor {

struct CompteOffert {
  Position position = 0;
  std::string compte;  ///< long form
  std::string court;   ///< as the screen shows it
  std::string code, designation, rubrique;
  i16 type = Autre;
  bool banque = false;  ///< treasury account that is a bank

  /// "706 Honoraires": short number and label, as the lists show it.
  std::string Texte() const;
};

/// Accounts of a type in the order of their code.
std::vector<CompteOffert> ComptesParCode(CFenlorApp& app, i16 type);
/// All accounts in the order of their number.
std::vector<CompteOffert> ComptesParNumero(CFenlorApp& app);
/// First account, in the order of the codes, whose code begins with the text without regard to
/// case and to blanks around, whatever the order of the list; null for none and for a blank text.
const CompteOffert* CompteDeCode(const std::vector<CompteOffert>& comptes, const std::string& texte);
/// What a person who types in "Code :" means: the account of exactly that code, else of exactly that number,
/// else the first one whose code begins with the text, else the first one whose number does; null for none.
const CompteOffert* CompteTape(const std::vector<CompteOffert>& comptes, const std::string& texte);
/// What the list under "Code :" proposes while it is typed: the account that it means now (`CompteTape`),
/// then those whose code or number begins with the text, then those whose name holds all its words, accents
/// and case aside; within each in the order of the list, at most a hundred. Empty for a blank text, and for a
/// whole code that no other one goes on from.
std::vector<const CompteOffert*> ComptesProposes(const std::vector<CompteOffert>& comptes,
                                                 const std::string& texte);
/// The folded text holds each of the folded words.
bool TousLesMots(std::string_view plie, std::string_view mots);
const CompteOffert* CompteDeNumero(const std::vector<CompteOffert>& comptes, const std::string& compte);

/// "70A Recettes": heading as the forms show it; empty when there is none.
std::string TexteRubrique(CFenlorApp& app, const std::string& rubrique);
/// Label of the account's last entry in this journal, by date; empty when there is none.
std::string DernierLibelle(CFenlorApp& app, i16 journal, const std::string& compte);

}  // namespace fenlor
