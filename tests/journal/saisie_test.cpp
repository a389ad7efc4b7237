
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>

#include "core/erreurssaisie.h"
#include "journal/cabinetmedical.h"
#include "journal/ecriturelue.h"
#include "journal/textes.h"

namespace fenlor::test {
namespace {

using Textes = std::vector<std::string>;

class SaisieTest : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }
  u32 NbLignes() { return Magasin().GetJournalRec(0); }
};

// ------------------------------------------------------------ The amounts

TEST_F(SaisieTest, ChaineDesMontants) {
  struct Cas {
    const char* quoi;
    const char* compte;
    f64 ttc;
    f64 saisi;  ///< professional share typed, `aucun`: not
    MontantsSaisie attendu;
  };
  constexpr f64 aucun = 1e9;
  const Cas cas[] = {
      {"TVA à 19,6 %", "6063", 119.60, aucun, {119.60, 119.60, 0, 100, 19.60, 19.6}},
      {"part professionnelle de 60 %", "7065", 100, aucun, {100, 60, 40, 60, 0, 0}},
      {"TVA sur la seule part professionnelle", "6154", 100, aucun, {100, 60, 40, 50.17, 9.83, 19.6}},
      {"arrondis de chaque champ", "6154", 33.33, aucun, {33.33, 20, 13.33, 16.72, 3.28, 19.6}},
      {"remboursement", "7065", -100, aucun, {-100, -60, -40, -60, 0, 0}},
      {"avoir avec TVA", "6063", -119.60, aucun, {-119.60, -119.60, 0, -100, -19.60, 19.6}},
      {"trois décimales tapées", "706", 10.126, aucun, {10.13, 10.13, 0, 10.13, 0, 0}},
      {"part tapée", "6063", 119.60, 59.80, {119.60, 59.80, 59.80, 50, 9.80, 19.6}},
      {"part nulle", "6063", 100, 0, {100, 0, 100, 0, 0, 19.6}},
      {"part au-dessus du TTC", "706", 100, 120, {100, 100, 0, 100, 0, 0}},
      {"part de signe contraire", "706", 100, -5, {100, 100, 0, 100, 0, 0}},
      {"part d'un remboursement", "706", -100, -60, {-100, -60, -40, -60, 0, 0}},
      {"part d'un remboursement, trop grande", "706", -100, -120, {-100, -100, 0, -100, 0, 0}},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    const Plan compte = LitCompte(c.compte);
    const MontantsSaisie m = c.saisi == aucun ? ChaineMontants(App(), compte, c.ttc)
                                              : ChaineProfessionnel(App(), compte, c.ttc, c.saisi);
    EXPECT_EQ(c.attendu.ttc, m.ttc);
    EXPECT_EQ(c.attendu.professionnel, m.professionnel);
    EXPECT_EQ(c.attendu.personnel, m.personnel);
    EXPECT_EQ(c.attendu.ht, m.ht);
    EXPECT_EQ(c.attendu.tva, m.tva);
    EXPECT_EQ(c.attendu.taux, m.taux);
  }
}

TEST_F(SaisieTest, LeTauxVientDuCompteDeTvaEtDeLExercice) {
  PoseTaxe("4451", Tva, {}, 100);
  Plan compte = LitCompte("6063");
  compte.TauxTVA = 5.5;  // a copy made when the account was saved
  EXPECT_EQ(19.6, ChaineMontants(App(), compte, 100).taux);
  PoseTexte(compte.CompteTVA, Long("4499"));
  EXPECT_EQ(0, ChaineMontants(App(), compte, 100).taux) << "VAT account not in the chart";
  Regle("2003", "TVA", "Non");
  EXPECT_EQ(0, ChaineMontants(App(), LitCompte("6063"), 100).taux);
}

