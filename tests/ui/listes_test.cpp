
#include <QHeaderView>
#include <QImage>
#include <QMenu>
#include <QPaintEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>
#include <numeric>

#include "outils/uidetest.h"
#include "ui/cznlistview.h"
#include "ui/dialogcolonnes.h"

namespace fenlor::test {

namespace {

using Donnee = ModeleListe::Donnee;

struct Fiche {
  std::string code, nom, solde;
};
TableColonnes<Fiche> ColonnesFiche() {
  return {{"Code", 80, [](const Fiche& f) { return f.code; }, Cote::Gauche,
           [](const Fiche& a, const Fiche& b) { return std::stoi(a.code) - std::stoi(b.code); }},
          {"Compte", 120, [](const Fiche& f) { return f.nom; }},
          {"Solde", 90, [](const Fiche& f) { return f.solde; }, Cote::Droite}};
}
/// "5", "Ligne 5", "95": a row from a number, counted down in the third column.
bool Numerotee(Donnee d, Fiche& f) {
  f = {std::to_string(d), "Ligne  " + std::to_string(d), std::to_string(100 - int(d % 100))};
  return d != 0;
}
std::vector<LigneListe> Suite(Donnee nombre) {
  std::vector<LigneListe> lignes;
  for (Donnee d = 1; d <= nombre; ++d) lignes.push_back({d});
  return lignes;
}
std::vector<Donnee> Ordre(const ModeleListe& modele) {
  std::vector<Donnee> ordre;
  for (int i = 0; i < modele.NbLignes(); ++i) ordre.push_back(modele.DonneeDe(i));
  return ordre;
}

class ListesTest : public UiDeTest {
 public:
  ListesTest() : Table(Ui) { Dessin.TexteListes = QColor(); }

  template <class T>
  void Montre(T& table) {
    table.show();
    table.activateWindow();
    table.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
  }
  void Remplit(Donnee nombre) {
    Table.Definit<Fiche>(ColonnesFiche(), Numerotee);
    Table.Modele().Remplit(Suite(nombre));
  }
  void Montre(std::vector<Fiche> fiches) {
    m_fiches = std::move(fiches);
    Table.Suit(ColonnesFiche(), m_fiches);
    Table.Relit(-1);
    Montre(Table);
  }
  static void CliqueTitre(TableListe& table, int colonne) {
    const QHeaderView& titres = *table.header();
    const QPoint point(titres.sectionViewportPosition(colonne) + 10, titres.height() / 2);
    QTest::mouseClick(titres.viewport(), Qt::LeftButton, {}, point);
  }
  TableListe Table;

