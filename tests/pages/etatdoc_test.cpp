
#include <stdlib.h>
#include <sys/stat.h>

#include "outils/cabinetdetest.h"
#include "outils/systemefautif.h"
#include "pages/etatdetest.h"
#include "pages/textes.h"

namespace fenlor::test {
namespace {

std::string Rempli(const char* format, std::initializer_list<ArgumentEtat> arguments) {
  std::string texte;
  RemplitEtat(texte, format, arguments);
  return texte;
}

TEST(FormatEtatTest, TakesTheConversionsOfTheReports) {
  EXPECT_EQ(Rempli("%s le %d, %u %ld%%", {"abc", -3, 7u, 123456789012L}), "abc le -3, 7 123456789012%");
  EXPECT_EQ(Rempli("\\T%03d\\R%03u|%02d", {5, 144, -1}), "\\T005\\R144|-1");
  EXPECT_EQ(Rempli("%-8.8s|%8s|%-4d|%c", {"abcdefghij", "abc", 12, 'x'}), "abcdefgh|     abc|12  |x");
  EXPECT_EQ(Rempli("%s %s %z %", {"seul"}), "seul  %z %");
  EXPECT_EQ(Rempli("%d %s", {"texte", 5}), "texte 5");
  EXPECT_EQ(EchappeEtat("C:\\Bons\\"), "C:\\\\Bons\\\\");
}

/// The temporary directory of the process is the test's own.
class EtatDocTest : public CabinetDeTest {
 protected:
  EtatDocTest() : CabinetDeTest(test::Cles::Memoire, 256u << 10, &Fautif()) {
    avant = getenv("TMPDIR") ? getenv("TMPDIR") : "";
    Dirige(dossier.Chemin());
  }
  ~EtatDocTest() override {
    fautif.Repare();
    fautif.EcrituresPartielles(false);
    avant.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", avant.c_str(), 1);
  }

  void Dirige(const std::string& chemin) { setenv("TMPDIR", chemin.c_str(), 1); }
  std::vector<std::string> Fichiers() {
    std::vector<std::string> noms;
    for (const auto& f : std::filesystem::directory_iterator(dossier.Chemin()))
      noms.push_back(f.path().filename());
    return noms;
  }

  /// Outlives the base, which has files open on it.
  static SystemeFautif& Fautif() {
    static SystemePosix posix;
    static SystemeFautif systeme(posix);
    return systeme;
  }

  SystemeFautif& fautif = Fautif();
  test::DossierTemporaire dossier;
  std::string avant;
};

TEST_F(EtatDocTest, TheFilesOfAReportHaveNoName) {
  {
    EtatDeTest doc(App());
    doc.ecrit = [&](EtatDeTest& d) { d.EtatPrintf("%s\n", {"abc"}), d.EcritEtat(""); };
    for (int fois = 0; fois < 2; ++fois) {
      ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
      EXPECT_TRUE(Fichiers().empty()) << "a kill must leave none";
      EXPECT_EQ(doc.NombreBlocs(), 1u);
      EXPECT_EQ(doc.LitTexte(0, 4), "abc\n");
    }
    doc.ecrit = [](EtatDeTest& d) {
      d.EcritEtat("abc");
      EXPECT_TRUE(d.EnCours());
      d.Abandonne();
      d.EcritEtat("def");
      EXPECT_EQ(d.TailleTexte(), 3u) << "what was given up is written no longer";
      d.Abandonne(Refus(ErrFichierTemporaire));
    };
    EXPECT_FALSE(App().Dit(doc.OnNewDocument())) << "the first refusal stays: the user knows";
    EXPECT_TRUE(Boite.Erreurs.empty());
    EXPECT_TRUE(Fichiers().empty()) << "no report, no files";
  }
  EXPECT_TRUE(Fichiers().empty());
}

TEST_F(EtatDocTest, HeightsAndTheDefaultReport) {
  EtatDeTest doc(App());
  ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
  EXPECT_EQ(doc.LitTexte(0, doc.TailleTexte()), "*** Il n'y a pas de texte à imprimer !\n"_w);
  EXPECT_EQ(doc.Mesures().lignesTitre, 0u);

  doc.ecrit = [](EtatDeTest& d) {
    d.SetEtatTitre("%s", {std::string(600, 'x')});
    d.SetEtatEntete("sans retour");
    d.SetEtatPied("a\nb\n%d\n", {1});
    EXPECT_FALSE(d.SetEtatPaysage(true));
  };
  ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
  EXPECT_EQ(doc.Titre().size(), 512u);
  EXPECT_EQ(doc.Mesures().lignesTitre, 4u);
  EXPECT_EQ(doc.Mesures().lignesEntete, 1u);
  EXPECT_EQ(doc.Mesures().lignesPied, 3u);
  EXPECT_TRUE(doc.Paysage());
  doc.ecrit = [](EtatDeTest&) {};
  ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
  EXPECT_FALSE(doc.Paysage());
  EXPECT_EQ(doc.Titre() + doc.Pied(), "");
}

TEST_F(EtatDocTest, ReadBackOnTheWayTheReportGoesOnAtItsEnd) {
  EtatDeTest doc(App());
  doc.ecrit = [](EtatDeTest& d) {
    d.EcritEtat("abc\n");
    EXPECT_EQ(d.LitTexte(0, 2), "ab");
    d.EcritEtat("def\n");
  };
  ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
  EXPECT_EQ(doc.LitTexte(0, 8), "abc\ndef\n");
}

TEST_F(EtatDocTest, NoFolderNoFilesNoReport) {
  EtatDeTest doc(App());
  doc.ecrit = [](EtatDeTest&) { ADD_FAILURE() << "built"; };
  Dirige(dossier.Chemin() + "/absent");
  EXPECT_FALSE(App().Dit(doc.OnNewDocument()));
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3109});
  Dirige(dossier.Chemin());
  // The first file, the second one, and a folder that takes names and no bytes.
  for (const auto& [k, genre] : {std::pair{1u, SystemeFautif::Ouvertures},
                                 {2u, SystemeFautif::Ouvertures},
                                 {1u, SystemeFautif::Ecriture}}) {
    Boite.Oublie();
    fautif.SurChemin("FNL");
    fautif.Programme(k, ENOSPC, genre);
    EXPECT_FALSE(App().Dit(doc.OnNewDocument()));
    EXPECT_EQ(fautif.NbPannes(), 1u);
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3109});
    EXPECT_EQ(Boite.Erreurs.at(0).texte, "Création du fichier temporaire impossible."_w);
    EXPECT_TRUE(Fichiers().empty());
  }
}

