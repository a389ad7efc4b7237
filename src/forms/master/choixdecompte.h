// A list of all accounts to choose one from, and the model that several share.
#pragma once

#include <QComboBox>
#include <QStringListModel>
#include <string>
#include <vector>

#include "core/fenlorapp.h"

namespace fenlor {

/// The accounts of the open exercice in number order, "512 Banque".
class ModeleComptes : public QStringListModel {
  Q_OBJECT
 public:
  using QStringListModel::QStringListModel;
  void Charge(CFenlorApp& app);
  /// Row of a long number, -1 when there is none.
  int LigneDe(const std::string& compte) const;
  const std::string& CompteDe(int ligne) const { return m_comptes[static_cast<std::size_t>(ligne)]; }

 private:
  std::vector<std::string> m_comptes;
};

/// A typed number, or a part of the name, jumps to its account; what leads to none is
/// forgotten when the field is left. An emptied field stands for no account.
class ChoixDeCompte : public QComboBox {
  Q_OBJECT
 public:
  /// The model outlives the list.
  explicit ChoixDeCompte(ModeleComptes& modele, QWidget* parent = nullptr);
  std::string Valeur() const;  ///< long form; empty when none is chosen
  void Choisit(const std::string& compte);
  void showPopup() override;

 protected:
  void focusOutEvent(QFocusEvent* evenement) override;
  void wheelEvent(QWheelEvent* evenement) override;

 private:
  int LigneDuTexte() const;
  void Retrouve();
  ModeleComptes& m_modele;
};

}  // namespace fenlor
