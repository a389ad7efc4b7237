// fenlorctl is fed any text: each line is done or refused, and the books stay sound.
#include <sstream>

#include "cabinet.h"
#include "ctl/ctl.h"

using namespace fenlor;

namespace {

struct Modele {
  std::string dossier = fuzz::DossierDuProcessus(), cabinet = dossier + "/cabinet", neuf = dossier + "/neuf";
  OptionsCtl options;
  unsigned passages = 0;
  Modele() {
    options.magasin.tailleReprise = 128 << 10;
    fuzz::FaitCabinet(neuf);
    fuzz::Recopie(neuf, cabinet);
  }
  int Lance(std::vector<std::string> arguments, const std::string& texte, std::string& erreurs) {
    std::istringstream entree(texte);
    std::ostringstream sortie, err;
    arguments.insert(arguments.begin(), {"--cabinet", cabinet});
    const int statut = ExecuteCtl(arguments, entree, sortie, err, options);
    erreurs = err.str() + sortie.str();
    return statut;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* octets, std::size_t taille) {
  static Modele modele;
  if (taille < 1) return 0;
  static const std::vector<std::vector<std::string>> commandes = {{"saisir"},
                                                                  {"saisir", "--oui"},
                                                                  {"saisir", "--tout"},
                                                                  {"importer", "JOURNAL"},
                                                                  {"importer", "COMPTES"},
                                                                  {"importer", "RUBRIQUE"},
                                                                  {"importer", "BANQUE"},
                                                                  {"importer", "Immo"}};
  const auto& commande = commandes[octets[0] % commandes.size()];
  std::string texte;
  const int statut = modele.Lance(commande, {reinterpret_cast<const char*>(octets) + 1, taille - 1}, texte);
  if (statut != StatutFait && statut != StatutRefuse)
    fuzz::Trouve("status " + std::to_string(statut) + ": " + texte);
  if (statut == StatutRefuse && texte.empty()) fuzz::Trouve("refused without a word");
  // What `saisir` lets in keeps the books sound; `importer` takes what it is given.
  if (commande[0] == "saisir" && modele.passages % 64 == 0) {
    if (modele.Lance({"verifier"}, "", texte) != StatutFait) fuzz::Trouve("verifier: " + texte);
  }
  if (commande[0] == "importer" || ++modele.passages % 256 == 0) fuzz::Recopie(modele.neuf, modele.cabinet);
  return 0;
}
