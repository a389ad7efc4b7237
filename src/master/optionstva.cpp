#include "master/optionstva.h"

#include <algorithm>
#include <cassert>
#include <cstdio>

#include "core/cles.h"
#include "core/erreurs.h"
#include "core/valeurs.h"
#include "master/comptes.h"
#include "master/textes.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

bool Porte(const std::vector<LigneTva>& lignes, const std::string& compte) {
  return std::any_of(lignes.begin(), lignes.end(), [&](const LigneTva& l) { return l.compte == compte; });
}

bool Trouve(CPlan& plan, const std::string& compte) {
  assert(!compte.empty());
  plan.ClearRec();
  PoseTexte(plan.Rec->Compte, compte);
  return plan.Find(IndicePlanCompte);
}

/// Held by an account that is no VAT account: listing it would take it over.
bool PorteAilleurs(CPlan& plan, const std::string& compte) {
  return Trouve(plan, compte) && plan.Rec->Type != Tva;
}

Refus RefuseMouvements(CFenlorApp& app, const LigneTva& ligne, const TexteFixe& erreur) {
  if (ligne.position == 0) return {};
  CPlan plan(app, app.PathExercice);
  if (plan.OpenFile() && Trouve(plan, ligne.compte) && ADesMouvements(*plan.Rec))
    return Refus(erreur, "liste");
  return {};
}

bool CodePris(CPlan& plan, const std::string& code) {
  assert(!code.empty());
  plan.ClearRec();
  PoseTexte(plan.Rec->Code, code);
  return plan.Browse(IndicePlanCode) && CompareSansCasse(CompacteTexte(LitTexte(plan.Rec->Code)), code) == 0;
}

std::string CodeLibre(CPlan& plan) {
  for (unsigned n = 1;; ++n) {
    char nombre[16];
    std::snprintf(nombre, sizeof nombre, "%02u", n);
    std::string code = TexteFormat(FormatCodeTva, {nombre});
    if (!CodePris(plan, code)) return code;
  }
}

bool Cree(CPlan& plan, const LigneTva& ligne) {
  assert(!ligne.compte.empty());
  const std::string code = CodeLibre(plan);
  plan.ClearRec();
  PoseTexte(plan.Rec->Compte, ligne.compte);
  PoseTexte(plan.Rec->Code, code);
  PoseTexte(plan.Rec->Designation, TexteFormat(FormatDesignationTva, {FormatMontant(ligne.taux, 2)}));
  plan.Rec->Type = Tva;
  plan.Rec->TauxTVA = ligne.taux;
  plan.Rec->PartPro = 100;
  return plan.Add();
}

Refus SupprimeAbsents(CFenlorApp& app, CPlan& plan, const std::vector<LigneTva>& lignes, unsigned& comptes) {
  for (const LigneTva& ancien : LitComptesTva(app)) {
    if (Porte(lignes, ancien.compte)) continue;
    if (!Trouve(plan, ancien.compte))
      return Refus(ErrMagasin, "", {app.Magasin.QVErreurTexte(ErrCleAbsente)});
    if (ADesMouvements(*plan.Rec)) return Refus(ErrSuppressionTvaMouvementee);
    if (!app.Magasin.DeletePlan(plan.GetPos())) return app.EchecMagasin();
    ++comptes;
  }
  return {};
}

Refus PoseLigne(CPlan& plan, const LigneTva& ligne, unsigned& comptes) {
  if (!Trouve(plan, ligne.compte)) {
    ++comptes;
    return Cree(plan, ligne) ? Refus() : EchecFichier();
  }
  if (plan.Rec->Type != Tva) return Refus(ErrNumeroExistant);
  if (plan.Rec->TauxTVA == ligne.taux) return {};
  if (ADesMouvements(*plan.Rec)) return Refus(ErrModificationTvaMouvementee);
  plan.Rec->TauxTVA = ligne.taux;
  ++comptes;
  return plan.Update() ? Refus() : EchecFichier();
}

}  // namespace

std::vector<LigneTva> LitComptesTva(CFenlorApp& app) {
  std::vector<LigneTva> lignes;
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return lignes;
  plan.ClearRec();
  plan.Rec->Type = Tva;
  for (bool trouve = plan.Browse(IndicePlanType); trouve && plan.Rec->Type == Tva;
       trouve = plan.Next(IndicePlanType))
    lignes.push_back({plan.GetPos(), LitTexte(plan.Rec->Compte), plan.Rec->TauxTVA});
  return lignes;
}

std::string ProposeCompteTva(CFenlorApp& app, const std::vector<LigneTva>& lignes) {
  CPlan plan(app, app.PathExercice);
  const bool ouvert = plan.OpenFile();
  return ProposeNumero(app, CleRadicalTva, RadicalTvaDefaut, [&](const std::string& compte) {
    return Porte(lignes, compte) || (ouvert && PorteAilleurs(plan, compte));
  });
}

Refus ControleNumeroTva(CFenlorApp& app, const std::vector<LigneTva>& lignes, const std::string& compte) {
  CPlan plan(app, app.PathExercice);
  if (Porte(lignes, compte) || (plan.OpenFile() && PorteAilleurs(plan, compte)))
    return Refus(ErrNumeroExistant, "compte");
  return {};
}

Refus ControleAjoutTva(CFenlorApp& app, const std::vector<LigneTva>& lignes, const LigneTva& saisie) {
  if (saisie.compte.empty()) return Refus(ErrNumeroTvaObligatoire, "compte");
  const Refus numero = ControleNumeroTva(app, lignes, saisie.compte);
  return numero ? numero : ControleTauxTva(saisie.taux);
}

Refus ControleTauxTva(f64 taux) {
  if (!(Arrondi2(taux) > 0)) return Refus(ErrTauxTvaObligatoire, "taux");
  return {};
}

Refus ControleModificationTva(CFenlorApp& app, const LigneTva& ligne) {
  return RefuseMouvements(app, ligne, ErrModificationTvaMouvementee);
}

Refus ControleSuppressionTva(CFenlorApp& app, const LigneTva& ligne) {
  return RefuseMouvements(app, ligne, ErrSuppressionTvaMouvementee);
}

Refus AppliqueComptesTva(CFenlorApp& app, const std::vector<LigneTva>& lignes, unsigned& comptes) {
  comptes = 0;
  if (app.Reglages.IsFige()) return {};
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return EchecFichier();
  QVAPI::Unite unite(app.Magasin);
  unsigned changes = 0;
  if (const Refus refus = SupprimeAbsents(app, plan, lignes, changes)) return refus;
  for (const LigneTva& ligne : lignes)
    if (const Refus refus = PoseLigne(plan, ligne, changes)) return refus;
  if (!unite.Valide()) return app.EchecMagasin();
  comptes = changes;
  return {};
}

}  // namespace fenlor
