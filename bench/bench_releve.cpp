// bench_releve [RUNS [OPERATIONS [LINES]]]
// Imports a statement of so many operations (20000), a table of the bank, into an account that has so many
// lines (60000), beside reading those lines once through the store, in the same run; then imports it
// again, when all of it is known. The bars: an import costs at most 6 times the reading, and one sync; the
// status is 1 when one is missed, unless the sizes are others.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "banque/importreleve.h"
#include "livrebancaire.h"

namespace fenlor::bench {
namespace {

std::string TexteReleve(unsigned operations, unsigned serie) {
  std::string texte = "Date;Libelle;Montant\n";
  char ligne[96];
  for (unsigned i = 0; i < operations; ++i) {
    std::snprintf(ligne, sizeof ligne, "%02u/%02u/2003;PRLV SEPA FOURNISSEUR %u REF %u;-%u,%02u\n",
                  1 + i % 28, 1 + i / 28 % 12, serie, i, 1 + i % 900, i % 100);
    texte += ligne;
  }
  return texte;
}

int Execute(unsigned tours, unsigned operations, unsigned lignes) {
  const std::string dossier =
      (std::filesystem::temp_directory_path() / ("fenlor-bench-releve-" + std::to_string(getpid()))).string();
  const std::string modele = dossier + "/modele", cabinet = dossier + "/cabinet";
  std::filesystem::create_directories(modele);
  {
    Classeur classeur(modele);
    RemplitBanque(classeur, lignes);
  }
  u64 synchros = 0;
  std::vector<double> neufs, deja, lus;
  for (unsigned tour = 0; tour < tours; ++tour) {
    RecopieCabinet(modele, cabinet);
    Classeur classeur(cabinet);
    QVAPI& magasin = classeur.Magasin();
    DialogueMuet dialogue;
    SeanceDuBanc app(magasin, dialogue);
    const auto importe = [&](const std::string& texte, std::size_t attendu) {
      ApercuReleve apercu;
      if (PrepareReleve(app, CompteBancaire, LitReleve(texte, FormatReleve::Inconnu), {}, apercu))
        Echec("no preview");
      if (apercu.Nombre(SortOperation::Nouvelle) != attendu) Echec("not what was to be imported");
      if (ImporteReleve(app, apercu)) Echec("the import is refused");
    };
    const auto lit = [&] { LitBanque(app, lignes); };
    lit();
    lus.push_back(Duree(lit));
    const std::string texte = TexteReleve(operations, tour);
    const u64 avant = magasin.NbSynchros();
    neufs.push_back(Duree([&] { importe(texte, operations); }));
    synchros = magasin.NbSynchros() - avant;
    deja.push_back(Duree([&] { importe(texte, 0); }));
  }
  const double import = Mediane(neufs), connu = Mediane(deja), lecture = Mediane(lus);
  Tableau tableau;
  const bool barre = operations == OperationsBarre && lignes == LignesBarre;
  tableau.EnTete();
  tableau.Ligne("a statement, read, compared and written", EnTemps(import), EnTemps(lecture),
                import / lecture, "x", barre ? 6 : 0, false);
  tableau.Ligne("the same again, all of it known", EnTemps(connu), EnTemps(lecture), connu / lecture, "x", 0,
                false);
  tableau.Ligne("syncs of an import", std::to_string(synchros), "1", static_cast<double>(synchros), "", 1,
                false);
  std::filesystem::remove_all(dossier);
  return tableau.Manquees() ? 1 : 0;
}

}  // namespace
}  // namespace fenlor::bench

int main(int nombre, char** arguments) {
  const auto valeur = [&](int rang, unsigned defaut) {
    return nombre > rang ? static_cast<unsigned>(std::strtoul(arguments[rang], nullptr, 10)) : defaut;
  };
  return fenlor::bench::Execute(valeur(1, 3), valeur(2, fenlor::bench::OperationsBarre),
                                valeur(3, fenlor::bench::LignesBarre));
}