TEST(Champ, MontantEtLargeur) {
  EXPECT_FALSE(std::signbit(MontantDeChamp(-0.001)));
  EXPECT_EQ(0.12, MontantDeChamp(0.125)) << "as printed: the binary half goes to even";
  std::mt19937_64 hasard(3);
  for (int i = 0; i < 20000; ++i) {
    // Whole cents, halves of a cent and their neighbours, and anything else.
    f64 montant = static_cast<f64>(static_cast<i64>(hasard() >> (12 + i % 50))) / 200;
    if (i % 3) montant = std::nextafter(montant, i % 3 == 1 ? 0 : 1e300);
    char ecrit[64];
    std::snprintf(ecrit, sizeof ecrit, "%.2f", i % 2 ? montant : -montant);
    EXPECT_EQ(std::strtod(ecrit, nullptr), MontantDeChamp(i % 2 ? montant : -montant)) << ecrit;
    EXPECT_EQ(std::strlen(ecrit) <= 16, MontantTient(i % 2 ? montant : -montant)) << ecrit;
  }
  EXPECT_TRUE(MontantTient(9999999999999.99));
  EXPECT_FALSE(MontantTient(99999999999999.99));
  EXPECT_FALSE(MontantTient(-9999999999999.99)) << "the sign takes a place";
  EXPECT_FALSE(MontantTient(1e300) || MontantTient(std::nan("")));
}

// ------------------------------------------------------------- What is written

TEST_F(SaisieTest, EnFrancsLEuroSeDeduit) {
  Installe("2001", false);
  SaisieEcriture saisie = Ecriture(JournalRecettes, "706", 131.19, "512", FaitDate(15, 3, 2001));
  saisie.euro = false;
  EXPECT_EQ((Textes{"706 C 20.00 131.19", "512 D 20.00 131.19"}), LignesLues(Enregistre(saisie)));
}

TEST_F(SaisieTest, EnTeteDeLEcriture) {
  SaisieEcriture saisie = Ecriture(JournalDepenses, "6154", 100);
  saisie.libelle.clear();
  saisie.paiement = PaiementAutre;
  ASSERT_FALSE(Essaie(saisie));
  EXPECT_EQ(1u, Faite.ligne);
  EcrSimple rec{};
  ASSERT_TRUE(Magasin().ReadEcrSimple(App().PathExercice, Faite.mouvement, rec));
  EXPECT_EQ("Compte 6154", LitTexte(rec.Libelle)) << "an empty label takes the account's";
  EXPECT_EQ(GenreSimple, int{rec.Genre});
  EXPECT_EQ(FaitDate(15, 3, 2003), u32{rec.Date});
  EXPECT_EQ(1u, u32{rec.SaisieEuro});
  EXPECT_EQ(0u, u32{rec.EstRecette});
  EXPECT_EQ(Long("4451"), LitTexte(rec.CompteTaxe));
  EXPECT_EQ(19.6, f64{rec.TauxTaxe});
  EXPECT_EQ(9.83, f64{rec.TaxeEuro});
  EXPECT_EQ(Long("108"), LitTexte(rec.ComptePerso));
  EXPECT_EQ(PaiementAutre, int{rec.ModePaiement});

  saisie.compte = Long("6132");
  saisie.montants = ChaineMontants(App(), LitCompte("6132"), 100);
  saisie.montants.tva = 9.99;  // without an account for it
  ASSERT_FALSE(Essaie(saisie));
  EXPECT_EQ(2u, Faite.ligne);
  ASSERT_TRUE(Magasin().ReadEcrSimple(App().PathExercice, Faite.mouvement, rec));
  EXPECT_EQ("", LitTexte(rec.CompteTaxe));
  EXPECT_EQ(0, f64{rec.TaxeEuro});
}

TEST_F(SaisieTest, UnNumeroNeRevientPas) {
  for (u32 attendu = 1; attendu <= 3; ++attendu) {
    SaisieEcriture saisie = Ecriture(JournalRecettes, "706", 10);
    saisie.ligne = 2;
    ASSERT_FALSE(Essaie(saisie));
    EXPECT_EQ(attendu + 1, Faite.ligne);
    SaisieOD od = OD({{"512", {}, 10, 0}, {"531", {}, 0, 10}});
    od.ligne = 2;
    ASSERT_FALSE(Essaie(od));
    EXPECT_EQ(attendu + 1, Faite.ligne);
  }
}

