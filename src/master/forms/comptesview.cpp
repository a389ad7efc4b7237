#include "master/forms/comptesview.h"

#include "core/textes.h"
#include "master/forms/dialogcompte.h"

namespace fenlor {

namespace {

constexpr unsigned Ajouter = 1005, Modifier = 1006, Supprimer = 1007, Aide = 9002, Copier = 9006;

}  // namespace

ComptesView::ComptesView(ContexteUi& contexte, unsigned titre, u32 bit, ListeComptes liste, FormeCompte forme)
    : CZNListView(contexte, Texte(titre), bit),
      m_liste(liste),
      m_forme(forme),
      m_deuxMonnaies(contexte.App.AfficherDouble),
      m_plan(contexte.App, contexte.App.PathExercice) {
  m_plan.OpenFile();
  Table().Modele().DerniereFixe(true);
  Table().SetColonnes(ColonnesComptes(liste, m_deuxMonnaies));
}

void ComptesView::FillList() {
  if (m_deuxMonnaies != App().AfficherDouble) {
    m_deuxMonnaies = App().AfficherDouble;
    Table().SetColonnes(ColonnesComptes(m_liste, m_deuxMonnaies));
  }
  std::vector<ModeleListe::Donnee> lignes;
  for (const Position position : PositionsComptes(App(), m_liste)) lignes.push_back(position);
  lignes.push_back(0);
  Table().Modele().Remplit(std::move(lignes));
  if (Table().ColonneTriee() >= 0) Table().TrieParColonne(Table().ColonneTriee());
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

std::vector<unsigned> ComptesView::MenuContextuel() const {
  return {Copier, Ajouter, Modifier, Supprimer, 0, Aide};
}

Position ComptesView::Choisie() const { return static_cast<Position>(Table().DonneeChoisie()); }

Position ComptesView::Voisin(int pas) const {
  const int choisie = Table().LigneChoisie(), ligne = choisie + pas;
  if (choisie < 0 || ligne < 0 || ligne >= Table().Modele().NbLignes()) return 0;
  return static_cast<Position>(Table().Modele().DonneeDe(ligne));
}

void ComptesView::VaVers(int pas) { pas < 0 ? Table().LignePrecedente() : Table().LigneSuivante(); }

void ComptesView::Remplace(Position position) {
  if (const int ligne = Table().LigneChoisie(); ligne >= 0)
    Table().Modele().Change(ligne, TexteDe(position), position);
}

bool ComptesView::Connait(unsigned commande) const {
  return (commande >= Ajouter && commande <= Supprimer) || CZNListView::Connait(commande);
}

bool ComptesView::Disponible(unsigned commande) const {
  if (commande == Ajouter) return true;
  if (commande == Modifier || commande == Supprimer) return Choisie() != 0;
  return CZNListView::Disponible(commande);
}

void ComptesView::Execute(unsigned commande) {
  if (commande == Ajouter) return Saisit(0);
  if (commande == Modifier && Choisie() != 0) return Saisit(Choisie());
  if (commande == Supprimer) return Supprime();
  CZNListView::Execute(commande);
}

void ComptesView::Active() { Execute(Choisie() != 0 ? Modifier : Ajouter); }

void ComptesView::Saisit(Position position) {
  if (position == 0 && App().Reglages.IsExerciceCloture()) {
    App().ReportErreur(3056);
    return;
  }
  const std::unique_ptr<DialogCompte> forme = Forme(position);
  forme->exec();
  if (!forme->AChange()) return;
  Actualise(Bit());
  Table().SelectionneLigne(Table().Modele().LigneDe(forme->Derniere()));
}

void ComptesView::Supprime() {
  const bool cloture = App().Reglages.IsExerciceCloture();
  if ((Choisie() == 0 && !cloture) || !SupprimeCompte(App(), m_forme, Choisie())) return;
  Actualise(Bit());
  Contexte().Cadre.Actualise(MasqueComptes(m_forme != FormeCompte::RecettesDepenses) & ~Bit());
}

}  // namespace fenlor
