// Life and annual rate of an asset as the form of an acquisition changes them: for linear depreciation one is
// typed and the other follows, for degressive both are rows of a table that depends on the date of purchase,
// for exceptional they are 1 year and 100 %.
#pragma once

#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// `Immobilisation::ModeDuree`: what is typed
enum ModeDuree : u8 { ParDuree = 0, ParTaux = 1 };

/// Bounds of what is typed.
constexpr f64 DureeMin = 0.1, DureeMax = 500, TauxMin = 0.2, TauxMax = 1000;

/// The rows of the degressive table for an asset bought on `achat`, by ascending life.
std::vector<TauxDegressif> TableDegressive(const CFenlorApp& app, Date achat);

class DureeEtTaux {
 public:
  /// As an asset has them: they stay exactly so until something is changed. A degressive asset shows the rows
  /// that hold its life and its rate; the first row when none has its life, the row of its life when none has
  /// its rate.
  DureeEtTaux(const CFenlorApp& app, Date achat, u8 type, u8 mode, f64 duree, f64 taux);

  /// The table of that date; the rows chosen stay the same ones.
  void ChangeDate(Date achat);
  /// To linear the chosen row goes into what is typed, and the other follows. To degressive the last row
  /// whose value is not above what is typed is chosen, the first when there is none; the other list follows.
  void ChangeType(u8 type);
  /// Nothing for an exceptional asset.
  void ChangeMode(u8 mode);
  /// What is typed, to the hundredth; the other is 100 divided by it (by 100 for 0). 0 becomes 0.01.
  void ChangeDuree(f64 duree);
  void ChangeTaux(f64 taux);
  /// A row of either list, from 0: the other list follows.
  void ChoisitRangee(int rang);

  u8 Type() const { return m_type; }
  u8 Mode() const { return m_mode; }
  /// What is saved: of a degressive asset the rows'.
  f64 Duree() const;
  f64 Taux() const;
  bool EnListes() const;     ///< lists instead of entries
  bool ModesActifs() const;  ///< the choice between life and rate
  bool DureeActive() const { return m_dureeActive; }
  bool TauxActif() const { return m_tauxActif; }
  const std::vector<TauxDegressif>& Table() const { return m_table; }
  int RangDuree() const { return m_rangDuree; }  ///< row of each list, -1 before any was chosen
  int RangTaux() const { return m_rangTaux; }

 private:
  void Active();
  const CFenlorApp& m_app;
  std::vector<TauxDegressif> m_table;
  u8 m_type, m_mode;
  f64 m_duree, m_taux;  ///< of the entries
  int m_rangDuree = -1, m_rangTaux = -1;
  bool m_dureeActive = false, m_tauxActif = false;
};

/// "6,66 ans", "33,75 %".
std::string TexteDuree(const CFenlorApp& app, f64 duree);
std::string TexteTaux(const CFenlorApp& app, f64 taux);

}  // namespace fenlor