TEST_F(SaisieTest, ModeDePaiement) {
  struct Cas {
    const char* tresorerie;
    i16 saisi;
    i16 simple;
    i16 standard;
  };
  const Cas cas[] = {
      {"512", PaiementCheque, PaiementCheque, PaiementCheque},
      {"512", PaiementAutre, PaiementAutre, PaiementAutre},
      {"531", PaiementCheque, PaiementAutre, PaiementCheque},
      {"531", PaiementAutre, PaiementAutre, PaiementCheque},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(std::string(c.tresorerie) + (c.saisi ? " autre" : " chèque"));
    SaisieEcriture saisie = Ecriture(JournalRecettes, "706", 10, c.tresorerie);
    saisie.paiement = c.saisi;
    EXPECT_EQ(c.simple, int{Lignes(Enregistre(saisie)).back().ModePaiement});
    saisie.genre = GenreStandard;
    saisie.tresoreries = {{Long(c.tresorerie), 10, c.saisi}};
    EXPECT_EQ(c.standard, int{Lignes(Enregistre(saisie)).back().ModePaiement});
  }
}

// ------------------------------------------------------------ What is refused

TEST_F(SaisieTest, RefusDUneNouvelleEcriture) {
  struct Cas {
    const char* quoi;
    std::function<void(SaisieEcriture&)> faute;
    unsigned erreur;
    const char* champ;
    int indice = -1;
  };
  const auto standard = [](std::vector<LigneTresorSaisie> lignes) {
    return [lignes](SaisieEcriture& s) {
      s.genre = GenreStandard;
      s.tresoreries = lignes;
    };
  };
  const Cas cas[] = {
      {"libellé de 81 caractères", [](auto& s) { s.libelle.assign(81, 'x'); }, ErrTexteTropLong, "libelle"},
      {"montant trop large", [](auto& s) { s.montants.ttc = 1e14; }, ErrChampInvalide, "ttc"},
      {"sans date", [](auto& s) { s.date = 0; }, 3104, "date"},
      {"30 février", [](auto& s) { s.date = FaitDate(30, 2, 2003); }, 3104, "date"},
      {"avant l'exercice", [](auto& s) { s.date = FaitDate(31, 12, 2002); }, 3104, "date"},
      {"après l'exercice", [](auto& s) { s.date = FaitDate(1, 1, 2004); }, 3104, "date"},
      {"sans compte", [](auto& s) { s.compte.clear(); }, 3105, "compte"},
      {"compte inconnu", [](auto& s) { s.compte = Long("7999"); }, 3105, "compte"},
      {"compte de dépense", [](auto& s) { s.compte = Long("6132"); }, 3105, "compte"},
      {"compte personnel", [](auto& s) { s.compte = Long("108"); }, 3105, "compte"},
      {"montant nul", [](auto& s) { s.montants.ttc = 0; }, 3106, "ttc"},
      {"moins d'un demi-centime", [](auto& s) { s.montants.ttc = 0.004; }, 3106, "ttc"},
      {"sans trésorerie", [](auto& s) { s.tresorerie.clear(); }, 3105, "tresorerie"},
      {"trésorerie d'un autre type", [](auto& s) { s.tresorerie = Long("706"); }, 3105, "tresorerie"},
      {"sans ligne", standard({}), 3035, "tresorerie"},
      {"ligne sans compte", standard({{Long("512"), 60}, {"", 40}}), 3105, "tresorerie", 1},
      {"ligne de montant nul", standard({{Long("512"), 100}, {Long("531"), 0}}), 3106, "montant", 1},
      {"total d'un centime de moins", standard({{Long("512"), 60}, {Long("531"), 39.99}}), 3036, "ttc"},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    Boite.Oublie();
    SaisieEcriture saisie = Ecriture(JournalRecettes, "706", 100);
    c.faute(saisie);
    const Refus r = Essaie(saisie);
    EXPECT_EQ(c.erreur, r.numero);
    EXPECT_STREQ(c.champ, r.champ);
    EXPECT_EQ(c.indice, r.rang);
    EXPECT_FALSE(r.dit || r.texte.empty() || !Boite.Erreurs.empty()) << "told by the form alone";
  }
  EXPECT_EQ(0u, NbLignes());
  SaisieEcriture saisie = Ecriture(JournalRecettes, "706", 1e14);
  EXPECT_NE(Essaie(saisie).texte.find("\"T.T.C.\""), std::string::npos) << "named as in the form";
  for (const Date bord : {FaitDate(1, 1, 2003), FaitDate(31, 12, 2003)}) {
    saisie = Ecriture(JournalRecettes, "706", 100);
    saisie.date = bord;
    EXPECT_EQ(0u, Essaie(saisie).numero) << "first and last day are of the exercice";
  }
}

