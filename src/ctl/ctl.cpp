#include "ctl/ctl.h"

#include <CLI/CLI.hpp>
#include <functional>

#include "ctl/commandes.h"
#include "ctl/contexte.h"
#include "session/entretien.h"
#include "store/definitions.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// Command line errors and headings in French.
std::string Francise(const CLI::ParseError& e) {
  const std::string texte = e.what();
  const auto avant = [&](const char* mot) { return texte.substr(0, texte.find(mot)); };
  const std::size_t deux = texte.find(": ");
  const std::string apres = deux == std::string::npos ? texte : texte.substr(deux + 2);
  if (dynamic_cast<const CLI::ExtrasError*>(&e)) return "argument inattendu : " + apres;
  if (dynamic_cast<const CLI::RequiredError*>(&e)) return "il manque " + avant(" is required");
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&e)) return "valeur manquante ou de trop pour " + avant(":");
  if (dynamic_cast<const CLI::ConversionError*>(&e)) return "valeur incorrecte : " + apres;
  if (dynamic_cast<const CLI::ExcludesError*>(&e))
    return "options incompatibles : " + avant(" ") + " et " + texte.substr(texte.rfind(' ') + 1);
  if (dynamic_cast<const CLI::ValidationError*>(&e)) return apres;
  return texte;
}

void Habille(CLI::App& app) {
  app.option_defaults()->group("Options");
  app.set_help_flag("-h,--help", "Affiche cette aide")->group("Options");
  auto format = app.get_formatter();
  format->label("Usage", "Utilisation");
  format->label("OPTIONS", "OPTIONS");
  format->label("SUBCOMMAND", "COMMANDE");
  format->label("SUBCOMMANDS", "COMMANDES");
  format->label("POSITIONALS", "ARGUMENTS");
  format->label("Positionals", "Arguments");
  format->label("REQUIRED", "(obligatoire)");
  format->label("TEXT", "TEXTE");
  format->label("INT", "N");
  format->column_width(34);
}

CLI::Validator DateValide() {
  return CLI::Validator(
      [](std::string& texte) {
        return IsDateOk(GetDate(texte)) ? std::string() : "date incorrecte : " + texte + " (JJ/MM/AAAA)";
      },
      "JJ/MM/AAAA");
}

std::string NomsFichiers() {
  std::string noms;
  for (const DefinitionFichier* d = Definitions(); d->numero; ++d)
    noms += (noms.empty() ? "" : ", ") + std::string(d->nom);
  return noms;
}

CLI::Validator FichierValide() {
  return CLI::Validator(
      [](std::string& nom) {
        return DefinitionNom(nom) ? std::string() : "fichier inconnu : " + nom + " (" + NomsFichiers() + ")";
      },
      "");
}

CLI::Validator FichierReconstructibleValide() {
  return CLI::Validator(
      [](std::string& nom) {
        std::string noms;
        for (const FichierReconstructible& connu : FichiersReconstructibles()) {
          if (CompareSansCasse(nom, connu.nom) == 0) return std::string();
          noms += (noms.empty() ? "" : ", ") + std::string(connu.nom);
        }
        return "fichier inconnu : " + nom + " (" + noms + ")";
      },
      "");
}

CLI::Validator MotValide(std::vector<std::string> mots) {
  return CLI::Validator(
      [mots = std::move(mots)](std::string& texte) {
        std::string liste;
        for (const std::string& mot : mots) {
          if (mot == texte) return std::string();
          liste += (liste.empty() ? "" : ", ") + mot;
        }
        return "mot inconnu : " + texte + " (" + liste + ")";
      },
      "");
}

CLI::Validator NombreValide() {
  return CLI::Validator(
      [](std::string& texte) {
        constexpr std::size_t longueurMax = 16;
        const bool nombre = texte.size() <= longueurMax && !texte.empty() &&
                            texte.find_first_not_of("0123456789.,") == std::string::npos &&
                            texte.find_first_of("0123456789") != std::string::npos &&
                            texte.find_first_of(".,") == texte.find_last_of(".,");
        return nombre ? std::string() : "nombre incorrect : " + texte;
      },
      "");
}

/// A number that may be negative.
CLI::Validator MontantValide() {
  return CLI::Validator(
      [](std::string& texte) {
        std::string nombre = texte.substr(texte.starts_with('-') ? 1 : 0);
        return NombreValide()(nombre);
      },
      "");
}

