#include "journal/traitements.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <unordered_set>

#include "core/btfiles.h"
#include "core/textes.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Entries of one unit of work: a year costs few syncs, and a stop loses nothing.
constexpr std::size_t tailleLot = 500;
constexpr unsigned dernierMois = 12;

// ------------------------------------------------------ Validation of the drafts

/// An entry of which a line passed, and how many lines were walked up to there.
struct EntreeLot {
  u32 mouvement;
  u32 place;
};

bool PasseMarques(const DemandeValidation& d, const Line& ligne) {
  return d.toutes || (ligne.Pointee && d.pointees) || (ligne.Remise && d.remises) ||
         (ligne.Rapprochee && d.rapprochees);
}

bool PasseMontant(const DemandeValidation& d, const Line& ligne) {
  if (d.tousMontants || (d.montantMin == 0 && d.montantMax == 0)) return true;
  const f64 montant = d.euro ? ligne.MontantEuro : ligne.MontantFranc;
  return d.montantMin <= montant && montant <= d.montantMax;
}

/// What the action has to change in a line.
bool AChanger(ActionBrouillard action, const Line& ligne) {
  switch (action) {
    case ActionBrouillard::Valider:
      return !ligne.Validee;
    case ActionBrouillard::Devalider:
      return ligne.Validee != 0;
    default:
      return ligne.LienId != 0 || ligne.Reserve134 != 0;
  }
}

class TraitementBrouillard {
 public:
  TraitementBrouillard(CFenlorApp& app, const DemandeValidation& demande, BilanLot& bilan)
      : m_app(app), m_demande(demande), m_bilan(bilan) {}

  Refus Execute();

 private:
  bool Rassemble();
  Refus TraiteLot(std::size_t& place);
  Refus Traite(u32 mouvement);
  bool Ecrit(u32 mouvement);

  CFenlorApp& m_app;
  const DemandeValidation& m_demande;
  BilanLot& m_bilan;
  LivresOuverts m_livres;
  std::vector<EntreeLot> m_entrees;
  u32 m_parcourues = 0;
};

Refus TraitementBrouillard::Execute() {
  m_bilan = {};
  if (const Refus refus = ControleExercice(m_app, m_livres)) return refus;
  const Progression progression(m_app.Boite, Texte(TitreValidation), Texte(TexteValidation), true, 0);
  if (!Rassemble()) return m_app.EchecMagasin();
  m_app.Boite.SetMax(std::max(m_parcourues, 1u));
  for (std::size_t place = 0; place < m_entrees.size() && !m_bilan.arrete;) {
    const u32 avant = m_bilan.ecritures;
    if (const Refus refus = TraiteLot(place)) {
      m_bilan.ecritures = avant;
      return refus;
    }
  }
  if (!m_bilan.arrete) m_app.Boite.SetPos(m_parcourues);
  return {};
}

/// The entries of one unit of work, from `place` on.
Refus TraitementBrouillard::TraiteLot(std::size_t& place) {
  assert(place < m_entrees.size());
  QVAPI::Unite unite(m_app.Magasin);
  for (const std::size_t fin = std::min(m_entrees.size(), place + tailleLot); place < fin; ++place) {
    m_bilan.arrete = m_app.Boite.IsAborted();
    if (m_bilan.arrete) break;
    if (const Refus refus = Traite(m_entrees[place].mouvement)) return refus;
    m_app.Boite.SetPos(m_entrees[place].place);
  }
  return unite.Valide() ? Refus{} : m_app.EchecMagasin();
}

bool TraitementBrouillard::Rassemble() {
  assert(m_entrees.empty() && m_demande.journal >= 0 && m_demande.journal <= JournalOD);
  const CLines lignes(m_app, m_app.PathExercice);
  const u32 cle = m_demande.journal == 0 ? IndiceDateCompte : IndiceJournalDate;
  const std::string prefixe = m_demande.journal == 0 ? std::string() : std::to_string(m_demande.journal);
  std::unordered_set<u32> vues;
  return m_app.Magasin.QVParcoursCle(static_cast<u16>(lignes.NumCle + cle), prefixe + StrSDate(m_demande.du),
                                     prefixe + StrSDate(m_demande.au) + '\xFF',
                                     [&](Position, const void* rec) {
                                       const Line& ligne = *static_cast<const Line*>(rec);
                                       ++m_parcourues;
                                       if (!PasseMarques(m_demande, ligne) || !PasseMontant(m_demande, ligne))
                                         return true;
                                       ++m_bilan.lignes;
                                       if (vues.insert(+ligne.Mouvement).second)
                                         m_entrees.push_back({ligne.Mouvement, m_parcourues});
                                       return true;
                                     });
}

Refus TraitementBrouillard::Traite(u32 mouvement) {
  bool aChanger = false;
  const bool lue = ParcoursEcriture(m_app, mouvement, [&](const Line& ligne) {
    aChanger = AChanger(m_demande.action, ligne);
    return !aChanger;
  });
  if (!lue) return m_app.EchecMagasin();
  if (!aChanger) return {};
  if (!Ecrit(mouvement)) return m_app.EchecDit();
  ++m_bilan.ecritures;
  return {};
}