 private:
  std::vector<Fiche> m_fiches;
};

TEST_F(ListesTest, OnlyPaintedRowsAreFetched) {
  Remplit(100000);
  Table.resize(400, 300);
  Montre(Table);
  Table.grab();
  const unsigned visibles = 300 / 16 + 2;
  const unsigned lues = Table.Modele().NbLectures();
  EXPECT_GT(lues, 5u);
  EXPECT_LE(lues, visibles);
  QTest::keyClick(&Table, Qt::Key_End);
  Table.grab();
  EXPECT_EQ(Table.LigneChoisie(), 99999);
  EXPECT_LE(Table.Modele().NbLectures(), visibles);
  Table.resizeColumnToContents(1);
  EXPECT_LE(Table.Modele().NbLectures(), visibles);
}

TEST_F(ListesTest, ColumnsComeBackAsTheyWereArranged) {
  const auto bascule = [this](const QString& titre) {
    std::unique_ptr<QMenu> menu(Table.MenuColonnes());
    for (QAction* action : menu->actions())
      if (action->text() == titre && action->isEnabled()) return action->trigger();
    ADD_FAILURE() << titre.toStdString();
  };
  EXPECT_EQ(Table.MenuColonnes(), nullptr);
  Table.PermetColonnes();
  Remplit(3);
  Montre(Table);
  EXPECT_EQ(Table.Rangement(), "");
  Table.header()->moveSection(2, 0);  // as the mouse does
  bascule(u"Code"_s);
  EXPECT_EQ(Table.Rangement(), "Solde|-Code|Compte");
  TableListe autre(Ui);
  autre.PoseRangement("Inconnue|Solde|-Code|Compte");
  autre.Definit<Fiche>(ColonnesFiche(), Numerotee);
  EXPECT_EQ(autre.header()->visualIndex(2), 0);
  EXPECT_TRUE(autre.isColumnHidden(0));
  bascule(u"Compte"_s);
  std::unique_ptr<QMenu> menu(Table.MenuColonnes());
  EXPECT_FALSE(menu->actions()[0]->isEnabled()) << "one is left";
  bascule(u"Comme à l'&origine"_s);
  EXPECT_EQ(Table.Rangement(), "");
  EXPECT_EQ(Table.header()->visualIndex(2), 2);
  EXPECT_FALSE(Table.isColumnHidden(0) || Table.isColumnHidden(1));
}

TEST_F(ListesTest, ColumnsAreArrangedByKeyboard) {
  Table.PermetColonnes();
  Remplit(3);
  Montre(Table);
  const auto tape = [this](std::initializer_list<QKeyCombination> touches, bool accepte = true) {
    CDialogColonnes forme(Ui, Table);
    forme.show();
    forme.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&forme));
    VerifieFormulaire(forme);
    for (const QKeyCombination touche : touches)
      QTest::keyClick(forme.focusWidget(), touche.key(), touche.keyboardModifiers());
    EXPECT_EQ(forme.isVisible(), !accepte);
  };
  constexpr auto bas = Qt::ALT | Qt::Key_Down, haut = Qt::ALT | Qt::Key_Up;
  constexpr QKeyCombination coche = Qt::Key_Space, ok = Qt::Key_Return;
  tape({bas, bas, bas, coche, haut, ok});
  EXPECT_EQ(Table.Rangement(), "Compte|-Code|Solde");
  EXPECT_TRUE(Table.header()->visualIndex(1) == 0 && Table.isColumnHidden(0));
  tape({coche, Qt::Key_Down, Qt::Key_Down, coche, ok}, false);
  EXPECT_EQ(Boite.Erreurs.size(), 1u) << "one is left";
  EXPECT_EQ(Table.Rangement(), "Compte|-Code|Solde");
  tape({Qt::ALT | Qt::Key_R, ok});
  EXPECT_EQ(Table.Rangement(), "");
  EXPECT_FALSE(Table.isColumnHidden(0));
}

TEST_F(ListesTest, RecordsAreToldByTheirPlaceUnderAFilter) {
  Montre({{"1", "Alpha", ""}, {"2", "Beta", ""}, {"3", "Alphabet", ""}, {"4", "Delta", ""}});
  Table.setSelectionMode(QAbstractItemView::ExtendedSelection);
  Table.PoseFiltre(u"alpha"_s);
  Table.SelectionneRang(2);
  EXPECT_TRUE(Table.LigneChoisie() == 1 && Table.RangChoisi() == 2);
  Table.selectAll();
  EXPECT_EQ(Table.RangsChoisis(), (std::vector<int>{0, 2}));
  for (const auto& [demande, obtenu] : {std::pair(0, 0), {1, 2}, {2, 2}, {3, 2}}) {
    Table.clearSelection();
    Table.Relit(demande);
    EXPECT_EQ(Table.RangChoisi(), obtenu) << "the one, or the next that shows";
  }
  Table.clearSelection();
  Table.SelectionneRang(3);
  EXPECT_EQ(Table.RangChoisi(), -1) << "it does not show";
}

