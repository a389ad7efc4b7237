#include "outils/attendu.h"

#include <cstdlib>

#include "outils/cabinetdetest.h"

namespace fenlor::test {

void VerifieAttendu(const char* source, const std::string& nom, const std::string& obtenu) {
  const auto dossier = std::filesystem::path(source).parent_path() / "attendus";
  const std::string chemin = (dossier / (nom + ".txt")).string();
  const char* demande = std::getenv("FENLOR_ATTENDUS");
  if (demande && std::string_view(demande) == "ecrire") {
    std::filesystem::create_directories(dossier);
    EcritFichier(chemin, obtenu);
    return;
  }
  ASSERT_TRUE(std::filesystem::exists(chemin)) << "no expectation for " << nom << "; it is\n" << obtenu;
  EXPECT_EQ(LitFichier(chemin), obtenu) << nom;
}

}  // namespace fenlor::test
