#include "cabinet.h"

#include <unistd.h>
#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "ctl/ctl.h"

namespace fs = std::filesystem;

namespace fenlor::fuzz {

std::string DossierDuProcessus() {
  const fs::path base = fs::is_directory("/dev/shm") ? fs::path("/dev/shm") : fs::temp_directory_path();
  const std::string dossier = (base / ("fenlor-fuzz-" + std::to_string(getpid()))).string();
  fs::remove_all(dossier);
  fs::create_directories(dossier);
  static std::string aSupprimer;
  aSupprimer = dossier;
  std::atexit([] {
    std::error_code ignoree;
    fs::remove_all(aSupprimer, ignoree);
  });
  return dossier;
}

void FaitCabinet(const std::string& cabinet) {
  std::istringstream vide;
  std::ostringstream sortie, erreurs;
  OptionsCtl options;
  options.magasin.tailleReprise = 128 << 10;
  if (ExecuteCtl({"--cabinet", cabinet, "creer", "--exercice", "2003", "--euro", "--tva"}, vide, sortie,
                 erreurs, options) != 0) {
    Trouve("creer: " + erreurs.str());
  }
  QVAPI m(options.magasin);
  if (!m.QVOpenSession(1) || !m.QVOpenCompta(cabinet, "") || !m.QVOpenExercice("2003") || !m.OpenPlan("")) {
    Trouve("the practice does not open");
  }
  EcrSimple rec{};
  std::string cle;
  for (Position p = m.QVFirstKey(69, cle); p; p = m.QVNextKey(69, cle)) {
    Plan plan;
    m.QVReadRec(68, p, &plan);
    if (plan.Type == Recette) std::memcpy(rec.Compte, plan.Compte, sizeof rec.Compte);
    if (plan.Type == Tresorerie) std::memcpy(rec.CompteTresorerie, plan.Compte, sizeof rec.CompteTresorerie);
  }
  for (u32 i = 0; i < 3; ++i) {
    rec.Mouvement = 0;
    rec.Journal = JournalRecettes;
    rec.Genre = GenreSimple;
    rec.Ligne = i + 1;
    rec.Date = FaitDate(15, 3, 2003);
    rec.MontantEuro = rec.RepartitionEuro = 100 + i;
    rec.MontantFranc = rec.RepartitionFranc = 655.96;
    if (!m.AddEcrSimple(m.PathExercice(), rec)) Trouve("an entry is refused");
  }
}

void Recopie(const std::string& de, const std::string& vers) {
  fs::remove_all(vers);
  fs::copy(de, vers, fs::copy_options::recursive);
}

std::string LitFichier(const std::string& chemin) {
  std::ifstream f(chemin, std::ios::binary);
  std::ostringstream texte;
  texte << f.rdbuf();
  return texte.str();
}

void EcritFichier(const std::string& chemin, const void* octets, std::size_t taille) {
  std::ofstream f(chemin, std::ios::binary | std::ios::trunc);
  f.write(static_cast<const char*>(octets), static_cast<std::streamsize>(taille));
}

void Trouve(const std::string& texte) {
  std::fprintf(stderr, "FOUND: %s\n", texte.c_str());
  std::abort();
}

void PoseCrc(std::string& octets, std::size_t place, std::size_t debut, std::size_t fin) {
  if (fin > octets.size() || debut > fin || place + 4 > octets.size()) return;
  const u32 crc =
      static_cast<u32>(crc32_z(0, reinterpret_cast<const Bytef*>(octets.data()) + debut, fin - debut));
  std::memcpy(octets.data() + place, &crc, 4);
}

}  // namespace fenlor::fuzz
