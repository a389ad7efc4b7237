#include "reports/totauxetat.h"

#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

ColonnesEtat CEtatTotaux::ColonnesTotaux(const SommesEtat& sommes) const {
  const f64 debitFranc = SommeNette(sommes.debitFranc), debitEuro = SommeNette(sommes.debitEuro);
  const f64 creditFranc = SommeNette(sommes.creditFranc), creditEuro = SommeNette(sommes.creditEuro);
  if (AfficheDouble())
    return {FormatFranc(debitFranc), FormatEuro(debitEuro), FormatFranc(creditFranc), FormatEuro(creditEuro)};
  const f64 solde = SommeNette(AnneeEuro() ? debitEuro - creditEuro : debitFranc - creditFranc);
  const std::string montant = solde > 0 ? MontantAnnee(solde, solde) : MontantAnnee(-solde, -solde);
  return {MontantAnnee(debitFranc, debitEuro), MontantAnnee(creditFranc, creditEuro),
          solde > 0 ? montant : std::string(), solde > 0 ? std::string() : montant};
}

std::array<std::string, 2> CEtatTotaux::ColonnesMontant(const SommesEtat& sommes) const {
  const f64 franc = SommeNette(sommes.creditFranc - sommes.debitFranc);
  const f64 euro = SommeNette(sommes.creditEuro - sommes.debitEuro);
  if (AfficheDouble()) return {FormatSoldeFranc(franc), FormatSoldeEuro(euro)};
  return {SoldeAnnee(franc, euro), std::string()};
}

bool CEtatTotaux::EcritTotaux(const FormatEtat& format, const SommesEtat& sommes) {
  const ColonnesEtat colonnes = ColonnesTotaux(sommes);
  return EtatPrintf(format, {colonnes[0], colonnes[1], colonnes[2], colonnes[3]}) >= 0;
}

f64 SommeNette(f64 somme) { return Arrondi2(somme); }

std::string_view TexteSur(std::string_view texte, std::string& tampon) {
  if (texte.find('\\') == std::string_view::npos) return texte;
  tampon = EchappeEtat(texte);
  return tampon;
}

const FichesComptes::Fiche& FichesComptes::Compte(std::string_view compte) {
  const auto connue = m_fiches.find(compte);
  if (connue != m_fiches.end()) return connue->second;
  const std::string longue(compte);
  Fiche fiche;
  fiche.court = EchappeEtat(CompacteTexte(m_app.Magasin.GetShortCompte(longue)));
  m_plan.ClearRec();
  PoseTexte(m_plan.Rec->Compte, longue);
  if (m_ouvert && m_plan.Find(0)) {
    fiche.rubrique = EchappeEtat(LitTexte(m_plan.Rec->Rubrique));
    fiche.designation = EchappeEtat(LitTexte(m_plan.Rec->Designation));
  }
  return m_fiches.emplace(longue, std::move(fiche)).first->second;
}

}  // namespace fenlor
