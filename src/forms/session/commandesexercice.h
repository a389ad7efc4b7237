// The commands on an exercice as a whole, as the menus call them: choice, opening,
// closing, deletion, maintenance. Each does all there is to do and tells the main window.
#pragma once

#include <functional>
#include <string>

#include "session/entretien.h"
#include "ui/fenetres.h"

namespace fenlor {

/// Opens the practice anew while no exercice is open, behind its password when it has one. What stops it is
/// told.
bool RouvreCabinet(ContexteUi& contexte);
/// Opens an exercice, and tells what stopped it. When one of its files is damaged the form of the rebuild is
/// offered, and the exercice opened behind it. True when it is open.
bool OuvreOuReconstruit(ContexteUi& contexte, const std::string& nom);
/// `options` opens the options when the exercice is the first of the practice.
void CommandeNouvelExercice(ContexteUi& contexte, const std::function<void()>& options);
/// This one and the next: true when an exercice was opened.
bool CommandeOuvrirExercice(ContexteUi& contexte);
/// Another exercice was chosen in the combo; a blank name closes the open one. The
/// practice's password is asked again.
bool CommandeSelectionExercice(ContexteUi& contexte, const std::string& nom);
void CommandeFermerExercice(ContexteUi& contexte);
void CommandeSupprimerExercice(ContexteUi& contexte);
/// The document windows are closed while such work has the files to itself, and come back.
Autour FichiersSeul(ContexteUi& contexte);
/// Maintenance: the document windows are closed meanwhile, and come back.
void CommandeRecalcul(ContexteUi& contexte);
void CommandeAjustementEuro(ContexteUi& contexte);

}  // namespace fenlor
