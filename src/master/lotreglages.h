// The settings that one page of the options changes, gathered for one replacement
// of the settings file: all of them are written or none.
#pragma once

#include <string>
#include <vector>

#include "core/fenlorapp.h"

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

  bool EstVide() const { return m_changements.empty(); }
  /// False, with the file as it was, when it could not be written. Not told: the reason is
  /// that of the store's settings.
  bool Ecrit();

 private:
  CFenlorApp& m_app;
  std::vector<Profil::Changement> m_changements;
};

}  // namespace fenlor
