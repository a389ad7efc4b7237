#include "master/forms/rubriqueview.h"

#include <algorithm>

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
  Table().SetColonnesId(ColonnesRubriques);
}

bool CRubriqueView::Lit(ModeleListe::Donnee donnee) {
  return donnee != 0 && m_rubriques.NbOuvertures > 0 && m_rubriques.ReadRec(static_cast<Position>(donnee));
}

std::string CRubriqueView::TexteDe(ModeleListe::Donnee donnee) {
  if (!Lit(donnee)) return {};
  // A bar would begin another field.
  std::string designation = LitTexte(m_rubriques.Rec->Designation);
  std::replace(designation.begin(), designation.end(), '|', '/');
  return NormaliseRubrique(LitTexte(m_rubriques.Rec->Rubrique)) + '|' + designation;
}

int CRubriqueView::CompareItems(ModeleListe::Donnee a, ModeleListe::Donnee b, int colonne) {
  if (!Lit(a)) return 0;
  const Rubrique r = *m_rubriques.Rec;
  if (!Lit(b)) return 0;
  const Rubrique& s = *m_rubriques.Rec;
  return colonne == 0 ? CompareSansCasse(LitTexte(r.Rubrique), LitTexte(s.Rubrique))
                      : CompareSansCasse(LitTexte(r.Designation), LitTexte(s.Designation));
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
