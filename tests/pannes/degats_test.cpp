// Damaged files: whatever stands in the place of a file, the books are either
// whole, or somebody is told. Never a crash, never entries that silently lack.

#include <iostream>
#include <random>
#include <sstream>

#include "pannes/outils.h"
#include "session/entretien.h"
#include "store/modele.h"

namespace fs = std::filesystem;

namespace fenlor::pannes {
namespace {

using test::EcritFichier;
using test::LitFichier;

constexpr unsigned NbEcritures = 40;

/// A practice whose last units still stand in the redo log alone, as after a
/// power cut, with a second exercice and one account file opened.
void Remplit(const std::string& cabinet, const std::string& prefixe) {
  CreeCabinet(cabinet);
  const Comptes comptes = LitComptes(cabinet);
  std::string entree;
  for (unsigned i = 0; i < NbEcritures; ++i) {
    entree += LigneSaisie(comptes, false, prefixe + std::to_string(i), 50 + i, 40 + i);
  }
  entree += "{\"mouvement\":5,\"supprimer\":true}\n";
  const Resultat r = Ctl({"--cabinet", cabinet, "saisir"}, entree);
  ASSERT_EQ(r.statut, 0) << r.sortie << r.erreurs;
  const std::pair<const char*, Json> autres[] = {
      {"BANQUE",
       {{"Compte", "512"},
        {"Libelle", prefixe},
        {"Date", "15/03/2003"},
        {"DateValeur", "16/03/2003"},
        {"MontantEuro", 12.5}}},
      {"Immo", {{"Numero", 1}, {"Designation", prefixe}, {"DateAchat", "15/03/2003"}, {"PrixEuro", 900.5}}},
      {"Amo", {{"Numero", 1}, {"Annee", 2003}, {"ReelEuro", 100.5}}},
      {"AUTO", {{"Genre", 1}, {"Libelle", prefixe}, {"Date", "15/04/2004"}, {"MontantEuro", 10.5}}},
      {"RECETTES", {{"LienPoste", 1}, {"LienA", 1}, {"LienB", 65537}, {"LienId", 1}, {"Libelle", prefixe}}},
      {"DEPENSES", {{"LienA", 1}, {"LienB", 1}, {"LienId", 1}, {"Tiers", "T1"}, {"Libelle", prefixe}}},
  };
  for (const auto& [fichier, rec] : autres) {
    const Resultat importe = Ctl({"--cabinet", cabinet, "importer", fichier}, rec.dump() + "\n");
    ASSERT_EQ(importe.statut, 0) << fichier << importe.erreurs;
  }
}

/// Copies a practice while a session holds it open with units in the log.
void CopieOuverte(const std::string& cabinet, const std::string& copie) {
  QVAPI m;
  ASSERT_TRUE(m.QVOpenSession(1) && m.QVOpenCompta(cabinet, "") && m.QVOpenExercice("2003"));
  EcrSimple rec{};
  for (u32 mouvement = 1; !m.ReadEcrSimple(m.PathExercice(), mouvement, rec); ++mouvement)
    ASSERT_LT(mouvement, 100u);
  for (unsigned i = 0; i < 3; ++i) {
    rec.Mouvement = 0;
    rec.Ligne = 500 + i;
    ASSERT_NE(m.AddEcrSimple(m.PathExercice(), rec), 0u);
  }
  fs::copy(cabinet, copie, fs::copy_options::recursive);
}

/// How many records the undamaged books have.
struct Temoin {
  long lignes = 0;
  long comptes = 0;
};
long Lignes(const Resultat& r) { return std::count(r.sortie.begin(), r.sortie.end(), '\n'); }

struct Degat {
  std::string nom;
  std::string (*fait)(const std::string& contenu, const std::string& autre, std::mt19937& hasard);
};

const std::vector<Degat>& Degats() {
  static const std::vector<Degat> degats = {
      {"vide", [](auto&, auto&, auto&) { return std::string(); }},
      {"moitie", [](auto& c, auto&, auto&) { return c.substr(0, c.size() / 2); }},
      {"sans le dernier octet",
       [](auto& c, auto&, auto&) { return c.empty() ? c : c.substr(0, c.size() - 1); }},
      {"tronque au hasard", [](auto& c, auto&, auto& h) { return c.substr(0, h() % (c.size() + 1)); }},
      {"zeros", [](auto& c, auto&, auto&) { return std::string(c.size(), '\0'); }},
      {"zeros derriere l'entete",
       [](auto& c, auto&, auto&) {
         return c.size() <= 1024 ? c : c.substr(0, 1024) + std::string(c.size() - 1024, '\0');
       }},
      {"un bloc de zeros",
       [](auto& c, auto&, auto& h) {
         std::string s = c;
         const std::size_t place = s.empty() ? 0 : h() % s.size() / 512 * 512;
         for (std::size_t i = place; i < s.size() && i < place + 4096; ++i) s[i] = 0;
         return s;
       }},
      {"octets au hasard",
       [](auto& c, auto&, auto& h) {
         std::string s = c;
         for (char& octet : s) octet = static_cast<char>(h());
         return s;
       }},
      {"entete au hasard",
       [](auto& c, auto&, auto& h) {
         std::string s = c;
         for (std::size_t i = 0; i < s.size() && i < 1024; ++i) s[i] = static_cast<char>(h());
         return s;
       }},
      {"un octet de l'entete",
       [](auto& c, auto&, auto& h) {
         std::string s = c;
         if (!s.empty()) s[h() % std::min<std::size_t>(s.size(), 60)] ^= static_cast<char>(1 + h() % 255);
         return s;
       }},
      {"quelques octets",
       [](auto& c, auto&, auto& h) {
         std::string s = c;
         for (unsigned i = 0; i < 8 && !s.empty(); ++i) s[h() % s.size()] = static_cast<char>(h());
         return s;
       }},
      {"rallonge", [](auto& c, auto&, auto&) { return c + std::string(5000, 'x'); }},
      {"celui d'un autre cabinet", [](auto&, auto& autre, auto&) { return autre; }},
  };
  return degats;
}

class UnDegat : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(Remplit(m_dossier.Chemin() + "/a", "piece a"));
    ASSERT_NO_FATAL_FAILURE(Remplit(m_dossier.Chemin() + "/b", "piece b"));
    ASSERT_NO_FATAL_FAILURE(CopieOuverte(m_dossier.Chemin() + "/a", m_dossier.Chemin() + "/ouvert"));
    ASSERT_NO_FATAL_FAILURE(CopieOuverte(m_dossier.Chemin() + "/b", m_dossier.Chemin() + "/autreouvert"));
  }

