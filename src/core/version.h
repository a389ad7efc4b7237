// The one place of the program's version.
#pragma once

namespace fenlor {

/// Version, revision and build of the program.
constexpr int VersionProgramme = 5, RevisionProgramme = 0, BuildProgramme = 235;

}  // namespace fenlor