/// What the form's field of five characters takes.
CLI::Validator LigneValide() {
  return CLI::Validator(
      [](std::string& texte) {
        constexpr std::size_t longueurMax = 5;
        const bool chiffres =
            texte.size() <= longueurMax && texte.find_first_not_of("0123456789") == std::string::npos;
        return chiffres ? std::string() : "numéro de ligne incorrect : " + texte;
      },
      "");
}

struct CommandeCtl {
  std::string nom;
  std::function<int(Contexte&)> action;
  bool cree = false;    ///< makes the practice's directory
  bool repare = false;  ///< opens a damaged practice
};

/// The whole command line: options bound to values, and the action of the
/// command that was chosen.
class LigneDeCommande {
 public:
  LigneDeCommande()
      : m_app("Tient les livres d'un cabinet Fenlor depuis la ligne de commande.", "fenlorctl") {
    Habille(m_app);
    m_app.footer(
        "Le statut de sortie est 0 quand tout est fait, 1 quand quelque chose est refusé (le message est sur "
        "la\n"
        "sortie d'erreur), 2 quand la ligne de commande est incorrecte.");
    m_app.add_option("--cabinet", m_globales.cabinet, "Dossier du cabinet")->option_text("DOSSIER");
    m_app
        .add_option("--exercice", m_globales.exercice,
                    "Exercice (par défaut : l'exercice courant, sinon le dernier)")
        ->option_text("NOM");
    m_app.add_option("--aujourdhui", m_globales.aujourdhui, "Date à prendre pour la date du jour")
        ->option_text("JJ/MM/AAAA")
        ->check(DateValide());
    m_app
        .add_option("--mot-de-passe", m_globales.motDePasse,
                    "Mot de passe du cabinet (ou la variable FENLOR_MOT_DE_PASSE)")
        ->option_text("TEXTE")
        ->envname("FENLOR_MOT_DE_PASSE");
    m_app.add_flag("--json", m_globales.json, "Écrit le résultat en JSON, un objet par ligne");
    m_app.add_flag("--oui", m_globales.oui, "Répond oui aux questions, qui sont sinon refusées");
    AjouteExercices();
    AjouteSaisie();
    AjouteEchanges();
    AjouteEntretien();
    AjouteComptes();
    AjouteRubriques();
  }

  CLI::App& App() { return m_app; }
  const OptionsGlobales& Globales() const { return m_globales; }
  const CommandeCtl& Choisie() const { return m_choisie; }
  /// What is wrong with a line that the parser accepts; empty: nothing.
  std::string Faute() const {
    if (!m_choisie.action) return "il manque la commande";
    if (m_globales.cabinet.empty()) return "il manque --cabinet";
    if (m_choisie.nom == "creer") return FauteCreer();
    if (m_choisie.nom == "compte") return FauteCompte();
    if (m_choisie.nom == "rubrique" && m_rubrique.action.empty()) return ActionManquante();
    if (m_choisie.nom == "exporter" && m_echange.cle >= 0 &&
        m_echange.cle >= DefinitionNom(m_echange.nom)->nbCles)
      return m_echange.nom + " n'a pas de clé " + std::to_string(m_echange.cle);
    return {};
  }

 private:
  CLI::App* Ajoute(CommandeCtl ajoutee, const std::string& description) {
    CLI::App* commande = m_app.add_subcommand(ajoutee.nom, description);
    Habille(*commande);
    commande->group("Commandes");
    commande->fallthrough();
    commande->callback([this, ajoutee = std::move(ajoutee)] { m_choisie = ajoutee; });
    return commande;
  }

  std::string FauteCreer() const {
    if (m_globales.exercice.empty()) return "il manque --exercice";
    if (m_creer.debut.empty() != m_creer.fin.empty()) return "--debut et --fin vont ensemble";
    const std::string& nom = m_globales.exercice;
    const bool annee =
        nom.size() == 4 && nom.find_first_not_of("0123456789") == std::string::npos && nom >= "0001";
    if (!annee && m_creer.debut.empty())
      return "l'exercice " + nom + " ne porte pas le nom d'une année : --debut et --fin sont obligatoires";
    return {};
  }

  static std::string ActionManquante() { return "il manque ajouter, modifier, supprimer ou lister"; }

