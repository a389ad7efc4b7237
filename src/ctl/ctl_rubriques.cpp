#include <algorithm>

#include "core/erreurs.h"
#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/enregistrementjson.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"
#include "ctl/tableau.h"
#include "master/rubriques.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Texts as typed, in UTF-8; none: not given.
struct OptionsRubrique {
  std::string action;    ///< empty: none
  std::string rubrique;  ///< code of the heading that is modified or deleted
  std::optional<std::string> code, designation, ligne, type, formule;
  std::optional<std::string> montant;  ///< makes the heading manual, as a formula makes it automatic
};

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
    if (m_app.Reglages.IsExerciceCloture()) return m_contexte.Refuse(ErrExerciceCloture, {});
    if (m_options.action == "ajouter") return Remplit() ? Enregistre() : int{StatutRefuse};
    if (!Trouve()) return StatutRefuse;
    if (m_options.action == "supprimer") return Supprime();
    return Remplit() ? Enregistre() : int{StatutRefuse};
  }

 private:
  /// The heading of the command line.
  bool Trouve() {
    std::string code;
    if (!PoseOption(m_contexte, "rubrique", m_options.rubrique, code)) return false;
    CRubriques rubriques(m_app, m_app.PathExercice);
    PoseTexte(rubriques.Rec->Rubrique, NormaliseRubrique(code));
    const bool ouvert = rubriques.OpenFile();
    const bool trop = code.size() > sizeof rubriques.Rec->Rubrique - 1;
    if (ouvert && (trop || EstVide(code) || !rubriques.Find(0)))
      return m_contexte.Invalide("rubrique", "cette rubrique n'existe pas."_w);
    if (ouvert && LitFicheRubrique(m_app, rubriques.GetPos(), m_fiche)) return true;
    m_contexte.RefuseMagasin();
    return false;
  }

  bool Remplit() {
    const OptionsRubrique& o = m_options;
    if (!PoseOption(m_contexte, "code", o.code, m_fiche.code) ||
        !PoseOption(m_contexte, "designation", o.designation, m_fiche.designation) ||
        !PoseOption(m_contexte, "ligne", o.ligne, m_fiche.ligne) ||
        !PoseOption(m_contexte, "formule", o.formule, m_fiche.formule))
      return false;
    if (o.type)
      m_fiche.type = static_cast<i16>(std::find(std::begin(Types), std::end(Types), *o.type) - Types);
    if (o.montant) m_fiche.montant = TexteVersMontant(*o.montant);
    if (o.formule || o.montant) m_fiche.manuel = o.montant.has_value();
    return true;
  }

  int Enregistre() {
    const ResultatMaster r = EnregistreRubrique(m_app, m_fiche);
    if (!r) return m_contexte.RefuseRegle(r.erreur);
    if (const std::string& avis = m_contexte.Dialogue.Information(); !avis.empty()) m_contexte.Avertit(avis);
    return Dit("enregistrée."_w);
  }

  int Supprime() {
    const ResultatMaster r = SupprimeRubrique(m_app, m_fiche.position);
    return r ? Dit("supprimée."_w) : m_contexte.RefuseRegle(r.erreur);
  }

  int Dit(const std::string& fait) {
    const std::string texte = m_contexte.Globales.json
                                  ? LigneJson().Texte("Rubrique", NormaliseRubrique(m_fiche.code)).Fin()
                                  : VersUtf8("Rubrique " + m_fiche.code + ' ' + fait) + "\n";
    return m_contexte.Donne(texte);
  }

  int Liste() {
    Tableau tableau;
    tableau.Ajoute({"Code", "Ligne", "Type", "Désignation"_w, "Calcul"});
    CRubriques fichier(m_app, m_app.PathExercice);
    if (!fichier.OpenFile()) return m_contexte.RefuseMagasin();
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
      std::string ligne;
      if (!fichier.ReadRec(position)) return m_contexte.RefuseMagasin();
      AjouteEnregistrement(ligne, Champs(FichierRubriques), fichier.GetRec());
      if (!m_contexte.Ecrit(ligne)) return StatutRefuse;
    }
    constexpr std::size_t gauches = 5;
    return m_contexte.Globales.json ? int{StatutFait} : m_contexte.Donne(tableau.Texte(gauches));
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsRubrique& m_options;
  FicheRubrique m_fiche;
};

int Execute(Contexte& contexte, const OptionsRubrique& options) {
  return contexte.OuvreExercice() ? CommandeFiche(contexte, options).Execute() : int{StatutRefuse};
}

void DeclareChamps(Commande action, OptionsRubrique& o) {
  action.Option("--code", o.code, {}, "Code, 3 caractères au plus")
      .Option("--designation", o.designation, {}, "Désignation")
      .Option("--ligne", o.ligne, FormeChiffres("NOMBRE", 0, 5, "numéro de ligne incorrect"),
              "Ligne de l'état")
      .Option("--type", o.type, FormeMots({std::begin(Types), std::end(Types)}), "Type")
      .Option("--formule", o.formule, {}, "Calcul automatique (vide : total des comptes)")
      .Option("--montant", o.montant, FormeMontant(), "Montant manuel")
      .Exclut("--formule");
}

}  // namespace

void DeclareRubriques(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsRubrique>();
  Commande rubrique =
      ligne.Ajoute("rubrique", "Ajoute, modifie, supprime ou liste des rubriques de l'état fiscal",
                   [o](Contexte& c) { return Execute(c, *o); });
  rubrique.Controle([o](const OptionsGlobales&) {
    return o->action.empty() ? "il manque ajouter, modifier, supprimer ou lister" : std::string();
  });
  const auto action = [&](const char* nom, const char* description) {
    return rubrique.Action(nom, description, o->action);
  };
  DeclareChamps(action("ajouter", "Ajoute une rubrique"), *o);
  Commande modifier = action("modifier", "Change les champs donnés d'une rubrique");
  for (Commande a : {modifier, action("supprimer", "Supprime une rubrique")})
    a.Option("rubrique", o->rubrique, {"CODE"}, "Code de la rubrique").Obligatoire();
  DeclareChamps(modifier, *o);
  action("lister", "Écrit les rubriques dans l'ordre de leur code");
}

}  // namespace fenlor
