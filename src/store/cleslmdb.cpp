// Keys on LMDB. One environment for each key file, opened without its own lock
// (the practice has one) and without syncs: the keys are derived data. One write
// transaction is held open and committed only by `Engage`, because a commit at
// each save would cost as much as the save's sync. New keys are kept back in
// arrays and written in key order before anything looks at that key.

#include <fcntl.h>
#include <lmdb.h>
#include <sys/stat.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstring>

#include "store/magasincles.h"
#include "store/qvapi.h"

namespace fenlor {

namespace {

/// Address space kept free behind the keys; more than that is reserved as they grow.
constexpr std::size_t Avance = std::size_t{64} << 20;
/// What one more key takes in the worst case, split pages counted.
constexpr std::size_t OctetsParCle = 256;
constexpr std::size_t RetenuesMax = 60000;
constexpr std::size_t ChargeesMax = 16000;
constexpr off_t Essai = 64 << 10;  ///< room asked for where a write failed

int Traduit(int rc) {
  if (rc == 0) return 0;
  if (rc == MDB_KEYEXIST) return ErrCleDouble;
  if (rc == MDB_NOTFOUND) return ErrCleAbsente;
  return rc > 0 ? rc : ErrCles;
}

/// A key text without its position, held in place.
struct Retenue {
  char texte[TailleCleMax];
  u32 longueur;
  u32 position;
};

class ClesLmdb : public MagasinCles {
 public:
  ClesLmdb(const DescriptionCles& cles, bool lecture) : m_cles(cles), m_lecture(lecture) {}
  ~ClesLmdb() override {
    Lache();
    if (m_env) mdb_env_close(m_env);
  }

  int Ouvre(const std::string& chemin, bool neuf) {
    if (const int rc = mdb_env_create(&m_env)) return Traduit(rc);
    mdb_env_set_maxdbs(m_env, 8);
    mdb_env_set_mapsize(m_env, Avance);
    const unsigned acces = m_lecture ? MDB_RDONLY : 0;
    const unsigned mode = MDB_NOSUBDIR | MDB_NOLOCK | MDB_NOSYNC | MDB_NORDAHEAD | acces;
    if (const int rc = mdb_env_open(m_env, chemin.c_str(), mode, 0600)) return Traduit(rc);
    if (mdb_env_get_maxkeysize(m_env) < static_cast<int>(TailleCleMax) + 4) return ErrCles;
    const int rc = Commence(neuf);
    // Helpers see the names of the keys once their first transaction is through.
    return rc || !m_lecture ? rc : Rengage();
  }

  int Ajoute(unsigned cle, std::string_view texte, u32 position) override {
    if (const int rc = Verse(cle)) return rc;
    return Pose(cle, texte, position, 0);
  }

  int AjouteNeuve(unsigned cle, std::string_view texte, u32 position) override {
    assert(cle < m_cles.nombre && texte.size() <= TailleCleMax);
    auto& retenues = m_retenues[cle];
    Retenue r;
    r.longueur = static_cast<u32>(std::min<std::size_t>(texte.size(), TailleCleMax));
    std::memcpy(r.texte, texte.data(), r.longueur);
    r.position = position;
    retenues.push_back(r);
    return retenues.size() < RetenuesMax ? 0 : Verse(cle);
  }

  int Supprime(unsigned cle, std::string_view texte, u32 position) override {
    if (const int rc = Verse(cle)) return rc;
    u8 tampon[TailleCleMax + 4];
    MDB_val k = Cle(cle, texte, position, tampon);
    MDB_val v;
    if (!m_cles.doubles[cle]) {
      if (const int rc = mdb_cursor_get(m_curseur[cle], &k, &v, MDB_SET)) return Traduit(rc);
      if (PositionDe(v) != position) return ErrCleAbsente;
    } else if (const int rc = mdb_cursor_get(m_curseur[cle], &k, &v, MDB_SET)) {
      return Traduit(rc);
    }
    m_place[cle].clear();
    return Traduit(mdb_cursor_del(m_curseur[cle], 0));
  }

