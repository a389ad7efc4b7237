#include "reports/etatcentralisation.h"

#include <cassert>

#include "core/valeurs.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr char TousLesComptes[] = "*";
// Texts of one table, and how far the tables of the other forms are.
constexpr unsigned RangEntete = 0, RangMois = 1, RangTotal = 2;
constexpr unsigned TableauDouble = 3, TableauMontant = 6;

}  // namespace

void CEtatCentralisationDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::Compte, TitreEtatCentralisation)) return;
  SetEtatEntete("");
  SetEtatPied(PiedCentralisation);
  LivresEtat livres(App, *this);
  if (!livres.Ouvre()) return;
  Travail travail(*this, AvancementCentralisation, livres.NombreLignes() + livres.NombreComptes());
  EtatPrintf(PeriodeCentralisation, {StrDate(m_criteres.du), StrDate(m_criteres.au)});
  const auto compte = [&](const Plan& plan) {
    EcritCompte(livres, travail, plan);
    travail.Pas();
  };
  m_criteres.compte == TousLesComptes ? livres.Comptes(compte) : livres.Compte(m_criteres.compte, compte);
}

void CEtatCentralisationDoc::EcritCompte(LivresEtat& livres, Travail& travail, const Plan& plan) {
  MoisCentralises mois{};
  bool vide = true;
  livres.LignesDuCompte(fenlor::LitTexte(plan.Compte), m_criteres.du, m_criteres.au, [&](const Line& l) {
    vide = false;
    const std::size_t rang = Mois(l.DateLigne) - 1;
    if (rang < mois.size()) mois[rang].Ajoute(l);
    travail.Pas();
  });
  if (vide && m_criteres.mouvementes) return;
  assert(RangNature(plan.Type) < std::size(MotNatureCompte));
  EtatPrintf(CompteCentralisation, {Texte(MotNatureCompte[RangNature(plan.Type)]), livres.CompteCourt(plan),
                                    EchappeEtat(fenlor::LitTexte(plan.Designation))});
  EcritTableau(mois);
}

void CEtatCentralisationDoc::EcritTableau(const MoisCentralises& mois) {
  const TexteFixe* tableau =
      TableauMois + (AfficheDouble() ? TableauDouble : 0) + (Montant() ? TableauMontant : 0);
  assert(static_cast<std::size_t>(tableau - TableauMois) + RangTotal < std::size(TableauMois));
  const FormatEtat rangee(tableau[RangMois]);
  EtatPrintf(tableau[RangEntete]);
  SommesEtat total;
  for (unsigned m = 0; m < mois.size(); ++m) {
    const ColonnesEtat c = Colonnes(mois[m]);
    EtatPrintf(rangee, {NomMois(m + 1), c[0], c[1], c[2], c[3]});
    total.Ajoute(mois[m]);
  }
  EcritTotaux(tableau[RangTotal], total);
}

}  // namespace fenlor
