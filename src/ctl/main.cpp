#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include "ctl/ctl.h"
#include "store/urgence.h"

#ifdef FENLOR_PDF
#include <QGuiApplication>

#include "forms/graphiques/pagegraphique.h"
#include "forms/reports/ecritpdf.h"
#include "reports/etatcomptable.h"
#endif

namespace {

/// Keeps the numbers of the standard streams taken, or a file of the practice
/// could get one of them and be written over with messages. A closed output
/// stays one that fails.
void GardeFluxStandard() {
  for (int flux = 0; flux <= 2; ++flux)
    if (fcntl(flux, F_GETFD) == -1) (void)!open("/dev/null", flux == 2 ? O_WRONLY : O_RDONLY);
}

/// Folder of a template in place of the built-in one: FENLOR_PROGRAMMES, else beside
/// the program or in the share folder of its prefix; empty when none holds one.
std::string DossierProgrammes() {
  if (const char* impose = std::getenv("FENLOR_PROGRAMMES"); impose && *impose) return impose;
  fenlor::SystemePosix systeme;
  char chemin[4096];
  const ssize_t n = readlink("/proc/self/exe", chemin, sizeof chemin);
  if (n <= 0) return {};
  const std::string ici = fenlor::DossierDe(std::string(chemin, static_cast<std::size_t>(n)));
  for (const std::string& dossier : {ici, fenlor::Joint(ici, "../share/fenlor")})
    if (systeme.Existe(fenlor::Joint(dossier, "defaut.qvc"))) return dossier;
  return {};
}

#ifndef FENLOR_PDF
/// Pages are painted by a program of its own, so that all other commands start without the
/// toolkit. Returns when there is nothing to paint, or no such program.
void CedeAuPdf(int argc, char** argv) {
  char chemin[4096];
  for (int i = 1; i < argc; ++i) {
    const std::string_view mot = argv[i];
    if (mot != "--pdf" && !mot.starts_with("--pdf=")) continue;
    const ssize_t n = readlink("/proc/self/exe", chemin, sizeof chemin);
    if (n <= 0) return;
    const std::string peintre = std::string(chemin, static_cast<std::size_t>(n)) + "-pdf";
    execv(peintre.c_str(), argv);
    return;
  }
}
#else
/// Fonts need an application, which needs no screen.
template <class Acte>
bool AvecFontes(const Acte& acte) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  // The toolkit's remarks on the desktop are nothing to the user of a terminal.
  qInstallMessageHandler([](QtMsgType sorte, const QMessageLogContext&, const QString& texte) {
    if (sorte == QtCriticalMsg || sorte == QtFatalMsg) std::cerr << texte.toStdString() << '\n';
  });
  int argc = 1;
  char nom[] = "fenlorctl";
  char* argv[] = {nom, nullptr};
  const QGuiApplication application(argc, argv);
  return acte();
}
bool EcritPdf(fenlor::CFenlorApp& app, fenlor::CEtatComptable& etat, const std::string& fichier,
              int descripteur) {
  return AvecFontes([&] {
    return fichier.empty() ? fenlor::EcritPdf(app, etat, etat.TitreDocument(), descripteur)
                           : fenlor::EcritPdf(app, etat, etat.TitreDocument(), fichier);
  });
}
bool EcritPdfGraphique(fenlor::CFenlorApp& app, const fenlor::SerieGraphique& serie,
                       fenlor::GenreGraphique genre, const std::string& fichier, int descripteur) {
  return AvecFontes([&] { return fenlor::EcritPdfGraphique(app, serie, genre, fichier, descripteur); });
}
#endif

}  // namespace

int main(int argc, char** argv) {
  GardeFluxStandard();
  std::signal(SIGPIPE, SIG_IGN);
  fenlor::InstalleUrgences();
  std::ios::sync_with_stdio(false);
  std::cin.tie(nullptr);
  fenlor::OptionsCtl options;
  options.pathProgrammes = DossierProgrammes();
#ifdef FENLOR_PDF
  options.ecritPdf = EcritPdf;
  options.ecritPdfGraphique = EcritPdfGraphique;
#else
  CedeAuPdf(argc, argv);
#endif
  return fenlor::ExecuteCtl({argv + (argc > 0), argv + argc}, std::cin, std::cout, std::cerr, options);
}
