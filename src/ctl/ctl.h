// fenlorctl in process: the command line, its streams and its exit status.
#pragma once

#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "store/qvapi.h"

namespace fenlor {

/// Exit status of a command.
enum StatutCtl : int {
  StatutFait = 0,
  StatutRefuse = 1,  ///< the message is on `erreurs`
  StatutUsage = 2,   ///< wrong command line
};

/// What the command line does not say.
struct OptionsCtl {
  OptionsQVAPI magasin;        ///< disk, key store and registry folders of the store
  std::string pathProgrammes;  ///< folder of a template "defaut.qvc"; empty: the built-in one
};

/// Runs one command: `args` without the program's name. Everything written is
/// UTF-8. Returns a StatutCtl.
int ExecuteCtl(const std::vector<std::string>& args, std::istream& entree, std::ostream& sortie,
               std::ostream& erreurs, const OptionsCtl& options);

}  // namespace fenlor
