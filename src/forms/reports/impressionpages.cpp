#include "forms/reports/impressionpages.h"

#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <algorithm>
#include <vector>

#include "core/textes.h"
#include "forms/reports/impressions.h"
#include "forms/reports/textes.h"
#include "pages/textes.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

/// Numbers of the pages in the order in which they leave the printer.
std::vector<u32> Ordre(const QPrinter& imprimante, u32 pages) {
  u32 de = 1, a = pages;
  if (imprimante.printRange() == QPrinter::PageRange && imprimante.fromPage() > 0) {
    de = static_cast<u32>(imprimante.fromPage());
    a = std::min(pages, static_cast<u32>(std::max(imprimante.toPage(), imprimante.fromPage())));
  }
  std::vector<u32> suite;
  for (u32 n = de; n <= a; ++n) suite.push_back(n);
  if (imprimante.pageOrder() == QPrinter::LastPageFirst) std::reverse(suite.begin(), suite.end());
  const int exemplaires = imprimante.supportsMultipleCopies() ? 1 : imprimante.copyCount();
  std::vector<u32> ordre;
  if (imprimante.collateCopies()) {
    for (int i = 0; i < exemplaires; ++i) ordre.insert(ordre.end(), suite.begin(), suite.end());
  } else {
    for (const u32 n : suite) ordre.insert(ordre.end(), static_cast<std::size_t>(exemplaires), n);
  }
  return ordre;
}

/// Qt says nothing of a file that it could not write to its end. What is left of one goes.
bool FichierEntier(const QString& nom) {
  constexpr qint64 fin = 32;
  QFile fichier(nom);
  if (!QFileInfo(nom).isFile()) return true;
  if (fichier.open(QIODevice::ReadOnly) && fichier.seek(std::max(qint64{0}, fichier.size() - fin)) &&
      fichier.readAll().contains("%%EOF"))
    return true;
  fichier.remove();
  return false;
}

}  // namespace

bool DemandeImprimante(Impressions& impressions, const PagesDessinees& pages, const QString& document,
                       QPrinter& imprimante) {
  if (!impressions.Imprimante.isEmpty()) imprimante.setPrinterName(impressions.Imprimante);
  imprimante.setPageLayout(pages.Feuille());
  imprimante.setDocName(document);
  imprimante.setCreator(TexteQ(TitreApplication));
  QPrintDialog dialogue(&imprimante, impressions.Proprietaire());
  dialogue.setObjectName(u"DialogImpression"_s);
  dialogue.setMinMax(1, static_cast<int>(pages.NombrePages()));
  dialogue.setFromTo(1, static_cast<int>(pages.NombrePages()));
  const QPointer<Impressions> vivantes(&impressions);
  if (dialogue.exec() != QDialog::Accepted || !vivantes) return false;
  impressions.Imprimante = imprimante.printerName();
  return true;
}

bool ImprimePages(CFenlorApp& app, PagesDessinees& pages, QPrinter& imprimante, const std::string& titre) {
  if (!pages.Prepare(imprimante.pageLayout())) {
    app.Boite.Erreur(0, Texte(ErrEtatLecture));
    return false;
  }
  const std::vector<u32> ordre = Ordre(imprimante, pages.NombrePages());
  bool arrete = false;
  const auto imprime = [&] {
    const Progression progression(app.Boite, titre, Texte(AvancementImpression), true,
                                  static_cast<u32>(ordre.size()));
    QPainter peintre;
    bool bien = peintre.begin(&imprimante);
    for (std::size_t i = 0; bien && !arrete && i < ordre.size(); ++i) {
      bien = (i == 0 || imprimante.newPage()) && imprimante.printerState() != QPrinter::Error;
      if (!bien) break;
      pages.DessinePage(peintre, imprimante.resolution(), ordre[i]);
      app.Boite.Step();
      arrete = app.Boite.IsAborted();
    }
    if (arrete) imprimante.abort();
    if (peintre.isActive()) bien = peintre.end() && bien;
    const bool pdf = imprimante.outputFormat() == QPrinter::PdfFormat;
    return bien && (arrete || !pdf || FichierEntier(imprimante.outputFileName()));
  };
  const bool bien = imprime();
  if (bien || arrete) return bien && !arrete;
  const QString nom =
      imprimante.outputFileName().isEmpty() ? imprimante.printerName() : imprimante.outputFileName();
  app.Boite.Erreur(ErrImpression, TexteFormat(ErrImpression, {De1252(nom)}));
  return false;
}

}  // namespace fenlor
