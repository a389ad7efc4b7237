#include "ui/tableliste.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyleOptionHeader>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>
#include <numeric>
#include <unordered_set>

#include "ui/curseurattente.h"
#include "ui/lignefiltre.h"
#include "ui/preferences.h"
#include "ui/textecoupe.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

namespace {

constexpr int hauteurMinimale = 16, interligne = 2;

/// Gives the height of a row from its number of lines, without looking at its texts.
class DelegueHauteur : public QStyledItemDelegate {
 public:
  DelegueHauteur(const ModeleListe& modele, const int& hauteur, QObject* parent)
      : QStyledItemDelegate(parent), m_modele(modele), m_hauteur(hauteur) {}
  QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override {
    return {0, m_modele.NbTextes(index.row()) * m_hauteur};
  }

 private:
  const ModeleListe& m_modele;
  const int& m_hauteur;
};

/// Puts the titles above the texts of their column.
class StyleTitres : public QProxyStyle {
 public:
  explicit StyleTitres(const TableListe& liste)
      : QProxyStyle(QApplication::style()->name()), m_liste(liste) {}
  int pixelMetric(PixelMetric mesure, const QStyleOption* option, const QWidget* widget) const override {
    return mesure == PM_HeaderMargin ? m_liste.Marge(0) : QProxyStyle::pixelMetric(mesure, option, widget);
  }
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* peintre,
                   const QWidget* widget) const override {
    const auto* titre = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (element != CE_HeaderLabel || !titre)
      return QProxyStyle::drawControl(element, option, peintre, widget);
    QStyleOptionHeader decale = *titre;
    const int marge = m_liste.Marge(titre->section) - pixelMetric(PM_HeaderMargin, option, widget);
    decale.rect.adjust(marge, 0, -marge, 0);
    QProxyStyle::drawControl(element, &decale, peintre, widget);
  }

 private:
  const TableListe& m_liste;
};

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

TableListe::TableListe(ContexteUi& contexte, QWidget* parent)
    : QTreeView(parent), m_contexte(contexte), m_modele(new ModeleListe(this)) {
  setModel(m_modele);
  setItemDelegate(new DelegueHauteur(*m_modele, m_hauteurTexte, this));
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
  auto* style = new StyleTitres(*this);
  style->setParent(header());
  header()->setStyle(style);
  TableListe::ActualisePreferences();

  connect(header(), &QHeaderView::sectionClicked, this, &TableListe::TrieParColonne);
  connect(header(), &QHeaderView::sectionResized, this, [this](int colonne, int, int largeur) {
    if (m_place) return;
    m_largeursPropres = m_largeursChangees = true;
    if (!m_retientTirees || largeur == 0) return;
    m_tirees[colonne] = largeur;
    Note();
  });
  connect(header(), &QHeaderView::sectionMoved, this, [this] {
    if (!m_place) Note();
  });
  connect(m_modele, &QAbstractItemModel::modelReset, this, [this] { Q_EMIT SelectionChangee({}, {}); });
}

void TableListe::resizeEvent(QResizeEvent* evenement) {
  // The chosen row stays in sight where the place gets lower: by the filter's line, by a smaller window.
  const QModelIndex choisie = m_modele->index(LigneChoisie(), 0);
  const bool vue = choisie.isValid() && visualRect(choisie).top() < m_hauteurVue;
  QTreeView::resizeEvent(evenement);
  Ajuste();
  if (vue && visualRect(choisie).bottom() >= viewport()->height()) scrollTo(choisie);
  m_hauteurVue = viewport()->height();
}

void TableListe::Relit(int choisie) {
  std::vector<LigneListe> lignes(m_nombre());
  for (std::size_t i = 0; i < lignes.size(); ++i) lignes[i].donnee = i;
  m_modele->Remplit(std::move(lignes));
  if (choisie < 0) return;
  int ligne = 0;
  while (ligne + 1 < m_modele->NbLignes() && RangDe(ligne) < choisie) ++ligne;
  SelectionneLigne(ligne);
}

int TableListe::RangDe(int ligne) const {
  if (ligne < 0 || ligne >= m_modele->NbLignes()) return -1;
  return static_cast<int>(m_nombre ? m_modele->DonneeDe(ligne) : m_modele->PlaceDe(ligne));
}

