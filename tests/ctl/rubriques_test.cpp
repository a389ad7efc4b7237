
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

class RubriquesCtl : public CtlDeTest {
 protected:
  Json Rubrique(const std::string& code) {
    return Lance({"--json", "rubrique", "lister"}).Objet("Rubrique", (code + "  ").substr(0, 3));
  }
};

TEST_F(RubriquesCtl, UnEtatArrange) {
  Cree();
  Essaie({"rubrique"}, {
                           {{}, StatutUsage, "il manque ajouter"},
                           {{"ajouter", "--type", "autre"}, StatutUsage, "mot inconnu"},
                           {{"ajouter", "--ligne", "1x"}, StatutUsage, "numéro de ligne incorrect"},
                           {{"ajouter", "--montant", "--5"}, StatutUsage, "nombre incorrect"},
                           {{"ajouter", "--montant", "5", "--formule", "01"}, StatutUsage, "--formule"},
                           {{"ajouter", "--designation", "Sans code"}, StatutRefuse, "Erreur 3061"},
                           {{"ajouter", "--code", "x1", "--designation", "Réintégré", "--type", "resultat",
                             "--ligne", "361", "--formule", "-X2+&AMORT"},
                            StatutFait,
                            "Rubrique X1 enregistrée."},
                           {{"ajouter", "--code", "X2", "--montant", "-12,5"}, StatutFait, "X2"},
                           {{"ajouter", "--code", "X9", "--formule", "QQ+01"}, StatutFait, "variable : QQ"},
                           {{"modifier", "X3", "--ligne", "5"}, StatutRefuse, "n'existe pas"},
                           {{"modifier", "x1", "--code", "X3"}, StatutFait, "X3"},
                           {{"lister"}, StatutFait, "X3    361    resultat  Réintégré"},
                       });
  EXPECT_EQ(Rubrique("X3")["Formule"], "-X2+&AMORT");
  EXPECT_EQ(Rubrique("X2")["ManuelEuro"], -12.5);
  ASSERT_EQ(Lance({"rubrique", "modifier", "X2", "--formule", ""}).statut, StatutFait);
  EXPECT_EQ(Rubrique("X2")["Manuel"], 0);
  EXPECT_EQ(Lance({"rubrique", "supprimer", "X2"}).erreurs,
            "Erreur 3346 : Suppression de la rubrique X2 ?\n");
  EXPECT_EQ(Lance({"rubrique", "supprimer", "X2", "--oui"}).statut, StatutFait);
  EXPECT_TRUE(Rubrique("X2").is_null());
  Sain();
}

}  // namespace
}  // namespace fenlor::test
