#include "forms/garde/qvbwizard.h"

#include <cassert>

#include "forms/garde/wizardrestauration.h"
#include "forms/garde/wizardsauvegarde.h"
#include "forms/session/commandesexercice.h"
#include "garde/optionssauvegarde.h"

namespace fenlor {

namespace {

Manifeste Lance(ContexteUi& contexte, u32 mode, bool complet = false) {
  CFenlorApp& app = contexte.App;
  if (!app.NomExercice.empty()) contexte.Cadre.FermeToutes();
  BlocSauvegarde bloc;
  if (!app.Dit(RemplitBloc(app, bloc))) return {};
  if (mode == ModeSauve) NoteDateSauvegarde(app);
  Manifeste sauvee = QVBWizard(contexte, contexte.Cadre.Cadre(), mode, bloc, complet);
  contexte.Cadre.MontreExercice();
  return sauvee;
}

}  // namespace

Manifeste QVBWizard(ContexteUi& contexte, QWidget* parent, u32 mode, const BlocSauvegarde& bloc,
                    bool complet) {
  assert(bloc.comprime == 1 && bloc.verifie == 1 && bloc.fractionne == 0 && bloc.demande == 0);
  if (mode == ModeSauve) {
    CWizardSauvegarde wizard(contexte, bloc, complet, parent);
    wizard.exec();
    return wizard.Faite.manifeste;
  }
  CWizardRestauration(contexte, bloc, parent).exec();
  return {};
}

void CommandeSauvegarde(ContexteUi& contexte) { Lance(contexte, ModeSauve); }
void CommandeRestauration(ContexteUi& contexte) { Lance(contexte, ModeRestaure); }

void CommandeRestaureCabinet(ContexteUi& contexte) {
  assert(!contexte.App.ExerciceOuvert);
  if (RouvreCabinet(contexte)) CommandeRestauration(contexte);
}

Manifeste SauvegardeMaintenant(ContexteUi& contexte) {
  return Lance(contexte, ModeSauve, LitOptionsSauvegarde(contexte.App).finDeSession);
}

}  // namespace fenlor
