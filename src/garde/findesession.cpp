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
  const i64 jours = IsDateOk(date) ? AgeEnJours(app, date) : 0;
  if (jours < 0) NoteDateSauvegarde(app);
  return std::max<i64>(0, jours);
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

Refus SauvegardeFinDeSession(CFenlorApp& app) {
  const OptionsSauvegarde options = LitOptionsSauvegarde(app);
  if (!options.finDeSession || app.Magasin.ListeExercices().empty()) return {};
  SauvegardeFaite faite;
  if (const Refus refus = Sauvegarde(app, {options.dossier, true, {}}, faite)) return refus;
  std::vector<std::string> retirees;
  return Purge(app.Magasin.SystemeFichiers(), options.dossier, options.conservation, {}, retirees);
}

}  // namespace fenlor
