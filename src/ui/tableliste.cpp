#include "ui/tableliste.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyleOptionHeader>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>
#include <numeric>

#include "core/texte.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr int cotePetiteImage = 16;
constexpr int margePremiere = 2;
constexpr int margeAutres = 6;

int Marge(int colonne) { return colonne == 0 ? margePremiere : margeAutres; }

int HauteurLigne(const QFontMetrics& mesure) { return std::max(mesure.height(), cotePetiteImage) + 2; }

/// Gives the height of a row without looking at its text.
class DelegueHauteur : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    return {0, HauteurLigne(option.fontMetrics)};
  }
};

class CurseurAttente {
 public:
  CurseurAttente() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~CurseurAttente() { QApplication::restoreOverrideCursor(); }
  CurseurAttente(const CurseurAttente&) = delete;
  CurseurAttente& operator=(const CurseurAttente&) = delete;
};

/// Puts the titles above the texts of their column.
class StyleTitres : public QProxyStyle {
 public:
  StyleTitres() : QProxyStyle(QApplication::style()->name()) {}
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* peintre,
                   const QWidget* widget) const override {
    const auto* titre = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (element != CE_HeaderLabel || !titre)
      return QProxyStyle::drawControl(element, option, peintre, widget);
    QStyleOptionHeader decale = *titre;
    const int marge = Marge(titre->section) - pixelMetric(PM_HeaderMargin, option, widget);
    decale.rect.adjust(marge, 0, -marge, 0);
    QProxyStyle::drawControl(element, &decale, peintre, widget);
  }
};

/// Space that the row's picture takes at the left of a cell.
int LargeurImage(const QModelIndex& index) {
  return index.data(Qt::DecorationRole).value<QIcon>().isNull() ? 0 : cotePetiteImage;
}

}  // namespace

TableListe::TableListe(ContexteUi& contexte, QWidget* parent)
    : QTreeView(parent), m_contexte(contexte), m_modele(new ModeleListe(this)) {
  setModel(m_modele);
  setItemDelegate(new DelegueHauteur(this));
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setExpandsOnDoubleClick(false);
  setIndentation(0);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(SingleSelection);
  setSelectionBehavior(SelectRows);
  setEditTriggers(NoEditTriggers);
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollMode(ScrollPerPixel);
  header()->setStretchLastSection(false);
  header()->setSectionsMovable(false);
  header()->setSectionsClickable(true);
  header()->setHighlightSections(false);
  header()->setTextElideMode(Qt::ElideRight);
  auto* style = new StyleTitres;
  style->setParent(header());
  header()->setStyle(style);
  TableListe::ActualisePreferences();

  connect(header(), &QHeaderView::sectionClicked, this, &TableListe::TrieParColonne);
  connect(header(), &QHeaderView::sectionResized, this, [this] {
    if (!m_place) m_largeursPropres = m_largeursChangees = true;
  });
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &TableListe::SelectionChangee);
  connect(m_modele, &QAbstractItemModel::modelReset, this, &TableListe::SelectionChangee);
  connect(this, &QAbstractItemView::doubleClicked, this, [this] {
    if (m_activation) m_activation();
  });
}

void TableListe::SetColonnes(const std::string& texte) {
  const QScopedValueRollback place(m_place, true);
  m_modele->PoseColonnes(LitColonnes(texte));
  m_colonneTriee = -1;
  m_largeursPropres = m_largeursChangees = false;
  Ajuste();
}

void TableListe::SetColonnesId(const TexteFixe& colonnes) { SetColonnes(Texte(colonnes)); }

