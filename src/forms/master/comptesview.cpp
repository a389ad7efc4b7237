#include "forms/master/comptesview.h"

#include "core/texte.h"
#include "forms/master/dialogplan.h"
#include "forms/master/dialogplancomptable.h"
#include "forms/master/dialogtresorerie.h"
#include "reports/textes.h"

namespace fenlor {

ComptesView::ComptesView(ContexteUi& contexte, const TexteFixe& titre, u32 bit, ListeComptes liste,
                         Fabrique forme)
    : FichesView(contexte, titre, bit, std::move(forme)),
      m_liste(liste),
      m_plan(contexte.App, contexte.App.PathExercice) {
  m_plan.OpenFile();
  Definit();
}

void ComptesView::Definit() {
  m_deuxMonnaies = App().AfficherDouble;
  DefinitFiches(m_plan, ColonnesComptes(App(), m_liste));
}

void ComptesView::FillList() {
  if (m_deuxMonnaies != App().AfficherDouble) Definit();
  FichesView::FillList();
}

std::vector<Position> ComptesView::Positions() { return PositionsComptes(App(), m_liste); }

Refus ComptesView::SupprimeA(Position position) {
  auto fiche = FicheA<FicheCompte>(position);
  fiche.forme = FormeDe(m_liste);
  return SupprimeFiche(App(), fiche);
}

CPlanView::CPlanView(ContexteUi& contexte, i16 type)
    : ComptesView(
          contexte, type == Recette ? TitreComptesRecettes : TitreComptesDepenses,
          type == Recette ? FenComptesRecettes : FenComptesDepenses,
          type == Recette ? ListeComptes::Recettes : ListeComptes::Depenses,
          [this, type](Position p) { return std::make_unique<CDialogPlan>(Contexte(), this, type, p); }) {}

CPlanComptableView::CPlanComptableView(ContexteUi& contexte)
    : ComptesView(
          contexte, TitrePlanComptable, FenPlanComptable, ListeComptes::PlanComptable,
          [this](Position p) { return std::make_unique<CDialogPlanComptable>(Contexte(), this, p); }) {}

CTresorerieView::CTresorerieView(ContexteUi& contexte)
    : ComptesView(contexte, TitreComptesTresorerie, FenTresorerie, ListeComptes::Tresorerie,
                  [this](Position p) { return std::make_unique<CDialogTresorerie>(Contexte(), this, p); }) {}

}  // namespace fenlor
