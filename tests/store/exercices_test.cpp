
#include <stdlib.h>

#include "outils/cabinetdetest.h"
#include "outils/systemecoupure.h"
#include "outils/systemefautif.h"
#include "store/definitions.h"

namespace fenlor::test {
namespace {

namespace fs = std::filesystem;

constexpr Date Jan(unsigned annee) { return FaitDate(1, 1, annee); }
constexpr Date Dec(unsigned annee) { return FaitDate(31, 12, annee); }

class Exercices : public CabinetDeTest {
 protected:
  explicit Exercices(Systeme* systeme = nullptr) : CabinetDeTest(test::Cles::Memoire, 256u << 10, systeme) {}

  std::string Chemin(const std::string& nom, const char* fichier = "") {
    return App().PathCabinet + "/" + nom + (*fichier ? std::string("/") + fichier : std::string());
  }
  std::string Liste() {
    std::string texte;
    for (const std::string& nom : Magasin().ListeExercices()) texte += (texte.empty() ? "" : ",") + nom;
    return texte;
  }
  /// Number of records in a file of the open exercice; -1 when it cannot be opened.
  int Nombre(u16 fichier) {
    const u32 poignee = fichier == FichierComptes ? Magasin().OpenPlan({}) : Magasin().OpenJournal({});
    if (poignee == 0) return -1;
    const EtatFichier etat = Magasin().QVVerifie(fichier);
    EXPECT_TRUE(etat.anomalies.empty()) << etat.nom;
    fichier == FichierComptes ? Magasin().ClosePlan(poignee) : Magasin().CloseJournal(poignee);
    return static_cast<int>(etat.vivants);
  }
};

TEST_F(Exercices, LePremierVientDuModele) {
  ASSERT_TRUE(CreeExercice("2003", true, true));
  EXPECT_EQ(Liste(), "2003");
  EXPECT_EQ(Magasin().GetLastExercice(), "2003");
  EXPECT_GT(Magasin().GetPlanRec(0), 60u);
  EXPECT_GT(Magasin().GetRubriquesRec(0), 52u);
  EXPECT_EQ(Magasin().GetJournalRec(0), 0u);
  EXPECT_EQ(Magasin().GetComptePerso(), "1080000000");
  EXPECT_EQ(Magasin().GetTauxEuro(Jan(2003)), 6.55957);
  const std::map<std::string, std::string> attendus = {{"Debut", "01/01/2003"},
                                                       {"Fin", "31/12/2003"},
                                                       {"TVA", "Oui"},
                                                       {"EURO", "Oui"},
                                                       {"AFFICHERDOUBLE", "Non"}};
  for (const auto& [cle, valeur] : attendus) EXPECT_EQ(Reglage("2003", cle), valeur) << cle;
  EXPECT_EQ(Reglage("2035", "Depenses"), "8, 32");
  EXPECT_EQ(Reglage("FRAIS KILOMETRIQUES", "Borne Inf"), "5000");
  EXPECT_EQ(test::LitFichier(Chemin("2003", "TEXTES.dat")).substr(0, 23), "@Texte\r\nConsultations\r\n");
  EXPECT_EQ(fs::status(Chemin("2003")).permissions(), fs::perms::owner_all);
  for (const auto& entree : fs::directory_iterator(Chemin("2003")))
    EXPECT_EQ(entree.status().permissions() & fs::perms(077), fs::perms::none) << entree.path();
  // The chart of the template, as it stands in the files.
  EXPECT_EQ(LitTexte(LitCompte("512").Code), "BQ");
  EXPECT_EQ(LitTexte(LitCompte("6064").CompteTVA), "4451000000");
  EXPECT_EQ(+LitCompte("6064").TauxTVA, 19.6);
  EXPECT_EQ(Nombre(FichierComptes), static_cast<int>(Magasin().GetPlanRec(0)));
}

TEST_F(Exercices, LeSuivantReprendLesComptesEtLesSoldes) {
  ASSERT_TRUE(CreeExercice("2002", true));
  ASSERT_TRUE(Magasin().Reglages().Ecrit("2002", "AFFICHERDOUBLE", "Oui"));
  ASSERT_TRUE(PoseCompte("7067", Recette, "MIEN", "A moi"));
  ChangeCompte("512", [](Plan& rec) {
    rec.SoldeInitialFranc = -655.96;
    rec.SoldeInitialEuro = -100;
  });
  ASSERT_NE(AjouteSimple(JournalRecettes, FaitDate(3, 2, 2002), "706", 30.10, "512"), 0u);
  ASSERT_NE(AjouteSimple(JournalDepenses, FaitDate(4, 2, 2002), "6064", 10.20, "512"), 0u);
  test::EcritFichier(Chemin("2002", "TEXTES.dat"), "@Texte\r\nMes libellés\r\n");
  const Plan avant = LitCompte("512");

  // Made while the other one stays open, its files held by a caller.
  const u32 poignee = Magasin().OpenPlan({});
  ASSERT_TRUE(Magasin().QVCreateExercice("2003", Jan(2003), Dec(2003), true, false));
  EXPECT_EQ(Magasin().NomExercice(), "2002");
  Plan encore = avant;
  EXPECT_NE(Magasin().ReadPlan(encore, 0), 0u);
  EXPECT_EQ(+encore.DebitEuro, 30.10);
  EXPECT_TRUE(Magasin().ClosePlan(poignee));
  EXPECT_FALSE(Magasin().GetOpenFlagPlan());

  ASSERT_TRUE(OuvreExercice("2003"));
  EXPECT_EQ(Magasin().GetJournalRec(0), 0u);
  EXPECT_EQ(LitTexte(LitCompte("6064").CompteTVA), "") << "not subject to VAT";
  const Plan apres = LitCompte("512");
  EXPECT_EQ(+apres.SoldeInitialEuro, -119.90);
  EXPECT_NEAR(+apres.SoldeInitialFranc, avant.SoldeInitialFranc + avant.CreditFranc - avant.DebitFranc, 1e-9);
  EXPECT_EQ(+apres.CreditEuro, 0);
  EXPECT_EQ(+apres.DebitFranc, 0);
  EXPECT_EQ(+LitCompte("706").CreditEuro, 0);
  EXPECT_EQ(+LitCompte("706").SoldeInitialEuro, 0);
  EXPECT_EQ(LitTexte(LitCompte("7067").Code), "MIEN");
  EXPECT_EQ(test::LitFichier(Chemin("2003", "TEXTES.dat")), "@Texte\r\nMes libellés\r\n");
  EXPECT_EQ(Reglage("2003", "AFFICHERDOUBLE"), "Oui");
  EXPECT_EQ(Liste(), "2002,2003");

  // Before all others: their chart, but no balance of a later year.
  ASSERT_TRUE(CreeExercice("1999", false));
  EXPECT_EQ(LitTexte(LitCompte("7067").Code), "MIEN");
  EXPECT_EQ(+LitCompte("512").SoldeInitialEuro, 0);
  EXPECT_EQ(Magasin().GetLastExercice(), "2003");
}

TEST_F(Exercices, RefusAvecLeurMessage) {
  ASSERT_TRUE(CreeExercice("2002"));
  ASSERT_TRUE(CreeExercice("2003", true, false, FaitDate(1, 1, 2003), FaitDate(30, 6, 2004)));
  const struct {
    const char* nom;
    Date debut, fin;
    int code;
    unsigned numero;
    const char* texte;
  } cas[] = {
      {"", Jan(2005), Dec(2005), ErrValeur, 3211, "1 à 4 lettres"},
      {"20050", Jan(2005), Dec(2005), ErrValeur, 3211, "20050"},
      {"20/5", Jan(2005), Dec(2005), ErrValeur, 3211, "20/5"},
      {"..", Jan(2005), Dec(2005), ErrValeur, 3211, ".."},
      {"2005", FaitDate(31, 2, 2005), Dec(2005), ErrValeur, 3212, "31/02/2005"},
      {"2005", Dec(2005), Dec(2005), ErrValeur, 3212, "31/12/2005"},
      {"2004", Jan(2004), Dec(2004), ErrConflit, 3075, "Cette période est en conflit avec l'exercice 2003"},
      {"2005", FaitDate(30, 6, 2004), Dec(2005), ErrConflit, 3075, "2003"},
      {"X", FaitDate(1, 6, 2002), FaitDate(2, 6, 2002), ErrConflit, 3075, "2002"},
      {"X", Jan(1990), Dec(2010), ErrConflit, 3075, "2002"},
  };
  for (const auto& c : cas) {
    Boite.Oublie();
    EXPECT_FALSE(Magasin().QVCreateExercice(c.nom, c.debut, c.fin, true, false)) << c.nom;
    EXPECT_EQ(Magasin().QVFileErrorCode(), c.code) << c.nom;
    ASSERT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{c.numero}) << c.nom;
    EXPECT_NE(VersUtf8(Boite.Erreurs[0].texte).find(c.texte), std::string::npos)
        << VersUtf8(Boite.Erreurs[0].texte);
  }
  EXPECT_EQ(Liste(), "2002,2003");
  // The day behind is free; an end that is not after the beginning counts as a year.
  ASSERT_TRUE(Magasin().Reglages().Ecrit("2003", "Fin", "01/01/2003"));
  EXPECT_TRUE(Magasin().QVCreateExercice("2004", Jan(2004), Dec(2004), true, false));
}

TEST_F(Exercices, UnNomConnuSeRemplaceSurQuestion) {
  ASSERT_TRUE(CreeExercice("ab", true, false, Jan(2003), Dec(2003)));
  ASSERT_NE(AjouteSimple(JournalRecettes, FaitDate(3, 2, 2003), "706", 30, "512"), 0u);
  ASSERT_TRUE(
      Magasin().Reglages().Ecrit({{"ab", "Cloture", "05/01/2004"}, {"ab", "Compte", "d'une banque"}}));
  EXPECT_FALSE(Magasin().QVCreateExercice("AB", Jan(2003), Dec(2003), true, true));
  EXPECT_EQ(Magasin().QVFileErrorCode(), ErrExistant);
  ASSERT_EQ(Boite.Questions.size(), 1u);
  EXPECT_EQ(Boite.Questions[0].texte, "Cet exercice existe déja désirez vous le remplacer ?\n"_w);
  EXPECT_EQ(Boite.Questions[0].style & 15, unsigned{BoutonsOuiNon});
  EXPECT_EQ(Magasin().GetJournalRec(0), 2u);

  Boite.Reponses = {RepOui};
  ASSERT_TRUE(Magasin().QVCreateExercice("AB", Jan(2004), Dec(2004), true, true));
  EXPECT_EQ(Liste(), "ab");
  EXPECT_EQ(Magasin().NomExercice(), "");
  ASSERT_TRUE(OuvreExercice("AB"));
  EXPECT_EQ(Magasin().GetJournalRec(0), 0u);
  EXPECT_EQ(Reglage("ab", "Debut"), "01/01/2004");
  EXPECT_EQ(Reglage("ab", "Cloture"), "");
  EXPECT_EQ(Reglage("ab", "Remplacement"), "");
  EXPECT_EQ(Reglage("ab", "Compte"), "d'une banque");
  for (const auto& entree : fs::directory_iterator(App().PathCabinet))
    EXPECT_EQ(entree.path().string().find('~'), std::string::npos) << entree.path();
}

TEST_F(Exercices, LeRepertoireDUnArretEstReutilise) {
  fs::create_directory(Chemin("2003"));
  test::EcritFichier(Chemin("2003", "COMPTES.dat"), "inachevé");
  test::EcritFichier(Chemin("2003", "courrier.txt"), "à moi");
  ASSERT_TRUE(CreeExercice("2003"));
  EXPECT_GT(Magasin().GetPlanRec(0), 60u);
  EXPECT_TRUE(Boite.Questions.empty());
  EXPECT_EQ(test::LitFichier(Chemin("2003", "courrier.txt")), "à moi");

  // Books that the settings no longer name are not overwritten without a question.
  ASSERT_NE(AjouteSimple(JournalRecettes, FaitDate(3, 2, 2003), "706", 30, "512"), 0u);
  Magasin().QVCloseExercice();
  ASSERT_TRUE(Magasin().Reglages().Ecrit({{"2003", "", std::nullopt}, {"Activite", "Exercices", ""}}));
  EXPECT_FALSE(Magasin().QVCreateExercice("2003", Jan(2003), Dec(2003), true, false));
  EXPECT_EQ(Boite.Questions.size(), 1u);
  EXPECT_TRUE(fs::exists(Chemin("2003", "JOURNAL.dat")));
}

TEST_F(Exercices, OuvrirRefuseUnFichierAbsentOuEndommage) {
  ASSERT_TRUE(CreeExercice("2002"));
  ASSERT_TRUE(CreeExercice("2003"));
  const std::string comptes = test::LitFichier(Chemin("2003", "COMPTES.dat"));
  const struct {
    const char* fichier;
    bool absent;
    unsigned numero;
    const char* texte;
  } cas[] = {{"JOURNAL.dat", true, 3011,
              "Ouverture fichier (2003/JOURNAL.dat) impossible : Fichier ou répertoire introuvable"},
             {"BANQUE.dat", true, 3011,
              "Ouverture fichier (2003/BANQUE.dat) impossible : Fichier ou répertoire introuvable"},
             {"COMPTES.dat", false, 3010, "Fichier (2003/COMPTES.dat) endommagé\nIndexation recommandé."}};
  for (const auto& c : cas) {
    ASSERT_TRUE(Rouvre());
    Magasin().QVCloseExercice();
    ASSERT_TRUE(OuvreExercice("2002"));
    const std::string contenu = test::LitFichier(Chemin("2003", c.fichier));
    c.absent ? void(fs::remove(Chemin("2003", c.fichier)))
             : test::EcritFichier(Chemin("2003", c.fichier), "abîmé");
    Boite.Oublie();
    EXPECT_FALSE(Magasin().QVOpenExercice("2003")) << c.fichier;
    EXPECT_EQ(Magasin().NomExercice(), "");
    ASSERT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{c.numero}) << c.fichier;
    EXPECT_EQ(VersUtf8(Boite.Erreurs[0].texte), c.texte);
    EXPECT_EQ(fs::exists(Chemin("2003", c.fichier)), !c.absent) << "créé vide";
    EXPECT_EQ(Magasin().QVConvertCompta("2003"), 0u);
    test::EcritFichier(Chemin("2003", c.fichier), contenu);
    EXPECT_EQ(Magasin().QVConvertCompta("2003"), 1u);
    ASSERT_TRUE(OuvreExercice("2003")) << c.fichier;
  }
  EXPECT_FALSE(Magasin().QVOpenExercice("1987") || Magasin().QVOpenExercice("../cabinet/2003"));
}

