#include "journal/forms/ecrlist.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <numeric>
#include <unordered_set>

#include "core/texte.h"
#include "core/valeurs.h"
#include "ui/colonnes.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr int margeGauche = 4;  ///< before the first column
constexpr int margeTexte = 3;
constexpr int largeurMarque = 14;
constexpr int interligne = 3;

/// Keeps the titles above the texts of their column.
class StyleTitres : public QProxyStyle {
 public:
  StyleTitres() : QProxyStyle(QApplication::style()->name()) {}
  int pixelMetric(PixelMetric mesure, const QStyleOption* option, const QWidget* widget) const override {
    return mesure == PM_HeaderMargin ? margeTexte : QProxyStyle::pixelMetric(mesure, option, widget);
  }
};

/// Gives the height of a row from its number of lines alone.
class DelegueRangees : public QStyledItemDelegate {
 public:
  DelegueRangees(const ModeleEcritures& modele, const int& hauteur, QObject* parent)
      : QStyledItemDelegate(parent), m_modele(modele), m_hauteur(hauteur) {}
  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override {
    return {0, index.column() == 0 ? m_modele.NbTextes(index.row()) * m_hauteur : m_hauteur};
  }

 private:
  const ModeleEcritures& m_modele;
  const int& m_hauteur;
};

/// Characters of a column; the marks are in pixels.
int Caracteres(ChampJournal champ) {
  switch (champ) {
    case ChampJournal::Ligne:
      return 6;
    case ChampJournal::Date:
    case ChampJournal::Tresorerie:
    case ChampJournal::Rubrique:
      return 4;
    case ChampJournal::Libelle:
      return 26;
    case ChampJournal::Compte:
      return 9;
    case ChampJournal::Designation:
      return 24;
    default:
      return 11;
  }
}

std::vector<ChampJournal> ChampsDe(const MonnaiesListe& monnaies, bool comptable) {
  using C = ChampJournal;
  std::vector<C> champs = {C::Ligne, C::Date, C::Libelle};
  if (comptable) {
    if (monnaies.franc) champs.insert(champs.end(), {C::DebitFranc, C::CreditFranc});
    if (monnaies.euro) champs.insert(champs.end(), {C::DebitEuro, C::CreditEuro});
  } else {
    champs.push_back(C::Tresorerie);
    if (monnaies.franc) champs.push_back(C::MontantFranc);
    if (monnaies.euro) champs.push_back(C::MontantEuro);
  }
  champs.insert(champs.end(),
                {C::Pointee, C::Remise, C::Rapprochee, C::Validee, C::Rubrique, C::Compte, C::Designation});
  return champs;
}

