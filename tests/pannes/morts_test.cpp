// Processes killed at random moments: what fenlorctl acknowledged is there whole,
// nothing is there half. FENLOR_MORTS says how many kills, FENLOR_GRAINE the seed.

#include <cmath>
#include <fstream>
#include <iostream>
#include <random>

#include "pannes/outils.h"

namespace fenlor::pannes {
namespace {

/// What an entry must look like.
struct Attendu {
  std::string libelle;
  f64 ttc = 0;
  std::size_t lignes = 0;
  bool operator==(const Attendu& a) const {
    return libelle == a.libelle && std::abs(ttc - a.ttc) < 0.001 && lignes == a.lignes;
  }
};
using Livres = std::map<u32, Attendu>;

/// One line of input and what it does to the books.
struct Ordre {
  enum Sorte { Ajout, Changement, Suppression } sorte;
  u32 mouvement = 0;  ///< of Changement and Suppression
  Attendu attendu;
  std::string ligne;
};

class Morts : public testing::Test {
 protected:
  void SetUp() override {
    const unsigned graine = Nombre("FENLOR_GRAINE", std::random_device{}() % 1'000'000);
    RecordProperty("graine", static_cast<int>(graine));
    m_hasard.seed(graine);
  }

  /// A new practice: reading the books whole after each kill must stay cheap.
  void Recommence() {
    m_cabinet = m_dossier.Chemin() + "/cabinet" + std::to_string(m_numero);
    m_livres.clear();
    CreeCabinet(m_cabinet);
    m_comptes = LitComptes(m_cabinet);
    Apprend();
    m_livres = Lit();
  }

  unsigned Tire(unsigned sous) { return static_cast<unsigned>(m_hasard() % sous); }

  Attendu NouvelAttendu(bool personnel) {
    Attendu a;
    a.libelle = "Piece " + std::to_string(++m_numero);
    a.ttc = 10 + Tire(50000) / 100.0;
    a.lignes = personnel ? m_lignesAvecPersonnel : m_lignesSans;
    return a;
  }
  std::string Ligne(const Attendu& a, bool recette) const {
    return LigneSaisie(m_comptes, recette, a.libelle, a.ttc,
                       a.lignes == m_lignesAvecPersonnel ? std::floor(a.ttc) - 1 : a.ttc);
  }

  /// Learns how many lines the two forms of an entry have, before anything is killed.
  void Apprend() {
    for (const bool personnel : {false, true}) {
      const std::string ligne = LigneSaisie(m_comptes, !personnel, "modele", 100, 60);
      const Resultat r = Ctl({"--cabinet", m_cabinet, "saisir"}, ligne);
      ASSERT_EQ(r.statut, 0) << r.erreurs << r.sortie;
      const u32 mouvement = Json::parse(r.sortie).value("mouvement", 0u);
      const auto journal = LitJournal(m_cabinet);
      ASSERT_TRUE(journal.contains(mouvement));
      const std::size_t lignes = journal.at(mouvement).size();
      ASSERT_EQ(Anomalie(journal.at(mouvement)), "");
      (personnel ? m_lignesAvecPersonnel : m_lignesSans) = lignes;
      m_livres[mouvement] = {"modele", 100, lignes};
    }
    ASSERT_EQ(m_lignesAvecPersonnel, m_lignesSans + 1);
  }

  std::vector<Ordre> Ordres(unsigned nombre) {
    std::vector<Ordre> ordres;
    Livres restants = m_livres;
    for (unsigned i = 0; i < nombre; ++i) {
      const unsigned sorte = Tire(10);
      Ordre o{Ordre::Ajout, 0, {}, {}};
      if (sorte >= 7 && restants.size() > 10) {
        auto place = restants.begin();
        std::advance(place, Tire(static_cast<unsigned>(restants.size())));
        o.mouvement = place->first;
        restants.erase(place);  // no entry is touched twice in one run
        o.sorte = sorte >= 9 ? Ordre::Suppression : Ordre::Changement;
      }
      Json json;
      if (o.sorte == Ordre::Suppression) {
        json = {{"mouvement", o.mouvement}, {"supprimer", true}};
      } else {
        // The journal of an entry does not change; only an expense has a professional share of its own.
        const auto journal = m_journaux.find(o.mouvement);
        const bool recette = journal == m_journaux.end() ? Tire(2) != 0 : journal->second == JournalRecettes;
        o.attendu = NouvelAttendu(!recette && Tire(3) != 0);
        json = Json::parse(Ligne(o.attendu, recette));
        if (o.sorte == Ordre::Changement) json["mouvement"] = o.mouvement;
      }
      o.ligne = json.dump() + "\n";
      ordres.push_back(std::move(o));
    }
    return ordres;
  }

