#include "master/forms/rubriqueview.h"

#include <algorithm>

#include "core/textes.h"
#include "core/valeurs.h"
#include "master/forms/dialogrubrique.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr unsigned Ajouter = 1005, Modifier = 1006, Supprimer = 1007, Aide = 9002, Copier = 9006;
constexpr u32 FenetresDeComptes = FenComptesRecettes | FenComptesDepenses | FenPlanComptable;

}  // namespace

CRubriqueView::CRubriqueView(ContexteUi& contexte)
    : CZNListView(contexte, Texte(TitreRubriques), FenRubriques),
      m_rubriques(contexte.App, contexte.App.PathExercice) {
  m_rubriques.OpenFile();
  Table().Modele().DerniereFixe(true);
  Table().SetColonnesId(ColonnesRubriques);
}

void CRubriqueView::FillList() {
  std::vector<ModeleListe::Donnee> lignes;
  for (const Position position : PositionsRubriques(App())) lignes.push_back(position);
  lignes.push_back(0);
  Table().Modele().Remplit(std::move(lignes));
  if (Table().ColonneTriee() >= 0) Table().TrieParColonne(Table().ColonneTriee());
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

std::vector<unsigned> CRubriqueView::MenuContextuel() const {
  return {Copier, Ajouter, Modifier, Supprimer, 0, Aide};
}

Position CRubriqueView::Choisie() const { return static_cast<Position>(Table().DonneeChoisie()); }

Position CRubriqueView::Voisin(int pas) const {
  const int choisie = Table().LigneChoisie(), ligne = choisie + pas;
  if (choisie < 0 || ligne < 0 || ligne >= Table().Modele().NbLignes()) return 0;
  return static_cast<Position>(Table().Modele().DonneeDe(ligne));
}

void CRubriqueView::VaVers(int pas) { pas < 0 ? Table().LignePrecedente() : Table().LigneSuivante(); }

void CRubriqueView::Remplace(Position position) {
  if (const int ligne = Table().LigneChoisie(); ligne >= 0)
    Table().Modele().Change(ligne, TexteDe(position), position);
}

bool CRubriqueView::Connait(unsigned commande) const {
  return (commande >= Ajouter && commande <= Supprimer) || CZNListView::Connait(commande);
}

bool CRubriqueView::Disponible(unsigned commande) const {
  if (commande == Ajouter) return true;
  if (commande == Modifier || commande == Supprimer) return Choisie() != 0;
  return CZNListView::Disponible(commande);
}

void CRubriqueView::Execute(unsigned commande) {
  if (commande == Ajouter) return Saisit(0);
  if (commande == Modifier && Choisie() != 0) return Saisit(Choisie());
  if (commande == Supprimer) return Supprime();
  CZNListView::Execute(commande);
}

void CRubriqueView::Active() { Execute(Choisie() != 0 ? Modifier : Ajouter); }

void CRubriqueView::Saisit(Position position) {
  if (position == 0 && App().Reglages.IsExerciceCloture()) {
    App().ReportErreur(3056);
    return;
  }
  CDialogRubrique forme(Contexte(), this, position);
  forme.exec();
  if (!forme.AChange()) return;
  Actualise(Bit());
  Table().SelectionneLigne(Table().Modele().LigneDe(forme.Derniere()));
}

void CRubriqueView::Supprime() {
  const bool cloture = App().Reglages.IsExerciceCloture();
  if ((Choisie() == 0 && !cloture) || !SupprimeRubrique(App(), Choisie())) return;
  Actualise(Bit());
  Contexte().Cadre.Actualise(FenetresDeComptes);
}

}  // namespace fenlor