TEST_F(EtatDocTest, AFolderThatFillsUpGivesNoReport) {
  // One write fails: the text or the index of a short report at its end, or of a long one on the way.
  struct Cas {
    unsigned k;
    int lignes;
  };
  for (const auto [k, lignes] : {Cas{2, 3}, {3, 3}, {2, 20000}, {5, 20000}, {12, 20000}}) {
    for (const bool arrete : {true, false}) {
      SCOPED_TRACE(k);
      Boite.Oublie();
      fautif.SurChemin("FNL");
      fautif.EcrituresPartielles(true);
      fautif.Programme(k, ENOSPC, SystemeFautif::Ecriture);
      EtatDeTest doc(App());
      doc.ecrit = [&](EtatDeTest& d) {
        for (int i = 0; i < lignes && (d.EnCours() || !arrete); ++i) {
          const bool refuse = !d.EnCours();
          const u32 taille = d.TailleTexte();
          d.EtatPrintf("\\M000ligne %d\\T020%s\n", {i, "un libellé qui prend de la place"});
          EXPECT_EQ(refuse, d.TailleTexte() == taille) << "a refusal is for good";
        }
      };
      EXPECT_FALSE(App().Dit(doc.OnNewDocument()));
      EXPECT_EQ(fautif.NbPannes(), 1u);
      EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrEtatEcriture});
      EXPECT_NE(Boite.Erreurs.at(0).texte.find(TexteErreurSysteme(ENOSPC)), std::string::npos);
      EXPECT_TRUE(Fichiers().empty());
      fautif.Repare();
      EXPECT_TRUE(App().Dit(doc.OnNewDocument())) << "the next one finds room";
    }
  }
}

TEST_F(EtatDocTest, WhatCannotBeReadIsToldAndComesAsZeros) {
  EtatDeTest doc(App());
  doc.ecrit = [](EtatDeTest& d) { d.EcritEtat("abcdef\n"); };
  ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
  fautif.SurChemin("FNL");
  fautif.Programme(1, EIO, SystemeFautif::Lectures);
  EXPECT_EQ(doc.LitTexte(0, 7), std::string(7, '\0'));
  ASSERT_EQ(Boite.Erreurs.size(), 1u);
  EXPECT_EQ(Boite.Erreurs[0].texte, "Erreur de lecture du fichier temporaire.");
  EXPECT_EQ(doc.LitTexte(0, 7), "abcdef\n");
  EXPECT_EQ(doc.LitTexte(4, 9), std::string("ef\n\0\0", 5));

  fautif.Programme(1, EIO, SystemeFautif::Lectures);
  EXPECT_FALSE(PagineEtat(doc, doc.Mesures(), 60));
  fautif.Repare();
}

TEST_F(EtatDocTest, ClosesWhenNobodyPrints) {
  EtatDeTest doc(App());
  ASSERT_TRUE(App().Dit(doc.OnNewDocument()));
  doc.DebuteImpression();
  doc.DebuteImpression();
  doc.FinitImpression(5000);
  EXPECT_FALSE(doc.PeutFermer(90000));
  doc.FinitImpression(10000);
  EXPECT_FALSE(doc.PeutFermer(12000));
  EXPECT_TRUE(doc.PeutFermer(12001));
}

}  // namespace
}  // namespace fenlor::test
