// Access keys in the form of an entry.
#include "forms/journal/formeecriture.h"

namespace fenlor::test {

TEST_F(FormeEcriture, UneToucheDAccesAgitAussitot) {
  auto f = Remplie(JournalRecettes, u"7065"_s, u"20"_s);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_E, Qt::AltModifier);
  Frappe(u"7"_s);
  EcritureLue lue;
  ASSERT_NE(f->Derniere(), 0u) << "not saved when the next key came";
  ASSERT_FALSE(LitEcriture(App(), f->Derniere(), lue));
  EXPECT_EQ(lue.saisie.montants.ttc, 20);
  EXPECT_EQ(Lu(*f, "jour") + Lu(*f, "ttc"), u"7"_s) << "the next entry begins";
}

TEST_F(FormeEcriture, UnChoixSePrendParSaTouche) {
  auto f = Remplie(JournalRecettes, u"7065"_s, u"20"_s);
  for (int i = 0; i < 2; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(Coche(*f, "autre"));
    EXPECT_EQ(Focus(*f), "autre") << "and no other input has its key";
  }
  EXPECT_EQ(QKeySequence::mnemonic(Trouve<QPushButton>(*f, "aide").text()),
            QKeySequence(Qt::ALT | Qt::Key_I));
}

}  // namespace fenlor::test