  /// All the commands that read: a crash fails the test by itself. Returns a
  /// complaint when the books lack something and nobody said so.
  std::string Essaie(const std::string& cabinet, const Temoin& temoin) {
    const Resultat verifie = Ctl({"--cabinet", cabinet, "verifier"});
    const Resultat exporte = Ctl({"--cabinet", cabinet, "exporter", "JOURNAL"});
    const Resultat comptes = Ctl({"--cabinet", cabinet, "exporter", "COMPTES"});
    const Resultat balance = Ctl({"--cabinet", cabinet, "balance"});
    const Resultat exercices = Ctl({"--cabinet", cabinet, "exercices"});
    for (const Resultat* r : {&verifie, &exporte, &comptes, &balance, &exercices}) {
      if (r->statut != 0 && r->statut != 1)
        return "exit status " + std::to_string(r->statut) + ": " + r->erreurs;
      if (r->statut == 1 && r->erreurs.empty() && r->sortie.empty()) return "refused without a word";
    }
    if (verifie.statut == 0) {
      if (exporte.statut == 0 && Lignes(exporte) != temoin.lignes) {
        return "verifier finds nothing wrong with " + std::to_string(Lignes(exporte)) + " lines of " +
               std::to_string(temoin.lignes);
      }
      if (comptes.statut == 0 && Lignes(comptes) != temoin.comptes) {
        return "verifier finds nothing wrong with " + std::to_string(Lignes(comptes)) + " accounts of " +
               std::to_string(temoin.comptes);
      }
    }
    // What is refused stays refused or gets well; writing must not make it crash.
    Ctl({"--cabinet", cabinet, "saisir"}, LigneSaisie({"706", "606", "512", "531"}, true, "apres", 10, 10));
    Ctl({"--cabinet", cabinet, "recalculer"});
    Ctl({"--cabinet", cabinet, "reconstruire"});
    return {};
  }

  DossierTemporaire m_dossier;
};

class DegatsTest : public UnDegat, public testing::WithParamInterface<std::string> {};

