#include <algorithm>
#include <cassert>
#include <cmath>

#include "core/mouvements.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Credit less debit of one line: a negative figure stands for the other side.
f64 Signe(const LigneODSaisie& ligne) { return MontantDeChamp(ligne.credit) - MontantDeChamp(ligne.debit); }

class EnregistrementOD {
 public:
  EnregistrementOD(CFenlorApp& app, const SaisieOD& saisie, EcritureFaite& faite)
      : m_app(app), m_saisie(saisie), m_faite(faite) {}

  Refus Execute();

 private:
  Refus ControleEcriture();
  Refus ControleLimites();
  Refus ControleLignes();
  Refus Sauve();
  bool LitAnciennes();
  bool SontIntactes() const;

  CFenlorApp& m_app;
  const SaisieOD& m_saisie;
  EcritureFaite& m_faite;
  LivresOuverts m_livres;
  COpDiverses m_od{m_app};
  std::vector<Plan> m_comptes;  ///< of the lines, checked
};

Refus EnregistrementOD::Execute() {
  assert(m_comptes.empty() && m_od.Anciennes.empty());
  Refus r = ControleExercice(m_app, m_livres);
  if (!r) r = ControleEcriture();
  if (!r) r = ControleLimites();
  if (!r) r = ControleDate(m_app, m_saisie.date, m_od.Rec.Date);
  if (!r) r = ControleLignes();
  if (!r) r = ControleFranc(m_app, m_saisie.euro, m_saisie.date);
  if (!r) r = CheckComptePerso(m_app);
  if (!r) r = CheckCompteEcartCredit(m_app);
  if (!r) r = CheckCompteEcartDebit(m_app);
  if (!r && SoldeOD(m_saisie.lignes) != 0)
    r = m_app.Demande(BoutonsOuiNon | IconeAttention, RepOui, QuestionNonEquilibree);
  return r ? r : Sauve();
}

Refus EnregistrementOD::ControleEcriture() {
  const Permis permis{.validee = m_saisie.forcee, .liee = m_saisie.forcee};
  const Refus r = ControleExistante(m_app, m_saisie.mouvement, permis, m_od.Rec);
  if (r || m_saisie.mouvement == 0 || m_od.Rec.Genre == GenreOD) return r;
  return Refus(ErrChampInvalide, "mouvement",
               {"mouvement", "cette écriture est d'un autre journal ou d'un autre genre"_w});
}

Refus EnregistrementOD::ControleLimites() {
  Refus r = ControleLibelle(m_saisie.libelle);
  for (std::size_t i = 0; !r && i < m_saisie.lignes.size(); ++i) {
    const int indice = static_cast<int>(i);
    r = ControleLibelle(m_saisie.lignes[i].libelle, indice);
    if (!r) r = ControleMontant("debit", m_saisie.lignes[i].debit, indice);
    if (!r) r = ControleMontant("credit", m_saisie.lignes[i].credit, indice);
  }
  return r;
}

Refus EnregistrementOD::ControleLignes() {
  assert(m_comptes.empty());
  if (m_saisie.lignes.empty()) return Refus(ErrODSansLignes, "lignes");
  for (const LigneODSaisie& ligne : m_saisie.lignes) {
    const int indice = static_cast<int>(m_comptes.size());
    const bool debit = MontantDeChamp(ligne.debit) != 0;
    const bool credit = MontantDeChamp(ligne.credit) != 0;
    Plan plan;
    if (!LitCompte(m_app, ligne.compte, plan)) return Refus(ErrCompteIncorrect, "compte", {}, indice);
    if (!debit && !credit) return Refus(ErrDebitOuCredit, "debit", {}, indice);
    if (debit && credit) return Refus(ErrDebitEtCredit, "debit", {}, indice);
    m_comptes.push_back(plan);
  }
  return {};
}

bool EnregistrementOD::LitAnciennes() {
  assert(m_saisie.mouvement != 0);
  for (const Position position : m_app.Magasin.LignesMouvement(m_app.PathExercice, m_saisie.mouvement)) {
    Line ligne;
    if (!m_app.Magasin.ReadLines(m_app.PathExercice, position, ligne)) return false;
    m_od.Anciennes.push_back(ligne);
  }
  return true;
}

