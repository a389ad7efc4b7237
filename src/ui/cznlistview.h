// A list as a whole document window.
#pragma once

#include <functional>

#include "ui/tableliste.h"
#include "ui/vue.h"

namespace fenlor {

/// A subclass says what its columns are, how rows are filled and how two rows
/// compare. Widths are pixels; those the user gave to the columns are kept in the
/// window's section, key "Colonnes".
class CZNListView : public Vue {
  Q_OBJECT
 public:
  CZNListView(ContexteUi& contexte, const std::string& titre, u32 bit);
  ~CZNListView() override;

  TableListe& Table() { return *m_table; }
  const TableListe& Table() const { return *m_table; }

  /// `FillList`, then the first row selected. The subclass made its columns before.
  void Charge() override;
  /// `FillList` again; selection and scrolling stay where they were, by row data.
  void Actualise() override;

  /// Prints what the list shows, or shows its preview: 57607 and 57609 can be used once this is given.
  using Impression = std::function<void(bool apercu)>;
  void SurImpression(Impression impression) { m_impression = std::move(impression); }

  /// "&Copier" (9006) and printing are known here; a subclass adds its own and asks its base for the rest.
  bool Connait(unsigned commande) const override;
  bool Disponible(unsigned commande) const override;
  void Execute(unsigned commande) override;

 protected:
  /// Clears and refills the rows from the file.
  virtual void FillList() = 0;
  /// The sort order of two rows by a column; 0 keeps their order.
  virtual int CompareItems(ModeleListe::Donnee, ModeleListe::Donnee, int /*colonne*/) { return 0; }
  /// Fields of a row, "a|b|c", read when it is painted.
  virtual std::string TexteDe(ModeleListe::Donnee donnee) = 0;
  /// Menu of the right button: numbers of commands of the table, 0 a separator.
  virtual std::vector<unsigned> MenuContextuel() const { return {}; }
  /// Enter or double click on a row: "&Modifier..." (1006) when it can be used.
  virtual void Active();

 private:
  void RestaureLargeurs();
  void SauveLargeurs();
  TableListe* m_table;
  Impression m_impression;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