std::vector<int> TableListe::RangsChoisis() const {
  std::vector<int> rangs;
  for (const int ligne : LignesChoisies()) rangs.push_back(RangDe(ligne));
  return rangs;
}

void TableListe::SelectionneRang(int rang) {
  for (int ligne = 0; rang >= 0 && ligne < m_modele->NbLignes(); ++ligne)
    if (RangDe(ligne) == rang) return SelectionneLigne(ligne);
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

std::vector<int> TableListe::LignesChoisies() const {
  std::vector<int> lignes;
  for (const QItemSelectionRange& plage : selectionModel()->selection())
    for (int ligne = plage.top(); ligne <= plage.bottom(); ++ligne) lignes.push_back(ligne);
  std::sort(lignes.begin(), lignes.end());
  lignes.erase(std::unique(lignes.begin(), lignes.end()), lignes.end());
  return lignes;
}

int TableListe::LigneChoisie() const {
  int premiere = -1;
  for (const QItemSelectionRange& plage : selectionModel()->selection())
    if (premiere < 0 || plage.top() < premiere) premiere = plage.top();
  return premiere;
}

int TableListe::NbChoisies() const {
  int nombre = 0;
  for (const QItemSelectionRange& plage : selectionModel()->selection()) nombre += plage.height();
  return nombre;
}

void TableListe::PoseHaut(int ligne) {
  if (const QModelIndex index = m_modele->index(ligne, 0); index.isValid()) scrollTo(index, PositionAtTop);
}

void TableListe::CopieLignes(const std::vector<int>& lignes) const {
  if (lignes.empty()) return;
  QStringList titres, textes;
  for (const ModeleListe::Titre& titre : m_modele->Titres()) titres += titre.texte;
  textes += titres.join(QLatin1Char('\t'));
  for (const int ligne : lignes) {
    const VueLigne& vue = m_modele->Vue(ligne);
    for (std::size_t rang = 0; rang < vue.rangees.size(); ++rang) {
      QStringList cellules = vue.rangees[rang];
      for (QString& cellule : cellules) cellule = cellule.trimmed();
      if (rang == 0)
        for (const auto& [colonne, texte] : vue.copies) cellules[colonne] = texte;
      textes += cellules.join(QLatin1Char('\t'));
    }
  }
  QApplication::clipboard()->setText(textes.join(QLatin1Char('\n')));
}

void TableListe::Copie() const { CopieLignes(LignesChoisies()); }

void TableListe::CopieTout() const {
  std::vector<int> lignes(static_cast<std::size_t>(m_modele->NbLignes()));
  std::iota(lignes.begin(), lignes.end(), 0);
  CopieLignes(lignes);
}

void TableListe::OuvreFiltre() {
  if (!m_filtre) m_filtre = LigneFiltre::Au(*this);
  if (m_filtre) m_filtre->Ouvre();
}

void TableListe::PoseFiltre(const QString& mots) {
  Recharge([&] { m_modele->PoseFiltre(mots); });
  if (LigneChoisie() < 0) SelectionneLigne(0);
}

void TableListe::OteFiltre() {
  if (m_filtre) m_filtre->Ferme();
  if (m_modele->EstFiltre()) PoseFiltre({});
}

void TableListe::Recharge(const std::function<void()>& remplit) {
  const int choisie = LigneChoisie(), haut = Haut();
  const Donnee enHaut = m_modele->DonneeDe(haut);
  std::vector<Donnee> choisies;
  for (const int ligne : LignesChoisies()) choisies.push_back(m_modele->DonneeDe(ligne));
  const bool vue = choisie >= 0 && visualRect(m_modele->index(choisie, 0)).intersects(viewport()->rect());
  const int aGauche = horizontalScrollBar()->value();
  remplit();
  executeDelayedItemsLayout();
  const int derniere = m_modele->NbLignes() - 1;
  const bool retrouvee = Choisit(choisies), premiereFois = choisie < 0 && m_choisitDerniere;
  if (!retrouvee && (choisie >= 0 || premiereFois))
    SelectionneLigne(choisie >= 0 ? std::min(choisie, derniere) : derniere);
  if (haut >= 0 && !premiereFois) {
    const int rang = m_modele->LigneDe(enHaut);
    PoseHaut(rang >= 0 ? rang : std::min(haut, derniere));
    if (vue || (choisie >= 0 && !retrouvee)) scrollTo(m_modele->index(LigneChoisie(), 0));
  }
  horizontalScrollBar()->setValue(aGauche);
}

/// Selects the rows of these data; false when there are none.
bool TableListe::Choisit(const std::vector<Donnee>& donnees) {
  const std::unordered_set<Donnee> cherchees(donnees.begin(), donnees.end());
  const int nombre = m_modele->NbLignes();
  QItemSelection selection;
  for (int ligne = 0, debut = -1; ligne <= nombre && !cherchees.empty(); ++ligne) {
    const bool choisie = ligne < nombre && cherchees.contains(m_modele->DonneeDe(ligne));
    if (choisie && debut < 0) debut = ligne;
    if (choisie || debut < 0) continue;
    selection.select(m_modele->index(debut, 0), m_modele->index(ligne - 1, 0));
    debut = -1;
  }
  if (selection.isEmpty()) return false;
  selectionModel()->setCurrentIndex(selection.first().topLeft(), QItemSelectionModel::NoUpdate);
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  return true;
}

void TableListe::Redessine() {
  m_modele->Oublie();
  viewport()->update();
}

void TableListe::TrieParColonne(int colonne) {
  if (colonne < 0 || colonne >= m_modele->columnCount()) return;
  m_colonneTriee = colonne;
  if (!m_triable) return;
  const CurseurAttente attente;
  // Under a filter the rows are filled in anew.
  m_modele->EstFiltre() ? Recharge([&] { m_modele->Trie(colonne); }) : m_modele->Trie(colonne);
  if (LigneChoisie() >= 0) scrollTo(m_modele->index(LigneChoisie(), 0));
}

void TableListe::PoseTexteVide(const QString& texte) {
  m_texteVide = texte;
  viewport()->update();
}

void TableListe::ActualisePreferences() {
  setFont(m_contexte.Dessin.PoliceListes);
  m_hauteurTexte = std::max(fontMetrics().height(), hauteurMinimale) + interligne;
  scheduleDelayedItemsLayout();
  Ajuste();
  viewport()->update();
}

QSize TableListe::TailleLignes(int lignes, int caracteres) const {
  const int cadre = 2 * frameWidth();
  return {caracteres * fontMetrics().averageCharWidth() + cadre,
          lignes * m_hauteurTexte + header()->sizeHint().height() + cadre};
}

QSize TableListe::sizeHint() const { return TailleLignes(10, 60); }

QSize TableListe::minimumSizeHint() const { return TailleLignes(3, 20); }

int TableListe::Marge(int colonne) const { return colonne == 0 ? m_margePremiere : m_margeAutres; }

QRect TableListe::PlaceTexte(const QRect& cellule, int colonne) const {
  return cellule.adjusted(Marge(colonne) + (colonne == 0 ? m_debut : 0), 0, -Marge(colonne) - m_trait, 0);
}

TableListe::Allure TableListe::AllureDe(int /*ligne*/) const {
  const QColor& prefere = m_contexte.Dessin.TexteListes;
  return {isEnabled() && prefere.isValid() ? prefere : palette().text().color(), {}, {}, font()};
}

void TableListe::drawRow(QPainter* peintre, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  const bool choisie = selectionModel()->isSelected(index);
  const bool focus = hasFocus() && isActiveWindow();
  const QPalette::ColorGroup groupe =
      !isEnabled() ? QPalette::Disabled : (focus ? QPalette::Active : QPalette::Inactive);
  Allure allure = AllureDe(index.row());
  if (choisie) {
    allure.fond = palette().color(groupe, QPalette::Highlight);
    allure.texte = palette().color(groupe, QPalette::HighlightedText);
  }
  const QRect rangee(-header()->offset(), option.rect.y(), header()->length(), option.rect.height());
  peintre->save();
  peintre->setClipRect(rangee, Qt::IntersectClip);
  if (allure.fond.isValid()) peintre->fillRect(rangee, allure.fond);
  peintre->setFont(allure.police);
  const std::vector<QStringList>& rangees = m_modele->Vue(index.row()).rangees;
  for (int colonne = 0; colonne < m_modele->columnCount(); ++colonne) {
    if (isColumnHidden(colonne)) continue;
    QRect cellule(columnViewportPosition(colonne), rangee.y(), columnWidth(colonne), m_hauteurTexte);
    if (cellule.right() < 0 || cellule.left() > viewport()->width()) continue;
    peintre->setPen(allure.texte);
    for (auto texte = rangees.begin(); texte != rangees.end(); ++texte, cellule.translate(0, m_hauteurTexte))
      if (cellule.bottom() >= 0 && cellule.top() < viewport()->height())
        DessineCellule(*peintre, cellule, colonne, texte->value(colonne));
    const int voisine = header()->logicalIndex(header()->visualIndex(colonne) + 1);
    if (!allure.traits.isValid() || (EstMarque(colonne) && EstMarque(voisine))) continue;
    // Whole pixels, on a screen of twice as many too.
    peintre->fillRect(QRect(cellule.right(), rangee.top(), 1, rangee.height()), allure.traits);
  }
  if (allure.traits.isValid())
    peintre->fillRect(QRect(rangee.left(), rangee.bottom(), rangee.width(), 1), allure.traits);
  if (focus && currentIndex().row() == index.row()) {
    peintre->setPen(QPen(allure.texte, 1, Qt::DotLine));
    peintre->drawRect(rangee.adjusted(0, 0, -1, -1 - m_trait));
  }
  peintre->restore();
}

bool TableListe::EstMarque(int colonne) const {
  const auto& titres = m_modele->Titres();
  return static_cast<std::size_t>(colonne) < titres.size() &&
         !titres[static_cast<std::size_t>(colonne)].marque.isEmpty();
}

void TableListe::DessineCellule(QPainter& peintre, const QRect& cellule, int colonne,
                                const QString& texte) const {
  if (texte.isEmpty()) return;
  if (EstMarque(colonne)) return DessineCoche(peintre, cellule);
  const QRect place = PlaceTexte(cellule, colonne);
  const Qt::Alignment cote = m_modele->Titres()[static_cast<std::size_t>(colonne)].cote;
  peintre.save();
  peintre.setClipRect(cellule, Qt::IntersectClip);
  peintre.drawText(place, static_cast<int>(cote | Qt::AlignVCenter) | Qt::TextSingleLine | Qt::TextDontClip,
                   ClipText(texte, place.width(), 0, peintre.fontMetrics()));
  peintre.restore();
}

int TableListe::sizeHintForColumn(int colonne) const {
  int largeur = 0;
  for (QModelIndex index = indexAt(QPoint(0, 0));
       index.isValid() && visualRect(index).top() < viewport()->height(); index = indexBelow(index))
    largeur = std::max(largeur, fontMetrics().horizontalAdvance(m_modele->Champ(index.row(), colonne)));
  return largeur + 2 * Marge(colonne);
}

bool TableListe::viewportEvent(QEvent* evenement) {
  if (evenement->type() != QEvent::ToolTip) return QTreeView::viewportEvent(evenement);
  const auto& demande = static_cast<const QHelpEvent&>(*evenement);
  const QModelIndex index = indexAt(demande.pos());
  QString bulle;
  if (index.isValid()) {
    const QRect cellule = visualRect(index);
    const auto& rangees = m_modele->Vue(index.row()).rangees;
    const auto rang = static_cast<std::size_t>((demande.pos().y() - cellule.top()) / m_hauteurTexte);
    const QString texte = rang < rangees.size() ? rangees[rang].value(index.column()).trimmed() : QString();
    const int large = QFontMetrics(AllureDe(index.row()).police).horizontalAdvance(texte);
    if (EstMarque(index.column()))
      bulle = texte.isEmpty() ? texte : m_modele->Titres()[static_cast<std::size_t>(index.column())].marque;
    else if (large > PlaceTexte(cellule, index.column()).width())
      bulle = QStringLiteral("<span>%1</span>").arg(texte.toHtmlEscaped());
    if (m_bulle) bulle += (bulle.isEmpty() ? QString() : QStringLiteral("<br>")) + m_bulle(index.row());
  }
  if (bulle.isEmpty())
    QToolTip::hideText();
  else
    QToolTip::showText(demande.globalPos(), bulle, viewport(), visualRect(index));
  return true;
}

void TableListe::selectionChanged(const QItemSelection& choisies, const QItemSelection& quittees) {
  QTreeView::selectionChanged(choisies, quittees);
  const auto lignes = [](const QItemSelection& selection) {
    std::vector<int> toutes;
    for (const QItemSelectionRange& plage : selection)
      for (int ligne = plage.top(); ligne <= plage.bottom(); ++ligne) toutes.push_back(ligne);
    return toutes;
  };
  Q_EMIT SelectionChangee(lignes(choisies), lignes(quittees));
}

void TableListe::keyboardSearch(const QString& texte) {
  if (currentIndex().column() > 0)
    selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(0), QItemSelectionModel::NoUpdate);
  QTreeView::keyboardSearch(texte);
}

