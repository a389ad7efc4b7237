// Rules of an exercice's life without windows: the new-exercice form, creating,
// opening, closing, deleting, and the lists that name the exercices.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// What the form "Nouvel exercice" holds.
struct FormulaireExercice {
  bool annuel = true;  ///< "Exercice :": the year is typed; else "Période :": the dates are
  std::string annee;   ///< name of the exercice to be
  Date debut = 0, fin = 0;
  std::string debutSaisi, finSaisie;  ///< what was typed where it is no date, to be told
  bool tva = false;
  bool euro = false;
  bool afficherDouble = false;
  bool euroActif = true;  ///< the box can be changed
  bool doubleActif = true;
};

/// Initial values: the period behind the last exercice and its options, else the
/// current year.
FormulaireExercice NouvelExercice(CFenlorApp& app);
/// The year was typed: both dates and the options follow.
void ChangeAnnee(FormulaireExercice& formulaire, const std::string& annee);
/// "du :" was left: the year follows, "au :" becomes one year on. As in the functions
/// below, the options follow when the period moves into another single year.
void QuitteDebut(FormulaireExercice& formulaire, Date debut);
/// "au :" was left: only an end that is not after the beginning moves the beginning.
void QuitteFin(FormulaireExercice& formulaire, Date fin);
/// The whole year in which the period begins.
void ChoisitAnnuel(FormulaireExercice& formulaire);
void ChoisitPeriode(FormulaireExercice& formulaire);

/// True when the exercice's directory can be written: a file is made there and
/// removed again. In a practice that is open to be read it is enough that it is there.
bool TestRepertoire(CFenlorApp& app, const std::string& nom);

/// Creates the exercice and opens it. What the store told has no words here. The Euro rules of its year hold
/// here too: 3210 for an exercice that ends before 1999 in Euro, or begins from 2002 on in Franc. 3211 a
/// wrong name, 3212 a wrong period, 3075 a conflict, 3214 the store failed; the rest as `OuvreExercice`. A
/// name that exists is replaced after the question 3073, unless it is closed (3056) or what 3039 keeps from
/// being deleted; the old one stays aside until the new one stands. A year before 1950 or more than ten ahead
/// is asked about (3404). After a refusal the exercice that was open still is, but for one that was being
/// replaced.
Refus CreeExercice(CFenlorApp& app, const FormulaireExercice& formulaire);

/// Opens an exercice. On a refusal (3000 the directory, 3214 the store) none is open.
Refus OuvreExercice(CFenlorApp& app, std::string nom);
void FermeExercice(CFenlorApp& app);

/// Deletes the open exercice: 3209 none is open, 3039 less than five years old and
/// with entries, 3309 the question answered no, 3214 the store failed. `avant` runs once
/// it is sure that the exercice goes, to close what shows it.
Refus SupprimeExercice(CFenlorApp& app, const std::function<void()>& avant = {});

/// Gives an exercice without dates those of the year that its name is, and tells
/// it (3099). False when nothing was to be done.
bool RepareDates(CFenlorApp& app, const std::string& nom);

/// What the properties of the open exercice show.
struct ProprietesExercice {
  struct Fichier {
    u32 enregistrements = 0;
    f64 taille = 0;  ///< Ko
    bool ouvert = false;
  };
  std::string nom;
  std::string emplacement;  ///< path of the practice
  Date debut = 0, fin = 0;  ///< 0: the settings name no exercice
  bool tva = false, euro = false;
  std::string cloture;              ///< date of the closure, blank while the exercice is open
  std::array<Fichier, 4> fichiers;  ///< journal, accounts, headings, operations to reconcile
  f64 total = 0;                    ///< Ko
};
ProprietesExercice LitProprietes(CFenlorApp& app);

/// One row of the lists of exercices.
struct LigneExercice {
  std::string nom;
  std::string texte;       ///< "2003 01/01/2003 - 31/12/2003"
  std::string texteCombo;  ///< "2003 01/01 - 31/12"
  bool cloture = false;
};
/// Exercices that have both dates, in the order of the settings.
std::vector<LigneExercice> LignesExercices(CFenlorApp& app);

}  // namespace fenlor
