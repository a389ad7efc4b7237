#include "garde/sauvegarde.h"

#include <fcntl.h>

#include <algorithm>
#include <cassert>
#include <cerrno>

#include "core/erreursexercice.h"
#include "garde/optionssauvegarde.h"
#include "garde/restes.h"
#include "garde/textes.h"
#include "store/dates.h"

namespace fenlor {

namespace {

/// A file that goes again unless it got its name.
class FichierProvisoire {
 public:
  FichierProvisoire(Systeme& systeme, std::string chemin) : m_systeme(systeme), m_chemin(std::move(chemin)) {}
  ~FichierProvisoire() {
    if (!m_garde) m_systeme.Supprime(m_chemin);
  }
  const std::string& Chemin() const { return m_chemin; }
  void Garde() { m_garde = true; }

 private:
  Systeme& m_systeme;
  const std::string m_chemin;
  bool m_garde = false;
};

/// What is read back comes from the medium, not from the memory that it was written through.
void OublieCache(const Fichier& fichier) {
  const int descripteur = fichier.Descripteur();
  if (descripteur >= 0) ::posix_fadvise(descripteur, 0, 0, POSIX_FADV_DONTNEED);
}

/// A name in the folder that no file bears, whether done or not; `chemin` names one that was tried otherwise.
int CheminLibre(Systeme& systeme, const std::string& dossier, const std::string& nom, std::string& chemin) {
  assert(!nom.empty() && nom.find('/') == std::string::npos);
  for (unsigned rang = 1; rang <= HomonymesMax; ++rang) {
    chemin = Joint(dossier, nom + (rang == 1 ? "" : "-" + std::to_string(rang)) + ExtensionSauvegarde);
    Empreinte empreinte;
    int erreur = systeme.Mesure(chemin, empreinte);
    if (erreur == ENOENT) erreur = systeme.Mesure(chemin + SuffixeProvisoire, empreinte);
    if (erreur) return erreur == ENOENT ? 0 : erreur;
  }
  return EEXIST;
}

/// Reads the file back: whole, and what was photographed.
Refus Relit(Systeme& systeme, const std::string& chemin, const DemandeSauvegarde& demande,
            const Manifeste& ecrit, const AvanceArchive& avance) {
  Manifeste relu;
  if (const Refus refus = ParcourtArchive(systeme, chemin, demande.motDePasse, relu, avance)) return refus;
  return relu == ecrit ? Refus()
                       : Refus(ErrArchiveEndommagee, "", {chemin, "elle ne contient pas ces livres"});
}

}  // namespace

std::string NomSauvegarde(const Manifeste& manifeste) {
  std::string nom = "Fenlor_";
  for (const char c : manifeste.cabinet)
    if ((c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-') nom += c;
  nom +=
      '_' + (manifeste.complet || manifeste.exercices.size() != 1 ? "complet" : manifeste.exercices[0].nom);
  nom += '_' + StrSDate(GetDate(manifeste.date)) + '_';
  for (const char c : manifeste.heure)
    if (c != ':') nom += c;
  return nom;
}

Refus EcritSauvegarde(Systeme& systeme, const Photographie& photographie, const DemandeSauvegarde& demande,
                      SauvegardeFaite& faite, const AvanceArchive& avance) {
  faite = {};
  faite.manifeste = photographie.Tete();
  assert(!faite.manifeste.date.empty());
  const auto echec = [&](int erreur) {
    return Refus(ErrArchiveEcriture, "dossier", {faite.chemin, TexteErreurSysteme(erreur)});
  };
  if (const int erreur = CheminLibre(systeme, demande.dossier, NomSauvegarde(faite.manifeste), faite.chemin))
    return echec(erreur);
  FichierProvisoire provisoire(systeme, faite.chemin + SuffixeProvisoire);
  std::unique_ptr<Fichier> fichier;
  if (const int erreur = systeme.Ouvre(provisoire.Chemin(), Systeme::Creation, fichier)) {
    provisoire.Garde();  // there is nothing of ours to remove
    return echec(erreur);
  }
  // Held to the end: nobody takes it for one that was left behind.
  if (const int erreur = TientFichier(*fichier)) return echec(erreur);
  const AvanceArchive copie = [&](u64) { return !avance || avance(0); };
  if (const Refus refus = EcritArchive(*fichier, faite.chemin, faite.manifeste, photographie.Pieces(),
                                       demande.motDePasse, copie))
    return refus;
  Empreinte empreinte;
  if (const int erreur = fichier->Mesure(empreinte)) return echec(erreur);
  faite.taille = empreinte.taille;
  OublieCache(*fichier);
  if (const Refus refus = Relit(systeme, provisoire.Chemin(), demande, faite.manifeste, avance)) return refus;
  // Only a file that was read back bears the name under which somebody will look for it.
  if (const int erreur = systeme.Renomme(provisoire.Chemin(), faite.chemin)) return echec(erreur);
  assert(faite.taille > 0);
  provisoire.Garde();
  if (const int erreur = systeme.SynchroniseDossier(demande.dossier)) {
    systeme.Supprime(faite.chemin);
    return echec(erreur);
  }
  return {};
}

Refus Sauvegarde(CFenlorApp& app, const DemandeSauvegarde& demande, SauvegardeFaite& faite) {
  faite = {};
  if (!demande.complet && app.NomExercice.empty()) return Refus(ErrAucunExercice);
  const std::vector<std::string> exercices =
      demande.complet ? app.Magasin.ListeExercices() : std::vector<std::string>{app.NomExercice};
  assert(!exercices.empty() || demande.complet);
  const Progression progression(app.Boite, Texte(TitreSauvegarde), Texte(TexteSauvegarde), true, 100);
  const auto montre = [&](f64 part) {
    app.Boite.SetPos(static_cast<u32>(100 * part));
    return !app.Boite.IsAborted();
  };
  // Compressing takes three quarters of the time, reading back the rest.
  Photographie photographie;
  const auto debut = [&](f64 part) { return montre(0.75 * part); };
  if (const Refus refus = photographie.Prend(app, exercices, demande.complet, debut)) return refus;
  const NoteSauvegarde note(app, demande.dossier);
  const f64 total = std::max(1.0, static_cast<f64>(photographie.Octets()));
  const auto suite = [&](u64 octets) { return montre(0.75 + 0.25 * static_cast<f64>(octets) / total); };
  if (const Refus refus = EcritSauvegarde(app.Magasin.SystemeFichiers(), photographie, demande, faite, suite))
    return refus;
  NoteSauvegardeVerifiee(app, faite);
  return {};
}

}  // namespace fenlor
