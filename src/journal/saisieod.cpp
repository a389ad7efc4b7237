#include <algorithm>
#include <cmath>

#include "core/textes.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "store/ecritures_lignes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Credit less debit of one line: a negative figure stands for the other side.
f64 Signe(const LigneODSaisie& ligne) { return MontantDeChamp(ligne.credit) - MontantDeChamp(ligne.debit); }

class EnregistrementOD {
 public:
  EnregistrementOD(CFenlorApp& app, const SaisieOD& saisie) : m_app(app), m_saisie(saisie) {}

  ResultatSaisie Execute();

 private:
  ResultatSaisie ControleEcriture();
  ResultatSaisie ControleLimites();
  ResultatSaisie ControleLignes();
  ResultatSaisie Sauve();
  bool LitAnciennes();
  Line FaitLigne(const std::string& compte, const std::string& designation, f64 signe, i16 paiement);
  void FaitLignes();
  bool SontIntactes() const;
  bool AjouteLigne(Line ligne);

  CFenlorApp& m_app;
  const SaisieOD& m_saisie;
  LivresOuverts m_livres;
  Mouvement m_entete{};
  std::vector<Plan> m_comptes;    ///< of the lines, checked
  std::vector<Line> m_anciennes;  ///< lines of the existing entry that no new line took over yet
  std::vector<Line> m_lignes;     ///< to be written
  bool m_memeMonnaie = true;      ///< the entry was in this currency, or is shown in Euro
};

ResultatSaisie EnregistrementOD::Execute() {
  ResultatSaisie r = ControleExercice(m_app, m_livres);
  if (r) r = ControleEcriture();
  if (r) r = ControleLimites();
  if (r) r = ControleDate(m_app, m_saisie.date, m_entete.Date);
  if (r) r = ControleLignes();
  if (r) r = ControleFranc(m_app, m_saisie.euro, m_saisie.date);
  if (r) r = CheckComptePerso(m_app);
  if (r) r = CheckCompteEcartCredit(m_app);
  if (r) r = CheckCompteEcartDebit(m_app);
  if (r && SoldeOD(m_saisie.lignes) != 0)
    r = Demande(m_app, BoutonsOuiNon | IconeAttention, RepOui, QuestionNonEquilibree);
  return r ? Sauve() : r;
}

ResultatSaisie EnregistrementOD::ControleEcriture() {
  const Permis permis{.validee = m_saisie.forcee, .liee = m_saisie.forcee};
  const ResultatSaisie r = ControleExistante(m_app, m_saisie.mouvement, permis, m_entete);
  if (!r || m_saisie.mouvement == 0 || m_entete.Genre == GenreOD) return r;
  return Refus(m_app, ErrChampInvalide, "mouvement",
               {"mouvement", "cette écriture est d'un autre journal ou d'un autre genre"_w});
}

ResultatSaisie EnregistrementOD::ControleLimites() {
  ResultatSaisie r = ControleLibelle(m_app, m_saisie.libelle);
  for (std::size_t i = 0; r && i < m_saisie.lignes.size(); ++i) {
    const int indice = static_cast<int>(i);
    r = ControleLibelle(m_app, m_saisie.lignes[i].libelle, indice);
    if (r) r = ControleMontant(m_app, "debit", m_saisie.lignes[i].debit, indice);
    if (r) r = ControleMontant(m_app, "credit", m_saisie.lignes[i].credit, indice);
  }
  return r;
}

ResultatSaisie EnregistrementOD::ControleLignes() {
  if (m_saisie.lignes.empty()) return Refus(m_app, 3032, "lignes");
  for (const LigneODSaisie& ligne : m_saisie.lignes) {
    const int indice = static_cast<int>(m_comptes.size());
    const bool debit = MontantDeChamp(ligne.debit) != 0;
    const bool credit = MontantDeChamp(ligne.credit) != 0;
    Plan plan;
    if (!LitCompte(m_app, ligne.compte, plan)) return Refus(m_app, 3105, "compte", {}, indice);
    if (!debit && !credit) return Refus(m_app, 3108, "debit", {}, indice);
    if (debit && credit) return Refus(m_app, ErrDebitEtCredit, "debit", {}, indice);
    m_comptes.push_back(plan);
  }
  return {};
}

bool EnregistrementOD::LitAnciennes() {
  for (const Position position : m_app.Magasin.LignesMouvement(m_app.PathExercice, m_saisie.mouvement)) {
    Line ligne;
    if (!m_app.Magasin.ReadLines(m_app.PathExercice, position, ligne)) return false;
    m_anciennes.push_back(ligne);
  }
  return true;
}

Line EnregistrementOD::FaitLigne(const std::string& compte, const std::string& designation, f64 signe,
                                 i16 paiement) {
  Line ligne{};
  Plan plan;
  LitCompte(m_app, compte, plan);
  PoseTexte(ligne.Compte, compte);
  ligne.TypeCompte = plan.Type;
  PoseTexte(ligne.Designation, designation.empty() ? LitTexte(plan.Designation) : designation);
  const f64 taux = m_app.Magasin.GetTauxEuro(m_entete.Date);
  const auto [franc, euro] = EnDeuxMonnaies(m_saisie.euro, taux, std::fabs(signe));
  ligne.MontantFranc = franc;
  ligne.MontantEuro = euro;
  ligne.Sens = signe > 0;
  ligne.ModePaiement = paiement;
  return ligne;
}

