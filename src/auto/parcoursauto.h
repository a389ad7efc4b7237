// The walk of one model: what it brings on a day, and what it is afterwards. A pure function; nothing is read
// and nothing written here.
#pragma once

#include <vector>

#include "store/dates.h"
#include "store/enregistrements.h"

namespace fenlor {

/// What the walk knows beside the model.
struct CalendrierAuto {
  Date aujourdhui = 0;
  Date debut = 0, fin = 0;  ///< of the exercice
  Date limiteFranc = 0;     ///< from this day on nothing is entered in Franc
};

struct ParcoursModele {
  struct Ecriture {
    Date date;
    /// Day that the number of its line is asked for: the occurrence before it in this walk, 0 for the first.
    Date dateNumero;
  };
  std::vector<Ecriture> ecritures;  ///< to be entered
  std::vector<Date> annonces;       ///< to be announced
  Date refusee = 0;                 ///< the occurrence in Franc that ended the walk; 0: none
  Date suivante = 0;                ///< the day on which there is something to walk again; 0: none
  bool change = false;              ///< the model is to be written as `suite`, or deleted
  bool epuise = false;              ///< deleted: nothing remains
  EcrituresAuto suite{};            ///< next state
};

/// Occurrences up to today are consumed one by one; those outside the exercice bring nothing. A model changes
/// only when something was entered: an announced one is moved on by its confirmation.
ParcoursModele ParcourtModele(const EcrituresAuto& modele, const CalendrierAuto& calendrier);

/// A code of the file as the schedule knows it: 0 counts as 1.
int PeriodiciteDe(const EcrituresAuto& modele);

/// The occurrence that comes next; 0: none.
Date ProchaineEcheance(const EcrituresAuto& modele);

/// What a confirmed occurrence makes of its model, told `aujourdhui`: false when the model is to be deleted.
bool Confirme(EcrituresAuto& modele, Date aujourdhui);

/// The entry of an occurrence: a draft on `comptePerso`'s books, without date and number.
EcrSimple EcritureDe(const EcrituresAuto& modele, const std::string& comptePerso);

}  // namespace fenlor
