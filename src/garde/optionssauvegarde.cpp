#include "garde/optionssauvegarde.h"

#include <algorithm>
#include <cassert>

#include "core/textes.h"
#include "core/valeurs.h"
#include "garde/textes.h"
#include "master/options.h"
#include "store/dates.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr char Separateur = '|';

void LitNombre(const CFenlorApp& app, const TexteFixe& cle, unsigned minimum, unsigned& nombre) {
  const std::string texte = LitUtilisateur(app, cle);
  if (EstVide(texte)) return;
  nombre = std::clamp(static_cast<unsigned>(std::max(0, TexteVersEntier(texte))), minimum, ConservationMax);
}

void Note(CFenlorApp& app, const TexteFixe& cle, const std::string& texte) {
  if (!EcritUtilisateur(app, cle, texte)) app.Magasin.QVAvertit(AvisNoteSauvegarde.utf8);
}

}  // namespace

OptionsSauvegarde LitOptionsSauvegarde(const CFenlorApp& app) {
  OptionsSauvegarde options;
  options.dossier = LitUtilisateur(app, CleDossierSauvegarde);
  options.finDeSession = Parametres::IsOui(LitUtilisateur(app, CleSauvegardeFinSession));
  LitNombre(app, CleSauvegardesJours, 1, options.conservation.jours);
  LitNombre(app, CleSauvegardesSemaines, 0, options.conservation.semaines);
  LitNombre(app, CleSauvegardesMois, 0, options.conservation.mois);
  return options;
}

Refus RetientDossier(CFenlorApp& app, const std::string& dossier) {
  if (dossier.size() > TailleDossierMax) return Refus(ErrDossierSauvegardeLong, "dossier");
  if (dossier == LitUtilisateur(app, CleDossierSauvegarde)) return {};
  return EcritUtilisateur(app, CleDossierSauvegarde, dossier) ? Refus() : app.EchecMagasin();
}

Refus EcritOptionsSauvegarde(CFenlorApp& app, const OptionsSauvegarde& options) {
  if (options.finDeSession && options.dossier.empty()) return Refus(ErrDossierSauvegardeAbsent, "dossier");
  if (const Refus refus = RetientDossier(app, options.dossier)) return refus;
  const OptionsSauvegarde avant = LitOptionsSauvegarde(app);
  const auto nombre = [&](const TexteFixe& cle, unsigned ancien, unsigned nouveau) {
    assert(nouveau <= ConservationMax);
    return ancien == nouveau || EcritUtilisateur(app, cle, std::to_string(nouveau));
  };
  const Conservation &c = options.conservation, &a = avant.conservation;
  const bool ecrit =
      (options.finDeSession == avant.finDeSession ||
       EcritUtilisateur(app, CleSauvegardeFinSession, Texte(options.finDeSession ? MotOui : MotNon))) &&
      nombre(CleSauvegardesJours, a.jours, c.jours) &&
      nombre(CleSauvegardesSemaines, a.semaines, c.semaines) && nombre(CleSauvegardesMois, a.mois, c.mois);
  return ecrit ? Refus() : app.EchecMagasin();
}

void NoteDateSauvegarde(CFenlorApp& app) { Note(app, CleDateSauvegarde, StrDate(app.Magasin.Today())); }

void NoteSauvegardeVerifiee(CFenlorApp& app, const SauvegardeFaite& faite) {
  assert(!faite.chemin.empty());
  NoteDateSauvegarde(app);
  const std::string nom = faite.chemin.substr(faite.chemin.rfind('/') + 1);
  Note(app, CleSauvegardeVerifiee,
       nom + Separateur + faite.manifeste.date + Separateur + faite.manifeste.heure.substr(0, 5));
}

std::string PhraseSauvegardeVerifiee(const CFenlorApp& app) {
  const std::string note = LitUtilisateur(app, CleSauvegardeVerifiee);
  if (ComptePartie(note, Separateur) != 3) return {};
  return TexteFormat(
      TexteSauvegardeVerifiee,
      {ChampTexte(1, note, Separateur), ChampTexte(2, note, Separateur), ChampTexte(0, note, Separateur)});
}

}  // namespace fenlor
