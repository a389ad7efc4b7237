#include "forms/reports/ecritpdf.h"

#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <cerrno>

#include "core/textes.h"
#include "forms/reports/textes.h"
#include "pages/textes.h"
#include "store/systeme.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

QString EnQString(const std::string& texte) { return QString::fromStdString(VersUtf8(texte)); }

/// What the code page lacks becomes "?".
std::string En1252(const QString& texte) {
  std::string sortie;
  for (const QChar c : texte) sortie += DepuisUtf8(QString(c).toStdString()).value_or("?");
  return sortie;
}

/// Remembers why it could first not be written: Qt forgets with the next success.
template <class Base>
class Noteur : public Base {
 public:
  using Base::Base;
  int Code() const { return m_code; }

 protected:
  qint64 writeData(const char* octets, qint64 taille) override {
    qint64 ecrits = 0;
    Note([&] { return (ecrits = Base::writeData(octets, taille)) == taille; });
    return ecrits;
  }
  template <class Acte>
  bool Note(Acte&& acte) {
    errno = 0;
    if (acte()) return true;
    if (m_code == 0) m_code = errno ? errno : EIO;
    return false;
  }
  int m_code = 0;
};

class FichierSur : public Noteur<QSaveFile> {
 public:
  using Noteur::Noteur;
  /// Refuses a device or a pipe: the renaming at the end would put a file in its place.
  bool Ouvre() {
    const QFileInfo cible(fileName());
    if (cible.exists() && !cible.isFile()) m_code = cible.isDir() ? EISDIR : EPERM;
    // The books in it are nobody else's business, unless somebody made the file that for others.
    const bool neuf = !cible.exists();
    return m_code == 0 && Note([this] { return open(QIODevice::WriteOnly); }) &&
           (!neuf || Note([this] { return setPermissions(ReadOwner | WriteOwner); }));
  }
  bool Acheve() {
    return m_code == 0 && Note([this] { return flush(); }) && Note([this] { return commit(); });
  }
};

class FichierDonne : public Noteur<QFile> {
 public:
  bool Ouvre(int descripteur) {
    return Note([&] { return open(descripteur, QIODevice::WriteOnly); });
  }
  bool Acheve() {
    return m_code == 0 && Note([this] { return flush(); });
  }
};

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

enum class Issue { Fait, Arrete, Echoue };

template <class Fichier>
Issue DessinePages(CFenlorApp& app, PagesDessinees& vue, const std::string& titre, const std::string& auteur,
                   Fichier& fichier) {
  const Progression progression(app.Boite, titre, Texte(AvancementPdf), true, vue.NombrePages());
  QPdfWriter pdf(&fichier);
  pdf.setResolution(UnitesPeripherique);
  pdf.setPageLayout(vue.Feuille());
  pdf.setTitle(EnQString(titre));
  pdf.setDocumentXmpMetadata(Description(EnQString(titre), EnQString(auteur)));
  pdf.setCreator(EnQString(Texte(TitreApplication)));
  QPainter peintre;
  if (!peintre.begin(&pdf)) return Issue::Echoue;
  for (u32 n = 1; n <= vue.NombrePages(); ++n) {
    if ((n > 1 && !pdf.newPage()) || fichier.Code() != 0) return Issue::Echoue;
    vue.DessinePage(peintre, pdf.resolution(), n);
    app.Boite.Step();
    if (app.Boite.IsAborted()) return Issue::Arrete;
  }
  return peintre.end() ? Issue::Fait : Issue::Echoue;
}

bool Echoue(CFenlorApp& app, const QString& nom, const std::string& raison) {
  app.Boite.Erreur(ErrPdf, TexteFormat(ErrPdf, {En1252(nom), raison}));
  return false;
}

template <class Fichier, class Ouvre>
bool EcritDans(CFenlorApp& app, PagesDessinees& pages, const std::string& titre, const std::string& auteur,
               const QString& nom, Fichier& fichier, Ouvre&& ouvre) {
  if (!ouvre()) return Echoue(app, nom, TexteErreurSysteme(fichier.Code()));
  const Issue issue = DessinePages(app, pages, titre, auteur, fichier);
  if (issue == Issue::Fait && fichier.Acheve()) return true;
  if (issue == Issue::Arrete) return false;  // what was written goes with the object
  return Echoue(app, nom, TexteErreurSysteme(fichier.Code() ? fichier.Code() : EIO));
}

}  // namespace

bool EcritPdf(CFenlorApp& app, CEtatDoc& doc, const std::string& titre, const std::string& chemin,
              const QPageLayout& feuille) {
  CEtatView vue(app, doc);
  if (!vue.Prepare(FeuillePour(doc, feuille)))
    return Echoue(app, QFile::decodeName(chemin.c_str()), Texte(ErrEtatLecture));
  return EcritPdf(app, vue, titre, vue.Qui().nom, chemin);
}

bool EcritPdf(CFenlorApp& app, CEtatDoc& doc, const std::string& titre, int descripteur) {
  CEtatView vue(app, doc);
  if (!vue.Prepare(FeuillePour(doc, FeuilleParDefaut())))
    return Echoue(app, QStringLiteral("-"), Texte(ErrEtatLecture));
  return EcritPdf(app, vue, titre, vue.Qui().nom, descripteur);
}

bool EcritPdf(CFenlorApp& app, PagesDessinees& pages, const std::string& titre, const std::string& auteur,
              const std::string& chemin) {
  const QString nom = QFile::decodeName(chemin.c_str());
  FichierSur fichier(nom);
  return EcritDans(app, pages, titre, auteur, nom, fichier, [&] { return fichier.Ouvre(); });
}

bool EcritPdf(CFenlorApp& app, PagesDessinees& pages, const std::string& titre, const std::string& auteur,
              int descripteur) {
  FichierDonne fichier;
  return EcritDans(app, pages, titre, auteur, QStringLiteral("-"), fichier,
                   [&] { return fichier.Ouvre(descripteur); });
}

}  // namespace fenlor
