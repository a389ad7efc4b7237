// `CDialogAutoList`: the models of the open exercice.
#pragma once

#include <functional>
#include <vector>

#include "store/enregistrements.h"
#include "ui/czndialog.h"
#include "ui/suitefiches.h"

namespace fenlor {

class ListeEditee;

class CDialogAutoList : public CZNDialog, public SuiteFiches {
  Q_OBJECT
 public:
  /// `edition` makes the report of the forecast; it is told the `Issue` of its form.
  using Edition = std::function<void(const QString& issue)>;
  CDialogAutoList(ContexteUi& contexte, Edition edition, QWidget* parent = nullptr);
  ~CDialogAutoList() override;
  /// It was closed to show the pages of the forecast.
  bool ApercuVoulu() const { return m_apercu; }

  Position Voisin(int pas) const override;
  void VaVers(int pas) override;
  void Remplace(Position position) override;

 protected:
  /// The keys are those of the list.
  void showEvent(QShowEvent* evenement) override;

 private:
  void DeclareListe();
  /// Reads the models anew and selects one by its number; 0: none.
  void Charge(Position choisie);
  void Ajoute();
  void Modifie();
  void Supprime();
  void Saisit(Position position);
  void Prevoit();

  const Edition m_edition;
  std::vector<EcrituresAuto> m_modeles;
  ListeEditee* m_liste = nullptr;
  bool m_apercu = false;
  FinDesLiens m_finLiens{*this};
};

/// The command: the list, and the walk of today when it is closed. The preview of the forecast, a window of
/// the program, closes the list and comes last.
void CommandeAutomatiques(ContexteUi& contexte, const CDialogAutoList::Edition& edition);

}  // namespace fenlor
