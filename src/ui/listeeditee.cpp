#include "ui/listeeditee.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

#include "ui/images.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr const char* texteDuMenu = "texteDuMenu";  // of a button, which may show a picture alone
}

ListeEditee::ListeEditee(ContexteUi& contexte, Genre genre, const QString& nom, Actions actions,
                         QWidget* parent)
    : QWidget(parent),
      m_genre(genre),
      m_actions(std::move(actions)),
      m_table(new CZNListCtrl(contexte, this)),
      m_boutons(new QHBoxLayout) {
  m_table->setObjectName(EnLignes() ? u"lignes"_s : u"liste"_s);
  m_table->setAccessibleName(nom);
  m_table->installEventFilter(this);
  m_table->SurActivation([this] { Active(); });
  connect(m_table, &TableListe::SelectionChangee, this, &ListeEditee::ActualiseBoutons);
  if (AvecOutils()) {
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_table, &QWidget::customContextMenuRequested, this, &ListeEditee::MontreMenu);
  }

  const bool grand = genre == Genre::LignesEnGrand, fiches = genre == Genre::Fiches;
  m_ajouter = Bouton("ajouter",
                     fiches  ? u"&Ajouter"_s
                     : grand ? u"A&jouter..."_s
                             : u"&Ajouter..."_s,
                     u"Ajouter une ligne"_s, grand ? u"Inser"_s : u"Ins"_s, m_actions.ajoute);
  m_modifier = Bouton("modifier", fiches ? u"&Modifier"_s : u"&Modifier..."_s, u"Modifier la ligne"_s,
                      u"Entrée"_s, m_actions.modifie);
  m_supprimer = Bouton("supprimer", grand ? u"Supp&rimer"_s : u"&Supprimer"_s,
                       u"Supprimer les lignes choisies"_s, u"Suppr"_s, m_actions.supprime);
  m_boutons->addStretch(1);
  auto* pile = new QVBoxLayout(this);
  pile->setContentsMargins(0, 0, 0, 0);
  pile->addWidget(m_table, 1);
  pile->insertLayout(grand || fiches ? 0 : 1, m_boutons);
  setFocusProxy(m_table);
}

QAbstractButton* ListeEditee::Bouton(const char* nom, const QString& texte, const QString& astuce,
                                     const QString& touche, const std::function<void()>& action) {
  QAbstractButton* bouton = AvecOutils() ? Outil(texte, astuce, touche) : new QPushButton(texte, this);
  bouton->setObjectName(QString::fromUtf8(nom));
  bouton->setIcon(Image(nom));
  bouton->setProperty(texteDuMenu, texte);
  if (auto* poussoir = qobject_cast<QPushButton*>(bouton)) poussoir->setAutoDefault(false);
  connect(bouton, &QAbstractButton::clicked, this, [this, action] {
    action();
    ActualiseBoutons();
    if (!AvecOutils()) m_table->setFocus(Qt::OtherFocusReason);
  });
  m_boutons->addWidget(bouton);
  return bouton;
}

QAbstractButton* ListeEditee::Outil(const QString& texte, const QString& astuce, const QString& touche) {
  auto* outil = new QToolButton(this);
  outil->setToolTip(u"%1 (%2)"_s.arg(astuce, touche));
  outil->setAutoRaise(true);
  outil->setFocusPolicy(Qt::NoFocus);
  if (m_genre != Genre::LignesEnPetit) {
    outil->setText(texte);
    outil->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  } else {
    outil->setAccessibleName(astuce);
  }
  return outil;
}

void ListeEditee::AjouteAuBout(QWidget& widget) { m_boutons->addWidget(&widget); }

void ListeEditee::Relit(int choisie) {
  m_table->Relit(AvecOutils() ? choisie : std::max(choisie, 0));
  ActualiseBoutons();
}

void ListeEditee::ActualiseBoutons() {
  const Permis permis = m_actions.permis(m_table->RangChoisi());
  m_ajouter->setEnabled(permis.ajoute);
  m_modifier->setEnabled(permis.modifie);
  m_supprimer->setEnabled(permis.supprime);
}

void ListeEditee::Active() {
  if (EnLignes())
    (m_table->LigneChoisie() >= 0 ? m_actions.modifie : m_actions.ajoute)();
  else if (m_modifier->isEnabled())
    m_modifier->click();
  else if (m_ajouter->isEnabled())
    m_ajouter->click();
}

void ListeEditee::MontreMenu(const QPoint& place) {
  auto* menu = new QMenu(m_table);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto ajoute = [&](const QAbstractButton& bouton, const std::function<void()>& action, bool permis) {
    menu->addAction(bouton.icon(), bouton.property(texteDuMenu).toString(), this, action)->setEnabled(permis);
  };
  ajoute(*m_ajouter, m_actions.ajoute, m_ajouter->isEnabled());
  // A line that may not be changed can be looked at.
  ajoute(*m_modifier, m_actions.modifie, EnLignes() ? m_table->LigneChoisie() >= 0 : m_modifier->isEnabled());
  ajoute(*m_supprimer, m_actions.supprime, m_supprimer->isEnabled());
  menu->popup(m_table->viewport()->mapToGlobal(place));
}

bool ListeEditee::eventFilter(QObject* objet, QEvent* evenement) {
  if (objet == m_table && evenement->type() == QEvent::KeyPress) {
    const auto* touche = static_cast<QKeyEvent*>(evenement);
    const bool insere = touche->key() == Qt::Key_Insert, supprime = touche->key() == Qt::Key_Delete;
    if ((insere || supprime) && !(touche->modifiers() & ~Qt::KeypadModifier)) {
      QAbstractButton* bouton = insere ? m_ajouter : m_supprimer;
      if (!EnLignes() && bouton->isEnabled()) bouton->click();
      if (EnLignes() && (insere || m_table->LigneChoisie() >= 0))
        (insere ? m_actions.ajoute : m_actions.supprime)();
      return true;
    }
  }
  return QWidget::eventFilter(objet, evenement);
}

}  // namespace fenlor
