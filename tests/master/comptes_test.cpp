#include "master/comptes.h"

#include "core/erreurssaisie.h"
#include "journal/cabinetmedical.h"
#include "master/textes.h"

namespace fenlor::test {
namespace {

constexpr auto RecettesDepenses = FormeCompte::RecettesDepenses;
constexpr auto FormeTresorerie = FormeCompte::Tresorerie;
constexpr auto PlanComptable = FormeCompte::PlanComptable;

class ComptesTest : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }

  Position Place(std::string_view compte) {
    CPlan plan(App(), App().PathExercice);
    PoseTexte(plan.Rec->Compte, Long(compte));
    return plan.OpenFile() && plan.Find(0) ? plan.GetPos() : 0;
  }
  FicheCompte Fiche(std::string_view compte) {
    FicheCompte fiche;
    EXPECT_FALSE(LitFiche(App(), Place(compte), fiche)) << compte;
    return fiche;
  }
  FicheCompte Nouveau(i16 type, const std::string& code, const std::string& compte) {
    FicheCompte fiche;
    fiche.type = type;
    fiche.code = code;
    fiche.compte = compte;
    return fiche;
  }
  unsigned Enregistre(FormeCompte forme, FicheCompte fiche) {
    fiche.forme = forme;
    return EnregistreFiche(App(), fiche).numero;
  }
  unsigned Supprime(FormeCompte forme, std::string_view compte) {
    auto fiche = FicheA<FicheCompte>(Place(compte));
    fiche.forme = forme;
    return SupprimeFiche(App(), fiche).numero;
  }
  void Mouvemente() { ASSERT_NE(CabinetMedical::Enregistre(Ecriture(JournalRecettes, "7070", 119.6)), 0u); }
  u32 NombreDeComptes() { return Magasin().GetPlanRec(0); }

  /// One attempt to save; the fields that point is named by.
  struct Essai {
    const char *code, *compte;
    int reponse;  ///< to the question that is asked, 0: none is
    unsigned erreur;
    const char* champ;
  };
  void Essaie(FormeCompte forme, FicheCompte fiche, const std::vector<Essai>& essais) {
    fiche.forme = forme;
    for (const Essai& e : essais) {
      fiche.code = e.code;
      fiche.compte = e.compte;
      Boite.Oublie();
      if (e.reponse) Boite.Reponses.push_back(e.reponse);
      const Refus r = EnregistreFiche(App(), fiche);
      EXPECT_EQ(r.numero, e.erreur) << e.code << '/' << e.compte;
      EXPECT_STREQ(r.champ, e.champ) << e.code << '/' << e.compte;
      EXPECT_TRUE(Boite.Reponses.empty()) << "a question was not asked: " << e.code << '/' << e.compte;
      Boite.Reponses.clear();
    }
    EXPECT_NE(fiche.position, 0u);
  }
};

// Each step mends the fault that was told before; the code at the end is free but for others.

TEST_F(ComptesTest, RefusDUneRecetteDansLOrdre) {
  Essaie(RecettesDepenses, Nouveau(Recette, "", ""),
         {{"TROPLONGX", "", 0, ErrTexteTropLong, "code"},
          {"", "70650000001", 0, ErrTexteTropLong, "compte"},
          {"  ", "", 0, 3057, "code"},
          {"HONOR", " ", 0, 3091, "compte"},
          {"HONOR", "70 6", 0, 3070, "compte"},
          {"HONOR", "612", 0, 0, ""}});
  EXPECT_EQ(+LitCompte(Long("612")).Type, Recette);
  EXPECT_EQ(+LitCompte(Long("612")).PartPro, 100);
}

