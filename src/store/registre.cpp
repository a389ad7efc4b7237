#include "store/registre.h"

#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>

#include "store/etat.h"
#include "store/profil.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr const char* NomDossier = "Orvelia";
constexpr const char* NomFichier = "registre.ini";
constexpr const char* PrefixeMachine = "HKEY_LOCAL_MACHINE\\";

int CreeChemin(Systeme& systeme, const std::string& dossier) {
  assert(!dossier.empty());
  int erreur = systeme.CreeDossier(dossier);
  if (erreur == ENOENT && DossierDe(dossier) != dossier) {
    erreur = CreeChemin(systeme, DossierDe(dossier));
    if (!erreur) erreur = systeme.CreeDossier(dossier);
  }
  return erreur == EEXIST || systeme.Existe(dossier) ? 0 : erreur;
}

/// One program at a time between the reading of the file and its replacement, or the other one's text would
/// be lost. The lock stands on the folder: it leaves nothing behind, and the file changes under its name.
/// EBUSY when another program keeps it for longer than anybody writes; a file system without locks is gone
/// on with. It ends with `tenu`.
int Exclut(Systeme& systeme, const std::string& dossier, std::unique_ptr<Fichier>& tenu) {
  using namespace std::chrono_literals;
  if (const int erreur = systeme.Ouvre(dossier, Systeme::Lecture, tenu)) return erreur;
  const auto limite = std::chrono::steady_clock::now() + 2s;
  while (::flock(tenu->Descripteur(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK) return 0;
    if (std::chrono::steady_clock::now() > limite) return EBUSY;
    std::this_thread::sleep_for(2ms);
  }
  return 0;
}

}  // namespace

// Empty when the account has no home; a relative folder would depend on where
// the program was started.
std::string DossierUtilisateur() {
  const auto absolu = [](const char* chemin) { return chemin && *chemin == '/'; };
  if (const char* configuration = std::getenv("XDG_CONFIG_HOME"); absolu(configuration)) {
    return Joint(configuration, NomDossier);
  }
  const char* maison = std::getenv("HOME");
  if (!absolu(maison)) {
    const passwd* compte = ::getpwuid(::getuid());
    maison = compte ? compte->pw_dir : nullptr;
  }
  return absolu(maison) ? Joint(Joint(maison, ".config"), NomDossier) : std::string();
}

Registre::Registre(Systeme& systeme, const std::string& dossier, const std::string& dossierMachine)
    : m_systeme(systeme),
      m_dossier(dossier.empty() ? DossierUtilisateur() : dossier),
      m_dossierMachine(dossierMachine.empty() ? Joint("/etc/xdg", NomDossier) : dossierMachine) {}

std::optional<std::string> Registre::LitFichier(const std::string& dossier, const std::string& section,
                                                const std::string& nom) {
  if (dossier.empty()) return std::nullopt;
  Profil profil(m_systeme, Joint(dossier, NomFichier));
  const std::vector<std::string> cles = profil.Cles(section);
  m_erreur = profil.Erreur();
  const auto laMeme = [&](const std::string& cle) { return CompareSansCasse(cle, nom) == 0; };
  if (std::none_of(cles.begin(), cles.end(), laMeme)) return std::nullopt;
  std::string texte = profil.Lit(section, nom);
  m_erreur = profil.Erreur();
  if (m_erreur) return std::nullopt;
  texte.resize(std::min(texte.size(), TailleMax));
  return texte;
}

bool Registre::EcritFichier(const std::string& dossier, const std::string& section, const std::string& nom,
                            const std::optional<std::string>& texte) {
  m_erreur = dossier.empty() ? ENOENT : CreeChemin(m_systeme, dossier);
  std::unique_ptr<Fichier> tenu;
  if (!m_erreur) m_erreur = Exclut(m_systeme, dossier, tenu);
  if (m_erreur) return false;
  Profil profil(m_systeme, Joint(dossier, NomFichier));
  const bool faite = profil.Ecrit(section, nom, texte);
  m_erreur = profil.Erreur();
  return faite;
}

std::optional<std::string> Registre::Lit(Racine racine, const std::string& cle, const std::string& nom) {
  m_erreur = 0;
  if (racine == Utilisateur) return LitFichier(m_dossier, cle, nom);
  const std::optional<std::string> propre = LitFichier(m_dossier, PrefixeMachine + cle, nom);
  return propre ? propre : LitFichier(m_dossierMachine, cle, nom);
}

bool Registre::Ecrit(Racine racine, const std::string& cle, const std::string& nom,
                     const std::string& texte) {
  m_erreur = EINVAL;
  if (nom.empty()) return false;
  if (racine == Utilisateur) return EcritFichier(m_dossier, cle, nom, texte);
  const std::string sectionPropre = PrefixeMachine + cle;
  if (EcritFichier(m_dossierMachine, cle, nom, texte)) {
    // The user's own text would hide the new one.
    if (LitFichier(m_dossier, sectionPropre, nom))
      return EcritFichier(m_dossier, sectionPropre, nom, std::nullopt);
    m_erreur = 0;
    return true;
  }
  return m_erreur != EINVAL && EcritFichier(m_dossier, sectionPropre, nom, texte);
}

namespace {

bool TrouveRacine(const std::string& nom, Registre::Racine& racine) {
  if (nom != "HKEY_CURRENT_USER" && nom != "HKEY_LOCAL_MACHINE") return false;
  racine = nom == "HKEY_CURRENT_USER" ? Registre::Utilisateur : Registre::Machine;
  return true;
}

std::string CheminCle(const std::string& cle, const std::string& groupe) {
  return groupe.empty() ? cle : cle.empty() ? groupe : cle + '\\' + groupe;
}

}  // namespace

bool QVAPI::QVGetRegString(const std::string& racine, const std::string& cle, const std::string& groupe,
                           const std::string& nom, std::string& texte) {
  texte.clear();
  Registre::Racine place;
  if (!TrouveRacine(racine, place)) return m_etat->Refuse(ErrValeur);
  Registre registre(*m_etat->systeme, m_etat->options.dossierRegistre,
                    m_etat->options.dossierRegistreMachine);
  const std::optional<std::string> trouve = registre.Lit(place, CheminCle(cle, groupe), nom);
  if (!trouve) return m_etat->Refuse(registre.Erreur() ? registre.Erreur() : ENOENT);
  texte = *trouve;
  return true;
}

bool QVAPI::QVSetRegString(const std::string& racine, const std::string& cle, const std::string& groupe,
                           const std::string& nom, const std::string& texte) {
  Registre::Racine place;
  if (!TrouveRacine(racine, place)) return m_etat->Refuse(ErrValeur);
  Registre registre(*m_etat->systeme, m_etat->options.dossierRegistre,
                    m_etat->options.dossierRegistreMachine);
  return registre.Ecrit(place, CheminCle(cle, groupe), nom, texte) || m_etat->Refuse(registre.Erreur());
}

}  // namespace fenlor
