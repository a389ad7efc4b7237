// The template "defaut.qvc" that a practice's first exercice is made from: chart
// of accounts, headings of the fiscal statement, first settings, entry labels.
// docs/MODELE.md describes the file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "store/enregistrements.h"
#include "store/profil.h"

namespace fenlor {

struct Modele {
  Date date = 0;              ///< of the content
  std::vector<Plan> comptes;  ///< long numbers, amounts 0
  std::vector<Rubrique> rubriques;
  /// Settings that a practice gets where it has none: section, key, value.
  std::vector<Profil::Changement> reglages;
  std::vector<std::string> libelles;  ///< Windows-1252, at most 80 characters
};

struct ErreurModele {
  unsigned ligne = 0;  ///< from 1; 0 when no line is to blame
  std::string raison;  ///< Windows-1252
};

/// Reads a template of UTF-8 text. Any bytes may be given. False: `erreur` says
/// why, and `modele` is of no use.
bool LitModele(std::string_view octets, Modele& modele, ErreurModele& erreur);

/// The template that is built into the program.
std::string_view ModeleIntegre();

/// Reads "defaut.qvc" of the programs' directory, or the built-in template when
/// there is none (an empty directory counts as none). False: `erreur`.
bool ChargeModele(Systeme& systeme, const std::string& pathProgrammes, Modele& modele, ErreurModele& erreur);

}  // namespace fenlor
