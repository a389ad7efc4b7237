#include "assets/annuites.h"

#include <algorithm>
#include <cmath>

namespace fenlor {

CCalculListAmortissements::CCalculListAmortissements(CFenlorApp& app, const Immobilisation* immobilisation)
    : CCalculAmortissements(app, immobilisation), m_euro(app.Reglages.IsEuro()) {}

bool CCalculListAmortissements::OnAnnuite(u32 annee, u32, f64 theoriqueFranc, f64 theoriqueEuro,
                                          f64 reelFranc, f64 reelEuro) {
  const auto montant = [this](f64 franc, f64 euro) { return m_euro ? FormatEuro(euro) : FormatFranc(franc); };
  Lignes.push_back(
      {std::to_string(annee), montant(theoriqueFranc, theoriqueEuro), montant(reelFranc, reelEuro)});
  return true;
}

bool CCalculLineAmortissements::OnAnnuite(u32 annee, u32, f64, f64, f64 reelFranc, f64 reelEuro) {
  if (annee > m_anneeDroite || m_anneeDroite - annee >= NbColonnes) return true;
  Colonnes[m_anneeDroite - annee] = {reelFranc, reelEuro};
  return true;
}

bool CCalcul2035Amortissements::OnAnnuite(u32 annee, u32 anneeDemandee, f64 theoriqueFranc, f64 theoriqueEuro,
                                          f64, f64) {
  if (annee == anneeDemandee) {
    AnnuiteFranc += theoriqueFranc;
    AnnuiteEuro += theoriqueEuro;
  }
  if (annee <= anneeDemandee) {
    CumulFranc += theoriqueFranc;
    CumulEuro += theoriqueEuro;
  }
  return true;
}

bool CCalculEtatAmortissements::OnAnnuite(u32 annee, u32 anneeDemandee, f64, f64, f64 reelFranc,
                                          f64 reelEuro) {
  if (annee > anneeDemandee) return true;
  const bool deLAnnee = annee == anneeDemandee;
  (deLAnnee ? AnnuiteFranc : AnterieurFranc) += reelFranc;
  (deLAnnee ? AnnuiteEuro : AnterieurEuro) += reelEuro;
  return true;
}

bool CCalculPrintAmortissements::OnAnnuite(u32 annee, u32 anneeDemandee, f64, f64, f64 reelFranc,
                                           f64 reelEuro) {
  if (annee > anneeDemandee || reelFranc == 0) return true;
  const auto entier = [](f64 montant, int decimales) {
    constexpr f64 bord = 9e18;
    const f64 echelle = std::pow(10.0, std::clamp(decimales, 0, 5));
    const f64 unites = std::trunc(Arrondi(montant, decimales) * echelle);
    return std::isnan(unites) ? i64{0} : static_cast<i64>(std::clamp(unites, -bord, bord));
  };
  Entiers.insert(Entiers.end(),
                 {i64{annee}, entier(reelFranc, DecimalesFranc), entier(reelEuro, DecimalesEuro)});
  return true;
}

bool CCalculPrintPMV::OnAnnuite(u32 annee, u32 anneeDemandee, f64 theoriqueFranc, f64 theoriqueEuro, f64,
                                f64) {
  if (annee > anneeDemandee) return true;
  CumulFranc += theoriqueFranc;
  CumulEuro += theoriqueEuro;
  return true;
}

}  // namespace fenlor
