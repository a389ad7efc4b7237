// The lists of accounts, and the lists that the forms of accounts offer.
#include <algorithm>
#include <cassert>

#include "core/valeurs.h"
#include "master/comptes.h"
#include "master/textes.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// An amount of the lists: its titles alone, in Franc, in Euro; a balance shows its side.
struct MontantListe {
  const char *seul, *franc, *euro;
  f64 SoldesCompte::*montant;
  bool solde;
};
constexpr MontantListe MontantsPlan[] = {{"Solde", "Solde Francs", "Solde Euro", &SoldesCompte::solde, true}};
constexpr MontantListe MontantsTresorerie[] = {
    {"Débit", "Débit Franc", "Débit Euro", &SoldesCompte::debit, false},
    {"Crédit", "Crédit Franc", "Crédit Euro", &SoldesCompte::credit, false},
    {"Solde", "Solde Franc", "Solde Euro", &SoldesCompte::solde, true},
    {"Solde Rapproché", "Solde Rapproché F", "Solde Rapproché €", &SoldesCompte::rapproche, true},
    {"Solde réel", "Solde réel F", "Solde réel €", &SoldesCompte::reel, true},
};
constexpr int LargeurMontant = 100, LargeurMontantDouble = 80;

ColonneListe<Plan> ColonneMontant(CFenlorApp& app, const MontantListe& m, bool euro) {
  const auto valeur = [m, euro](const Plan& compte) { return SoldesDe(compte, euro).*m.montant; };
  const char* titre = !app.AfficherDouble ? m.seul : euro ? m.euro : m.franc;
  return {*DepuisUtf8(titre), app.AfficherDouble ? LargeurMontantDouble : LargeurMontant,
          [&app, m, valeur](const Plan& compte) {
            const char separateur = app.Reglages.SeparateurDecimal();
            return m.solde ? FormatSoldeSaisie(valeur(compte), 2, false, separateur)
                           : FormatMontant(valeur(compte), 2, separateur);
          },
          Cote::Droite,
          [valeur](const Plan& a, const Plan& b) { return CompareMontants(valeur(a), valeur(b)); }};
}

}  // namespace

SoldesCompte SoldesDe(const Plan& compte, bool euro) {
  // Totals are kept unrounded; adding 0 drops the sign of a negative zero.
  const auto arrondi = [](f64 montant) { return Arrondi2(montant) + 0.0; };
  SoldesCompte s;
  s.debit = arrondi(euro ? compte.DebitEuro : compte.DebitFranc);
  s.credit = arrondi(euro ? compte.CreditEuro : compte.CreditFranc);
  s.initial = euro ? compte.SoldeInitialEuro : compte.SoldeInitialFranc;
  const f64 perso = euro ? compte.PersoEuro : compte.PersoFranc;
  const f64 tva = euro ? compte.TVAEuro : compte.TVAFranc;
  s.solde = arrondi(s.credit - s.debit);
  s.reel = arrondi(s.solde + s.initial);
  s.rapproche = arrondi(euro ? compte.RappCreditEuro - compte.RappDebitEuro
                             : compte.RappCreditFranc - compte.RappDebitFranc);
  s.professionnel = s.solde;
  s.ht = arrondi(perso + s.solde);
  s.tva = arrondi(tva);
  s.ttc = arrondi(perso + tva + s.solde);
  return s;
}

std::vector<ChoixRubrique> RubriquesDuType(CFenlorApp& app, i16 type) {
  std::vector<ChoixRubrique> choix;
  CRubriques rubriques(app, app.PathExercice);
  if (!rubriques.OpenFile()) return choix;
  const bool unCote = type == Recette || type == Depense;
  const std::string debut = unCote ? std::string(1, static_cast<char>('0' + type - Recette)) : std::string();
  const std::string fin = unCote ? std::string(1, static_cast<char>(debut[0] + 1)) : std::string();
  const auto cle = static_cast<u16>(rubriques.NumCle + (unCote ? IndiceRubriqueType : IndiceRubriqueCode));
  app.Magasin.QVParcoursCle(cle, debut, fin, [&](Position, const void* rec) {
    const Rubrique& rubrique = *static_cast<const Rubrique*>(rec);
    const std::string code = NormaliseRubrique(LitTexte(rubrique.Rubrique));
    choix.push_back({code, code + ' ' + LitTexte(rubrique.Designation)});
    return true;
  });
  return choix;
}

std::vector<ChoixTVA> ChoixComptesTVA(CFenlorApp& app) {
  std::vector<ChoixTVA> choix;
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return choix;
  const auto cle = static_cast<u16>(plan.NumCle + IndicePlanType);
  app.Magasin.QVParcoursCle(cle, std::to_string(Tva), std::to_string(Autre), [&](Position, const void* rec) {
    const Plan& compte = *static_cast<const Plan*>(rec);
    choix.push_back({LitTexte(compte.Compte), LitTexte(compte.Code), compte.TauxTVA});
    return true;
  });
  for (ChoixTVA& c : choix) {
    const std::string taux = c.taux == 0 ? "0" : FormatMontant(c.taux, 2, app.Reglages.SeparateurDecimal());
    c.texte = TexteFormat(FormatChoixTva, {taux, c.texte, app.NumeroCourt(c.compte)});
  }
  return choix;
}

