#include "reports/etatbalance.h"

#include <cassert>
#include <utility>

#include "core/valeurs.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr char DerniereClasseBilan = '5';
constexpr unsigned RangEuro = 1, RangDouble = 2;  // of the column headings

}  // namespace

void CEtatBalanceDoc::BuildEtat() {
  m_classe.reset();
  m_classeEcrite = false;
  m_sommesClasse = m_sommesSection = m_sommes = {};
  if (!DemandeCriteres(FormeCriteres::Mouvements, TitreEtatBalance)) return;
  SetEtatEntete(EnteteBalance[(AfficheDouble() ? RangDouble : AnneeEuro() ? RangEuro : 0)]);
  SetEtatPied(PiedBalance);
  LivresEtat livres(App, *this);
  if (!livres.Ouvre()) return;
  Travail travail(*this, AvancementBalance, livres.NombreComptes());
  EcritEtat("\\H");
  livres.Comptes([&](const Plan& plan) {
    EcritCompte(livres, plan);
    travail.Pas();
  });
  FermeClasse();
  EcritTotaux(TotalExploitation, m_sommesSection);
  EcritTotaux(TotalBalance, m_sommes);
  EcritEtat("\\X");
}

void CEtatBalanceDoc::EcritCompte(const LivresEtat& livres, const Plan& plan) {
  if (m_classe != plan.Compte[0]) {
    FermeClasse();
    assert(!m_classeEcrite && m_sommesClasse == SommesEtat{});
    m_classe = plan.Compte[0];
  }
  const SommesEtat sommes{plan.DebitFranc, plan.DebitEuro, plan.CreditFranc, plan.CreditEuro};
  if (m_criteres.mouvementes && sommes == SommesEtat{}) return;
  if (!std::exchange(m_classeEcrite, true)) EtatPrintf(ClasseBalance, {plan.Compte[0]});
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
  EtatPrintf(RangeeBalance, {livres.CompteCourt(plan), EchappeEtat(fenlor::LitTexte(plan.Designation)),
                             colonnes[0], colonnes[1], colonnes[2], colonnes[3]});
}

/// Ends the class in hand, if there is one.
void CEtatBalanceDoc::FermeClasse() {
  if (!m_classe) return;
  if (std::exchange(m_classeEcrite, false)) EcritTotaux(TotalClasse, m_sommesClasse);
  if (m_classe == DerniereClasseBilan) {
    EcritTotaux(TotalBilan, m_sommesSection);
    m_sommesSection = {};
  }
  m_sommes.Ajoute(m_sommesClasse);
  m_sommesClasse = {};
}

}  // namespace fenlor
