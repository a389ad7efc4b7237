#include "assets/ligneregistre.h"

#include <algorithm>
#include <cassert>

#include "assets/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr int AnneeDeuxMonnaies = 1999, AnneeEuro = 2002;
constexpr u32 NbAnnees = CCalculLineAmortissements::NbColonnes;

int AnneeExercice(const CFenlorApp& app) { return TexteVersEntier(app.NomExercice); }

using Rangee = RangeeRegistre;
using MontantDe = f64 (*)(const Rangee&);

f64 Prix(const Rangee& r) { return r.euro ? r.ligne->immo.PrixEuro : r.ligne->immo.PrixFranc; }
f64 Taxe(const Rangee& r) { return r.euro ? r.ligne->immo.TVAEuro : r.ligne->immo.TVAFranc; }
f64 Valeur(const Rangee& r) {
  const Immobilisation& immo = r.ligne->immo;
  return r.euro ? immo.ValeurAmortissableEuro : immo.ValeurAmortissableFranc;
}
f64 Cumul(const Rangee& r) { return r.euro ? r.ligne->cumulEuro : r.ligne->cumulFranc; }
f64 PrixCession(const Rangee& r) {
  return r.euro ? r.ligne->immo.PrixCessionEuro : r.ligne->immo.PrixCessionFranc;
}
bool EstCedee(const Rangee& r) { return r.ligne->immo.DateCession != 0; }

ColonneListe<Rangee> Montant(std::string titre, MontantDe montant, int largeur = 11) {
  return {std::move(titre), largeur,
          [montant](const Rangee& r) { return FormatMontant(Arrondi2(montant(r)), 2); }, Cote::Droite};
}

/// Column of a year, counted from the rightmost.
ColonneListe<Rangee> ColonneAnnee(u32 rang) {
  const auto texte = [rang](const Rangee& r) {
    const CCalculLineAmortissements::Colonne& colonne = r.ligne->annees[rang];
    return FormatMontant(Arrondi2(r.euro ? colonne.euro : colonne.franc), 2);
  };
  return {{}, 11, texte, Cote::Droite};
}

std::string TexteTypeTaux(const Rangee& r) {
  const Immobilisation& immo = r.ligne->immo;
  if (r.euro || immo.ValeurAmortissableFranc == 0) return {};
  constexpr const char* lettres[] = {"L", "D", "E"};
  return TexteFormat(FormatTauxRegistre, {lettres[std::min<u8>(immo.TypeAmortissement, Exceptionnel)],
                                          FormatMontant(immo.TauxAnnuel, 2)});
}

std::string TextePrixCession(const Rangee& r) {
  if (!EstCedee(r)) return {};
  if (r.ligne->immo.Rebut != 0 && r.ligne->avecRebut) return Texte(MotRebut);
  return FormatMontant(PrixCession(r), 2);
}

}  // namespace

MonnaiesRegistre MonnaiesDuRegistre(const CFenlorApp& app) {
  const int annee = AnneeExercice(app);
  if (annee < AnneeDeuxMonnaies) return {true, false};
  if (app.AfficherDouble) return {true, true};
  return {annee < AnneeEuro, annee >= AnneeEuro};
}

ListeRegistre LitRegistre(CFenlorApp& app, CImmobilisations& fichier) {
  ListeRegistre liste;
  liste.premiereAnnee = Annee(app.Magasin.Today());
  if (fichier.NbOuvertures == 0) return liste;
  bool cherche = true;  // the first that has a date, for they come in its order
  app.Magasin.QVParcoursCle(fichier.NumCle, {}, {}, [&](Position position, const void* rec) {
    liste.positions.push_back(position);
    const Date achat = static_cast<const Immobilisation*>(rec)->DateAchat;
    if (cherche && IsDateOk(achat)) {
      liste.premiereAnnee = std::min(liste.premiereAnnee, Annee(achat));
      cherche = false;
    }
    return true;
  });
  return liste;
}

LigneRegistre LigneDuRegistre(CFenlorApp& app, const Immobilisation& immo, u32 anneeDroite) {
  LigneRegistre ligne;
  ligne.immo = immo;
  ligne.avecRebut = AnneeExercice(app) >= AnneeDeuxMonnaies;
  CCalculLineAmortissements calcul(app, &ligne.immo, anneeDroite);
  calcul.CalculAmortissements(app.Magasin.Today(), ligne.cumulFranc, ligne.cumulEuro);
  ligne.annees = calcul.Colonnes;
  return ligne;
}

std::vector<RangeeRegistre> RangeesRegistre(const LigneRegistre& ligne, MonnaiesRegistre monnaies) {
  assert(monnaies.franc || monnaies.euro);
  std::vector<RangeeRegistre> rangees;
  if (monnaies.franc) rangees.push_back({&ligne, false, false});
  if (monnaies.euro) rangees.push_back({&ligne, true, monnaies.franc});
  return rangees;
}

const TableColonnes<RangeeRegistre>& ColonnesRegistre() {
  static const TableColonnes<Rangee> table = [] {
    TableColonnes<Rangee> colonnes = {
        {"Date\nd'achat", 10,
         [](const Rangee& r) { return r.seconde ? std::string() : StrDate(r.ligne->immo.DateAchat); }},
        {"Fournisseurs\net nature des immobilisations", 30,
         [](const Rangee& r) { return r.seconde ? std::string() : LitTexte(r.ligne->immo.Designation); }},
        Montant("Prix\nd'achat\nT.T.C.", Prix),
        Montant("T.V.A.\ndéductible"_w, Taxe),
        Montant("Prix\nde\nrevient", [](const Rangee& r) { return Prix(r) - Taxe(r); }),
        Montant("Valeur\namortissable", Valeur),
        {"Taux\nannuel", 9, TexteTypeTaux, Cote::Droite},
    };
    for (u32 rang = NbAnnees; rang-- > 0;) colonnes.push_back(ColonneAnnee(rang));
    colonnes.push_back(Montant("Total\ndes\nAmortissements", Cumul));
    colonnes.push_back(Montant("Valeur\nrésiduelle"_w, [](const Rangee& r) { return Valeur(r) - Cumul(r); }));
    colonnes.push_back(
        {"Date\nde cession", 10, [](const Rangee& r) { return StrDate(r.ligne->immo.DateCession); }});
    colonnes.push_back({"Prix\nde cession", 11, TextePrixCession, Cote::Droite});
    colonnes.push_back(Montant(
        "+ ou -\nvalues",
        [](const Rangee& r) { return EstCedee(r) ? PrixCession(r) - Valeur(r) + Cumul(r) : 0; }, 14));
    return colonnes;
  }();
  assert(table.size() == static_cast<std::size_t>(ChampRegistre::Resultat) + 1);
  return table;
}

std::string TexteRegistre(const CFenlorApp& app, const Immobilisation& immo) {
  LigneRegistre ligne;
  ligne.immo = immo;
  const Rangee rangee{&ligne, app.Reglages.IsEuro(), false};
  std::string texte;
  for (std::size_t colonne = 0; colonne <= static_cast<std::size_t>(ChampRegistre::Valeur); ++colonne)
    texte += CompacteTexte(ColonnesRegistre()[colonne].texte(rangee)) + '\t';
  return texte + (rangee.euro ? "E" : "F");
}

}  // namespace fenlor
