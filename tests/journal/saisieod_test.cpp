#include "core/erreurs.h"
#include "core/erreurssaisie.h"
#include "journal/cabinetmedical.h"
#include "journal/odlue.h"
#include "journal/textes.h"
#include "outils/systemefautif.h"

namespace fenlor::test {
namespace {

using Textes = std::vector<std::string>;

class SaisieODTest : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }
  u32 NbLignes() { return Magasin().GetJournalRec(0); }
};

LigneODSaisie Debit(const char* compte, f64 montant) { return {compte, {}, montant, 0}; }
LigneODSaisie Credit(const char* compte, f64 montant) { return {compte, {}, 0, montant}; }

TEST_F(SaisieODTest, Lignes) {
  struct Cas {
    const char* quoi;
    std::vector<LigneODSaisie> saisies;
    f64 solde;
    Textes lignes;
  };
  const Cas cas[] = {
      {"équilibrée", {Debit("512", 10), Credit("706", 10)}, 0, {"512 D 10.00 65.60", "706 C 10.00 65.60"}},
      {"montant négatif : de l'autre côté",
       {Debit("512", -10), Credit("706", -10)},
       0,
       {"512 C 10.00 65.60", "706 D 10.00 65.60"}},
      {"débit de trop : écart au crédit",
       {Debit("512", 10), Credit("706", 9.99)},
       -0.01,
       {"512 D 10.00 65.60", "706 C 9.99 65.53", "758 C 0.01 0.07"}},
      {"crédit de trop : écart au débit",
       {Credit("706", 5), Debit("512", 3), Debit("531", 1.50)},
       0.5,
       {"706 C 5.00 32.80", "512 D 3.00 19.68", "531 D 1.50 9.84", "658 D 0.50 3.28"}},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    EXPECT_EQ(c.solde, SoldeOD(c.saisies));
    Boite.Oublie();
    Boite.Reponses = {RepOui};
    const Refus r = Essaie(OD(c.saisies));
    Boite.Reponses.clear();
    ASSERT_FALSE(r) << r.texte;
    EXPECT_EQ(c.solde != 0, Boite.NumerosQuestions() == std::vector<unsigned>{QuestionNonEquilibree});
    EXPECT_EQ(c.lignes, LignesLues(Faite.mouvement));
  }
}

TEST_F(SaisieODTest, EnFrancs) {
  Installe("2001", false);
  SaisieOD saisie = OD({Debit("512", 10), Credit("706", 20)}, FaitDate(9, 3, 2001));
  saisie.euro = false;
  Boite.Reponses = {RepOui};
  ASSERT_FALSE(Essaie(saisie));
  EXPECT_EQ((Textes{"512 D 1.52 10.00", "706 C 3.05 20.00", "658 D 1.52 10.00"}),
            LignesLues(Faite.mouvement));
}

TEST_F(SaisieODTest, CeQuePorteUneLigne) {
  SaisieOD saisie = OD({{"512", "Son libellé"_w, 10, 0, PaiementAutre}, {"706", {}, 0, 8, PaiementAutre}});
  Boite.Reponses = {RepOui};
  const Refus r = Essaie(saisie);
  ASSERT_FALSE(r);
  const std::vector<Line> lignes = Lignes(Faite.mouvement);
  ASSERT_EQ(3u, lignes.size());
  EXPECT_EQ("Son libellé"_w, LitTexte(lignes[0].Designation));
  EXPECT_EQ("Essai d'OD", LitTexte(lignes[1].Designation)) << "without a label of its own: the entry's";
  EXPECT_EQ("Ecarts", LitTexte(lignes[2].Designation)) << "the deviation line: its account's";
  EXPECT_EQ(PaiementAutre, int{lignes[0].ModePaiement});
  EXPECT_EQ(PaiementCheque, int{lignes[1].ModePaiement}) << "only treasury accounts have a mode";
  EXPECT_EQ(PaiementAutre, int{lignes[2].ModePaiement});
  for (const Line& ligne : lignes) {
    EXPECT_EQ(GenreOD, int{ligne.Genre});
    EXPECT_EQ(JournalOD, int{ligne.Journal});
    EXPECT_EQ("Essai d'OD", LitTexte(ligne.Libelle));
    EXPECT_EQ(FaitDate(15, 3, 2003), u32{ligne.DateLigne});
    EXPECT_EQ(1u, u32{ligne.Ligne});
    EXPECT_EQ(1u, u32{ligne.SaisieEuro});
  }
  EXPECT_EQ(Recette, int{lignes[1].TypeCompte});
}

