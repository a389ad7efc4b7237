// bench_vitesse [--dossier DIR] [ENTRIES [RUNS]]
// What a user waits for, beside what limits it in the same run: an entry through a pipe, a year typed at
// once, the verification, the general ledger as text, keys that are made again at an opening, and what the
// checksums cost an opening, a walk and a save (bench_sommes). 133200 entries are 283050 lines. The status is
// 1 when a bar is missed, unless the size is another one.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "ecriturenue.h"
#include "mesures.h"
#include "programmes.h"
#include "store/definitions.h"
#include "store/qvapi.h"
#include "store/texte1252.h"

namespace fs = std::filesystem;

namespace fenlor::bench {

namespace {

constexpr unsigned EcrituresBarre = 133'200;
constexpr unsigned EcrituresDeQuatre = 75'000;         ///< four lines each, where the sums are measured
constexpr double MargeTube = 5e-6, PatienceTube = 20;  ///< seconds

/// A practice made by fenlorctl, and lines for `saisir` that fit it.
class Annee {
 public:
  explicit Annee(const std::string& dossier) : Dossier(dossier) {
    Lance({Fenlorctl(), "--cabinet", dossier, "creer", "--exercice", "2003", "--euro", "--tva"});
    QVAPI m;
    Ouvre(m);
    m.QVParcours(FichierComptes, [&](Position, const void* rec) {
      const Plan& plan = *static_cast<const Plan*>(rec);
      const std::string compte = LitTexte(plan.Compte);
      if (plan.Type == Recette && m_recette.empty()) m_recette = compte;
      if (plan.Type == Depense && m_charge.empty()) m_charge = compte;
      if (plan.Type == Tresorerie && plan.TypeTresorerie == 1 && m_banque.empty()) m_banque = compte;
      return true;
    });
  }
  std::string Ligne(unsigned i) const {
    char ligne[400];
    const bool r = i % 8 != 0;
    std::snprintf(ligne, sizeof ligne,
                  "{\"journal\":\"%s\",\"date\":\"%02u/%02u/2003\",\"compte\":\"%s\",\"libelle\":\"%s %u\","
                  "\"ttc\":%u.50,%s\"tresorerie\":\"%s\",\"paiement\":\"cheque\"}\n",
                  r ? "recettes" : "depenses", 1 + i % 28, 1 + i / 28 % 12,
                  (r ? m_recette : m_charge).c_str(), r ? "Consultations" : "Fournitures", i, 20 + i % 200,
                  r ? "" : "\"professionnel\":15.25,", m_banque.c_str());
    return ligne;
  }
  std::vector<std::string> Commande(std::initializer_list<std::string> suite) const {
    std::vector<std::string> arguments{Fenlorctl(), "--cabinet", Dossier, "--exercice", "2003"};
    arguments.insert(arguments.end(), suite);
    return arguments;
  }
  void Ouvre(QVAPI& m) const {
    if (!m.QVOpenSession(1) || !m.QVOpenCompta(Dossier, "") || !m.QVOpenExercice("2003") || !m.OpenPlan("") ||
        !m.OpenJournal(""))
      Echec("the practice does not open");
  }
  std::string Fichier(const char* nom) const { return Dossier + "/2003/" + nom; }

  const std::string Dossier;

