#include "master/forms/rubriqueview.h"

#include "core/valeurs.h"
#include "master/forms/dialogrubrique.h"
#include "master/forms/textes.h"
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

std::vector<Position> CRubriqueView::Positions() { return PositionsRubriques(App()); }

bool CRubriqueView::LanceForme(Position position, Position& derniere) {
  CDialogRubrique forme(Contexte(), this, position);
  forme.exec();
  derniere = forme.Derniere();
  return forme.AChange();
}

bool CRubriqueView::SupprimeFiche(Position position) {
  return static_cast<bool>(SupprimeRubrique(App(), position));
}

}  // namespace fenlor
