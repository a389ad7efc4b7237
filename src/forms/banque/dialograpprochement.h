// `CDialogRapprochement`: above the operations of a bank account, below the lines of the books that they may
// be, and what the bank and the books say the account holds.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "banque/rapprochement.h"
#include "forms/banque/choixbanque.h"
#include "forms/journal/lecturecoupee.h"
#include "ui/czndialog.h"
#include "ui/tableliste.h"

namespace fenlor {

/// Keys of the lists: Enter above changes an operation, below it matches what is selected; Ins writes the
/// entry of the operation, Del deletes it; F6 goes from list to list, F8 asks at each automatic match or does
/// not, Alt+Up and Alt+Down choose an operation from below.
class CDialogRapprochement : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogRapprochement(ContexteUi& contexte, QWidget* parent = nullptr);
  ~CDialogRapprochement() override;
  /// 3056 on a closed exercice, told.
  static bool PeutOuvrir(ContexteUi& contexte);

 public Q_SLOTS:
  void accept() override;
  void done(int resultat) override;

 protected:
  bool Enregistre() override;
  void Vide() override;
  bool Modifie() const override;
  void Pointe(const Refus& refus) override;
  void keyPressEvent(QKeyEvent* evenement) override;

 private:
  /// A line as the lower list shows it.
  struct LigneVue {
    Line rec{};
    std::string comptes;
  };

  void Declare();
  void DeclareOperations(Formulaire& formulaire);
  void DeclareLignes(Formulaire& formulaire);
  QWidget* DeclareSoldes();
  void DeclareListes();
  void DeclareTouches();
  QPushButton& Bouton(QPushButton& bouton, const char* nom, void (CDialogRapprochement::*action)());

  bool Euro() const { return m_euro.isChecked(); }
  std::string Compte() const { return m_compte.Valeur(); }
  PeriodeRapprochement Periode() const { return {Compte(), m_du.Valeur(), m_au.Valeur()}; }
  std::string Montant(f64 montant) const;

  void ChangeCompte();
  void ChangePeriode();
  void ChangeMonnaie();
  void QuitteMontant(EditeurMontant& quitte, EditeurMontant& autre);

  /// Both lists and the balances anew; selections stay as far as they can.
  void Recharge();
  void ChargeOperations(Position choisie = 0);
  void ChargeLignes();
  void MontreSoldes();
  void SuitSolde();
  void NoteSolde();
  void SuitOperation();
  void SuitLignes();
  Position OperationChoisie() const { return static_cast<Position>(m_listeOperations.DonneeChoisie()); }
  /// The operation chosen; 3078, told, when there is none.
  bool OperationVoulue(OperationLue& operation);
  bool AbandonneSaisie();

  void ModifieOperation();
  void SupprimeOperationChoisie();
  void ImporteReleve();
  void CreeEcriture();
  void Manuel();
  void Automatique();

  CBanques m_banques;  ///< held open with the books, for the rows that are painted
  CLines m_journal;
  CPlan m_plan;
  std::vector<LigneARapprocher> m_lignes;
  std::string m_compteCharge;
  Position m_enModification = 0;  ///< stands in the fields and not in its list
  Position m_derniere = 0;        ///< operation last saved
  std::optional<SoldeReleve> m_solde;
  bool m_choisit = false;

  ChoixBanque m_compte;
  QRadioButton m_franc, m_euro;
  CZNListCtrl m_listeOperations, m_listeLignes;
  EditeurDate m_date, m_dateValeur, m_du, m_au;
  EditeurMontant m_debit, m_credit, m_soldeReleve;
  EditeurTexte m_nature;
  QPushButton m_modifier, m_supprimer, m_creer, m_importer, m_manuel, m_automatique;
  LectureCoupee m_libelle, m_natureChoisie;
  Lecture m_cumul, m_soldeLivres, m_difference;
  QCheckBox m_confirmation;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
