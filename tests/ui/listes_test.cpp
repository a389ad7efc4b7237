#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QImage>
#include <QPaintEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <algorithm>
#include <numeric>

#include "outils/uidetest.h"
#include "store/texte1252.h"
#include "ui/cznlistview.h"
#include "ui/texteqt.h"

namespace fenlor::test {

namespace {

using namespace Qt::Literals::StringLiterals;
using Donnee = ModeleListe::Donnee;

/// "5|Ligne 5|95": rows from a number, counted down in the third column.
class ListesTest : public UiDeTest {
 public:
  ListesTest() : Contexte(Ui()) { Dessin.TexteListes = QColor(); }

  ContexteUi Contexte;

  template <class T>
  void Montre(T& table) {
    table.show();
    table.activateWindow();
    table.setFocus();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
  }
  static std::vector<Donnee> Suite(Donnee nombre) {
    std::vector<Donnee> donnees(nombre);
    std::iota(donnees.begin(), donnees.end(), Donnee{1});
    return donnees;
  }
  static std::string Ligne(Donnee d) {
    return std::to_string(d) + "|Ligne  " + std::to_string(d) + "|" + std::to_string(100 - int(d % 100));
  }
  static std::vector<Donnee> Ordre(const ModeleListe& modele) {
    std::vector<Donnee> ordre;
    for (int i = 0; i < modele.NbLignes(); ++i) ordre.push_back(modele.DonneeDe(i));
    return ordre;
  }
  void Remplit(TableListe& table, Donnee nombre) {
    table.SetColonnes("Code|L|80|Compte|L|120|Solde|R|90");
    table.Modele().PoseTextes(&Ligne);
    table.Modele().Remplit(Suite(nombre));
  }
  static void CliqueTitre(TableListe& table, int colonne) {
    const QHeaderView& titres = *table.header();
    const QPoint point(titres.sectionViewportPosition(colonne) + 10, titres.height() / 2);
    QTest::mouseClick(titres.viewport(), Qt::LeftButton, {}, point);
  }
};

TEST_F(ListesTest, OnlyPaintedRowsAreFetched) {
  TableListe table(Contexte);
  Remplit(table, 300000);
  table.PoseComparaison([](Donnee a, Donnee b, int) { return a < b ? 1 : (a > b ? -1 : 0); });
  table.resize(400, 300);
  Montre(table);
  table.grab();
  const unsigned visibles = 300 / 16 + 2;
  const unsigned lues = table.Modele().NbLectures();
  EXPECT_GT(lues, 5u);
  EXPECT_LE(lues, visibles);
  QTest::keyClick(&table, Qt::Key_End);
  table.grab();
  EXPECT_EQ(table.LigneChoisie(), 299999);
  EXPECT_LE(table.Modele().NbLectures(), visibles);
  CliqueTitre(table, 2);
  EXPECT_EQ(table.Modele().DonneeDe(0), 300000u);
  EXPECT_EQ(table.Modele().NbLectures(), 0u);
  EXPECT_EQ(table.LigneChoisie(), 0) << "the selection follows its row";
  EXPECT_TRUE(table.visualRect(table.currentIndex()).intersects(table.viewport()->rect()));
  table.resizeColumnToContents(1);
  EXPECT_LE(table.Modele().NbLectures(), visibles);
}

TEST_F(ListesTest, TitleClicksSortThroughTheComparison) {
  TableListe table(Contexte);
  Remplit(table, 5);
  Montre(table);
  CliqueTitre(table, 1);
  EXPECT_EQ(Ordre(table.Modele()), Suite(5)) << "no comparison";
  EXPECT_EQ(table.ColonneTriee(), 1);
  Qt::CursorShape curseur = Qt::ArrowCursor;
  int colonneVue = -1;
  table.PoseComparaison([&](Donnee a, Donnee b, int colonne) {
    if (QApplication::overrideCursor()) curseur = QApplication::overrideCursor()->shape();
    colonneVue = colonne;
    return int(b) - int(a);
  });
  CliqueTitre(table, 2);
  EXPECT_EQ(Ordre(table.Modele()), (std::vector<Donnee>{5, 4, 3, 2, 1}));
  EXPECT_EQ(colonneVue, 2);
  EXPECT_EQ(curseur, Qt::WaitCursor);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_FALSE(table.header()->isSortIndicatorShown());
}

TEST_F(ListesTest, SelectionMovesBetweenTheEnds) {
  TableListe table(Contexte);
  Remplit(table, 3);
  QSignalSpy changements(&table, &TableListe::SelectionChangee);
  EXPECT_EQ(table.LigneChoisie(), -1);
  EXPECT_EQ(table.DonneeChoisie(), 0u);
  table.LignePrecedente();
  EXPECT_EQ(table.LigneChoisie(), -1);
  table.LigneSuivante();
  EXPECT_EQ(table.LigneChoisie(), 0);
  table.LignePrecedente();
  EXPECT_EQ(table.LigneChoisie(), 0);
  table.SelectionneLigne(2);
  EXPECT_EQ(table.DonneeChoisie(), 3u);
  table.LigneSuivante();
  EXPECT_EQ(table.LigneChoisie(), 2);
  table.SelectionneLigne(7);
  EXPECT_EQ(table.LigneChoisie(), 2);
  table.SelectionneLigne(1, false);
  EXPECT_EQ(table.LigneChoisie(), 2);
  table.SelectionneLigne(2, false);
  EXPECT_EQ(table.LigneChoisie(), -1);
  EXPECT_FALSE(table.currentIndex().isValid());
  table.SelectionneLigne(1);
  table.SelectionneLigne(-1, true);
  EXPECT_EQ(table.LigneChoisie(), 1);
  table.SelectionneLigne(-1, false);
  EXPECT_EQ(table.LigneChoisie(), -1);
  EXPECT_EQ(changements.size(), 5);
  table.SelectionneLigne(1);
  table.Modele().Vide();
  EXPECT_EQ(table.LigneChoisie(), -1);
  EXPECT_EQ(changements.size(), 7) << "emptying the list is told";
}

TEST_F(ListesTest, KeysMoveCopyActivateAndSearch) {
  TableListe table(Contexte);
  table.SetColonnes("Nom|L|120|Solde|R|80");
  for (const char* nom : {"Achats|z1", "Banque|z2", "Caisse|b3", "Charges|z4"}) table.Modele().Ajoute(nom);
  int activations = 0;
  table.SurActivation([&] { ++activations; });
  Montre(table);
  QTest::keyClick(&table, Qt::Key_Return);
  EXPECT_EQ(activations, 0) << "no row is selected";
  QTest::keyClick(&table, Qt::Key_Down);
  EXPECT_EQ(table.LigneChoisie(), 0);
  QTest::keyClick(&table, Qt::Key_Down);
  EXPECT_EQ(table.LigneChoisie(), 1);
  QTest::keyClick(&table, Qt::Key_End);
  EXPECT_EQ(table.LigneChoisie(), 3);
  QTest::keyClick(&table, Qt::Key_Enter);
  EXPECT_EQ(activations, 1);
  QTest::keyClick(&table, Qt::Key_Home);
  EXPECT_EQ(table.LigneChoisie(), 0);
  const QRect solde = table.visualRect(table.Modele().index(0, 1));
  QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, solde.center());
  QTest::keyClicks(&table, u"ch"_s);
  EXPECT_EQ(table.LigneChoisie(), 3);
  QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), u"Charges\tz4"_s);
  QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, solde.center());
  EXPECT_EQ(activations, 2);
}

