#include "journal/traitements.h"

#include <algorithm>
#include <unordered_set>

#include "core/btfiles.h"
#include "core/erreurs.h"
#include "core/textes.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 CleJournalDate = 0, CleDate = 3, CleMouvement = 4;
/// Entries of one unit of work: a year costs few syncs, and a stop loses nothing.
constexpr std::size_t tailleLot = 500;
constexpr unsigned dernierMois = 12;

/// The entry's lines in place, while `suite` answers true. It must not write.
template <class Suite>
bool ParcourtEcriture(CFenlorApp& app, u32 mouvement, Suite suite) {
  const auto cle = static_cast<u16>(DefinitionFichierNumero(FichierJournal)->premiereCle + CleMouvement);
  const auto borne = [](u32 numero) { return MakeJournalKey5(numero, 0, 0, 0).substr(0, 10); };
  return app.Magasin.QVParcoursCle(
      cle, borne(mouvement), borne(mouvement + 1),
      [&](Position, const void* rec) { return suite(*static_cast<const Line*>(rec)); });
}

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
  TraitementBrouillard(CFenlorApp& app, const DemandeValidation& demande) : m_app(app), m_demande(demande) {}

  ResultatLot Execute();

 private:
  bool Rassemble();
  bool Traite(u32 mouvement);
  bool Ecrit(u32 mouvement);

  CFenlorApp& m_app;
  const DemandeValidation& m_demande;
  LivresOuverts m_livres;
  std::vector<EntreeLot> m_entrees;
  u32 m_parcourues = 0;
  ResultatLot m_resultat;
};

ResultatLot TraitementBrouillard::Execute() {
  if (m_app.PathExercice.empty()) {
    m_resultat.erreur = RefuseDit(m_app, ErrAucunExercice).erreur;
    return m_resultat;
  }
  const Progression progression(m_app.Boite, Texte(TitreValidation), Texte(TexteValidation), true, 0);
  m_resultat.erreur = m_livres.Ouvre(m_app).erreur;
  if (m_resultat.erreur) return m_resultat;
  if (!Rassemble()) {
    m_resultat.erreur = RefusMagasin(m_app).erreur;
    return m_resultat;
  }
  m_app.Boite.SetMax(std::max(m_parcourues, 1u));
  for (std::size_t i = 0; i < m_entrees.size() && !m_resultat.arrete;) {
    QVAPI::Unite unite(m_app.Magasin);
    const u32 avant = m_resultat.ecritures;
    for (const std::size_t fin = std::min(m_entrees.size(), i + tailleLot); i < fin; ++i) {
      if (m_app.Boite.IsAborted()) {
        m_resultat.arrete = true;
        break;
      }
      if (!Traite(m_entrees[i].mouvement)) {
        m_resultat.erreur = ErrMagasin;
        break;
      }
      m_app.Boite.SetPos(m_entrees[i].place);
    }
    if (!m_resultat.erreur && !unite.Valide()) m_resultat.erreur = RefusMagasin(m_app).erreur;
    if (m_resultat.erreur) {
      m_resultat.ecritures = avant;
      return m_resultat;
    }
  }
  if (!m_resultat.arrete) m_app.Boite.SetPos(m_parcourues);
  return m_resultat;
}

bool TraitementBrouillard::Rassemble() {
  const CLines lignes(m_app, m_app.PathExercice);
  const u32 cle = m_demande.journal == 0 ? CleDate : CleJournalDate;
  const std::string prefixe = m_demande.journal == 0 ? std::string() : std::to_string(m_demande.journal);
  std::unordered_set<u32> vues;
  return m_app.Magasin.QVParcoursCle(static_cast<u16>(lignes.NumCle + cle), prefixe + StrSDate(m_demande.du),
                                     prefixe + StrSDate(m_demande.au) + '\xFF',
                                     [&](Position, const void* rec) {
                                       const Line& ligne = *static_cast<const Line*>(rec);
                                       ++m_parcourues;
                                       if (!PasseMarques(m_demande, ligne) || !PasseMontant(m_demande, ligne))
                                         return true;
                                       ++m_resultat.lignes;
                                       if (vues.insert(+ligne.Mouvement).second)
                                         m_entrees.push_back({ligne.Mouvement, m_parcourues});
                                       return true;
                                     });
}

bool TraitementBrouillard::Traite(u32 mouvement) {
  bool aChanger = false;
  const bool lue = ParcourtEcriture(m_app, mouvement, [&](const Line& ligne) {
    aChanger = AChanger(m_demande.action, ligne);
    return !aChanger;
  });
  if (!lue) return static_cast<bool>(RefusMagasin(m_app));
  if (!aChanger) return true;
  if (!Ecrit(mouvement)) return false;
  ++m_resultat.ecritures;
  return true;
}