TEST_P(DegatsTest, RefusClairOuReparation) {
  std::mt19937 hasard(7);
  const std::string& fichier = GetParam();
  const std::string essai = m_dossier.Chemin() + "/essai";
  for (const char* etat : {"a", "ouvert"}) {
    const std::string source = m_dossier.Chemin() + "/" + etat;
    const std::string autre = m_dossier.Chemin() + (std::string(etat) == "a" ? "/b" : "/autreouvert");
    ASSERT_TRUE(fs::exists(source + "/" + fichier)) << fichier;

    Recopie(source, essai);
    const Temoin temoin{Lignes(Ctl({"--cabinet", essai, "exporter", "JOURNAL"})),
                        Lignes(Ctl({"--cabinet", essai, "exporter", "COMPTES"}))};
    ASSERT_GE(temoin.lignes, 3 * (NbEcritures - 1));
    ASSERT_GE(temoin.comptes, 10);

    std::vector<std::pair<std::string, std::string>> contenus;
    const std::string sain = LitFichier(source + "/" + fichier);
    for (const Degat& d : Degats())
      contenus.emplace_back(d.nom, d.fait(sain, LitFichier(autre + "/" + fichier), hasard));
    for (const char* echange : {"2003/JOURNAL.dat", "2003/COMPTES.dat", "2003/JOURNAL.idx",
                                "2003/COMPTES.idx", "fenlor.rep", "fenlor.ini"}) {
      if (fichier != echange)
        contenus.emplace_back(std::string("contenu de ") + echange, LitFichier(source + "/" + echange));
    }
    contenus.emplace_back("absent", "");
    contenus.emplace_back("un dossier", "");
    for (const auto& [nom, contenu] : contenus) {
      SCOPED_TRACE(fichier + ", " + nom + ", from \"" + etat + "\"");
      Recopie(source, essai);
      const std::string chemin = essai + "/" + fichier;
      if (nom == "absent" || nom == "un dossier")
        fs::remove(chemin);
      else
        EcritFichier(chemin, contenu);
      if (nom == "un dossier") fs::create_directory(chemin);
      EXPECT_EQ(Essaie(essai, temoin), "");
    }
  }
}

/// What a practice shows: everything that its files hold, and the totals drawn from it.
Resultat Montre(const std::string& cabinet) {
  Resultat tout;
  const std::vector<std::vector<std::string>> commandes = {{"exercices"},
                                                           {"verifier"},
                                                           {"exporter", "JOURNAL"},
                                                           {"exporter", "JOURNAL", "--cle", "2"},
                                                           {"exporter", "COMPTES"},
                                                           {"exporter", "RUBRIQUE"},
                                                           {"exporter", "BANQUE"},
                                                           {"exporter", "AUTO"},
                                                           {"exporter", "Immo"},
                                                           {"exporter", "Amo"},
                                                           {"exporter", "RECETTES"},
                                                           {"exporter", "DEPENSES"},
                                                           {"frais-km", "afficher"},
                                                           {"etat", "libelles", "--texte"},
                                                           {"balance"}};
  for (const std::vector<std::string>& commande : commandes) {
    std::vector<std::string> arguments = {"--cabinet", cabinet};
    arguments.insert(arguments.end(), commande.begin(), commande.end());
    const Resultat r = Ctl(arguments);
    tout.statut = std::max(tout.statut, r.statut);
    tout.sortie += r.sortie;
    tout.erreurs += r.erreurs;
  }
  return tout;
}

/// The first line in which two texts differ.
std::string Difference(const std::string& a, const std::string& b) {
  std::istringstream deA(a), deB(b);
  for (std::string ligneA, ligneB;;) {
    const bool encore = static_cast<bool>(std::getline(deA, ligneA)),
               aussi = static_cast<bool>(std::getline(deB, ligneB));
    if (!encore && !aussi) return {};
    if (encore != aussi || ligneA != ligneB) return ligneA + " / " + ligneB;
  }
}

