#include "reports/etatimmobilisations.h"

#include <cassert>
#include <cmath>

#include "assets/annuites.h"
#include "assets/cessions.h"
#include "assets/textes.h"
#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "reports/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// One asset in one currency.
class Fiche {
 public:
  Fiche(const Immobilisation& immo, const CCalculPrintAmortissements& calcul, MontantDouble cumul, bool euro)
      : m_immo(immo), m_calcul(calcul), m_cumul(euro ? cumul.euro : cumul.franc), m_euro(euro) {}

  /// `nommee`: with date and designation.
  std::string Rangee(bool nommee) const {
    const f64 prix = m_euro ? m_immo.PrixEuro : m_immo.PrixFranc;
    const f64 tva = m_euro ? m_immo.TVAEuro : m_immo.TVAFranc;
    const f64 valeur = m_euro ? m_immo.ValeurAmortissableEuro : m_immo.ValeurAmortissableFranc;
    const f64 cession = m_euro ? m_immo.PrixCessionEuro : m_immo.PrixCessionFranc;
    const bool tenue = m_immo.DateCession == 0;
    std::string prixCession;
    if (!tenue) prixCession = EstRebutee(m_immo) ? Texte(MotRebut) : Montant(cession);
    const std::vector<std::string> cellules{nommee ? StrDate(m_immo.DateAchat) : "",
                                            nommee ? EchappeEtat(fenlor::LitTexte(m_immo.Designation)) : "",
                                            Montant(prix),
                                            Montant(tva),
                                            Montant(prix - tva),
                                            Montant(valeur),
                                            valeur != 0 ? FormatMontant(m_immo.TauxAnnuel, 2) : "",
                                            Montant(m_cumul),
                                            Montant(valeur - m_cumul),
                                            StrDate(m_immo.DateCession),
                                            prixCession,
                                            tenue ? "" : Montant(cession - valeur + m_cumul)};
    std::string rangee;
    RemplitEtat(rangee, Texte(RangeeEtatRegistre),
                std::vector<ArgumentEtat>(cellules.begin(), cellules.end()));
    return rangee;
  }

  /// The years, in lines of five.
  std::vector<std::string> Detail() const {
    constexpr std::size_t parAnnee = 3, parLigne = 5;
    constexpr unsigned debut = 54, finAnnee = 8, debutMontant = 9, finMontant = 17, largeur = 18;
    std::vector<std::string> lignes;
    const std::vector<i64>& entiers = m_calcul.Entiers;
    assert(entiers.size() % parAnnee == 0);
    const f64 unites = std::pow(10.0, m_euro ? m_calcul.DecimalesEuro : m_calcul.DecimalesFranc);
    for (std::size_t i = 0; i * parAnnee < entiers.size(); ++i) {
      if (i % parLigne == 0) lignes.push_back(i == 0 ? Texte(DetailEtatRegistre) : std::string());
      const unsigned colonne = debut + static_cast<unsigned>(i % parLigne) * largeur;
      const f64 montant = static_cast<f64>(entiers[i * parAnnee + (m_euro ? 2 : 1)]) / unites;
      const std::string texte = Montant(montant);
      const ArgumentEtat arguments[] = {
          colonne, colonne + finAnnee, entiers[i * parAnnee], colonne + debutMontant, colonne + finMontant,
          texte};
      RemplitEtat(lignes.back(), Texte(AnneeEtatRegistre), arguments);
    }
    for (std::string& ligne : lignes) ligne += '\n';
    return lignes;
  }

 private:
  /// Without the noise of the last digits, so that a difference of nothing prints as nothing.
  std::string Montant(f64 montant) const {
    const f64 net = Arrondi2(montant) + 0.0;
    return m_euro ? FormatEuro(net) : FormatFranc(net);
  }

  const Immobilisation& m_immo;
  const CCalculPrintAmortissements& m_calcul;
  const f64 m_cumul;
  const bool m_euro;
};

}  // namespace

void CEtatImmobilisationsDoc::BuildEtat() {
  PoseTitre(Texte(TitreRegistre));
  SetEtatPaysage(true);
  SetEtatEntete(EnteteEtatRegistre);
  SetEtatPied(PiedEtatRegistre);
  if (App.PathExercice.empty()) return Abandonne(Refus(ErrAucunExercice));
  EcritEtat("\\H");
  ParcourtBiens(SurArret::Garde, [this](u32, const Immobilisation& immo) { EcritBien(immo); });
  EcritEtat("\\X");
}

void CEtatImmobilisationsDoc::EcritBien(const Immobilisation& immo) {
  CCalculPrintAmortissements calcul(App, &immo);
  MontantDouble cumul;
  calcul.CalculAmortissements(App.Magasin.Today(), cumul.franc, cumul.euro);
  std::vector<std::string> lignes;
  const auto ajoute = [&](bool euro, bool nommee) {
    const Fiche fiche(immo, calcul, cumul, euro);
    lignes.push_back(fiche.Rangee(nommee));
    const std::vector<std::string> detail = fiche.Detail();
    lignes.insert(lignes.end(), detail.begin(), detail.end());
  };
  if (AfficheDouble()) ajoute(false, true);
  ajoute(AfficheDouble() || AnneeEuro(), !AfficheDouble());
  // An asset stays on one page, unless its years would fill one.
  constexpr std::size_t ensemble = 24;
  const bool coupe = lignes.size() > ensemble;
  std::string bloc;
  for (const std::string& ligne : lignes) bloc += ligne + (coupe ? "\\G" : "");
  assert(!bloc.empty());
  EcritEtat(bloc + "\\F");
}

}  // namespace fenlor
