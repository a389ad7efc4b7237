#include "ui/roleaccessible.h"

#include <QAccessibleWidget>

namespace fenlor {

namespace {

constexpr const char* propriete = "roleAccessible";

QAccessibleInterface* Voix(const QString& /*classe*/, QObject* objet) {
  const QVariant role = objet->property(propriete);
  auto* widget = qobject_cast<QWidget*>(objet);
  return widget && role.isValid()
             ? new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()))
             : nullptr;
}

}  // namespace

void DonneRole(QWidget& widget, QAccessible::Role role) {
  widget.setProperty(propriete, static_cast<int>(role));
  QAccessible::installFactory(Voix);
}

}  // namespace fenlor
