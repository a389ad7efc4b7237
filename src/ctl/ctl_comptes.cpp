#include <algorithm>

#include "core/erreurs.h"
#include "core/texte.h"
#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/enregistrementjson.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"
#include "ctl/tableau.h"
#include "master/comptes.h"
#include "master/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Texts as typed, in UTF-8; none: not given.
struct OptionsCompte {
  std::string action;  ///< empty: none
  std::string numero;  ///< the account that is modified or deleted
  std::string forme;   ///< empty: that of the account
  std::optional<std::string> type, code, compte, designation, rubrique, tva;
  std::optional<std::string> taux, partPro, debitInitial, creditInitial;  ///< numbers
  bool banque = false;
  bool caisse = false;
};

/// A form and the list that it stands behind.
struct Forme {
  const char* nom;
  FormeCompte forme;
  ListeComptes liste;
  i16 type;  ///< of its accounts, -1: any
};
constexpr Forme Formes[] = {
    {"recettes", FormeCompte::RecettesDepenses, ListeComptes::Recettes, Recette},
    {"depenses", FormeCompte::RecettesDepenses, ListeComptes::Depenses, Depense},
    {"tresorerie", FormeCompte::Tresorerie, ListeComptes::Tresorerie, Tresorerie},
    {"plan", FormeCompte::PlanComptable, ListeComptes::PlanComptable, -1},
};
constexpr const char* Types[] = {"tresorerie", "recette", "depense", "tva", "autre"};

const Forme& FormeNommee(const std::string& nom) {
  return *std::find_if(std::begin(Formes), std::end(Formes), [&](const Forme& f) { return nom == f.nom; });
}
const Forme& FormeDuType(i16 type) {
  return *std::find_if(std::begin(Formes), std::end(Formes),
                       [&](const Forme& f) { return f.type == type || f.type < 0; });
}

class CommandeFiche {
 public:
  CommandeFiche(Contexte& contexte, const OptionsCompte& options)
      : m_contexte(contexte), m_app(contexte.App), m_options(options) {}

  int Execute() {
    m_contexte.Dialogue.Decline({QuestionSoldeCrediteur});
    if (m_options.action == "lister") return Liste();
    if (m_app.Reglages.IsExerciceCloture()) return m_contexte.Refuse(ErrExerciceCloture, {});
    if (m_options.action == "ajouter") return Ajoute();
    if (!Trouve()) return StatutRefuse;
    return m_options.action == "modifier" ? Modifie() : Supprime();
  }

 private:
  /// A field that the form shows for other types alone.
  bool Permis(const char* champ, bool donne, bool permis) {
    return !donne || permis || m_contexte.Invalide(champ, "sans objet pour ce compte."_w);
  }

  /// Puts what was given into the form, as far as the form would take it.
  bool Remplit() {
    const OptionsCompte& o = m_options;
    if (o.type)
      m_fiche.type = static_cast<i16>(std::find(std::begin(Types), std::end(Types), *o.type) - Types);
    const i16 type = m_fiche.type;
    const bool tresorerie = type == Tresorerie, repartie = type == Recette || type == Depense;
    if (!Permis("rubrique", o.rubrique.has_value(), !tresorerie) ||
        !Permis("tva", o.tva.has_value(), repartie) || !Permis("taux", o.taux.has_value(), type == Tva) ||
        !Permis("part-pro", o.partPro.has_value(),
                type == Depense && !EstComptePersonnel(m_app, m_fiche.compte)) ||
        !Permis(o.banque ? "banque" : "caisse", o.banque || o.caisse, tresorerie) ||
        !Permis("debit-initial", o.debitInitial.has_value(), tresorerie) ||
        !Permis("credit-initial", o.creditInitial.has_value(), tresorerie))
      return false;
    if (o.banque || o.caisse) m_fiche.banque = o.banque;
    if (tresorerie && m_fiche.position == 0 && m_forme->forme == FormeCompte::Tresorerie && !o.compte)
      m_fiche.compte = ProposeNumeroTresorerie(m_app, m_fiche.banque);
    if (!PoseOption(m_contexte, "code", o.code, m_fiche.code) ||
        !PoseOption(m_contexte, "compte", o.compte, m_fiche.compte) ||
        !PoseOption(m_contexte, "designation", o.designation, m_fiche.designation) || !PoseRubrique() ||
        !PoseTva())
      return false;
    const auto nombre = [](const std::optional<std::string>& texte, f64& valeur) {
      if (texte) valeur = TexteVersMontant(*texte);
    };
    nombre(o.taux, m_fiche.tauxTVA);
    nombre(o.partPro, m_fiche.partPro);
    if (o.debitInitial || o.creditInitial) m_fiche.debitInitial = m_fiche.creditInitial = 0;
    nombre(o.debitInitial, m_fiche.debitInitial);
    nombre(o.creditInitial, m_fiche.creditInitial);
    return true;
  }

