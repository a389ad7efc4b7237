#include "journal/virement.h"

#include <cstring>

#include "core/btfiles.h"
#include "core/erreurs.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 CleType = 3;

ResultatSaisie ControleTresoreries(CFenlorApp& app) {
  const CPlan plan(app, app.PathExercice);
  unsigned nombre = 0;
  const bool lu = app.Magasin.QVParcoursCle(static_cast<u16>(plan.NumCle + CleType),
                                            std::to_string(Tresorerie), std::to_string(Tresorerie + 1),
                                            [&](Position, const void*) { return ++nombre < 2; });
  if (!lu) return RefusMagasin(app);
  return nombre < 2 ? RefuseDit(app, ErrDeuxTresoreries) : ResultatSaisie{};
}

/// The tests of the opening form, on open books.
ResultatSaisie ControleOuverture(CFenlorApp& app) {
  ResultatSaisie r = ControleTresoreries(app);
  if (r) r = CheckCompteVireTo(app);
  if (r) r = CheckCompteVireFrom(app);
  return r;
}

class EnregistrementVirement {
 public:
  EnregistrementVirement(CFenlorApp& app, const SaisieVirement& saisie) : m_app(app), m_saisie(saisie) {}

  ResultatVirement Execute();

 private:
  ResultatSaisie Controle();
  ResultatSaisie ControleComptes();
  ResultatSaisie ControleSomme();
  u32 Ajoute(i16 journal, const std::string& tresorerie, const std::string& compte, i16 paiement);

  CFenlorApp& m_app;
  const SaisieVirement& m_saisie;
  LivresOuverts m_livres;
  std::string m_de, m_vers;
  bool m_versBanque = false;
  DeuxMonnaies m_montant;
  u32 m_ligne = 0;  ///< of the half written last
};

ResultatVirement EnregistrementVirement::Execute() {
  ResultatVirement r;
  static_cast<ResultatSaisie&>(r) = Controle();
  if (!r) return r;
  const auto echec = [&](const ResultatSaisie& refus) {
    ResultatVirement rendu;
    static_cast<ResultatSaisie&>(rendu) = refus;
    return rendu;
  };
  QVAPI& magasin = m_app.Magasin;
  QVAPI::Unite unite(magasin);
  r.depense = Ajoute(JournalDepenses, m_de, magasin.GetCompteVireFrom(), PaiementAutre);
  if (!r.depense) return echec(EchecMagasin(m_app));
  const bool cheque = m_versBanque && m_saisie.paiement == PaiementCheque;
  r.recette =
      Ajoute(JournalRecettes, m_vers, magasin.GetCompteVireTo(), cheque ? PaiementCheque : PaiementAutre);
  if (!r.recette) return echec(EchecMagasin(m_app));
  if (!unite.Valide()) return echec(RefusMagasin(m_app));
  r.mouvement = r.recette;
  r.ligne = m_ligne;
  return r;
}

ResultatSaisie EnregistrementVirement::Controle() {
  if (m_app.PathExercice.empty()) return RefuseDit(m_app, ErrAucunExercice);
  ResultatSaisie r = m_livres.Ouvre(m_app);
  if (r && !DansExercice(m_app, m_saisie.date)) r = RefuseDit(m_app, ErrDateVirement, "date");
  if (r) r = ControleComptes();
  if (r) r = ControleFranc(m_app, m_saisie.euro, m_saisie.date);
  if (r) r = ControleSomme();
  if (r && m_app.Reglages.IsExerciceCloture()) r = RefuseDit(m_app, ErrExerciceCloture);
  if (r) r = ControleOuverture(m_app);
  return r ? ControleLibelle(m_app, m_saisie.libelle) : r;
}

ResultatSaisie EnregistrementVirement::ControleComptes() {
  Plan plan;
  const auto lit = [&](const std::string& compte) {
    return LitCompte(m_app, compte, plan) && plan.Type == Tresorerie;
  };
  if (!lit(m_saisie.de)) return RefuseDit(m_app, ErrTresorerieOrigine, "de");
  m_de = LitTexte(plan.Compte);
  if (!lit(m_saisie.vers)) return RefuseDit(m_app, ErrTresorerieDestination, "vers");
  m_vers = LitTexte(plan.Compte);
  m_versBanque = plan.TypeTresorerie != 0;
  return m_de == m_vers ? RefuseDit(m_app, ErrTresoreriesIdentiques, "vers") : ResultatSaisie{};
}

ResultatSaisie EnregistrementVirement::ControleSomme() {
  if (const ResultatSaisie r = ControleMontant(m_app, "montant", m_saisie.montant); !r) return r;
  m_montant = EnDeuxMonnaies(m_saisie.euro, m_app.Magasin.GetTauxEuro(m_saisie.date),
                             MontantDeChamp(m_saisie.montant));
  if (m_montant.franc > 0 && m_montant.euro > 0) return {};
  return RefuseDit(m_app, ErrMontantVirement, "montant");
}

u32 EnregistrementVirement::Ajoute(i16 journal, const std::string& tresorerie, const std::string& compte,
                                   i16 paiement) {
  QVAPI& magasin = m_app.Magasin;
  EcrSimple rec;
  std::memset(&rec, 0, sizeof rec);
  rec.Journal = journal;
  rec.Genre = GenreSimple;
  rec.Ligne = m_ligne =
      magasin.GetFreeJournalLine(m_app.PathExercice, static_cast<u16>(journal), tresorerie, m_saisie.date);
  if (m_ligne == 0) return 0;
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

ResultatSaisie ControleVirement(CFenlorApp& app) {
  LivresOuverts livres;
  const ResultatSaisie r = ControleExercice(app, livres);
  return r ? ControleOuverture(app) : r;
}

ResultatVirement EnregistreVirement(CFenlorApp& app, const SaisieVirement& saisie) {
  return EnregistrementVirement(app, saisie).Execute();
}

}  // namespace fenlor
