#include "reports/etatextrait.h"

#include "core/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr unsigned rangMontant = 2;  // behind those of credit and debit

}  // namespace

/// Looked up once a report. In one currency the formats of credit and debit have two columns: the balances
/// behind them are left out.
struct CEtatExtraitDoc::Formats {
  explicit Formats(unsigned rang) : rangee(RangeeEtatExtrait + rang), total(TotalEtatExtrait + rang) {}
  FormatEtat rangee, total;
};

bool CEtatExtraitDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::CompteEtPeriode, TitreEtatExtrait, MasqueTous)) return false;
  const unsigned deux = AfficheDouble() ? 1 : 0;
  SetEtatEntete(EnteteEtatExtrait + (Montant() ? rangMontant : 0) + deux);
  SetEtatPied(PiedEtatExtrait);
  LivresEtat livres(App);
  if (!livres.Ouvre()) return false;
  Travail travail(*this, AvancementEtatExtrait, livres.NombreLignes());
  const Formats formats(Montant() ? rangMontant : deux);
  bool trouve = false, suit = true;
  const auto compte = [&](const Plan& plan) {
    trouve = true;
    return suit = EcritCompte(livres, travail, formats, plan);
  };
  return livres.Compte(m_criteres.compte, compte) && (trouve || livres.Comptes(compte)) && suit;
}

bool CEtatExtraitDoc::EcritCompte(LivresEtat& livres, Travail& travail, const Formats& formats,
                                  const Plan& plan) {
  if (!EcritTete(plan, MotCompteTva)) return false;
  SommesEtat sommes, total;
  Date precedente = 0;
  bool suit = true;
  const auto ligne = [&](const Line& l) {
    if (precedente != 0 && MoisDe(precedente) != MoisDe(l.DateLigne)) suit = EcritEtat("\\F") >= 0;
    precedente = l.DateLigne;
    suit = suit && EcritRangee(formats.rangee, l, sommes) && travail.Pas();
    total.Ajoute(sommes);
    return suit;
  };
  return livres.LignesDuCompte(fenlor::LitTexte(plan.Compte), m_criteres.du, m_criteres.au, ligne) && suit &&
         EcritSommes(formats.total, total) && EcritEtat("\\X") >= 0;
}

}  // namespace fenlor
