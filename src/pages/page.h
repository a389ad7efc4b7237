// One page of a report: its title, the repeated header, its text, the footer.
#pragma once

#include <string>
#include <string_view>

#include "pages/etatdoc.h"
#include "pages/miseenpage.h"
#include "pages/peripherique.h"

namespace fenlor {

/// Who prints, for the top of each page. Plain text, Windows-1252.
struct IdentiteEtat {
  std::string nom;
  std::string societe;
};

/// The first two lines that are not blank of the practitioner's identification.
IdentiteEtat LitIdentiteEtat(const CFenlorApp& app);

/// What all pages of one run share. `pages` is the pagination of `doc` for `page`;
/// document and table outlive the object.
struct ImpressionEtat {
  CEtatDoc& doc;
  const TablePages& pages;
  MiseEnPage page;
  IdentiteEtat qui;
  Date aujourdhui = 0;
};

/// Draws page n, from 1, on the device that `page` was measured on. False when there is
/// no such page. A text that cannot be read is told to `CFenlorApp::Boite`, and the page
/// is drawn with what could be.
bool DessinePage(const ImpressionEtat& impression, u32 n, Peripherique& peripherique);
/// The same with the page's text at hand. Reads nothing: pages can be drawn side by side, each on a device of
/// its own.
void DessinePage(const ImpressionEtat& impression, u32 n, std::string_view texte, Peripherique& peripherique);

}  // namespace fenlor
