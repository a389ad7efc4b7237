// A list of records that have a form: what the lists of accounts and of headings have
// in common. Rows are the records' positions, with an empty row at the end.
#pragma once

#include <memory>

#include "core/refus.h"
#include "ui/cznlistview.h"
#include "ui/suitefiches.h"

namespace fenlor {

class DialogFiche;

class FichesView : public CZNListView, public SuiteFiches {
  Q_OBJECT
 public:
  Position Voisin(int pas) const override;
  void VaVers(int pas) override;
  void Remplace(Position position) override;

 protected:
  FichesView(ContexteUi& contexte, const std::string& titre, u32 bit);
  /// The columns of a file that is open, or could not be: then rows are empty.
  template <class Fiche, class Fichier>
  void DefinitFiches(Fichier& fichier, TableColonnes<Fiche> colonnes) {
    Table().Definit<Fiche>(std::move(colonnes), [&fichier](ModeleListe::Donnee position, Fiche& fiche) {
      if (position == 0 || fichier.NbOuvertures == 0) return false;
      if (!fichier.ReadRec(static_cast<Position>(position))) return false;
      fiche = *fichier.Rec;
      return true;
    });
  }

  /// Records in the list's own order.
  virtual std::vector<Position> Positions() = 0;
  /// The form of a record, 0 for a new one.
  virtual std::unique_ptr<DialogFiche> Forme(Position position) = 0;
  /// Deletes by the rules; 0 for the empty row of a closed exercice, which refuses.
  virtual Refus SupprimeFiche(Position position) = 0;

  void FillList() override;

 private:
  Position Choisie() const;
  void Saisit(Position position);
  void Supprime();
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
