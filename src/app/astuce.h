// The tip of the day.
#pragma once

#include "ui/czndialog.h"

class QCheckBox;
class QLabel;

namespace fenlor {

/// Lines of "zntips.txt" in a folder, UTF-8; blank ones are left out. Empty without the file.
QStringList LitAstuces(const std::string& dossier);

/// Opens on the tip behind the one seen last; the place is kept for the user when it closes,
/// and so is the box that shows it at start-up.
class CQVTipOfDay : public CZNDialog {
  Q_OBJECT
 public:
  CQVTipOfDay(ContexteUi& contexte, const QStringList& astuces, QWidget* parent);
  void done(int resultat) override;

 private:
  void Montre();
  QStringList m_astuces;
  qsizetype m_place;  ///< from 0
  QLabel* m_numero;
  QLabel* m_texte;
  QCheckBox* m_demarrage;
  FinDesLiens m_finLiens{*this};
};

/// Shows it when there is a file of tips.
void MontreAstuce(ContexteUi& contexte, QWidget* parent);
/// The same, unless the user does not want it at start-up.
void AstuceDemarrage(ContexteUi& contexte, QWidget* parent);

}  // namespace fenlor
