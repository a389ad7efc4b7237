#include <cassert>
#include <utility>

#include "banque/remise.h"
#include "ctl/commandes.h"
#include "ctl/demandecriteres.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"

namespace fenlor {

namespace {

struct OptionsRemise {
  std::string action;
  OptionsCriteres criteres;
  std::vector<u32> mouvements;  ///< these entries alone, and no criteria
};

constexpr const char* FauteSansAction = "il manque lister, remettre ou retirer";

std::string LigneCheque(const Cheque& cheque) {
  return LigneJson()
      .Entier("Mouvement", cheque.mouvement)
      .Entier("Rang", cheque.rang)
      .Texte("DateLigne", StrDate(cheque.date))
      .Texte("Libelle", cheque.libelle)
      .Nombre("MontantFranc", cheque.franc)
      .Nombre("MontantEuro", cheque.euro)
      .Entier("SaisieEuro", cheque.enEuro)
      .Entier("Remise", cheque.remise)
      .Texte("DateRemise", StrDate(cheque.dateRemise))
      .Fin();
}

/// The cheques of the entries named, or of the criteria. False: told.
bool Choisit(Contexte& contexte, const OptionsRemise& options, EtatRemise etat, CriteresRemise& criteres,
             std::vector<Cheque>& cheques) {
  if (options.mouvements.empty()) {
    DemandeurOptions demandeur(contexte, options.criteres);
    if (!demandeur.Prepare() || !demandeur.PoseRemise(criteres, etat)) return false;
    const Refus refus = ChequesDe(contexte.App, criteres, cheques);
    return !refus || contexte.Refuse(refus) == StatutFait;
  }
  for (const u32 mouvement : options.mouvements) {
    std::vector<Cheque> siens;
    if (const Refus refus = ChequesDeLEcriture(contexte.App, mouvement, siens))
      return contexte.Refuse(refus) == StatutFait;
    cheques.insert(cheques.end(), siens.begin(), siens.end());
  }
  return true;
}

int Execute(Contexte& contexte, const OptionsRemise& options) {
  if (!contexte.OuvreExercice()) return StatutRefuse;
  const bool liste = options.action == "lister", remet = options.action == "remettre";
  assert(liste || remet || options.action == "retirer");
  CriteresRemise criteres;
  std::vector<Cheque> cheques;
  const EtatRemise etat = liste ? EtatRemise::Tous : remet ? EtatRemise::NonRemis : EtatRemise::Remis;
  if (!Choisit(contexte, options, etat, criteres, cheques)) return StatutRefuse;
  const std::optional<std::string>& date = options.criteres.date;
  if (!liste)
    if (const Refus refus =
            MarqueCheques(contexte.App, cheques, remet, date ? GetDate(*date) : contexte.Magasin.Today()))
      return contexte.Refuse(refus);
  std::string texte;
  for (const Cheque& cheque : cheques) texte += LigneCheque(cheque);
  if (!liste) return contexte.Donne(texte);
  LigneJson total;
  total.Entier("Cheques", static_cast<i64>(cheques.size()));
  if (const auto somme = TotalRemise(cheques, criteres.monnaie)) total.Nombre("TotalRemise", *somme);
  return contexte.Donne(texte + total.Fin());
}

std::string Faute(const OptionsRemise& o) {
  if (o.action.empty()) return FauteSansAction;
  if (o.mouvements.empty()) return o.criteres.compte ? std::string() : "il manque --compte";
  const std::string critere = OptionEnTrop(o.criteres, GroupeDateRemise);
  return critere.empty() ? critere : critere + " ne va pas avec --mouvement";
}

}  // namespace

void DeclareRemise(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsRemise>();
  Commande remise = ligne.Ajoute("remise", "Liste les chèques à remettre en banque, les remet ou les retire",
                                 [o](Contexte& c) { return Execute(c, *o); });
  remise.Controle([o](const OptionsGlobales&) { return Faute(*o); });
  Commande lister = remise.Action("lister", "Écrit les chèques, une ligne JSON chacun, puis leur total",
                                  o->action),
           remettre = remise.Action("remettre", "Marque les chèques comme remis, tous ou aucun", o->action),
           retirer = remise.Action("retirer", "Retire les chèques de leur remise, tous ou aucun", o->action);
  for (Commande* action : {&lister, &remettre, &retirer}) {
    DeclareOptionsPeriode(*action, o->criteres, false);
    DeclareOptionsRemise(*action, o->criteres);
    if (action != &lister)
      action->Option("--mouvement", o->mouvements, FormeNumeros(),
                     "Chèques de ces écritures, au lieu de ceux d'un compte");
  }
}

}  // namespace fenlor
