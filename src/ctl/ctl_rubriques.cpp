#include <algorithm>

#include "core/textes.h"
#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/json.h"
#include "ctl/tableau.h"
#include "master/rubriques.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr const char* Types[] = {"recette", "depense", "resultat", "taxe"};

const char* NomType(i16 type) {
  return type >= 0 && static_cast<std::size_t>(type) < std::size(Types) ? Types[type] : "";
}

class CommandeFiche {
 public:
  CommandeFiche(Contexte& contexte, const OptionsRubrique& options)
      : m_contexte(contexte), m_app(contexte.App), m_options(options) {}

  int Execute() {
    if (m_options.action == "lister") return Liste();
    if (m_app.Reglages.IsExerciceCloture()) return m_contexte.Refuse(3056, {});
    if (m_options.action == "ajouter") return Remplit() ? Enregistre() : int{StatutRefuse};
    if (!Trouve()) return StatutRefuse;
    if (m_options.action == "supprimer") return Supprime();
    return Remplit() ? Enregistre() : int{StatutRefuse};
  }

 private:
  bool Invalide(const char* champ, const std::string& raison) {
    m_contexte.Refuse(ErrChampInvalide, {champ, raison});
    return false;
  }

  bool Pose(const char* champ, const std::optional<std::string>& utf8, std::string& valeur) {
    if (!utf8) return true;
    const auto texte = DepuisUtf8(*utf8);
    if (!texte) return Invalide(champ, raison::CaractereImpossible());
    if (std::any_of(texte->begin(), texte->end(), [](char c) { return static_cast<unsigned char>(c) < 32; }))
      return Invalide(champ, "un caractère de contrôle est interdit."_w);
    valeur = *texte;
    return true;
  }

  /// The heading of the command line.
  bool Trouve() {
    std::string code;
    if (!Pose("rubrique", m_options.rubrique, code)) return false;
    CRubriques rubriques(m_app, m_app.PathExercice);
    PoseTexte(rubriques.Rec->Rubrique, NormaliseRubrique(code));
    const bool ouvert = rubriques.OpenFile();
    const bool trop = code.size() > sizeof rubriques.Rec->Rubrique - 1;
    if (ouvert && (trop || EstVide(code) || !rubriques.Find(0)))
      return Invalide("rubrique", "cette rubrique n'existe pas."_w);
    if (ouvert && LitFicheRubrique(m_app, rubriques.GetPos(), m_fiche)) return true;
    m_contexte.RefuseMagasin();
    return false;
  }

  bool Remplit() {
    const OptionsRubrique& o = m_options;
    if (!Pose("code", o.code, m_fiche.code) || !Pose("designation", o.designation, m_fiche.designation) ||
        !Pose("ligne", o.ligne, m_fiche.ligne) || !Pose("formule", o.formule, m_fiche.formule))
      return false;
    if (o.type)
      m_fiche.type = static_cast<i16>(std::find(std::begin(Types), std::end(Types), *o.type) - Types);
    if (o.montant) m_fiche.montant = TexteVersMontant(*o.montant);
    if (o.formule || o.montant) m_fiche.manuel = o.montant.has_value();
    return true;
  }

  int Enregistre() {
    const ResultatMaster r = EnregistreRubrique(m_app, m_fiche);
    return r ? Dit("enregistrée."_w) : m_contexte.RefuseRegle(r.erreur);
  }

  int Supprime() {
    m_contexte.Dialogue.Ordonne({QuestionSupprimeRubrique});
    const ResultatMaster r = SupprimeRubrique(m_app, m_fiche.position);
    return r ? Dit("supprimée."_w) : m_contexte.RefuseRegle(r.erreur);
  }

  int Dit(const std::string& fait) {
    const std::string texte = m_contexte.Globales.json
                                  ? LigneJson().Texte("code", m_fiche.code).Fin()
                                  : VersUtf8("Rubrique " + m_fiche.code + ' ' + fait) + "\n";
    return m_contexte.Ecrit(texte) ? StatutFait : StatutRefuse;
  }

  int Liste() {
    Tableau tableau;
    tableau.Ajoute({"Code", "Ligne", "Type", "Désignation"_w, "Calcul"});
    for (const Position position : PositionsRubriques(m_app)) {
      FicheRubrique f;
      if (!LitFicheRubrique(m_app, position, f)) return m_contexte.RefuseMagasin();
      if (!m_contexte.Globales.json) {
        const std::string montant = FormatMontant(f.montant, 2, m_app.Reglages.SeparateurDecimal());
        tableau.Ajoute({f.code, f.ligne, NomType(f.type), f.designation,
                        !f.manuel         ? f.formule
                        : montant.empty() ? "0"
                                          : montant});
        continue;
      }
      const std::string ligne = LigneJson()
                                    .Texte("code", f.code)
                                    .Texte("designation", f.designation)
                                    .Entier("ligne", TexteVersEntier(f.ligne))
                                    .Texte("type", NomType(f.type))
                                    .Booleen("manuel", f.manuel)
                                    .Texte("formule", f.formule)
                                    .Nombre("montant", f.montant)
                                    .Fin();
      if (!m_contexte.Ecrit(ligne)) return StatutRefuse;
    }
    constexpr std::size_t gauches = 5;
    return m_contexte.Globales.json || m_contexte.Ecrit(tableau.Texte(gauches)) ? StatutFait : StatutRefuse;
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsRubrique& m_options;
  FicheRubrique m_fiche;
};

}  // namespace

int CommandeRubrique(Contexte& contexte, const OptionsRubrique& options) {
  return contexte.OuvreExercice() ? CommandeFiche(contexte, options).Execute() : int{StatutRefuse};
}

}  // namespace fenlor
