#include "ui/fenetres.h"

namespace fenlor {

void AvecFichiersSeul(ContexteUi& contexte, const std::function<void()>& travail) {
  contexte.Cadre.Sauve();
  contexte.Cadre.FermeToutes();
  travail();
  contexte.Cadre.Restaure();
}

}  // namespace fenlor
