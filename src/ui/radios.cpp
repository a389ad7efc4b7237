#include "ui/radios.h"

#include <QButtonGroup>

namespace fenlor {

void UnDes(std::initializer_list<QRadioButton*> boutons) {
  auto* groupe = new QButtonGroup(*boutons.begin());
  for (QRadioButton* bouton : boutons) groupe->addButton(bouton);
  QObject::connect(groupe, &QButtonGroup::buttonToggled, groupe, [groupe] {
    for (QAbstractButton* bouton : groupe->buttons())
      bouton->setFocusPolicy(bouton->isChecked() || !groupe->checkedButton() ? Qt::StrongFocus
                                                                             : Qt::ClickFocus);
  });
}

}  // namespace fenlor
