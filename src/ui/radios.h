// Radio buttons of which one is marked.
#pragma once

#include <QRadioButton>
#include <initializer_list>

namespace fenlor {

/// Whatever they stand in; Tab stops at the one that is marked, at each while none is.
void UnDes(std::initializer_list<QRadioButton*> boutons);

}  // namespace fenlor
