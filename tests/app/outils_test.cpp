// The desk tools: calculator, tip of the day, about and system boxes, help.
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QTreeWidget>
#include <set>
#include <sstream>

#include "app/aide.h"
#include "app/apropos.h"
#include "app/astuce.h"
#include "app/calculatrice.h"
#include "app/commandes.h"
#include "app/infosysteme.h"
#include "app/textes.h"
#include "outils/uidetest.h"
#include "session/textes.h"
#include "ui/positionfenetre.h"

namespace fenlor::test {
namespace {

/// Types keys: digits , + - * / = %, n sign, < backspace, e CE, c C, a M+, m M-, r MR, z MC.
void TapeCles(Calcul& calcul, std::string_view cles) {
  static const std::string connues = "0123456789,n<ec+-*/=%amrz";
  for (const char c : cles)
    if (c != ' ') calcul.Appuie(static_cast<fenlor::Touche>(connues.find(c)));
}

std::string Calcule(std::string_view cles) {
  Calcul calcul;
  TapeCles(calcul, cles);
  return calcul.Erreur() ? "Erreur" : calcul.Affichage();
}

/// Keys and what stands there then, in turn.
constexpr const char* Touches[] = {
    // entering
    "007 7  ,5 0,5  1,,5,0 1,50  12nn 12  1< 0  1,5<< 1  1n< 0  0n5 -5  1234567890123456 123456789012345  "
    "5=< 5",
    // chains, in the order typed
    "2+3*4= 20  10-2-3 3  10-2-3- 5  5+-2= 3  7n+10= 3  5+3n= 2  5+2== 9  5+2=3= 3  5+2=*2= 14  5+= 10  "
    "2*== 8  8/2=1+1= 2",
    // exact
    "0,1+0,2= 0,3  1/3= 0,333333333333333  1/3*3= 1  2/3= 0,666666666666667  1000000-0,01= 999999,99  "
    "5-5= 0  9999999999999,99+0,01= 10000000000000  0,000000001*0,000000001= 0,000000000000000001  "
    "0,0000000001*0,0000000001= 0  99999999999*9999= 999899999990001  200000000000000/0,2= Erreur",
    // percent
    "200+10% 220  200-10%= 180  200*10%= 20  50/200%= 25  19,6% 0,196  100+10%+5% 115,5  200+10%*2= 440",
    // erasing
    "5+3e4= 9  5+3c4= 4  5+3=e 0",
    // memory: kept by C, finishes what was pending
    "5a3ar 8  5a3mr 2  5acr 5  5azr 0  5a10+r= 15  2+3acr*r= 25",
    // errors, and on from there
    "5/0= Erreur  5/0=+ Erreur  5/0=7+1= 8  5/0=c 0  5/0=e 0  5/0+1= 1  7a5/0=r 7  0/5= 0  "
    "999999999999999+1= Erreur  0,0/0,0= Erreur  5/0% Erreur",
};

TEST(Calculs, ToucheParTouche) {
  EXPECT_EQ(Calcule(""), "0");
  for (const char* groupe : Touches) {
    std::istringstream mots(groupe);
    for (std::string cles, attendu; mots >> cles >> attendu;) EXPECT_EQ(Calcule(cles), attendu) << cles;
  }
}

TEST(Calculs, MemeResultatQueLesEntiers) {
  // Amounts of cents, added and multiplied, against integers.
  u32 hasard = 12345;
  const auto tire = [&] {
    return static_cast<i64>((hasard = hasard * 1664525u + 1013904223u) >> 12) - 500000;
  };
  const auto texte = [](i64 valeur, int decimales) {
    std::string chiffres = std::to_string(std::abs(valeur));
    while (static_cast<int>(chiffres.size()) <= decimales) chiffres.insert(0, 1, '0');
    return (valeur < 0 ? "-" : "") +
           chiffres.insert(chiffres.size() - static_cast<std::size_t>(decimales), 1, ',');
  };
  for (int i = 0; i < 2000; ++i) {
    const i64 a = tire(), b = tire();
    const auto da = Decimal::Lit(texte(a, 2)), db = Decimal::Lit(texte(b, 2));
    ASSERT_TRUE(da && db);
    EXPECT_EQ(Decimal::Ajoute(*da, *db), Decimal::Lit(texte(a + b, 2))) << a << ' ' << b;
    EXPECT_EQ(Decimal::Retire(*da, *db), Decimal::Lit(texte(a - b, 2))) << a << ' ' << b;
    EXPECT_EQ(Decimal::Multiplie(*da, *db), Decimal::Lit(texte(a * b, 4))) << a << ' ' << b;
    if (b == 0) continue;
    const auto produit = Decimal::Multiplie(*da, *db);
    EXPECT_EQ(Decimal::Divise(*produit, *db), da) << a << ' ' << b;
    EXPECT_EQ(Decimal::DeMontant(da->Montant()), da) << a;
  }
}

TEST(Calculs, LitLesNombresColles) {
  const std::pair<const char*, const char*> cas[] = {{"12", "12"},
                                                     {" 1 234,50 € ", "1234,5"},
                                                     {"1\u202F234\u00A0567,89", "1234567,89"},
                                                     {"1.234,50", "1234,5"},
                                                     {"1,234.50", "1234,5"},
                                                     {"1.234.567", "1234567"},
                                                     {"12.5", "12,5"},
                                                     {"-3,20 F", "-3,2"},
                                                     {"−4", "-4"},
                                                     {"1'000", "1000"},
                                                     {"15,24 EUR", "15,24"},
                                                     {"", ""},
                                                     {"abc", ""},
                                                     {"1-2", ""},
                                                     {"€", ""},
                                                     {"1234567890123456789", ""}};
  for (const auto& [colle, attendu] : cas) {
    const auto lu = Decimal::LitColle(colle);
    EXPECT_EQ(lu ? lu->Texte() : "", attendu) << colle;
  }
}

TEST(Calculs, BandeSuitLesOperations) {
  Calcul calcul;
  TapeCles(calcul, "200+10% *2= c 7a 5/0=");
  const std::vector<Calcul::Ligne> attendue = {{"200", ""}, {"10", "% +"}, {"220", "="},
                                               {"2", "×"},  {"440", "="},  {"7", "M+"},
                                               {"5", ""},   {"0", "÷"},    {"", "E"}};
  EXPECT_EQ(calcul.Bande(), attendue);
}

class Outils : public UiDeTest {
 public:
  Outils() { App().PathProgrammes = Dossier(); }

