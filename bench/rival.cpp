#include "rival.h"

#include <algorithm>
#include <cstring>

#include "mesures.h"
#include "store/definitions.h"

namespace fenlor::bench {

namespace {

std::string Table(const char* fichier, unsigned indice) {
  return std::string(fichier) + "_cle" + std::to_string(indice);
}

}  // namespace

Rival::Rival(const std::string& chemin) {
  if (sqlite3_open(chemin.c_str(), &m_base) != SQLITE_OK) Echec("SQLite does not open " + chemin);
  for (const char* sql :
       {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=FULL", "PRAGMA cache_size=-65536",
        "PRAGMA mmap_size=4294967296", "PRAGMA temp_store=MEMORY",
        "CREATE TABLE IF NOT EXISTS journal(position INTEGER PRIMARY KEY, rec BLOB NOT NULL)",
        "CREATE TABLE IF NOT EXISTS comptes(position INTEGER PRIMARY KEY, rec BLOB NOT NULL)"}) {
    Execute(sql);
  }
  const auto cles = [&](const char* fichier, const DefinitionFichier& d, std::vector<sqlite3_stmt*>& ajoute) {
    for (unsigned i = 0; i < d.nbCles; ++i) {
      Execute("CREATE TABLE IF NOT EXISTS " + Table(fichier, i) +
              "(cle BLOB PRIMARY KEY, position INTEGER NOT NULL) WITHOUT ROWID");
      ajoute.push_back(Prepare("INSERT INTO " + Table(fichier, i) + " VALUES(?,?)"));
    }
  };
  const DefinitionFichier& journal = *DefinitionFichierNumero(FichierJournal);
  cles("journal", journal, m_ajouteCle);
  cles("comptes", *DefinitionFichierNumero(FichierComptes), m_ajouteCleCompte);
  for (unsigned i = 0; i < journal.nbCles; ++i) {
    m_marche.push_back(Prepare(
        "SELECT j.rec FROM " + Table("journal", i) +
        " k JOIN journal j ON j.position = k.position WHERE k.cle >= ? AND k.cle < ? ORDER BY k.cle"));
    m_trouve.push_back(Prepare("SELECT position FROM " + Table("journal", i) + " WHERE cle = ?"));
  }
  m_ajouteLigne = Prepare("INSERT INTO journal VALUES(?,?)");
  m_ajouteCompte = Prepare("INSERT INTO comptes VALUES(?,?)");
  m_ecritCompte = Prepare("UPDATE comptes SET rec = ? WHERE position = ?");
}

Rival::~Rival() {
  for (sqlite3_stmt* ordre : m_ordres) sqlite3_finalize(ordre);
  sqlite3_close(m_base);
}

void Rival::Execute(const std::string& sql) {
  if (sqlite3_exec(m_base, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    Echec(sql + ": " + sqlite3_errmsg(m_base));
  }
}

sqlite3_stmt* Rival::Prepare(const std::string& sql) {
  sqlite3_stmt* ordre = nullptr;
  if (sqlite3_prepare_v3(m_base, sql.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &ordre, nullptr) != SQLITE_OK) {
    Echec(sql + ": " + sqlite3_errmsg(m_base));
  }
  m_ordres.push_back(ordre);
  return ordre;
}

void Rival::Fait(sqlite3_stmt* ordre) {
  if (sqlite3_step(ordre) != SQLITE_DONE) Echec(sqlite3_errmsg(m_base));
  sqlite3_reset(ordre);
}

void Rival::AjouteLigne(Position position, const Line& rec) {
  sqlite3_bind_int64(m_ajouteLigne, 1, position);
  sqlite3_bind_blob(m_ajouteLigne, 2, &rec, sizeof rec, SQLITE_STATIC);
  Fait(m_ajouteLigne);
  const DefinitionFichier& d = *DefinitionFichierNumero(FichierJournal);
  char cle[TailleCleMax];
  for (unsigned i = 0; i < d.nbCles; ++i) {
    sqlite3_bind_blob(m_ajouteCle[i], 1, cle, static_cast<int>(d.compose(i, &rec, cle)), SQLITE_STATIC);
    sqlite3_bind_int64(m_ajouteCle[i], 2, position);
    Fait(m_ajouteCle[i]);
  }
}

void Rival::AjouteCompte(Position position, const Plan& rec) {
  sqlite3_bind_int64(m_ajouteCompte, 1, position);
  sqlite3_bind_blob(m_ajouteCompte, 2, &rec, sizeof rec, SQLITE_STATIC);
  Fait(m_ajouteCompte);
  const DefinitionFichier& d = *DefinitionFichierNumero(FichierComptes);
  char cle[TailleCleMax];
  for (unsigned i = 0; i < d.nbCles; ++i) {
    sqlite3_bind_blob(m_ajouteCleCompte[i], 1, cle, static_cast<int>(d.compose(i, &rec, cle)), SQLITE_STATIC);
    sqlite3_bind_int64(m_ajouteCleCompte[i], 2, position);
    Fait(m_ajouteCleCompte[i]);
  }
}

void Rival::LitComptes() {
  m_comptes.clear();
  sqlite3_stmt* ordre = Prepare("SELECT position, rec FROM comptes");
  while (sqlite3_step(ordre) == SQLITE_ROW) {
    CompteOuvert c{static_cast<Position>(sqlite3_column_int64(ordre, 0)), {}};
    std::memcpy(&c.rec, sqlite3_column_blob(ordre, 1), sizeof c.rec);
    m_comptes.emplace(c.rec.Compte, c);
  }
  sqlite3_reset(ordre);
}

void Rival::Cumule(const Line& rec) {
  const auto compte = m_comptes.find(std::string_view(rec.Compte));
  if (compte == m_comptes.end()) Echec("the rival lacks an account");
  Plan& plan = compte->second.rec;
  if (rec.Sens) {
    plan.CreditFranc += rec.MontantFranc;
    plan.CreditEuro += rec.MontantEuro;
    if (rec.Rapprochee) plan.RappCreditFranc += rec.MontantFranc, plan.RappCreditEuro += rec.MontantEuro;
  } else {
    plan.DebitFranc += rec.MontantFranc;
    plan.DebitEuro += rec.MontantEuro;
    if (rec.Rapprochee) plan.RappDebitFranc += rec.MontantFranc, plan.RappDebitEuro += rec.MontantEuro;
  }
  if (rec.Role != RoleTva && rec.Role != RolePerso) return;
  const auto principal = m_comptes.find(std::string_view(rec.ComptePrincipal));
  if (principal == m_comptes.end()) return;
  const f64 signe = rec.Sens ? 1 : -1;
  Plan& p = principal->second.rec;
  if (rec.Role == RoleTva)
    p.TVAFranc += signe * rec.MontantFranc, p.TVAEuro += signe * rec.MontantEuro;
  else
    p.PersoFranc += signe * rec.MontantFranc, p.PersoEuro += signe * rec.MontantEuro;
}

void Rival::Saisit(Position position, const Line& rec) {
  if (m_comptes.empty()) LitComptes();
  AjouteLigne(position, rec);
  Cumule(rec);
}

void Rival::EcritComptes() {
  for (auto& [numero, compte] : m_comptes) {
    sqlite3_bind_blob(m_ecritCompte, 1, &compte.rec, sizeof compte.rec, SQLITE_STATIC);
    sqlite3_bind_int64(m_ecritCompte, 2, compte.position);
    Fait(m_ecritCompte);
  }
  m_comptes.clear();
}

unsigned Rival::Marche(unsigned indice, const std::string& debut, const std::string& fin, f64& somme) {
  sqlite3_stmt* ordre = m_marche[indice];
  sqlite3_bind_blob(ordre, 1, debut.data(), static_cast<int>(debut.size()), SQLITE_STATIC);
  sqlite3_bind_blob(ordre, 2, fin.data(), static_cast<int>(fin.size()), SQLITE_STATIC);
  unsigned nombre = 0;
  Line rec;
  while (sqlite3_step(ordre) == SQLITE_ROW) {
    std::memcpy(&rec, sqlite3_column_blob(ordre, 0), sizeof rec);
    somme += rec.MontantEuro;
    ++nombre;
  }
  sqlite3_reset(ordre);
  return nombre;
}

Position Rival::Trouve(unsigned indice, const std::string& cle) {
  sqlite3_stmt* ordre = m_trouve[indice];
  sqlite3_bind_blob(ordre, 1, cle.data(), static_cast<int>(cle.size()), SQLITE_STATIC);
  const Position position =
      sqlite3_step(ordre) == SQLITE_ROW ? static_cast<Position>(sqlite3_column_int64(ordre, 0)) : 0;
  sqlite3_reset(ordre);
  return position;
}

void Rival::Recalcule() {
  Debut();
  LitComptes();
  for (auto& [numero, c] : m_comptes) {
    std::memset(reinterpret_cast<char*>(&c.rec) + offsetof(Plan, PersoFranc), 0,
                offsetof(Plan, Reserve250) - offsetof(Plan, PersoFranc));
  }
  sqlite3_stmt* ordre = Prepare("SELECT rec FROM journal");
  Line rec;
  while (sqlite3_step(ordre) == SQLITE_ROW) {
    std::memcpy(&rec, sqlite3_column_blob(ordre, 0), sizeof rec);
    Cumule(rec);
  }
  sqlite3_reset(ordre);
  EcritComptes();
  Fin();
}

void Rival::RefaitCles() {
  const DefinitionFichier& d = *DefinitionFichierNumero(FichierJournal);
  Debut();
  std::vector<std::vector<std::pair<std::string, Position>>> cles(d.nbCles);
  sqlite3_stmt* ordre = Prepare("SELECT position, rec FROM journal");
  char cle[TailleCleMax];
  while (sqlite3_step(ordre) == SQLITE_ROW) {
    const auto position = static_cast<Position>(sqlite3_column_int64(ordre, 0));
    for (unsigned i = 0; i < d.nbCles; ++i) {
      const unsigned taille = d.compose(i, sqlite3_column_blob(ordre, 1), cle);
      cles[i].emplace_back(std::string(cle, taille), position);
    }
  }
  sqlite3_reset(ordre);
  for (unsigned i = 0; i < d.nbCles; ++i) {
    Execute("DELETE FROM " + Table("journal", i));
    std::sort(cles[i].begin(), cles[i].end());
    for (const auto& [texte, position] : cles[i]) {
      sqlite3_bind_blob(m_ajouteCle[i], 1, texte.data(), static_cast<int>(texte.size()), SQLITE_STATIC);
      sqlite3_bind_int64(m_ajouteCle[i], 2, position);
      Fait(m_ajouteCle[i]);
    }
  }
  Fin();
}

u32 Rival::NombreLignes() {
  sqlite3_stmt* ordre = Prepare("SELECT count(*) FROM journal");
  const u32 nombre = sqlite3_step(ordre) == SQLITE_ROW ? static_cast<u32>(sqlite3_column_int64(ordre, 0)) : 0;
  sqlite3_reset(ordre);
  return nombre;
}

}  // namespace fenlor::bench
