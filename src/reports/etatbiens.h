// What the reports of the fixed assets share: the walk over them and the head of an annex. Internal to
// reports/.
#pragma once

#include <functional>

#include "assets/plusvalues.h"
#include "reports/etatcomptable.h"

namespace fenlor {

class CEtatBiens : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;

 protected:
  /// What becomes of the report when the user stops it.
  enum class SurArret { Abandonne, Garde };
  /// All assets by date of purchase, numbered from 1, with the progress stepped behind each. Assets that
  /// cannot be read are told, and the report given up.
  void ParcourtBiens(SurArret arret, const std::function<void(u32 rang, const Immobilisation& immo)>& suite);
  /// Asks for the period, then writes what stands above the table, and its heading. False: given up.
  bool DebuteAnnexe(const TexteFixe& titre, const TexteFixe& entete, const TexteFixe& periode);
  /// "1235" and "188,29 €", as the annexes write amounts; empty for 0.
  static std::string EnFranc(f64 montant);
  static std::string EnEuro(f64 montant);
  /// A filled format, to be written together with others as one block.
  static std::string Rempli(const TexteFixe& format, std::initializer_list<ArgumentEtat> arguments);
};

}  // namespace fenlor