TEST_F(ListesTest, TitleClicksSort) {
  Montre({{"10", "Zurich", "1"},
          {"9", "Évian"_w, "1"},
          {"100", "evian", "0"},
          {"1", "Œuvre"_w, "1"},
          {"2", "Oeta", "1"},
          {"0", "", ""}});
  Table.SelectionneLigne(0);
  CliqueTitre(Table, 1);
  EXPECT_EQ(Ordre(Table.Modele()), (std::vector<Donnee>{0, 1, 2, 3, 4, 5})) << "not asked for";
  EXPECT_EQ(Table.ColonneTriee(), 1);
  Table.PoseTriable(true);
  Table.Modele().DerniereFixe(true);
  CliqueTitre(Table, 1);
  EXPECT_EQ(Ordre(Table.Modele()), (std::vector<Donnee>{2, 1, 4, 3, 0, 5})) << "accents beside their letters";
  EXPECT_EQ(Table.LigneChoisie(), 4) << "the selection follows its row";
  CliqueTitre(Table, 2);
  EXPECT_EQ(Ordre(Table.Modele()), (std::vector<Donnee>{2, 1, 4, 3, 0, 5})) << "equal rows keep their order";
  CliqueTitre(Table, 0);
  EXPECT_EQ(Ordre(Table.Modele()), (std::vector<Donnee>{3, 4, 1, 0, 2, 5})) << "as numbers";
  Table.Modele().DerniereFixe(false);
  CliqueTitre(Table, 1);
  EXPECT_EQ(Table.Modele().DonneeDe(0), 5u);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(ListesTest, SelectionMovesBetweenTheEnds) {
  Remplit(3);
  QSignalSpy changements(&Table, &TableListe::SelectionChangee);
  EXPECT_EQ(Table.LigneChoisie(), -1);
  EXPECT_EQ(Table.DonneeChoisie(), 0u);
  Table.LignePrecedente();
  EXPECT_EQ(Table.LigneChoisie(), -1);
  Table.LigneSuivante();
  Table.LignePrecedente();
  EXPECT_EQ(Table.LigneChoisie(), 0);
  Table.SelectionneLigne(2);
  EXPECT_EQ(Table.DonneeChoisie(), 3u);
  Table.LigneSuivante();
  Table.SelectionneLigne(7);
  EXPECT_EQ(Table.LigneChoisie(), 2);
  Table.SelectionneLigne(1, false);
  EXPECT_EQ(Table.LigneChoisie(), 2);
  Table.SelectionneLigne(2, false);
  EXPECT_EQ(Table.LigneChoisie(), -1);
  EXPECT_FALSE(Table.currentIndex().isValid());
  Table.SelectionneLigne(1);
  Table.SelectionneLigne(-1, true);
  EXPECT_EQ(Table.LigneChoisie(), 1);
  Table.SelectionneLigne(-1, false);
  EXPECT_EQ(Table.LigneChoisie(), -1);
  EXPECT_EQ(changements.size(), 5);
  Table.Modele().Vide();
  EXPECT_EQ(changements.size(), 6) << "emptying the list is told";
}

TEST_F(ListesTest, RowsComeAndGo) {
  Remplit(3);
  ModeleListe& modele = Table.Modele();
  EXPECT_EQ(modele.Champ(1, 1), u"Ligne 2"_s) << "spaces compacted";
  EXPECT_EQ(modele.Champ(9, 0), QString());
  Table.SelectionneLigne(1);
  modele.Insere(1, 9);
  EXPECT_EQ(modele.Champ(1, 0), u"9"_s);
  EXPECT_EQ(modele.Champ(2, 0), u"2"_s) << "rows below are not those painted before";
  EXPECT_EQ(Table.LigneChoisie(), 2);
  modele.Insere(-1, 10);
  modele.Insere(99, 11);
  EXPECT_EQ(Ordre(modele), (std::vector<Donnee>{10, 1, 9, 2, 3, 11}));
  modele.Change(0, 12);
  EXPECT_EQ(modele.Champ(0, 0), u"12"_s);
  modele.Supprime(1, 2);
  modele.Supprime(3, 2);
  EXPECT_EQ(Ordre(modele), (std::vector<Donnee>{12, 2, 3, 11}));
  EXPECT_EQ(modele.LigneDe(3), 2);
  EXPECT_EQ(modele.LigneDe(1), -1);
}

TEST_F(ListesTest, KeysMoveCopyActivateAndSearch) {
  int activations = 0;
  Table.SurActivation([&] { ++activations; });
  Montre({{"Achats", "z|1", ""}, {"Banque", "z2", ""}, {"Caisse", "b3", ""}, {"Charges", "z4", "9"}});
  QApplication::clipboard()->setText(u"avant"_s);
  QTest::keyClick(&Table, Qt::Key_C, Qt::ControlModifier);
  QTest::keyClick(&Table, Qt::Key_Return);
  EXPECT_EQ(activations, 0) << "no row is selected";
  EXPECT_EQ(QApplication::clipboard()->text(), u"avant"_s);
  QTest::keyClick(&Table, Qt::Key_Down);
  EXPECT_EQ(Table.LigneChoisie(), 0);
  QTest::keyClick(&Table, Qt::Key_Down);
  EXPECT_EQ(Table.LigneChoisie(), 1);
  QTest::keyClick(&Table, Qt::Key_End);
  QTest::keyClick(&Table, Qt::Key_Enter);
  EXPECT_EQ(activations, 1);
  QTest::keyClick(&Table, Qt::Key_Home);
  EXPECT_EQ(Table.LigneChoisie(), 0);
  const QRect compte = Table.visualRect(Table.Modele().index(0, 1));
  QTest::mouseClick(Table.viewport(), Qt::LeftButton, {}, compte.center());
  QTest::keyClicks(&Table, u"ch"_s);
  EXPECT_EQ(Table.LigneChoisie(), 3);
  QTest::mouseDClick(Table.viewport(), Qt::LeftButton, {}, compte.center());
  EXPECT_EQ(activations, 2);
  Table.setSelectionMode(QAbstractItemView::ExtendedSelection);
  Table.SelectionneLigne(0);
  QTest::mouseClick(Table.viewport(), Qt::LeftButton, Qt::ControlModifier,
                    Table.visualRect(Table.Modele().index(3, 0)).center());
  EXPECT_EQ(Table.LignesChoisies(), (std::vector<int>{0, 3}));
  QTest::keyClick(&Table, Qt::Key_C, Qt::ControlModifier);
  const QString titres = u"Code\tCompte\tSolde\n"_s;
  EXPECT_EQ(QApplication::clipboard()->text(), titres + u"Achats\tz|1\t\nCharges\tz4\t9"_s);
  QTest::keyClick(&Table, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(QApplication::clipboard()->text().count(u'\n'), 4) << "titles and all four rows";
}

TEST_F(ListesTest, AQuickFilterKeepsRowsThatHoldAllWords) {
  QWidget fenetre;
  QVBoxLayout pile(&fenetre);
  pile.addWidget(&Table);
  Table.PoseTriable(true);
  std::vector<Fiche> fiches = {
      {"1", "Évian"_w, "D 1,50 F"}, {"2", "Zurich", "4,00 F"}, {"3", "Eviana", "12,25 F"}, {"4", "", ""}};
  Table.Suit(ColonnesFiche(), fiches);
  Table.Relit(2);
  fenetre.show();
  fenetre.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&fenetre));
  Table.setFocus();
  QTest::keyClick(&Table, Qt::Key_Slash, {});
  auto& filtre = Trouve<QLineEdit>(fenetre, "filtre");
  const auto& bilan = Trouve<QLabel>(fenetre, "bilanFiltre");
  EXPECT_TRUE(filtre.hasFocus());
  QTest::keyClicks(&filtre, u"EVIAN f"_s);
  EXPECT_EQ(Ordre(Table.Modele()), (std::vector<Donnee>{0, 2}));
  EXPECT_EQ(Table.LigneChoisie(), 1) << "the selection follows its row";
  EXPECT_EQ(bilan.text(), u"2 sur 4   Solde : 10,75 F"_s);
  CliqueTitre(Table, 2);
  EXPECT_EQ(Ordre(Table.Modele()), (std::vector<Donnee>{2, 0})) << "sorted by text";
  Table.Modele().Supprime(0);
  EXPECT_EQ(bilan.text().section(u' ', 0, 2), u"1 sur 3"_s) << "it follows a row that goes";
  fiches[0].nom = "evian bis";
  Table.Modele().Change(0, 0);
  QTest::keyClick(&filtre, Qt::Key_Down);
  EXPECT_TRUE(Table.hasFocus());
  QTest::keyClick(&Table, Qt::Key_Backtab);
  EXPECT_TRUE(filtre.hasFocus()) << "it stands before its list";
  QTest::keyClick(&filtre, Qt::Key_Tab);
  QTest::keyClick(&Table, Qt::Key_Escape);
  EXPECT_FALSE(filtre.isVisible());
  EXPECT_EQ(Table.Modele().NbLignes(), 3) << "the row that was taken away stays away";
  EXPECT_EQ(Table.Modele().LigneDe(2), -1);
  pile.removeWidget(Table.parentWidget());
  Table.setParent(nullptr);
}

