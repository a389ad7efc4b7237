#include "master/optionstva.h"

#include <algorithm>
#include <cstdio>

#include "core/btfiles.h"
#include "core/cles.h"
#include "core/erreurs.h"
#include "core/valeurs.h"
#include "master/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 CleNumero = 0, CleCode = 1, CleType = 3;

bool Porte(const std::vector<LigneTva>& lignes, const std::string& compte) {
  return std::any_of(lignes.begin(), lignes.end(), [&](const LigneTva& l) { return l.compte == compte; });
}

bool Trouve(CPlan& plan, const std::string& compte) {
  plan.ClearRec();
  PoseTexte(plan.Rec->Compte, compte);
  return plan.Find(CleNumero);
}

/// Held by an account that is no VAT account: listing it would take it over.
bool PorteAilleurs(CPlan& plan, const std::string& compte) {
  return Trouve(plan, compte) && plan.Rec->Type != Tva;
}

bool AMouvements(const Plan& rec) {
  return rec.CreditFranc != 0 || rec.DebitFranc != 0 || rec.CreditEuro != 0 || rec.DebitEuro != 0;
}

ResultatOptions RefuseMouvements(CFenlorApp& app, const LigneTva& ligne, const TexteFixe& erreur) {
  if (ligne.position == 0) return {};
  CPlan plan(app, app.PathExercice);
  if (plan.OpenFile() && Trouve(plan, ligne.compte) && AMouvements(*plan.Rec)) return {erreur, "liste"};
  return {};
}

bool CodePris(CPlan& plan, const std::string& code) {
  plan.ClearRec();
  PoseTexte(plan.Rec->Code, code);
  return plan.Browse(CleCode) && CompareSansCasse(CompacteTexte(LitTexte(plan.Rec->Code)), code) == 0;
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

bool SupprimeAbsents(CFenlorApp& app, CPlan& plan, const std::vector<LigneTva>& lignes, unsigned& comptes) {
  for (const LigneTva& ancien : LitComptesTva(app)) {
    if (Porte(lignes, ancien.compte)) continue;
    if (!Trouve(plan, ancien.compte))
      return app.ReportErreur(ErrMagasin, {app.Magasin.QVErreurTexte(ErrCleAbsente)});
    if (AMouvements(*plan.Rec)) return app.ReportErreur(ErrSuppressionTvaMouvementee);
    if (!app.Magasin.DeletePlan(plan.GetPos()))
      return app.ReportErreur(ErrMagasin, {app.Magasin.QVErreurTexte(app.Magasin.QVFileErrorCode())});
    ++comptes;
  }
  return true;
}

bool PoseLigne(CFenlorApp& app, CPlan& plan, const LigneTva& ligne, unsigned& comptes) {
  if (!Trouve(plan, ligne.compte)) {
    ++comptes;
    return Cree(plan, ligne);
  }
  if (plan.Rec->Type != Tva) return app.ReportErreur(ErrNumeroExistant);
  if (plan.Rec->TauxTVA == ligne.taux) return true;
  if (AMouvements(*plan.Rec)) return app.ReportErreur(ErrModificationTvaMouvementee);
  plan.Rec->TauxTVA = ligne.taux;
  ++comptes;
  return plan.Update();
}

}  // namespace

std::vector<LigneTva> LitComptesTva(CFenlorApp& app) {
  std::vector<LigneTva> lignes;
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return lignes;
  plan.ClearRec();
  plan.Rec->Type = Tva;
  for (bool trouve = plan.Browse(CleType); trouve && plan.Rec->Type == Tva; trouve = plan.Next(CleType))
    lignes.push_back({plan.GetPos(), LitTexte(plan.Rec->Compte), plan.Rec->TauxTVA});
  return lignes;
}

std::string ProposeCompteTva(CFenlorApp& app, const std::vector<LigneTva>& lignes) {
  const std::string section = Texte(SecActivite), cle = Texte(CleRadicalTva);
  std::string radical = CompacteTexte(app.Reglages.LitIni(section, cle));
  if (radical.empty()) {
    radical = Texte(RadicalTvaDefaut);
    app.Reglages.EcritIni(section, cle, radical);
  }
  CPlan plan(app, app.PathExercice);
  const bool ouvert = plan.OpenFile();
  // A long radical leaves few digits; numbers repeat once they are cut at ten characters.
  constexpr unsigned dernier = 9999;
  for (unsigned n = 1; n <= dernier; ++n) {
    const std::string compte = QVAPI::GetLongCompte(radical + std::to_string(n));
    if (!Porte(lignes, compte) && !(ouvert && PorteAilleurs(plan, compte)))
      return CompacteTexte(app.Magasin.GetShortCompte(compte));
  }
  return {};
}

ResultatOptions ControleNumeroTva(CFenlorApp& app, const std::vector<LigneTva>& lignes,
                                  const std::string& compte) {
  CPlan plan(app, app.PathExercice);
  if (Porte(lignes, compte) || (plan.OpenFile() && PorteAilleurs(plan, compte)))
    return {ErrNumeroExistant, "compte"};
  return {};
}

ResultatOptions ControleAjoutTva(CFenlorApp& app, const std::vector<LigneTva>& lignes,
                                 const LigneTva& saisie) {
  if (saisie.compte.empty()) return {ErrNumeroTvaObligatoire, "compte"};
  const ResultatOptions numero = ControleNumeroTva(app, lignes, saisie.compte);
  return numero ? ControleTauxTva(saisie.taux) : numero;
}

ResultatOptions ControleTauxTva(f64 taux) {
  if (!(Arrondi2(taux) > 0)) return {ErrTauxTvaObligatoire, "taux"};
  return {};
}

ResultatOptions ControleModificationTva(CFenlorApp& app, const LigneTva& ligne) {
  return RefuseMouvements(app, ligne, ErrModificationTvaMouvementee);
}

ResultatOptions ControleSuppressionTva(CFenlorApp& app, const LigneTva& ligne) {
  return RefuseMouvements(app, ligne, ErrSuppressionTvaMouvementee);
}

ApplicationTva AppliqueComptesTva(CFenlorApp& app, const std::vector<LigneTva>& lignes) {
  ApplicationTva resultat;
  if (app.Reglages.IsExerciceCloture()) return {true, 0};
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return {};
  QVAPI::Unite unite(app.Magasin);
  if (!SupprimeAbsents(app, plan, lignes, resultat.comptes)) return {};
  for (const LigneTva& ligne : lignes)
    if (!PoseLigne(app, plan, ligne, resultat.comptes)) return {};
  resultat.fait = unite.Valide();
  if (!resultat.fait)
    app.ReportErreur(ErrMagasin, {app.Magasin.QVErreurTexte(app.Magasin.QVFileErrorCode())});
  return resultat.fait ? resultat : ApplicationTva{};
}

}  // namespace fenlor
