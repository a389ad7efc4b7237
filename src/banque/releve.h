// A bank's statement as a file brings it. Readers are functions from bytes to values: they know no store, no
// window and no clock. What a reader does not understand is a complaint with its row; the rows around it are
// read.
#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/texte.h"
#include "store/dates.h"

namespace fenlor {

enum class FormatReleve : u8 { Inconnu, Ofx, Camt, Qif, Cfonb, Csv };
/// Words of the formats, by their value: "ofx", "camt", "qif", "cfonb", "csv"; Inconnu is "".
extern const char* const MotsFormatReleve[6];

/// No file above is read, no more operations or complaints than this, no longer row, no deeper element.
constexpr std::size_t TailleReleveMax = 64u << 20, OperationsReleveMax = 200000, LigneReleveMax = 64u << 10;
constexpr unsigned ProfondeurReleveMax = 64;

/// Texts are Windows-1252; a character that has no place there is "?".
struct OperationBanque {
  u32 rang = 0;               ///< line of the file, or element of its kind, from 1
  std::string id;             ///< the bank's own; empty: none
  Date date = 0;              ///< a day of the calendar
  Date dateValeur = 0;        ///< 0: none
  i64 centimes = 0;           ///< above 0
  i16 sens = 0;               ///< in the bank's own sense: 0 débit, 1 crédit
  std::string libelle;        ///< single blanks, at most 80 characters
  std::string ancienLibelle;  ///< what earlier versions made of it, which it may be known by; mostly empty
  std::string monnaie;        ///< three letters; empty: the file does not say
  u32 releve = 0;             ///< statement of the file that it stands in, where the format has several
};

struct PlainteReleve {
  u32 rang = 0;  ///< as in an operation; 0: the file as a whole
  std::string raison;
};

struct Releve {
  std::string compte;  ///< as the bank writes it; empty: the file does not say
  std::string monnaie;
  std::optional<i64> solde;  ///< cents, above 0 when the bank owes the money
  Date dateSolde = 0;        ///< 0: not known
  std::vector<OperationBanque> operations;
};

struct LectureReleve {
  FormatReleve format = FormatReleve::Inconnu;
  std::vector<Releve> comptes;  ///< one for each account of the file
  std::vector<PlainteReleve> plaintes;
  std::size_t operations = 0;  ///< of all accounts
  /// That of an account and currency, made when there is none.
  Releve& Compte(const std::string& compte, const std::string& monnaie);
  void Plainte(u32 rang, const TexteFixe& raison, std::initializer_list<std::string> arguments = {});
  /// False, with a complaint, when as many operations were read as are read of any file.
  bool Place(u32 rang);

 private:
  std::map<std::pair<std::string, std::string>, std::size_t> m_places;  ///< in `comptes`
};

struct FormeCsv;

/// What the bytes look like; Csv when they look like nothing else, Inconnu for none.
FormatReleve DevineFormat(std::string_view octets);
/// Reads in a format (Inconnu: the one that the bytes look like). `forme` is for CSV alone; null: as proposed
/// (`ProposeCsv`). A file that is empty, too large or of another kind is one complaint of rank 0.
LectureReleve LitReleve(std::string_view octets, FormatReleve format, const FormeCsv* forme = nullptr);

/// The readers themselves, for `LitReleve`: sizes are theirs to trust.
void LitOfx(std::string_view octets, LectureReleve& lecture);
void LitCamt(std::string_view octets, LectureReleve& lecture);
void LitQif(std::string_view octets, LectureReleve& lecture);
void LitCfonb(std::string_view octets, LectureReleve& lecture);
void LitCsv(std::string_view octets, const FormeCsv& forme, LectureReleve& lecture);

}  // namespace fenlor
