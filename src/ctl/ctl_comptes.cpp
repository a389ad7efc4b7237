#include <algorithm>

#include "core/texte.h"
#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/optionscommunes.h"
#include "ctl/verbefiche.h"
#include "master/comptes.h"
#include "master/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

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

const Forme& FormeNommee(const std::string& nom) {
  return *std::find_if(std::begin(Formes), std::end(Formes), [&](const Forme& f) { return nom == f.nom; });
}
const Forme& FormeDuType(i16 type) {
  return *std::find_if(std::begin(Formes), std::end(Formes),
                       [&](const Forme& f) { return f.type == type || f.type < 0; });
}

template <class Choix>
bool Parmi(const std::vector<Choix>& choix, std::string Choix::*membre, const std::string& valeur) {
  return std::any_of(choix.begin(), choix.end(), [&](const Choix& c) { return c.*membre == valeur; });
}

class VerbeCompte : public VerbeFiche {
 public:
  using Fiche = FicheCompte;
  static constexpr MotsVerbe Mots{"compte",
                                  "Ajoute, modifie, supprime ou liste des comptes",
                                  "un compte",
                                  "Compte",
                                  "numero",
                                  "COMPTE",
                                  "Numéro du compte",
                                  "Écrit les lignes de la fenêtre",
                                  false};
  VerbeCompte(Contexte& contexte, const OptionsFiche& options)
      : VerbeFiche(contexte, options, Mots, Fiche::Table, &m_fiche) {
    contexte.Dialogue.Decline({QuestionSoldeCrediteur});
    if (options.Donne("forme")) m_forme = &FormeNommee(*options.valeurs.at("forme"));
  }

 private:
  bool Trouve(const std::string& numero) override {
    CPlan plan(m_app, m_app.PathExercice);
    PoseTexte(plan.Rec->Compte, QVAPI::GetLongCompte(numero));
    Plan compte{};
    const bool ouvert = plan.OpenFile();
    if (ouvert && !plan.Find(0)) return m_contexte.Invalide("numero", "ce compte n'existe pas."_w);
    if (!ouvert || !LitFiche(m_app, plan.GetPos(), m_fiche, compte)) {
      m_contexte.RefuseMagasin();
      return false;
    }
    if (!m_forme) m_forme = &FormeDuType(compte.Type);
    return m_forme->type < 0 || m_forme->type == compte.Type ||
           m_contexte.Invalide("forme", "ce compte est d'un autre type."_w);
  }

  void Commence() override { m_fiche.type = std::max<i16>(m_forme->type, 0); }

  /// A field that the form shows for other types alone.
  bool Permis(const char* option, bool permis) {
    return permis || !(m_options.Donne(option) || m_options.Drapeau(option)) ||
           m_contexte.Invalide(option, "sans objet pour ce compte."_w);
  }

  /// As far as the form would take it.
  bool Remplit() override {
    const OptionsFiche& o = m_options;
    const bool banque = o.Drapeau("banque"), caisse = o.Drapeau("caisse");
    Fiche avant = m_fiche;
    if (o.Donne("debit-initial") || o.Donne("credit-initial"))
      m_fiche.debitInitial = m_fiche.creditInitial = 0;
    if (!PoseOptions()) return false;
    const i16 type = m_fiche.type;
    const bool tresorerie = type == Tresorerie, repartie = type == Recette || type == Depense;
    if (!Permis("rubrique", !tresorerie) || !Permis("tva", repartie) || !Permis("taux", type == Tva) ||
        !Permis("part-pro", type == Depense && !EstComptePersonnel(m_app, avant.compte)) ||
        !Permis("banque", tresorerie) || !Permis("caisse", tresorerie) ||
        !Permis("debit-initial", tresorerie) || !Permis("credit-initial", tresorerie))
      return false;
    if (banque || caisse) m_fiche.banque = banque;
    if (m_forme->forme == FormeCompte::Tresorerie && m_fiche.position == 0 && !o.Donne("compte"))
      m_fiche.compte = ProposeNumeroTresorerie(m_app, m_fiche.banque);
    return (!o.Donne("rubrique") || ControleRubrique()) && (!o.Donne("tva") || PoseTva());
  }