TEST_F(ListesTest, TableInAFormHasNoHorizontalScrollBar) {
  CZNListCtrl table(Ui);
  std::vector<int> fiches;
  const auto rien = [](int) { return std::string(); };
  table.Suit<int>(
      {{"Compte", 20, rien}, {"Libelle", 40, rien}, {"Paiement", 20, rien}, {"Montant", 20, rien}}, fiches);
  Montre(table);
  const auto rempli = [&] {
    const std::vector<int> largeurs = table.Largeurs();
    return std::accumulate(largeurs.begin(), largeurs.end(), 0) == table.viewport()->width();
  };
  for (const int largeur : {300, 301, 437, 899}) {
    table.resize(largeur, 200);
    QApplication::processEvents();
    EXPECT_TRUE(rempli()) << largeur;
    EXPECT_EQ(table.Largeurs()[1], static_cast<int>(0.4 * table.viewport()->width()));
  }
  const int seule = table.viewport()->width();
  fiches.resize(60);
  table.Relit(99);
  EXPECT_EQ(table.LigneChoisie(), 59);
  EXPECT_TRUE(QTest::qWaitFor([&] { return table.verticalScrollBar()->isVisible(); }));
  EXPECT_LT(table.viewport()->width(), seule);
  EXPECT_TRUE(rempli());
  EXPECT_FALSE(table.horizontalScrollBar()->isVisible());

  table.resize(seule, 120);
  QApplication::processEvents();
  const QRect choisie = table.visualRect(table.Modele().index(table.LigneChoisie(), 0));
  EXPECT_TRUE(table.viewport()->rect().contains(choisie)) << "the chosen row stays in sight";
}

