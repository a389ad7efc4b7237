#include "store/verrou.h"

#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>
#include <utility>

#include "store/qvapi.h"

namespace fenlor {

namespace {

std::string QuiSuisJe() {
  char machine[256] = "";
  gethostname(machine, sizeof machine - 1);
  const passwd* compte = getpwuid(getuid());
  const std::string utilisateur = compte ? compte->pw_name : std::to_string(getuid());
  return "processus " + std::to_string(getpid()) + ", utilisateur " + utilisateur + ", machine " + machine;
}

/// True while the path still leads to the open file.
bool EstLeMeme(Systeme& systeme, const std::string& chemin, Fichier& fichier) {
  Empreinte ouvert, nomme;
  return fichier.Mesure(ouvert) == 0 && systeme.Mesure(chemin, nomme) == 0 && ouvert.noeud == nomme.noeud;
}

/// Opens and locks. The name is looked at once more behind the lock: a file that was replaced meanwhile
/// keeps nobody out.
int Verrouille(Systeme& systeme, const std::string& chemin, std::unique_ptr<Fichier>& fichier) {
  if (const int rc = systeme.Ouvre(chemin, Systeme::LectureEcriture, fichier)) return rc;
  if (flock(fichier->Descripteur(), LOCK_EX | LOCK_NB) != 0) return errno == EWOULDBLOCK ? ErrOccupe : errno;
  return EstLeMeme(systeme, chemin, *fichier) ? 0 : ErrOccupe;
}

}  // namespace

int Verrou::Prend(Systeme& systeme, const std::string& dossier) {
  assert(!m_fichier);
  const std::string chemin = Joint(dossier, "fenlor.ver");
  m_detenteur.clear();
  int rc = Verrouille(systeme, chemin, m_fichier);
  const bool existait = rc != ENOENT;
  if (!existait) {
    rc = systeme.Ouvre(chemin, Systeme::Creation, m_fichier);
    if (!rc) rc = Verrouille(systeme, chemin, m_fichier);
  }
  if (!rc) rc = PrendJournal(systeme, dossier);
  if (rc) {
    if (rc == ErrOccupe) LitDetenteur();
    Rend();
    return rc;
  }
  // Who holds it is a courtesy to the next one: a full disk is no reason to refuse.
  const std::string texte = QuiSuisJe();
  Empreinte laisse{};
  m_etaitAcheve = existait && m_fichier->Mesure(laisse) == 0 && laisse.taille == 0;
  // Never empty meanwhile, and not on a full disk either, where a length needs no room: that is the mark of a
  // session that ended well.
  const bool ecrit = m_fichier->Ecrit(texte.data(), texte.size(), 0) == 0;
  if (ecrit || laisse.taille == 0) m_fichier->Tronque(ecrit ? texte.size() : 1);
  m_detenteur.clear();
  return 0;
}

void Verrou::LitDetenteur() {
  char texte[512];
  std::size_t lus = 0;
  m_detenteur = "inconnu";
  if (m_fichier && m_fichier->Lit(texte, sizeof texte, 0, lus) == 0 && lus > 1)
    m_detenteur.assign(texte, lus);
}

int Verrou::PrendEnLecture(Systeme& systeme, const std::string& dossier) {
  assert(!EstPris());
  const std::pair<const char*, std::unique_ptr<Fichier>&> fichiers[] = {{"fenlor.ver", m_fichier},
                                                                        {"fenlor.rep", m_journal}};
  int rc = 0;
  for (const auto& [nom, fichier] : fichiers) {
    rc = systeme.Ouvre(Joint(dossier, nom), Systeme::Lecture, fichier);
    if (rc == ENOENT) continue;
    if (!rc && flock(fichier->Descripteur(), LOCK_SH | LOCK_NB) != 0)
      rc = errno == EWOULDBLOCK ? int{ErrOccupe} : errno;
    if (rc) break;
  }
  if (rc == ErrOccupe) LitDetenteur();
  if (rc == ENOENT && EstPris()) rc = 0;
  if (rc) Rend();
  return rc;
}

int Verrou::PrendJournal(Systeme& systeme, const std::string& dossier) {
  const std::string chemin = Joint(dossier, "fenlor.rep");
  if (m_journal && EstLeMeme(systeme, chemin, *m_journal)) return 0;
  // What else is wrong with it is told by whoever reads it.
  return Verrouille(systeme, chemin, m_journal) == ErrOccupe ? ErrOccupe : 0;
}

void Verrou::Rend(bool acheve) {
  if (acheve && m_fichier) m_fichier->Tronque(0);
  m_journal.reset();
  m_fichier.reset();
}

}  // namespace fenlor