TEST_F(Exercices, SupprimerNOteQueLExercice) {
  ASSERT_TRUE(CreeExercice("2003"));
  ASSERT_TRUE(CreeExercice("2035", true, false, Jan(2035), Dec(2035)));
  ASSERT_TRUE(Magasin().Reglages().Ecrit("Activite", "Exercice", "2035"));
  ASSERT_TRUE(Magasin().QVDeleteExercice("2035"));
  EXPECT_EQ(Liste(), "2003");
  EXPECT_FALSE(fs::exists(Chemin("2035")));
  EXPECT_EQ(Reglage("2035", "Recettes"), "1, 7");
  EXPECT_EQ(Reglage("2035", "Debut"), "");
  EXPECT_EQ(Reglage("Activite", "Exercice"), "");
  EXPECT_EQ(Magasin().NomExercice(), "");
  ASSERT_TRUE(Magasin().QVDeleteExercice("2003"));
  EXPECT_FALSE(Magasin().Reglages().Existe("2003"));
  EXPECT_EQ(Magasin().GetExercicesRec(), 0u);
  EXPECT_FALSE(Magasin().QVDeleteExercice("2003") || Magasin().QVDeleteExercice("Activite"));
  ASSERT_TRUE(CreeExercice("2003"));
}

// A replacement that was cut short, and cannot be undone: it holds up nobody else.
TEST_F(Exercices, UnRemplacementInacheveAttend) {
  ASSERT_TRUE(CreeExercice("2002"));
  ASSERT_TRUE(CreeExercice("2003"));
  ASSERT_NE(AjouteSimple(JournalRecettes, FaitDate(3, 2, 2003), "706", 30, "512"), 0u);
  Magasin().QVCloseExercice();
  App().NomExercice.clear();
  ASSERT_TRUE(Rouvre());
  fs::rename(Chemin("2003"), Chemin("2003.remplace~"));
  fs::create_directory(Chemin("2003"));
  test::EcritFichier(Chemin("2003", "courrier.txt"), "à moi");
  ASSERT_TRUE(Magasin().Reglages().Ecrit("2003", "Remplacement", "Oui"));
  EXPECT_TRUE(Magasin().QVOpenExercice("2002"));
  EXPECT_EQ(Boite.Erreurs.size(), 1u);
  EXPECT_FALSE(Magasin().QVOpenExercice("2003"));
  EXPECT_NE(Magasin().QVFileErrorCode(), 0);
  EXPECT_FALSE(Magasin().QVCreateExercice("2004", Jan(2004), Dec(2004), true, false));
  fs::remove(Chemin("2003", "courrier.txt"));
  ASSERT_TRUE(OuvreExercice("2003"));
  EXPECT_EQ(Magasin().GetJournalRec(0), 2u);
  EXPECT_EQ(Reglage("2003", "Remplacement"), "");
}

