// What the system would end the program for without a word: a mapped page that cannot be read (SIGBUS),
// a file beyond the limit of its size (SIGXFSZ), no memory. The user is told on standard error, and the
// next start of a window program, which has nobody to read that, finds a note.
#pragma once

#include <string>

namespace fenlor {

/// From here on: SIGBUS names the file on standard error, leaves the note (where `note` is a path) and ends
/// with 1; a lack of memory that nobody catches does the same without a file; a write beyond the size limit
/// fails with EFBIG. Nothing is flushed or undone: what was acknowledged is in the redo log.
void InstalleUrgences(const std::string& note = {});

/// What the last program wrote to its note, UTF-8, empty for nothing; the note is removed.
std::string PrendNote(const std::string& note);

}  // namespace fenlor