 private:
  std::string m_recette, m_charge, m_banque;
};

/// Seconds of writing so many bytes by large pieces, and of their sync.
double Ecrit(const std::string& chemin, u64 taille) {
  SystemePosix systeme;
  std::unique_ptr<Fichier> fichier;
  if (systeme.Ouvre(chemin, Systeme::Creation, fichier) != 0) Echec("cannot make " + chemin);
  const std::vector<char> tampon(256u << 10, 'x');
  const double duree = Duree([&] {
    for (u64 place = 0; place < taille; place += tampon.size())
      if (fichier->Ecrit(tampon.data(), tampon.size(), place) != 0) Echec("cannot fill " + chemin);
    fichier->Synchronise();
  });
  fs::remove(chemin);
  return duree;
}

/// In this process answers each line with one, after a bare write: what a pipe costs anybody.
int Echo(const std::string& chemin) {
  SystemePosix systeme;
  EcritureNue nue(systeme, chemin, 2048);
  char tampon[4096];
  for (ssize_t n; (n = read(0, tampon, sizeof tampon)) > 0;) {
    nue();
    if (write(1, "fait\n", 5) != 5) return 1;
  }
  return 0;
}

void ParUnTube(Tableau& tableau, const std::string& dossier, unsigned nombre) {
  const Annee annee(dossier + "/tube");
  SystemePosix systeme;
  EcritureNue nue(systeme, dossier + "/nue.bin", 2048);
  const auto mesure = [&](const char* titre, const char* reste, const std::vector<std::string>& programme,
                          double barre) {
    Repondeur repondeur(programme);
    unsigned i = 0;
    const auto demande = [&] {
      const std::string reponse = repondeur(annee.Ligne(i++));
      if (reponse.find("erreur") != std::string::npos) Echec(reponse);
    };
    for (unsigned chauffe = 0; chauffe < 20; ++chauffe) demande(), nue();
    // A disk wanders by more than what is looked for: each one is compared with its neighbour, until the
    // middle of the differences is known.
    std::vector<double> nous, autre, ecarts;
    const double debut = Secondes(CLOCK_MONOTONIC);
    do {
      MesurePaires(
          nombre, demande, [&] { nue(); }, nous, autre);
      for (std::size_t i = ecarts.size(); i < nous.size(); ++i) ecarts.push_back(nous[i] - autre[i]);
    } while (nombre > 100 && Marge(ecarts) > MargeTube && Secondes(CLOCK_MONOTONIC) - debut < PatienceTube);
    tableau.Ligne(titre, EnTemps(Mediane(nous)), EnTemps(Mediane(autre)), Mediane(nous) / Mediane(autre), "x",
                  0, false);
    tableau.Ligne(reste, std::to_string(nous.size()) + " pairs", "+- " + EnTemps(Marge(ecarts)),
                  Mediane(ecarts) * 1e6, " us", barre, false);
  };
  mesure("entry through a pipe / 4 KiB write + fdatasync", "  above the bare one", annee.Commande({"saisir"}),
         20);
  mesure("a bare write through a pipe / the same", "  above the bare one",
         {Moi(), "--echo", dossier + "/echo.bin"}, 0);
}

void Saisir(Tableau& tableau, const Annee& annee, unsigned ecritures) {
  const std::string entree = annee.Dossier + ".json";
  {
    std::ofstream f(entree);
    for (unsigned i = 0; i < ecritures; ++i) f << annee.Ligne(i);
  }
  const double duree = Duree([&] { Lance(annee.Commande({"saisir", "--tout"}), entree, entree + ".dit"); });
  QVAPI m;
  annee.Ouvre(m);
  Statistiques s{};
  if (!m.QVCalculCompta("2003", s) || s.NbRecettes + s.NbDepenses != ecritures)
    Echec("saisir left entries out");
  const double lignes = m.GetJournalRec(0);
  const double limite = Ecrit(entree + ".bin", fs::file_size(annee.Fichier("JOURNAL.dat")));
  tableau.Ligne("saisir --tout / writing and syncing its JOURNAL.dat", EnTemps(duree), EnTemps(limite),
                duree / limite, "x", 0, false);
  tableau.Ligne("  lines of journal", "", "", lignes / duree, " l/s", 160'000, true);
}

void ContreUnParcours(Tableau& tableau, const Annee& annee, unsigned tours, const char* titre,
                      std::initializer_list<std::string> commande, double barre) {
  f64 somme = 0;
  const Paires p = MesurePaires(
      tours, [&] { Lance(annee.Commande(commande), "/dev/null", "/dev/null"); },
      [&] {
        QVAPI m;
        annee.Ouvre(m);
        m.QVParcours(FichierJournal, [&](Position, const void* rec) {
          somme += static_cast<const Line*>(rec)->MontantEuro;
          return true;
        });
      });
  tableau.Ligne(titre, EnTemps(p.nous), EnTemps(p.autre), 1 / p.rapport, "x", barre, false);
  if (somme == 0) Echec("nothing was scanned");
}

void Cles(Tableau& tableau, const Annee& annee, unsigned tours) {
  std::vector<double> refaites;
  const Paires p = MesurePaires(
      tours,
      [&] {
        fs::remove(annee.Fichier("JOURNAL.idx"));
        QVAPI m;
        refaites.push_back(Duree([&] { annee.Ouvre(m); }));
      },
      [&] { Ecrit(annee.Dossier + ".bin", fs::file_size(annee.Fichier("JOURNAL.idx"))); });
  tableau.Ligne("opening with all keys made again, and closing / writing them", EnTemps(p.nous),
                EnTemps(p.autre), 1 / p.rapport, "x", 0, false);
  tableau.Ligne("  the opening alone", EnTemps(Mediane(refaites)), "", Mediane(refaites), " s", 0.6, false);
}

/// `saisir` is killed behind an acknowledged entry, and the practice opened.
void ApresUneMort(Tableau& tableau, const Annee& annee, unsigned tours) {
  std::vector<double> mortes, saines;
  const auto ouvre = [&](std::vector<double>& temps) {
    QVAPI m;
    temps.push_back(Duree([&] { annee.Ouvre(m); }));
  };
  for (unsigned i = 0; i < tours; ++i) {
    {
      Repondeur saisir(annee.Commande({"saisir"}));
      saisir(annee.Ligne(i));
      saisir.Tue();
    }
    ouvre(mortes);
    ouvre(saines);
  }
  tableau.Ligne("opening after a death / after a good end", EnTemps(Mediane(mortes)),
                EnTemps(Mediane(saines)), Mediane(mortes) / Mediane(saines), "x", 0, false);
}

/// Seconds of clock and of processor, medians of one program's answers to one question.
struct Mesure {
  double horloge = 0, processeur = 0;
};

/// The store as it is and without the sums of the slots, asked in turn.
class AvecEtSans {
 public:
  AvecEtSans(const std::string& dossier, unsigned ecritures)
      : m_avec(Programme("bench_sommes", dossier + "/avec", ecritures)),
        m_sans(Programme("bench_sommes_sans", dossier + "/sans", ecritures)) {}
  std::pair<Mesure, Mesure> operator()(const std::string& question, unsigned tours) {
    std::vector<double> h[2], p[2];
    for (unsigned i = 0; i < 2 * tours; ++i) {
      const bool sans = (i % 2 == 1) != (i % 4 > 1);
      const std::string reponse = (sans ? m_sans : m_avec)(question + '\n');
      char* suite = nullptr;
      h[sans].push_back(std::strtod(reponse.c_str(), &suite));
      p[sans].push_back(std::strtod(suite, nullptr));
    }
    return {{Mediane(h[0]), Mediane(p[0])}, {Mediane(h[1]), Mediane(p[1])}};
  }

 private:
  static std::vector<std::string> Programme(const char* nom, const std::string& dossier, unsigned ecritures) {
    return {(fs::path(Moi()).parent_path() / nom).string(), dossier, std::to_string(ecritures)};
  }
  Repondeur m_avec, m_sans;
};

/// What the sums of the slots add to an opening, a walk and a save.
void Sommes(Tableau& tableau, const std::string& dossier, unsigned ecritures, unsigned tours) {
  AvecEtSans mesure(dossier, ecritures);
  const auto [ouvre, ouvreSans] = mesure("ouverture", tours);
  tableau.Ligne("opening of the practice / without sums", EnTemps(ouvre.horloge), EnTemps(ouvreSans.horloge),
                ouvre.horloge / ouvreSans.horloge, "x", 0, false);
  tableau.Ligne("  more than without", "", "", (ouvre.horloge - ouvreSans.horloge) * 1e3, " ms", 5, false);
  const auto [parcours, parcoursSans] = mesure("parcours", 3 * tours);
  tableau.Ligne("walk of all lines / without sums, processor", EnTemps(parcours.processeur),
                EnTemps(parcoursSans.processeur), (parcours.processeur / parcoursSans.processeur - 1) * 100,
                " %", 2, false);
  // Both wait for the same sync, whose caprices are larger than what is looked for: the difference is taken
  // of the processor's time, the share of the clock's.
  const auto [sauve, sauveSans] = mesure("sauvegarde", 50 * tours);
  tableau.Ligne("one save / without sums, processor", EnTemps(sauve.processeur),
                EnTemps(sauveSans.processeur), sauve.processeur / sauveSans.processeur, "x", 0, false);
  tableau.Ligne("  more than without, of a save", EnTemps(sauve.horloge), EnTemps(sauveSans.horloge),
                (sauve.processeur - sauveSans.processeur) / sauveSans.horloge * 100, " %", 2, false);
}

int Principal(std::vector<std::string> arguments) {
  std::string dossier = "bench-tmp";
  if (arguments.size() == 2 && arguments[0] == "--echo") return Echo(arguments[1]);
  if (arguments.size() >= 2 && arguments[0] == "--dossier") {
    dossier = arguments[1];
    arguments.erase(arguments.begin(), arguments.begin() + 2);
  }
  const auto nombre = [&](std::size_t place, unsigned defaut) {
    if (place >= arguments.size()) return defaut;
    const unsigned lu = static_cast<unsigned>(std::strtoul(arguments[place].c_str(), nullptr, 10));
    if (lu == 0) {
      std::fprintf(stderr, "bench_vitesse [--dossier DIR] [ENTRIES [RUNS]]\n");
      std::exit(2);
    }
    return lu;
  };
  const unsigned ecritures = nombre(0, EcrituresBarre), tours = nombre(1, 7);
  dossier = (fs::absolute(dossier) / ("vitesse" + std::to_string(getpid()))).string();
  fs::create_directories(dossier);
  Tableau tableau;
  tableau.EnTete();
  ParUnTube(tableau, dossier, tours * 100);
  const Annee annee(dossier + "/annee");
  Saisir(tableau, annee, ecritures);
  ContreUnParcours(tableau, annee, tours, "fenlorctl verifier / opening and one scan in place", {"verifier"},
                   4);
  ContreUnParcours(tableau, annee, tours, "general ledger as text / the same",
                   {"etat", "grand-livre", "--texte"}, 6);
  Cles(tableau, annee, tours);
  ApresUneMort(tableau, annee, tours);
  const u64 deQuatre = u64{ecritures} * EcrituresDeQuatre / EcrituresBarre;
  Sommes(tableau, dossier, static_cast<unsigned>(std::max<u64>(1, deQuatre)), tours);
  fs::remove_all(dossier);
  return tableau.Manquees() == 0 || ecritures != EcrituresBarre ? 0 : 1;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) { return fenlor::bench::Principal({argv + 1, argv + argc}); }
