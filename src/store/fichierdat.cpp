#include "store/fichierdat.h"

#include <sys/file.h>
#include <sys/mman.h>
#include <zlib.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>
#include <random>

#include "store/octets.h"
#include "store/qvapi.h"
#include "store/remplacement.h"

namespace fenlor {

namespace {

constexpr char Magie[8] = {'Q', 'V', 'D', 'A', 'T', '\r', '\n', 0x1A};
constexpr u32 TailleEntete = 56;
constexpr std::size_t QueueMax = 1u << 20;
constexpr u64 PasReserve = 1u << 20;

/// A copy of a header that nothing damaged, of whatever version.
bool EstEntete(const u8* o) {
  if (std::memcmp(o, Magie, 8) != 0) return false;
  return LitValeur<u32>(o + 52) == static_cast<u32>(crc32(0, o, 52));
}

bool EstDAutreVersion(const u8* o) { return EstEntete(o) && LitValeur<u32>(o + 8) > VersionSommes; }

}  // namespace

u64 TireId() {
  std::random_device hasard;
  u64 id = 0;
  while (id == 0) id = (u64{hasard()} << 32) ^ hasard();
  return id;
}

void FichierDat::Code(const EnteteDat& e, u8* o) {
  assert(e.taille >= 8 && e.id != 0);
  assert(e.tete <= e.emplacements && e.libres <= e.emplacements);
  std::memcpy(o, Magie, 8);
  PoseValeur(o + 8, e.version);
  PoseValeur(o + 12, e.numero);
  PoseValeur(o + 14, e.taille);
  PoseValeur(o + 16, e.id);
  PoseValeur(o + 24, e.idReprise);
  PoseValeur(o + 32, e.generation);
  PoseValeur(o + 40, e.emplacements);
  PoseValeur(o + 44, e.tete);
  PoseValeur(o + 48, e.libres);
  PoseValeur(o + 52, static_cast<u32>(crc32(0, o, 52)));
}

bool FichierDat::Decode(const u8* o, EnteteDat& e) {
  const u32 version = LitValeur<u32>(o + 8);
  if (!EstEntete(o) || version == 0 || version > VersionSommes) return false;
  e = {version,
       LitValeur<u16>(o + 12),
       LitValeur<u16>(o + 14),
       LitValeur<u64>(o + 16),
       LitValeur<u64>(o + 24),
       LitValeur<u64>(o + 32),
       LitValeur<u32>(o + 40),
       LitValeur<u32>(o + 44),
       LitValeur<u32>(o + 48)};
  return e.taille >= 8 && e.tete <= e.emplacements && e.libres <= e.emplacements;
}

FichierDat::~FichierDat() {
  if (m_projection) munmap(const_cast<u8*>(m_projection), m_tailleProjection);
}

int FichierDat::Cree(Systeme& systeme, const std::string& chemin, const EnteteDat& entete) {
  assert(entete.emplacements == 0 && entete.tete == 0 && entete.libres == 0);
  std::string octets(DebutEmplacements, '\0');
  EnteteDat e = entete;
  e.generation = 0;
  Code(e, reinterpret_cast<u8*>(octets.data()));
  e.generation = 1;
  Code(e, reinterpret_cast<u8*>(octets.data()) + 512);
  // The content before the name: one that a death or a full disk leaves behind is that of a whole file.
  Empreinte empreinte;
  if (const int rc = RemplaceFichier(systeme, chemin, chemin + ".neuf", octets, empreinte)) return rc;
  return systeme.SynchroniseDossier(DossierDe(chemin));
}

int FichierDat::Ouvre(Systeme& systeme, const std::string& chemin, u64 idReprise, Pour pour) {
  assert(!m_fichier && !m_projection);
  m_chemin = chemin;
  const bool reprise = pour == Pour::Reprise || pour == Pour::Examen;
  const bool lecture = pour == Pour::Lecture || pour == Pour::Examen;
  const auto mode = lecture ? Systeme::Lecture : Systeme::LectureEcriture;
  if (const int rc = systeme.Ouvre(chemin, mode, m_fichier)) return rc;
  u8 octets[DebutEmplacements];
  std::size_t lus = 0;
  if (const int rc = m_fichier->Lit(octets, sizeof octets, 0, lus)) return rc;
  if (lus < sizeof octets) return ErrEndommage;
  EnteteDat copies[2];
  const bool bonnes[2] = {Decode(octets, copies[0]), Decode(octets + 512, copies[1])};
  if (!bonnes[0] && !bonnes[1])
    return EstDAutreVersion(octets) || EstDAutreVersion(octets + 512) ? ErrFormat : ErrEndommage;
  // A copy cut short by a crash is made good by the log; without the log's word
  // a single copy may be the older one, which forgets the last records.
  const bool voisines =
      bonnes[0] && bonnes[1] &&
      (copies[0].generation + 1 == copies[1].generation || copies[1].generation + 1 == copies[0].generation);
  if (!reprise && !voisines) return ErrEndommage;
  if (bonnes[0] && bonnes[1]) {
    entete = copies[copies[1].generation > copies[0].generation];
  } else {
    entete = copies[bonnes[1]];
  }
  Empreinte empreinte;
  if (const int rc = m_fichier->Mesure(empreinte)) return rc;
  const u64 exacte = TailleExacte();
  if (reprise) {
    return Projette(std::max(exacte, empreinte.taille));
  }
  if (empreinte.taille < exacte) return ErrEndommage;
  if (empreinte.taille > exacte) {
    // What stands behind the slots is a large unit that was never committed: the log, replayed
    // before any file is opened, knows nothing of it.
    if (entete.idReprise != idReprise) return ErrEndommage;
    const int rc = lecture ? 0 : m_fichier->Tronque(exacte);
    if (rc) return rc;
  }
  m_reserve = exacte;
  return Projette(exacte);
}

int FichierDat::Tient(bool partage) const {
  assert(m_fichier);
  const int descripteur = m_fichier->Descripteur();
  if (descripteur < 0 || ::flock(descripteur, (partage ? LOCK_SH : LOCK_EX) | LOCK_NB) == 0) return 0;
  // Where the disk knows no locks there is the practice's own.
  return errno == EWOULDBLOCK ? int{ErrTenu} : 0;
}

EtatEmplacement FichierDat::EtatDe(u8 marque, const u8* o) {
  if (marque == 4) {
    const u32 numero = LitValeur<u32>(o);
    return numero == 0             ? EtatEmplacement::Jamais
           : numero == 0xFFFFFFFFu ? EtatEmplacement::Libre
                                   : EtatEmplacement::Vivant;
  }
  return *o == 1     ? EtatEmplacement::Vivant
         : *o == 255 ? EtatEmplacement::Libre
         : *o == 0   ? EtatEmplacement::Jamais
                     : EtatEmplacement::Inconnu;
}

EtatEmplacement FichierDat::EtatDe(const u8* o) const { return EtatDe(m_marque, o); }

int FichierDat::Projette(u64 taille) {
  assert(m_fichier);
  if (taille <= m_tailleProjection) return 0;
  const u64 voulue = std::max<u64>(taille + taille / 2, 16u << 20);
  // Where there is no room for a longer one the records go on being read in the one that there is.
  void* p = m_projection ? mremap(const_cast<u8*>(m_projection), m_tailleProjection, voulue, MREMAP_MAYMOVE)
                         : mmap(nullptr, voulue, PROT_READ, MAP_SHARED, m_fichier->Descripteur(), 0);
  if (p == MAP_FAILED) return errno;
  m_projection = static_cast<const u8*>(p);
  m_tailleProjection = voulue;
  assert(m_tailleProjection >= taille);
  return 0;
}

const u8* FichierDat::Place(Position position) const {
  assert(position > 0);
  if (m_debutQueue && position >= m_debutQueue) return m_queue.data() + PlaceQueue(position);
  assert(m_projection && Offset(position) + entete.Pas() <= m_tailleProjection);
  return m_projection + Offset(position);
}

int FichierDat::Reserve(Position position) {
  assert(position > 0 && m_reserve >= DebutEmplacements);
  const u64 fin = Offset(position) + entete.Pas();
  if (fin <= m_reserve) return Projette(fin);
  const u64 voulue = std::max(fin, m_reserve + std::max(PasReserve, m_reserve / 8));
  int rc = m_fichier->Reserve(m_reserve, voulue);
  u64 obtenue = voulue;
  if (rc == ENOSPC || rc == EDQUOT || rc == EFBIG) {
    obtenue = fin;
    rc = m_fichier->Reserve(m_reserve, fin);
  }
  if (rc) return rc;
  assert(obtenue >= fin);
  m_reserve = obtenue;
  return Projette(m_reserve);
}

int FichierDat::EcritPlace(Position position, u32 decalage, const void* octets, u32 taille) {
  assert(position > 0 && decalage + taille <= entete.Pas());
  return m_fichier->Ecrit(octets, taille, Offset(position) + decalage);
}

int FichierDat::EcritSuite(Position premiere, const void* octets, std::size_t taille) {
  assert(premiere > 0 && taille > 0 && taille % entete.Pas() == 0);
  return m_fichier->Ecrit(octets, taille, Offset(premiere));
}

void FichierDat::PoseScelle(u8* emplacement, const void* rec, Position position) const {
  assert(entete.version == VersionSommes && position > 0);
  if (emplacement != rec) std::memcpy(emplacement, rec, entete.taille);
  PoseValeur(emplacement + entete.taille, SommeEmplacement(emplacement, entete.taille, position));
}

bool FichierDat::EstJuste(Position position) const {
  return entete.version < VersionSommes || SommeJuste(Place(position), entete.taille, position);
}

int FichierDat::Verifie(const std::set<Position>& positions) {
  if (const int rc = Projette(TailleExacte())) return rc;
  const auto bonne = [this](Position p) { return p > entete.emplacements || EstJuste(p); };
  return std::all_of(positions.begin(), positions.end(), bonne) ? 0 : ErrEndommage;
}

int FichierDat::VerifieTout() const {
  if (entete.version < VersionSommes) return 0;
  Position faux = 0;
  const int rc = FauxDuFichier(*m_fichier, DebutEmplacements, entete.emplacements, entete.taille, faux);
  return rc == 0 && faux != 0 ? ErrEndommage : rc;
}

int FichierDat::Convertit(Systeme& systeme) {
  assert(entete.version < VersionSommes && m_projection);
  const std::string neuf = m_chemin.substr(0, m_chemin.rfind('.')) + ".neuf";
  FichierDat nouveau;
  nouveau.entete = entete;
  nouveau.entete.version = VersionSommes;
  int rc = systeme.Ouvre(neuf, Systeme::Creation, nouveau.m_fichier);
  std::vector<u8> octets(DebutEmplacements, 0);
  Code(nouveau.entete, octets.data() + (entete.generation & 1 ? 512 : 0));
  EnteteDat autre = nouveau.entete;
  ++autre.generation;
  Code(autre, octets.data() + (autre.generation & 1 ? 512 : 0));
  u64 place = 0;
  for (Position p = 1; !rc && p <= entete.emplacements; ++p) {
    octets.resize(octets.size() + nouveau.entete.Pas());
    nouveau.PoseScelle(octets.data() + octets.size() - nouveau.entete.Pas(), Place(p), p);
    if (octets.size() < QueueMax) continue;
    rc = nouveau.m_fichier->Ecrit(octets.data(), octets.size(), place);
    place += octets.size();
    octets.clear();
  }
  if (!rc) rc = nouveau.m_fichier->Ecrit(octets.data(), octets.size(), place);
  // The old file keeps the name until the new one is on the disk as a whole: a conversion that is cut
  // short is begun again.
  if (!rc) rc = nouveau.m_fichier->Synchronise();
  if (!rc) rc = systeme.Renomme(neuf, m_chemin);
  if (rc) systeme.Supprime(neuf);
  return rc ? rc : systeme.SynchroniseDossier(DossierDe(m_chemin));
}

int FichierDat::AjouteQueue(Position position, const void* rec) {
  // Nothing that is committed is ever touched by a unit that is not.
  assert(position > entete.emplacements);
  if (const int rc = Reserve(position)) return rc;
  if (!m_debutQueue) m_debutQueue = position;
  assert(PlaceQueue(position) == m_queue.size());
  m_queue.resize(m_queue.size() + entete.Pas());
  PoseScelle(m_queue.data() + PlaceQueue(position), rec, position);
  return m_queue.size() < QueueMax ? 0 : VerseQueue();
}

int FichierDat::ModifieQueue(Position position, const void* rec) {
  assert(position > entete.emplacements);
  if (m_debutQueue && position >= m_debutQueue) {
    assert(PlaceQueue(position) + entete.Pas() <= m_queue.size());
    PoseScelle(m_queue.data() + PlaceQueue(position), rec, position);
    return 0;
  }
  m_queueDurable = false;
  std::vector<u8> image(entete.Pas());
  PoseScelle(image.data(), rec, position);
  return EcritPlace(position, 0, image.data(), entete.Pas());
}

int FichierDat::VerseQueue() {
  if (m_queue.empty()) return 0;
  assert(m_debutQueue > entete.emplacements && m_queue.size() % entete.Pas() == 0);
  m_queueDurable = false;
  if (const int rc = m_fichier->Ecrit(m_queue.data(), m_queue.size(), Offset(m_debutQueue))) return rc;
  m_queue.clear();
  m_debutQueue = 0;
  return 0;
}

void FichierDat::CoupeQueue(u32 emplacements) {
  assert(emplacements >= entete.emplacements);
  if (emplacements == entete.emplacements) m_queuePerdue = false;
  if (!m_debutQueue) return;
  if (emplacements < m_debutQueue) {
    m_queue.clear();
    m_debutQueue = 0;
  } else {
    assert(PlaceQueue(emplacements) + entete.Pas() <= m_queue.size());
    m_queue.resize(PlaceQueue(emplacements) + entete.Pas());
  }
}

int FichierDat::Synchronise() {
  if (m_queuePerdue) return EIO;
  if (const int rc = m_fichier->Synchronise()) {
    m_doute = true;
    m_queuePerdue = !m_queueDurable;
    return rc;
  }
  m_doute = false;
  if (m_queue.empty()) m_queueDurable = true;
  if (m_enteteEcrit) ++entete.generation;
  m_enteteEcrit = false;
  return 0;
}

int FichierDat::EcritEntete() {
  u8 octets[TailleEntete];
  EnteteDat suivante = entete;
  ++suivante.generation;
  Code(suivante, octets);
  // The copies take turns, and only after a sync: while one is being written the other one is on the
  // disk, and a unit never names a generation that a cut may take back.
  m_enteteEcrit = true;
  return m_fichier->Ecrit(octets, sizeof octets, suivante.generation & 1 ? 512 : 0);
}

int FichierDat::Ajuste() {
  assert(m_debutQueue == 0);
  const u64 exacte = TailleExacte();
  if (m_reserve == exacte) return 0;
  if (const int rc = m_fichier->Tronque(exacte)) return rc;
  m_reserve = exacte;
  return 0;
}

int FichierDat::Mesure(Empreinte& empreinte) { return m_fichier->Mesure(empreinte); }

int FichierDat::Tient() { return m_fichier->Tient(m_reserve); }

}  // namespace fenlor
