#include "garde/restes.h"

#include <sys/file.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <filesystem>

#include "core/cles.h"
#include "garde/conservation.h"
#include "garde/textes.h"
#include "store/remplacement.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// A copy of the books that a backup makes without a name: "copie-4711-3.tmp" while it gets it. Or settings
/// that were half written.
bool EstCopie(const std::string& nom) {
  if (nom == NomProvisoire(FichierReglages)) return true;
  constexpr std::string_view debut = "copie-", fin = ".tmp";
  return nom.starts_with(debut) && nom.ends_with(fin) && nom.size() > debut.size() + fin.size() &&
         nom.find_first_not_of("0123456789-", debut.size()) == nom.size() - fin.size();
}

bool EstProvisoire(const std::string& nom) {
  const std::string_view suffixe = SuffixeProvisoire;
  SauvegardePresente inutile;
  return nom.ends_with(suffixe) && LitNomSauvegarde(nom.substr(0, nom.size() - suffixe.size()), inutile);
}

/// An unfinished archive stands in the folder, or nobody can tell.
bool ResteProvisoire(Systeme& systeme, const std::string& dossier) {
  std::vector<std::string> noms;
  return systeme.Liste(dossier, noms) != 0 || std::any_of(noms.begin(), noms.end(), EstProvisoire);
}

/// The folder from wherever the next session looks at it.
std::string NoteDe(const std::string& dossier) {
  const std::string absolu = std::filesystem::absolute(dossier).string();
  return DepuisUtf8(absolu).value_or(absolu);
}

/// Removes an unfinished archive unless somebody is at it.
int OteProvisoire(Systeme& systeme, const std::string& chemin) {
  std::unique_ptr<Fichier> fichier;
  int erreur = systeme.Ouvre(chemin, Systeme::LectureEcriture, fichier);
  if (!erreur) erreur = TientFichier(*fichier);
  if (!erreur) erreur = systeme.Supprime(chemin);
  return erreur == ErrOccupe || erreur == ENOENT ? 0 : erreur;
}

/// Removes what `siens` says in a folder. The first that stayed, with its reason.
int OteSiens(Systeme& systeme, const std::string& dossier, bool (*siens)(const std::string&),
             int (*ote)(Systeme&, const std::string&), std::string& reste) {
  std::vector<std::string> noms;
  int premiere = systeme.Liste(dossier, noms);
  if (premiere) reste = dossier;
  for (const std::string& nom : noms) {
    if (!siens(nom)) continue;
    const int erreur = ote(systeme, Joint(dossier, nom));
    if (!erreur || premiere) continue;
    premiere = erreur;
    reste = Joint(dossier, nom);
  }
  return premiere;
}

}  // namespace

int TientFichier(const Fichier& fichier) {
  const int descripteur = fichier.Descripteur();
  if (descripteur < 0 || ::flock(descripteur, LOCK_EX | LOCK_NB) == 0) return 0;
  return errno == EWOULDBLOCK ? int{ErrOccupe} : errno;
}

int OteAtelier(Systeme& systeme, const std::string& dossier) {
  std::vector<std::string> noms;
  int reste = systeme.Liste(dossier, noms);
  if (reste) return reste == ENOENT ? 0 : reste;
  const auto note = [&reste](int erreur) { reste = reste ? reste : erreur; };
  for (const std::string& nom : noms) {
    const std::string chemin = Joint(dossier, nom);
    std::vector<std::string> dedans;
    if (systeme.Liste(chemin, dedans) == 0) {
      for (const std::string& fichier : dedans) note(systeme.Supprime(Joint(chemin, fichier)));
      note(systeme.SupprimeDossier(chemin));
    } else {
      note(systeme.Supprime(chemin));
    }
  }
  note(systeme.SupprimeDossier(dossier));
  return reste;
}

NoteSauvegarde::NoteSauvegarde(CFenlorApp& app, const std::string& dossier)
    : m_app(app),
      m_dossier(dossier),
      m_notee(app.Magasin.SystemeFichiers().Existe(dossier) &&
              app.Magasin.Reglages().Ecrit(Texte(SecFenlor), Texte(CleSauvegardeEnCours), NoteDe(dossier))) {}

NoteSauvegarde::~NoteSauvegarde() {
  // A drive that went away keeps its unfinished archive: the next opening looks for it.
  if (m_notee && !ResteProvisoire(m_app.Magasin.SystemeFichiers(), m_dossier))
    m_app.Magasin.Reglages().Ecrit(Texte(SecFenlor), Texte(CleSauvegardeEnCours), std::nullopt);
}

void RangeRestes(CFenlorApp& app) {
  assert(!app.Magasin.PathCabinet().empty() && !app.Magasin.QVEnUnite());
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const std::string cabinet = app.Magasin.PathCabinet();
  const auto avertit = [&](const std::string& chemin, int erreur) {
    app.Magasin.QVAvertit(VersUtf8(TexteFormat(
        AvisResteSauvegarde, {DepuisUtf8(chemin).value_or(chemin), app.Magasin.QVErreurTexte(erreur)})));
  };
  // The practice is held: no restoration of its books is under way.
  const std::string atelier = Joint(cabinet, NomAtelier);
  if (const int erreur = OteAtelier(systeme, atelier)) avertit(atelier, erreur);
  std::string reste;
  const auto supprime = [](Systeme& s, const std::string& chemin) { return s.Supprime(chemin); };
  if (const int erreur = OteSiens(systeme, cabinet, EstCopie, supprime, reste)) avertit(reste, erreur);
  Profil& reglages = app.Magasin.Reglages();
  const std::string note = reglages.Lit(Texte(SecFenlor), Texte(CleSauvegardeEnCours));
  if (note.empty()) return;
  const int erreur = OteSiens(systeme, VersUtf8(note), EstProvisoire, OteProvisoire, reste);
  if (erreur == ENOENT || erreur == ENOTDIR) return;
  if (erreur)
    avertit(reste, erreur);
  else if (ResteProvisoire(systeme, VersUtf8(note)))
    return;  // somebody is at it, or dies just now
  reglages.Ecrit(Texte(SecFenlor), Texte(CleSauvegardeEnCours), std::nullopt);
}

}  // namespace fenlor
