// `CDialogCalculatrice`: the calculator, a modeless window beside the books.
#pragma once

#include <QDialog>

#include "app/calcul.h"
#include "ui/fenetres.h"
#include "ui/findesliens.h"

class QFrame;
class QGridLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace fenlor {

/// Deletes itself when it is closed; keeps its place in the settings. Every button has a key,
/// which its tool tip tells; Escape clears, and closes when there is nothing to clear.
class CDialogCalculatrice : public QDialog {
  Q_OBJECT
 public:
  CDialogCalculatrice(ContexteUi& contexte, QWidget* parent);

  void done(int resultat) override;

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;
  void showEvent(QShowEvent* evenement) override;

 private:
  QFrame* FaitEcran();
  QGridLayout* FaitTouches();
  void Bouton(QGridLayout& grille, int ligne, int colonne, const QString& texte, const QString& parle,
              const QString& touche, const char* nom, std::function<void()> action, int hauteur = 1);
  void Appuie(Touche touche);
  void Convertit(bool versEuro);
  void Copie();
  void Colle();
  void Montre();
  /// With the separator of the machine, thousands apart.
  QString Groupe(const std::string& nombre) const;

  ContexteUi& m_contexte;
  Calcul m_calcul;
  char m_separateur;
  QPlainTextEdit* m_bande;
  QLabel* m_temoin;
  QLabel* m_affichage;
  QLabel* m_remarque;
  bool m_placee = false;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
