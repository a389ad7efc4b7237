// `CDialogRemise`: which cheques go to the bank, and which of them on the paper.
#pragma once

#include <QRadioButton>
#include <array>

#include "banque/remise.h"
#include "forms/banque/choixbanque.h"
#include "ui/czndialog.h"

namespace fenlor {

class CChequeList;

/// Nothing is marked by the form: its ticks are in the working file when it ends with OK, for the report.
class CDialogRemise : public CZNDialog {
  Q_OBJECT
 public:
  /// `criteres` outlives the form: what it proposes, and with OK its account, dates and choices. `fichier` is
  /// the path of the working file.
  CDialogRemise(ContexteUi& contexte, const std::string& fichier, CriteresRemise& criteres,
                QWidget* parent = nullptr);
  ~CDialogRemise() override;

 protected:
  bool Enregistre() override;

 private:
  void DeclareBanque(Formulaire& formulaire);
  void DeclareCriteres(Formulaire& formulaire);
  void DeclareListe(Formulaire& formulaire);
  void MontreBanque();
  CriteresRemise Lus() const;
  /// The list anew, unless nothing that it depends on was changed.
  void Remplit();
  void Montre(int choisie);
  void ModifieEcriture();
  /// After a tick: what the rule says is told, the row and the total are shown.
  void ApresCoche(const Refus& refus);

  CriteresRemise& m_criteres;
  CriteresRemise m_montres;  ///< that the list was filled for
  ListeRemise m_liste;
  ChoixBanque m_compte;
  Lecture m_adresse, m_numero, m_total;
  EditeurDate m_date, m_du, m_au;
  std::array<QRadioButton, 3> m_monnaies;
  EditeurChoix m_etat;
  CChequeList* m_table;
  QPushButton* m_modifier = nullptr;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
