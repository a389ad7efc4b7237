#include "auto/echeances.h"

#include <cassert>

#include "auto/ecrituresauto.h"
#include "auto/textes.h"
#include "core/erreurs.h"
#include "core/erreursexercice.h"
#include "journal/controles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// One walk, or one run of confirmations: the files are open while it lives.
class Echeances {
 public:
  explicit Echeances(CFenlorApp& app) : m_app(app), m_autos(app) { m_autos.Signale = false; }
  ~Echeances() {
    if (m_change) m_autos.Flush();
  }
  Echeances(const Echeances&) = delete;
  Echeances& operator=(const Echeances&) = delete;

  Refus Ouvre() {
    if (m_app.PathExercice.empty()) return Refus(ErrAucunExercice);
    if (!m_autos) return m_app.EchecMagasin();
    m_calendrier = LitCalendrierAuto(m_app);
    return m_livres.Ouvre(m_app);
  }

  /// Hands each model to `suite`, which says whether it went: its number is read again then.
  template <class Suite>
  void PourChaque(const Suite& suite) {
    std::vector<EcrituresAuto> modeles;
    m_app.Magasin.ListeEcrituresAuto(modeles);
    u32 numero = 0;
    for (EcrituresAuto& modele : modeles) {
      modele.Numero = ++numero;
      if (suite(modele)) --numero;
    }
  }

  /// Enters what an automatic model brings. True: the model went.
  bool Entre(const EcrituresAuto& modele, const ParcoursModele& parcours, BilanEcheances& bilan) {
    std::vector<EcheanceFaite> faites;
    if (const Refus refus = Ecrit(modele, parcours, faites)) {
      bilan.refus.push_back(refus);
      return false;
    }
    bilan.faites.insert(bilan.faites.end(), faites.begin(), faites.end());
    return parcours.epuise;
  }

  void Annonce(const EcrituresAuto& modele, const ParcoursModele& parcours,
               std::vector<EcheanceAnnoncee>& annoncees) {
    Plan plan{};
    LitCompte(m_app, LitTexte(modele.Tresorerie), plan);
    for (const Date date : parcours.annonces)
      annoncees.push_back({modele.Numero, date, LitTexte(modele.Libelle), LitTexte(plan.Code), modele.Genre,
                           modele.SaisieEuro ? modele.MontantEuro : modele.MontantFranc,
                           modele.SaisieEuro != 0});
  }

  ParcoursModele Parcourt(const EcrituresAuto& modele) const { return ParcourtModele(modele, m_calendrier); }

  Refus Confirme1(const EcheanceAnnoncee& echeance, std::vector<EcheanceFaite>& faites, bool& partie);

 private:
  u32 Ajoute(const EcrituresAuto& modele, Date date, Date dateNumero) {
    EcrSimple rec = EcritureDe(modele, m_app.Magasin.GetComptePerso());
    rec.Ligne = m_app.Magasin.GetFreeJournalLine(m_app.PathExercice, static_cast<u16>(rec.Journal),
                                                 LitTexte(modele.Tresorerie), dateNumero);
    rec.Date = date;
    assert(rec.Mouvement == 0 && m_app.Magasin.QVEnUnite());
    return m_app.Magasin.AddEcrSimple(m_app.PathExercice, rec);
  }
  Refus Ecrit(const EcrituresAuto& modele, const ParcoursModele& parcours,
              std::vector<EcheanceFaite>& faites);
  /// The model's step, in the open unit.
  Refus Avance(EcrituresAuto modele, bool supprime) {
    m_change = m_change || supprime;
    m_autos.Rec = modele;
    if (supprime) return m_autos.Delete(modele.Numero) ? Refus() : m_app.EchecMagasin();
    return m_autos.Write() ? Refus() : m_app.EchecMagasin();
  }

  CFenlorApp& m_app;
  CEcrituresAuto m_autos;
  LivresOuverts m_livres;
  CalendrierAuto m_calendrier;
  bool m_change = false;  ///< the list of the settings is behind
};

Refus Echeances::Ecrit(const EcrituresAuto& modele, const ParcoursModele& parcours,
                       std::vector<EcheanceFaite>& faites) {
  assert(parcours.change);
  QVAPI::Unite unite(m_app.Magasin);
  for (const ParcoursModele::Ecriture& ecriture : parcours.ecritures) {
    const u32 mouvement = Ajoute(modele, ecriture.date, ecriture.dateNumero);
    if (mouvement == 0) return m_app.EchecDit();
    faites.push_back({modele.Numero, mouvement, ecriture.date});
  }
  EcrituresAuto suite = parcours.suite;
  suite.Numero = modele.Numero;
  if (Refus refus = Avance(suite, parcours.epuise)) return refus;
  return unite.Valide() ? Refus() : m_app.EchecMagasin();
}

