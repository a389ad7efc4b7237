#include "banque/rapprochement.h"

#include <algorithm>
#include <cassert>
#include <set>

#include "banque/textes.h"
#include "core/erreursexercice.h"
#include "core/textes.h"
#include "core/valeurs.h"
#include "store/cumuls.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// The text that a line of the account and the day stands at, or behind.
std::string CleDuJour(const PeriodeRapprochement& periode, Date jour) {
  return MakeJournalKey3(periode.compte, jour, 0, 0, 0, 0).substr(0, periode.compte.size() + 8);
}

/// A line as its own operation, for the block that a reconciled line keeps.
Banque OperationDe(CFenlorApp& app, const Line& ligne) {
  Banque rec{};
  PoseTexte(rec.Compte, LitTexte(ligne.Compte));
  PoseTexte(rec.Libelle, LitTexte(ligne.Libelle));
  rec.Date = ligne.Date;
  rec.DateValeur = app.Magasin.Today();
  rec.MontantFranc = ligne.MontantFranc;
  rec.MontantEuro = ligne.MontantEuro;
  rec.Sens = ligne.Sens != 0;
  return rec;
}

/// One manual match: the checks in their order, then the unit.
class Manuel {
 public:
  Manuel(CFenlorApp& app, bool euro) : m_app(app), m_euro(euro), m_lignes(app, app.PathExercice) {}

  Refus Fais(Position operation, const std::vector<Position>& lignes) {
    if (const Refus r = m_app.ControleEcriture()) return r;
    if (operation == 0) return Refus(ErrSansOperationChoisie, "operations");
    if (const Refus refus = LitOperation(m_app, operation, m_operation)) return refus;
    if (lignes.empty()) return Refus(ErrSansEcritureChoisie, "lignes");
    if (const Refus refus = LitLignes(lignes)) return refus;
    if (const Refus refus = ControleMontants()) return refus;
    return Ecrit(lignes);
  }

 private:
  Refus LitLignes(const std::vector<Position>& positions) {
    if (!m_lignes.OpenFile()) return EchecFichier();
    if (std::set<Position>(positions.begin(), positions.end()).size() != positions.size())
      return Refus(ErrLigneNonRapprochable, "lignes");
    for (const Position position : positions) {
      Line ligne{};
      const bool lue = m_app.Magasin.QVReadRec(FichierJournal, position, &ligne);
      if (!lue || ligne.Rapprochee || LitTexte(ligne.Compte) != LitTexte(m_operation.rec.Compte))
        return Refus(ErrLigneNonRapprochable, "lignes");
      m_lues.push_back(ligne);
    }
    return {};
  }

  Refus ControleMontants() {
    i64 total = 0;
    bool apres = false, memeSens = false;
    for (const Line& ligne : m_lues) {
      total += Centimes(m_euro ? ligne.MontantEuro : ligne.MontantFranc);
      apres = apres || ligne.DateLigne > m_operation.rec.Date;
      memeSens = memeSens || (ligne.Sens != 0) == (m_operation.rec.Sens != 0);
    }
    if (total != Centimes(m_operation.Montant(m_euro))) return Refus(ErrTotalRapprochement, "lignes");
    if (apres) return Refus(ErrEcritureApresOperation, "lignes");
    if (!memeSens) return {};
    const std::string sens = Texte(m_operation.rec.Sens != 0 ? NomChampCredit : NomChampDebit);
    return m_app.Demande(BoutonsOuiNon | IconeAttention | DefautSecond, RepOui, QuestionMemeSens, "lignes",
                         {sens, sens});
  }

  Refus Ecrit(const std::vector<Position>& positions) {
    assert(positions.size() == m_lues.size());
    CBanques banques(m_app, m_app.PathExercice);
    if (!banques.OpenFile()) return EchecFichier();
    QVAPI::Unite unite(m_app.Magasin);
    for (std::size_t i = 0; i < positions.size(); ++i)
      if (!m_app.Magasin.RappLines(m_app.PathExercice, positions[i], OperationDe(m_app, m_lues[i])))
        return m_app.EchecDit();
    if (!banques.Delete(m_operation.position)) return EchecFichier();
    return unite.Valide() ? Refus{} : m_app.EchecMagasin();
  }

  CFenlorApp& m_app;
  const bool m_euro;
  CLines m_lignes;
  OperationLue m_operation;
  std::vector<Line> m_lues;
};

bool LitPlan(CFenlorApp& app, const std::string& compte, Plan& rec) {
  CPlan plan(app, app.PathExercice);
  PoseTexte(plan.Rec->Compte, compte);
  if (!plan.OpenFile() || !plan.Find(0)) return false;
  rec = *plan.Rec;
  return true;
}

}  // namespace

