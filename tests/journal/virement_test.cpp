#include "journal/virement.h"

#include "core/erreurs.h"
#include "core/erreurssaisie.h"
#include "journal/cabinetmedical.h"
#include "journal/choixcomptes.h"
#include "journal/textes.h"
#include "outils/systemefautif.h"

namespace fenlor::test {
namespace {

using Textes = std::vector<std::string>;

class VirementTest : public CabinetMedical {
 public:
  explicit VirementTest(Systeme* systeme = nullptr) : CabinetMedical(Cles::Memoire, 256u << 10, systeme) {}
  void SetUp() override { Prepare(); }

  void Prepare(const std::string& annee = "2003", bool euro = true) {
    Installe(annee, euro);
    ASSERT_TRUE(PoseCompte("5811", Autre, "VD", "Virements en dépenses"_w));
    ASSERT_TRUE(PoseCompte("5812", Autre, "VR", "Virements en recettes"));
    ASSERT_TRUE(Magasin().SetCompteVireFrom("5811") && Magasin().SetCompteVireTo("5812"));
  }
  SaisieVirement Saisie(std::string_view de = "512", std::string_view vers = "514", f64 montant = 100) {
    SaisieVirement saisie;
    saisie.date = FaitDate(15, 3, 2003);
    saisie.de = Long(de);
    saisie.vers = Long(vers);
    saisie.montant = montant;
    return saisie;
  }
  u32 NbLignes() { return Magasin().GetJournalRec(0); }

