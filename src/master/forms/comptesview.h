// The lists of accounts: what the windows of receipts, expenses, treasury and the whole
// chart have in common. Each adds its form.
#pragma once

#include <memory>

#include "master/comptes.h"
#include "master/forms/fichesview.h"

namespace fenlor {

class DialogCompte;

class ComptesView : public FichesView {
  Q_OBJECT
 protected:
  ComptesView(ContexteUi& contexte, const TexteFixe& titre, u32 bit, ListeComptes liste, FormeCompte forme);
  /// The form of an account, 0 for a new one.
  virtual std::unique_ptr<DialogCompte> Forme(Position position) = 0;

  void FillList() override;
  std::vector<Position> Positions() override;
  bool LanceForme(Position position, Position& derniere) override;
  bool SupprimeFiche(Position position) override;

 private:
  void Definit();
  const ListeComptes m_liste;
  const FormeCompte m_forme;
  bool m_deuxMonnaies;
  CPlan m_plan;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
