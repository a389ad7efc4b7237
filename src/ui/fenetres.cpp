#include "ui/fenetres.h"

#include <QApplication>
#include <QDialog>
#include <QWindow>

namespace fenlor {

void SuitModale(QDialog& outil) {
  auto* modale = qobject_cast<QDialog*>(QApplication::activeModalWidget());
  if (!modale || !outil.windowHandle() || !modale->windowHandle()) return;
  outil.windowHandle()->setTransientParent(modale->windowHandle());
  QObject::connect(
      modale, &QDialog::finished, &outil,
      [&outil] {
        outil.windowHandle()->setTransientParent(
            outil.parentWidget() ? outil.parentWidget()->window()->windowHandle() : nullptr);
      },
      Qt::SingleShotConnection);
}

void AvecFichiersSeul(ContexteUi& contexte, const std::function<void()>& travail) {
  contexte.Cadre.Sauve();
  contexte.Cadre.FermeToutes();
  travail();
  contexte.Cadre.Restaure();
}

}  // namespace fenlor