TEST_F(SaisieODTest, Refus) {
  struct Cas {
    const char* quoi;
    std::function<void(SaisieOD&)> faute;
    unsigned erreur;
    int indice = -1;
  };
  const Cas cas[] = {
      {"libellé de ligne trop long", [](auto& s) { s.lignes[1].libelle.assign(81, 'x'); }, ErrTexteTropLong,
       1},
      {"montant trop large", [](auto& s) { s.lignes[0].debit = 1e15; }, ErrChampInvalide, 0},
      {"date fausse", [](auto& s) { s.date = FaitDate(31, 4, 2003); }, 3104},
      {"hors de l'exercice", [](auto& s) { s.date = FaitDate(31, 12, 2004); }, 3104},
      {"sans ligne", [](auto& s) { s.lignes.clear(); }, 3032},
      {"compte inconnu", [](auto& s) { s.lignes[1].compte = Long("7999"); }, 3105, 1},
      {"sans montant", [](auto& s) { s.lignes[0].debit = 0; }, 3108, 0},
      {"deux montants", [](auto& s) { s.lignes[0].credit = 10; }, ErrDebitEtCredit, 0},
      {"franc après la limite", [](auto& s) { s.euro = false; }, 3041},
      {"existante inconnue", [](auto& s) { s.mouvement = 99; }, ErrEcritureInconnue},
      {"non équilibrée", [](auto& s) { s.lignes[0].debit = 11; }, QuestionNonEquilibree},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    SaisieOD saisie = OD({Debit("512", 10), Credit("706", 10)});
    c.faute(saisie);
    const Refus r = Essaie(saisie);
    EXPECT_EQ(c.erreur, r.numero);
    EXPECT_EQ(c.indice, r.rang);
  }
  const u32 recette = Enregistre(Ecriture(JournalRecettes, "706", 10));
  SaisieOD autre = OD({Debit("512", 10), Credit("706", 10)});
  autre.mouvement = recette;
  EXPECT_EQ(unsigned{ErrChampInvalide}, Essaie(autre).numero);
  EXPECT_EQ(2u, NbLignes());
}

TEST_F(SaisieODTest, LesComptesParticuliersSontVoulusMemeEquilibree) {
  const SaisieOD saisie = OD({Debit("512", 10), Credit("706", 10)});
  ASSERT_TRUE(Magasin().SetComptePerso("109"));
  ASSERT_TRUE(Magasin().SetCompteEcartCredit(""));
  ASSERT_TRUE(Magasin().SetCompteEcartDebit("659"));
  EXPECT_EQ(3055u, Essaie(saisie).numero);
  ASSERT_TRUE(Magasin().SetComptePerso("108"));
  EXPECT_EQ(3030u, Essaie(saisie).numero);
  ASSERT_TRUE(Magasin().SetCompteEcartCredit("758"));
  EXPECT_EQ(3031u, Essaie(saisie).numero);
  ASSERT_TRUE(Magasin().SetCompteEcartDebit("658"));
  EXPECT_FALSE(Essaie(saisie));
}

TEST_F(SaisieODTest, ModificationGardeNumeroEtMarques) {
  const u32 mouvement = EnregistreLesLignes({Debit("512", 10), Debit("512", 20), Credit("706", 30)});
  ASSERT_NE(0u, EnregistreLesLignes({Debit("531", 1), Credit("706", 1)}));
  u32 rang = 0;
  ChangeLignes(mouvement, [&rang](Line& ligne) {
    ligne.Pointee = 1;
    if (rang++ != 1) return;
    ligne.Rapprochee = 1;
    ligne.RappDate = FaitDate(20, 3, 2003);
    ligne.Remise = 1;
    ligne.DateRemise = FaitDate(21, 3, 2003);
  });

  SaisieOD saisie = OD({Credit("706", 33), Debit("512", 11), Debit("512", 21), Debit("531", 1)});
  saisie.mouvement = mouvement;
  saisie.date = FaitDate(31, 3, 2003);
  const Refus r = Essaie(saisie);
  ASSERT_FALSE(r) << r.texte;
  EXPECT_EQ(mouvement, Faite.mouvement);
  EXPECT_EQ(1u, Faite.ligne);
  EXPECT_EQ((Textes{"706 C 33.00 216.47", "512 D 11.00 72.16", "512 D 21.00 137.75", "531 D 1.00 6.56"}),
            LignesLues(mouvement));
  const std::vector<Line> lignes = Lignes(mouvement);
  ASSERT_EQ(4u, lignes.size());
  const std::vector<u32> rapprochees{lignes[0].Rapprochee, lignes[1].Rapprochee, lignes[2].Rapprochee,
                                     lignes[3].Rapprochee};
  EXPECT_EQ((std::vector<u32>{0, 0, 1, 0}), rapprochees) << "matched in order: the second debit of 512";
  EXPECT_EQ(FaitDate(20, 3, 2003), u32{lignes[2].RappDate});
  EXPECT_EQ(FaitDate(21, 3, 2003), u32{lignes[2].DateRemise});
  EXPECT_EQ(1u, u32{lignes[3].Pointee}) << "a new line of a pointed entry";
  EXPECT_EQ(FaitDate(31, 3, 2003), u32{lignes[0].DateLigne});
  EXPECT_EQ(21, f64{LitCompte("512").RappDebitEuro});
  EXPECT_EQ(1 + 1, f64{LitCompte("531").DebitEuro});

  ChangeLignes(mouvement, [](Line& ligne) { ligne.Rapprochee = ligne.TypeCompte == Tresorerie; });
  saisie.lignes = OD({Credit("512", 5), Debit("706", 5)}).lignes;
  ASSERT_FALSE(Essaie(saisie));
  EXPECT_EQ(0u, u32{Lignes(mouvement)[0].Rapprochee}) << "the same account on the other side is another line";
}

