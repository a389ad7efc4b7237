#include "reports/totauxetat.h"

#include <algorithm>

#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

ColonnesEtat CEtatTotaux::ColonnesTotaux(const SommesEtat& sommes) const {
  if (AfficheDouble())
    return {FormatFranc(SommeNette(sommes.debitFranc)), FormatEuro(SommeNette(sommes.debitEuro)),
            FormatFranc(SommeNette(sommes.creditFranc)), FormatEuro(SommeNette(sommes.creditEuro))};
  const bool euro = AnneeEuro();
  const f64 debit = SommeNette(euro ? sommes.debitEuro : sommes.debitFranc);
  const f64 credit = SommeNette(euro ? sommes.creditEuro : sommes.creditFranc);
  const f64 solde = SommeNette(debit - credit);
  const auto montant = euro ? FormatEuro : FormatFranc;
  return {montant(debit), montant(credit), montant(std::max(solde, 0.0)), montant(std::max(-solde, 0.0))};
}

ColonnesEtat CEtatTotaux::ColonnesMontant(const SommesEtat& sommes) const {
  const f64 franc = SommeNette(sommes.creditFranc - sommes.debitFranc);
  const f64 euro = SommeNette(sommes.creditEuro - sommes.debitEuro);
  if (AfficheDouble()) return {FormatSoldeFranc(franc), FormatSoldeEuro(euro)};
  return {SoldeAnnee(franc, euro)};
}

ColonnesEtat CEtatTotaux::Colonnes(const SommesEtat& sommes) const {
  return Montant() ? ColonnesMontant(sommes) : ColonnesTotaux(sommes);
}

void CEtatTotaux::EcritTotaux(const FormatEtat& format, const SommesEtat& sommes) {
  const ColonnesEtat c = Colonnes(sommes);
  EtatPrintf(format, {c[0], c[1], c[2], c[3]});
}

void CEtatTotaux::EcritLigne(const FormatEtat& format, const Line& ligne, std::string_view nom,
                             Tableau& tableau) {
  const u32 mois = MoisDe(ligne.DateLigne);
  if (tableau.mois != 0 && tableau.mois != mois) EcritEtat("\\F");
  tableau.mois = mois;
  tableau.total.Ajoute(ligne);
  SommesEtat sommes;
  sommes.Ajoute(ligne);
  const ColonnesEtat c = Colonnes(sommes);
  EtatPrintf(format,
             {ligne.Ligne, StrDate(ligne.DateLigne), TexteSur(nom, m_tampon), c[0], c[1], c[2], c[3]});
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
  fiche.court = EchappeEtat(m_app.NumeroCourt(longue));
  m_plan.ClearRec();
  PoseTexte(m_plan.Rec->Compte, longue);
  if (m_ouvert && m_plan.Find(0)) {
    fiche.rubrique = EchappeEtat(LitTexte(m_plan.Rec->Rubrique));
    fiche.designation = EchappeEtat(LitTexte(m_plan.Rec->Designation));
  }
  return m_fiches.emplace(longue, std::move(fiche)).first->second;
}

}  // namespace fenlor
