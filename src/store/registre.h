// The registry substitute: per-user and per-machine texts by key path and name,
// in one profile file each: "registre.ini" under the platform's configuration
// folders, a section for each key path.
//
//  - user: $XDG_CONFIG_HOME/Orvelia, ~/.config/Orvelia without that variable;
//  - machine: /etc/xdg/Orvelia. Where it cannot be written, a machine text goes
//    into the user's own file, in a section of its own, and counts for that
//    user before the machine's.
//
// Several programs of a user may write at once: each waits for the other, two seconds at most.
#pragma once

#include <optional>
#include <string>

#include "store/systeme.h"

namespace fenlor {

/// $XDG_CONFIG_HOME/Orvelia and so on; empty when the account has no home.
std::string DossierUtilisateur();

class Registre {
 public:
  enum Racine { Utilisateur, Machine };
  /// A text is cut to this many bytes when it is read.
  static constexpr std::size_t TailleMax = 259;

  /// Folders that hold "registre.ini"; empty: the platform's. `systeme` outlives
  /// the object. Nothing is created before the first write.
  explicit Registre(Systeme& systeme, const std::string& dossier = {},
                    const std::string& dossierMachine = {});

  /// Nothing when the name does not exist, or its file cannot be read (`Erreur`).
  std::optional<std::string> Lit(Racine racine, const std::string& cle, const std::string& nom);
  /// Creates the folders and the key as needed. False: nothing was changed, and
  /// `Erreur` tells why. Texts and names hold no character below 32.
  bool Ecrit(Racine racine, const std::string& cle, const std::string& nom, const std::string& texte);

  /// errno of the last call, 0 when it went well.
  int Erreur() const { return m_erreur; }

 private:
  std::optional<std::string> LitFichier(const std::string& dossier, const std::string& section,
                                        const std::string& nom);
  bool EcritFichier(const std::string& dossier, const std::string& section, const std::string& nom,
                    const std::optional<std::string>& texte);

  Systeme& m_systeme;
  std::string m_dossier;
  std::string m_dossierMachine;
  int m_erreur = 0;
};

}  // namespace fenlor
