// Options of the practice and of its exercices: what each page of the options
// shows, checks and writes. Texts are Windows-1252, lines end with CR LF.
//
// `Lit...` never fails: a setting that is absent or cannot be read is blank.
// `Ecrit...` writes the real changes alone, in one replacement of the settings file: false
// when it could not be written, the file as it was; not told.
#pragma once

#include <string>
#include <vector>

#include "core/texte.h"
#include "master/lotreglages.h"

namespace fenlor {

// -- Activity

struct OptionsActivite {
  std::string identification;  ///< name and address of the practitioner
  std::string siret;
  std::string ape;
  std::string activite;
  std::string debut;            ///< as it was typed
  bool afficherDouble = false;  ///< of the last exercice
  static const TableFiche Table;
};
OptionsActivite LitActivite(CFenlorApp& app);
/// Also sets the session's `AfficherDouble` when the last exercice is the open one.
bool EcritActivite(CFenlorApp& app, const OptionsActivite& options);

/// The open exercice as the page shows it.
struct ExerciceEnCours {
  std::string annee;  ///< of its first day
  std::string cloture;
  Date debut = 0;
  Date fin = 0;  ///< one year less a day behind `debut` when the setting is not after it
  bool tva = false;
  bool euro = false;
};
ExerciceEnCours LitExerciceEnCours(CFenlorApp& app);

/// Fills the blank keys of section "2035": which lines of the statement hold
/// receipts, expenses, result and VAT.
bool CompleteLignes2035(CFenlorApp& app);

// -- Banks

/// A bank account of the chart and what its section says of it.
struct AdresseBanque {
  std::string code;            ///< of the account, name of the section
  std::string identification;  ///< name and address
  std::string compte;          ///< account number at the bank
  static const TableFiche Table;
  bool EstVide() const { return identification.empty() && compte.empty(); }
};
/// Of the section of that code.
AdresseBanque LitAdresseBanque(CFenlorApp& app, const std::string& code);
/// In the order of account numbers.
std::vector<AdresseBanque> LitAdressesBanque(CFenlorApp& app);
/// `especes`: entries in cash may be reconciled.
bool EcritAdressesBanque(CFenlorApp& app, const std::vector<AdresseBanque>& banques, bool especes);

// -- Association, accountant: `LitOptions`, `EcritOptions`

struct OptionsAssociation {
  std::string identification, numero, annee;
  static const TableFiche Table;
};
struct OptionsComptable {
  std::string identification;
  static const TableFiche Table;
};

// -- Password

struct SaisieMotDePasse {
  std::string ancien, nouveau, verification;
  /// Nothing was typed: the password stays as it is.
  bool EstVide() const { return ancien.empty() && nouveau.empty() && verification.empty(); }
};
bool MotDePasseExiste(CFenlorApp& app);
/// 3068 the old one is wrong, 3067 the new ones differ; without regard to case and
/// to the number of blanks. The field is "ancien" while that is to be typed and
/// blank, else "nouveau".
Refus ControleMotDePasse(CFenlorApp& app, const SaisieMotDePasse& saisie);
/// Once it was checked. A blank new password ends the protection.
bool EcritMotDePasse(CFenlorApp& app, const SaisieMotDePasse& saisie);

// -- Update reminder, kept for the user in the platform's folder of settings

/// A text of this user on this machine, whatever the practice: section "Système" of the registry. Texts are
/// cut to 259 bytes when they are read. The reason of a failure is the store's `QVFileErrorCode`.
std::string LitUtilisateur(const CFenlorApp& app, const TexteFixe& nom);
bool EcritUtilisateur(CFenlorApp& app, const TexteFixe& nom, const std::string& texte);

enum ModeMiseAJour : int { MiseAJourAuDemarrage = 1, MiseAJourFinSession = 2, MiseAJourJamais = 3 };
struct OptionsMiseAJour {
  int mode = MiseAJourAuDemarrage;
  int jours = 90;  ///< 1 to 365
  std::string application;
};
/// The days are 90 while nothing is set, though the reminder itself then waits for 15.
OptionsMiseAJour LitMiseAJour(CFenlorApp& app);
/// A value that is what `LitMiseAJour` gives is not written, so that an untouched
/// default stays unset. The reason of a failure is the store's `QVFileErrorCode`.
bool EcritMiseAJour(CFenlorApp& app, const OptionsMiseAJour& options);

}  // namespace fenlor
