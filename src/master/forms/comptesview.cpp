#include "master/forms/comptesview.h"

#include "core/texte.h"

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

}  // namespace fenlor
