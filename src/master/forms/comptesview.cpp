#include "master/forms/comptesview.h"

#include "core/texte.h"
#include "master/forms/dialogcompte.h"

namespace fenlor {

ComptesView::ComptesView(ContexteUi& contexte, const TexteFixe& titre, u32 bit, ListeComptes liste,
                         FormeCompte forme)
    : FichesView(contexte, Texte(titre), bit),
      m_liste(liste),
      m_forme(forme),
      m_deuxMonnaies(contexte.App.AfficherDouble),
      m_plan(contexte.App, contexte.App.PathExercice) {
  m_plan.OpenFile();
  Table().SetColonnes(ColonnesComptes(liste, m_deuxMonnaies));
}

void ComptesView::FillList() {
  if (m_deuxMonnaies != App().AfficherDouble) {
    m_deuxMonnaies = App().AfficherDouble;
    Table().SetColonnes(ColonnesComptes(m_liste, m_deuxMonnaies));
  }
  FichesView::FillList();
}

bool ComptesView::Lit(ModeleListe::Donnee donnee) {
  return donnee != 0 && m_plan.NbOuvertures > 0 && m_plan.ReadRec(static_cast<Position>(donnee));
}

std::string ComptesView::TexteDe(ModeleListe::Donnee donnee) {
  return Lit(donnee) ? LigneCompte(App(), m_liste, *m_plan.Rec) : std::string();
}

int ComptesView::CompareItems(ModeleListe::Donnee a, ModeleListe::Donnee b, int colonne) {
  if (!Lit(a)) return 0;
  const Plan premier = *m_plan.Rec;
  return Lit(b) ? CompareComptesColonne(App(), m_liste, premier, *m_plan.Rec, colonne) : 0;
}

std::vector<Position> ComptesView::Positions() { return PositionsComptes(App(), m_liste); }

bool ComptesView::LanceForme(Position position, Position& derniere) {
  const std::unique_ptr<DialogCompte> forme = Forme(position);
  forme->exec();
  derniere = forme->Derniere();
  return forme->AChange();
}

bool ComptesView::SupprimeFiche(Position position) {
  return static_cast<bool>(SupprimeCompte(App(), m_forme, position));
}

}  // namespace fenlor
