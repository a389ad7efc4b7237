#include "journal/forms/modeleecritures.h"

#include <algorithm>

#include "core/valeurs.h"
#include "journal/forms/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr std::size_t luesAuPlus = 256;

int RangMarque(ChampJournal champ) {
  return static_cast<int>(champ) - static_cast<int>(ChampJournal::Pointee);
}

f64 Montant(const RangeeJournal& rangee, ChampJournal champ) {
  switch (champ) {
    case ChampJournal::MontantFranc:
      return rangee.franc;
    case ChampJournal::MontantEuro:
      return rangee.euro;
    case ChampJournal::DebitFranc:
      return rangee.credit ? 0 : rangee.franc;
    case ChampJournal::CreditFranc:
      return rangee.credit ? rangee.franc : 0;
    case ChampJournal::DebitEuro:
      return rangee.credit ? 0 : rangee.euro;
    default:
      return rangee.credit ? rangee.euro : 0;
  }
}

}  // namespace

ModeleEcritures::ModeleEcritures(QObject* parent) : QAbstractTableModel(parent) {}

void ModeleEcritures::PoseColonnes(std::vector<ChampJournal> champs, bool comptable) {
  beginResetModel();
  m_champs = std::move(champs);
  m_comptable = comptable;
  m_entrees.clear();
  m_lues.clear();
  endResetModel();
}

void ModeleEcritures::Remplit(std::vector<EntreeListe> entrees) {
  beginResetModel();
  m_entrees = std::move(entrees);
  m_lues.clear();
  endResetModel();
}

void ModeleEcritures::Supprime(int ligne, int nombre) {
  if (ligne < 0 || nombre < 1 || ligne + nombre > NbLignes()) return;
  beginRemoveRows({}, ligne, ligne + nombre - 1);
  m_entrees.erase(m_entrees.begin() + ligne, m_entrees.begin() + ligne + nombre);
  m_lues.clear();
  endRemoveRows();
}

u32 ModeleEcritures::Mouvement(int ligne) const {
  return ligne >= 0 && ligne < NbLignes() ? m_entrees[static_cast<std::size_t>(ligne)].mouvement : 0;
}

int ModeleEcritures::LigneDe(u32 mouvement) const {
  const auto trouve = std::find_if(m_entrees.begin(), m_entrees.end(),
                                   [&](const EntreeListe& e) { return e.mouvement == mouvement; });
  return trouve == m_entrees.end() ? -1 : static_cast<int>(trouve - m_entrees.begin());
}

int ModeleEcritures::NbTextes(int ligne) const {
  if (!m_comptable || ligne < 0 || ligne >= NbLignes()) return 1;
  return std::max(1, static_cast<int>(m_entrees[static_cast<std::size_t>(ligne)].lignes));
}

const EntreeJournal& ModeleEcritures::Entree(int ligne) const {
  if (const auto lue = m_lues.find(ligne); lue != m_lues.end()) return lue->second;
  if (m_lues.size() >= luesAuPlus) m_lues.clear();
  EntreeJournal& entree = m_lues[ligne];
  ++m_lectures;
  const u32 mouvement = Mouvement(ligne);
  if (mouvement == 0 || !m_lecture || !m_lecture(mouvement, entree)) entree = {};
  return entree;
}

bool ModeleEcritures::Marque(const RangeeJournal& rangee, ChampJournal champ) {
  const bool marques[] = {rangee.pointee, rangee.remise, rangee.rapprochee, rangee.validee};
  return EstMarque(champ) && marques[RangMarque(champ)];
}

QString ModeleEcritures::Texte(const EntreeJournal& entree, std::size_t rangee, ChampJournal champ) {
  if (rangee >= entree.rangees.size()) return {};
  const RangeeJournal& r = entree.rangees[rangee];
  if (EstMarque(champ)) return Marque(r, champ) ? Titre(champ) : QString();
  if (EstMontant(champ)) return Q(FormatMontant(Montant(r, champ), 2));
  switch (champ) {
    case ChampJournal::Ligne:
      return rangee > 0 ? QString() : TexteQ(FormatLigneJournal, {std::to_string(entree.ligne)});
    case ChampJournal::Date:
      return rangee > 0 ? QString() : TexteQ(FormatJourJournal, {std::to_string(Jour(entree.date))});
    case ChampJournal::Libelle:
      return Q(r.libelle);
    case ChampJournal::Tresorerie:
      return Q(r.tresorerie);
    case ChampJournal::Rubrique:
      return Q(r.rubrique);
    case ChampJournal::Compte:
      return Q(r.compte);
    default:
      return Q(r.designation);
  }
}

QString ModeleEcritures::Titre(ChampJournal champ) {
  if (!EstMarque(champ))
    return Q(ChampTexte(static_cast<unsigned>(champ), fenlor::Texte(TitresJournal), '|'));
  const QString lettres = TexteQ(LettresMarques);
  return QString(lettres[lettres.size() - 1 - RangMarque(champ)]);
}

QString ModeleEcritures::MotMarque(ChampJournal champ) {
  return Q(ChampTexte(static_cast<unsigned>(RangMarque(champ)), fenlor::Texte(MotsMarques), '|'));
}

int ModeleEcritures::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : NbLignes(); }
int ModeleEcritures::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_champs.size());
}

QVariant ModeleEcritures::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= NbLignes()) return {};
  const ChampJournal champ = m_champs[static_cast<std::size_t>(index.column())];
  if (role == Qt::TextAlignmentRole) {
    const bool droite = EstMontant(champ) || champ <= ChampJournal::Date;
    return static_cast<int>((droite             ? Qt::AlignRight
                             : EstMarque(champ) ? Qt::AlignHCenter
                                                : Qt::AlignLeft) |
                            Qt::AlignVCenter);
  }
  if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
  const EntreeJournal& entree = Entree(index.row());
  QStringList textes;
  for (std::size_t i = 0; i < entree.rangees.size(); ++i) {
    const QString texte = Texte(entree, i, champ).trimmed();
    textes +=
        EstMarque(champ) && !texte.isEmpty() && role == Qt::AccessibleTextRole ? MotMarque(champ) : texte;
  }
  while (!textes.isEmpty() && textes.last().isEmpty()) textes.removeLast();
  return textes.join(QLatin1Char('\n'));
}

QVariant ModeleEcritures::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const ChampJournal champ = m_champs[static_cast<std::size_t>(section)];
  switch (role) {
    case Qt::DisplayRole:
      return Titre(champ);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
      return EstMarque(champ) ? MotMarque(champ) : Titre(champ);
    case Qt::TextAlignmentRole:
      return static_cast<int>((EstMontant(champ) || champ <= ChampJournal::Date ? Qt::AlignRight
                               : EstMarque(champ)                               ? Qt::AlignHCenter
                                                                                : Qt::AlignLeft) |
                              Qt::AlignVCenter);
    default:
      return {};
  }
}

}  // namespace fenlor
