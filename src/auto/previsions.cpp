#include "auto/previsions.h"

#include <algorithm>
#include <cassert>
#include <utility>

#include "auto/echeances.h"
#include "auto/modeleauto.h"
#include "auto/textes.h"
#include "core/valeurs.h"
#include "journal/choixcomptes.h"
#include "journal/controles.h"
#include "master/comptes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct Flux {
  f64 recettes = 0, depenses = 0;
  void Ajoute(const Flux& autre) {
    recettes = Arrondi2(recettes + autre.recettes);
    depenses = Arrondi2(depenses + autre.depenses);
  }
};

std::size_t Ecart(Date premier, Date jour) {
  assert(jour >= premier);
  return (Annee(jour) - Annee(premier)) * 12 + Mois(jour) - Mois(premier);
}

/// The walks that enter something, by their day; a day stands there for each entry.
std::vector<Date> JoursDuModele(EcrituresAuto modele, CalendrierAuto calendrier) {
  assert(calendrier.debut <= calendrier.fin);
  std::vector<Date> jours;
  for (bool reste = true; reste;) {
    const ParcoursModele parcours = ParcourtModele(modele, calendrier);
    const bool rien = parcours.annonces.empty() && !parcours.change;
    jours.insert(jours.end(), parcours.ecritures.size(), calendrier.aujourdhui);
    for (std::size_t i = 0; reste && i < parcours.annonces.size(); ++i) {
      jours.push_back(calendrier.aujourdhui);
      reste = Confirme(modele, calendrier.aujourdhui);
    }
    if (parcours.change) {
      reste = !parcours.epuise;
      modele = parcours.suite;
    }
    if (!rien) continue;  // the same day again: now it says which one comes next
    assert(parcours.suivante == 0 || parcours.suivante > calendrier.aujourdhui);
    reste = parcours.suivante != 0 && parcours.suivante <= calendrier.fin;
    calendrier.aujourdhui = parcours.suivante;
  }
  assert(std::is_sorted(jours.begin(), jours.end()));
  return jours;
}

}  // namespace

std::vector<LignePrevision> Prevoit(const std::vector<EcrituresAuto>& modeles, CalendrierAuto calendrier,
                                    bool euro, std::vector<TresoreriePrevue> comptes) {
  assert(calendrier.debut <= calendrier.fin);
  const Date premier = std::clamp(calendrier.aujourdhui, calendrier.debut, calendrier.fin);
  const std::size_t mois = Ecart(premier, calendrier.fin) + 1;
  std::vector<std::vector<Flux>> flux(mois, std::vector<Flux>(comptes.size()));
  std::vector<bool> montres;
  for (const TresoreriePrevue& compte : comptes) montres.push_back(compte.solde != 0);
  for (const EcrituresAuto& modele : modeles) {
    const auto compte = std::find_if(comptes.begin(), comptes.end(), [&](const TresoreriePrevue& c) {
      return c.compte == LitTexte(modele.Tresorerie);
    });
    if (compte == comptes.end()) continue;
    const auto rang = static_cast<std::size_t>(compte - comptes.begin());
    const f64 montant = euro ? modele.MontantEuro : modele.MontantFranc;
    const bool recette = modele.Genre == JournalRecettes;
    for (const Date jour : JoursDuModele(modele, calendrier)) {
      flux[Ecart(premier, std::clamp(jour, premier, calendrier.fin))][rang].Ajoute(
          {recette ? montant : 0, recette ? 0 : montant});
      montres[rang] = true;
    }
  }
  const bool detail = std::count(montres.begin(), montres.end(), true) != 1;
  std::vector<LignePrevision> lignes;
  Date jour = FaitDate(1, Mois(premier), Annee(premier));
  for (const std::vector<Flux>& duMois : flux) {
    const std::size_t total = lignes.size();
    if (detail) lignes.push_back({jour, {}, {}});
    for (std::size_t i = 0; i < comptes.size(); ++i) {
      const auto& [recettes, depenses] = duMois[i];
      comptes[i].solde = Arrondi2(comptes[i].solde + recettes - depenses) + 0.0;
      if (!montres[i]) continue;
      lignes.push_back({jour, comptes[i].compte, comptes[i].code, recettes, depenses, comptes[i].solde});
      if (!detail) continue;
      LignePrevision& tous = lignes[total];
      tous.recettes = Arrondi2(tous.recettes + recettes);
      tous.depenses = Arrondi2(tous.depenses + depenses);
      tous.solde = Arrondi2(tous.solde + comptes[i].solde) + 0.0;
    }
    jour = NextDate(FaitDate(GetNbJours(jour), Mois(jour), Annee(jour)));
  }
  assert(jour > calendrier.fin);
  return lignes;
}

Refus CalculePrevisions(CFenlorApp& app, Previsions& previsions) {
  previsions = {app.Reglages.IsEuro(), {}};
  LivresOuverts livres;
  if (Refus refus = ControleExercice(app, livres)) return refus;
  std::vector<EcrituresAuto> modeles;
  if (Refus refus = ListeAutos(app, modeles)) return refus;
  std::vector<TresoreriePrevue> comptes;
  for (const CompteOffert& compte : ComptesParCode(app, Tresorerie)) {
    Plan plan{};
    // The books have a debit of a treasury account below 0.
    if (LitCompte(app, compte.compte, plan))
      comptes.push_back({compte.compte, compte.code, -SoldesDe(plan, previsions.euro).reel});
  }
  previsions.lignes = Prevoit(modeles, LitCalendrierAuto(app), previsions.euro, std::move(comptes));
  return {};
}

std::string MoisPrevision(const Previsions& previsions, std::size_t rang) {
  assert(rang < previsions.lignes.size());
  const Date mois = previsions.lignes[rang].mois;
  return rang == 0 || previsions.lignes[rang - 1].mois != mois ? StrMonth(mois) : std::string();
}

std::string TresoreriePrevision(const LignePrevision& ligne) {
  return ligne.compte.empty() ? Texte(MotTouteTresorerie) : ligne.code;
}

}  // namespace fenlor
