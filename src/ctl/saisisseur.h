// Carries out the lines of `fenlorctl saisir` through the rules of the entry
// forms and of the journal's commands.
#pragma once

#include <string>

#include "ctl/annuaire.h"
#include "ctl/contexte.h"
#include "ctl/demandesaisie.h"
#include "journal/saisie.h"
#include "store/ouverture.h"

namespace fenlor {

/// What one input line is answered with.
struct ReponseSaisie {
  u32 entree = 0;       ///< number of the input line
  EcritureFaite faite;  ///< made, changed or removed
  Refus refus;
};

class Saisisseur {
 public:
  /// The context has an exercice open and outlives the object.
  explicit Saisisseur(Contexte& contexte);

  /// Reads the chart. False: the store failed.
  bool Prepare();
  /// Does what one line asks, as one unit of work: refused, it has changed nothing. Of one that could not be
  /// read the refusal is the answer.
  ReponseSaisie Traite(const Json& objet, const Refus& illisible, u32 numero);

 private:
  Refus Execute(const DemandeSaisie& demande, EcritureFaite& faite);
  Refus Enregistre(const DemandeSaisie& demande, EcritureFaite& faite);
  void PoseTresorerie(const DemandeSaisie& demande, SaisieEcriture& saisie) const;
  Refus EnregistreLibre(const DemandeSaisie& demande, EcritureFaite& faite);
  Refus Marque(const DemandeSaisie& demande, u32 mouvement);
  std::string CompteTresorerie(const std::string& texte) const;

  Contexte& m_contexte;
  CFenlorApp& m_app;
  Ouverture m_fichierComptes, m_fichierJournal;  ///< open once for all lines
  AnnuaireComptes m_comptes;
  bool m_euro = true;  ///< currency of the exercice
};

}  // namespace fenlor
