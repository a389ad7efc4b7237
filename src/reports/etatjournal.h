// `CEtatJournalDoc`: a month of a journal as its window lists it, always in both currencies.
#pragma once

#include "journal/listejournal.h"
#include "reports/livresetat.h"
#include "reports/totauxetat.h"

namespace fenlor {

class CEtatJournalDoc : public CEtatComptable {
 public:
  using CEtatComptable::CEtatComptable;
  /// What to print; to be called before the report is built. `comptable`: one row a line, as
  /// always in journal 3. A filter
  /// that is not in the chart is none.
  void SetCriteres(const DemandeListe& demande, bool comptable);

 protected:
  void BuildEtat() override;

 private:
  /// An account as a row shows it.
  struct CompteMontre {
    std::string code, rubrique, compte, designation;
  };

  void EcritMois();
  void EcritEntree(const EntreeJournal& entree);
  void EcritLignes(const EntreeJournal& entree);
  void EcritTotal();

  DemandeListe m_demande;
  bool m_comptable = false;
  std::string m_filtre;   ///< long form, empty without one that counts
  CompteMontre m_compte;  ///< of the filter, texts as they stand
  SommesEtat m_total;     ///< of entries in one row: the debit side alone
};

}  // namespace fenlor
