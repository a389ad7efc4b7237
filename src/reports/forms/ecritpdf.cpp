#include "reports/forms/ecritpdf.h"

#include <QFile>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "core/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

QString EnQString(const std::string& texte) { return QString::fromStdString(VersUtf8(texte)); }

std::string En1252(const QString& texte) { return DepuisUtf8(texte.toStdString()).value_or("?"); }

/// Title and author as the description inside the document, where readers look for the author.
QByteArray Description(const QString& titre, const QString& auteur) {
  const auto element = [](const QString& valeur) { return valeur.toHtmlEscaped(); };
  return QStringLiteral(
             "<?xpacket begin=\"\uFEFF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
             "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
             "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description rdf:about=\"\" "
             "xmlns:dc=\"http://purl.org/dc/elements/1.1/\">"
             "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">%1</rdf:li></rdf:Alt></dc:title>"
             "<dc:creator><rdf:Seq><rdf:li>%2</rdf:li></rdf:Seq></dc:creator>"
             "</rdf:Description></rdf:RDF></x:xmpmeta>\n<?xpacket end=\"w\"?>\n")
      .arg(element(titre), element(auteur))
      .toUtf8();
}

/// Draws the pages; false when the user stopped, or the file takes no more.
bool DessinePages(CFenlorApp& app, CEtatView& vue, const std::string& titre, QSaveFile& fichier) {
  QPdfWriter pdf(&fichier);
  pdf.setResolution(UnitesPeripherique);
  pdf.setPageLayout(vue.Feuille());
  pdf.setTitle(EnQString(titre));
  pdf.setDocumentXmpMetadata(Description(EnQString(titre), EnQString(vue.Qui().nom)));
  pdf.setCreator(EnQString(Texte(TitreApplication)));
  QPainter peintre;
  if (!peintre.begin(&pdf)) return false;
  for (u32 n = 1; n <= vue.NombrePages(); ++n) {
    if (n > 1 && !pdf.newPage()) return false;
    vue.DessinePage(peintre, pdf.resolution(), n);
    app.Boite.Step();
    if (app.Boite.IsAborted() || fichier.error() != QFileDevice::NoError) return false;
  }
  return peintre.end();
}

}  // namespace

bool EcritPdf(CFenlorApp& app, CEtatDoc& doc, const std::string& titre, const std::string& chemin,
              const QPageLayout& feuille) {
  const QString nom = QFile::decodeName(chemin.c_str());
  QSaveFile fichier(nom);
  const auto echoue = [&](const std::string& raison) {
    app.Boite.Erreur(ErrPdf, TexteFormat(ErrPdf, {En1252(nom), raison}));
    return false;
  };
  CEtatView vue(app, doc);
  if (!vue.Prepare(FeuillePour(doc, feuille))) return echoue(Texte(ErrEtatLecture));
  if (!fichier.open(QIODevice::WriteOnly)) return echoue(En1252(fichier.errorString()));
  app.Boite.OuvreProgress(titre, Texte(AvancementPdf), true, vue.NombrePages());
  const bool dessine = DessinePages(app, vue, titre, fichier);
  app.Boite.FermeProgress();
  if (dessine && fichier.commit()) return true;
  if (fichier.error() != QFileDevice::NoError) return echoue(En1252(fichier.errorString()));
  fichier.cancelWriting();
  return false;
}

}  // namespace fenlor