Refus Echeances::Confirme1(const EcheanceAnnoncee& echeance, std::vector<EcheanceFaite>& faites,
                           bool& partie) {
  if (!m_autos.Read(echeance.numero)) return {};
  EcrituresAuto modele = m_autos.Rec;
  QVAPI::Unite unite(m_app.Magasin);
  const u32 mouvement = Ajoute(modele, echeance.date, echeance.date);
  if (mouvement == 0) return m_app.EchecDit();
  partie = !Confirme(modele, m_calendrier.aujourdhui);
  if (Refus refus = Avance(modele, partie)) return refus;
  if (!unite.Valide()) return m_app.EchecMagasin();
  faites.push_back({echeance.numero, mouvement, echeance.date});
  return {};
}

}  // namespace

CalendrierAuto LitCalendrierAuto(CFenlorApp& app) {
  return {app.Magasin.Today(), app.Reglages.GetDebutExercice(), app.Reglages.GetFinExercice(),
          app.Reglages.GetLimiteFranc()};
}

Refus CalculeEcheances(CFenlorApp& app, BilanEcheances& bilan) {
  if (app.PathExercice.empty()) return Refus(ErrAucunExercice);
  const std::string cle = Texte(CleConsultation);
  const Date aujourdhui = app.Magasin.Today();
  if (app.Reglages.IsFige() || GetDate(app.Reglages.LitIniExercice({}, cle)) == aujourdhui) return {};
  {
    Echeances echeances(app);
    if (const Refus refus = echeances.Ouvre()) return refus;
    echeances.PourChaque([&](const EcrituresAuto& modele) {
      const ParcoursModele parcours = echeances.Parcourt(modele);
      echeances.Annonce(modele, parcours, bilan.annoncees);
      if (parcours.refusee)
        bilan.refus.emplace_back(
            ErrEcheanceFranc, "",
            std::initializer_list<std::string>{LitTexte(modele.Libelle), StrDate(parcours.refusee),
                                               StrDate(app.Reglages.GetLimiteFranc())});
      return parcours.change && echeances.Entre(modele, parcours, bilan);
    });
  }
  bilan.parcouru = true;
  if (app.Reglages.EcritIniExercice({}, cle, StrDate(aujourdhui))) return {};
  return Refus(ErrReglages, "",
               {app.Magasin.PathCabinet(), app.Magasin.QVErreurTexte(app.Magasin.QVFileErrorCode())});
}

Refus ListeAnnoncees(CFenlorApp& app, std::vector<EcheanceAnnoncee>& annoncees) {
  annoncees.clear();
  if (app.PathExercice.empty()) return Refus(ErrAucunExercice);
  if (app.Reglages.IsFige()) return {};
  Echeances echeances(app);
  if (const Refus refus = echeances.Ouvre()) return refus;
  echeances.PourChaque([&](const EcrituresAuto& modele) {
    echeances.Annonce(modele, echeances.Parcourt(modele), annoncees);
    return false;
  });
  return {};
}

Refus ConfirmeEcheances(CFenlorApp& app, std::vector<EcheanceAnnoncee>& annoncees,
                        const std::vector<std::size_t>& rangs, BilanEcheances& bilan) {
  if (const Refus r = app.ControleEcriture()) return r;
  Echeances echeances(app);
  if (const Refus refus = echeances.Ouvre()) return refus;
  for (const std::size_t rang : rangs) {
    assert(rang < annoncees.size());
    const u32 numero = annoncees[rang].numero;
    bool partie = false;
    if (numero == 0) continue;
    if (Refus refus = echeances.Confirme1(annoncees[rang], bilan.faites, partie)) {
      refus.rang = static_cast<int>(rang);
      bilan.refus.push_back(std::move(refus));
      continue;
    }
    if (!partie) continue;
    for (EcheanceAnnoncee& autre : annoncees) {
      if (autre.numero == numero)
        autre.numero = 0;
      else if (autre.numero > numero)
        --autre.numero;
    }
  }
  return {};
}

}  // namespace fenlor
