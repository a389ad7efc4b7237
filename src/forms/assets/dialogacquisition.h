// `CDialogAcquisition`: the form of an asset.
#pragma once

#include <QComboBox>
#include <QRadioButton>

#include "assets/dureetaux.h"
#include "assets/immobilisations.h"
#include "ui/choixmonnaie.h"
#include "ui/czndialog.h"
#include "ui/editeurpas.h"

namespace fenlor {

class CDialogAcquisition : public CZNDialog {
  Q_OBJECT
 public:
  /// Adds an asset, or modifies what was read of one.
  CDialogAcquisition(ContexteUi& contexte, FicheImmobilisation fiche, QWidget* parent = nullptr);
  ~CDialogAcquisition() override;

  /// Where the asset stands once it was saved.
  Position Derniere() const { return m_fiche.position; }

 protected:
  bool Enregistre() override;
  void Pointe(const Refus& refus) override;

 private:
  void Declare();
  void DeclareValeur(Formulaire& formulaire);
  void DeclareAmortissement(Formulaire& formulaire);
  void PoseBoutons();
  void Montre();
  void MontreAmortissement();
  void MontreMontants();
  void ChangeMontants();
  void ChangeDate();
  void ChangeType();
  /// Shows an entry again after it was left.
  void QuitteEntree(EditeurPas& entree, f64 valeur);
  /// What is typed; amounts and rates that show the same stay as they are in the file.
  FicheImmobilisation Saisie();
  /// "&Cession", "&Rebut": the asset as it is typed goes through the form, and is then saved by OK.
  template <class Forme>
  void Finit(Refus (*controle)(const Immobilisation&));

  FicheImmobilisation m_fiche;
  DureeEtTaux m_amortissement;
  EditeurTexte m_designation;
  EditeurDate m_date;
  EditeurMontant m_prix, m_valeur;
  EditeurMontant* m_tauxTva;  ///< of the list below
  QComboBox m_tauxTvas;
  Lecture m_tva, m_horsTaxe;
  QRadioButton m_parDuree, m_parTaux, m_lineaire, m_degressif, m_exceptionnel;
  EditeurPas m_duree, m_taux;
  QComboBox m_durees, m_lesTaux;  ///< rows of the degressive table
  ChoixMonnaie m_monnaie;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
