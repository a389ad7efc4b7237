#include "reports/etatbalance.h"

#include "core/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr char DerniereClasseBilan = '5';
constexpr unsigned RangEuro = 1, RangDouble = 2;  // of the column headings

}  // namespace

bool CEtatBalanceDoc::BuildEtat() {
  m_classe.reset();
  m_sommesClasse = m_sommesSection = m_sommes = {};
  PoseTitre(Texte(TitreEtatBalance));
  SetEtatEntete(EnteteBalance + (AfficheDouble() ? RangDouble : AnneeEuro() ? RangEuro : 0));
  SetEtatPied(PiedBalance);
  LivresEtat livres(App);
  if (!livres.Ouvre()) return false;
  Travail travail(*this, AvancementBalance, livres.NombreComptes());
  if (EcritEtat("\\H") < 0) return false;
  bool suit = true;
  const auto compte = [&](const Plan& plan) { return suit = EcritCompte(livres, plan) && travail.Pas(); };
  return livres.Comptes(compte) && suit && FermeClasse() && EcritTotaux(TotalExploitation, m_sommesSection) &&
         EcritTotaux(TotalBalance, m_sommes) && EcritEtat("\\X") >= 0;
}

bool CEtatBalanceDoc::EcritCompte(const LivresEtat& livres, const Plan& plan) {
  if (m_classe != plan.Compte[0]) {
    if (!FermeClasse()) return false;
    m_classe = plan.Compte[0];
    if (EtatPrintf(ClasseBalance, {plan.Compte[0]}) < 0) return false;
  }
  const SommesEtat sommes{plan.DebitFranc, plan.DebitEuro, plan.CreditFranc, plan.CreditEuro};
  m_sommesClasse.Ajoute(sommes);
  m_sommesSection.Ajoute(sommes);
  ColonnesEtat colonnes = ColonnesTotaux(sommes);
  if (!AfficheDouble()) {
    // The side is that of the Franc, in Euro too: the two may differ by a rounding.
    const f64 franc = SommeNette(sommes.creditFranc - sommes.debitFranc);
    const f64 euro = SommeNette(sommes.creditEuro - sommes.debitEuro);
    const bool debiteur = franc <= 0;
    colonnes[2] = debiteur ? MontantAnnee(-franc, -euro) : std::string();
    colonnes[3] = debiteur ? std::string() : MontantAnnee(franc, euro);
  }
  return EtatPrintf(RangeeBalance, {livres.CompteCourt(plan), EchappeEtat(fenlor::LitTexte(plan.Designation)),
                                    colonnes[0], colonnes[1], colonnes[2], colonnes[3]}) >= 0;
}

/// Ends the class in hand, if there is one.
bool CEtatBalanceDoc::FermeClasse() {
  if (!m_classe) return true;
  if (!EcritTotaux(TotalClasse, m_sommesClasse)) return false;
  if (m_classe == DerniereClasseBilan) {
    if (!EcritTotaux(TotalBilan, m_sommesSection)) return false;
    m_sommesSection = {};
  }
  m_sommes.Ajoute(m_sommesClasse);
  m_sommesClasse = {};
  return true;
}

}  // namespace fenlor
