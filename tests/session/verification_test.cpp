#include "session/verification.h"

#include <algorithm>

#include "core/btfiles.h"
#include "journal/cabinetmedical.h"
#include "session/entretien.h"

namespace fenlor::test {
namespace {

using Phrases = std::vector<std::string>;

class VerificationTest : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }

  Phrases Verifie() {
    Phrases phrases;
    const u32 nombre = VerifieExercice(App(), [&](const std::string& p) { phrases.push_back(VersUtf8(p)); });
    EXPECT_EQ(phrases.size(), nombre);
    return phrases;
  }

  /// A line of an entry, written back without regard to the totals.
  void Force(u32 mouvement, u32 rang, const std::function<void(Line&)>& change) {
    const Position position = Magasin().LignesMouvement(App().PathExercice, mouvement).at(rang);
    Line ligne;
    ASSERT_TRUE(Magasin().ReadLines(App().PathExercice, position, ligne));
    change(ligne);
    ASSERT_TRUE(Magasin().WriteJournal(ligne));
  }
};

TEST_F(VerificationTest, DesLivresJustesNeDisentRien) {
  EXPECT_EQ(Phrases{}, Verifie()) << "an empty exercice";
  const u32 depense = Enregistre(Ecriture(JournalDepenses, "6154", 33.33));
  ASSERT_NE(0u, Enregistre(Ecriture(JournalRecettes, "7065", -0.05, "531")));
  ASSERT_NE(0u, Enregistre(Ecriture(JournalRecettes, "7070", 11.96)));
  // Three thirds: converted one by one their Francs are a cent off the whole.
  SaisieEcriture standard = Ecriture(JournalRecettes, "706", 0.06);
  standard.genre = GenreStandard;
  standard.tresoreries.assign(6, {Long("512"), 0.01});
  ASSERT_NE(0u, Enregistre(standard));
  const u32 od = EnregistreLesLignes({{"512", {}, 0.03, 0}, {"706", {}, 0, 0.01}, {"706", {}, 0, 0.02}});
  ASSERT_NE(0u, od);
  Boite.Defaut = RepOui;
  ASSERT_FALSE(RapprocheEcriture(App(), depense, true));
  ASSERT_FALSE(ValideEcriture(App(), od, true));
  ASSERT_FALSE(PointeEcriture(App(), depense));
  EXPECT_EQ(Phrases{}, Verifie());

  // The adjustment converts the lines of a simple entry one by one: 109.68, 21.52
  // and 87.44 Francs against 218.63.
  AjustementEuros ajustement;
  ASSERT_FALSE(AjusteEuros(App(), ajustement));
  EXPECT_EQ((Phrases{"6154 D 16.72 109.68", "4451 D 3.28 21.52", "108 D 13.33 87.44", "512 C 33.33 218.63"}),
            LignesLues(depense));
  Statistiques statistiques{};
  ASSERT_TRUE(RecalculComptes(App(), statistiques));
  EXPECT_EQ(Phrases{}, Verifie());
}

