// The faces that print, for the preferences and for the device that paints reports.
#pragma once

#include <QString>

namespace fenlor {

/// The face of fixed width that stands for "Courier".
QString FaceFixe();
/// The setting that stands for a proportional face with tabular figures.
constexpr const char* FaceProportionnelle = "Sans Serif";
/// The face that prints: for `FaceProportionnelle` one that the machine has; "Courier", and one that the
/// machine lacks, are the face of fixed width.
QString FaceImprimee(const QString& face);

}  // namespace fenlor
