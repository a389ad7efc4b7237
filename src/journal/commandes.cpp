#include <cstring>

#include "core/erreurs.h"
#include "core/texte.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

ResultatSaisie Fait(const Mouvement& entete) {
  ResultatSaisie r;
  r.mouvement = entete.Mouvement;
  r.ligne = entete.Ligne;
  return r;
}

ResultatSaisie LitEntete(CFenlorApp& app, u32 mouvement, Mouvement& entete) {
  std::memset(&entete, 0, sizeof entete);
  if (app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete)) return {};
  return RefuseDit(app, ErrEcritureInconnue, "mouvement", {std::to_string(mouvement)});
}

/// Beginning of a command that does not mind a closed exercice.
ResultatSaisie Commence(CFenlorApp& app, LivresOuverts& livres, u32 mouvement, Mouvement& entete) {
  if (app.PathExercice.empty()) return RefuseDit(app, ErrAucunExercice);
  const ResultatSaisie r = livres.Ouvre(app);
  return r ? LitEntete(app, mouvement, entete) : r;
}

std::string MotDuJournal(const Mouvement& entete) {
  return Texte(entete.Journal == JournalRecettes ? MotCredit : MotDebit);
}

/// In the currency of the exercice.
std::string MontantAffiche(CFenlorApp& app, f64 franc, f64 euro) {
  return app.Reglages.IsEuro() ? FormatEuro(euro) : FormatFranc(franc);
}

// ---------------------------------------------------------------- Deleting

ResultatSaisie SupprimeLibre(CFenlorApp& app, Serie& serie, const Mouvement& entete) {
  QVAPI& magasin = app.Magasin;
  const bool rapprochee = magasin.IsRappLineInMouvements(entete.Mouvement);
  const TexteFixe& question = rapprochee ? QuestionSuppressionRapprochee : QuestionSuppression;
  const ResultatSaisie reponse = serie.Demande(BoutonsOuiNon | (rapprochee ? IconeAttention : IconeQuestion),
                                               question, question, {LitTexte(entete.Libelle)});
  if (!reponse) return reponse;
  bool retiree = false;
  switch (entete.Genre) {
    case GenreSimple:
      retiree = magasin.RemoveEcrSimple(app.PathExercice, entete.Mouvement);
      break;
    case GenreStandard:
      retiree = magasin.RemoveEcrStandard(app.PathExercice, entete.Mouvement);
      break;
    default:
      retiree = magasin.RemoveMouvements(app.PathExercice, entete.Mouvement);
  }
  return retiree ? Fait(entete) : EchecMagasin(app);
}

/// The parent application's file that an entry is linked to, open while it lives.
class FichierLie {
 public:
  FichierLie(QVAPI& magasin, const Mouvement& entete)
      : m_magasin(magasin),
        m_recette((entete.LienB >> 16) != 0),
        m_ouverture(magasin, m_recette ? FichierRecettes : FichierDepenses) {}

  explicit operator bool() const { return static_cast<bool>(m_ouverture); }
  bool EstRecette() const { return m_recette; }

  Position Trouve(const Mouvement& entete) {
    if (m_recette) {
      RecetteLiee rec{};
      rec.LienPoste = entete.LienPoste;
      rec.LienA = entete.LienA;
      rec.LienB = entete.LienB;
      return m_magasin.ReadRecettes(rec, 2);
    }
    DepenseLiee rec{};
    rec.LienA = entete.LienA;
    rec.LienB = entete.LienB;
    PoseTexte(rec.Tiers, LitTexte(entete.Tiers));
    return m_magasin.ReadDepenses(rec, 0);
  }
  bool Supprime(Position position) {
    return m_recette ? m_magasin.DeleteRecettes(position) : m_magasin.DeleteDepenses(position);
  }

 private:
  QVAPI& m_magasin;
  bool m_recette;
  Ouverture m_ouverture;
};

