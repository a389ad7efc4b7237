#include "core/erreurs.h"

#include <cassert>

#include "core/texte.h"
#include "core/valeurs.h"
#include "journal/controles.h"
#include "journal/corbeille.h"
#include "journal/textes.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Beginning of a command on one entry.
Refus Commence(CFenlorApp& app, LivresOuverts& livres, u32 mouvement, Mouvement& entete) {
  const Refus r = ControleExercice(app, livres);
  return r ? r : LitEntete(app, mouvement, entete);
}

std::string MotDuJournal(const Mouvement& entete) {
  return Texte(entete.Journal == JournalRecettes ? MotCredit : MotDebit);
}

/// In the currency of the exercice.
std::string MontantAffiche(CFenlorApp& app, f64 franc, f64 euro) {
  return app.Reglages.IsEuro() ? FormatEuro(euro) : FormatFranc(franc);
}

// ---------------------------------------------------------------- Deleting

/// Asks, where the books alone are concerned.
Refus VeutSupprimer(CFenlorApp& app, Serie& serie, const Mouvement& entete) {
  assert(entete.Mouvement != 0);
  const bool rapprochee = app.Magasin.IsRappLineInMouvements(entete.Mouvement);
  const TexteFixe& question = rapprochee ? QuestionSuppressionRapprochee : QuestionSuppression;
  return serie.Demande(BoutonsOuiNon | (rapprochee ? IconeAttention : IconeQuestion), question, question,
                       {LitTexte(entete.Libelle)});
}

bool SupprimeLibre(CFenlorApp& app, const Mouvement& entete) {
  QVAPI& magasin = app.Magasin;
  switch (entete.Genre) {
    case GenreSimple:
      return magasin.RemoveEcrSimple(app.PathExercice, entete.Mouvement);
    case GenreStandard:
      return magasin.RemoveEcrStandard(app.PathExercice, entete.Mouvement);
    default:
      return magasin.RemoveMouvements(app.PathExercice, entete.Mouvement);
  }
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
    assert(m_ouverture);
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
    assert(m_ouverture && position != 0);
    return m_recette ? m_magasin.DeleteRecettes(position) : m_magasin.DeleteDepenses(position);
  }

 private:
  QVAPI& m_magasin;
  bool m_recette;
  Ouverture m_ouverture;
};

/// Looks for the record that it is linked to, and asks.
Refus VeutSupprimerLiee(CFenlorApp& app, Serie& serie, const Mouvement& entete, bool demander) {
  FichierLie fichier(app.Magasin, entete);
  if (!fichier) return app.EchecMagasin();
  if (fichier.Trouve(entete) == 0) return Refus::DejaDit(ErrSuppressionLiee, "mouvement");
  if (!demander) return {};
  const bool feuille = app.Edition == 1 || app.Edition == 4;
  const TexteFixe& question = !fichier.EstRecette() ? QuestionDepenseQuorbane
                              : feuille             ? QuestionRecetteFeuille
                                                    : QuestionRecetteQuorbane;
  return serie.Demande(BoutonsOuiNon | IconeAttention, question, question, {LitTexte(entete.Libelle)});
}

