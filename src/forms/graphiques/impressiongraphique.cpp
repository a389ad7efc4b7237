#include "forms/graphiques/impressiongraphique.h"

#include <QBuffer>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QPrinter>
#include <QScopedValueRollback>
#include <QStandardPaths>

#include "core/valeurs.h"
#include "forms/graphiques/textes.h"
#include "forms/reports/framewndprint.h"
#include "forms/reports/impressionpages.h"
#include "forms/reports/impressions.h"
#include "forms/reports/previewtoolbar.h"
#include "forms/reports/previewview.h"
#include "graphiques/ecriture.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr f64 policeExport = 13;  ///< of an SVG

}  // namespace

ImpressionGraphique::ImpressionGraphique(ContexteUi& contexte, Impressions& impressions, SerieGraphique serie,
                                         GenreGraphique genre, TaillePapier taille)
    : m_contexte(contexte),
      m_impressions(impressions),
      m_serie(std::move(serie)),
      m_genre(genre),
      m_taille(taille),
      m_page(m_serie, m_genre, taille) {
  m_impressions.LitFeuille();
  m_page.Prepare(m_impressions.Feuille());
}

bool ImpressionGraphique::Imprime() {
  if (m_impressions.Occupe) return false;
  const QScopedValueRollback occupe(m_impressions.Occupe, true);
  QPrinter imprimante(QPrinter::HighResolution);
  const QPointer<ImpressionGraphique> vivante(this);
  return DemandeImprimante(m_impressions, m_page, NomFichierGraphique(m_contexte.App, m_serie), imprimante) &&
         vivante && ImprimePages(m_contexte.App, m_page, imprimante, CompacteTexte(m_serie.titre));
}

void ImpressionGraphique::MontreApercu() {
  const std::string titre = EstVide(m_serie.titre) ? Texte(TitreGraphique) : CompacteTexte(m_serie.titre);
  m_apercu = new CZNPreviewView(m_contexte, m_page, titre);
  m_apercu->Barre().SansStyle();
  setParent(m_apercu);
  connect(m_apercu, &CZNPreviewView::Imprime, this, [this] {
    const QPointer<CZNPreviewView> apercu = m_apercu;
    if (Imprime() && apercu) (apercu->parentWidget() ? apercu->parentWidget() : apercu)->close();
  });
  connect(m_apercu, &CZNPreviewView::Exporte, this, [this] {
    ExporteGraphique(m_contexte, m_impressions, {m_serie, m_genre, m_taille});
  });
  connect(m_apercu, &CZNPreviewView::Terminee, this, &ImpressionGraphique::ApercuFini);
  m_impressions.Montre(m_apercu);
}

QString NomFichierGraphique(const CFenlorApp& app, const SerieGraphique& serie) {
  const std::string titre = EstVide(serie.titre) ? Texte(TitreGraphique) : CompacteTexte(serie.titre);
  return NomFichierPropre(Q(titre) + u' ' + Q(app.NomExercice));
}

void ExporteGraphique(ContexteUi& contexte, Impressions& impressions, const ExportGraphique& quoi) {
  if (impressions.Occupe) return;
  const QScopedValueRollback occupe(impressions.Occupe, true);
  QString& dossier = impressions.DossierPdf;
  if (dossier.isEmpty()) dossier = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QString pdf = TexteQ(FiltreExportPdf);
  QStringList filtres{pdf};
  if (!quoi.image.isNull()) filtres = {TexteQ(FiltreExportPng), TexteQ(FiltreExportSvg), pdf};
  QFileDialog dialogue(impressions.Proprietaire(), TexteQ(TitreExportGraphique), dossier);
  dialogue.setObjectName(u"DialogExportGraphique"_s);
  dialogue.setAcceptMode(QFileDialog::AcceptSave);
  dialogue.setNameFilters(filtres);
  const auto suffixe = [&dialogue](const QString& filtre) {
    dialogue.setDefaultSuffix(filtre.section(u"*."_s, 1).chopped(1));
  };
  QObject::connect(&dialogue, &QFileDialog::filterSelected, &dialogue, suffixe);
  suffixe(filtres.front());
  dialogue.selectFile(NomFichierGraphique(contexte.App, quoi.serie));
  if (dialogue.exec() != QDialog::Accepted || dialogue.selectedFiles().isEmpty()) return;
  const QString chemin = dialogue.selectedFiles().front();
  dossier = QFileInfo(chemin).absolutePath();
  const std::string octets = QFile::encodeName(chemin).toStdString();
  const QString fin = QFileInfo(chemin).suffix().toLower();
  if (quoi.image.isNull() || fin == u"pdf"_s) {
    EcritPdfGraphique(contexte.App, quoi.serie, quoi.genre, octets, -1, quoi.papier);
  } else if (fin == u"svg"_s) {
    const f64 largeur = quoi.taille.width(), hauteur = quoi.taille.height();
    const DessinGraphique dessin =
        DessineGraphique(quoi.serie, quoi.genre, PlaceEcran(largeur, hauteur, policeExport), MesureTable());
    contexte.App.Dit(EcritExport(contexte.App, octets, EcritSvg(dessin, largeur, hauteur)));
  } else {
    QBuffer tampon;
    quoi.image.save(&tampon, "PNG");
    contexte.App.Dit(EcritExport(contexte.App, octets, tampon.data().toStdString()));
  }
}

}  // namespace fenlor
