// `CLibelleView`: the ready-made labels of the exercice, in the order of their file.
#pragma once

#include <map>

#include "ui/cznlistview.h"

namespace fenlor {

/// The order is the user's own and is kept in the file: a click on the title sorts nothing. Each change is
/// on disk before the row shows it. The file is read again before a form opens or a label
/// goes, so that what an entry form added meanwhile is kept.
class CLibelleView : public CZNListView {
  Q_OBJECT
 public:
  explicit CLibelleView(ContexteUi& contexte);

  /// A file that can neither be read nor made (told) closes the window.
  void Charge() override;

  // For the form. Rows that show count from 0; the empty one is none of them.
  int NbLibelles() const;
  std::string Libelle(int ligne) const;
  /// Before the selected row, at the end without one. False, told, when it could not be saved;
  /// the list is unchanged then.
  bool Insere(const std::string& libelle);
  bool Change(int ligne, const std::string& libelle);

 protected:
  void FillList() override;

 private:
  std::vector<std::string> Libelles() const;
  std::ptrdiff_t Place(int ligne) const;  ///< of a row's label in the file
  bool Relit();
  void Saisit(bool ajout);
  void Supprime();
  std::map<ModeleListe::Donnee, std::string> m_libelles;  ///< by the data of their row
  ModeleListe::Donnee m_derniere = 0;                     ///< last data given to a row
  bool m_lu = false;                                      ///< the file, the last time it was read
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
