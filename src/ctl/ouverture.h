// A record family of the store held open.
#pragma once

#include "store/qvapi.h"

namespace fenlor {

class Ouverture {
 public:
  /// Opens by file number, in the open exercice or in the practice. `Poignee` is 0
  /// when the store refuses.
  Ouverture(QVAPI& magasin, u16 numFichier);
  ~Ouverture();
  Ouverture(const Ouverture&) = delete;
  Ouverture& operator=(const Ouverture&) = delete;
  explicit operator bool() const { return Poignee != 0; }

  u32 Poignee = 0;  ///< what `OpenXxx` returned

 private:
  QVAPI& m_magasin;
  bool (QVAPI::*m_ferme)(u32) = nullptr;
};

}  // namespace fenlor
