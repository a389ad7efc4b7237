#include "core/texte.h"
#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/json.h"
#include "session/demo.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

int Remplit(Contexte& contexte) {
  bool ecrit = true;
  const Refus refus = RemplitDemo(contexte.App, [&](const ResumeDemo& r) {
    if (contexte.Globales.json) {
      ecrit = contexte.Ecrit(LigneJson()
                                 .Texte("exercice", r.exercice)
                                 .Entier("ecritures", r.ecritures)
                                 .Entier("od", r.od)
                                 .Nombre("recettes", Arrondi2(r.recettes))
                                 .Nombre("depenses", Arrondi2(r.depenses))
                                 .Booleen("euro", r.euro)
                                 .Fin());
      return;
    }
    const auto montant = [&](f64 m) { return r.euro ? FormatEuro(m) : FormatFranc(m); };
    ecrit = contexte.Ecrit(VersUtf8("Exercice "_w + r.exercice + " : " + std::to_string(r.ecritures) +
                                    " écritures, recettes "_w + montant(r.recettes) + ", dépenses "_w +
                                    montant(r.depenses) + ".\n"));
  });
  if (refus) return contexte.Refuse(refus);
  return ecrit ? StatutFait : StatutRefuse;
}

}  // namespace

void DeclareDemo(LigneCommande& ligne) {
  ligne.Ajoute("demo", "Remplit un cabinet vide d'un exemple : trois années d'un médecin", Remplit)
      .CreeDossier();
}

}  // namespace fenlor
