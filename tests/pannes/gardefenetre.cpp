// gardefenetre CABINET FOLDER [restaure]
// Clicks through the assistant of a backup into the folder, again and again, or once through that of a
// restoration of the only archive in it, offscreen, until it is killed. Says "prêt" before the first click.
#include <unistd.h>

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>
#include <QWizard>

#include "forms/garde/qvbwizard.h"
#include "garde/optionssauvegarde.h"
#include "garde/restes.h"
#include "pannes/fenetretuee.h"
#include "session/exercices.h"

namespace fenlor {
namespace {

using pannes::Abandonne;

/// The button of a page that leads on.
void Avance(QWizard& wizard) {
  for (const char* nom : {"faire", "suivant", "fermer"}) {
    QAbstractButton* bouton = wizard.findChild<QAbstractButton*>(QLatin1String(nom));
    if (!bouton || !bouton->isVisible()) continue;
    if (!bouton->isEnabled()) Abandonne(std::string("cannot press ") + nom);
    bouton->click();
    return;
  }
  Abandonne("no button");
}

int Garde(const std::string& cabinet, const std::string& dossier, bool restaure) {
  pannes::FenetreTuee session(cabinet);
  session.dialogue.Reponse = RepOui;  // the assets shall come back, too
  if (!session.app.Dit(OuvreExercice(session.app, "2003"))) Abandonne("no exercice");
  RangeRestes(session.app);
  if (!session.app.Dit(RetientDossier(session.app, dossier))) return 3;
  if (write(STDOUT_FILENO, "prêt\n", 6) < 0) return 0;

  QTimer personne;
  bool clique = false;
  QObject::connect(&personne, &QTimer::timeout, [&] {
    QWizard* wizard = qobject_cast<QWizard*>(QApplication::activeModalWidget());
    if (!wizard || clique) return;
    clique = true;
    Avance(*wizard);
    clique = false;
  });
  personne.start(1);
  if (restaure) {
    CommandeRestauration(session.ui);
    return 0;
  }
  for (;;) CommandeSauvegarde(session.ui);
}

}  // namespace
}  // namespace fenlor

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() < 3) return 2;
  return fenlor::Garde(arguments[1].toStdString(), arguments[2].toStdString(), arguments.size() > 3);
}