  /// The books as they are, every entry looked at.
  Livres Lit() {
    Livres lus;
    m_journaux.clear();
    for (const auto& [mouvement, lignes] : LitJournal(m_cabinet)) {
      EXPECT_EQ(Anomalie(lignes), "") << "entry " << mouvement;
      lus[mouvement] = {lignes.front().value("Libelle", ""), MontantTresorerie(lignes), lignes.size()};
      m_journaux[mouvement] = lignes.front().value("Journal", 0);
    }
    return lus;
  }

  /// Does the orders `0` to `fin` (excluded) to a copy of the books. New entries
  /// are found by their label, whatever number they got.
  bool Concorde(const std::vector<Ordre>& ordres, std::size_t fin, const Livres& lus) const {
    Livres voulus = m_livres;
    std::map<std::string, Attendu> nouveaux;
    for (std::size_t i = 0; i < fin; ++i) {
      const Ordre& o = ordres[i];
      if (o.sorte == Ordre::Ajout)
        nouveaux[o.attendu.libelle] = o.attendu;
      else if (o.sorte == Ordre::Changement)
        voulus[o.mouvement] = o.attendu;
      else
        voulus.erase(o.mouvement);
    }
    if (lus.size() != voulus.size() + nouveaux.size()) return false;
    for (const auto& [mouvement, attendu] : lus) {
      if (const auto v = voulus.find(mouvement); v != voulus.end()) {
        if (!(v->second == attendu)) return false;
      } else if (const auto n = nouveaux.find(attendu.libelle);
                 n == nouveaux.end() || !(n->second == attendu)) {
        return false;
      }
    }
    return true;
  }

