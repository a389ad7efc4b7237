#include "garde/archive.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>

#include "garde/flux.h"
#include "garde/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr const char* NomManifeste = "manifeste.json";
constexpr std::size_t TailleTampon = 256 * 1024;
/// Records of a tar.
constexpr std::size_t TailleBlocTar = 512;
/// Books shrink to a tenth or a twentieth; one that would swell to a thousand times its size is a trap.
constexpr u64 GonflementMax = 1000, GonflementLibre = u64{64} << 20;

constexpr std::array<u8, 16> DebutCachet = {0x5A, 0x2A, 0x4D, 0x18, 40,  0,   0, 0,
                                            'F',  'E',  'N',  'L',  'O', 'R', 0, 1};
constexpr std::size_t TailleCachet = DebutCachet.size() + sizeof(Sha256);

std::string NomCourt(const std::string& chemin) { return chemin.substr(chemin.rfind('/') + 1); }

/// What went wrong below the archive library, which only passes on that something did.
struct Incident {
  int erreur = 0;
};

using Tar = std::unique_ptr<archive, int (*)(archive*)>;
using EntreeTar = std::unique_ptr<archive_entry, void (*)(archive_entry*)>;

// ------------------------------------------------------------------ writing

struct Entete {
  std::string& octets;
  bool finie = false;
};

la_ssize_t SurEntete(archive*, void* client, const void* octets, std::size_t taille) {
  auto& entete = *static_cast<Entete*>(client);
  if (entete.finie) return -1;
  entete.octets.append(static_cast<const char*>(octets), taille);
  return static_cast<la_ssize_t>(taille);
}

/// Appends what a tar says in front of a file. False: no memory.
bool AjouteEntete(const std::string& nom, u64 taille, std::string& octets) {
  assert(!nom.empty());
  Entete entete{octets};
  const Tar tar(archive_write_new(), archive_write_free);
  const EntreeTar entree(archive_entry_new(), archive_entry_free);
  if (!tar || !entree) return false;
  archive_entry_set_pathname(entree.get(), nom.c_str());
  archive_entry_set_size(entree.get(), static_cast<la_int64_t>(taille));
  archive_entry_set_filetype(entree.get(), AE_IFREG);
  archive_entry_set_perm(entree.get(), 0600);
  const bool ecrit = archive_write_set_format_pax_restricted(tar.get()) == ARCHIVE_OK &&
                     archive_write_set_bytes_per_block(tar.get(), 0) == ARCHIVE_OK &&
                     archive_write_open(tar.get(), &entete, nullptr, SurEntete, nullptr) == ARCHIVE_OK &&
                     archive_write_header(tar.get(), entree.get()) == ARCHIVE_OK;
  // The bytes of the file come from elsewhere: the first zeros that the library puts in their place are
  // refused, and it ends. (A tar that is given up as failed would leak.)
  entete.finie = true;
  return ecrit;
}

/// Zeros behind a file, up to the next record.
void AjouteFin(u64 taille, std::string& octets) {
  octets.append((TailleBlocTar - taille % TailleBlocTar) % TailleBlocTar, '\0');
}

void RemplitPieces(const std::vector<PieceSource>& pieces, Manifeste& manifeste) {
  manifeste.pieces.clear();
  for (const PieceSource& piece : pieces) manifeste.pieces.push_back({piece.nom, piece.taille, piece.somme});
}

class Ecrivain {
 public:
  Ecrivain(Puits& puits, const std::string& chemin) : m_puits(puits), m_chemin(chemin) {}

  Refus Ecrit(const Manifeste& manifeste, const std::vector<PieceSource>& pieces,
              const AvanceArchive& avance) {
    const std::string json = EcritManifeste(manifeste);
    // What stands between the pieces is compressed by itself.
    std::string entre;
    if (!AjouteEntete(NomManifeste, json.size(), entre)) return Echec(ENOMEM);
    entre += json;
    AjouteFin(json.size(), entre);
    u64 faits = 0;
    for (const PieceSource& piece : pieces) {
      if (!AjouteEntete(piece.nom, piece.taille, entre)) return Echec(ENOMEM);
      if (const int erreur = Comprimes(entre)) return Echec(erreur);
      for (const Trame& trame : piece.trames)
        if (const Refus refus = EcritTrame(piece, trame)) return refus;
      entre.clear();
      AjouteFin(piece.taille, entre);
      if (avance && !avance(faits += piece.taille)) return Refus(ErrArchiveInterrompue);
    }
    entre.append(2 * TailleBlocTar, '\0');
    if (const int erreur = Comprimes(entre)) return Echec(erreur);
    const Sha256 somme = m_calcul.Fin();
    int erreur = m_puits.Ecrit(DebutCachet.data(), DebutCachet.size());
    if (!erreur) erreur = m_puits.Ecrit(somme.data(), somme.size());
    if (!erreur) erreur = m_puits.Termine();
    return erreur ? Echec(erreur) : Refus();
  }

