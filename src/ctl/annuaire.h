// The chart of accounts for one run of `saisir`, read once: entries cannot
// change it.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

class AnnuaireComptes {
 public:
  /// Reads "COMPTES", which the caller holds open. False: the store failed.
  bool Charge(CFenlorApp& app);
  /// By long form; null when the chart lacks it. Lives as long as the object.
  const Plan* ParNumero(const std::string& longue) const;
  /// By short code, blanks around it dropped, without regard to case; among the
  /// accounts of one type, or all of them (-1) the one of the lowest number.
  const Plan* ParCode(int type, const std::string& code) const;

 private:
  std::vector<Plan> m_comptes;  ///< by number
  std::unordered_map<std::string, std::size_t> m_parNumero;
  std::unordered_map<std::string, std::vector<std::size_t>> m_parCode;
};

}  // namespace fenlor
