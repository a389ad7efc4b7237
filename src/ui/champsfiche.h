// The editors of a form or page and the value whose table (`core/fiche.h`) names them; radio buttons of a
// choice have its words as names.
#pragma once

#include "core/fiche.h"

class QWidget;

namespace fenlor {

void MontreChamps(const QWidget& zone, const TableFiche& table, const void* fiche);
/// A field that is disabled, and an amount that cannot be read, leave theirs as it is; one that shows the
/// same, too: no decimals get lost.
void LitChamps(const QWidget& zone, const TableFiche& table, void* fiche);
void LitChamp(const QWidget& zone, const TableFiche& table, const char* nom, void* fiche);

}  // namespace fenlor
