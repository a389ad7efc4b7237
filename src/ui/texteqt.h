// Where Windows-1252 ends and QString begins: windows alone know QString, and
// these are the only conversions.
#pragma once

#include <QString>
#include <initializer_list>
#include <string>
#include <string_view>
#include "core/texte.h"

namespace fenlor {

/// Windows-1252 to QString; CR LF becomes "\n".
QString Q(std::string_view texte);
/// QString to Windows-1252; "\n" becomes CR LF, a character that the code page lacks
/// becomes "?". Editors let no such character in (`TientEn1252`).
std::string De1252(const QString& texte);
bool TientEn1252(const QString& texte);
/// A text of the program, filled with Windows-1252 arguments.
QString TexteQ(const TexteFixe& texte, std::initializer_list<std::string> arguments = {});

}  // namespace fenlor
