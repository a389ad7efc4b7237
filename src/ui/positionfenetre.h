// Where a window stood, in the settings: section of its title, keys "Fenêtre"
// ("%d, %d, %d, %d": left, top, width, height) and "Agrandie".
#pragma once

#include <QRect>
#include <QSize>
#include <optional>
#include <string>

#include "core/fenlorapp.h"

class QWidget;

namespace fenlor {

struct PositionFenetre {
  QRect rect;
  bool agrandie = false;
};

/// Nothing when the section holds no position, or one that is no four numbers.
std::optional<PositionFenetre> LitPosition(const CFenlorApp& app, const std::string& section);
/// Both keys in one replacement of the file; nothing is written when nothing changed,
/// or when no practice is open. False when the file could not be written.
bool EcritPosition(CFenlorApp& app, const std::string& section, const PositionFenetre& position);
/// Fits a position into the parent's area: negative left or top count as 0; the size
/// lies between `minimum` and the area's (only when `redimensionnable`); what would run over
/// the right or lower edge goes to 0 on that axis.
QRect AjustePosition(const QRect& rect, const QSize& zone, const QSize& minimum,
                     bool redimensionnable = true);

/// Puts a top-level window where its section says, on the screen that it is on.
/// Without a position, the window keeps its size. Shows nothing: returns true when
/// it is to be shown maximised.
bool RestaurePosition(QWidget& fenetre, const CFenlorApp& app, const std::string& section);
bool SauvePosition(const QWidget& fenetre, CFenlorApp& app, const std::string& section);

}  // namespace fenlor
