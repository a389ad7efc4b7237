#include "graphiques/serie.h"

#include <array>
#include <cassert>
#include <numeric>

#include "core/btfiles.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/fiche.h"
#include "core/valeurs.h"
#include "graphiques/textes.h"
#include "store/definitions.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::size_t LargeurCompte = 10;
constexpr std::size_t LargeurLibelle = 15, LargeurMois = 3;
constexpr i16 Groupes[] = {Recette, Depense, Tresorerie, Tva};

using Mensuels = std::array<f64, 12>;

/// Reads the lines of one account after another.
class Mouvements {
 public:
  Mouvements(CFenlorApp& app, CLines& lignes) : m_app(app), m_lignes(lignes), m_euro(app.Reglages.IsEuro()) {}

  /// Credit minus debit of each month.
  bool Mois(const std::string& compte, Date du, Date au, Mensuels& mensuels) {
    Mensuels credits{}, debits{};
    mensuels = {};
    if (du > au) return true;
    const std::string prefixe = MakeJournalKey3(compte, 0, 0, 0, 0, 0).substr(0, LargeurCompte);
    assert(prefixe.size() == LargeurCompte);
    const auto ajoute = [&](Position, const void* rec) {
      const Line& ligne = *static_cast<const Line*>(rec);
      const unsigned mois = fenlor::Mois(+ligne.DateLigne);
      if (mois < 1 || mois > mensuels.size()) return true;
      (ligne.Sens != 0 ? credits : debits)[mois - 1] += m_euro ? +ligne.MontantEuro : +ligne.MontantFranc;
      return true;
    };
    if (!m_app.Magasin.QVParcoursCle(static_cast<u16>(m_lignes.NumCle + IndiceCompteDate),
                                     prefixe + StrSDate(du), prefixe + StrSDate(au) + '\xFF', ajoute)) {
      m_lignes.ErreurLecture();
      return false;
    }
    for (std::size_t m = 0; m < mensuels.size(); ++m) mensuels[m] = credits[m] - debits[m];
    return true;
  }

 private:
  CFenlorApp& m_app;
  CLines& m_lignes;
  const bool m_euro;
};

std::string TitreDe(const DemandeGraphique& demande) {
  if (demande.comparaison) return Texte(TitreComparaison);
  if (demande.choisis.size() > 1) return Texte(TitreEvolutionComptes);
  assert(!demande.choisis.empty());
  const CompteGraphique& seul = demande.choisis.front();
  if (seul.compte.empty()) return {};
  return TexteFormat(TitreEvolutionCompte, {seul.court, seul.designation});
}

void PosePoints(const DemandeGraphique& demande, SerieGraphique& serie) {
  if (serie.evolution) {
    for (unsigned m = 1; m <= Mensuels{}.size(); ++m)
      serie.points.push_back({NomMois(m).substr(0, LargeurMois), 0});
    return;
  }
  assert(!demande.choisis.empty());
  for (const CompteGraphique& ligne : demande.choisis)
    serie.points.push_back({ligne.court.substr(0, LargeurLibelle), 0});
}

}  // namespace

Refus LitComptesGraphique(CFenlorApp& app, std::vector<CompteGraphique>& lignes) {
  lignes.clear();
  CPlan plan(app, app.PathExercice);
  if (!plan.OpenFile()) return EchecFichier();
  for (const i16 type : Groupes) {
    lignes.push_back({type, {}, {}, {}});
    const auto ajoute = [&](Position, const void* rec) {
      const Plan& compte = *static_cast<const Plan*>(rec);
      const std::string numero = LitTexte(compte.Compte);
      lignes.push_back(
          {type, numero, CompacteTexte(app.Magasin.GetShortCompte(numero)), LitTexte(compte.Designation)});
      return true;
    };
    if (app.Magasin.QVParcoursCle(static_cast<u16>(plan.NumCle + IndicePlanType), std::to_string(type),
                                  std::to_string(type + 1), ajoute))
      continue;
    plan.ErreurLecture();
    return EchecFichier();
  }
  return {};
}

Refus ControleGraphique(const DemandeGraphique& demande) {
  if (demande.choisis.empty()) return Refus(ErrSansCompteChoisi, "comptes");
  if (demande.comparaison && demande.choisis.size() == 1) return Refus(ErrComparaisonUnCompte, "comptes");
  return {};
}

Refus FaitSerieGraphique(CFenlorApp& app, const DemandeGraphique& demande, SerieGraphique& serie) {
  assert(!ControleGraphique(demande));
  if (app.PathExercice.empty()) return Refus(ErrAucunExercice);
  CLines lignes(app, app.PathExercice);
  if (!lignes.OpenFile()) return EchecFichier();
  const bool titreSeul = demande.choisis.size() == 1 && demande.choisis.front().compte.empty();
  serie = {TitreDe(demande),      {},         !demande.comparaison && !titreSeul,
           app.Reglages.IsEuro(), demande.du, demande.au};
  PosePoints(demande, serie);
  Mouvements mouvements(app, lignes);
  for (std::size_t i = 0; i < demande.choisis.size(); ++i) {
    const std::string& compte = demande.choisis[i].compte;
    Mensuels mensuels;
    if (compte.empty()) continue;
    if (!mouvements.Mois(compte, demande.du, demande.au, mensuels)) return EchecFichier();
    if (serie.evolution)
      for (std::size_t m = 0; m < mensuels.size(); ++m) serie.points[m].valeur += mensuels[m];
    else
      serie.points[i].valeur = std::accumulate(mensuels.begin(), mensuels.end(), 0.0);
  }
  assert(serie.points.size() == (serie.evolution ? Mensuels{}.size() : demande.choisis.size()));
  return {};
}

}  // namespace fenlor