void DessineCoche(QPainter& peintre, const QRect& cellule) {
  const double cote = std::min(cellule.width(), cellule.height()) * 0.28;
  const QPointF centre = QRectF(cellule).center();
  peintre.save();
  peintre.setRenderHint(QPainter::Antialiasing);
  peintre.setPen(
      QPen(peintre.pen().color(), std::max(1.6, cote * 0.42), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  const QPointF trait[] = {centre + QPointF(-cote, 0), centre + QPointF(-cote * 0.3, cote * 0.75),
                           centre + QPointF(cote, -cote * 0.85)};
  peintre.drawPolyline(trait, 3);
  peintre.restore();
}

}  // namespace

CEcrList::CEcrList(ContexteUi& contexte, QWidget* parent)
    : QTreeView(parent), m_contexte(contexte), m_modele(new ModeleEcritures(this)) {
  setModel(m_modele);
  setItemDelegate(new DelegueRangees(*m_modele, m_hauteurTexte, this));
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setExpandsOnDoubleClick(false);
  setIndentation(0);
  setAllColumnsShowFocus(true);
  setSelectionMode(ExtendedSelection);
  setSelectionBehavior(SelectRows);
  setEditTriggers(NoEditTriggers);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollMode(ScrollPerPixel);
  header()->setStretchLastSection(false);
  header()->setSectionsMovable(false);
  header()->setSectionsClickable(false);
  header()->setMinimumSectionSize(1);
  header()->setSectionResizeMode(QHeaderView::Fixed);
  header()->setTextElideMode(Qt::ElideRight);
  auto* style = new StyleTitres;
  style->setParent(header());
  header()->setStyle(style);
  CEcrList::ActualisePreferences();
}

void CEcrList::ActualisePreferences() {
  const Preferences& dessin = m_contexte.Dessin;
  setFont(dessin.PoliceJournaux);
  const int texte =
      std::max(QFontMetrics(dessin.PoliceJournaux).height(), QFontMetrics(dessin.PoliceValidees).height());
  m_hauteurTexte = std::max(texte, largeurMarque - interligne) + interligne;
  QPalette couleurs = palette();
  couleurs.setColor(QPalette::Base, dessin.CouleurFond);
  couleurs.setColor(QPalette::Text, Lisible(palette().color(QPalette::WindowText), dessin.CouleurFond));
  viewport()->setPalette(couleurs);
  m_largeurs.clear();
  scheduleDelayedItemsLayout();
}

void CEcrList::PoseColonnes(const MonnaiesListe& monnaies, bool comptable, const TotauxListe& totaux) {
  const QFontMetrics journaux(m_contexte.Dessin.PoliceJournaux), validees(m_contexte.Dessin.PoliceValidees);
  const QFontMetrics textes(m_contexte.Dessin.PoliceTextes), titres = header()->fontMetrics();
  const int w = std::max(journaux.averageCharWidth(), validees.averageCharWidth());
  const auto largeurTexte = [&](const QString& texte) {
    return std::max(journaux.horizontalAdvance(texte), validees.horizontalAdvance(texte)) + 2 * margeTexte +
           2;
  };
  int montant = textes.horizontalAdvance(QStringLiteral("8888888,88 € "));
  for (const f64 total : {totaux.debitFranc, totaux.creditFranc})
    montant = std::max(montant, textes.horizontalAdvance(Q(FormatFranc(total)) + u' ') + 2);
  for (const f64 total : {totaux.debitEuro, totaux.creditEuro})
    montant = std::max(montant, textes.horizontalAdvance(Q(FormatEuro(total)) + u' ') + 2);
  const std::vector<ChampJournal> champs = ChampsDe(monnaies, comptable);
  std::vector<int> largeurs;
  for (const ChampJournal champ : champs) {
    const int titre = titres.horizontalAdvance(ModeleEcritures::Titre(champ)) + 2 * margeTexte + 1;
    int largeur = Caracteres(champ) * w + 1;
    if (EstMarque(champ)) largeur = largeurMarque + (champ == ChampJournal::Validee);
    if (EstMontant(champ)) largeur = std::max(largeur, montant);
    if (champ == ChampJournal::Rubrique) largeur = std::max(largeur, largeurTexte(QStringLiteral("88M")));
    if (champs.front() == champ) largeur += margeGauche;
    largeurs.push_back(std::max(largeur, titre));
  }
  const bool memesChamps = champs == m_modele->Champs() && comptable == m_modele->Comptable();
  if (memesChamps && largeurs == m_largeurs) return;
  m_largeurs = std::move(largeurs);
  if (!memesChamps) m_modele->PoseColonnes(champs, comptable);
  setUniformRowHeights(!comptable);
  scheduleDelayedItemsLayout();
  updateGeometry();
  Etire();
}

/// The label and the account's name share the width that is free as they share what they need.
void CEcrList::Etire() {
  const auto& champs = m_modele->Champs();
  if (m_largeurs.size() != champs.size()) return;
  const auto extensible = [](ChampJournal champ) {
    return champ == ChampJournal::Libelle || champ == ChampJournal::Designation;
  };
  int libre = viewport()->width(), textes = 0;
  for (std::size_t i = 0; i < champs.size(); ++i) {
    libre -= m_largeurs[i];
    if (extensible(champs[i])) textes += m_largeurs[i];
  }
  libre = std::max(libre, 0);
  for (std::size_t i = 0; i < champs.size(); ++i) {
    const int part = extensible(champs[i]) ? libre * m_largeurs[i] / textes : 0;
    if (extensible(champs[i])) {
      libre -= part;
      textes -= m_largeurs[i];
    }
    header()->resizeSection(static_cast<int>(i), m_largeurs[i] + part);
  }
  Q_EMIT ColonnesDeplacees();
}

int CEcrList::LargeurColonnes() const {
  return std::accumulate(m_largeurs.begin(), m_largeurs.end(), 0) + 2 * frameWidth() +
         verticalScrollBar()->sizeHint().width();
}

bool CEcrList::ALaColonne(ChampJournal champ) const {
  const auto& champs = m_modele->Champs();
  return std::find(champs.begin(), champs.end(), champ) != champs.end();
}

QRect CEcrList::PlaceColonne(ChampJournal champ) const {
  const auto& champs = m_modele->Champs();
  const auto colonne = static_cast<int>(std::find(champs.begin(), champs.end(), champ) - champs.begin());
  if (colonne == m_modele->columnCount()) return {};
  return {viewport()->x() + columnViewportPosition(colonne), 0, columnWidth(colonne), height()};
}

std::vector<int> CEcrList::LignesChoisies() const {
  std::vector<int> lignes;
  for (const QItemSelectionRange& plage : selectionModel()->selection())
    for (int ligne = plage.top(); ligne <= plage.bottom(); ++ligne) lignes.push_back(ligne);
  std::sort(lignes.begin(), lignes.end());
  lignes.erase(std::unique(lignes.begin(), lignes.end()), lignes.end());
  return lignes;
}

int CEcrList::PremiereChoisie() const {
  int premiere = -1;
  for (const QItemSelectionRange& plage : selectionModel()->selection())
    if (premiere < 0 || plage.top() < premiere) premiere = plage.top();
  return premiere;
}

int CEcrList::NbChoisies() const {
  int nombre = 0;
  for (const QItemSelectionRange& plage : selectionModel()->selection()) nombre += plage.height();
  return nombre;
}

void CEcrList::SelectionneLigne(int ligne) {
  const QModelIndex index = m_modele->index(ligne, 0);
  if (!index.isValid()) return;
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  scrollTo(index);
}

int CEcrList::Haut() const { return indexAt(QPoint(0, 0)).row(); }

void CEcrList::PoseHaut(int ligne) {
  if (const QModelIndex index = m_modele->index(ligne, 0); index.isValid()) scrollTo(index, PositionAtTop);
}

void CEcrList::Recharge(std::vector<EntreeListe> entrees, const MonnaiesListe& monnaies, bool comptable,
                        const TotauxListe& totaux) {
  const int choisie = PremiereChoisie(), haut = Haut();
  const u32 enHaut = m_modele->Mouvement(haut);
  std::vector<u32> choisies;
  for (const int ligne : LignesChoisies()) choisies.push_back(m_modele->Mouvement(ligne));
  const int aGauche = horizontalScrollBar()->value();
  const bool vue = choisie >= 0 && visualRect(m_modele->index(choisie, 0)).intersects(viewport()->rect());
  PoseColonnes(monnaies, comptable, totaux);
  m_modele->Remplit(std::move(entrees));
  executeDelayedItemsLayout();
  Choisit(choisies, choisie);
  if (choisie >= 0 && haut >= 0) {
    const int nouvelle = PremiereChoisie(), rang = m_modele->LigneDe(enHaut);
    PoseHaut(rang >= 0 ? rang : haut);
    if (vue || nouvelle != choisie) scrollTo(m_modele->index(nouvelle, 0));
  }
  horizontalScrollBar()->setValue(aGauche);
}

/// Selects the rows of these entries; without any the row `sinon`, or the last one.
void CEcrList::Choisit(const std::vector<u32>& mouvements, int sinon) {
  const std::unordered_set<u32> cherches(mouvements.begin(), mouvements.end());
  const int nombre = m_modele->NbLignes();
  QItemSelection selection;
  for (int ligne = 0, debut = -1; ligne <= nombre && !cherches.empty(); ++ligne) {
    const bool choisie = ligne < nombre && cherches.contains(m_modele->Mouvement(ligne));
    if (choisie && debut < 0) debut = ligne;
    if (choisie || debut < 0) continue;
    selection.select(m_modele->index(debut, 0), m_modele->index(ligne - 1, 0));
    debut = -1;
  }
  if (selection.isEmpty()) return SelectionneLigne(sinon >= 0 && sinon < nombre ? sinon : nombre - 1);
  selectionModel()->setCurrentIndex(selection.first().topLeft(), QItemSelectionModel::NoUpdate);
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void CEcrList::Redessine() {
  m_modele->Oublie();
  viewport()->update();
}

void CEcrList::PoseTexteVide(const QString& texte) {
  m_texteVide = texte;
  viewport()->update();
}

QSize CEcrList::sizeHint() const {
  return {LargeurColonnes(), 12 * HauteurTexte() + header()->sizeHint().height() + 2 * frameWidth()};
}

const QFont& CEcrList::PoliceDe(const EntreeJournal& entree) const {
  return entree.validee ? m_contexte.Dessin.PoliceValidees : m_contexte.Dessin.PoliceJournaux;
}

void CEcrList::drawRow(QPainter* peintre, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
  const Preferences& dessin = m_contexte.Dessin;
  const EntreeJournal& entree = m_modele->Entree(index.row());
  const bool choisie = selectionModel()->isSelected(index);
  const bool focus = hasFocus() && isActiveWindow();
  const QPalette::ColorGroup groupe =
      !isEnabled() ? QPalette::Disabled : (focus ? QPalette::Active : QPalette::Inactive);
  const QColor fond = choisie                ? palette().color(groupe, QPalette::Highlight)
                      : index.row() % 2 == 0 ? dessin.CouleurImpaire
                                             : dessin.CouleurPaire;
  const QColor texte = choisie          ? palette().color(groupe, QPalette::HighlightedText)
                       : entree.validee ? dessin.TexteValidees
                                        : dessin.TexteJournaux;
  const QRect rangee(-header()->offset(), option.rect.y(), header()->length(), option.rect.height());

  peintre->save();
  peintre->setClipRect(rangee, Qt::IntersectClip);
  peintre->fillRect(rangee, fond);
  peintre->setFont(PoliceDe(entree));
  const auto& champs = m_modele->Champs();
  for (std::size_t i = 0; i < champs.size(); ++i) {
    const int colonne = static_cast<int>(i);
    QRect cellule(columnViewportPosition(colonne), rangee.y(), columnWidth(colonne), m_hauteurTexte);
    if (cellule.right() < 0 || cellule.left() > viewport()->width()) continue;
    peintre->setPen(texte);
    for (std::size_t r = 0; r < entree.rangees.size(); ++r, cellule.translate(0, m_hauteurTexte))
      if (cellule.bottom() >= 0 && cellule.top() < viewport()->height())
        DessineCellule(*peintre, i == 0 ? cellule.adjusted(margeGauche, 0, 0, 0) : cellule, entree, r,
                       champs[i]);
    peintre->setPen(dessin.Bordure1);
    if (!EstMarque(champs[i]) || champs[i] == ChampJournal::Validee)
      peintre->drawLine(cellule.right(), rangee.top(), cellule.right(), rangee.bottom());
  }
  peintre->setPen(dessin.Bordure1);
  peintre->drawLine(rangee.left(), rangee.bottom(), rangee.right(), rangee.bottom());
  if (focus && currentIndex().row() == index.row()) {
    peintre->setPen(QPen(texte, 1, Qt::DotLine));
    peintre->drawRect(rangee.adjusted(0, 0, -1, -2));
  }
  peintre->restore();
}

void CEcrList::DessineCellule(QPainter& peintre, const QRect& cellule, const EntreeJournal& entree,
                              std::size_t rangee, ChampJournal champ) const {
  if (EstMarque(champ)) {
    if (ModeleEcritures::Marque(entree.rangees[rangee], champ)) DessineCoche(peintre, cellule);
    return;
  }
  const QString texte = ModeleEcritures::Texte(entree, rangee, champ);
  if (texte.isEmpty()) return;
  const Qt::Alignment cote =
      EstMontant(champ) || champ <= ChampJournal::Date ? Qt::AlignRight : Qt::AlignLeft;
  peintre.drawText(cellule.adjusted(margeTexte, 0, -margeTexte - 1, 0),
                   static_cast<int>(cote | Qt::AlignVCenter) | Qt::TextSingleLine,
                   ClipText(texte, cellule.width(), 2 * margeTexte + 1, peintre.fontMetrics()));
}

void CEcrList::paintEvent(QPaintEvent* evenement) {
  QTreeView::paintEvent(evenement);
  if (m_modele->NbLignes() > 0 || m_texteVide.isEmpty()) return;
  QPainter peintre(viewport());
  peintre.setPen(Lisible(palette().color(QPalette::PlaceholderText), m_contexte.Dessin.CouleurFond));
  const int marge = fontMetrics().height();
  peintre.drawText(viewport()->rect().adjusted(marge, marge, -marge, -marge),
                   Qt::AlignCenter | Qt::TextWordWrap, m_texteVide);
}

void CEcrList::keyPressEvent(QKeyEvent* evenement) {
  const bool entree = evenement->key() == Qt::Key_Return || evenement->key() == Qt::Key_Enter;
  const bool vertical = evenement->key() == Qt::Key_Up || evenement->key() == Qt::Key_Down;
  if (entree && m_activation && NbChoisies() > 0) {
    m_activation(true);
  } else if (entree || evenement->matches(QKeySequence::Copy)) {
    evenement->ignore();
  } else if (vertical && NbChoisies() == 0 && m_modele->NbLignes() > 0) {
    SelectionneLigne(std::max(currentIndex().row(), 0));
  } else {
    QTreeView::keyPressEvent(evenement);
  }
}

void CEcrList::mouseDoubleClickEvent(QMouseEvent* evenement) {
  if (evenement->button() != Qt::LeftButton) return QTreeView::mouseDoubleClickEvent(evenement);
  if (m_activation) m_activation(indexAt(evenement->pos()).isValid());
}

void CEcrList::DescendDUneLigne(int sens) {
  QScrollBar& barre = *verticalScrollBar();
  const QModelIndex haut = indexAt(QPoint(0, 0));
  if (!haut.isValid()) return;
  const QRect place = visualRect(haut);
  // A row higher than the window goes by in part.
  const int partie = std::max(viewport()->height() - m_hauteurTexte, m_hauteurTexte);
  if (sens > 0) {
    barre.setValue(barre.value() + std::min(place.bottom() + 1, partie));
  } else if (place.top() < 0) {
    barre.setValue(barre.value() - std::min(-place.top(), partie));
  } else if (const QModelIndex avant = haut.siblingAtRow(haut.row() - 1); avant.isValid()) {
    barre.setValue(barre.value() - std::min(visualRect(avant).height(), partie));
  }
}

void CEcrList::wheelEvent(QWheelEvent* evenement) {
  const QPoint tour = evenement->angleDelta();
  if (std::abs(tour.x()) > std::abs(tour.y())) return QTreeView::wheelEvent(evenement);
  m_crans += tour.y();
  for (; m_crans >= 120; m_crans -= 120) DescendDUneLigne(-1);
  for (; m_crans <= -120; m_crans += 120) DescendDUneLigne(1);
  evenement->accept();
}

void CEcrList::resizeEvent(QResizeEvent* evenement) {
  QTreeView::resizeEvent(evenement);
  Etire();
}

bool CEcrList::viewportEvent(QEvent* evenement) {
  if (evenement->type() != QEvent::ToolTip) return QTreeView::viewportEvent(evenement);
  const auto& demande = static_cast<const QHelpEvent&>(*evenement);
  const QModelIndex index = indexAt(demande.pos());
  QString bulle;
  if (index.isValid()) {
    const ChampJournal champ = m_modele->Champs()[static_cast<std::size_t>(index.column())];
    const EntreeJournal& entree = m_modele->Entree(index.row());
    const auto rangee =
        static_cast<std::size_t>((demande.pos().y() - visualRect(index).top()) / m_hauteurTexte);
    const QString texte = ModeleEcritures::Texte(entree, rangee, champ).trimmed();
    const bool coupe = QFontMetrics(PoliceDe(entree)).horizontalAdvance(texte) >
                       columnWidth(index.column()) - 2 * margeTexte - 1;
    if (EstMarque(champ) && !texte.isEmpty())
      bulle = ModeleEcritures::MotMarque(champ);
    else if (coupe)
      bulle = QStringLiteral("<span>%1</span>").arg(texte.toHtmlEscaped());
  }
  if (bulle.isEmpty())
    QToolTip::hideText();
  else
    QToolTip::showText(demande.globalPos(), bulle, viewport(), visualRect(index));
  return true;
}

void CEcrList::scrollContentsBy(int dx, int dy) {
  QTreeView::scrollContentsBy(dx, dy);
  if (dx != 0) Q_EMIT ColonnesDeplacees();
}

void CEcrList::selectionChanged(const QItemSelection& choisies, const QItemSelection& quittees) {
  QTreeView::selectionChanged(choisies, quittees);
  const auto lignes = [](const QItemSelection& selection) {
    std::vector<int> toutes;
    for (const QItemSelectionRange& plage : selection)
      for (int ligne = plage.top(); ligne <= plage.bottom(); ++ligne) toutes.push_back(ligne);
    return toutes;
  };
  Q_EMIT SelectionChangee(lignes(choisies), lignes(quittees));
}

void CEcrList::updateGeometries() {
  QTreeView::updateGeometries();
  verticalScrollBar()->setSingleStep(m_hauteurTexte);
}

}  // namespace fenlor
