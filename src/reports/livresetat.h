// Chart and journal of the open exercice as reports read them: by key, in place. Internal to reports/.
#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <type_traits>

#include "core/btfiles.h"
#include "core/fiche.h"
#include "pages/etatdoc.h"

namespace fenlor {

/// Hands each record of a key to `suite`, good for that call alone, until it returns false, if it returns
/// anything, or the report is no longer `EnCours`. A file that cannot be read is told, and the report given
/// up.
template <class Fiche, class Suite>
void ParcourtFichier(CFenlorApp& app, CEtatDoc& etat, CBTFiles& fichier, u32 cle, const std::string& debut,
                     const std::string& fin, const Suite& suite) {
  const auto fiche = [&](Position, const void* rec) {
    if constexpr (std::is_void_v<std::invoke_result_t<const Suite&, const Fiche&>>)
      suite(*static_cast<const Fiche*>(rec));
    else if (!suite(*static_cast<const Fiche*>(rec)))
      return false;
    return etat.EnCours();
  };
  if (app.Magasin.QVParcoursCle(static_cast<u16>(fichier.NumCle + cle), debut, fin, fiche)) return;
  fichier.ErreurLecture();
  etat.Abandonne(EchecFichier());
}

/// Both stay open while the object lives. A walk is one of `ParcourtFichier`; within it other walks may
/// run.
class LivresEtat {
 public:
  using SuiteComptes = std::function<void(const Plan&)>;
  using SuiteLignes = std::function<void(const Line&)>;

  /// Both outlive the object.
  LivresEtat(CFenlorApp& app, CEtatDoc& etat) : m_app(app), m_etat(etat) {}
  LivresEtat(const LivresEtat&) = delete;
  LivresEtat& operator=(const LivresEtat&) = delete;

  /// To be called once, before all others. False: the report is given up (3209: no exercice is open).
  bool Ouvre();
  u32 NombreComptes() const;
  u32 NombreLignes() const;

  /// Its number in screen form, fit for markup.
  std::string CompteCourt(const Plan& plan) const;

  /// In the order of the account numbers.
  void Comptes(const SuiteComptes& suite);
  /// In the order of the account numbers.
  void ComptesDuType(i16 type, const SuiteComptes& suite);
  /// The account of that long form, if there is one.
  void Compte(std::string_view compte, const SuiteComptes& suite);
  /// Lines of an account (long form), by the date of the line, both days included.
  void LignesDuCompte(std::string_view compte, Date du, Date au, const SuiteLignes& suite);
  /// Lines of an account from a day on, by the date of the line, then those of the accounts behind it, until
  /// `suite` returns false.
  void LignesDepuis(std::string_view compte, Date du, const std::function<bool(const Line&)>& suite);
  /// Lines of all accounts by the date of the line.
  void LignesDatees(Date du, Date au, const SuiteLignes& suite);

  /// The journal could not be read: tells it, and gives the report up.
  void EchecLecture();

 private:
  void ParcoursComptes(u32 cle, const std::string& debut, const std::string& fin, const SuiteComptes& suite);
  void ParcoursLignes(u32 cle, const std::string& prefixe, Date du, Date au, const SuiteLignes& suite);

  CFenlorApp& m_app;
  CEtatDoc& m_etat;
  std::optional<CPlan> m_plan;
  std::optional<CLines> m_lignes;
};

}  // namespace fenlor
