// fenlorctl in process: the command line, its streams and its exit status.
#pragma once

#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <vector>

#include "store/qvapi.h"

namespace fenlor {

class CEtatComptable;
class CFenlorApp;
struct SerieGraphique;
enum class GenreGraphique : int;

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
  /// Writes the pages of a report that was built as a PDF file, or, when `fichier` is empty, into the open
  /// file `descripteur`, which it leaves open. False: told to `CFenlorApp::Boite`.
  using FonctionPdf =
      std::function<bool(CFenlorApp& app, CEtatComptable& etat, const std::string& fichier, int descripteur)>;
  FonctionPdf ecritPdf;  ///< empty: a program without PDF
  /// The same for a chart, on a sheet of its own.
  using FonctionPdfGraphique =
      std::function<bool(CFenlorApp& app, const SerieGraphique& serie, GenreGraphique genre,
                         const std::string& fichier, int descripteur)>;
  FonctionPdfGraphique ecritPdfGraphique;
};

/// Runs one command: `args` without the program's name. Everything written is
/// UTF-8. Returns a StatutCtl.
int ExecuteCtl(const std::vector<std::string>& args, std::istream& entree, std::ostream& sortie,
               std::ostream& erreurs, const OptionsCtl& options);

}  // namespace fenlor