ResultatSaisie SupprimeLiee(CFenlorApp& app, Serie& serie, const Mouvement& entete, bool demander) {
  FichierLie fichier(app.Magasin, entete);
  if (!fichier) return RefusMagasin(app);
  const Position position = fichier.Trouve(entete);
  if (position == 0) return {ErrSuppressionLiee, "mouvement", -1, Texte(ErrSuppressionLiee)};
  if (demander) {
    const bool feuille = app.Edition == 1 || app.Edition == 4;
    const TexteFixe& question = !fichier.EstRecette() ? QuestionDepenseQuorbane
                                : feuille             ? QuestionRecetteFeuille
                                                      : QuestionRecetteQuorbane;
    const ResultatSaisie reponse =
        serie.Demande(BoutonsOuiNon | IconeAttention, question, question, {LitTexte(entete.Libelle)});
    if (!reponse) return reponse;
  }
  return fichier.Supprime(position) ? Fait(entete) : RefusMagasin(app);
}

// -------------------------------------------------------------- Validating

/// What the question of a validation shows of a simple or standard entry.
struct Apercu {
  std::string tresorerie;  ///< code of the account, simple entry alone
  std::string montant;
};

bool LitApercu(CFenlorApp& app, const Mouvement& entete, Apercu& apercu) {
  QVAPI& magasin = app.Magasin;
  if (entete.Genre == GenreSimple) {
    EcrSimple rec{};
    if (!magasin.ReadEcrSimple(app.PathExercice, entete.Mouvement, rec)) return false;
    Plan plan;
    if (LitCompte(app, LitTexte(rec.CompteTresorerie), plan)) apercu.tresorerie = LitTexte(plan.Code);
    apercu.montant = MontantAffiche(app, rec.MontantFranc, rec.MontantEuro);
    return true;
  }
  EcrStandard rec{};
  if (!magasin.ReadEcrStandard(app.PathExercice, entete.Mouvement, rec)) return false;
  apercu.montant = MontantAffiche(app, rec.MontantFranc, rec.MontantEuro);
  magasin.LibereLignes(rec);
  return true;
}

ResultatSaisie DemandeValidation(CFenlorApp& app, Serie& serie, const Mouvement& entete) {
  constexpr unsigned style = BoutonsOuiNon | IconeQuestion, sorte = QuestionValiderSimple;
  const std::string date = StrDate(entete.Date);
  const std::string libelle = LitTexte(entete.Libelle);
  if (entete.Genre == GenreOD) return serie.Demande(style, sorte, QuestionValiderOD, {date, libelle});
  Apercu apercu;
  if (!LitApercu(app, entete, apercu)) return RefusMagasin(app);
  const std::string mot = MotDuJournal(entete);
  if (entete.Genre == GenreStandard)
    return serie.Demande(style, sorte, QuestionValiderStandard, {date, libelle, mot, apercu.montant});
  return serie.Demande(style, sorte, QuestionValiderSimple,
                       {apercu.tresorerie, date, libelle, mot, apercu.montant});
}

bool Valide(QVAPI& magasin, const std::string& exercice, const Mouvement& entete) {
  switch (entete.Genre) {
    case GenreSimple:
      return magasin.ValidEcrSimple(exercice, entete.Mouvement, 1);
    case GenreStandard:
      return magasin.ValidEcrStandard(exercice, entete.Mouvement, 1);
    default:
      return magasin.ValidOpDiverses(exercice, entete.Mouvement, 1);
  }
}

// ------------------------------------------------------------- Reconciling

struct LigneComptee {
  Position position;
  Line ligne;
};

/// Lines on a bank account, on any treasury account with "Especes".
bool LitLignesComptees(CFenlorApp& app, u32 mouvement, std::vector<LigneComptee>& lignes) {
  const bool especes = app.Reglages.IsRapprochementEspeces();
  for (const Position position : app.Magasin.LignesMouvement(app.PathExercice, mouvement)) {
    LigneComptee lue{position, {}};
    if (!app.Magasin.ReadLines(app.PathExercice, position, lue.ligne)) return false;
    Plan plan;
    if (!LitCompte(app, LitTexte(lue.ligne.Compte), plan) || plan.Type != Tresorerie) continue;
    if (plan.TypeTresorerie != 0 || especes) lignes.push_back(lue);
  }
  return true;
}

