// Automatic entries and their due dates.
#include <algorithm>
#include <cassert>

#include "auto/echeances.h"
#include "auto/modeleauto.h"
#include "auto/previsions.h"
#include "auto/textes.h"
#include "ctl/annuaire.h"
#include "ctl/commandes.h"
#include "ctl/enregistrementjson.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"
#include "ctl/reponseslignes.h"
#include "journal/controles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct OptionsAuto {
  std::string action, fichier = "-";
};
struct OptionsEcheances {
  std::vector<u32> confirmer;
  bool toutes = false, prevision = false;
};

/// One line of input at a time: a model, or its number.
class OrdresAuto {
 public:
  OrdresAuto(Contexte& contexte, const OptionsAuto& options)
      : m_contexte(contexte), m_app(contexte.App), m_options(options) {}

  int Execute() {
    assert(!m_options.action.empty() && m_options.action != "lister");
    if (!m_contexte.OuvreExercice()) return StatutRefuse;
    m_contexte.Dialogue.Ordonne({QuestionSupprimeAuto});
    LivresOuverts livres;
    if (livres.Ouvre(m_app) || !m_comptes.Charge(m_app)) return m_contexte.RefuseMagasin();
    return RepondParLigne(m_contexte, m_options.fichier, [this](const Json& objet, LigneJson& reponse) {
      u32 numero = 0;
      const Refus refus = Traite(objet, numero);
      reponse.Entier("Numero", numero);
      return refus;
    });
  }

 private:
  Refus Traite(const Json& objet, u32& numero) {
    Refus refus;
    LecteurChamps champs(objet, refus);
    FicheAuto fiche = NouvelleAuto(m_app);
    if (m_options.action != "ajouter") {
      std::optional<i64> lu;
      if (!champs.Entier("Numero", 1, ModelesAutoMax, lu)) return refus;
      if (!lu && !champs.Manquant("Numero")) return refus;
      numero = static_cast<u32>(*lu);
      if (m_options.action == "supprimer")
        return champs.RienDautre() ? SupprimeFiche(m_app, FicheA<FicheAuto>(numero)) : refus;
      if (Refus absent = LitFiche(m_app, numero, fiche)) return absent;
    }
    if (!Lit(champs, fiche) || !LitMontants(champs, fiche) || !champs.RienDautre()) return refus;
    if (Refus refuse = EnregistreFiche(m_app, fiche)) return refuse;
    numero = fiche.position;
    assert(numero != 0);
    return {};
  }

  bool Lit(LecteurChamps& champs, FicheAuto& fiche) const {
    std::optional<std::string> date, libelle, tresorerie, compte;
    std::optional<i64> genre, euro, paiement, periodicite, nombre, annoncer;
    constexpr std::size_t tailleLibelle = 80, tailleCompte = 10;
    if (!champs.Entier("Genre", JournalRecettes, JournalDepenses, genre) ||
        !champs.Texte("Date", tailleCompte, date) || !champs.Texte("Libelle", tailleLibelle, libelle) ||
        !champs.Texte("Tresorerie", tailleCompte, tresorerie) ||
        !champs.Texte("Compte", tailleCompte, compte) || !champs.Entier("SaisieEuro", 0, 1, euro) ||
        !champs.Entier("ModePaiement", PaiementCheque, PaiementAutre, paiement) ||
        !champs.Entier("Periodicite", 0, 9, periodicite) ||
        !champs.Entier("NbPaiements", 1, PaiementsMax, nombre) || !champs.Entier("Annoncer", 0, 1, annoncer))
      return false;
    if (genre) fiche.genre = static_cast<i16>(*genre);
    if (date) fiche.date = GetDate(*date);
    if (libelle) fiche.libelle = *libelle;
    if (tresorerie) fiche.tresorerie = Trouve(Tresorerie, *tresorerie);
    if (compte) fiche.compte = Trouve(fiche.genre == JournalRecettes ? Recette : Depense, *compte);
    if (euro) fiche.euro = *euro != 0;
    if (paiement) fiche.paiement = static_cast<i16>(*paiement);
    if (periodicite) {
      const auto code = static_cast<i16>(std::max<i64>(1, *periodicite));
      if (fiche.position == 0 || code != fiche.periodicite) ChangePeriodicite(fiche, code);
    }
    if (nombre) fiche.nombre = NombreTape(fiche, static_cast<u32>(*nombre));
    if (annoncer) fiche.annoncer = *annoncer != 0;
    m_chaine = compte || euro;
    return true;
  }