 private:
  int Sort(const void* octets, std::size_t taille) {
    m_calcul.Ajoute(octets, taille);
    return m_puits.Ecrit(octets, taille);
  }
  int Comprimes(const std::string& octets) {
    return Comprime(octets.data(), octets.size(), m_tampon) ? Sort(m_tampon.data(), m_tampon.size()) : ENOMEM;
  }
  Refus EcritTrame(const PieceSource& piece, const Trame& trame) {
    assert(piece.fichier && trame.taille > 0);
    m_tampon.resize(static_cast<std::size_t>(trame.taille));
    std::size_t lus = 0;
    int erreur = piece.fichier->Lit(m_tampon.data(), m_tampon.size(), trame.place, lus);
    if (!erreur && lus != m_tampon.size()) erreur = EIO;
    if (erreur) return Refus(ErrArchiveLivres, "", {piece.nom, TexteErreurSysteme(erreur)});
    erreur = Sort(m_tampon.data(), m_tampon.size());
    return erreur ? Echec(erreur) : Refus();
  }
  Refus Echec(int erreur) const {
    return Refus(ErrArchiveEcriture, "", {m_chemin, TexteErreurSysteme(erreur)});
  }

  Puits& m_puits;
  const std::string& m_chemin;
  CalculSha256 m_calcul;
  std::vector<u8> m_tampon;
};

// ------------------------------------------------------------------ reading

/// The bytes of an archive as the library asks for them, with their sum; the seal at the end is held back.
class Lecture {
 public:
  explicit Lecture(Source& source) : m_source(source), m_tampon(TailleTampon) {}

  /// Bytes that are not the seal; 0 at the end, -1 on a failure.
  la_ssize_t Suite(const void** octets) {
    // What was held back goes to the front; as much as a seal stays behind every answer.
    m_retenus.erase(m_retenus.begin(), m_retenus.begin() + static_cast<std::ptrdiff_t>(m_donnes));
    assert(m_retenus.size() <= TailleCachet);
    m_donnes = 0;
    while (m_retenus.size() <= TailleCachet) {
      std::size_t lus = 0;
      if ((incident.erreur = m_source.Lit(m_tampon.data(), m_tampon.size(), lus))) return -1;
      if (!lus) return 0;
      m_retenus.insert(m_retenus.end(), m_tampon.begin(),
                       m_tampon.begin() + static_cast<std::ptrdiff_t>(lus));
    }
    m_donnes = m_retenus.size() - TailleCachet;
    assert(m_donnes > 0);
    m_calcul.Ajoute(m_retenus.data(), m_donnes);
    *octets = m_retenus.data();
    return static_cast<la_ssize_t>(m_donnes);
  }
  /// Reads to the end; true when the seal stands there and is that of all bytes before it.
  bool CachetJuste() {
    const void* octets = nullptr;
    la_ssize_t n;
    while ((n = Suite(&octets)) > 0) {
    }
    if (n < 0 || m_retenus.size() != TailleCachet) return false;
    const Sha256 somme = m_calcul.Fin();
    return std::equal(DebutCachet.begin(), DebutCachet.end(), m_retenus.begin()) &&
           std::equal(somme.begin(), somme.end(), m_retenus.begin() + DebutCachet.size());
  }

  Incident incident;

 private:
  Source& m_source;
  std::vector<u8> m_tampon, m_retenus;
  std::size_t m_donnes = 0;
  CalculSha256 m_calcul;
};

la_ssize_t SurLecture(archive* a, void* client, const void** octets) {
  const la_ssize_t n = static_cast<Lecture*>(client)->Suite(octets);
  if (n < 0) archive_set_error(a, EIO, "source");
  return n;
}

/// One reading of an archive.
class LecteurTar {
 public:
  LecteurTar(Systeme& systeme, const std::string& chemin)
      : m_systeme(systeme), m_chemin(chemin), m_tar(archive_read_new(), archive_read_free) {}

