#include "banque/remise.h"

#include "banque/textes.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "journal/cabinetmedical.h"
#include "journal/textes.h"

namespace fenlor::test {
namespace {

constexpr Date Mars(unsigned jour) { return FaitDate(jour, 3, 2001); }

class Remise : public CabinetMedical {
 protected:
  /// Of the first seven entries 6, 1, 7 and 2 are cheques of the bank, in the order of their dates; 1 is
  /// deposited.
  void SetUp() override {
    Installe("2001", true);
    Ajoute(JournalRecettes, 5, 10);
    Ajoute(JournalRecettes, 31, 20, PaiementCheque, false);
    Ajoute(JournalRecettes, 6, 30, PaiementAutre);
    Ajoute(JournalRecettes, 6, 40, PaiementCheque, true, "514");
    Ajoute(JournalDepenses, 6, 50);
    Ajoute(JournalDepenses, 1, -60);
    const LigneODSaisie debit{Long("512"), "Apport", 5, 0, PaiementCheque};
    ASSERT_FALSE(Essaie(OD({debit, {Long("108"), "Exploitant", 0, 5, 0}}, Mars(6))));
    std::vector<Cheque> un;
    ASSERT_FALSE(ChequesDeLEcriture(App(), 1, un));
    ASSERT_FALSE(MarqueCheques(App(), un, true, Mars(7)));
  }
  SaisieEcriture Saisie(i16 journal, unsigned jour, f64 montant, i16 paiement = PaiementCheque,
                        bool euro = true, std::string_view compte = "512") {
    SaisieEcriture saisie =
        Ecriture(journal, journal == JournalRecettes ? "706" : "6132", montant, compte, Mars(jour));
    saisie.paiement = paiement;
    saisie.euro = euro;
    return saisie;
  }
  template <class... Reste>
  void Ajoute(i16 journal, unsigned jour, f64 montant, Reste... reste) {
    ASSERT_FALSE(Essaie(Saisie(journal, jour, montant, reste...)));
  }
  static CriteresRemise Criteres(EtatRemise etat, MonnaieRemise monnaie = MonnaieRemise::Toutes) {
    return {Long("512"), Mars(20), Mars(1), Mars(31), etat, monnaie};
  }
  /// "6 1r 7/5": entries, those of a slip marked, amounts of an opération diverse.
  static std::string Dits(const std::vector<Cheque>& cheques) {
    std::string texte;
    for (const Cheque& c : cheques)
      texte += (texte.empty() ? "" : " ") + std::to_string(c.mouvement) + (c.remise ? "r" : "") +
               (c.remis == c.remise ? ""
                : c.remis           ? "+"
                                    : "-") +
               (c.imprime ? "i" : "");
    return texte;
  }
  std::string Listes(CriteresRemise criteres) {
    std::vector<Cheque> cheques;
    EXPECT_FALSE(ChequesDe(App(), criteres, cheques));
    return Dits(cheques);
  }
  Date DateRemise(u32 mouvement) {
    for (const Line& ligne : Lignes(mouvement))
      if (ligne.Remise) return ligne.DateRemise;
    return 0;
  }
  const std::string Fichier = Dossier() + "/remise";
};

TEST_F(Remise, CeQuiEstListe) {
  EXPECT_EQ(Listes(Criteres(EtatRemise::Tous)), "6 1r 7 2");
  EXPECT_EQ(Listes(Criteres(EtatRemise::NonRemis)), "6 7 2");
  EXPECT_EQ(Listes(Criteres(EtatRemise::Remis)), "1r");
  EXPECT_EQ(Listes(Criteres(EtatRemise::RemisACetteDate)), "");
  EXPECT_EQ(Listes(Criteres(EtatRemise::Tous, MonnaieRemise::Franc)), "2");
  EXPECT_EQ(Listes(Criteres(EtatRemise::Tous, MonnaieRemise::Euro)), "6 1r 7");
  CriteresRemise c = Criteres(EtatRemise::RemisACetteDate);
  c.date = Mars(7);
  c.au = Mars(2);
  std::vector<Cheque> cheques;
  ASSERT_FALSE(ChequesDe(App(), c, cheques));
  EXPECT_EQ(Dits(cheques), "1r") << "whatever the period";
  EXPECT_TRUE(c.du == FaitDate(1, 1, 2001) && c.au == FaitDate(31, 12, 2001));
  c = Criteres(EtatRemise::Tous);
  std::swap(c.du, c.au);
  ASSERT_FALSE(ChequesDe(App(), c, cheques));
  EXPECT_TRUE(c.du == Mars(1) && cheques.size() == 4);
  ASSERT_TRUE(Magasin().RappLines("", cheques.front().position, Banque{}));
  EXPECT_EQ(Listes(Criteres(EtatRemise::NonRemis)), "7 2") << "6 is reconciled: the bank has it";
  EXPECT_EQ(Listes(Criteres(EtatRemise::Tous)), "6 1r 7 2");
  for (const auto& [mouvement, erreur] : {std::pair(3u, ErrSansCheque), {99u, ErrEcritureInconnue}})
    EXPECT_EQ(ChequesDeLEcriture(App(), mouvement, cheques).numero, erreur.numero) << mouvement;
}

TEST_F(Remise, LaPeriodeProposee) {
  const struct {
    Date jour, du, au;
  } cas[] = {{FaitDate(15, 3, 2003), FaitDate(10, 3, 2001), FaitDate(16, 3, 2001)},
             {FaitDate(29, 2, 2004), FaitDate(23, 2, 2001), FaitDate(28, 2, 2001)},
             {FaitDate(31, 12, 2003), FaitDate(31, 12, 2001), FaitDate(31, 12, 2001)}};
  for (const auto& c : cas) {
    Magasin().FixeAujourdhui(c.jour);
    const CriteresRemise p = CriteresRemiseProposes(App());
    EXPECT_TRUE(p.date == c.jour && p.du == c.du && p.au == c.au) << StrDate(c.jour);
  }
}

TEST_F(Remise, LesCochesSontDansLeFichier) {
  CriteresRemise c = Criteres(EtatRemise::Tous, MonnaieRemise::Euro);
  ListeRemise liste(App(), Fichier);
  ASSERT_FALSE(liste.Remplit(c));
  EXPECT_EQ(TotalRemise(liste.Cheques(), c.monnaie), 10);
  EXPECT_EQ(TotalRemise(liste.Cheques(), MonnaieRemise::Toutes), std::nullopt);
  ASSERT_FALSE(liste.Bascule(0));
  ASSERT_FALSE(liste.Bascule(1));
  liste.BasculeImprime(2);
  EXPECT_EQ(Dits(liste.Cheques()), "6+i 1r- 7i");
  EXPECT_EQ(TotalRemise(liste.Cheques(), c.monnaie), 60);
  ASSERT_FALSE(liste.RemetTout(true));
  EXPECT_EQ(Dits(liste.Cheques()), "6+i 1r 7+i");
  // An entry is changed from the form: it is paid otherwise, another one comes to more.
  SaisieEcriture autre = Saisie(JournalDepenses, 1, -60, PaiementAutre),
                 plus = Saisie(JournalRecettes, 5, 15);
  autre.mouvement = 6;
  plus.mouvement = 1;
  ASSERT_FALSE(Essaie(autre) || Essaie(plus));
  ASSERT_FALSE(liste.Relit());
  EXPECT_EQ(Dits(liste.Cheques()), "1r 7+i");
  EXPECT_EQ(TotalRemise(liste.Cheques(), c.monnaie), 20);
  liste.Ferme();

  const std::string octets = test::LitFichier(Fichier);
  ASSERT_EQ(octets.size(), 3u * 96);
  EXPECT_EQ(octets.substr(8, 88), std::string(88, '\0')) << "row 0 is gone";
  ASSERT_FALSE(AppliqueRemise(App(), Fichier, Mars(20)));
  EXPECT_EQ(DateRemise(6), 0u);
  EXPECT_EQ(DateRemise(1), Mars(7)) << "the first date stays";
  EXPECT_EQ(DateRemise(7), Mars(20));
  std::string papier;
  ASSERT_FALSE(ParcourtBordereau(App(), Fichier, [&](const Line& ligne, bool imprime) {
    papier += std::to_string(ligne.Mouvement) + (imprime ? "i " : " ");
    return true;
  }));
  EXPECT_EQ(papier, "1 7i ");
}

TEST_F(Remise, ToutOuRien) {
  CriteresRemise c = Criteres(EtatRemise::Tous);
  ListeRemise liste(App(), Fichier);
  ASSERT_FALSE(liste.Remplit(c) || liste.RemetTout(true) || liste.Bascule(1));
  liste.Ferme();
  const std::string bon = test::LitFichier(Fichier);
  std::string mauvais = bon;
  mauvais.replace(3 * 96 + 8, 4, "\x7F\x7F\0\0", 4);
  test::EcritFichier(Fichier, mauvais);
  EXPECT_TRUE(AppliqueRemise(App(), Fichier, Mars(20)));
  EXPECT_TRUE(DateRemise(6) == 0 && DateRemise(1) == Mars(7)) << "nothing is marked by half";
  test::EcritFichier(Fichier, bon);
  EXPECT_EQ(AppliqueRemise(App(), Fichier, 0).numero, ErrDateIncorrecte.numero);
  EXPECT_EQ(AppliqueRemise(App(), Dossier() + "/absent", Mars(20)).numero, ErrFichierRemise.numero);
  Regle("2001", "Cloture", "15/03/2002");
  EXPECT_EQ(AppliqueRemise(App(), Fichier, Mars(20)).numero, ErrExerciceCloture.numero);
  ASSERT_FALSE(liste.Remplit(c));
  EXPECT_EQ(liste.Bascule(0).numero, ErrExerciceCloture.numero);
  EXPECT_EQ(liste.RemetTout(false).numero, ErrExerciceCloture.numero);
  liste.ImprimeTout(true);
  EXPECT_EQ(Dits(liste.Cheques()), "6i 1ri 7i 2i") << "it can still be printed";
  liste.Ferme();
  EXPECT_FALSE(AppliqueRemise(App(), Fichier, Mars(20)));
  Regle("2001", "Cloture", "");
  test::EcritFichier(Fichier, bon);
  ASSERT_FALSE(AppliqueRemise(App(), Fichier, Mars(20)));
  EXPECT_EQ(Listes(c), "6r 1 7r 2r") << "what is unticked is withdrawn";
  EXPECT_EQ(DateRemise(1), 0u);
  EXPECT_EQ(ListeRemise(App(), Dossier() + "/nul/f").Remplit(c).numero, ErrFichierRemise.numero);
}

}  // namespace
}  // namespace fenlor::test
