// The "Période" choice of the forms that work on a span of days: which weeks and months are
// offered, and what days a choice stands for.
#pragma once

#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// In the order of the form; the number is what the settings hold.
enum class Periode : int { Aujourdhui = 0, Semaine = 1, Mois = 2, Exercice = 3, Libre = 4 };

/// The days that a choice is made within.
struct CadrePeriode {
  Date debut = 0, fin = 0;  ///< of the exercice
  Date aujourdhui = 0;

  bool Contient() const { return aujourdhui >= debut && aujourdhui <= fin; }
  /// Last day that a week shows: today when it lies strictly within the exercice, else its end.
  Date Limite() const { return aujourdhui > debut && aujourdhui < fin ? aujourdhui : fin; }
};
/// Of the open exercice.
CadrePeriode LitCadrePeriode(CFenlorApp& app);

/// How far the current week reaches.
enum class FinSemaine {
  Limite,    ///< not beyond today
  Exercice,  ///< to its Sunday
};
/// A row of the week list or of the month list; `valeur` is a day of that week, the first of that month.
struct LignePeriode {
  std::string texte;  ///< "du 01/03/2003 au 02/03/2003", "Mars"
  Date valeur = 0;
};
/// The weeks from the first day of the exercice to that of the limit, cut to the exercice and, the last one,
/// as `fin` tells: each row names the days that `BornesDe` gives for it. None for a wrong exercice.
std::vector<LignePeriode> SemainesPeriode(const CadrePeriode& cadre, FinSemaine fin = FinSemaine::Limite);
/// January to December of the year in which the exercice begins, wherever it begins.
std::vector<LignePeriode> MoisPeriode(const CadrePeriode& cadre);
/// First days of the months of the open exercice, from that of its first day through that of its last.
std::vector<Date> MoisExercice(const CFenlorApp& app);
/// Row to begin with: the week that today falls in, or comes before, when today is of the exercice's first
/// year (the last one when all are before it), else the first. -1 for an empty list.
int SemaineProposee(const CadrePeriode& cadre, const std::vector<LignePeriode>& semaines);
/// The month of today, whatever its year.
int MoisPropose(const CadrePeriode& cadre);

struct BornesPeriode {
  Date du = 0, au = 0;
  bool operator==(const BornesPeriode&) const = default;
};
/// Days of a choice. `jour`: value of the row chosen, for a week or a month. A week is cut to the exercice, a
/// month is whole; `Libre` gives what its dates begin with, the exercice.
BornesPeriode BornesDe(const CadrePeriode& cadre, Periode periode, Date jour = 0,
                       FinSemaine fin = FinSemaine::Limite);

/// The same around today, week and month whole: for a form without lists of them.
BornesPeriode BornesEntieres(const CadrePeriode& cadre, Periode periode);

/// The choice kept in the settings. With today outside the exercice the first three become `Exercice`, as
/// does what is no choice.
Periode PeriodeRetenue(CFenlorApp& app, const CadrePeriode& cadre);
/// False when the settings could not be written.
bool RetientPeriode(CFenlorApp& app, Periode periode);

}  // namespace fenlor
