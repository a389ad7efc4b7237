// Page "Polices" of the preferences: fonts of lists, journals, forms and reports.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <array>
#include <string>

#include "ui/boutoncouleur.h"
#include "ui/cznsheet.h"

namespace fenlor {

/// A font or text colour that was chosen is stored at once, whatever becomes of the sheet, and
/// the windows that use it are refreshed. OK stores the check box.
class CPagePrefPolices : public CZNPage {
  Q_OBJECT
 public:
  static constexpr std::size_t NbPolices = 5;

  explicit CPagePrefPolices(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  struct Ligne {
    QLabel* exemple;
    QLabel* description;
    BoutonCouleur* couleur;  ///< none for the reports
    QPushButton* modifie;
  };
  void Montre(std::size_t rang);
  void Modifie(std::size_t rang);
  void Colore(std::size_t rang);
  /// Stores and refreshes; a file that cannot be written is told.
  void Range(std::size_t rang, const std::string& texte);

  QCheckBox m_defaut;
  std::array<Ligne, NbPolices> m_lignes;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