/// The entry goes with its record.
Refus SupprimeLiee(CFenlorApp& app, const Mouvement& entete) {
  FichierLie fichier(app.Magasin, entete);
  if (!fichier) return app.EchecMagasin();
  const Position position = fichier.Trouve(entete);
  if (position == 0) return Refus::DejaDit(ErrSuppressionLiee, "mouvement");
  return fichier.Supprime(position) ? Refus{} : app.EchecMagasin();
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

Refus DemandeValidation(CFenlorApp& app, Serie& serie, const Mouvement& entete) {
  constexpr unsigned style = BoutonsOuiNon | IconeQuestion, sorte = QuestionValiderSimple;
  const std::string date = StrDate(entete.Date);
  const std::string libelle = LitTexte(entete.Libelle);
  if (entete.Genre == GenreOD) return serie.Demande(style, sorte, QuestionValiderOD, {date, libelle});
  Apercu apercu;
  if (!LitApercu(app, entete, apercu)) return app.EchecMagasin();
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

/// What stands against deleting it, and what the user says.
Refus AccordeSuppression(CFenlorApp& app, Serie& serie, u32 mouvement, Mouvement& entete) {
  if (const Refus r = LitEntete(app, mouvement, entete)) return r;
  const std::string libelle = LitTexte(entete.Libelle);
  if (entete.Genre == GenreOD) {
    if (entete.LienId) return VeutSupprimerLiee(app, serie, entete, false);
    if (entete.Validee) return Refus(ErrSuppressionODValidee, "mouvement", {libelle});
    return VeutSupprimer(app, serie, entete);
  }
  if (entete.Validee) return Refus(ErrSuppressionValidee, "mouvement", {libelle});
  if (entete.LienId == 0) return VeutSupprimer(app, serie, entete);
  if (entete.LienApplication != static_cast<i16>(app.Edition)) return Refus(ErrAutreApplication, "mouvement");
  return VeutSupprimerLiee(app, serie, entete, true);
}

Refus SupprimeUne(CFenlorApp& app, const Mouvement& entete) {
  if (entete.LienId) return SupprimeLiee(app, entete);
  return SupprimeLibre(app, entete) ? Refus{} : app.EchecDit();
}

Refus ValideUne(CFenlorApp& app, Serie& serie, u32 mouvement, bool valide) {
  LivresOuverts livres;
  Mouvement entete;
  if (const Refus r = Commence(app, livres, mouvement, entete)) return r;
  if ((entete.Validee != 0) == valide) return {};
  const Refus reponse =
      valide ? DemandeValidation(app, serie, entete)
             : serie.Demande(BoutonsOuiNon | IconeQuestion, QuestionInvalider, QuestionInvalider);
  if (reponse) return reponse;
  const bool fait = valide ? Valide(app.Magasin, app.PathExercice, entete)
                           : app.Magasin.ValidMouvements(app.PathExercice, mouvement, 0);
  return fait ? Refus{} : app.EchecDit();
}

Refus RapprocheUne(CFenlorApp& app, Serie& serie, u32 mouvement, bool rapproche) {
  LivresOuverts livres;
  Mouvement entete;
  if (const Refus r = Commence(app, livres, mouvement, entete)) return r;
  std::vector<LigneComptee> lignes;
  if (!LitLignesComptees(app, mouvement, lignes)) return app.EchecMagasin();
  if (lignes.empty()) return Refus(ErrSansEcriture, "mouvement");

  f64 franc = 0, euro = 0;
  bool aChanger = false;
  for (const auto& [position, ligne] : lignes) {
    franc += ligne.MontantFranc;
    euro += ligne.MontantEuro;
    aChanger = aChanger || (ligne.Rapprochee != 0) != rapproche;
  }
  if (!aChanger) return {};
  const TexteFixe& question = rapproche ? QuestionRapprocher : QuestionDerapprocher;
  const Refus reponse = serie.Demande(BoutonsOuiNon | IconeQuestion, question, question,
                                      {StrDate(entete.Date), LitTexte(entete.Libelle), MotDuJournal(entete),
                                       MontantAffiche(app, franc, euro)});
  if (reponse) return reponse;

  QVAPI::Unite unite(app.Magasin);
  for (auto& [position, ligne] : lignes) {
    if (rapproche)
      MarqueRapprochee(ligne, app.Magasin.Today());
    else
      OteRapprochement(ligne);
    if (!app.Magasin.UpdateLines(app.PathExercice, position, ligne)) return app.EchecDit();
  }
  return unite.Valide() ? Refus{} : app.EchecMagasin();
}

/// Runs `action` over the entries that are still there. Ends at a failure of the store.
template <class Action>
void PourChaque(CFenlorApp& app, Serie& serie, const std::vector<u32>& mouvements, Action action) {
  for (const u32 mouvement : mouvements) {
    if (!serie.Suivante()) break;
    Mouvement entete{};
    if (!app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete)) continue;
    const Refus refus = action(serie, mouvement);
    serie.Note(refus);
    if (refus.numero == ErrMagasin) break;
  }
}

template <class Action>
Refus PourChaque(CFenlorApp& app, const std::vector<u32>& mouvements, Action action) {
  if (app.PathExercice.empty()) return {};
  LivresOuverts livres;
  if (const Refus refus = livres.Ouvre(app)) return refus;
  Serie serie(app, mouvements.size());
  PourChaque(app, serie, mouvements, action);
  return serie.Issue();
}

}  // namespace

