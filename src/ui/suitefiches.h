// The list behind the form of a record, as the form knows it.
#pragma once

#include "store/enregistrements.h"

namespace fenlor {

class SuiteFiches {
 public:
  virtual ~SuiteFiches() = default;
  /// Record of the row above (-1) or below (+1) the selected one, 0 when there is none.
  virtual Position Voisin(int pas) const = 0;
  virtual void VaVers(int pas) = 0;
  /// The record of the selected row was saved, and stands at this position now; its place stays.
  virtual void Remplace(Position position) = 0;
};

}  // namespace fenlor
