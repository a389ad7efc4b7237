// A month of a journal as its window lists it: which entries show, their totals, and
// the texts of a row. Nothing of an entry is kept but its number and how many lines it
// has; rows are read when they are painted.
#pragma once

#include <string>
#include <vector>

#include "journal/criteres.h"

namespace fenlor {

/// Which entries show; the bits of `Mode`.
enum ModeListe : u16 { ListeValidees = 1, ListeBrouillard = 2, ListeToutes = 3 };

struct DemandeListe {
  i16 journal = JournalRecettes;
  Date mois = 0;       ///< first day of the month
  std::string filtre;  ///< treasury account, long form; empty: all. Not in journal 3
  u16 mode = ListeBrouillard;
  CritereEcriture criteres;
};

struct TotauxListe {
  f64 debitFranc = 0, creditFranc = 0, debitEuro = 0, creditEuro = 0;
};

struct EntreeListe {
  u32 mouvement = 0;
  u32 lignes = 0;  ///< of the journal, 1 or more
  /// With a treasury account chosen: its balance after the entry, credit less debit as in the lists of
  /// accounts. All lines of the account count, of whatever journal, drafts or not, by date and entry.
  f64 soldeFranc = 0, soldeEuro = 0;
};

struct MoisJournal {
  std::vector<EntreeListe> entrees;  ///< in the order of date and number
  TotauxListe totaux;
};

/// Walks the journal from the first day of the month while the month byte stays the same,
/// whatever the year. With a filter both sides get the sum of the account's lines whatever
/// their side. In place, without one read a line. Without an exercice it is empty, here and below.
Refus ListeMois(CFenlorApp& app, const DemandeListe& demande, MoisJournal& mois);
/// Totals of some entries by the same rules (the selected rows).
Refus TotauxEntrees(CFenlorApp& app, const DemandeListe& demande, const std::vector<u32>& mouvements,
                    TotauxListe& totaux);
/// The entry is of this list still: its month (byte), journal, `Mode`, account, criteria.
Refus EstListee(CFenlorApp& app, const DemandeListe& demande, u32 mouvement, bool& listee);

/// One line of text of a row. Texts Windows-1252, formatted; empty where nothing stands.
struct RangeeJournal {
  std::string libelle;
  std::string tresorerie;   ///< code, "***" for several; entry in one row alone
  f64 franc = 0, euro = 0;  ///< entry in one row: of its treasury lines; else of the line
  bool credit = false;      ///< side of the line; entry in one row: unused
  bool pointee = false, remise = false, rapprochee = false, validee = false;
  std::string rubrique, compte, designation;  ///< compte: short form
};
/// An entry as it is drawn.
struct EntreeJournal {
  u32 ligne = 0;
  Date date = 0;
  bool validee = false, pointee = false, liee = false;
  i16 genre = 0;
  std::vector<RangeeJournal> rangees;  ///< one, or one for each line ("Journal comptable")
};
/// `comptable`: one text line for each journal line. Else one row: amounts and marks of the
/// treasury lines on `filtre` (all without one). False for an entry that cannot be read.
bool LitEntreeJournal(CFenlorApp& app, u32 mouvement, bool comptable, const std::string& filtre,
                      EntreeJournal& entree);

/// Which currencies show: both with the exercice's double display, else Franc when the year of
/// the exercice's name is below 2002, Euro from then on.
struct MonnaiesListe {
  bool franc = false, euro = false;
};
MonnaiesListe MonnaiesAffichees(const CFenlorApp& app);

}  // namespace fenlor