 protected:
  VirementFait m_fait;
};

TEST_F(VirementTest, LesDeuxMoities) {
  Enregistre(Ecriture(JournalRecettes, "706", 10));
  Enregistre(Ecriture(JournalRecettes, "706", 10));
  Enregistre(Ecriture(JournalDepenses, "6132", 10));
  Enregistre(Ecriture(JournalDepenses, "6132", 10, "512", FaitDate(20, 2, 2003)));
  const u64 avant = Magasin().NbSynchros();
  const Refus r = EnregistreVirement(App(), Saisie(), m_fait = {});
  ASSERT_FALSE(r);
  EXPECT_EQ(avant + 1, Magasin().NbSynchros()) << "both halves are one unit";

  EXPECT_EQ((Textes{"5811 D 100.00 655.96", "512 C 100.00 655.96"}), LignesLues(m_fait.depense));
  EXPECT_EQ((Textes{"5812 C 100.00 655.96", "514 D 100.00 655.96"}), LignesLues(m_fait.recette));
  const struct {
    u32 mouvement;
    i16 journal;
    u32 ligne;
  } moities[] = {{m_fait.depense, JournalDepenses, 2}, {m_fait.recette, JournalRecettes, 3}};
  for (const auto& m : moities) {
    const Mouvement entete = Entete(m.mouvement);
    EXPECT_EQ(m.journal, entete.Journal);
    EXPECT_EQ(GenreSimple, entete.Genre);
    EXPECT_EQ(m.ligne, u32{entete.Ligne}) << "the next one of the month, not of the journal";
    EXPECT_EQ(FaitDate(15, 3, 2003), u32{entete.Date});
    EXPECT_EQ("Virement interne", LitTexte(entete.Libelle));
    EXPECT_EQ(1u, u32{entete.SaisieEuro});
    EXPECT_EQ(0u, entete.Validee + entete.Pointee + entete.LienId);
  }
  EXPECT_EQ(100, f64{LitCompte("512").CreditEuro} - 20);
  EXPECT_EQ(100, f64{LitCompte("514").DebitEuro});
}

TEST_F(VirementTest, PaiementEtMonnaie) {
  struct Cas {
    const char *de, *vers;
    i16 paiement, depense, recette;
  };
  for (const Cas& c : {Cas{"512", "514", PaiementAutre, PaiementAutre, PaiementAutre},
                       Cas{"512", "514", PaiementCheque, PaiementAutre, PaiementCheque},
                       Cas{"531", "512", PaiementCheque, PaiementAutre, PaiementCheque},
                       Cas{"512", "531", PaiementCheque, PaiementAutre, PaiementAutre}}) {
    SCOPED_TRACE(std::string(c.de) + " " + c.vers);
    SaisieVirement saisie = Saisie(c.de, c.vers);
    saisie.paiement = c.paiement;
    saisie.libelle = "Retrait";
    const Refus r = EnregistreVirement(App(), saisie, m_fait = {});
    ASSERT_FALSE(r);
    EXPECT_EQ(c.depense, Lignes(m_fait.depense).back().ModePaiement);
    EXPECT_EQ(c.recette, Lignes(m_fait.recette).back().ModePaiement);
    EXPECT_EQ("Retrait", LitTexte(Entete(m_fait.recette).Libelle));
  }
  Prepare("2001", false);
  SaisieVirement saisie = Saisie();
  saisie.date = FaitDate(1, 6, 2001);
  saisie.euro = false;
  saisie.montant = 655.957;
  const Refus r = EnregistreVirement(App(), saisie, m_fait = {});
  ASSERT_FALSE(r);
  EXPECT_EQ((Textes{"5811 D 100.00 655.96", "512 C 100.00 655.96"}), LignesLues(m_fait.depense));
  EXPECT_EQ(0u, u32{Entete(m_fait.recette).SaisieEuro});
  saisie.montant = 0.01;
  EXPECT_EQ(3086u, EnregistreVirement(App(), saisie, m_fait = {}).numero) << "0,00 in Euro";
}

TEST_F(VirementTest, OrdreDesRefus) {
  SaisieVirement saisie;
  saisie.date = FaitDate(31, 12, 2002);
  saisie.de = Long("706");
  saisie.libelle.assign(81, 'x');
  saisie.euro = false;
  saisie.montant = 1e20;
  Regle("2003", "Cloture", "31/01/2004");
  ASSERT_TRUE(Magasin().SetCompteVireFrom("") && Magasin().SetCompteVireTo("5819"));
  struct Etape {
    unsigned erreur;
    const char* champ;
    std::function<void()> corrige;
  };
  const auto montant = [&](f64 m) { return [&saisie, m] { saisie.montant = m; }; };
  const Etape etapes[] = {
      {3089, "date", [&] { saisie.date = FaitDate(29, 2, 2003); }},
      {3089, "date", [&] { saisie.date = FaitDate(15, 3, 2003); }},
      {3083, "de", [&] { saisie.de = Long("512"); }},
      {3084, "vers", [&] { saisie.vers = Long("599"); }},
      {3084, "vers", [&] { saisie.vers = Long("512"); }},
      {3085, "vers", [&] { saisie.vers = Long("514"); }},
      {3041, "monnaie", [&] { saisie.euro = true; }},
      {ErrChampInvalide, "montant", montant(0)},
      {3086, "montant", montant(-5)},
      {3086, "montant", montant(0.004)},
      {3086, "montant", montant(5)},
      {3056, "", [&] { Regle("2003", "Cloture", ""); }},
      {3088, "", [&] { Magasin().SetCompteVireTo("5812"); }},
      {3087, "", [&] { Magasin().SetCompteVireFrom("5811"); }},
      {ErrTexteTropLong, "libelle", [&] { saisie.libelle.resize(80); }},
  };
  for (const Etape& e : etapes) {
    Boite.Oublie();
    const Refus r = EnregistreVirement(App(), saisie, m_fait = {});
    EXPECT_EQ(e.erreur, r.numero);
    EXPECT_STREQ(e.champ, r.champ) << e.erreur;
    EXPECT_TRUE(Boite.Erreurs.empty()) << e.erreur;
    EXPECT_EQ(r.dit, !Boite.Questions.empty()) << e.erreur;
    EXPECT_EQ(0u, m_fait.depense + m_fait.recette + NbLignes());
    e.corrige();
  }
  EXPECT_FALSE(EnregistreVirement(App(), saisie, m_fait = {}));
}

TEST_F(VirementTest, Ouverture) {
  EXPECT_FALSE(ControleVirement(App()));
  const auto numero = [&] { return ControleVirement(App()).numero; };
  ASSERT_TRUE(Magasin().SetCompteVireFrom("") && Magasin().SetCompteVireTo(""));
  EXPECT_EQ(3088u, numero()) << "receipts first";
  ASSERT_TRUE(Magasin().SetCompteVireTo("5812"));
  EXPECT_EQ(3087u, numero());
  for (const CompteOffert& compte : ComptesParCode(App(), Tresorerie)) {
    if (compte.court == "531") continue;
    ASSERT_TRUE(PoseCompte(compte.court, Autre, compte.code));
  }
  EXPECT_EQ(3082u, numero()) << "the cash box alone";
  Regle("2003", "Cloture", "31/01/2004");
  EXPECT_EQ(3056u, numero());
}

class VirementPanne : protected DisqueDeTest, public VirementTest {
 protected:
  VirementPanne() : VirementTest(&Disque) {}
};

TEST_F(VirementPanne, LesDeuxMoitiesOuAucune) {
  VirementFait fait;
  u32 lignes = 0;
  f64 solde = 0;
  const unsigned refuses = AChaquePanne(
      Disque, ErrMagasin,
      [&] {
        lignes = NbLignes();
        solde = LitCompte("514").DebitEuro;
        Boite.Oublie();
        return EnregistreVirement(App(), Saisie(), fait = {});
      },
      [&](const Refus& r) {
        EXPECT_EQ(lignes + (r ? 0 : 4), NbLignes());
        EXPECT_EQ(solde + (r ? 0 : 100), f64{LitCompte("514").DebitEuro});
        if (!r) return;
        EXPECT_EQ(0u, fait.depense + fait.recette);
        EXPECT_EQ(r.dit, !Boite.Erreurs.empty()) << "told once";
        EXPECT_NE((r.dit ? Boite.Erreurs[0].texte : r.texte).find(App().PathCabinet + "/"), std::string::npos)
            << "which file: " << r.texte;
      });
  EXPECT_GT(refuses, 0u);
}

}  // namespace
}  // namespace fenlor::test
