#include "ui/cznsheet.h"

#include <QTabWidget>

#include "core/erreurssaisie.h"
#include "outils/uidetest.h"
#include "ui/editeurs.h"
#include "ui/formulaire.h"

using ::testing::Contains;

namespace fenlor::test {

namespace {

/// Notes what it is asked.
class PageEssai : public CZNPage {
 public:
  PageEssai(ContexteUi& contexte, const char* nom, std::vector<std::string>& traces)
      : CZNPage(contexte, QString::fromUtf8(nom), nom), m_traces(traces) {
    Formulaire{*this}.Champ(u"&Valeur :"_s, m_champ, "valeur").Limite(10).Pousse();
  }
  bool Charge() override { return Note("charge", Charges); }
  bool Controle() override {
    return Note("controle", Controles) || Refuse(Refus(ErrDateAvantEuro, "valeur"));
  }
  bool Enregistre() override { return Note("enregistre", Enregistres); }
  bool Charges = true, Controles = true, Enregistres = true;

 private:
  bool Note(const char* quoi, bool resultat) {
    m_traces.push_back(std::string(quoi) + " " + objectName().toStdString());
    return resultat;
  }
  std::vector<std::string>& m_traces;
  EditeurTexte m_champ;
};

class SheetEssai : public CZNSheet {
 public:
  SheetEssai(ContexteUi& contexte, std::vector<std::string>& traces)
      : CZNSheet(contexte, u"Feuille"_s, "SheetEssai"), m_traces(traces) {
    for (const char* nom : {"A", "B", "C"})
      AjoutePage(Pages.emplace_back(new PageEssai(contexte, nom, traces)));
    Fini({Pages[2], Pages[1], Pages[0]});
  }
  QTabWidget& Onglets() { return Trouve<QTabWidget>(*this, "onglets"); }
  std::vector<PageEssai*> Pages;

 protected:
  void Apres() override { m_traces.emplace_back("apres"); }

 private:
  std::vector<std::string>& m_traces;
};

class FeuilleTest : public UiDeTest {
 protected:
  std::vector<std::string> Traces;
};

}  // namespace

TEST_F(FeuilleTest, OnlyShownPagesAreReadCheckedAndSavedInTheirOrder) {
  SheetEssai feuille(Ui, Traces);
  robot.Attend("SheetEssai", [&](QDialog& dialogue) {
    VerifieFormulaire(dialogue);
    EXPECT_THAT(Traces, ElementsAre("charge A"));
    EXPECT_EQ(Focus(feuille), "valeur") << "the first field, not the tabs";
    Touche(feuille, Qt::Key_PageDown, Qt::ControlModifier);
    Touche(feuille, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(feuille.Onglets().currentIndex(), 2);
    Touche(feuille, Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
    Touche(feuille, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(feuille.Onglets().currentIndex(), 0);
    EXPECT_THAT(Traces, ElementsAre("charge A", "charge B", "charge C"));
    Traces.clear();
    Clique(Bouton(dialogue, u"&Ok"_s));
  });
  EXPECT_TRUE(feuille.Execute());
  EXPECT_THAT(Traces, ElementsAre("controle C", "controle B", "controle A", "enregistre C", "enregistre B",
                                  "enregistre A", "apres"));
}

TEST_F(FeuilleTest, RefusedPageComesToTheFrontAndNothingIsWritten) {
  SheetEssai feuille(Ui, Traces);
  feuille.Onglets().setCurrentIndex(1);
  MontreFenetre(feuille);
  EXPECT_THAT(Traces, ElementsAre("charge B"));
  feuille.Onglets().setCurrentIndex(0);
  feuille.Pages[1]->Controles = false;
  Traces.clear();
  Clique(Bouton(feuille, u"&Ok"_s));
  EXPECT_EQ(feuille.Onglets().currentIndex(), 1);
  EXPECT_TRUE(Trouve<QWidget>(*feuille.Pages[1], "valeur").hasFocus());
  EXPECT_THAT(Traces, ElementsAre("controle B"));
  EXPECT_TRUE(feuille.isVisible());

  feuille.Pages[1]->Controles = true;
  feuille.Pages[1]->Enregistres = false;
  Traces.clear();
  Clique(Bouton(feuille, u"&Ok"_s));
  EXPECT_THAT(Traces, ElementsAre("controle B", "controle A", "enregistre B"));
  EXPECT_TRUE(feuille.isVisible());
}

TEST_F(FeuilleTest, PageThatCannotBeReadIsLeftOut) {
  {
    SheetEssai feuille(Ui, Traces);
    feuille.Pages[0]->Charges = false;
    EXPECT_FALSE(feuille.Execute());
    EXPECT_THAT(Traces, ElementsAre("charge A"));
  }
  SheetEssai feuille(Ui, Traces);
  feuille.Pages[1]->Charges = false;
  robot.Attend("SheetEssai", [&](QDialog&) {
    QTest::keyClicks(feuille.focusWidget(), u"typed"_s);
    for (const int page : {0, 2, 0}) {
      Touche(feuille, Qt::Key_PageDown, Qt::ControlModifier);
      EXPECT_EQ(feuille.Onglets().currentIndex(), page) << "refused once, passed over from then on";
    }
    EXPECT_EQ(Trouve<EditeurTexte>(*feuille.Pages[0], "valeur").Valeur(), "typed");
    EXPECT_EQ(feuille.focusWidget(), &Trouve<QWidget>(*feuille.Pages[0], "valeur"));
    Clique(Bouton(feuille, u"&Ok"_s));
  });
  EXPECT_TRUE(feuille.Execute());
  EXPECT_THAT(Traces, ::testing::Not(Contains("enregistre B")));
}

}  // namespace fenlor::test
