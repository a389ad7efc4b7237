// The rows of a list: a word of data for each (a record's position, a number, an index of the form's
// own). What a row shows is asked for when it is painted.
#pragma once

#include <QAbstractTableModel>
#include <QStringList>
#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <numeric>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/colonneliste.h"
#include "store/enregistrements.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

/// A row: its data, and how many lines of text it has.
struct LigneListe {
  u64 donnee = 0;
  u32 textes = 1;
};

/// What a row shows.
struct VueLigne {
  std::vector<QStringList> rangees;  ///< cells of each line of text; none for what cannot be read
  bool autre = false;                ///< in the list's other colour and font
  /// By column, what is copied of the first line of text instead of what it shows.
  std::map<int, QString> copies = {};
};

class ModeleListe : public QAbstractTableModel {
  Q_OBJECT
 public:
  using Donnee = u64;
  struct Titre {
    QString texte;
    Qt::Alignment cote;
    int largeur;
    QString marque;  ///< what a mark means; empty: a column of texts
  };
  using Lecture = std::function<VueLigne(Donnee)>;
  /// The stable order of rows by a column, as indexes into `donnees`.
  using Tri = std::function<std::vector<std::size_t>(const std::vector<Donnee>& donnees, int colonne)>;

  using QAbstractTableModel::QAbstractTableModel;

  /// A table of columns, and how the record of a row is read: false for an empty row.
  template <class Fiche>
  void Definit(TableColonnes<Fiche> colonnes, std::function<bool(Donnee, Fiche&)> lit);
  template <class Fiche>
  static std::vector<Titre> Titres(const TableColonnes<Fiche>& colonnes);
  void PoseColonnes(std::vector<Titre> titres, Lecture lecture, Tri tri = {});
  const std::vector<Titre>& Titres() const { return m_titres; }
  /// The rows stay. Their texts, too, until `Oublie`.
  void ChangeTitre(int colonne, const QString& texte);

  /// Under a filter the rows are those of these that it lets through.
  void Remplit(std::vector<LigneListe> lignes);
  void Vide() { Remplit({}); }
  /// The last row stays last whatever the sort (the empty row at the end of a list).
  void DerniereFixe(bool fixe) { m_derniereFixe = fixe; }
  /// Before a row, at the end behind the last one; rows below keep their selection.
  void Insere(int ligne, Donnee donnee);
  /// The row has other data now, or its record changed.
  void Change(int ligne, Donnee donnee);
  void Supprime(int ligne, int nombre = 1);
  /// Forgets what was read: the records changed, the rows are the same. Tells nobody, for a view would
  /// measure every row again.
  void Oublie();

  /// Only rows that hold all these words show, in any column, whatever accents and case; a mark counts as its
  /// word. No words: all rows. Every row is read once, not at each word.
  void PoseFiltre(const QString& mots);
  /// Reads so many rows more for a filter that is about to come; false once all of them are. The filter and
  /// the totals read what is missing.
  bool PrepareFiltre(std::size_t auPlus);
  bool EstFiltre() const { return !m_mots.empty(); }
  /// Rows there are, the hidden ones included.
  int NbToutes() const { return EstFiltre() ? static_cast<int>(m_toutes.size()) : NbLignes(); }
  /// The sum of a column's rows as it would stand in it; empty for one that holds anything but amounts, or
  /// that is not ranged right.
  QString Total(int colonne);

  int NbLignes() const { return static_cast<int>(m_lignes.size()); }
  Donnee DonneeDe(int ligne) const;  ///< 0 for no row
  /// Place of a row, or of the end, among all rows, those that a filter hides included.
  std::size_t PlaceDe(int ligne) const;
  /// Data of all rows, the hidden ones included.
  std::vector<Donnee> Toutes() const;
  int LigneDe(Donnee donnee) const;  ///< first row of this data, -1 when there is none
  /// Lines of text of a row, 1 or more. Reads nothing.
  int NbTextes(int ligne) const;
  /// Valid until the next call.
  const VueLigne& Vue(int ligne) const;
  /// Text of a cell in its first line; empty for no cell.
  QString Champ(int ligne, int champ) const;
  /// Stable sort; rows that compare equal keep their order.
  void Trie(int colonne);
  /// Rows read since the last call: a test's view of laziness.
  unsigned NbLectures() const { return std::exchange(m_lectures, 0); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  /// The lines of a cell, one below the other; read aloud a mark is its word.
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  bool Existe(int ligne) const { return ligne >= 0 && ligne < NbLignes(); }
  /// What a cell adds to the total of its column.
  struct Somme {
    i64 centimes = 0;
    bool montant = false, solde = false, autre = false;
  };
  void LitPourFiltre(Donnee donnee);
  void OublieFiltre();
  void Ajoute(std::size_t colonne, const QString& texte, Somme& somme);
  void Filtre();
  std::vector<Titre> m_titres;
  std::vector<LigneListe> m_lignes;
  Lecture m_lecture;
  Tri m_tri;
  bool m_derniereFixe = false;
  // Of a filter: its words, all rows with what the words are looked for in, and where the rows that show
  // stand among them.
  std::vector<std::string> m_mots;
  std::vector<LigneListe> m_toutes;
  std::vector<std::string> m_plies;  ///< of the first rows; read on demand
  std::vector<Somme> m_sommes;       ///< of the same rows, a cell each
  std::vector<QString> m_unites;     ///< behind the amounts of a column
  std::vector<std::size_t> m_places;
  mutable std::unordered_map<int, VueLigne> m_vues;  ///< by row, thrown away when large
  mutable unsigned m_lectures = 0;
};

template <class Fiche>
std::vector<ModeleListe::Titre> ModeleListe::Titres(const TableColonnes<Fiche>& colonnes) {
  constexpr Qt::AlignmentFlag cotes[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
  std::vector<Titre> titres;
  for (const ColonneListe<Fiche>& c : colonnes)
    titres.push_back({Q(c.titre), cotes[static_cast<int>(c.cote)], c.largeur, Q(c.marque)});
  return titres;
}

template <class Fiche>
void ModeleListe::Definit(TableColonnes<Fiche> colonnes, std::function<bool(Donnee, Fiche&)> lit) {
  const auto table = std::make_shared<const TableColonnes<Fiche>>(std::move(colonnes));
  const auto vue = [table, lit](Donnee donnee) {
    VueLigne ligne;
    Fiche fiche{};
    if (!lit(donnee, fiche)) return ligne;
    ligne.rangees.emplace_back();
    for (const std::string& texte : Cellules(*table, fiche)) ligne.rangees[0] += Q(texte).simplified();
    return ligne;
  };
  // Each record is read once, not at each comparison.
  const auto tri = [table, lit](const std::vector<Donnee>& donnees, int colonne) {
    const ColonneListe<Fiche>& c = (*table)[static_cast<std::size_t>(colonne)];
    std::vector<Fiche> fiches(donnees.size());
    std::vector<std::string> cles(donnees.size());
    std::vector<std::size_t> ordre(donnees.size());
    std::iota(ordre.begin(), ordre.end(), std::size_t{0});
    for (const std::size_t i : ordre)
      if (lit(donnees[i], fiches[i]) && !c.compare) cles[i] = CleAlphabetique(c.texte(fiches[i]));
    std::stable_sort(ordre.begin(), ordre.end(), [&](std::size_t a, std::size_t b) {
      return c.compare ? c.compare(fiches[a], fiches[b]) < 0 : cles[a] < cles[b];
    });
    return ordre;
  };
  PoseColonnes(Titres(*table), vue, tri);
}

}  // namespace fenlor
