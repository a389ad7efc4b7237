#include "store/remplacement.h"

#include <cassert>

namespace fenlor {

int RemplaceFichier(Systeme& systeme, const std::string& chemin, const std::string& provisoire,
                    std::string_view contenu, Empreinte& empreinte) {
  assert(!provisoire.empty() && provisoire != chemin && DossierDe(provisoire) == DossierDe(chemin));
  std::unique_ptr<Fichier> fichier;
  int erreur = systeme.Ouvre(provisoire, Systeme::Creation, fichier);
  if (erreur) return erreur;
  erreur = fichier->Ecrit(contenu.data(), contenu.size(), 0);
  // Durable before it takes the name: a crash leaves the old file or the new one.
  if (!erreur) erreur = fichier->Synchronise();
  if (!erreur) erreur = fichier->Mesure(empreinte);
  fichier.reset();
  assert(erreur || empreinte.taille == contenu.size());
  if (!erreur) erreur = systeme.Renomme(provisoire, chemin);
  if (erreur) systeme.Supprime(provisoire);
  return erreur;
}

}  // namespace fenlor
