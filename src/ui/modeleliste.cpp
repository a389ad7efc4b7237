#include "ui/modeleliste.h"

#include "core/valeurs.h"

namespace fenlor {

namespace {

constexpr std::size_t vuesAuPlus = 1024;

}  // namespace

void ModeleListe::PoseColonnes(std::vector<Titre> titres, Lecture lecture, Tri tri) {
  beginResetModel();
  m_titres = std::move(titres);
  m_lecture = std::move(lecture);
  m_tri = std::move(tri);
  m_lignes.clear();
  m_toutes.clear();
  OublieFiltre();
  m_places.clear();
  m_vues.clear();
  endResetModel();
}

void ModeleListe::ChangeTitre(int colonne, const QString& texte) {
  m_titres.at(static_cast<std::size_t>(colonne)).texte = texte;
  Q_EMIT headerDataChanged(Qt::Horizontal, colonne, colonne);
}

void ModeleListe::Remplit(std::vector<LigneListe> lignes) {
  beginResetModel();
  OublieFiltre();
  (EstFiltre() ? m_toutes : m_lignes) = std::move(lignes);
  if (EstFiltre()) Filtre();
  m_vues.clear();
  endResetModel();
}

void ModeleListe::Oublie() {
  m_vues.clear();
  OublieFiltre();
}

void ModeleListe::Insere(int ligne, Donnee donnee) {
  ligne = std::clamp(ligne, 0, NbLignes());
  beginInsertRows({}, ligne, ligne);
  if (EstFiltre()) {
    const std::size_t place = PlaceDe(ligne);
    m_toutes.insert(m_toutes.begin() + static_cast<std::ptrdiff_t>(place), {donnee});
    m_places.insert(m_places.begin() + ligne, place);
    for (std::size_t i = static_cast<std::size_t>(ligne) + 1; i < m_places.size(); ++i) ++m_places[i];
  }
  m_lignes.insert(m_lignes.begin() + ligne, {donnee});
  OublieFiltre();
  m_vues.clear();
  endInsertRows();
}

void ModeleListe::Change(int ligne, Donnee donnee) {
  if (!Existe(ligne)) return;
  m_lignes[static_cast<std::size_t>(ligne)].donnee = donnee;
  if (EstFiltre()) m_toutes[PlaceDe(ligne)].donnee = donnee;
  OublieFiltre();
  m_vues.erase(ligne);
  if (columnCount() > 0) Q_EMIT dataChanged(index(ligne, 0), index(ligne, columnCount() - 1));
}

void ModeleListe::Supprime(int ligne, int nombre) {
  if (!Existe(ligne) || nombre < 1 || ligne + nombre > NbLignes()) return;
  beginRemoveRows({}, ligne, ligne + nombre - 1);
  if (EstFiltre()) {
    for (int i = ligne + nombre - 1; i >= ligne; --i)
      m_toutes.erase(m_toutes.begin() + static_cast<std::ptrdiff_t>(PlaceDe(i)));
    m_places.erase(m_places.begin() + ligne, m_places.begin() + ligne + nombre);
    for (std::size_t i = static_cast<std::size_t>(ligne); i < m_places.size(); ++i)
      m_places[i] -= static_cast<std::size_t>(nombre);
  }
  m_lignes.erase(m_lignes.begin() + ligne, m_lignes.begin() + ligne + nombre);
  OublieFiltre();
  m_vues.clear();
  endRemoveRows();
}

ModeleListe::Donnee ModeleListe::DonneeDe(int ligne) const {
  return Existe(ligne) ? m_lignes[static_cast<std::size_t>(ligne)].donnee : 0;
}

int ModeleListe::LigneDe(Donnee donnee) const {
  const auto trouvee = std::find_if(m_lignes.begin(), m_lignes.end(),
                                    [&](const LigneListe& ligne) { return ligne.donnee == donnee; });
  return trouvee == m_lignes.end() ? -1 : static_cast<int>(trouvee - m_lignes.begin());
}

int ModeleListe::NbTextes(int ligne) const {
  return Existe(ligne) ? std::max(1, static_cast<int>(m_lignes[static_cast<std::size_t>(ligne)].textes)) : 1;
}

const VueLigne& ModeleListe::Vue(int ligne) const {
  static const VueLigne aucune;
  if (!Existe(ligne) || !m_lecture) return aucune;
  if (const auto vue = m_vues.find(ligne); vue != m_vues.end()) return vue->second;
  if (m_vues.size() >= vuesAuPlus) m_vues.clear();
  ++m_lectures;
  return m_vues[ligne] = m_lecture(DonneeDe(ligne));
}

QString ModeleListe::Champ(int ligne, int champ) const {
  const VueLigne& vue = Vue(ligne);
  return vue.rangees.empty() ? QString() : vue.rangees[0].value(champ);
}

void ModeleListe::Trie(int colonne) {
  if (!m_tri || colonne < 0 || colonne >= columnCount()) return;
  if (EstFiltre()) {
    // All rows are sorted, and those that show are the same.
    const std::vector<std::string> mots = std::exchange(m_mots, {});
    beginResetModel();
    m_lignes = std::exchange(m_toutes, {});
    OublieFiltre();
    endResetModel();
    Trie(colonne);
    beginResetModel();
    m_mots = mots;
    m_toutes = std::move(m_lignes);
    Filtre();
    m_vues.clear();
    endResetModel();
    return;
  }
  const std::size_t nombre = m_lignes.size();
  std::vector<Donnee> donnees;
  for (const LigneListe& ligne : m_lignes) donnees.push_back(ligne.donnee);
  if (m_derniereFixe && nombre > 0) donnees.pop_back();
  std::vector<std::size_t> ordre = m_tri(donnees, colonne);
  // Reading may report an error, and so let others change the rows meanwhile.
  if (m_lignes.size() != nombre || std::is_sorted(ordre.begin(), ordre.end())) return;
  if (ordre.size() < nombre) ordre.push_back(nombre - 1);

  Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
  std::vector<LigneListe> triees;
  std::vector<int> place(nombre);
  for (const std::size_t ancienne : ordre) {
    place[ancienne] = static_cast<int>(triees.size());
    triees.push_back(m_lignes[ancienne]);
  }
  m_lignes = std::move(triees);
  OublieFiltre();
  m_vues.clear();
  const QModelIndexList avant = persistentIndexList();
  QModelIndexList apres;
  for (const QModelIndex& i : avant) apres += index(place[static_cast<std::size_t>(i.row())], i.column());
  changePersistentIndexList(avant, apres);
  Q_EMIT layoutChanged({}, VerticalSortHint);
}

int ModeleListe::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : NbLignes(); }

int ModeleListe::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_titres.size());
}

QVariant ModeleListe::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !Existe(index.row())) return {};
  if (role == Qt::TextAlignmentRole) return headerData(index.column(), Qt::Horizontal, role);
  if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
  const QString& marque = m_titres[static_cast<std::size_t>(index.column())].marque;
  QStringList textes;
  for (const QStringList& rangee : Vue(index.row()).rangees) {
    const QString texte = rangee.value(index.column()).trimmed();
    const bool lue = role == Qt::AccessibleTextRole && !marque.isEmpty() && !texte.isEmpty();
    textes += lue ? marque : texte;
  }
  while (!textes.isEmpty() && textes.last().isEmpty()) textes.removeLast();
  return textes.join(QLatin1Char('\n'));
}

QVariant ModeleListe::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const Titre& titre = m_titres[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return titre.texte;
  if (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole)
    return titre.marque.isEmpty() ? titre.texte : titre.marque;
  if (role == Qt::TextAlignmentRole) return static_cast<int>(titre.cote | Qt::AlignVCenter);
  return {};
}

}  // namespace fenlor
