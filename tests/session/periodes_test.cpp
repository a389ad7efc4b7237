#include "session/periodes.h"

#include "outils/cabinetdetest.h"

namespace fenlor::test {
namespace {

CadrePeriode Cadre(const char* debut, const char* fin, const char* aujourdhui) {
  return {GetDate(debut), GetDate(fin), GetDate(aujourdhui)};
}

TEST(Periodes, Semaines) {
  const struct {
    CadrePeriode cadre;
    std::size_t nombre;
    const char *premiere, *derniere;
    int proposee;
  } cas[] = {
      // A Wednesday; today within; today on the first day; today before and behind, in the exercice's year
      // and in its second one.
      {Cadre("01/01/2003", "31/12/2003", "15/03/2003"), 11, "du 01/01/2003 au 05/01/2003", "au 15/03/2003",
       10},
      {Cadre("01/01/2003", "31/12/2003", "01/01/2003"), 53, "du 01/01/2003 au 05/01/2003", "au 31/12/2003",
       0},
      {Cadre("01/07/2003", "30/06/2004", "15/03/2003"), 53, "du 01/07/2003 au 06/07/2003", "au 30/06/2004",
       0},
      {Cadre("01/01/2003", "30/06/2003", "15/10/2003"), 27, "du 01/01/2003 au 05/01/2003", "au 30/06/2003",
       26},
      {Cadre("01/07/2003", "30/06/2004", "15/03/2004"), 38, "du 01/07/2003 au 06/07/2003", "au 15/03/2004",
       0},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(&c - cas);
    const std::vector<LignePeriode> lignes = SemainesPeriode(c.cadre);
    ASSERT_EQ(lignes.size(), c.nombre);
    EXPECT_EQ(lignes.front().texte, c.premiere);
    EXPECT_TRUE(lignes.back().texte.ends_with(c.derniere)) << lignes.back().texte;
    EXPECT_EQ(SemaineProposee(c.cadre, lignes), c.proposee);
    Date suivant = c.cadre.debut;  // no day between two weeks, none twice
    for (const LignePeriode& ligne : lignes) {
      const BornesPeriode bornes = BornesDe(c.cadre, Periode::Semaine, ligne.valeur);
      EXPECT_EQ(bornes.du, suivant);
      EXPECT_EQ(ligne.texte, "du " + StrDate(bornes.du) + " au " + StrDate(bornes.au));
      suivant = NextDate(bornes.au);
    }
  }
  const auto entieres = SemainesPeriode(cas[0].cadre, FinSemaine::Exercice);
  EXPECT_EQ(entieres.size(), cas[0].nombre) << "no week behind that of today";
  EXPECT_EQ(entieres.back().texte, "du 10/03/2003 au 16/03/2003");
  EXPECT_EQ(SemaineProposee(cas[0].cadre, entieres), cas[0].proposee);
  EXPECT_TRUE(SemainesPeriode({}).empty());
  EXPECT_TRUE(SemainesPeriode(Cadre("01/07/2003", "01/01/2003", "01/03/2003")).empty());
  EXPECT_EQ(SemaineProposee({}, {}), -1);
}

TEST(Periodes, Bornes) {
  const CadrePeriode milieu = Cadre("01/01/2003", "31/12/2003", "12/03/2003");
  const CadrePeriode juillet = Cadre("09/07/2003", "30/06/2004", "15/03/2005");
  const struct {
    CadrePeriode cadre;
    Periode periode;
    const char *jour, *du, *au;
    FinSemaine fin = FinSemaine::Limite;
  } cas[] = {
      {milieu, Periode::Aujourdhui, "", "12/03/2003", "12/03/2003"},
      {milieu, Periode::Semaine, "12/03/2003", "10/03/2003", "12/03/2003"},
      {milieu, Periode::Semaine, "12/03/2003", "10/03/2003", "16/03/2003", FinSemaine::Exercice},
      {milieu, Periode::Mois, "01/02/2003", "01/02/2003", "28/02/2003"},
      {milieu, Periode::Exercice, "", "01/01/2003", "31/12/2003"},
      {milieu, Periode::Libre, "", "01/01/2003", "31/12/2003"},
      {juillet, Periode::Semaine, "13/07/2003", "09/07/2003", "13/07/2003"},
      {juillet, Periode::Mois, "01/01/2003", "01/01/2003", "31/01/2003"},
  };
  for (const auto& c : cas) {
    const BornesPeriode bornes = BornesDe(c.cadre, c.periode, GetDate(c.jour), c.fin);
    EXPECT_EQ(StrDate(bornes.du) + " " + StrDate(bornes.au), c.du + std::string(" ") + c.au) << (&c - cas);
  }
  const std::vector<LignePeriode> mois = MoisPeriode(juillet);
  ASSERT_EQ(mois.size(), 12u);
  EXPECT_EQ(StrDate(mois[0].valeur), "01/01/2003") << "of the first year, whatever the exercice";
  EXPECT_EQ(MoisPropose(juillet), 2);
}

class PeriodeReglee : public CabinetDeTest {};

TEST_F(PeriodeReglee, ChoixGarde) {
  ASSERT_TRUE(CreeExercice("2003"));
  const CadrePeriode dedans = LitCadrePeriode(App());
  EXPECT_TRUE(dedans.Contient());
  CadrePeriode dehors = dedans;
  dehors.aujourdhui = NextDate(dehors.fin);
  const std::pair<const char*, int> cas[] = {{"", 0},  {"0", 0}, {"2", 2}, {"3", 3},
                                             {"4", 4}, {"5", 3}, {"-1", 3}};
  for (const auto& [valeur, periode] : cas) {
    App().Reglages.EcritIni("Préférences"_w, "Periode", valeur);
    EXPECT_EQ(PeriodeRetenue(App(), dedans), Periode{periode}) << valeur;
    EXPECT_EQ(PeriodeRetenue(App(), dehors), Periode{std::max(periode, 3)}) << valeur;
  }
  EXPECT_TRUE(RetientPeriode(App(), Periode::Mois));
  EXPECT_EQ(App().Reglages.LitIni("Préférences"_w, "Periode"), "2");
}

}  // namespace
}  // namespace fenlor::test
