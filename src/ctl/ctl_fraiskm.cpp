#include <algorithm>
#include <array>
#include <cassert>

#include "core/valeurs.h"
#include "ctl/commandes.h"
#include "ctl/json.h"
#include "ctl/optionscommunes.h"
#include "ctl/tableau.h"
#include "master/fraiskm.h"
#include "master/textes.h"
#include "master/variables.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Numbers as typed; none: as they stand.
struct OptionsFraisKm {
  std::string action;  ///< empty: none
  std::optional<std::string> distance, ancien, dernier, borneInf, borneSup, fixe;
  std::array<std::optional<std::string>, 3> taux;
  bool supprimerEcritures = false;
};

class CommandeFiche {
 public:
  CommandeFiche(Contexte& contexte, const OptionsFraisKm& options)
      : m_contexte(contexte), m_app(contexte.App), m_options(options), m_fiche(LitFraisKm(m_app)) {}

  int Execute() {
    assert(!m_options.action.empty());
    if (m_options.action == "afficher") return Affiche();
    return m_options.action == "enregistrer" ? Enregistre() : Supprime();
  }

 private:
  int Enregistre() {
    const OptionsFraisKm& o = m_options;
    assert(!o.distance || (!o.ancien && !o.dernier));
    const auto pose = [](std::string& texte, const std::optional<std::string>& valeur) {
      if (!valeur) return;
      texte = *valeur;
      std::replace(texte.begin(), texte.end(), ',', '.');  // the point is read whatever the machine's mark
    };
    if (o.distance || o.ancien || o.dernier) m_fiche.compteur = !o.distance;
    pose(m_fiche.kms, o.distance);
    pose(m_fiche.ancien, o.ancien);
    pose(m_fiche.dernier, o.dernier);
    pose(m_fiche.borneInf, o.borneInf);
    pose(m_fiche.borneSup, o.borneSup);
    pose(m_fiche.fixe, o.fixe);
    for (std::size_t i = 0; i < m_fiche.taux.size(); ++i) pose(m_fiche.taux[i], o.taux[i]);

    // --oui alone replaces an amount; it takes no entries away.
    m_contexte.Dialogue.Ordonne({QuestionEcrituresVariable});
    if (!o.supprimerEcritures) m_contexte.Dialogue.Decline({QuestionEcrituresVariable});
    const u32 ecritures = CompteEcrituresVariable(m_app, Texte(VariableFraisKm));
    m_contexte.Oublie();
    bool supprimees = false;
    if (const Refus refus = EnregistreFraisKm(m_app, m_fiche, supprimees)) return m_contexte.Refuse(refus);
    if (m_contexte.Globales.json) return Affiche();
    std::string texte = "Frais kilométriques enregistrés : "_w + Montant() + ".\n";
    if (ecritures > 0)
      texte += std::to_string(ecritures) +
               (supprimees ? " écriture(s) supprimée(s).\n"_w
                           : " écriture(s) restent dans les comptes de la rubrique.\n"_w);
    return m_contexte.Donne(VersUtf8(texte));
  }

  int Supprime() {
    m_contexte.Dialogue.Ordonne({QuestionSupprimeFraisKm});
    const bool rien = !m_fiche.enregistre;
    if (const Refus refus = SupprimeFraisKm(m_app, m_fiche)) return m_contexte.Refuse(refus);
    if (m_contexte.Globales.json) return Affiche();
    return m_contexte.Donne(rien ? "Aucun montant n'est enregistré.\n" : "Frais kilométriques supprimés.\n");
  }

  std::string Montant() const {
    const f64 montant = Arrondi2(CalculFraisKm(m_app, m_fiche));
    if (montant == 0) return "0";
    return m_app.Reglages.IsEuro() ? FormatEuro(montant) : FormatFranc(montant);
  }

