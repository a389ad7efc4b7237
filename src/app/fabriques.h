// How each document window is made, by the bit of its mask.
#pragma once

namespace fenlor {

class CMainFrame;

void PoseFabriques(CMainFrame& cadre);

}  // namespace fenlor
