// `CDialogLine`: one line of an opération diverse.
#pragma once

#include "forms/journal/champsecriture.h"
#include "journal/odlue.h"
#include "journal/suspens.h"
#include "ui/czndialog.h"

namespace fenlor {

/// The list that the form works on; its owner shows it.
struct LignesOD {
  std::vector<LigneODLue> lignes;
  int choisie = -1;  ///< row being changed

  /// Credits less debits.
  f64 Solde() const { return SoldeOD(LignesSaisies(lignes)); }
};

/// Adding, it stays open for a run of lines, and shows the balance of the list meanwhile;
/// "&Solder" takes the line that balances it, and ends the run.
class CDialogLine : public CZNDialog {
  Q_OBJECT
 public:
  struct Ouverture {
    Date date = 0;
    bool euro = true;
    bool modification = false;
    bool lecture = false;
    std::string libelle;                         ///< proposed: that of the entry
    std::function<void()> change;                ///< after each save
    std::optional<LigneSuspendue> reprise = {};  ///< typed before the program ended
  };
  /// `lignes` outlives the form.
  CDialogLine(ContexteUi& contexte, LignesOD& lignes, const Ouverture& ouverture, QWidget* parent = nullptr);
  bool Change() const { return m_change; }
  /// What would be lost with the program.
  std::optional<LigneSuspendue> Suspendue() const;

 protected:
  void showEvent(QShowEvent* evenement) override;
  bool Enregistre() override;
  void Vide() override;
  void Voisin(int pas) override;

 private:
  void Declare();
  void Reprend(const LigneSuspendue& reprise);
  bool Nouveau();
  void Montre();
  void MontreCompte();
  void ChoisitCompte();
  void Solde();
  void Actualise();
  f64 SoldeAutres() const;

  LignesOD& m_lignes;
  const Ouverture m_ouverture;
  const bool m_lecture;
  bool m_change = false, m_vue = false;
  f64 m_propre = 0;  ///< credit less debit of the changed line, as it is in the list
  ChampsCompteEcriture m_compte;
  ChampLibelle m_libelle;
  ChoixPaiement m_paiement;
  EditeurMontant m_debit, m_credit;
  QPushButton m_solder;
  Lecture m_solde;
  CochesMarques m_marques;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