  Refus Ouvre(const std::string& motDePasse, Manifeste& manifeste) {
    int erreur = m_systeme.Ouvre(m_chemin, Systeme::Lecture, m_fichier);
    if (!erreur) erreur = m_fichier->Mesure(m_empreinte);
    if (!erreur) erreur = SourceFichier(*m_fichier, motDePasse, m_source);
    if (erreur) return Echec(erreur);
    m_lecture = std::make_unique<Lecture>(*m_source);
    archive* tar = m_tar.get();
    if (!tar) return Echec(ENOMEM);
    archive_read_support_filter_zstd(tar);
    archive_read_support_format_tar(tar);
    if (archive_read_open(tar, m_lecture.get(), nullptr, SurLecture, nullptr) != ARCHIVE_OK)
      return EchecTar("son début est illisible"_w);
    return Premiere(manifeste);
  }

  /// The entry of a piece; its bytes go to `suite`, an errno value of which ends the reading.
  Refus Piece(const PieceArchive& piece, const std::function<int(const u8*, std::size_t)>& suite) {
    u64 taille = 0;
    if (const Refus refus = Entree(piece.nom, taille)) return refus;
    if (taille != piece.taille) return Endommagee(piece.nom + " n'a pas la longueur annoncée"_w);
    CalculSha256 calcul;
    if (const Refus refus = Donnees(taille, piece.nom, [&](const u8* octets, std::size_t n) {
          calcul.Ajoute(octets, n);
          return suite(octets, n);
        }))
      return refus;
    if (calcul.Fin() != piece.somme) return Endommagee(piece.nom + " n'a pas la somme annoncée"_w);
    return {};
  }

  Refus Fin() {
    assert(m_lecture);
    archive_entry* entree = nullptr;
    const int suite = archive_read_next_header(m_tar.get(), &entree);
    if (suite == ARCHIVE_OK || suite == ARCHIVE_WARN)
      return Refusee("elle contient plus que son manifeste n'annonce");
    if (suite != ARCHIVE_EOF) return EchecTar("sa fin est illisible");
    if (m_lecture->CachetJuste()) return {};
    return m_lecture->incident.erreur ? Echec(m_lecture->incident.erreur)
                                      : Endommagee("la somme de l'ensemble n'est pas la bonne");
  }

  Refus Endommagee(const std::string& raison) const {
    return Refus(ErrArchiveEndommagee, "", {NomCourt(m_chemin), raison});
  }
  Refus Refusee(const std::string& raison) const {
    return Refus(ErrArchiveRefusee, "", {NomCourt(m_chemin), raison});
  }

 private:
  Refus Premiere(Manifeste& manifeste) {
    u64 taille = 0;
    if (const Refus refus = Entree(NomManifeste, taille)) return refus;
    if (taille > TailleManifesteMax) return Refusee("son manifeste est trop long");
    std::string json;
    json.reserve(static_cast<std::size_t>(taille));
    if (const Refus refus = Donnees(taille, NomManifeste, [&](const u8* octets, std::size_t n) {
          json.append(reinterpret_cast<const char*>(octets), n);
          return 0;
        }))
      return refus;
    if (const std::string faute = LitManifeste(json, manifeste); !faute.empty()) return Refusee(faute);
    if (manifeste.Octets() > GonflementLibre && manifeste.Octets() / GonflementMax > m_empreinte.taille)
      return Refusee("elle annonce mille fois sa taille");
    return {};
  }

  /// The next entry, which must be a plain file of that name.
  Refus Entree(const std::string& nom, u64& taille) {
    archive_entry* entree = nullptr;
    const int suite = archive_read_next_header(m_tar.get(), &entree);
    if (suite == ARCHIVE_EOF) return Endommagee(nom + " manque");
    if (suite != ARCHIVE_OK) return EchecTar(nom + " est illisible");
    const char* lu = archive_entry_pathname(entree);
    if (!lu || nom != lu) return Refusee("elle ne contient pas " + nom + " à sa place"_w);
    if (archive_entry_filetype(entree) != AE_IFREG || archive_entry_hardlink(entree) ||
        archive_entry_symlink(entree) || !archive_entry_size_is_set(entree))
      return Refusee(nom + " n'y est pas un fichier ordinaire");
    taille = static_cast<u64>(archive_entry_size(entree));
    return {};
  }

  Refus Donnees(u64 taille, const std::string& nom, const std::function<int(const u8*, std::size_t)>& suite) {
    std::vector<u8> tampon(TailleTampon);
    for (u64 place = 0; place < taille;) {
      const std::size_t voulus = static_cast<std::size_t>(std::min<u64>(tampon.size(), taille - place));
      const la_ssize_t lus = archive_read_data(m_tar.get(), tampon.data(), voulus);
      if (lus <= 0) return EchecTar(nom + " est illisible");
      place += static_cast<u64>(lus);
      if (const int erreur = suite(tampon.data(), static_cast<std::size_t>(lus))) {
        if (erreur == ECANCELED) return Refus(ErrArchiveInterrompue);
        return Refus(ErrArchiveEcriture, "", {nom, TexteErreurSysteme(erreur)});
      }
    }
    return {};
  }