TEST_F(SaisieTest, OrdreDesRefus) {
  SaisieEcriture saisie;
  saisie.journal = JournalRecettes;
  saisie.euro = false;
  saisie.libelle.assign(81, 'x');
  Regle("2003", "Cloture", "31/01/2004");
  ASSERT_TRUE(Magasin().SetComptePerso("109"));
  const std::pair<unsigned, std::function<void()>> etapes[] = {
      {3056, [&] { Regle("2003", "Cloture", ""); }},
      {ErrTexteTropLong, [&] { saisie.libelle = "Essai"; }},
      {3104, [&] { saisie.date = FaitDate(15, 3, 2003); }},
      {3105, [&] { saisie.compte = Long("706"); }},
      {3106, [&] { saisie.montants = ChaineMontants(App(), LitCompte("706"), 50); }},
      {3105, [&] { saisie.tresorerie = Long("512"); }},
      {3055, [&] { Magasin().SetComptePerso("108"); }},
      {3041, [&] { saisie.euro = true; }},
  };
  for (const auto& [erreur, corrige] : etapes) {
    EXPECT_EQ(erreur, Essaie(saisie).numero);
    corrige();
  }
  EXPECT_FALSE(Essaie(saisie));
}

TEST_F(SaisieTest, FrancJusquALaLimite) {
  Installe("2002", false);
  struct Cas {
    const char* limite;
    unsigned jour;
    bool euro;
    unsigned erreur;
  };
  const Cas cas[] = {
      {"", 18, false, 0},           {"", 19, false, 3041},           {"", 19, true, 0},
      {"10/02/2002", 10, false, 0}, {"10/02/2002", 11, false, 3041},
  };
  for (const Cas& c : cas) {
    Regle("Préférences"_w, "LimiteFranc", c.limite);
    SaisieEcriture saisie = Ecriture(JournalRecettes, "706", 10, "512", FaitDate(c.jour, 2, 2002));
    saisie.euro = c.euro;
    const Refus r = Essaie(saisie);
    EXPECT_EQ(c.erreur, r.numero) << c.jour << " " << c.limite;
    EXPECT_EQ(c.erreur != 0, r.texte.find(*c.limite ? c.limite : "18/02/2002") != std::string::npos)
        << r.texte;
  }
}

/// Sets the account that it was asked for, as the form of special accounts would.
class BoiteQuiChoisit : public DialogueScript {
 public:
  std::function<void(std::size_t)> Choisit;
  int Message(unsigned style, unsigned numero, const std::string& texte) override {
    const int reponse = DialogueScript::Message(style, numero, texte);
    Choisit(Questions.size());
    return reponse;
  }
};

TEST_F(SaisieTest, ComptePersonnelDemande) {
  struct Cas {
    const char* quoi;
    std::deque<int> reponses;
    std::vector<const char*> choix;  ///< what each answer sets
    unsigned erreur;
    std::size_t questions;
  };
  const Cas cas[] = {
      {"annuler", {RepAnnuler}, {}, 3055, 1},
      {"choisi", {RepOk}, {"108"}, 0, 1},
      {"choisi hors du plan, puis bien", {RepOk, RepOk}, {"107", "108"}, 0, 2},
      {"choisi hors du plan, puis annulé", {RepOk, RepAnnuler}, {"107"}, 3055, 2},
      {"rien de choisi", {RepOk, RepOk}, {}, 3055, 1},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    ASSERT_TRUE(Magasin().SetComptePerso("109"));
    BoiteQuiChoisit boite;
    boite.Reponses = c.reponses;
    boite.Choisit = [&](std::size_t n) {
      if (n <= c.choix.size()) Magasin().SetComptePerso(c.choix[n - 1]);
    };
    CFenlorApp app(Magasin(), boite);
    app.NomExercice = App().NomExercice;
    app.PathExercice = App().PathExercice;
    EXPECT_EQ(c.erreur, CheckComptePerso(app).numero);
    EXPECT_EQ(std::vector<unsigned>(c.questions, 3055u), boite.NumerosQuestions());
  }
}

// ------------------------------------------------------------------- Changing

