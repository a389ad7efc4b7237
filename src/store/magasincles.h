// Ordered keys of one key file: what the engine needs of a key store, and no
// more, so that the tests can run the whole store on a plain ordered map.
//
// An entry is (text, position). Where doubles are allowed entries are ordered by
// text, then position; elsewhere a text stands once. Texts compare bytewise.
// Keys are derived from the data files: nothing here needs to survive a crash.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "store/definitions.h"
#include "store/tricles.h"

namespace fenlor {

struct EntreeCle {
  std::string texte;
  u32 position = 0;
};

/// Called for each entry of a walk. A reference to a callable, which outlives it.
class FonctionParcours {
 public:
  template <class F>
  FonctionParcours(F& f)  // NOLINT: as a parameter it reads like the callable itself
      : m_objet(&f), m_appel([](void* o, std::string_view texte, u32 position) {
          return (*static_cast<F*>(o))(texte, position);
        }) {}
  bool operator()(std::string_view texte, u32 position) const { return m_appel(m_objet, texte, position); }

 private:
  void* m_objet;
  bool (*m_appel)(void*, std::string_view, u32);
};

/// One key file. Operations return 0, or errno / ErrCles / ErrCleDouble /
/// ErrCleAbsente. After ErrCles or an errno value the object is of no more use.
class MagasinCles {
 public:
  virtual ~MagasinCles() = default;

  virtual int Ajoute(unsigned cle, std::string_view texte, u32 position) = 0;
  /// As Ajoute, for an entry that the caller knows to be new: it may be kept
  /// back and written later, in order. A double is then told as ErrCles.
  virtual int AjouteNeuve(unsigned cle, std::string_view texte, u32 position) = 0;
  virtual int Supprime(unsigned cle, std::string_view texte, u32 position) = 0;

  /// Smallest entry at or above (texte, position). False at the end.
  virtual bool Borne(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) = 0;
  /// Smallest entry above, greatest entry below.
  virtual bool Apres(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) = 0;
  virtual bool Avant(unsigned cle, std::string_view texte, u32 position, EntreeCle& trouvee) = 0;
  virtual bool Dernier(unsigned cle, EntreeCle& trouvee) = 0;
  /// Hands entry after entry from `debut` on to `suite`, which returns false to
  /// stop and must not change the keys; the text is good for the call only.
  virtual void Parcours(unsigned cle, std::string_view debut, FonctionParcours suite) = 0;
  /// All entries of a key, for helpers (partage.h): several of them may walk at a time, behind an `Engage`
  /// and as long as nobody changes the keys. 0, errno or ErrCles.
  virtual int ParcoursAPart(unsigned cle, FonctionParcours suite) const = 0;
  virtual u64 Nombre(unsigned cle) = 0;

  /// Empties one key and fills it with entries in ascending order.
  virtual int Charge(unsigned cle, const ClesComposees& triees) = 0;
  /// Hands what was written to the operating system; `durable` also syncs it.
  virtual int Engage(bool durable) = 0;
  /// Error of the last look-up that returned false or 0: 0 when it just found nothing.
  virtual int Erreur() const = 0;
};

/// Description of a key file's keys.
struct DescriptionCles {
  unsigned nombre = 0;
  bool doubles[8] = {};
};

class FabriqueCles {
 public:
  virtual ~FabriqueCles() = default;
  /// Opens the key file of `chemin`; `neuf` discards what stands there and
  /// creates it. 0, or errno / ErrCles.
  virtual int Ouvre(const std::string& chemin, bool neuf, const DescriptionCles& cles,
                    std::unique_ptr<MagasinCles>& magasin) = 0;
  /// Opens a key file that nobody may write: of the keys only the looks are asked for, and `Engage`.
  virtual int OuvreEnLecture(const std::string& chemin, const DescriptionCles& cles,
                             std::unique_ptr<MagasinCles>& magasin) = 0;
  /// True when the keys live in the file of that path.
  virtual bool SurDisque() const = 0;
};

/// LMDB: one environment for each key file, one named database for each key.
class FabriqueLmdb : public FabriqueCles {
 public:
  int Ouvre(const std::string& chemin, bool neuf, const DescriptionCles& cles,
            std::unique_ptr<MagasinCles>& magasin) override;
  int OuvreEnLecture(const std::string& chemin, const DescriptionCles& cles,
                     std::unique_ptr<MagasinCles>& magasin) override;
  bool SurDisque() const override { return true; }
};

/// An ordered map in memory: for tests, and when the disk has no room for keys.
class FabriqueMemoire : public FabriqueCles {
 public:
  int Ouvre(const std::string& chemin, bool neuf, const DescriptionCles& cles,
            std::unique_ptr<MagasinCles>& magasin) override;
  /// ErrCles: there are none but those that the caller makes.
  int OuvreEnLecture(const std::string& chemin, const DescriptionCles& cles,
                     std::unique_ptr<MagasinCles>& magasin) override;
  bool SurDisque() const override { return false; }
};

}  // namespace fenlor