TEST_F(ComptesTest, RefusDUneTresorerieDansLOrdre) {
  Regle("TRESORERIE", "Classe", "51");
  FicheCompte fiche = Nouveau(Recette, "", "");
  fiche.creditInitial = 100;
  Essaie(FormeTresorerie, fiche,
         {{"", "", 0, 3057, "code"},
          {"activite", "", 0, 3091, "compte"},
          {"activite", "531", 0, ErrCodeReserve, "code"},
          {"2003", "531", 0, ErrCodeReserve, "code"},
          {"bq ", "531", RepOui, QuestionSoldeCrediteur, "credit"},
          {"bq ", "531", RepNon, 3090, "compte"},
          {"bq ", "512", RepNon, 3092, "compte"},
          {"bq ", "519", RepNon, 3110, "code"},
          {" HONOR ", "519", RepNon, 0, ""}});
  const Plan compte = LitCompte(Long("519"));
  EXPECT_EQ(LitTexte(compte.Code), "HONOR") << "that of a receipts account, which saving accepts";
  EXPECT_EQ(+compte.Type, Tresorerie);
  EXPECT_EQ(+compte.TypeTresorerie, 1);
  EXPECT_EQ(+compte.SoldeInitialEuro, 100);
  EXPECT_EQ(+compte.SoldeInitialFranc, 655.96);
}

TEST_F(ComptesTest, RefusDuPlanComptableDansLOrdre) {
  FicheCompte fiche = Nouveau(Tresorerie, "", "");
  fiche.creditInitial = 100;
  Boite.Defaut = RepNon;
  Essaie(PlanComptable, fiche,
         {{"", "", 0, 3057, "code"},
          {"BQ", "", 0, 3091, "compte"},
          {"COMPTES", "706", 0, ErrCodeReserve, "code"},
          {"BQ", "706", RepOui, QuestionSoldeCrediteur, "credit"},
          {"BQ", "706", RepNon, 3047, "type"},
          {"BQ", "512", RepNon, 3092, "compte"},
          {"BQ", "519", RepNon, 3110, "code"},
          {"NEUF", "519", RepNon, 0, ""}});
  Essaie(PlanComptable, Nouveau(Recette, "", ""),
         {{"R", "6198", RepNon, 3047, "type"}, {"R", "6198", RepOui, 0, ""}});
  EXPECT_EQ(+LitCompte(Long("6198")).Type, Recette);
}

TEST_F(ComptesTest, RegleDesClasses) {
  struct {
    i16 type;
    const char* justes;  ///< first characters that go without a question
  } const cas[] = {{Tresorerie, "5"}, {Recette, "7"}, {Depense, "6"}, {Tva, "4"}, {Autre, "0123 89A"}};
  for (const auto& c : cas)
    for (const char classe : std::string("012345678 9A"))
      EXPECT_EQ(ClasseJuste(c.type, std::string(1, classe) + "00"),
                std::string(c.justes).find(classe) != std::string::npos)
          << c.type << ' ' << classe;
}

TEST_F(ComptesTest, CodeEtNumeroDejaPris) {
  struct {
    FormeCompte forme;
    const char *moi, *code, *compte;
    unsigned erreurCode, erreurNumero;
  } const cas[] = {{RecettesDepenses, "", "honor", "512", 3058, 3070},
                   {RecettesDepenses, "706", " HONOR ", "706", 0, 0},
                   {RecettesDepenses, "706", "LOYER", "6132", 3058, 3070},
                   {FormeTresorerie, "", "LOYER", "514", 3058, 3092},
                   {PlanComptable, "512", "CCP", "514", 3058, 3092},
                   {PlanComptable, "", "", "", 0, 0},
                   {FormeTresorerie, "", "LOYE", "5140000001", 0, 0}};
  for (const auto& c : cas) {
    FicheCompte fiche = Nouveau(Recette, c.code, c.compte);
    fiche.forme = c.forme;
    if (*c.moi) fiche.position = Place(c.moi);
    EXPECT_EQ(ControleCode(App(), fiche).numero, c.erreurCode) << c.code;
    EXPECT_EQ(ControleNumero(App(), fiche).numero, c.erreurNumero) << c.compte;
  }
}

