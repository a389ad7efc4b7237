#include <cassert>
#include <limits>
#include <set>

#include "core/erreurs.h"
#include "core/valeurs.h"
#include "ctl/annuaire.h"
#include "ctl/commandes.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"
#include "journal/listejournal.h"
#include "journal/textes.h"
#include "journal/traitements.h"
#include "journal/virement.h"
#include "store/definitions.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Texts as typed; empty or none: not given.
struct OptionsValider {
  std::string journal;  ///< empty: all
  std::string du, au;   ///< empty: the exercice
  bool pointees = false, remises = false, rapprochees = false;
  std::optional<std::string> montantMin, montantMax;
  std::string monnaie;          ///< of the bounds; empty: that of the exercice
  std::vector<u32> mouvements;  ///< these entries alone, and nothing of the above
};
struct OptionsVirement {
  std::string date;      ///< empty: today
  std::string de, vers;  ///< code or number of a treasury account, UTF-8
  std::string montant, monnaie;
  std::optional<std::string> libelle;
  std::string paiement;  ///< of the receipt: "cheque", "autre"
};
struct OptionsRenumeroter {
  std::string journal, mois;
  std::string mode = "toutes";
};
struct OptionsDeplacer {
  std::vector<u32> mouvements;
  u32 mois = 0;  ///< 1 to 12
};

/// Currency of an option; that of the exercice when it was not given.
bool EnEuro(Contexte& contexte, const std::string& monnaie) {
  return monnaie.empty() ? contexte.App.Reglages.IsEuro() : monnaie == "euro";
}

/// Each entry once, all of them as one unit of work. The refused ones are told and left
/// out; when the store fails nothing is done.
template <class Action>
int PourChaque(Contexte& contexte, const std::vector<u32>& mouvements, const char* fait, Action action) {
  assert(!mouvements.empty());
  int statut = StatutFait;
  std::string reponse;
  std::set<u32> vues;
  QVAPI::Unite unite(contexte.Magasin);
  for (const u32 mouvement : mouvements) {
    if (!vues.insert(mouvement).second) continue;
    if (const Refus refus = action(mouvement)) {
      statut = contexte.Refuse(refus);
      if (refus.numero == ErrMagasin) return statut;
      continue;
    }
    reponse += contexte.Globales.json ? LigneJson().Entier("mouvement", mouvement).Fin()
                                      : "Écriture " + std::to_string(mouvement) + ' ' + fait + ".\n";
  }
  if (!unite.Valide()) return contexte.RefuseMagasin();
  return contexte.Ecrit(reponse) ? statut : int{StatutRefuse};
}

int ValideLot(Contexte& contexte, const OptionsValider& options) {
  CFenlorApp& app = contexte.App;
  DemandeValidation demande;
  demande.journal = JournalNomme(options.journal);
  demande.toutes = !options.pointees && !options.remises && !options.rapprochees;
  demande.pointees = options.pointees;
  demande.remises = options.remises;
  demande.rapprochees = options.rapprochees;
  demande.tousMontants = !options.montantMin && !options.montantMax;
  if (options.montantMin) demande.montantMin = TexteVersMontant(*options.montantMin);
  demande.montantMax =
      options.montantMax ? TexteVersMontant(*options.montantMax) : std::numeric_limits<f64>::infinity();
  demande.euro = EnEuro(contexte, options.monnaie);
  demande.du = options.du.empty() ? app.Reglages.GetDebutExercice() : GetDate(options.du);
  demande.au = options.au.empty() ? app.Reglages.GetFinExercice() : GetDate(options.au);
  assert(options.mouvements.empty());
  BilanLot r;
  if (const Refus refus = TraiteBrouillard(app, demande, r)) return contexte.Refuse(refus);
  return contexte.Donne(contexte.Globales.json
                            ? LigneJson().Entier("lignes", r.lignes).Entier("ecritures", r.ecritures).Fin()
                            : std::to_string(r.ecritures) + " écriture(s) validée(s).\n");
}

