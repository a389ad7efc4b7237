// Painting: the same pages as the recorder's, in PDF and in pictures.
#include <sys/resource.h>
#include <sys/stat.h>

#include <QFontInfo>
#include <QRegularExpression>
#include <csignal>

#include "forms/reports/ecritpdf.h"
#include "forms/reports/etatdetest.h"
#include "forms/reports/textes.h"
#include "pages/enregistreur.h"
#include "ui/facesfixes.h"

namespace fenlor::test {
namespace {

namespace fs = std::filesystem;

class AucuneDemande : public DemandeurCriteres {
 public:
  bool Demande(FormeCriteres, const std::string&, unsigned, CriteresEtat&) override { return false; }
};

class DessinTest : public EtatsUiTest {
 protected:
  AucuneDemande Demandeur;

  EtatDeTest& Etat(unsigned lignes, bool paysage = false) {
    m_etat = std::make_unique<EtatDeTest>(App(), Demandeur, lignes, paysage);
    EXPECT_TRUE(App().Dit(m_etat->OnNewDocument()));
    return *m_etat;
  }
  std::string Chemin(const char* nom) { return Dossier() + "/" + nom; }
  bool Ecrit(const std::string& chemin) { return EcritPdf(App(), *m_etat, "Etat d'été"_w, chemin); }
  /// Sizes of the pages of a PDF file, in points.
  static std::vector<std::string> Pages(const std::string& chemin) {
    std::vector<std::string> pages;
    const QString texte = QString::fromLatin1(LitFichier(chemin));
    static const QRegularExpression page(QStringLiteral("/Type /Page\\n.*?/MediaBox \\[([^]]*)\\]"),
                                         QRegularExpression::DotMatchesEverythingOption);
    for (auto m = page.globalMatch(texte); m.hasNext();)
      pages.push_back(m.next().captured(1).simplified().toStdString());
    return pages;
  }
  std::vector<std::string> Fichiers(const std::string& dossier) {
    std::vector<std::string> noms;
    for (const auto& f : fs::directory_iterator(dossier)) noms.push_back(f.path().filename());
    return noms;
  }

