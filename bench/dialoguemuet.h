// A dialogue for benchmarks: nobody is asked, and a failure ends the program.
#pragma once

#include "core/dialoguesansprogression.h"
#include "core/fenlorapp.h"
#include "mesures.h"

namespace fenlor::bench {

class DialogueMuet : public DialogueSansProgression {
 public:
  void Erreur(unsigned, const std::string& texte) override { Echec(texte); }
  int Message(unsigned, unsigned, const std::string& texte) override { Echec(texte); }
};

/// A session on the current exercice of a store.
class SeanceDuBanc : public CFenlorApp {
 public:
  SeanceDuBanc(QVAPI& magasin, Dialogue& dialogue) : CFenlorApp(magasin, dialogue) {
    NomExercice = magasin.NomExercice();
    PathExercice = magasin.PathExercice();
  }
};

}  // namespace fenlor::bench
