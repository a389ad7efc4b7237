#include "master/fraiskm.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "core/cles.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/fiche.h"
#include "core/textes.h"
#include "core/valeurs.h"
#include "master/lotreglages.h"
#include "master/textes.h"
#include "master/variables.h"
#include "store/modele.h"

namespace fenlor {

namespace {

constexpr f64 KmMax = 999999;
constexpr f64 TauxMax[] = {999.999, 99999.999, 99999.999};
constexpr int DecimalesTaux = 3;

/// Keys of the amounts of the scale in one currency.
struct ClesMonnaie {
  TexteFixe fixe;
  std::array<TexteFixe, 3> taux;
};
constexpr ClesMonnaie ClesDe(bool euro) {
  if (euro) return {CleKmFixeEuro, {CleKmTauxEuro[0], CleKmTauxEuro[1], CleKmTauxEuro[2]}};
  return {CleKmFixe, {CleKmTaux[0], CleKmTaux[1], CleKmTaux[2]}};
}

std::string Propre(const CFenlorApp& app, const TexteFixe& cle) {
  return app.Reglages.LitIniExercice({}, Texte(cle));
}
std::string Commun(const CFenlorApp& app, const TexteFixe& cle) {
  return app.Reglages.LitIni(Texte(SecFraisKm), Texte(cle));
}

f64 Nombre(const CFenlorApp& app, const std::string& texte) {
  return TexteVersMontant(texte, app.Reglages.SeparateurDecimal());
}

/// What the common section of new books holds.
std::string Defaut(const TexteFixe& cle) {
  Modele modele;
  ErreurModele erreur;
  if (LitModele(ModeleIntegre(), modele, erreur))
    for (const Profil::Changement& c : modele.reglages)
      if (c.section == Texte(SecFraisKm) && c.cle == Texte(cle)) return c.valeur.value_or(std::string());
  return {};
}

/// The two sections behind each other, or the common one alone. What is no number counts for nothing.
class Lecture {
 public:
  Lecture(const CFenlorApp& app, bool propre) : m_app(app), m_propre(propre) {}
  std::string Mot(const TexteFixe& cle) const {
    const std::string valeur = m_propre ? Propre(m_app, cle) : std::string();
    return EstVide(valeur) ? Commun(m_app, cle) : valeur;
  }
  std::string operator()(const TexteFixe& cle) const {
    const std::string propre = m_propre ? Propre(m_app, cle) : std::string();
    if (!EstVide(propre) && Lisible(propre)) return propre;
    const std::string commun = Commun(m_app, cle);
    return Lisible(commun) ? commun : Defaut(cle);
  }

