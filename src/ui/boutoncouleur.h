// A box that shows a colour and opens the palette to choose another.
#pragma once

#include <QColor>
#include <QPushButton>

#include "ui/couleurs.h"

namespace fenlor {

/// Click, Space or Alt+Down opens the palette: eight colours by name, and "Autre..." for
/// the colour dialog (`objectName` "DialogCouleur").
class BoutonCouleur : public QPushButton {
  Q_OBJECT
 public:
  enum class Palette {
    Fonds,   ///< light, to write on
    Textes,  ///< dark, to write with
  };
  explicit BoutonCouleur(QWidget* parent = nullptr) : BoutonCouleur(Palette::Fonds, parent) {}
  explicit BoutonCouleur(Palette palette, QWidget* parent = nullptr);
  QColor Couleur() const { return m_couleur; }
  void Pose(const QColor& couleur);

 Q_SIGNALS:
  void Change();  ///< by the user

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;
  void changeEvent(QEvent* evenement) override;

 private:
  void RemplitMenu();
  void Choisit(const QColor& couleur);
  void Autre();
  void Dessine();
  Palette m_palette;
  QColor m_couleur = Blanc();
};

}  // namespace fenlor
