#include "session/miseajour.h"

#include <spawn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <chrono>

#include "core/valeurs.h"
#include "master/options.h"
#include "master/textes.h"
#include "session/textes.h"
#include "store/dates.h"
#include "store/systeme.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr const char* NomProgramme = "QVUpdate.exe";
constexpr unsigned StyleLancement = 3121;  ///< a number of the error table in the place of a style
constexpr int SeuilJours = 15;

std::chrono::sys_days JourDe(Date date) {
  return std::chrono::year_month_day(std::chrono::year(static_cast<int>(Annee(date))),
                                     std::chrono::month(Mois(date)), std::chrono::day(Jour(date)));
}

std::string CleOptions(CFenlorApp& app) {
  return Texte(CleRegistreQVUpdate) + "\\" + LitMiseAJour(app).application;
}

}  // namespace

i64 AgeEnJours(const CFenlorApp& app, Date date) {
  assert(IsDateOk(date));
  const Heure heure = app.Magasin.Now();
  const auto jours = (JourDe(app.Magasin.Today()) - JourDe(date)).count();
  const i64 secondes = i64{jours} * 86400 + ((heure >> 8) * 60 + (heure & 0xFF)) * 60;
  return secondes / 86400;
}

std::string ProgrammeMiseAJour(CFenlorApp& app) {
  std::string chemin;
  app.Magasin.QVGetRegString("HKEY_LOCAL_MACHINE", Texte(CleRegistreOrvelia), Texte(GroupeQVUpdate),
                             Texte(NomPath), chemin);
  if (EstVide(chemin)) return {};
  struct stat quoi {};
  const bool dossier = ::stat(chemin.c_str(), &quoi) == 0 && S_ISDIR(quoi.st_mode);
  return dossier ? Joint(chemin, NomProgramme) : chemin;
}

void ChercheMiseAJour(CFenlorApp& app) {
  const std::string programme = ProgrammeMiseAJour(app);
  app.UpdateInstalle = !programme.empty() && app.Magasin.QVExistFile(programme);
}

int JoursDepuisMiseAJour(CFenlorApp& app) {
  const std::string cle = CleOptions(app);
  std::string texte;
  app.Magasin.QVGetRegString("HKEY_CURRENT_USER", cle, Texte(GroupeOptions), Texte(NomDate), texte);
  if (EstVide(texte)) {
    // Where it cannot be noted the age is 0 again the next time: nobody is reminded, and nothing is lost.
    app.Magasin.QVSetRegString("HKEY_CURRENT_USER", cle, Texte(GroupeOptions), Texte(NomDate),
                               StrDate(app.Magasin.Today()));
    return 0;
  }
  const Date date = GetDate(texte);
  return IsDateOk(date) ? static_cast<int>(std::max<i64>(0, AgeEnJours(app, date))) : 0;
}

int LanceProgramme(const std::string& programme, const std::string& argument) {
  posix_spawnattr_t attributs;
  if (const int erreur = ::posix_spawnattr_init(&attributs)) return erreur;
  int erreur = ::posix_spawnattr_setflags(&attributs, POSIX_SPAWN_SETSID);
  std::string zero = programme, un = argument;
  char* mots[] = {zero.data(), un.data(), nullptr};
  pid_t enfant = 0;
  if (!erreur) erreur = ::posix_spawn(&enfant, programme.c_str(), nullptr, &attributs, mots, environ);
  ::posix_spawnattr_destroy(&attributs);
  return erreur;
}

void LanceMiseAJour(CFenlorApp& app, const Lanceur& lanceur) {
  const int erreur = lanceur(ProgrammeMiseAJour(app), LitMiseAJour(app).application);
  if (erreur) app.MessageId(StyleLancement, TexteFixe{static_cast<unsigned>(erreur), ""});
}

bool MiseAJourDue(CFenlorApp& app) {
  if (!app.UpdateInstalle || LitMiseAJour(app).mode != MiseAJourAuDemarrage) return false;
  const int seuil = TexteVersEntier(LitUtilisateur(app, CleJoursMiseAJour));
  return JoursDepuisMiseAJour(app) > (seuil > 0 ? seuil : SeuilJours);
}

bool RappelMiseAJour(CFenlorApp& app, const Lanceur& lanceur) {
  if (!MiseAJourDue(app)) return false;
  const std::string jours = std::to_string(JoursDepuisMiseAJour(app));
  if (app.MessageId(BoutonsOuiNon | IconeQuestion, QuestionMiseAJour, {jours}) != RepOui) return false;
  LanceMiseAJour(app, lanceur);
  return true;
}

}  // namespace fenlor