// -- Drawing

class DessinTest : public ListesTest {
 public:
  DessinTest() {
    QPalette palette;
    palette.setColor(QPalette::Active, QPalette::Highlight, Qt::blue);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, Qt::darkCyan);
    palette.setColor(QPalette::All, QPalette::HighlightedText, Qt::yellow);
    palette.setColor(QPalette::All, QPalette::Base, Qt::white);
    palette.setColor(QPalette::All, QPalette::Text, Qt::black);
    Table.setPalette(palette);
    Table.resize(320, 200);
  }
  QImage Image() { return Table.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }
  QRect Cellule(int ligne, int colonne) { return Table.visualRect(Table.Modele().index(ligne, colonne)); }
  QRect Rangee(int ligne) { return Cellule(ligne, 0) | Cellule(ligne, 2); }
  static unsigned Compte(const QImage& image, const QRect& rect, QColor couleur) {
    unsigned nombre = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
      for (int x = rect.left(); x <= rect.right(); ++x) nombre += image.pixelColor(x, y) == couleur;
    return nombre;
  }
  /// First and last column of pixels of the cell with something else than white, from its left edge.
  static std::pair<int, int> Encre(const QImage& image, const QRect& cellule) {
    std::pair<int, int> bords{-1, -1};
    for (int x = cellule.left(); x <= cellule.right(); ++x) {
      const QRect colonne(x, cellule.top(), 1, cellule.height());
      if (Compte(image, colonne, Qt::white) == unsigned(cellule.height())) continue;
      if (bords.first < 0) bords.first = x - cellule.left();
      bords.second = x - cellule.left();
    }
    return bords;
  }
};

