#include "app/ecranaccueil.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include "app/apropos.h"
#include "app/textes.h"
#include "core/textes.h"
#include "ui/couleurs.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize taille(480, 280);

QPixmap Dessine(bool tessamaris) {
  const qreal echelle =
      QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->devicePixelRatio() : 1;
  QPixmap image(taille * echelle);
  image.setDevicePixelRatio(echelle);
  QPainter p(&image);
  p.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  const QRectF cadre(QPointF(0, 0), taille);
  const auto [fonce, clair, accent] = AccueilDe(tessamaris);
  QLinearGradient fond(cadre.topLeft(), cadre.bottomRight());
  fond.setColorAt(0, fonce);
  fond.setColorAt(1, clair);
  p.fillRect(cadre, fond);

  // A page of a journal, half hidden behind the right edge.
  p.save();
  p.translate(414, 96);
  p.rotate(6);
  const QRectF page(0, 0, 150, 250);
  p.setPen(Qt::NoPen);
  p.setBrush(Blanc(30));
  p.drawRoundedRect(page, 6, 6);
  for (int i = 0; i < 12; ++i) {
    const qreal y = 28 + i * 18;
    p.setBrush(Blanc(i % 2 ? 16 : 34));
    p.drawRect(QRectF(0, y, page.width(), 18));
  }
  p.setPen(QPen(Blanc(70), 1));
  for (const qreal x : {30.0, 64.0}) p.drawLine(QPointF(x, 28), QPointF(x, 244));
  p.restore();

  p.setPen(Qt::NoPen);
  p.setBrush(accent);
  p.drawRect(QRectF(40, 62, 6, 92));
  const auto ecrit = [&](qreal y, int pixels, bool gras, const QColor& couleur, const QString& texte) {
    QFont police = QGuiApplication::font();
    police.setPixelSize(pixels);
    police.setBold(gras);
    if (pixels > 40) police.setLetterSpacing(QFont::AbsoluteSpacing, 4);
    p.setFont(police);
    p.setPen(couleur);
    p.drawText(QRectF(60, y, taille.width() - 80, pixels * 1.5), Qt::AlignLeft | Qt::AlignVCenter, texte);
  };
  ecrit(54, 52, true, Blanc(), TexteQ(TitreApplication).toUpper());
  ecrit(124, 18, false, Blanc(235), u"Comptabilité des professions libérales"_s);
  ecrit(taille.height() - 62, 13, true, accent, TexteQ(FormatVersion, {TexteVersion().toStdString()}));
  ecrit(taille.height() - 40, 12, false, Blanc(235),
        tessamaris ? u"Avec Tessamaris — logiciel libre, sans garantie"_s
                   : u"Logiciel libre (GPL-3.0-or-later), sans garantie"_s);
  p.setPen(QPen(Noir(90), 1));
  p.setBrush(Qt::NoBrush);
  p.drawRect(cadre.adjusted(0.5, 0.5, -0.5, -0.5));
  return image;
}

}  // namespace

EcranAccueil::EcranAccueil(bool tessamaris) : QSplashScreen(Dessine(tessamaris)) {
  setObjectName(u"EcranAccueil"_s);
}

}  // namespace fenlor
