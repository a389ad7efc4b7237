#include "ui/tableliste.h"

#include <QFontDatabase>
#include <QHeaderView>
#include <QMenu>
#include <QScopedValueRollback>
#include <algorithm>

#include "ui/texteqt.h"

// Columns of a list: their widths, and how the user arranges them.

namespace fenlor {

void TableListe::ColonnesPosees() {
  m_colonneTriee = -1;
  m_largeursPropres = m_largeursChangees = false;
  ReprendRangement();
  Ajuste();
}

void TableListe::PermetColonnes() {
  m_permis = true;
  header()->setSectionsMovable(true);
  header()->setFirstSectionMovable(true);
  header()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(header(), &QWidget::customContextMenuRequested, this,
          [this](const QPoint& point) { MenuColonnes()->popup(header()->viewport()->mapToGlobal(point)); });
}

QMenu* TableListe::MenuColonnes() {
  if (!m_permis) return nullptr;
  auto* menu = new QMenu(this);
  menu->setObjectName(QStringLiteral("menuColonnes"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  for (const ColonneRangee& colonne : Colonnes()) {
    QAction* action = menu->addAction(colonne.titre);
    action->setCheckable(true);
    action->setChecked(colonne.montree);
    // One has to be left, for its title is the way back.
    action->setEnabled(!colonne.montree || header()->hiddenSectionCount() + 1 < header()->count());
    connect(action, &QAction::toggled, this,
            [this, rang = colonne.rang](bool montree) { Montre(rang, montree); });
  }
  menu->addSeparator();
  connect(menu->addAction(QStringLiteral("Comme à l'&origine")), &QAction::triggered, this,
          &TableListe::RangeCommeALOrigine);
  return menu;
}

std::vector<TableListe::ColonneRangee> TableListe::Colonnes() const {
  std::vector<ColonneRangee> colonnes;
  for (int visuel = 0; visuel < header()->count(); ++visuel) {
    const int rang = header()->logicalIndex(visuel);
    const ModeleListe::Titre& titre = m_modele->Titres()[static_cast<std::size_t>(rang)];
    colonnes.push_back({rang, titre.marque.isEmpty() ? titre.texte : titre.marque, !isColumnHidden(rang)});
  }
  return colonnes;
}

void TableListe::RangeColonnes(const std::vector<ColonneRangee>& colonnes) {
  {
    const QScopedValueRollback place(m_place, true);
    int visuel = 0;
    for (const ColonneRangee& colonne : colonnes) {
      header()->moveSection(header()->visualIndex(colonne.rang), visuel++);
      setColumnHidden(colonne.rang, !colonne.montree);
    }
  }
  Note();
  Ajuste();
}

void TableListe::RangeCommeALOrigine() {
  m_largeursPropres = false;
  PoseRangement({});
  Q_EMIT ColonnesRangees();
}

void TableListe::Montre(int colonne, bool montree) {
  {
    const QScopedValueRollback place(m_place, true);
    setColumnHidden(colonne, !montree);
  }
  Note();
  Ajuste();
}

/// What the user did; columns that other rows had keep their place behind these.
void TableListe::Note() {
  std::vector<Arrangement> rangement;
  const auto& titres = m_modele->Titres();
  for (int visuel = 0; visuel < header()->count(); ++visuel) {
    const int colonne = header()->logicalIndex(visuel);
    const auto tiree = m_tirees.find(colonne);
    rangement.push_back({titres[static_cast<std::size_t>(colonne)].texte, isColumnHidden(colonne),
                         tiree == m_tirees.end() ? 0 : tiree->second});
  }
  const auto connue = [&](const Arrangement& autre) {
    return std::any_of(rangement.begin(), rangement.end(),
                       [&](const Arrangement& r) { return r.titre == autre.titre; });
  };
  for (const Arrangement& ancienne : m_rangement)
    if (!connue(ancienne)) rangement.push_back(ancienne);
  m_rangement = std::move(rangement);
  Q_EMIT ColonnesRangees();
}

std::string TableListe::Rangement() const {
  std::string texte;
  for (const Arrangement& r : m_rangement) {
    if (!texte.empty()) texte += '|';
    if (r.cachee) texte += '-';
    texte += De1252(r.titre);
    if (r.largeur > 0) texte += '=' + std::to_string(r.largeur);
  }
  return texte;
}

void TableListe::PoseRangement(const std::string& rangement) {
  constexpr int largeurMax = 9999;
  m_rangement.clear();
  for (const QString& champ : Q(rangement).split(u'|', Qt::SkipEmptyParts)) {
    const bool cachee = champ.startsWith(u'-');
    const qsizetype egal = champ.indexOf(u'=');
    const int largeur = egal < 0 ? 0 : champ.mid(egal + 1).toInt();
    m_rangement.push_back({champ.left(egal < 0 ? champ.size() : egal).mid(cachee ? 1 : 0), cachee,
                           largeur > 0 && largeur <= largeurMax ? largeur : 0});
  }
  ReprendRangement();
  Ajuste();
}

void TableListe::ReprendRangement() {
  const QScopedValueRollback place(m_place, true);
  const auto& titres = m_modele->Titres();
  m_tirees.clear();
  for (int colonne = 0; colonne < header()->count(); ++colonne) {
    setColumnHidden(colonne, false);
    header()->moveSection(header()->visualIndex(colonne), colonne);
  }
  int visuel = 0;
  for (const Arrangement& r : m_rangement) {
    const auto titre =
        std::find_if(titres.begin(), titres.end(), [&](const auto& t) { return t.texte == r.titre; });
    const auto colonne = static_cast<int>(titre - titres.begin());
    if (colonne >= header()->count()) continue;
    header()->moveSection(header()->visualIndex(colonne), visuel++);
    if (r.largeur > 0 && m_retientTirees) m_tirees[colonne] = r.largeur;
    if (r.cachee && header()->hiddenSectionCount() + 1 < header()->count()) setColumnHidden(colonne, true);
  }
  for (const auto& [colonne, largeur] : m_tirees) header()->resizeSection(colonne, largeur);
}

void TableListe::Ajuste() {
  if (m_largeursPropres) return;
  const QFontMetrics bureau(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
  const double echelle = std::max(1.0, double(fontMetrics().averageCharWidth()) / bureau.averageCharWidth());
  std::vector<int> largeurs;
  const QFontMetrics titres = header()->fontMetrics();
  for (const ModeleListe::Titre& titre : m_modele->Titres()) {
    const int marges = 2 * Marge(static_cast<int>(largeurs.size())) + 1;
    largeurs.push_back(
        std::max(qRound(titre.largeur * echelle), titres.horizontalAdvance(titre.texte) + marges));
  }
  // The width that is free belongs to the name: the widest of the texts.
  int nom = -1, libre = viewport()->width();
  for (int i = 0; i < static_cast<int>(largeurs.size()); ++i) {
    if (isColumnHidden(i)) continue;
    const auto rang = static_cast<std::size_t>(i);
    libre -= largeurs[rang];
    const bool texte = !(m_modele->Titres()[rang].cote & (Qt::AlignRight | Qt::AlignHCenter));
    if (texte && (nom < 0 || largeurs[rang] > largeurs[static_cast<std::size_t>(nom)])) nom = i;
  }
  if (nom >= 0 && libre > 0) largeurs[static_cast<std::size_t>(nom)] += libre;
  PlaceColonnes(largeurs);
}

std::vector<int> TableListe::Largeurs() const {
  std::vector<int> largeurs;
  for (int i = 0; i < header()->count(); ++i) largeurs.push_back(header()->sectionSize(i));
  return largeurs;
}

bool TableListe::PoseLargeurs(const std::vector<int>& largeurs) {
  const bool bonnes = std::all_of(largeurs.begin(), largeurs.end(), [](int largeur) { return largeur > 0; });
  if (!bonnes || static_cast<int>(largeurs.size()) != header()->count()) return false;
  PlaceColonnes(largeurs);
  m_largeursPropres = true;
  return true;
}

void TableListe::PlaceColonnes(const std::vector<int>& largeurs) {
  const QScopedValueRollback place(m_place, true);
  for (std::size_t i = 0; i < largeurs.size(); ++i)
    if (!isColumnHidden(static_cast<int>(i))) header()->resizeSection(static_cast<int>(i), largeurs[i]);
}

}  // namespace fenlor
