#include "garde/flux.h"

#include <nettle/sha2.h>
#include <sodium.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>

namespace fenlor {

namespace {

constexpr std::size_t TailleBloc = 64 * 1024;
constexpr std::size_t Surcroit = crypto_secretstream_xchacha20poly1305_ABYTES;
constexpr std::size_t TailleEntete = 64;
constexpr std::array<u8, 8> Magie = {'F', 'N', 'Z', '\r', '\n', 0x1A, 1, 0};
constexpr std::size_t ChampForme = 6, ChampOperations = 8, ChampMemoire = 16, ChampSel = 24, ChampFlux = 40;
// No archive of ours asks for more: a stranger's would stop the machine.
constexpr u64 OperationsMax = 16, MemoireMax = u64{1} << 30;

static_assert(crypto_pwhash_SALTBYTES == ChampFlux - ChampSel);
static_assert(crypto_secretstream_xchacha20poly1305_HEADERBYTES == TailleEntete - ChampFlux);

using Cle = std::array<u8, crypto_secretstream_xchacha20poly1305_KEYBYTES>;
using EtatFlux = crypto_secretstream_xchacha20poly1305_state;

bool Prete() { return sodium_init() >= 0; }

u64 LitU64(const u8* octets) {
  u64 nombre = 0;
  std::memcpy(&nombre, octets, sizeof nombre);
  return nombre;
}

bool FaitCle(const std::string& motDePasse, const u8* entete, Cle& cle) {
  assert(!motDePasse.empty());
  return Prete() && crypto_pwhash(cle.data(), cle.size(), motDePasse.data(), motDePasse.size(),
                                  entete + ChampSel, LitU64(entete + ChampOperations),
                                  LitU64(entete + ChampMemoire), crypto_pwhash_ALG_ARGON2ID13) == 0;
}

class PuitsNu : public Puits {
 public:
  explicit PuitsNu(Fichier& fichier) : m_fichier(fichier) {}
  int Ecrit(const void* octets, std::size_t taille) override {
    if (const int erreur = m_fichier.Ecrit(octets, taille, m_place)) return erreur;
    m_place += taille;
    return 0;
  }
  int Termine() override { return 0; }

 private:
  Fichier& m_fichier;
  u64 m_place = 0;
};

class PuitsChiffre : public Puits {
 public:
  explicit PuitsChiffre(Fichier& fichier) : m_sortie(fichier) { m_bloc.reserve(TailleBloc); }
  ~PuitsChiffre() override {
    sodium_memzero(&m_etat, sizeof m_etat);
    sodium_memzero(m_bloc.data(), m_bloc.size());
  }

  bool Prepare(const std::string& motDePasse, const CoutCle& cout) {
    assert(!m_commence);
    if (!Prete()) return false;
    std::memcpy(m_entete.data(), Magie.data(), Magie.size());
    const u64 travail[] = {cout.operations, cout.memoire};
    std::memcpy(&m_entete[ChampOperations], travail, sizeof travail);
    randombytes_buf(&m_entete[ChampSel], crypto_pwhash_SALTBYTES);
    Cle cle;
    if (!FaitCle(motDePasse, m_entete.data(), cle)) return false;
    crypto_secretstream_xchacha20poly1305_init_push(&m_etat, &m_entete[ChampFlux], cle.data());
    sodium_memzero(cle.data(), cle.size());
    return true;
  }
  int Ecrit(const void* octets, std::size_t taille) override {
    const u8* reste = static_cast<const u8*>(octets);
    while (taille) {
      // A full block waits for one more byte: only then it is known not to be the last.
      if (m_bloc.size() == TailleBloc)
        if (const int erreur = Pousse(false)) return erreur;
      const std::size_t n = std::min(taille, TailleBloc - m_bloc.size());
      assert(n > 0);
      m_bloc.insert(m_bloc.end(), reste, reste + n);
      reste += n;
      taille -= n;
    }
    return 0;
  }
  int Termine() override { return Pousse(true); }

 private:
  int Pousse(bool dernier) {
    assert(m_bloc.size() <= TailleBloc && (dernier || !m_bloc.empty()));
    if (!m_commence)
      if (const int erreur = m_sortie.Ecrit(m_entete.data(), m_entete.size())) return erreur;
    std::vector<u8> chiffre(m_bloc.size() + Surcroit);
    crypto_secretstream_xchacha20poly1305_push(&m_etat, chiffre.data(), nullptr, m_bloc.data(), m_bloc.size(),
                                               m_commence ? nullptr : m_entete.data(),
                                               m_commence ? 0 : m_entete.size(),
                                               dernier ? crypto_secretstream_xchacha20poly1305_TAG_FINAL
                                                       : crypto_secretstream_xchacha20poly1305_TAG_MESSAGE);
    m_commence = true;
    m_bloc.clear();
    return m_sortie.Ecrit(chiffre.data(), chiffre.size());
  }

  PuitsNu m_sortie;
  EtatFlux m_etat{};
  std::array<u8, TailleEntete> m_entete{};
  std::vector<u8> m_bloc;
  bool m_commence = false;
};

class SourceNue : public Source {
 public:
  explicit SourceNue(Fichier& fichier) : m_fichier(fichier) {}
  int Lit(void* tampon, std::size_t taille, std::size_t& lus) override {
    if (const int erreur = m_fichier.Lit(tampon, taille, m_place, lus)) return erreur;
    m_place += lus;
    return 0;
  }

 private:
  Fichier& m_fichier;
  u64 m_place = 0;
};

class SourceChiffree : public Source {
 public:
  SourceChiffree(Fichier& fichier, const std::array<u8, TailleEntete>& entete)
      : m_fichier(fichier), m_entete(entete) {}
  ~SourceChiffree() override {
    sodium_memzero(&m_etat, sizeof m_etat);
    sodium_memzero(m_clair.data(), m_clair.size());
  }

