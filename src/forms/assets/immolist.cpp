#include "forms/assets/immolist.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cassert>
#include <numeric>

#include "assets/textes.h"
#include "forms/assets/enteteregistre.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int margeGauche = 4;  ///< before the first column
constexpr int margeTexte = 3, interligne = 3;
constexpr int cran = 120, pixelsParCran = 3;  ///< of the wheel
constexpr int grandPas = 5;                   ///< years
const QString plusLongTaux = u"D 1000,00%"_s;

}  // namespace

CImmoList::CImmoList(ContexteUi& contexte)
    : TableListe(contexte),
      m_entete(new EnteteRegistre(this)),
      m_annees(new QScrollBar(Qt::Horizontal, this)),
      m_anneeCourante(Annee(contexte.App.Magasin.Today())),
      m_monnaies(MonnaiesDuRegistre(contexte.App)) {
  m_margePremiere = m_margeAutres = margeTexte;
  m_debut = margeGauche;
  m_trait = 1;
  m_choisitDerniere = true;
  setHeader(m_entete);
  m_annees->setObjectName(u"annees"_s);
  m_annees->setAccessibleName(u"Années d'amortissement"_s);
  m_annees->setSingleStep(1);
  m_annees->setPageStep(grandPas);
  m_annees->setRange(0, 0);
  m_annees->hide();
  Modele().PoseColonnes(ModeleListe::Titres(ColonnesRegistre()),
                        [this](Donnee donnee) { return Rangees(static_cast<Position>(donnee)); });
  CImmoList::ActualisePreferences();
  MontreAnnees();
  connect(m_annees, &QScrollBar::valueChanged, this, &CImmoList::MontreAnnees);
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] {
    m_entete->viewport()->update();
    PlaceBarre();
  });
}

VueLigne CImmoList::Rangees(Position position) const {
  VueLigne vue;
  Immobilisation immo;
  if (!m_lecture || !m_lecture(position, immo)) return vue;
  const LigneRegistre ligne = LigneDuRegistre(m_contexte.App, immo, AnneeDroite());
  for (const RangeeRegistre& rangee : RangeesRegistre(ligne, m_monnaies)) {
    vue.rangees.emplace_back();
    for (const std::string& texte : Cellules(ColonnesRegistre(), rangee))
      vue.rangees.back() += Q(texte).simplified();
  }
  return vue;
}

u32 CImmoList::AnneeDroite() const { return m_anneeCourante - static_cast<u32>(-m_annees->value()); }

void CImmoList::DefileAnnees(int annees) { m_annees->setValue(m_annees->value() + annees); }

void CImmoList::MontreAnnees() {
  for (int colonne = premiereAnnee; colonne <= derniereAnnee; ++colonne) {
    const u32 annee = AnneeDroite() - static_cast<u32>(derniereAnnee - colonne);
    Modele().ChangeTitre(colonne, TexteQ(FormatAnneeRegistre, {std::to_string(annee)}));
  }
  Redessine();
}

void CImmoList::Remplit(const ListeRegistre& liste) {
  m_anneeCourante = Annee(m_contexte.App.Magasin.Today());
  m_monnaies = MonnaiesDuRegistre(m_contexte.App);
  const u32 textes = m_monnaies.franc && m_monnaies.euro ? 2 : 1;
  std::vector<LigneListe> lignes;
  for (const Position position : liste.positions) lignes.push_back({position, textes});
  Modele().Remplit(std::move(lignes));
  assert(liste.premiereAnnee <= m_anneeCourante);
  const int anciennes = static_cast<int>(m_anneeCourante - liste.premiereAnnee);
  m_annees->setRange(std::min(derniereAnnee - premiereAnnee - anciennes, 0), 0);
  MontreAnnees();
  PlaceBarre();
}

void CImmoList::PlaceBarre() {
  const QRect place = m_entete->PlaceBarre();
  m_annees->setVisible(m_annees->minimum() < 0 && place.width() > place.height());
  m_annees->setGeometry(place.translated(m_entete->viewport()->mapTo(this, QPoint())));
  m_annees->raise();
}