class NotePeinture : public QObject {
 public:
  QRegion Zone;

 protected:
  bool eventFilter(QObject*, QEvent* evenement) override {
    if (evenement->type() == QEvent::Paint) Zone += static_cast<QPaintEvent*>(evenement)->region();
    return false;
  }
};

TEST_F(DessinTest, HighlightSpansTheRowAndTellsTheFocus) {
  Montre({{}, {}});
  Table.SelectionneLigne(1);
  const QRect interieur = Rangee(1).adjusted(1, 1, -1, -1);
  const unsigned surface = unsigned(interieur.width() * interieur.height());
  EXPECT_EQ(Compte(Image(), interieur, Qt::blue), surface);
  EXPECT_GT(Compte(Image(), Rangee(1), Qt::yellow), 40u) << "the focus rectangle";
  EXPECT_EQ(Compte(Image(), Rangee(0), Qt::blue), 0u);
  NotePeinture peinture;
  Table.viewport()->installEventFilter(&peinture);
  Table.clearFocus();
  QApplication::processEvents();
  EXPECT_TRUE(QRegion(interieur).subtracted(peinture.Zone).isEmpty()) << "painted again without the focus";
  EXPECT_EQ(Compte(Image(), interieur, Qt::darkCyan), surface);
  EXPECT_EQ(Compte(Image(), Rangee(1), Qt::yellow), 0u);
}

TEST_F(DessinTest, TextsStandOnTheirSideAndInTheirCell) {
  Dessin.TexteListes = Qt::darkGreen;
  const std::string large(30, 'M');
  Montre({{"I", "I", "I"}, {large, large, ""}, {"", "HHHH", ""}});
  Table.SelectionneLigne(2);
  const QImage image = Image();
  EXPECT_LT(Encre(image, Cellule(0, 0)).first, 6);
  EXPECT_GT(Encre(image, Cellule(0, 2)).second, 90 - 12) << "at the right";
  EXPECT_EQ(Encre(image, Cellule(1, 2)), std::pair(-1, -1)) << "no text runs into the next cell";
  const auto pixels = [&](int ligne, auto juge) {
    unsigned nombre = 0;
    const QRect cellule = Cellule(ligne, 1).adjusted(0, 3, 0, -3);
    for (int y = cellule.top(); y <= cellule.bottom(); ++y)
      for (int x = cellule.left(); x <= cellule.right(); ++x) nombre += juge(image.pixelColor(x, y));
    return nombre;
  };
  EXPECT_GT(pixels(1, [](QColor c) { return c.green() > c.red() + 60 && c.green() > c.blue() + 60; }), 5u);
  EXPECT_GT(pixels(2, [](QColor c) { return c.red() > 150 && c.green() > 150; }), 5u) << "on the highlight";
}