TEST_F(Exercices, ListeDesNoms) {
  const struct {
    const char *liste, *noms, *dernier;
  } cas[] = {{"", "", ""},
             {" 2001 , ,2002,2001", "2001,2002", "2002"},
             {",x,", "x", "x"},
             {"2002,b,2001", "2002,b,2001", "2002"}};
  ASSERT_TRUE(Magasin().Reglages().Ecrit({{"2001", "Debut", "01/01/2001"},
                                          {"2001", "Fin", "31/12/2001"},
                                          {"2002", "Debut", "01/01/2002"},
                                          {"2002", "Fin", "31/12/2002"}}));
  for (const auto& c : cas) {
    ASSERT_TRUE(Magasin().Reglages().Ecrit("Activite", "Exercices", c.liste));
    EXPECT_EQ(Liste(), c.noms);
    EXPECT_EQ(Magasin().GetLastExercice(), c.dernier) << c.liste;
  }
}

// Every disk operation of an exercice's making, replacing and removing fails once,
// with the disk well again at once, or stays broken until the next start.
struct Panne {
  bool existe;    ///< the name is in use: it is replaced
  bool supprime;  ///< it is deleted instead
  bool definitive;
};

class PannesExercice : public testing::TestWithParam<Panne> {};

/// A session on the practice in "cabinet" below a directory. Questions are answered yes.
std::unique_ptr<QVAPI> Ouvre(const std::string& dossier, Systeme& systeme, FabriqueMemoire& cles) {
  OptionsQVAPI options;
  options.systeme = &systeme;
  options.cles = &cles;
  options.tailleReprise = 64u << 10;
  options.dossierRegistre = options.dossierRegistreMachine = dossier + "/registre";
  auto magasin = std::make_unique<QVAPI>(options);
  magasin->QVSetCallback(
      [](u32 evenement, u32, const std::string&) -> u32 { return evenement == EvQuestion ? 6 : 1; });
  EXPECT_TRUE(magasin->QVOpenSession(1) && magasin->QVOpenCompta(dossier + "/cabinet", ""));
  return magasin;
}