TEST_F(VerificationTest, UneEcritureFausse) {
  struct Cas {
    u32 rang;
    std::function<void(Line&)> faute;
    Phrases constats;  ///< behind "Ecriture 1 du 15/03/2003, « Essai » : "
  };
  const Cas cas[] = {
      {1, [](Line& l) { l.Journal = JournalRecettes; }, {"ses lignes ne sont pas toutes du même journal."}},
      {1, [](Line& l) { l.Genre = GenreStandard; }, {"ses lignes ne sont pas toutes du même genre."}},
      {1,
       [](Line& l) { l.Date = FaitDate(16, 3, 2003); },
       {"ses lignes ne portent pas toutes la même date."}},
      {1, [](Line& l) { l.Ligne = 9; }, {"ses lignes ne portent pas toutes le même numéro de ligne."}},
      {1,
       [](Line& l) { PoseTexte(l.Libelle, "autre"); },
       {"ses lignes ne portent pas toutes le même libellé."}},
      {1,
       [](Line& l) { l.Validee = 1; },
       {"ses lignes ne sont pas toutes validées, ou toutes en brouillard."}},
      {1, [](Line& l) { l.SaisieEuro = 0; }, {"ses lignes ne sont pas toutes saisies dans la même monnaie."}},
      {2, [](Line& l) { l.Rang = 3; }, {"les rangs de ses lignes ne se suivent pas de 0 à 2."}},
      {2, [](Line& l) { l.DateLigne = FaitDate(32, 2, 2003); }, {"la date de la ligne 2 n'existe pas."}},
      {2,
       [](Line& l) { l.TypeCompte = Autre; },
       {"la ligne 2 porte le type 4, mais le compte 512 est du type 0."}},
      {2, [](Line& l) { PoseTexte(l.Compte, Long("517")); }, {"le compte 517 de la ligne 2 n'existe pas."}},
      {2,
       [](Line& l) { l.MontantEuro = 119.61; },
       {"elle n'est pas équilibrée en euros : débit 119,60, crédit 119,61."}},
      {2,
       [](Line& l) { l.MontantFranc = 784.53; },
       {"elle n'est pas équilibrée en francs : débit 784,52, crédit 784,53."}},
      {2,
       [](Line& l) { l.Sens = 0; },
       {"elle n'est pas équilibrée en francs : débit 1569,04, crédit 0,00.",
        "elle n'est pas équilibrée en euros : débit 239,20, crédit 0,00."}},
      {1,
       [](Line& l) { PoseTexte(l.ComptePrincipal, Long("699")); },
       {"le compte principal 699 de la ligne 1 n'existe pas."}},
      {0,
       [](Line& l) { l.MontantFranc = -l.MontantFranc; },
       {"le montant de la ligne 0 est négatif.",
        "elle n'est pas équilibrée en francs : débit -527,38, crédit 784,52."}},
      {0, [](Line& l) { l.MontantEuro = std::nan(""); }, {"le montant de la ligne 0 est illisible."}},
  };
  const u32 mouvement = Enregistre(Ecriture(JournalDepenses, "6063", 119.60));
  ASSERT_EQ(1u, mouvement);
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.constats.front());
    const Line juste = Lignes(mouvement).at(c.rang);
    Force(mouvement, c.rang, c.faute);
    Phrases attendus, ecritures;
    for (const std::string& constat : c.constats)
      attendus.push_back("Ecriture 1 du 15/03/2003, « Essai » : " + constat);
    for (const std::string& phrase : Verifie())
      if (phrase.starts_with("Ecriture")) ecritures.push_back(phrase);
    EXPECT_EQ(attendus, ecritures);
    Force(mouvement, c.rang, [&juste](Line& l) { l = juste; });
  }
  EXPECT_EQ(Phrases{}, Verifie());
}

TEST_F(VerificationTest, UneEcritureSansNumero) {
  const u32 mouvement = Enregistre(Ecriture(JournalRecettes, "706", 10));
  for (const u32 rang : {1u, 0u}) Force(mouvement, rang, [](Line& l) { l.Mouvement = 0; });
  EXPECT_EQ(Phrases{"Ecriture 0 du 15/03/2003, « Essai » : elle n'a pas de numéro."}, Verifie());
}

TEST_F(VerificationTest, UneOperationDiverseNonEquilibree) {
  Line seule{};
  seule.Mouvement = 7;
  seule.Journal = JournalOD;
  seule.Ligne = 1;
  seule.Date = FaitDate(32, 2, 2003);
  seule.SaisieEuro = 1;
  PoseTexte(seule.Libelle, "Importée"_w);
  PoseTexte(seule.Compte, Long("512"));
  seule.MontantEuro = 10;
  seule.MontantFranc = 65.60;
  ASSERT_NE(0u, Magasin().AddLines(App().PathExercice, seule));
  PoseTexte(seule.Compte, Long("706"));
  seule.Sens = 1;
  seule.MontantEuro = 9.99;
  seule.MontantFranc = 65.53;
  ASSERT_NE(0u, Magasin().AddLines(App().PathExercice, seule));
  const std::string debut = "Ecriture 7 du 32/02/2003, « Importée » : ";
  EXPECT_EQ((Phrases{debut + "cette date n'existe pas.", debut + "la date de la ligne 0 n'existe pas.",
                     debut + "la date de la ligne 1 n'existe pas.",
                     debut + "elle n'est pas équilibrée en francs : débit 65,60, crédit 65,53.",
                     debut + "elle n'est pas équilibrée en euros : débit 10,00, crédit 9,99."}),
            Verifie());
}