void CImmoList::ActualisePreferences() {
  const Preferences& dessin = m_contexte.Dessin;
  setFont(dessin.PoliceJournaux);
  m_hauteurTexte = fontMetrics().height() + interligne;
  QPalette couleurs = palette();
  couleurs.setColor(QPalette::Base, dessin.CouleurFond);
  couleurs.setColor(QPalette::Text, Lisible(palette().color(QPalette::WindowText), dessin.CouleurFond));
  viewport()->setPalette(couleurs);
  const int caractere = std::max(fontMetrics().averageCharWidth(), fontMetrics().horizontalAdvance(u'0'));
  m_largeurs.clear();
  for (const ModeleListe::Titre& titre : Modele().Titres())
    m_largeurs.push_back(std::max(titre.largeur * caractere + 1, m_entete->LargeurTitre(titre.texte)));
  if (m_largeurs.empty()) return;
  m_largeurs.front() += margeGauche;
  int& taux = m_largeurs[Colonne(ChampRegistre::Taux)];
  taux = std::max(taux, fontMetrics().horizontalAdvance(plusLongTaux) + 2 * margeTexte + 2);
  scheduleDelayedItemsLayout();
  Ajuste();
}

void CImmoList::Ajuste() {
  if (m_largeurs.empty()) return;
  std::vector<int> largeurs = m_largeurs;
  const int libre = viewport()->width() - std::accumulate(largeurs.begin(), largeurs.end(), 0);
  largeurs[Colonne(ChampRegistre::Designation)] += std::max(libre, 0);
  PlaceColonnes(largeurs);
  PlaceBarre();
}

TableListe::Allure CImmoList::AllureDe(int ligne) const {
  const Preferences& dessin = m_contexte.Dessin;
  const QColor& fond = ligne % 2 == 0 ? dessin.CouleurImpaire : dessin.CouleurPaire;
  return {dessin.TexteJournaux, fond, dessin.CouleurBordure, dessin.PoliceJournaux};
}

void CImmoList::Copie() const {
  QStringList textes;
  for (int ligne = 0; ligne < Modele().NbLignes(); ++ligne) {
    Immobilisation immo;
    if (m_lecture && m_lecture(static_cast<Position>(Modele().DonneeDe(ligne)), immo))
      textes += Q(TexteRegistre(m_contexte.App, immo));
  }
  if (!textes.isEmpty()) QApplication::clipboard()->setText(textes.join(u'\n'));
}

/// In the names.
void CImmoList::keyboardSearch(const QString& texte) {
  const int nom = Colonne(ChampRegistre::Designation);
  if (currentIndex().isValid())
    selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(nom), QItemSelectionModel::NoUpdate);
  QTreeView::keyboardSearch(texte);
}

void CImmoList::keyPressEvent(QKeyEvent* evenement) {
  const Qt::KeyboardModifiers avec = evenement->modifiers() & ~Qt::KeypadModifier;
  const int sens = evenement->key() == Qt::Key_Right ? 1 : evenement->key() == Qt::Key_Left ? -1 : 0;
  if (sens == 0 || (avec != Qt::ControlModifier && avec != Qt::AltModifier))
    return TableListe::keyPressEvent(evenement);
  DefileAnnees(avec == Qt::AltModifier ? sens * grandPas : sens);
}

void CImmoList::mouseDoubleClickEvent(QMouseEvent* evenement) {
  if (evenement->button() == Qt::LeftButton && !indexAt(evenement->pos()).isValid() && m_ailleurs)
    return m_ailleurs();
  TableListe::mouseDoubleClickEvent(evenement);
}

void CImmoList::wheelEvent(QWheelEvent* evenement) {
  const QPoint tour = evenement->angleDelta();
  if (std::abs(tour.x()) > std::abs(tour.y())) return TableListe::wheelEvent(evenement);
  evenement->accept();
  if (verticalScrollBar()->maximum() == 0) {
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - tour.y() / pixelsParCran);
    return;
  }
  m_crans += tour.y();
  verticalScrollBar()->setValue(verticalScrollBar()->value() - m_crans / cran);
  m_crans %= cran;
}

void CImmoList::resizeEvent(QResizeEvent* evenement) {
  TableListe::resizeEvent(evenement);
  Ajuste();
}

}  // namespace fenlor
