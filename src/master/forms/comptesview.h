// The lists of accounts: what the windows of receipts, expenses, treasury and the whole
// chart have in common. Each adds its form.
#pragma once

#include "master/comptes.h"
#include "ui/fichesview.h"

namespace fenlor {

class ComptesView : public FichesView {
  Q_OBJECT
 protected:
  ComptesView(ContexteUi& contexte, const TexteFixe& titre, u32 bit, ListeComptes liste, FormeCompte forme);
  void FillList() override;
  std::vector<Position> Positions() override;
  Refus SupprimeFiche(Position position) override;

 private:
  void Definit();
  const ListeComptes m_liste;
  const FormeCompte m_forme;
  bool m_deuxMonnaies;
  CPlan m_plan;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
