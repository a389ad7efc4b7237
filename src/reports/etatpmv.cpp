#include "reports/etatpmv.h"

#include <cassert>
#include <cmath>

#include "assets/annuites.h"
#include "core/valeurs.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr int premiereAnneeEnEuro = 1999;

MontantDouble Entier(const MontantDouble& montant) {
  return {std::trunc(montant.franc), std::trunc(montant.euro)};
}

}  // namespace

bool CEtatPMVDoc::EnEuroAussi() const { return TexteVersEntier(App.NomExercice) >= premiereAnneeEnEuro; }
bool CEtatPMVDoc::EnFrancAussi() const { return !EnEuroAussi() || AfficheDouble(); }

void CEtatPMVDoc::BuildEtat() {
  m_total = {};
  if (!DebuteAnnexe(TitreEtatPMV, EnteteEtatPMV, PeriodeEtatBiens[1])) return;
  ParcourtBiens(SurArret::Abandonne, [this](u32 rang, const Immobilisation& immo) {
    if (immo.DateCession > m_criteres.du && immo.DateCession <= m_criteres.au) EcritCession(rang, immo);
  });
  EcritTotal();
  EcritEtat("\\X");
}

void CEtatPMVDoc::EcritCession(u32 rang, const Immobilisation& immo) {
  assert(rang > 0 && immo.DateCession != 0);
  CCalculPrintPMV calcul(App, &immo);
  MontantDouble reel;
  calcul.CalculAmortissements(m_criteres.au, reel.franc, reel.euro);
  const PlusValue pv = CalculPlusValue(immo, {calcul.CumulFranc, calcul.CumulEuro}, PartageEuro::ParLuiMeme);
  m_total.court += Entier(pv.court);
  m_total.aLongTerme += Entier(pv.aLongTerme);

  const std::string designation = EchappeEtat(fenlor::LitTexte(immo.Designation));
  const std::string date = StrDate(immo.DateCession);
  const bool vendue = immo.Rebut == 0;
  std::string lignes;
  if (EnFrancAussi())
    lignes = Rempli(RangeeEtatPMV, {rang, designation, date, vendue ? EnFranc(immo.PrixCessionFranc) : "",
                                    EnFranc(pv.court.franc), EnFranc(pv.aLongTerme.franc)});
  else
    lignes = Rempli(DesignationEtatPMV, {rang, designation, date});
  if (EnEuroAussi())
    lignes += Rempli(RangeeEuroPMV, {vendue ? EnEuro(immo.PrixCessionEuro) : "", EnEuro(pv.court.euro),
                                     EnEuro(pv.aLongTerme.euro)});
  EcritEtat(lignes + "\n");
}

void CEtatPMVDoc::EcritTotal() {
  std::string lignes = Texte(MotTotalPMV);
  if (EnFrancAussi())
    lignes += Rempli(TotalPMV[0], {EnFranc(m_total.court.franc), EnFranc(m_total.aLongTerme.franc)});
  if (EnEuroAussi())
    lignes += Rempli(TotalPMV[1], {EnEuro(m_total.court.euro), EnEuro(m_total.aLongTerme.euro)});
  EcritEtat(lignes);
}

}  // namespace fenlor