class ModificationTest : public SaisieTest {
 protected:
  void SetUp() override {
    SaisieTest::SetUp();
    m_saisie = Ecriture(JournalDepenses, "6063", 119.60);
    m_mouvement = Enregistre(m_saisie);
    ASSERT_NE(0u, m_mouvement);
    m_saisie.mouvement = m_mouvement;
  }
  SaisieEcriture m_saisie;
  u32 m_mouvement = 0;
};

TEST_F(ModificationTest, RefusDUneEcritureExistante) {
  struct Cas {
    const char* quoi;
    std::function<void()> prepare;
    std::function<void(SaisieEcriture&)> faute;
    unsigned erreur;
    const char* champ;
  };
  const auto rien = [] {};
  const auto telle = [](SaisieEcriture&) {};
  const auto entete = [&](std::function<void(Mouvement&)> change) {
    return [this, change] {
      Mouvement rec = Entete(m_mouvement);
      change(rec);
      ASSERT_TRUE(Magasin().UpdateMouvements(App().PathExercice, m_mouvement, rec));
    };
  };
  const Cas cas[] = {
      {"inconnue", rien, [](auto& s) { s.mouvement = 999; }, ErrEcritureInconnue, "mouvement"},
      {"d'un autre journal", rien, [](auto& s) { s.journal = JournalRecettes; }, ErrChampInvalide,
       "mouvement"},
      {"autre mois", rien, [](auto& s) { s.date = FaitDate(15, 4, 2003); }, 3104, "date"},
      {"compte personnel qu'elle n'avait pas", rien, [](auto& s) { s.compte = Long("108"); }, 3105, "compte"},
      {"validée", entete([](Mouvement& m) { m.Validee = 1; }), telle, ErrModificationValidee, "mouvement"},
      {"liée", entete([](Mouvement& m) {
         m.Validee = 0;
         m.LienId = 7;
       }),
       telle, 3103, "mouvement"},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    c.prepare();
    SaisieEcriture saisie = m_saisie;
    c.faute(saisie);
    const Refus r = Essaie(saisie);
    EXPECT_EQ(c.erreur, r.numero);
    EXPECT_STREQ(c.champ, r.champ);
  }
}

TEST_F(ModificationTest, GardeNumeroLigneEtMarques) {
  ASSERT_NE(0u, Enregistre(Ecriture(JournalDepenses, "6132", 10)));
  ASSERT_TRUE(Magasin().ReverseMarkMouvements(App().PathExercice, m_mouvement));
  ChangeLignes(m_mouvement, [](Line& ligne) { ligne.Rapprochee = ligne.TypeCompte == Tresorerie; });
  m_saisie.date = FaitDate(2, 3, 2003);
  m_saisie.montants = ChaineMontants(App(), LitCompte("6063"), 239.20);
  const Refus r = Essaie(m_saisie);
  ASSERT_FALSE(r) << r.texte;
  EXPECT_EQ(m_mouvement, Faite.mouvement);
  EXPECT_EQ(1u, Faite.ligne);
  EXPECT_EQ((Textes{"6063 D 200.00 1311.91", "4451 D 39.20 257.14", "512 C 239.20 1569.05"}),
            LignesLues(m_mouvement));
  EXPECT_EQ(1u, u32{Entete(m_mouvement).Pointee});
  EXPECT_EQ(FaitDate(2, 3, 2003), u32{Entete(m_mouvement).Date});
  EXPECT_EQ(1u, u32{Lignes(m_mouvement).back().Rapprochee});
  EXPECT_EQ(239.20, f64{LitCompte("512").RappCreditEuro});
}

TEST_F(ModificationTest, TresorerieChangee) {
  m_saisie.tresorerie = Long("531");
  const Refus non = Essaie(m_saisie);
  EXPECT_EQ(unsigned{QuestionTresorerieChangee}, non.numero);
  EXPECT_TRUE(Boite.Erreurs.empty());
  EXPECT_EQ("512 C 119.60 784.52", LignesLues(m_mouvement).back());
  Boite.Reponses = {RepOui};
  EXPECT_FALSE(Essaie(m_saisie));
  EXPECT_EQ("531 C 119.60 784.52", LignesLues(m_mouvement).back());
}

