
#include "assets/ligneregistre.h"
#include "outils/cabinetdetest.h"

namespace fenlor::test {
namespace {

class Registre : public CabinetDeTest {
 protected:
  static Immobilisation Bien(u32 numero, const char* achat, f64 euro, const char* cession = "") {
    Immobilisation immo{};
    immo.Numero = numero;
    PoseTexte(immo.Designation, "Table");
    immo.DateAchat = GetDate(achat);
    immo.PrixEuro = immo.ValeurAmortissableEuro = euro;
    immo.PrixFranc = immo.ValeurAmortissableFranc = 10 * euro;
    immo.TauxAnnuel = 20;
    immo.Duree = 5;
    immo.DateCession = GetDate(cession);
    return immo;
  }
  /// The lines of an asset, "|" between columns.
  std::vector<std::string> Lignes(const Immobilisation& immo, u32 anneeDroite = 2003) {
    std::vector<std::string> lignes;
    const LigneRegistre ligne = LigneDuRegistre(App(), immo, anneeDroite);
    for (const RangeeRegistre& rangee : RangeesRegistre(ligne, MonnaiesDuRegistre(App()))) {
      std::string texte;
      for (const std::string& cellule : Cellules(ColonnesRegistre(), rangee)) texte += cellule + '|';
      lignes.push_back(texte);
    }
    return lignes;
  }
};

TEST_F(Registre, LesMonnaiesSuiventLAnneeEtLAffichage) {
  const struct {
    const char* exercice;
    bool deux;
    MonnaiesRegistre attendues;
  } table[] = {{"1998", false, {true, false}}, {"1998", true, {true, false}},  {"1999", false, {true, false}},
               {"1999", true, {true, true}},   {"2001", false, {true, false}}, {"2002", false, {false, true}},
               {"2002", true, {true, true}}};
  for (const auto& cas : table) {
    App().NomExercice = cas.exercice;
    App().AfficherDouble = cas.deux;
    EXPECT_EQ(MonnaiesDuRegistre(App()), cas.attendues) << cas.exercice << cas.deux;
  }
}

TEST_F(Registre, UneLigneOuDeuxParBien) {
  ASSERT_TRUE(CreeExercice("2003"));  // today is 15/03/2003: 75 days of it
  Immobilisation bien = Bien(1, "01/07/2001", 1000);
  bien.TVAEuro = 100;
  EXPECT_THAT(Lignes(bien),
              ElementsAre("01/07/2001|Table|1000,00|100,00|900,00|1000,00|||||100,00|200,00|41,67|"
                          "341,67|658,33||||"));
  App().AfficherDouble = true;
  EXPECT_THAT(Lignes(bien, 2001),
              ElementsAre("01/07/2001|Table|10000,00||10000,00|10000,00|L 20,00%||||||1000,00|"
                          "3416,67|6583,33||||",
                          "||1000,00|100,00|900,00|1000,00|||||||100,00|341,67|658,33||||"));
  bien = Bien(1, "01/01/2002", 1000, "30/12/2002");
  bien.TypeAmortissement = Degressif;
  bien.PrixCessionFranc = 9000;
  bien.PrixCessionEuro = 900;
  EXPECT_THAT(
      Lignes(bien),
      ElementsAre("01/01/2002|Table|10000,00||10000,00|10000,00|D 20,00%|||||2000,00||2000,00|8000,00|"
                  "30/12/2002|9000,00|1000,00|",
                  "||1000,00||1000,00|1000,00||||||200,00||200,00|800,00|30/12/2002|900,00|100,00|"));
  App().AfficherDouble = false;
  bien.Rebut = 1;
  bien.PrixCessionFranc = bien.PrixCessionEuro = bien.ValeurAmortissableFranc = bien.ValeurAmortissableEuro =
      0;
  EXPECT_THAT(Lignes(bien), ElementsAre("01/01/2002|Table|1000,00||1000,00|||||||||||30/12/2002|Rebut||"));
  App().NomExercice = "1998";
  EXPECT_THAT(Lignes(bien), ElementsAre("01/01/2002|Table|10000,00||10000,00|||||||||||30/12/2002|||"))
      << "no rate without a value, no word before 1999";
}

TEST_F(Registre, ParDateEtPourLePressePapiers) {
  ASSERT_TRUE(CreeExercice("2003"));
  CImmobilisations fichier(App(), App().PathCabinet);
  EXPECT_TRUE(LitRegistre(App(), fichier).positions.empty());
  ASSERT_TRUE(fichier.OpenFile());
  EXPECT_EQ(LitRegistre(App(), fichier).premiereAnnee, 2003u);
  for (const Immobilisation& bien : {Bien(1, "05/02/2002", 10), Bien(2, "", 1), Bien(3, "06/03/1987", 12.5)})
    ASSERT_TRUE(Magasin().WriteImmobilisations(bien));
  const ListeRegistre liste = LitRegistre(App(), fichier);
  EXPECT_EQ(liste.premiereAnnee, 1987u) << "not that of a damaged date";
  std::vector<std::string> textes;
  for (const Position position : liste.positions) {
    ASSERT_TRUE(fichier.ReadRec(position));
    textes.push_back(TexteRegistre(App(), *fichier.Rec));
  }
  EXPECT_THAT(textes,
              ElementsAre("\tTable\t1,00\t\t1,00\t1,00\tE", "06/03/1987\tTable\t12,50\t\t12,50\t12,50\tE",
                          "05/02/2002\tTable\t10,00\t\t10,00\t10,00\tE"));
}

}  // namespace
}  // namespace fenlor::test
