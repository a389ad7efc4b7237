// A list as a whole document window.
#pragma once

#include "ui/tableliste.h"
#include "ui/vue.h"

namespace fenlor {

/// The arrangement of a window's columns, in its section of the settings, key "Ordre des colonnes"; written
/// when it is another one.
void RestaureRangement(Vue& vue, TableListe& table);
void SauveRangement(Vue& vue, const TableListe& table);
/// Command "Colonnes...": the form that arranges them.
void MontreColonnes(Vue& vue, TableListe& table);

/// A subclass defines its table of columns in its constructor and fills the rows. Widths are pixels; those
/// the user gave to the columns are kept in the window's section, key "Colonnes".
class CZNListView : public Vue {
  Q_OBJECT
 public:
  /// `table`: a list of the window's own kind, which it takes over.
  CZNListView(ContexteUi& contexte, const std::string& titre, u32 bit, TableListe* table = nullptr);
  ~CZNListView() override;

  TableListe& Table() { return *m_table; }
  const TableListe& Table() const { return *m_table; }

  /// `FillList`, then the first row selected. The subclass defined its columns before.
  void Charge() override;
  /// `FillList` again; selection and scrolling stay where they were, by row data.
  void Actualise() override;
  void AppliqueDessin() override;

 protected:
  /// Clears and refills the rows from the file.
  virtual void FillList() = 0;
  /// Menu of the right button: numbers of commands of the table, 0 a separator.
  virtual std::vector<unsigned> MenuContextuel() const;

 private:
  void RestaureLargeurs();
  void SauveLargeurs();
  /// Enter or double click on a row: "&Modifier..." when it can be used, else "&Ajouter...".
  void Active();
  TableListe* m_table;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
