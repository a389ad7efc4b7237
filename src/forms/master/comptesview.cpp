#include "forms/master/comptesview.h"

#include "core/texte.h"
#include "forms/master/dialogplan.h"
#include "forms/master/dialogplancomptable.h"
#include "forms/master/dialogtresorerie.h"
#include "reports/textes.h"

namespace fenlor {

ComptesView::ComptesView(ContexteUi& contexte, const TexteFixe& titre, u32 bit, ListeComptes liste,
                         FormeCompte forme)
    : FichesView(contexte, Texte(titre), bit),
      m_liste(liste),
      m_forme(forme),
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

Refus ComptesView::SupprimeFiche(Position position) { return SupprimeCompte(App(), m_forme, position); }

CPlanView::CPlanView(ContexteUi& contexte, i16 type)
    : ComptesView(contexte, type == Recette ? TitreComptesRecettes : TitreComptesDepenses,
                  type == Recette ? FenComptesRecettes : FenComptesDepenses,
                  type == Recette ? ListeComptes::Recettes : ListeComptes::Depenses,
                  FormeCompte::RecettesDepenses),
      m_type(type) {}

std::unique_ptr<DialogFiche> CPlanView::Forme(Position position) {
  return std::make_unique<CDialogPlan>(Contexte(), this, m_type, position);
}

CPlanComptableView::CPlanComptableView(ContexteUi& contexte)
    : ComptesView(contexte, TitrePlanComptable, FenPlanComptable, ListeComptes::PlanComptable,
                  FormeCompte::PlanComptable) {}

std::unique_ptr<DialogFiche> CPlanComptableView::Forme(Position position) {
  return std::make_unique<CDialogPlanComptable>(Contexte(), this, position);
}

CTresorerieView::CTresorerieView(ContexteUi& contexte)
    : ComptesView(contexte, TitreComptesTresorerie, FenTresorerie, ListeComptes::Tresorerie,
                  FormeCompte::Tresorerie) {}

std::unique_ptr<DialogFiche> CTresorerieView::Forme(Position position) {
  return std::make_unique<CDialogTresorerie>(Contexte(), this, position);
}

}  // namespace fenlor
