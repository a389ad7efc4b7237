// `CEcrCombo`: the treasury account that a journal is narrowed to.
#pragma once

#include <QComboBox>
#include <string>
#include <vector>

#include "journal/choixcomptes.h"

namespace fenlor {

/// Treasury accounts by their code, then "< Tous >".
class CEcrCombo : public QComboBox {
  Q_OBJECT
 public:
  explicit CEcrCombo(QWidget* parent = nullptr);
  /// Reads the accounts; the choice is found again by its text, else it is "< Tous >". Tells nobody.
  void Remplit(CFenlorApp& app);
  /// By its text (Windows-1252); nothing changes when it is not there.
  void Choisit(const std::string& texte);
  std::string TexteChoisi() const;
  /// The chosen account; null for "< Tous >".
  const CompteOffert* Choisi() const;
  /// Its long number, empty for "< Tous >".
  std::string Filtre() const;
  /// Account that a new entry is offered: the chosen one, else the first. Empty when there is none.
  std::string CompteParDefaut() const;

 protected:
  /// A turn of the wheel in passing changes nothing.
  void wheelEvent(QWheelEvent* evenement) override;

 private:
  std::vector<CompteOffert> m_comptes;
};

}  // namespace fenlor
