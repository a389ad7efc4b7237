#include "forms/reports/framewndprint.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <algorithm>
#include <vector>

#include "core/textes.h"
#include "core/valeurs.h"
#include "forms/reports/ecritpdf.h"
#include "forms/reports/impressions.h"
#include "forms/reports/previewview.h"
#include "forms/reports/textes.h"
#include "pages/textes.h"
#include "ui/preferences.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

constexpr int periodeVeille = 500;  ///< ms

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

/// Year first, so that files sort by their dates.
QString JourFichier(Date date) { return Q(StrSDate(date)); }

}  // namespace

QString NomFichierEtat(const CFenlorApp& app, const CEtatComptable& etat) {
  QString nom = Q(etat.TitreDocument());
  const CriteresEtat& criteres = etat.Criteres();
  const bool partie =
      criteres.du && criteres.au &&
      (criteres.du != app.Reglages.GetDebutExercice() || criteres.au != app.Reglages.GetFinExercice());
  nom += u' ' + (partie ? JourFichier(criteres.du) + u' ' + JourFichier(criteres.au) : Q(app.NomExercice));
  QString propre;
  for (const QChar c : nom) {
    if (c.isLetterOrNumber())
      propre += c;
    else if (!propre.isEmpty() && !propre.endsWith(u'-') && c != u'.')
      propre += u'-';
  }
  while (propre.endsWith(u'-')) propre.chop(1);
  return propre;
}

CFrameWndPrint::CFrameWndPrint(Impressions& impressions, ContexteUi& contexte,
                               std::unique_ptr<CEtatComptable> etat)
    : m_impressions(impressions),
      m_contexte(contexte),
      m_etat(std::move(etat)),
      m_vue(std::make_unique<CEtatView>(m_contexte.App, *m_etat)) {
  m_horloge.start();
  m_veille.setInterval(periodeVeille);
  connect(&m_veille, &QTimer::timeout, this, &CFrameWndPrint::Veille);
}

CFrameWndPrint::~CFrameWndPrint() { FinitApercu(); }

bool CFrameWndPrint::Montre(DemandeEtat demande) {
  if (!m_vue->Prepare(FeuillePour(*m_etat, m_impressions.Feuille()))) {
    m_contexte.App.Boite.Erreur(0, Texte(ErrEtatLecture));
    Ferme();
    return false;
  }
  if (demande == DemandeEtat::Apercu ||
      (demande == DemandeEtat::SelonPreference && m_contexte.App.Reglages.IsPrevisualisation()))
    MontreApercu();
  else
    Imprime();
  return true;
}

void CFrameWndPrint::MontreApercu() {
  auto* apercu = new CZNPreviewView(m_contexte, *m_vue, m_etat->TitreDocument());
  m_apercu = apercu;
  m_etat->DebuteImpression();
  connect(apercu, &CZNPreviewView::Imprime, this, &CFrameWndPrint::Imprime);
  connect(apercu, &CZNPreviewView::Exporte, this, &CFrameWndPrint::ExportePdf);
  connect(apercu, &CZNPreviewView::Terminee, this, [this] {
    LacheApercu();
    Ferme();
  });
  m_impressions.Montre(apercu);
}

CZNPreviewView* CFrameWndPrint::LacheApercu() {
  if (!m_apercu) return nullptr;
  CZNPreviewView* apercu = m_apercu;
  m_apercu = nullptr;
  apercu->disconnect(this);
  apercu->Detache();
  m_etat->FinitImpression(Maintenant());
  return apercu;
}

void CFrameWndPrint::FinitApercu() {
  if (CZNPreviewView* apercu = LacheApercu())
    (apercu->parentWidget() ? apercu->parentWidget() : apercu)->close();
}

void CFrameWndPrint::Ferme() {
  if (!m_etat) return;
  m_veille.stop();
  FinitApercu();
  m_vue.reset();
  m_etat.reset();
  Q_EMIT Fermee();
}

void CFrameWndPrint::Relit() {
  m_vue->Prepare(FeuillePour(*m_etat, m_impressions.Feuille()));
  if (m_apercu) m_apercu->Relit();
}

void CFrameWndPrint::Veille() {
  if (m_etat && !m_impressions.Occupe && m_etat->PeutFermer(Maintenant())) Ferme();
}

