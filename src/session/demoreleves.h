// What the bank of the demo practice sends: files to try the import with.
#pragma once

#include "core/fenlorapp.h"

namespace fenlor {

/// Writes the statements of account 512 for two months of the open exercice into the folder "releves" of the
/// practice: the first month as OFX, the second as a table of the bank. They hold most of the lines that wait
/// to be reconciled, two days later and in the bank's words, and operations that the books do not know yet.
/// The balance of each is the one that is right when all of it, and what waits before it, is reconciled.
Refus EcritRelevesDemo(CFenlorApp& app, unsigned premierMois);

}  // namespace fenlor
