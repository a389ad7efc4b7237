// What is printed and previewed page by page: a report, a chart.
#pragma once

#include <QPageLayout>

#include "store/enregistrements.h"

class QPainter;

namespace fenlor {

class PagesDessinees {
 public:
  virtual ~PagesDessinees() = default;

  /// Makes the pages for that sheet as it is turned, with the preferences as they are now. False when there
  /// are none, for they cannot be read.
  virtual bool Prepare(const QPageLayout& feuille) = 0;
  virtual const QPageLayout& Feuille() const = 0;
  virtual u32 NombrePages() const = 0;
  /// Draws page n, from 1, on a painter that counts so many units to the inch, its origin in the corner of
  /// what can be printed. False when there is no such page.
  virtual bool DessinePage(QPainter& peintre, qreal unitesParPouce, u32 n) = 0;
};

}  // namespace fenlor
