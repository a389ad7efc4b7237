#include "forms/garde/qvbwizard.h"

#include <cassert>

#include "forms/garde/wizardrestauration.h"
#include "forms/garde/wizardsauvegarde.h"
#include "garde/optionssauvegarde.h"

namespace fenlor {

namespace {

void Lance(ContexteUi& contexte, u32 mode) {
  CFenlorApp& app = contexte.App;
  if (!app.NomExercice.empty()) contexte.Cadre.FermeToutes();
  BlocSauvegarde bloc;
  if (!app.Dit(RemplitBloc(app, bloc))) return;
  if (mode == ModeSauve) NoteDateSauvegarde(app);
  QVBWizard(contexte, contexte.Cadre.Cadre(), mode, bloc);
  contexte.Cadre.MontreExercice();
}

}  // namespace

void QVBWizard(ContexteUi& contexte, QWidget* parent, u32 mode, const BlocSauvegarde& bloc) {
  assert(bloc.comprime == 1 && bloc.verifie == 1 && bloc.fractionne == 0 && bloc.demande == 0);
  if (mode == ModeSauve)
    CWizardSauvegarde(contexte, bloc, parent).exec();
  else
    CWizardRestauration(contexte, bloc, parent).exec();
}

void CommandeSauvegarde(ContexteUi& contexte) { Lance(contexte, ModeSauve); }
void CommandeRestauration(ContexteUi& contexte) { Lance(contexte, ModeRestaure); }

}  // namespace fenlor
