#include "core/nomschamps.h"

#include <cassert>

#include "core/textes.h"

namespace fenlor {

std::string NomChamp(std::string_view champ) {
  assert(!champ.empty());
  constexpr struct {
    std::string_view champ;
    TexteFixe nom;
  } noms[] = {{"ttc", NomChampTtc},           {"professionnel", NomChampProfessionnel},
              {"tva", NomChampTva},           {"montant", NomChampMontant},
              {"debit", NomChampDebit},       {"credit", NomChampCredit},
              {"libelle", NomChampLibelle},   {"code", NomChampCode},
              {"compte", NomChampCompte},     {"designation", NomChampDesignation},
              {"rubrique", NomChampRubrique}, {"formule", NomChampFormule}};
  for (const auto& n : noms)
    if (n.champ == champ) return Texte(n.nom);
  return std::string(champ);
}

}  // namespace fenlor
