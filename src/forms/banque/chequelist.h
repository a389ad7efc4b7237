// `CChequeList`: the cheques of a deposit slip, with two ticks before each.
#pragma once

#include "ui/tableliste.h"

namespace fenlor {

/// A click or a double click on the first column is `SurRemis`, on the second `SurImprime`; so are Space and
/// the letter I, for the selected row. The ticks are boxes in the colours of the row. Everything else is
/// that of the table of a form.
class CChequeList : public CZNListCtrl {
  Q_OBJECT
 public:
  explicit CChequeList(ContexteUi& contexte, QWidget* parent = nullptr);
  using Action = std::function<void(int ligne)>;
  void SurRemis(Action action) { m_remis = std::move(action); }
  void SurImprime(Action action) { m_imprime = std::move(action); }

 protected:
  void Ajuste() override;
  void drawRow(QPainter* peintre, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  void mousePressEvent(QMouseEvent* evenement) override;
  void mouseDoubleClickEvent(QMouseEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;

 private:
  bool Coche(const QMouseEvent& evenement);
  Action m_remis, m_imprime;
};

}  // namespace fenlor
