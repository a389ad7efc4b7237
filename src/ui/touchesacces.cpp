#include "ui/touchesacces.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QRadioButton>
#include <QShortcutEvent>

namespace fenlor {

TouchesAcces::TouchesAcces() { qApp->installEventFilter(this); }

bool TouchesAcces::eventFilter(QObject* objet, QEvent* evenement) {
  if (evenement->type() != QEvent::Shortcut) return false;
  const auto* libelle = qobject_cast<QLabel*>(objet);
  auto* bouton = qobject_cast<QAbstractButton*>(libelle ? libelle->buddy() : objet);
  if (!bouton || !bouton->isEnabled()) return false;
  const bool partagee = static_cast<QShortcutEvent*>(evenement)->isAmbiguous();
  if (partagee && !qobject_cast<QRadioButton*>(bouton)) return false;
  // The mark shows where the keyboard is; a plain button leaves it in the field.
  if (bouton->isCheckable() && (bouton->focusPolicy() & Qt::ClickFocus))
    bouton->setFocus(Qt::ShortcutFocusReason);
  bouton->click();
  return true;
}

}  // namespace fenlor