TEST_F(ListesTest, CopiesTheSelectedRow) {
  TableListe table(Contexte);
  table.SetColonnes("Nom|L|120|Solde|R|80|Note|L|80");
  table.Modele().Ajoute("Trésorerie|1 250,00 €"_w, 4);
  QApplication::clipboard()->setText(u"avant"_s);
  table.Copie();
  EXPECT_EQ(QApplication::clipboard()->text(), u"avant"_s);
  EXPECT_EQ(table.TexteLigne(), "");
  table.SelectionneLigne(0);
  EXPECT_EQ(table.TexteLigne(), "Trésorerie\t1 250,00 €\t"_w);
  table.Copie();
  EXPECT_EQ(QApplication::clipboard()->text(), u"Trésorerie\t1 250,00 €\t"_s);
}

TEST_F(ListesTest, RowHeightFollowsTheListFont) {
  TableListe table(Contexte);
  Remplit(table, 20);
  Montre(table);
  const int avant = table.visualRect(table.Modele().index(0, 0)).height();
  const std::vector<int> largeurs = table.Largeurs();
  EXPECT_EQ(largeurs, (std::vector<int>{80, 120, 90}));
  Dessin.PoliceListes.setPointSize(40);
  table.ActualisePreferences();
  QApplication::processEvents();
  const int hauteur = table.visualRect(table.Modele().index(0, 0)).height();
  EXPECT_GT(hauteur, avant);
  EXPECT_GE(hauteur, QFontMetrics(Dessin.PoliceListes).height());
  EXPECT_GT(table.Largeurs()[0], largeurs[0]);
}

