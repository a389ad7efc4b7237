// Tests with windows run without a screen; FENLOR_ECRAN=1 shows them.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>
#include <clocale>
#include <cstdlib>

#include "ui/couleurs.h"
#include "ui/touchesacces.h"

int main(int argc, char** argv) {
  if (!std::getenv("FENLOR_ECRAN")) qputenv("QT_QPA_PLATFORM", "offscreen");
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  const fenlor::TouchesAcces touches;
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
  QApplication::setStyle(QStringLiteral("Fusion"));
  // As the program does: what the desktop has too faint is made to read well.
  QApplication::setPalette(fenlor::PaletteLisible(QApplication::palette()));
  return RUN_ALL_TESTS();
}
