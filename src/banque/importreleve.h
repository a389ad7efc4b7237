// From a statement that was read to the operations that wait ("BANQUE"). What was imported once is known
// again whatever became of it: by the records of "RELEVES", which each import leaves behind, in the same
// unit.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "banque/releve.h"
#include "banque/relevecsv.h"
#include "core/fenlorapp.h"

namespace fenlor {

enum class SortOperation : u8 { Nouvelle, Connue, HorsExercice, Illisible };

struct LigneApercu {
  SortOperation sort = SortOperation::Nouvelle;
  u32 rang = 0;               ///< as the reader counts; 0: the file as a whole
  OperationBanque operation;  ///< empty for what is unreadable; its currency is "EUR" or "FRF"
  std::string raison;         ///< of what is unreadable
};

/// What an import would do. The lines are in the file's order, those that cannot be read behind the others.
struct ApercuReleve {
  std::string compte;       ///< treasury account, long form
  std::string numero;       ///< of the account at the bank, as `NomsComptes` has it; may be empty
  std::string autreNumero;  ///< the one that the last file of this treasury account had, when it is another
  FormatReleve format = FormatReleve::Inconnu;
  std::vector<LigneApercu> lignes;
  std::array<std::size_t, 4> nombres{};  ///< lines of each kind
  bool sansIdentifiants = false;         ///< ids of the file that contradict what is known do not count
  std::optional<i64> solde;              ///< cents
  Date dateSolde = 0;
  std::string monnaie;  ///< of the balance

  std::size_t Nombre(SortOperation sort) const { return nombres[static_cast<std::size_t>(sort)]; }
};

/// What the accounts of a file are called, each otherwise: their numbers, with the currency behind one that
/// the file has in several.
std::vector<std::string> NomsComptes(const LectureReleve& lecture);
/// Reads what is known and says what an import into `compte` (a bank account in any form) would do; writes
/// nothing. `numero`: the account of the file; empty: its only one, or that of the last import. In order:
/// 3056 on a closed exercice, 3119 and 3450 for the account, 3479 an account that the file does not have,
/// 3478 several of them and no choice.
Refus PrepareReleve(CFenlorApp& app, const std::string& compte, const LectureReleve& lecture,
                    const std::string& numero, ApercuReleve& apercu);
/// Writes the new operations and what they are known by as one unit with one sync, and with them, in the
/// settings, the balance of the statement unless a later one is known or it is of another exercice, and the
/// bank's number. Refused, none of it stands. With nothing new the settings are written all the same.
Refus ImporteReleve(CFenlorApp& app, const ApercuReleve& apercu);

/// The answer for the tables of an account (long form), made fit for this file; none: never asked, or the
/// bank's titles are others now.
std::optional<FormeCsv> FormeRetenue(CFenlorApp& app, const std::string& compte, std::string_view octets);
Refus RetientForme(CFenlorApp& app, const std::string& compte, const FormeCsv& forme);

/// Reads a file from the disk; refused as 3011. One byte more than is read of any statement says that it is
/// too large.
Refus LitFichierReleve(CFenlorApp& app, const std::string& chemin, std::string& octets);

}  // namespace fenlor