  /// The amounts of the model's currency; whatever follows from them is computed as in the form.
  bool LitMontants(LecteurChamps& champs, FicheAuto& fiche) const {
    std::optional<f64> ttc, professionnel;
    if (!champs.Montant(fiche.euro ? "MontantEuro" : "MontantFranc", ttc) ||
        !champs.Montant(fiche.euro ? "RepartitionEuro" : "RepartitionFranc", professionnel))
      return false;
    Plan compte{};
    if (!LitCompte(m_app, QVAPI::GetLongCompte(fiche.compte), compte)) return true;
    MontantsSaisie& montants = fiche.montants;
    if (ttc || m_chaine) montants = ChaineMontants(m_app, compte, ttc.value_or(montants.ttc));
    if (professionnel && fiche.genre == JournalRecettes)
      return champs.Invalide(fiche.euro ? "RepartitionEuro" : "RepartitionFranc",
                             "sans objet pour une recette."_w);
    if (professionnel) montants = ChaineProfessionnel(m_app, compte, montants.ttc, *professionnel);
    return true;
  }

  std::string Trouve(i16 type, const std::string& texte) const {
    const Plan* plan = m_comptes.ParCode(type, texte);
    return plan ? LitTexte(plan->Compte) : QVAPI::GetLongCompte(texte);
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsAuto& m_options;
  AnnuaireComptes m_comptes;
  mutable bool m_chaine = false;  ///< account or currency changed: the amounts are computed anew
};

int Liste(Contexte& contexte) {
  if (!contexte.OuvreExercice()) return StatutRefuse;
  std::vector<EcrituresAuto> modeles;
  if (const Refus refus = ListeAutos(contexte.App, modeles)) return contexte.Refuse(refus);
  std::string texte;
  for (const EcrituresAuto& modele : modeles) AjouteEnregistrement(texte, ChampsDe("EcrituresAuto"), &modele);
  return contexte.Donne(texte);
}

LigneJson LigneEcheance(std::size_t rang, u32 numero, Date date) {
  LigneJson ligne;
  if (rang) ligne.Entier("Echeance", static_cast<i64>(rang));
  ligne.Entier("Numero", numero).Texte("Date", StrDate(date));
  return ligne;
}

/// The occurrences to confirm, from 0. A number beyond the list is refused before any of them is.
Refus Rangs(const OptionsEcheances& options, std::size_t nombre, std::vector<std::size_t>& rangs) {
  for (std::size_t i = 0; options.toutes && i < nombre; ++i) rangs.push_back(i);
  for (const u32 numero : options.confirmer) {
    assert(numero > 0);
    if (numero > nombre) return Refus(ErrEcheanceAbsente, "", {std::to_string(numero)});
    if (std::find(rangs.begin(), rangs.end(), numero - 1) == rangs.end()) rangs.push_back(numero - 1);
  }
  return {};
}

int Prevision(Contexte& contexte) {
  Previsions previsions;
  if (const Refus refus = CalculePrevisions(contexte.App, previsions)) return contexte.Refuse(refus);
  for (const LignePrevision& l : previsions.lignes) {
    LigneJson ligne;
    ligne.Texte("Mois", StrDate(l.mois).substr(3));
    if (!l.compte.empty()) ligne.Texte("Tresorerie", l.compte).Texte("Code", l.code);
    ligne.Nombre("Recettes", l.recettes).Nombre("Depenses", l.depenses).Nombre("Solde", l.solde);
    if (!contexte.Ecrit(ligne.Fin())) return StatutRefuse;
  }
  return StatutFait;
}

int Echeances(Contexte& contexte, const OptionsEcheances& options) {
  if (!contexte.OuvreExercice()) return StatutRefuse;
  if (options.prevision) return Prevision(contexte);
  BilanEcheances bilan;
  if (const Refus refus = CalculeEcheances(contexte.App, bilan)) return contexte.Refuse(refus);
  int statut = StatutFait;
  for (const EcheanceFaite& faite : bilan.faites)
    if (!contexte.Ecrit(
            LigneEcheance(0, faite.numero, faite.date).Entier("Mouvement", faite.mouvement).Fin()))
      return StatutRefuse;
  for (const Refus& refus : bilan.refus) statut = contexte.Refuse(refus);

  std::vector<EcheanceAnnoncee> annoncees;
  if (const Refus refus = ListeAnnoncees(contexte.App, annoncees)) return contexte.Refuse(refus);
  std::vector<std::size_t> rangs;
  if (const Refus refus = Rangs(options, annoncees.size(), rangs)) return contexte.Refuse(refus);
  if (!options.toutes && rangs.empty()) {
    for (std::size_t i = 0; i < annoncees.size(); ++i) {
      const EcheanceAnnoncee& a = annoncees[i];
      if (!contexte.Ecrit(LigneEcheance(i + 1, a.numero, a.date)
                              .Texte("Libelle", a.libelle)
                              .Texte("Tresorerie", a.tresorerie)
                              .Entier("Genre", a.genre)
                              .Nombre(a.euro ? "MontantEuro" : "MontantFranc", a.montant)
                              .Fin()))
        return StatutRefuse;
    }
    return statut;
  }
  for (const std::size_t rang : rangs) {
    assert(rang < annoncees.size());
    BilanEcheances une;
    if (const Refus refus = ConfirmeEcheances(contexte.App, annoncees, {rang}, une))
      return contexte.Refuse(refus);
    for (const Refus& refus : une.refus) statut = contexte.Refuse(refus);
    for (const EcheanceFaite& f : une.faites)
      if (!contexte.Ecrit(LigneEcheance(rang + 1, f.numero, f.date).Entier("Mouvement", f.mouvement).Fin()) ||
          !contexte.Vide())
        return StatutRefuse;
  }
  return statut;
}

}  // namespace

