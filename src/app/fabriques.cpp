#include "app/fabriques.h"

#include "app/mainframe.h"
#include "master/forms/libelleview.h"
#include "master/forms/plancomptableview.h"
#include "master/forms/planview.h"
#include "master/forms/rubriqueview.h"
#include "master/forms/tresorerieview.h"

namespace fenlor {

void PoseFabriques(CMainFrame& cadre) {
  cadre.PoseFabrique(FenTresorerie, [](ContexteUi& contexte) { return new CTresorerieView(contexte); });
  cadre.PoseFabrique(FenComptesRecettes,
                     [](ContexteUi& contexte) { return new CPlanView(contexte, Recette); });
  cadre.PoseFabrique(FenComptesDepenses,
                     [](ContexteUi& contexte) { return new CPlanView(contexte, Depense); });
  cadre.PoseFabrique(FenPlanComptable, [](ContexteUi& contexte) { return new CPlanComptableView(contexte); });
  cadre.PoseFabrique(FenRubriques, [](ContexteUi& contexte) { return new CRubriqueView(contexte); });
  cadre.PoseFabrique(FenLibelles, [](ContexteUi& contexte) { return new CLibelleView(contexte); });
}

}  // namespace fenlor
