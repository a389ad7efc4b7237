// `CDialogAutoPrevisions`: what the models bring and cost month by month.
#pragma once

#include "auto/previsions.h"
#include "ui/czndialog.h"

namespace fenlor {

class CZNListCtrl;

class CDialogAutoPrevisions : public CZNDialog {
  Q_OBJECT
 public:
  /// Ends with an `Issue` when the same figures are wanted as a report.
  explicit CDialogAutoPrevisions(ContexteUi& contexte, QWidget* parent = nullptr);
  ~CDialogAutoPrevisions() override;
  /// Ends at once when there are no figures, which has been told.
  int exec() override;

 protected:
  /// The keys are those of the list.
  void showEvent(QShowEvent* evenement) override;

 private:
  void DeclareListe();

  Previsions m_previsions;
  std::vector<std::size_t> m_rangs;  ///< rows of the list
  bool m_lu = false;
  CZNListCtrl* m_liste;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