TEST_F(ListesTest, TableInAFormHasNoHorizontalScrollBar) {
  CZNListCtrl table(Contexte);
  table.SetColonnes("Compte|L|20|Libelle|L|40|Paiement|R|20|Montant|R|20");
  Montre(table);
  const auto rempli = [&] {
    const std::vector<int> largeurs = table.Largeurs();
    return std::accumulate(largeurs.begin(), largeurs.end(), 0) == table.viewport()->width();
  };
  for (const int largeur : {300, 301, 437, 899}) {
    table.resize(largeur, 200);
    QApplication::processEvents();
    EXPECT_TRUE(rempli()) << largeur;
  }
  const int seule = table.viewport()->width();
  for (int i = 0; i < 60; ++i) table.Modele().Ajoute(Ligne(Donnee(i)), Donnee(i));
  EXPECT_TRUE(QTest::qWaitFor([&] { return table.verticalScrollBar()->isVisible(); }));
  EXPECT_LT(table.viewport()->width(), seule);
  EXPECT_TRUE(rempli());
  EXPECT_FALSE(table.horizontalScrollBar()->isVisible());
  table.AjusteColonnes("A|L|50|B|L|10|C|L|10|D|L|30");
  EXPECT_EQ(table.Largeurs()[0], table.viewport()->width() / 2);
  EXPECT_TRUE(rempli());
}

// -- Drawing

class DessinTest : public ListesTest {
 public:
  DessinTest() : Table(Contexte) {
    QPalette palette;
    palette.setColor(QPalette::Active, QPalette::Highlight, Qt::blue);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, Qt::darkCyan);
    palette.setColor(QPalette::All, QPalette::HighlightedText, Qt::yellow);
    palette.setColor(QPalette::All, QPalette::Base, Qt::white);
    palette.setColor(QPalette::All, QPalette::Text, Qt::black);
    Table.setPalette(palette);
    Table.SetColonnes("Code|R|60|Compte|C|80|Solde|R|70");
    Table.resize(320, 200);
  }

  /// With the focus, but no focus rectangle.
  void MontreSansChoix() {
    Montre(Table);
    Table.SelectionneLigne(0, false);
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
  /// First and last column of pixels of the cell with something else than `fond`, from its left edge.
  static std::pair<int, int> Encre(const QImage& image, const QRect& cellule, QColor fond) {
    std::pair<int, int> bords{-1, -1};
    for (int x = cellule.left(); x <= cellule.right(); ++x) {
      if (Compte(image, QRect(x, cellule.top(), 1, cellule.height()), fond) == unsigned(cellule.height()))
        continue;
      if (bords.first < 0) bords.first = x - cellule.left();
      bords.second = x - cellule.left();
    }
    return bords;
  }

  TableListe Table;
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
  Table.Modele().Ajoute("||");
  Table.Modele().Ajoute("||");
  Table.SelectionneLigne(1);
  Montre(Table);
  const QRect interieur = Rangee(1).adjusted(1, 1, -1, -1);
  const unsigned surface = unsigned(interieur.width() * interieur.height());
  EXPECT_EQ(Compte(Image(), interieur, Qt::blue), surface);
  EXPECT_GT(Compte(Image(), Rangee(1), Qt::yellow), 40u) << "the focus rectangle";
  EXPECT_EQ(Compte(Image(), Rangee(0), Qt::blue), 0u);
  const QRect apres(Rangee(1).right() + 1, Rangee(1).top(), 40, Rangee(1).height());
  EXPECT_EQ(Compte(Image(), apres, Qt::white), unsigned(apres.width() * apres.height()));
  NotePeinture peinture;
  Table.viewport()->installEventFilter(&peinture);
  Table.clearFocus();
  QApplication::processEvents();
  EXPECT_TRUE(QRegion(interieur).subtracted(peinture.Zone).isEmpty()) << "painted again without the focus";
  EXPECT_EQ(Compte(Image(), interieur, Qt::darkCyan), surface);
  EXPECT_EQ(Compte(Image(), Rangee(1), Qt::yellow), 0u);
}

