// A data file of any content is opened: it is refused, or its records can be
// read, walked, checked, and its keys made.
#include <algorithm>

#include "cabinet.h"
#include "store/definitions.h"
#include "store/magasincles.h"

using namespace fenlor;

namespace {

struct Session {
  std::string dossier = fuzz::DossierDuProcessus();
  FabriqueMemoire cles;
  QVAPI magasin;
  Session() : magasin(Options(cles)) {
    if (!magasin.QVOpenSession(1) || !magasin.QVOpenCompta(dossier, "")) fuzz::Trouve("no practice");
  }
  static OptionsQVAPI Options(FabriqueMemoire& cles) {
    OptionsQVAPI o;
    o.cles = &cles;
    o.tailleReprise = 64 << 10;
    return o;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* octets, std::size_t taille) {
  static Session session;
  QVAPI& m = session.magasin;
  if (taille < 2) return 0;
  const u8 choix = octets[0];
  const DefinitionFichier* definitions[] = {
      DefinitionFichierNumero(FichierJournal), DefinitionFichierNumero(FichierComptes),
      DefinitionFichierNumero(FichierImmo), DefinitionFichierNumero(FichierBanques)};
  const DefinitionFichier& d = *definitions[choix & 3];
  std::string contenu(reinterpret_cast<const char*>(octets) + 1, taille - 1);
  if (choix & 4) {
    // Checksums made good, so that what is behind them is reached.
    fuzz::PoseCrc(contenu, 52, 0, 52);
    fuzz::PoseCrc(contenu, 512 + 52, 512, 512 + 52);
  }
  const std::string base = session.dossier + "/" + d.nom;
  fuzz::EcritFichier(base + ".dat", contenu.data(), contenu.size());
  if (m.QVOpen(d.numero, base + ".dat")) {
    m.QVOpen(d.premiereCle, base + ".idx");
    unsigned vus = 0;
    m.QVParcours(d.numero, [&](Position, const void*) { return ++vus < 10'000; });
    std::vector<char> rec(d.taille);
    for (Position p = 0; p < 20; ++p) m.QVReadRec(d.numero, p, rec.data());
    m.QVReadRec(d.numero, m.QVNumberOfRec(d.numero) + 1, rec.data());
    m.QVVerifie(d.numero);
    for (unsigned i = 0; i < d.nbCles; ++i) {
      std::string cle;
      unsigned pas = 0;
      for (Position p = m.QVFirstKey(d.premiereCle + i, cle); p && pas < 10'000;
           p = m.QVNextKey(d.premiereCle + i, cle))
        ++pas;
    }
    // A free list of any content is met by the next additions.
    std::fill(rec.begin(), rec.end(), '\1');
    for (unsigned i = 0; i < 5; ++i) m.QVAddRec(d.numero, rec.data());
    m.QVDelRec(d.numero, 1);
    m.QVClose(d.premiereCle);
    m.QVClose(d.numero);
  }
  m.QVDeleteFile(base + ".dat");
  m.QVDeleteFile(base + ".idx");
  return 0;
}
