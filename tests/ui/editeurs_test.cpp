
#include <QCalendarWidget>
#include <QVBoxLayout>

#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "outils/uidetest.h"
#include "ui/editeurs.h"

namespace fenlor::test {

namespace {

constexpr Date Jour15Mars = FaitDate(15, 3, 2003);

/// Editors are shown in a window with one more field to go to.
class EditeursTest : public UiDeTest {
 protected:
  void Montre(QWidget& champ) {
    m_fenetre.layout()->addWidget(&champ);
    m_fenetre.layout()->addWidget(&Ailleurs);
    MontreFenetre(m_fenetre);
    Va(champ);
  }
  void Colle(QLineEdit& champ, const QString& texte) {
    QApplication::clipboard()->setText(texte);
    Va(champ);
    champ.selectAll();
    QTest::keyClick(&champ, Qt::Key_V, Qt::ControlModifier);
  }
  void Preference(const char* cle, bool oui) {
    ASSERT_TRUE(App().Reglages.EcritIni("Préférences"_w, DepuisUtf8(cle).value(), oui ? "Oui" : "Non"));
  }
  QWidget* Popup() {
    QApplication::processEvents();
    return QApplication::activePopupWidget();
  }

 private:
  struct Fenetre : QWidget {
    Fenetre() { new QVBoxLayout(this); }
  };
  Fenetre m_fenetre;

