// Check boxes in the rows of a list.
#pragma once

#include <QStyledItemDelegate>

namespace fenlor {

/// Paints rows as ever, but the box of one that is not checked can be seen on a dark desktop, too.
class CasesVisibles : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

}  // namespace fenlor
