#include "master/forms/fichesview.h"

#include <QScopedValueRollback>

#include "core/erreurs.h"

namespace fenlor {

namespace {

constexpr unsigned Ajouter = 1005, Modifier = 1006, Supprimer = 1007, Aide = 9002, Copier = 9006;

}  // namespace

FichesView::FichesView(ContexteUi& contexte, const std::string& titre, u32 bit)
    : CZNListView(contexte, titre, bit) {
  Table().Modele().DerniereFixe(true);
}

void FichesView::FillList() {
  std::vector<ModeleListe::Donnee> lignes;
  for (const Position position : Positions()) lignes.push_back(position);
  lignes.push_back(0);
  Table().Modele().Remplit(std::move(lignes));
  if (Table().ColonneTriee() >= 0) Table().TrieParColonne(Table().ColonneTriee());
}

std::vector<unsigned> FichesView::MenuContextuel() const {
  return {Copier, Ajouter, Modifier, Supprimer, 0, Aide};
}

Position FichesView::Choisie() const { return static_cast<Position>(Table().DonneeChoisie()); }

Position FichesView::Voisin(int pas) const {
  const int choisie = Table().LigneChoisie(), ligne = choisie + pas;
  if (choisie < 0 || ligne < 0 || ligne >= Table().Modele().NbLignes()) return 0;
  return static_cast<Position>(Table().Modele().DonneeDe(ligne));
}

void FichesView::VaVers(int pas) { pas < 0 ? Table().LignePrecedente() : Table().LigneSuivante(); }

void FichesView::Remplace(Position position) {
  if (const int ligne = Table().LigneChoisie(); ligne >= 0)
    Table().Modele().Change(ligne, TexteDe(position), position);
}

bool FichesView::Connait(unsigned commande) const {
  return (commande >= Ajouter && commande <= Supprimer) || CZNListView::Connait(commande);
}

bool FichesView::Disponible(unsigned commande) const {
  if (commande == Ajouter) return true;
  if (commande == Modifier || commande == Supprimer) return Choisie() != 0;
  return CZNListView::Disponible(commande);
}

void FichesView::Execute(unsigned commande) {
  if (commande == Ajouter) return Saisit(0);
  if (commande == Modifier && Choisie() != 0) return Saisit(Choisie());
  if (commande == Supprimer) return Supprime();
  CZNListView::Execute(commande);
}

void FichesView::Active() { Execute(Choisie() != 0 ? Modifier : Ajouter); }

void FichesView::Saisit(Position position) {
  if (position == 0 && App().Reglages.IsExerciceCloture()) {
    App().ReportErreur(ErrExerciceCloture);
    return;
  }
  Position derniere = 0;
  {
    // Its neighbours are those of the list as it stood when the form was opened.
    const QScopedValueRollback suspendue(m_suspendue, true);
    if (!LanceForme(position, derniere)) return;
  }
  Actualise();
  Table().SelectionneLigne(Table().Modele().LigneDe(derniere));
}

void FichesView::Supprime() {
  const bool cloture = App().Reglages.IsExerciceCloture();
  if ((Choisie() == 0 && !cloture) || !SupprimeFiche(Choisie())) return;
  Contexte().Cadre.Actualise();
}

}  // namespace fenlor
