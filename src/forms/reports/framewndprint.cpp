#include "forms/reports/framewndprint.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>
#include <QPrinter>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <QUrl>

#include "core/valeurs.h"
#include "forms/reports/ecritpdf.h"
#include "forms/reports/impressionpages.h"
#include "forms/reports/impressions.h"
#include "forms/reports/previewview.h"
#include "forms/reports/textes.h"
#include "pages/textes.h"
#include "ui/preferences.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

constexpr int periodeVeille = 500;        ///< ms
constexpr int dureeOffrePdf = 60 * 1000;  ///< ms

/// Year first, so that files sort by their dates.
QString JourFichier(Date date) { return Q(StrSDate(date)); }

}  // namespace

QString NomFichierPropre(const QString& nom) {
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

QString NomFichierEtat(const CFenlorApp& app, const CEtatComptable& etat) {
  QString nom = Q(etat.TitreDocument());
  const CriteresEtat& criteres = etat.Criteres();
  const bool partie =
      criteres.du && criteres.au &&
      (criteres.du != app.Reglages.GetDebutExercice() || criteres.au != app.Reglages.GetFinExercice());
  nom += u' ' + (partie ? JourFichier(criteres.du) + u' ' + JourFichier(criteres.au) : Q(app.NomExercice));
  return NomFichierPropre(nom);
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
  if (demande == DemandeEtat::Pdf)
    ExportePdf();
  else if (demande == DemandeEtat::Apercu ||
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
  connect(apercu, &CZNPreviewView::AutreStyle, this, &CFrameWndPrint::ChangeStyle);
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
  const QPointer<CFrameWndPrint> vivante(this);
  const bool accepte =
      DemandeImprimante(m_impressions, *m_vue, NomFichierEtat(m_contexte.App, *m_etat), imprimante);
  if (!vivante || !m_etat) return;
  if (!accepte) {
    if (!m_apercu) Ferme();
    return;
  }
  FinitApercu();
  ImprimeSur(imprimante);
  Ferme();
}

bool CFrameWndPrint::ImprimeSur(QPrinter& imprimante) {
  m_etat->DebuteImpression();
  const bool bien = ImprimePages(m_contexte.App, *m_vue, imprimante, m_etat->TitreDocument());
  m_etat->FinitImpression(Maintenant());
  m_veille.start();
  return bien;
}

void CFrameWndPrint::ExportePdf() {
  if (!m_etat || m_impressions.Occupe) return;
  const QPointer<CFrameWndPrint> vivante(this);
  DemandePdf();
  if (vivante && m_etat && !m_apercu) Ferme();
}

void CFrameWndPrint::DemandePdf() {
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
  if (!EcritPdf(m_contexte.App, *m_etat, m_etat->TitreDocument(), QFile::encodeName(chemin).toStdString(),
                m_vue->Feuille()))
    return;
  const auto montre = [](const QString& quoi) {
    return [quoi] { QDesktopServices::openUrl(QUrl::fromLocalFile(quoi)); };
  };
  m_contexte.Cadre.Offre(
      {TexteQ(FormatPdfEcrit, {De1252(QFileInfo(chemin).fileName()), De1252(m_impressions.DossierPdf)}),
       {{u"Ou&vrir"_s, montre(chemin)}, {u"&Dossier"_s, montre(m_impressions.DossierPdf)}},
       dureeOffrePdf});
}

void CFrameWndPrint::ChangeStyle() {
  const bool soignee = LitStylePapier(m_contexte.App) == StylePapier::Soignee;
  if (!EcritStylePapier(m_contexte.App, soignee ? StylePapier::Classique : StylePapier::Soignee))
    DitEchecReglages(m_contexte.App);
  m_impressions.Relit();
}

}  // namespace fenlor
