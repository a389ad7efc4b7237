// Settings of the practice ("fenlor.ini") as the rules read them: key by key,
// through the store's `Profil`, never cached above it.
#pragma once

#include <string>

#include "core/texte.h"
#include "store/qvapi.h"

namespace fenlor {

class Parametres {
 public:
  /// Reads through the store's open practice; the store outlives the object.
  explicit Parametres(QVAPI& magasin) : m_magasin(magasin) {}

  /// Value with `DecodeRetours`, empty when absent. Names are Windows-1252.
  std::string LitIni(const std::string& section, const std::string& cle) const;
  /// From a section of an exercice; empty name: the open one.
  std::string LitIniExercice(const std::string& exercice, const std::string& cle) const;
  /// Writes with `EncodeRetours`; false when the file could not be written.
  bool EcritIni(const std::string& section, const std::string& cle, const std::string& valeur);
  bool EcritIniExercice(const std::string& exercice, const std::string& cle, const std::string& valeur);
  /// "Oui" without regard to case. `IsOui("")` is false.
  static bool IsOui(const std::string& valeur);

  bool IsExerciceCloture(const std::string& exercice = {}) const;
  /// Nothing of it can be changed: it is closed, or the practice is open to be read.
  /// `CFenlorApp::ControleEcriture` says which.
  bool IsFige(const std::string& exercice = {}) const;
  bool IsTVA(const std::string& exercice = {}) const;
  bool IsEuro(const std::string& exercice = {}) const;
  bool IsFraisKm() const;
  bool IsBrouillon() const;
  bool IsPrevisualisation() const;
  bool IsPapierSoigne() const;
  bool IsVirgule() const;
  bool IsEntree() const;
  bool IsFinDeSession() const;
  bool IsSauverFenetres();  ///< blank: writes "Oui"
  bool IsModeDebug() const;
  bool IsRapprochementEspeces() const;
  Date GetLimiteFranc() const;  ///< 18/02/2002 when the setting holds no date
  Date GetDebutExercice(const std::string& exercice = {}) const;
  Date GetFinExercice(const std::string& exercice = {}) const;
  /// "sDecimal" of the machine's registry (section "intl"), default ','.
  char SeparateurDecimal() const;
  bool ZeroDansBoite() const;  ///< "Zéro dans boite de dialogue"

 private:
  std::string Exercice(const std::string& exercice) const;
  bool Preference(const TexteFixe& cle) const;  ///< "Oui" under a key of "Préférences"
  QVAPI& m_magasin;
};

}  // namespace fenlor
