#include "store/fichierdat.h"

#include <sys/mman.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <random>

#include "store/qvapi.h"

namespace fenlor {

namespace {

constexpr char Magie[8] = {'Q', 'V', 'D', 'A', 'T', '\r', '\n', 0x1A};
constexpr u32 Version = 1;
constexpr u32 TailleEntete = 56;
constexpr std::size_t QueueMax = 1u << 20;
constexpr u64 PasReserve = 1u << 20;

template <class T>
void Pose(u8* octets, T valeur) {
  std::memcpy(octets, &valeur, sizeof valeur);
}
template <class T>
T Prend(const u8* octets) {
  T valeur;
  std::memcpy(&valeur, octets, sizeof valeur);
  return valeur;
}

}  // namespace

u64 TireId() {
  std::random_device hasard;
  u64 id = 0;
  while (id == 0) id = (u64{hasard()} << 32) ^ hasard();
  return id;
}

void FichierDat::Code(const EnteteDat& e, u8* o) {
  std::memcpy(o, Magie, 8);
  Pose(o + 8, Version);
  Pose(o + 12, e.numero);
  Pose(o + 14, e.taille);
  Pose(o + 16, e.id);
  Pose(o + 24, e.idReprise);
  Pose(o + 32, e.generation);
  Pose(o + 40, e.emplacements);
  Pose(o + 44, e.tete);
  Pose(o + 48, e.libres);
  Pose(o + 52, static_cast<u32>(crc32(0, o, 52)));
}

bool FichierDat::Decode(const u8* o, EnteteDat& e) {
  if (std::memcmp(o, Magie, 8) != 0 || Prend<u32>(o + 8) != Version) return false;
  if (Prend<u32>(o + 52) != static_cast<u32>(crc32(0, o, 52))) return false;
  e = {Prend<u16>(o + 12), Prend<u16>(o + 14), Prend<u64>(o + 16), Prend<u64>(o + 24),
       Prend<u64>(o + 32), Prend<u32>(o + 40), Prend<u32>(o + 44), Prend<u32>(o + 48)};
  return e.taille >= 8 && e.tete <= e.emplacements && e.libres <= e.emplacements;
}

FichierDat::~FichierDat() {
  if (m_projection) munmap(const_cast<u8*>(m_projection), m_tailleProjection);
}

int FichierDat::Cree(Systeme& systeme, const std::string& chemin, const EnteteDat& entete) {
  std::unique_ptr<Fichier> fichier;
  if (const int rc = systeme.Ouvre(chemin, Systeme::Creation, fichier)) return rc;
  std::vector<u8> octets(DebutEmplacements, 0);
  EnteteDat e = entete;
  e.generation = 0;
  Code(e, octets.data());
  e.generation = 1;
  Code(e, octets.data() + 512);
  if (const int rc = fichier->Ecrit(octets.data(), octets.size(), 0)) return rc;
  if (const int rc = fichier->Synchronise()) return rc;
  return systeme.SynchroniseDossier(DossierDe(chemin));
}

int FichierDat::Ouvre(Systeme& systeme, const std::string& chemin, u64 idReprise, bool reprise) {
  m_chemin = chemin;
  if (const int rc = systeme.Ouvre(chemin, Systeme::LectureEcriture, m_fichier)) return rc;
  u8 octets[DebutEmplacements];
  std::size_t lus = 0;
  if (const int rc = m_fichier->Lit(octets, sizeof octets, 0, lus)) return rc;
  if (lus < sizeof octets) return ErrEndommage;
  EnteteDat copies[2];
  const bool bonnes[2] = {Decode(octets, copies[0]), Decode(octets + 512, copies[1])};
  if (!bonnes[0] && !bonnes[1]) {
    return std::memcmp(octets, Magie, 8) && std::memcmp(octets + 512, Magie, 8) ? ErrFormat : ErrEndommage;
  }
  // A copy cut short by a crash is made good by the log; without the log's word
  // a single copy may be the older one, which forgets the last records.
  const bool voisines = bonnes[0] && bonnes[1] &&
                        (copies[0].generation + 1 == copies[1].generation || copies[1].generation + 1 == copies[0].generation);
  if (!reprise && !voisines) return ErrEndommage;
  if (bonnes[0] && bonnes[1]) {
    entete = copies[copies[1].generation > copies[0].generation];
  } else {
    entete = copies[bonnes[1]];
  }
  Empreinte empreinte;
  if (const int rc = m_fichier->Mesure(empreinte)) return rc;
  const u64 exacte = DebutEmplacements + u64{entete.emplacements} * entete.taille;
  if (reprise) {
    return Projette(std::max(exacte, empreinte.taille));
  }
  if (empreinte.taille < exacte) return ErrEndommage;
  if (empreinte.taille > exacte) {
    if (entete.idReprise != idReprise) return ErrEndommage;
    if (const int rc = m_fichier->Tronque(exacte)) return rc;
  }
  m_reserve = exacte;
  return Projette(exacte);
}

EtatEmplacement FichierDat::EtatDe(u8 marque, const u8* o) {
  if (marque == 4) {
    const u32 numero = Prend<u32>(o);
    return numero == 0 ? EtatEmplacement::Jamais
                       : numero == 0xFFFFFFFFu ? EtatEmplacement::Libre : EtatEmplacement::Vivant;
  }
  return *o == 1 ? EtatEmplacement::Vivant
                 : *o == 255 ? EtatEmplacement::Libre : *o == 0 ? EtatEmplacement::Jamais : EtatEmplacement::Inconnu;
}

EtatEmplacement FichierDat::EtatDe(const u8* o) const { return EtatDe(m_marque, o); }

int FichierDat::Projette(u64 taille) {
  if (taille <= m_tailleProjection) return 0;
  const u64 voulue = std::max<u64>(taille + taille / 2, 16u << 20);
  if (m_projection) munmap(const_cast<u8*>(m_projection), m_tailleProjection);
  m_projection = nullptr;
  m_tailleProjection = 0;
  void* p = mmap(nullptr, voulue, PROT_READ, MAP_SHARED, m_fichier->Descripteur(), 0);
  if (p == MAP_FAILED) return errno;
  m_projection = static_cast<const u8*>(p);
  m_tailleProjection = voulue;
  return 0;
}

const u8* FichierDat::Place(Position position) const {
  if (m_debutQueue && position >= m_debutQueue) return m_queue.data() + u64(position - m_debutQueue) * entete.taille;
  return m_projection + Offset(position);
}

int FichierDat::Reserve(Position position) {
  const u64 fin = Offset(position) + entete.taille;
  if (fin <= m_reserve) return Projette(fin);
  const u64 voulue = std::max(fin, m_reserve + std::max(PasReserve, m_reserve / 8));
  int rc = m_fichier->Reserve(m_reserve, voulue);
  u64 obtenue = voulue;
  if (rc == ENOSPC || rc == EDQUOT || rc == EFBIG) {
    obtenue = fin;
    rc = m_fichier->Reserve(m_reserve, fin);
  }
  if (rc) return rc;
  m_reserve = obtenue;
  return Projette(m_reserve);
}

int FichierDat::EcritPlace(Position position, u32 decalage, const void* octets, u32 taille) {
  return m_fichier->Ecrit(octets, taille, Offset(position) + decalage);
}

int FichierDat::AjouteQueue(Position position, const void* rec) {
  if (const int rc = Reserve(position)) return rc;
  if (!m_debutQueue) m_debutQueue = position;
  const u8* octets = static_cast<const u8*>(rec);
  m_queue.insert(m_queue.end(), octets, octets + entete.taille);
  return m_queue.size() < QueueMax ? 0 : VerseQueue();
}

int FichierDat::ModifieQueue(Position position, const void* rec) {
  if (m_debutQueue && position >= m_debutQueue) {
    std::memcpy(m_queue.data() + u64(position - m_debutQueue) * entete.taille, rec, entete.taille);
    return 0;
  }
  return EcritPlace(position, 0, rec, entete.taille);
}

int FichierDat::VerseQueue() {
  if (m_queue.empty()) return 0;
  if (const int rc = m_fichier->Ecrit(m_queue.data(), m_queue.size(), Offset(m_debutQueue))) return rc;
  m_queue.clear();
  m_debutQueue = 0;
  return 0;
}

void FichierDat::CoupeQueue(u32 emplacements) {
  if (!m_debutQueue) return;
  if (emplacements < m_debutQueue) {
    m_queue.clear();
    m_debutQueue = 0;
  } else {
    m_queue.resize(u64(emplacements - m_debutQueue + 1) * entete.taille);
  }
}

int FichierDat::Synchronise() { return m_fichier->Synchronise(); }

int FichierDat::EcritEntete() {
  u8 octets[TailleEntete];
  EnteteDat suivante = entete;
  ++suivante.generation;
  Code(suivante, octets);
  if (const int rc = m_fichier->Ecrit(octets, sizeof octets, suivante.generation & 1 ? 512 : 0)) return rc;
  entete = suivante;
  return 0;
}

int FichierDat::Ajuste() {
  const u64 exacte = DebutEmplacements + u64{entete.emplacements} * entete.taille;
  if (m_reserve == exacte) return 0;
  if (const int rc = m_fichier->Tronque(exacte)) return rc;
  m_reserve = exacte;
  return 0;
}

int FichierDat::Mesure(Empreinte& empreinte) { return m_fichier->Mesure(empreinte); }

}  // namespace fenlor
