#include "forms/master/rubriqueview.h"

#include "core/valeurs.h"
#include "forms/master/textes.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

CRubriqueView::CRubriqueView(ContexteUi& contexte)
    : ListeDeFiches(contexte, TitreRubriques, FenRubriques,
                    {{"Rub", 40, [](const Rubrique& r) { return NormaliseRubrique(LitTexte(r.Rubrique)); }},
                     {"Désignation"_w, 600, [](const Rubrique& r) { return LitTexte(r.Designation); }}}) {}

}  // namespace fenlor