  /// What the library could not read: the bytes below failed, or they are not what they should be.
  Refus EchecTar(const std::string& raison) const {
    return m_lecture->incident.erreur ? Echec(m_lecture->incident.erreur) : Endommagee(raison);
  }
  Refus Echec(int erreur) const {
    const std::string nom = NomCourt(m_chemin);
    switch (erreur) {
      case FluxEtranger:
        return Refus(ErrArchiveEtrangere, "", {nom});
      case FluxRecent:
        return Refus(ErrArchiveRecente, "", {nom, "2"});
      case FluxSansMotDePasse:
        return Refus(ErrArchiveProtegee, "motDePasse", {nom});
      case FluxMotDePasse:
        return Refus(ErrArchiveMotDePasse, "motDePasse", {nom});
      case FluxDemesure:
        return Refusee("elle demande plus de mémoire qu'aucune sauvegarde de Fenlor"_w);
      case FluxEndommage:
        return Endommagee("un bloc ne s'ouvre pas, ou sa fin manque");
    }
    return Refus(ErrArchiveLecture, "", {m_chemin, TexteErreurSysteme(erreur)});
  }

  Systeme& m_systeme;
  const std::string m_chemin;
  std::unique_ptr<Fichier> m_fichier;
  Empreinte m_empreinte;
  std::unique_ptr<Source> m_source;
  std::unique_ptr<Lecture> m_lecture;
  Tar m_tar;  // goes first: it may still ask for bytes
};

Refus UneLecture(Systeme& systeme, const std::string& chemin, const std::string& motDePasse,
                 Manifeste& manifeste, const AvanceArchive& avance, const RecoitPiece& recoit, u64& faits) {
  LecteurTar lecteur(systeme, chemin);
  if (const Refus refus = lecteur.Ouvre(motDePasse, manifeste)) return refus;
  for (std::size_t i = 0; i < manifeste.pieces.size(); ++i) {
    const auto suite = [&](const u8* octets, std::size_t taille) {
      if (recoit)
        if (const int erreur = recoit(i, octets, taille)) return erreur;
      faits += taille;
      return avance && !avance(faits) ? ECANCELED : 0;
    };
    if (const Refus refus = lecteur.Piece(manifeste.pieces[i], suite)) return refus;
  }
  return lecteur.Fin();
}

}  // namespace

Refus EcritArchive(Fichier& fichier, const std::string& chemin, Manifeste& manifeste,
                   const std::vector<PieceSource>& pieces, const std::string& motDePasse,
                   const AvanceArchive& avance) {
  const auto echec = [&](int erreur) {
    return Refus(ErrArchiveEcriture, "", {chemin, TexteErreurSysteme(erreur)});
  };
  RemplitPieces(pieces, manifeste);
  const std::unique_ptr<Puits> puits = PuitsFichier(fichier, motDePasse);
  if (!puits) return echec(ENOMEM);
  if (const Refus refus = Ecrivain(*puits, chemin).Ecrit(manifeste, pieces, avance)) return refus;
  if (const int erreur = fichier.Synchronise()) return echec(erreur);
  return {};
}

Refus LitManifesteArchive(Systeme& systeme, const std::string& chemin, const std::string& motDePasse,
                          Manifeste& manifeste) {
  return LecteurTar(systeme, chemin).Ouvre(motDePasse, manifeste);
}

Refus ParcourtArchive(Systeme& systeme, const std::string& chemin, const std::string& motDePasse,
                      Manifeste& manifeste, const AvanceArchive& avance, const RecoitPiece& recoit) {
  u64 faits = 0;
  if (const Refus refus = UneLecture(systeme, chemin, motDePasse, manifeste, avance, {}, faits)) return refus;
  if (!recoit) return {};
  // Between the readings somebody may put another file in its place: what is handed out must be what was
  // checked.
  const Manifeste verifie = manifeste;
  if (const Refus refus = UneLecture(systeme, chemin, motDePasse, manifeste, avance, recoit, faits))
    return refus;
  return manifeste == verifie ? Refus()
                              : Refus(ErrArchiveEndommagee, "", {NomCourt(chemin), "elle a changé"_w});
}

}  // namespace fenlor
