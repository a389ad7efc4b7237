// The group "Montants" of the forms that choose entries.
#pragma once

#include <QCheckBox>
#include <QRadioButton>

#include "ui/editeurs.h"
#include "ui/formulaire.h"

namespace fenlor {

/// All amounts, or those between two, in one of the currencies. Names of the fields: "tousMontants",
/// "montantMin", "montantMax", "franc", "euro".
class BornesMontants {
 public:
  explicit BornesMontants(const Parametres& reglages) : m_min(reglages), m_max(reglages) {}
  /// `tous`: text of the box that closes the bounds.
  void Declare(Formulaire& formulaire, const QString& tous);
  void Pose(bool tous, bool euro);
  void PoseBornes(f64 min, f64 max);
  bool Tous() const { return m_tous.isChecked(); }
  f64 Min() const { return m_min.Valeur(); }
  f64 Max() const { return m_max.Valeur(); }
  bool Euro() const { return m_euro.isChecked(); }

 private:
  void Permet();
  QCheckBox m_tous;
  EditeurMontant m_min, m_max;
  QRadioButton m_franc, m_euro;
};

}  // namespace fenlor