Refus SupprimeEcriture(CFenlorApp& app, u32 mouvement) {
  LivresOuverts livres;
  if (const Refus r = ControleExercice(app, livres)) return r;
  Serie serie(app, 1);
  Mouvement entete;
  if (const Refus r = AccordeSuppression(app, serie, mouvement, entete)) return r;
  if (const Refus r = MetEnCorbeille(app, {mouvement})) return r;
  return SupprimeUne(app, entete);
}

/// First all that is asked: then the trash takes them together, however many they are.
Refus SupprimeEcritures(CFenlorApp& app, const std::vector<u32>& mouvements) {
  LivresOuverts livres;
  if (const Refus r = ControleExercice(app, livres)) return r;
  Serie serie(app, mouvements.size());
  std::vector<u32> accordees, restees;
  PourChaque(app, serie, mouvements, [&](Serie& questions, u32 mouvement) {
    Mouvement entete;
    const Refus refus = AccordeSuppression(app, questions, mouvement, entete);
    if (!refus) accordees.push_back(mouvement);
    return refus;
  });
  if (const Refus r = MetEnCorbeille(app, accordees)) return r;
  serie.Recommence();
  PourChaque(app, serie, accordees, [&](Serie&, u32 mouvement) {
    Mouvement entete;
    const Refus refus = LitEntete(app, mouvement, entete);
    return refus ? refus : SupprimeUne(app, entete);
  });
  Mouvement entete{};
  for (const u32 mouvement : accordees)
    if (app.Magasin.ReadMouvements(app.PathExercice, mouvement, entete)) restees.push_back(mouvement);
  serie.Note(OteDeCorbeille(app, restees));
  return serie.Issue();
}

Refus ValideEcriture(CFenlorApp& app, u32 mouvement, bool valide) {
  Serie serie(app, 1);
  return ValideUne(app, serie, mouvement, valide);
}

Refus ValideEcritures(CFenlorApp& app, const std::vector<u32>& mouvements) {
  return PourChaque(app, mouvements,
                    [&](Serie& serie, u32 mouvement) { return ValideUne(app, serie, mouvement, true); });
}

Refus PointeEcriture(CFenlorApp& app, u32 mouvement) {
  LivresOuverts livres;
  Mouvement entete;
  if (const Refus r = Commence(app, livres, mouvement, entete)) return r;
  return app.Magasin.ReverseMarkMouvements(app.PathExercice, mouvement) ? Refus{} : app.EchecDit();
}

Refus RapprocheEcriture(CFenlorApp& app, u32 mouvement, bool rapproche) {
  Serie serie(app, 1);
  return RapprocheUne(app, serie, mouvement, rapproche);
}

Refus RapprocheEcritures(CFenlorApp& app, const std::vector<u32>& mouvements) {
  return PourChaque(app, mouvements, [&](Serie& serie, u32 mouvement) {
    const LignesRapprochables lignes = CompteRapprochables(app, mouvement);
    return lignes.nombre == 0 ? Refus{}
                              : RapprocheUne(app, serie, mouvement, lignes.rapprochees < lignes.nombre);
  });
}

LignesRapprochables CompteRapprochables(CFenlorApp& app, u32 mouvement) {
  LivresOuverts livres;
  std::vector<LigneComptee> lignes;
  LignesRapprochables compte;
  if (app.PathExercice.empty() || livres.Ouvre(app) || !LitLignesComptees(app, mouvement, lignes))
    return compte;
  for (const LigneComptee& lue : lignes) {
    ++compte.nombre;
    compte.rapprochees += lue.ligne.Rapprochee != 0;
  }
  return compte;
}

}  // namespace fenlor