  DossierTemporaire m_dossier;
  std::string m_cabinet;
  Comptes m_comptes;
  std::mt19937 m_hasard;
  unsigned m_numero = 0;
  std::size_t m_lignesSans = 0, m_lignesAvecPersonnel = 0;
  Livres m_livres;                ///< what must be on disk
  std::map<u32, int> m_journaux;  ///< journal of each entry
};

TEST_F(Morts, CeQuiEstConfirmeResteEtRienNestAMoitie) {
  ASSERT_NO_FATAL_FAILURE(Recommence());
  const unsigned morts = Nombre("FENLOR_MORTS", 30);
  unsigned tues = 0, termines = 0, reprisesTuees = 0, confirmes = 0;
  const std::string entree = m_dossier.Chemin() + "/entree.json";
  long duree = 20'000;  // of a whole run, in microseconds; learned as it goes

  for (unsigned tour = 0; tues < morts && tour < 4 * morts + 10; ++tour) {
    const bool tout = tour % 3 == 2;
    const std::vector<Ordre> ordres = Ordres(tout ? 150 : 60);
    {
      std::ofstream f(entree);
      for (const Ordre& o : ordres) f << o.ligne;
    }
    std::vector<std::string> arguments = {"--cabinet", m_cabinet, "saisir"};
    if (tout) arguments.push_back("--tout");
    Enfant enfant(arguments, entree);
    enfant.Ecoute(100 + Tire(static_cast<unsigned>(duree)));
    const bool fini = enfant.Fini();
    enfant.Tue();
    const Resultat r = enfant.Attend();
    if (r.statut == 128 + 9)
      ++tues;
    else
      ++termines;
    // Half the time is spent before anything is saved when runs never end, and
    // in kills that come too late when they always do.
    duree = fini ? duree * 9 / 10 + 100 : duree * 11 / 10 + 100;

    // A torn last line was not acknowledged; whoever reads it knows.
    const std::string lu = r.sortie.substr(0, r.sortie.rfind('\n') + 1);
    const auto reponses = LignesJson(lu);
    ASSERT_TRUE(reponses) << lu;
    for (const Json& reponse : *reponses) ASSERT_FALSE(reponse.contains("erreur")) << reponse.dump();
    const std::size_t acquis = reponses->size();
    confirmes += static_cast<unsigned>(acquis);

    if (tour % 4 == 1) {
      Enfant reprise({"--cabinet", m_cabinet, "verifier"}, "/dev/null");
      reprise.Ecoute(200 + Tire(8'000));
      reprise.Tue();
      if (reprise.Attend().statut == 128 + 9) ++reprisesTuees;
    }

    const Resultat verification = Ctl({"--cabinet", m_cabinet, "verifier"});
    ASSERT_EQ(verification.statut, 0)
        << "after " << tues << " kills: " << verification.sortie << verification.erreurs;
    const Livres lus = Lit();
    // Orders are carried out one after the other: the books are those after all
    // acknowledged ones, or one more. With --tout: after all of them, or none.
    bool concorde = false;
    if (tout) {
      concorde = Concorde(ordres, ordres.size(), lus) || (acquis == 0 && Concorde(ordres, 0, lus));
    } else {
      concorde =
          Concorde(ordres, acquis, lus) || (acquis < ordres.size() && Concorde(ordres, acquis + 1, lus));
    }
    ASSERT_TRUE(concorde) << "kill " << tues << (tout ? ", --tout, " : ", ") << acquis << " acknowledged of "
                          << ordres.size() << ", " << lus.size() << " entries found, " << m_livres.size()
                          << " before";
    m_livres = lus;
    if (m_livres.size() > 1500) {
      ASSERT_NO_FATAL_FAILURE(Recommence());
    }
  }
  std::cout << tues << " killed, " << termines << " came to their end, " << reprisesTuees
            << " recoveries killed, " << confirmes << " entries acknowledged\n";
  EXPECT_GE(tues, morts);
}

/// The cheques of a slip are marked together, or none of them is.
TEST_F(Morts, UneRemiseEstMarqueeEnEntier) {
  constexpr unsigned cheques = 150;
  const unsigned morts = Nombre("FENLOR_MORTS", 30);
  m_cabinet = m_dossier.Chemin() + "/remise";
  ASSERT_NO_FATAL_FAILURE(CreeCabinet(m_cabinet));
  m_comptes = LitComptes(m_cabinet);
  std::string entree;
  for (unsigned n = 0; n < cheques; ++n)
    entree += LigneSaisie(m_comptes, true, "Piece " + std::to_string(n), 10 + n, 10 + n);
  ASSERT_EQ(Ctl({"--cabinet", m_cabinet, "saisir", "--tout"}, entree).statut, 0);
  const std::vector<std::string> compte = {"--compte", m_comptes.banque};
  const auto commande = [&](std::vector<std::string> mots) {
    mots.insert(mots.begin(), {"--cabinet", m_cabinet});
    mots.insert(mots.end(), compte.begin(), compte.end());
    return mots;
  };
  const auto remis = [&] {
    unsigned nombre = 0;
    for (const auto& [mouvement, lignes] : LitJournal(m_cabinet))
      for (const Json& ligne : lignes) {
        nombre += ligne.value("Remise", 0) != 0;
        EXPECT_EQ(ligne.value("Remise", 0) != 0, !ligne.value("DateRemise", "").empty());
      }
    return nombre;
  };
  ASSERT_EQ(remis(), 0u);
  unsigned tues = 0, faites = 0;
  bool retire = false;
  long duree = 20'000;
  for (unsigned tour = 0; (tues < morts || faites == 0) && tour < 4 * morts + 40; ++tour) {
    Enfant enfant(retire     ? commande({"remise", "retirer"})
                  : tour % 2 ? commande({"remise", "remettre"})
                             : commande({"etat", "remise", "--remettre", "--marquage"}),
                  "/dev/null");
    enfant.Ecoute(1'000 + Tire(static_cast<unsigned>(duree)));
    const bool fini = enfant.Fini();
    enfant.Tue();
    tues += enfant.Attend().statut == 128 + 9;
    // On a slow machine a run must be given the time to stand, too.
    duree = fini ? duree * 9 / 10 + 100 : tues >= morts ? duree * 2 : duree * 11 / 10 + 100;
    const Resultat verification = Ctl({"--cabinet", m_cabinet, "verifier"});
    ASSERT_EQ(verification.statut, 0) << verification.sortie << verification.erreurs;
    const unsigned nombre = remis();
    ASSERT_TRUE(nombre == 0 || nombre == cheques) << nombre << " of them after " << tues << " kills";
    faites += (nombre == 0) == retire;
    retire = nombre != 0;
  }
  std::cout << tues << " killed, " << faites << " slips stood\n";
  EXPECT_TRUE(tues >= morts && faites > 0);
}

/// Designation of each asset, and the real amount that its three years were set to.
using Biens = std::map<u32, std::pair<std::string, f64>>;

Biens LitBiens(const std::string& cabinet) {
  const auto enregistrements = [&](const char* fichier) {
    return LignesJson(Ctl({"--cabinet", cabinet, "exporter", fichier}).sortie).value();
  };
  Biens lus;
  const std::vector<Json> biens = enregistrements("Immo"), annees = enregistrements("Amo");
  for (const Json& bien : biens)
    EXPECT_TRUE(lus.emplace(bien["Numero"], std::pair{bien.value("Designation", ""), 0.0}).second);
  std::map<u32, std::vector<f64>> reels;
  for (const Json& annee : annees) reels[annee["Numero"]].push_back(annee["ReelEuro"]);
  for (const auto& [numero, montants] : reels) {
    EXPECT_EQ(montants, std::vector<f64>(3, montants[0])) << "half a detail of " << numero;
    lus[numero].second = montants[0];
  }
  return lus;
}

/// Of a kill while assets are modified, or while all years of one are corrected, the asset and its years are
/// what was acknowledged last, or what the next line asks for: never gone, never mixed.
TEST_F(Morts, UneImmobilisationEstLAncienneOuLaNouvelle) {
  constexpr unsigned nombre = 12, lignes = 120;
  const unsigned morts = Nombre("FENLOR_MORTS", 30);
  m_cabinet = m_dossier.Chemin() + "/biens";
  ASSERT_NO_FATAL_FAILURE(CreeCabinet(m_cabinet));
  std::string entree;
  for (unsigned n = 0; n < nombre; ++n)
    entree += "{\"Designation\":\"0\",\"DateAchat\":\"15/03/2001\",\"PrixEuro\":90000,\"Duree\":5}\n";
  ASSERT_EQ(Ctl({"--cabinet", m_cabinet, "immobilisation", "ajouter"}, entree).statut, 0);
  Biens biens = LitBiens(m_cabinet);
  ASSERT_EQ(biens.size(), nombre);
  const std::string fichier = m_dossier.Chemin() + "/biens.json";
  unsigned tues = 0, version = 0, confirmes = 0;
  long duree = 20'000;
  for (unsigned tour = 0; tues < morts && tour < 4 * morts + 10; ++tour) {
    const bool detail = tour % 2;
    std::vector<Biens> apres{biens};  // after so many lines
    std::string demande;
    while (apres.size() <= lignes) {
      const u32 numero = 1 + Tire(nombre);
      Json ligne = {{"Numero", numero}};
      apres.push_back(apres.back());
      auto& [designation, reel] = apres.back()[numero];
      ++version;
      // Half a Euro away from every theoretical amount, for which no record would stand.
      if (detail)
        for (const int annee : {2001, 2002, 2003})
          ligne["Annees"].push_back({{"Annee", annee}, {"Reel", reel = version + 0.5}});
      else
        ligne["Designation"] = designation = std::to_string(version);
      demande += ligne.dump() + "\n";
    }
    test::EcritFichier(fichier, demande);
    Enfant enfant({"--cabinet", m_cabinet, "immobilisation", detail ? "detail" : "modifier"}, fichier);
    enfant.Ecoute(1'000 + Tire(static_cast<unsigned>(duree)));
    const bool fini = enfant.Fini();
    enfant.Tue();
    const Resultat r = enfant.Attend();
    tues += r.statut == 128 + 9;
    duree = fini ? duree * 9 / 10 + 100 : duree * 11 / 10 + 100;
    const auto reponses = LignesJson(r.sortie.substr(0, r.sortie.rfind('\n') + 1));
    ASSERT_TRUE(reponses && r.sortie.find("erreur") == std::string::npos) << r.sortie;
    const std::size_t acquis = reponses->size();
    confirmes += static_cast<unsigned>(acquis);
    const Resultat verification = Ctl({"--cabinet", m_cabinet, "verifier"});
    ASSERT_EQ(verification.statut, 0) << verification.sortie << verification.erreurs;
    biens = LitBiens(m_cabinet);
    ASSERT_TRUE(biens == apres[acquis] || (acquis < lignes && biens == apres[acquis + 1]))
        << "kill " << tues << ", " << acquis << " acknowledged";
  }
  std::cout << tues << " killed, " << confirmes << " lines acknowledged\n";
  EXPECT_GE(tues, morts);
}

/// Whatever stops a walk or a confirmation, each occurrence is in the journal once in the end, and none is
/// lost.
TEST_F(Morts, LesEcheancesViennentUneFois) {
  const unsigned morts = Nombre("FENLOR_MORTS", 30);
  constexpr unsigned modeles = 12, mois = 6;
  const auto commande = [&](std::vector<std::string> mots) {
    mots.insert(mots.begin(), {"--cabinet", m_cabinet, "--aujourdhui", "20/06/2003"});
    return mots;
  };
  unsigned tues = 0, livres = 0;
  long duree = 30'000;
  while (tues < morts && livres < 4 * morts + 20) {
    m_cabinet = m_dossier.Chemin() + "/auto" + std::to_string(++livres);
    ASSERT_NO_FATAL_FAILURE(CreeCabinet(m_cabinet));
    m_comptes = LitComptes(m_cabinet);
    std::string entree;
    for (unsigned n = 0; n < modeles; ++n)
      entree += Json{{"Genre", 2},
                     {"Date", n % 3 ? "05/01/2003" : "05/06/2003"},
                     {"Libelle", "Modele " + std::to_string(n)},
                     {"Tresorerie", m_comptes.banque},
                     {"Compte", m_comptes.depense},
                     {"MontantEuro", 10 + n},
                     {"Periodicite", 6},
                     {"NbPaiements", n % 4 == 1 ? mois : 12},
                     {"Annoncer", n % 3 ? 0 : 1}}
                    .dump() +
                "\n";
    ASSERT_EQ(Ctl(commande({"automatique", "ajouter"}), entree).statut, 0);
    for (bool fini = false; !fini;) {
      Enfant enfant(commande({"echeances", "--toutes"}), "/dev/null");
      enfant.Ecoute(1'000 + Tire(static_cast<unsigned>(duree)));
      fini = enfant.Fini();
      enfant.Tue();
      const int statut = enfant.Attend().statut;
      ASSERT_TRUE(statut == 0 || statut == 128 + 9) << statut;
      fini = statut == 0;
      tues += !fini;
      duree = fini ? duree * 7 / 10 + 100 : duree * 12 / 10 + 100;
    }
    std::map<std::string, unsigned> vues;
    for (const auto& [mouvement, lignes] : LitJournal(m_cabinet))
      ++vues[lignes.front().value("Libelle", "") + ' ' + lignes.front().value("Date", "")];
    unsigned attendues = 0;
    for (unsigned n = 0; n < modeles; ++n) attendues += n % 3 ? mois : 1;
    EXPECT_EQ(vues.size(), attendues);
    for (const auto& [echeance, fois] : vues) EXPECT_EQ(fois, 1u) << echeance;
    const Resultat verification = Ctl({"--cabinet", m_cabinet, "verifier"});
    ASSERT_EQ(verification.statut, 0) << verification.sortie << verification.erreurs;
  }
  std::cout << tues << " killed, " << livres << " books\n";
  EXPECT_GE(tues, morts);
}

}  // namespace
}  // namespace fenlor::pannes
