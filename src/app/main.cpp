#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <clocale>
#include <csignal>
#include <iostream>

#include "app/programme.h"
#include "store/registre.h"
#include "store/urgence.h"
#include "ui/preferences.h"
#include "ui/touchesacces.h"
#include "ui/traductions.h"

namespace {

/// Folder of the tips and of a template in place of the built-in one: FENLOR_PROGRAMMES,
/// else beside the program or in the share folder of its prefix.
std::string DossierProgrammes() {
  if (const QByteArray impose = qgetenv("FENLOR_PROGRAMMES"); !impose.isEmpty()) return impose.toStdString();
  const QDir ici(QApplication::applicationDirPath());
  for (const QString& dossier : {ici.path(), ici.filePath(QStringLiteral("../share/fenlor"))})
    if (QFile::exists(QDir(dossier).filePath(QStringLiteral("zntips.txt"))))
      return QFile::encodeName(QDir::cleanPath(dossier)).toStdString();
  return QFile::encodeName(ici.path()).toStdString();
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  fenlor::InstalleUrgences();
  fenlor::OptionsProgramme options;
  options.ligne = fenlor::LitLigneCommande({argv + (argc > 0 ? 1 : 0), argv + argc});
  if (options.ligne.aide) {
    std::cout << fenlor::AideLigneCommande();
    return 0;
  }
  if (options.ligne.version) {
    std::cout << "Fenlor " << fenlor::VersionProgramme << '.' << fenlor::RevisionProgramme << '.'
              << fenlor::BuildProgramme << '\n';
    return 0;
  }
  if (!options.ligne.inconnus.empty()) {
    for (const std::string& inconnu : options.ligne.inconnus)
      std::cerr << "Argument inconnu : " << inconnu << '\n';
    std::cerr << '\n' << fenlor::AideLigneCommande();
    return 2;
  }

  QApplication application(argc, argv);
  // A dark palette where the desktop has none to offer, for pictures and trials.
  if (qgetenv("FENLOR_PALETTE") == "sombre") {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(fenlor::PaletteSombre());
  }
  const fenlor::TouchesAcces touches;
  // Amounts are formatted by the value functions alone.
  std::setlocale(LC_NUMERIC, "C");
  QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
  QApplication::setApplicationName(QStringLiteral("Fenlor"));
  QApplication::setOrganizationName(QStringLiteral("Orvelia"));
  const fenlor::Traductions traductions;

  options.pathProgrammes = DossierProgrammes();
  const std::string dossier = fenlor::DossierUtilisateur();
  if (QDir().mkpath(QFile::decodeName(dossier.c_str()))) {
    const std::string note = fenlor::Joint(dossier, "arret.txt");
    options.note = fenlor::PrendNote(note);
    fenlor::InstalleUrgences(note);
  }
  fenlor::Programme programme(std::move(options));
  if (!programme.InitInstance()) return programme.AutreInstance() || programme.MiseAJourLancee() ? 0 : 1;
  const int statut = QApplication::exec();
  programme.ExitInstance();
  return statut;
}
