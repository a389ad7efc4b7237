#include <unistd.h>

#include <csignal>
#include <fstream>

#include "ctl/ctldetest.h"
#include "outils/systemefautif.h"

namespace fenlor::test {
namespace {

/// Input line and the answer that it gets, without "entree": the answer's text is
/// not told, only its number.
struct Cas {
  std::string ligne, reponse;
};

class Saisir : public CtlDeTest {
 protected:
  void SetUp() override { Cree(); }

  void Verifie(const std::vector<Cas>& cas, std::vector<std::string> args = {"saisir"}) {
    std::string entree;
    for (const Cas& c : cas) entree += c.ligne + "\n";
    const Resultat r = Lance(args, entree);
    const auto lignes = r.Lignes();
    ASSERT_EQ(lignes.size(), cas.size()) << r.erreurs;
    bool refus = false;
    for (std::size_t i = 0; i < cas.size(); ++i) {
      Json reponse = Json::parse(lignes[i]);
      EXPECT_EQ(reponse["entree"], i + 1);
      reponse.erase("entree");
      if (reponse.contains("erreur")) {
        refus = true;
        EXPECT_FALSE(reponse["texte"].get<std::string>().empty());
        reponse.erase("texte");
      }
      EXPECT_EQ(reponse, Json::parse(cas[i].reponse)) << cas[i].ligne << "\n" << lignes[i];
    }
    EXPECT_EQ(r.statut, refus ? StatutRefuse : StatutFait);
    Sain();
  }
};

TEST_F(Saisir, EcrituresNouvelles) {
  Verifie({
      {R"({"journal":"recettes","date":"15/03/2003","compte":"706","libelle":"Consultations","ttc":120.0,"tresorerie":"BQ","paiement":"cheque"})",
       R"({"mouvement":1,"ligne":1})"},
      {R"({"journal":"depenses","date":"16/03/2003","code":" tel ","ttc":60.557,"professionnel":40,"tresorerie":"51 2"})",
       R"({"mouvement":2,"ligne":1})"},
      {R"({"journal":"recettes","date":"31/3/2003","code":"CONSULT","libelle":"Née Œuvrard","ttc":100,"monnaie":"euro","tresoreries":[{"compte":"bq","montant":60,"paiement":"autre"},{"compte":"530","montant":40}]})",
       R"({"mouvement":3,"ligne":2})"},
      {R"({"journal":"OD","date":"18/04/2003","libelle":"Versement","lignes":[{"compte":"512","libelle":"Dépôt","debit":10.0},{"code":"CA","credit":10}]})",
       R"({"mouvement":4,"ligne":1})"},
      {R"({"journal":"recettes","date":"20/03/2003","compte":"706","ttc":-15,"tresorerie":"CA","valider":true,"pointer":true})",
       R"({"mouvement":5,"ligne":3})"},
  });
  const auto journal = Journal();
  const auto ligne = [&](std::size_t i) {
    const Json& l = journal.at(i);
    return Json{l["Mouvement"],    l["Compte"],  l["MontantEuro"], l["Sens"].get<int>() != 0,
                l["ModePaiement"], l["Libelle"], l["Validee"],     l["Pointee"],
                l["Date"]};
  };
  const char* attendues[] = {
      R"([1,"7060000000",120.0,true,0,"Consultations",0,0,"15/03/2003"])",
      R"([1,"5120000000",120.0,false,0,"Consultations",0,0,"15/03/2003"])",
      R"([2,"6262000000",40.0,false,0,"Téléphone et Internet",0,0,"16/03/2003"])",
      R"([2,"1080000000",20.56,false,0,"Téléphone et Internet",0,0,"16/03/2003"])",
      R"([2,"5120000000",60.56,true,0,"Téléphone et Internet",0,0,"16/03/2003"])",
      R"([3,"7061000000",100.0,true,0,"Née Œuvrard",0,0,"31/03/2003"])",
      R"([3,"5120000000",60.0,false,1,"Née Œuvrard",0,0,"31/03/2003"])",
      R"([3,"5300000000",40.0,false,0,"Née Œuvrard",0,0,"31/03/2003"])",
      R"([4,"5120000000",10.0,false,0,"Versement",0,0,"18/04/2003"])",
      R"([4,"5300000000",10.0,true,0,"Versement",0,0,"18/04/2003"])",
      R"([5,"7060000000",15.0,false,0,"Honoraires",1,1,"20/03/2003"])",
      R"([5,"5300000000",15.0,true,1,"Honoraires",1,1,"20/03/2003"])",
  };
  ASSERT_EQ(journal.size(), std::size(attendues));
  for (std::size_t i = 0; i < journal.size(); ++i)
    EXPECT_EQ(ligne(i), Json::parse(attendues[i])) << journal[i];
  const auto balance = Balance();
  EXPECT_EQ(balance.at("512")["SoldeEuro"], -129.44);
  EXPECT_EQ(balance.at("706")["SoldeEuro"], 105);
  EXPECT_EQ(balance.at("")["TotalDebitEuro"], balance.at("")["TotalCreditEuro"]);
}

TEST_F(Saisir, RefusDeChamps) {
  const Json recette = Json::parse(Recette);
  // A receipt with other fields; null takes one away.
  const std::pair<const char*, int> autres[] = {
      {R"({"tresorerie":null})", 3204},
      {R"({"compte":null})", 3204},
      {R"({"ttc":"1"})", 3205},
      {R"({"date":20030315})", 3205},
      {R"({"code":"HONOR"})", 3205},
      {R"({"compte":"70600000001"})", 3205},
      {R"({"paiement":"carte"})", 3205},
      {R"({"tresoreries":[]})", 3205},
      {R"({"tresorerie":null,"tresoreries":[{"compte":"BQ"}]})", 3204},
      {R"({"tresorerie":null,"tresoreries":["BQ"]})", 3205},
      {R"({"tresorerie":null,"tresoreries":[{"compte":"BQ","montant":1,"taux":2}]})", 3203},
      {R"({"lignes":[]})", 3205},
      {R"({"couleur":"bleu"})", 3203},
      {R"({"libelle":"日"})", 3205},
      {R"({"libelle":"a\tb"})", 3205},
      {R"({"date":"31/02/2003","compte":"9"})", 3104},  // of the rules
      {R"({"compte":null,"code":"TEL"})", 3105},
  };
  const std::pair<const char*, int> entieres[] = {
      {R"({})", 3204},
      {R"({"journal":"recettes"})", 3204},
      {R"({"journal":"ventes","date":"15/03/2003"})", 3205},
      {R"({"journal":1})", 3205},
      {R"({"journal":"recettes","date":"15/03/2003","compte":"706","ttc":null,"tresorerie":"BQ"})", 3205},
      {R"({"journal":"od","date":"15/03/2003","lignes":[{"debit":1}]})", 3204},
      {R"({"journal":"od","date":"15/03/2003","ttc":1,"lignes":[]})", 3205},
      {R"({"journal":"od","date":"15/03/2003","lignes":[{"compte":"512","debit":1}]})", 3301},
      {R"({"supprimer":true})", 3204},
      {R"({"mouvement":0,"supprimer":true})", 3205},
      {R"({"mouvement":1.5,"supprimer":true})", 3205},
      {R"({"mouvement":4294967296,"supprimer":true})", 3205},
      {R"({"mouvement":1})", 3205},
      {R"({"mouvement":1,"supprimer":true,"ttc":3})", 3205},
      {R"(pas du JSON)", 3200},
      {"{\"journal\":\"\xE9\"}", 3200},
  };
  std::vector<Cas> cas;
  const auto refuse = [&](const std::string& ligne, int erreur) {
    cas.push_back({ligne, Json{{"erreur", erreur}}.dump()});
  };
  for (const auto& [change, erreur] : autres) {
    Json ligne = recette;
    ligne.merge_patch(Json::parse(change));
    refuse(ligne.dump(), erreur);
  }
  Json longue = recette;
  longue["libelle"] = std::string(81, 'x');
  refuse(longue.dump(), 3206);
  for (const auto& [ligne, erreur] : entieres) refuse(ligne, erreur);
  Verifie(cas);
  EXPECT_TRUE(Journal().empty());
}

TEST_F(Saisir, ChangementsEtMarques) {
  const std::vector<Cas> debut = {
      {R"({"journal":"depenses","date":"15/03/2003","code":"TEL","libelle":"Facture","ttc":100,"professionnel":30,"tresorerie":"BQ"})",
       R"({"mouvement":1,"ligne":1})"},
      {R"({"journal":"od","date":"18/03/2003","libelle":"Versement","lignes":[{"compte":"512","debit":10},{"compte":"530","credit":10}]})",
       R"({"mouvement":2,"ligne":1})"},
      // A label alone keeps every amount.
      {R"({"mouvement":1,"libelle":"Facture de mars"})", R"({"mouvement":1,"ligne":1})"},
      {R"({"mouvement":1,"date":"20/03/2003","pointer":true,"rapprocher":true})",
       R"({"mouvement":1,"ligne":1})"},
      {R"({"mouvement":1,"pointer":true})", R"({"mouvement":1,"ligne":1})"},
      {R"({"mouvement":1,"tresorerie":"CCP"})", R"({"erreur":3300})"},
      {R"({"mouvement":1,"journal":"recettes","ttc":1})", R"({"erreur":3205})"},
      {R"({"mouvement":1,"lignes":[]})", R"({"erreur":3205})"},
      {R"({"mouvement":2,"ttc":1})", R"({"erreur":3205})"},
      {R"({"mouvement":2,"libelle":"Versement à la banque"})", R"({"mouvement":2,"ligne":1})"},
      // What is refused takes the marks of the same line back.
      {R"({"mouvement":1,"ttc":50,"rapprocher":false,"date":"99/03/2003"})", R"({"erreur":3104})"},
      {R"({"mouvement":1,"supprimer":true})", R"({"erreur":3303})"},
  };
  Verifie(debut);
  auto journal = Journal();
  ASSERT_EQ(journal.size(), 5u);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(journal[i]["Libelle"], "Facture de mars");
    EXPECT_EQ(journal[i]["Date"], "20/03/2003");
    EXPECT_EQ(journal[i]["Pointee"], 1);
  }
  EXPECT_EQ(journal[0]["MontantEuro"], 30);
  EXPECT_EQ(journal[2]["Rapprochee"], 1);
  EXPECT_EQ(journal[3]["Libelle"], "Versement à la banque");
  EXPECT_EQ(journal[3]["MontantEuro"], 10);

