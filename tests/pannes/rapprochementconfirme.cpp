// rapprochementconfirme CABINET ACCOUNT
// Matches the account's operations with a question for each pair, until it is killed. Every fifth answer is
// no. Each question tells on a line of its own how many were yes before it, `{"oui":..}`.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "banque/rapprochement.h"
#include "core/dialoguesansprogression.h"
#include "session/exercices.h"

namespace fenlor {
namespace {

class Repondeur : public DialogueSansProgression {
 public:
  void Erreur(unsigned, const std::string& texte) override {
    std::fprintf(stderr, "%s\n", texte.c_str());
    std::exit(3);
  }
  int Message(unsigned, unsigned, const std::string&) override {
    const std::string ligne = "{\"oui\":" + std::to_string(m_oui) + "}\n";
    if (write(STDOUT_FILENO, ligne.data(), ligne.size()) < 0) std::exit(3);
    if (++m_questions % 5 == 0) return RepNon;
    ++m_oui;
    return RepOui;
  }

 private:
  unsigned m_questions = 0, m_oui = 0;
};

int Rapproche(const std::string& cabinet, const std::string& compte) {
  QVAPI magasin;
  Repondeur boite;
  CFenlorApp app(magasin, boite);
  if (!magasin.QVOpenSession(1) || !magasin.QVOpenCompta(cabinet, {})) return 3;
  app.PathCabinet = cabinet;
  if (!app.Dit(OuvreExercice(app, "2003"))) return 3;
  BilanRapprochement bilan;
  const PeriodeRapprochement periode{compte, FaitDate(1, 1, 2003), FaitDate(31, 12, 2003)};
  return app.Dit(RapprocheAutomatique(app, {periode, true, true}, bilan)) ? 0 : 3;
}

}  // namespace
}  // namespace fenlor

int main(int argc, char** argv) { return argc == 3 ? fenlor::Rapproche(argv[1], argv[2]) : 2; }
