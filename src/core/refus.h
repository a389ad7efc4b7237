// Why a rule did not do what it was asked for. A rule returns it and never shows it; the edge, a form or
// fenlorctl, tells it exactly once (`CFenlorApp::Dit`).
#pragma once

#include <initializer_list>
#include <string>

#include "core/texte.h"

namespace fenlor {

struct [[nodiscard]] Refus {
  unsigned numero = 0;     ///< of the message, or of the question that was answered no; 0: done
  const char* champ = "";  ///< field to point at, or none
  int rang = -1;           ///< line of the list that the field belongs to, from 0; -1: none
  std::string texte;       ///< complete, Windows-1252
  bool dit = false;        ///< the user knows: a question that he answered, a failure that the files told
  bool avis = false;       ///< told as a warning: nothing failed

  Refus() = default;
  explicit Refus(const TexteFixe& erreur, const char* champ = "",
                 std::initializer_list<std::string> arguments = {}, int rang = -1)
      : numero(erreur), champ(champ), rang(rang), texte(TexteFormat(erreur, arguments)) {}

  /// A question that was not answered as it had to be, or a failure that has been told.
  static Refus DejaDit(const TexteFixe& texte, const char* champ = "",
                       std::initializer_list<std::string> arguments = {}) {
    Refus refus(texte, champ, arguments);
    refus.dit = true;
    return refus;
  }

  /// What the user is warned of.
  static Refus Avis(const TexteFixe& texte, std::initializer_list<std::string> arguments = {}) {
    Refus refus(texte, "", arguments);
    refus.avis = true;
    return refus;
  }

  /// True when something stopped the rule: `if (const Refus refus = ...) return refus;`.
  explicit operator bool() const { return numero != 0; }
};

}  // namespace fenlor
