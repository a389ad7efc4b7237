// Chart and journal of the open exercice as reports read them: by key, in place. Internal to reports/.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "core/btfiles.h"
#include "store/dates.h"

namespace fenlor {

inline bool MemeMois(Date a, Date b) { return Annee(a) == Annee(b) && Mois(a) == Mois(b); }

/// What a line is called on paper: the words typed for a line of an opération diverse, which its `Designation`
/// keeps; of any other line that field is the account's own name, and the entry's label stands instead.
std::string_view NomDeLigne(const Line& ligne);

/// Both stay open while the object lives. A walk hands each record to `suite`, good for that call alone,
/// and ends when `suite` returns false; within it other walks may run. A walk is false when the books could
/// not be read, which has been told.
class LivresEtat {
 public:
  using SuiteComptes = std::function<bool(const Plan&)>;
  using SuiteLignes = std::function<bool(const Line&)>;

  explicit LivresEtat(CFenlorApp& app) : m_app(app) {}
  LivresEtat(const LivresEtat&) = delete;
  LivresEtat& operator=(const LivresEtat&) = delete;

  /// To be called once, before all others. A refusal has been told; 3209: no exercice is open.
  bool Ouvre();
  u32 NombreComptes() const;
  u32 NombreLignes() const;

  /// Its number in screen form, fit for markup.
  std::string CompteCourt(const Plan& plan) const;

  /// In the order of the account numbers.
  bool Comptes(const SuiteComptes& suite);
  /// In the order of the account numbers.
  bool ComptesDuType(i16 type, const SuiteComptes& suite);
  /// The account of that long form, if there is one.
  bool Compte(std::string_view compte, const SuiteComptes& suite);
  /// Lines of an account (long form), by the date of the line, both days included.
  bool LignesDuCompte(std::string_view compte, Date du, Date au, const SuiteLignes& suite);
  /// Lines of an account from a day on, by the date of the line, then those of the accounts behind it.
  bool LignesDepuis(std::string_view compte, Date du, const SuiteLignes& suite);
  /// Lines of all accounts by the date of the line.
  bool LignesDatees(Date du, Date au, const SuiteLignes& suite);

  /// Tells that the journal could not be read; false.
  bool EchecLecture();

 private:
  bool ParcoursComptes(u32 cle, const std::string& debut, const std::string& fin, const SuiteComptes& suite);
  bool ParcoursLignes(u32 cle, const std::string& prefixe, Date du, Date au, const SuiteLignes& suite);

  CFenlorApp& m_app;
  std::optional<CPlan> m_plan;
  std::optional<CLines> m_lignes;
};

}  // namespace fenlor
