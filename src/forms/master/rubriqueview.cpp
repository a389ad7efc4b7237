#include "forms/master/rubriqueview.h"

#include "core/valeurs.h"
#include "forms/master/dialogrubrique.h"
#include "forms/master/textes.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

CRubriqueView::CRubriqueView(ContexteUi& contexte)
    : FichesView(contexte, Texte(TitreRubriques), FenRubriques),
      m_rubriques(contexte.App, contexte.App.PathExercice) {
  m_rubriques.OpenFile();
  DefinitFiches<Rubrique>(
      m_rubriques, {{"Rub", 40, [](const Rubrique& r) { return NormaliseRubrique(LitTexte(r.Rubrique)); }},
                    {"Désignation"_w, 600, [](const Rubrique& r) { return LitTexte(r.Designation); }}});
}

std::vector<Position> CRubriqueView::Positions() {
  CRubriques rubriques(App(), App().PathExercice);
  return PositionsDe(App(), rubriques);
}

std::unique_ptr<DialogFiche> CRubriqueView::Forme(Position position) {
  return std::make_unique<CDialogRubrique>(Contexte(), this, position);
}

Refus CRubriqueView::SupprimeFiche(Position position) { return SupprimeRubrique(App(), position); }

}  // namespace fenlor
