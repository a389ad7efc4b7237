// `CDialogFraisKm`: the car's allowance for the year.
#pragma once

#include <QRadioButton>
#include <array>

#include "master/fraiskm.h"
#include "ui/czndialog.h"
#include "ui/editeurpas.h"

namespace fenlor {

class CDialogFraisKm : public CZNDialog {
  Q_OBJECT
 public:
  explicit CDialogFraisKm(ContexteUi& contexte, QWidget* parent = nullptr);
  ~CDialogFraisKm() override;
  void accept() override;

 protected:
  /// The form stays: what was recorded can be seen, changed, deleted.
  bool Enregistre() override;

 private:
  void DeclareDistance(Formulaire& formulaire);
  void DeclareBareme(Formulaire& formulaire);
  FicheFraisKm Lit();
  void Montre(const FicheFraisKm& fiche);
  void ChangeMode();
  void ChangeReleves();
  void MontreLibelles();
  void MontreMontant();
  void Supprime();

  QRadioButton m_compteur, m_distance;
  EditeurPas m_ancien, m_dernier, m_kms, m_inf, m_sup;
  EditeurMontant m_fixe;
  std::array<EditeurPas, 3> m_taux;
  const std::array<std::pair<EditeurMontant*, std::string FicheFraisKm::*>, 6> m_textes{
      {{&m_ancien, &FicheFraisKm::ancien},
       {&m_dernier, &FicheFraisKm::dernier},
       {&m_kms, &FicheFraisKm::kms},
       {&m_inf, &FicheFraisKm::borneInf},
       {&m_sup, &FicheFraisKm::borneSup},
       {&m_fixe, &FicheFraisKm::fixe}}};
  std::array<QLabel, 3> m_libelles;
  Lecture m_montant;
  QPushButton* m_supprimer = nullptr;
  bool m_enregistre = false;
  bool m_sauve = false;  ///< by the last "&Enregistrer"
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
