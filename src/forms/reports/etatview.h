// `CEtatView`: a report on sheets of one kind, ready to be drawn page by page.
#pragma once

#include <QPageLayout>

#include "forms/reports/peripheriqueqt.h"
#include "pages/page.h"

class QPainter;

namespace fenlor {

/// A4 upright, margins of 10 millimetres.
QPageLayout FeuilleParDefaut();
/// That sheet, turned for a landscape report.
QPageLayout FeuillePour(const CEtatDoc& doc, QPageLayout feuille);

class CEtatView {
 public:
  /// Session and document outlive the view.
  CEtatView(CFenlorApp& app, CEtatDoc& doc) : m_app(app), m_doc(doc), m_device(FeuilleParDefaut()) {}

  /// Page setup and pagination for that sheet as it is turned, with the print font and the draft
  /// mode of the preferences. Reads the index, not the text. False when the index cannot be read:
  /// there are no pages then.
  bool Prepare(const QPageLayout& feuille);
  const QPageLayout& Feuille() const { return m_feuille; }
  u32 NombrePages() const { return fenlor::NombrePages(m_pages); }
  /// Draws page n, from 1, on a painter that counts so many units to the inch, its origin in the
  /// corner of what can be printed. False when there is no such page.
  bool DessinePage(QPainter& peintre, qreal unitesParPouce, u32 n);

  /// Who prints.
  const IdentiteEtat& Qui() const { return m_qui; }

 private:
  CFenlorApp& m_app;
  CEtatDoc& m_doc;
  QPageLayout m_feuille;
  PeripheriqueQt m_device;
  MiseEnPage m_page;
  TablePages m_pages;
  IdentiteEtat m_qui;
};

}  // namespace fenlor
