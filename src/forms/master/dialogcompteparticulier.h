// The five special accounts: their fields, `CDialogCompteParticulier` and `CPageOptionCompte`, which share
// them.
#pragma once

#include <array>
#include <functional>

#include "forms/master/choixdecompte.h"
#include "master/comptesparticuliers.h"
#include "ui/cznsheet.h"

namespace fenlor {

class ChampsComptesParticuliers : public QWidget {
  Q_OBJECT
 public:
  explicit ChampsComptesParticuliers(CFenlorApp& app, QWidget* parent = nullptr);
  /// Reads accounts and settings.
  void Charge();
  /// Reads the accounts again, keeping what is chosen.
  void Recharge();
  ComptesParticuliers Valeur() const;

 private:
  void Choisit(const ComptesParticuliers& comptes);
  CFenlorApp& m_app;
  ModeleComptes m_modele;
  std::array<ChoixDeCompte, EcartDebit + 1> m_choix;
  FinDesLiens m_finLiens{*this};
};

/// Opened where a special account is found missing.
class CDialogCompteParticulier : public CZNDialog {
  Q_OBJECT
 public:
  /// `nouveau` makes an account ("&Nouveau..."), true when it did; null: no button.
  explicit CDialogCompteParticulier(ContexteUi& contexte, std::function<bool()> nouveau = nullptr,
                                    QWidget* parent = nullptr);

 protected:
  bool Enregistre() override;

 private:
  ChampsComptesParticuliers m_champs;
  FinDesLiens m_finLiens{*this};
};

/// A closed exercice is refused.
class CPageOptionCompte : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionCompte(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  ChampsComptesParticuliers m_champs;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
