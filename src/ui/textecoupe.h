// The cutting of a text that does not fit its cell.
#pragma once

#include <QFontMetrics>
#include <QString>

namespace fenlor {

/// The text when its extent plus `marge` fits into `largeur`, else as many of its
/// characters as fit together with "..."; "..." alone when none does.
QString ClipText(const QString& texte, int largeur, int marge, const QFontMetrics& mesure);

}  // namespace fenlor
