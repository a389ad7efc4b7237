// The power is cut at every sync in turn, with several fates for what was in
// flight. What was saved is there, what was not is not there by half, keys and
// totals are sound. Two controls leave a sync out: the simulation must see it.
// FENLOR_GRAINES says how many fates are tried for each cut.
#include "pannes/coupure.h"

#include <random>

namespace fs = std::filesystem;

namespace fenlor::pannes {
namespace {

TEST_F(Coupure, AChaqueSynchro) { Joue(Histoire, Nombre("FENLOR_GRAINES", 6), "", false); }

TEST_F(Coupure, DansDeGrandesUnites) {
  Joue(GrandeHistoire, std::max(3u, Nombre("FENLOR_GRAINES", 6) / 2), "", false);
}

TEST_F(Coupure, AvecLeJournalDeRepriseLivre) {
  m_reprise = RepriseLivree;
  Joue(Histoire, Nombre("FENLOR_GRAINES", 6), "", false);
  Joue(GrandeHistoire, 2, "", false);
}

TEST_F(Coupure, AvecUnJournalDeRepriseMoyen) {
  m_reprise = RepriseMoyenne;
  Joue(GrandeHistoire, 3, "", false);
}

TEST_F(Coupure, PendantUneConversion) {
  m_sansSommes = true;
  Joue(PetiteHistoire, Nombre("FENLOR_GRAINES", 6), "", false);
}

/// A sync fails, the work goes on, and the power is cut later.
TEST_F(Coupure, ApresUneSynchroManquee) {
  const unsigned graines = Nombre("FENLOR_GRAINES", 6);
  std::mt19937 hasard(11);
  unsigned essais = 0, mauvais = 0;
  for (void (*histoire)(Machine&) : {Histoire, GrandeHistoire}) {
    bool coupee = true;
    for (u64 manquee = 1; coupee && mauvais < 6; ++manquee) {
      coupee = false;
      for (unsigned essai = 0; essai < (histoire == Histoire ? graines : (graines + 2) / 3);
           ++essai, ++essais) {
        // The one behind the failure, the one behind that, then any.
        const u64 n = manquee + 1 + (essai < 2 ? essai : hasard() % 40), graine = hasard() % 12;
        std::string plainte;
        coupee = Essaie(histoire, n, graine, "", plainte, manquee) || coupee;
        if (plainte.empty()) continue;
        ++mauvais;
        ADD_FAILURE() << "sync " << manquee << " failed, cut at sync " << n << ", fate " << graine << ": "
                      << plainte;
      }
    }
  }
  std::cout << essais << " failed syncs with a cut, " << mauvais << " with a finding\n";
}

/// The power goes when all was told as brought home, and nothing that is in flight arrives.
TEST_F(Coupure, CeQuUneSynchroManqueeAOublieEstEcritEncore) {
  const auto joue = [&](const std::function<void(Machine&, SystemeCoupure&)>& histoire) {
    Recopie(m_neuf, m_essai);
    Livres acquis;
    {
      SystemeCoupure systeme(m_dossier.Chemin() + "/essai");
      {
        Machine machine(m_essai, systeme, RepriseMoyenne);
        machine.Commence(m_depart, m_modele);
        machine.Endure();
        machine.Ouvre();
        histoire(machine, systeme);
        acquis = machine.Acquis();
        systeme.Coupe();
      }
      ASSERT_TRUE(systeme.Applique(0));
    }
    EcrSimple rec{};
    std::string plainte;
    EXPECT_EQ(LitLivres(m_essai, rec, &plainte), acquis);
    EXPECT_EQ(plainte, "");
  };
  for (u64 manquee = 1; manquee <= 4; ++manquee) {
    SCOPED_TRACE(manquee);
    joue([&](Machine& m, SystemeCoupure& systeme) {
      for (unsigned i = 0; i < 12; ++i) m.Ajoute(10 + i);
      systeme.EchoueSynchro(manquee);
      m.Vidange();
      m.Vidange();
    });
  }
  for (u64 manquee = 1; manquee <= 2; ++manquee)  // accounts, journal
    joue([&](Machine& m, SystemeCoupure&) {
      m.Ajoute(10);
      m.AjouteMalgreUneSynchro(manquee, 3500);
      m.Vidange();
    });
}

/// The log cannot be emptied as the practice is closed, and the power goes while it is replayed; or what
/// makes sure of its header fails as well, and the power goes in the replay behind.
TEST_F(Coupure, DansLaRepriseApresUneSynchroManquee) {
  for (unsigned manquees = 1; manquees <= 2; ++manquees) {
    bool coupee = true;
    for (u64 premiere = 1; coupee && !HasFailure(); ++premiere) {
      for (u64 n = premiere + manquees; n <= premiere + manquees + 1; ++n) {
        for (u64 graine = 2; graine < 9; ++graine) {
          std::string plainte;
          coupee = Essaie(PetiteHistoire, n, graine, "", plainte, premiere, manquees);
          EXPECT_EQ(plainte, "") << manquees << " failed from sync " << premiere << ", cut at sync " << n
                                 << ", fate " << graine;
        }
      }
    }
  }
}

/// The program dies of a failed sync: what it wrote is visible, clean for the kernel and not on the disk. The
/// next one goes by what it sees, and then the power is cut.
TEST_F(Coupure, DansLaSeanceApresUneMortDansUneSynchroManquee) {
  const unsigned graines = std::max(4u, Nombre("FENLOR_GRAINES", 6) / 2);
  unsigned essais = 0;
  bool mort = true;
  for (u64 manquee = 1; mort && !HasFailure(); ++manquee) {
    bool coupee = true;
    for (u64 n = 1; coupee && !HasFailure(); ++n) {
      for (u64 graine = 2; graine < 2 + graines && (mort || graine == 2); ++graine, ++essais) {
        Recopie(m_neuf, m_essai);
        std::vector<Livres> bons;
        SystemeCoupure systeme(m_dossier.Chemin() + "/essai");
        systeme.EchoueSynchro(manquee);
        systeme.MeurtDeLEchec();
        {
          Machine premiere(m_essai, systeme, m_reprise);
          premiere.Commence(m_depart, m_modele);
          PetiteHistoire(premiere);
          bons = {premiere.Acquis(), premiere.Possible()};
        }
        mort = systeme.EstMort();
        systeme.Recommence();
        systeme.CoupeApres(n);
        {
          Machine seconde(m_essai, systeme, m_reprise);
          seconde.Commence({}, m_modele);
          seconde.Ouvre();
          seconde.Ajoute(200);
          seconde.Ajoute(201);
          seconde.Ferme();
          for (std::size_t i = 0; i < 2; ++i) {
            bons.push_back(bons[i]);
            bons[i].insert(seconde.Acquis().begin(), seconde.Acquis().end());
            bons.back().insert(seconde.Possible().begin(), seconde.Possible().end());
          }
        }
        coupee = systeme.EstCoupe();
        ASSERT_TRUE(systeme.Applique(graine));
        EcrSimple rec{};
        std::string plainte;
        const Livres lus = LitLivres(m_essai, rec, &plainte);
        EXPECT_EQ(plainte, "") << "died of sync " << manquee << ", cut at " << n << ", fate " << graine;
        EXPECT_TRUE(std::find(bons.begin(), bons.end(), lus) != bons.end())
            << "died of sync " << manquee << ", cut at " << n << ", fate " << graine;
      }
    }
  }
  std::cout << essais << " deaths in a failed sync with a cut behind\n";
}

/// The unit cannot be synced, nor what should wipe it: told as refused, it stays away whatever the disk has
/// of it, once the next session has brought a sync to its end.
TEST_F(Coupure, UneUniteRefuseeNeRevientPas) {
  for (unsigned essai = 0; essai < 4 * 3 * 3; ++essai) {
    const bool dAutres = essai & 1, meurt = essai & 2;
    const u64 n = (dAutres ? 2 : 3) + essai / 4 % 3, graine = essai / 12 * 2;
    SCOPED_TRACE(testing::Message() << "behind others " << dAutres << ", death " << meurt << ", cut at " << n
                                    << ", fate " << graine);
    Recopie(m_neuf, m_essai);
    Livres acquis;
    SystemeCoupure systeme(m_dossier.Chemin() + "/essai");
    {
      Machine premiere(m_essai, systeme);
      premiere.Commence(m_depart, m_modele);
      premiere.Endure();
      premiere.Ouvre();
      if (dAutres) premiere.Ajoute(10);
      systeme.EchoueSynchro(1, 2);
      premiere.Ajoute(11);
      ASSERT_TRUE(systeme.EchecVenu());
      acquis = premiere.Acquis();
      if (meurt) systeme.Meurt();
      premiere.Ferme();
    }
    systeme.Recommence();
    systeme.CoupeApres(n);
    {
      Machine seconde(m_essai, systeme);
      seconde.Ouvre();
      systeme.Coupe();
    }
    ASSERT_TRUE(systeme.Applique(graine));
    EcrSimple rec{};
    EXPECT_TRUE(LitLivres(m_essai, rec) == acquis);
  }
}

TEST_F(Coupure, TemoinSansSynchroDuJournalDeReprise) {
  EXPECT_GT(Joue(Histoire, 4, "fenlor.rep", true, 3), 0u);
}

TEST_F(Coupure, TemoinSansSynchroDesDonnees) { EXPECT_GT(Joue(Histoire, 4, ".dat", true, 3), 0u); }

/// A cut while an exercice is made: it is there and opens, or is made once more.
TEST_F(Coupure, PendantLaCreation) {
  const unsigned graines = Nombre("FENLOR_GRAINES", 6);
  u64 n = 1;
  for (bool coupee = true; coupee; ++n) {
    for (u64 graine = 0; graine < graines; ++graine) {
      SCOPED_TRACE(testing::Message() << "cut at sync " << n << ", fate " << graine);
      fs::remove_all(m_dossier.Chemin() + "/essai");
      fs::create_directories(m_dossier.Chemin() + "/essai");
      const std::vector<std::string> creer = {"--cabinet",  m_essai, "--oui",  "creer",
                                              "--exercice", "2003",  "--euro", "--tva"};
      Resultat r;
      {
        SystemeCoupure systeme(m_dossier.Chemin() + "/essai");
        systeme.CoupeApres(n);
        r = Ctl(creer, {}, &systeme);
        coupee = systeme.EstCoupe();
        ASSERT_TRUE(systeme.Applique(graine));
      }
      if (r.statut == 0) {
        // Acknowledged: it must be there.
        const Resultat liste = Ctl({"--cabinet", m_essai, "exercices"});
        EXPECT_NE(liste.sortie.find("2003"), std::string::npos) << liste.sortie << liste.erreurs;
      } else {
        const Resultat encore = Ctl(creer);
        EXPECT_EQ(encore.statut, 0) << encore.erreurs;
      }
      Verifie(m_essai);
      if (HasFailure()) return;
    }
  }
}

}  // namespace
}  // namespace fenlor::pannes