  std::string FauteCompte() const {
    if (m_compte.action.empty()) return ActionManquante();
    if (m_compte.action == "ajouter" && m_compte.forme == "plan" && !m_compte.type)
      return "il manque --type";
    if (m_compte.type && m_compte.forme != "plan") return "--type va avec --forme plan";
    return {};
  }

  void AjouteExercices() {
    CLI::App* creer = Ajoute({"creer", [this](Contexte& c) { return CommandeCreer(c, m_creer); }, true},
                             "Crée un exercice, et le dossier du cabinet s'il manque");
    creer->add_option("--debut", m_creer.debut, "Premier jour")
        ->option_text("JJ/MM/AAAA")
        ->check(DateValide());
    creer->add_option("--fin", m_creer.fin, "Dernier jour")->option_text("JJ/MM/AAAA")->check(DateValide());
    CLI::Option* euro = creer->add_flag("--euro", m_creer.euro, "Tenu en Euro")->option_text(" ");
    creer->add_flag("--franc", m_creer.franc, "Tenu en Franc")->option_text(" ")->excludes(euro);
    creer->add_flag("--tva", m_creer.tva, "Assujetti à la T.V.A.");
    Ajoute({"exercices", CommandeExercices}, "Liste les exercices du cabinet");
    Ajoute({"demo", CommandeDemo, true}, "Remplit un cabinet vide d'un exemple : trois années d'un médecin");
  }

  void AjouteSaisie() {
    CLI::App* saisir = Ajoute({"saisir", [this](Contexte& c) { return CommandeSaisir(c, m_saisir); }},
                              "Enregistre des écritures, une par ligne JSON ; répond une ligne à chacune");
    saisir->add_option("fichier", m_saisir.fichier, "Fichier des écritures (- : l'entrée standard)")
        ->option_text("[FICHIER|-]");
    saisir->add_flag("--tout", m_saisir.tout,
                     "Enregistre d'un seul tenant toutes les lignes acceptées, ou aucune");
    saisir->footer(
        "Recette, dépense :\n"
        "  "
        "{\"journal\":\"recettes\",\"date\":\"15/03/"
        "2003\",\"compte\":\"706\",\"libelle\":\"Consultations\",\n"
        "   \"ttc\":120.0,\"tresorerie\":\"BQ\",\"paiement\":\"cheque\"}\n"
        "  \"journal\" : recettes, depenses ; \"code\" au lieu de \"compte\" ; \"paiement\" : cheque, autre "
        ";\n"
        "  en plus \"professionnel\", \"monnaie\" (franc, euro) ; au lieu de \"tresorerie\" :\n"
        "  \"tresoreries\":[{\"compte\":\"BQ\",\"montant\":100.0,\"paiement\":\"cheque\"},...]\n"
        "Opération diverse :\n"
        "  {\"journal\":\"od\",\"date\":\"15/03/2003\",\"libelle\":\"Apport\",\n"
        "   \"lignes\":[{\"compte\":\"512\",\"debit\":10.0},{\"compte\":\"108\",\"credit\":10.0}]}\n"
        "Écriture existante :\n"
        "  {\"mouvement\":345,\"ttc\":125.0}  change les champs donnés\n"
        "  {\"mouvement\":345,\"supprimer\":true} ; de même \"valider\", \"pointer\", \"rapprocher\" (true, "
        "false)");
  }

  void AjouteEchanges() {
    CLI::App* exporter = Ajoute({"exporter", [this](Contexte& c) { return CommandeExporter(c, m_echange); }},
                                "Écrit les enregistrements d'un fichier, un objet JSON par ligne");
    exporter->add_option("fichier", m_echange.nom, NomsFichiers())
        ->option_text("FICHIER")
        ->required()
        ->check(FichierValide());
    exporter
        ->add_option("--cle", m_echange.cle,
                     "Dans l'ordre de cette clé, à partir de 0 (sinon celui du fichier)")
        ->option_text("N")
        ->check(CLI::Validator(
            [](std::string& texte) {
              const bool chiffres =
                  !texte.empty() && texte.find_first_not_of("0123456789") == std::string::npos;
              return chiffres ? std::string() : "numéro de clé incorrect : " + texte;
            },
            ""));
    CLI::App* importer = Ajoute({"importer", [this](Contexte& c) { return CommandeImporter(c, m_echange); }},
                                "Reprend ce qu'exporter a écrit");
    importer->add_option("fichier", m_echange.nom, NomsFichiers())
        ->option_text("FICHIER")
        ->required()
        ->check(FichierValide());
    importer->add_option("source", m_echange.source, "Source (- : l'entrée standard)")
        ->option_text("[SOURCE|-]");
  }

