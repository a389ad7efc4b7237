#include "master/options.h"

#include <algorithm>
#include <cassert>

#include "core/btfiles.h"
#include "core/cles.h"
#include "core/valeurs.h"
#include "master/lotreglages.h"
#include "master/textes.h"
#include "store/indicescles.h"
#include "store/motdepasse.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

template <auto membre>
constexpr ChampFiche Reglage(const char* nom, const TexteFixe& cle, unsigned limite = 128) {
  return {nom, Membre<membre>, GenreChamp::Texte, cle.utf8, limite};
}

constexpr ChampFiche ChampsActivite[] = {
    Reglage<&OptionsActivite::identification>("identification", CleIdentification),
    Reglage<&OptionsActivite::siret>("siret", CleSiret, 20),
    Reglage<&OptionsActivite::ape>("ape", CleApe, 4),
    Reglage<&OptionsActivite::activite>("activite", CleNatureActivite),
    Reglage<&OptionsActivite::debut>("debut", CleDebut, 10),
    {"afficherDouble", Membre<&OptionsActivite::afficherDouble>, GenreChamp::Drapeau}};
constexpr ChampFiche ChampsBanque[] = {
    {"code", Membre<&AdresseBanque::code>, GenreChamp::Texte},
    Reglage<&AdresseBanque::identification>("identification", CleIdentification),
    Reglage<&AdresseBanque::compte>("compte", CleCompteBancaire)};
constexpr ChampFiche ChampsAssociation[] = {
    Reglage<&OptionsAssociation::identification>("identification", CleIdentification),
    Reglage<&OptionsAssociation::numero>("numero", CleNumeroAssociation),
    Reglage<&OptionsAssociation::annee>("annee", CleAnneeAssociation)};
constexpr ChampFiche ChampsComptable[] = {
    Reglage<&OptionsComptable::identification>("identification", CleIdentification)};

constexpr const char* RegistreUtilisateur = "HKEY_CURRENT_USER";
constexpr int JoursMin = 1, JoursMax = 365, JoursDefaut = 90;

std::string Lit(CFenlorApp& app, const TexteFixe& section, const TexteFixe& cle) {
  return app.Reglages.LitIni(Texte(section), Texte(cle));
}

std::string NormeMotDePasse(const std::string& texte) { return EnMajuscules(CompacteTexte(texte)); }

std::string MotDePasseStocke(CFenlorApp& app) {
  return app.Magasin.Reglages().Lit(Texte(SecActivite), Texte(CleMotDePasseCabinet));
}

}  // namespace

const TableFiche OptionsActivite::Table{SecActivite.utf8, ChampsActivite},
    AdresseBanque::Table{"", ChampsBanque}, OptionsAssociation::Table{SecAssociation.utf8, ChampsAssociation},
    OptionsComptable::Table{SecComptable.utf8, ChampsComptable};

OptionsActivite LitActivite(CFenlorApp& app) {
  auto options = LitOptions<OptionsActivite>(app);
  const std::string dernier = app.Magasin.GetLastExercice();
  options.afficherDouble =
      !dernier.empty() && Parametres::IsOui(app.Reglages.LitIni(dernier, Texte(CleAfficherDouble)));
  return options;
}

bool EcritActivite(CFenlorApp& app, const OptionsActivite& options) {
  assert(!app.Magasin.QVEnUnite());
  LotReglages lot(app);
  lot.Pose(OptionsActivite::Table, &options);
  const std::string dernier = app.Magasin.GetLastExercice();
  if (!dernier.empty()) lot.PoseOui(dernier, Texte(CleAfficherDouble), options.afficherDouble);
  if (!lot.Ecrit()) return false;
  if (!dernier.empty() && CompareSansCasse(dernier, app.Magasin.NomExercice()) == 0)
    app.AfficherDouble = options.afficherDouble;
  return true;
}

ExerciceEnCours LitExerciceEnCours(CFenlorApp& app) {
  ExerciceEnCours exercice;
  exercice.debut = app.Reglages.GetDebutExercice();
  exercice.fin = app.Reglages.GetFinExercice();
  if (exercice.debut != 0) {
    exercice.annee = std::to_string(Annee(exercice.debut));
    if (exercice.fin <= exercice.debut) exercice.fin = PrevDate(DecaleAnnees(exercice.debut, 1));
  }
  exercice.cloture = CompacteTexte(app.Reglages.LitIniExercice({}, Texte(CleCloture)));
  exercice.tva = app.Reglages.IsTVA();
  exercice.euro = app.Reglages.IsEuro();
  return exercice;
}

bool CompleteLignes2035(CFenlorApp& app) {
  constexpr unsigned nombre = 4;
  assert(std::size(Cle2035Recettes) == nombre && std::size(Lignes2035Recettes) == nombre);
  LotReglages lot(app);
  for (unsigned i = 0; i < nombre; ++i)
    if (CompacteTexte(Lit(app, Sec2035, Cle2035Recettes[i])).empty())
      lot.Pose(Texte(Sec2035), Texte(Cle2035Recettes[i]), Texte(Lignes2035Recettes[i]));
  return lot.Ecrit();
}

