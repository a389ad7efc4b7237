#include "journal/saisie.h"

#include <cassert>
#include <cmath>
#include <cstring>

#include "core/erreurssaisie.h"
#include "core/mouvements.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "journal/ecriturelue.h"
#include "journal/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

f64 TauxTva(CFenlorApp& app, const Plan& compte) {
  Plan tva;
  if (!app.Reglages.IsTVA() || !LitCompte(app, LitTexte(compte.CompteTVA), tva)) return 0;
  return tva.TauxTVA > 0 ? tva.TauxTVA : 0;
}

/// The steps behind a professional share, which is not rounded yet.
MontantsSaisie Suite(CFenlorApp& app, const Plan& compte, f64 ttc, f64 professionnel) {
  const f64 taux = TauxTva(app, compte);
  const f64 personnel = ttc - professionnel;
  assert(taux >= 0);
  const f64 ht = MontantHT(professionnel, taux, true);
  const f64 tva = taux > 0 ? professionnel - ht : 0;
  return {
      ttc, MontantDeChamp(professionnel), MontantDeChamp(personnel), MontantDeChamp(ht), MontantDeChamp(tva),
      taux};
}

class Enregistrement {
 public:
  Enregistrement(CFenlorApp& app, const SaisieEcriture& saisie, EcritureFaite& faite)
      : m_app(app), m_saisie(saisie), m_faite(faite), m_ttc(MontantDeChamp(saisie.montants.ttc)) {}

  Refus Execute(const SuiteSaisie& suite);

 private:
  Refus ControleEcriture();
  Refus ControleLimites();
  Refus ControleCompte();
  Refus ControleTresorerie();
  Refus ControleLignes();
  Refus ControleChangement();
  Refus Sauve() { return EstStandard() ? SauveStandard() : SauveSimple(); }
  Refus SauveSimple();
  Refus SauveStandard();
  template <class Ecriture>
  using Ajout = u32 (QVAPI::*)(const std::string&, Ecriture&);
  template <class Ecriture>
  using Changement = bool (QVAPI::*)(const std::string&, u32, Ecriture&);
  template <class Ecriture>
  Refus Ecrit(Ecriture& rec, Ajout<Ecriture> ajoute, Changement<Ecriture> change);

  bool EstNouvelle() const { return m_saisie.mouvement == 0; }
  bool EstStandard() const { return m_saisie.genre == GenreStandard; }
  bool MontantsIntacts() const;
  bool LitTresorerie(const std::string& compte, Plan& plan) {
    return LitCompte(m_app, compte, plan) && plan.Type == Tresorerie;
  }
  template <class Ecriture>
  void Remplit(Ecriture& rec) const;

  CFenlorApp& m_app;
  const SaisieEcriture& m_saisie;
  EcritureFaite& m_faite;
  const f64 m_ttc;
  LivresOuverts m_livres;
  Mouvement m_entete{};  ///< of an existing entry
  Plan m_compte{};
  EcritureLue m_ancienne;            ///< the existing entry, in the currency of the new one
  std::vector<LineTresor> m_lignes;  ///< `ModePaiement` and account of the list, checked
  bool m_lignesIntactes = true;      ///< those of a standard entry are what they were
};

Refus Enregistrement::Execute(const SuiteSaisie& suite) {
  assert(m_lignes.empty() && m_entete.Mouvement == 0);
  Refus r = ControleExercice(m_app, m_livres);
  if (!r) r = ControleEcriture();
  if (!r) r = ControleLimites();
  if (!r) r = ControleDate(m_app, m_saisie.date, m_entete.Date);
  if (!r) r = ControleCompte();
  if (!r && m_ttc == 0) r = Refus(ErrMontantNul, "ttc");
  if (!r) r = EstStandard() ? ControleLignes() : ControleTresorerie();
  if (!r) r = ControleChangement();
  if (!r) r = CheckComptePerso(m_app);
  if (!r) r = ControleFranc(m_app, m_saisie.euro, m_saisie.date);
  if (!r) r = NumeroDe(m_app, m_saisie.journal, m_saisie.ligne, m_saisie.date, m_entete, m_faite.ligne);
  if (r) return r;
  if (!suite) return Sauve();
  QVAPI::Unite unite(m_app.Magasin);
  if (r = Sauve(); !r) r = suite(m_faite);
  if (!r && !unite.Valide()) r = m_app.EchecMagasin();
  if (r) m_faite = {};
  return r;
}

Refus Enregistrement::ControleEcriture() {
  const Refus r = ControleExistante(m_app, m_saisie.mouvement, {.liee = m_saisie.delier}, m_entete);
  if (r || EstNouvelle()) return r;
  if (m_entete.Journal != m_saisie.journal || m_entete.Genre == GenreOD)
    return Refus(ErrChampInvalide, "mouvement",
                 {"mouvement", "cette écriture est d'un autre journal ou d'un autre genre"_w});
  return LitEcriture(m_app, m_saisie.mouvement, m_ancienne, m_saisie.euro);
}