void DeclareAutomatiques(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsAuto>();
  Commande verbe = ligne.Ajoute(
      "automatique", "Ajoute, modifie, supprime ou liste des écritures automatiques",
      [o](Contexte& c) { return o->action == "lister" ? Liste(c) : OrdresAuto(c, *o).Execute(); });
  verbe.Controle([o](const OptionsGlobales&) {
    return o->action.empty() ? "il manque ajouter, modifier, supprimer ou lister" : std::string();
  });
  Commande ajouter = verbe.Action("ajouter", "Ajoute les modèles de l'entrée, un par ligne JSON", o->action),
           modifier = verbe.Action("modifier", "Change les champs donnés du modèle de ce Numero", o->action),
           supprimer = verbe.Action("supprimer", "Supprime le modèle de ce Numero", o->action);
  verbe.Action("lister", "Écrit les modèles, une ligne JSON chacun", o->action);
  for (Commande* action : {&ajouter, &modifier, &supprimer})
    action->Option("fichier", o->fichier, {"[FICHIER|-]"}, "Lignes JSON (- : l'entrée standard)");
  ajouter.Pied(R"(Une ligne a les champs de exporter AUTO que tape une personne :
  {"Genre":2,"Date":"05/01/2003","Libelle":"Loyer","Tresorerie":"BQ","Compte":"6132","MontantEuro":700.0,
   "Periodicite":6,"NbPaiements":12,"Annoncer":0}
  "Periodicite" : 1 unique, 2 semaine, 3 deux semaines, 4 deux fois par mois, 5 quatre semaines, 6 mois,
  7 deux mois, 8 trimestre, 9 six mois)");

  const auto e = std::make_shared<OptionsEcheances>();
  ligne
      .Ajoute("echeances", "Passe les écritures automatiques échues et liste celles qui sont à confirmer",
              [e](Contexte& c) { return Echeances(c, *e); })
      .Option("--confirmer", e->confirmer, FormeNumeros(),
              "Échéances à confirmer, par leur rang dans la liste")
      .Drapeau("--toutes", e->toutes, "Les confirme toutes")
      .Exclut("--confirmer")
      .Drapeau("--prevision", e->prevision,
               "Ne passe rien : montre, mois par mois, ce que les modèles apporteront et coûteront")
      .Exclut("--confirmer")
      .Exclut("--toutes");
}

}  // namespace fenlor
