// What every command of fenlorctl works with: the open practice, the session,
// the streams, and one way to tell a failure.
#pragma once

#include <functional>
#include <initializer_list>
#include <istream>
#include <ostream>
#include <string>

#include "core/fenlorapp.h"
#include "ctl/ctl.h"
#include "ctl/dialoguectl.h"

namespace fenlor {

/// Options that stand before or behind any command, as typed.
struct OptionsGlobales {
  std::string cabinet;
  std::string exercice;
  std::string aujourdhui;
  std::string motDePasse;
  bool json = false;
  bool oui = false;
};

class Contexte {
 public:
  Contexte(const OptionsGlobales& globales, const OptionsCtl& options, std::istream& entree,
           std::ostream& sortie, std::ostream& erreurs);
  ~Contexte();
  Contexte(const Contexte&) = delete;
  Contexte& operator=(const Contexte&) = delete;

  /// Opens session and practice; `cree`: makes a directory that does not exist.
  /// False: told.
  bool OuvreCabinet(bool cree);
  /// Finds the exercice of the command line, of the settings, or the last one.
  /// False: there is none, told.
  bool TrouveExercice(std::string& nom);
  /// Opens it. False: told.
  bool OuvreExercice(const std::string& nom);
  bool OuvreExercice();
  /// Closes what is open and flushes the output; the command's final status.
  int Termine(int statut);

  /// Tells a refusal, with the input line when it is not 0: its own words, or those of the store or the files
  /// that told it first. Returns StatutRefuse.
  int Refuse(const Refus& regle, u32 ligne = 0);
  int Refuse(const TexteFixe& erreur, std::initializer_list<std::string> arguments, u32 ligne = 0);
  /// ErrChampInvalide with the reason. Returns false.
  bool Invalide(const char* champ, const std::string& raison);
  /// What was typed does not go with what was found. Returns StatutUsage.
  int RefuseUsage(const std::string& faute);
  /// An input file that cannot be opened, or read to its end (errno value).
  int RefuseOuverture(const std::string& chemin);
  int RefuseLecture(int erreur, const std::string& chemin);
  /// Tells what the store or the dialogue said last, or the store's error code.
  int RefuseMagasin();
  /// The same, not told yet, and forgets it.
  Refus DernierEchec();
  void Oublie();
  /// Tells on the error stream what is no refusal; the text's further lines stand under it.
  void Avertit(const std::string& texte);
  /// After a walk along a key: it went to the end, and did not fail on the way.
  bool FinDeCle() const;

  /// Writes UTF-8. False, told once, when the output fails.
  bool Ecrit(const std::string& utf8);
  /// The same; the command's status.
  int Donne(const std::string& utf8) { return Ecrit(utf8) ? StatutFait : StatutRefuse; }
  bool Vide();

  const OptionsGlobales& Globales;
  std::istream& Entree;
  DialogueCtl Dialogue;
  const OptionsCtl::FonctionPdf EcritPdf;  ///< empty: this program writes none
  const OptionsCtl::FonctionPdfGraphique EcritPdfGraphique;
  QVAPI Magasin;
  CFenlorApp App;

 private:
  /// Writes or flushes. False when the output is lost: told, unless its reader just went away.
  bool Sort(const std::function<void()>& acte);
  u32 Evenement(u32 evenement, u32 valeur, const std::string& texte);

  std::ostream& m_sortie;
  std::ostream& m_erreurs;
  std::string m_pathProgrammes;
  bool m_sessionOuverte = false;
  bool m_sortiePerdue = false;
  unsigned m_numeroMagasin = 0;
  std::string m_texteMagasin;
};

/// Tells on `erreurs` what is wrong with the command line, UTF-8. Returns StatutUsage.
int RefuseUsage(std::ostream& erreurs, const std::string& faute);
/// Text of one line: line ends and tabs become blanks.
std::string SurUneLigne(const std::string& texte);

}  // namespace fenlor