TEST_F(DessinTest, MarginsAndAlignment) {
  Table.Modele().Ajoute("III|III|III");
  MontreSansChoix();
  const QImage image = Image();
  const auto premiere = Encre(image, Cellule(0, 0), Qt::white);
  const auto milieu = Encre(image, Cellule(0, 1), Qt::white);
  const auto derniere = Encre(image, Cellule(0, 2), Qt::white);
  EXPECT_GE(premiere.first, 2);
  EXPECT_LE(premiere.first, 4) << "left, whatever its letter";
  EXPECT_NEAR(milieu.first, 79 - milieu.second, 3);
  EXPECT_LE(derniere.second, 69 - 6);
  EXPECT_GE(derniere.second, 69 - 9);
}

TEST_F(DessinTest, LongTextsStayInTheirCell) {
  Table.Modele().Ajoute("WWWWWWWWWWWWWWWWWWWW|MMMMMMMMMMMMMMMMMMMMMM|");
  MontreSansChoix();
  const QImage image = Image();
  EXPECT_EQ(Encre(image, Cellule(0, 2), Qt::white), std::pair(-1, -1));
  const auto premiere = Encre(image, Cellule(0, 0), Qt::white);
  EXPECT_GE(premiere.first, 1);
  EXPECT_LE(premiere.second, 59 - 1);
  const auto seconde = Encre(image, Cellule(0, 1), Qt::white);
  EXPECT_GE(seconde.first, 5);
  EXPECT_LE(seconde.second, 79 - 5);
}

TEST_F(DessinTest, PictureMovesTheTextOfTheFirstColumn) {
  QPixmap rouge(16, 16);
  rouge.fill(Qt::red);
  Table.Modele().PoseImages([&](Donnee donnee) { return donnee == 1 ? QIcon(rouge) : QIcon(); });
  Table.Modele().Ajoute("I|I|I", 1);
  Table.Modele().Ajoute("I|I|I", 2);
  MontreSansChoix();
  const QImage image = Image();
  EXPECT_EQ(Compte(image, Cellule(0, 0), Qt::red), 256u);
  EXPECT_EQ(Compte(image, Rangee(1), Qt::red), 0u);
  const auto sans = Encre(image, Cellule(1, 0), Qt::white), avec = Encre(image, Cellule(0, 0), Qt::white);
  EXPECT_EQ(avec.second, sans.second + 16);
}

TEST_F(DessinTest, TextColourOfThePreferencesButNotOnTheHighlight) {
  Dessin.TexteListes = Qt::darkGreen;
  Table.Modele().Ajoute("||");
  Table.Modele().Ajoute("|HHHH|");
  Table.Modele().Ajoute("|HHHH|");
  Table.SelectionneLigne(2);
  Montre(Table);
  const QImage image = Image();
  const auto vers = [&](int ligne, auto juge) {
    unsigned nombre = 0;
    const QRect cellule = Cellule(ligne, 1).adjusted(0, 3, 0, -3);
    for (int y = cellule.top(); y <= cellule.bottom(); ++y)
      for (int x = cellule.left(); x <= cellule.right(); ++x) nombre += juge(image.pixelColor(x, y));
    return nombre;
  };
  EXPECT_GT(vers(1, [](QColor c) { return c.green() > c.red() + 60 && c.green() > c.blue() + 60; }), 5u);
  EXPECT_GT(vers(2, [](QColor c) { return c.red() > 150 && c.green() > 150; }), 5u);
}

