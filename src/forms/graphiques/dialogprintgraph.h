// `CDialogPrintGraph`: how much of a sheet a printed chart takes.
#pragma once

#include <QRadioButton>
#include <array>

#include "graphiques/dessin.h"
#include "ui/czndialog.h"

namespace fenlor {

class CDialogPrintGraph : public CZNDialog {
  Q_OBJECT
 public:
  /// `taille` outlives the form: what is checked, and with OK the answer.
  CDialogPrintGraph(ContexteUi& contexte, TaillePapier& taille, QWidget* parent = nullptr);

 protected:
  bool Enregistre() override;

 private:
  TaillePapier& m_taille;
  std::array<QRadioButton, 4> m_tailles;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