TEST_F(ComptesTest, UneModificationGardeLesCumuls) {
  Mouvemente();
  const Plan avant = LitCompte(Long("7070"));
  ASSERT_TRUE(ADesMouvements(avant) && avant.TVAEuro != 0);
  FicheCompte fiche = Fiche("7070");
  fiche.designation = "Actes hors nomenclature";
  fiche.code = "HN";
  const u64 synchros = Magasin().NbSynchros();
  const u32 nombre = NombreDeComptes();
  ASSERT_FALSE(EnregistreFiche(App(), fiche));
  EXPECT_EQ(Magasin().NbSynchros(), synchros + 1) << "one unit";
  EXPECT_EQ(NombreDeComptes(), nombre);
  EXPECT_EQ(fiche.position, Place("7070"));
  Plan attendu = avant;
  PoseTexte(attendu.Code, "HN");
  PoseTexte(attendu.Designation, "Actes hors nomenclature");
  attendu.TauxTVA = 19.6;  // copied from the VAT account
  const Plan apres = LitCompte(Long("7070"));
  EXPECT_EQ(std::memcmp(&apres, &attendu, sizeof apres), 0);

  // With movements, number, type and rate stand.
  fiche.compte = "7071";
  EXPECT_EQ(Enregistre(RecettesDepenses, fiche), ErrCompteMouvemente);
  fiche = Fiche("7070");
  fiche.type = Autre;
  EXPECT_EQ(Enregistre(PlanComptable, fiche), ErrCompteMouvemente);
  fiche = Fiche("4451");
  fiche.tauxTVA = 20;
  EXPECT_EQ(Enregistre(PlanComptable, fiche), 3100u);
  // Without, the record moves, but never over another.
  fiche = Fiche("6132");
  fiche.compte = "512";
  EXPECT_EQ(Enregistre(RecettesDepenses, fiche), 3070u);
  fiche.compte = "6198";
  EXPECT_EQ(Enregistre(RecettesDepenses, fiche), 0u);
  EXPECT_EQ(Place("6132"), 0u);
  EXPECT_EQ(NombreDeComptes(), nombre);
}

TEST_F(ComptesTest, TvaEtRepartition) {
  struct {
    const char* tva;  ///< setting of the exercice
    i16 type;
    const char* compteTva;
    f64 partPro;
    const char* stocke;
    f64 taux, part;
  } const cas[] = {{"Oui", Recette, "4451", 60, "4451", 19.6, 100},
                   {"Oui", Depense, "4451", 60, "4451", 19.6, 60},
                   {"Oui", Depense, "", 120, "", 0, 120},
                   {"Oui", Depense, "706", 60, "", 0, 60},
                   {"Non", Depense, "4451", 60, "", 0, 60},
                   {"Oui", Tva, "4451", 60, "", 7, 100},
                   {"Non", Tva, "", 60, "", 7, 100},
                   {"Oui", Autre, "4451", 60, "", 0, 100}};
  Boite.Defaut = RepOui;
  for (const auto& c : cas) {
    Regle("2003", "TVA", c.tva);
    FicheCompte fiche = c.type == Depense ? Fiche("6154") : Nouveau(c.type, "NEUF", "4900");
    fiche.compteTVA = Long(c.compteTva);
    fiche.tauxTVA = 7;
    fiche.partPro = c.partPro;
    fiche.rubrique = " 1";
    ASSERT_EQ(Enregistre(PlanComptable, fiche), 0u);
    const Plan compte = LitCompte(Long(fiche.compte));
    EXPECT_EQ(LitTexte(compte.CompteTVA), Long(c.stocke)) << c.tva << c.type << c.compteTva;
    EXPECT_EQ(+compte.TauxTVA, c.taux) << c.tva << c.type << c.compteTva;
    EXPECT_EQ(+compte.PartPro, c.part) << c.tva << c.type << c.compteTva;
    EXPECT_EQ(LitTexte(compte.Rubrique), " 1 ");
    Magasin().OpenPlan({});
    if (c.type != Depense) {
      ASSERT_TRUE(Magasin().DeletePlan(Place("4900")));
    }
  }
}