  void AjouteEntretien() {
    Ajoute({"balance", CommandeBalance}, "Donne les comptes, leurs cumuls et leurs soldes");
    CLI::App* recalculer =
        Ajoute({"recalculer", [this](Contexte& c) { return CommandeRecalculer(c, m_euros); }},
               "Recalcule les cumuls de tous les comptes");
    recalculer->add_flag("--euros", m_euros,
                         "Ajuste d'abord l'autre monnaie de chaque ligne au taux de sa date");
    Ajoute({"verifier", CommandeVerifier}, "Contrôle les clés, les cumuls et l'équilibre des écritures");
    CLI::App* reconstruire = Ajoute(
        {"reconstruire", [this](Contexte& c) { return CommandeReconstruire(c, m_fichiers); }, false, true},
        "Refait des fichiers et leurs clés à partir des données brutes");
    reconstruire->add_option("fichiers", m_fichiers, "Fichiers à refaire (par défaut : tous)")
        ->option_text("[FICHIER...]")
        ->check(FichierReconstructibleValide());
  }

  /// An action of a command, such as "ajouter" of "compte".
  CLI::App* AjouteAction(CLI::App& commande, const std::string& nom, const std::string& description,
                         std::string& choisie) {
    CLI::App* action = commande.add_subcommand(nom, description);
    Habille(*action);
    action->group("Actions");
    action->fallthrough();
    action->callback([nom, &choisie] { choisie = nom; });
    return action;
  }

  void AjouteComptes() {
    CLI::App* compte = Ajoute({"compte", [this](Contexte& c) { return CommandeCompte(c, m_compte); }},
                              "Ajoute, modifie, supprime ou liste des comptes");
    const auto action = [&](const char* nom, const char* description) {
      return AjouteAction(*compte, nom, description, m_compte.action);
    };
    const auto forme = [this](CLI::App* a, const char* description) {
      return a->add_option("--forme", m_compte.forme, description)
          ->option_text("recettes|depenses|tresorerie|plan")
          ->check(MotValide({"recettes", "depenses", "tresorerie", "plan"}));
    };
    CLI::App* ajouter = action("ajouter", "Ajoute un compte");
    forme(ajouter, "Formulaire dont les contrôles s'appliquent")->required();
    AjouteChampsCompte(*ajouter);
    CLI::App* modifier = action("modifier", "Change les champs donnés d'un compte");
    CLI::App* supprimer = action("supprimer", "Supprime un compte");
    for (CLI::App* a : {modifier, supprimer}) {
      a->add_option("numero", m_compte.numero, "Numéro du compte")->option_text("COMPTE")->required();
      forme(a, "Formulaire (par défaut : celui du type du compte)");
    }
    AjouteChampsCompte(*modifier);
    forme(action("lister", "Écrit les lignes de la fenêtre"), "Fenêtre")->required();
  }

  void AjouteChampsCompte(CLI::App& action) {
    const auto texte = [&](const char* nom, std::optional<std::string>& valeur, const char* description) {
      return action.add_option(nom, valeur, description)->option_text("TEXTE");
    };
    texte("--type", m_compte.type, "Type de compte, avec --forme plan")
        ->option_text("tresorerie|recette|depense|tva|autre")
        ->check(MotValide({"tresorerie", "recette", "depense", "tva", "autre"}));
    texte("--code", m_compte.code, "Code, 8 caractères au plus");
    texte("--compte", m_compte.compte, "Numéro, 10 caractères au plus (trésorerie : proposé s'il manque)");
    texte("--designation", m_compte.designation, "Désignation");
    texte("--rubrique", m_compte.rubrique, "Code de la rubrique (vide : aucune)");
    texte("--tva", m_compte.tva, "Numéro du compte de T.V.A. (vide : aucun)")->option_text("COMPTE");
    const auto nombre = [&](const char* nom, std::optional<std::string>& valeur, const char* description) {
      return texte(nom, valeur, description)->option_text("NOMBRE")->check(NombreValide());
    };
    nombre("--taux", m_compte.taux, "Taux d'un compte de T.V.A., en %");
    nombre("--part-pro", m_compte.partPro, "Part professionnelle d'une dépense, en %");
    CLI::Option* banque = action.add_flag("--banque", m_compte.banque, "Compte bancaire")->option_text(" ");
    action.add_flag("--caisse", m_compte.caisse, "Caisse")->option_text(" ")->excludes(banque);
    CLI::Option* debit = nombre("--debit-initial", m_compte.debitInitial, "Solde initial au débit");
    nombre("--credit-initial", m_compte.creditInitial, "Solde initial au crédit (à confirmer par --oui)")
        ->excludes(debit);
  }

