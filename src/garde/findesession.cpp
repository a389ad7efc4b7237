#include "garde/findesession.h"

#include <algorithm>

#include "core/cles.h"
#include "core/textes.h"
#include "core/valeurs.h"
#include "garde/optionssauvegarde.h"
#include "garde/textes.h"
#include "master/options.h"
#include "session/miseajour.h"
#include "store/dates.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr int SauvegardeAllumee = 7, SauvegardeAlarme = 14;
constexpr int MiseAJourAllumee = 30, MiseAJourAlarme = 90;

i64 JoursDepuisSauvegarde(CFenlorApp& app) {
  const Date date = GetDate(LitUtilisateur(app, CleDateSauvegarde));
  if (!IsDateOk(date)) return 0;
  // Tomorrow is in the time to come from the first hour on.
  if (date > app.Magasin.Today()) NoteDateSauvegarde(app);
  return std::max<i64>(0, AgeEnJours(app, date));
}

}  // namespace

EtatLampe LampeDe(i64 jours, int allumee, int alarme) {
  return jours > alarme ? EtatLampe::Alarme : jours > allumee ? EtatLampe::Allumee : EtatLampe::Eteinte;
}

bool MontreFinDeSession(const CFenlorApp& app) {
  return app.Reglages.IsFinDeSession() && app.ParentWindow == 0 && app.EcranFinDeSession;
}

BilanSession LitBilanSession(CFenlorApp& app) {
  BilanSession bilan;
  bilan.joursSauvegarde = JoursDepuisSauvegarde(app);
  bilan.lampeSauvegarde = LampeDe(bilan.joursSauvegarde, SauvegardeAllumee, SauvegardeAlarme);
  bilan.verifiee = PhraseSauvegardeVerifiee(app);
  bilan.miseAJour = app.UpdateInstalle && LitMiseAJour(app).mode != MiseAJourJamais;
  if (bilan.miseAJour) {
    bilan.joursMiseAJour = JoursDepuisMiseAJour(app);
    bilan.lampeMiseAJour = LampeDe(bilan.joursMiseAJour, MiseAJourAllumee, MiseAJourAlarme);
  }
  return bilan;
}

Refus EcritFinDeSession(CFenlorApp& app, bool affiche) {
  const bool ecrit =
      app.Reglages.EcritIni(Texte(SecPreferences), Texte(CleFinDeSession), Texte(affiche ? MotOui : MotNon));
  return ecrit ? Refus() : app.EchecReglages();
}

bool CouvreLeCabinet(CFenlorApp& app, const Manifeste& manifeste) {
  const std::vector<std::string> noms = app.Magasin.ListeExercices();
  return !manifeste.exercices.empty() && std::all_of(noms.begin(), noms.end(), [&](const std::string& nom) {
    return std::any_of(manifeste.exercices.begin(), manifeste.exercices.end(),
                       [&](const ExerciceArchive& e) { return e.nom == nom; });
  });
}

Refus SauvegardeFinDeSession(CFenlorApp& app, const Manifeste& faite) {
  const OptionsSauvegarde options = LitOptionsSauvegarde(app);
  if (!options.finDeSession || app.Magasin.ListeExercices().empty() || CouvreLeCabinet(app, faite)) return {};
  SauvegardeFaite copie;
  const std::string& motDePasse = app.MotDePasseSauvegarde;
  if (const Refus refus = Sauvegarde(app, {options.dossier, true, motDePasse}, copie)) return refus;
  std::vector<std::string> retirees;
  return Purge(app.Magasin.SystemeFichiers(), options.dossier, options.conservation, motDePasse, retirees);
}

}  // namespace fenlor