void CFrameWndPrint::Imprime() {
  if (!m_etat || m_impressions.Occupe) return;
  const QScopedValueRollback occupe(m_impressions.Occupe, true);
  QPrinter imprimante(QPrinter::HighResolution);
  if (!m_impressions.Imprimante.isEmpty()) imprimante.setPrinterName(m_impressions.Imprimante);
  imprimante.setPageLayout(m_vue->Feuille());
  imprimante.setDocName(NomFichierEtat(m_contexte.App, *m_etat));
  imprimante.setCreator(TexteQ(TitreApplication));
  QPrintDialog dialogue(&imprimante, m_impressions.Proprietaire());
  dialogue.setObjectName(u"DialogImpression"_s);
  dialogue.setMinMax(1, static_cast<int>(m_vue->NombrePages()));
  dialogue.setFromTo(1, static_cast<int>(m_vue->NombrePages()));
  const QPointer<CFrameWndPrint> vivante(this);
  const bool accepte = dialogue.exec() == QDialog::Accepted;
  if (!vivante || !m_etat) return;
  if (!accepte) {
    if (!m_apercu) Ferme();
    return;
  }
  m_impressions.Imprimante = imprimante.printerName();
  FinitApercu();
  ImprimeSur(imprimante);
  Ferme();
}

bool CFrameWndPrint::ImprimeSur(QPrinter& imprimante) {
  CFenlorApp& app = m_contexte.App;
  if (!m_vue->Prepare(imprimante.pageLayout())) {
    app.Boite.Erreur(0, Texte(ErrEtatLecture));
    return false;
  }
  const std::vector<u32> ordre = Ordre(imprimante, m_vue->NombrePages());
  m_etat->DebuteImpression();
  bool arrete = false;
  const auto imprime = [&] {
    const Progression progression(app.Boite, m_etat->TitreDocument(), Texte(AvancementImpression), true,
                                  static_cast<u32>(ordre.size()));
    QPainter peintre;
    bool bien = peintre.begin(&imprimante);
    for (std::size_t i = 0; bien && !arrete && i < ordre.size(); ++i) {
      bien = (i == 0 || imprimante.newPage()) && imprimante.printerState() != QPrinter::Error;
      if (!bien) break;
      m_vue->DessinePage(peintre, imprimante.resolution(), ordre[i]);
      app.Boite.Step();
      arrete = app.Boite.IsAborted();
    }
    if (arrete) imprimante.abort();
    if (peintre.isActive()) bien = peintre.end() && bien;
    const bool pdf = imprimante.outputFormat() == QPrinter::PdfFormat;
    return bien && (arrete || !pdf || FichierEntier(imprimante.outputFileName()));
  };
  const bool bien = imprime();
  m_etat->FinitImpression(Maintenant());
  m_veille.start();
  if (bien || arrete) return bien && !arrete;
  const QString nom =
      imprimante.outputFileName().isEmpty() ? imprimante.printerName() : imprimante.outputFileName();
  app.Boite.Erreur(ErrImpression, TexteFormat(ErrImpression, {De1252(nom)}));
  return false;
}

void CFrameWndPrint::ExportePdf() {
  if (!m_etat || m_impressions.Occupe) return;
  const QScopedValueRollback occupe(m_impressions.Occupe, true);
  if (m_impressions.DossierPdf.isEmpty())
    m_impressions.DossierPdf = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  QFileDialog dialogue(m_impressions.Proprietaire(), TexteQ(TitreExportPdf), m_impressions.DossierPdf,
                       TexteQ(FiltrePdf));
  dialogue.setObjectName(u"DialogPdf"_s);
  dialogue.setAcceptMode(QFileDialog::AcceptSave);
  dialogue.setDefaultSuffix(u"pdf"_s);
  dialogue.selectFile(NomFichierEtat(m_contexte.App, *m_etat) + u".pdf"_s);
  const QPointer<CFrameWndPrint> vivante(this);
  if (dialogue.exec() != QDialog::Accepted || dialogue.selectedFiles().isEmpty()) return;
  if (!vivante || !m_etat) return;
  const QString chemin = dialogue.selectedFiles().front();
  m_impressions.DossierPdf = QFileInfo(chemin).absolutePath();
  EcritPdf(m_contexte.App, *m_etat, m_etat->TitreDocument(), QFile::encodeName(chemin).toStdString(),
           m_vue->Feuille());
}

}  // namespace fenlor
