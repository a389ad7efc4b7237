#include "session/periodes.h"

#include <algorithm>
#include <cassert>

#include "core/cles.h"
#include "core/valeurs.h"
#include "session/textes.h"

namespace fenlor {

namespace {

constexpr unsigned joursSemaine = 7;

Date Fin(const CadrePeriode& cadre, FinSemaine fin) {
  return fin == FinSemaine::Limite ? cadre.Limite() : cadre.fin;
}

BornesPeriode Semaine(const CadrePeriode& cadre, Date jour, Date limite) {
  BornesPeriode bornes;
  GetWeek(jour, bornes.du, bornes.au);
  assert(IsDateOk(jour) && bornes.du <= jour && jour <= bornes.au);
  return {std::max(bornes.du, cadre.debut), std::min(bornes.au, limite)};
}

}  // namespace

CadrePeriode LitCadrePeriode(CFenlorApp& app) {
  return {app.Reglages.GetDebutExercice(), app.Reglages.GetFinExercice(), app.Magasin.Today()};
}

std::vector<LignePeriode> SemainesPeriode(const CadrePeriode& cadre, FinSemaine fin) {
  std::vector<LignePeriode> lignes;
  if (!IsDateOk(cadre.debut) || !IsDateOk(cadre.fin)) return lignes;
  const Date limite = cadre.Limite();
  for (Date jour = cadre.debut; cadre.debut <= limite;) {
    const BornesPeriode semaine = Semaine(cadre, jour, Fin(cadre, fin));
    assert(lignes.empty() || semaine.au > lignes.back().valeur);  // or the walk never ends
    lignes.push_back({TexteFormat(FormatSemaine, {StrDate(semaine.du), StrDate(semaine.au)}), semaine.au});
    if (semaine.au >= limite) break;
    for (unsigned i = 0; i < joursSemaine; ++i) jour = NextDate(jour);
  }
  return lignes;
}

std::vector<LignePeriode> MoisPeriode(const CadrePeriode& cadre) {
  std::vector<LignePeriode> lignes;
  for (unsigned mois = 1; mois <= 12; ++mois)
    lignes.push_back({NomMois(mois), FaitDate(1, mois, Annee(cadre.debut))});
  return lignes;
}

int SemaineProposee(const CadrePeriode& cadre, const std::vector<LignePeriode>& semaines) {
  if (semaines.empty()) return -1;
  if (Annee(cadre.aujourdhui) != Annee(cadre.debut)) return 0;
  const auto trouve = std::find_if(semaines.begin(), semaines.end(), [&](const LignePeriode& ligne) {
    return ligne.valeur >= cadre.aujourdhui;
  });
  return static_cast<int>(std::min(trouve, semaines.end() - 1) - semaines.begin());
}

int MoisPropose(const CadrePeriode& cadre) { return static_cast<int>(Mois(cadre.aujourdhui)) - 1; }

BornesPeriode BornesDe(const CadrePeriode& cadre, Periode periode, Date jour, FinSemaine fin) {
  BornesPeriode bornes{cadre.debut, cadre.fin};
  if (periode == Periode::Aujourdhui) bornes = {cadre.aujourdhui, cadre.aujourdhui};
  if (periode == Periode::Semaine && IsDateOk(jour)) bornes = Semaine(cadre, jour, Fin(cadre, fin));
  if (periode == Periode::Mois && IsDateOk(jour)) GetMonth(jour, bornes.du, bornes.au);
  return bornes;
}

BornesPeriode BornesEntieres(const CadrePeriode& cadre, Periode periode) {
  BornesPeriode bornes = BornesDe(cadre, periode, cadre.aujourdhui);
  if (periode == Periode::Semaine) GetWeek(cadre.aujourdhui, bornes.du, bornes.au);
  return bornes;
}

Periode PeriodeRetenue(CFenlorApp& app, const CadrePeriode& cadre) {
  const int valeur = TexteVersEntier(app.Reglages.LitIni(Texte(SecPreferences), Texte(ClePeriode)));
  if (valeur < static_cast<int>(Periode::Aujourdhui) || valeur > static_cast<int>(Periode::Libre))
    return Periode::Exercice;
  const auto periode = static_cast<Periode>(valeur);
  return periode < Periode::Exercice && !cadre.Contient() ? Periode::Exercice : periode;
}

bool RetientPeriode(CFenlorApp& app, Periode periode) {
  assert(periode >= Periode::Aujourdhui && periode <= Periode::Libre);
  return app.Reglages.EcritIni(Texte(SecPreferences), Texte(ClePeriode),
                               std::to_string(static_cast<int>(periode)));
}

std::vector<Date> MoisExercice(const CFenlorApp& app) {
  std::vector<Date> premiers;
  const Date debut = app.Reglages.GetDebutExercice(), fin = app.Reglages.GetFinExercice();
  if (!IsDateOk(debut) || !IsDateOk(fin)) return premiers;
  for (Date jour = FaitDate(1, Mois(debut), Annee(debut)); jour <= fin; jour = NextMonth(jour))
    premiers.push_back(jour);
  return premiers;
}

}  // namespace fenlor
