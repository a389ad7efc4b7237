#include "core/fenlorapp.h"

#include <algorithm>
#include <iterator>

#include "core/textes.h"

namespace fenlor {

namespace {

/// Yes takes away what nobody can bring back by another answer: Enter is "Non".
bool Detruit(unsigned question) {
  constexpr unsigned destructrices[] = {
      QuestionSuppression,        QuestionSuppressionRapprochee, QuestionRecetteFeuille,
      QuestionRecetteQuorbane,    QuestionDepenseQuorbane,       QuestionAjustementEuro,
      QuestionSupprimeExercice,   QuestionRenumerotation,        QuestionSupprimeCompte,
      QuestionSupprimeTresorerie, QuestionSupprimeRubrique,      QuestionSupprimeLibelle,
      QuestionRemplaceFraisKm,    QuestionEcrituresVariable,     QuestionSupprimeFraisKm,
      QuestionAnneesExercice,
  };
  return std::find(std::begin(destructrices), std::end(destructrices), question) != std::end(destructrices);
}

}  // namespace

bool CFenlorApp::ReportErreur(unsigned numero, std::initializer_list<std::string> arguments) {
  Boite.Erreur(numero, TexteErreur(numero, arguments));
  return false;
}

int CFenlorApp::MessageId(unsigned style, unsigned numero, std::initializer_list<std::string> arguments) {
  if (Detruit(numero)) style |= DefautSecond;
  return Boite.Message(style, numero, TexteFormat(numero, arguments));
}

}  // namespace fenlor