  // With another amount and no professional share the account's own share counts.
  Verifie({{R"({"mouvement":1,"ttc":80,"valider":true})", R"({"mouvement":1,"ligne":1})"},
           {R"({"mouvement":1,"ttc":90})", R"({"erreur":3201})"},
           {R"({"mouvement":1,"supprimer":true})", R"({"erreur":3016})"},
           {R"({"mouvement":1,"valider":false})", R"({"erreur":3318})"},
           {R"({"mouvement":2,"supprimer":true})", R"({"mouvement":2,"ligne":1})"}});
  journal = Journal();
  ASSERT_EQ(journal.size(), 2u);
  EXPECT_EQ(journal[0]["MontantEuro"], 80);
  EXPECT_EQ(journal[1]["Rapprochee"], 1);
}

TEST_F(Saisir, CommeDansLaFenetre) {
  Verifie(
      {{R"({"journal":"recettes","date":"15/03/2003","compte":"706","ttc":100,"professionnel":60,"tresorerie":"BQ"})",
        R"({"erreur":3205})"},
       {R"({"journal":"recettes","date":"15/03/2003","compte":"706","ttc":100,"tresoreries":[{"compte":"CCP","montant":40},{"compte":"BQ","montant":60,"paiement":"autre"}]})",
        R"({"mouvement":1,"ligne":1})"},
       {R"({"mouvement":1,"professionnel":60})", R"({"erreur":3205})"},
       // The line that stays keeps its mode of payment, to and fro.
       {R"({"mouvement":1,"tresorerie":"BQ"})", R"({"mouvement":1,"ligne":1})"},
       {R"({"mouvement":1,"tresoreries":[{"compte":"BQ","montant":30},{"compte":"CCP","montant":70}]})",
        R"({"mouvement":1,"ligne":1})"},
       // Lines that bear the label of an opération diverse follow it.
       {R"({"journal":"od","date":"18/03/2003","libelle":"Apport","lignes":[{"compte":"512","debit":10},{"compte":"530","libelle":"Retrait","credit":10}]})",
        R"({"mouvement":2,"ligne":1})"},
       {R"({"mouvement":2,"libelle":"Versement"})", R"({"mouvement":2,"ligne":1})"}},
      {"saisir"});
  const auto journal = Journal();
  ASSERT_EQ(journal.size(), 5u);
  EXPECT_EQ(journal[1]["ModePaiement"], 1) << "512";
  EXPECT_EQ(journal[2]["ModePaiement"], 0);
  EXPECT_EQ(journal[3]["Designation"], "Versement");
  EXPECT_EQ(journal[4]["Designation"], "Retrait");
}

TEST_F(Saisir, OuiRepondAuxQuestions) {
  Verifie(
      {{R"({"journal":"recettes","date":"15/03/2003","compte":"706","ttc":100,"tresorerie":"BQ","valider":true})",
        R"({"mouvement":1,"ligne":1})"},
       {R"({"mouvement":1,"valider":false,"tresorerie":"CA"})", R"({"mouvement":1,"ligne":1})"},
       {R"({"mouvement":1,"ttc":50,"tresoreries":[{"compte":"BQ","montant":20},{"compte":"CA","montant":30}]})",
        R"({"mouvement":1,"ligne":1})"},
       {R"({"mouvement":1,"paiement":"autre"})", R"({"erreur":3205})"},
       {R"({"journal":"od","date":"15/03/2003","libelle":"Écart","lignes":[{"compte":"512","debit":10},{"compte":"530","credit":9.99}]})",
        R"({"mouvement":2,"ligne":1})"}},
      {"saisir", "--oui"});
  const auto journal = Journal();
  ASSERT_EQ(journal.size(), 6u);
  EXPECT_EQ(journal[2]["Compte"], "5300000000");
  EXPECT_EQ(journal[5]["Compte"], "7580000000");
  EXPECT_EQ(journal[5]["MontantEuro"], 0.01);
}

TEST_F(Saisir, EntreeParLignes) {
  const Resultat r = Lance({"saisir", "-"}, "\n" + std::string(3 << 20, 'x') + "\n" + Recette);
  EXPECT_THAT(r.Lignes().at(1), HasSubstr(R"("entree":3,"mouvement":1)"));
  EXPECT_EQ(r.erreurs, "Erreur 3200, ligne 2 : plus de 1048576 octets.\n");
  EXPECT_EQ(Lance({"saisir", Cabinet() + "/absent"}).statut, StatutRefuse);
  EXPECT_EQ(Lance({"saisir", Cabinet()}).statut, StatutRefuse);
}

TEST_F(Saisir, ToutEstUneUnite) {
  const std::vector<Cas> cas = {
      {Recette, R"({"mouvement":1,"ligne":1})"},
      {R"({"journal":"recettes","date":"15/03/2003","compte":"706","ttc":0,"tresorerie":"BQ"})",
       R"({"erreur":3106})"},
      {R"({"mouvement":1,"ttc":2})", R"({"mouvement":1,"ligne":1})"},
      {R"({"journal":"recettes","date":"15/03/2003","compte":"706","ttc":4,"tresorerie":"BQ"})",
       R"({"mouvement":2,"ligne":2})"},
      {R"({"mouvement":2,"supprimer":true})", R"({"mouvement":2,"ligne":2})"},
  };
  Verifie(cas, {"saisir", "--tout"});
  EXPECT_EQ(Balance().at("706")["SoldeEuro"], 2);
}

/// Looks at the disk whenever an answer is given out.
class SortieTemoin : public std::stringbuf {
 public:
  explicit SortieTemoin(const SystemeFautif& disque) : m_disque(disque) {}
  int sync() override {
    const std::string texte = str();
    const auto reponses = static_cast<std::size_t>(std::count(texte.begin(), texte.end(), '\n'));
    if (reponses > SynchrosAlors.size()) SynchrosAlors.push_back(m_disque.Compte(SystemeFautif::Synchro));
    EXPECT_EQ(reponses, SynchrosAlors.size()) << "two answers in one flush";
    return 0;
  }
  std::vector<u64> SynchrosAlors;  ///< syncs of the disk when answer i left