/// One bit of any file turns: nothing changes, or it is told; a rebuild then brings the records back.
/// FENLOR_BASCULES says how many.
TEST_F(UnDegat, UnBitNePasseJamaisEnSilence) {
  std::mt19937 hasard(Nombre("FENLOR_GRAINE", 5));
  const std::string essai = m_dossier.Chemin() + "/essai";
  unsigned sansEffet = 0, dits = 0, gueris = 0;
  std::map<std::string, Resultat> sains;
  std::vector<std::pair<std::string, std::string>> fichiers;
  for (const char* etat : {"/a", "/ouvert"}) {
    const std::string source = m_dossier.Chemin() + etat;
    Recopie(source, essai);
    sains[etat] = Montre(essai);
    ASSERT_EQ(sains[etat].erreurs, "");
    for (const auto& entree : fs::recursive_directory_iterator(source))
      if (entree.is_regular_file() && entree.file_size() > 0)
        fichiers.emplace_back(etat, entree.path().string().substr(source.size()));
  }
  for (unsigned n = Nombre("FENLOR_BASCULES", 100); n > 0; --n) {
    const auto& [etat, fichier] = fichiers[hasard() % fichiers.size()];
    Recopie(m_dossier.Chemin() + etat, essai);
    std::string contenu = LitFichier(essai + fichier);
    // The log is mostly empty: what it holds stands at the beginnings of its areas.
    const std::size_t sous =
        fichier == "/fenlor.rep" ? std::min<std::size_t>(contenu.size(), 80000) : contenu.size();
    const std::size_t bit = hasard() % (sous * 8);
    contenu[bit / 8] ^= static_cast<char>(1u << bit % 8);
    EcritFichier(essai + fichier, contenu);
    SCOPED_TRACE(std::string(etat) + fichier + ", bit " + std::to_string(bit));
    const Resultat vu = Montre(essai);
    ASSERT_TRUE(vu.statut == 0 || vu.statut == 1) << vu.erreurs;
    const Resultat& sain = sains[etat];
    if (vu.statut == 0 && vu.erreurs.empty()) {
      EXPECT_EQ(Difference(vu.sortie, sain.sortie), "");
      ++sansEffet;
      continue;
    }
    ++dits;
    const auto connus = FichiersReconstructibles();
    const bool reconstructible =
        std::any_of(connus.begin(), connus.end(), [&](const FichierReconstructible& connu) {
          return fichier.ends_with("/" + std::string(connu.nom) + ".dat");
        });
    if (!reconstructible || bit / 8 < 1024) continue;
    Ctl({"--cabinet", essai, "reconstruire"});
    const Resultat apres = Montre(essai);
    EXPECT_EQ(apres.erreurs, "");
    EXPECT_EQ(Difference(apres.sortie, sain.sortie), "");
    ++gueris;
  }
  std::cout << sansEffet << " bits without effect, " << dits << " told, of which " << gueris
            << " rebuilt and right\n";
}

/// One bit of a template turns: it is refused with its line, or a sound practice comes of it.
TEST_F(UnDegat, UnModeleAbimeEstRefuseOuBon) {
  std::mt19937 hasard(Nombre("FENLOR_GRAINE", 5));
  const std::string essai = m_dossier.Chemin() + "/essai", programmes = m_dossier.Chemin() + "/programmes";
  fs::create_directory(programmes);
  unsigned refuses = 0, faits = 0;
  for (unsigned n = Nombre("FENLOR_BASCULES", 150) / 10; n > 0; --n) {
    fs::remove_all(essai);
    std::string modele(ModeleIntegre());
    const std::size_t bit = hasard() % (modele.size() * 8);
    modele[bit / 8] ^= static_cast<char>(1u << bit % 8);
    EcritFichier(programmes + "/defaut.qvc", modele);
    SCOPED_TRACE(bit);
    const Resultat r =
        Ctl({"--cabinet", essai, "creer", "--exercice", "2003", "--euro"}, {}, nullptr, programmes);
    ASSERT_TRUE(r.statut == 0 || (r.statut == 1 && !r.erreurs.empty())) << r.erreurs;
    ++(r.statut ? refuses : faits);
    if (r.statut == 0) {
      const Resultat verifie = Ctl({"--cabinet", essai, "verifier"});
      EXPECT_EQ(verifie.statut, 0) << verifie.sortie << verifie.erreurs;
    }
  }
  std::cout << refuses << " templates refused, " << faits << " made a sound practice\n";
}

INSTANTIATE_TEST_SUITE_P(Fichiers, DegatsTest,
                         testing::Values("2003/JOURNAL.dat", "2003/JOURNAL.idx", "2003/COMPTES.dat",
                                         "2003/COMPTES.idx", "2003/RUBRIQUE.dat", "2003/RUBRIQUE.idx",
                                         "fenlor.rep", "fenlor.ini"),
                         [](const auto& param) {
                           std::string nom = param.param;
                           for (char& c : nom) c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
                           return nom;
                         });

}  // namespace
}  // namespace fenlor::pannes
