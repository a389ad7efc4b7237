// The rows of a table: a word of data for each (a record's position, or an index
// of the form's own), and the text of a row fetched when it is painted.
#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <functional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "store/enregistrements.h"
#include "ui/colonnes.h"

namespace fenlor {

class ModeleListe : public QAbstractTableModel {
  Q_OBJECT
 public:
  using Donnee = u64;
  /// Fields of a row separated by "|", Windows-1252.
  using TexteDeLigne = std::function<std::string(Donnee)>;
  /// Negative, 0 or positive: the order of two rows by the value of a column.
  using Comparaison = std::function<int(Donnee, Donnee, int)>;

  explicit ModeleListe(QObject* parent = nullptr);

  void PoseColonnes(std::vector<Colonne> colonnes);
  const std::vector<Colonne>& Colonnes() const { return m_colonnes; }
  /// Where the text of a row without one of its own comes from.
  void PoseTextes(TexteDeLigne textes);
  /// 16 by 16 picture of a row; none by default.
  void PoseImages(std::function<QIcon(Donnee)> images);

  /// Replaces all rows; their texts are fetched as they are painted.
  void Remplit(std::vector<Donnee> donnees);
  /// The last row stays last whatever the sort (the empty row at the end of a list).
  void DerniereFixe(bool fixe) { m_derniereFixe = fixe; }
  void Vide();
  /// Adds a row with a text of its own; its index.
  int Ajoute(const std::string& texte, Donnee donnee = 0);
  /// The same before a row, at the end behind the last one; rows below keep their selection.
  void Insere(int ligne, const std::string& texte, Donnee donnee = 0);
  void Change(int ligne, const std::string& texte, Donnee donnee);
  void Supprime(int ligne);
  /// Forgets fetched texts: the records changed, the rows are the same.
  void Oublie();

  int NbLignes() const { return static_cast<int>(m_lignes.size()); }
  Donnee DonneeDe(int ligne) const { return m_lignes[static_cast<std::size_t>(ligne)].donnee; }
  /// First row of this data, -1 when there is none.
  int LigneDe(Donnee donnee) const;
  /// Fields of a row, compacted; `champ` from 0.
  QString Champ(int ligne, int champ) const;
  /// Stable sort; keeps the order of rows that compare equal.
  void Trie(int colonne, const Comparaison& compare);
  /// Rows whose text was fetched since the last call: a test's view of laziness.
  unsigned NbLectures() const { return std::exchange(m_lectures, 0); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Ligne {
    Donnee donnee = 0;
    bool propre = false;  ///< `texte` is the row's own
    std::string texte;
  };
  const QStringList& Champs(int ligne) const;
  bool Existe(int ligne) const { return ligne >= 0 && ligne < NbLignes(); }
  std::vector<Colonne> m_colonnes;
  std::vector<Ligne> m_lignes;
  TexteDeLigne m_textes;
  std::function<QIcon(Donnee)> m_images;
  bool m_derniereFixe = false;
  mutable std::unordered_map<int, QStringList> m_vues;  ///< fetched fields by row, thrown away when large
  mutable unsigned m_lectures = 0;
};

}  // namespace fenlor