TEST_F(ComptesTest, SoldeInitial) {
  Regle("TAUX EURO", "1", "01/01/2003|6,5");
  struct {
    f64 debit, credit, euro, franc;
  } const cas[] = {{150.25, 0, -150.25, -976.62}, {0, 10, 10, 65}, {0, 0, 0, 0}};
  Boite.Defaut = RepNon;
  for (const auto& c : cas) {
    FicheCompte fiche = Fiche("512");
    fiche.debitInitial = c.debit;
    fiche.creditInitial = c.credit;
    ASSERT_EQ(Enregistre(FormeTresorerie, fiche), 0u);
    EXPECT_EQ(+LitCompte(Long("512")).SoldeInitialEuro, c.euro);
    EXPECT_EQ(+LitCompte(Long("512")).SoldeInitialFranc, c.franc);
    fiche = Fiche("512");
    EXPECT_EQ(fiche.debitInitial, c.debit);
    EXPECT_EQ(fiche.creditInitial, c.credit);
  }
  Regle("2003", "EURO", "Non");
  FicheCompte fiche = Fiche("512");
  fiche.debitInitial = 65;
  ASSERT_EQ(Enregistre(PlanComptable, fiche), 0u);
  EXPECT_EQ(+LitCompte(Long("512")).SoldeInitialFranc, -65);
  EXPECT_EQ(+LitCompte(Long("512")).SoldeInitialEuro, -10);
}

TEST_F(ComptesTest, UnSoldeInitialQuiNAPasChangeResteDansLesDeuxMonnaies) {
  Boite.Defaut = RepNon;
  FicheCompte fiche = Fiche("512");
  fiche.debitInitial = 378.71;
  ASSERT_EQ(Enregistre(FormeTresorerie, fiche), 0u);
  const Plan avant = LitCompte(Long("512"));
  Regle("TAUX EURO", "1", "01/01/2003|6,5");
  for (const FormeCompte forme : {FormeTresorerie, PlanComptable}) {
    fiche = Fiche("512");
    fiche.designation = "Autre nom";
    ASSERT_EQ(Enregistre(forme, fiche), 0u);
    EXPECT_EQ(+LitCompte(Long("512")).SoldeInitialEuro, +avant.SoldeInitialEuro);
    EXPECT_EQ(+LitCompte(Long("512")).SoldeInitialFranc, +avant.SoldeInitialFranc);
  }
  fiche = Fiche("512");
  fiche.debitInitial = 99999999999999;
  EXPECT_EQ(Enregistre(FormeTresorerie, fiche), 3401u);
  fiche.debitInitial = 0;
  fiche.creditInitial = 4e12;  // too much in Franc
  EXPECT_EQ(Enregistre(FormeTresorerie, fiche), 3401u);
}

TEST_F(ComptesTest, NumerosProposes) {
  EXPECT_EQ(ProposeNumeroTresorerie(App(), true), "5101");
  EXPECT_EQ(ProposeNumeroTresorerie(App(), false), "5301");
  EXPECT_EQ(App().Reglages.LitIni("Activite", "RadicalCaisse"), "530") << "written back";
  ASSERT_TRUE(PoseCompte("5101", Autre) && PoseCompte("5103", Tresorerie));
  EXPECT_EQ(NouvelleFiche(App(), FormeTresorerie, Recette).compte, "5102");
  Regle("Activite", "RadicalBanque", "514");
  EXPECT_EQ(ProposeNumeroTresorerie(App(), true), "5141");
}

