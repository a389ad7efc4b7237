// Page "Couleurs" of the preferences: where the colours come from; rules, rows and background of the
// journals.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <array>

#include "ui/boutoncouleur.h"
#include "ui/cznsheet.h"

namespace fenlor {

class CPagePrefCouleurs : public CZNPage {
  Q_OBJECT
 public:
  explicit CPagePrefCouleurs(ContexteUi& contexte);
  bool Charge() override;
  /// The four keys stay as they are in the file unless they are drawn with.
  bool Enregistre() override;

 private:
  JeuCouleurs Jeu() const { return static_cast<JeuCouleurs>(m_jeu.currentIndex()); }
  void Suit();
  QComboBox m_jeu;
  QCheckBox m_systeme;  ///< says the same as the second choice
  std::array<BoutonCouleur, 4> m_couleurs;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
