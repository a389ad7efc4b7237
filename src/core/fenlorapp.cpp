#include "core/fenlorapp.h"

namespace fenlor {

bool CFenlorApp::ReportErreur(const TexteFixe& erreur, std::initializer_list<std::string> arguments) {
  Boite.Erreur(erreur, TexteFormat(erreur, arguments));
  return false;
}

int CFenlorApp::MessageId(unsigned style, const TexteFixe& question,
                          std::initializer_list<std::string> arguments) {
  if (question.detruit) style |= DefautSecond;
  return Boite.Message(style, question, TexteFormat(question, arguments));
}

}  // namespace fenlor
