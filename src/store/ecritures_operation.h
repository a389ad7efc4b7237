// What every operation on entries stands on: the files of the exercice open for
// its time, accounts found, lines written with their keys, effects on the
// accounts gathered and written once, counters of the journal kept.
#pragma once

#include <string>
#include <vector>

#include "store/cumuls.h"
#include "store/etat.h"
#include "store/ouverture.h"

namespace fenlor {

/// One operation. It is declared before its unit of work, so that the unit has
/// ended when it closes what it opened; the error that it told is then the
/// store's last one.
class OperationEcriture {
 public:
  enum Fichiers { JournalSeul, JournalEtComptes };

  /// Opens "JOURNAL" (and "COMPTES") of the directory `exercice` unless they are
  /// open on it; an empty text is the journal that is open, else the open
  /// exercice. A file open on another directory is a refusal.
  OperationEcriture(QVAPI& magasin, EtatQVAPI& etat, const std::string& exercice,
                    Fichiers fichiers = JournalEtComptes);
  ~OperationEcriture();
  OperationEcriture(const OperationEcriture&) = delete;
  OperationEcriture& operator=(const OperationEcriture&) = delete;
  explicit operator bool() const { return m_pret; }

  Moteur& moteur() { return *m_etat.moteur; }

  // Each returns false, so that `return op.Refuse(...)` reads well.
  /// Refuses and tells it through event 6: the text, or the code's own.
  bool Refuse(int code, const std::string& texte = {});
  /// Refuses without a word: a reader that finds nothing.
  bool RefuseSansMot(int code);
  /// Refuses for the engine's last error.
  bool Echoue();
  bool RefuseAbsente(u32 mouvement);

  /// Position of an account, 0 when it is not in the chart. False: engine failure.
  bool TrouveCompte(const char* compte, Position& position);
  /// Records in place until the next write; null when there is none.
  const Plan* VuePlan(Position position);
  const Line* VueLigne(Position position);
  /// Gives a line `TypeCompte` of its account, and its `Designation` too. Refuses
  /// when the account is not in the chart.
  bool CompleteCompte(Line& ligne, bool designation);

  /// Lines of an entry in order of `Rang`; both empty when there is none.
  bool LitPositions(u32 mouvement, std::vector<Position>& positions);
  bool LitEcriture(u32 mouvement, std::vector<Position>& positions, std::vector<Line>& lignes);

  // Writing, inside the caller's unit; a refusal has been told.
  /// Adds a line whose keys are known to be new.
  Position AjouteLigne(const Line& ligne, EffetsComptes& effets);
  /// Replaces the lines of an entry, in their slots as far as they go.
  bool RemplaceLignes(const std::vector<Position>& positions, const std::vector<Line>& anciennes,
                      const std::vector<Line>& nouvelles, EffetsComptes& effets);
  /// Writes each account touched once. Accounts that left the chart are skipped.
  bool Applique(const EffetsComptes& effets);

  // Counters of the journal, learnt from its keys and kept while nobody else
  // touches it.
  bool DernierMouvement(u32& mouvement);
  bool MouvementExiste(u32 mouvement, bool& existe);
  bool RangLibre(u32 mouvement, u32& rang);
  bool DerniereLigne(u16 journal, Date date, u32& ligne);
  /// To be called once the unit has succeeded.
  void CompteAjout(const Line& ligne);
  void CompteRetrait(const Line& ligne, bool entreeReste);

 private:
  bool Ouvre(u16 numero, const std::string& dossier, Ouverture& fichier);

  QVAPI& m_magasin;
  EtatQVAPI& m_etat;
  Ouverture m_journal, m_comptes;  ///< what was opened here
  int m_code = 0;
  bool m_pret = false;
};

}  // namespace fenlor
