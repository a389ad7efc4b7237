// A practice whose units are kept, and all that stands in it as one text.
#pragma once

#include <fstream>

#include "core/btfiles.h"
#include "ctl/enregistrementjson.h"
#include "journal/cabinetmedical.h"
#include "outils/systemefautif.h"
#include "session/annulation.h"
#include "store/annulation.h"
#include "store/champs.h"
#include "store/definitions.h"
#include "store/ouverture.h"

namespace fenlor::test {

inline constexpr const char *Banque512 = "5120000000", *Caisse = "5310000000", *Honoraires = "7060000000",
                            *Achats = "6132000000";

class Reprises : public CabinetMedical {
 protected:
  explicit Reprises(Systeme* systeme = nullptr) : CabinetMedical(Cles::Lmdb, 256u << 10, systeme) {
    Installe();
    Boite.Defaut = RepOui;
    SuitReprises(App());
  }

  std::string Nom(Sens sens = Sens::Annuler) { return VersUtf8(NomReprise(App(), sens)); }
  unsigned Fais(Sens sens = Sens::Annuler) { return Reprend(App(), sens).numero; }

  /// What `exporter` writes of every file, along every key too, and the labels.
  std::string Export() {
    std::string tout;
    for (const DefinitionFichier& def : Definitions()) {
      const Ouverture ouverture(Magasin(), def.numero);
      EXPECT_TRUE(ouverture) << def.nom;
      const auto champs = Champs(def.numero);
      const auto ajoute = [&](Position, const void* rec) {
        AjouteEnregistrement(tout, champs, rec);
        tout += '\n';
        return true;
      };
      EXPECT_TRUE(Magasin().QVParcours(def.numero, ajoute));
      for (u16 cle = 0; cle < def.nbCles; ++cle)
        EXPECT_TRUE(Magasin().QVParcoursCle(def.premiereCle + cle, {}, {}, [&](Position p, const void*) {
          tout += std::to_string(p) + ' ';
          return true;
        }));
    }
    tout += LitFichier(App().PathExercice + "/TEXTES.dat");
    return tout + App().Reglages.LitIni("Essai", "Compteur");
  }
};

}  // namespace fenlor::test
