#include "assets/plusvalues.h"

#include <algorithm>
#include <cassert>

#include "assets/annuites.h"
#include "core/btfiles.h"

namespace fenlor {

namespace {

constexpr int AnneesCourtTerme = 2;

bool ToutACourtTerme(f64 valeur, f64 gain, f64 cumul) { return valeur < 0 || !(gain > cumul); }

void Partage(f64 gain, f64 cumul, bool toutACourtTerme, f64& court, f64& aLongTerme) {
  court = toutACourtTerme ? gain : cumul;
  aLongTerme = toutACourtTerme ? 0 : gain - cumul;
}

f64 Positif(f64 montant) { return montant > 0 ? montant : 0; }

}  // namespace

PlusValue CalculPlusValue(const Immobilisation& immo, MontantDouble cumul, PartageEuro partage) {
  const MontantDouble gain{immo.PrixCessionFranc - immo.ValeurAmortissableFranc + cumul.franc,
                           immo.PrixCessionEuro - immo.ValeurAmortissableEuro + cumul.euro};
  if (immo.DateCession < DecaleAnnees(immo.DateAchat, AnneesCourtTerme)) return {gain, {}};
  if (immo.ValeurAmortissableFranc == 0) return {{}, gain};
  const bool franc = ToutACourtTerme(immo.ValeurAmortissableFranc, gain.franc, cumul.franc);
  const bool euro = partage == PartageEuro::CommeLeFranc
                        ? franc
                        : ToutACourtTerme(immo.ValeurAmortissableEuro, gain.euro, cumul.euro);
  PlusValue pv;
  Partage(gain.franc, cumul.franc, franc, pv.court.franc, pv.aLongTerme.franc);
  Partage(gain.euro, cumul.euro, euro, pv.court.euro, pv.aLongTerme.euro);
  return pv;
}

MontantDouble SommesImmobilisations::PlusValues() const {
  assert(Positif(court.franc) == 0 || Positif(-court.franc) == 0);
  return {Positif(court.franc), Positif(court.euro)};
}
MontantDouble SommesImmobilisations::MoinsValues() const {
  return {Positif(-court.franc), Positif(-court.euro)};
}

bool CalculSommesImmobilisations(CFenlorApp& app, SommesImmobilisations& sommes) {
  sommes = {};
  CImmobilisations fichier(app, app.PathCabinet);
  if (!fichier.OpenFile()) return false;
  // Held open over the walk, so that no asset opens it anew.
  CAmortissements corrections(app, app.PathCabinet);
  corrections.OpenFile();
  const Date debut = app.Reglages.GetDebutExercice(), fin = app.Reglages.GetFinExercice();
  const bool lu = app.Magasin.QVParcours(fichier.NumFichier, [&](Position, const void* rec) {
    const Immobilisation immo = *static_cast<const Immobilisation*>(rec);
    CCalcul2035Amortissements calcul(app, &immo);
    MontantDouble reel;
    calcul.CalculAmortissements(fin, reel.franc, reel.euro);
    sommes.amortissements += {calcul.AnnuiteFranc, calcul.AnnuiteEuro};
    sommes.valeurs += {immo.ValeurAmortissableFranc, immo.ValeurAmortissableEuro};
    if (immo.DateCession != 0 && immo.DateCession >= debut && immo.DateCession <= fin) {
      const PlusValue pv = CalculPlusValue(immo, {calcul.CumulFranc, calcul.CumulEuro});
      sommes.court += pv.court;
      sommes.aLongTerme += pv.aLongTerme;
    }
    app.Boite.Step();
    return !app.Boite.IsAborted();
  });
  corrections.CloseFile();
  fichier.CloseFile();
  if (!lu) {
    sommes = {};
    fichier.ErreurLecture();
  }
  return lu;
}

}  // namespace fenlor
