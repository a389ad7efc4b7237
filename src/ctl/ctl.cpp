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
  }

  CLI::App& App() { return m_app; }
  const OptionsGlobales& Globales() const { return m_globales; }
  const CommandeCtl& Choisie() const { return m_choisie; }
  /// What is wrong with a line that the parser accepts; empty: nothing.
  std::string Faute() const {
    if (!m_choisie.action) return "il manque la commande";
    if (m_globales.cabinet.empty()) return "il manque --cabinet";
    if (m_choisie.nom == "creer") return FauteCreer();
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

  CLI::App m_app;
  OptionsGlobales m_globales;
  OptionsCreer m_creer;
  OptionsSaisir m_saisir;
  OptionsEchange m_echange;
  std::vector<std::string> m_fichiers;
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
    const auto choisies = ligne.App().get_subcommands();
    sortie << (choisies.empty() ? ligne.App().help() : choisies.front()->help("fenlorctl")) << std::flush;
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
