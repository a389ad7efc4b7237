// Stands in for the library of statements: it hands out what the file written for it says, tag by tag. The
// library takes 25 ms a file, most of it for the grammar; our own reader around it takes a thousandth.
#include <libofx/libofx.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

int ofx_PARSER_msg, ofx_DEBUG_msg, ofx_STATUS_msg, ofx_INFO_msg, ofx_WARNING_msg, ofx_ERROR_msg;

namespace {

struct Contexte {
  LibofxProcStatementCallback releve = nullptr;
  LibofxProcTransactionCallback operation = nullptr;
  void *pourReleve = nullptr, *pourOperation = nullptr;
};

template <std::size_t N>
int Pose(char (&champ)[N], const std::string& texte) {
  std::memset(champ, 0, N);
  std::memcpy(champ, texte.data(), std::min(texte.size(), N - 1));
  return 1;
}

}  // namespace

LibofxContextPtr libofx_get_new_context() { return reinterpret_cast<LibofxContextPtr>(new Contexte); }
int libofx_free_context(LibofxContextPtr contexte) {
  delete reinterpret_cast<Contexte*>(contexte);
  return 0;
}
void ofx_set_statement_cb(LibofxContextPtr contexte, LibofxProcStatementCallback suite, void* pour) {
  reinterpret_cast<Contexte*>(contexte)->releve = suite;
  reinterpret_cast<Contexte*>(contexte)->pourReleve = pour;
}
void ofx_set_transaction_cb(LibofxContextPtr contexte, LibofxProcTransactionCallback suite, void* pour) {
  reinterpret_cast<Contexte*>(contexte)->operation = suite;
  reinterpret_cast<Contexte*>(contexte)->pourOperation = pour;
}
int libofx_proc_file(LibofxContextPtr contexte, const char* chemin, LibofxFileFormat) {
  const Contexte& c = *reinterpret_cast<Contexte*>(contexte);
  std::ostringstream octets;
  octets << std::ifstream(chemin).rdbuf();
  const std::string texte = octets.str();
  OfxStatementData releve{};
  OfxTransactionData operation{};
  bool dansReleve = false, dansOperation = false;
  for (std::size_t place = 0; (place = texte.find('<', place)) != std::string::npos;) {
    const std::size_t fin = texte.find('>', place);
    if (fin == std::string::npos) break;
    const std::string nom = texte.substr(place + 1, fin - place - 1);
    std::string valeur = texte.substr(fin + 1, texte.find_first_of("<\n", fin) - fin - 1);
    place = fin;
    if (nom == "STMTRS" || nom == "CCSTMTRS") releve = {}, dansReleve = true;
    if (nom == "STMTTRN") operation = {}, dansOperation = true;
    if (nom == "CURDEF") releve.currency_valid = Pose(releve.currency, valeur);
    if (nom == "ACCTID") releve.account_id_valid = Pose(releve.account_id, valeur);
    if (nom == "FITID") operation.fi_id_valid = Pose(operation.fi_id, valeur);
    if (nom == "NAME") operation.name_valid = Pose(operation.name, valeur);
    if (nom == "MEMO") operation.memo_valid = Pose(operation.memo, valeur);
    if (nom == "/STMTTRN" && dansOperation && c.operation) {
      operation.account_id_valid = Pose(operation.account_id, releve.account_id);
      c.operation(operation, c.pourOperation);
      dansOperation = false;
    }
    if ((nom == "/STMTRS" || nom == "/CCSTMTRS") && dansReleve && c.releve) {
      c.releve(releve, c.pourReleve);
      dansReleve = false;
    }
  }
  return 0;
}
