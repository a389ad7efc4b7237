// `CImmoView`: the window of the register of assets.
#pragma once

#include "assets/immobilisations.h"
#include "ui/cznlistview.h"

namespace fenlor {

class CImmoList;

/// The files that the register holds open while its window lives, so that the walk over an asset's years
/// stays cheap. Where one of them could not be opened, which was told, there is nothing to show.
class CImmoDoc {
 public:
  explicit CImmoDoc(CFenlorApp& app);
  CImmobilisations& Fichier() { return m_immobilisations; }
  bool Lit(Position position, Immobilisation& immo);

 private:
  CImmobilisations m_immobilisations;
  CAmortissements m_amortissements;
};

class CImmoView : public CZNListView {
  Q_OBJECT
 public:
  explicit CImmoView(ContexteUi& contexte);
  ~CImmoView() override;

  CImmoList& Liste() { return *m_liste; }
  /// The last row is selected.
  void Charge() override;

 protected:
  void FillList() override;
  std::vector<unsigned> MenuContextuel() const override;

 private:
  Position Choisie() const;
  void DeclareCommandes();
  void Ajoute();
  void Modifie();
  void Supprime();
  /// "&Cession...", "&Rebut...": the form writes the record by itself.
  template <class Forme>
  void Finit(Refus (*controle)(const Immobilisation&));
  void Detaille();
  /// Runs the form of an asset; selects where that stands then.
  void Saisit(FicheImmobilisation fiche);
  CImmoDoc m_document;
  CImmoList* m_liste;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
