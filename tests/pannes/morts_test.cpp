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
  Chasse chasse(m_hasard, Nombre("FENLOR_MORTS", 30));
  unsigned tours = 0, reprisesTuees = 0, confirmes = 0;
  const std::string entree = m_dossier.Chemin() + "/entree.json";
  for (; !chasse.Assez() && tours < 4 * chasse.voulus + 10; ++tours) {
    const bool tout = tours % 3 == 2;
    const std::vector<Ordre> ordres = Ordres(tout ? 150 : 60);
    {
      std::ofstream f(entree);
      for (const Ordre& o : ordres) f << o.ligne;
    }
    std::vector<std::string> arguments = {"--cabinet", m_cabinet, "saisir"};
    if (tout) arguments.push_back("--tout");
    const Resultat r = chasse.Lance(arguments, entree);
    // A torn last line was not acknowledged; whoever reads it knows.
    const std::string lu = r.sortie.substr(0, r.sortie.rfind('\n') + 1);
    const auto reponses = LignesJson(lu);
    ASSERT_TRUE(reponses) << lu;
    for (const Json& reponse : *reponses) ASSERT_FALSE(reponse.contains("erreur")) << reponse.dump();
    const std::size_t acquis = reponses->size();
    confirmes += static_cast<unsigned>(acquis);

    if (tours % 4 == 1) {
      Enfant reprise({"--cabinet", m_cabinet, "verifier"}, "/dev/null");
      reprise.Ecoute(200 + Tire(8'000));
      reprise.Tue();
      if (reprise.Attend().statut == 128 + 9) ++reprisesTuees;
    }

    Verifie(m_cabinet);
    ASSERT_FALSE(HasFailure()) << "after " << chasse.tues << " kills";
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
    ASSERT_TRUE(concorde) << "kill " << chasse.tues << (tout ? ", --tout, " : ", ") << acquis
                          << " acknowledged of " << ordres.size() << ", " << lus.size() << " entries found, "
                          << m_livres.size() << " before";
    m_livres = lus;
    if (m_livres.size() > 1500) {
      ASSERT_NO_FATAL_FAILURE(Recommence());
    }
  }
  std::cout << chasse.tues << " of " << tours << " killed, " << reprisesTuees << " recoveries killed, "
            << confirmes << " entries acknowledged\n";
  EXPECT_TRUE(chasse.Assez());
}

/// Designation of each asset, and the real amount that its three years were set to.
using BiensLus = std::map<u32, std::pair<std::string, f64>>;

BiensLus LitBiens(const std::string& cabinet) {
  const auto enregistrements = [&](const char* fichier) {
    return LignesJson(Ctl({"--cabinet", cabinet, "exporter", fichier}).sortie).value();
  };
  BiensLus lus;
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
  Chasse chasse(m_hasard, Nombre("FENLOR_MORTS", 30));
  m_cabinet = m_dossier.Chemin() + "/biens";
  ASSERT_NO_FATAL_FAILURE(CreeCabinet(m_cabinet));
  std::string entree;
  for (unsigned n = 0; n < nombre; ++n)
    entree += "{\"Designation\":\"0\",\"DateAchat\":\"15/03/2001\",\"PrixEuro\":90000,\"Duree\":5}\n";
  ASSERT_EQ(Ctl({"--cabinet", m_cabinet, "immobilisation", "ajouter"}, entree).statut, 0);
  BiensLus biens = LitBiens(m_cabinet);
  ASSERT_EQ(biens.size(), nombre);
  const std::string fichier = m_dossier.Chemin() + "/biens.json";
  unsigned version = 0, confirmes = 0;
  for (unsigned tour = 0; !chasse.Assez() && tour < 4 * chasse.voulus + 10; ++tour) {
    const bool detail = tour % 2;
    std::vector<BiensLus> apres{biens};  // after so many lines
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
    const Resultat r =
        chasse.Lance({"--cabinet", m_cabinet, "immobilisation", detail ? "detail" : "modifier"}, fichier);
    const auto reponses = LignesJson(r.sortie.substr(0, r.sortie.rfind('\n') + 1));
    ASSERT_TRUE(reponses && r.sortie.find("erreur") == std::string::npos) << r.sortie;
    const std::size_t acquis = reponses->size();
    confirmes += static_cast<unsigned>(acquis);
    Verifie(m_cabinet);
    biens = LitBiens(m_cabinet);
    ASSERT_TRUE(biens == apres[acquis] || (acquis < lignes && biens == apres[acquis + 1]))
        << "kill " << chasse.tues << ", " << acquis << " acknowledged";
  }
  std::cout << chasse.tues << " killed, " << confirmes << " lines acknowledged\n";
  EXPECT_TRUE(chasse.Assez());
}

}  // namespace
}  // namespace fenlor::pannes