void TableListe::Ajuste() {
  if (m_largeursPropres) return;
  const QFontMetrics bureau(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
  const double echelle = std::max(1.0, double(fontMetrics().averageCharWidth()) / bureau.averageCharWidth());
  std::vector<int> largeurs;
  const QFontMetrics titres = header()->fontMetrics();
  for (const Colonne& colonne : m_modele->Colonnes()) {
    const int marges = 2 * Marge(static_cast<int>(largeurs.size())) + 1;
    largeurs.push_back(
        std::max(qRound(colonne.largeur * echelle), titres.horizontalAdvance(colonne.titre) + marges));
  }
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
  for (std::size_t i = 0; i < largeurs.size(); ++i) header()->resizeSection(static_cast<int>(i), largeurs[i]);
}

void TableListe::SelectionneLigne(int ligne, bool etat) {
  if (ligne < 0) {
    if (!etat) selectionModel()->clearSelection();
    return;
  }
  const QModelIndex index = m_modele->index(ligne, 0);
  if (!index.isValid()) return;
  if (etat) {
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  } else {
    selectionModel()->select(index, QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
    if (currentIndex().row() == ligne) selectionModel()->clearCurrentIndex();
  }
  scrollTo(index);
}

void TableListe::LignePrecedente() {
  if (const int ligne = LigneChoisie(); ligne > 0) SelectionneLigne(ligne - 1);
}

void TableListe::LigneSuivante() {
  if (const int ligne = LigneChoisie(); ligne + 1 < m_modele->NbLignes()) SelectionneLigne(ligne + 1);
}

int TableListe::LigneChoisie() const {
  const QItemSelection selection = selectionModel()->selection();
  return selection.isEmpty() ? -1 : selection.first().top();
}

ModeleListe::Donnee TableListe::DonneeChoisie() const {
  const int ligne = LigneChoisie();
  return ligne < 0 ? 0 : m_modele->DonneeDe(ligne);
}

std::string TableListe::TexteLigne() const {
  const int ligne = LigneChoisie();
  if (ligne < 0) return {};
  QStringList champs;
  for (int i = 0; i < m_modele->columnCount(); ++i) champs += m_modele->Champ(ligne, i);
  return De1252(champs.join(QLatin1Char('\t')));
}

void TableListe::Copie() {
  if (LigneChoisie() >= 0) QApplication::clipboard()->setText(Q(TexteLigne()));
}

void TableListe::Recharge(const std::function<void()>& remplit) {
  const auto donnee = [this](int ligne) { return ligne < 0 ? 0 : m_modele->DonneeDe(ligne); };
  const int choisie = LigneChoisie();
  const int haut = indexAt(QPoint(0, 0)).row();
  const auto donneeChoisie = donnee(choisie), donneeHaut = donnee(haut);
  const bool choisieVue =
      choisie >= 0 && visualRect(m_modele->index(choisie, 0)).intersects(viewport()->rect());
  const int aGauche = horizontalScrollBar()->value();
  remplit();
  const auto retrouve = [this](int place, ModeleListe::Donnee cherchee) {
    const int nombre = m_modele->NbLignes();
    if (place < 0 || (place < nombre && m_modele->DonneeDe(place) == cherchee))
      return m_modele->index(place, 0);
    const int ligne = m_modele->LigneDe(cherchee);
    return m_modele->index(ligne >= 0 ? ligne : std::min(place, nombre - 1), 0);
  };
  executeDelayedItemsLayout();
  const QModelIndex nouvelle = retrouve(choisie, donneeChoisie);
  if (nouvelle.isValid()) SelectionneLigne(nouvelle.row());
  if (const QModelIndex index = retrouve(haut, donneeHaut); index.isValid()) scrollTo(index, PositionAtTop);
  if (choisieVue) scrollTo(nouvelle);
  horizontalScrollBar()->setValue(aGauche);
}

void TableListe::PoseComparaison(ModeleListe::Comparaison compare) { m_compare = std::move(compare); }

void TableListe::TrieParColonne(int colonne) {
  if (colonne < 0 || colonne >= m_modele->columnCount()) return;
  m_colonneTriee = colonne;
  if (!m_compare) return;
  const CurseurAttente attente;
  m_modele->Trie(colonne, m_compare);
  if (LigneChoisie() >= 0) scrollTo(m_modele->index(LigneChoisie(), 0));
}

void TableListe::PoseTexteVide(const QString& texte) {
  m_texteVide = texte;
  viewport()->update();
}

void TableListe::ActualisePreferences() {
  setFont(m_contexte.Dessin.PoliceListes);
  Ajuste();
  viewport()->update();
}

QSize TableListe::TailleLignes(int lignes, int caracteres) const {
  const int cadre = 2 * frameWidth();
  return {caracteres * fontMetrics().averageCharWidth() + cadre,
          lignes * HauteurLigne(fontMetrics()) + header()->sizeHint().height() + cadre};
}

QSize TableListe::sizeHint() const { return TailleLignes(10, 60); }

QSize TableListe::minimumSizeHint() const { return TailleLignes(3, 20); }

void TableListe::keyboardSearch(const QString& texte) {
  if (currentIndex().column() > 0)
    selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(0), QItemSelectionModel::NoUpdate);
  QTreeView::keyboardSearch(texte);
}

void TableListe::drawRow(QPainter* peintre, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  const bool choisie = selectionModel()->isSelected(index);
  const bool focus = hasFocus() && isActiveWindow();
  const QPalette::ColorGroup groupe =
      !isEnabled() ? QPalette::Disabled : (focus ? QPalette::Active : QPalette::Inactive);
  QColor texte = palette().color(groupe, choisie ? QPalette::HighlightedText : QPalette::Text);
  if (!choisie && isEnabled() && m_contexte.Dessin.TexteListes.isValid())
    texte = m_contexte.Dessin.TexteListes;

  const QRect rangee(-header()->offset(), option.rect.y(), header()->length(), option.rect.height());
  peintre->save();
  if (choisie) peintre->fillRect(rangee, palette().color(groupe, QPalette::Highlight));
  peintre->setFont(font());
  peintre->setPen(texte);
  for (int i = 0; i < m_modele->columnCount(); ++i) {
    const QRect cellule(columnViewportPosition(i), rangee.y(), columnWidth(i), rangee.height());
    if (cellule.intersects(viewport()->rect())) DessineCellule(*peintre, cellule, index.siblingAtColumn(i));
  }
  if (focus && currentIndex().row() == index.row()) {
    peintre->setPen(QPen(texte, 1, Qt::DotLine));
    peintre->drawRect(rangee.adjusted(0, 0, -1, -1));
  }
  peintre->restore();
}

void TableListe::DessineCellule(QPainter& peintre, QRect cellule, const QModelIndex& index) const {
  peintre.save();
  peintre.setClipRect(cellule, Qt::IntersectClip);
  if (index.column() == 0 && LargeurImage(index) > 0) {
    const QRect place(cellule.left(), cellule.center().y() + 1 - cotePetiteImage / 2, cotePetiteImage,
                      cotePetiteImage);
    index.data(Qt::DecorationRole)
        .value<QIcon>()
        .paint(&peintre, place, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    cellule.setLeft(cellule.left() + cotePetiteImage);
  }
  const int marge = Marge(index.column());
  const auto alignement = index.data(Qt::TextAlignmentRole).toInt();
  peintre.drawText(cellule.adjusted(marge, 0, -marge, 0), alignement | Qt::TextSingleLine | Qt::TextDontClip,
                   ClipText(index.data().toString(), cellule.width(), 2 * marge, fontMetrics()));
  peintre.restore();
}

int TableListe::sizeHintForColumn(int colonne) const {
  int largeur = 0;
  for (QModelIndex index = indexAt(QPoint(0, 0));
       index.isValid() && visualRect(index).top() < viewport()->height(); index = indexBelow(index)) {
    const QModelIndex cellule = index.siblingAtColumn(colonne);
    largeur = std::max(largeur, fontMetrics().horizontalAdvance(cellule.data().toString()) +
                                    LargeurImage(cellule) + 2 * Marge(colonne));
  }
  return largeur;
}

bool TableListe::viewportEvent(QEvent* evenement) {
  if (evenement->type() != QEvent::ToolTip) return QTreeView::viewportEvent(evenement);
  const auto& demande = static_cast<const QHelpEvent&>(*evenement);
  const QModelIndex index = indexAt(demande.pos());
  const QString texte = index.data().toString();
  const int place = columnWidth(index.column()) - LargeurImage(index) - 2 * Marge(index.column());
  if (index.isValid() && fontMetrics().horizontalAdvance(texte) > place)
    QToolTip::showText(demande.globalPos(), QStringLiteral("<span>%1</span>").arg(texte.toHtmlEscaped()),
                       viewport(), visualRect(index));
  else
    QToolTip::hideText();
  return true;
}

void TableListe::keyPressEvent(QKeyEvent* evenement) {
  const bool entree = evenement->key() == Qt::Key_Return || evenement->key() == Qt::Key_Enter;
  const bool vertical = evenement->key() == Qt::Key_Up || evenement->key() == Qt::Key_Down;
  if (evenement->matches(QKeySequence::Copy)) {
    Copie();
  } else if (entree && m_activation && LigneChoisie() >= 0) {
    m_activation();
  } else if (entree) {
    evenement->ignore();
  } else if (vertical && LigneChoisie() < 0 && m_modele->NbLignes() > 0) {
    SelectionneLigne(std::max(currentIndex().row(), 0));
  } else {
    QTreeView::keyPressEvent(evenement);
  }
}

void TableListe::paintEvent(QPaintEvent* evenement) {
  QTreeView::paintEvent(evenement);
  if (m_modele->NbLignes() > 0 || m_texteVide.isEmpty()) return;
  QPainter peintre(viewport());
  peintre.setPen(palette().color(QPalette::PlaceholderText));
  const int marge = fontMetrics().height();
  peintre.drawText(viewport()->rect().adjusted(marge, marge, -marge, -marge),
                   Qt::AlignCenter | Qt::TextWordWrap, m_texteVide);
}

CZNListCtrl::CZNListCtrl(ContexteUi& contexte, QWidget* parent) : TableListe(contexte, parent) {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  header()->setMinimumSectionSize(0);
  header()->setSectionResizeMode(QHeaderView::Fixed);
}

void CZNListCtrl::SetColonnes(const std::string& texte) {
  m_pourcents = LitColonnes(texte);
  Modele().PoseColonnes(m_pourcents);
  Ajuste();
}

void CZNListCtrl::AjusteColonnes(const std::string& texte) {
  m_pourcents = LitColonnes(texte);
  Ajuste();
}

void CZNListCtrl::resizeEvent(QResizeEvent* evenement) {
  TableListe::resizeEvent(evenement);
  Ajuste();
}

void CZNListCtrl::Ajuste() { PlaceColonnes(LargeursPourcent(m_pourcents, viewport()->width())); }

}  // namespace fenlor