  std::string Registre(const char* nom) {
    std::string texte;
    App().Magasin.QVGetRegString("HKEY_CURRENT_USER", Texte(CleRegistreFenlor), Texte(SecAstuce),
                                 De1252(QString::fromUtf8(nom)), texte);
    return texte;
  }
  void PoseAstuces(const std::string& texte) { EcritFichier(Dossier() + "/zntips.txt", texte); }
};

TEST_F(Outils, CalculatriceAuClavier) {
  QPointer<CDialogCalculatrice> fenetre = new CDialogCalculatrice(Ui, nullptr);
  fenetre->show();
  const auto affiche = [&] { return Trouve<QLabel>(*fenetre, "affichage").text(); };
  QTest::keyClicks(fenetre, u"1234.5*"_s);
  QTest::keyClicks(fenetre, u"2"_s);
  QTest::keyClick(fenetre, Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(affiche(), u"2\u00A0469"_s);
  QTest::keyClick(fenetre, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), u"2469"_s);
  Clique(Trouve<QAbstractButton>(*fenetre, "mplus"));
  EXPECT_EQ(Trouve<QLabel>(*fenetre, "temoin").text(), u"M "_s);
  QApplication::clipboard()->setText(u"1 000,25 €"_s);
  QTest::keyClick(fenetre, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(affiche(), u"1\u00A0000,25"_s);
  QApplication::clipboard()->setText(u"mille"_s);
  QTest::keyClick(fenetre, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(affiche(), u"1\u00A0000,25"_s);
  EXPECT_EQ(Trouve<QLabel>(*fenetre, "remarque").text(), TexteQ(CalculPasNombre));
  QTest::keyClicks(fenetre, u"/0="_s);
  EXPECT_EQ(affiche(), u"Erreur"_s);
  EXPECT_TRUE(Trouve<QPlainTextEdit>(*fenetre, "bande").toPlainText().contains(u"Erreur"_s));
  QTest::keyClick(fenetre, Qt::Key_F1);
  EXPECT_EQ(Cadre.Nombre("Aide DialogCalculatrice"), 1u);
  QTest::keyClick(fenetre, Qt::Key_Escape);
  EXPECT_EQ(affiche(), u"0"_s);
  ASSERT_TRUE(fenetre->isVisible());
  QTest::keyClick(fenetre, Qt::Key_Escape);
  EXPECT_FALSE(fenetre && fenetre->isVisible());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(fenetre.isNull());
}

TEST_F(Outils, CalculatriceConvertitAuTauxDuJour) {
  const auto converti = [&](const QString& touches) {
    CDialogCalculatrice fenetre(Ui, nullptr);
    fenetre.setAttribute(Qt::WA_DeleteOnClose, false);
    QTest::keyClicks(&fenetre, touches);
    return Trouve<QLabel>(fenetre, "affichage").text();
  };
  EXPECT_EQ(converti(u"100e"_s), u"15,24"_s);
  EXPECT_EQ(converti(u"15,24f"_s), u"99,97"_s);
  EXPECT_EQ(converti(u"10+100e="_s), u"25,24"_s);
  App().Reglages.EcritIni("TAUX EURO", "1", "01/01/1999|6,55957");
  App().Reglages.EcritIni("TAUX EURO", "2", "01/03/2003|5");
  App().Reglages.EcritIni("TAUX EURO", "3", "01/04/2003|4");
  EXPECT_EQ(converti(u"100e"_s), u"20"_s) << "the rate of 15/03/2003";
  EXPECT_EQ(converti(u"1/0=e"_s), u"Erreur"_s);
}

TEST_F(Outils, ChaqueToucheDeLaCalculatriceAUnBouton) {
  CDialogCalculatrice fenetre(Ui, nullptr);
  fenetre.setAttribute(Qt::WA_DeleteOnClose, false);
  for (const char* nom : {"chiffre1", "chiffre2", "plus", "chiffre3", "virgule", "chiffre4", "moins",
                          "chiffre5", "fois", "chiffre6", "divise", "chiffre7", "egal"})
    Clique(Trouve<QAbstractButton>(fenetre, nom));
  EXPECT_EQ(Trouve<QLabel>(fenetre, "affichage").text(), u"8,91428571428571"_s) << "12 + 3,4 - 5 x 6 / 7";
}

TEST_F(Outils, AstucesTournent) {
  PoseAstuces("Première\n\n  Deuxième \r\nTroisième\n");
  EXPECT_EQ(LitAstuces(Dossier()), (QStringList{u"Première"_s, u"Deuxième"_s, u"Troisième"_s}));
  const auto vue = [&](int suivantes) {
    QString texte;
    robot.Attend("DialogAstuce", [&](QDialog& d) {
      for (int i = 0; i < suivantes; ++i) Clique(Trouve<QAbstractButton>(d, "suivante"));
      texte = Trouve<QLabel>(d, "texte").text();
      d.reject();
    });
    MontreAstuce(Ui, nullptr);
    return texte;
  };
  EXPECT_EQ(vue(0), u"Première"_s);
  EXPECT_EQ(Registre("Position"), "1");
  EXPECT_EQ(vue(0), u"Deuxième"_s);
  EXPECT_EQ(vue(1), u"Première"_s);
  EXPECT_EQ(vue(0), u"Deuxième"_s);
  App().Magasin.QVSetRegString("HKEY_CURRENT_USER", Texte(CleRegistreFenlor), Texte(SecAstuce),
                               Texte(ClePosition), "50");
  EXPECT_EQ(vue(0), u"Troisième"_s) << "a place behind the end wraps";
}

TEST_F(Outils, AstuceAuDemarrageSeDesactive) {
  AstuceDemarrage(Ui, nullptr);
  MontreAstuce(Ui, nullptr);
  EXPECT_TRUE(robot.Vues.empty()) << "without a file nothing opens";
  PoseAstuces("Une\nDeux\n");
  robot.Attend("DialogAstuce", [](QDialog& d) {
    auto& boite = Trouve<QCheckBox>(d, "demarrage");
    EXPECT_TRUE(boite.isChecked() && boite.isEnabled());
    Clique(boite);
    d.reject();
  });
  AstuceDemarrage(Ui, nullptr);
  EXPECT_EQ(Registre("Démarrage"), "0");
  AstuceDemarrage(Ui, nullptr);
  EXPECT_EQ(robot.Vues.size(), 1u);
  robot.Attend("DialogAstuce", [](QDialog& d) {
    EXPECT_FALSE(Trouve<QCheckBox>(d, "demarrage").isChecked());
    d.reject();
  });
  MontreAstuce(Ui, nullptr);
}

TEST_F(Outils, AProposEtInformations) {
  ASSERT_TRUE(CreeExercice("2003"));
  CDialogAbout apropos(Ui, nullptr);
  QString texte;
  for (const QLabel* label : apropos.findChildren<QLabel*>()) {
    texte += label->text() + u'\n';
    EXPECT_EQ(label->palette().windowText(), apropos.palette().windowText()) << "not faint";
  }
  for (const QString& attendu : {u"5.0.235"_s, u"GPL-3.0-or-later"_s})
    EXPECT_TRUE(texte.contains(attendu)) << attendu.toStdString();

  CDialogInfoSystem informations(Ui, nullptr);
  Clique(Trouve<QAbstractButton>(informations, "copier"));
  const QString copie = QApplication::clipboard()->text();
  for (const QString& attendu :
       {u"5.0.235"_s, QString::fromStdString(App().PathCabinet), QString::fromStdString(App().PathExercice),
        QString::fromStdString(App().PathProgrammes), u"Nombre d'exercices : 1"_s,
        u"Exercice ouvert : 2003"_s, u"Mo libres"_s})
    EXPECT_TRUE(copie.contains(attendu)) << attendu.toStdString() << "\n" << copie.toStdString();
}

QString LitPageAide(const QString& fichier) {
  QFile page(u":/aide/"_s + fichier);
  return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

TEST_F(Outils, LiensDeLAideMenentQuelquePart) {
  CFenetreAide fenetre(Ui, nullptr);  // makes the pages known
  const auto existe = [](const QString& fichier, const QString& ancre) {
    const QString page = LitPageAide(fichier);
    return !page.isEmpty() && (ancre.isEmpty() || page.contains(u"name=\"%1\""_s.arg(ancre)));
  };
  const auto sommaire = QJsonDocument::fromJson(LitPageAide(u"sommaire.json"_s).toUtf8());
  for (const QString& nom : sommaire[u"fenetres"_s].toObject().keys()) {
    const QUrl adresse(AdresseAide(nom));
    EXPECT_TRUE(existe(adresse.path(), adresse.fragment())) << nom.toStdString();
  }
  static const QRegularExpression lien(u"href=\"([^\"#]*)#?([^\"]*)\""_s),
      balise(u"<(/?)([a-z0-9]+)[^>]*>"_s);
  std::set<QString> pages, cites = {u"index.html"_s};
  for (const PageAide& page : PagesAide()) pages.insert(page.fichier);
  for (const QString& fichier : pages) {
    const QString page = LitPageAide(fichier);
    ASSERT_FALSE(page.isEmpty()) << fichier.toStdString();
    for (const auto& trouve : lien.globalMatch(page)) {
      const QString vers = trouve.captured(1).isEmpty() ? fichier : trouve.captured(1);
      EXPECT_TRUE(existe(vers, trouve.captured(2)))
          << fichier.toStdString() << ": " << trouve.captured(0).toStdString();
      if (vers != fichier) cites.insert(vers);
    }
    QStringList ouvertes;
    for (const auto& b : balise.globalMatch(page)) {
      if (b.captured(2) == u"meta"_s || b.captured(2) == u"br"_s) continue;
      if (b.captured(1).isEmpty()) {
        ouvertes += b.captured(2);
      } else {
        ASSERT_FALSE(ouvertes.isEmpty()) << fichier.toStdString();
        EXPECT_EQ(ouvertes.takeLast(), b.captured(2)) << fichier.toStdString() << " at " << b.capturedStart();
      }
    }
    EXPECT_TRUE(ouvertes.isEmpty()) << fichier.toStdString();
    EXPECT_FALSE(page.contains(u"color"_s)) << fichier.toStdString() << ": a fixed colour";
  }
  EXPECT_TRUE(cites == pages) << "a page that no other one leads to, or that is not in the list";
}

TEST_F(Outils, AideMontreLaPageDeLaFenetre) {
  CFenetreAide fenetre(Ui, nullptr);
  auto& texte = Trouve<QTextBrowser>(fenetre, "texte");
  auto& sommaire = Trouve<QTreeWidget>(fenetre, "sommaire");
  fenetre.Montre(u"PageOptionTVA"_s);
  EXPECT_EQ(texte.source().toString(), u"qrc:/aide/options.html#tva"_s);
  EXPECT_EQ(sommaire.currentItem()->text(0), u"Les options"_s);
  fenetre.Montre(u"DialogInconnu"_s);
  EXPECT_TRUE(texte.toPlainText().startsWith(u"Aide de Fenlor"_s));
  fenetre.show();
  Clique(Trouve<QAbstractButton>(fenetre, "precedent"));
  EXPECT_EQ(texte.source().toString(), u"qrc:/aide/options.html#tva"_s);
  Clique(Trouve<QAbstractButton>(fenetre, "suivant"));
  EXPECT_EQ(texte.source().fileName(), u"index.html"_s);

  fenetre.Montre(u"DialogRaccourcis"_s);
  for (const Commande& commande : TableCommandes())
    if (commande.action && *commande.raccourci) {
      const QString touches =
          QKeySequence(QString::fromLatin1(commande.raccourci), QKeySequence::PortableText)
              .toString(QKeySequence::NativeText);
      EXPECT_TRUE(texte.toPlainText().contains(touches)) << commande.raccourci;
    }
}

TEST_F(Outils, AideResteUtilisableDevantUnFormulaire) {
  QWidget cadre;
  CFenetreAide fenetre(Ui, &cadre);
  cadre.show();
  QDialog formulaire(&cadre);
  formulaire.setObjectName(u"DialogEssai"_s);
  robot.Attend("DialogEssai", [&](QDialog& d) {
    fenetre.Montre(u"DialogPassword"_s);
    EXPECT_EQ(fenetre.windowHandle()->transientParent(), d.windowHandle());
    d.reject();
  });
  formulaire.exec();
  EXPECT_TRUE(fenetre.isVisible());
  EXPECT_EQ(fenetre.windowHandle()->transientParent(), cadre.windowHandle());
}

TEST_F(Outils, AideCherchePartout) {
  CFenetreAide fenetre(Ui, nullptr);
  auto& texte = Trouve<QTextBrowser>(fenetre, "texte");
  auto& sommaire = Trouve<QTreeWidget>(fenetre, "sommaire");
  auto& recherche = Trouve<QLineEdit>(fenetre, "recherche");
  const auto visibles = [&] {
    std::set<QString> titres;
    for (QTreeWidgetItemIterator i(&sommaire, QTreeWidgetItemIterator::NotHidden); *i; ++i)
      if ((*i)->font(0).bold()) titres.insert((*i)->text(0));
    return titres;
  };
  recherche.setText(u"DEGREVEMENT"_s);
  EXPECT_TRUE(visibles().empty());
  recherche.setText(u"pave numerique"_s);
  EXPECT_EQ(visibles(), (std::set<QString>{u"Le clavier"_s, u"Les préférences"_s}));
  EXPECT_EQ(texte.source().fileName(), u"clavier.html"_s);
  ASSERT_FALSE(texte.extraSelections().isEmpty());
  EXPECT_EQ(texte.extraSelections().front().cursor.selectedText(), u"pavé numérique"_s);
  recherche.setText(u"numerique pave"_s);
  EXPECT_EQ(texte.extraSelections().size(), 2);
  recherche.setText(u"mot de passe"_s);
  EXPECT_EQ(
      texte.extraSelections().size() ? texte.extraSelections().front().cursor.selectedText() : QString(),
      u"mot de passe"_s);
  recherche.clear();
  EXPECT_TRUE(texte.extraSelections().isEmpty());
  EXPECT_FALSE(sommaire.topLevelItem(0)->isHidden());
}

}  // namespace
}  // namespace fenlor::test
