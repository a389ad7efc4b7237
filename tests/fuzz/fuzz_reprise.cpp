// A redo log of any content stands in a practice: it is refused, or recovery
// brings home what it holds and the practice opens.
#include <algorithm>

#include "cabinet.h"
#include "store/magasincles.h"

using namespace fenlor;

extern "C" int LLVMFuzzerTestOneInput(const u8* octets, std::size_t taille) {
  static const std::string dossier = fuzz::DossierDuProcessus();
  static const std::string neuf = dossier + "/neuf", cabinet = dossier + "/cabinet";
  static const bool fait = [] {
    fuzz::FaitCabinet(neuf);
    return true;
  }();
  if (!fait || taille < 2) return 0;
  fuzz::Recopie(neuf, cabinet);
  std::string journal = fuzz::LitFichier(neuf + "/fenlor.rep");
  const std::string entree(reinterpret_cast<const char*>(octets) + 1, taille - 1);
  constexpr std::size_t debutUnites = 64 << 10;
  if (octets[0] & 1) {
    // A unit of any content behind a sound header, its checksum made good.
    if (journal.size() < debutUnites + entree.size()) journal.resize(debutUnites + entree.size());
    journal.replace(debutUnites, entree.size(), entree);
    u32 suite = 0;
    if (entree.size() >= 32) suite = *reinterpret_cast<const u32*>(journal.data() + debutUnites + 24);
    if (octets[0] & 2) fuzz::PoseCrc(journal, debutUnites + 4, debutUnites + 8, debutUnites + 28 + suite);
    // Epoch and number of the header, so that the unit counts.
    const char* entetes[2] = {journal.data(), journal.data() + (32 << 10)};
    const auto epoque = [](const char* e) { return *reinterpret_cast<const u64*>(e + 24); };
    const char* entete = epoque(entetes[1]) > epoque(entetes[0]) ? entetes[1] : entetes[0];
    if ((octets[0] & 2) && entree.size() >= 32) {
      std::copy_n(entete + 24, 16, journal.data() + debutUnites + 8);
      fuzz::PoseCrc(journal, debutUnites + 4, debutUnites + 8, debutUnites + 28 + suite);
    }
  } else {
    journal.replace(0, std::min(entree.size(), journal.size()), entree);
  }
  fuzz::EcritFichier(cabinet + "/fenlor.rep", journal.data(), journal.size());
  FabriqueMemoire cles;
  OptionsQVAPI o;
  o.cles = &cles;
  o.tailleReprise = 128 << 10;
  QVAPI m(o);
  if (m.QVOpenSession(1) && m.QVOpenCompta(cabinet, "") && m.QVOpenExercice("2003") && m.OpenJournal("")) {
    m.QVVerifie(74);
    std::string cle;
    for (Position p = m.QVFirstKey(75, cle); p; p = m.QVNextKey(75, cle)) {
      Line rec;
      m.QVReadRec(74, p, &rec);
    }
  }
  return 0;
}
