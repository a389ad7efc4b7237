// `CPageOptionTVA`: the VAT accounts, and the form of one of them. They change when the options are saved.
#pragma once

#include "master/optionstva.h"
#include "ui/cznsheet.h"
#include "ui/editeurs.h"
#include "ui/listeeditee.h"

namespace fenlor {

/// Edits a value; writes nothing.
class CDialogTauxTVA : public CZNDialog {
  Q_OBJECT
 public:
  /// Adds `ligne` to `lignes`, which outlive the form: its number can be changed; null: modifies its rate.
  CDialogTauxTVA(ContexteUi& contexte, const std::vector<LigneTva>* lignes, const LigneTva& ligne,
                 QWidget* parent = nullptr);
  LigneTva Valeur() const;

 protected:
  bool Enregistre() override;

 private:
  void QuitteCompte();
  const std::vector<LigneTva>* m_lignes;  ///< null when modifying
  LigneTva m_ligne;
  EditeurTexte m_compte;
  EditeurMontant m_taux;
  FinDesLiens m_finLiens{*this};
};

class CPageOptionTVA : public CZNPage {
  Q_OBJECT
 public:
  explicit CPageOptionTVA(ContexteUi& contexte);
  bool Charge() override;
  bool Enregistre() override;

 private:
  void Ajoute();
  void Modifie();
  void Supprime();
  LigneTva& Choisie();
  std::vector<LigneTva> m_lignes;
  bool m_ouvert = false;  ///< the exercice is not closed
  ListeEditee m_liste;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
