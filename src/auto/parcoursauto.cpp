#include "auto/parcoursauto.h"

#include <cassert>
#include <string>

#include "store/texte1252.h"

namespace fenlor {

int PeriodiciteDe(const EcrituresAuto& modele) { return modele.Periodicite == 0 ? 1 : modele.Periodicite; }

Date ProchaineEcheance(const EcrituresAuto& modele) {
  return modele.DerniereEcheance
             ? GetNextDateEcrituresAuto(modele.Date, modele.DerniereEcheance, PeriodiciteDe(modele))
             : modele.Date;
}

ParcoursModele ParcourtModele(const EcrituresAuto& modele, const CalendrierAuto& calendrier) {
  ParcoursModele parcours;
  const Date reference = modele.Date;
  u32 restant = modele.NbRestants ? modele.NbRestants : modele.NbPaiements;
  Date date = ProchaineEcheance(modele), confirmee = 0;
  while (restant != 0 && date <= calendrier.aujourdhui) {
    // A schedule that has ended, or that no calendar has, stands still: nothing more will come of it.
    if (!IsDateOk(date)) {
      restant = 0;
      date = 0;
      break;
    }
    --restant;
    if (date >= calendrier.debut && date <= calendrier.fin) {
      if (modele.SaisieEuro == 0 && date >= calendrier.limiteFranc) {
        parcours.refusee = date;
        break;
      }
      if (modele.Annoncer) {
        parcours.annonces.push_back(date);
      } else {
        parcours.ecritures.push_back({date, confirmee});
        confirmee = date;
      }
    }
    const Date suivante = GetNextDateEcrituresAuto(reference, date, PeriodiciteDe(modele));
    assert(suivante == 0 || suivante > date);
    date = suivante;
  }
  if (restant != 0 && parcours.refusee == 0) parcours.suivante = date;
  if (confirmee == 0) return parcours;
  parcours.change = true;
  parcours.epuise = restant == 0;
  parcours.suite = modele;
  parcours.suite.NbRestants = restant;
  parcours.suite.DerniereEcheance = confirmee;
  parcours.suite.Date = date;
  assert(parcours.epuise || restant < (modele.NbRestants ? modele.NbRestants : modele.NbPaiements));
  return parcours;
}

bool Confirme(EcrituresAuto& modele, Date aujourdhui) {
  if (modele.NbRestants == 0) modele.NbRestants = modele.NbPaiements;
  if (modele.NbRestants != 0) --modele.NbRestants;
  if (modele.NbPaiements == 0) return false;
  modele.DerniereEcheance = aujourdhui;
  return true;
}

EcrSimple EcritureDe(const EcrituresAuto& modele, const std::string& comptePerso) {
  EcrSimple rec{};
  rec.Journal = modele.Genre;
  rec.Genre = GenreSimple;
  rec.EstRecette = modele.Genre == JournalRecettes;
  PoseTexte(rec.Libelle, LitTexte(modele.Libelle));
  PoseTexte(rec.CompteTresorerie, LitTexte(modele.Tresorerie));
  PoseTexte(rec.Compte, LitTexte(modele.Compte));
  PoseTexte(rec.ComptePerso, comptePerso);
  PoseTexte(rec.CompteTaxe, LitTexte(modele.CompteTaxe));
  rec.ModePaiement = modele.ModePaiement;
  rec.SaisieEuro = modele.SaisieEuro;
  rec.MontantFranc = modele.MontantFranc;
  rec.MontantEuro = modele.MontantEuro;
  rec.RepartitionFranc = modele.RepartitionFranc;
  rec.RepartitionEuro = modele.RepartitionEuro;
  rec.TauxTaxe = modele.TauxTaxe;
  rec.TaxeFranc = modele.TaxeFranc;
  rec.TaxeEuro = modele.TaxeEuro;
  return rec;
}

}  // namespace fenlor
