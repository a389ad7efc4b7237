#include "garde/blocsauvegarde.h"

#include <cassert>
#include <cstring>

#include "garde/optionssauvegarde.h"
#include "garde/textes.h"

namespace fenlor {

Refus RemplitBloc(const CFenlorApp& app, BlocSauvegarde& bloc) {
  bloc = {};
  const std::string chemin = app.PathCabinet + "/" + app.NomExercice;
  if (chemin.size() >= sizeof bloc.exercice) return Refus(ErrCheminCabinetLong, "", {chemin});
  const std::string destination = LitOptionsSauvegarde(app).dossier;
  assert(destination.size() < sizeof bloc.destination);
  std::memcpy(bloc.exercice, chemin.c_str(), chemin.size());
  std::memcpy(bloc.destination, destination.c_str(), destination.size());
  bloc.comprime = bloc.verifie = 1;
  return {};
}

std::string ExerciceDuBloc(const BlocSauvegarde& bloc) {
  const std::string chemin(bloc.exercice, ::strnlen(bloc.exercice, sizeof bloc.exercice));
  return chemin.substr(chemin.rfind('/') + 1);
}

}  // namespace fenlor