bool TraitementBrouillard::Ecrit(u32 mouvement) {
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

ResultatSaisie LitADeplacer(CFenlorApp& app, LivresOuverts& livres, u32 mouvement, Mouvement& entete) {
  if (const ResultatSaisie r = ControleExercice(app, livres); !r) return r;
  entete = {};
  if (!app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete))
    return RefuseDit(app, ErrEcritureInconnue, "mouvement", {std::to_string(mouvement)});
  return entete.LienId ? RefuseDit(app, ErrEcritureQuorbane, "mouvement") : ResultatSaisie{};
}

}  // namespace

ResultatLot TraiteBrouillard(CFenlorApp& app, const DemandeValidation& demande) {
  return TraitementBrouillard(app, demande).Execute();
}

ResultatSaisie RenumeroteEcritures(CFenlorApp& app, const DemandeListe& demande) {
  if (app.PathExercice.empty()) return RefuseDit(app, ErrAucunExercice);
  DemandeListe entiere;
  entiere.journal = demande.journal;
  entiere.mois = demande.mois;
  entiere.mode = ListeToutes;
  MoisJournal mois, toutes;
  if (!ListeMois(app, demande, mois) || !ListeMois(app, entiere, toutes)) return EchecMagasin(app);
  const std::size_t cachees = toutes.entrees.size() - mois.entrees.size();
  const ResultatSaisie reponse =
      cachees == 0 ? Demande(app, BoutonsOuiNon | IconeQuestion, RepOui, QuestionRenumerotation)
                   : Demande(app, BoutonsNonOuiAnnuler | IconeAttention, RepOui, QuestionRenumeroterPartie,
                             "", {std::to_string(cachees)});
  if (!reponse) return reponse;
  const Progression progression(app.Boite, Texte(TitreApplication), Texte(TexteRenumerotation), false,
                                static_cast<u32>(2 * mois.entrees.size()));
  LivresOuverts livres;
  if (const ResultatSaisie r = livres.Ouvre(app); !r) return r;
  QVAPI::Unite unite(app.Magasin);
  u32 numero = 0;
  for (const auto& [mouvement, lignes] : mois.entrees) {
    Mouvement entete{};
    app.Boite.Step();
    if (app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete)) {
      entete.Ligne = ++numero;
      if (!app.Magasin.UpdateMouvements(app.PathExercice, mouvement, entete)) return EchecMagasin(app);
    }
    app.Boite.Step();
  }
  ResultatSaisie r = unite.Valide() ? ResultatSaisie{} : RefusMagasin(app);
  if (r) r.ligne = numero;
  return r;
}

ResultatSaisie ControleDeplacement(CFenlorApp& app, u32 mouvement, unsigned& mois) {
  LivresOuverts livres;
  Mouvement entete;
  const ResultatSaisie r = LitADeplacer(app, livres, mouvement, entete);
  if (r) mois = Mois(entete.Date);
  return r;
}

ResultatSaisie DeplaceEcriture(CFenlorApp& app, u32 mouvement, unsigned mois) {
  LivresOuverts livres;
  Mouvement entete;
  if (const ResultatSaisie r = LitADeplacer(app, livres, mouvement, entete); !r) return r;
  if (mois < 1 || mois > dernierMois)
    return RefuseDit(app, ErrChampInvalide, "mois", {"mois", "de 1 à 12"_w});
  ResultatSaisie r;
  r.mouvement = mouvement;
  r.ligne = entete.Ligne;
  if (Mois(entete.Date) == mois) return r;
  entete.Date = FaitDate(Jour(entete.Date), mois, Annee(entete.Date));
  if (const ResultatSaisie n = NumeroDe(app, entete.Journal, 0, entete.Date, {}, r.ligne); !n) return n;
  entete.Ligne = r.ligne;
  return app.Magasin.UpdateMouvements(app.PathExercice, mouvement, entete) ? r : EchecMagasin(app);
}

bool PointeEcritures(CFenlorApp& app, const std::vector<u32>& mouvements) {
  LivresOuverts livres;
  if (!livres.Ouvre(app)) return false;
  QVAPI::Unite unite(app.Magasin);
  Mouvement entete{};
  for (const u32 mouvement : mouvements)
    if (app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete) && !PointeEcriture(app, mouvement))
      return false;
  return unite.Valide() || bool{RefusMagasin(app)};
}

bool DeplaceEcritures(CFenlorApp& app, const std::vector<u32>& mouvements, unsigned mois) {
  LivresOuverts livres;
  if (!livres.Ouvre(app)) return false;
  std::size_t liees = 0;  // told behind the unit: no message waits for an answer inside one
  {
    QVAPI::Unite unite(app.Magasin);
    for (const u32 mouvement : mouvements) {
      Mouvement entete{};
      if (!app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete)) continue;
      if (entete.LienId != 0)
        ++liees;
      else if (!DeplaceEcriture(app, mouvement, mois))
        return false;
    }
    if (!unite.Valide()) return bool{RefusMagasin(app)};
  }
  Serie serie(app, mouvements.size());
  for (std::size_t i = 0; i < liees; ++i) serie.Refus(ErrEcritureQuorbane);
  return true;
}

}  // namespace fenlor
