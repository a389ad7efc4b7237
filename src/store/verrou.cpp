#include "store/verrou.h"

#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>

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

}  // namespace

int Verrou::Prend(Systeme& systeme, const std::string& dossier) {
  assert(!m_fichier);
  const std::string chemin = Joint(dossier, "fenlor.ver");
  int rc = systeme.Ouvre(chemin, Systeme::LectureEcriture, m_fichier);
  if (rc == ENOENT) rc = systeme.Ouvre(chemin, Systeme::Creation, m_fichier);
  if (rc) return rc;
  if (flock(m_fichier->Descripteur(), LOCK_EX | LOCK_NB) != 0) {
    rc = errno;
    if (rc == EWOULDBLOCK) {
      char texte[512];
      std::size_t lus = 0;
      if (m_fichier->Lit(texte, sizeof texte, 0, lus) == 0) m_detenteur.assign(texte, lus);
      rc = ErrOccupe;
    }
    m_fichier.reset();
    return rc;
  }
  // Who holds it is a courtesy to the next one: a full disk is no reason to refuse.
  const std::string texte = QuiSuisJe();
  if (m_fichier->Tronque(0) == 0) m_fichier->Ecrit(texte.data(), texte.size(), 0);
  m_detenteur.clear();
  return 0;
}

void Verrou::Rend() { m_fichier.reset(); }

}  // namespace fenlor
