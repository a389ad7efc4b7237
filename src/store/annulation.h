// What units of work of a session changed, kept so that they can be taken back and done again: of each slot
// the bytes before and after, of each setting and of a text file the text before and after. All of it stands
// in "fenlor.ret" beside the redo log, which loses its name as soon as it is open: nobody else sees it, and
// it is gone with the program, however that ends. In memory is what each unit is called and where it stands.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "store/definitions.h"
#include "store/systeme.h"

namespace fenlor {

/// Bytes of the file, and units in it: beyond either the oldest give way.
constexpr u64 RetenueMax = 256u << 20;
constexpr std::size_t UnitesRetenuesMax = 10'000;
constexpr const char* NomFichierRetenues = "fenlor.ret";

/// A unit as it is read back: the side that is to come stands in what is called "avant".
struct UniteRetenue {
  struct FichierRetenu {
    u16 numero = 0;
    u64 id = 0;  ///< of the data file: another one under its name is not what the unit wrote
    std::string chemin;
  };
  /// A slot. Where a record stands on both sides its bytes are the range that differs, else the whole record.
  struct Ecart {
    u16 fichier = 0;  ///< index in `fichiers`
    bool avant = false, apres = false;
    u16 debut = 0, longueur = 0;
    Position position = 0;
    u32 placeAvant = 0, placeApres = 0;  ///< in `octets`
  };
  struct ReglageRetenu {
    std::string section, cle, avant, apres;  ///< empty: no such key
  };
  struct TexteRetenu {
    NumeroFichier numero = FichierTextes;
    std::string chemin, avant, apres;
  };

  std::vector<FichierRetenu> fichiers;
  std::vector<Ecart> ecarts;
  std::vector<u8> octets;
  std::vector<ReglageRetenu> reglages;
  std::optional<TexteRetenu> texte;  ///< then there is nothing else

  const u8* Avant(const Ecart& e) const { return octets.data() + e.placeAvant; }
  const u8* Apres(const Ecart& e) const { return octets.data() + e.placeApres; }
};

/// The two piles: what was done, and what was taken back. A unit that could not be kept, or had to give way,
/// leaves its name: it cannot be taken back, nor can anything before it.
class Retenues {
 public:
  /// `systeme` outlives the object. `place`: bytes that the file may have.
  explicit Retenues(Systeme& systeme, u64 place = RetenueMax) : m_systeme(systeme), m_place(place) {}

  bool actives = false;
  std::string dossier;  ///< of the practice

  /// A unit of the user, part by part: at most `borne` bytes of them. What fails is known at its end.
  void Commence(u64 borne);
  void Ajoute(const UniteRetenue::FichierRetenu& fichier);
  /// `avant` and `apres`: `longueur` bytes each, null where no record stands.
  void Ajoute(const UniteRetenue::Ecart& ecart, const u8* avant, const u8* apres);
  void Ajoute(const UniteRetenue::ReglageRetenu& reglage);
  void Ajoute(const UniteRetenue::TexteRetenu& texte);
  bool EstVide() const { return !m_commencee; }
  /// Ends it; one without a part is nothing. What was taken back before cannot be done again.
  void Acheve(const std::string& nom);

  /// Of the unit that would be taken back (`refaire`: done again), null for none. Valid until the next
  /// change.
  const std::string* Nom(bool refaire) const;
  /// Why it cannot be: ErrRetourAncien, ErrRetourGrand, or errno of the disk that had no room. 0: it can.
  int Perte(bool refaire) const;
  /// Reads it. 0, ErrRetour for none, what `Perte` says, errno, or ErrEndommage.
  int Lit(bool refaire, UniteRetenue& unite) const;
  /// It was taken back (or done again): it goes to the other pile.
  void Bascule(bool refaire);
  void Oublie();
  /// Rises with each change of the piles.
  u64 Version() const { return m_version; }

 private:
  struct Repere {
    std::string nom;
    u64 debut = 0, taille = 0;  ///< in the file
    u32 somme = 0;
    bool retournee = false;  ///< its sides change places
    int perte = 0;
  };
  using Pile = std::deque<Repere>;
  const Repere* Sommet(bool refaire) const;
  bool Loge(u64 taille);
  void PerdLaPremiere();
  void Pose(const void* octets, std::size_t taille);
  void Pose(const std::string& texte);
  void Verse(bool fin);

  Systeme& m_systeme;
  const u64 m_place;
  std::unique_ptr<Fichier> m_fichier;
  Pile m_faites, m_defaites;
  u64 m_version = 0;

  // The unit that is being kept.
  bool m_commencee = false;
  u64 m_borne = 0;
  Repere m_neuve;
  std::vector<u8> m_tampon;
};

}  // namespace fenlor
