// One line of `fenlorctl saisir` as it was typed: fields read and checked for
// type, range and combination, nothing looked up yet.
//
// A receipt or expense:
//   {"journal":"recettes","date":"15/03/2003","compte":"706","libelle":"Consultations",
//    "ttc":120.0,"tresorerie":"BQ","paiement":"cheque"}
//   "code" in place of "compte"; optional "professionnel", "monnaie" ("franc", "euro");
//   "tresoreries":[{"compte":"BQ","montant":100.0,"paiement":"cheque"},...] in
//   place of "tresorerie" and "paiement".
// An opération diverse:
//   {"journal":"od","date":"15/03/2003","libelle":"Virement",
//    "lignes":[{"compte":"512","debit":10.0},{"compte":"530","credit":10.0}]}
// "mouvement":N changes entry N, with the fields that are given, or does to it
// what "supprimer", "valider", "pointer", "rapprocher" order.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "ctl/json.h"

namespace fenlor {

struct DemandeTresor {
  std::string compte;  ///< code or number
  f64 montant = 0;
  std::optional<i16> paiement;  ///< that of the entry's line on this account, else "cheque"
};

struct DemandeLigneOD {
  std::optional<std::string> compte;  ///< number in any form
  std::optional<std::string> code;    ///< one of the two is there
  std::string libelle;
  f64 debit = 0;
  f64 credit = 0;
  i16 paiement = PaiementCheque;
};

struct DemandeSaisie {
  u32 mouvement = 0;  ///< 0: a new entry
  std::optional<i16> journal;
  std::optional<std::string> date, libelle, compte, code, tresorerie;
  std::optional<f64> ttc, professionnel;
  std::optional<bool> euro;
  std::optional<i16> paiement;
  std::optional<std::vector<DemandeTresor>> tresoreries;
  std::optional<std::vector<DemandeLigneOD>> lignes;
  std::optional<bool> supprimer, valider, pointer, rapprocher;

  /// Something that belongs to the entry itself, not to its marks.
  bool Contenu() const;
};

/// Reads a line. Unknown fields, wrong types, and for a new entry missing fields
/// are refused by name.
Refus LitDemande(const Json& objet, DemandeSaisie& demande);
/// Refuses the fields that an entry of this kind has not: an opération diverse (`od`), a receipt or an
/// expense; nor can a receipt's professional share be typed.
Refus ControleGenre(const DemandeSaisie& demande, i16 journal, bool od);
/// "paiement" beside several treasury lines.
Refus RefusPaiement();

}  // namespace fenlor
