// A chart as the bytes of a file, without any toolkit.
#pragma once

#include "graphiques/dessin.h"

namespace fenlor {

/// A drawing of that size as SVG, UTF-8.
std::string EcritSvg(const DessinGraphique& dessin, f64 largeur, f64 hauteur,
                     const ThemeGraphique& theme = {}, const MesureTexte& mesure = MesureTable());
/// A point a line, label and value with a tab between them ("Jan\t1234,50"), Windows-1252.
std::string EcritValeurs(const SerieGraphique& serie);
/// Puts the bytes of an exported chart in the place of a file (path in bytes of the file system): there is
/// the old one or the whole new one. Refused (3580) when it cannot be written, or is no file.
Refus EcritExport(CFenlorApp& app, const std::string& chemin, std::string_view octets);

}  // namespace fenlor
