// What holds for every form: it can be worked without a mouse, it can be read
// aloud, and nothing in it is cut.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

namespace fenlor::test {

/// Adds a failure for each fault of a shown window.
void VerifieFormulaire(QWidget& fenetre);

/// Adds a failure for whatever takes the focus in a shown window and its menus without a name or a role for a
/// screen reader.
void VerifieVoix(QWidget& fenetre);

/// The faults, as far as the window is visible (a sheet: the page in front):
/// - an enabled input without an `objectName`, or with that of another input;
/// - one without an accessible name, or without a label as its buddy. Buttons have
///   their own text instead, lists and long texts what stands above them, and a field
///   may go on the text of a radio button or check box at its left;
/// - two access keys alike, where one of the texts could have another; a label, button or shown
///   value whose text is cut;
/// - a text, greyed or not, whose contrast to its background is below `contrasteTexte`;
/// - what takes the focus without a name or a role for a screen reader;
/// - a window larger than 1024 by 700, and than the screen.
std::vector<std::string> FautesFormulaire(QWidget& fenetre);

}  // namespace fenlor::test
