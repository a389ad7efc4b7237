// `CDialogLineTresor`: one treasury line of an entry paid through several accounts.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "forms/journal/champsecriture.h"
#include "journal/ecriturelue.h"
#include "journal/suspens.h"
#include "ui/czndialog.h"

namespace fenlor {

/// The list that the form works on; its owner shows it.
struct LignesTresor {
  std::vector<LigneTresorLue> lignes;
  int choisie = -1;  ///< row being changed

  /// Sum of the lines, rounded to the cent.
  f64 Total() const;
};

/// An added line proposes what the entry's amount leaves to the others, the amount having the focus, so
/// that a run of lines needs no more than Enter.
class CDialogLineTresor : public CZNDialog {
  Q_OBJECT
 public:
  struct Ouverture {
    Date date = 0;
    std::string tresorerie;  ///< proposed account, long form
    f64 ttc = 0;             ///< of the entry, in its currency
    bool euro = true;
    bool modification = false;
    bool lecture = false;                        ///< entry validated or linked
    std::function<void()> change;                ///< after each save
    std::optional<LigneSuspendue> reprise = {};  ///< typed before the program ended
  };
  /// `lignes` outlives the form.
  CDialogLineTresor(ContexteUi& contexte, LignesTresor& lignes, const Ouverture& ouverture,
                    QWidget* parent = nullptr);

  bool Change() const { return m_change; }  ///< a line was added or changed
  /// What would be lost with the program.
  std::optional<LigneSuspendue> Suspendue() const;
  void accept() override;

 protected:
  void showEvent(QShowEvent* evenement) override;
  bool Enregistre() override;
  void Vide() override;

 private:
  void Declare();
  void Propose();
  void Montre(const LigneTresorLue& ligne);
  LignesTresor& m_lignes;
  const Ouverture m_ouverture;
  bool m_change = false;
  bool m_vue = false;    ///< shown once
  bool m_videe = false;  ///< the last `accept` saved and cleared the form
  ChampsTresorerieEcriture m_tresorerie;
  EditeurMontant m_montant;
  CochesMarques m_marques;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
