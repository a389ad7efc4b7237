// How each document window is made, by the bit of its mask, and how what a rule finds
// missing is brought.
#pragma once

namespace fenlor {

class CMainFrame;
class DialogueQt;

void PoseFabriques(CMainFrame& cadre);
/// The questions about a special account that is missing open their form.
void PoseManques(DialogueQt& dialogue, CMainFrame& cadre);

}  // namespace fenlor
