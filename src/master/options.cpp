#include "master/options.h"

#include <algorithm>
#include <cassert>

#include "core/btfiles.h"
#include "core/cles.h"
#include "core/valeurs.h"
#include "master/lotreglages.h"
#include "master/textes.h"
#include "store/motdepasse.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 CleType = 3;
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

OptionsActivite LitActivite(CFenlorApp& app) {
  OptionsActivite options;
  options.identification = Lit(app, SecActivite, CleIdentification);
  options.siret = Lit(app, SecActivite, CleSiret);
  options.ape = Lit(app, SecActivite, CleApe);
  options.activite = Lit(app, SecActivite, CleNatureActivite);
  options.debut = Lit(app, SecActivite, CleDebut);
  const std::string dernier = app.Magasin.GetLastExercice();
  options.afficherDouble =
      !dernier.empty() && Parametres::IsOui(app.Reglages.LitIni(dernier, Texte(CleAfficherDouble)));
  return options;
}

bool EcritActivite(CFenlorApp& app, const OptionsActivite& options) {
  assert(!app.Magasin.QVEnUnite());
  const std::string section = Texte(SecActivite);
  LotReglages lot(app);
  lot.Pose(section, Texte(CleIdentification), options.identification);
  lot.Pose(section, Texte(CleSiret), options.siret);
  lot.Pose(section, Texte(CleApe), options.ape);
  lot.Pose(section, Texte(CleNatureActivite), options.activite);
  lot.Pose(section, Texte(CleDebut), options.debut);
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
  return {code, app.Reglages.LitIni(code, Texte(CleIdentification)),
          app.Reglages.LitIni(code, Texte(CleCompteBancaire))};
}

std::vector<AdresseBanque> LitAdressesBanque(CFenlorApp& app) {
  std::vector<AdresseBanque> banques;
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return banques;
  plan.ClearRec();
  plan.Rec->Type = Tresorerie;
  for (bool trouve = plan.Browse(CleType); trouve && plan.Rec->Type == Tresorerie;
       trouve = plan.Next(CleType)) {
    const std::string code = CompacteTexte(LitTexte(plan.Rec->Code));
    if (plan.Rec->TypeTresorerie != 0 && !code.empty()) banques.push_back(LitAdresseBanque(app, code));
  }
  return banques;
}

bool EcritAdressesBanque(CFenlorApp& app, const std::vector<AdresseBanque>& banques, bool especes) {
  LotReglages lot(app);
  for (const AdresseBanque& banque : banques) {
    assert(!banque.code.empty());
    lot.Pose(banque.code, Texte(CleIdentification), banque.identification);
    lot.Pose(banque.code, Texte(CleCompteBancaire), banque.compte);
  }
  lot.PoseOui(Texte(SecRapprochement), Texte(CleEspeces), especes);
  return lot.Ecrit();
}

OptionsAssociation LitAssociation(CFenlorApp& app) {
  return {Lit(app, SecAssociation, CleIdentification), Lit(app, SecAssociation, CleNumeroAssociation),
          Lit(app, SecAssociation, CleAnneeAssociation)};
}

bool EcritAssociation(CFenlorApp& app, const OptionsAssociation& options) {
  const std::string section = Texte(SecAssociation);
  LotReglages lot(app);
  lot.Pose(section, Texte(CleIdentification), options.identification);
  lot.Pose(section, Texte(CleNumeroAssociation), options.numero);
  lot.Pose(section, Texte(CleAnneeAssociation), options.annee);
  return lot.Ecrit();
}

std::string LitComptable(CFenlorApp& app) { return Lit(app, SecComptable, CleIdentification); }

bool EcritComptable(CFenlorApp& app, const std::string& identification) {
  LotReglages lot(app);
  lot.Pose(Texte(SecComptable), Texte(CleIdentification), identification);
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
