// The heading of the register of assets: bands of columns, the titles of the columns, the years.
#pragma once

#include <QHeaderView>

#include "assets/ligneregistre.h"
#include "ui/findesliens.h"

namespace fenlor {

/// Columns of the register as the views count them.
constexpr int Colonne(ChampRegistre champ) { return static_cast<int>(champ); }
constexpr int premiereAnnee = Colonne(ChampRegistre::PremiereAnnee);
constexpr int derniereAnnee = Colonne(ChampRegistre::DerniereAnnee);

/// Three bands: what the columns belong to, their titles of up to three lines, and the years, which have a
/// place for their scroll bar above them. Its widths are fixed.
class EnteteRegistre : public QHeaderView {
  Q_OBJECT
 public:
  explicit EnteteRegistre(QWidget* parent);

  QSize sizeHint() const override;
  /// What a title needs.
  int LargeurTitre(const QString& titre) const;
  /// Where the scroll bar of the years stands, in coordinates of the viewport: as much of the six columns as
  /// can be seen.
  QRect PlaceBarre() const;

 protected:
  void paintEvent(QPaintEvent* evenement) override;

 private:
  /// Columns from one to another, both included.
  QRect Etendue(int premiere, int derniere) const;
  int HauteurLigne() const;
  void DessineBande(QPainter& peintre, const QString& titre, int premiere, int derniere) const;
  void DessineTitre(QPainter& peintre, const QRect& place, const QString& titre) const;

  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
