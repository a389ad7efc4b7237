// A settings file of any content is read; then a value is written, which must
// read back, and leave every other setting alone.
#include <map>

#include "cabinet.h"
#include "store/profil.h"
#include "store/texte1252.h"

using namespace fenlor;

extern "C" int LLVMFuzzerTestOneInput(const u8* octets, std::size_t taille) {
  static const std::string chemin = fuzz::DossierDuProcessus() + "/fenlor.ini";
  static SystemePosix systeme;
  // The last line of the input says what is written: "section|key|value".
  const std::string tout(reinterpret_cast<const char*>(octets), taille);
  const std::size_t coupe = tout.rfind('\n');
  const std::string contenu = coupe == std::string::npos ? tout : tout.substr(0, coupe + 1);
  const std::string ordre = coupe == std::string::npos ? "" : tout.substr(coupe + 1);
  fuzz::EcritFichier(chemin, contenu.data(), contenu.size());

  Profil avant(systeme, chemin);
  std::map<std::pair<std::string, std::string>, std::string> valeurs;
  for (const std::string& section : avant.Sections()) {
    if (!avant.Existe(section)) fuzz::Trouve("a section that is listed does not exist");
    for (const std::string& cle : avant.Cles(section)) valeurs[{section, cle}] = avant.Lit(section, cle);
  }
  const std::size_t a = ordre.find('|'), b = a == std::string::npos ? a : ordre.find('|', a + 1);
  if (b == std::string::npos) return 0;
  const std::string section = ordre.substr(0, a), cle = ordre.substr(a + 1, b - a - 1),
                    valeur = ordre.substr(b + 1);
  if (!avant.Ecrit(section, cle, valeur)) {
    if (fuzz::LitFichier(chemin) != contenu) fuzz::Trouve("a refused write changed the file");
    return 0;
  }
  if (cle.empty()) return 0;  // removes the section
  Profil apres(systeme, chemin);
  for (Profil* p : {&avant, &apres}) {
    if (p->Lit(section, cle) != valeur)
      fuzz::Trouve("a value does not read back: \"" + p->Lit(section, cle) + "\"");
    for (const auto& [nom, ancienne] : valeurs) {
      if (CompareSansCasse(nom.first, section) == 0 && CompareSansCasse(nom.second, cle) == 0) continue;
      if (p->Lit(nom.first, nom.second) != ancienne) fuzz::Trouve("another value changed: " + nom.second);
    }
  }
  return 0;
}