 private:
  bool Lisible(const std::string& valeur) const {
    return Nombre(m_app, valeur) != 0 || NormeMontant(valeur, m_app.Reglages.SeparateurDecimal());
  }
  const CFenlorApp& m_app;
  bool m_propre;
};

void LitBareme(const Lecture& lit, bool euro, FicheFraisKm& fiche) {
  const ClesMonnaie cles = ClesDe(euro);
  fiche.compteur = Parametres::IsOui(lit.Mot(CleKmCompteur));
  fiche.borneInf = lit(CleKmBorneInf);
  fiche.borneSup = lit(CleKmBorneSup);
  fiche.fixe = lit(cles.fixe);
  for (std::size_t i = 0; i < cles.taux.size(); ++i) fiche.taux[i] = lit(cles.taux[i]);
}

int Kilometres(const CFenlorApp& app, const std::string& texte) {
  return static_cast<int>(std::clamp(Nombre(app, texte), 0.0, KmMax));
}

void TientKilometres(const CFenlorApp& app, std::string& texte) {
  texte = std::to_string(Kilometres(app, texte));
}

/// Zero is written, for a blank value would be taken from the common section.
std::string EcritNombre(const CFenlorApp& app, f64 valeur, int decimales) {
  return valeur == 0 ? "0" : FormatMontant(valeur, decimales, app.Reglages.SeparateurDecimal());
}

void TientDansLesLimites(const CFenlorApp& app, FicheFraisKm& fiche) {
  if (fiche.compteur) ChangeReleve(app, fiche);
  for (std::string* texte : {&fiche.kms, &fiche.borneInf, &fiche.borneSup}) TientKilometres(app, *texte);
  const f64 fixe = Nombre(app, fiche.fixe);
  fiche.fixe = EcritNombre(app, fixe, fixe == std::trunc(fixe) ? 0 : 2);
  for (std::size_t i = 0; i < fiche.taux.size(); ++i) fiche.taux[i] = FormatTauxKm(app, fiche.taux[i], i);
}

void PoseDansLesDeux(const CFenlorApp& app, LotReglages& lot, const TexteFixe& cle,
                     const std::string& valeur) {
  lot.Pose(app.NomExercice, Texte(cle), valeur);
  lot.Pose(Texte(SecFraisKm), Texte(cle), valeur);
}

LotReglages Changements(CFenlorApp& app, const FicheFraisKm& fiche) {
  LotReglages lot(app);
  PoseDansLesDeux(app, lot, CleKmCompteur, Texte(fiche.compteur ? MotOui : MotNon));
  if (fiche.compteur) {
    lot.Pose(app.NomExercice, Texte(CleKmAncien), fiche.ancien);
    lot.Pose(app.NomExercice, Texte(CleKmDernier), fiche.dernier);
    lot.Pose(Texte(SecFraisKm), Texte(CleKmAncien), fiche.dernier);
  }
  lot.Pose(app.NomExercice, Texte(CleKmDistance), fiche.kms);
  const ClesMonnaie cles = ClesDe(app.Reglages.IsEuro());
  PoseDansLesDeux(app, lot, CleKmBorneInf, fiche.borneInf);
  PoseDansLesDeux(app, lot, CleKmBorneSup, fiche.borneSup);
  PoseDansLesDeux(app, lot, cles.fixe, fiche.fixe);
  for (std::size_t i = 0; i < cles.taux.size(); ++i) PoseDansLesDeux(app, lot, cles.taux[i], fiche.taux[i]);
  lot.Pose(app.NomExercice, Texte(CleFraisKm), Texte(MotOui));
  return lot;
}

Refus Ecrit(CFenlorApp& app, LotReglages& lot) { return lot.Ecrit() ? Refus() : app.EchecReglages(); }

/// The entries that the allowance replaces, when the user wants them gone.
bool FautSupprimerEcritures(CFenlorApp& app) {
  const std::string variable = Texte(VariableFraisKm);
  const u32 nombre = CompteEcrituresVariable(app, variable);
  return nombre > 0 && app.MessageId(BoutonsOuiNon | IconeAttention, QuestionEcrituresVariable,
                                     {std::to_string(nombre), variable.substr(1)}) == RepOui;
}

}  // namespace

FicheFraisKm LitFraisKm(const CFenlorApp& app) {
  FicheFraisKm fiche;
  fiche.enregistre = app.Reglages.IsFraisKm();
  const Lecture lit(app, fiche.enregistre);
  LitBareme(lit, app.Reglages.IsEuro(), fiche);
  const std::string ancien = fiche.enregistre ? Propre(app, CleKmAncien) : std::string();
  fiche.ancien = lit(CleKmAncien);
  fiche.dernier = EstVide(ancien) ? fiche.ancien : Propre(app, CleKmDernier);
  fiche.kms = fiche.enregistre ? lit(CleKmDistance) : "0";
  return fiche;
}

void ChangeReleve(const CFenlorApp& app, FicheFraisKm& fiche) {
  const int ancien = Kilometres(app, fiche.ancien);
  const int dernier = std::max(ancien, Kilometres(app, fiche.dernier));
  assert(dernier >= ancien && ancien >= 0);
  fiche.ancien = std::to_string(ancien);
  fiche.dernier = std::to_string(dernier);
  fiche.kms = std::to_string(dernier - ancien);
}

f64 CalculFraisKm(const CFenlorApp& app, const FicheFraisKm& fiche) {
  return TarifKm(Nombre(app, fiche.kms), fiche.borneInf, fiche.borneSup, fiche.fixe, fiche.taux[0],
                 fiche.taux[1], fiche.taux[2], app.Reglages.SeparateurDecimal());
}

std::string FraisKmAutreMonnaie(CFenlorApp& app, f64 montant) {
  const f64 taux = app.Magasin.GetTauxEuro(app.Magasin.Today());
  return app.Reglages.IsEuro() ? FormatFranc(QVAPI::ConvertEuroToFranc(taux, montant))
                               : FormatEuro(QVAPI::ConvertFrancToEuro(taux, montant));
}

std::array<std::string, 3> LibellesTauxKm(const CFenlorApp& app, const FicheFraisKm& fiche) {
  const int inf = Kilometres(app, fiche.borneInf);
  const std::string sup = std::to_string(Kilometres(app, fiche.borneSup));
  return {TexteFormat(FormatTrancheInf, {std::to_string(inf)}),
          TexteFormat(FormatTrancheMilieu, {std::to_string(inf + 1), sup}),
          TexteFormat(FormatTrancheSup, {sup})};
}

std::string FormatTauxKm(const CFenlorApp& app, const std::string& texte, std::size_t tranche) {
  assert(tranche < std::size(TauxMax));
  const f64 taux = std::clamp(Nombre(app, texte), 0.0, TauxMax[tranche]);
  return EcritNombre(app, Arrondi(taux, DecimalesTaux), DecimalesTaux);
}

Refus EnregistreFraisKm(CFenlorApp& app, FicheFraisKm& fiche, bool& supprimees) {
  supprimees = false;
  if (const Refus r = app.ControleEcriture()) return r;
  FicheFraisKm ecrite = fiche;
  TientDansLesLimites(app, ecrite);
  if (Arrondi2(CalculFraisKm(app, ecrite)) == 0)
    return Refus(ErrMontantNul, ecrite.compteur ? "dernier" : "kms");
  if (app.Reglages.IsFraisKm())
    if (const Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionRemplaceFraisKm))
      return refus;

