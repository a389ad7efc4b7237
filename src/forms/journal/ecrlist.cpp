#include "forms/journal/ecrlist.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <numeric>

#include "core/valeurs.h"
#include "forms/journal/textes.h"
#include "ui/preferences.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr int margeGauche = 4;  ///< before the first column
constexpr int margeTexte = 3;
constexpr int largeurMarque = 14;
constexpr int interligne = 3;

/// A line of text of a row.
struct Rangee {
  const EntreeJournal* entree = nullptr;
  std::size_t rang = 0;
  const EntreeListe* liste = nullptr;  ///< with the balance after the entry; null: there is none
  const RangeeJournal& operator*() const { return entree->rangees[rang]; }
};

using TexteRangee = std::function<std::string(const Rangee&)>;

TexteRangee Champ(std::string RangeeJournal::*champ) {
  return [champ](const Rangee& r) { return (*r).*champ; };
}
TexteRangee Montant(f64 RangeeJournal::*montant) {
  return [montant](const Rangee& r) { return FormatMontant((*r).*montant, 2); };
}
TexteRangee Montant(f64 RangeeJournal::*montant, bool credit) {
  return [montant, credit](const Rangee& r) {
    return (*r).credit == credit ? FormatMontant((*r).*montant, 2) : std::string();
  };
}
/// Behind the last line of the entry.
TexteRangee Solde(f64 EntreeListe::*solde) {
  return [solde](const Rangee& r) {
    const bool derniere = r.liste && r.rang + 1 == r.entree->rangees.size();
    return derniere ? FormatSoldeSaisie(r.liste->*solde, 2, false) : std::string();
  };
}
ColonneListe<Rangee> Marque(const char* lettre, std::string mot, bool RangeeJournal::*marque) {
  const auto texte = [lettre, marque](const Rangee& r) { return std::string((*r).*marque ? lettre : ""); };
  return {lettre, 0, texte, Cote::Centre, {}, std::move(mot)};
}

/// A row for each `ChampJournal`; widths are in characters.
const TableColonnes<Rangee>& Table() {
  using R = RangeeJournal;
  // The number and the day of an entry stand on its first line.
  const auto premiere = [](const Rangee& r, const TexteFixe& format, u32 nombre) {
    return r.rang > 0 ? std::string() : TexteFormat(format, {std::to_string(nombre)});
  };
  const auto ligne = [=](const Rangee& r) { return premiere(r, FormatLigneJournal, r.entree->ligne); };
  const auto jour = [=](const Rangee& r) { return premiere(r, FormatJourJournal, Jour(r.entree->date)); };
  static const TableColonnes<Rangee> table = {
      {"Ligne", 6, ligne, Cote::Droite},
      {"Date", 4, jour, Cote::Droite},
      {"Libellé"_w, 26, Champ(&R::libelle)},
      {"Trésorerie"_w, 4, Champ(&R::tresorerie)},
      {"Montant F", 11, Montant(&R::franc), Cote::Droite},
      {"Montant €"_w, 11, Montant(&R::euro), Cote::Droite},
      {"Débit F"_w, 11, Montant(&R::franc, false), Cote::Droite},
      {"Crédit F"_w, 11, Montant(&R::franc, true), Cote::Droite},
      {"Débit €"_w, 11, Montant(&R::euro, false), Cote::Droite},
      {"Crédit €"_w, 11, Montant(&R::euro, true), Cote::Droite},
      {"Solde F", 12, Solde(&EntreeListe::soldeFranc), Cote::Droite},
      {"Solde €"_w, 12, Solde(&EntreeListe::soldeEuro), Cote::Droite},
      Marque("P", "Pointée"_w, &R::pointee),
      Marque("B", "Remise en banque", &R::remise),
      Marque("R", "Rapprochée"_w, &R::rapprochee),
      Marque("V", "Validée"_w, &R::validee),
      {"Rub", 4, Champ(&R::rubrique)},
      {"Compte", 9, Champ(&R::compte)},
      {"Désignation"_w, 24, Champ(&R::designation)},
  };
  return table;
}
const ColonneListe<Rangee>& ColonneDe(ChampJournal champ) { return Table()[static_cast<std::size_t>(champ)]; }

bool EstMontant(ChampJournal champ) {
  return champ >= ChampJournal::MontantFranc && champ <= ChampJournal::SoldeEuro;
}
bool EstExtensible(ChampJournal champ) {
  return champ == ChampJournal::Libelle || champ == ChampJournal::Designation;
}

