#include "session/exercices.h"

#include "core/erreursexercice.h"
#include "outils/cabinetdetest.h"
#include "session/textes.h"

namespace fenlor::test {
namespace {

namespace fs = std::filesystem;

constexpr Date Jour1(unsigned annee) { return FaitDate(1, 1, annee); }
constexpr Date Jour365(unsigned annee) { return FaitDate(31, 12, annee); }

class SessionExercices : public CabinetDeTest {
 protected:
  FormulaireExercice Annee(const std::string& annee) {
    FormulaireExercice f = NouvelExercice(App());
    ChangeAnnee(f, annee);
    return f;
  }
  Refus Cree(const FormulaireExercice& f) { return fenlor::CreeExercice(App(), f); }
  Refus Ouvre(const std::string& nom) { return fenlor::OuvreExercice(App(), nom); }
};

std::string Cases(const FormulaireExercice& f) {
  return std::string(f.euro ? "E" : "-") + (f.euroActif ? "+" : "!") + (f.afficherDouble ? "D" : "-") +
         (f.doubleActif ? "+" : "!") + (f.tva ? "T" : "-");
}

TEST_F(SessionExercices, ValeursDuPremierFormulaire) {
  const FormulaireExercice f = NouvelExercice(App());
  EXPECT_TRUE(f.annuel);
  EXPECT_EQ(f.annee, "2003");
  EXPECT_EQ(f.debut, Jour1(2003));
  EXPECT_EQ(f.fin, Jour365(2003));
  EXPECT_EQ(Cases(f), "E!-+-");
}

TEST_F(SessionExercices, ValeursDerriereLeDernierExercice) {
  ASSERT_TRUE(Magasin().QVCreateExercice("1999", Jour1(1999), FaitDate(30, 6, 1999), true, true));
  ASSERT_TRUE(Magasin().Reglages().Ecrit("1999", "AFFICHERDOUBLE", "oui"));
  FormulaireExercice f = NouvelExercice(App());
  EXPECT_FALSE(f.annuel);
  EXPECT_EQ(f.debut, FaitDate(1, 7, 1999));
  EXPECT_EQ(f.fin, Jour365(1999));
  EXPECT_EQ(f.annee, "1999");
  EXPECT_EQ(Cases(f), "E+D+T");
  // The year that follows a full one is a full one.
  ASSERT_TRUE(Magasin().QVCreateExercice("X", f.debut, f.fin, false, false));
  f = NouvelExercice(App());
  EXPECT_TRUE(f.annuel);
  EXPECT_EQ(f.annee, "2000");
  EXPECT_EQ(Cases(f), "-+D+-");
}

TEST_F(SessionExercices, ReglesDesChamps) {
  FormulaireExercice f = NouvelExercice(App());
  f.euro = false;
  const struct {
    const char *annee, *cases;
    unsigned an;
  } annees[] = {{"1998", "-!-!-", 1998}, {"1999", "-+-!-", 1999}, {"2001", "-+-!-", 2001},
                {"2002", "E!-+-", 2002}, {"2001", "E+-+-", 2001}, {"20010", "E+-+-", 2001},
                {"", "E+-+-", 2001}};
  for (const auto& a : annees) {
    ChangeAnnee(f, a.annee);
    EXPECT_EQ(Cases(f), a.cases) << a.annee;
    EXPECT_EQ(f.debut, Jour1(a.an)) << a.annee;
    EXPECT_EQ(f.fin, Jour365(a.an)) << a.annee;
  }
  ChangeAnnee(f, "2000");
  ChoisitPeriode(f);
  EXPECT_FALSE(f.annuel);
  const std::string avant = Cases(f);
  QuitteDebut(f, FaitDate(1, 7, 2000));
  EXPECT_EQ(f.fin, FaitDate(30, 6, 2001));
  EXPECT_EQ(f.annee, "2000");
  EXPECT_EQ(Cases(f), avant) << "a period across two years leaves the boxes";
  for (const auto& [an, cases] :
       {std::pair{2001u, "E+-+-"}, {2002u, "E!-+-"}, {1997u, "-!-+-"}, {2000u, "-+-+-"}}) {
    QuitteDebut(f, FaitDate(1, 7, an));
    EXPECT_EQ(Cases(f), cases) << an;
  }
  QuitteDebut(f, FaitDate(29, 2, 2000));
  EXPECT_EQ(f.fin, FaitDate(28, 2, 2001));
  QuitteFin(f, FaitDate(31, 3, 2001));
  EXPECT_EQ(f.debut, FaitDate(29, 2, 2000)) << "an end behind the beginning moves nothing";
  QuitteFin(f, FaitDate(29, 2, 2000));
  EXPECT_EQ(f.debut, FaitDate(1, 3, 1999));
  EXPECT_EQ(f.annee, "1999");
  ChoisitAnnuel(f);
  EXPECT_TRUE(f.annuel);
  EXPECT_EQ(f.annee, "1999");
}

TEST_F(SessionExercices, CreerOuvreEtNote) {
  FormulaireExercice f = Annee("2001");
  f.euro = true;
  f.afficherDouble = true;
  f.tva = true;
  ASSERT_FALSE(Cree(f));
  EXPECT_EQ(App().NomExercice, "2001");
  EXPECT_EQ(App().PathExercice, App().PathCabinet + "/2001");
  EXPECT_EQ(App().ExerciceOuvert, 1u);
  EXPECT_TRUE(App().AfficherDouble);
  EXPECT_EQ(Reglage("Activite", "Exercice"), "2001");
  EXPECT_EQ(Reglage("2001", "AFFICHERDOUBLE"), "Oui");
  EXPECT_TRUE(App().Reglages.IsTVA());
  EXPECT_FALSE(fs::exists(App().PathExercice + "/witness"));
  ASSERT_FALSE(Cree(Annee("2002")));
  EXPECT_FALSE(App().AfficherDouble);
  EXPECT_TRUE(App().Reglages.IsEuro());
}

TEST_F(SessionExercices, CreerRefuseAvecSonNumero) {
  ASSERT_FALSE(Cree(Annee("2002")));
  const auto avec = [&](const std::string& annee, auto change) {
    FormulaireExercice f = Annee(annee);
    change(f);
    return f;
  };
  const auto rien = [](FormulaireExercice&) {};
  const struct {
    FormulaireExercice formulaire;
    unsigned erreur;
    const char* champ;
  } cas[] = {
      {avec("1998", [](auto& f) { f.euro = true; }), ErrMonnaieExercice, "euro"},
      {avec("2003", [](auto& f) { f.euro = false; }), ErrMonnaieExercice, "euro"},
      {avec("2003", [](auto& f) { f.fin = FaitDate(30, 6, 2004), f.euro = false; }), ErrMonnaieExercice,
       "euro"},
      {avec("2003", [](auto& f) { f.annee = "2 03"; }), ErrNomExercice, "annee"},
      {avec("2003", [](auto& f) { f.annee = ""; }), ErrNomExercice, "annee"},
      {avec("2003", [](auto& f) { f.fin = f.debut; }), ErrPeriode, "debut"},
      {avec("2003", [](auto& f) { f.debut = FaitDate(31, 12, 2002); }), 3075, "debut"},
      {avec("2002", rien), 3073, "annee"},
  };
  for (const auto& c : cas) {
    Boite.Oublie();
    const Refus r = Cree(c.formulaire);
    EXPECT_EQ(r.numero, c.erreur);
    EXPECT_STREQ(r.champ, c.champ) << c.erreur;
    EXPECT_EQ(Boite.Erreurs.size() + Boite.Questions.size(), r.dit ? 1u : 0u) << "told once: " << c.erreur;
  }
  EXPECT_EQ(App().NomExercice, "2002");
  EXPECT_EQ(Magasin().GetExercicesRec(), 1u);
}

TEST_F(SessionExercices, CeQuiNeSeSupprimePasNeSeRemplacePas) {
  ASSERT_FALSE(Cree(Annee("2002")));
  ASSERT_NE(AjouteSimple(JournalRecettes, FaitDate(3, 2, 2002), "706", 30, "512"), 0u);
  ASSERT_FALSE(Cree(Annee("2003")));
  Boite.Defaut = RepOui;
  EXPECT_EQ(Cree(Annee("2002")).numero, 3039u) << "entries, less than five years old";
  ASSERT_TRUE(Magasin().Reglages().Ecrit("2002", "Cloture", "05/01/2003"));
  EXPECT_EQ(Cree(Annee("2002")).numero, 3056u) << "closed";
  EXPECT_TRUE(Boite.Questions.empty());
  EXPECT_EQ(App().NomExercice, "2003") << "what is open stays open";
  ASSERT_FALSE(Ouvre("2002"));
  EXPECT_EQ(Magasin().GetJournalRec(0), 2u);
  // Without entries, or old enough, it is a question, whose default is "Non".
  EXPECT_FALSE(Cree(Annee("2003")));
  ASSERT_EQ(Boite.Questions.size(), 1u);
  EXPECT_TRUE(Boite.Questions[0].style & DefautSecond);
}

TEST_F(SessionExercices, UneAnneeLointaineSeDemande) {
  const struct {
    const char* annee;
    bool demande;
  } cas[] = {{"1950", false}, {"2013", false}, {"1949", true},
             {"2014", true},  {"9999", true},  {"1000", true}};
  for (const auto& c : cas) {
    Boite.Oublie();
    EXPECT_EQ(Cree(Annee(c.annee)).numero, c.demande ? 3404u : 0u) << c.annee;
    EXPECT_EQ(Boite.Questions.size(), c.demande ? 1u : 0u) << c.annee;
  }
  EXPECT_EQ(Magasin().GetExercicesRec(), 2u);
  // The year that is typed is that of the dates.
  for (const char* annee : {"20", "203", "1"}) {
    Boite.Oublie();
    EXPECT_EQ(Cree(Annee(annee)).numero, 3404u) << annee;
    ASSERT_EQ(Boite.Questions.size(), 1u) << annee;
    EXPECT_NE(Boite.Questions[0].texte.find("01/01/0"), std::string::npos) << Boite.Questions[0].texte;
  }
  Boite.Defaut = RepOui;
  EXPECT_FALSE(Cree(Annee("0203")));
  EXPECT_EQ(App().Reglages.GetDebutExercice(), Jour1(203));
}

TEST_F(SessionExercices, OuvrirUnRepertoireInutilisable) {
  ASSERT_FALSE(Cree(Annee("2002")));
  ASSERT_FALSE(Cree(Annee("2003")));
  ASSERT_TRUE(Rouvre());
  fs::rename(App().PathCabinet + "/2002", App().PathCabinet + "/ailleurs");
  EXPECT_FALSE(TestRepertoire(App(), "2002"));
  EXPECT_EQ(Ouvre("2002").numero, 3000u);
  EXPECT_EQ(App().NomExercice, "");
  EXPECT_EQ(App().PathExercice, "");
  EXPECT_EQ(App().ExerciceOuvert, 0u);
  EXPECT_EQ(Magasin().NomExercice(), "");
  EXPECT_EQ(Magasin().GetExercicesRec(), 2u);
  EXPECT_FALSE(Ouvre("2003"));
  FermeExercice(App());
  EXPECT_EQ(App().ExerciceOuvert, 0u);
  EXPECT_EQ(Magasin().PathExercice(), "");
}

TEST_F(SessionExercices, RegleDesCinqAns) {
  EXPECT_EQ(SupprimeExercice(App()).numero, unsigned{ErrAucunExercice});
  const struct {
    const char* nom;
    bool ecriture;
    int reponse;
    unsigned erreur;
  } cas[] = {{"1998", true, RepOui, 0},  // its sixth year has begun
             {"1999", true, RepOui, 3039},
             {"2003", true, RepOui, 3039},
             {"2003", false, RepNon, QuestionSupprimeExercice},
             {"2003", false, RepOui, 0}};
  for (const auto& c : cas) {
    SCOPED_TRACE(c.nom);
    Boite.Oublie();
    FormulaireExercice f = Annee(c.nom);
    ASSERT_FALSE(Cree(f));
    if (c.ecriture) {
      ASSERT_NE(AjouteSimple(JournalRecettes, FaitDate(3, 2, static_cast<unsigned>(std::stoi(c.nom))), "706",
                             20, "512"),
                0u);
    }
    Boite.Reponses = {c.reponse};
    EXPECT_EQ(SupprimeExercice(App()).numero, c.erreur);
    EXPECT_EQ(Boite.Questions.size(), c.erreur == 3039 ? 0u : 1u);
    EXPECT_EQ(App().NomExercice.empty(), c.erreur == 0);
    EXPECT_EQ(Magasin().GetExercicesRec(), c.erreur == 0 ? 0u : 1u);
    Boite.Reponses.clear();
    if (c.erreur != 0) {
      ASSERT_TRUE(Magasin().QVDeleteExercice(c.nom));
    }
  }
}

TEST_F(SessionExercices, DatesParDefautEtListes) {
  EXPECT_FALSE(RepareDates(App(), "  "));
  EXPECT_TRUE(RepareDates(App(), "2003"));
  EXPECT_EQ(Reglage("2003", "Debut"), "01/01/2003");
  EXPECT_EQ(Reglage("2003", "Fin"), "31/12/2003");
  ASSERT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3099});
  EXPECT_NE(Boite.Erreurs[0].texte.find("31/12/2003"), std::string::npos);
  EXPECT_FALSE(RepareDates(App(), "2003"));

  ASSERT_TRUE(Magasin().Reglages().Ecrit({{"Activite", "Exercices", "2003,2004,vide"},
                                          {"2004", "Debut", "01/07/2004"},
                                          {"2004", "Fin", "30/06/2005"},
                                          {"2004", "Cloture", "05/09/2005"}}));
  const auto lignes = LignesExercices(App());
  ASSERT_EQ(lignes.size(), 2u);
  EXPECT_EQ(lignes[0].texte, "2003 01/01/2003 - 31/12/2003");
  EXPECT_FALSE(lignes[0].cloture);
  EXPECT_EQ(lignes[1].texteCombo, "2004 01/07 - 30/06");
  EXPECT_TRUE(lignes[1].cloture);
}

}  // namespace
}  // namespace fenlor::test