TEST_F(DessinTest, EmptyListShowsItsText) {
  Montre(Table);
  const QRect tout = Table.viewport()->rect();
  EXPECT_EQ(Encre(Image(), tout, Qt::white), std::pair(-1, -1));
  Table.PoseTexteVide(u"Aucune ligne"_s);
  const auto encre = Encre(Image(), tout, Qt::white);
  EXPECT_GT(encre.first, 40);
  EXPECT_NEAR(encre.first, tout.width() - 1 - encre.second, 3);
  Table.Modele().Ajoute("||");
  Table.SelectionneLigne(0, false);
  EXPECT_EQ(Encre(Image(), tout, Qt::white), std::pair(-1, -1));
}

// -- The list window

class VueDeTest : public CZNListView {
 public:
  explicit VueDeTest(ContexteUi& contexte) : CZNListView(contexte, "Comptes d'essai", 8) {
    Table().SetColonnes("Code|L|80|Compte|L|120|Solde|R|90");
    Declare({{CmdModifier, [this] { ++Modifications; }}});
  }
  std::vector<Donnee> Contenu;
  std::vector<unsigned> Menu;
  int Modifications = 0;

 protected:
  void FillList() override { Table().Modele().Remplit(Contenu); }
  int CompareItems(Donnee a, Donnee b, int colonne) override { return colonne == 0 ? int(b) - int(a) : 0; }
  std::string TexteDe(Donnee donnee) override { return ListesTest::Ligne(donnee); }
  std::vector<unsigned> MenuContextuel() const override { return Menu; }
};

class VueListeTest : public ListesTest {
 public:
  std::unique_ptr<VueDeTest> Ouvre(Donnee nombre = 100) {
    auto vue = std::make_unique<VueDeTest>(Contexte);
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
  table.SelectionneLigne(50);
  const Donnee choisie = table.DonneeChoisie();
  const auto haut = [&] { return table.Modele().DonneeDe(table.indexAt(QPoint(0, 0)).row()); };
  const Donnee enHaut = haut();
  EXPECT_GT(enHaut, 30u);
  vue->Contenu.erase(vue->Contenu.begin(), vue->Contenu.begin() + 10);
  vue->Actualise();
  EXPECT_EQ(table.DonneeChoisie(), choisie);
  EXPECT_EQ(table.LigneChoisie(), 40);
  EXPECT_EQ(haut(), enHaut);
  std::erase(vue->Contenu, choisie);
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

TEST_F(VueListeTest, RefreshLeavesAHiddenSelectionHidden) {
  const auto vue = Ouvre();
  TableListe& table = vue->Table();
  table.verticalScrollBar()->setValue(60);
  vue->Actualise();
  EXPECT_EQ(table.LigneChoisie(), 0);
  EXPECT_EQ(table.verticalScrollBar()->value(), 60);
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
    EXPECT_EQ(vue->Table().Largeurs(), (std::vector<int>{80, 120, 90})) << valeur;
  }
  PoseColonnes(" 70, 60 ,50");
  EXPECT_EQ(Ouvre(3)->Table().Largeurs(), (std::vector<int>{70, 60, 50}));
}

TEST_F(VueListeTest, CommandsMenuAndSort) {
  const auto vue = Ouvre(3);
  TableListe& table = vue->Table();
  EXPECT_TRUE(vue->Connait(9006));
  EXPECT_FALSE(vue->Connait(1005));
  EXPECT_TRUE(vue->Disponible(9006));
  vue->Execute(9006);
  EXPECT_EQ(QApplication::clipboard()->text(), u"1\tLigne 1\t99"_s);
  table.SelectionneLigne(-1, false);
  EXPECT_FALSE(vue->Disponible(9006));
  CliqueTitre(table, 1);
  EXPECT_EQ(Ordre(table.Modele()), Suite(3));
  CliqueTitre(table, 0);
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