bool TraitementBrouillard::Ecrit(u32 mouvement) {
  assert(m_app.Magasin.QVEnUnite());
  QVAPI& magasin = m_app.Magasin;
  const std::string& exercice = m_app.PathExercice;
  if (m_demande.action != ActionBrouillard::Delier)
    return magasin.ValidMouvements(exercice, mouvement, m_demande.action == ActionBrouillard::Valider);
  Mouvement entete{};
  if (!magasin.ReadMouvements(exercice, mouvement, entete)) return true;
  entete.LienId = 0;
  entete.Reserve134 = 0;
  return magasin.UpdateMouvements(exercice, mouvement, entete);
}

// ---------------------------------------------------------------- Another month

Refus LitADeplacer(CFenlorApp& app, LivresOuverts& livres, u32 mouvement, Mouvement& entete) {
  if (const Refus r = ControleExercice(app, livres)) return r;
  if (const Refus r = LitEntete(app, mouvement, entete)) return r;
  return entete.LienId ? Refus(ErrEcritureQuorbane, "mouvement") : Refus{};
}

// -------------------------------------------------------------- Many of a window

/// Does it to the entries that are still there, as one unit of work, which the first refusal ends; one of the
/// number `passable` only leaves its entry out.
Refus PourChacune(CFenlorApp& app, const std::vector<u32>& mouvements, const std::function<Refus(u32)>& acte,
                  unsigned passable = 0) {
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  QVAPI::Unite unite(app.Magasin);
  Serie serie(app, mouvements.size());
  for (const u32 mouvement : mouvements) {
    Mouvement entete{};
    if (!app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete)) continue;
    const Refus refus = acte(mouvement);
    if (refus && refus.numero != passable) return refus;
    serie.Note(refus);
  }
  return unite.Valide() ? serie.Issue() : app.EchecMagasin();
}

}  // namespace

Refus TraiteBrouillard(CFenlorApp& app, const DemandeValidation& demande, BilanLot& bilan) {
  return TraitementBrouillard(app, demande, bilan).Execute();
}

Refus RenumeroteEcritures(CFenlorApp& app, const DemandeListe& demande, u32& nombre) {
  LivresOuverts livres;
  if (const Refus r = ControleExercice(app, livres)) return r;
  DemandeListe entiere;
  entiere.journal = demande.journal;
  entiere.mois = demande.mois;
  entiere.mode = ListeToutes;
  MoisJournal mois, toutes;
  if (const Refus refus = ListeMois(app, demande, mois)) return refus;
  if (const Refus refus = ListeMois(app, entiere, toutes)) return refus;
  const std::size_t cachees = toutes.entrees.size() - mois.entrees.size();
  const Refus reponse = cachees == 0
                            ? app.Demande(BoutonsOuiNon | IconeQuestion, RepOui, QuestionRenumerotation)
                            : app.Demande(BoutonsNonOuiAnnuler | IconeAttention, RepOui,
                                          QuestionRenumeroterPartie, "", {std::to_string(cachees)});
  if (reponse) return reponse;
  const Progression progression(app.Boite, Texte(TitreApplication), Texte(TexteRenumerotation), false,
                                static_cast<u32>(2 * mois.entrees.size()));
  QVAPI::Unite unite(app.Magasin);
  nombre = 0;
  for (const EntreeListe& entree : mois.entrees) {
    const u32 mouvement = entree.mouvement;
    Mouvement entete{};
    app.Boite.Step();
    if (app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete)) {
      entete.Ligne = ++nombre;
      if (!app.Magasin.UpdateMouvements(app.PathExercice, mouvement, entete)) return app.EchecDit();
    }
    app.Boite.Step();
  }
  return unite.Valide() ? Refus{} : app.EchecMagasin();
}

Refus ControleDeplacement(CFenlorApp& app, u32 mouvement, unsigned& mois) {
  LivresOuverts livres;
  Mouvement entete;
  const Refus r = LitADeplacer(app, livres, mouvement, entete);
  if (!r) mois = Mois(entete.Date);
  return r;
}

Refus DeplaceEcriture(CFenlorApp& app, u32 mouvement, unsigned mois) {
  LivresOuverts livres;
  Mouvement entete;
  if (const Refus r = LitADeplacer(app, livres, mouvement, entete)) return r;
  if (mois < 1 || mois > dernierMois) return Refus(ErrChampInvalide, "mois", {"mois", "de 1 à 12"_w});
  if (Mois(entete.Date) == mois) return {};
  entete.Date = FaitDate(Jour(entete.Date), mois, Annee(entete.Date));
  assert(Mois(entete.Date) == mois);
  u32 numero = 0;
  if (const Refus r = NumeroDe(app, entete.Journal, 0, entete.Date, {}, numero)) return r;
  entete.Ligne = numero;
  return app.Magasin.UpdateMouvements(app.PathExercice, mouvement, entete) ? Refus{} : app.EchecDit();
}

Refus PointeEcritures(CFenlorApp& app, const std::vector<u32>& mouvements) {
  return PourChacune(app, mouvements, [&](u32 mouvement) { return PointeEcriture(app, mouvement); });
}

Refus DeplaceEcritures(CFenlorApp& app, const std::vector<u32>& mouvements, unsigned mois) {
  return PourChacune(
      app, mouvements, [&](u32 mouvement) { return DeplaceEcriture(app, mouvement, mois); },
      ErrEcritureQuorbane);
}

}  // namespace fenlor