TEST_F(SaisieODTest, CeQuiNEstPasChangeReste) {
  Boite.Reponses = {RepOui};
  const u32 mouvement = EnregistreLesLignes({Debit("512", 10), Credit("531", 9.99)});
  ChangeLignes(mouvement, [](Line& ligne) { ligne.MontantFranc += ligne.Rang < 2 ? 0.01 : 0; });
  const auto modes = [&] {
    std::vector<int> tous;
    for (const Line& ligne : Lignes(mouvement)) tous.push_back(ligne.ModePaiement);
    return tous;
  };
  const Textes avant = LignesLues(mouvement);
  ASSERT_EQ((std::vector<int>{PaiementCheque, PaiementCheque, PaiementAutre}), modes());
  ODLue od;
  ASSERT_FALSE(LitOD(App(), mouvement, od));
  od.saisie.libelle = "Autre";
  od.saisie.lignes = LignesSaisies(od.lignes);
  ASSERT_FALSE(Essaie(od.saisie));
  EXPECT_EQ(avant, LignesLues(mouvement));
  EXPECT_EQ((std::vector<int>{PaiementCheque, PaiementCheque, PaiementAutre}), modes()) << "of the deviation";
  od.saisie.lignes[0].debit = od.saisie.lignes[1].credit = 20;
  od.saisie.lignes.pop_back();
  ASSERT_FALSE(Essaie(od.saisie));
  EXPECT_EQ((Textes{"512 D 20.00 131.19", "531 C 20.00 131.19"}), LignesLues(mouvement));
}

TEST_F(SaisieODTest, CommandeCachee) {
  SaisieOD saisie = OD({Debit("512", 10), Credit("706", 10)});
  ASSERT_FALSE(Essaie(saisie));
  saisie.mouvement = Faite.mouvement;
  const auto pose = [&](u32 validee, u32 lien) {
    Mouvement rec = Entete(saisie.mouvement);
    rec.Validee = validee;
    rec.LienId = rec.Reserve134 = lien;
    ASSERT_TRUE(Magasin().UpdateMouvements(App().PathExercice, saisie.mouvement, rec));
  };
  struct Cas {
    u32 validee, lien;
    unsigned refus;  ///< without the command
  };
  for (const Cas& c :
       {Cas{1, 0, ErrModificationValidee}, Cas{0, 7, 3103}, Cas{1, 7, ErrModificationValidee}}) {
    pose(c.validee, c.lien);
    saisie.forcee = false;
    saisie.validee = false;
    EXPECT_EQ(c.refus, Essaie(saisie).numero);
    saisie.forcee = true;
    saisie.validee = !c.validee;
    Boite.Oublie();
    ASSERT_FALSE(Essaie(saisie));
    const Mouvement entete = Entete(saisie.mouvement);
    EXPECT_EQ(u32{!c.validee}, u32{entete.Validee}) << "the command flips it";
    EXPECT_EQ(0u, u32{entete.LienId} + u32{entete.Reserve134});
    EXPECT_TRUE(Boite.Questions.empty());
  }
}

class SaisieODPanne : protected DisqueDeTest, public CabinetMedical {
 protected:
  SaisieODPanne() : CabinetMedical(Cles::Memoire, 256u << 10, &Disque) {}
};

TEST_F(SaisieODPanne, UnDisquePleinLaisseLAncienneEcriture) {
  Installe();
  SaisieOD ancienne = OD({Debit("512", 10), Credit("706", 10)});
  SaisieOD nouvelle = OD({Debit("531", 7), Credit("706", 7)});
  ASSERT_FALSE(Essaie(ancienne));
  ancienne.mouvement = nouvelle.mouvement = Faite.mouvement;
  const Textes avant{"512 D 10.00 65.60", "706 C 10.00 65.60"}, apres{"531 D 7.00 45.92", "706 C 7.00 45.92"};
  const unsigned refuses = AChaquePanne(
      Disque, ErrMagasin,
      [&] {
        Boite.Oublie();
        return Essaie(nouvelle);
      },
      [&](const Refus& r) {
        EXPECT_EQ(r ? avant : apres, LignesLues(ancienne.mouvement));
        EXPECT_EQ(r ? 0 : 7, f64{LitCompte("531").DebitEuro});
        EXPECT_EQ(r.dit, !Boite.Erreurs.empty()) << "told once";
        ASSERT_FALSE(Essaie(ancienne));
      });
  EXPECT_GT(refuses, 0u);
}

}  // namespace
}  // namespace fenlor::test
