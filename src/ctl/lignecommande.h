// The command line of fenlorctl, as its commands declare it.
//
//   struct OptionsVirement { std::string de, vers; ... };
//   void DeclareVirement(LigneCommande& ligne) {
//     const auto o = std::make_shared<OptionsVirement>();
//     ligne.Ajoute("virement", "Vire une somme", [o](Contexte& c) { return Vire(c, *o); })
//         .Option("--de", o->de, {"COMPTE"}, "Compte d'origine").Obligatoire()
//         .Option("--date", o->date, FormeDate(), "Date du virement");
//   }
//
// The values live as long as the action that holds them. Texts are UTF-8.
#pragma once

#include <deque>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "ctl/contexte.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace fenlor {

/// How a value is written: what stands for it in the help, and what is wrong with one
/// that was typed (empty: nothing).
struct FormeOption {
  std::string texte = "TEXTE";
  std::function<std::string(const std::string& valeur)> faute = {};
};

/// Where a value goes. A vector takes several behind one option.
class CibleOption {
 public:
  template <class T>
  CibleOption(T& valeur) : m_valeur(&valeur) {}
  template <class Visiteur>
  CLI::Option* Visite(Visiteur&& visiteur) const {
    return std::visit(visiteur, m_valeur);
  }

 private:
  std::variant<std::string*, std::optional<std::string>*, std::vector<std::string>*, u32*,
               std::optional<u32>*, std::vector<u32>*>
      m_valeur;
};

/// A command, or one of its actions, while its options are declared.
class Commande {
 public:
  /// "--nom" is an option, "nom" an argument told by its place.
  Commande& Option(const std::string& nom, CibleOption cible, const FormeOption& forme,
                   const std::string& description);
  Commande& Drapeau(const std::string& nom, bool& valeur, const std::string& description);
  // On the option before:
  Commande& Obligatoire();
  Commande& Exclut(const std::string& nom);  ///< an option that was declared

  /// "ajouter" of "compte": a word behind the command, which `choisie` then holds.
  Commande Action(const std::string& nom, const std::string& description, std::string& choisie);
  /// What is wrong with a line that can be parsed, behind what was said before; empty: nothing.
  using Faute = std::function<std::string(const OptionsGlobales&)>;
  Commande& Controle(Faute faute);
  Commande& Pied(const std::string& texte);  ///< at the end of the help
  Commande& CreeDossier();                   ///< makes the practice's directory
  Commande& Repare();                        ///< opens a damaged practice

 private:
  friend class LigneCommande;
  struct Reglage {
    std::function<int(Contexte&)> action;
    Faute faute;
    bool creeDossier = false;
    bool repare = false;
  };
  Commande(CLI::App& app, Reglage& reglage) : m_app(&app), m_reglage(&reglage) {}
  CLI::App* m_app;
  Reglage* m_reglage;
  CLI::Option* m_option = nullptr;
};

class LigneCommande {
 public:
  LigneCommande();
  ~LigneCommande();
  LigneCommande(const LigneCommande&) = delete;
  LigneCommande& operator=(const LigneCommande&) = delete;

  Commande Ajoute(const std::string& nom, const std::string& description,
                  std::function<int(Contexte&)> action);

  struct Lecture {
    std::string aide;   ///< asked for, to be written instead of doing anything
    std::string faute;  ///< what is wrong with the line
  };
  /// Without help or fault, the chosen command can be carried out.
  Lecture Lit(const std::vector<std::string>& args);
  const OptionsGlobales& Globales() const { return m_globales; }
  bool CreeDossier() const { return m_choisie->creeDossier; }
  bool Repare() const { return m_choisie->repare; }
  int Execute(Contexte& contexte) const { return m_choisie->action(contexte); }

 private:
  std::string Aide() const;
  std::string FauteChoisie() const;

  std::unique_ptr<CLI::App> m_app;
  OptionsGlobales m_globales;
  std::deque<Commande::Reglage> m_commandes;
  const Commande::Reglage* m_choisie = nullptr;
};

}  // namespace fenlor
