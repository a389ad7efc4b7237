#include "master/forms/plancomptableview.h"

#include "master/forms/dialogplancomptable.h"
#include "reports/textes.h"

namespace fenlor {

CPlanComptableView::CPlanComptableView(ContexteUi& contexte)
    : ComptesView(contexte, TitrePlanComptable, FenPlanComptable, ListeComptes::PlanComptable,
                  FormeCompte::PlanComptable) {}

std::unique_ptr<DialogFiche> CPlanComptableView::Forme(Position position) {
  return std::make_unique<CDialogPlanComptable>(Contexte(), this, position);
}

}  // namespace fenlor