TEST_F(ModificationTest, SimpleDevientStandardEtRetour) {
  m_saisie.genre = GenreStandard;
  m_saisie.tresoreries = {{Long("531"), 19.60}, {Long("514"), 100}};
  EXPECT_FALSE(Essaie(m_saisie));
  EXPECT_EQ(GenreStandard, int{Entete(m_mouvement).Genre});
  EXPECT_EQ(
      (Textes{"6063 D 100.00 655.95", "4451 D 19.60 128.57", "531 C 19.60 128.57", "514 C 100.00 655.96"}),
      LignesLues(m_mouvement));
  m_saisie.genre = GenreSimple;
  m_saisie.tresorerie = Long("514");
  EXPECT_FALSE(Essaie(m_saisie));
  EXPECT_TRUE(Boite.Questions.empty())
      << "the treasury account of a standard entry may go without a question";
  EXPECT_EQ(GenreSimple, int{Entete(m_mouvement).Genre});
  EXPECT_EQ(3u, Lignes(m_mouvement).size());
  EXPECT_EQ(0, f64{LitCompte("531").CreditEuro});
}

/// What is stored may be off by a cent from what the chain of amounts would make of what the form shows.
TEST_F(ModificationTest, LesMontantsRestentTantQueRienNeLesTouche) {
  SaisieEcriture saisie = Ecriture(JournalDepenses, "6154", 1);
  const auto relue = [&](u32 mouvement) {
    EcritureLue lue;
    EXPECT_FALSE(LitEcriture(App(), mouvement, lue));
    lue.saisie.tresoreries.assign(lue.lignes.begin(), lue.lignes.end());
    return lue.saisie;
  };
  for (int centimes = 1001; centimes < 1060; ++centimes) {
    saisie.montants = ChaineMontants(App(), LitCompte("6154"), centimes / 100.0);
    const u32 mouvement = Enregistre(saisie);
    // An amount of the other currency that no rate of today gives, as an adjustment leaves it.
    ChangeLignes(mouvement,
                 [](Line& l) { l.MontantFranc += l.Rang == 1 || l.Role == RoleTresorerie ? 0.01 : 0; });
    const Textes avant = LignesLues(mouvement);
    SaisieEcriture telle = relue(mouvement);
    telle.libelle = "Autre";
    telle.date = FaitDate(16, 3, 2003);
    ASSERT_FALSE(Essaie(telle));
    EXPECT_EQ(avant, LignesLues(mouvement)) << centimes;
    telle.montants.professionnel = 0;
    telle.montants.tva = 0;
    ASSERT_FALSE(Essaie(telle));
    EXPECT_EQ(2u, Lignes(mouvement).size()) << "another share";
  }
  saisie.genre = GenreStandard;
  saisie.montants = ChaineMontants(App(), LitCompte("6154"), 10.01);
  saisie.tresoreries = {{Long("512"), 4}, {Long("514"), 6.01}};
  for (const bool repartie : {false, true}) {
    const u32 mouvement = Enregistre(saisie);
    ChangeLignes(mouvement, [](Line& l) { l.MontantFranc += l.Rang == 1 || l.Rang == 3 ? 0.01 : 0; });
    const std::vector<Line> avant = Lignes(mouvement);
    SaisieEcriture telle = relue(mouvement);
    if (repartie) std::swap(telle.tresoreries[0].montant, telle.tresoreries[1].montant);
    ASSERT_FALSE(Essaie(telle));
    const std::vector<Line> apres = Lignes(mouvement);
    ASSERT_EQ(avant.size(), apres.size());
    EXPECT_EQ(!repartie, +avant[1].MontantFranc == +apres[1].MontantFranc) << "derived anew with the lines";
    EXPECT_EQ(+avant[1].MontantEuro, +apres[1].MontantEuro) << "the tax stays";
  }
}

TEST_F(ModificationTest, LeComptePersonnelResteOuIlEtait) {
  EcrSimple prelevement = Simple(JournalDepenses, FaitDate(20, 3, 2003), "108", 50, "512");
  const u32 mouvement = Magasin().AddEcrSimple(App().PathExercice, prelevement);
  ASSERT_NE(0u, mouvement);
  SaisieEcriture saisie = Ecriture(JournalDepenses, "108", 60);
  saisie.mouvement = mouvement;
  EXPECT_FALSE(Essaie(saisie));
  EXPECT_EQ((Textes{"108 D 60.00 393.57", "512 C 60.00 393.57"}), LignesLues(mouvement));
}

}  // namespace
}  // namespace fenlor::test