  bool Borne(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) override {
    return Cherche(cle, texte, position, trouvee);
  }

  bool Apres(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) override {
    if (!Prepare(cle)) return false;
    u8 tampon[TailleCleMax + 4];
    MDB_val k = Cle(cle, texte, position, tampon), v;
    if (!EstPlace(cle, k)) {
      m_erreur = mdb_cursor_get(m_curseur[cle], &k, &v, MDB_SET_RANGE);
      if (m_erreur) return Fin(cle);
      // The cursor stands on the entry itself, or already above it.
      if (!EstCle(k, Cle(cle, texte, position, tampon))) return Donne(cle, k, v, trouvee);
      if (!m_cles.doubles[cle] && PositionDe(v) > position) return Donne(cle, k, v, trouvee);
    }
    m_erreur = mdb_cursor_get(m_curseur[cle], &k, &v, MDB_NEXT);
    return m_erreur ? Fin(cle) : Donne(cle, k, v, trouvee);
  }

  bool Avant(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) override {
    if (!Prepare(cle)) return false;
    u8 tampon[TailleCleMax + 4];
    MDB_val k = Cle(cle, texte, position, tampon), v;
    if (EstPlace(cle, k)) {
      m_erreur = mdb_cursor_get(m_curseur[cle], &k, &v, MDB_PREV);
    } else {
      m_erreur = mdb_cursor_get(m_curseur[cle], &k, &v, MDB_SET_RANGE);
      m_erreur = mdb_cursor_get(m_curseur[cle], &k, &v, m_erreur == MDB_NOTFOUND ? MDB_LAST : MDB_PREV);
    }
    return m_erreur ? Fin(cle) : Donne(cle, k, v, trouvee);
  }

  bool Dernier(unsigned cle, EntreeCle& trouvee) override {
    if (!Prepare(cle)) return false;
    MDB_val k, v;
    m_erreur = mdb_cursor_get(m_curseur[cle], &k, &v, MDB_LAST);
    return m_erreur ? Fin(cle) : Donne(cle, k, v, trouvee);
  }

  void Parcours(unsigned cle, std::string_view debut, FonctionParcours suite) override {
    if (!Prepare(cle)) return;
    u8 tampon[TailleCleMax + 4];
    const MDB_val k = Cle(cle, debut, 0, tampon);
    // A cursor of its own: `suite` may look things up by the same key.
    MDB_cursor* ouvert = nullptr;
    if ((m_erreur = mdb_cursor_open(m_txn, m_dbi[cle], &ouvert))) return;
    const std::unique_ptr<MDB_cursor, void (*)(MDB_cursor*)> curseur(ouvert, mdb_cursor_close);
    const bool avant = std::exchange(m_marche, true);
    m_erreur = Marche(cle, ouvert, k, suite);
    m_marche = avant;
  }

  int ParcoursAPart(unsigned cle, FonctionParcours suite) const override {
    assert(cle < m_cles.nombre && m_retenues[cle].empty());
    // What stands in the file, seen by a transaction of the helper's own.
    MDB_txn* lecture = nullptr;
    if (const int rc = mdb_txn_begin(m_env, nullptr, MDB_RDONLY, &lecture)) return Traduit(rc);
    const std::unique_ptr<MDB_txn, void (*)(MDB_txn*)> txn(lecture, mdb_txn_abort);
    MDB_cursor* ouvert = nullptr;
    if (const int rc = mdb_cursor_open(lecture, m_dbi[cle], &ouvert)) return Traduit(rc);
    const std::unique_ptr<MDB_cursor, void (*)(MDB_cursor*)> curseur(ouvert, mdb_cursor_close);
    u8 tampon[TailleCleMax + 4];
    const int rc = Marche(cle, ouvert, Cle(cle, {}, 0, tampon), suite);
    return rc == MDB_NOTFOUND ? 0 : Traduit(rc);
  }

  u64 Nombre(unsigned cle) override {
    if (!Prepare(cle)) return 0;
    MDB_stat etat;
    m_erreur = mdb_stat(m_txn, m_dbi[cle], &etat);
    return m_erreur ? 0 : etat.ms_entries;
  }

