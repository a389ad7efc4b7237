#include "ui/barreoffre.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

BarreOffre::BarreOffre(QWidget* parent)
    : QFrame(parent), m_texte(new QLabel(this)), m_rangee(new QHBoxLayout(this)) {
  setObjectName(u"offre"_s);
  setAccessibleName(u"Proposition"_s);
  setFrameShape(QFrame::StyledPanel);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  m_texte->setObjectName(u"texteOffre"_s);
  m_texte->setForegroundRole(QPalette::ToolTipText);
  m_texte->setTextFormat(Qt::PlainText);
  m_texte->setWordWrap(true);
  m_rangee->addWidget(m_texte, 1);
  m_horloge.setSingleShot(true);
  connect(&m_horloge, &QTimer::timeout, this, &BarreOffre::Passe);
  hide();
}

void BarreOffre::Offre(const Proposition& proposition) {
  m_passagere = proposition.duree > 0;
  if (!m_passagere) m_durable = proposition;
  Montre(proposition);
  m_passagere ? m_horloge.start(proposition.duree) : m_horloge.stop();
}

void BarreOffre::Retire() {
  m_horloge.stop();
  m_durable = {};
  m_passagere = false;
  hide();
}

/// The passing offer is over: what stays is seen again.
void BarreOffre::Passe() {
  m_passagere = false;
  if (m_durable.texte.isEmpty())
    hide();
  else
    Montre(m_durable);
}

void BarreOffre::Montre(const Proposition& proposition) {
  m_texte->setText(proposition.texte);
  for (QAbstractButton* bouton : findChildren<QAbstractButton*>()) {
    bouton->hide();
    bouton->deleteLater();  // it may be the one that is pressed
  }
  const auto fin = [this] {
    m_horloge.stop();
    if (!m_passagere) m_durable = {};
    Passe();
  };
  for (const Proposition::Choix& choix : proposition.choix) {
    auto* bouton = new QPushButton(choix.libelle, this);
    connect(bouton, &QPushButton::clicked, this, [fin, action = choix.action] {
      fin();
      action();
    });
    m_rangee->addWidget(bouton);
  }
  auto* ferme = new QToolButton(this);
  ferme->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
  ferme->setAutoRaise(true);
  ferme->setToolTip(u"Ne plus montrer"_s);
  ferme->setAccessibleName(u"Ne plus montrer"_s);
  connect(ferme, &QToolButton::clicked, this, fin);
  m_rangee->addWidget(ferme);
  show();
}

}  // namespace fenlor
