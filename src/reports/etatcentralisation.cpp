#include "reports/etatcentralisation.h"

#include "core/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr char TousLesComptes[] = "*";
// Texts of one table, and how far the tables of the other forms are.
constexpr unsigned RangEntete = 0, RangMois = 1, RangTotal = 2;
constexpr unsigned TableauDouble = 3, TableauMontant = 6;

}  // namespace

bool CEtatCentralisationDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::Compte, TitreEtatCentralisation)) return false;
  SetEtatEntete("");
  SetEtatPied(PiedCentralisation);
  LivresEtat livres(App);
  if (!livres.Ouvre()) return false;
  Travail travail(*this, AvancementCentralisation, livres.NombreLignes() + livres.NombreComptes());
  if (EtatPrintf(PeriodeCentralisation, {StrDate(m_criteres.du), StrDate(m_criteres.au)}) < 0) return false;
  bool suit = true;
  const auto compte = [&](const Plan& plan) {
    return suit = EcritCompte(livres, travail, plan) && travail.Pas();
  };
  const bool lu =
      m_criteres.compte == TousLesComptes ? livres.Comptes(compte) : livres.Compte(m_criteres.compte, compte);
  return lu && suit;
}

bool CEtatCentralisationDoc::EcritCompte(LivresEtat& livres, Travail& travail, const Plan& plan) {
  const i16 nature = plan.Type >= Tresorerie && plan.Type <= Autre ? plan.Type : i16{Autre};
  if (EtatPrintf(CompteCentralisation,
                 {Texte(MotNatureCompte + static_cast<unsigned>(nature)), livres.CompteCourt(plan),
                  EchappeEtat(fenlor::LitTexte(plan.Designation))}) < 0)
    return false;
  MoisCentralises mois{};
  bool suit = true;
  const auto ligne = [&](const Line& l) {
    const std::size_t rang = Mois(l.DateLigne) - 1;
    if (rang < mois.size()) mois[rang].Ajoute(l);
    return suit = travail.Pas();
  };
  return livres.LignesDuCompte(fenlor::LitTexte(plan.Compte), m_criteres.du, m_criteres.au, ligne) && suit &&
         EcritTableau(mois);
}

bool CEtatCentralisationDoc::EcritTableau(const MoisCentralises& mois) {
  const unsigned tableau = TableauMois + (AfficheDouble() ? TableauDouble : 0) +
                           (m_criteres.affichage == AffichageMontant ? TableauMontant : 0);
  const FormatEtat rangee(tableau + RangMois);
  if (EtatPrintf(tableau + RangEntete) < 0) return false;
  SommesEtat total;
  for (unsigned m = 0; m < mois.size(); ++m) {
    const ColonnesEtat c = Colonnes(mois[m]);
    if (EtatPrintf(rangee, {NomMois(m + 1), c[0], c[1], c[2], c[3]}) < 0) return false;
    total.Ajoute(mois[m]);
  }
  const ColonnesEtat c = Colonnes(total);
  return EtatPrintf(tableau + RangTotal, {c[0], c[1], c[2], c[3]}) >= 0;
}

ColonnesEtat CEtatCentralisationDoc::Colonnes(const SommesEtat& sommes) const {
  if (m_criteres.affichage != AffichageMontant) return ColonnesTotaux(sommes);
  const f64 franc = SommeNette(sommes.creditFranc - sommes.debitFranc);
  const f64 euro = SommeNette(sommes.creditEuro - sommes.debitEuro);
  if (AfficheDouble()) return {FormatSoldeFranc(franc), FormatSoldeEuro(euro), {}, {}};
  return {SoldeAnnee(franc, euro), {}, {}, {}};
}

}  // namespace fenlor
