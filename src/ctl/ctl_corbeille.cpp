// corbeille: what was deleted of an exercice, and back.
#include <cassert>

#include "ctl/commandes.h"
#include "ctl/json.h"
#include "journal/corbeille.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct OptionsCorbeille {
  std::string action;
  u32 numero = 0;
};

int ListeCorbeille(Contexte& c) {
  if (!c.OuvreExercice()) return StatutRefuse;
  std::vector<Suppression> suppressions;
  if (const Refus refus = LitCorbeille(c.App, suppressions)) return c.Refuse(refus);
  for (const Suppression& s : suppressions) {
    assert(!s.lignes.empty());
    const Line& ligne = s.lignes.front();
    if (!c.Ecrit(LigneJson()
                     .Entier("numero", s.numero)
                     .Texte("supprimee", StrDate(s.date))
                     .Entier("mouvement", ligne.Mouvement)
                     .Entier("journal", ligne.Journal)
                     .Texte("date", StrDate(ligne.Date))
                     .Texte("libelle", LitTexte(ligne.Libelle))
                     .Nombre("montant", s.Montant(c.App.Reglages.IsEuro()))
                     .Fin()))
      return StatutRefuse;
  }
  return StatutFait;
}

int Ramene(Contexte& c, const OptionsCorbeille& o) {
  if (!c.OuvreExercice()) return StatutRefuse;
  u32 mouvement = 0;
  if (const Refus refus = RestaureSuppression(c.App, o.numero, mouvement)) return c.Refuse(refus);
  return c.Donne(LigneJson().Entier("numero", o.numero).Entier("mouvement", mouvement).Fin());
}

}  // namespace

void DeclareCorbeille(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsCorbeille>();
  Commande corbeille =
      ligne.Ajoute("corbeille", "Les écritures supprimées depuis 90 jours",
                   [o](Contexte& c) { return o->action == "lister" ? ListeCorbeille(c) : Ramene(c, *o); });
  corbeille.Controle([o](const OptionsGlobales&) {
    return o->action.empty() ? std::string("il manque lister ou restaurer") : std::string();
  });
  corbeille.Action("lister", "Une suppression par ligne, la dernière d'abord", o->action);
  corbeille.Action("restaurer", "Enregistre à nouveau une écriture supprimée", o->action)
      .Option("NUMERO", o->numero, {"NUMERO"}, "Le numéro de la suppression")
      .Obligatoire();
}

}  // namespace fenlor