/// The practice that each trial starts from, in "cabinet" below the directory.
void Prepare(const std::string& dossier, bool avec2003) {
  fs::create_directory(dossier + "/cabinet");
  SystemePosix systeme;
  FabriqueMemoire cles;
  const auto magasin = Ouvre(dossier, systeme, cles);
  ASSERT_TRUE(magasin->QVCreateExercice("2002", Jan(2002), Dec(2002), true, false));
  if (!avec2003) return;
  ASSERT_TRUE(magasin->QVCreateExercice("2003", Jan(2003), Dec(2003), true, false));
  ASSERT_TRUE(magasin->QVOpenExercice("2003"));
  EcrSimple rec{};
  rec.Journal = JournalRecettes;
  rec.Date = FaitDate(5, 5, 2003);
  PoseTexte(rec.Compte, "7060000000");
  PoseTexte(rec.CompteTresorerie, "5120000000");
  rec.MontantEuro = rec.RepartitionEuro = 10;
  rec.MontantFranc = rec.RepartitionFranc = 65.6;
  ASSERT_NE(magasin->AddEcrSimple(magasin->PathExercice(), rec), 0u);
}

bool Agit(QVAPI& magasin, const Panne& panne) {
  return panne.supprime ? magasin.QVDeleteExercice("2003")
                        : magasin.QVCreateExercice("2003", Jan(2003), FaitDate(30, 6, 2003), true, true);
}

