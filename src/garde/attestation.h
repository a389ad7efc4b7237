// `CEtatAttestationDoc`: what was closed, when, what it came to, and its seal, on paper.
#pragma once

#include "garde/sceau.h"
#include "reports/etatcomptable.h"

namespace fenlor {

/// Whether a seal holds, in a sentence, Windows-1252.
std::string PhraseSceau(const ExamenSceau& examen);

/// Of the open exercice, which is closed (3556). It asks nothing.
class CEtatAttestationDoc : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;

 protected:
  void BuildEtat() override;

 private:
  void EcritJournaux();
  void EcritSceau();
};

}  // namespace fenlor