/// Nothing that the amounts follow from was touched.
bool Enregistrement::MontantsIntacts() const {
  const SaisieEcriture& ancienne = m_ancienne.saisie;
  const MontantsSaisie &avant = ancienne.montants, &apres = m_saisie.montants;
  return !EstNouvelle() && ancienne.euro == m_saisie.euro && ancienne.compte == LitTexte(m_compte.Compte) &&
         avant.ttc == m_ttc && avant.professionnel == MontantDeChamp(apres.professionnel) &&
         avant.taux == apres.taux;
}

Refus Enregistrement::ControleLimites() {
  Refus r = ControleLibelle(m_saisie.libelle);
  if (!r) r = ControleMontant("ttc", m_saisie.montants.ttc);
  if (!r) r = ControleMontant("professionnel", m_saisie.montants.professionnel);
  if (!r) r = ControleMontant("tva", m_saisie.montants.tva);
  if (!EstStandard()) return r;
  for (std::size_t i = 0; !r && i < m_saisie.tresoreries.size(); ++i)
    r = ControleMontant("montant", m_saisie.tresoreries[i].montant, static_cast<int>(i));
  return r;
}

Refus Enregistrement::ControleCompte() {
  if (LitCompte(m_app, m_saisie.compte, m_compte)) {
    const std::string compte = LitTexte(m_compte.Compte);
    const bool duJournal = m_compte.Type == (m_saisie.journal == JournalRecettes ? Recette : Depense);
    const bool persoDejaLa =
        !EstNouvelle() && compte == m_ancienne.saisie.compte && compte == m_app.Magasin.GetComptePerso();
    if (duJournal || persoDejaLa) return {};
  }
  return Refus(ErrCompteIncorrect, "compte");
}

Refus Enregistrement::ControleTresorerie() {
  assert(!EstStandard() && m_lignes.empty());
  Plan plan;
  if (!LitTresorerie(m_saisie.tresorerie, plan)) return Refus(ErrCompteIncorrect, "tresorerie");
  LineTresor ligne{};
  PoseTexte(ligne.Compte, LitTexte(plan.Compte));
  ligne.ModePaiement =
      plan.TypeTresorerie == 0 || m_saisie.paiement == PaiementAutre ? PaiementAutre : PaiementCheque;
  m_lignes.push_back(ligne);
  return {};
}

Refus Enregistrement::ControleLignes() {
  assert(EstStandard() && m_lignes.empty());
  if (m_saisie.tresoreries.empty()) return Refus(ErrSansLigneTresorerie, "tresorerie");
  const f64 taux = m_app.Magasin.GetTauxEuro(m_saisie.date);
  i64 total = 0;
  const std::vector<LigneTresorLue>& anciennes = m_ancienne.lignes;
  m_lignesIntactes = anciennes.size() == m_saisie.tresoreries.size() && MontantsIntacts();
  for (const LigneTresorSaisie& saisie : m_saisie.tresoreries) {
    const int indice = static_cast<int>(m_lignes.size());
    const f64 montant = MontantDeChamp(saisie.montant);
    Plan plan;
    if (!LitTresorerie(saisie.compte, plan)) return Refus(ErrCompteIncorrect, "tresorerie", {}, indice);
    if (montant == 0) return Refus(ErrMontantNul, "montant", {}, indice);
    LineTresor ligne{};
    PoseTexte(ligne.Compte, LitTexte(plan.Compte));
    const auto [franc, euro] = EnDeuxMonnaies(m_saisie.euro, taux, montant);
    ligne.MontantFranc = franc;
    ligne.MontantEuro = euro;
    ligne.ModePaiement =
        plan.TypeTresorerie != 0 && saisie.paiement == PaiementAutre ? PaiementAutre : PaiementCheque;
    m_lignes.push_back(ligne);
    total += CentimesDeChamp(montant);
    m_lignesIntactes = m_lignesIntactes && anciennes[m_lignes.size() - 1].compte == LitTexte(plan.Compte) &&
                       anciennes[m_lignes.size() - 1].montant == montant;
  }
  for (std::size_t i = 0; m_lignesIntactes && i < m_lignes.size(); ++i) {
    assert(i < anciennes.size());
    m_lignes[i].MontantFranc = anciennes[i].stocke.franc;
    m_lignes[i].MontantEuro = anciennes[i].stocke.euro;
  }
  return total == CentimesDeChamp(m_ttc) ? Refus{} : Refus(ErrTotalTresorerie, "ttc");
}

Refus Enregistrement::ControleChangement() {
  assert(!m_lignes.empty());
  if (EstStandard() || m_entete.Genre != GenreSimple || EstNouvelle()) return {};
  if (m_ancienne.saisie.tresorerie == LitTexte(m_lignes.front().Compte)) return {};
  return m_app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionTresorerieChangee, "tresorerie");
}