int Valide(Contexte& contexte, const OptionsValider& options) {
  if (!contexte.OuvreExercice()) return StatutRefuse;
  if (options.mouvements.empty()) return ValideLot(contexte, options);
  contexte.Dialogue.Ordonne({QuestionValiderOD, QuestionValiderStandard, QuestionValiderSimple});
  return PourChaque(contexte, options.mouvements, "validée",
                    [&](u32 mouvement) { return ValideEcriture(contexte.App, mouvement, true); });
}

int Vire(Contexte& contexte, const OptionsVirement& options) {
  if (!contexte.OuvreExercice()) return StatutRefuse;
  CFenlorApp& app = contexte.App;
  AnnuaireComptes comptes;
  {
    const Ouverture plan(contexte.Magasin, FichierComptes);
    if (!plan || !comptes.Charge(app)) return contexte.RefuseMagasin();
  }
  const auto tresorerie = [&](const std::string& utf8) {
    const std::string texte = DepuisUtf8(utf8).value_or(std::string());
    const Plan* compte = comptes.ParCode(Tresorerie, texte);
    return compte ? LitTexte(compte->Compte) : QVAPI::GetLongCompte(texte);
  };

  SaisieVirement saisie;
  if (!PoseOption(contexte, "libelle", options.libelle, saisie.libelle)) return StatutRefuse;
  saisie.date = options.date.empty() ? contexte.Magasin.Today() : GetDate(options.date);
  saisie.de = tresorerie(options.de);
  saisie.vers = tresorerie(options.vers);
  saisie.euro = EnEuro(contexte, options.monnaie);
  saisie.montant = TexteVersMontant(options.montant);
  saisie.paiement = options.paiement == "cheque" ? PaiementCheque : PaiementAutre;
  VirementFait r;
  if (const Refus refus = EnregistreVirement(app, saisie, r)) return contexte.Refuse(refus);
  return contexte.Donne(contexte.Globales.json
                            ? LigneJson().Entier("depense", r.depense).Entier("recette", r.recette).Fin()
                            : "Virement enregistré : dépense " + std::to_string(r.depense) + ", recette " +
                                  std::to_string(r.recette) + ".\n");
}

int Renumerote(Contexte& contexte, const OptionsRenumeroter& options) {
  if (!contexte.OuvreExercice()) return StatutRefuse;
  CFenlorApp& app = contexte.App;
  DemandeListe demande;
  demande.journal = JournalNomme(options.journal);
  demande.mois = GetDate("01/" + options.mois);
  demande.mode = ModeNomme(options.mode);
  demande.criteres = CriteresParDefaut(app);
  if (NextMonth(demande.mois) <= app.Reglages.GetDebutExercice() ||
      demande.mois > app.Reglages.GetFinExercice())
    return contexte.Refuse(ErrChampInvalide, {"mois", "il n'est pas dans l'exercice."_w});
  contexte.Dialogue.Ordonne({QuestionRenumerotation});
  u32 nombre = 0;
  if (const Refus refus = RenumeroteEcritures(app, demande, nombre)) return contexte.Refuse(refus);
  return contexte.Donne(contexte.Globales.json ? LigneJson().Entier("ecritures", nombre).Fin()
                                               : std::to_string(nombre) + " écriture(s) renumérotée(s).\n");
}

int Deplace(Contexte& contexte, const OptionsDeplacer& options) {
  if (!contexte.OuvreExercice()) return StatutRefuse;
  // As in the window: the first entry decides whether anything is moved at all.
  assert(!options.mouvements.empty() && options.mois >= 1 && options.mois <= 12);
  unsigned avant = 0;
  if (const Refus refus = ControleDeplacement(contexte.App, options.mouvements.front(), avant))
    return contexte.Refuse(refus);
  return PourChaque(contexte, options.mouvements, "déplacée",
                    [&](u32 mouvement) { return DeplaceEcriture(contexte.App, mouvement, options.mois); });
}