/// Accounts, sides and amounts are those of the existing entry, line by line, the deviation's included.
bool EnregistrementOD::SontIntactes() const {
  assert(m_comptes.size() == m_saisie.lignes.size());
  std::vector<std::pair<std::string, f64>> lignes;  // account, credit less debit
  for (std::size_t i = 0; i < m_saisie.lignes.size(); ++i)
    lignes.emplace_back(LitTexte(m_comptes[i].Compte), Signe(m_saisie.lignes[i]));
  if (const f64 solde = SoldeOD(m_saisie.lignes); solde != 0)
    lignes.emplace_back(
        solde < 0 ? m_app.Magasin.GetCompteEcartCredit() : m_app.Magasin.GetCompteEcartDebit(), -solde);
  return std::equal(lignes.begin(), lignes.end(), m_od.Anciennes.begin(), m_od.Anciennes.end(),
                    [&](const auto& une, const Line& autre) {
                      const f64 montant = m_saisie.euro ? autre.MontantEuro : autre.MontantFranc;
                      return une.first == LitTexte(autre.Compte) && (une.second > 0) == (autre.Sens != 0) &&
                             std::fabs(une.second) == MontantDeChamp(montant);
                    });
}

Refus EnregistrementOD::Sauve() {
  assert(!m_comptes.empty() && m_comptes.size() == m_saisie.lignes.size());
  QVAPI& magasin = m_app.Magasin;
  const std::string& exercice = m_app.PathExercice;
  QVAPI::Unite unite(magasin);
  const Mouvement ancienne = m_od.Rec;
  if (m_saisie.mouvement == 0) {
    m_od.Rec.Journal = m_saisie.journal;
    m_od.Rec.Mouvement = magasin.GetFreeMouvementsID(exercice, static_cast<u16>(m_saisie.journal));
  } else if (!LitAnciennes()) {
    return m_app.EchecMagasin();
  } else if (!magasin.RemoveMouvements(exercice, m_saisie.mouvement)) {
    return m_app.EchecDit();
  }
  u32 numero = 0;
  if (const Refus r = NumeroDe(m_app, m_od.Rec.Journal, m_saisie.ligne, m_saisie.date, ancienne, numero))
    return r;
  if (m_od.Rec.Mouvement == 0) return m_app.EchecDit();
  // An entry typed in Franc may be shown in Euro; never the other way round.
  m_od.GardeMontants = (m_saisie.euro || !ancienne.SaisieEuro) && SontIntactes();
  m_od.Rec.Ligne = numero;
  m_od.Rec.Genre = GenreOD;
  PoseTexte(m_od.Rec.Libelle, m_saisie.libelle);
  m_od.Rec.Date = m_saisie.date;
  m_od.Rec.SaisieEuro = m_saisie.euro;
  m_od.Rec.Validee = m_saisie.validee;

  for (std::size_t i = 0; i < m_saisie.lignes.size(); ++i) {
    const LigneODSaisie& saisie = m_saisie.lignes[i];
    const Plan& plan = m_comptes[i];
    Line ligne = m_od.FaitLigne(plan, Signe(saisie), m_saisie.euro);
    const std::string& designation = saisie.libelle.empty() ? m_saisie.libelle : saisie.libelle;
    if (!designation.empty()) PoseTexte(ligne.Designation, designation);
    ligne.ModePaiement =
        plan.Type == Tresorerie && saisie.paiement == PaiementAutre ? PaiementAutre : PaiementCheque;
    if (!m_od.AddLine(ligne)) return m_app.EchecDit();
  }
  if (!m_od.AddEcart(SoldeOD(m_saisie.lignes), m_saisie.euro)) return m_app.EchecDit();
  if (!unite.Valide()) return m_app.EchecMagasin();
  m_faite = {m_od.Rec.Mouvement, m_od.Rec.Ligne};
  return {};
}

}  // namespace

f64 SoldeOD(const std::vector<LigneODSaisie>& lignes) {
  f64 solde = 0;
  for (const LigneODSaisie& ligne : lignes) solde += Signe(ligne);
  return Arrondi2(solde) + 0.0;
}

Refus EnregistreOD(CFenlorApp& app, const SaisieOD& saisie, EcritureFaite& faite) {
  const QVAPI::Instant instant(app.Magasin);
  return EnregistrementOD(app, saisie, faite).Execute();
}

}  // namespace fenlor