  int Affiche() {
    if (m_contexte.Globales.json) {
      std::vector<f64> taux;
      for (const std::string& texte : m_fiche.taux) taux.push_back(TexteVersMontant(texte));
      const std::string ligne = LigneJson()
                                    .Booleen("enregistre", m_fiche.enregistre)
                                    .Booleen("compteur", m_fiche.compteur)
                                    .Nombre("ancien", TexteVersMontant(m_fiche.ancien))
                                    .Nombre("dernier", TexteVersMontant(m_fiche.dernier))
                                    .Nombre("kms", TexteVersMontant(m_fiche.kms))
                                    .Nombre("borneInf", TexteVersMontant(m_fiche.borneInf))
                                    .Nombre("borneSup", TexteVersMontant(m_fiche.borneSup))
                                    .Nombre("fixe", TexteVersMontant(m_fiche.fixe))
                                    .Nombres("taux", taux)
                                    .Nombre("montant", Arrondi2(CalculFraisKm(m_app, m_fiche)))
                                    .Fin();
      return m_contexte.Donne(ligne);
    }
    Tableau tableau;
    tableau.Ajoute({"Montant enregistré :"_w, m_fiche.enregistre ? "oui" : "non"});
    if (m_fiche.compteur) tableau.Ajoute({"Relevés :"_w, m_fiche.ancien + " - " + m_fiche.dernier});
    tableau.Ajoute({"Distance :", m_fiche.kms});
    const auto libelles = LibellesTauxKm(m_app, m_fiche);
    for (std::size_t i = 0; i < libelles.size(); ++i)
      tableau.Ajoute({libelles[i], m_fiche.taux[i] + (i == 1 ? " + " + m_fiche.fixe : "")});
    tableau.Ajoute({"Remboursement :", Montant()});
    return m_contexte.Donne(tableau.Texte(2));
  }

  Contexte& m_contexte;
  CFenlorApp& m_app;
  const OptionsFraisKm& m_options;
  FicheFraisKm m_fiche;
};

int Execute(Contexte& contexte, const OptionsFraisKm& options) {
  return contexte.OuvreExercice() ? CommandeFiche(contexte, options).Execute() : int{StatutRefuse};
}

// What the form's fields of kilometres and rates take.
FormeOption FormeKilometres() { return FormeChiffres("KM", 1, 6, "kilomètres incorrects"); }
FormeOption FormeTaux(f64 limite) {
  return {"NOMBRE", [limite](const std::string& texte) {
            if (std::string faute = FormeNombre().faute(texte); !faute.empty()) return faute;
            const f64 taux = TexteVersMontant(texte);
            return taux >= 0.001 && taux < limite ? std::string()
                                                  : "montant du kilomètre incorrect : " + texte;
          }};
}

}  // namespace

void DeclareFraisKm(LigneCommande& ligne) {
  const auto o = std::make_shared<OptionsFraisKm>();
  Commande frais =
      ligne.Ajoute("frais-km", "Affiche, enregistre ou supprime les frais kilométriques de l'exercice",
                   [o](Contexte& c) { return Execute(c, *o); });
  frais.Controle([o](const OptionsGlobales&) {
    return o->action.empty() ? "il manque afficher, enregistrer ou supprimer" : std::string();
  });
  frais.Action("afficher", "Donne le barème, la distance et le montant", o->action);
  frais.Action("supprimer", "Supprime le montant enregistré", o->action);
  Commande enregistrer =
      frais.Action("enregistrer", "Enregistre le montant ; change ce qui est donné", o->action);
  const FormeOption km = FormeKilometres();
  enregistrer.Option("--distance", o->distance, km, "Distance parcourue")
      .Option("--ancien", o->ancien, km, "Ancien relevé du compteur")
      .Exclut("--distance")
      .Option("--dernier", o->dernier, km, "Dernier relevé")
      .Exclut("--distance")
      .Option("--borne-inf", o->borneInf, km, "Fin de la première tranche")
      .Option("--borne-sup", o->borneSup, km, "Fin de la deuxième tranche")
      .Option("--fixe", o->fixe, FormeNombre(), "Part fixe de la deuxième tranche");
  for (std::size_t i = 0; i < o->taux.size(); ++i)
    enregistrer.Option("--taux-" + std::to_string(i + 1), o->taux[i], FormeTaux(i == 0 ? 1e3 : 1e5),
                       "Montant du kilomètre de la tranche");
  enregistrer.Drapeau("--supprimer-ecritures", o->supprimerEcritures,
                      "Supprime les écritures que ce montant remplace");
}

}  // namespace fenlor
