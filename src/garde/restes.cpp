#include "garde/restes.h"

#include <sys/file.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <filesystem>

#include "core/cles.h"
#include "core/valeurs.h"
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

/// For the edge to tell.
void Avertit(CFenlorApp& app, const std::string& chemin, int erreur) {
  assert(erreur != 0);
  app.Magasin.QVAvertit(VersUtf8(TexteFormat(
      AvisResteSauvegarde, {DepuisUtf8(chemin).value_or(chemin), app.Magasin.QVErreurTexte(erreur)})));
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

namespace {

constexpr char EntreNotes = '|';

/// Folders in which an archive was begun and not seen to its end.
std::vector<std::string> LitNotes(CFenlorApp& app) {
  std::vector<std::string> notes;
  const std::string lues = app.Magasin.Reglages().Lit(Texte(SecFenlor), Texte(CleSauvegardeEnCours));
  for (unsigned i = 0; i < ComptePartie(lues, EntreNotes); ++i)
    if (const std::string note = ChampTexte(i, lues, EntreNotes); !note.empty()) notes.push_back(note);
  return notes;
}

bool EcritNotes(CFenlorApp& app, const std::vector<std::string>& notes) {
  std::string texte;
  for (const std::string& note : notes) texte += (texte.empty() ? "" : std::string(1, EntreNotes)) + note;
  return app.Magasin.Reglages().Ecrit(Texte(SecFenlor), Texte(CleSauvegardeEnCours),
                                      texte.empty() ? std::nullopt : std::optional(texte));
}

/// An empty folder is also what a drive leaves that went away.
bool EstDesert(Systeme& systeme, const std::string& dossier) {
  std::vector<std::string> noms;
  return systeme.Liste(dossier, noms) == 0 && noms.empty();
}

u64 NoeudDe(Systeme& systeme, const std::string& dossier) {
  Empreinte empreinte;
  return systeme.Mesure(dossier, empreinte) == 0 ? empreinte.noeud : 0;
}

/// Removes the unfinished archives of a noted folder. True when the note has done its work.
bool RangeNote(CFenlorApp& app, const std::string& note) {
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const std::string dossier = VersUtf8(note);
  std::string reste;
  const int erreur = OteSiens(systeme, dossier, EstProvisoire, OteProvisoire, reste);
  if (erreur == ENOENT || erreur == ENOTDIR) return false;
  if (erreur) return Avertit(app, reste, erreur), true;
  // Somebody is at it, or dies just now; or the drive is away.
  return !ResteProvisoire(systeme, dossier) && !EstDesert(systeme, dossier);
}

}  // namespace

NoteSauvegarde::NoteSauvegarde(CFenlorApp& app, const std::string& dossier)
    : m_app(app), m_dossier(dossier), m_noeud(NoeudDe(app.Magasin.SystemeFichiers(), dossier)) {
  if (m_noeud == 0 || app.Magasin.QVEnLecture()) return;
  const std::string note = NoteDe(dossier);
  std::vector<std::string> notes = LitNotes(app);
  if (std::erase(notes, note) != 0) RangeNote(app, note);
  notes.push_back(note);
  m_notee = EcritNotes(app, notes);
}

NoteSauvegarde::~NoteSauvegarde() {
  // A drive that went away keeps its unfinished archive, behind the folder on which it stood: the next
  // opening looks for it.
  Systeme& systeme = m_app.Magasin.SystemeFichiers();
  if (!m_notee || ResteProvisoire(systeme, m_dossier) || NoeudDe(systeme, m_dossier) != m_noeud) return;
  std::vector<std::string> notes = LitNotes(m_app);
  std::erase(notes, NoteDe(m_dossier));
  EcritNotes(m_app, notes);
}

void RangeRestes(CFenlorApp& app) {
  assert(!app.Magasin.PathCabinet().empty() && !app.Magasin.QVEnUnite());
  if (app.Magasin.QVEnLecture()) return;
  Systeme& systeme = app.Magasin.SystemeFichiers();
  const std::string cabinet = app.Magasin.PathCabinet();
  // The practice is held: no restoration of its books is under way.
  const std::string atelier = Joint(cabinet, NomAtelier);
  if (const int erreur = OteAtelier(systeme, atelier)) Avertit(app, atelier, erreur);
  std::string reste;
  const auto supprime = [](Systeme& s, const std::string& chemin) { return s.Supprime(chemin); };
  if (const int erreur = OteSiens(systeme, cabinet, EstCopie, supprime, reste)) Avertit(app, reste, erreur);
  const std::vector<std::string> notes = LitNotes(app);
  std::vector<std::string> restent = notes;
  std::erase_if(restent, [&](const std::string& note) { return RangeNote(app, note); });
  if (restent != notes) EcritNotes(app, restent);
}

}  // namespace fenlor
