#include "journal/forms/listelignes.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QToolButton>

#include "ui/images.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

ListeLignes::ListeLignes(ContexteUi& contexte, const QString& nom, Actions actions, QWidget* parent)
    : QWidget(parent), m_actions(std::move(actions)), m_table(new CZNListCtrl(contexte, this)) {
  m_table->setObjectName(u"lignes"_s);
  m_table->setAccessibleName(nom);
  m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_table->setContextMenuPolicy(Qt::CustomContextMenu);
  m_table->PoseTexteVide(u"Aucune ligne : la touche Inser en ajoute une"_s);
  m_table->installEventFilter(this);
  m_table->SurActivation([this] { Active(); });
  connect(m_table, &TableListe::SelectionChangee, this, &ListeLignes::ActualiseOutils);
  connect(m_table, &QWidget::customContextMenuRequested, this, &ListeLignes::MontreMenu);

  m_barre = new QHBoxLayout;
  m_ajouter = Outil(u"A&jouter..."_s, u"Ajouter une ligne (Inser)"_s, "ajouter", m_actions.ajoute);
  m_modifier = Outil(u"&Modifier..."_s, u"Modifier la ligne (Entrée)"_s, "modifier", m_actions.modifie);
  m_supprimer =
      Outil(u"Supp&rimer"_s, u"Supprimer les lignes choisies (Suppr)"_s, "supprimer", m_actions.supprime);
  m_barre->addStretch(1);
  auto* pile = new QVBoxLayout(this);
  pile->setContentsMargins(0, 0, 0, 0);
  pile->addLayout(m_barre);
  pile->addWidget(m_table, 1);
  setFocusProxy(m_table);
  ActualiseOutils();
}

QToolButton* ListeLignes::Outil(const QString& texte, const QString& astuce, const char* nom,
                                std::function<void()> action) {
  auto* outil = new QToolButton(this);
  outil->setObjectName(QString::fromUtf8(nom));
  outil->setText(texte);
  outil->setIcon(Image(nom));
  outil->setToolTip(astuce);
  outil->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  outil->setAutoRaise(true);
  outil->setFocusPolicy(Qt::NoFocus);
  connect(outil, &QToolButton::clicked, this, std::move(action));
  m_barre->addWidget(outil);
  return outil;
}

void ListeLignes::AjouteValeur(const QString& libelle, QWidget& valeur, const char* nom) {
  auto* texte = new QLabel(libelle, this);
  texte->setBuddy(&valeur);
  valeur.setObjectName(QString::fromUtf8(nom));
  m_barre->addWidget(texte);
  m_barre->addWidget(&valeur);
}

void ListeLignes::Relit(int choisie) {
  m_table->Relit(choisie);
  ActualiseOutils();
}

void ListeLignes::Permet(bool permis) {
  m_permis = permis;
  ActualiseOutils();
}

void ListeLignes::ActualiseOutils() {
  const bool choisie = m_table->selectionModel()->hasSelection();
  m_ajouter->setEnabled(m_permis);
  m_modifier->setEnabled(m_permis && choisie);
  m_supprimer->setEnabled(m_permis && choisie);
}

void ListeLignes::Active() { (m_table->LigneChoisie() >= 0 ? m_actions.modifie : m_actions.ajoute)(); }

void ListeLignes::MontreMenu(const QPoint& place) {
  auto* menu = new QMenu(m_table);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const bool choisie = m_table->selectionModel()->hasSelection();
  menu->addAction(m_ajouter->icon(), m_ajouter->text(), this, m_actions.ajoute)->setEnabled(m_permis);
  menu->addAction(m_modifier->icon(), m_modifier->text(), this, m_actions.modifie)->setEnabled(choisie);
  menu->addAction(m_supprimer->icon(), m_supprimer->text(), this, m_actions.supprime)
      ->setEnabled(m_permis && choisie);
  menu->popup(m_table->viewport()->mapToGlobal(place));
}

bool ListeLignes::eventFilter(QObject* objet, QEvent* evenement) {
  if (objet == m_table && evenement->type() == QEvent::KeyPress) {
    const auto* touche = static_cast<QKeyEvent*>(evenement);
    const bool seule = !(touche->modifiers() & ~Qt::KeypadModifier);
    if (seule && touche->key() == Qt::Key_Insert) return m_actions.ajoute(), true;
    if (seule && touche->key() == Qt::Key_Delete) {
      if (m_table->LigneChoisie() >= 0) m_actions.supprime();
      return true;
    }
  }
  return QWidget::eventFilter(objet, evenement);
}

}  // namespace fenlor