void MarqueRapprochee(Line& ligne, Date aujourdhui) {
  ligne.Rapprochee = 1;
  PoseTexte(ligne.RappCompte, LitTexte(ligne.Compte));
  PoseTexte(ligne.RappLibelle, LitTexte(ligne.Libelle));
  ligne.RappDate = ligne.Date;
  ligne.RappDateValeur = aujourdhui;
  ligne.RappFranc = ligne.MontantFranc;
  ligne.RappEuro = ligne.MontantEuro;
  ligne.RappSens = ligne.Sens;
}

void OteRapprochement(Line& ligne) {
  ligne.Rapprochee = 0;
  PoseTexte(ligne.RappCompte, "");
  PoseTexte(ligne.RappLibelle, "");
  ligne.RappDate = 0;
  ligne.RappDateValeur = 0;
  ligne.RappFranc = 0;
  ligne.RappEuro = 0;
  ligne.RappSens = 0;
}

// --------------------------------------------------- Each command on one entry

ResultatSaisie SupprimeUne(CFenlorApp& app, Serie& serie, u32 mouvement) {
  Mouvement entete;
  if (const ResultatSaisie r = LitEntete(app, mouvement, entete); !r) return r;
  const std::string libelle = LitTexte(entete.Libelle);
  if (entete.Genre == GenreOD) {
    if (entete.LienId) return SupprimeLiee(app, serie, entete, false);
    if (entete.Validee) return serie.Refus(ErrSuppressionODValidee, {libelle});
    return SupprimeLibre(app, serie, entete);
  }
  if (entete.Validee) return serie.Refus(ErrSuppressionValidee, {libelle});
  if (entete.LienId == 0) return SupprimeLibre(app, serie, entete);
  if (entete.LienApplication != static_cast<i16>(app.Edition)) return serie.Refus(ErrAutreApplication);
  return SupprimeLiee(app, serie, entete, true);
}

ResultatSaisie ValideUne(CFenlorApp& app, Serie& serie, u32 mouvement, bool valide) {
  LivresOuverts livres;
  Mouvement entete;
  if (const ResultatSaisie r = Commence(app, livres, mouvement, entete); !r) return r;
  if ((entete.Validee != 0) == valide) return Fait(entete);
  const ResultatSaisie reponse =
      valide ? DemandeValidation(app, serie, entete)
             : serie.Demande(BoutonsOuiNon | IconeQuestion, QuestionInvalider, QuestionInvalider);
  if (!reponse) return reponse;
  const bool fait = valide ? Valide(app.Magasin, app.PathExercice, entete)
                           : app.Magasin.ValidMouvements(app.PathExercice, mouvement, 0);
  return fait ? Fait(entete) : EchecMagasin(app);
}

ResultatSaisie RapprocheUne(CFenlorApp& app, Serie& serie, u32 mouvement, bool rapproche) {
  LivresOuverts livres;
  Mouvement entete;
  if (const ResultatSaisie r = Commence(app, livres, mouvement, entete); !r) return r;
  std::vector<LigneComptee> lignes;
  if (!LitLignesComptees(app, mouvement, lignes)) return RefusMagasin(app);
  if (lignes.empty()) return serie.Refus(ErrSansEcriture);

  f64 franc = 0, euro = 0;
  bool aChanger = false;
  for (const auto& [position, ligne] : lignes) {
    franc += ligne.MontantFranc;
    euro += ligne.MontantEuro;
    aChanger = aChanger || (ligne.Rapprochee != 0) != rapproche;
  }
  if (!aChanger) return Fait(entete);
  const TexteFixe& question = rapproche ? QuestionRapprocher : QuestionDerapprocher;
  const ResultatSaisie reponse = serie.Demande(BoutonsOuiNon | IconeQuestion, question, question,
                                               {StrDate(entete.Date), LitTexte(entete.Libelle),
                                                MotDuJournal(entete), MontantAffiche(app, franc, euro)});
  if (!reponse) return reponse;

  QVAPI::Unite unite(app.Magasin);
  for (auto& [position, ligne] : lignes) {
    if (rapproche)
      MarqueRapprochee(ligne, app.Magasin.Today());
    else
      OteRapprochement(ligne);
    if (!app.Magasin.UpdateLines(app.PathExercice, position, ligne)) return EchecMagasin(app);
  }
  return unite.Valide() ? Fait(entete) : RefusMagasin(app);
}

