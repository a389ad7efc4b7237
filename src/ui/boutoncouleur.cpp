#include "ui/boutoncouleur.h"

#include <QColorDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

QIcon Pastille(const QWidget& widget, const QColor& couleur, const QSize& taille) {
  const auto dessine = [&](const QColor& remplissage) {
    QPixmap image(taille * widget.devicePixelRatio());
    image.setDevicePixelRatio(widget.devicePixelRatio());
    image.fill(Qt::transparent);
    QPainter peintre(&image);
    peintre.setPen(widget.palette().color(QPalette::Mid));
    peintre.setBrush(remplissage);
    peintre.drawRect(QRectF(QPointF(0.5, 0.5), QSizeF(taille) - QSizeF(1, 1)));
    return image;
  };
  QIcon icone(dessine(couleur));
  icone.addPixmap(dessine(widget.palette().color(QPalette::Disabled, QPalette::Button)), QIcon::Disabled);
  return icone;
}

QString Nom(const Teintes& teintes, const QColor& couleur) {
  for (const Teinte& teinte : teintes)
    if (teinte.valeur == couleur.rgb()) return QString::fromUtf16(teinte.nom);
  return u"Rouge %1, vert %2, bleu %3"_s.arg(couleur.red()).arg(couleur.green()).arg(couleur.blue());
}

}  // namespace

BoutonCouleur::BoutonCouleur(Palette palette, QWidget* parent) : QPushButton(parent), m_palette(palette) {
  setAutoDefault(false);
  auto* menu = new QMenu(this);
  menu->setObjectName(u"palette"_s);
  connect(menu, &QMenu::aboutToShow, this, &BoutonCouleur::RemplitMenu);
  setMenu(menu);
  Dessine();
}

void BoutonCouleur::Pose(const QColor& couleur) {
  m_couleur = couleur;
  Dessine();
}

void BoutonCouleur::Dessine() {
  const int hauteur = fontMetrics().height();
  setIconSize(QSize(hauteur * 3, hauteur));
  setIcon(Pastille(*this, m_couleur, iconSize()));
  const QString nom = Nom(m_palette == Palette::Fonds ? TeintesFonds() : TeintesTextes(), m_couleur);
  setToolTip(nom);
  setAccessibleDescription(nom);
}

void BoutonCouleur::RemplitMenu() {
  menu()->clear();
  const int hauteur = fontMetrics().height();
  for (const Teinte& teinte : m_palette == Palette::Fonds ? TeintesFonds() : TeintesTextes()) {
    const QColor couleur(teinte.valeur);
    QAction* action =
        menu()->addAction(Pastille(*this, couleur, QSize(hauteur, hauteur)), QString::fromUtf16(teinte.nom));
    connect(action, &QAction::triggered, this, [this, couleur] { Choisit(couleur); });
    if (teinte.valeur == m_couleur.rgb()) menu()->setActiveAction(action);
  }
  menu()->addSeparator();
  connect(menu()->addAction(u"&Autre..."_s), &QAction::triggered, this, &BoutonCouleur::Autre);
}

void BoutonCouleur::Choisit(const QColor& couleur) {
  if (couleur == m_couleur) return;
  Pose(couleur);
  Q_EMIT Change();
}

void BoutonCouleur::Autre() {
  QColorDialog dialogue(m_couleur, this);
  dialogue.setObjectName(u"DialogCouleur"_s);
  if (dialogue.exec() == QDialog::Accepted) Choisit(dialogue.selectedColor());
}

void BoutonCouleur::keyPressEvent(QKeyEvent* evenement) {
  if (evenement->key() == Qt::Key_Down && evenement->modifiers() & Qt::AltModifier) return showMenu();
  QPushButton::keyPressEvent(evenement);
}

void BoutonCouleur::changeEvent(QEvent* evenement) {
  QPushButton::changeEvent(evenement);
  if (evenement->type() == QEvent::PaletteChange || evenement->type() == QEvent::FontChange) Dessine();
}

}  // namespace fenlor
