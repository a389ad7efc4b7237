#include "journal/virement.h"

#include <cassert>
#include <cstring>

#include "core/btfiles.h"
#include "core/erreursexercice.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

Refus ControleTresoreries(CFenlorApp& app) {
  const CPlan plan(app, app.PathExercice);
  unsigned nombre = 0;
  const bool lu = app.Magasin.QVParcoursCle(static_cast<u16>(plan.NumCle + IndicePlanType),
                                            std::to_string(Tresorerie), std::to_string(Tresorerie + 1),
                                            [&](Position, const void*) { return ++nombre < 2; });
  if (!lu) return app.EchecMagasin();
  return nombre < 2 ? Refus(ErrDeuxTresoreries) : Refus{};
}

/// The tests of the opening form, on open books.
Refus ControleOuverture(CFenlorApp& app) {
  Refus r = ControleTresoreries(app);
  if (!r) r = CheckCompteVireTo(app);
  if (!r) r = CheckCompteVireFrom(app);
  return r;
}

class EnregistrementVirement {
 public:
  EnregistrementVirement(CFenlorApp& app, const SaisieVirement& saisie) : m_app(app), m_saisie(saisie) {}

  Refus Execute(VirementFait& fait);

 private:
  Refus Controle();
  Refus ControleComptes();
  Refus ControleSomme();
  u32 Ajoute(i16 journal, const std::string& tresorerie, const std::string& compte, i16 paiement);

  CFenlorApp& m_app;
  const SaisieVirement& m_saisie;
  LivresOuverts m_livres;
  std::string m_de, m_vers;
  bool m_versBanque = false;
  DeuxMonnaies m_montant;
};

Refus EnregistrementVirement::Execute(VirementFait& fait) {
  if (const Refus refus = Controle()) return refus;
  QVAPI& magasin = m_app.Magasin;
  QVAPI::Unite unite(magasin);
  const u32 depense = Ajoute(JournalDepenses, m_de, magasin.GetCompteVireFrom(), PaiementAutre);
  if (!depense) return m_app.EchecDit();
  const bool cheque = m_versBanque && m_saisie.paiement == PaiementCheque;
  const u32 recette =
      Ajoute(JournalRecettes, m_vers, magasin.GetCompteVireTo(), cheque ? PaiementCheque : PaiementAutre);
  if (!recette) return m_app.EchecDit();
  assert(depense != recette);
  if (!unite.Valide()) return m_app.EchecMagasin();
  fait = {depense, recette};
  return {};
}

Refus EnregistrementVirement::Controle() {
  if (m_app.PathExercice.empty()) return Refus(ErrAucunExercice);
  Refus r = m_livres.Ouvre(m_app);
  if (!r && !DansExercice(m_app, m_saisie.date)) r = Refus(ErrDateVirement, "date");
  if (!r) r = ControleComptes();
  if (!r) r = ControleFranc(m_app, m_saisie.euro, m_saisie.date);
  if (!r) r = ControleSomme();
  if (!r) r = m_app.ControleEcriture();
  if (!r) r = ControleOuverture(m_app);
  return r ? r : ControleLibelle(m_saisie.libelle);
}

Refus EnregistrementVirement::ControleComptes() {
  Plan plan;
  const auto lit = [&](const std::string& compte) {
    return LitCompte(m_app, compte, plan) && plan.Type == Tresorerie;
  };
  if (!lit(m_saisie.de)) return Refus(ErrTresorerieOrigine, "de");
  m_de = LitTexte(plan.Compte);
  if (!lit(m_saisie.vers)) return Refus(ErrTresorerieDestination, "vers");
  m_vers = LitTexte(plan.Compte);
  m_versBanque = plan.TypeTresorerie != 0;
  return m_de == m_vers ? Refus(ErrTresoreriesIdentiques, "vers") : Refus{};
}

Refus EnregistrementVirement::ControleSomme() {
  assert(!m_de.empty() && m_de != m_vers);
  if (const Refus r = ControleMontant("montant", m_saisie.montant)) return r;
  m_montant = EnDeuxMonnaies(m_saisie.euro, m_app.Magasin.GetTauxEuro(m_saisie.date),
                             MontantDeChamp(m_saisie.montant));
  if (m_montant.franc > 0 && m_montant.euro > 0) return {};
  return Refus(ErrMontantVirement, "montant");
}

u32 EnregistrementVirement::Ajoute(i16 journal, const std::string& tresorerie, const std::string& compte,
                                   i16 paiement) {
  assert(m_montant.franc > 0 && m_montant.euro > 0 && !compte.empty() && !tresorerie.empty());
  QVAPI& magasin = m_app.Magasin;
  EcrSimple rec;
  std::memset(&rec, 0, sizeof rec);
  rec.Journal = journal;
  rec.Genre = GenreSimple;
  rec.Ligne =
      magasin.GetFreeJournalLine(m_app.PathExercice, static_cast<u16>(journal), tresorerie, m_saisie.date);
  if (rec.Ligne == 0) return 0;
  rec.Date = m_saisie.date;
  PoseTexte(rec.Libelle, m_saisie.libelle.empty() ? Texte(LibelleVirement) : m_saisie.libelle);
  PoseTexte(rec.CompteTresorerie, tresorerie);
  PoseTexte(rec.Compte, compte);
  rec.MontantFranc = rec.RepartitionFranc = m_montant.franc;
  rec.MontantEuro = rec.RepartitionEuro = m_montant.euro;
  rec.ModePaiement = paiement;
  rec.EstRecette = journal == JournalRecettes;
  rec.SaisieEuro = m_saisie.euro;
  return magasin.AddEcrSimple(m_app.PathExercice, rec);
}

}  // namespace

Refus ControleVirement(CFenlorApp& app) {
  LivresOuverts livres;
  const Refus r = ControleExercice(app, livres);
  return r ? r : ControleOuverture(app);
}

Refus EnregistreVirement(CFenlorApp& app, const SaisieVirement& saisie, VirementFait& fait) {
  return EnregistrementVirement(app, saisie).Execute(fait);
}

}  // namespace fenlor
