// Pages on a printer.
#pragma once

#include <string>

#include "core/fenlorapp.h"
#include "forms/reports/pagesdessinees.h"

class QPrinter;

namespace fenlor {

class Impressions;

/// The print dialog, with the printer chosen last and the sheet of the pages; it keeps the choice. False when
/// it is cancelled.
bool DemandeImprimante(Impressions& impressions, const PagesDessinees& pages, const QString& document,
                       QPrinter& imprimante);
/// Prints the pages that the printer is set to, as often as it is, on its own sheet. Shows its progress,
/// which can be stopped. False after that, or a failure that was told.
bool ImprimePages(CFenlorApp& app, PagesDessinees& pages, QPrinter& imprimante, const std::string& titre);

}  // namespace fenlor
