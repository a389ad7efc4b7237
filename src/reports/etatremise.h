// `CEtatRemiseDoc`: the deposit slip of cheques. It is what deposits them, too: the marks of the ticked
// cheques are in the journal before the first line is written, whether there is a paper in the end or not.
#pragma once

#include "reports/etatcomptable.h"

namespace fenlor {

class CEtatRemiseDoc : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;
  /// The working file goes with the report.
  ~CEtatRemiseDoc() override;

 protected:
  void BuildEtat() override;

 private:
  void EcritTete(const CriteresRemise& criteres);
  void EcritCheques();

  std::string m_fichier;  ///< empty: none was made
};

}  // namespace fenlor
