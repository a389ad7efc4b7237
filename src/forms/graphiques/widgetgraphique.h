// A chart on the screen, of any series: in its own window, or a small one beside other things.
#pragma once

#include <QWidget>

#include "forms/graphiques/peintregraphique.h"

namespace fenlor {

/// Shows the value under the pointer, and marks its point. With the keyboard, Left and Right go from point to
/// point. Colours are the palette's.
class WidgetGraphique : public QWidget {
  Q_OBJECT
 public:
  explicit WidgetGraphique(QWidget* parent = nullptr);

  /// A series without a title takes the whole place.
  void Pose(const SerieGraphique& serie, GenreGraphique genre);
  /// Of the font of the title; at first that of a window.
  void PoseHauteurTitre(f64 hauteur);
  const SerieGraphique& Serie() const { return m_serie; }
  GenreGraphique Genre() const { return m_genre; }
  /// The point that is marked, -1 for none.
  int Choisi() const { return m_choisi; }
  void Choisit(int point);
  /// "Fév : 120,50 €"; empty for no point.
  QString TexteDuPoint(int point) const;
  /// As it is seen, on white paper: so many pixels for each of its own.
  QImage Image(qreal echelle) const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  /// By pointer or key.
  void PointChoisi(int point);

 protected:
  void paintEvent(QPaintEvent* evenement) override;
  void resizeEvent(QResizeEvent* evenement) override;
  void changeEvent(QEvent* evenement) override;
  void mouseMoveEvent(QMouseEvent* evenement) override;
  void mousePressEvent(QMouseEvent* evenement) override;
  void leaveEvent(QEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;
  void focusInEvent(QFocusEvent* evenement) override;
  void focusOutEvent(QFocusEvent* evenement) override;

 private:
  const DessinGraphique& Dessin() const;
  void Designe(int point, const QPoint& global);
  QPoint PlaceDe(int point) const;  ///< of what stands for it on top, or of its zone

  SerieGraphique m_serie;
  GenreGraphique m_genre = GenreParDefaut;
  f64 m_hauteurTitre = HauteurTitreEcran;
  int m_choisi = -1;
  mutable DessinGraphique m_dessin;
  mutable bool m_perime = true;  ///< the drawing is that of another size or series
};

}  // namespace fenlor
