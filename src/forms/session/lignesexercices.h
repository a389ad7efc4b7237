// What the list and the combo of exercices share: the picture of a line, and its
// words for those who do not see it.
#pragma once

#include <QIcon>
#include <QString>

#include "session/exercices.h"

namespace fenlor {

/// A closed book, or an open one; drawn at the size and scale asked.
QIcon ImageExercice(bool cloture);
/// The line as it is read aloud: "2003 01/01/2003 - 31/12/2003, clôturé".
QString LigneParlee(const LigneExercice& ligne);

}  // namespace fenlor
