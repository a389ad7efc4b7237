#include "ui/listeeditee.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <algorithm>

#include "ui/images.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

ListeEditee::ListeEditee(ContexteUi& contexte, const QString& nom, Actions actions, QWidget* parent)
    : QWidget(parent), m_actions(std::move(actions)), m_table(new CZNListCtrl(contexte, this)) {
  m_table->setObjectName(u"liste"_s);
  m_table->setAccessibleName(nom);
  m_table->installEventFilter(this);
  m_ajouter = Bouton(u"&Ajouter..."_s, "ajouter", m_actions.ajoute);
  m_modifier = Bouton(u"&Modifier..."_s, "modifier", m_actions.modifie);
  m_supprimer = Bouton(u"&Supprimer"_s, "supprimer", m_actions.supprime);
  m_table->SurActivation([this] {
    if (m_modifier->isEnabled())
      m_modifier->click();
    else if (m_ajouter->isEnabled())
      m_ajouter->click();
  });
  connect(m_table, &TableListe::SelectionChangee, this, &ListeEditee::ActualiseBoutons);

  auto* boutons = new QHBoxLayout;
  for (QPushButton* bouton : {m_ajouter, m_modifier, m_supprimer}) boutons->addWidget(bouton);
  boutons->addStretch(1);
  auto* pile = new QVBoxLayout(this);
  pile->setContentsMargins(0, 0, 0, 0);
  pile->addWidget(m_table, 1);
  pile->addLayout(boutons);
  setFocusProxy(m_table);
}

QPushButton* ListeEditee::Bouton(const QString& texte, const char* nom, const std::function<void()>& action) {
  auto* bouton = new QPushButton(Image(nom), texte, this);
  bouton->setObjectName(QString::fromUtf8(nom));
  bouton->setAutoDefault(false);
  connect(bouton, &QPushButton::clicked, this, [this, action] {
    action();
    ActualiseBoutons();
    m_table->setFocus(Qt::OtherFocusReason);
  });
  return bouton;
}

void ListeEditee::Relit(int choisie) {
  m_table->Relit(std::max(choisie, 0));
  ActualiseBoutons();
}

void ListeEditee::ActualiseBoutons() {
  const Permis permis = m_actions.permis(m_table->LigneChoisie());
  m_ajouter->setEnabled(permis.ajoute);
  m_modifier->setEnabled(permis.modifie);
  m_supprimer->setEnabled(permis.supprime);
}

bool ListeEditee::eventFilter(QObject* objet, QEvent* evenement) {
  if (objet == m_table && evenement->type() == QEvent::KeyPress) {
    const auto* touche = static_cast<QKeyEvent*>(evenement);
    QPushButton* bouton = touche->key() == Qt::Key_Insert   ? m_ajouter
                          : touche->key() == Qt::Key_Delete ? m_supprimer
                                                            : nullptr;
    if (bouton && !(touche->modifiers() & ~Qt::KeypadModifier)) {
      if (bouton->isEnabled()) bouton->click();
      return true;
    }
  }
  return QWidget::eventFilter(objet, evenement);
}

}  // namespace fenlor
