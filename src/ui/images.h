// Pictures of commands, messages and lists: SVG, drawn when they are first
// painted, at the size and scale asked.
#pragma once

#include <QIcon>

namespace fenlor {

/// Picture `resources/icones/NOM.svg`; a null icon when there is none.
QIcon Image(const char* nom);
bool ImageExiste(const char* nom);

}  // namespace fenlor
