// The update program: another product, which stands somewhere on the machine and notes when it last ran. This
// program finds it, tells how long ago that was, and starts it.
#pragma once

#include <functional>
#include <string>

#include "core/fenlorapp.h"

namespace fenlor {

/// Whole days from midnight of `date` to now, truncated towards 0: -1 for the day after tomorrow.
i64 AgeEnJours(const CFenlorApp& app, Date date);

/// What "Path" of the registry names: the program, or a folder with "QVUpdate.exe" in it. Empty: nothing.
std::string ProgrammeMiseAJour(CFenlorApp& app);
/// Looks for it and keeps the answer in `UpdateInstalle`.
void ChercheMiseAJour(CFenlorApp& app);

/// Age of the last update. Without a date it is today, which is noted; a date to come counts as today.
int JoursDepuisMiseAJour(CFenlorApp& app);

/// Starts a program with one argument and does not wait for it; an errno value, 0 when it runs.
using Lanceur = std::function<int(const std::string& programme, const std::string& argument)>;
/// In a session of its own, so that it lives on when this program ends.
int LanceProgramme(const std::string& programme, const std::string& argument);
/// Starts the update program with the name of this application. A failure shows a box with the style bits of
/// 3121 and the text of the error's own number, of which there is none.
void LanceMiseAJour(CFenlorApp& app, const Lanceur& lanceur = LanceProgramme);

/// There is something to remind of: the program exists, the options say "at the start", and the last update
/// is older than they say (15 days while they say nothing).
bool MiseAJourDue(CFenlorApp& app);
/// Asked at the start when it is due: true when the user wants the update now. It was started then, and this
/// program ends.
bool RappelMiseAJour(CFenlorApp& app, const Lanceur& lanceur = LanceProgramme);

}  // namespace fenlor
