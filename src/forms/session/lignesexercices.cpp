#include "forms/session/lignesexercices.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include "ui/couleurs.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

/// Both books have colours of their own, to be told apart on light, dark and selected
/// backgrounds.
class Livre : public QIconEngine {
 public:
  explicit Livre(bool ferme) : m_ferme(ferme) {}

  void paint(QPainter* peintre, const QRect& rect, QIcon::Mode, QIcon::State) override {
    peintre->save();
    peintre->setRenderHint(QPainter::Antialiasing);
    const qreal cote = std::min(rect.width(), rect.height());
    peintre->translate(rect.x() + (rect.width() - cote) / 2, rect.y() + (rect.height() - cote) / 2);
    peintre->scale(cote / 16, cote / 16);
    if (m_ferme) {
      PeintFerme(*peintre);
    } else {
      PeintOuvert(*peintre);
    }
    peintre->restore();
  }
  QPixmap pixmap(const QSize& taille, QIcon::Mode mode, QIcon::State etat) override {
    QPixmap image(taille);
    image.fill(Qt::transparent);
    QPainter peintre(&image);
    paint(&peintre, QRect(QPoint(0, 0), taille), mode, etat);
    return image;
  }
  QIconEngine* clone() const override { return new Livre(*this); }

 private:
  static void PeintFerme(QPainter& peintre) {
    const CouleursLivre livre = LivreDe(true);
    peintre.setPen(QPen(livre.contour, 1));
    peintre.setBrush(livre.couverture);
    peintre.drawRoundedRect(QRectF(2.5, 1.5, 11, 13), 1, 1);
    peintre.setBrush(livre.pages);
    peintre.drawRect(QRectF(3.5, 11.5, 10, 2));
    peintre.setPen(QPen(livre.reflet, 1));
    peintre.drawLine(QPointF(5.5, 2.5), QPointF(5.5, 11));
  }
  static void PeintOuvert(QPainter& peintre) {
    const CouleursLivre livre = LivreDe(false);
    peintre.setPen(QPen(livre.contour, 1));
    peintre.setBrush(livre.pages);
    for (const qreal sens : {-1.0, 1.0}) {
      QPainterPath page(QPointF(8, 4));
      page.quadTo(8 + sens * 3, 1.5, 8 + sens * 7, 2.5);
      page.lineTo(8 + sens * 7, 12.5);
      page.quadTo(8 + sens * 3, 11.5, 8, 14);
      page.closeSubpath();
      peintre.drawPath(page);
    }
  }
  bool m_ferme;
};

}  // namespace

QIcon ImageExercice(bool cloture) { return QIcon(new Livre(cloture)); }

QString LigneParlee(const LigneExercice& ligne) {
  return ligne.cloture ? Q(ligne.texte) + u", clôturé"_s : Q(ligne.texte);
}

}  // namespace fenlor
