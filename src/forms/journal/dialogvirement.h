// `CDialogVirement`: money moved from one treasury account to another.
#pragma once

#include "forms/journal/champsecriture.h"
#include "journal/virement.h"
#include "ui/czndialog.h"

namespace fenlor {

class CDialogVirement : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogVirement(ContexteUi& contexte, QWidget* parent = nullptr);
  ~CDialogVirement() override;
  /// What must hold before it opens; told when it does not.
  static bool PeutOuvrir(ContexteUi& contexte);

 public Q_SLOTS:
  void accept() override;
  /// An amount that was typed is asked for; the answer yes saves it first.

 protected:
  bool Enregistre() override;
  void Pointe(const Refus& refus) override;
  void Vide() override;
  const TexteFixe& QuestionFermer() const override;

 private:
  void Declare();
  void AligneMontant();
  void MontreTransit();

  EditeurDate m_date;
  ChoixTresorerie m_de, m_vers;
  Lecture m_transitDe, m_transitVers;
  ChampLibelle m_libelle;
  ChoixPaiement m_paiement;
  EditeurMontant m_montant;
  ChoixMonnaie m_monnaie;
  i16 m_mode = PaiementCheque;  ///< of the receipt last written: proposed for the next bank account
  bool m_enregistre = false;    ///< the form was cleared since the button was pressed
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
