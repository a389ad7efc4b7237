// `CMonth`: the months of the exercice as a bar of tabs above a journal.
#pragma once

#include <QWidget>
#include <vector>

#include "store/dates.h"
#include "ui/findesliens.h"

namespace fenlor {

/// One tab a month. A press moves the highlight, the release decides; outside all tabs it goes back
/// to the month shown. Arrows, Home and End move while the bar has the focus. A bar too narrow for
/// its months shows those around the highlight.
class CMonth : public QWidget {
  Q_OBJECT
 public:
  /// Where a tab stands, from the left of the first one's margin.
  struct Cellule {
    int gauche = 0, haut = 0, largeur = 0, hauteur = 0;
    Date premier = 0, dernier = 0;  ///< days of the month
  };

  explicit CMonth(QWidget* parent = nullptr);

  /// First days of the months; the month shown stays when it is still there, else the first one is.
  void PoseMois(const std::vector<Date>& mois);
  const std::vector<Cellule>& Cellules() const { return m_cellules; }
  /// Font of the tabs, and the colours of the one that is shown.
  void PoseDessin(const QFont& police, const QColor& fond, const QColor& bordure);

  int Courant() const { return m_courant; }  ///< -1 without months
  Date PremierJour() const;                  ///< of the month shown, 0 without months
  /// Shows a month, the nearest one there is, and tells nobody.
  void Montre(int indice);
  /// The same, and tells when it changed.
  void Choisit(int indice);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  void MoisChange(int indice, Date premier);

 protected:
  void paintEvent(QPaintEvent* evenement) override;
  void mousePressEvent(QMouseEvent* evenement) override;
  void mouseMoveEvent(QMouseEvent* evenement) override;
  void mouseReleaseEvent(QMouseEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;
  void focusInEvent(QFocusEvent* evenement) override;
  void focusOutEvent(QFocusEvent* evenement) override;
  void resizeEvent(QResizeEvent* evenement) override;
  void changeEvent(QEvent* evenement) override;
  bool event(QEvent* evenement) override;

 private:
  void Mesure();
  void MetEnVue();
  void Surligne(int indice);
  int CelluleA(const QPoint& point) const;  ///< -1 outside all
  QRect Place(int indice) const;
  void DessineOnglet(QPainter& peintre, int indice) const;

  std::vector<Cellule> m_cellules;
  QColor m_fond, m_bordure;
  int m_courant = -1;
  int m_surligne = -1;
  int m_decalage = 0;  ///< pixels hidden at the left
  bool m_presse = false;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
