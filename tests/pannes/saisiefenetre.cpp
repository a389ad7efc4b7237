// saisiefenetre CABINET FIRST [suspens|ligne]
// Types receipts into the form of the journal window, key by key, offscreen, until it is killed. Each
// entry that the form has cleared itself for is told on a line of its own, `{"mouvement":..}`. Labels
// are "Piece N", N from FIRST on. With "suspens" nothing is saved: a label is told once its field was left;
// with "ligne" it is that of a line of an opération diverse, whose form is never left.
#include <unistd.h>

#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <string>

#include "forms/journal/dialogecriture.h"
#include "forms/journal/dialogmouvement.h"
#include "forms/journal/ecritureview.h"
#include "pannes/fenetretuee.h"
#include "session/exercices.h"

namespace fenlor {

namespace {

using pannes::Abandonne;

void Touche(Qt::Key touche) {
  if (QWidget* champ = QApplication::focusWidget()) QTest::keyClick(champ, touche);
}

void Frappe(const std::string& texte) {
  for (const char c : texte) QTest::keyClick(QApplication::focusWidget(), c);
}

void TabVers(const char* nom) {
  for (int i = 0; i < 30; ++i) {
    if (QApplication::focusWidget() && QApplication::focusWidget()->objectName() == QLatin1String(nom))
      return;
    Touche(Qt::Key_Tab);
  }
  Abandonne(std::string("no field ") + nom);
}

void Dit(const std::string& ligne) {
  if (write(STDOUT_FILENO, ligne.data(), ligne.size()) < 0) std::exit(0);
}

/// In the form of a line, over that of its entry.
[[noreturn]] void TapeLigne() {
  for (unsigned n = 1;; ++n) {
    const std::string libelle = "Piece " + std::to_string(n);
    TabVers("libelle");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    Frappe(libelle);
    TabVers("debit");
    Dit("{\"libelle\":\"" + libelle + "\"}\n");
  }
}

void OuvreUneLigne(ContexteUi& ui) {
  OuvertureEcriture ouverture;
  ouverture.journal = JournalOD;
  ouverture.date = FaitDate(15, 3, 2003);
  CDialogMouvement forme(ui, ouverture);
  forme.setModal(false);
  forme.show();
  forme.activateWindow();
  QApplication::processEvents();
  QTimer::singleShot(0, [] {
    QApplication::processEvents();
    TapeLigne();
  });
  TabVers("lignes");
  Touche(Qt::Key_Insert);
  Abandonne("no form of a line");
}

int Tape(const std::string& cabinet, unsigned premiere, const std::string& mode) {
  const bool suspens = mode == "suspens";
  pannes::FenetreTuee session(cabinet);
  CFenlorApp& app = session.app;
  ContexteUi& ui = session.ui;
  if (!app.Dit(OuvreExercice(app, "2003"))) Abandonne("no exercice");

  if (mode == "ligne") OuvreUneLigne(ui);

  CEcritureView vue(ui, JournalRecettes);
  vue.resize(900, 500);
  vue.Charge();
  vue.show();
  const std::vector<CompteOffert> comptes = ComptesParCode(app, Recette);
  const std::vector<CompteOffert> tresorerie = ComptesParCode(app, Tresorerie);
  if (comptes.empty() || tresorerie.empty()) Abandonne("no accounts");
  OuvertureEcriture ouverture;
  ouverture.date = FaitDate(15, 3, 2003);
  ouverture.tresorerie = tresorerie.front().compte;
  ouverture.proprietaire = &vue;
  CDialogEcriture forme(ui, ouverture);
  forme.setModal(false);
  forme.show();
  forme.activateWindow();
  QApplication::processEvents();

  for (unsigned n = premiere;; ++n) {
    const u32 avant = forme.Derniere();
    const std::string libelle = "Piece " + std::to_string(n);
    const std::string ttc = std::to_string(10 + n % 500) + ",25";
    TabVers("code");
    Frappe(comptes.front().code);
    TabVers("libelle");
    if (suspens) QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
    Frappe(libelle);
    TabVers("ttc");
    if (suspens) {
      Dit("{\"libelle\":\"" + libelle + "\"}\n");
      continue;
    }
    Frappe(ttc);
    TabVers("ok");
    Touche(Qt::Key_Enter);
    if (forme.Derniere() == avant || !forme.findChild<QLineEdit*>(QStringLiteral("ttc"))->text().isEmpty())
      Abandonne("the form has not cleared itself");
    Dit("{\"mouvement\":" + std::to_string(forme.Derniere()) + ",\"libelle\":\"" + libelle +
        "\",\"ttc\":" + std::to_string(10 + n % 500) + ".25}\n");
  }
}

}  // namespace

}  // namespace fenlor

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 3) return 2;
  return fenlor::Tape(arguments[1].toStdString(), arguments[2].toUInt(), arguments.value(3).toStdString());
}