  int Charge(unsigned cle, const ClesComposees& triees) override {
    assert(cle < m_cles.nombre && std::is_sorted(triees.begin(), triees.end()));
    m_retenues[cle].clear();
    m_place[cle].clear();
    if (!m_txn) {
      if (const int rc = Commence(false)) return rc;
    }
    mdb_cursor_close(m_curseur[cle]);
    m_curseur[cle] = nullptr;
    if (const int rc = mdb_drop(m_txn, m_dbi[cle], 0)) return Traduit(rc);
    if (const int rc = mdb_cursor_open(m_txn, m_dbi[cle], &m_curseur[cle])) return Traduit(rc);
    std::size_t poses = 0;
    for (const auto& [texte, position] : triees) {
      if (const int rc = Pose(cle, texte, position, MDB_APPEND)) return rc == ErrCleDouble ? ErrCles : rc;
      // Handed on while the processor has them at hand; the same memory then takes the next ones.
      if (++poses % ChargeesMax) continue;
      if (const int rc = Rengage()) return rc;
    }
    return 0;
  }

  int Engage(bool durable) override {
    for (unsigned cle = 0; cle < m_cles.nombre; ++cle) {
      if (const int rc = Verse(cle)) return rc;
    }
    if (const int rc = Rengage()) return rc;
    return durable && !m_lecture ? Traduit(mdb_env_sync(m_env, 1)) : 0;
  }

  int Erreur() const override { return m_erreur == MDB_NOTFOUND ? 0 : Traduit(m_erreur); }

 private:
  /// From a key on to the end, or until `suite` has enough; LMDB's outcome.
  int Marche(unsigned cle, MDB_cursor* curseur, MDB_val k, const FonctionParcours& suite) const {
    MDB_val v;
    int rc = mdb_cursor_get(curseur, &k, &v, MDB_SET_RANGE);
    for (; rc == 0; rc = mdb_cursor_get(curseur, &k, &v, MDB_NEXT)) {
      Vue vue;
      if (!Decode(cle, k, v, vue)) return MDB_CORRUPTED;
      if (!suite(vue.texte, vue.position)) break;
    }
    return rc;
  }

  /// Hands the keys to the system and goes on, with more room where it is needed.
  int Rengage() {
    // LMDB frees the cursors of a write transaction with it: ours must be gone by then.
    FermeCurseurs();
    if (m_txn) {
      MDB_txn* txn = m_txn;
      m_txn = nullptr;
      if (const int rc = mdb_txn_commit(txn)) return rc == EIO ? RaisonDEchec() : Traduit(rc);
    }
    return Commence(false);
  }

  /// EIO stands for a write that was done in part, too: why there is no more room the system says again.
  int RaisonDEchec() {
    int fichier = -1;
    struct stat etat {};
    if (mdb_env_get_fd(m_env, &fichier) || fstat(fichier, &etat)) return EIO;
    const int rc = posix_fallocate(fichier, etat.st_size, Essai);
    return rc == ENOSPC || rc == EFBIG || rc == EDQUOT ? rc : EIO;
  }

  int Commence(bool vide) {
    assert(m_env && !m_txn);
    // A write may copy every page that stands there, and add its own.
    MDB_envinfo info;
    MDB_stat etat;
    if (mdb_env_info(m_env, &info) || mdb_env_stat(m_env, &etat)) return ErrCles;
    const std::size_t occupes = (info.me_last_pgno + 1) * etat.ms_psize;
    if (!m_lecture && info.me_mapsize < 2 * occupes + Avance) {
      if (const int rc = mdb_env_set_mapsize(m_env, 4 * occupes + Avance)) return Traduit(rc);
      if (const int rc = mdb_env_info(m_env, &info)) return Traduit(rc);
    }
    m_reste = m_lecture ? 0 : (info.me_mapsize - 2 * occupes) / OctetsParCle;
    if (const int rc = mdb_txn_begin(m_env, nullptr, m_lecture ? MDB_RDONLY : 0, &m_txn)) {
      m_txn = nullptr;
      return Traduit(rc);
    }
    for (unsigned cle = 0; cle < m_cles.nombre; ++cle) {
      const char nom[2] = {static_cast<char>('0' + cle), 0};
      if (const int rc = mdb_dbi_open(m_txn, nom, vide ? MDB_CREATE : 0, &m_dbi[cle])) return Traduit(rc);
      if (const int rc = mdb_cursor_open(m_txn, m_dbi[cle], &m_curseur[cle])) return Traduit(rc);
    }
    return 0;
  }

