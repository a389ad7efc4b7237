#include "reports/etatgrandlivre.h"

#include <cstring>
#include <utility>

#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr unsigned rangMontant = 2;  // of the column headings, behind those of credit and debit

}  // namespace

void CEtatGrandLivreDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::PeriodeEtAffichage, TitreGrandLivre)) return;
  SetEtatEntete(EnteteGrandLivre[(Montant() ? rangMontant : 0) + AfficheDouble()]);
  SetEtatPied(PiedEtatExtrait);
  LivresEtat livres(App, *this);
  if (!livres.Ouvre()) return;
  Travail travail(*this, AvancementGrandLivre, livres.NombreLignes());
  const bool montant = Montant();
  const FormatsCompte formats{RangeeGrandLivre[montant], TotalGrandLivre[montant],
                              TotalMoisGrandLivre[montant]};
  livres.Comptes([&](const Plan& plan) { EcritCompte(livres, travail, formats, plan); });
}

void CEtatGrandLivreDoc::EcritCompte(LivresEtat& livres, Travail& travail, const FormatsCompte& formats,
                                     const Plan& plan) {
  Tableau tableau;
  bool vide = true;
  const auto tete = [&] {
    if (std::exchange(vide, false)) EcritTete(livres, plan, MotNatureCompte[static_cast<unsigned>(Tva)]);
  };
  if (!m_criteres.mouvementes) tete();
  SommesEtat sommesMois;
  bool moisEcrit = false, dernier = true;
  const auto finMois = [&] {
    moisEcrit = true;
    EcritTotaux(formats.mois, std::exchange(sommesMois, {}));
  };
  livres.LignesDepuis(fenlor::LitTexte(plan.Compte), m_criteres.du, [&](const Line& l) {
    // The next line of the file ends the month, be it another account's or of a later day.
    if (tableau.mois != 0 && MoisDe(l.DateLigne) != tableau.mois) finMois();
    if (l.DateLigne > m_criteres.au || std::strncmp(l.Compte, plan.Compte, sizeof l.Compte) != 0)
      return dernier = false;
    tete();
    EcritLigne(formats.rangee, l, NomDeLigne(l), tableau);
    sommesMois.Ajoute(l);
    travail.Pas();
    return true;
  });
  if (dernier && moisEcrit) finMois();
  if (vide) return;
  EcritTotaux(formats.total, tableau.total);
  EcritEtat("\\X");
}

}  // namespace fenlor
