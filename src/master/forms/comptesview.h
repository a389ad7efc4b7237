// The lists of accounts: what the windows of receipts, expenses, treasury and the whole
// chart have in common. Each adds its form.
#pragma once

#include <memory>

#include "master/comptes.h"
#include "ui/cznlistview.h"

namespace fenlor {

class DialogCompte;

/// Windows that show accounts; `tresorerie`: the journals and the treasury list too.
constexpr u32 MasqueComptes(bool tresorerie) {
  return tresorerie ? ActualiseComptes : FenComptesRecettes | FenComptesDepenses | FenPlanComptable;
}

class ComptesView : public CZNListView {
  Q_OBJECT
 public:
  /// Record of the row above (-1) or below (+1) the selected one, 0 when there is none.
  Position Voisin(int pas) const;
  void VaVers(int pas);
  /// The account of the selected row stands in another record now; its place stays.
  void Remplace(Position position);

  /// Commands 1005 to 1007. Enter on the empty last row adds.
  bool Connait(unsigned commande) const override;
  bool Disponible(unsigned commande) const override;
  void Execute(unsigned commande) override;

 protected:
  ComptesView(ContexteUi& contexte, unsigned titre, u32 bit, ListeComptes liste, FormeCompte forme);
  /// The form of an account, 0 for a new one.
  virtual std::unique_ptr<DialogCompte> Forme(Position position) = 0;

  void FillList() override;
  int CompareItems(ModeleListe::Donnee a, ModeleListe::Donnee b, int colonne) override;
  std::string TexteDe(ModeleListe::Donnee donnee) override;
  std::vector<unsigned> MenuContextuel() const override;
  void Active() override;

 private:
  bool Lit(ModeleListe::Donnee donnee);
  Position Choisie() const;
  void Saisit(Position position);
  void Supprime();
  const ListeComptes m_liste;
  const FormeCompte m_forme;
  bool m_deuxMonnaies;
  CPlan m_plan;
};

}  // namespace fenlor
