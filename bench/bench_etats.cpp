// bench_etats [RUNS [LINES]]
// Builds the general ledger of so many lines (300000), in one currency and in both, beside two plain reads
// of the same lines along the same key in the same run: with one ordinary read of the store a line, and in
// place. Then tells how much memory of its own the program held at most while the ledger was built, for a
// tenth of the lines and for all of them. The practice is made through the store in a temporary directory,
// removed at the end unless something fails. The bar: the ledger costs at most 4 times the plain read; the
// status is 1 when it is missed, unless the size is another one.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "classeur.h"
#include "dialoguemuet.h"
#include "mesures.h"
#include "reports/etatgrandlivre.h"

namespace fenlor::bench {

namespace {

constexpr u16 CleCompteDate = 77;
constexpr unsigned LignesBarre = 300'000;
constexpr double Barre = 4;

/// Bytes of the process in memory: its own, and those of files that it maps.
struct Residence {
  u64 propre = 0, fichiers = 0;
};
Residence MesureResidence() {
  std::ifstream flux("/proc/self/statm");
  u64 total = 0, residentes = 0, partagees = 0;
  flux >> total >> residentes >> partagees;
  const u64 page = static_cast<u64>(sysconf(_SC_PAGESIZE));
  return {(residentes - partagees) * page, partagees * page};
}

/// Counts the steps of a report, and looks at the memory now and then.
class Observateur : public DialogueMuet {
 public:
  u64 Pas = 0;
  bool Observe = false;
  u64 Maximum = 0;  ///< bytes of its own

  void Step() override {
    if (++Pas % 1024 == 0 && Observe) Maximum = std::max(Maximum, MesureResidence().propre);
  }
};

class ToutLeLivre : public DemandeurCriteres {
 public:
  bool Demande(FormeCriteres, const std::string&, unsigned, CriteresEtat&) override { return true; }
};

/// Makes the books in another process: what filling them takes is not the ledger's memory.
const std::string& Remplit(const std::string& dossier, unsigned lignes) {
  const pid_t enfant = fork();
  if (enfant == 0) {
    { Classeur(dossier).Remplit(lignes / LignesParEcriture); }
    _exit(0);
  }
  int etat = 1;
  if (enfant < 0 || waitpid(enfant, &etat, 0) < 0 || etat != 0) Echec("the books cannot be made");
  return dossier;
}

class Livre {
 public:
  Livre(const std::string& dossier, unsigned lignes)
      : m_classeur(Remplit(dossier, lignes)), m_app(m_classeur.Magasin(), m_dialogue) {}

  u32 Construit(bool deux) {
    m_app.AfficherDouble = deux;
    CEtatGrandLivreDoc etat(m_app, m_demandeur);
    m_dialogue.Pas = 0;
    if (etat.OnNewDocument()) Echec("no report");
    return etat.TailleTexte();
  }
  u64 Rangees() const { return m_dialogue.Pas; }
  /// Most memory of its own during one ledger.
  u64 MemoireAuPlus() {
    m_dialogue.Observe = true;
    m_dialogue.Maximum = MesureResidence().propre;
    Construit(true);
    m_dialogue.Observe = false;
    return m_dialogue.Maximum;
  }
  u64 UneParUne() {
    QVAPI& magasin = m_classeur.Magasin();
    u64 lignes = 0;
    std::string cle;
    Line ligne;
    for (Position p = magasin.QVFirstKey(CleCompteDate, cle); p; p = magasin.QVNextKey(CleCompteDate, cle)) {
      if (!magasin.QVReadRec(FichierJournal, p, &ligne)) Echec("a line cannot be read");
      m_vues += ligne.Mouvement;
      ++lignes;
    }
    return lignes;
  }
  u64 EnPlace() {
    u64 lignes = 0;
    m_classeur.Magasin().QVParcoursCle(CleCompteDate, {}, {}, [&](Position, const void* rec) {
      m_vues += static_cast<const Line*>(rec)->Mouvement;
      ++lignes;
      return true;
    });
    return lignes;
  }
  /// The data file from its first byte to its last.
  void LitFichier() {
    std::ifstream flux(m_app.PathExercice + "/JOURNAL.dat", std::ios::binary);
    std::vector<char> tampon(256u << 10);
    flux.rdbuf()->pubsetbuf(nullptr, 0);
    while (flux.read(tampon.data(), static_cast<std::streamsize>(tampon.size())))
      m_vues += static_cast<u8>(tampon[0]);
  }
  u64 Vues() const { return m_vues; }

