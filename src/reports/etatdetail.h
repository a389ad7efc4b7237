// `CEtatDetailDoc`: the entries of a period with all their lines, journal by journal, a total after each
// month. Receipts can be gathered by account and day, week or month.
#pragma once

#include <functional>

#include "reports/fichiercentral.h"
#include "reports/totauxetat.h"

namespace fenlor {

class CEtatDetailDoc : public CEtatTotaux {
 public:
  using CEtatTotaux::CEtatTotaux;

 protected:
  void BuildEtat() override;

 private:
  /// One section, of one journal.
  class Section;
};

}  // namespace fenlor
