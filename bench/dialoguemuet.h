// A dialogue for benchmarks: nobody is asked, and a failure ends the program.
#pragma once

#include "core/fenlorapp.h"
#include "mesures.h"

namespace fenlor::bench {

class DialogueMuet : public Dialogue {
 public:
  void Erreur(unsigned, const std::string& texte) override { Echec(texte); }
  int Message(unsigned, unsigned, const std::string& texte) override { Echec(texte); }
  void OuvreProgress(const std::string&, const std::string&, bool, u32) override {}
  void FermeProgress() override {}
  void SetTexte(const std::string&) override {}
  void SetMax(u32) override {}
  void SetPos(u32) override {}
  void Step() override {}
  bool IsAborted() override { return false; }
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
