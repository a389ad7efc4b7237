#include "assets/detail.h"

#include <cassert>
#include <cmath>

#include "assets/annuites.h"
#include "assets/textes.h"
#include "core/btfiles.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/fiche.h"
#include "core/valeurs.h"
#include "store/indicescles.h"

namespace fenlor {

namespace {

/// Both currencies of what a person typed.
void PoseReel(f64 taux, bool euro, f64 reel, Amortissement& rec) {
  rec.ReelFranc = euro ? QVAPI::ConvertEuroToFranc(taux, reel) : reel;
  rec.ReelEuro = euro ? reel : QVAPI::ConvertFrancToEuro(taux, reel);
}

Refus ControleMontants(f64 taux, const DetailAmortissements& detail) {
  for (std::size_t i = 0; i < detail.lignes.size(); ++i) {
    Amortissement rec{};
    PoseReel(taux, detail.euro, detail.lignes[i].reel, rec);
    if (std::fabs(rec.ReelFranc) <= MontantMax && std::fabs(rec.ReelEuro) <= MontantMax) continue;
    const auto texte = [](f64 montant) { return FormatMontant(montant, 2); };
    return Refus(ErrMontantBornes, "reel",
                 {texte(detail.lignes[i].reel), texte(-MontantMax), texte(MontantMax)}, static_cast<int>(i));
  }
  return {};
}

/// One year of the list into the file; false: the store refused.
bool Enregistre(QVAPI& magasin, f64 taux, bool euro, u32 numero, const LigneDetail& ligne) {
  Amortissement rec{};
  rec.Numero = numero;
  rec.Annee = ligne.annee;
  const Position position = magasin.ReadAmortissements(rec);
  if (!ligne.Corrigee()) return position == 0 || magasin.DeleteAmortissements(position);
  if (position != 0 && Arrondi2(euro ? rec.ReelEuro : rec.ReelFranc) == ligne.reel) return true;
  PoseReel(taux, euro, ligne.reel, rec);
  return magasin.WriteAmortissements(rec);
}

}  // namespace

std::string DetailAmortissements::Texte(f64 montant) const {
  return euro ? FormatEuro(montant) : FormatFranc(montant);
}

Refus LitDetail(CFenlorApp& app, Position position, DetailAmortissements& detail) {
  CImmobilisations fichier(app, app.PathCabinet);
  if (!fichier.OpenFile() || !fichier.ReadRec(position)) return EchecFichier();
  if (fichier.Rec->ValeurAmortissableFranc == 0 && fichier.Rec->ValeurAmortissableEuro == 0)
    return Refus(ErrNonAmortissable);
  detail = {*fichier.Rec, app.Reglages.IsEuro(), {}};
  CCalculListAmortissements calcul(app, &detail.immo);
  f64 franc = 0, euro = 0;
  calcul.CalculAmortissements(0, franc, euro);
  // The amounts are what a person sees of them.
  for (const CCalculListAmortissements::Ligne& l : calcul.Lignes)
    detail.lignes.push_back({static_cast<u32>(TexteVersLong(l.annee)), TexteVersMontant(l.theorique, ','),
                             TexteVersMontant(l.reel, ',')});
  assert(!detail.lignes.empty());
  return {};
}

Refus EnregistreDetail(CFenlorApp& app, const DetailAmortissements& detail) {
  if (const Refus r = app.ControleEcriture()) return r;
  QVAPI& magasin = app.Magasin;
  const f64 taux = magasin.GetTauxEuro(magasin.Today());
  if (const Refus refus = ControleMontants(taux, detail)) return refus;
  CImmobilisations fichier(app, app.PathCabinet);
  CAmortissements corrections(app, app.PathCabinet);
  if (!fichier.OpenFile() || !corrections.OpenFile()) return EchecFichier();
  fichier.Rec->Numero = detail.immo.Numero;
  if (!fichier.Find(IndiceImmoNumero)) return Refus(ErrImmobilisationDisparue);
  QVAPI::Unite unite(magasin);
  for (LigneDetail ligne : detail.lignes) {
    ligne.reel = Arrondi2(ligne.reel);
    if (!Enregistre(magasin, taux, detail.euro, detail.immo.Numero, ligne)) return app.EchecMagasin();
  }
  return unite.Valide() ? Refus() : app.EchecMagasin();
}

}  // namespace fenlor
