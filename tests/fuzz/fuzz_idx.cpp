// A key file of any content stands beside a sound data file, its times and, where
// the input is short, its length unchanged: the practice opens and its keys are
// complete, by rebuilding them if need be.
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

#include "cabinet.h"
#include "store/definitions.h"

using namespace fenlor;

namespace {

struct Modele {
  std::string dossier = fuzz::DossierDuProcessus();
  std::string cabinet = dossier + "/cabinet", idx = cabinet + "/2003/JOURNAL.idx";
  std::string sain;
  u32 nbCles = 0;
  Modele() {
    fuzz::FaitCabinet(cabinet);
    nbCles = Compte();
    sain = fuzz::LitFichier(idx);
  }
  u32 Compte() const {
    OptionsQVAPI o;
    o.tailleReprise = 128 << 10;
    QVAPI m(o);
    if (!m.QVOpenSession(1) || !m.QVOpenCompta(cabinet, "") || !m.QVOpenExercice("2003") ||
        !m.OpenJournal("")) {
      fuzz::Trouve("refused because of its keys: " + m.QVErreurTexte(m.QVFileErrorCode()));
    }
    u32 nombre = 0;
    std::string cle;
    for (u16 numero = 75; numero <= 80; ++numero) {
      u32 deCetteCle = 0;
      for (Position p = m.QVFirstKey(numero, cle); p; p = m.QVNextKey(numero, cle)) ++deCetteCle;
      if (deCetteCle != m.QVNumberOfKey(numero)) fuzz::Trouve("walk and count of a key differ");
      nombre += deCetteCle;
    }
    if (!m.QVVerifie(FichierJournal).anomalies.empty()) fuzz::Trouve("keys and records differ");
    return nombre;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* octets, std::size_t taille) {
  static Modele modele;
  if (taille < 1) return 0;
  std::string contenu(reinterpret_cast<const char*>(octets) + 1, taille - 1);
  // Odd: laid over the first 8 KiB, which the seal covers; even: all there is.
  if (octets[0] & 1) {
    std::string s = modele.sain;
    std::copy_n(contenu.begin(), std::min({contenu.size(), s.size(), std::size_t{8192}}), s.begin());
    contenu = s;
  }
  struct stat avant {};
  stat(modele.idx.c_str(), &avant);
  fuzz::EcritFichier(modele.idx, contenu.data(), contenu.size());
  const timespec temps[2] = {avant.st_atim, avant.st_mtim};
  utimensat(AT_FDCWD, modele.idx.c_str(), temps, 0);
  if (modele.Compte() != modele.nbCles) fuzz::Trouve("keys are missing");
  modele.sain = fuzz::LitFichier(modele.idx);
  return 0;
}
