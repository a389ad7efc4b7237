#include "reports/etatextrait.h"

#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr unsigned rangMontant = 2;  // behind those of credit and debit

}  // namespace

void CEtatExtraitDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::CompteEtPeriode, TitreEtatExtrait, MasqueTous)) return;
  const unsigned deux = AfficheDouble() ? 1 : 0;
  SetEtatEntete(EnteteEtatExtrait[(Montant() ? rangMontant : 0) + deux]);
  SetEtatPied(PiedEtatExtrait);
  LivresEtat livres(App, *this);
  if (!livres.Ouvre()) return;
  Travail travail(*this, AvancementEtatExtrait, livres.NombreLignes());
  // In one currency the formats of credit and debit have two columns: the balances behind them are left out.
  const unsigned rang = Montant() ? rangMontant : deux;
  const FormatsCompte formats{RangeeEtatExtrait[rang], TotalEtatExtrait[rang], ""};
  bool trouve = false;
  const auto compte = [&](const Plan& plan) {
    trouve = true;
    EcritCompte(livres, travail, formats, plan);
  };
  livres.Compte(m_criteres.compte, compte);
  if (!trouve) livres.Comptes(compte);
}

void CEtatExtraitDoc::EcritCompte(LivresEtat& livres, Travail& travail, const FormatsCompte& formats,
                                  const Plan& plan) {
  EcritTete(livres, plan, MotCompteTva);
  Tableau tableau;
  livres.LignesDuCompte(fenlor::LitTexte(plan.Compte), m_criteres.du, m_criteres.au, [&](const Line& l) {
    EcritLigne(formats.rangee, l, NomDeLigne(l), tableau);
    travail.Pas();
  });
  EcritTotaux(formats.total, tableau.total);
  EcritEtat("\\X");
}

}  // namespace fenlor