  void FermeCurseurs() {
    for (auto& curseur : m_curseur) {
      if (curseur) mdb_cursor_close(curseur);
      curseur = nullptr;
    }
    for (auto& place : m_place) place.clear();
  }

  void Lache() {
    FermeCurseurs();
    if (m_txn) mdb_txn_abort(m_txn);
    m_txn = nullptr;
  }

  static u32 PositionDe(const MDB_val& v) {
    u32 position = 0;
    if (v.mv_size == 4) std::memcpy(&position, v.mv_data, 4);
    return position;
  }

  MDB_val Cle(unsigned cle, std::string_view texte, u32 position, u8* tampon) const {
    std::size_t n = std::min<std::size_t>(texte.size(), TailleCleMax);
    if (n) std::memcpy(tampon, texte.data(), n);
    if (m_cles.doubles[cle]) {
      for (int octet = 3; octet >= 0; --octet) tampon[n++] = static_cast<u8>(position >> (8 * octet));
    } else if (n == 0) {
      tampon[n++] = 0;  // LMDB has no empty key
    }
    return {n, tampon};
  }

  static bool EstCle(const MDB_val& a, const MDB_val& b) {
    return a.mv_size == b.mv_size && std::memcmp(a.mv_data, b.mv_data, a.mv_size) == 0;
  }

  /// True when the cursor is known to stand on that very entry.
  bool EstPlace(unsigned cle, const MDB_val& k) const {
    const std::string& place = m_place[cle];
    return !place.empty() && place.size() == k.mv_size &&
           std::memcmp(place.data(), k.mv_data, k.mv_size) == 0;
  }

  bool Prepare(unsigned cle) {
    assert(cle < m_cles.nombre);
    m_erreur = 0;
    if (!m_txn) m_erreur = MDB_BAD_TXN;
    if (!m_erreur && !m_retenues[cle].empty()) {
      if (const int rc = Verse(cle)) m_erreur = rc == ErrCles ? MDB_CORRUPTED : rc;
    }
    assert(m_erreur || (m_curseur[cle] && m_retenues[cle].empty()));
    return m_erreur == 0;
  }

  bool Fin(unsigned cle) {
    m_place[cle].clear();
    return false;
  }

  bool Cherche(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) {
    if (!Prepare(cle)) return false;
    u8 tampon[TailleCleMax + 4];
    MDB_val k = Cle(cle, texte, position, tampon), v;
    m_erreur = mdb_cursor_get(m_curseur[cle], &k, &v, MDB_SET_RANGE);
    return m_erreur ? Fin(cle) : Donne(cle, k, v, trouvee);
  }

  struct Vue {
    std::string_view texte;
    u32 position = 0;
  };

  bool Decode(unsigned cle, const MDB_val& k, const MDB_val& v, Vue& vue) const {
    const char* octets = static_cast<const char*>(k.mv_data);
    if (!m_cles.doubles[cle]) {
      vue = {{octets, k.mv_size == 1 && octets[0] == 0 ? 0 : k.mv_size}, PositionDe(v)};
      return v.mv_size == 4;
    }
    if (k.mv_size < 4) return false;
    vue.texte = {octets, k.mv_size - 4};
    vue.position = 0;
    for (std::size_t i = k.mv_size - 4; i < k.mv_size; ++i)
      vue.position = vue.position << 8 | static_cast<u8>(octets[i]);
    return true;
  }

