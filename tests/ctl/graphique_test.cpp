// `fenlorctl graphique`: what is asked for, and what comes out.

#include "ctl/ctldetest.h"
#include "graphiques/serie.h"

namespace fenlor::test {
namespace {

using ::testing::StartsWith;

class GraphiqueCtl : public CtlDeTest {
 protected:
  void SetUp() override {
    Cree();
    Saisit(
        R"({"journal":"recettes","date":"03/03/2003","compte":"706","libelle":"Consultations","ttc":100,"tresorerie":"BQ"}
{"journal":"depenses","date":"06/04/2003","code":"TEL","libelle":"Téléphone","ttc":50.5,"tresorerie":"BQ"})");
  }
  Resultat Graphique(std::vector<std::string> args) {
    args.insert(args.begin(), "graphique");
    return Lance(std::move(args));
  }
};

TEST_F(GraphiqueCtl, LigneIncorrecteOuRefusee) {
  Essaie({"graphique"},
         {
             {{"--texte"}, StatutUsage, "il manque --compte"},
             {{"--compte", "BQ"}, StatutUsage, "il faut une sortie, et une seule"},
             {{"--compte", "BQ", "--texte", "--svg", "-"}, StatutUsage, "il faut une sortie, et une seule"},
             {{"--compte", "BQ", "--texte", "--genre", "ronds"},
              StatutUsage,
              "mot inconnu : ronds (aires, aires-3d"},
             {{"--compte", "BQ", "--texte", "--du", "02/01/2003", "--au", "01/01/2003"},
              StatutUsage,
              "avant --du"},
             {{"--compte", "BQ", "--texte", "--comparaison"}, StatutRefuse, "3113 "},
             {{"--compte", "ZZ", "--texte"}, StatutRefuse, "aucun compte de recettes"},
             {{"--compte", "BQ", "--pdf", "-"}, StatutRefuse, "PDF"},
             {{"--compte", "BQ", "--svg", "/absent/g.svg"}, StatutRefuse, "3580 "},
         });
}

TEST_F(GraphiqueCtl, Sorties) {
  const Resultat mois = Graphique({"--compte", "BQ", "--texte", "--au", "31/03/2003"});
  EXPECT_THAT(mois.sortie, HasSubstr("Fév\t0,00\nMar\t-100,00\nAvr\t0,00\n")) << mois.erreurs;
  const Resultat comptes = Graphique({"--compte", "706", "BQ", "--comparaison", "--texte", "--json"});
  EXPECT_EQ(comptes.sortie, "{\"libelle\":\"706\",\"valeur\":100}\n{\"libelle\":\"512\",\"valeur\":-49.5}\n")
      << comptes.erreurs;
  const Resultat svg = Graphique({"--compte", "706", "--svg", "-", "--genre", "secteurs-3d"});
  EXPECT_THAT(svg.sortie, StartsWith("<?xml"));
  EXPECT_THAT(svg.sortie, HasSubstr("Mar 100,0 %</text>"));
  Options().ecritPdfGraphique = [](CFenlorApp&, const SerieGraphique& serie, GenreGraphique,
                                   const std::string& f,
                                   int) { return serie.points.size() == 12 && f == "/tmp/g.pdf"; };
  EXPECT_EQ(Graphique({"--compte", "706", "--pdf", "/tmp/g.pdf"}).statut, StatutFait);
}

}  // namespace
}  // namespace fenlor::test
