#include "reports/variables2035.h"

#include <cassert>
#include <set>

#include "core/btfiles.h"
#include "core/erreursexercice.h"
#include "core/fiche.h"
#include "core/valeurs.h"
#include "master/formule.h"
#include "master/fraiskm.h"
#include "master/textes.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::size_t LongueurCode = 3;

std::string SansFin(const std::string& code) { return code.substr(0, code.find_last_not_of(' ') + 1); }

f64 ComptePositif(f64 montant) { return montant < 0 ? 0 : montant; }

}  // namespace

const MontantDouble* Variables2035::Trouve(std::string_view nom) const {
  const struct {
    TexteFixe nom;
    const MontantDouble* valeur;
  } table[] = {{VariableAmortissements, &amortissements},
               {VariableFraisKm, &fraisKm},
               {VariablePlusValues, &plusValues},
               {VariableMoinsValues, &moinsValues},
               {VariableImmobilisations, &immobilisationsHTVA}};
  for (const auto& ligne : table)
    if (Texte(ligne.nom) == nom) return ligne.valeur;
  return nullptr;
}

bool CalculVariables2035(CFenlorApp& app, Variables2035& variables) {
  SommesImmobilisations sommes;
  const bool lu = CalculSommesImmobilisations(app, sommes);
  variables.amortissements = sommes.amortissements;
  variables.immobilisationsHTVA = sommes.valeurs;
  variables.plusValues = sommes.PlusValues();
  variables.moinsValues = sommes.MoinsValues();

  const f64 frais = FraisKilometriques(app);
  const f64 taux = app.Magasin.GetTauxEuro(app.Magasin.Today());
  const bool euro = app.Reglages.IsEuro();
  variables.fraisKm = {euro ? QVAPI::ConvertEuroToFranc(taux, frais) : frais,
                       euro ? frais : QVAPI::ConvertFrancToEuro(taux, frais)};
  return lu;
}

Refus Rubriques2035::Lit() {
  m_valeurs.clear();
  if (m_app.PathExercice.empty()) return Refus(ErrAucunExercice);
  if (!LitRubriques() || !LitComptes()) return EchecFichier();
  m_fraisKm = {FraisKilometriques(m_app, false), FraisKilometriques(m_app, true)};
  ChercheBoucles();
  return {};
}

void Rubriques2035::PoseVariables(const Variables2035& variables) {
  m_variables = variables;
  m_valeurs.clear();
}

std::string Rubriques2035::Complete(std::string_view code) {
  std::string complet(code);
  if (!complet.empty() && complet.size() < LongueurCode) complet.resize(LongueurCode, ' ');
  return complet;
}

bool Rubriques2035::LitRubriques() {
  m_fiches.clear();
  CRubriques fichier(m_app, m_app.PathExercice);
  if (!fichier.OpenFile()) return false;
  const bool lu = m_app.Magasin.QVParcours(fichier.NumFichier, [&](Position, const void* rec) {
    const Rubrique& rubrique = *static_cast<const Rubrique*>(rec);
    m_fiches[Complete(LitTexte(rubrique.Rubrique))] = {
        LitTexte(rubrique.Formule), rubrique.Manuel != 0, {rubrique.ManuelFranc, rubrique.ManuelEuro}};
    return true;
  });
  if (!lu) fichier.ErreurLecture();
  return lu;
}

bool Rubriques2035::LitComptes() {
  m_totaux.clear();
  CPlan plan(m_app, m_app.PathExercice);
  if (!plan.OpenFile()) return false;
  const auto cle = static_cast<u16>(plan.NumCle + IndicePlanRubrique);
  const bool lu = m_app.Magasin.QVParcoursCle(cle, {}, {}, [&](Position, const void* rec) {
    const Plan& compte = *static_cast<const Plan*>(rec);
    const std::string code = Complete(LitTexte(compte.Rubrique));
    if (SansFin(code).empty()) return true;
    MontantDouble& total = m_totaux[code];
    if (compte.Type == Recette)
      total += {compte.CreditFranc - compte.DebitFranc, compte.CreditEuro - compte.DebitEuro};
    if (compte.Type == Depense)
      total += {compte.DebitFranc - compte.CreditFranc, compte.DebitEuro - compte.CreditEuro};
    return true;
  });
  if (!lu) plan.ErreurLecture();
  return lu;
}

void Rubriques2035::ChercheBoucles() {
  m_boucles.clear();
  const auto formuleDe = [&](const std::string& code) {
    const auto fiche = m_fiches.find(code);
    return fiche == m_fiches.end() || fiche->second.manuel ? std::string() : fiche->second.formule;
  };
  std::set<std::string> dites;
  for (auto& [code, fiche] : m_fiches) {
    const std::vector<std::string> boucle = BoucleDeFormule(code, formuleDe);
    fiche.enBoucle = !boucle.empty();
    if (boucle.empty() || dites.contains(code)) continue;
    std::string chemin;
    for (const std::string& pas : boucle) chemin += (chemin.empty() ? "" : " > ") + SansFin(pas);
    m_boucles.push_back(std::move(chemin));
    dites.insert(boucle.begin(), boucle.end());
  }
  assert(dites.size() >= m_boucles.size());
}

MontantDouble Rubriques2035::Valeur(const std::string& code) {
  assert(code == Complete(code));
  if (const auto connue = m_valeurs.find(code); connue != m_valeurs.end()) return connue->second;
  MontantDouble valeur = Calcule(code);
  if (const MontantDouble* variable = m_variables.Trouve(code)) valeur += *variable;
  valeur = {Arrondi(valeur.franc, 0), Arrondi(valeur.euro, 0)};
  assert(!m_valeurs.contains(code));  // no formula comes back to its own code
  m_valeurs.emplace(code, valeur);
  return valeur;
}

MontantDouble Rubriques2035::Calcule(const std::string& code) {
  assert(!m_valeurs.contains(code));
  const auto trouvee = m_fiches.find(code);
  const Fiche fiche = trouvee == m_fiches.end() ? Fiche{} : trouvee->second;
  if (fiche.manuel) return fiche.montant;
  if (fiche.enBoucle) return {};
  if (EstVide(fiche.formule)) {
    const auto total = m_totaux.find(code);
    return total == m_totaux.end() ? MontantDouble{} : total->second;
  }
  return fiche.formule == Texte(VariableFraisKm) ? m_fraisKm : ValeurFormule(fiche.formule);
}

MontantDouble Rubriques2035::ValeurFormule(const std::string& formule) {
  MontantDouble valeur;
  for (const TermeFormule& terme : TermesFormule(formule)) {
    const MontantDouble de = Valeur(Complete(terme.texte));
    assert(terme.signe == '-' || terme.signe == '+');
    const f64 signe = terme.signe == '-' ? -1 : 1;
    valeur += {signe * ComptePositif(de.franc), signe * ComptePositif(de.euro)};
  }
  return valeur;
}

}  // namespace fenlor