TEST_F(DessinTest, MarksAreSignsWithAWord) {
  std::vector<int> fiches{1, 0};
  Table.Definit<int>(
      {{"P", 40, [](int b) { return std::string(b ? "P" : ""); }, Cote::Centre, {}, "Pointée"_w}},
      [&](Donnee rang, int& b) { return b = fiches[rang], true; });
  Table.Modele().Remplit({{0}, {1}});
  Montre(Table);
  Table.SelectionneLigne(0, false);
  const QImage image = Image();
  EXPECT_GT(Encre(image, Cellule(0, 0)).first, 10);
  EXPECT_EQ(Encre(image, Cellule(1, 0)), std::pair(-1, -1));
  EXPECT_EQ(Table.Modele().index(0, 0).data(Qt::AccessibleTextRole), u"Pointée"_s);
  EXPECT_EQ(Table.Modele().index(1, 0).data(Qt::AccessibleTextRole), QString());
  EXPECT_EQ(Table.Modele().headerData(0, Qt::Horizontal, Qt::ToolTipRole), u"Pointée"_s);
  const QPoint point = Cellule(0, 0).center();
  QHelpEvent bulle(QEvent::ToolTip, point, Table.viewport()->mapToGlobal(point));
  QApplication::sendEvent(Table.viewport(), &bulle);
  EXPECT_EQ(QToolTip::text(), u"Pointée"_s);
}

// -- The list window

class VueDeTest : public CZNListView {
 public:
  explicit VueDeTest(ContexteUi& contexte) : CZNListView(contexte, "Comptes d'essai", 8) {
    Table().Definit<Fiche>(ColonnesFiche(), Numerotee);
    Declare({{CmdModifier, [this] { ++Modifications; }}});
  }
  std::vector<LigneListe> Contenu;
  std::vector<unsigned> Menu;
  int Modifications = 0;

 protected:
  void FillList() override { Table().Modele().Remplit(Contenu); }
  std::vector<unsigned> MenuContextuel() const override { return Menu; }
};

class VueListeTest : public ListesTest {
 public:
  std::unique_ptr<VueDeTest> Ouvre(Donnee nombre = 100) {
    auto vue = std::make_unique<VueDeTest>(Ui);
    vue->Contenu = Suite(nombre);
    vue->resize(400, 200);
    vue->Charge();
    Montre(*vue);
    return vue;
  }
  std::string Colonnes() { return App().Reglages.LitIni("Comptes d'essai", "Colonnes"); }
  void PoseColonnes(const std::string& valeur) {
    App().Reglages.EcritIni("Comptes d'essai", "Colonnes", valeur);
  }
  static void TireBord(TableListe& table, int colonne, int pixels) {
    const QHeaderView& titres = *table.header();
    const QPoint bord(titres.sectionViewportPosition(colonne) + titres.sectionSize(colonne) - 1,
                      titres.height() / 2);
    QTest::mouseMove(titres.viewport(), bord);
    QTest::mousePress(titres.viewport(), Qt::LeftButton, {}, bord);
    QTest::mouseMove(titres.viewport(), bord + QPoint(pixels, 0));
    QTest::mouseRelease(titres.viewport(), Qt::LeftButton, {}, bord + QPoint(pixels, 0));
  }
};

TEST_F(VueListeTest, RefreshKeepsSelectionAndScrolling) {
  const auto vue = Ouvre();
  TableListe& table = vue->Table();
  EXPECT_EQ(table.LigneChoisie(), 0);
  table.verticalScrollBar()->setValue(60);
  vue->Actualise();
  EXPECT_EQ(table.LigneChoisie(), 0);
  EXPECT_EQ(table.verticalScrollBar()->value(), 60) << "a hidden selection stays hidden";
  table.SelectionneLigne(50);
  const Donnee choisie = table.DonneeChoisie();
  const auto haut = [&] { return table.Modele().DonneeDe(table.Haut()); };
  const Donnee enHaut = haut();
  EXPECT_GT(enHaut, 30u);
  vue->Contenu.erase(vue->Contenu.begin(), vue->Contenu.begin() + 10);
  vue->Actualise();
  EXPECT_EQ(table.DonneeChoisie(), choisie);
  EXPECT_EQ(table.LigneChoisie(), 40);
  EXPECT_EQ(haut(), enHaut);
  std::erase_if(vue->Contenu, [&](const LigneListe& ligne) { return ligne.donnee == choisie; });
  vue->Actualise();
  EXPECT_EQ(table.LigneChoisie(), 40) << "the row in its place";
  vue->Contenu.resize(3);
  vue->Actualise();
  EXPECT_EQ(table.LigneChoisie(), 2);
  vue->Contenu.clear();
  vue->Actualise();
  EXPECT_EQ(table.LigneChoisie(), -1);
  vue->Contenu = Suite(4);
  vue->Actualise();
  EXPECT_EQ(table.LigneChoisie(), -1);
}