  bool PoseRubrique() {
    if (!m_options.rubrique) return true;
    if (!PoseOption(m_contexte, "rubrique", m_options.rubrique, m_fiche.rubrique)) return false;
    const std::string code = NormaliseRubrique(m_fiche.rubrique);
    if (code.empty()) return true;
    const std::vector<ChoixRubrique> choix = RubriquesDuType(m_app, m_fiche.type);
    if (m_fiche.rubrique.size() <= code.size() &&
        std::any_of(choix.begin(), choix.end(), [&](const auto& c) { return c.code == code; }))
      return true;
    return m_contexte.Invalide("rubrique", "aucune rubrique de ce côté n'a ce code."_w);
  }

  bool PoseTva() {
    if (!m_options.tva) return true;
    std::string numero;
    if (!PoseOption(m_contexte, "tva", m_options.tva, numero)) return false;
    m_fiche.compteTVA = QVAPI::GetLongCompte(numero);
    if (m_fiche.compteTVA.empty()) return true;
    if (!m_app.Reglages.IsTVA())
      return m_contexte.Invalide("tva", "l'exercice n'est pas assujetti à la T.V.A."_w);
    const std::vector<ChoixTVA> choix = ChoixComptesTVA(m_app);
    return std::any_of(choix.begin(), choix.end(),
                       [&](const auto& c) { return c.compte == m_fiche.compteTVA; }) ||
           m_contexte.Invalide("tva", "ce n'est pas un compte de T.V.A."_w);
  }

  /// The account of the command line, and the form that it is edited in.
  bool Trouve() {
    std::string numero;
    if (!PoseOption(m_contexte, "numero", m_options.numero, numero)) return false;
    CPlan plan(m_app, m_app.PathExercice);
    PoseTexte(plan.Rec->Compte, QVAPI::GetLongCompte(numero));
    Plan compte{};
    const bool ouvert = plan.OpenFile();
    if (ouvert && !plan.Find(0)) return m_contexte.Invalide("numero", "ce compte n'existe pas."_w);
    if (!ouvert || !LitFiche(m_app, plan.GetPos(), m_fiche, compte)) {
      m_contexte.RefuseMagasin();
      return false;
    }
    m_forme = m_options.forme.empty() ? &FormeDuType(compte.Type) : &FormeNommee(m_options.forme);
    return m_forme->type < 0 || m_forme->type == compte.Type ||
           m_contexte.Invalide("forme", "ce compte est d'un autre type."_w);
  }

  int Ajoute() {
    m_forme = &FormeNommee(m_options.forme);
    m_fiche.type = std::max<i16>(m_forme->type, 0);
    return Remplit() ? Enregistre() : int{StatutRefuse};
  }

  int Modifie() { return Remplit() ? Enregistre() : int{StatutRefuse}; }

  int Enregistre() {
    // The form's question on a credit balance: typed on purpose, as --oui confirms.
    if (m_options.creditInitial && m_fiche.creditInitial != 0 && !m_contexte.Globales.oui)
      return m_contexte.Refuse(QuestionSoldeCrediteur, {});
    if (m_options.code)
      if (const ResultatMaster r = ControleCode(m_app, m_forme->forme, m_fiche); !r)
        return m_contexte.RefuseRegle(r.erreur);
    if (m_options.compte)
      if (const ResultatMaster r = ControleNumero(m_app, m_forme->forme, m_fiche); !r)
        return m_contexte.RefuseRegle(r.erreur);
    if (const ResultatMaster r = EnregistreCompte(m_app, m_forme->forme, m_fiche); !r)
      return m_contexte.RefuseRegle(r.erreur);
    return Dit("enregistré."_w);
  }

  int Supprime() {
    m_contexte.Dialogue.Ordonne({QuestionSupprimeCompte, QuestionSupprimeTresorerie});
    const ResultatMaster r = SupprimeCompte(m_app, m_forme->forme, m_fiche.position);
    return r ? Dit("supprimé."_w) : m_contexte.RefuseRegle(r.erreur);
  }

  int Dit(const std::string& fait) {
    const std::string longue = QVAPI::GetLongCompte(m_fiche.compte);
    const std::string court = CompacteTexte(m_app.Magasin.GetShortCompte(longue));
    const std::string texte =
        m_contexte.Globales.json
            ? LigneJson().Texte("Compte", longue).Texte("Code", CompacteTexte(m_fiche.code)).Fin()
            : VersUtf8("Compte " + court + ' ' + fait) + "\n";
    return m_contexte.Donne(texte);
  }

