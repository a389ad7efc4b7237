#include "forms/journal/ecrcombo.h"

#include <QSignalBlocker>
#include <QWheelEvent>
#include <algorithm>

#include "reports/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

CEcrCombo::CEcrCombo(QWidget* parent) : QComboBox(parent) {
  setSizeAdjustPolicy(AdjustToContents);
  setMaxVisibleItems(20);
  setFocusPolicy(Qt::StrongFocus);
}

void CEcrCombo::Remplit(CFenlorApp& app) {
  const QSignalBlocker silence(this);
  const std::string choisi = TexteChoisi(), compte = Filtre();
  m_comptes = ComptesParCode(app, Tresorerie);
  clear();
  for (const CompteOffert& compte : m_comptes) {
    addItem(Q(compte.code), compte.position);
    setItemData(count() - 1, Q(compte.Texte()), Qt::ToolTipRole);
  }
  addItem(TexteQ(MotTousComptes), 0u);
  setCurrentIndex(count() - 1);
  Choisit(choisi);
  // Two accounts may have one code.
  for (std::size_t i = 0; i < m_comptes.size(); ++i)
    if (m_comptes[i].compte == compte && m_comptes[i].code == choisi) setCurrentIndex(static_cast<int>(i));
}

void CEcrCombo::Choisit(const std::string& texte) {
  const QSignalBlocker silence(this);
  if (const int indice = findText(Q(texte), Qt::MatchFixedString | Qt::MatchCaseSensitive); indice >= 0)
    setCurrentIndex(indice);
}

std::string CEcrCombo::TexteChoisi() const { return De1252(currentText()); }

const CompteOffert* CEcrCombo::Choisi() const {
  const auto indice = static_cast<std::size_t>(std::max(currentIndex(), 0));
  return currentIndex() >= 0 && indice < m_comptes.size() ? &m_comptes[indice] : nullptr;
}

std::string CEcrCombo::Filtre() const { return Choisi() ? Choisi()->compte : std::string(); }

void CEcrCombo::wheelEvent(QWheelEvent* evenement) {
  hasFocus() ? QComboBox::wheelEvent(evenement) : evenement->ignore();
}

std::string CEcrCombo::CompteParDefaut() const {
  if (Choisi()) return Choisi()->compte;
  return m_comptes.empty() ? std::string() : m_comptes.front().compte;
}

}  // namespace fenlor