  bool Donne(unsigned cle, const MDB_val& k, const MDB_val& v, EntreeCle& trouvee) {
    m_place[cle].assign(static_cast<const char*>(k.mv_data), k.mv_size);
    Vue vue;
    if (!Decode(cle, k, v, vue)) return m_erreur = MDB_CORRUPTED, Fin(cle);
    trouvee.texte.assign(vue.texte);
    trouvee.position = vue.position;
    return true;
  }

  int Pose(unsigned cle, std::string_view texte, u32 position, unsigned mode) {
    // Not under a walk, whose cursor belongs to the transaction.
    if (m_reste == 0 && !m_marche) {
      if (const int rc = Rengage()) return rc;
    }
    if (!m_txn) return ErrCles;
    if (m_reste > 0) --m_reste;
    assert(cle < m_cles.nombre && m_curseur[cle] && position > 0);
    u8 tampon[TailleCleMax + 4];
    MDB_val k = Cle(cle, texte, position, tampon);
    MDB_val v{m_cles.doubles[cle] ? std::size_t{0} : sizeof position, &position};
    m_place[cle].clear();
    return Traduit(mdb_cursor_put(m_curseur[cle], &k, &v, mode ? mode : MDB_NOOVERWRITE));
  }

  /// True when all entries of a key stand before that one: those of it and behind it are then not sought.
  bool EstDerriere(unsigned cle, std::string_view texte, u32 position) {
    if (!m_txn) return false;
    assert(m_curseur[cle]);
    m_place[cle].clear();
    MDB_val derniere, v;
    const int rc = mdb_cursor_get(m_curseur[cle], &derniere, &v, MDB_LAST);
    if (rc) return rc == MDB_NOTFOUND;
    u8 tampon[TailleCleMax + 4];
    MDB_val k = Cle(cle, texte, position, tampon);
    return mdb_cmp(m_txn, m_dbi[cle], &k, &derniere) > 0;
  }

  /// Writes the keys kept back, in key order.
  int Verse(unsigned cle) {
    auto& retenues = m_retenues[cle];
    if (retenues.empty()) return 0;
    m_ordre.clear();
    for (const Retenue& r : retenues) m_ordre.emplace_back(std::string_view(r.texte, r.longueur), r.position);
    TrieCles(m_ordre);
    const unsigned mode = EstDerriere(cle, m_ordre.front().first, m_ordre.front().second) ? MDB_APPEND : 0;
    for (const auto& [texte, position] : m_ordre) {
      if (const int rc = Pose(cle, texte, position, mode)) {
        retenues.clear();
        return rc == ErrCleDouble ? static_cast<int>(ErrCles) : rc;
      }
    }
    retenues.clear();
    if (retenues.capacity() > RetenuesMax * 2) retenues.shrink_to_fit();
    return 0;
  }

  DescriptionCles m_cles;
  const bool m_lecture;
  MDB_env* m_env = nullptr;
  MDB_txn* m_txn = nullptr;
  MDB_dbi m_dbi[8] = {};
  MDB_cursor* m_curseur[8] = {};
  std::string m_place[8];  ///< LMDB key under each cursor, empty when not known
  GrandVecteur<Retenue> m_retenues[8];
  ClesComposees m_ordre;
  std::size_t m_reste = 0;  ///< keys that surely find room before the next `Rengage`
  bool m_marche = false;    ///< a walk is under way
  int m_erreur = 0;
};

}  // namespace

int FabriqueLmdb::Ouvre(const std::string& chemin, bool neuf, const DescriptionCles& cles,
                        std::unique_ptr<MagasinCles>& magasin) {
  auto lmdb = std::make_unique<ClesLmdb>(cles, false);
  const int rc = lmdb->Ouvre(chemin, neuf);
  if (rc == 0) magasin = std::move(lmdb);
  return rc;
}

int FabriqueLmdb::OuvreEnLecture(const std::string& chemin, const DescriptionCles& cles,
                                 std::unique_ptr<MagasinCles>& magasin) {
  auto lmdb = std::make_unique<ClesLmdb>(cles, true);
  const int rc = lmdb->Ouvre(chemin, false);
  if (rc == 0) magasin = std::move(lmdb);
  return rc;
}

}  // namespace fenlor
