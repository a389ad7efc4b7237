#include "assets/amortissements.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "core/btfiles.h"

namespace fenlor {

namespace {

/// The steps of one walk.
class Parcours {
 public:
  Parcours(CFenlorApp& app, CCalculAmortissements& calcul, u32 anneeDemandee, f64& cumulFranc, f64& cumulEuro)
      : m_app(app),
        m_calcul(calcul),
        m_immo(*calcul.Immo),
        m_anneeDemandee(anneeDemandee),
        m_cumulFranc(cumulFranc),
        m_cumulEuro(cumulEuro) {}

  void Periode(u32 annee, Date debut, Date fin) {
    Annuite(annee, EnJours() ? JoursAmortissement(debut, fin) : MoisAmortissement(debut, fin));
  }
  void AnneePleine(u32 annee) { Annuite(annee, Diviseur()); }

 private:
  bool EnJours() const { return m_immo.TypeAmortissement == Lineaire; }
  int Diviseur() const { return EnJours() ? 360 : 12; }

  f64 Brute(f64 base, f64 cumul, int numerateur) const {
    return CCalculAmortissements::CalculAnnuite(base, cumul, m_immo.TypeAmortissement, m_immo.TauxAnnuel,
                                                m_immo.Duree, m_ecoulees, numerateur, Diviseur());
  }
  /// Also what is left of an annuity that is infinite or no number. Not rounded again.
  static f64 Plafonne(f64 annuite, f64 reste) {
    return std::isfinite(annuite) && reste >= annuite ? annuite : reste;
  }

  void Annuite(u32 annee, int numerateur) {
    const f64 baseFranc = m_immo.ValeurAmortissableFranc, baseEuro = m_immo.ValeurAmortissableEuro;
    const f64 franc = Plafonne(Arrondi(Brute(baseFranc, m_cumulFranc, numerateur), m_calcul.DecimalesFranc),
                               baseFranc - m_cumulFranc);
    const f64 euro = Plafonne(Arrondi(Brute(baseEuro, m_cumulEuro, numerateur), m_calcul.DecimalesEuro),
                              baseEuro - m_cumulEuro);
    Amortissement reel{};
    reel.Numero = m_immo.Numero;
    reel.Annee = annee;
    if (m_app.Magasin.ReadAmortissements(reel) == 0) {
      reel.ReelFranc = franc;
      reel.ReelEuro = euro;
    }
    assert(reel.Numero == m_immo.Numero && reel.Annee == annee);
    m_cumulFranc += reel.ReelFranc;
    m_cumulEuro += reel.ReelEuro;
    ++m_ecoulees;
    m_calcul.OnAnnuite(annee, m_anneeDemandee, franc, euro, reel.ReelFranc, reel.ReelEuro);
  }

  CFenlorApp& m_app;
  CCalculAmortissements& m_calcul;
  const Immobilisation& m_immo;
  const u32 m_anneeDemandee;
  f64& m_cumulFranc;
  f64& m_cumulEuro;
  u32 m_ecoulees = 0;
};

}  // namespace

bool CCalculAmortissements::OnAnnuite(u32, u32, f64, f64, f64, f64) { return true; }

bool CCalculAmortissements::CalculAmortissements(Date date, f64& cumulFranc, f64& cumulEuro) {
  cumulFranc = cumulEuro = 0;
  CAmortissements corrections(m_app, m_app.PathCabinet);
  corrections.OpenFile();
  if (date == 0) date = m_app.Reglages.GetFinExercice();
  const Date achat = Immo->DateAchat, cession = Immo->DateCession;
  const Date limite = cession != 0 ? std::min(cession, date) : date;
  const u32 debut = Annee(achat), fin = Annee(limite);

  assert(Immo && (cession == 0 || limite <= cession));
  Parcours parcours(m_app, *this, Annee(date), cumulFranc, cumulEuro);
  parcours.Periode(debut, achat, debut == fin ? limite : FaitDate(30, 12, debut));
  for (u32 annee = debut + 1; annee < fin; ++annee) parcours.AnneePleine(annee);
  if (debut < fin) parcours.Periode(fin, FaitDate(1, 1, fin), limite);
  corrections.CloseFile();
  return true;
}

f64 CCalculAmortissements::CalculAnnuite(f64 base, f64 cumul, u8 type, f64 taux, f64 duree, u32 ecoulees,
                                         int numerateur, int denominateur) {
  assert(denominateur > 0);
  if (type != Degressif) return base * taux * 0.01 * numerateur / denominateur;
  const f64 restant = base - cumul;
  const f64 degressif = restant * taux * 0.01;
  const f64 lineaire = restant / (std::trunc(duree) - ecoulees);
  return (degressif > lineaire ? degressif : lineaire) * numerateur / denominateur;
}

}  // namespace fenlor