FormeCompte FormeDe(ListeComptes liste) {
  if (liste == ListeComptes::PlanComptable) return FormeCompte::PlanComptable;
  return liste == ListeComptes::Tresorerie ? FormeCompte::Tresorerie : FormeCompte::RecettesDepenses;
}

i16 TypeDe(ListeComptes liste) {
  constexpr i16 types[] = {Recette, Depense, Tresorerie, -1};
  assert(static_cast<std::size_t>(liste) < std::size(types));
  return types[static_cast<std::size_t>(liste)];
}

ListeComptes ListeDuType(i16 type) {
  for (const ListeComptes liste : {ListeComptes::Recettes, ListeComptes::Depenses, ListeComptes::Tresorerie})
    if (TypeDe(liste) == type) return liste;
  return ListeComptes::PlanComptable;
}

std::string FauteChamp(CFenlorApp& app, const FicheCompte& fiche, std::string_view champ) {
  assert(FicheCompte::Table.Trouve(champ));
  const i16 type = fiche.type;
  const bool simple = type == Recette || type == Depense;
  const struct {
    std::string_view champ;
    bool permis;
  } champs[] = {{"rubrique", type != Tresorerie},
                {"tva", simple},
                {"taux", type == Tva},
                {"professionnelle", type == Depense && !EstComptePersonnel(app, fiche.compte)},
                {"debit", type == Tresorerie},
                {"credit", type == Tresorerie},
                {"banque", type == Tresorerie}};
  for (const auto& c : champs)
    if (c.champ == champ && !c.permis) return "sans objet pour ce compte."_w;
  const auto parmi = [](const auto& choix, auto membre, const std::string& valeur) {
    return std::any_of(choix.begin(), choix.end(), [&](const auto& c) { return c.*membre == valeur; });
  };
  if (champ == "rubrique") {
    const std::string code = NormaliseRubrique(fiche.rubrique);
    const bool offert =
        fiche.rubrique.size() <= code.size() && parmi(RubriquesDuType(app, type), &ChoixRubrique::code, code);
    return code.empty() || offert ? std::string() : "aucune rubrique de ce côté n'a ce code."_w;
  }
  const std::string tva = champ == "tva" ? QVAPI::GetLongCompte(fiche.compteTVA) : std::string();
  if (tva.empty()) return {};
  if (!app.Reglages.IsTVA()) return "l'exercice n'est pas assujetti à la T.V.A."_w;
  return parmi(ChoixComptesTVA(app), &ChoixTVA::compte, tva) ? "" : "ce n'est pas un compte de T.V.A."_w;
}

std::vector<Position> PositionsComptes(CFenlorApp& app, ListeComptes liste) {
  std::vector<Position> positions;
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return positions;
  const int type = TypeDe(liste);
  const bool tous = type < 0;
  const auto cle = static_cast<u16>(plan.NumCle + (tous ? IndicePlanCompte : IndicePlanType));
  app.Magasin.QVParcoursCle(cle, tous ? std::string() : std::to_string(type),
                            tous ? std::string() : std::to_string(type + 1),
                            [&](Position position, const void*) {
                              positions.push_back(position);
                              return true;
                            });
  return positions;
}

TableColonnes<Plan> ColonnesComptes(CFenlorApp& app, ListeComptes liste) {
  const bool tresorerie = liste == ListeComptes::Tresorerie || liste == ListeComptes::PlanComptable;
  // The zeros that the short form drops are the lowest digit: the order of the numbers is the same.
  const auto parNumero = [](const Plan& a, const Plan& b) {
    return CompareComptes(LitTexte(a.Compte), LitTexte(b.Compte));
  };
  TableColonnes<Plan> colonnes = {
      {"Code", 80, [](const Plan& p) { return LitTexte(p.Code); }},
      {"Compte", 80, [&app](const Plan& p) { return app.NumeroCourt(LitTexte(p.Compte)); }, Cote::Gauche,
       parNumero}};
  if (!tresorerie)
    colonnes.push_back({"Rub", 40, [](const Plan& p) { return NormaliseRubrique(LitTexte(p.Rubrique)); }});
  colonnes.push_back({"Désignation"_w, 300, [](const Plan& p) { return LitTexte(p.Designation); }});
  const bool euro = TexteVersEntier(app.NomExercice) >= 2002;
  const auto ajoute = [&](const MontantListe& montant) {
    if (app.AfficherDouble || !euro) colonnes.push_back(ColonneMontant(app, montant, false));
    if (app.AfficherDouble || euro) colonnes.push_back(ColonneMontant(app, montant, true));
  };
  if (tresorerie)
    std::for_each(std::begin(MontantsTresorerie), std::end(MontantsTresorerie), ajoute);
  else
    std::for_each(std::begin(MontantsPlan), std::end(MontantsPlan), ajoute);
  return colonnes;
}

}  // namespace fenlor
