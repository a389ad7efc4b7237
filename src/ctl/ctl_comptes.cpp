#include <algorithm>
#include <cassert>

#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/optionscommunes.h"
#include "ctl/verbefiche.h"
#include "master/comptes.h"
#include "master/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// In the order of `ListeComptes`.
const std::vector<std::string> Listes = {"recettes", "depenses", "tresorerie", "plan"};

class VerbeCompte : public VerbeFiche {
 public:
  using Fiche = FicheCompte;
  // clang-format off
  static constexpr MotsVerbe Mots{
      "compte", "Ajoute, modifie, supprime ou liste des comptes", "un compte", "Compte",
      "numero", "COMPTE", "Numéro du compte", "Écrit les lignes de la fenêtre", false};
  // clang-format on
  VerbeCompte(Contexte& contexte, const OptionsFiche& options)
      : VerbeFiche(contexte, options, Mots, Fiche::Table, &m_fiche), m_plan(m_app, m_app.PathExercice) {
    contexte.Dialogue.Decline({QuestionSoldeCrediteur});
    contexte.Dialogue.Ordonne({QuestionSupprimeCompte, QuestionSupprimeTresorerie});
    if (options.Donne("forme"))
      m_liste = static_cast<ListeComptes>(
          std::find(Listes.begin(), Listes.end(), *options.valeurs.at("forme")) - Listes.begin());
  }

 private:
  FormeCompte Forme() const {
    assert(m_liste);
    return FormeDe(*m_liste);
  }

  bool Trouve(const std::string& numero) override {
    PoseTexte(m_plan.Rec->Compte, QVAPI::GetLongCompte(numero));
    const auto lit = [this, rec = Plan{}](Position p) mutable { return LitFiche(m_app, p, m_fiche, rec); };
    if (!TrouveDans(m_plan, "ce compte n'existe pas."_w, lit)) return false;
    if (!m_liste) m_liste = ListeDuType(m_fiche.type);
    return TypeDe(*m_liste) < 0 || TypeDe(*m_liste) == m_fiche.type ||
           m_contexte.Invalide("forme", "ce compte est d'un autre type."_w);
  }
  void Commence() override {
    assert(m_liste);
    m_fiche.type = std::max<i16>(TypeDe(*m_liste), 0);
  }
  bool Remplit() override {
    if (!PoseOptions()) return false;
    if (Forme() == FormeCompte::Tresorerie && m_fiche.position == 0 && !m_options.Donne("compte"))
      m_fiche.compte = ProposeNumeroTresorerie(m_app, m_fiche.banque);
    return true;
  }
  std::string Faute(const ChampFiche& champ) override { return FauteChamp(m_app, m_fiche, champ.nom); }
  Refus Enregistre() override {
    // The form's question on a credit balance: typed on purpose, as --oui confirms.
    if (m_options.Donne("credit-initial") && m_fiche.creditInitial != 0 && !m_contexte.Globales.oui)
      return Refus(QuestionSoldeCrediteur);
    Refus refus = m_options.Donne("code") ? ControleCode(m_app, Forme(), m_fiche) : Refus();
    if (!refus && m_options.Donne("compte")) refus = ControleNumero(m_app, Forme(), m_fiche);
    return refus ? refus : EnregistreCompte(m_app, Forme(), m_fiche);
  }
  Refus Supprime() override { return SupprimeCompte(m_app, Forme(), m_fiche.position); }
  std::vector<std::pair<const char*, std::string>> Cles() override {
    return {{"Compte", QVAPI::GetLongCompte(m_fiche.compte)}, {"Code", CompacteTexte(m_fiche.code)}};
  }
  std::string Nom() override { return m_app.NumeroCourt(QVAPI::GetLongCompte(m_fiche.compte)); }
  int Liste() override {
    return VerbeFiche::Liste(m_plan, PositionsComptes(m_app, *m_liste), ColonnesComptes(m_app, *m_liste));
  }

  std::optional<ListeComptes> m_liste;
  Fiche m_fiche;
  CPlan m_plan;
};

}  // namespace

void DeclareComptes(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsFiche>();
  ActionsFiche actions = DeclareVerbe<VerbeCompte>(ligne, o);
  const auto forme = [&](Commande& action, const char* description) -> Commande& {
    return action.Option("--forme", o->valeurs["forme"], FormeMots(Listes), description);
  };
  forme(actions.ajouter, "Formulaire dont les contrôles s'appliquent").Obligatoire();
  for (Commande* action : {&actions.modifier, &actions.supprimer})
    forme(*action, "Formulaire (par défaut : celui du type du compte)");
  forme(actions.lister, "Fenêtre").Obligatoire();
  actions.verbe.Controle([o](const OptionsGlobales&) -> std::string {
    const bool plan = o->Donne("forme") && *o->valeurs["forme"] == "plan";
    if (o->action == "ajouter" && plan && !o->Donne("type")) return "il manque --type";
    return o->Donne("type") && !plan ? "--type va avec --forme plan" : "";
  });
}

}  // namespace fenlor
