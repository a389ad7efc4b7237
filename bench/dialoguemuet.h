// A dialogue for benchmarks: nobody is asked, and a failure ends the program.
#pragma once

#include "core/dialogue.h"
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

}  // namespace fenlor::bench