TEST_F(ComptesTest, Suppression) {
  Mouvemente();
  Magasin().SetCompteVireTo("758");
  CBanques banques(App(), App().PathExercice);
  PoseTexte(banques.Rec->Compte, Long("514"));
  banques.Rec->Date = FaitDate(1, 3, 2003);
  banques.Rec->MontantEuro = 1;
  ASSERT_TRUE(banques.OpenFile() && banques.Add());
  EcrituresAuto automatique{};
  PoseTexte(automatique.Compte, Long("6132"));
  const u32 autos = Magasin().OpenEcrituresAuto({});
  ASSERT_TRUE(Magasin().WriteEcrituresAuto(automatique, autos) && Magasin().CloseEcrituresAuto(autos));
  ASSERT_TRUE(PoseCompte("4452", Tva, "TVA2"));
  PoseTaxe("6061", Depense, "4452", 100);
  struct {
    FormeCompte forme;
    const char* compte;
    int reponse;
    unsigned erreur;
  } const cas[] = {
      {RecettesDepenses, "7070", 0, InfoCompteMouvemente},
      {FormeTresorerie, "512", 0, InfoTresorerieMouvementee},
      {PlanComptable, "7070", 0, InfoTresorerieMouvementee},
      {RecettesDepenses, "758", 0, ErrCompteUtilise},
      {PlanComptable, "108", 0, ErrCompteUtilise},
      {PlanComptable, "4452", 0, ErrCompteUtilise},
      {FormeTresorerie, "514", 0, ErrCompteUtilise},
      {RecettesDepenses, "6132", 0, ErrCompteUtilise},
      {RecettesDepenses, "7065", RepNon, QuestionSupprimeCompte},
      {RecettesDepenses, "7065", RepOui, 0},
      {FormeTresorerie, "531", RepNon, QuestionSupprimeTresorerie},
      {PlanComptable, "531", RepOui, 0},
  };
  for (const auto& c : cas) {
    Boite.Oublie();
    if (c.reponse) Boite.Reponses.push_back(c.reponse);
    EXPECT_EQ(Supprime(c.forme, c.compte), c.erreur) << c.compte;
    EXPECT_EQ(Place(c.compte) == 0, c.erreur == 0) << c.compte;
    EXPECT_TRUE(Boite.Reponses.empty()) << c.compte;
  }
  EXPECT_EQ(Boite.Questions.at(0).texte, "Suppression du compte de trésorerie\n\"CA\" ?"_w);
  // What cannot be deleted cannot be renumbered, and what else it holds can change.
  for (const char* compte : {"758", "108", "4452", "514", "6132"}) {
    FicheCompte fiche = Fiche(compte);
    fiche.designation = "Autre";
    EXPECT_EQ(Enregistre(PlanComptable, fiche), 0u) << compte;
    fiche.position = Place(compte);
    fiche.compte += "9";
    EXPECT_EQ(Enregistre(PlanComptable, fiche), ErrCompteUtiliseChange) << compte;
  }
  // A personal share alone protects nothing.
  ChangeCompte("6154", [](Plan& rec) { rec.PersoEuro = 5; });
  Boite.Reponses.push_back(RepOui);
  EXPECT_EQ(Supprime(RecettesDepenses, "6154"), 0u);
}

TEST_F(ComptesTest, ComptePersonnel) {
  Magasin().SetComptePerso("6154");
  EXPECT_EQ(Fiche("6154").partPro, 100);
  FicheCompte fiche = Fiche("6154");
  EXPECT_EQ(Enregistre(RecettesDepenses, fiche), ErrComptePersonnel);
  fiche.partPro = 40;
  EXPECT_EQ(Enregistre(PlanComptable, fiche), 0u);
  EXPECT_EQ(+LitCompte(Long("6154")).PartPro, 100);
}

TEST_F(ComptesTest, ExerciceCloture) {
  Regle("2003", "Cloture", "31/12/2003");
  FicheCompte fiche = Fiche("706");
  const Plan avant = LitCompte(Long("706"));
  fiche.code = "";
  EXPECT_EQ(Enregistre(PlanComptable, fiche), 0u);
  EXPECT_EQ(Supprime(PlanComptable, "706"), 3056u);
  const Plan apres = LitCompte(Long("706"));
  EXPECT_EQ(std::memcmp(&apres, &avant, sizeof apres), 0);
  EXPECT_TRUE(Boite.Questions.empty());
}

TEST_F(ComptesTest, LAdresseDUneBanqueSuitSonCode) {
  Regle("BQ", "Identification", "Crédit Lyonnais\\nLyon"_w);
  Regle("BQ", "Compte", "30002");
  FicheCompte fiche = Fiche("512");
  fiche.code = "LCL";
  ASSERT_EQ(Enregistre(FormeTresorerie, fiche), 0u);
  EXPECT_EQ(App().Reglages.LitIni("LCL", "Identification"), "Crédit Lyonnais\r\nLyon"_w);
  EXPECT_EQ(App().Reglages.LitIni("LCL", "Compte"), "30002");
  EXPECT_EQ(App().Reglages.LitIni("BQ", "Compte"), "");
}

}  // namespace
}  // namespace fenlor::test
