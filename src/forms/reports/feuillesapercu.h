// The sheets of a preview: the pages that are seen, and no other.
#pragma once

#include <QAbstractScrollArea>
#include <QImage>
#include <QTimer>
#include <map>

#include "forms/reports/etatview.h"

namespace fenlor {

/// One page or two beside each other, as large as the window lets them be, or one page enlarged that
/// scrolls. Page keys, Home and End, the wheel, "+" and "-" move in it.
class FeuillesApercu : public QAbstractScrollArea {
  Q_OBJECT
 public:
  explicit FeuillesApercu(QWidget* parent = nullptr);

  /// The pages, prepared; they outlive the widget or are taken away again (null).
  void Pose(PagesDessinees* vue);

  u32 NombrePages() const { return m_vue ? m_vue->NombrePages() : 0; }
  u32 Page() const { return m_page; }  ///< the first one shown
  u32 Montrees() const { return m_montrees; }
  /// The nearest page that can be the first one shown.
  void VaPage(u32 page);
  /// 1 or 2 pages; nothing while the preview is enlarged.
  void Montre(u32 pages);
  u32 DernierePremiere() const;  ///< the first page shown, at the end of the report

  bool EstAgrandi() const { return m_zoom > 0; }
  bool PeutAgrandir() const;
  void Agrandit();  ///< the next larger of a few sizes, of one page
  void Reduit();    ///< back to the whole page at the end
  void Ajuste();
  /// Size of what is seen, 1 being that of the paper.
  qreal Echelle() const;

  QSize sizeHint() const override;

 Q_SIGNALS:
  void Change();  ///< page, number of pages shown, or size

 protected:
  void paintEvent(QPaintEvent* evenement) override;
  void resizeEvent(QResizeEvent* evenement) override;
  bool event(QEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;
  void wheelEvent(QWheelEvent* evenement) override;
  void changeEvent(QEvent* evenement) override;

 private:
  QSizeF Papier() const;  ///< in pixels, at scale 1
  QSize Feuille() const;  ///< in pixels as it is seen
  QRect Place(u32 page) const;
  int Marge() const { return fontMetrics().height(); }
  void PoseZoom(qreal zoom);
  void Dispose();
  void Renouvelle();
  void RendPages();
  bool Defile(int pas);

  PagesDessinees* m_vue = nullptr;
  u32 m_page = 1;
  u32 m_montrees = 1;
  u32 m_montreesEntieres = 1;  ///< before it was enlarged
  qreal m_zoom = 0;            ///< 0: the whole page
  int m_molette = 0;
  QTimer m_rendu;  ///< pages are drawn when keys and clicks have passed
  std::map<u32, QImage> m_images;
};

}  // namespace fenlor