std::vector<ChampJournal> ChampsDe(const MonnaiesListe& monnaies, bool comptable, bool soldes) {
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
  if (soldes && monnaies.franc) champs.push_back(C::SoldeFranc);
  if (soldes && monnaies.euro) champs.push_back(C::SoldeEuro);
  champs.insert(champs.end(),
                {C::Pointee, C::Remise, C::Rapprochee, C::Validee, C::Rubrique, C::Compte, C::Designation});
  return champs;
}

}  // namespace

QString TitreChamp(ChampJournal champ) { return Q(ColonneDe(champ).titre); }

CEcrList::CEcrList(ContexteUi& contexte, QWidget* parent) : TableListe(contexte, parent) {
  m_margePremiere = m_margeAutres = margeTexte;
  m_debut = margeGauche;
  m_trait = 1;
  m_choisitDerniere = true;
  setSelectionMode(ExtendedSelection);
  setVerticalScrollMode(ScrollPerPixel);
  header()->setSectionsClickable(false);
  header()->setMinimumSectionSize(1);
  m_retientTirees = true;
  PermetColonnes();
  connect(this, &TableListe::ColonnesRangees, this, &CEcrList::Ajuste);
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

void CEcrList::PoseChamps(const MonnaiesListe& monnaies, bool comptable, const TotauxListe& totaux,
                          bool soldes) {
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
  const std::vector<ChampJournal> champs = ChampsDe(monnaies, comptable, soldes);
  std::vector<int> largeurs;
  for (const ChampJournal champ : champs) {
    const int titre = titres.horizontalAdvance(TitreChamp(champ)) + 2 * margeTexte + 1;
    int largeur = ColonneDe(champ).largeur * w + 1;
    if (!ColonneDe(champ).marque.empty()) largeur = largeurMarque + (champ == ChampJournal::Validee);
    if (EstMontant(champ)) largeur = std::max(largeur, montant);
    if (champ == ChampJournal::Rubrique) largeur = std::max(largeur, largeurTexte(QStringLiteral("88M")));
    if (champs.front() == champ) largeur += margeGauche;
    largeurs.push_back(std::max(largeur, titre));
  }
  const bool memes = champs == m_champs && comptable == m_comptable;
  if (memes && largeurs == m_largeurs) return;
  m_largeurs = std::move(largeurs);
  m_champs = champs;
  m_comptable = comptable;
  if (!memes) {
    TableColonnes<Rangee> colonnes;
    for (const ChampJournal champ : champs) colonnes.push_back(ColonneDe(champ));
    const auto date = std::find(champs.begin(), champs.end(), ChampJournal::Date);
    const auto colonneDate = static_cast<int>(date - champs.begin());
    const auto lit = [this, colonnes, colonneDate](ModeleListe::Donnee donnee) {
      VueLigne vue;
      EntreeJournal entree;
      if (!m_lecture || !m_lecture(static_cast<u32>(donnee), entree)) return vue;
      vue.autre = entree.validee;
      const auto connu = m_soldes.find(static_cast<u32>(donnee));
      const EntreeListe* solde = connu == m_soldes.end() ? nullptr : &connu->second;
      vue.copies[colonneDate] = Q(StrDate(entree.date));
      for (std::size_t rang = 0; rang < entree.rangees.size(); ++rang) {
        vue.rangees.emplace_back();
        for (const std::string& texte : Cellules(colonnes, {&entree, rang, solde}))
          vue.rangees[rang] += Q(texte);
      }
      return vue;
    };
    Modele().PoseColonnes(ModeleListe::Titres(colonnes), lit);
    // In one currency there is one balance.
    if (soldes && monnaies.franc != monnaies.euro)
      for (std::size_t i = 0; i < champs.size(); ++i)
        if (champs[i] == ChampJournal::SoldeFranc || champs[i] == ChampJournal::SoldeEuro)
          Modele().ChangeTitre(static_cast<int>(i), TexteQ(TitreSolde));
    ReprendRangement();
  }
  setUniformRowHeights(!comptable);
  scheduleDelayedItemsLayout();
  updateGeometry();
  Ajuste();
}

void CEcrList::Ajuste() {
  if (m_largeurs.size() != m_champs.size()) return;
  int libre = viewport()->width(), textes = 0;
  std::vector<int> largeurs = m_largeurs;
  const auto extensible = [this](std::size_t i) {
    const auto colonne = static_cast<int>(i);
    return EstExtensible(m_champs[i]) && !EstTiree(colonne) && !isColumnHidden(colonne);
  };
  for (std::size_t i = 0; i < m_champs.size(); ++i) {
    const auto colonne = static_cast<int>(i);
    if (EstTiree(colonne)) largeurs[i] = std::max(columnWidth(colonne), 1);
    if (!isColumnHidden(colonne)) libre -= largeurs[i];
    if (extensible(i)) textes += m_largeurs[i];
  }
  libre = std::max(libre, 0);
  for (std::size_t i = 0; i < m_champs.size(); ++i) {
    if (!extensible(i)) continue;
    const int part = libre * m_largeurs[i] / textes;
    libre -= part;
    textes -= m_largeurs[i];
    largeurs[i] += part;
  }
  PlaceColonnes(largeurs);
  Q_EMIT ColonnesDeplacees();
}

int CEcrList::LargeurColonnes() const {
  return std::accumulate(m_largeurs.begin(), m_largeurs.end(), 0) + 2 * frameWidth() +
         verticalScrollBar()->sizeHint().width();
}

bool CEcrList::ALaColonne(ChampJournal champ) const {
  const auto place = std::find(m_champs.begin(), m_champs.end(), champ);
  return place != m_champs.end() && !isColumnHidden(static_cast<int>(place - m_champs.begin()));
}

QRect CEcrList::PlaceColonne(ChampJournal champ) const {
  const auto colonne =
      static_cast<int>(std::find(m_champs.begin(), m_champs.end(), champ) - m_champs.begin());
  if (colonne == Modele().columnCount()) return {};
  return {viewport()->x() + columnViewportPosition(colonne), 0, columnWidth(colonne), height()};
}

void CEcrList::Recharge(const std::vector<EntreeListe>& entrees, const MonnaiesListe& monnaies,
                        bool comptable, const TotauxListe& totaux, bool soldes) {
  TableListe::Recharge([&] {
    m_soldes.clear();
    for (const EntreeListe& entree : entrees)
      if (soldes) m_soldes.emplace(entree.mouvement, entree);
    PoseChamps(monnaies, comptable, totaux, soldes);
    std::vector<LigneListe> lignes;
    for (const EntreeListe& entree : entrees)
      lignes.push_back({entree.mouvement, comptable ? entree.lignes : 1});
    Modele().Remplit(std::move(lignes));
  });
}

QSize CEcrList::sizeHint() const { return {LargeurColonnes(), TailleLignes(12, 0).height()}; }

TableListe::Allure CEcrList::AllureDe(int ligne) const {
  const Preferences& dessin = m_contexte.Dessin;
  const QColor& fond = ligne % 2 == 0 ? dessin.CouleurImpaire : dessin.CouleurPaire;
  if (Modele().Vue(ligne).autre)
    return {dessin.TexteValidees, fond, dessin.CouleurBordure, dessin.PoliceValidees};
  return {dessin.TexteJournaux, fond, dessin.CouleurBordure, dessin.PoliceJournaux};
}

void CEcrList::mouseDoubleClickEvent(QMouseEvent* evenement) {
  if (evenement->button() == Qt::LeftButton && !indexAt(evenement->pos()).isValid() && m_ailleurs)
    return m_ailleurs();
  TableListe::mouseDoubleClickEvent(evenement);
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
  if (std::abs(tour.x()) > std::abs(tour.y())) return TableListe::wheelEvent(evenement);
  m_crans += tour.y();
  for (; m_crans >= 120; m_crans -= 120) DescendDUneLigne(-1);
  for (; m_crans <= -120; m_crans += 120) DescendDUneLigne(1);
  evenement->accept();
}

void CEcrList::resizeEvent(QResizeEvent* evenement) {
  TableListe::resizeEvent(evenement);
  Ajuste();
}

void CEcrList::scrollContentsBy(int dx, int dy) {
  TableListe::scrollContentsBy(dx, dy);
  if (dx != 0) Q_EMIT ColonnesDeplacees();
}

void CEcrList::updateGeometries() {
  TableListe::updateGeometries();
  verticalScrollBar()->setSingleStep(m_hauteurTexte);
}

}  // namespace fenlor
