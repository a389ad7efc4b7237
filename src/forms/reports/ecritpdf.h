// A report as a PDF file.
#pragma once

#include <QPageLayout>
#include <string>

#include "forms/reports/etatview.h"

namespace fenlor {

/// Writes all pages of a built report, on that sheet, turned when the report is a landscape one, to `chemin`
/// (bytes of the file system), with the title given (Windows-1252) and the practitioner as its author. Shows
/// its progress, which can be stopped. The file appears when it is whole: after a failure (told: ErrPdf) or a
/// stop there is what was there before. False then.
///
/// Needs a QGuiApplication, the offscreen platform is enough.
bool EcritPdf(CFenlorApp& app, CEtatDoc& doc, const std::string& titre, const std::string& chemin,
              const QPageLayout& feuille = FeuilleParDefaut());
/// The same into an open file, which stays open.
bool EcritPdf(CFenlorApp& app, CEtatDoc& doc, const std::string& titre, int descripteur);

/// The same of any pages, which are prepared: `auteur` is who signs.
bool EcritPdf(CFenlorApp& app, PagesDessinees& pages, const std::string& titre, const std::string& auteur,
              const std::string& chemin);
bool EcritPdf(CFenlorApp& app, PagesDessinees& pages, const std::string& titre, const std::string& auteur,
              int descripteur);

}  // namespace fenlor
