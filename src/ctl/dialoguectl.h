// The answers of fenlorctl to what a rule tells and asks.
#pragma once

#include <set>
#include <string>

#include "core/dialoguesansprogression.h"
#include "core/texte.h"

namespace fenlor {

/// Keeps the last failure or question. A question is answered yes when the user
/// gave --oui or when the command itself is the order that it asks about; else
/// no. A question whose yes would open a form ("Cliquez sur 'OK' pour le choisir")
/// and an offer to try again are always declined. Progress is ignored.
class DialogueCtl : public DialogueSansProgression {
 public:
  explicit DialogueCtl(bool oui) : m_oui(oui) {}

  void Erreur(unsigned numero, const std::string& texte) override;
  int Message(unsigned style, unsigned numero, const std::string& texte) override;

  /// Questions of these numbers count as answered by the command line itself.
  void Ordonne(std::set<unsigned> questions) { m_ordonnees = std::move(questions); }
  /// Questions of these numbers, whose yes would lead back to a form, get a no even with --oui.
  void Decline(std::set<unsigned> questions) { m_declinees = std::move(questions); }
  void Oublie();
  bool Oui() const { return m_oui; }
  /// Number and text of the last failure, or of the last question declined.
  unsigned Numero() const { return m_numero; }
  const std::string& Texte() const { return m_texte; }
  /// A failure was told to the dialogue, and nobody has told the user or forgotten it since.
  bool ErreurEnAttente() const { return m_erreur; }
  /// Text of the last message that asks nothing.
  const std::string& Information() const { return m_information; }

 private:
  bool m_oui;
  std::set<unsigned> m_ordonnees, m_declinees;
  unsigned m_numero = 0;
  bool m_erreur = false;
  std::string m_texte;
  std::string m_information;
};

}  // namespace fenlor