/// Runs `action` over the entries that are still there. The number of those it was done to; ends at a
/// failure of the store, which has been told.
template <class Action>
u32 PourChaque(CFenlorApp& app, const std::vector<u32>& mouvements, Action action) {
  LivresOuverts livres;
  if (app.PathExercice.empty() || !livres.Ouvre(app)) return 0;
  Serie serie(app, mouvements.size());
  u32 faites = 0;
  for (const u32 mouvement : mouvements) {
    if (!serie.Suivante()) break;
    Mouvement entete{};
    if (!app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete)) continue;
    const ResultatSaisie r = action(serie, mouvement);
    if (r.erreur == ErrMagasin) break;
    faites += r ? 1 : 0;
  }
  return faites;
}

}  // namespace

ResultatSaisie SupprimeEcriture(CFenlorApp& app, u32 mouvement) {
  LivresOuverts livres;
  if (const ResultatSaisie r = ControleExercice(app, livres); !r) return r;
  Serie serie(app, 1);
  return SupprimeUne(app, serie, mouvement);
}

u32 SupprimeEcritures(CFenlorApp& app, const std::vector<u32>& mouvements) {
  LivresOuverts livres;
  if (!ControleExercice(app, livres)) return 0;
  return PourChaque(app, mouvements,
                    [&](Serie& serie, u32 mouvement) { return SupprimeUne(app, serie, mouvement); });
}

ResultatSaisie ValideEcriture(CFenlorApp& app, u32 mouvement, bool valide) {
  Serie serie(app, 1);
  return ValideUne(app, serie, mouvement, valide);
}

u32 ValideEcritures(CFenlorApp& app, const std::vector<u32>& mouvements) {
  return PourChaque(app, mouvements,
                    [&](Serie& serie, u32 mouvement) { return ValideUne(app, serie, mouvement, true); });
}

ResultatSaisie PointeEcriture(CFenlorApp& app, u32 mouvement) {
  LivresOuverts livres;
  Mouvement entete;
  if (const ResultatSaisie r = Commence(app, livres, mouvement, entete); !r) return r;
  return app.Magasin.ReverseMarkMouvements(app.PathExercice, mouvement) ? Fait(entete) : EchecMagasin(app);
}

ResultatSaisie RapprocheEcriture(CFenlorApp& app, u32 mouvement, bool rapproche) {
  Serie serie(app, 1);
  return RapprocheUne(app, serie, mouvement, rapproche);
}

u32 RapprocheEcritures(CFenlorApp& app, const std::vector<u32>& mouvements) {
  return PourChaque(app, mouvements, [&](Serie& serie, u32 mouvement) {
    const LignesRapprochables lignes = CompteRapprochables(app, mouvement);
    return lignes.nombre == 0 ? ResultatSaisie{}
                              : RapprocheUne(app, serie, mouvement, lignes.rapprochees < lignes.nombre);
  });
}

LignesRapprochables CompteRapprochables(CFenlorApp& app, u32 mouvement) {
  LivresOuverts livres;
  std::vector<LigneComptee> lignes;
  LignesRapprochables compte;
  if (app.PathExercice.empty() || !livres.Ouvre(app) || !LitLignesComptees(app, mouvement, lignes))
    return compte;
  for (const LigneComptee& lue : lignes) {
    ++compte.nombre;
    compte.rapprochees += lue.ligne.Rapprochee != 0;
  }
  return compte;
}

}  // namespace fenlor
