#include "ctl/lignecommande.h"

#include <cassert>

#include <CLI/CLI.hpp>

#include "core/version.h"
#include "ctl/optionscommunes.h"

namespace fenlor {

namespace {

/// Errors of the parser in French.
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
  constexpr std::size_t colonneDescription = 34;
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
  format->column_width(colonneDescription);
}

/// A word behind another one: its own options, and those of the words before it.
CLI::App& AjouteMot(CLI::App& app, const std::string& nom, const std::string& description,
                    const char* groupe) {
  CLI::App& mot = *app.add_subcommand(nom, description);
  Habille(mot);
  mot.group(groupe);
  mot.fallthrough();
  return mot;
}

CLI::Option& AjouteOption(CLI::App& app, const std::string& nom, const CibleOption& cible,
                          const FormeOption& forme, const std::string& description) {
  CLI::Option* option = cible.Visite([&](auto* valeur) { return app.add_option(nom, *valeur, description); });
  option->option_text(forme.texte);
  if (forme.faute)
    option->check(CLI::Validator([faute = forme.faute](std::string& texte) { return faute(texte); }, ""));
  return *option;
}

std::string TexteVersion() {
  std::string texte = "fenlorctl";
  char avant = ' ';
  for (const int n : {VersionProgramme, RevisionProgramme, BuildProgramme})
    texte += std::exchange(avant, '.') + std::to_string(n);
  return texte;
}

}  // namespace

Commande& Commande::Option(const std::string& nom, CibleOption cible, const FormeOption& forme,
                           const std::string& description) {
  assert(!nom.empty() && m_app);
  m_option = &AjouteOption(*m_app, nom, cible, forme, description);
  return *this;
}

Commande& Commande::Drapeau(const std::string& nom, bool& valeur, const std::string& description) {
  // Or the help would tell what the flag excludes in the parser's own words.
  m_option = m_app->add_flag(nom, valeur, description)->option_text(" ");
  return *this;
}

Commande& Commande::Obligatoire() {
  assert(m_option);
  m_option->required();
  return *this;
}

Commande& Commande::Exclut(const std::string& nom) {
  assert(m_option);
  m_option->excludes(m_app->get_option(nom));
  return *this;
}

Commande Commande::Action(const std::string& nom, const std::string& description, std::string& choisie) {
  CLI::App& action = AjouteMot(*m_app, nom, description, "Actions");
  action.callback([nom, &choisie] { choisie = nom; });
  return {action, *m_reglage};
}

Commande& Commande::Controle(Faute faute) {
  assert(faute);
  m_reglage->faute = [avant = std::move(m_reglage->faute),
                      faute = std::move(faute)](const OptionsGlobales& globales) {
    std::string texte = avant ? avant(globales) : std::string();
    return texte.empty() ? faute(globales) : texte;
  };
  return *this;
}

Commande& Commande::Pied(const std::string& texte) {
  m_app->footer(texte);
  return *this;
}

Commande& Commande::CreeDossier() {
  m_reglage->creeDossier = true;
  return *this;
}

Commande& Commande::Repare() {
  m_reglage->repare = true;
  return *this;
}

LigneCommande::LigneCommande()
    : m_app(std::make_unique<CLI::App>("Tient les livres d'un cabinet Fenlor depuis la ligne de commande.",
                                       "fenlorctl")) {
  Habille(*m_app);
  m_app->footer(
      "Le statut de sortie est 0 quand tout est fait, 1 quand quelque chose est refusé (le message est sur "
      "la\n"
      "sortie d'erreur), 2 quand la ligne de commande est incorrecte.");
  // Behind one command, the name of another is a value: "reconstruire journal".
  m_app->require_subcommand(0, 1);
  OptionsGlobales& g = m_globales;
  AjouteOption(*m_app, "--cabinet", g.cabinet, {"DOSSIER"},
               "Dossier du cabinet (ou la variable FENLOR_CABINET)")
      .envname("FENLOR_CABINET");
  AjouteOption(*m_app, "--exercice", g.exercice, {"NOM"},
               "Exercice (par défaut : l'exercice courant, sinon le dernier)");
  AjouteOption(*m_app, "--aujourdhui", g.aujourdhui, FormeDate(), "Date à prendre pour la date du jour");
  AjouteOption(*m_app, "--mot-de-passe", g.motDePasse, {},
               "Mot de passe du cabinet (ou la variable FENLOR_MOT_DE_PASSE)")
      .envname("FENLOR_MOT_DE_PASSE");
  m_app->add_flag("--json", g.json, "Écrit le résultat en JSON, un objet par ligne");
  m_app->set_version_flag("--version", TexteVersion(), "Affiche la version");
  m_app->add_flag("--oui", g.oui, "Répond oui aux questions, qui sont sinon refusées");
}

LigneCommande::~LigneCommande() = default;

Commande LigneCommande::Ajoute(const std::string& nom, const std::string& description,
                               std::function<int(Contexte&)> action) {
  CLI::App& app = AjouteMot(*m_app, nom, description, "Commandes");
  Commande::Reglage& reglage = m_commandes.emplace_back();
  reglage.action = std::move(action);
  assert(reglage.action);
  app.callback([this, &reglage] { m_choisie = &reglage; });
  return {app, reglage};
}

LigneCommande::Lecture LigneCommande::Lit(const std::vector<std::string>& args) {
  try {
    m_app->parse(std::vector<std::string>(args.rbegin(), args.rend()));
  } catch (const CLI::CallForHelp&) {
    return {Aide(), {}};
  } catch (const CLI::CallForVersion& e) {
    return {std::string(e.what()) + '\n', {}};
  } catch (const CLI::ParseError& e) {
    return {{}, Francise(e)};
  }
  return {{}, FauteChoisie()};
}

std::string LigneCommande::Aide() const {
  const CLI::App* choisie = m_app.get();
  std::string avant;
  for (auto suite = choisie->get_subcommands(); !suite.empty(); suite = choisie->get_subcommands()) {
    avant += (avant.empty() ? "" : " ") + choisie->get_name();
    choisie = suite.front();
  }
  return choisie->help(avant);
}

std::string LigneCommande::FauteChoisie() const {
  if (!m_choisie) return "il manque la commande";
  if (m_globales.cabinet.empty()) return "il manque --cabinet (ou la variable FENLOR_CABINET)";
  return m_choisie->faute ? m_choisie->faute(m_globales) : std::string();
}

}  // namespace fenlor
