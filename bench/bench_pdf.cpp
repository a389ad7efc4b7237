// bench_pdf [LINES [RUNS]]
// Writes a report of so many lines (60000) as a PDF file, beside a bare QPdfWriter that writes the same
// texts at the same places in the same run. It judges nothing.
#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <filesystem>
#include <vector>

#include "dialoguemuet.h"
#include "etatlivre.h"
#include "forms/reports/ecritpdf.h"
#include "pages/enregistreur.h"
#include "pages/page.h"
#include "store/texte1252.h"

namespace fenlor::bench {

namespace {

struct Dessin {
  std::vector<ElementPage> elements;
  u32 pages = 0;
};

/// What the report draws, once.
Dessin Enregistre(CEtatDoc& etat) {
  Enregistreur feuille = Enregistreur::A4(UnitesPeripherique, false);
  const MiseEnPage page = PreparePage(feuille, {}, false);
  const auto pages = PagineEtat(etat, etat.Mesures(), static_cast<u32>(page.lignesParPage));
  if (!pages) Echec("no pages");
  const ImpressionEtat impression{etat, *pages, page, {"Docteur", "Cabinet"}, FaitDate(15, 3, 2003)};
  for (u32 n = 1; n <= NombrePages(*pages); ++n) {
    feuille.Page = n;
    if (!DessinePage(impression, n, feuille)) Echec("no page");
  }
  return {std::move(feuille.Elements), NombrePages(*pages)};
}

/// The same texts and rules, and nothing that led to them.
void EcritNu(const Dessin& dessin, const QString& chemin) {
  QPdfWriter pdf(chemin);
  pdf.setPageSize(QPageSize(QPageSize::A4));
  pdf.setResolution(UnitesPeripherique);
  QPainter peintre(&pdf);
  QFont police(QStringLiteral("DejaVu Sans Mono"));
  police.setPixelSize(150);
  peintre.setFont(police);
  u32 page = 1;
  for (const ElementPage& element : dessin.elements) {
    for (; page < element.page; ++page) pdf.newPage();
    if (element.texte.empty())
      peintre.drawLine(element.cadre.gauche, element.cadre.haut, element.cadre.droite, element.cadre.haut);
    else
      peintre.drawText(element.cadre.gauche, element.cadre.haut,
                       QString::fromStdString(VersUtf8(element.texte)));
  }
}

int Principal(unsigned lignes, unsigned tours) {
  std::string dossier = (std::filesystem::temp_directory_path() / "fenlor-bench-XXXXXX").string();
  if (!mkdtemp(dossier.data())) Echec("no temporary directory");
  {
    QVAPI magasin;
    DialogueMuet dialogue;
    CFenlorApp app(magasin, dialogue);
    app.PathCabinet = dossier + "/cabinet";
    std::filesystem::create_directories(app.PathCabinet);
    if (!magasin.QVOpenSession(1) || !magasin.QVOpenCompta(app.PathCabinet, {})) Echec("no practice");
    EtatLivre etat(app, lignes);
    if (etat.OnNewDocument()) Echec("no report");
    const Dessin dessin = Enregistre(etat);
    const std::string chemin = dossier + "/etat.pdf";
    std::vector<double> nous, nus, rapports;
    for (unsigned tour = 0; tour <= tours; ++tour) {
      const double a = Duree([&] {
        if (!EcritPdf(app, etat, "Grand livre", chemin)) Echec("no file");
      });
      const double b = Duree([&] { EcritNu(dessin, QString::fromStdString(dossier + "/nu.pdf")); });
      if (tour == 0) continue;  // warms the fonts
      nous.push_back(a);
      nus.push_back(b);
      rapports.push_back(a / b);
    }
    std::printf(
        "%u pages, %zu texts and rules: %s, %.0f pages a second;  bare QPdfWriter %s, %.0f;  ratio %.2f\n",
        dessin.pages, dessin.elements.size(), EnTemps(Mediane(nous)).c_str(), dessin.pages / Mediane(nous),
        EnTemps(Mediane(nus)).c_str(), dessin.pages / Mediane(nus), Mediane(rapports));
    magasin.QVCloseSession();
  }
  std::filesystem::remove_all(dossier);
  return 0;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  const unsigned lignes = arguments.size() > 1 ? arguments[1].toUInt() : 60'000;
  const unsigned tours = arguments.size() > 2 ? arguments[2].toUInt() : 5;
  if (lignes == 0 || tours == 0) {
    std::fprintf(stderr, "bench_pdf [LINES [RUNS]]\n");
    return 2;
  }
  return fenlor::bench::Principal(lignes, tours);
}
