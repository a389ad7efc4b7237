// `CEtatView`: a report on sheets of one kind, ready to be drawn page by page.
#pragma once

#include "forms/reports/pagesdessinees.h"
#include "forms/reports/peripheriqueqt.h"
#include "pages/page.h"

namespace fenlor {

/// A4 upright, margins of 10 millimetres.
QPageLayout FeuilleParDefaut();
/// That sheet, turned for a landscape report.
QPageLayout FeuillePour(const CEtatDoc& doc, QPageLayout feuille);

class CEtatView : public PagesDessinees {
 public:
  /// Session and document outlive the view.
  CEtatView(CFenlorApp& app, CEtatDoc& doc) : m_app(app), m_doc(doc), m_device(FeuilleParDefaut()) {}

  /// Page setup and pagination, with the print font and the draft mode of the preferences. Reads the index,
  /// not the text.
  bool Prepare(const QPageLayout& feuille) override;
  const QPageLayout& Feuille() const override { return m_feuille; }
  u32 NombrePages() const override { return fenlor::NombrePages(m_pages); }
  bool DessinePage(QPainter& peintre, qreal unitesParPouce, u32 n) override;

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