 private:
  Classeur m_classeur;
  Observateur m_dialogue;
  ToutLeLivre m_demandeur;
  SeanceDuBanc m_app;
  u64 m_vues = 0;
};

/// Ratio of the ledger to the line by line read.
double Mesure(Livre& livre, unsigned tours, bool deux) {
  std::vector<double> etat, uneParUne, enPlace, rapportUne, rapportPlace, rapportFichier;
  u32 octets = 0;
  for (unsigned tour = 0; tour <= tours; ++tour) {
    const double a = Duree([&] { octets = livre.Construit(deux); });
    const double b = Duree([&] { livre.UneParUne(); });
    const double c = Duree([&] { livre.EnPlace(); });
    const double d = Duree([&] { livre.LitFichier(); });
    if (tour == 0) continue;  // warms the caches
    etat.push_back(a);
    uneParUne.push_back(b);
    enPlace.push_back(c);
    rapportUne.push_back(a / b);
    rapportPlace.push_back(a / c);
    rapportFichier.push_back(a / d);
  }
  std::printf(
      "%-13s ledger %9s (%.1f MB)   line by line %9s   in place %9s   ratio %5.2f and %5.2f, to reading the "
      "file %5.2f\n",
      deux ? "two currencies" : "one currency", EnTemps(Mediane(etat)).c_str(), octets / 1e6,
      EnTemps(Mediane(uneParUne)).c_str(), EnTemps(Mediane(enPlace)).c_str(), Mediane(rapportUne),
      Mediane(rapportPlace), Mediane(rapportFichier));
  return Mediane(rapportUne);
}

int Principal(unsigned tours, unsigned lignes) {
  const std::string dossier = DossierDuBanc();
  std::filesystem::create_directories(dossier);
  const auto memoire = [](unsigned n, u64 octets) {
    std::printf("%u lines: at most %.1f MB of its own in memory\n", n, static_cast<double>(octets) / 1e6);
    std::fflush(stdout);  // a child must not print it again
  };
  double rapport = 0;
  {
    Livre petit(dossier + "/petit", std::max(LignesParEcriture, lignes / 10));
    memoire(lignes / 10, petit.MemoireAuPlus());
  }
  {
    Livre livre(dossier + "/livre", lignes);
    const u64 lues = livre.UneParUne();
    livre.Construit(false);
    if (lues != lignes / LignesParEcriture * LignesParEcriture || livre.EnPlace() != lues ||
        livre.Rangees() != lues)
      Echec("the ledger is not what was written");
    memoire(lignes, livre.MemoireAuPlus());
    std::printf("general ledger of %u lines; medians of %u runs\n", lignes, tours);
    rapport = Mesure(livre, tours, false);
    rapport = std::max(rapport, Mesure(livre, tours, true));
    if (livre.Vues() == 0) Echec("nothing was read");
  }
  std::filesystem::remove_all(dossier);
  if (lignes != LignesBarre) return 0;
  std::printf("bar: ratio <= %g: %s\n", Barre, rapport <= Barre ? "ok" : "MISSED");
  return rapport <= Barre ? 0 : 1;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  const auto nombre = [&](int place, unsigned defaut) {
    return fenlor::bench::Argument(argc, argv, place, defaut, "[RUNS [LINES]]");
  };
  return fenlor::bench::Principal(nombre(1, 7), nombre(2, fenlor::bench::LignesBarre));
}
