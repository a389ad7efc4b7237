
#include "ctl/ctldetest.h"

namespace fenlor::test {
namespace {

class RemiseCtl : public CtlDeTest {
 protected:
  void SetUp() override {
    Cree();
    SaisitTroisSeances();
  }
  /// "1 2r/05/03/2003": entries, and the dates of their slips.
  std::string Remises() {
    std::string texte;
    for (const Json& cheque : Lance({"remise", "lister", "--compte", "BQ"}).Objets())
      if (cheque.contains("Mouvement"))
        texte += (texte.empty() ? "" : " ") + std::to_string(cheque.value("Mouvement", 0)) +
                 (cheque["Remise"] != 0 ? "r/" + cheque.value("DateRemise", "") : "");
    return texte;
  }
};

TEST_F(RemiseCtl, RemettreRetirerImprimer) {
  const struct {
    std::vector<std::string> args;
    int statut;
    const char *dit, *remises;  ///< part of what is said; afterwards
  } cas[] = {
      {{"remise"}, StatutUsage, "il manque lister", "1 2 3"},
      {{"remise", "remettre"}, StatutUsage, "il manque --compte", "1 2 3"},
      {{"remise", "remettre", "--mouvement", "1", "--date", "05/03/2003", "--monnaie", "euro"},
       StatutUsage,
       "--monnaie ne va pas avec --mouvement",
       "1 2 3"},
      {{"remise", "remettre", "--mouvement", "1", "9"}, StatutRefuse, "Erreur 3202", "1 2 3"},
      {{"remise", "lister", "--compte", "CA"}, StatutRefuse, "Erreur 3450", "1 2 3"},
      {{"remise", "lister", "--compte", "BQ", "--au", "03/03/2003", "--monnaie", "euro"},
       StatutFait,
       R"({"Mouvement":1,"Rang":1,"DateLigne":"03/03/2003","Libelle":"Séance","MontantFranc":196.79,)"
       R"("MontantEuro":30,"SaisieEuro":1,"Remise":0,"DateRemise":""})"
       "\n{\"Cheques\":1,\"TotalRemise\":0}\n",
       "1 2 3"},
      {{"remise", "remettre", "--mouvement", "2", "--date", "05/03/2003"},
       StatutFait,
       R"("Remise":1,"DateRemise":"05/03/2003"})",
       "1 2r/05/03/2003 3"},
      {{"remise", "remettre", "--compte", "BQ", "--du", "04/03/2003", "--date", "06/03/2003"},
       StatutFait,
       R"({"Mouvement":3)",
       "1 2r/05/03/2003 3r/06/03/2003"},
      {{"remise", "lister", "--compte", "BQ", "--cheques", "remis", "--monnaie", "euro"},
       StatutFait,
       R"({"Cheques":2,"TotalRemise":90})",
       "1 2r/05/03/2003 3r/06/03/2003"},
      {{"remise", "retirer", "--mouvement", "2"}, StatutFait, "\"Remise\":0", "1 2 3r/06/03/2003"},
      {{"etat", "remise", "--marquage"}, StatutRefuse, "Erreur 3119", "1 2 3r/06/03/2003"},
      {{"etat", "balance", "--date", "06/03/2003", "--marquage"},
       StatutUsage,
       "--date ne va pas avec l'état balance",
       "1 2 3r/06/03/2003"},
      {{"etat", "remise", "--compte", "BQ", "--date", "06/03/2003", "--marquage"},
       StatutFait,
       "1 chèque",
       "1 2 3r/06/03/2003"},
      {{"etat", "remise", "--compte", "BQ", "--remettre", "--date", "07/03/2003", "--marquage"},
       StatutFait,
       "2 chèques\\T110\\R13070,00",
       "1r/07/03/2003 2r/07/03/2003 3r/06/03/2003"},
  };
  for (const auto& c : cas) {
    Essaie({}, {{c.args, c.statut, c.dit}});
    EXPECT_EQ(Remises(), c.remises) << c.dit;
  }
  Sain();
}

}  // namespace
}  // namespace fenlor::test