  /// Opens the first block, so that a wrong password is known before anything is read.
  int Prepare(const std::string& motDePasse) {
    if (LitU64(&m_entete[ChampOperations]) > OperationsMax || LitU64(&m_entete[ChampMemoire]) > MemoireMax)
      return FluxDemesure;
    Cle cle;
    errno = 0;
    if (!FaitCle(motDePasse, m_entete.data(), cle)) return errno == ENOMEM ? ENOMEM : FluxDemesure;
    crypto_secretstream_xchacha20poly1305_init_pull(&m_etat, &m_entete[ChampFlux], cle.data());
    sodium_memzero(cle.data(), cle.size());
    const int erreur = Tire(m_entete.data(), m_entete.size());
    return erreur == FluxEndommage ? FluxMotDePasse : erreur;
  }
  int Lit(void* tampon, std::size_t taille, std::size_t& lus) override {
    lus = 0;
    while (m_debut == m_clair.size()) {
      if (m_fini) return 0;
      if (const int erreur = Tire(nullptr, 0)) return erreur;
    }
    lus = std::min(taille, m_clair.size() - m_debut);
    if (lus) std::memcpy(tampon, m_clair.data() + m_debut, lus);
    m_debut += lus;
    return 0;
  }

 private:
  int Tire(const u8* avec, std::size_t tailleAvec) {
    std::vector<u8> chiffre(TailleBloc + Surcroit);
    std::size_t lus = 0;
    if (const int erreur = m_fichier.Lit(chiffre.data(), chiffre.size(), m_place, lus)) return erreur;
    if (lus < Surcroit) return FluxEndommage;
    m_place += lus;
    m_clair.resize(lus - Surcroit);
    m_debut = 0;
    u8 marque = 0;
    if (crypto_secretstream_xchacha20poly1305_pull(&m_etat, m_clair.data(), nullptr, &marque, chiffre.data(),
                                                   lus, avec, tailleAvec) != 0)
      return FluxEndommage;
    m_fini = marque == crypto_secretstream_xchacha20poly1305_TAG_FINAL;
    if (!m_fini) return 0;
    // Nothing may stand behind the last block.
    u8 octet;
    if (const int erreur = m_fichier.Lit(&octet, 1, m_place, lus)) return erreur;
    return lus ? FluxEndommage : 0;
  }

  Fichier& m_fichier;
  const std::array<u8, TailleEntete> m_entete;
  u64 m_place = TailleEntete;
  EtatFlux m_etat{};
  std::vector<u8> m_clair;
  std::size_t m_debut = 0;
  bool m_fini = false;
};

bool CommenceChiffre(const std::array<u8, TailleEntete>& entete) {
  return std::memcmp(entete.data(), Magie.data(), ChampForme) == 0;
}

}  // namespace

// The library of the locks has the sum as well, but does not know the processor's own instructions for it:
// five times the time, and most of a backup's.
static_assert(sizeof(sha256_ctx) <= CalculSha256::TailleEtat);

CalculSha256::CalculSha256() { sha256_init(reinterpret_cast<sha256_ctx*>(m_etat.data())); }

void CalculSha256::Ajoute(const void* octets, std::size_t taille) {
  if (taille)
    sha256_update(reinterpret_cast<sha256_ctx*>(m_etat.data()), taille, static_cast<const u8*>(octets));
}

Sha256 CalculSha256::Fin() {
  Sha256 somme;
  sha256_digest(reinterpret_cast<sha256_ctx*>(m_etat.data()), somme.size(), somme.data());
  return somme;
}

CoutCle CoutOrdinaire() { return {crypto_pwhash_OPSLIMIT_MODERATE, crypto_pwhash_MEMLIMIT_MODERATE}; }

std::unique_ptr<Puits> PuitsFichier(Fichier& fichier, const std::string& motDePasse, const CoutCle& cout) {
  if (motDePasse.empty()) return std::make_unique<PuitsNu>(fichier);
  auto puits = std::make_unique<PuitsChiffre>(fichier);
  if (!puits->Prepare(motDePasse, cout)) return nullptr;
  return puits;
}

int SourceFichier(Fichier& fichier, const std::string& motDePasse, std::unique_ptr<Source>& source) {
  source.reset();
  std::array<u8, TailleEntete> entete{};
  std::size_t lus = 0;
  if (const int erreur = fichier.Lit(entete.data(), entete.size(), 0, lus)) return erreur;
  constexpr std::array<u8, 4> zstd = {0x28, 0xB5, 0x2F, 0xFD};
  if (lus >= zstd.size() && std::memcmp(entete.data(), zstd.data(), zstd.size()) == 0) {
    source = std::make_unique<SourceNue>(fichier);
    return 0;
  }
  if (lus < Magie.size() || !CommenceChiffre(entete)) return FluxEtranger;
  if (entete[ChampForme] != Magie[ChampForme]) return FluxRecent;
  if (lus < entete.size()) return FluxEndommage;
  if (motDePasse.empty()) return FluxSansMotDePasse;
  auto chiffree = std::make_unique<SourceChiffree>(fichier, entete);
  if (const int erreur = chiffree->Prepare(motDePasse)) return erreur;
  source = std::move(chiffree);
  return 0;
}

bool EstProtege(Fichier& fichier) {
  std::array<u8, TailleEntete> entete{};
  std::size_t lus = 0;
  return fichier.Lit(entete.data(), entete.size(), 0, lus) == 0 && lus >= Magie.size() &&
         CommenceChiffre(entete);
}

}  // namespace fenlor