  void AjouteRubriques() {
    CLI::App* rubrique = Ajoute({"rubrique", [this](Contexte& c) { return CommandeRubrique(c, m_rubrique); }},
                                "Ajoute, modifie, supprime ou liste des rubriques de l'état fiscal");
    const auto action = [&](const char* nom, const char* description) {
      return AjouteAction(*rubrique, nom, description, m_rubrique.action);
    };
    CLI::App* ajouter = action("ajouter", "Ajoute une rubrique");
    AjouteChampsRubrique(*ajouter);
    CLI::App* modifier = action("modifier", "Change les champs donnés d'une rubrique");
    for (CLI::App* a : {modifier, action("supprimer", "Supprime une rubrique")})
      a->add_option("rubrique", m_rubrique.rubrique, "Code de la rubrique")->option_text("CODE")->required();
    AjouteChampsRubrique(*modifier);
    action("lister", "Écrit les rubriques dans l'ordre de leur code");
  }

  void AjouteChampsRubrique(CLI::App& action) {
    const auto texte = [&](const char* nom, std::optional<std::string>& valeur, const char* description) {
      return action.add_option(nom, valeur, description)->option_text("TEXTE");
    };
    texte("--code", m_rubrique.code, "Code, 3 caractères au plus");
    texte("--designation", m_rubrique.designation, "Désignation");
    texte("--ligne", m_rubrique.ligne, "Ligne de l'état")->option_text("NOMBRE")->check(LigneValide());
    texte("--type", m_rubrique.type, "Type")
        ->option_text("recette|depense|resultat|taxe")
        ->check(MotValide({"recette", "depense", "resultat", "taxe"}));
    CLI::Option* formule =
        texte("--formule", m_rubrique.formule, "Calcul automatique (vide : total des comptes)");
    texte("--montant", m_rubrique.montant, "Montant manuel")
        ->option_text("NOMBRE")
        ->check(MontantValide())
        ->excludes(formule);
  }

  CLI::App m_app;
  OptionsGlobales m_globales;
  OptionsCreer m_creer;
  OptionsSaisir m_saisir;
  OptionsEchange m_echange;
  std::vector<std::string> m_fichiers;
  OptionsCompte m_compte;
  OptionsRubrique m_rubrique;
  bool m_euros = false;
  CommandeCtl m_choisie;
};

}  // namespace

int ExecuteCtl(const std::vector<std::string>& args, std::istream& entree, std::ostream& sortie,
               std::ostream& erreurs, const OptionsCtl& options) {
  LigneDeCommande ligne;
  const auto usage = [&](const std::string& faute) {
    erreurs << "fenlorctl : " << faute << "\nVoir fenlorctl --help, ou fenlorctl COMMANDE --help."
            << std::endl;
    return int{StatutUsage};
  };
  try {
    ligne.App().parse(std::vector<std::string>(args.rbegin(), args.rend()));
  } catch (const CLI::CallForHelp&) {
    const CLI::App* choisie = &ligne.App();
    std::string avant;
    for (auto suite = choisie->get_subcommands(); !suite.empty(); suite = choisie->get_subcommands()) {
      avant += (avant.empty() ? "" : " ") + choisie->get_name();
      choisie = suite.front();
    }
    sortie << choisie->help(avant) << std::flush;
    return sortie.good() ? StatutFait : StatutRefuse;
  } catch (const CLI::ParseError& e) {
    return usage(Francise(e));
  }
  if (const std::string faute = ligne.Faute(); !faute.empty()) return usage(faute);

  OptionsCtl particulieres = options;
  particulieres.magasin.reparation = ligne.Choisie().repare;
  Contexte contexte(ligne.Globales(), particulieres, entree, sortie, erreurs);
  int statut = StatutRefuse;
  if (contexte.OuvreCabinet(ligne.Choisie().cree)) statut = ligne.Choisie().action(contexte);
  return contexte.Termine(statut);
}

}  // namespace fenlor
