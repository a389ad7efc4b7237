// bench_magasin: the store beside what limits it, in one run.
#include <sys/stat.h>
#include <sys/utsname.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cinttypes>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <thread>

#include "classeur.h"
#include "ecriturenue.h"
#include "mesures.h"
#include "programmes.h"
#include "rival.h"
#include "store/definitions.h"
#include "store/texte1252.h"
#include "systemelent.h"

namespace fs = std::filesystem;

namespace fenlor::bench {
namespace {

struct Tailles {
  unsigned sauvegardes = 2000;  ///< pairs of one save and one bare write
  unsigned sauvegardesLentes = 300;
  unsigned ecritures = 87'500;  ///< of the practice that is measured: 350,000 lines
  unsigned passages = 15;       ///< pairs of a walk, a rebuild, a recalculation
  unsigned recherches = 20'000;
  unsigned unite = 100'000;  ///< entries of the large unit
  unsigned ouvertures = 25;
  unsigned marchePetite = 7'500;   ///< entries: 30,000 lines
  unsigned marcheGrande = 87'500;  ///< 350,000 lines; 3,000,000 with --grand
};

std::string SansVirgule(double valeur, const char* unite) {
  char texte[40];
  std::snprintf(texte, sizeof texte, "%.0f%s", valeur, unite);
  return texte;
}

/// Anonymous memory of this process, KiB.
u64 MemoireAnonyme() {
  std::ifstream statut("/proc/self/status");
  for (std::string ligne; std::getline(statut, ligne);) {
    if (ligne.rfind("RssAnon:", 0) == 0) return std::strtoull(ligne.c_str() + 8, nullptr, 10);
  }
  return 0;
}

void Machine(const std::string& dossier) {
  utsname u{};
  uname(&u);
  std::string processeur = "?";
  std::ifstream cpu("/proc/cpuinfo");
  for (std::string ligne; std::getline(cpu, ligne);) {
    if (ligne.rfind("model name", 0) == 0) {
      processeur = ligne.substr(ligne.find(':') + 2);
      break;
    }
  }
  struct statfs s {};
  statfs(dossier.c_str(), &s);
  std::printf("machine: %s, %u processors, Linux %s, file system type 0x%lx, SQLite %s\n", processeur.c_str(),
              std::thread::hardware_concurrency(), u.release, static_cast<unsigned long>(s.f_type),
              sqlite3_libversion());
}

// ---------------------------------------------------------------- durable save

void Sauvegardes(Tableau& tableau, const std::string& dossier, const Tailles& t) {
  SystemeLent systeme;
  Classeur classeur(dossier + "/sauvegarde", &systeme);
  QVAPI& m = classeur.Magasin();
  classeur.Ajoute(0, 1000);
  EcritureNue nue(systeme, dossier + "/nue.bin", 2048);
  unsigned i = 1000;
  u64 synchrosNues = 0;
  const std::string exercice = m.PathExercice();
  const auto sauve = [&] {
    EcrSimple rec = classeur.Ecriture(i++);
    if (!m.AddEcrSimple(exercice, rec)) Echec("an entry is refused");
  };
  const auto bare = [&] {
    nue();
    ++synchrosNues;
  };
  for (unsigned chauffe = 0; chauffe < 50 && chauffe < t.sauvegardes; ++chauffe) sauve(), bare();

  const u64 debut = m.NbSynchros(), reels = systeme.synchros, nues = synchrosNues;
  Paires p = MesurePaires(t.sauvegardes, sauve, bare);
  const double annoncees = static_cast<double>(m.NbSynchros() - debut) / t.sauvegardes;
  const double vues = static_cast<double>(systeme.synchros - reels - (synchrosNues - nues)) / t.sauvegardes;
  tableau.Ligne("save of 4 lines / 4 KiB write + fdatasync", EnTemps(p.nous), EnTemps(p.autre), 1 / p.rapport,
                "x", 1.5, false);
  tableau.Ligne("syncs of the log per save", "", "", annoncees, "", 1, false);
  tableau.Ligne("  all syncs, emptying of the log included", "", "", vues, "", 0, false);

  systeme.attente = 2000;
  p = MesurePaires(t.sauvegardesLentes, sauve, bare);
  tableau.Ligne("the same, every sync 2 ms slower", EnTemps(p.nous), EnTemps(p.autre), 1 / p.rapport, "x",
                1.1, false);
}

// ------------------------------------------------------------------ the rival

/// As the lists and reports read: records in place, like the rival's.
unsigned ParcoursNous(QVAPI& m, const std::string& debut, const std::string& fin, f64& somme) {
  unsigned nombre = 0;
  const bool bien = m.QVParcoursCle(75, debut, fin, [&](Position, const void* rec) {
    somme += static_cast<const Line*>(rec)->MontantEuro;
    ++nombre;
    return true;
  });
  if (!bien) Echec("a line cannot be read");
  return nombre;
}

/// A cursor move and a copied record for each line.
unsigned MarcheNous(QVAPI& m, const std::string& debut, const std::string& fin, f64& somme) {
  unsigned nombre = 0;
  Line rec;
  std::string cle = debut;
  for (Position p = m.QVBrowseKey(75, cle); p && cle < fin; p = m.QVNextKey(75, cle)) {
    if (!m.QVReadRec(FichierJournal, p, &rec)) Echec("a line cannot be read");
    somme += rec.MontantEuro;
    ++nombre;
  }
  return nombre;
}

void Copie(QVAPI& m, Rival& rival) {
  rival.Debut();
  m.QVParcours(FichierComptes, [&](Position p, const void* rec) {
    rival.AjouteCompte(p, *static_cast<const Plan*>(rec));
    return true;
  });
  m.QVParcours(FichierJournal, [&](Position p, const void* rec) {
    rival.AjouteLigne(p, *static_cast<const Line*>(rec));
    return true;
  });
  rival.Fin();
}

void Marches(Tableau& tableau, QVAPI& m, Rival& rival, const Tailles& t) {
  // A month of receipts, a different one each time.
  const auto bornes = [](unsigned i) {
    const unsigned numero = 1 + i % 12;
    return std::pair{"1" + StrSDate(FaitDate(1, numero, 2003)),
                     "1" + StrSDate(NextMonth(FaitDate(1, numero, 2003)))};
  };
  const auto marche = [&](const char* titre, auto&& nous, double barre, bool compte) {
    unsigned mois = 0, lignesNous = 0, lignesAutre = 0;
    f64 sommeNous = 0, sommeAutre = 0;
    const Paires p = MesurePaires(
        t.passages * 4,
        [&] {
          const auto [debut, fin] = bornes(mois / 2);
          lignesNous += nous(m, debut, fin, sommeNous);
          ++mois;
        },
        [&] {
          const auto [debut, fin] = bornes(mois / 2);
          lignesAutre += rival.Marche(0, debut, fin, sommeAutre);
          ++mois;
        });
    if (lignesNous != lignesAutre || sommeNous != sommeAutre) Echec("the walks do not agree");
    tableau.Ligne(titre, EnTemps(p.nous), EnTemps(p.autre), p.rapport, "x", barre, compte);
  };
  marche("month walk with records", ParcoursNous, 8, true);
  marche("  the same by cursor, each record copied", MarcheNous, 0, false);
}

void Recherches(Tableau& tableau, QVAPI& m, Rival& rival, const Tailles& t) {
  // Exact keys of lines all over the journal, in an order that no cache foresees.
  std::vector<std::string> cles;
  {
    std::vector<std::string> toutes;
    std::string cle;
    for (Position q = m.QVFirstKey(79, cle); q; q = m.QVNextKey(79, cle)) toutes.push_back(cle);
    u32 h = 12345;
    for (unsigned i = 0; i < t.recherches; ++i) {
      h = h * 1664525u + 1013904223u;
      cles.push_back(toutes[(h >> 4) % toutes.size()]);
    }
  }
  u64 positionsNous = 0, positionsAutre = 0;
  Paires p = MesurePaires(
      t.passages,
      [&] {
        for (const auto& cle : cles) positionsNous += m.QVFindKey(79, cle);
      },
      [&] {
        for (const auto& cle : cles) positionsAutre += rival.Trouve(4, cle);
      });
  if (positionsNous != positionsAutre) Echec("the finds do not agree");
  tableau.Ligne("exact find of a line's key", EnTemps(p.nous / t.recherches), EnTemps(p.autre / t.recherches),
                p.rapport, "x", 4, true);
  // What is left of it when the rival takes its read lock once for all of them.
  rival.Debut();
  p = MesurePaires(
      t.passages,
      [&] {
        for (const auto& cle : cles) positionsNous += m.QVFindKey(79, cle);
      },
      [&] {
        for (const auto& cle : cles) positionsAutre += rival.Trouve(4, cle);
      });
  rival.Fin();
  tableau.Ligne("  the same, the rival inside one transaction", EnTemps(p.nous / t.recherches),
                EnTemps(p.autre / t.recherches), p.rapport, "x", 0, true);
}

void Travaux(Tableau& tableau, QVAPI& m, Rival& rival, const Tailles& t) {
  const unsigned lourds = std::max(1u, t.passages / 3);
  Paires p = MesurePaires(
      lourds,
      [&] {
        Statistiques s;
        if (!m.QVCalculCompta("2003", s)) Echec("the recalculation failed");
      },
      [&] { rival.Recalcule(); });
  tableau.Ligne("full recalculation", EnTemps(p.nous), EnTemps(p.autre), p.rapport, "x", 5, true);

  p = MesurePaires(
      lourds,
      [&] {
        m.QVClose(FichierJournal);
        fs::remove(m.CheminExercice("2003") + "/JOURNAL.idx");
        if (!m.OpenJournal("")) Echec("the keys cannot be rebuilt");
      },
      [&] { rival.RefaitCles(); });
  tableau.Ligne("opening of the journal, its keys rebuilt", EnTemps(p.nous), EnTemps(p.autre), p.rapport, "x",
                3, true);
}

void FaceAuRival(Tableau& tableau, const std::string& dossier, const Tailles& t) {
  Classeur classeur(dossier + "/rival");
  QVAPI& m = classeur.Magasin();
  classeur.Remplit(t.ecritures);
  m.QVFlush();
  Rival rival(dossier + "/rival.sqlite");
  Copie(m, rival);
  if (rival.NombreLignes() != t.ecritures * LignesParEcriture) Echec("the rival has not the same lines");

  Marches(tableau, m, rival, t);
  Recherches(tableau, m, rival, t);
  Travaux(tableau, m, rival, t);
}

void GrandeUnite(Tableau& tableau, const std::string& dossier, const Tailles& t) {
  std::vector<double> nous, autre, rapports;
  for (unsigned passage = 0; passage < 3; ++passage) {
    const std::string ici = dossier + "/unite" + std::to_string(passage);
    Classeur classeur(ici);
    QVAPI& m = classeur.Magasin();
    // The rival's chart is the one before the unit; its lines are composed
    // beforehand, which saves it the rules of an entry.
    Rival rival(ici + ".sqlite");
    Copie(m, rival);
    nous.push_back(Duree([&] { classeur.Ajoute(0, t.unite); }));
    std::vector<std::pair<Position, Line>> lignes;
    lignes.reserve(std::size_t{t.unite} * LignesParEcriture);
    m.QVParcours(FichierJournal, [&](Position p, const void* rec) {
      lignes.emplace_back(p, *static_cast<const Line*>(rec));
      return true;
    });
    autre.push_back(Duree([&] {
      rival.Debut();
      for (const auto& [position, rec] : lignes) rival.Saisit(position, rec);
      rival.EcritComptes();
      rival.Fin();
    }));
    rapports.push_back(autre.back() / nous.back());
    if (rival.NombreLignes() != t.unite * LignesParEcriture) Echec("the rival has not the same lines");
  }
  tableau.Ligne("100,000 entries in one unit", EnTemps(Mediane(nous)), EnTemps(Mediane(autre)),
                Mediane(rapports), "x", 3, true);
}

// ------------------------------------------------- opening, memory, fenlorctl

/// An opening sums up what it will believe: every byte of the records and of the keys.
void Ouverture(Tableau& tableau, const std::string& dossier, const Tailles& t) {
  const auto lit = [](const std::string& chemin) {
    SystemePosix systeme;
    std::unique_ptr<Fichier> fichier;
    if (systeme.Ouvre(chemin, Systeme::Lecture, fichier) != 0) Echec("cannot read " + chemin);
    std::vector<char> tampon(256u << 10);
    std::size_t lus = 0;
    for (u64 place = 0; fichier->Lit(tampon.data(), tampon.size(), place, lus) == 0 && lus > 0;) place += lus;
  };
  const auto ouvre = [&] {
    QVAPI m;
    Line rec;
    std::string cle;
    Position p = 0;
    const bool ouvert = m.QVOpenSession(1) && m.QVOpenCompta(dossier + "/rival", "") &&
                        m.QVOpenExercice("2003") && m.OpenJournal("") && (p = m.QVFirstKey(75, cle)) &&
                        m.QVReadRec(FichierJournal, p, &rec);
    if (!ouvert) Echec("the practice does not open");
  };
  std::vector<double> temps, lectures;
  for (unsigned i = 0; i < t.ouvertures; ++i) {
    temps.push_back(TempsProcesseur(ouvre));
    lectures.push_back(TempsProcesseur([&] {
      for (const char* nom : {"/JOURNAL.dat", "/JOURNAL.idx"}) lit(dossier + "/rival/2003" + nom);
    }));
  }
  tableau.Ligne("opening / reading its files, processor", EnTemps(Mediane(temps)), EnTemps(Mediane(lectures)),
                Mediane(temps) / Mediane(lectures), "x", 0, false);
}

/// In a process of its own: the greatest anonymous memory seen during a walk by key.
int Marche(const std::string& dossier) {
  Classeur classeur(dossier);
  QVAPI& m = classeur.Magasin();
  u64 maximum = 0;
  unsigned nombre = 0;
  Line rec;
  std::string cle;
  for (Position p = m.QVFirstKey(75, cle); p; p = m.QVNextKey(75, cle)) {
    if (!m.QVReadRec(FichierJournal, p, &rec)) return 1;
    if (nombre++ % 5000 == 0) maximum = std::max(maximum, MemoireAnonyme());
  }
  maximum = std::max(maximum, MemoireAnonyme());
  std::printf("%u %" PRIu64 "\n", nombre, maximum);
  return 0;
}

void Memoire(Tableau& tableau, const std::string& dossier, const Tailles& t) {
  double kio[2] = {};
  unsigned rang = 0;
  for (const unsigned ecritures : {t.marchePetite, t.marcheGrande}) {
    const std::string ici = dossier + "/marche" + std::to_string(rang);
    Classeur(ici).Remplit(ecritures);
    unsigned lignes = 0;
    if (std::sscanf(Lance({Moi(), "--marche", ici}).c_str(), "%u %lf", &lignes, &kio[rang]) != 2 ||
        lignes != ecritures * LignesParEcriture) {
      Echec("the walk saw another number of lines");
    }
    ++rang;
  }
  const std::string titre = "walk by key, " + std::to_string(t.marcheGrande * LignesParEcriture) +
                            " lines / " + std::to_string(t.marchePetite * LignesParEcriture);
  tableau.Ligne(titre.c_str(), SansVirgule(kio[1], " KiB"), SansVirgule(kio[0], " KiB"),
                (kio[1] - kio[0]) / 1024, " MiB", 10, false);
}

[[noreturn]] void Usage(int etat) {
  std::printf(
      "bench_magasin [--dossier DIR] [--rapide] [--grand] [--seul NAME]...\n"
      "  --dossier DIR  where the files are made and removed again (default: bench-tmp under the current "
      "directory)\n"
      "  --rapide       tiny sizes: that it runs, not what it costs; the exit status ignores the bars\n"
      "  --grand        the memory measure on 3,000,000 lines\n"
      "  --seul NAME    sauvegarde, rival, unite, ouverture or memoire; repeatable\n"
      "exit status: 0 every bar holds, 1 something failed, 3 a bar is missed\n");
  std::exit(etat);
}

int Principal(int argc, char** argv) {
  std::string dossier = "bench-tmp";
  std::vector<std::string> seuls;
  bool rapide = false, grand = false;
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    if (a == "--rapide")
      rapide = true;
    else if (a == "--grand")
      grand = true;
    else if (a == "--dossier" && i + 1 < argc)
      dossier = argv[++i];
    else if (a == "--seul" && i + 1 < argc)
      seuls.push_back(argv[++i]);
    else if (a == "--marche" && i + 1 < argc)
      return Marche(argv[++i]);
    else
      Usage(a == "--help" ? 0 : 2);
  }
  Tailles t;
  if (rapide) t = {30, 5, 300, 2, 100, 300, 2, 100, 400};
  if (grand) t.marcheGrande = 750'000;
  dossier = (fs::absolute(dossier) / std::to_string(getpid())).string();
  fs::create_directories(dossier);

  Machine(dossier);
  Tableau tableau;
  tableau.EnTete();
  const auto voulu = [&](const char* nom) {
    return seuls.empty() || std::find(seuls.begin(), seuls.end(), nom) != seuls.end();
  };
  if (voulu("sauvegarde")) Sauvegardes(tableau, dossier, t);
  if (voulu("rival")) FaceAuRival(tableau, dossier, t);
  if (voulu("ouverture")) {
    if (!voulu("rival")) Classeur(dossier + "/rival").Remplit(t.ecritures);
    Ouverture(tableau, dossier, t);
  }
  if (voulu("unite")) GrandeUnite(tableau, dossier, t);
  if (voulu("memoire")) Memoire(tableau, dossier, t);
  fs::remove_all(dossier);
  return tableau.Manquees() == 0 || rapide ? 0 : 3;
}

}  // namespace
}  // namespace fenlor::bench

int main(int argc, char** argv) { return fenlor::bench::Principal(argc, argv); }
