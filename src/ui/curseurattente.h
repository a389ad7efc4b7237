// The wait cursor over a stretch of work.
#pragma once

#include <QApplication>

namespace fenlor {

class CurseurAttente {
 public:
  CurseurAttente() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~CurseurAttente() { QApplication::restoreOverrideCursor(); }
  CurseurAttente(const CurseurAttente&) = delete;
  CurseurAttente& operator=(const CurseurAttente&) = delete;
};

}  // namespace fenlor
