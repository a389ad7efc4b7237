#include "ctl/reponseslignes.h"

#include <cassert>

namespace fenlor {

int RepondParLigne(Contexte& contexte, const std::string& source,
                   const std::function<Refus(const Json& objet, LigneJson& reponse)>& traite) {
  LecteurLignes lignes(contexte.Entree, source);
  if (!lignes.Ouvert()) return contexte.RefuseOuverture(source);
  int statut = StatutFait;
  Json objet;
  Refus refus;
  while (lignes.Suivante(objet, refus)) {
    assert(lignes.Numero() > 0);
    contexte.Oublie();
    LigneJson reponse;
    reponse.Entier("entree", lignes.Numero());
    if (!refus) refus = traite(objet, reponse);
    // What the files told has no words of its own.
    if (refus && refus.texte.empty()) refus = contexte.DernierEchec();
    if (refus) {
      statut = contexte.Refuse(refus, lignes.Numero());
      reponse = LigneJson();
      reponse.Entier("entree", lignes.Numero()).Entier("erreur", refus.numero).Texte("texte", refus.texte);
    }
    if (!contexte.Ecrit(reponse.Fin()) || !contexte.Vide()) return StatutRefuse;
  }
  return lignes.Erreur() ? contexte.RefuseLecture(lignes.Erreur(), source) : statut;
}

}  // namespace fenlor
