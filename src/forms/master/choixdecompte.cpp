#include "forms/master/choixdecompte.h"

#include <QCompleter>
#include <QLineEdit>
#include <QListView>
#include <QWheelEvent>
#include <algorithm>

#include "master/comptesparticuliers.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {
constexpr int LargeurCompte = 38, LignesVisibles = 15;
}

void ModeleComptes::Charge(CFenlorApp& app) {
  QStringList textes;
  m_comptes.clear();
  for (CompteListe& compte : ComptesAChoisir(app)) {
    textes.push_back(Q(compte.texte));
    m_comptes.push_back(std::move(compte.compte));
  }
  setStringList(textes);
}

int ModeleComptes::LigneDe(const std::string& compte) const {
  const auto place = std::lower_bound(m_comptes.begin(), m_comptes.end(), compte);
  return place != m_comptes.end() && *place == compte ? static_cast<int>(place - m_comptes.begin()) : -1;
}

ChoixDeCompte::ChoixDeCompte(ModeleComptes& modele, QWidget* parent) : QComboBox(parent), m_modele(modele) {
  setEditable(true);
  setInsertPolicy(NoInsert);
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(LargeurCompte);
  setMaxVisibleItems(LignesVisibles);
  setFocusPolicy(Qt::StrongFocus);
  setModel(&modele);
  auto* complete = new QCompleter(&modele, this);
  complete->setFilterMode(Qt::MatchContains);
  complete->setCaseSensitivity(Qt::CaseInsensitive);
  complete->setMaxVisibleItems(LignesVisibles);
  setCompleter(complete);
  setCurrentIndex(-1);
  connect(lineEdit(), &QLineEdit::returnPressed, this, &ChoixDeCompte::Retrouve);
}

std::string ChoixDeCompte::Valeur() const {
  const int ligne = LigneDuTexte();
  return ligne < 0 ? std::string() : m_modele.CompteDe(ligne);
}

void ChoixDeCompte::Choisit(const std::string& compte) {
  setCurrentIndex(m_modele.LigneDe(compte));
  lineEdit()->setCursorPosition(0);
}

void ChoixDeCompte::showPopup() {
  if (auto* liste = qobject_cast<QListView*>(view())) liste->setUniformItemSizes(true);
  QComboBox::showPopup();
}

/// A wheel that passes over the page turns the page, not the account.
void ChoixDeCompte::wheelEvent(QWheelEvent* evenement) {
  if (hasFocus())
    QComboBox::wheelEvent(evenement);
  else
    evenement->ignore();
}

void ChoixDeCompte::focusOutEvent(QFocusEvent* evenement) {
  QComboBox::focusOutEvent(evenement);
  if (evenement->reason() != Qt::PopupFocusReason) Retrouve();
}

/// Row of what stands in the field; the current one for a text that leads to none.
int ChoixDeCompte::LigneDuTexte() const {
  const QString texte = currentText().trimmed();
  if (texte.isEmpty()) return -1;
  if (currentIndex() >= 0 && texte == itemText(currentIndex()).trimmed()) return currentIndex();
  for (const Qt::MatchFlags genre : {Qt::MatchFixedString, Qt::MatchStartsWith, Qt::MatchContains})
    if (const int ligne = findText(texte, genre); ligne >= 0) return ligne;
  return currentIndex();
}

void ChoixDeCompte::Retrouve() {
  const int ligne = LigneDuTexte();
  setCurrentIndex(ligne);
  setEditText(ligne < 0 ? QString() : itemText(ligne));
  lineEdit()->setCursorPosition(0);
}

}  // namespace fenlor
