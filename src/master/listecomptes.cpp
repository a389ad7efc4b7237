// The lists of accounts, and the lists that the forms of accounts offer.
#include <algorithm>

#include "core/valeurs.h"
#include "master/comptes.h"
#include "master/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 CleNumero = 0, CleType = 3, CleCodeRubrique = 0, CleTypeRubrique = 1;

std::string CompteCourt(CFenlorApp& app, const Plan& compte) {
  return CompacteTexte(app.Magasin.GetShortCompte(LitTexte(compte.Compte)));
}

/// A bar would begin another field.
std::string Champ(std::string texte) {
  std::replace(texte.begin(), texte.end(), '|', '/');
  return texte;
}

enum class Colonne { Code, Compte, Rubrique, Designation, Debit, Credit, Solde, Rapproche, Reel };

struct DefinitionColonne {
  Colonne colonne;
  bool euro = false;
};

bool EstTresorerie(ListeComptes liste) {
  return liste == ListeComptes::Tresorerie || liste == ListeComptes::PlanComptable;
}

/// The columns in their order, as `ColonnesComptes` names them.
std::vector<DefinitionColonne> Definitions(CFenlorApp& app, ListeComptes liste) {
  std::vector<DefinitionColonne> colonnes{{Colonne::Code}, {Colonne::Compte}};
  if (!EstTresorerie(liste)) colonnes.push_back({Colonne::Rubrique});
  colonnes.push_back({Colonne::Designation});
  const bool euro = TexteVersEntier(app.NomExercice) >= 2002;
  const auto montant = [&](Colonne colonne) {
    if (app.AfficherDouble || !euro) colonnes.push_back({colonne, false});
    if (app.AfficherDouble || euro) colonnes.push_back({colonne, true});
  };
  if (EstTresorerie(liste)) {
    montant(Colonne::Debit);
    montant(Colonne::Credit);
  }
  montant(Colonne::Solde);
  if (EstTresorerie(liste)) {
    montant(Colonne::Rapproche);
    montant(Colonne::Reel);
  }
  return colonnes;
}

bool EstMontant(Colonne colonne) { return colonne >= Colonne::Debit; }

f64 Montant(const Plan& compte, DefinitionColonne d) {
  const SoldesCompte soldes = SoldesDe(compte, d.euro);
  switch (d.colonne) {
    case Colonne::Debit:
      return soldes.debit;
    case Colonne::Credit:
      return soldes.credit;
    case Colonne::Solde:
      return soldes.solde;
    case Colonne::Rapproche:
      return soldes.rapproche;
    default:
      return soldes.reel;
  }
}

std::string TexteColonne(CFenlorApp& app, const Plan& compte, DefinitionColonne d) {
  switch (d.colonne) {
    case Colonne::Code:
      return LitTexte(compte.Code);
    case Colonne::Compte:
      return CompteCourt(app, compte);
    case Colonne::Rubrique:
      return NormaliseRubrique(LitTexte(compte.Rubrique));
    case Colonne::Designation:
      return LitTexte(compte.Designation);
    case Colonne::Debit:
    case Colonne::Credit:
      return FormatMontant(Montant(compte, d), 2, app.Reglages.SeparateurDecimal());
    default:
      return FormatSoldeSaisie(Montant(compte, d), 2, false, app.Reglages.SeparateurDecimal());
  }
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
  const auto cle = static_cast<u16>(rubriques.NumCle + (unCote ? CleTypeRubrique : CleCodeRubrique));
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
  const auto cle = static_cast<u16>(plan.NumCle + CleType);
  app.Magasin.QVParcoursCle(cle, std::to_string(Tva), std::to_string(Autre), [&](Position, const void* rec) {
    const Plan& compte = *static_cast<const Plan*>(rec);
    choix.push_back({LitTexte(compte.Compte), LitTexte(compte.Code), compte.TauxTVA});
    return true;
  });
  for (ChoixTVA& c : choix) {
    const std::string taux = c.taux == 0 ? "0" : FormatMontant(c.taux, 2, app.Reglages.SeparateurDecimal());
    c.texte =
        TexteFormat(FormatChoixTva, {taux, c.texte, CompacteTexte(app.Magasin.GetShortCompte(c.compte))});
  }
  return choix;
}

std::vector<Position> PositionsComptes(CFenlorApp& app, ListeComptes liste) {
  std::vector<Position> positions;
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return positions;
  const bool tous = liste == ListeComptes::PlanComptable;
  const int type = liste == ListeComptes::Recettes   ? Recette
                   : liste == ListeComptes::Depenses ? Depense
                                                     : Tresorerie;
  const auto cle = static_cast<u16>(plan.NumCle + (tous ? CleNumero : CleType));
  app.Magasin.QVParcoursCle(cle, tous ? std::string() : std::to_string(type),
                            tous ? std::string() : std::to_string(type + 1),
                            [&](Position position, const void*) {
                              positions.push_back(position);
                              return true;
                            });
  return positions;
}

std::string ColonnesComptes(ListeComptes liste, bool deuxMonnaies) {
  if (EstTresorerie(liste)) return Texte(deuxMonnaies ? ColonnesTresorerieDouble : ColonnesTresorerie);
  return Texte(deuxMonnaies ? ColonnesPlanDouble : ColonnesPlan);
}

std::string LigneCompte(CFenlorApp& app, ListeComptes liste, const Plan& compte) {
  std::string ligne;
  for (const DefinitionColonne d : Definitions(app, liste)) {
    if (d.colonne != Colonne::Code) ligne += '|';
    ligne += Champ(TexteColonne(app, compte, d));
  }
  return ligne;
}

int CompareComptesColonne(CFenlorApp& app, ListeComptes liste, const Plan& a, const Plan& b, int colonne) {
  const std::vector<DefinitionColonne> colonnes = Definitions(app, liste);
  if (colonne < 0 || static_cast<std::size_t>(colonne) >= colonnes.size()) return 0;
  const DefinitionColonne d = colonnes[static_cast<std::size_t>(colonne)];
  if (EstMontant(d.colonne)) return CompareMontants(Montant(a, d), Montant(b, d));
  // The zeros that the short form drops are the lowest digit: the order is the same.
  if (d.colonne == Colonne::Compte) return CompareComptes(LitTexte(a.Compte), LitTexte(b.Compte));
  return CompareSansCasse(TexteColonne(app, a, d), TexteColonne(app, b, d));
}

}  // namespace fenlor
