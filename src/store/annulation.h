// What units of work of a session changed, kept so that they can be taken back and done again: of each slot
// the bytes before and after, of each setting and each text file the text before and after. In memory,
// bounded, and gone with the exercice: after a crash nothing is left but books that are whole.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "store/definitions.h"

namespace fenlor {

/// Taking back is stopped when the oldest units have to go; a unit that is larger than all of this is not
/// kept, nor is anything before it.
constexpr std::size_t RetenueMax = 64u << 20;
constexpr std::size_t UnitesRetenuesMax = 1000;

struct UniteRetenue {
  struct FichierRetenu {
    u16 numero = 0;
    u64 id = 0;  ///< of the data file: another one under its name is not what the unit wrote
    std::string chemin;
  };
  /// A slot. Where a record stands on both sides `octets` holds the range that differs, before and after;
  /// else the whole record, once.
  struct Ecart {
    u16 fichier = 0;  ///< index in `fichiers`
    bool avant = false, apres = false;
    u16 debut = 0, longueur = 0;
    Position position = 0;
    u32 place = 0;
  };
  struct ReglageRetenu {
    std::string section, cle, avant, apres;  ///< empty: no such key
  };
  struct TexteRetenu {
    NumeroFichier numero = FichierTextes;
    std::string chemin, avant, apres;
  };

  std::string nom;  ///< what a person reads, Windows-1252: "suppression de..."
  std::vector<FichierRetenu> fichiers;
  std::vector<Ecart> ecarts;
  std::vector<u8> octets;
  std::vector<ReglageRetenu> reglages;
  std::vector<TexteRetenu> textes;

  const u8* Avant(const Ecart& e) const { return octets.data() + e.place; }
  const u8* Apres(const Ecart& e) const {
    return octets.data() + e.place + (e.avant && e.apres ? e.longueur : 0);
  }
  std::size_t Taille() const;
};

/// The two piles: what was done, and what was taken back.
class Retenues {
 public:
  bool actives = false;

  std::deque<UniteRetenue>& Pile(bool refaire) { return refaire ? m_defaites : m_faites; }
  const std::deque<UniteRetenue>& Pile(bool refaire) const { return refaire ? m_defaites : m_faites; }
  /// A unit of the user: what was taken back before cannot be done again.
  void Ajoute(UniteRetenue unite);
  /// The unit of the top was taken back (or done again) by this one.
  void Bascule(bool refaire, UniteRetenue contraire);
  void Oublie();
  /// Rises with each change of the piles.
  u64 Version() const { return m_version; }

 private:
  void Borne();
  std::deque<UniteRetenue> m_faites, m_defaites;
  std::size_t m_taille = 0;
  u64 m_version = 0;
};

}  // namespace fenlor
