#include "ui/fichesview.h"

#include <QScopedValueRollback>

#include "core/erreursexercice.h"

namespace fenlor {

FichesView::FichesView(ContexteUi& contexte, const TexteFixe& titre, u32 bit, Fabrique forme)
    : CZNListView(contexte, Texte(titre), bit), m_forme(std::move(forme)) {
  Table().Modele().DerniereFixe(true);
  const auto choisie = [this] { return Choisie() != 0; };
  Declare({{CmdAjouter, [this] { Saisit(0); }},
           {CmdModifier, [this] { Saisit(Choisie()); }, choisie},
           {CmdSupprimer, [this] { Supprime(); }, choisie}});
}

void FichesView::FillList() {
  std::vector<LigneListe> lignes;
  for (const Position position : Positions()) lignes.push_back({position});
  lignes.emplace_back();
  Table().Modele().Remplit(std::move(lignes));
  if (Table().ColonneTriee() >= 0) Table().TrieParColonne(Table().ColonneTriee());
}

Position FichesView::Choisie() const { return static_cast<Position>(Table().DonneeChoisie()); }

Position FichesView::Voisin(int pas) const {
  const int choisie = Table().LigneChoisie(), ligne = choisie + pas;
  if (choisie < 0 || ligne < 0 || ligne >= Table().Modele().NbLignes()) return 0;
  return static_cast<Position>(Table().Modele().DonneeDe(ligne));
}

void FichesView::VaVers(int pas) { pas < 0 ? Table().LignePrecedente() : Table().LigneSuivante(); }

void FichesView::Remplace(Position position) {
  if (const int ligne = Table().LigneChoisie(); ligne >= 0) Table().Modele().Change(ligne, position);
}

void FichesView::Saisit(Position position) {
  if (position == 0 && !App().Dit(App().ControleEcriture())) return;
  const std::unique_ptr<DialogFiche> forme = m_forme(position);
  {
    // Its neighbours are those of the list as it stood when the form was opened.
    const QScopedValueRollback suspendue(m_suspendue, true);
    forme->exec();
  }
  if (!forme->AChange()) return;
  Actualise();
  Table().SelectionneLigne(Table().Modele().LigneDe(forme->Derniere()));
}

void FichesView::Supprime() {
  const bool cloture = App().Reglages.IsFige();
  if ((Choisie() == 0 && !cloture) || !App().Dit(SupprimeA(Choisie()))) return;
  Contexte().Cadre.Actualise();
}

}  // namespace fenlor
