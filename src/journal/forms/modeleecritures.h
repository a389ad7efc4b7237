// Rows of a journal window: an entry each, read from the books when it is painted.
#pragma once

#include <QAbstractTableModel>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/texte.h"
#include "journal/listejournal.h"

namespace fenlor {

/// What a column shows. Those before the marks in the order of their titles in the table of texts.
enum class ChampJournal {
  Ligne,
  Date,
  Libelle,
  Tresorerie,
  MontantFranc,
  MontantEuro,
  DebitFranc,
  CreditFranc,
  DebitEuro,
  CreditEuro,
  Rubrique,
  Compte,
  Designation,
  Pointee,
  Remise,
  Rapprochee,
  Validee,
};
constexpr bool EstMarque(ChampJournal champ) { return champ >= ChampJournal::Pointee; }
constexpr bool EstMontant(ChampJournal champ) {
  return champ >= ChampJournal::MontantFranc && champ <= ChampJournal::CreditEuro;
}

class ModeleEcritures : public QAbstractTableModel {
  Q_OBJECT
 public:
  /// Reads an entry; false when it cannot be read, which gives an empty row.
  using Lecture = std::function<bool(u32 mouvement, EntreeJournal&)>;

  explicit ModeleEcritures(QObject* parent = nullptr);

  void PoseLecture(Lecture lecture) { m_lecture = std::move(lecture); }
  /// Columns, and whether a row has a line of text for each line of its entry.
  void PoseColonnes(std::vector<ChampJournal> champs, bool comptable);
  const std::vector<ChampJournal>& Champs() const { return m_champs; }
  bool Comptable() const { return m_comptable; }

  void Remplit(std::vector<EntreeListe> entrees);
  void Supprime(int ligne, int nombre = 1);
  /// Forgets what was read: the entries changed, the rows are the same. Tells nobody, for a view would
  /// measure every row again.
  void Oublie() { m_lues.clear(); }

  int NbLignes() const { return static_cast<int>(m_entrees.size()); }
  u32 Mouvement(int ligne) const;    ///< 0 for no row
  int LigneDe(u32 mouvement) const;  ///< -1 for none
  /// Lines of text of a row, 1 or more. Reads nothing.
  int NbTextes(int ligne) const;
  /// The entry of a row, valid until the next call; without lines when it cannot be read.
  const EntreeJournal& Entree(int ligne) const;
  /// Text of a line in a column; of a mark its letter when it is set.
  static QString Texte(const EntreeJournal& entree, std::size_t rangee, ChampJournal champ);
  static bool Marque(const RangeeJournal& rangee, ChampJournal champ);
  static QString Titre(ChampJournal champ);
  static QString MotMarque(ChampJournal champ);
  /// Entries read since the last call: a test's view of laziness.
  unsigned NbLectures() const { return std::exchange(m_lectures, 0); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  /// The lines of a cell, one below the other; of a mark its word.
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  std::vector<ChampJournal> m_champs;
  std::vector<EntreeListe> m_entrees;
  bool m_comptable = false;
  Lecture m_lecture;
  mutable std::unordered_map<int, EntreeJournal> m_lues;  ///< by row, thrown away when large
  mutable unsigned m_lectures = 0;
};

}  // namespace fenlor