AdresseBanque LitAdresseBanque(CFenlorApp& app, const std::string& code) {
  AdresseBanque banque{code, {}, {}};
  LitReglages(app, AdresseBanque::Table, &banque, code);
  return banque;
}

std::vector<AdresseBanque> LitAdressesBanque(CFenlorApp& app) {
  std::vector<AdresseBanque> banques;
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return banques;
  plan.ClearRec();
  plan.Rec->Type = Tresorerie;
  for (bool trouve = plan.Browse(IndicePlanType); trouve && plan.Rec->Type == Tresorerie;
       trouve = plan.Next(IndicePlanType)) {
    const std::string code = CompacteTexte(LitTexte(plan.Rec->Code));
    if (plan.Rec->TypeTresorerie != 0 && !code.empty()) banques.push_back(LitAdresseBanque(app, code));
  }
  return banques;
}

bool EcritAdressesBanque(CFenlorApp& app, const std::vector<AdresseBanque>& banques, bool especes) {
  LotReglages lot(app);
  for (const AdresseBanque& banque : banques) {
    assert(!banque.code.empty());
    lot.Pose(AdresseBanque::Table, &banque, banque.code);
  }
  lot.PoseOui(Texte(SecRapprochement), Texte(CleEspeces), especes);
  return lot.Ecrit();
}

bool MotDePasseExiste(CFenlorApp& app) { return MotDePasseDefini(MotDePasseStocke(app)); }

Refus ControleMotDePasse(CFenlorApp& app, const SaisieMotDePasse& saisie) {
  if (saisie.EstVide()) return {};
  const std::string stocke = MotDePasseStocke(app);
  const bool ancienAttendu = MotDePasseDefini(stocke) && NormeMotDePasse(saisie.ancien).empty();
  const char* champ = ancienAttendu ? "ancien" : "nouveau";
  if (!MotDePasseJuste(stocke, saisie.ancien)) return Refus(ErrAncienMotDePasse, champ);
  if (NormeMotDePasse(saisie.nouveau) != NormeMotDePasse(saisie.verification))
    return Refus(ErrConfirmationMotDePasse, champ);
  return {};
}

bool EcritMotDePasse(CFenlorApp& app, const SaisieMotDePasse& saisie) {
  LotReglages lot(app);
  const std::string nouveau = NormeMotDePasse(saisie.nouveau);
  assert(nouveau == NormeMotDePasse(saisie.verification));
  // Without protection before and after, the setting stays absent.
  if (!saisie.EstVide() && (!nouveau.empty() || MotDePasseExiste(app)))
    lot.PoseBrut(Texte(SecActivite), Texte(CleMotDePasseCabinet), MotDePasseBrouille(nouveau));
  return lot.Ecrit();
}

std::string LitUtilisateur(const CFenlorApp& app, const TexteFixe& nom) {
  std::string texte;
  app.Magasin.QVGetRegString(RegistreUtilisateur, "", Texte(SecMiseAJour), Texte(nom), texte);
  return texte;
}

bool EcritUtilisateur(CFenlorApp& app, const TexteFixe& nom, const std::string& texte) {
  return app.Magasin.QVSetRegString(RegistreUtilisateur, "", Texte(SecMiseAJour), Texte(nom), texte);
}

OptionsMiseAJour LitMiseAJour(CFenlorApp& app) {
  OptionsMiseAJour options;
  const int mode = TexteVersEntier(LitUtilisateur(app, CleModeMiseAJour));
  if (mode >= MiseAJourAuDemarrage && mode <= MiseAJourJamais) options.mode = mode;
  const int jours = TexteVersEntier(LitUtilisateur(app, CleJoursMiseAJour));
  options.jours = jours < JoursMin ? JoursDefaut : std::min(jours, JoursMax);
  options.application = CompacteTexte(LitUtilisateur(app, CleApplicationMiseAJour));
  if (options.application.empty()) options.application = Texte(ApplicationMiseAJour);
  assert(options.jours >= JoursMin && options.jours <= JoursMax);
  return options;
}

bool EcritMiseAJour(CFenlorApp& app, const OptionsMiseAJour& options) {
  const OptionsMiseAJour avant = LitMiseAJour(app);
  const int jours = std::clamp(options.jours, JoursMin, JoursMax);
  const std::string application = CompacteTexte(options.application);
  return (options.mode == avant.mode ||
          EcritUtilisateur(app, CleModeMiseAJour, std::to_string(options.mode))) &&
         (jours == avant.jours || EcritUtilisateur(app, CleJoursMiseAJour, std::to_string(jours))) &&
         (application == avant.application || EcritUtilisateur(app, CleApplicationMiseAJour, application));
}

}  // namespace fenlor
