// Entries as the rules see them: walks over a key of the journal that fetch the
// entry behind each first line, and the making of the lines of an opération diverse.
// Lines of simple and standard entries are written by the store alone.
//
// Made, opened, used, destroyed. A walk survives what other objects do to the
// journal's cursors, and the removal of the entry that it stands on.
#pragma once

#include <memory>
#include <string>

#include "core/btfiles.h"

namespace fenlor {

/// What the four kinds of entry share. `Rec` is the kind's record.
class CEntree {
 public:
  virtual ~CEntree() = default;
  CEntree(const CEntree&) = delete;
  CEntree& operator=(const CEntree&) = delete;

  const std::string Path;         ///< directory of the exercice
  std::unique_ptr<CLines> Lines;  ///< while open
  std::string Cle;                ///< key where the walk stands
  u32 CleIndex = 0;               ///< journal key being walked

  /// Creates and opens `Lines`. False when the journal cannot be opened.
  bool OpenFile();
  void CloseFile();

  virtual void ClearRec() = 0;
  /// Stands on the first line at or above the record's fields in a journal key,
  /// index from 0: `Mouvement`, `Journal`, `Libelle`, `Ligne`, `Date`, and for a
  /// simple entry its treasury account. Position of the line, 0 when there is none.
  virtual Position BrowseKey(u32 indice);
  /// Reads an entry; the record stays as it was when there is none of this kind.
  virtual bool ReadRec(u32 mouvement) = 0;
  /// `BrowseKey`, then the entry of the line found.
  bool Browse(u32 indice);
  /// Skips the other lines of the entry; position of the next entry's first line in
  /// the key, 0 at the end: the walk then stays where it was.
  Position NextEntry(u32 indice);
  bool Next(u32 indice);

  /// The header that all kinds share.
  virtual Mouvement Entete() const = 0;
  /// The parent application made the entry.
  bool IsLien() const { return Entete().LienId != 0; }
  /// Adds a line to the entry: number, journal, label, dates and marks are filled
  /// from the header. Its position, 0 when the store refused.
  Position AddLine(Line& ligne);
  /// Adds a line for a difference, credits less debits: a negative one as a credit on
  /// the account for credit deviations, a positive one as a debit on that for debits.
  /// Exactly 0 adds nothing and succeeds. False when the account is not in the chart.
  bool AddEcart(f64 montant, bool euro);

 protected:
  CEntree(CFenlorApp& app, std::string path)
      : Path(path.empty() ? app.PathExercice : std::move(path)), m_app(app) {}
  /// Account of the line that `BrowseKey` looks for.
  virtual std::string CompteCherche() const { return {}; }

  CFenlorApp& m_app;

 private:
  bool LitEntree(Position position);
};

template <class Record>
class CEntreeDe : public CEntree {
 public:
  Record Rec{};

  void ClearRec() override { Rec = Record{}; }
  Mouvement Entete() const override;

 protected:
  using CEntree::CEntree;
};

class CMouvements : public CEntreeDe<Mouvement> {
 public:
  CMouvements(CFenlorApp& app, std::string path) : CEntreeDe(app, std::move(path)) {}
  bool ReadRec(u32 mouvement) override;
};

class COpDiverses : public CEntreeDe<Mouvement> {
 public:
  COpDiverses(CFenlorApp& app, std::string path) : CEntreeDe(app, std::move(path)) {}
  bool ReadRec(u32 mouvement) override;
};

class CEcrSimple : public CEntreeDe<EcrSimple> {
 public:
  CEcrSimple(CFenlorApp& app, std::string path) : CEntreeDe(app, std::move(path)) {}
  bool ReadRec(u32 mouvement) override;
  /// Writes a new entry; its number, 0 when the store refused.
  u32 AddRec();

 protected:
  std::string CompteCherche() const override;
};

/// Owns the treasury lines of its record.
class CEcrStandard : public CEntreeDe<EcrStandard> {
 public:
  CEcrStandard(CFenlorApp& app, std::string path) : CEntreeDe(app, std::move(path)) {}
  ~CEcrStandard() override;
  void ClearRec() override;
  bool ReadRec(u32 mouvement) override;
  u32 AddRec();
};

}  // namespace fenlor
