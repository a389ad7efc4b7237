#include <algorithm>
#include <cassert>
#include <iterator>
#include <memory>

#include "core/valeurs.h"
#include "ctl/annuaire.h"
#include "ctl/commandes.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"
#include "ctl/sortieetat.h"
#include "ctl/textes.h"
#include "graphiques/ecriture.h"
#include "store/ouverture.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

// In the order of `GenreGraphique`.
constexpr const char* Genres[] = {"aires",    "aires-3d",    "barres-h", "barres-h-3d",
                                  "barres-v", "barres-v-3d", "courbes",  "courbes-3d",
                                  "nuage",    "surface",     "secteurs", "secteurs-3d"};
static_assert(std::size(Genres) == NbGenresGraphique);
constexpr f64 LargeurSvg = 960, HauteurSvg = 600, PoliceSvg = 14;

struct OptionsGraphique {
  std::string genre = Genres[static_cast<int>(GenreParDefaut)];
  std::vector<std::string> comptes;
  bool comparaison = false;
  std::optional<std::string> du, au, svg, pdf;
  bool texte = false;
};

std::string Faute(const OptionsGraphique& o) {
  if (o.svg.has_value() + o.pdf.has_value() + o.texte != 1)
    return "il faut une sortie, et une seule : --svg, --pdf ou --texte";
  if (o.du && o.au && GetDate(*o.du) > GetDate(*o.au)) return "--au est avant --du";
  return {};
}

/// The accounts by code or number, in the order in which they were given. False: told.
bool LitComptes(Contexte& contexte, const std::vector<std::string>& noms, DemandeGraphique& demande) {
  std::vector<CompteGraphique> lignes;
  AnnuaireComptes annuaire;
  const Ouverture plan(contexte.Magasin, FichierComptes);
  if (LitComptesGraphique(contexte.App, lignes) || !annuaire.Charge(contexte.App)) {
    contexte.RefuseMagasin();
    return false;
  }
  for (const std::string& nom : noms) {
    const auto texte = DepuisUtf8(nom);
    const Plan* compte = texte ? annuaire.ParCode(-1, *texte) : nullptr;
    if (texte && !compte) compte = annuaire.ParNumero(QVAPI::GetLongCompte(*texte));
    const auto trouve = std::find_if(lignes.begin(), lignes.end(), [&](const CompteGraphique& ligne) {
      return compte && ligne.compte == LitTexte(compte->Compte);
    });
    if (trouve == lignes.end())
      return contexte.Invalide(
          "compte",
          "aucun compte de recettes, de dépenses, de trésorerie ou de T.V.A. n'a ce code ou ce numéro."_w);
    demande.choisis.push_back(*trouve);
  }
  return true;
}

int EcritPoints(Contexte& contexte, const SerieGraphique& serie) {
  if (!contexte.Globales.json) return contexte.Donne(VersUtf8(EcritValeurs(serie)));
  std::string lignes;
  for (const PointGraphique& point : serie.points)
    lignes += LigneJson().Texte("libelle", point.libelle).Nombre("valeur", Arrondi2(point.valeur)).Fin();
  return contexte.Donne(lignes);
}

int EcritImage(Contexte& contexte, const OptionsGraphique& o, const SerieGraphique& serie,
               GenreGraphique genre) {
  assert(o.svg.has_value() != o.pdf.has_value());
  if (o.svg) {
    const PlaceGraphique place = PlaceEcran(LargeurSvg, HauteurSvg, PoliceSvg);
    const std::string svg =
        EcritSvg(DessineGraphique(serie, genre, place, MesureTable()), LargeurSvg, HauteurSvg);
    if (*o.svg == "-") return contexte.Donne(svg);
    const Refus refus = EcritExport(contexte.App, *o.svg, svg);
    return refus ? contexte.Refuse(refus) : StatutFait;
  }
  const auto ecrit = [&](const std::string& fichier, int descripteur) {
    return contexte.EcritPdfGraphique(contexte.App, serie, genre, fichier, descripteur);
  };
  if (*o.pdf == "-")
    return DonneParFichier(contexte, [&](int descripteur) { return ecrit({}, descripteur); }) ? StatutFait
                                                                                              : StatutRefuse;
  return ecrit(*o.pdf, -1) ? StatutFait : contexte.RefuseMagasin();
}

int Execute(Contexte& contexte, const OptionsGraphique& o) {
  if (o.pdf && !contexte.EcritPdfGraphique) return contexte.Refuse(ErrSansPdf, {});
  if (!contexte.OuvreExercice()) return StatutRefuse;
  DemandeGraphique demande;
  demande.comparaison = o.comparaison;
  demande.du = o.du ? GetDate(*o.du) : contexte.App.Reglages.GetDebutExercice();
  demande.au = o.au ? GetDate(*o.au) : contexte.App.Reglages.GetFinExercice();
  if (!LitComptes(contexte, o.comptes, demande)) return StatutRefuse;
  if (const Refus refus = ControleGraphique(demande)) return contexte.Refuse(refus);
  SerieGraphique serie;
  if (const Refus refus = FaitSerieGraphique(contexte.App, demande, serie)) return contexte.Refuse(refus);
  if (o.texte) return EcritPoints(contexte, serie);
  const auto genre = std::find(std::begin(Genres), std::end(Genres), o.genre) - std::begin(Genres);
  assert(genre < NbGenresGraphique);
  return EcritImage(contexte, o, serie, static_cast<GenreGraphique>(genre));
}

}  // namespace

void DeclareGraphiques(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsGraphique>();
  Commande graphique =
      ligne.Ajoute("graphique", "Dessine les mouvements de comptes, mois par mois ou compte par compte",
                   [o](Contexte& c) { return Execute(c, *o); });
  graphique.Controle([o](const OptionsGlobales&) { return Faute(*o); });
  graphique
      .Option("--genre", o->genre, FormeMots({std::begin(Genres), std::end(Genres)}),
              "Genre du graphique (barres-v)")
      .Option("--compte", o->comptes, {"COMPTE"}, "Comptes, par leur code ou leur numéro")
      .Obligatoire()
      .Drapeau("--comparaison", o->comparaison, "Un point par compte, au lieu des douze mois")
      .Option("--du", o->du, FormeDate(), "Premier jour (par défaut : celui de l'exercice)")
      .Option("--au", o->au, FormeDate(), "Dernier jour (par défaut : celui de l'exercice)")
      .Drapeau("--texte", o->texte, "Écrit un point par ligne : libellé, valeur")
      .Option("--svg", o->svg, {"FICHIER"}, "Écrit l'image dans ce fichier SVG (- : sur la sortie standard)")
      .Option("--pdf", o->pdf, {"FICHIER"},
              "Écrit une page dans ce fichier PDF (- : sur la sortie standard)");
}

}  // namespace fenlor
