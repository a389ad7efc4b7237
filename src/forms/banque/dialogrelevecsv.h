// `CDialogReleveCsv`: how a bank writes its tables.
#pragma once

#include <QCheckBox>
#include <array>

#include "banque/relevecsv.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"

namespace fenlor {

class CZNListCtrl;

/// Writes nothing: with OK `forme`, which is what the form proposes, holds the answer. Bytes and `forme`
/// outlive it.
class CDialogReleveCsv : public CZNDialog {
  Q_OBJECT
 public:
  CDialogReleveCsv(ContexteUi& contexte, const std::string& octets, FormeCsv& forme,
                   QWidget* parent = nullptr);

 protected:
  /// Refused while no column holds the date or none an amount.
  bool Enregistre() override;

 private:
  void DeclareFichier(Formulaire& formulaire);
  void DeclareColonnes(Formulaire& formulaire);
  void Pose(const FormeCsv& forme);
  FormeCsv Lue() const;
  /// Other characters or another separator: other columns, which are proposed anew.
  void Redecoupe();
  void RemplitColonnes();
  /// What would be read with what the fields say.
  void Montre();

  const std::string& m_octets;
  FormeCsv& m_forme;
  std::vector<LigneCsv> m_lignes;  ///< the first ones
  EditeurChoix m_jeu, m_separateur, m_decimale, m_ordre;
  EditeurTexte m_entete;
  QCheckBox m_inverse;
  std::array<EditeurChoix, NbColonnesReleve> m_colonnes;
  Lecture m_resultat;
  CZNListCtrl* m_table;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
