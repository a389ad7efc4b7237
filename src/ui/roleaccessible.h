// What a screen reader calls a widget that Qt knows nothing of.
#pragma once

#include <QAccessible>
#include <QWidget>

namespace fenlor {

/// To be called as soon as the widget is made, before anybody asks for its role.
void DonneRole(QWidget& widget, QAccessible::Role role);

}  // namespace fenlor
