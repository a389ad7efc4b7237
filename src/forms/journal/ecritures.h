// What the journal window and the forms of entries know of each other.
#pragma once

#include "journal/suspens.h"
#include "ui/fenetres.h"

namespace fenlor {

/// The journal window as a form sees it: rows are entries.
class ListeEcritures {
 public:
  virtual ~ListeEcritures() = default;
  virtual int GetEcrCount() const = 0;
  /// First selected row, -1 when none is.
  virtual int GetEcrSel() const = 0;
  /// Entry of a row, 0 when there is none.
  virtual u32 GetEcrId(int ligne) const = 0;
  /// The row before or after alone is selected; nothing at the ends.
  virtual void SelectPrev() = 0;
  virtual void SelectNext() = 0;
  /// Reloads with the month, account and mode of now.
  virtual void RefreshJournal() = 0;
};

/// How a form of entries is opened.
struct OuvertureEcriture {
  i16 journal = JournalRecettes;
  Date date = 0;                           ///< proposed; month and year stay
  std::string tresorerie;                  ///< proposed account, long form
  u32 mouvement = 0;                       ///< entry to open, 0 for a new one
  bool consultation = false;               ///< without neighbours
  ListeEcritures* proprietaire = nullptr;  ///< may be absent
  /// Of one new entry: what is known of it, and how it is saved. The form ends with it; cancelling asks
  /// nothing.
  const SaisieEcriture* proposition = nullptr;
  std::function<Refus(const SaisieEcriture&, EcritureFaite&)> sauve = {};
  /// What was typed into such a form when the program ended; `mouvement` is its own.
  const SaisieSuspendue* reprise = nullptr;
};

}  // namespace fenlor
