#include "master/forms/planview.h"

#include "master/forms/dialogplan.h"
#include "reports/textes.h"

namespace fenlor {

CPlanView::CPlanView(ContexteUi& contexte, i16 type)
    : ComptesView(contexte, type == Recette ? TitreComptesRecettes : TitreComptesDepenses,
                  type == Recette ? FenComptesRecettes : FenComptesDepenses,
                  type == Recette ? ListeComptes::Recettes : ListeComptes::Depenses,
                  FormeCompte::RecettesDepenses),
      m_type(type) {}

std::unique_ptr<DialogFiche> CPlanView::Forme(Position position) {
  return std::make_unique<CDialogPlan>(Contexte(), this, m_type, position);
}

}  // namespace fenlor
