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

class VerbeCompte : public VerbeDe<FicheCompte, CPlan> {
 public:
  // clang-format off
  static constexpr MotsVerbe Mots{
      "compte", "Ajoute, modifie, supprime ou liste des comptes", "un compte", "Compte",
      "numero", "COMPTE", "Numéro du compte", "Écrit les lignes de la fenêtre", false};
  // clang-format on
  VerbeCompte(Contexte& contexte, const OptionsFiche& options) : VerbeDe(contexte, options, Mots) {
    contexte.Dialogue.Decline({QuestionSoldeCrediteur});
    contexte.Dialogue.Ordonne({QuestionSupprimeCompte, QuestionSupprimeTresorerie});
    if (options.Donne("forme"))
      m_liste = static_cast<ListeComptes>(
          std::find(Listes.begin(), Listes.end(), *options.valeurs.at("forme")) - Listes.begin());
  }

 private:
  Refus Trouve(const std::string& numero) override {
    PoseTexte(m_fichier.Rec->Compte, QVAPI::GetLongCompte(numero));
    if (const Refus refus = LitCle("ce compte n'existe pas."_w)) return refus;
    const ListeComptes liste = m_liste.value_or(ListeDuType(m_fiche.type));
    m_fiche.forme = FormeDe(liste);
    const bool juste = TypeDe(liste) < 0 || TypeDe(liste) == m_fiche.type;
    return juste ? Refus() : RefusChamp("forme", "ce compte est d'un autre type."_w);
  }
  void Commence() override {
    assert(m_liste);
    m_fiche.forme = FormeDe(*m_liste);
    m_fiche.type = std::max<i16>(TypeDe(*m_liste), 0);
  }
  bool Remplit() override {
    if (!PoseOptions()) return false;
    if (m_fiche.forme == FormeCompte::Tresorerie && m_fiche.position == 0 && !m_options.Donne("compte"))
      m_fiche.compte = ProposeNumeroTresorerie(m_app, m_fiche.banque);
    return true;
  }
  std::string Faute(const ChampFiche& champ) override { return FauteChamp(m_app, m_fiche, champ.nom); }
  Refus Enregistre() override {
    // The form's question on a credit balance: typed on purpose, as --oui confirms.
    if (m_options.Donne("credit-initial") && m_fiche.creditInitial != 0 && !m_contexte.Globales.oui)
      return Refus(QuestionSoldeCrediteur);
    Refus refus = m_options.Donne("code") ? ControleCode(m_app, m_fiche) : Refus();
    if (!refus && m_options.Donne("compte")) refus = ControleNumero(m_app, m_fiche);
    return refus ? refus : VerbeDe::Enregistre();
  }
  std::vector<std::pair<const char*, std::string>> Cles() override {
    return {{"Compte", QVAPI::GetLongCompte(m_fiche.compte)}, {"Code", CompacteTexte(m_fiche.code)}};
  }
  std::string Nom() override { return m_app.NumeroCourt(QVAPI::GetLongCompte(m_fiche.compte)); }
  int Liste() override {
    return VerbeFiche::Liste(m_fichier, PositionsComptes(m_app, *m_liste), ColonnesComptes(m_app, *m_liste));
  }

  std::optional<ListeComptes> m_liste;
};

}  // namespace

void DeclareComptes(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsFiche>();
  ActionsFiche actions = DeclareVerbe<VerbeCompte>(ligne, o);
  auto& forme = o->valeurs["forme"];
  actions.ajouter.Option("--forme", forme, FormeMots(Listes), "Formulaire dont les contrôles s'appliquent")
      .Obligatoire();
  for (Commande* action : {&actions.modifier, &actions.supprimer})
    action->Option("--forme", forme, FormeMots(Listes), "Formulaire (par défaut : celui du type du compte)");
  actions.lister.Option("--forme", forme, FormeMots(Listes), "Fenêtre").Obligatoire();
  actions.verbe.Controle([o](const OptionsGlobales&) -> std::string {
    const bool plan = o->Donne("forme") && *o->valeurs["forme"] == "plan";
    if (o->action == "ajouter" && plan && !o->Donne("type")) return "il manque --type";
    return o->Donne("type") && !plan ? "--type va avec --forme plan" : "";
  });
}

}  // namespace fenlor
