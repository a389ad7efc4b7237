// `QVBWizard`, the assistants of backup and restoration, and the commands that start it.
#pragma once

#include "garde/blocsauvegarde.h"
#include "garde/manifeste.h"
#include "ui/fenetres.h"

class QWidget;

namespace fenlor {

enum ModeSauvegarde : u32 { ModeSauve = 1, ModeRestaure = 2 };

/// Runs the assistant of the mode over `parent`. What the block's numbers ask for is all there is: one file,
/// compressed, read back, which replaces none. `complet`: a backup proposes the whole practice. What was
/// saved, nothing when no backup was made.
Manifeste QVBWizard(ContexteUi& contexte, QWidget* parent, u32 mode, const BlocSauvegarde& bloc,
                    bool complet = false);

/// The commands. Both close the document windows, which do not come back; a backup counts as made today once
/// it is asked for, whatever becomes of it.
void CommandeSauvegarde(ContexteUi& contexte);
/// The same from the last screen of a session: where each session ends with a copy of the whole practice,
/// this one is proposed as that copy. What was saved.
Manifeste SauvegardeMaintenant(ContexteUi& contexte);
void CommandeRestauration(ContexteUi& contexte);
/// A restoration where no exercice is open: on a new machine, or when the books do not open any more. It asks
/// for the password of the practice, as the opening of an exercice does.
void CommandeRestaureCabinet(ContexteUi& contexte);

}  // namespace fenlor