TEST_F(VueListeTest, WidthsOfTheUserAreKept) {
  Ouvre().reset();
  EXPECT_EQ(Colonnes(), "") << "nothing was changed";
  auto vue = Ouvre();
  TireBord(vue->Table(), 1, 35);
  const std::vector<int> largeurs = vue->Table().Largeurs();
  ASSERT_GT(largeurs[1], 140);
  vue->Actualise();
  EXPECT_EQ(vue->Table().Largeurs(), largeurs);
  vue.reset();
  EXPECT_EQ(Colonnes(), "80," + std::to_string(largeurs[1]) + ",90");
  vue = Ouvre();
  EXPECT_EQ(vue->Table().Largeurs(), largeurs);
  vue->Actualise();
  EXPECT_EQ(vue->Table().Largeurs(), largeurs);
  EXPECT_FALSE(vue->Table().LargeursChangees());
}

TEST_F(VueListeTest, DamagedWidthsAreIgnored) {
  for (const char* valeur : {"80,90", "80,90,100,110", "80,,90", "80,-5,90", "80,x,90", "80,0,90",
                             "80,99999999999,90", ",", "80;90;100"}) {
    PoseColonnes(valeur);
    const auto vue = Ouvre(3);
    const std::vector<int> largeurs = vue->Table().Largeurs();
    EXPECT_EQ(largeurs[0], 80) << valeur;
    EXPECT_GE(largeurs[1], 120) << valeur;
    EXPECT_EQ(largeurs[2], 90) << valeur;
  }
  PoseColonnes(" 70, 60 ,50");
  EXPECT_EQ(Ouvre(3)->Table().Largeurs(), (std::vector<int>{70, 60, 50}));
}

TEST_F(VueListeTest, CommandsAndMenu) {
  const auto vue = Ouvre(3);
  TableListe& table = vue->Table();
  EXPECT_TRUE(vue->Connait(9006));
  EXPECT_FALSE(vue->Connait(1005));
  EXPECT_TRUE(vue->Disponible(9006));
  vue->Execute(9006);
  EXPECT_EQ(QApplication::clipboard()->text(), u"Code\tCompte\tSolde\n1\tLigne 1\t99"_s);
  table.SelectionneLigne(-1, false);
  EXPECT_FALSE(vue->Disponible(9006));
  CliqueTitre(table, 2);
  EXPECT_EQ(Ordre(table.Modele()), (std::vector<Donnee>{3, 2, 1}));
  table.SelectionneLigne(1);
  QTest::keyClick(&table, Qt::Key_Return);
  EXPECT_EQ(vue->Modifications, 1);

  QSignalSpy menus(vue.get(), &Vue::MenuDemande);
  const QPoint point = table.visualRect(table.Modele().index(2, 0)).center();
  const auto demande = [&] {
    QContextMenuEvent evenement(QContextMenuEvent::Mouse, point, table.viewport()->mapToGlobal(point));
    QApplication::sendEvent(table.viewport(), &evenement);
  };
  demande();
  EXPECT_EQ(menus.size(), 0);
  vue->Menu = {9006, 0, 1006};
  demande();
  ASSERT_EQ(menus.size(), 1);
  EXPECT_EQ(menus[0][0].toPoint(), table.viewport()->mapToGlobal(point));
  EXPECT_EQ(menus[0][1].value<std::vector<unsigned>>(), vue->Menu);
}

}  // namespace

}  // namespace fenlor::test
