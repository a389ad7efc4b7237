#include "banque/fichierremise.h"

#include <cassert>

#include "banque/textes.h"

namespace fenlor {

namespace {

constexpr u32 accesLectureEcriture = 0xC0000000u;
constexpr u32 taille = sizeof(EnregistrementRemise);

}  // namespace

Refus FichierRemise::Cree() {
  Ferme();
  m_poignee = m_magasin.QVCreateFile(m_chemin);
  return Verifie();
}

Refus FichierRemise::Ouvre() {
  Ferme();
  m_poignee = m_magasin.QVOpenFile(m_chemin, accesLectureEcriture);
  return Verifie();
}

Refus FichierRemise::Verifie() const {
  return EstOuvert() ? Refus() : Refus(ErrFichierRemise, "", {m_chemin});
}

void FichierRemise::Ferme() {
  if (EstOuvert()) m_magasin.QVCloseFile(m_poignee);
  m_poignee = -1;
}

u32 FichierRemise::Nombre() {
  const i64 fin = EstOuvert() ? m_magasin.QVSeekFile(m_poignee, 0, 2) : 0;
  return fin > 0 ? static_cast<u32>(fin / taille) : 0;
}

bool FichierRemise::Lit(u32 rang, EnregistrementRemise& rec) {
  assert(EstOuvert());
  return m_magasin.QVSeekFile(m_poignee, i64{rang} * taille, 0) >= 0 &&
         m_magasin.QVReadFile(m_poignee, &rec, taille) == static_cast<int>(taille);
}

bool FichierRemise::Ecrit(u32 rang, const EnregistrementRemise& rec) {
  assert(EstOuvert() && rec.Remis <= 1 && rec.Imprime <= 1);
  return m_magasin.QVSeekFile(m_poignee, i64{rang} * taille, 0) >= 0 &&
         m_magasin.QVWriteFile(m_poignee, &rec, taille) == static_cast<int>(taille);
}

}  // namespace fenlor