  int Liste() {
    const ListeComptes liste = FormeNommee(m_options.forme).liste;
    std::vector<std::string> titres;
    std::size_t gauches = 0;
    const TableColonnes<Plan> colonnes = ColonnesComptes(m_app, liste);
    for (const ColonneListe<Plan>& colonne : colonnes) {
      titres.push_back(colonne.titre);
      if (colonne.cote == Cote::Gauche) ++gauches;
    }
    Tableau tableau;
    tableau.Ajoute(titres);
    CPlan plan(m_app, m_app.PathExercice);
    if (!plan.OpenFile()) return m_contexte.RefuseMagasin();
    for (const Position position : PositionsComptes(m_app, liste)) {
      if (!plan.ReadRec(position)) return m_contexte.RefuseMagasin();
      if (m_contexte.Globales.json) {
        std::string objet;
        AjouteEnregistrement(objet, Champs(FichierComptes), plan.Rec);
        if (!m_contexte.Ecrit(objet)) return StatutRefuse;
        continue;
      }
      tableau.Ajoute(Cellules(colonnes, *plan.Rec));
    }
    return m_contexte.Globales.json ? int{StatutFait} : m_contexte.Donne(tableau.Texte(gauches));
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsCompte& m_options;
  const Forme* m_forme = nullptr;
  FicheCompte m_fiche;
};

int Execute(Contexte& contexte, const OptionsCompte& options) {
  return contexte.OuvreExercice() ? CommandeFiche(contexte, options).Execute() : int{StatutRefuse};
}

std::string Faute(const OptionsCompte& options) {
  if (options.action.empty()) return "il manque ajouter, modifier, supprimer ou lister";
  if (options.action == "ajouter" && options.forme == "plan" && !options.type) return "il manque --type";
  if (options.type && options.forme != "plan") return "--type va avec --forme plan";
  return {};
}

void DeclareChamps(Commande action, OptionsCompte& o) {
  action
      .Option("--type", o.type, FormeMots({std::begin(Types), std::end(Types)}),
              "Type de compte, avec --forme plan")
      .Option("--code", o.code, {}, "Code, 8 caractères au plus")
      .Option("--compte", o.compte, {}, "Numéro, 10 caractères au plus (trésorerie : proposé s'il manque)")
      .Option("--designation", o.designation, {}, "Désignation")
      .Option("--rubrique", o.rubrique, {}, "Code de la rubrique (vide : aucune)")
      .Option("--tva", o.tva, {"COMPTE"}, "Numéro du compte de T.V.A. (vide : aucun)")
      .Option("--taux", o.taux, FormeNombre(), "Taux d'un compte de T.V.A., en %")
      .Option("--part-pro", o.partPro, FormeNombre(), "Part professionnelle d'une dépense, en %")
      .Drapeau("--banque", o.banque, "Compte bancaire")
      .Drapeau("--caisse", o.caisse, "Caisse")
      .Exclut("--banque")
      .Option("--debit-initial", o.debitInitial, FormeNombre(), "Solde initial au débit")
      .Option("--credit-initial", o.creditInitial, FormeNombre(),
              "Solde initial au crédit (à confirmer par --oui)")
      .Exclut("--debit-initial");
}

}  // namespace

void DeclareComptes(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsCompte>();
  Commande compte = ligne.Ajoute("compte", "Ajoute, modifie, supprime ou liste des comptes",
                                 [o](Contexte& c) { return Execute(c, *o); });
  compte.Controle([o](const OptionsGlobales&) { return Faute(*o); });
  const auto action = [&](const char* nom, const char* description) {
    return compte.Action(nom, description, o->action);
  };
  const auto forme = [&](Commande& a, const char* description) -> Commande& {
    return a.Option("--forme", o->forme, FormeMots({"recettes", "depenses", "tresorerie", "plan"}),
                    description);
  };
  Commande ajouter = action("ajouter", "Ajoute un compte");
  forme(ajouter, "Formulaire dont les contrôles s'appliquent").Obligatoire();
  DeclareChamps(ajouter, *o);
  Commande modifier = action("modifier", "Change les champs donnés d'un compte");
  for (Commande a : {modifier, action("supprimer", "Supprime un compte")}) {
    a.Option("numero", o->numero, {"COMPTE"}, "Numéro du compte").Obligatoire();
    forme(a, "Formulaire (par défaut : celui du type du compte)");
  }
  DeclareChamps(modifier, *o);
  Commande lister = action("lister", "Écrit les lignes de la fenêtre");
  forme(lister, "Fenêtre").Obligatoire();
}

}  // namespace fenlor