TEST_F(VerificationTest, DesTotauxFaux) {
  struct Cas {
    const char* compte;
    std::size_t champ;
    f64 valeur;
    const char* constat;
  };
  const u32 mouvement = Enregistre(Ecriture(JournalDepenses, "6154", 100));
  Boite.Defaut = RepOui;
  ASSERT_FALSE(RapprocheEcriture(App(), mouvement, true));
  const Cas cas[] = {
      {"6154", offsetof(Plan, PersoEuro), 0,
       "Compte 6154 : la part personnelle en euros est de 0,00 au lieu de -40,00."},
      {"6154", offsetof(Plan, TVAFranc), 64.48,
       "Compte 6154 : la T.V.A. en francs est de 64,48 au lieu de -64,48."},
      {"6154", offsetof(Plan, DebitEuro), 50.18,
       "Compte 6154 : le débit en euros est de 50,18 au lieu de 50,17."},
      {"512", offsetof(Plan, CreditFranc), 0,
       "Compte 512 : le crédit en francs est de 0,00 au lieu de 655,96."},
      {"512", offsetof(Plan, RappCreditEuro), 0,
       "Compte 512 : le crédit rapproché en euros est de 0,00 au lieu de 100,00."},
      {"514", offsetof(Plan, RappDebitEuro), 5,
       "Compte 514 : le débit rapproché en euros est de 5,00 au lieu de 0,00."},
      {"706", offsetof(Plan, CreditEuro), std::nan(""),
       "Compte 706 : le crédit en euros est de (illisible) au lieu de 0,00."},
  };
  for (const Cas& c : cas) {
    const Plan juste = LitCompte(c.compte);
    ChangeCompte(c.compte, [&c](Plan& plan) {
      std::memcpy(reinterpret_cast<char*>(&plan) + c.champ, &c.valeur, sizeof c.valeur);
    });
    EXPECT_EQ(Phrases{c.constat}, Verifie());
    ChangeCompte(c.compte, [&juste](Plan& plan) { plan = juste; });
  }
  EXPECT_EQ(Phrases{}, Verifie());
}

TEST_F(VerificationTest, LesFichiers) {
  ASSERT_NE(0u, Enregistre(Ecriture(JournalRecettes, "706", 10)));
  // A key that leads nowhere, and one that is missing.
  const u32 journal = Magasin().OpenJournal({});
  std::string cle;
  const Position premiere = Magasin().QVFirstKey(76, cle);
  ASSERT_TRUE(Magasin().QVDelDupKey(76, cle, premiere));
  ASSERT_TRUE(Magasin().QVAddKey(76, "9" + cle.substr(1), premiere));
  ASSERT_TRUE(Magasin().CloseJournal(journal));
  const Phrases cles = Verifie();
  ASSERT_FALSE(cles.empty());
  EXPECT_TRUE(std::all_of(cles.begin(), cles.end(),
                          [](const auto& p) { return p.starts_with("Fichier JOURNAL : "); }));
  EXPECT_TRUE(std::filesystem::exists(App().PathExercice + "/BANQUE.dat"));
  EXPECT_FALSE(std::filesystem::exists(App().PathCabinet + "/Amo.dat")) << "verifying makes no file";

  Magasin().QVCloseExercice();
  std::filesystem::remove(App().PathExercice + "/BANQUE.dat");
  const Phrases absent = Verifie();
  EXPECT_NE(absent.end(), std::find(absent.begin(), absent.end(), "Le fichier BANQUE est absent."));
  EXPECT_FALSE(std::filesystem::exists(App().PathExercice + "/BANQUE.dat"));
}

}  // namespace
}  // namespace fenlor::test
