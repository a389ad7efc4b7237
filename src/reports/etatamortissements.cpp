#include "reports/etatamortissements.h"

#include <cassert>

#include "core/valeurs.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

void CEtatAmortissementsDoc::BuildEtat() {
  m_valeurs = m_anterieurs = m_annee = {};
  if (!DebuteAnnexe(TitreEtatAmortissements, EnteteEtatAmortissements, PeriodeEtatBiens[0])) return;
  ParcourtBiens(SurArret::Garde, [this](u32 rang, const Immobilisation& immo) { EcritBien(rang, immo); });
  EcritTotal();
  EcritEtat("\\X");
}

void CEtatAmortissementsDoc::EcritBien(u32 rang, const Immobilisation& immo) {
  assert(rang > 0);
  const bool amortissable = immo.ValeurAmortissableFranc != 0 || immo.ValeurAmortissableEuro != 0;
  CCalculEtatAmortissements calcul(App, &immo);
  if (amortissable) {
    f64 franc = 0, euro = 0;
    calcul.CalculAmortissements(m_criteres.au, franc, euro);
  }
  m_valeurs += {immo.ValeurAmortissableFranc, immo.ValeurAmortissableEuro};
  m_anterieurs += {calcul.AnterieurFranc, calcul.AnterieurEuro};
  m_annee += {calcul.AnnuiteFranc, calcul.AnnuiteEuro};

  const std::string designation = EchappeEtat(fenlor::LitTexte(immo.Designation));
  const std::string date = StrDate(immo.DateAchat);
  const std::string taux = amortissable ? FormatMontant(immo.TauxAnnuel, 2) : std::string();
  const auto premiere = [&](std::string (*ecrit)(f64), bool euro) {
    return Rempli(RangeeEtatAmortissements,
                  {rang, designation, date, ecrit(euro ? immo.PrixEuro : immo.PrixFranc),
                   ecrit(euro ? immo.TVAEuro : immo.TVAFranc),
                   ecrit(euro ? immo.ValeurAmortissableEuro : immo.ValeurAmortissableFranc), taux,
                   ecrit(euro ? calcul.AnterieurEuro : calcul.AnterieurFranc),
                   ecrit(euro ? calcul.AnnuiteEuro : calcul.AnnuiteFranc)});
  };
  const bool euroSeul = !AfficheDouble() && AnneeEuro();
  std::string lignes = euroSeul ? premiere(EnEuro, true) : premiere(EnFranc, false);
  if (AfficheDouble())
    lignes += Rempli(SecondeRangeeAmortissements, {"", "", EnEuro(immo.PrixEuro), EnEuro(immo.TVAEuro),
                                                   EnEuro(immo.ValeurAmortissableEuro), taux,
                                                   EnEuro(calcul.AnterieurEuro), EnEuro(calcul.AnnuiteEuro)});
  EcritEtat(lignes + Rempli(FiletEtatBiens, {1}));
}

void CEtatAmortissementsDoc::EcritTotal() {
  std::string lignes = Texte(MotTotalAmortissements);
  if (AfficheDouble() || !AnneeEuro())
    lignes += Rempli(TotalAmortissements[0],
                     {EnFranc(m_valeurs.franc), EnFranc(m_anterieurs.franc), EnFranc(m_annee.franc)});
  if (AfficheDouble() || AnneeEuro())
    lignes += Rempli(TotalAmortissements[1],
                     {EnEuro(m_valeurs.euro), EnEuro(m_anterieurs.euro), EnEuro(m_annee.euro)});
  EcritEtat(lignes);
}

}  // namespace fenlor
