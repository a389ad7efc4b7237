// `CRubriqueView`: the headings of the fiscal statement, in order of their code.
#pragma once

#include "master/rubriques.h"
#include "ui/cznlistview.h"

namespace fenlor {

class CRubriqueView : public CZNListView {
  Q_OBJECT
 public:
  explicit CRubriqueView(ContexteUi& contexte);

  /// Record of the row above (-1) or below (+1) the selected one, 0 when there is none.
  Position Voisin(int pas) const;
  void VaVers(int pas);
  /// The heading of the selected row stands in another record now; its place stays.
  void Remplace(Position position);

  /// Commands 1005 to 1007. Enter on the empty last row adds.
  bool Connait(unsigned commande) const override;
  bool Disponible(unsigned commande) const override;
  void Execute(unsigned commande) override;

 protected:
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
  CRubriques m_rubriques;
};

}  // namespace fenlor
