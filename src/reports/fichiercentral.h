// The work file of the centralised detail: amounts by bucket date, main account and other account, kept in
// order on disk, without a name below the system's temporary folder: it goes with the object, and with the
// program.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "reports/etatcomptable.h"

namespace fenlor {

#pragma pack(push, 1)
struct LigneCentrale {
  Date date;
  char compte1[11];  ///< the receipts or expense account
  char compte2[11];  ///< the other account of the entry; empty on the main account's own row
  u8 reserve[6];
  f64 debitFranc;
  f64 debitEuro;
  f64 creditFranc;
  f64 creditEuro;
};
#pragma pack(pop)
static_assert(sizeof(LigneCentrale) == 64 && offsetof(LigneCentrale, compte1) == 4);
static_assert(offsetof(LigneCentrale, compte2) == 15 && offsetof(LigneCentrale, debitFranc) == 32);

class FichierCentral {
 public:
  /// The session outlives the object.
  explicit FichierCentral(CFenlorApp& app) : m_magasin(app.Magasin) {}
  ~FichierCentral();
  FichierCentral(const FichierCentral&) = delete;
  FichierCentral& operator=(const FichierCentral&) = delete;

  /// To be called once, outside any unit of work. False: there is no file, and nothing is left of it.
  bool Cree();
  bool EstCree() const { return !m_dossier.empty(); }
  /// Adds amounts to the row of these three. False: the store failed, the rows are not to be trusted.
  bool Ajoute(Date date, const std::string& compte1, const std::string& compte2, const SommesEtat& sommes);
  u32 NombreRangees();
  /// Rows by date, main account and other account, the main account's own row first; `suite` returns false
  /// to stop. False: a row could not be read.
  bool Parcourt(const std::function<bool(const LigneCentrale&)>& suite);

 private:
  void Supprime();
  void OteNoms();

  QVAPI& m_magasin;
  std::string m_dossier;  ///< empty: not made
};

}  // namespace fenlor