  const bool supprime = FautSupprimerEcritures(app);
  // Open until the unit has ended: what it undoes belongs to open files.
  CLines lignes(app, app.PathExercice);
  CPlan plan(app, app.PathExercice);
  if (!lignes.OpenFile() || !plan.OpenFile()) return EchecFichier();
  QVAPI::Unite unite(app.Magasin);
  if (supprime)
    if (const Refus refus = SupprimeEcrituresVariable(app, Texte(VariableFraisKm))) return refus;
  LotReglages lot = Changements(app, ecrite);
  if (const Refus refus = Ecrit(app, lot)) return refus;
  ecrite.enregistre = true;
  fiche = ecrite;
  if (!unite.Valide()) return app.EchecMagasin();
  supprimees = supprime;
  return {};
}

Refus SupprimeFraisKm(CFenlorApp& app, FicheFraisKm& fiche) {
  if (const Refus r = app.ControleEcriture()) return r;
  if (!app.Reglages.IsFraisKm()) return {};
  if (const Refus refus = app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionSupprimeFraisKm))
    return refus;
  LotReglages lot(app);
  lot.Pose(app.NomExercice, Texte(CleFraisKm), Texte(MotNon));
  for (const TexteFixe& cle : {CleKmAncien, CleKmDernier, CleKmDistance})
    lot.Pose(app.NomExercice, Texte(cle), {});
  lot.Pose(Texte(SecFraisKm), Texte(CleKmAncien), {});
  if (const Refus refus = Ecrit(app, lot)) return refus;
  fiche.enregistre = false;
  for (std::string* texte : {&fiche.ancien, &fiche.dernier, &fiche.kms}) texte->clear();
  return {};
}

f64 FraisKilometriques(const CFenlorApp& app, bool euro) {
  if (!app.Reglages.IsFraisKm()) return 0;
  FicheFraisKm fiche;
  LitBareme(Lecture(app, true), euro, fiche);
  const auto nombre = [&](const TexteFixe& cle) { return Nombre(app, Propre(app, cle)); };
  const f64 km = fiche.compteur ? nombre(CleKmDernier) - nombre(CleKmAncien) : nombre(CleKmDistance);
  return TarifKm(km, fiche.borneInf, fiche.borneSup, fiche.fixe, fiche.taux[0], fiche.taux[1], fiche.taux[2],
                 app.Reglages.SeparateurDecimal());
}

f64 FraisKilometriques(const CFenlorApp& app) { return FraisKilometriques(app, app.Reglages.IsEuro()); }

}  // namespace fenlor
