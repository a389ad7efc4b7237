#include "store/reprise.h"

#include <zlib.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>
#include <utility>

#include "store/fichierdat.h"
#include "store/octets.h"
#include "store/qvapi.h"
#include "store/remplacement.h"

namespace fenlor {

namespace {

constexpr char Magie[8] = {'Q', 'V', 'R', 'E', 'P', '\r', '\n', 0x1A};
constexpr u32 Version = 1;
constexpr u64 TailleEntete = 32u << 10;
constexpr u64 DebutUnites = 2 * TailleEntete;
constexpr u32 Bloc = 4096;
constexpr u32 MagieUnite = 0x4E555651;  // "QVUN"
constexpr u32 TailleEnteteUnite = 32;
/// What is composed of a unit before it goes to the system: memory that the processor holds at hand.
constexpr std::size_t Piece = 256u << 10;
constexpr std::size_t TailleSceau = 64;
constexpr u32 SommeParPages = 2;  ///< kind of the sum of the key file; older logs have others here
constexpr std::size_t SceauxMax = (TailleEntete - 56) / TailleSceau;

template <class Octets, class T>
void Ajoute(Octets& octets, T valeur) {
  const auto place = octets.size();
  octets.resize(place + sizeof valeur);
  std::memcpy(octets.data() + place, &valeur, sizeof valeur);
}

/// Reads values off a text without ever passing its end.
struct Lecteur {
  const char* place;
  const char* fin;
  bool bon = true;
  template <class T>
  T Valeur() {
    if (static_cast<std::size_t>(fin - place) < sizeof(T)) return bon = false, place = fin, T{};
    const T valeur = LitValeur<T>(place);
    place += sizeof(T);
    return valeur;
  }
  std::string_view Texte(std::size_t n) {
    if (static_cast<std::size_t>(fin - place) < n) return bon = false, place = fin, std::string_view{};
    const std::string_view texte(place, n);
    place += n;
    return texte;
  }
};

u32 Crc(const void* octets, std::size_t taille, u32 avant = 0) {
  return static_cast<u32>(crc32_z(avant, static_cast<const u8*>(octets), taille));
}

u64 Arrondi(u64 taille) { return (taille + Bloc - 1) / Bloc * Bloc; }

}  // namespace

int JournalReprise::MauvaiseUnite() { return ErrJournalReprise; }

int JournalReprise::Ouvre(Systeme& systeme, const std::string& dossier, std::size_t capacite, bool lecture) {
  assert(!m_fichier && m_unite.empty());
  m_capacite = std::max<u64>(Arrondi(capacite), 16 * Bloc);
  const std::string chemin = Joint(dossier, "fenlor.rep");
  int rc = systeme.Ouvre(chemin, lecture ? Systeme::Lecture : Systeme::LectureEcriture, m_fichier);
  if (rc == ENOENT) return lecture ? 0 : Cree(systeme, chemin);
  if (rc) return rc;
  Empreinte empreinte;
  if ((rc = m_fichier->Mesure(empreinte))) return rc;
  m_taille = empreinte.taille;

  u64 epoques[2] = {}, suivantes[2] = {}, ids[2] = {};
  std::map<u64, Sceau> lus[2];
  bool bons[2] = {};
  for (int copie = 0; copie < 2; ++copie) {
    std::vector<u8> octets(TailleEntete);
    std::size_t nombre = 0;
    if ((rc = m_fichier->Lit(octets.data(), octets.size(), copie * TailleEntete, nombre))) return rc;
    octets.resize(nombre);
    bons[copie] = DecodeEntete(octets, epoques[copie], suivantes[copie], ids[copie], lus[copie]);
  }
  if (!bons[0] && !bons[1]) return ErrJournalReprise;
  const int copie = bons[0] && bons[1] ? epoques[1] > epoques[0] : bons[1];
  m_epoque = epoques[copie];
  m_premiere = m_suivante = suivantes[copie];
  m_id = ids[copie];
  sceaux = std::move(lus[copie]);
  m_fin = m_lecture = 0;
  return 0;
}

int JournalReprise::Cree(Systeme& systeme, const std::string& chemin) {
  // Made under another name: a log is there whole or not at all. Space first, for a commit must not
  // meet a full disk half-way; the header last, so that zeroes are never taken for a log.
  const std::string provisoire = NomProvisoire(chemin);
  int rc = systeme.Ouvre(provisoire, Systeme::Creation, m_fichier);
  if (rc) return rc;
  const std::vector<u8> zeros(256u << 10, 0);
  m_taille = DebutUnites + m_capacite;
  assert(m_taille % Bloc == 0);
  for (u64 place = 0; place < m_taille && !rc; place += zeros.size()) {
    rc = m_fichier->Ecrit(zeros.data(), std::min<u64>(zeros.size(), m_taille - place), place);
  }
  m_id = TireId();
  m_epoque = 1;
  if (!rc) rc = EcritEntete(m_epoque);
  // Content, then name, then the durability of the name: in any other order a crash leaves a
  // "fenlor.rep" of zeroes, which would be refused as damaged.
  if (!rc) rc = m_fichier->Synchronise();
  if (!rc) rc = systeme.Renomme(provisoire, chemin);
  if (!rc) rc = systeme.SynchroniseDossier(DossierDe(chemin));
  if (rc) systeme.Supprime(provisoire);
  return rc;
}

int JournalReprise::EcritEntete(u64 copie) {
  assert(m_id != 0 && m_epoque != 0 && m_premiere != 0);
  std::vector<u8> o(Magie, Magie + 8);
  Ajoute(o, Version);
  Ajoute(o, u32{0});
  Ajoute(o, m_id);
  Ajoute(o, m_epoque);
  Ajoute(o, m_premiere);
  const std::size_t nombre = std::min(sceaux.size(), SceauxMax);
  Ajoute(o, static_cast<u32>(nombre));
  Ajoute(o, u32{0});
  std::size_t n = 0;
  for (const auto& [id, s] : sceaux) {
    if (n++ == nombre) break;
    Ajoute(o, id);
    Ajoute(o, s.tailleDat);
    Ajoute(o, s.secondesDat);
    Ajoute(o, static_cast<u32>(s.nanoDat));
    Ajoute(o, static_cast<u32>(s.nanoIdx));
    Ajoute(o, s.tailleIdx);
    Ajoute(o, s.secondesIdx);
    Ajoute(o, s.crcIdx);
    Ajoute(o, SommeParPages);
    o.resize(o.size() + 8);
  }
  assert(o.size() == 48 + nombre * TailleSceau && o.size() <= TailleEntete);
  PoseValeur(o.data() + 12, Crc(o.data() + 16, o.size() - 16));
  return m_fichier->Ecrit(o.data(), o.size(), copie & 1 ? TailleEntete : 0);
}

bool JournalReprise::DecodeEntete(const std::vector<u8>& o, u64& epoque, u64& suivante, u64& id,
                                  std::map<u64, Sceau>& lus) const {
  if (o.size() < 48 || std::memcmp(o.data(), Magie, 8) != 0 || LitValeur<u32>(&o[8]) != Version) return false;
  const u32 nombre = LitValeur<u32>(&o[40]);
  if (nombre > SceauxMax || o.size() < 48 + nombre * TailleSceau) return false;
  if (LitValeur<u32>(&o[12]) != Crc(&o[16], 32 + nombre * TailleSceau)) return false;
  id = LitValeur<u64>(&o[16]);
  epoque = LitValeur<u64>(&o[24]);
  suivante = LitValeur<u64>(&o[32]);
  for (u32 n = 0; n < nombre; ++n) {
    const u8* s = &o[48 + n * TailleSceau];
    if (LitValeur<u32>(s + 52) != SommeParPages) continue;
    lus[LitValeur<u64>(s)] = {LitValeur<u64>(s + 8),  LitValeur<i64>(s + 16), LitValeur<u32>(s + 24),
                              LitValeur<u64>(s + 32), LitValeur<i64>(s + 40), LitValeur<u32>(s + 28),
                              LitValeur<u32>(s + 48)};
  }
  return true;
}

int JournalReprise::Verifie() {
  m_derniere = m_finDerniere = 0;
  if (!m_fichier) return 0;
  const int rc = Relit([this](const std::vector<FichierUnite>&, const std::vector<ImageUnite>&) {
    m_derniere = std::exchange(m_finDerniere, m_fin);
    return 0;
  });
  Rembobine();
  return rc;
}

int JournalReprise::Affirme() {
  // The epoch's own copy was synced before its first unit. The other one may be that of an emptying whose
  // sync failed: written over in memory, perhaps as it was on the disk. A cut would then find the log
  // empty, and the data files half-way between the units that were being replayed.
  // And the last unit may be one whose sync failed before its program died: visible, and clean for the
  // kernel, which would not write it unless somebody did. Behind it one may stand that was told as refused:
  // wiped for the kernel alone.
  std::string unite(m_finDerniere - m_derniere, 0);
  std::size_t lus = 0;
  int rc = m_fichier->Lit(unite.data(), unite.size(), DebutUnites + m_derniere, lus);
  if (!rc) rc = m_fichier->Ecrit(unite.data(), lus, DebutUnites + m_derniere);
  if (!rc) rc = EcritEntete(m_epoque + 1);
  if (!rc) rc = Barre(m_finDerniere);
  return rc ? rc : m_fichier->Synchronise();
}

int JournalReprise::AffirmeVide() {
  assert(EstVide());
  // To its own copy: should a cut tear it, the other one leads to units that the data files hold already.
  int rc = EcritEntete(m_epoque);
  if (!rc) rc = m_fichier->Synchronise();
  // A unit may stand there that was told as refused. Not together with the header: a cut that loses this one
  // would leave the units behind the first.
  if (!rc) rc = Barre(0);
  return rc ? rc : m_fichier->Synchronise();
}

int JournalReprise::Barre(u64 place) {
  assert(place % Bloc == 0);
  if (DebutUnites + place + Bloc > m_taille) return 0;
  const std::vector<u8> zeros(Bloc, 0);
  return m_fichier->Ecrit(zeros.data(), zeros.size(), DebutUnites + place);
}

void JournalReprise::Commence(const std::vector<FichierUnite>& fichiers, std::size_t octets) {
  m_unite.clear();
  m_verses = 0;
  m_prepare = false;
  m_erreurPiece = 0;
  Ajoute(m_unite, MagieUnite);
  Ajoute(m_unite, u32{0});
  Ajoute(m_unite, m_epoque);
  Ajoute(m_unite, m_suivante);
  Ajoute(m_unite, u32{0});
  Ajoute(m_unite, static_cast<u32>(fichiers.size()));
  for (const FichierUnite& f : fichiers) {
    assert(f.id != 0 && !f.chemin.empty() && f.chemin.size() <= 0xFFFF);
    assert(f.tete <= f.emplacements && f.libres <= f.emplacements);
    Ajoute(m_unite, f.id);
    Ajoute(m_unite, f.generation);
    Ajoute(m_unite, f.numero);
    Ajoute(m_unite, f.taille);
    Ajoute(m_unite, f.emplacements);
    Ajoute(m_unite, f.tete);
    Ajoute(m_unite, f.libres);
    Ajoute(m_unite, static_cast<u16>(f.chemin.size()));
    m_unite.insert(m_unite.end(), f.chemin.begin(), f.chemin.end());
  }
  m_promis = m_unite.size() + octets;
  // The length is part of what the checksum covers: it is put in first.
  PoseValeur(m_unite.data() + 24, static_cast<u32>(m_promis - TailleEnteteUnite + 4));
}

void JournalReprise::AjouteImage(const ImageUnite& image) {
  if (m_erreurPiece) return;  // told by `Ecrit`
  assert(m_verses + m_unite.size() >= TailleEnteteUnite);
  assert(image.position > 0 && image.octets.size() <= 0xFFFF);
  assert(!image.octets.empty() || image.zeros > 0);
  const std::size_t debut = m_unite.size();
  m_unite.resize(debut + TailleImage(image.octets.size()));
  u8* place = m_unite.data() + debut;
  PoseValeur(place, image.fichier);
  PoseValeur(place + 2, image.decalage);
  PoseValeur(place + 4, static_cast<u16>(image.octets.size()));
  PoseValeur(place + 6, image.zeros);
  PoseValeur(place + 8, image.position);
  if (!image.octets.empty()) std::memcpy(place + TailleImage(0), image.octets.data(), image.octets.size());
  assert(m_verses + m_unite.size() <= m_promis);
  if (m_unite.size() >= Piece) m_erreurPiece = Verse();
}

bool JournalReprise::Tient() const { return m_fin == 0 || m_fin + Arrondi(m_promis) <= m_capacite; }

/// The place of a unit, before its first byte goes there.
int JournalReprise::Prepare() {
  assert(!m_prepare && m_fin % Bloc == 0 && Tient());
  if (m_promis > 0xFFFFFFFFu - Bloc) return EFBIG;
  if (m_aVider) return EIO;
  // A unit that failed may have reached the disk all the same: it must be gone
  // before another one is allowed to count.
  if (m_doute) {
    if (const int rc = Barre(m_fin)) return rc;
    if (const int rc = m_fichier->Synchronise()) return rc;
    m_doute = false;
  }
  const u64 fin = DebutUnites + m_fin + Arrondi(m_promis);
  if (fin > m_taille) {
    if (const int rc = m_fichier->Reserve(m_taille, fin)) return rc;
    m_taille = fin;
  }
  m_prepare = true;
  return 0;
}

/// Hands the blocks that are full to the system. The first one waits: only it makes a unit of the others.
int JournalReprise::Verse() {
  if (!m_prepare)
    if (const int rc = Prepare()) return rc;
  const std::size_t pleins = m_unite.size() / Bloc * Bloc;
  const u8* octets = m_unite.data();
  int rc = 0;
  if (m_verses == 0) {
    m_premierBloc.assign(octets, octets + Bloc);
    m_somme = Crc(octets + 8, pleins - 8);
    rc = m_fichier->Ecrit(octets + Bloc, pleins - Bloc, DebutUnites + m_fin + Bloc);
  } else {
    m_somme = Crc(octets, pleins, m_somme);
    rc = m_fichier->Ecrit(octets, pleins, DebutUnites + m_fin + m_verses);
  }
  m_verses += pleins;
  m_unite.erase(m_unite.begin(), m_unite.begin() + static_cast<std::ptrdiff_t>(pleins));
  assert(m_verses % Bloc == 0 && m_unite.size() < Bloc);
  return rc;
}

/// What of the unit the system does not have yet, its first block last.
int JournalReprise::VerseFin() {
  const std::size_t taille = m_unite.size();
  m_unite.resize(Arrondi(taille), 0);
  const u64 place = DebutUnites + m_fin;
  assert(place + m_verses + m_unite.size() <= m_taille);
  if (m_verses == 0) {
    PoseValeur(m_unite.data() + 4, Crc(m_unite.data() + 8, taille - 8));
    return m_fichier->Ecrit(m_unite.data(), m_unite.size(), place);
  }
  PoseValeur(m_premierBloc.data() + 4, Crc(m_unite.data(), taille, m_somme));
  if (taille)
    if (const int rc = m_fichier->Ecrit(m_unite.data(), m_unite.size(), place + m_verses)) return rc;
  return m_fichier->Ecrit(m_premierBloc.data(), m_premierBloc.size(), place);
}

int JournalReprise::Ecrit() {
  // A unit composed before the log was emptied bears the old epoch: it would not count.
  assert(LitValeur<u64>((m_verses ? m_premierBloc : m_unite).data() + 8) == m_epoque &&
         LitValeur<u64>((m_verses ? m_premierBloc : m_unite).data() + 16) == m_suivante);
  assert(m_verses + m_unite.size() == m_promis || m_erreurPiece);
  int rc = m_erreurPiece;
  if (!rc && !m_prepare) rc = Prepare();
  if (!m_prepare) return rc;
  if (!rc) rc = VerseFin();
  if (!rc) {
    rc = m_fichier->Synchronise();
    ++m_synchros;
  }
  if (rc) {
    // Told as failed, it must not come back after a crash: its first block is wiped at once, or, if
    // the disk does not take that either, before the next unit.
    m_doute = true;
    if (!Barre(m_fin) && !m_fichier->Synchronise()) m_doute = false;
    return rc;
  }
  assert(!m_doute && !m_aVider);
  m_fin += Arrondi(m_promis);
  ++m_suivante;
  return 0;
}

int JournalReprise::Vide() {
  // One step of the epoch voids all units at once: there is no moment at which some count and others
  // do not. The caller has synced the data files, for from here on nothing else holds their changes.
  ++m_epoque;
  const u64 premiere = std::exchange(m_premiere, m_suivante);
  int rc = EcritEntete(m_epoque);
  if (!rc) rc = m_fichier->Synchronise();
  if (rc) {
    // The disk may hold either header. The data files hold all units, so both are
    // right, until another unit is written: that waits for a header that is sure,
    // written to the same copy so that the other one stays whole. Meanwhile that copy
    // says what the other one says, or the next session would read from memory a
    // header that the disk never got.
    const u64 copie = m_epoque--;
    m_premiere = premiere;
    EcritEntete(copie);
    m_aVider = true;
    return rc;
  }
  m_aVider = false;
  m_fin = m_lecture = 0;
  m_doute = false;
  // A large unit made the log grow: it shrinks only now, when nothing in it counts.
  if (m_taille > DebutUnites + 4 * m_capacite) {
    assert(EstVide());
    if (m_fichier->Tronque(DebutUnites + m_capacite) == 0) m_taille = DebutUnites + m_capacite;
  }
  return 0;
}

bool JournalReprise::LitUnite(std::string& unite) {
  assert(m_lecture % Bloc == 0 && m_lecture == m_fin);
  m_erreurLecture = 0;
  char debut[TailleEnteteUnite];
  std::size_t lus = 0;
  if ((m_erreurLecture = m_fichier->Lit(debut, sizeof debut, DebutUnites + m_lecture, lus))) return false;
  bool bonne = lus == sizeof debut && LitValeur<u32>(debut) == MagieUnite &&
               LitValeur<u64>(debut + 8) == m_epoque && LitValeur<u64>(debut + 16) == m_suivante;
  const u64 taille = bonne ? u64{LitValeur<u32>(debut + 24)} + TailleEnteteUnite - 4 : 0;
  bonne = bonne && DebutUnites + m_lecture + taille <= m_taille && taille >= TailleEnteteUnite;
  if (bonne) {
    unite.resize(taille);
    if ((m_erreurLecture = m_fichier->Lit(unite.data(), taille, DebutUnites + m_lecture, lus))) return false;
    bonne = lus == taille && LitValeur<u32>(unite.data() + 4) == Crc(unite.data() + 8, taille - 8);
  }
  if (!bonne) {
    m_erreurLecture = VerifieFin();
    return false;
  }
  m_lecture += Arrondi(taille);
  m_fin = m_lecture;
  ++m_suivante;
  return true;
}

/// Behind the last good unit there may be one torn unit and the remains of older
/// epochs, but no whole unit of this epoch or a later one: that would mean that
/// acknowledged units before it are damaged. An empty log is looked at in its
/// first blocks only, for that is what every opening meets.
int JournalReprise::VerifieFin() {
  std::vector<char> bloc(64 * Bloc);
  for (u64 place = m_lecture; DebutUnites + place < m_taille; place += bloc.size()) {
    std::size_t lus = 0;
    if (const int rc = m_fichier->Lit(bloc.data(), bloc.size(), DebutUnites + place, lus)) return rc;
    for (std::size_t o = 0; o + TailleEnteteUnite <= lus; o += Bloc) {
      const char* u = bloc.data() + o;
      if (LitValeur<u32>(u) != MagieUnite || LitValeur<u64>(u + 8) < m_epoque) continue;
      const u64 epoque = LitValeur<u64>(u + 8), numero = LitValeur<u64>(u + 16);
      const u64 taille = u64{LitValeur<u32>(u + 24)} + TailleEnteteUnite - 4;
      if (epoque == m_epoque && numero <= m_suivante) continue;
      if (DebutUnites + place + o + taille > m_taille) continue;
      std::string unite(taille, 0);
      std::size_t n = 0;
      if (const int rc = m_fichier->Lit(unite.data(), taille, DebutUnites + place + o, n)) return rc;
      if (n == taille && LitValeur<u32>(unite.data() + 4) == Crc(unite.data() + 8, taille - 8))
        return ErrJournalReprise;
    }
    if (lus < bloc.size() || m_lecture == 0) break;
  }
  return 0;
}

bool JournalReprise::Decompose(const std::string& unite, std::vector<FichierUnite>& fichiers,
                               std::vector<ImageUnite>& images) {
  Lecteur l{unite.data() + 28, unite.data() + unite.size()};
  const u32 nombre = l.Valeur<u32>();
  for (u32 n = 0; n < nombre && l.bon; ++n) {
    FichierUnite f;
    f.id = l.Valeur<u64>();
    f.generation = l.Valeur<u64>();
    f.numero = l.Valeur<u16>();
    f.taille = l.Valeur<u16>();
    f.emplacements = l.Valeur<u32>();
    f.tete = l.Valeur<u32>();
    f.libres = l.Valeur<u32>();
    f.chemin = l.Texte(l.Valeur<u16>());
    if (f.tete > f.emplacements || f.libres > f.emplacements) return false;
    fichiers.push_back(std::move(f));
  }
  while (l.bon && l.place < l.fin) {
    ImageUnite i;
    i.fichier = l.Valeur<u16>();
    i.decalage = l.Valeur<u16>();
    const u16 taille = l.Valeur<u16>();
    i.zeros = l.Valeur<u16>();
    i.position = l.Valeur<u32>();
    i.octets = l.Texte(taille);
    if (!l.bon || i.fichier >= fichiers.size()) return false;
    const FichierUnite& f = fichiers[i.fichier];
    if (u32{i.decalage} + taille + i.zeros > f.taille || i.position == 0 || i.position > f.emplacements)
      return false;
    images.push_back(i);
  }
  return l.bon;
}

}  // namespace fenlor
