// The manifest of an archive is fed any bytes: it is refused with a reason, or holds what the restoration
// relies on, and reads back the same.
#include <cstdio>
#include <set>

#include "garde/manifeste.h"
#include "store/exercices.h"

using namespace fenlor;

namespace {

void Trouve(const char* quoi, const std::string& detail) {
  std::fprintf(stderr, "%s %s\n", quoi, detail.c_str());
  std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* octets, std::size_t taille) {
  const std::string_view texte(reinterpret_cast<const char*>(octets), taille);
  Manifeste manifeste;
  if (!LitManifeste(texte, manifeste).empty()) return 0;
  std::set<std::string> exercices, noms;
  for (const ExerciceArchive& e : manifeste.exercices) {
    if (!NomExerciceCorrect(e.nom)) Trouve("exercice", e.nom);
    if (!exercices.insert(e.nom).second) Trouve("exercice twice", e.nom);
  }
  for (const PieceArchive& piece : manifeste.pieces) {
    std::string exercice;
    if (!NomDePiece(piece.nom, exercice) || piece.nom.find("..") != std::string::npos || piece.nom[0] == '/')
      Trouve("name", piece.nom);
    if (!exercice.empty() && !exercices.count(exercice)) Trouve("file of no exercice", piece.nom);
    if (!noms.insert(piece.nom).second) Trouve("name twice", piece.nom);
    if (piece.taille > TaillePieceMax) Trouve("length", piece.nom);
  }
  Manifeste relu;
  if (const std::string raison = LitManifeste(EcritManifeste(manifeste), relu); !raison.empty())
    Trouve("its own words are refused:", raison);
  if (!(relu == manifeste)) Trouve("reads back another", {});
  return 0;
}
