// The find box over the main window, and the way from a find to where it stands.
#pragma once

namespace fenlor {

class CMainFrame;

/// Opens the box; what was chosen is opened or run. An entry is shown in its journal, its row chosen; one of
/// another exercice after that exercice was opened.
void CommandeRecherche(CMainFrame& cadre, unsigned numero);

}  // namespace fenlor
