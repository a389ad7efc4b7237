#include "master/forms/tresorerieview.h"

#include "master/forms/dialogtresorerie.h"
#include "reports/textes.h"

namespace fenlor {

CTresorerieView::CTresorerieView(ContexteUi& contexte)
    : ComptesView(contexte, TitreComptesTresorerie, FenTresorerie, ListeComptes::Tresorerie,
                  FormeCompte::Tresorerie) {}

std::unique_ptr<DialogFiche> CTresorerieView::Forme(Position position) {
  return std::make_unique<CDialogTresorerie>(Contexte(), this, position);
}

}  // namespace fenlor
