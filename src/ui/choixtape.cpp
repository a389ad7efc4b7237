#include "ui/choixtape.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QLineEdit>

#include "ui/editeurs.h"
#include "ui/listetapee.h"

namespace fenlor {

namespace {

QLineEdit& PoseEditeur(QComboBox& choix) {
  auto* editeur = new EditeurTexte;
  choix.setEditable(true);
  choix.setLineEdit(editeur);
  choix.setCompleter(nullptr);
  choix.setInsertPolicy(QComboBox::NoInsert);
  return *editeur;
}

/// The focus is still the field's: its own list has it, or another window.
bool Ailleurs(Qt::FocusReason raison) {
  return raison == Qt::PopupFocusReason || raison == Qt::ActiveWindowFocusReason;
}

}  // namespace

ChoixTape::ChoixTape(QComboBox& choix, Inconnu inconnu, Cherche cherche)
    : QObject(&choix),
      m_choix(choix),
      m_editeur(PoseEditeur(choix)),
      m_inconnu(inconnu),
      m_cherche(std::move(cherche)) {
  choix.installEventFilter(this);
  connect(&m_editeur, &QLineEdit::textEdited, this, &ChoixTape::Suit);
  new ListeTapee(
      choix, m_editeur,
      [this](const QString& tape) {
        Sens sens = m_cherche(tape);
        m_rangs = std::move(sens.rangs);
        return sens.textes;
      },
      [this](int rang) { Prend(m_rangs.at(static_cast<std::size_t>(rang))); });
}

void ChoixTape::Suit(const QString& tape) {
  const int rang = tape.trimmed().isEmpty() ? -1 : m_cherche(tape).rang;
  if (rang == m_choix.currentIndex() || (rang < 0 && m_inconnu == Inconnu::GardeLeChoix)) return;
  const int curseur = m_editeur.cursorPosition();
  m_choix.setCurrentIndex(rang);
  m_editeur.setText(tape);
  m_editeur.setCursorPosition(curseur);
  Q_EMIT m_choix.activated(rang);
  // Whoever was told may have asked for another row.
  if (m_choix.currentIndex() != rang) m_editeur.setText(m_choix.itemText(m_choix.currentIndex()));
}

void ChoixTape::Prend(int rang) {
  m_choix.setCurrentIndex(rang);
  Q_EMIT m_choix.activated(rang);
  m_editeur.selectAll();
}

bool ChoixTape::eventFilter(QObject* objet, QEvent* evenement) {
  // The focus may go because the list itself does.
  if (!qobject_cast<QComboBox*>(objet)) return false;
  if (evenement->type() == QEvent::FocusIn) {
    ChoisitTout(m_choix, *static_cast<QFocusEvent*>(evenement));
  } else if (evenement->type() == QEvent::FocusOut &&
             !Ailleurs(static_cast<QFocusEvent*>(evenement)->reason()) && m_choix.currentIndex() >= 0) {
    m_editeur.setText(m_choix.itemText(m_choix.currentIndex()));
    m_editeur.setCursorPosition(0);
  }
  return false;
}

void ChoisitTout(QComboBox& champ, const QFocusEvent& evenement) {
  if (!Ailleurs(evenement.reason()) && evenement.reason() != Qt::MouseFocusReason)
    champ.lineEdit()->selectAll();
}

}  // namespace fenlor
