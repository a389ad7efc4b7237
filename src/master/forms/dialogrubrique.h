// `CDialogRubrique`: a heading of the fiscal statement, its formula or its manual amount, and
// the accounts that name it.
#pragma once

#include <QButtonGroup>
#include <QRadioButton>

#include "master/rubriques.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"
#include "ui/tableliste.h"

namespace fenlor {

class CRubriqueView;

class CDialogRubrique : public CZNDialog {
  Q_OBJECT
 public:
  /// `vue` may be null: then there is nothing to walk. `position` 0 adds.
  CDialogRubrique(ContexteUi& contexte, CRubriqueView* vue, Position position, QWidget* parent = nullptr);

  /// Something was saved, however the form ended.
  bool AChange() const { return m_aChange; }
  /// Record that was last saved or shown; 0 when none was.
  Position Derniere() const { return m_derniere; }
  /// Ends at once when there is no such record, which has been told.
  int exec() override;

 protected:
  bool Enregistre() override;
  void Vide() override;
  void Voisin(int pas) override;
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  bool Ajout() const { return m_fiche.position == 0; }
  void Presente();
  void MontreTitre();
  void MontreComptes();
  /// Enables formula or amount as the radio buttons say; the other one is left empty.
  void MontreCalcul();
  void MontreMontant();
  void PoseDecimales();
  void LitCalcul();
  void ChoisitCalcul(bool manuel);
  void QuitteCode();
  FicheRubrique Saisie();
  CRubriqueView* m_vue;
  FicheRubrique m_fiche;  ///< as in the file, with formula and amount as last typed
  std::string m_codeLu;   ///< as in the file
  bool m_lu = true;
  bool m_aChange = false;
  bool m_fleche = false;  ///< the last key on "Automatique :" or "Manuel :" was an arrow
  Position m_derniere = 0;
  EditeurTexte m_code, m_designation, m_ligne, m_formule;
  QRadioButton m_recette, m_depense, m_resultat, m_taxe, m_automatique, m_manuel;
  QButtonGroup m_types, m_calculs;
  EditeurMontant m_montant;
  std::vector<CompteAssocie> m_associes;
  CZNListCtrl m_comptes;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