/// What must hold after a trial; `sure`: the answer, yes or no, says what happened.
void Controle(QVAPI& magasin, const Panne& panne, bool fait, bool sure) {
  const std::string fin = magasin.Reglages().Lit("2003", "Fin");
  const bool nouveau = fin == "30/06/2003", ancien = fin == "31/12/2003", aucun = fin.empty();
  if (fait)
    EXPECT_TRUE(panne.supprime ? aucun : nouveau) << fin;
  else if (sure)
    EXPECT_TRUE(panne.existe ? ancien : aucun) << fin;
  else
    EXPECT_TRUE((panne.existe ? ancien : aucun) || (panne.supprime ? aucun : nouveau)) << fin;
  EXPECT_TRUE(!sure || panne.supprime || fs::exists(magasin.PathCabinet() + "/2003") == !aucun);
  EXPECT_EQ(magasin.ListeExercices().size(), aucun ? 1u : 2u);
  EXPECT_EQ(magasin.QVOpenExercice("2003"), !aucun);
  if (!aucun) {
    EXPECT_EQ(magasin.GetJournalRec(0), ancien ? 2u : 0u);
    EXPECT_GT(magasin.GetPlanRec(0), 60u);
    EXPECT_EQ(magasin.Reglages().Lit("2003", "TVA"), nouveau ? "Oui" : "Non");
  }
  EXPECT_TRUE(magasin.QVOpenExercice("2002"));
  EXPECT_GT(magasin.GetPlanRec(0), 60u);
  // The name is free for another try, whatever was left behind.
  EXPECT_TRUE(magasin.QVCreateExercice("2003", Jan(2003), Dec(2003), true, false));
  EXPECT_TRUE(magasin.QVOpenExercice("2003"));
  EXPECT_EQ(magasin.GetJournalRec(0), 0u);
}

