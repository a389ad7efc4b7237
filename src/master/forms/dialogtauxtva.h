// `CDialogTauxTVA`: a VAT account of the list of the options.
#pragma once

#include "master/optionstva.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

/// Edits a value; writes nothing.
class CDialogTauxTVA : public CZNDialog {
  Q_OBJECT
 public:
  /// Adds to `lignes`, which outlive the form: the number is proposed and can be changed.
  CDialogTauxTVA(ContexteUi& contexte, const std::vector<LigneTva>& lignes, QWidget* parent = nullptr);
  /// Modifies the rate of a row.
  CDialogTauxTVA(ContexteUi& contexte, const LigneTva& ligne, QWidget* parent = nullptr);
  LigneTva Valeur() const;

 protected:
  bool Enregistre() override;

 private:
  CDialogTauxTVA(ContexteUi& contexte, const QString& titre, const std::vector<LigneTva>* lignes,
                 const LigneTva& ligne, const std::string& compte, QWidget* parent);
  void QuitteCompte();
  const std::vector<LigneTva>* m_lignes;  ///< null when modifying
  LigneTva m_ligne;
  EditeurTexte m_compte;
  EditeurMontant m_taux;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
