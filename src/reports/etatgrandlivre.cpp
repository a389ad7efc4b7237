#include "reports/etatgrandlivre.h"

#include <cstring>
#include <utility>

#include "core/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr unsigned rangMontant = 2;  // of the column headings, behind those of credit and debit
constexpr u32 sansMois = 0;

}  // namespace

/// Looked up once a report.
struct CEtatGrandLivreDoc::Formats {
  explicit Formats(bool montant)
      : rangee(RangeeGrandLivre + montant),
        mois(TotalMoisGrandLivre + montant),
        total(TotalGrandLivre + montant) {}
  FormatEtat rangee, mois, total;
};

bool CEtatGrandLivreDoc::BuildEtat() {
  if (!DemandeCriteres(FormeCriteres::PeriodeEtAffichage, TitreGrandLivre)) return false;
  SetEtatEntete(EnteteGrandLivre + (Montant() ? rangMontant : 0) + AfficheDouble());
  SetEtatPied(PiedEtatExtrait);
  LivresEtat livres(App);
  if (!livres.Ouvre()) return false;
  Travail travail(*this, AvancementGrandLivre, livres.NombreLignes());
  const Formats formats(Montant());
  bool suit = true;
  const auto compte = [&](const Plan& plan) { return suit = EcritCompte(livres, travail, formats, plan); };
  return livres.Comptes(compte) && suit;
}

bool CEtatGrandLivreDoc::EcritCompte(LivresEtat& livres, Travail& travail, const Formats& formats,
                                     const Plan& plan) {
  if (!EcritTete(plan, MotNatureCompte + static_cast<unsigned>(Tva))) return false;
  SommesEtat sommes, sommesMois, total;
  u32 mois = sansMois;  // of the line last written
  bool moisEcrit = false, dernier = true, suit = true;
  const auto finMois = [&] {
    moisEcrit = true;
    return EcritSommes(formats.mois, std::exchange(sommesMois, {}));
  };
  const auto ligne = [&](const Line& l) {
    // The next line of the file ends the month, be it another account's or of a later day.
    const bool autreMois = mois != sansMois && MoisDe(l.DateLigne) != mois;
    if (autreMois && !(suit = finMois())) return false;
    if (l.DateLigne > m_criteres.au || std::strncmp(l.Compte, plan.Compte, sizeof l.Compte) != 0)
      return dernier = false;
    mois = MoisDe(l.DateLigne);
    if (autreMois && !(suit = EcritEtat("\\F") >= 0)) return false;
    suit = EcritRangee(formats.rangee, l, sommes) && travail.Pas();
    sommesMois.Ajoute(sommes);
    total.Ajoute(sommes);
    return suit;
  };
  return livres.LignesDepuis(fenlor::LitTexte(plan.Compte), m_criteres.du, ligne) && suit &&
         (!dernier || !moisEcrit || finMois()) && EcritSommes(formats.total, total) && EcritEtat("\\X") >= 0;
}

}  // namespace fenlor