template <class Ecriture>
void Enregistrement::Remplit(Ecriture& rec) const {
  assert(m_compte.Compte[0] != 0 && m_ttc != 0);
  QVAPI& magasin = m_app.Magasin;
  std::memset(&rec, 0, sizeof rec);
  rec.Mouvement = m_saisie.mouvement;
  rec.Journal = m_saisie.journal;
  rec.Genre = m_saisie.genre;
  PoseTexte(rec.Libelle, m_saisie.libelle.empty() ? LitTexte(m_compte.Designation) : m_saisie.libelle);
  rec.Ligne = m_faite.ligne;
  rec.Date = m_saisie.date;
  rec.Validee = m_saisie.validee;
  rec.SaisieEuro = m_saisie.euro;
  rec.EstRecette = m_saisie.journal == JournalRecettes;
  PoseTexte(rec.Compte, LitTexte(m_compte.Compte));
  PoseTexte(rec.ComptePerso, magasin.GetComptePerso());

  const bool intacts = MontantsIntacts();
  const MontantsStockes& stockes = m_ancienne.stockes;
  const f64 taux = magasin.GetTauxEuro(m_saisie.date);
  const auto deux = [&](f64 saisi, const DeuxMonnaies& stocke) {
    if (intacts && m_lignesIntactes) return stocke;
    const f64 montant = !intacts ? MontantDeChamp(saisi) : m_saisie.euro ? stocke.euro : stocke.franc;
    return EnDeuxMonnaies(m_saisie.euro, taux, montant);
  };
  const DeuxMonnaies montant = deux(m_ttc, stockes.montant);
  const DeuxMonnaies repartition = deux(m_saisie.montants.professionnel, stockes.repartition);
  rec.MontantFranc = montant.franc;
  rec.MontantEuro = montant.euro;
  rec.RepartitionFranc = repartition.franc;
  rec.RepartitionEuro = repartition.euro;
  const std::string compteTaxe = intacts ? stockes.compteTaxe : LitTexte(m_compte.CompteTVA);
  const f64 tauxTaxe = intacts ? stockes.taux : m_saisie.montants.taux;
  if (compteTaxe.empty() || tauxTaxe <= 0) return;
  const DeuxMonnaies taxe = deux(m_saisie.montants.tva, stockes.taxe);
  PoseTexte(rec.CompteTaxe, compteTaxe);
  rec.TaxeFranc = taxe.franc;
  rec.TaxeEuro = taxe.euro;
  rec.TauxTaxe = tauxTaxe;
}

template <class Ecriture>
Refus Enregistrement::Ecrit(Ecriture& rec, Ajout<Ecriture> ajoute, Changement<Ecriture> change) {
  QVAPI& magasin = m_app.Magasin;
  const u32 ancien = m_saisie.mouvement;
  assert(rec.Ligne != 0 && rec.Mouvement == ancien && m_app.Magasin.GetOpenFlagJournal());
  if (EstNouvelle())
    m_faite.mouvement = (magasin.*ajoute)(m_app.PathExercice, rec);
  else
    m_faite.mouvement = (magasin.*change)(m_app.PathExercice, ancien, rec) ? ancien : 0;
  return m_faite.mouvement == 0 ? m_app.EchecDit() : Refus{};
}

Refus Enregistrement::SauveSimple() {
  assert(m_lignes.size() == 1);
  EcrSimple rec;
  Remplit(rec);
  PoseTexte(rec.CompteTresorerie, LitTexte(m_lignes.front().Compte));
  rec.ModePaiement = m_lignes.front().ModePaiement;
  return Ecrit<EcrSimple>(rec, &QVAPI::AddEcrSimple, &QVAPI::UpdateEcrSimple);
}

Refus Enregistrement::SauveStandard() {
  assert(!m_lignes.empty());
  CEcrStandard ecriture(m_app);
  EcrStandard& rec = ecriture.Rec;
  Remplit(rec);
  for (u32 i = 0; i < m_lignes.size(); ++i)
    if (!m_app.Magasin.SetEcrLineTresor(i, rec, m_lignes[i]))
      return Refus(ErrLigneTresorerie, "tresorerie", {}, static_cast<int>(i));
  return Ecrit<EcrStandard>(rec, &QVAPI::AddEcrStandard, &QVAPI::UpdateEcrStandard);
}

}  // namespace

MontantsSaisie ChaineMontants(CFenlorApp& app, const Plan& compte, f64 ttc) {
  const f64 saisi = MontantDeChamp(ttc);
  return Suite(app, compte, saisi, saisi * compte.PartPro * 0.01);
}

MontantsSaisie ChaineProfessionnel(CFenlorApp& app, const Plan& compte, f64 ttc, f64 professionnel) {
  const f64 saisi = MontantDeChamp(ttc);
  const f64 part = MontantDeChamp(professionnel);
  const bool deborde = std::fabs(part) > std::fabs(saisi) || part * saisi < 0;
  return Suite(app, compte, saisi, deborde ? saisi : part);
}

Refus EnregistreEcriture(CFenlorApp& app, const SaisieEcriture& saisie, EcritureFaite& faite,
                         const SuiteSaisie& suite) {
  const QVAPI::Instant instant(app.Magasin);
  return Enregistrement(app, saisie, faite).Execute(suite);
}

}  // namespace fenlor