void DeclareValider(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsValider>();
  Commande valider = ligne.Ajoute("valider", "Valide les écritures en brouillard, par lot ou une à une",
                                  [o](Contexte& c) { return Valide(c, *o); });
  const char* seules = "--mouvement";
  valider.Option(seules, o->mouvements, FormeNumeros(), "Ces écritures seulement, sans autre critère");
  const auto critere = [&](const char* nom, auto& valeur, const FormeOption& forme, const char* aide) {
    valider.Option(nom, valeur, forme, aide).Exclut(seules);
  };
  const auto marque = [&](const char* nom, bool& valeur, const char* aide) {
    valider.Drapeau(nom, valeur, aide).Exclut(seules);
  };
  critere("--journal", o->journal, FormeJournal(), "Un seul journal (par défaut : tous)");
  critere("--du", o->du, FormeDate(), "Premier jour (par défaut : celui de l'exercice)");
  critere("--au", o->au, FormeDate(), "Dernier jour (par défaut : celui de l'exercice)");
  marque("--pointees", o->pointees, "Les écritures pointées");
  marque("--remises", o->remises, "Les écritures remises");
  marque("--rapprochees", o->rapprochees, "Les écritures rapprochées");
  critere("--montant-min", o->montantMin, FormeNombre(), "Une ligne d'au moins ce montant");
  critere("--montant-max", o->montantMax, FormeNombre(), "Une ligne d'au plus ce montant");
  critere("--monnaie", o->monnaie, FormeMonnaie(), "Monnaie (par défaut : celle de l'exercice)");
}

void DeclareVirement(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsVirement>();
  ligne
      .Ajoute("virement", "Vire une somme d'un compte de trésorerie à un autre",
              [o](Contexte& c) { return Vire(c, *o); })
      .Option("--date", o->date, FormeDate(), "Date du virement (par défaut : aujourd'hui)")
      .Option("--de", o->de, {"COMPTE"}, "Compte d'origine, par son code ou son numéro")
      .Obligatoire()
      .Option("--vers", o->vers, {"COMPTE"}, "Compte de destination")
      .Obligatoire()
      .Option("--montant", o->montant, FormeNombre(), "Montant")
      .Obligatoire()
      .Option("--monnaie", o->monnaie, FormeMonnaie(), "Monnaie (par défaut : celle de l'exercice)")
      .Option("--libelle", o->libelle, {}, "Libellé (par défaut : Virement interne)")
      .Option("--paiement", o->paiement, FormeMots({"cheque", "autre"}),
              "Paiement de la recette, sur un compte bancaire (par défaut : autre)");
}

void DeclareRenumeroter(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsRenumeroter>();
  ligne
      .Ajoute("renumeroter", "Renumérote un mois d'un journal à partir de 1",
              [o](Contexte& c) { return Renumerote(c, *o); })
      .Option("--journal", o->journal, FormeJournal(), "Journal")
      .Obligatoire()
      .Option("--mois", o->mois, FormeMois(), "Mois")
      .Obligatoire()
      .Option("--mode", o->mode, FormeMode(), "Écritures à renuméroter (par défaut : toutes)");
}

void DeclareDeplacer(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsDeplacer>();
  ligne
      .Ajoute("deplacer", "Met des écritures dans un autre mois de leur année, au même jour",
              [o](Contexte& c) { return Deplace(c, *o); })
      .Option("--mouvement", o->mouvements, FormeNumeros(), "Numéros des écritures")
      .Obligatoire()
      .Option("--mois", o->mois, FormeNumero(12), "Mois, de 1 à 12")
      .Obligatoire();
}

}  // namespace

void DeclareTraitements(LigneCommande& ligne) {
  DeclareValider(ligne);
  DeclareVirement(ligne);
  DeclareRenumeroter(ligne);
  DeclareDeplacer(ligne);
}

}  // namespace fenlor