std::vector<LigneARapprocher> LignesARapprocher(CFenlorApp& app, const PeriodeRapprochement& periode) {
  std::vector<LigneARapprocher> lignes;
  CLines journal(app, app.PathExercice);
  if (periode.compte.empty() || periode.du > periode.au || !journal.OpenFile()) return lignes;
  const auto cle = static_cast<u16>(journal.NumCle + IndiceCompteDate);
  app.Magasin.QVParcoursCle(cle, CleDuJour(periode, periode.du), CleDuJour(periode, periode.au) + '\xFF',
                            [&](Position position, const void* rec) {
                              const Line& l = *static_cast<const Line*>(rec);
                              if (l.Rapprochee) return true;
                              lignes.push_back({position, l.DateLigne, Centimes(l.MontantFranc),
                                                Centimes(l.MontantEuro), l.Sens != 0});
                              return true;
                            });
  assert(std::is_sorted(lignes.begin(), lignes.end(),
                        [](const auto& a, const auto& b) { return a.date < b.date; }));
  return lignes;
}

i64 CumulLignes(const std::vector<LigneARapprocher>& lignes, const std::vector<int>& choisies, bool euro) {
  i64 cumul = 0;
  for (const int rang : choisies) cumul += lignes.at(static_cast<std::size_t>(rang)).Montant(euro);
  return cumul;
}

std::vector<int> MemeSens(const std::vector<LigneARapprocher>& lignes, const std::vector<int>& choisies,
                          int focus) {
  const auto credit = [&](int rang) { return lignes.at(static_cast<std::size_t>(rang)).credit; };
  const auto autre = [&](int rang) { return credit(rang) != credit(focus); };
  if (focus < 0 || std::none_of(choisies.begin(), choisies.end(), autre)) return choisies;
  return {focus};
}

std::string Contrepartie(CFenlorApp& app, const Line& ligne) {
  std::string comptes;
  const std::string perso = app.Magasin.GetComptePerso();
  for (const Position position : app.Magasin.LignesMouvement(app.PathExercice, ligne.Mouvement)) {
    Line autre{};
    if (!app.Magasin.ReadLines(app.PathExercice, position, autre)) continue;
    const std::string compte = LitTexte(autre.Compte);
    if (compte == LitTexte(ligne.Compte)) continue;
    const bool gestion = (autre.TypeCompte == Recette || autre.TypeCompte == Depense) && compte != perso;
    if (ligne.Journal != JournalOD && !gestion) continue;
    comptes += (comptes.empty() ? "" : "; ") + app.NumeroCourt(compte);
  }
  return comptes;
}

std::string LibelleLigne(const Line& ligne) {
  const std::string libelle = LitTexte(ligne.Libelle), designation = LitTexte(ligne.Designation);
  if (EstVide(libelle) || libelle == designation) return designation;
  return EstVide(designation) ? libelle : libelle + " (" + designation + ")";
}

PropositionRapprochement ProposeRapprochement(CFenlorApp& app, const std::vector<OperationLue>& operations) {
  PropositionRapprochement p;
  const Date premier = FaitDate(1, Mois(app.Magasin.Today()), Annee(app.Reglages.GetDebutExercice()));
  p.operation = operations.empty() ? premier : operations.back().rec.Date;
  GetMonth(p.operation, p.du, p.au);
  return p;
}

Refus RapprocheManuel(CFenlorApp& app, Position operation, const std::vector<Position>& lignes, bool euro) {
  return Manuel(app, euro).Fais(operation, lignes);
}

f64 SoldesRapprochement::Difference() const {
  return DeCentimes(Centimes(releve.value_or(0)) - Centimes(livres));
}

SoldesRapprochement LitSoldes(CFenlorApp& app, const std::string& compte, bool euro) {
  SoldesRapprochement soldes;
  Plan plan;
  if (compte.empty() || !LitPlan(app, compte, plan)) return soldes;
  // The books hold credit less debit: what the bank owes is a debit there.
  soldes.livres = DeCentimes(euro ? Centimes(plan.RappDebitEuro) - Centimes(plan.RappCreditEuro) -
                                        Centimes(plan.SoldeInitialEuro)
                                  : Centimes(plan.RappDebitFranc) - Centimes(plan.RappCreditFranc) -
                                        Centimes(plan.SoldeInitialFranc));
  if (const std::optional<SoldeReleve> releve = LitSoldeReleve(app, compte)) {
    const f64 taux = app.Magasin.GetTauxEuro(releve->date ? releve->date : app.Magasin.Today());
    soldes.releve = releve->euro == euro ? releve->montant
                    : euro               ? QVAPI::ConvertFrancToEuro(taux, releve->montant)
                                         : QVAPI::ConvertEuroToFranc(taux, releve->montant);
  }
  return soldes;
}

}  // namespace fenlor