 private:
  const SystemeFautif& m_disque;
};

TEST_F(Saisir, ReponseApresLeDisque) {
  SystemeSansSynchro dessous;
  SystemeFautif disque(dessous);
  OptionsCtl options = Options();
  options.magasin.systeme = &disque;
  SortieTemoin temoin(disque);
  std::ostream sortie(&temoin);
  std::ostringstream erreurs;
  std::string entree;
  for (int i = 0; i < 5; ++i) entree += std::string(Recette) + "\n";
  std::istringstream flux(entree);
  ASSERT_EQ(ExecuteCtl({"--cabinet", Cabinet(), "saisir"}, flux, sortie, erreurs, options), StatutFait)
      << erreurs.str();
  ASSERT_EQ(temoin.SynchrosAlors.size(), 5u);
  for (std::size_t i = 1; i < 5; ++i) EXPECT_GT(temoin.SynchrosAlors[i], temoin.SynchrosAlors[i - 1]);
}

TEST_F(Saisir, DisquePleinAuMilieuDUnTout) {
  constexpr int Nombre = 4000;
  std::string lignes;
  for (int i = 0; i < Nombre; ++i) lignes += std::string(i == 7 ? "{}" : Recette) + "\n";
  SystemeSansSynchro vrai;
  SystemeFautif disque(vrai);
  disque.Programme(3, ENOSPC, SystemeFautif::Reservation, false);
  const Resultat r = LanceSur(Cabinet(), {"saisir", "--tout"}, lignes, &disque);
  EXPECT_EQ(r.statut, StatutRefuse);
  ASSERT_GT(disque.NbPannes(), 0u);
  int nombre = 0;
  for (const Json& reponse : r.Objets()) EXPECT_EQ(reponse["erreur"], nombre++ == 7 ? 3204 : 3214) << reponse;
  EXPECT_EQ(nombre, Nombre);
  // What all lines fail of is told once, behind what is wrong with one of them.
  EXPECT_EQ(std::count(r.erreurs.begin(), r.erreurs.end(), '\n'), 3) << r.erreurs;
  EXPECT_THAT(r.erreurs, HasSubstr("ligne 8 : Le champ"));
  EXPECT_TRUE(Journal().empty()) << "nothing of the unit may stay";
  Sain();
}

TEST_F(Saisir, SortiePerdue) {
  std::istringstream entree(Recette);
  std::ofstream pleine("/dev/full");
  std::ostringstream erreurs;
  EXPECT_EQ(ExecuteCtl({"--cabinet", Cabinet(), "saisir"}, entree, pleine, erreurs, Options()), StatutRefuse);
  EXPECT_NE(erreurs.str().find("Erreur 3022"), std::string::npos);
  EXPECT_EQ(Journal().size(), 2u);

  // A reader that went away is no failure to tell.
  const auto avant = std::signal(SIGPIPE, SIG_IGN);
  for (const std::vector<std::string>& commande :
       {std::vector<std::string>{"exporter", "JOURNAL"}, {"balance"}}) {
    int bouts[2];
    ASSERT_EQ(pipe(bouts), 0);
    std::ofstream tuyau("/dev/fd/" + std::to_string(bouts[1]));
    for (const int bout : bouts) close(bout);
    std::vector<std::string> args{"--cabinet", Cabinet()};
    args.insert(args.end(), commande.begin(), commande.end());
    erreurs.str("");
    EXPECT_EQ(ExecuteCtl(args, entree, tuyau, erreurs, Options()), StatutRefuse);
    EXPECT_EQ(erreurs.str(), "") << commande[0];
  }
  std::signal(SIGPIPE, avant);
}

}  // namespace
}  // namespace fenlor::test
