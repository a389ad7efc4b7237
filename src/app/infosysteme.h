// `CDialogInfoSystem`: the machine, the versions, the practice. What one is asked for when
// one calls for help, in one place and ready to be copied.
#pragma once

#include <vector>

#include "ui/czndialog.h"

namespace fenlor {

struct Information {
  QString titre;
  QString valeur;
};
struct GroupeInformations {
  QString titre;
  std::vector<Information> lignes;
};
/// What the window shows, read now. `fenetre` says which screen is meant; may be null.
std::vector<GroupeInformations> InformationsSysteme(CFenlorApp& app, const QWidget* fenetre);

class CDialogInfoSystem : public CZNDialog {
  Q_OBJECT
 public:
  CDialogInfoSystem(ContexteUi& contexte, QWidget* parent);

 private:
  void Copie();
  std::vector<GroupeInformations> m_groupes;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
