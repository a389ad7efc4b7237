// echeancesfenetre CABINET [avant-consultation]
// Opens the exercice as the program does, walks what is due and presses "&Enregistrer" in the form of what is
// announced, offscreen, until it is killed or through. Tells "pret" before the walk. With a second word it
// kills itself as the day of the walk is to be noted.
#include <signal.h>
#include <unistd.h>

#include <QPushButton>
#include <QTimer>

#include "forms/auto/dialogautoecheance.h"
#include "forms/session/commandesexercice.h"
#include "outils/systemefautif.h"
#include "pannes/fenetretuee.h"

namespace fenlor::pannes {
namespace {

/// Dies of the first change of the settings once it is armed.
class SystemeMortel : public SystemeFautif {
 public:
  using SystemeFautif::SystemeFautif;
  bool Arme = false;
  int Renomme(const std::string& de, const std::string& vers) override {
    if (Arme && vers.ends_with("fenlor.ini")) kill(getpid(), SIGKILL);
    return SystemeFautif::Renomme(de, vers);
  }
};

void Vit(const std::string& cabinet, bool mortel) {
  SystemePosix posix;
  SystemeMortel systeme(posix);
  OptionsQVAPI options;
  options.systeme = &systeme;
  FenetreTuee session(cabinet, options);
  if (!OuvreOuReconstruit(session.ui, "2003")) Abandonne("no exercice");
  systeme.Arme = mortel;
  QTimer presse;
  QObject::connect(&presse, &QTimer::timeout, [] {
    QWidget* forme = QApplication::activeModalWidget();
    if (auto* ok = forme ? forme->findChild<QPushButton*>(QStringLiteral("ok")) : nullptr) ok->click();
  });
  presse.start(0);
  if (write(STDOUT_FILENO, "pret\n", 5) != 5) Abandonne("no output");
  CalculeEcheances(session.ui, false);
  if (!session.magasin.QVCloseSession()) Abandonne("the session does not end");
}

}  // namespace
}  // namespace fenlor::pannes

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 2) return 2;
  fenlor::pannes::Vit(arguments[1].toStdString(), arguments.size() > 2);
  return 0;
}
