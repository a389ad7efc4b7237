#include "ui/casesvisibles.h"

namespace fenlor {

void CasesVisibles::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  // The style takes the window's colour, darkened, for the outline: on a dark field it is not to be seen.
  option->palette.setColor(QPalette::Window, option->palette.color(QPalette::PlaceholderText));
}

}  // namespace fenlor
