// The settings that one page of the options changes, gathered for one replacement
// of the settings file: all of them are written or none.
#pragma once

#include <string>
#include <vector>

#include "core/fiche.h"

namespace fenlor {

class LotReglages {
 public:
  explicit LotReglages(CFenlorApp& app) : m_app(app) {}

  /// Notes a value; one that the setting has already is no change. Line ends are
  /// written as settings hold them, other control characters as blanks.
  void Pose(const std::string& section, const std::string& cle, const std::string& valeur);
  /// "Oui" or "Non". A blank setting counts as "Non".
  void PoseOui(const std::string& section, const std::string& cle, bool oui);
  /// As it stands, for a text that is no line of readable text.
  void PoseBrut(const std::string& section, const std::string& cle, const std::string& valeur);
  void Supprime(const std::string& section, const std::string& cle);
  /// The fields of a value whose table stores them as settings, texts alone; in its section or another one.
  void Pose(const TableFiche& table, const void* options, const std::string& section = {});

  bool EstVide() const { return m_changements.empty(); }
  /// False, with the file as it was, when it could not be written. Not told: the reason is
  /// that of the store's settings.
  bool Ecrit();

 private:
  CFenlorApp& m_app;
  std::vector<Profil::Changement> m_changements;
};

/// Likewise; a setting that is absent is blank.
void LitReglages(const CFenlorApp& app, const TableFiche& table, void* options,
                 const std::string& section = {});

/// The value of one page, which is settings alone.
template <class Options>
Options LitOptions(const CFenlorApp& app) {
  Options options;
  LitReglages(app, Options::Table, &options);
  return options;
}
/// False when the settings could not be written; not told.
template <class Options>
bool EcritOptions(CFenlorApp& app, const Options& options) {
  LotReglages lot(app);
  lot.Pose(Options::Table, &options);
  return lot.Ecrit();
}

}  // namespace fenlor