  bool ControleRubrique() {
    const std::string code = NormaliseRubrique(m_fiche.rubrique);
    return code.empty() ||
           (m_fiche.rubrique.size() <= code.size() &&
            Parmi(RubriquesDuType(m_app, m_fiche.type), &ChoixRubrique::code, code)) ||
           m_contexte.Invalide("rubrique", "aucune rubrique de ce côté n'a ce code."_w);
  }

  bool PoseTva() {
    m_fiche.compteTVA = QVAPI::GetLongCompte(m_fiche.compteTVA);
    if (m_fiche.compteTVA.empty()) return true;
    if (!m_app.Reglages.IsTVA())
      return m_contexte.Invalide("tva", "l'exercice n'est pas assujetti à la T.V.A."_w);
    return Parmi(ChoixComptesTVA(m_app), &ChoixTVA::compte, m_fiche.compteTVA) ||
           m_contexte.Invalide("tva", "ce n'est pas un compte de T.V.A."_w);
  }

  Refus Enregistre() override {
    // The form's question on a credit balance: typed on purpose, as --oui confirms.
    if (m_options.Donne("credit-initial") && m_fiche.creditInitial != 0 && !m_contexte.Globales.oui)
      return Refus(QuestionSoldeCrediteur);
    if (m_options.Donne("code"))
      if (Refus refus = ControleCode(m_app, m_forme->forme, m_fiche)) return refus;
    if (m_options.Donne("compte"))
      if (Refus refus = ControleNumero(m_app, m_forme->forme, m_fiche)) return refus;
    return EnregistreCompte(m_app, m_forme->forme, m_fiche);
  }

  Refus Supprime() override {
    m_contexte.Dialogue.Ordonne({QuestionSupprimeCompte, QuestionSupprimeTresorerie});
    return SupprimeCompte(m_app, m_forme->forme, m_fiche.position);
  }

  std::vector<std::pair<const char*, std::string>> Cles() override {
    return {{"Compte", QVAPI::GetLongCompte(m_fiche.compte)}, {"Code", CompacteTexte(m_fiche.code)}};
  }
  std::string Nom() override {
    return CompacteTexte(m_app.Magasin.GetShortCompte(QVAPI::GetLongCompte(m_fiche.compte)));
  }

  int Liste() override {
    const ListeComptes liste = m_forme->liste;
    std::vector<std::string> titres;
    std::size_t gauches = 0;
    const TableColonnes<Plan> colonnes = ColonnesComptes(m_app, liste);
    for (const ColonneListe<Plan>& colonne : colonnes) {
      titres.push_back(colonne.titre);
      if (colonne.cote == Cote::Gauche) ++gauches;
    }
    CPlan plan(m_app, m_app.PathExercice);
    return VerbeFiche::Liste(plan, PositionsComptes(m_app, liste), std::move(titres), gauches,
                             [&](Position) { return Cellules(colonnes, *plan.Rec); });
  }

  const Forme* m_forme = nullptr;
  FicheCompte m_fiche;
};

}  // namespace

void DeclareComptes(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsFiche>();
  ActionsFiche actions = DeclareVerbe<VerbeCompte>(ligne, o);
  const auto forme = [&](Commande& a, const char* description) -> Commande& {
    return a.Option("--forme", o->valeurs["forme"], FormeMots({"recettes", "depenses", "tresorerie", "plan"}),
                    description);
  };
  forme(actions.ajouter, "Formulaire dont les contrôles s'appliquent").Obligatoire();
  for (Commande* a : {&actions.modifier, &actions.supprimer})
    forme(*a, "Formulaire (par défaut : celui du type du compte)");
  forme(actions.lister, "Fenêtre").Obligatoire();
  for (Commande* a : {&actions.ajouter, &actions.modifier})
    a->Drapeau("--banque", o->drapeaux["banque"], "Compte bancaire")
        .Drapeau("--caisse", o->drapeaux["caisse"], "Caisse")
        .Exclut("--banque");
  actions.verbe.Controle([o](const OptionsGlobales&) -> std::string {
    const bool plan = o->Donne("forme") && *o->valeurs["forme"] == "plan";
    if (o->action.empty()) return FauteSansAction;
    if (o->action == "ajouter" && plan && !o->Donne("type")) return "il manque --type";
    return o->Donne("type") && !plan ? "--type va avec --forme plan" : "";
  });
}

}  // namespace fenlor
