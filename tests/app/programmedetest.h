// The main window of the program over a small practice, as its start leaves it.
#pragma once

#include <QMdiArea>
#include <QMdiSubWindow>

#include "app/fabriques.h"
#include "app/gestioncommandes.h"
#include "app/mainframe.h"
#include "journal/cabinetmedical.h"
#include "outils/uidetest.h"
#include "ui/dialogueqt.h"

namespace fenlor::test {

class ProgrammeDeTest : public CabinetMedical {
 protected:
  void TearDown() override { Principal.reset(); }
  /// What the rules made before is what the windows show.
  void Montre() {
    App().ExerciceOuvert = 1;
    Principal = std::make_unique<CMainFrame>(App(), Dialogues);
    PoseFabriques(*Principal);
    Principal->resize(1000, 700);
    Principal->show();
    Principal->AppliqueRaccourcis();
    Principal->MontreExercice();
  }
  int Ouvertes() const { return static_cast<int>(Principal->Zone().subWindowList().size()); }

  Robot robot;
  DialogueQt Dialogues;
  std::unique_ptr<CMainFrame> Principal;
};

}  // namespace fenlor::test