 protected:
  EditeurTexte Ailleurs;
};

}  // namespace

TEST_F(EditeursTest, TextHoldsNothingButWindows1252) {
  EditeurTexte champ;
  champ.setMaxLength(12);
  Montre(champ);
  Tape(champ, u"Noël à 5 €"_s);
  EXPECT_EQ(champ.Valeur(), "Noël à 5 €"_w);
  Tape(champ, u"日本Ω1"_s);
  EXPECT_EQ(champ.Valeur(), "1");
  Colle(champ, u"a\tb\nΩmé😀ga"_s);
  EXPECT_EQ(champ.Valeur(), "a b méga"_w);
  Tape(champ, u"1234567890123456"_s);
  EXPECT_EQ(champ.Valeur(), "123456789012");
}

TEST_F(EditeursTest, CapitalsAreMadeAndCanBeUndone) {
  EditeurTexte champ;
  champ.PoseMajuscules(true);
  Montre(champ);
  Tape(champ, u"héron"_s);
  EXPECT_EQ(champ.Valeur(), "HÉRON"_w);
  QTest::keyClick(&champ, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(champ.text().isEmpty() || champ.text() == u"HÉRO"_s) << champ.text().toStdString();
  Colle(champ, u"çà"_s);
  EXPECT_EQ(champ.Valeur(), "ÇÀ"_w);
}

TEST_F(EditeursTest, LongTextCountsLineEndsAsTwoBytes) {
  EditeurTexteLong champ;
  champ.PoseLimite(10);
  Montre(champ);
  Tape(champ, u"Ω€fghijklmn"_s);
  EXPECT_EQ(champ.Valeur(), "€fghijklmn"_w);
  champ.Pose("abc\r\nefghi");
  champ.moveCursor(QTextCursor::End);
  QTest::keyClicks(&champ, u"x"_s);
  EXPECT_EQ(champ.Valeur(), "abc\r\nefghi");
  QTest::keyClick(&champ, Qt::Key_Backspace);
  QTest::keyClick(&champ, Qt::Key_Return);
  EXPECT_EQ(champ.Valeur(), "abc\r\nefgh") << "a line end needs room for two";

  QApplication::clipboard()->setText(u"1\r\n2\n34567890123"_s);
  champ.selectAll();
  champ.paste();
  EXPECT_EQ(champ.Valeur(), "1\r\n2\r\n3456");
  champ.Pose("Dr\r\nMartin"_w);
  EXPECT_EQ(champ.Valeur(), "Dr\r\nMartin");
  QTest::keyClick(&champ, Qt::Key_Tab);
  EXPECT_TRUE(Ailleurs.hasFocus()) << "Tab leaves the field";
  champ.Pose("Dr\r\nMart");
  champ.selectAll();
  QTest::keyClick(&champ, Qt::Key_Return);
  EXPECT_EQ(champ.Valeur(), "Dr\r\nMart\r\n") << "Enter takes nothing away";
  champ.Pose("Dr\r\nMartin");
  EXPECT_EQ(champ.Valeur(), "Dr\r\nMartin");
}

TEST_F(EditeursTest, AmountAsItIsTypedAndAsItIsShown) {
  struct Cas {
    QStringView frappe;
    const char* texte;  ///< once the field was left
    f64 valeur;
  };
  const Cas cas[] = {
      {u"1234.5", "1234,50", 1234.5},
      {u"1.250,50", "1250,50", 1250.5},
      {u"-1 234 567,80 €", "-1234567,80", -1234567.8},
      {u".5", "0,50", 0.5},
      {u"0", "", 0},
      {u"", "", 0},
      // What cannot be read stays as it was typed.
      {u"120+30", "120+30", 0},
      {u"25,5,5abc", "25,5,5abc", 0},
      {u"1e9", "1e9", 0},
      {u"x12", "x12", 0},
      {u"9999999999999999", "9999999999999999", 0},
  };
  EditeurMontant champ(App().Reglages);
  champ.PoseNegatif(true);
  champ.PoseLimite(16);
  Montre(champ);
  EXPECT_TRUE(champ.alignment() & Qt::AlignRight);
  for (const Cas& c : cas)
    for (const bool colle : {false, true}) {
      SCOPED_TRACE(c.frappe.toString().toStdString() + (colle ? " pasted" : " typed"));
      colle ? Colle(champ, c.frappe.toString()) : Tape(champ, c.frappe.toString());
      EXPECT_DOUBLE_EQ(champ.Valeur(), c.valeur);
      Va(Ailleurs);
      EXPECT_EQ(champ.text().toStdString(), c.texte);
      EXPECT_EQ(champ.Refus() != 0, c.valeur == 0 && c.texte[0] != 0);
    }
  champ.PoseDecimales(0);
  Tape(champ, u"-12,4"_s);
  EXPECT_DOUBLE_EQ(champ.Valeur(), -12.4);
  Va(Ailleurs);
  EXPECT_EQ(champ.text(), u"-12"_s);
}

TEST_F(EditeursTest, LimitsOfAnAmount) {
  EditeurMontant champ(App().Reglages);
  Montre(champ);
  const auto refus = [&](const char16_t* texte) {
    Tape(champ, QString::fromUtf16(texte));
    return champ.Refus();
  };
  EXPECT_EQ(refus(u"20000000000000"), 0u);
  EXPECT_EQ(refus(u"20000000000001"), unsigned{ErrMontantBornes});
  EXPECT_EQ(refus(u"-1"), unsigned{ErrMontantBornes}) << "no sign where none is permitted";
  champ.PoseLimite(6);
  EXPECT_EQ(refus(u"999,99"), 0u);
  EXPECT_EQ(refus(u"1000"), unsigned{ErrMontantBornes}) << "1000,00 has seven characters";
  champ.Pose(4000);
  EXPECT_EQ(champ.text(), u"4000,00"_s) << "a stored value is shown whole";
  EXPECT_EQ(champ.Refus(), 0u) << "and not refused before it is changed";
}

TEST_F(EditeursTest, KeypadPointFollowsThePreference) {
  EditeurMontant champ(App().Reglages);
  Montre(champ);
  const auto pave = [&] {
    Tape(champ, u"1"_s);
    QTest::keyClick(&champ, Qt::Key_Period, Qt::KeypadModifier);
    QTest::keyClicks(&champ, u"5"_s);
    return champ.text();
  };
  Preference("Virgule", true);
  EXPECT_EQ(pave(), u"1,5"_s);
  Preference("Virgule", false);
  EXPECT_EQ(pave(), u"1.5"_s);
  Va(Ailleurs);
  EXPECT_EQ(champ.text(), u"1,50"_s);

  Tape(champ, u"0"_s);
  Preference("Zéro dans boite de dialogue", true);
  Va(Ailleurs);
  EXPECT_EQ(champ.text(), u"0.00"_s);
}

TEST_F(EditeursTest, DatesAreReadInEveryForm) {
  struct Cas {
    QStringView frappe;
    Date date;
  };
  const Cas cas[] = {
      {u"0105", FaitDate(1, 5, 2003)},
      {u"010504", FaitDate(1, 5, 2004)},
      {u"01052004", FaitDate(1, 5, 2004)},
      {u"1/5", FaitDate(1, 5, 2003)},
      {u"1/5/4", FaitDate(1, 5, 2004)},
      {u"01/05/2004", FaitDate(1, 5, 2004)},
      {u"1.5", FaitDate(1, 5, 2003)},
      {u"1 5", FaitDate(1, 5, 2003)},
      {u"1-5-49", FaitDate(1, 5, 2049)},
      {u"1/5/50", FaitDate(1, 5, 1950)},
      {u"29/02/2004", FaitDate(29, 2, 2004)},
      {u"29/02", 0},
      {u"31/02/2003", 0},
      {u"1/13", 0},
      {u"00/01", 0},
      {u"1", 0},
      {u"105", 0},
      {u"1/5/003", 0},
      {u"1/2/3/4", 0},
      {u"001/5", 0},
      {u"//", 0},
      {u"", 0},
  };
  for (const Cas& c : cas)
    EXPECT_EQ(StrDate(EditeurDate::Lit(c.frappe.toString(), Jour15Mars)), StrDate(c.date))
        << c.frappe.toString().toStdString();
  EXPECT_EQ(EditeurDate::Lit(u"0105"_s, 0), 0u) << "no year to take";
}

TEST_F(EditeursTest, DateFieldWritesWhatItRead) {
  EditeurDate champ;
  champ.PoseReference(Jour15Mars);
  Montre(champ);
  Tape(champ, u"mardi 0105"_s);
  Va(Ailleurs);
  EXPECT_EQ(champ.text(), u"01/05/2003"_s);
  Tape(champ, u"31/02"_s);
  Va(Ailleurs);
  EXPECT_EQ(champ.text(), u"31/02"_s);
  EXPECT_FALSE(champ.EstDate() || champ.EstVide());
  EXPECT_EQ(champ.Valeur(), 0u);
  champ.Pose(0);
  EXPECT_TRUE(champ.EstVide());
}

TEST_F(EditeursTest, DateStepsWithTheKeys) {
  struct Cas {
    Date depart;
    Qt::Key touche;
    const char* texte;
  };
  const Cas cas[] = {
      {FaitDate(31, 12, 2003), Qt::Key_Up, "01/01/2004"},
      {FaitDate(1, 3, 2004), Qt::Key_Down, "29/02/2004"},
      {FaitDate(31, 1, 2003), Qt::Key_PageUp, "28/02/2003"},
      {FaitDate(31, 3, 2003), Qt::Key_PageDown, "28/02/2003"},
      {FaitDate(15, 1, 2003), Qt::Key_PageDown, "15/12/2002"},
      {0, Qt::Key_Up, "15/03/2003"},
      {FaitDate(31, 12, 9999), Qt::Key_Up, "31/12/9999"},
  };
  EditeurDate champ;
  champ.PoseReference(Jour15Mars);
  int changements = 0;
  QObject::connect(&champ, &QLineEdit::textEdited, &champ, [&] { ++changements; });
  Montre(champ);
  for (const Cas& c : cas) {
    champ.Pose(c.depart);
    QTest::keyClick(&champ, c.touche);
    EXPECT_EQ(champ.text().toStdString(), c.texte);
  }
  EXPECT_EQ(changements, 6) << "a step is an edit, and none at the end of the calendar";
  champ.setReadOnly(true);
  QTest::keyClick(&champ, Qt::Key_Down);
  EXPECT_EQ(champ.text(), u"31/12/9999"_s);
}

TEST_F(EditeursTest, CalendarIsFrenchAndAnswersKeys) {
  EditeurDate champ;
  champ.PoseReference(Jour15Mars);
  Montre(champ);
  QTest::keyClick(&champ, Qt::Key_F4);
  auto* calendrier = qobject_cast<QCalendarWidget*>(Popup());
  ASSERT_TRUE(calendrier);
  EXPECT_EQ(calendrier->firstDayOfWeek(), Qt::Monday);
  EXPECT_EQ(calendrier->locale().language(), QLocale::French);
  EXPECT_EQ(calendrier->selectedDate(), QDate(2003, 3, 15));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(Popup());
  EXPECT_TRUE(champ.EstVide());

  QTest::keyClick(&champ, Qt::Key_Down, Qt::AltModifier);
  ASSERT_TRUE(Popup());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_FALSE(Popup());
  EXPECT_EQ(champ.text(), u"16/03/2003"_s);
  EXPECT_TRUE(champ.hasFocus());
}

TEST_F(EditeursTest, ChoiceIsMadeByTyping) {
  EditeurChoix champ;
  champ.Ajoute("Chèque"_w, "1");
  champ.Ajoute("Virement", "4");
  champ.Ajoute("Espèces"_w, "2");
  Montre(champ);
  EXPECT_EQ(champ.Valeur(), "1");
  QTest::keyClicks(&champ, u"vi"_s);
  EXPECT_EQ(champ.Valeur(), "4");
  EXPECT_TRUE(champ.Choisit("2"));
  EXPECT_EQ(champ.currentText(), u"Espèces"_s);
  EXPECT_FALSE(champ.Choisit("9"));
  EXPECT_EQ(champ.Valeur(), "");
}

}  // namespace fenlor::test
