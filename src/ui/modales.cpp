#include "ui/modales.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QThread>
#include <QWindow>

namespace fenlor {

namespace {

/// The window of a shortcut's owner: an action, a button, a menu.
QWidget* Porteur(QObject* objet) {
  while (objet && !objet->isWidgetType()) objet = objet->parent();
  return qobject_cast<QWidget*>(objet);
}

bool SeGarde(const QWidget& fenetre) {
  if (qobject_cast<const QMdiSubWindow*>(&fenetre) || qobject_cast<const QMainWindow*>(&fenetre)) return true;
  const auto* forme = qobject_cast<const QDialog*>(&fenetre);
  return forme && forme->isModal();
}

}  // namespace

bool GardeModale::Derriere(const QWidget& fenetre) const {
  if (!fenetre.isEnabled()) return true;
  const QWidget* modale = QApplication::activeModalWidget();
  for (const EnCours& e : m_enCours)
    if (!QApplication::activeModalWidget() && e.Dure()) modale = e.dialogue;
  if (!modale) return false;
  for (const QWidget* w = &fenetre; w; w = w->parentWidget())
    if (w == modale) return false;
  // A tool that follows the form is no child of it.
  for (const QWindow* w = fenetre.window()->windowHandle(); w; w = w->transientParent())
    if (w == modale->windowHandle()) return false;
  return true;
}

QWidget* FenetreDessous(QWidget* parent, QWidget* principale) {
  if (parent) return parent->window();
  QWidget* ouverte = QApplication::activeModalWidget();
  return ouverte ? ouverte : principale;
}

void SurvitAuParent(QDialog& forme) {
  if (!forme.parentWidget()) return;
  QObject::connect(forme.parentWidget(), &QObject::destroyed, &forme,
                   [&forme] { forme.setParent(nullptr, forme.windowFlags()); });
}

GardeModale::GardeModale(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

bool GardeModale::EnCours::Dure() const {
  return dialogue && (dialogue->isVisible() || QThread::currentThread()->loopLevel() > niveau);
}

bool GardeModale::eventFilter(QObject* objet, QEvent* evenement) {
  std::erase_if(m_enCours, [](const EnCours& e) { return !e.Dure(); });
  if (evenement->type() == QEvent::Show && !evenement->spontaneous())
    if (auto* dialogue = qobject_cast<QDialog*>(objet); dialogue && dialogue->isModal())
      m_enCours.push_back({dialogue, QThread::currentThread()->loopLevel()});
  const bool ferme = evenement->type() == QEvent::Close;
  if (!ferme && evenement->type() != QEvent::Shortcut) return false;
  const QWidget* fenetre = ferme ? qobject_cast<QWidget*>(objet) : Porteur(objet);
  if (!fenetre || (ferme && (Permise || !fenetre->isVisible() || !SeGarde(*fenetre)))) return false;
  if (!Derriere(*fenetre)) return false;
  evenement->ignore();
  return true;
}

}  // namespace fenlor
