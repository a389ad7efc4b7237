// `CEtat2035Doc`: the yearly fiscal statement of the whole exercice, annex to declaration N° 2035. It asks
// for nothing. Its lines are the headings; totals and results are headings with formulas, nothing is summed
// here.
#pragma once

#include "reports/etatcomptable.h"
#include "reports/variables2035.h"

namespace fenlor {

class CEtat2035Doc : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;

 protected:
  /// Headings whose formulas lead back to themselves count as 0; the user is told before (7213). Assets
  /// that cannot be read leave their variables at 0, told too; headings or accounts that cannot be read
  /// mean no statement.
  void BuildEtat() override;

 private:
  enum Bloc : unsigned { BlocRecettes, BlocDepenses, BlocResultat, BlocTva, NbBlocs };
  struct LigneFiscale {
    i16 ligne = 0;
    std::string designation, rubrique;
  };

  void AvertitBoucles(const Rubriques2035& rubriques);
  void EcritTete();
  /// In the order of the statement. Headings that cannot be read are told, and the report given up.
  std::vector<LigneFiscale> LitLignes(Bloc bloc);
  void EcritBloc(Bloc bloc, Rubriques2035& rubriques, Travail& travail);
  void EcritLigne(Bloc bloc, const LigneFiscale& ligne, MontantDouble montant);
};

}  // namespace fenlor