/// The lines as they were typed, and one for the difference.
void EnregistrementOD::FaitLignes() {
  for (std::size_t i = 0; i < m_saisie.lignes.size(); ++i) {
    const LigneODSaisie& saisie = m_saisie.lignes[i];
    const Plan& plan = m_comptes[i];
    const i16 paiement =
        plan.Type == Tresorerie && saisie.paiement == PaiementAutre ? PaiementAutre : PaiementCheque;
    const std::string& designation = saisie.libelle.empty() ? m_saisie.libelle : saisie.libelle;
    m_lignes.push_back(FaitLigne(LitTexte(plan.Compte), designation, Signe(saisie), paiement));
  }
  const f64 solde = SoldeOD(m_saisie.lignes);
  if (solde == 0) return;
  QVAPI& magasin = m_app.Magasin;
  const std::string compte = solde < 0 ? magasin.GetCompteEcartCredit() : magasin.GetCompteEcartDebit();
  m_lignes.push_back(FaitLigne(compte, {}, -solde, PaiementAutre));
}

/// Accounts, sides and amounts are those of the existing entry, line by line.
bool EnregistrementOD::SontIntactes() const {
  const auto montant = [&](const Line& ligne) -> f64 {
    return MontantDeChamp(m_saisie.euro ? ligne.MontantEuro : ligne.MontantFranc);
  };
  return m_memeMonnaie && std::equal(m_lignes.begin(), m_lignes.end(), m_anciennes.begin(), m_anciennes.end(),
                                     [&](const Line& une, const Line& autre) {
                                       return LitTexte(une.Compte) == LitTexte(autre.Compte) &&
                                              !une.Sens == !autre.Sens && montant(une) == montant(autre);
                                     });
}

bool EnregistrementOD::AjouteLigne(Line ligne) {
  ligne.Mouvement = m_entete.Mouvement;
  ligne.Journal = m_entete.Journal;
  ligne.Genre = m_entete.Genre;
  PoseTexte(ligne.Libelle, LitTexte(m_entete.Libelle));
  ligne.Ligne = m_entete.Ligne;
  ligne.Date = ligne.DateLigne = m_entete.Date;
  ligne.Validee = m_entete.Validee;
  ligne.Pointee = m_entete.Pointee;
  ligne.SaisieEuro = m_entete.SaisieEuro;
  ligne.Role = RoleLibre;
  for (auto ancienne = m_anciennes.begin(); ancienne != m_anciennes.end(); ++ancienne) {
    if (LitTexte(ancienne->Compte) != LitTexte(ligne.Compte) || !ancienne->Sens != !ligne.Sens) continue;
    CopieMarques(*ancienne, ligne);
    // Nobody chooses the mode there: that of a deviation stays.
    if (ligne.TypeCompte != Tresorerie) ligne.ModePaiement = ancienne->ModePaiement;
    m_anciennes.erase(ancienne);
    break;
  }
  return m_app.Magasin.AddLines(m_app.PathExercice, ligne) != 0;
}

ResultatSaisie EnregistrementOD::Sauve() {
  QVAPI& magasin = m_app.Magasin;
  const std::string& exercice = m_app.PathExercice;
  QVAPI::Unite unite(magasin);
  const Mouvement ancienne = m_entete;
  if (m_saisie.mouvement == 0) {
    m_entete.Journal = m_saisie.journal;
    m_entete.Mouvement = magasin.GetFreeMouvementsID(exercice, static_cast<u16>(m_saisie.journal));
  } else if (!LitAnciennes()) {
    return RefusMagasin(m_app);
  } else if (!magasin.RemoveMouvements(exercice, m_saisie.mouvement)) {
    return EchecMagasin(m_app);
  }
  u32 numero = 0;
  if (const ResultatSaisie r =
          NumeroDe(m_app, m_entete.Journal, m_saisie.ligne, m_saisie.date, ancienne, numero);
      !r)
    return r;
  if (m_entete.Mouvement == 0) return EchecMagasin(m_app);
  m_memeMonnaie = m_saisie.euro || !m_entete.SaisieEuro;
  m_entete.Ligne = numero;
  m_entete.Genre = GenreOD;
  PoseTexte(m_entete.Libelle, m_saisie.libelle);
  m_entete.Date = m_saisie.date;
  m_entete.SaisieEuro = m_saisie.euro;
  m_entete.Validee = m_saisie.validee;

  FaitLignes();
  if (SontIntactes()) {
    for (std::size_t i = 0; i < m_lignes.size(); ++i) {
      m_lignes[i].MontantFranc = m_anciennes[i].MontantFranc;
      m_lignes[i].MontantEuro = m_anciennes[i].MontantEuro;
    }
  }
  for (const Line& ligne : m_lignes)
    if (!AjouteLigne(ligne)) return EchecMagasin(m_app);
  if (!unite.Valide()) return RefusMagasin(m_app);
  ResultatSaisie r;
  r.mouvement = m_entete.Mouvement;
  r.ligne = m_entete.Ligne;
  return r;
}

}  // namespace

f64 SoldeOD(const std::vector<LigneODSaisie>& lignes) {
  f64 solde = 0;
  for (const LigneODSaisie& ligne : lignes) solde += Signe(ligne);
  return Arrondi2(solde) + 0.0;
}

ResultatSaisie EnregistreOD(CFenlorApp& app, const SaisieOD& saisie) {
  return EnregistrementOD(app, saisie).Execute();
}

}  // namespace fenlor
