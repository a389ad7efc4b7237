// The obvious rival: one SQLite database with the same records and the same keys.
// Write-ahead log, synchronous FULL, prepared statements, a generous page cache
// and a memory map: as fast as it can be while it keeps the same promise.
#pragma once

#include <sqlite3.h>

#include <map>
#include <string>
#include <vector>

#include "store/enregistrements.h"

namespace fenlor::bench {

class Rival {
 public:
  explicit Rival(const std::string& chemin);
  ~Rival();
  Rival(const Rival&) = delete;
  Rival& operator=(const Rival&) = delete;

  void Debut() { Execute("BEGIN IMMEDIATE"); }
  void Fin() { Execute("COMMIT"); }
  /// A record with its keys.
  void AjouteLigne(Position position, const Line& rec);
  void AjouteCompte(Position position, const Plan& rec);
  /// One line of an entry that is being saved: its record, its keys, and the
  /// amount into its account, which stays in memory until `EcritComptes`.
  void Saisit(Position position, const Line& rec);
  void EcritComptes();

  /// Every line of the keys from `debut` to `fin` (excluded) of journal key
  /// `indice`: number of lines, and the sum of their Euro amounts.
  unsigned Marche(unsigned indice, const std::string& debut, const std::string& fin, f64& somme);
  Position Trouve(unsigned indice, const std::string& cle);
  /// All totals of all accounts from the lines, in one transaction.
  void Recalcule();
  /// All journal keys, in one transaction: composed, sorted, inserted in order.
  void RefaitCles();
  u32 NombreLignes();

 private:
  void Execute(const std::string& sql);
  sqlite3_stmt* Prepare(const std::string& sql);
  void Fait(sqlite3_stmt* ordre);
  void Cumule(const Line& rec);
  void LitComptes();

  sqlite3* m_base = nullptr;
  std::vector<sqlite3_stmt*> m_ordres;
  sqlite3_stmt* m_ajouteLigne = nullptr;
  sqlite3_stmt* m_ajouteCompte = nullptr;
  sqlite3_stmt* m_ecritCompte = nullptr;
  std::vector<sqlite3_stmt*> m_ajouteCle, m_ajouteCleCompte, m_marche, m_trouve;
  struct CompteOuvert {
    Position position;
    Plan rec;
  };
  std::map<std::string, CompteOuvert, std::less<>> m_comptes;
};

}  // namespace fenlor::bench
