#include <cassert>

#include "core/texte.h"
#include "ctl/commandes.h"
#include "ctl/json.h"
#include "recherche/recherche.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 parTranche = 1u << 16;

struct OptionsChercher {
  std::vector<std::string> mots;
  std::optional<u32> auPlus;
  bool tous = false;
};

std::string Ligne(const Trouvaille& t) {
  LigneJson objet;
  assert(t.note > 0 && t.note <= 100);
  const bool ecriture = t.sorte == SorteTrouvaille::Ecriture;
  objet.Texte("Sorte", ecriture ? "Ecriture" : t.sorte == SorteTrouvaille::Compte ? "Compte" : "Rubrique");
  objet.Texte("Exercice", t.exercice).Entier("Note", t.note);
  if (!ecriture) {
    if (t.sorte == SorteTrouvaille::Compte)
      objet.Texte("Compte", QVAPI::GetLongCompte(t.compte)).Texte("Code", t.code);
    else
      objet.Texte("Rubrique", t.code);
    return objet.Texte("Designation", t.libelle).Fin();
  }
  objet.Entier("Mouvement", t.mouvement).Entier("Journal", t.journal).Entier("Ligne", t.ligne);
  objet.Texte("Date", StrDate(t.date)).Texte("Libelle", t.libelle);
  objet.Nombre("MontantFranc", t.franc).Nombre("MontantEuro", t.euro);
  objet.Texte("Compte", t.compte.empty() ? t.compte : QVAPI::GetLongCompte(t.compte));
  return objet.Texte("Piece", t.piece).Texte("RappLibelle", t.banque).Entier("Validee", t.validee).Fin();
}

int Cherche(Contexte& contexte, const OptionsChercher& options) {
  std::string texte;
  for (const std::string& mot : options.mots) texte += (texte.empty() ? "" : " ") + mot;
  // What the books cannot hold, nothing in them fits.
  const std::optional<std::string> interne = DepuisUtf8(texte);
  if (!interne) return StatutFait;
  const Requete requete(*interne);
  if (requete.Trop()) return contexte.RefuseUsage("Trop de mots : 32 au plus");
  Recherche recherche(contexte.App, requete, {options.tous, options.auPlus.value_or(0)});
  while (recherche.Avance(parTranche)) continue;
  for (const Trouvaille& t : recherche.Trouvailles())
    if (!contexte.Ecrit(Ligne(t))) return StatutRefuse;
  return recherche.Echec() ? contexte.Refuse(recherche.Echec()) : int{StatutFait};
}

}  // namespace

void DeclareChercher(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsChercher>();
  ligne
      .Ajoute("chercher",
              "Cherche écritures, comptes et rubriques : une ligne JSON par trouvaille, les "
              "meilleures d'abord",
              [o](Contexte& c) { return c.OuvreExercice() ? Cherche(c, *o) : int{StatutRefuse}; })
      .Option("mots", o->mots, {"MOTS"},
              "Mots, montants, dates, comptes, pièces : ce qui est trouvé les a tous")
      .Obligatoire()
      .Option("--au-plus", o->auPlus, {"NOMBRE"}, "Nombre d'écritures gardées de chaque exercice")
      .Drapeau("--tous-les-exercices", o->tous, "Cherche dans tous les exercices du cabinet");
}

}  // namespace fenlor
