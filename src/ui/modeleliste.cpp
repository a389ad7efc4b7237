#include "ui/modeleliste.h"

#include <algorithm>
#include <numeric>

#include "core/valeurs.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr std::size_t lignesVuesMax = 1024;

}  // namespace

ModeleListe::ModeleListe(QObject* parent) : QAbstractTableModel(parent) {}

void ModeleListe::PoseColonnes(std::vector<Colonne> colonnes) {
  beginResetModel();
  m_colonnes = std::move(colonnes);
  m_vues.clear();
  endResetModel();
}

void ModeleListe::PoseTextes(TexteDeLigne textes) {
  m_textes = std::move(textes);
  Oublie();
}

void ModeleListe::PoseImages(std::function<QIcon(Donnee)> images) {
  m_images = std::move(images);
  Oublie();
}

void ModeleListe::Remplit(std::vector<Donnee> donnees) {
  beginResetModel();
  m_vues.clear();
  m_lignes.clear();
  m_lignes.resize(donnees.size());
  for (std::size_t i = 0; i < donnees.size(); ++i) m_lignes[i].donnee = donnees[i];
  endResetModel();
}

void ModeleListe::Vide() { Remplit({}); }

int ModeleListe::Ajoute(const std::string& texte, Donnee donnee) {
  const int ligne = NbLignes();
  Insere(ligne, texte, donnee);
  return ligne;
}

void ModeleListe::Insere(int ligne, const std::string& texte, Donnee donnee) {
  ligne = std::clamp(ligne, 0, NbLignes());
  beginInsertRows({}, ligne, ligne);
  m_lignes.insert(m_lignes.begin() + ligne, {donnee, true, texte});
  if (ligne + 1 < NbLignes()) m_vues.clear();
  endInsertRows();
}

void ModeleListe::Change(int ligne, const std::string& texte, Donnee donnee) {
  if (!Existe(ligne)) return;
  m_lignes[static_cast<std::size_t>(ligne)] = {donnee, true, texte};
  m_vues.erase(ligne);
  if (columnCount() > 0) Q_EMIT dataChanged(index(ligne, 0), index(ligne, columnCount() - 1));
}

void ModeleListe::Supprime(int ligne) {
  if (!Existe(ligne)) return;
  beginRemoveRows({}, ligne, ligne);
  m_lignes.erase(m_lignes.begin() + ligne);
  m_vues.clear();
  endRemoveRows();
}

void ModeleListe::Oublie() {
  m_vues.clear();
  if (NbLignes() > 0 && columnCount() > 0)
    Q_EMIT dataChanged(index(0, 0), index(NbLignes() - 1, columnCount() - 1));
}

int ModeleListe::LigneDe(Donnee donnee) const {
  const auto trouvee = std::find_if(m_lignes.begin(), m_lignes.end(),
                                    [&](const Ligne& ligne) { return ligne.donnee == donnee; });
  return trouvee == m_lignes.end() ? -1 : static_cast<int>(trouvee - m_lignes.begin());
}

const QStringList& ModeleListe::Champs(int ligne) const {
  if (const auto vue = m_vues.find(ligne); vue != m_vues.end()) return vue->second;
  const Ligne& source = m_lignes[static_cast<std::size_t>(ligne)];
  std::string texte = source.texte;
  if (!source.propre) {
    ++m_lectures;
    texte = m_textes ? m_textes(source.donnee) : std::string();
  }
  QStringList champs;
  for (const QString& champ : Q(texte).split(QLatin1Char('|'))) champs += champ.simplified();
  if (m_vues.size() >= lignesVuesMax) m_vues.clear();
  return m_vues[ligne] = std::move(champs);
}

QString ModeleListe::Champ(int ligne, int champ) const {
  return Existe(ligne) ? Champs(ligne).value(champ) : QString();
}

void ModeleListe::Trie(int colonne, const Comparaison& compare) {
  const std::size_t nombre = m_lignes.size();
  std::vector<Donnee> donnees(nombre);
  std::transform(m_lignes.begin(), m_lignes.end(), donnees.begin(), [](const Ligne& l) { return l.donnee; });
  std::vector<std::size_t> ordre(nombre);
  std::iota(ordre.begin(), ordre.end(), std::size_t{0});
  std::stable_sort(
      ordre.begin(), ordre.end() - (m_derniereFixe && nombre > 0),
      [&](std::size_t a, std::size_t b) { return compare(donnees[a], donnees[b], colonne) < 0; });
  // A comparison may report an error, and so let others change the rows meanwhile.
  if (m_lignes.size() != nombre || std::is_sorted(ordre.begin(), ordre.end())) return;

  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  std::vector<Ligne> triees;
  triees.reserve(nombre);
  std::vector<int> place(nombre);
  for (const std::size_t ancienne : ordre) {
    place[ancienne] = static_cast<int>(triees.size());
    triees.push_back(std::move(m_lignes[ancienne]));
  }
  m_lignes = std::move(triees);
  m_vues.clear();
  const QModelIndexList avant = persistentIndexList();
  QModelIndexList apres;
  for (const QModelIndex& i : avant) apres += index(place[static_cast<std::size_t>(i.row())], i.column());
  changePersistentIndexList(avant, apres);
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

int ModeleListe::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : NbLignes(); }

int ModeleListe::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_colonnes.size());
}

QVariant ModeleListe::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !Existe(index.row())) return {};
  if (role == Qt::DisplayRole) return Champ(index.row(), index.column());
  if (role == Qt::TextAlignmentRole) return headerData(index.column(), Qt::Horizontal, role);
  if (role == Qt::DecorationRole && index.column() == 0 && m_images) return m_images(DonneeDe(index.row()));
  return {};
}

QVariant ModeleListe::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const Colonne& colonne = m_colonnes[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return colonne.titre;
  // The first column is left aligned whatever its letter.
  if (role == Qt::TextAlignmentRole)
    return static_cast<int>((section == 0 ? Qt::AlignLeft : colonne.alignement) | Qt::AlignVCenter);
  return {};
}

}  // namespace fenlor
