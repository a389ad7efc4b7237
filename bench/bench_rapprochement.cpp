// bench_rapprochement [RUNS [OPERATIONS [LINES]]]
// Adds so many operations (20000) to a bank account as one unit, as an import does, and matches them with its
// lines (60000), beside one plain read of those lines through the store, along their key, in the same run.
// The practice is made in a temporary directory, and copied for each run. The bar: both together cost at most
// 6 times the read, and the adding is one sync; the status is 1 when it is missed, unless the sizes are
// others.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "livrebancaire.h"

namespace fenlor::bench {

namespace {

constexpr double Barre = 6;

/// One run on a practice of its own.
class Course {
 public:
  explicit Course(QVAPI& magasin) : m_magasin(magasin), m_app(magasin, m_dialogue) {}

  void Lit(unsigned lignes) { LitBanque(m_app, lignes); }

  void Prepare(unsigned operations, unsigned lignes) {
    for (unsigned i = 0; i < operations; ++i) {
      FicheOperation fiche;
      fiche.compte = CompteBancaire;
      fiche.libelle = "VIR " + std::to_string(i);
      fiche.date = JourBancaire(i, operations);
      fiche.sens = 1;
      fiche.montant = MontantBancaire(i * (lignes / operations));
      Banque rec{};
      if (ComposeOperation(m_app, fiche, rec)) Echec("an operation is refused");
      m_operations.push_back(rec);
    }
  }
  void Importe() {
    const u64 avant = m_magasin.NbSynchros();
    CBanques banques(m_app, m_app.PathExercice);
    if (!banques.OpenFile()) Echec("the operations cannot be opened");
    QVAPI::Unite unite(m_magasin);
    for (const Banque& operation : m_operations) {
      *banques.Rec = operation;
      if (!banques.Add()) Echec("an operation is refused");
    }
    if (!unite.Valide()) Echec("the operations are refused");
    m_synchros = m_magasin.NbSynchros() - avant;
  }
  void Rapproche() {
    const DemandeAutomatique demande{
        {CompteBancaire, FaitDate(1, 1, 2003), FaitDate(31, 12, 2003)}, false, true};
    if (RapprocheAutomatique(m_app, demande, m_bilan)) Echec("the matching is refused");
  }
  u32 Rapproches() const { return m_bilan.rapproches; }
  u64 Synchros() const { return m_synchros; }

 private:
  QVAPI& m_magasin;
  DialogueMuet m_dialogue;
  SeanceDuBanc m_app;
  std::vector<Banque> m_operations;
  BilanRapprochement m_bilan;
  u64 m_synchros = 0;
};

int Lance(unsigned courses, unsigned operations, unsigned lignes) {
  namespace fs = std::filesystem;
  const std::string dossier =
      fs::temp_directory_path() / ("fenlor-rapprochement-" + std::to_string(getpid()));
  const std::string modele = dossier + "/modele", cabinet = dossier + "/cabinet";
  fs::create_directories(modele);
  {
    Classeur classeur(modele);
    RemplitBanque(classeur, lignes);
  }
  std::vector<double> lectures, imports, rapprochements, rapports;
  u32 paires = 0;
  u64 synchros = 0;
  for (unsigned i = 0; i < courses; ++i) {
    RecopieCabinet(modele, cabinet);
    Classeur classeur(cabinet);
    Course course(classeur.Magasin());
    course.Prepare(operations, lignes);
    course.Lit(lignes);
    lectures.push_back(Duree([&] { course.Lit(lignes); }));
    imports.push_back(Duree([&] { course.Importe(); }));
    rapprochements.push_back(Duree([&] { course.Rapproche(); }));
    rapports.push_back((imports.back() + rapprochements.back()) / lectures.back());
    paires = course.Rapproches();
    synchros = course.Synchros();
  }
  fs::remove_all(dossier);
  const bool barre = operations == OperationsBarre && lignes == LignesBarre;
  Tableau tableau;
  tableau.Titre(std::to_string(operations) + " operations, " + std::to_string(lignes) + " lines, " +
                std::to_string(paires) + " pairs");
  tableau.EnTete();
  const std::string lecture = EnTemps(Mediane(lectures));
  tableau.Ligne("adding, beside the read", EnTemps(Mediane(imports)), lecture,
                Mediane(imports) / Mediane(lectures), "x", 0, false);
  tableau.Ligne("matching, beside the read", EnTemps(Mediane(rapprochements)), lecture,
                Mediane(rapprochements) / Mediane(lectures), "x", 0, false);
  tableau.Ligne("both, beside the read", EnTemps(Mediane(imports) + Mediane(rapprochements)), lecture,
                Mediane(rapports), "x", barre ? Barre : 0, false);
  tableau.Ligne("syncs of the adding", std::to_string(synchros), "1", static_cast<double>(synchros), "", 1,
                false);
  return tableau.Manquees() ? 1 : 0;
}

}  // namespace
}  // namespace fenlor::bench

int main(int argc, char** argv) {
  const auto nombre = [&](int rang, unsigned defaut) {
    return argc > rang ? static_cast<unsigned>(std::strtoul(argv[rang], nullptr, 10)) : defaut;
  };
  using namespace fenlor::bench;
  return Lance(nombre(1, 5), nombre(2, OperationsBarre), nombre(3, LignesBarre));
}
