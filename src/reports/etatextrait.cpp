#include "reports/etatextrait.h"

#include <cassert>
#include <utility>

#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr unsigned rangMontant = 2;  // behind those of credit and debit

}  // namespace

void CEtatExtraitDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::CompteEtPeriode, TitreEtatExtrait, MasqueTous)) return;
  const unsigned deux = AfficheDouble() ? 1 : 0;
  const bool progressif = m_criteres.soldeProgressif;
  SetEtatEntete(progressif ? EnteteEtatSolde[Montant()]
                           : EnteteEtatExtrait[(Montant() ? rangMontant : 0) + deux]);
  SetEtatPied(PiedEtatExtrait);
  LivresEtat livres(App, *this);
  if (!livres.Ouvre()) return;
  Travail travail(*this, AvancementEtatExtrait, livres.NombreLignes());
  // In one currency the formats of credit and debit have two columns: the balances behind them are left out.
  const unsigned rang = Montant() ? rangMontant : deux;
  assert(rang < std::size(RangeeEtatExtrait) && rang < std::size(TotalEtatExtrait));
  const FormatsCompte formats{progressif ? RangeeEtatSolde[Montant()] : RangeeEtatExtrait[rang],
                              progressif ? TotalEtatSolde[Montant()] : TotalEtatExtrait[rang], ""};
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
  Tableau tableau;
  bool vide = true;
  const auto tete = [&] {
    if (!std::exchange(vide, false)) return;
    EcritTete(livres, plan, MotCompteTva);
    if (m_criteres.soldeProgressif) Reporte(livres, plan);
  };
  if (!m_criteres.mouvementes) tete();
  livres.LignesDuCompte(fenlor::LitTexte(plan.Compte), m_criteres.du, m_criteres.au, [&](const Line& l) {
    tete();
    Ajoute(l);
    EcritLigne(formats.rangee, l, NomDeLigne(l), tableau);
    travail.Pas();
  });
  if (vide) return;
  EcritTotaux(formats.total, tableau.total);
  EcritEtat("\\X");
}

void CEtatExtraitDoc::Ajoute(const Line& ligne) {
  m_soldeFranc += ligne.Sens ? ligne.MontantFranc : -ligne.MontantFranc;
  m_soldeEuro += ligne.Sens ? ligne.MontantEuro : -ligne.MontantEuro;
}

/// What the account brings along: its initial balance, and what was before the period.
void CEtatExtraitDoc::Reporte(LivresEtat& livres, const Plan& plan) {
  m_soldeFranc = plan.SoldeInitialFranc;
  m_soldeEuro = plan.SoldeInitialEuro;
  if (m_criteres.du > 1)
    livres.LignesDuCompte(fenlor::LitTexte(plan.Compte), 1, m_criteres.du - 1,
                          [this](const Line& ligne) { Ajoute(ligne); });
  const std::string report = SoldeAnnee(SommeNette(m_soldeFranc), SommeNette(m_soldeEuro));
  if (!report.empty()) EtatPrintf(ReportEtatSolde, {report});
}

ColonnesEtat CEtatExtraitDoc::Colonnes(const SommesEtat& sommes) const {
  if (!m_criteres.soldeProgressif) return CEtatDeCompte::Colonnes(sommes);
  const std::string solde = SoldeAnnee(SommeNette(m_soldeFranc), SommeNette(m_soldeEuro));
  if (Montant())
    return {SoldeAnnee(SommeNette(sommes.creditFranc - sommes.debitFranc),
                       SommeNette(sommes.creditEuro - sommes.debitEuro)),
            solde, "", ""};
  return {MontantAnnee(SommeNette(sommes.debitFranc), SommeNette(sommes.debitEuro)),
          MontantAnnee(SommeNette(sommes.creditFranc), SommeNette(sommes.creditEuro)), solde, ""};
}

}  // namespace fenlor
