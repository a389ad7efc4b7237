// `CDialogLibelle`: one label of the list.
#pragma once

#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

class CLibelleView;

/// Edits the list behind it, which outlives the form.
class CDialogLibelle : public CZNDialog {
  Q_OBJECT
 public:
  /// `ligne` is a label of the list; below 0 the form adds labels, one after the other.
  CDialogLibelle(ContexteUi& contexte, CLibelleView& liste, int ligne, QWidget* parent = nullptr);

 protected:
  bool Enregistre() override;
  void Vide() override;
  void Voisin(int pas) override;

 private:
  void Montre();
  CLibelleView& m_liste;
  int m_ligne;
  EditeurTexte m_libelle;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