void TableListe::keyPressEvent(QKeyEvent* evenement) {
  const bool entree = evenement->key() == Qt::Key_Return || evenement->key() == Qt::Key_Enter;
  const bool vertical = evenement->key() == Qt::Key_Up || evenement->key() == Qt::Key_Down;
  constexpr auto majuscules = Qt::ControlModifier | Qt::ShiftModifier;
  const bool avecMajuscules = (evenement->modifiers() & ~Qt::KeypadModifier) == majuscules;
  const bool filtre =
      evenement->text() == QLatin1String("/") || (avecMajuscules && evenement->key() == Qt::Key_F);
  if (evenement->matches(QKeySequence::Copy)) {
    Copie();
  } else if (avecMajuscules && evenement->key() == Qt::Key_C) {
    CopieTout();
  } else if (filtre) {
    OuvreFiltre();
  } else if (evenement->key() == Qt::Key_Escape && m_filtre && m_filtre->isVisible()) {
    OteFiltre();
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

/// The toolkit forgets the row that was pressed while a form was open over the list.
void TableListe::mouseDoubleClickEvent(QMouseEvent* evenement) {
  const QModelIndex index = indexAt(evenement->pos());
  if (evenement->button() != Qt::LeftButton || !m_activation || !index.isValid())
    return QTreeView::mouseDoubleClickEvent(evenement);
  if (!selectionModel()->isSelected(index)) SelectionneLigne(index.row());
  m_activation();
}

void TableListe::paintEvent(QPaintEvent* evenement) {
  QTreeView::paintEvent(evenement);
  const QString vide = m_modele->EstFiltre() ? TexteQ(VideFiltre) : m_texteVide;
  if (m_modele->NbLignes() > 0 || vide.isEmpty()) return;
  QPainter peintre(viewport());
  const QPalette& couleurs = viewport()->palette();
  peintre.setPen(Lisible(couleurs.color(QPalette::PlaceholderText), couleurs.color(QPalette::Base)));
  const int marge = fontMetrics().height();
  peintre.drawText(viewport()->rect().adjusted(marge, marge, -marge, -marge),
                   Qt::AlignCenter | Qt::TextWordWrap, vide);
}

CZNListCtrl::CZNListCtrl(ContexteUi& contexte, QWidget* parent) : TableListe(contexte, parent) {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  header()->setMinimumSectionSize(0);
  header()->setSectionResizeMode(QHeaderView::Fixed);
}

void CZNListCtrl::resizeEvent(QResizeEvent* evenement) {
  TableListe::resizeEvent(evenement);
  Ajuste();
}

/// Pixels are cut off, and the last column takes what remains of the width.
void CZNListCtrl::Ajuste() {
  const int largeur = viewport()->width();
  std::vector<int> largeurs;
  int reste = largeur;
  for (const ModeleListe::Titre& titre : Modele().Titres()) {
    largeurs.push_back(static_cast<int>(titre.largeur * 0.01 * largeur));
    reste -= largeurs.back();
  }
  if (!largeurs.empty()) largeurs.back() = std::max(largeurs.back() + reste, 0);
  PlaceColonnes(largeurs);
}

}  // namespace fenlor
