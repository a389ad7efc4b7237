// What a chart shows: the movements of the accounts that were chosen, month by month or account by account.
#pragma once

#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// A row of the list of accounts; a heading has no account.
struct CompteGraphique {
  i16 type = 0;        ///< TypeCompte
  std::string compte;  ///< long form; empty for a heading
  std::string court;   ///< short form
  std::string designation;
};
/// The accounts of the open exercice that can be charted, by number, under the headings of their groups:
/// receipts, expenses, treasury, VAT. Every group has its heading. Refused when the chart of accounts cannot
/// be read.
Refus LitComptesGraphique(CFenlorApp& app, std::vector<CompteGraphique>& lignes);

struct DemandeGraphique {
  std::vector<CompteGraphique> choisis;  ///< rows selected, headings among them
  bool comparaison = false;              ///< a point for each account; else the twelve months
  Date du = 0, au = 0;
};
/// 3112 without a row, 3113 for a comparison of one.
Refus ControleGraphique(const DemandeGraphique& demande);

struct PointGraphique {
  std::string libelle;  ///< at most 15 characters
  f64 valeur = 0;       ///< credit minus debit
};
struct SerieGraphique {
  std::string titre;
  std::vector<PointGraphique> points;
  bool evolution = true;  ///< points are months
  bool euro = true;       ///< else Franc
  Date du = 0, au = 0;
};
/// The series of a demand that `ControleGraphique` let pass, in the currency of the open exercice.
///
/// Months are January to December whatever the exercice and the years of its lines; several accounts add up.
/// A comparison has a point for each row, that of a heading empty. A heading alone gives one empty point and
/// no title. Days in the wrong order count nothing.
///
/// Refused when no exercice is open (3209) or the journal cannot be read.
Refus FaitSerieGraphique(CFenlorApp& app, const DemandeGraphique& demande, SerieGraphique& serie);

}  // namespace fenlor