 private:
  std::unique_ptr<EtatDeTest> m_etat;
};

TEST_F(DessinTest, CoupeCommeLEnregistreur) {
  const struct {
    const char *police, *brouillon;
    bool paysage;
  } cas[] = {{"", "", false},
             {"Courier, 12", "", true},
             {"DejaVu Sans, 7", "", false},
             {"Courier, 8", "Oui", false},
             {"Inconnue, 9", "", true}};
  for (const auto& c : cas) {
    SCOPED_TRACE(c.police);
    Regle("Préférences"_w, "Police des impressions", c.police);
    Regle("Préférences"_w, "Brouillon", c.brouillon);
    EtatDeTest& etat = Etat(500, c.paysage);
    Enregistreur note = Enregistreur::A4(UnitesPeripherique, c.paysage);
    PeripheriqueQt peint(FeuillePour(etat, FeuilleParDefaut()));
    EXPECT_EQ(peint.Largeur(), note.Largeur());
    EXPECT_EQ(peint.Hauteur(), note.Hauteur());
    const ReglagePolice police = LitPoliceImpressions(c.police);
    const MiseEnPage attendue = PreparePage(note, police, *c.brouillon);
    const MiseEnPage page = PreparePage(peint, police, *c.brouillon);
    EXPECT_EQ(page.unite, attendue.unite);
    EXPECT_EQ(page.interligne, attendue.interligne);
    EXPECT_EQ(page.lignesParPage, attendue.lignesParPage);
    CEtatView vue(App(), etat);
    ASSERT_TRUE(vue.Prepare(FeuillePour(etat, FeuilleParDefaut())));
    EXPECT_EQ(vue.NombrePages(),
              NombrePages(*PagineEtat(etat, etat.Mesures(), static_cast<u32>(attendue.lignesParPage))));
    EXPECT_GT(vue.NombrePages(), 4u);
  }
}

TEST_F(DessinTest, LaPolice) {
  PeripheriqueQt peint(FeuilleParDefaut());
  for (const char* face : {"Courier", "", "courier ", "Une face absente"}) {
    for (unsigned style = 0; style < NbStyles; ++style)
      peint.FaitPolice(style,
                       {face, 200, style & StyleGras ? 700 : 400, (style & StyleItalique) != 0, false});
    for (unsigned style = 0; style < NbStyles; ++style) {
      EXPECT_EQ(peint.HauteurPolice(style), 200);
      const Etendue m = peint.Mesure(style, "mmmmmmmmmm");
      EXPECT_EQ(m.largeur, peint.Mesure(style, "iiiiiiiiii").largeur) << face << style;
      EXPECT_EQ(m.largeur, peint.Mesure(style, "\x80\xE9.......\xC9").largeur) << "the code page";
      EXPECT_EQ(m.largeur, 10 * (peint.Largeur() / ColonnesPage)) << "a column each";
    }
  }
  EXPECT_TRUE(QFontInfo(QFont(FaceFixe())).fixedPitch());
  peint.FaitPolice(0, {"DejaVu Sans", 200});
  EXPECT_GT(peint.Mesure(0, "mmmm").largeur, peint.Mesure(0, "iiii").largeur);
}

TEST_F(DessinTest, Pdf) {
  const std::string fichier = Chemin("etat.pdf");
  EcritFichier(fichier, "ancien");
  Etat(300);
  CEtatView vue(App(), Etat(300));
  ASSERT_TRUE(vue.Prepare(FeuilleParDefaut()));
  ASSERT_TRUE(Ecrit(fichier));
  EXPECT_EQ(Pages(fichier).size(), vue.NombrePages());
  EXPECT_EQ(Pages(fichier).front(), "0 0 595.000000 842.000000");
  EXPECT_EQ(Boite.Titre, "Etat d'été"_w);
  EXPECT_TRUE(Boite.Annulable);
  EXPECT_EQ(Boite.Place, vue.NombrePages());
  EXPECT_EQ(Boite.Profondeur, 0u);
  const std::string contenu = LitFichier(fichier);
  EXPECT_NE(contenu.find("<rdf:li>Docteur Hélène Garnier</rdf:li>"), std::string::npos) << "the author";
  EXPECT_NE(contenu.find("/Title (\xFE\xFF"), std::string::npos);

  Etat(300, true);
  ASSERT_TRUE(Ecrit(fichier));
  EXPECT_EQ(Pages(fichier).front(), "0 0 842.000000 595.000000");
  EXPECT_THAT(Boite.Erreurs, IsEmpty());
}

TEST_F(DessinTest, PdfQuiEchoue) {
  Etat(3000);
  fs::create_directory(Chemin("dossier.pdf"));
  ASSERT_EQ(mkfifo(Chemin("tube.pdf").c_str(), 0600), 0);
  const struct {
    const char *nom, *raison;
  } cas[] = {
      {"absent/etat.pdf", "introuvable"}, {"dossier.pdf", "Est un répertoire"}, {"tube.pdf", "non permise"}};
  for (const auto& c : cas) {
    EXPECT_FALSE(Ecrit(Chemin(c.nom)));
    ASSERT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrPdf});
    EXPECT_THAT(VersUtf8(Boite.Erreurs[0].texte), HasSubstr(c.nom));
    EXPECT_THAT(VersUtf8(Boite.Erreurs[0].texte), HasSubstr(c.raison));
    Boite.Oublie();
  }
  EXPECT_TRUE(fs::is_fifo(Chemin("tube.pdf")));

  // No room: what was there stays, and nothing beside it.
  const std::string dossier = Chemin("pdf");
  fs::create_directory(dossier);
  const std::string fichier = dossier + "/etat.pdf";
  EcritFichier(fichier, "ancien");
  rlimit avant{};
  getrlimit(RLIMIT_FSIZE, &avant);
  const auto signal = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit etroit{20000, avant.rlim_max};
  setrlimit(RLIMIT_FSIZE, &etroit);
  const bool ecrit = Ecrit(fichier), nouveau = Ecrit(dossier + "/nouveau.pdf");
  setrlimit(RLIMIT_FSIZE, &avant);
  std::signal(SIGXFSZ, signal);
  EXPECT_FALSE(ecrit || nouveau);
  ASSERT_EQ(Boite.NumerosErreurs(), (std::vector<unsigned>{ErrPdf, ErrPdf}));
  for (const auto& erreur : Boite.Erreurs) EXPECT_THAT(erreur.texte, HasSubstr("Fichier trop volumineux"));
  EXPECT_EQ(Fichiers(dossier), std::vector<std::string>{"etat.pdf"});
  EXPECT_EQ(LitFichier(fichier), "ancien");
  Boite.Oublie();

  Boite.ArretApres = Boite.NbArrets + 2;
  EXPECT_FALSE(Ecrit(fichier));
  EXPECT_THAT(Boite.Erreurs, IsEmpty()) << "the user stopped";
  EXPECT_EQ(Boite.Profondeur, 0u);
  EXPECT_EQ(Fichiers(dossier), std::vector<std::string>{"etat.pdf"});
  EXPECT_EQ(LitFichier(fichier), "ancien");
}

}  // namespace
}  // namespace fenlor::test
