// Those who collect the years of a depreciation schedule, one class for each use.
// Each is made for one asset; what it collected grows when it is used again.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "assets/amortissements.h"

namespace fenlor {

/// Rows of the detail list. Amounts with two decimals, a decimal comma and the sign
/// of the exercice's currency; empty for 0.
class CCalculListAmortissements : public CCalculAmortissements {
 public:
  struct Ligne {
    std::string annee, theorique, reel;
  };
  explicit CCalculListAmortissements(CFenlorApp& app, const Immobilisation* immobilisation = nullptr);
  bool OnAnnuite(u32 annee, u32 anneeDemandee, f64 theoriqueFranc, f64 theoriqueEuro, f64 reelFranc,
                 f64 reelEuro) override;

  std::vector<Ligne> Lignes;

 private:
  const bool m_euro;
};

/// The six year columns of the register, from the rightmost, which shows `anneeDroite`,
/// to the left. Real amounts; 0 for a year outside the schedule, shown as nothing.
class CCalculLineAmortissements : public CCalculAmortissements {
 public:
  static constexpr u32 NbColonnes = 6;
  struct Colonne {
    f64 franc = 0, euro = 0;
  };
  CCalculLineAmortissements(CFenlorApp& app, const Immobilisation* immobilisation, u32 anneeDroite)
      : CCalculAmortissements(app, immobilisation), m_anneeDroite(anneeDroite) {}
  bool OnAnnuite(u32 annee, u32 anneeDemandee, f64 theoriqueFranc, f64 theoriqueEuro, f64 reelFranc,
                 f64 reelEuro) override;

  std::array<Colonne, NbColonnes> Colonnes;

 private:
  const u32 m_anneeDroite;
};

/// The fiscal statement: theoretical amounts of the year asked for, and up to it.
class CCalcul2035Amortissements : public CCalculAmortissements {
 public:
  using CCalculAmortissements::CCalculAmortissements;
  bool OnAnnuite(u32 annee, u32 anneeDemandee, f64 theoriqueFranc, f64 theoriqueEuro, f64 reelFranc,
                 f64 reelEuro) override;

  f64 AnnuiteFranc = 0, AnnuiteEuro = 0;
  f64 CumulFranc = 0, CumulEuro = 0;
};

/// The depreciation report: real amounts of the year asked for, and before it.
class CCalculEtatAmortissements : public CCalculAmortissements {
 public:
  using CCalculAmortissements::CCalculAmortissements;
  bool OnAnnuite(u32 annee, u32 anneeDemandee, f64 theoriqueFranc, f64 theoriqueEuro, f64 reelFranc,
                 f64 reelEuro) override;

  f64 AnnuiteFranc = 0, AnnuiteEuro = 0;
  f64 AnterieurFranc = 0, AnterieurEuro = 0;
};

/// The printed register: three integers for each year up to the one asked for that
/// has a real Franc amount: the year, the Franc and the Euro amount in units of their
/// last decimal. The scaled amounts are cut, not rounded: 1.15 gives 114.
class CCalculPrintAmortissements : public CCalculAmortissements {
 public:
  using CCalculAmortissements::CCalculAmortissements;
  bool OnAnnuite(u32 annee, u32 anneeDemandee, f64 theoriqueFranc, f64 theoriqueEuro, f64 reelFranc,
                 f64 reelEuro) override;

  std::vector<i64> Entiers;
};

/// The report of gains on disposal: theoretical amounts up to the year asked for.
class CCalculPrintPMV : public CCalculAmortissements {
 public:
  using CCalculAmortissements::CCalculAmortissements;
  bool OnAnnuite(u32 annee, u32 anneeDemandee, f64 theoriqueFranc, f64 theoriqueEuro, f64 reelFranc,
                 f64 reelEuro) override;

  f64 CumulFranc = 0, CumulEuro = 0;
};

}  // namespace fenlor
