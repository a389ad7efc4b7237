// A record as people meet it: a plain value, and one table of its fields that stands with the record's rule.
// From the table come the rule's limits, the way between value and stored record, the binding of the form
// (`ui/dialogfiche.h`) and the options of fenlorctl (`ctl/verbefiche.h`).
//
//   struct FicheTiers { Position position = 0; std::string code, nom; f64 plafond = 0;
//                       static const TableFiche Table; };
//
// Its rules are overloads that form, list and verb call by these names (`ui/dialogfiche.h`,
// `ui/fichesview.h`, `ctl/verbefiche.h`):
//
//   Refus LitFiche(CFenlorApp&, Position, FicheTiers&);       told when there is no such record
//   Refus EnregistreFiche(CFenlorApp&, FicheTiers&);          `position` becomes that of the record
//   Refus SupprimeFiche(CFenlorApp&, const FicheTiers&);      that at its position, after a question
//   Refus AvisFiche(CFenlorApp&, const FicheTiers&);          where there is something to warn of
#pragma once

#include <span>
#include <string>
#include <variant>
#include <vector>

#include "core/btfiles.h"

namespace fenlor {

/// How a field is typed and shown.
enum class GenreChamp : u8 {
  Texte,
  Code,          ///< a text in capitals
  Compte,        ///< an account number in any form, stored as the long one
  Nombre,        ///< digits; blank stands for 0
  Montant,       ///< an amount or a rate, not negative
  MontantSigne,  ///< likewise, of either sign
  Choix,         ///< one of `mots`, by its place
  Date,
  Drapeau,
};

/// Where the field stands in a value.
using ValeurChamp = std::variant<std::string*, i16*, f64*, bool*, Date*>;

/// How fenlorctl takes the field; UTF-8.
struct OptionChamp {
  const char* mot = "";  ///< "part-pro"; empty: it does not
  const char* aide = "";
  const char* exclut = "";  ///< word of an option above that does not go with it
  const char* faute = "";   ///< what begins the refusal of a number that is none
  const char* texte = "";   ///< what stands for the value in the help; empty: what the kind says
  /// Of a flag: the word that says no, and its help. Both words stand alone then, without a value.
  const char *contraire = "", *aideContraire = "";
};

struct ChampFiche {
  const char* nom;  ///< in the form and in refusals; radio buttons of a choice bear its words
  ValeurChamp (*valeur)(void* fiche);
  GenreChamp genre;
  /// Field of the record (`store/champs.h`); "Prix" for an amount in the exercice's currency that
  /// "PrixFranc" and "PrixEuro" hold. Of a value that is settings, the key (UTF-8). Empty: the rule stores it
  /// by itself.
  const char* stocke = "";
  unsigned limite = 0;  ///< characters that can be typed; 0: what the record holds of a text, else no limit
  OptionChamp option = {};
  std::span<const char* const> mots = {};
};

struct TableFiche {
  const char* enregistrement;  ///< name of the record, as in `store/champs.h`, or section of the settings
  std::span<const ChampFiche> champs;
  const ChampFiche* Trouve(std::string_view nom) const;  ///< null: none
  unsigned Limite(const ChampFiche& champ) const;        ///< 0: none
};

namespace detail {
template <class Fiche, class T>
Fiche ClasseDe(T Fiche::*);
}
/// The place of a member, for a row: `Membre<&FicheTiers::nom>`.
template <auto membre>
ValeurChamp Membre(void* fiche) {
  return &(static_cast<decltype(detail::ClasseDe(membre))*>(fiche)->*membre);
}
/// For reading alone.
inline ValeurChamp ValeurDe(const ChampFiche& champ, const void* fiche) {
  return champ.valeur(const_cast<void*>(fiche));
}

/// The first text that its field does not hold whole (3206).
Refus ControleTextes(const TableFiche& table, const void* fiche);
/// The stored fields out of a record, and into it; other bytes stay. Amounts are in the exercice's currency,
/// and are converted at the rate of today on their way into the record.
void FicheDepuis(CFenlorApp& app, const TableFiche& table, const void* rec, void* fiche);
void FicheVers(CFenlorApp& app, const TableFiche& table, const void* fiche, void* rec);

/// A value that stands for the record at the position.
template <class Fiche>
Fiche FicheA(Position position) {
  Fiche fiche;
  fiche.position = position;
  return fiche;
}

/// What the user should know of a record that was saved: nothing, unless the record has an overload.
template <class Fiche>
Refus AvisFiche(CFenlorApp&, const Fiche&) {
  return {};
}

/// The checks of a rule in their order, as far as the first one that refuses.
template <class Regle, class... Controles>
Refus PremierRefus(Regle& regle, Controles... controles) {
  Refus refus;
  static_cast<void>((... || static_cast<bool>(refus = (regle.*controles)())));
  return refus;
}

/// Opens the file and reads a record into its buffer.
Refus LitEnregistrement(CBTFiles& fichier, Position position);
/// Opens the file; a record other than that at `position` holds the key that stands in the buffer.
bool ClePrise(CBTFiles& fichier, u32 cle, Position position);
/// Puts the record of an open file in the place of that at `position` (0: none), as one unit of work;
/// `position` becomes its own.
Refus RemplaceEnregistrement(CFenlorApp& app, CBTFiles& fichier, Position& position);
Refus SupprimeEnregistrement(CBTFiles& fichier, Position position);
/// A failure of an indexed file, which has told it in its own words.
Refus EchecFichier();
/// All records in order of the first key; opens the file.
std::vector<Position> PositionsDe(CFenlorApp& app, CBTFiles& fichier);

}  // namespace fenlor
