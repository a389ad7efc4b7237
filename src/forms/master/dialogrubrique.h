// `CDialogRubrique`: a heading of the fiscal statement, its formula or its manual amount, and
// the accounts that name it.
#pragma once

#include <QButtonGroup>
#include <QRadioButton>

#include "master/rubriques.h"
#include "ui/dialogfiche.h"
#include "ui/tableliste.h"

namespace fenlor {

class CDialogRubrique : public FormulaireFiche<FicheRubrique> {
  Q_OBJECT
 public:
  CDialogRubrique(ContexteUi& contexte, SuiteFiches* vue, Position position, QWidget* parent = nullptr);

 protected:
  void Montre() override;
  QString Titre() const override;
  FicheRubrique Saisie() override;
  FicheRubrique Nouvelle() override;

 private:
  void MontreComptes();
  /// Enables formula or amount as the radio buttons say; the other one is left empty.
  void MontreCalcul();
  void PoseDecimales(f64 montant);
  /// Takes what is typed into the heading in hand, so that it outlives a change of the radio buttons.
  void LitCalcul();
  void ChoisitCalcul(bool manuel);
  EditeurTexte m_code, m_designation, m_ligne, m_formule;
  QRadioButton m_recette, m_depense, m_resultat, m_taxe, m_automatique, m_manuel;
  QButtonGroup m_types;
  EditeurMontant m_montant;
  std::vector<CompteAssocie> m_associes;
  CZNListCtrl m_comptes;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
