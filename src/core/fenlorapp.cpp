#include "core/fenlorapp.h"

#include "core/textes.h"

namespace fenlor {

bool CFenlorApp::ReportErreur(unsigned numero, std::initializer_list<std::string> arguments) {
  Boite.Erreur(numero, TexteErreur(numero, arguments));
  return false;
}

int CFenlorApp::MessageId(unsigned style, unsigned numero, std::initializer_list<std::string> arguments) {
  return Boite.Message(style, numero, TexteFormat(numero, arguments));
}

}  // namespace fenlor
