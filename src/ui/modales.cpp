#include "ui/modales.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QWindow>
#include <vector>

namespace fenlor {

namespace {

/// The window of a shortcut's owner: an action, a button, a menu.
QWidget* Porteur(QObject* objet) {
  while (objet && !objet->isWidgetType()) objet = objet->parent();
  return qobject_cast<QWidget*>(objet);
}

/// As the toolkit's own stack of modal windows, but for the time between the hiding and the end.
std::vector<const QWidget*>& EnCours() {
  static std::vector<const QWidget*> formes;
  return formes;
}

bool SeGarde(const QWidget& fenetre) {
  if (qobject_cast<const QMdiSubWindow*>(&fenetre) || qobject_cast<const QMainWindow*>(&fenetre)) return true;
  const auto* forme = qobject_cast<const QDialog*>(&fenetre);
  return forme && forme->isModal();
}

}  // namespace

bool DerriereModale(const QWidget& fenetre) {
  if (!fenetre.isEnabled()) return true;
  const QWidget* modale = QApplication::activeModalWidget();
  if (!modale && !EnCours().empty()) modale = EnCours().back();
  if (!modale) return false;
  for (const QWidget* w = &fenetre; w; w = w->parentWidget())
    if (w == modale) return false;
  // A tool that follows the form is no child of it.
  for (const QWindow* w = fenetre.window()->windowHandle(); w; w = w->transientParent())
    if (w == modale->windowHandle()) return false;
  return true;
}

FormeEnCours::FormeEnCours(QWidget& forme) { EnCours().push_back(&forme); }

FormeEnCours::~FormeEnCours() { EnCours().pop_back(); }

void SurvitAuParent(QDialog& forme) {
  if (!forme.parentWidget()) return;
  QObject::connect(forme.parentWidget(), &QObject::destroyed, &forme,
                   [&forme] { forme.setParent(nullptr, forme.windowFlags()); });
}

GardeModale::GardeModale(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

bool GardeModale::eventFilter(QObject* objet, QEvent* evenement) {
  const bool ferme = evenement->type() == QEvent::Close;
  if (!ferme && evenement->type() != QEvent::Shortcut) return false;
  const QWidget* fenetre = ferme ? qobject_cast<QWidget*>(objet) : Porteur(objet);
  if (!fenetre || (ferme && (Permise || !fenetre->isVisible() || !SeGarde(*fenetre)))) return false;
  if (!DerriereModale(*fenetre)) return false;
  evenement->ignore();
  return true;
}

}  // namespace fenlor