TEST_P(PannesExercice, LAncienOuLeNouveauJamaisLaMoitie) {
  const Panne& panne = GetParam();
  test::DossierTemporaire depart{true};
  Prepare(depart.Chemin(), panne.existe);
  unsigned k = 0;
  for (bool allee = false; !allee;) {
    ASSERT_LT(++k, 2000u);
    SCOPED_TRACE(k);
    test::DossierTemporaire dossier{true};
    fs::copy(depart.Chemin(), dossier.Chemin(), fs::copy_options::recursive);
    SystemePosix systeme;
    SystemeFautif disque(systeme);
    FabriqueMemoire cles;
    auto magasin = Ouvre(dossier.Chemin(), disque, cles);
    disque.Programme(k, ENOSPC, SystemeFautif::Tous, !panne.definitive);
    bool dit = false, verifie = false;
    magasin->QVSetCallback([&](u32 evenement, u32 numero, const std::string& texte) {
      if (evenement == EvQuestion) return u32{RepOui};
      const bool retabli = texte.find("n'a pas pu") != texte.npos;
      EXPECT_TRUE(verifie || (numero != 0 && (retabli || texte.find('/') != texte.npos))) << texte;
      dit = true;
      return 0u;
    });
    const bool fait = Agit(*magasin, panne);
    EXPECT_TRUE(fait || dit);
    verifie = true;
    allee = disque.NbPannes() == 0;
    EXPECT_TRUE(fait || magasin->QVFileErrorCode() != 0);
    if (panne.definitive) {
      magasin.reset();
      disque.Repare();
      magasin = Ouvre(dossier.Chemin(), disque, cles);
    }
    disque.Repare();
    Controle(*magasin, panne, fait, !panne.definitive);
  }
  EXPECT_GT(k, 5u);
}

// The power is cut at every sync, with several fates for what was in flight.
TEST_P(PannesExercice, CoupureDeCourant) {
  const Panne& panne = GetParam();
  if (panne.definitive) return;
  test::DossierTemporaire depart{true};
  Prepare(depart.Chemin(), panne.existe);
  unsigned coupure = 0;
  for (bool allee = false; !allee;) {
    ASSERT_LT(++coupure, 500u);
    for (u64 graine = 0; graine < 4; ++graine) {
      SCOPED_TRACE(testing::Message() << "synchro " << coupure << ", graine " << graine);
      test::DossierTemporaire dossier{true};
      fs::copy(depart.Chemin(), dossier.Chemin(), fs::copy_options::recursive);
      FabriqueMemoire cles;
      bool fait = false;
      {
        SystemeCoupure disque(dossier.Chemin());
        auto magasin = Ouvre(dossier.Chemin(), disque, cles);
        disque.CoupeApres(coupure);
        fait = Agit(*magasin, panne) && !disque.EstCoupe();
        allee = !disque.EstCoupe();
        disque.Coupe();
        magasin.reset();
        ASSERT_TRUE(disque.Applique(graine));
      }
      SystemePosix systeme;
      const auto magasin = Ouvre(dossier.Chemin(), systeme, cles);
      Controle(*magasin, panne, fait, false);
    }
  }
  EXPECT_GT(coupure, 2u);
}

INSTANTIATE_TEST_SUITE_P(Tout, PannesExercice,
                         testing::Values(Panne{false, false, false}, Panne{false, false, true},
                                         Panne{true, false, false}, Panne{true, false, true},
                                         Panne{true, true, false}, Panne{true, true, true}));

}  // namespace
}  // namespace fenlor::test
