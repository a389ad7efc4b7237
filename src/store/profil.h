// A settings file in the section and key form of profile files, Windows-1252,
// lines ended by CR LF.
//
// Rules: a section is "[name]", a setting is "key=value". Names compare without
// regard to case (ASCII and Windows-1252 letters); the first match wins: of two
// sections of one name only the first is looked at, also for a key that it
// lacks. Blanks around the name and the value are dropped, then one pair of
// double or single quotes around the value. Lines that begin with ";" and lines
// of any other form are kept where they stand and skipped. A value that begins
// or ends with a blank or a quote is written between double quotes.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "store/systeme.h"

namespace fenlor {

/// Settings of a practice, below its directory.
inline constexpr const char* FichierReglages = "fenlor.ini";

class Profil {
 public:
  /// One change: no value removes the key, an empty key removes the section.
  struct Changement {
    std::string section;
    std::string cle;
    std::optional<std::string> valeur;
  };

  /// Binds to `chemin`; reads nothing yet. `systeme` outlives the object. `avecSomme`: whatever is written
  /// ends with a comment that holds the checksum of the lines before it. `instant`: while it points at a
  /// number other than 0 the file is looked at once for each number (`QVAPI::Instant`).
  Profil(Systeme& systeme, std::string chemin, bool avecSomme = false, const u64* instant = nullptr);

  /// True when the checksum that the file holds is not its own: somebody else wrote it. A file without one
  /// is not doubted.
  bool ModifieAilleurs();

  /// Value of a key, empty when absent. A file that does not exist reads as
  /// empty. The file is parsed when its stamp (inode, size, time) changed since
  /// the last look, not otherwise. On a file that cannot be read: what was read
  /// before (nothing at first), and `Erreur()` is not 0.
  std::string Lit(const std::string& section, const std::string& cle);
  /// True when the section exists, even without keys.
  bool Existe(const std::string& section);
  std::vector<std::string> Sections();
  /// Keys of the section in file order.
  std::vector<std::string> Cles(const std::string& section);

  /// Writes one key. False on failure: the file is then as it was, and
  /// `Erreur()` holds errno. Characters below 32 in names or value are refused
  /// with EINVAL, as is a name that could not be read back.
  bool Ecrit(const std::string& section, const std::string& cle, const std::optional<std::string>& valeur);
  /// Writes several keys in one replacement of the file: all of them or none.
  /// The new file is written beside the old one, synced, renamed over it, and
  /// the directory synced. A write that changes nothing touches nothing; a file that may
  /// not be written is refused, though its directory would let it be replaced.
  bool Ecrit(const std::vector<Changement>& changements);

  /// Hears of each key that was written: section, key, value before and after (empty: none).
  using Suite =
      std::function<void(const std::string&, const std::string&, const std::string&, const std::string&)>;
  void Suit(Suite suite) { m_suite = std::move(suite); }

  /// errno of the last call, 0 when it went well.
  int Erreur() const { return m_erreur; }
  const std::string& Chemin() const { return m_chemin; }

 private:
  struct Ligne {
    enum Sorte { Section, Cle, Reste } sorte;
    std::string texte;  ///< as in the file, without its end
    std::string nom;    ///< section or key, as written
    std::string valeur;
  };
  bool Charge();
  std::string ValeurDe(const std::string& section, const std::string& cle);
  void Indexe();
  void Analyse(const std::string& contenu);
  std::string Assemble(const std::vector<Ligne>& lignes) const;
  void Applique(const Changement& changement);
  std::size_t TrouveSection(const std::string& section) const;

  Systeme& m_systeme;
  std::string m_chemin;
  bool m_avecSomme;
  bool m_sommeFausse = false;
  std::vector<Ligne> m_lignes;
  std::unordered_map<std::string, std::string> m_valeurs;  ///< by section and key, in capitals
  bool m_indexe = false;
  std::string m_cherchee;
  std::optional<Empreinte> m_empreinte;
  const u64* m_instant;
  Suite m_suite;
  u64 m_vuA = 0;  ///< instant of the last look
  int m_erreur = 0;
};

}  // namespace fenlor
