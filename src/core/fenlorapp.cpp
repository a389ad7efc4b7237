#include "core/fenlorapp.h"

#include <cassert>
#include <cerrno>

#include "core/erreurs.h"
#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

bool CFenlorApp::ReportErreur(const TexteFixe& erreur, std::initializer_list<std::string> arguments) {
  Boite.Erreur(erreur, TexteFormat(erreur, arguments));
  return false;
}

bool CFenlorApp::Dit(const Refus& refus) {
  assert(!refus || refus.dit || !refus.texte.empty());
  if (!refus || refus.dit) return !refus;
  if (refus.avis)
    Boite.Message(BoutonsOk | IconeAttention, refus.numero, refus.texte);
  else
    Boite.Erreur(refus.numero, refus.texte);
  return false;
}

Refus CFenlorApp::Demande(unsigned style, int attendue, const TexteFixe& question, const char* champ,
                          std::initializer_list<std::string> arguments) {
  if (attendue == RepNon) style |= FuitePremier;
  if (MessageId(style, question, arguments) == attendue) return {};
  return Refus::DejaDit(question, champ, arguments);
}

Refus CFenlorApp::ControleLecture() const {
  return Magasin.QVEnLecture() ? Refus(ErrCabinetEnLecture) : Refus();
}

Refus CFenlorApp::ControleEcriture(const std::string& exercice) const {
  if (Magasin.QVEnLecture()) return Refus(ErrCabinetEnLecture);
  return Reglages.IsExerciceCloture(exercice) ? Refus(ErrExerciceCloture) : Refus();
}

Refus CFenlorApp::EchecMagasin() const {
  if (Magasin.QVFileErrorCode() == ErrLectureSeule) return Refus(ErrCabinetEnLecture);
  return Refus(ErrMagasin, "", {Magasin.QVEchecTexte()});
}

std::string CFenlorApp::NumeroCourt(const std::string& longue) {
  return CompacteTexte(Magasin.GetShortCompte(longue));
}

Refus CFenlorApp::EchecReglages() const {
  if (Magasin.QVEnLecture()) return Refus(ErrCabinetEnLecture);
  const Profil& reglages = Magasin.Reglages();
  const int erreur = reglages.Erreur() ? reglages.Erreur() : EIO;
  return Refus(ErrReglages, "",
               {DepuisUtf8(reglages.Chemin()).value_or(reglages.Chemin()), Magasin.QVErreurTexte(erreur)});
}

Refus CFenlorApp::EchecDit() const {
  Refus refus = EchecMagasin();
  refus.dit = Magasin.QVHasCallback();
  return refus;
}

int CFenlorApp::MessageId(unsigned style, const TexteFixe& question,
                          std::initializer_list<std::string> arguments) {
  if (question.detruit) style |= DefautSecond;
  return Boite.Message(style, question, TexteFormat(question, arguments));
}

}  // namespace fenlor
