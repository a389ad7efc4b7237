// `CImmoList`: the list of the register of assets.
#pragma once

#include <functional>

#include "assets/ligneregistre.h"
#include "ui/findesliens.h"
#include "ui/tableliste.h"

class QScrollBar;

namespace fenlor {

class EnteteRegistre;

/// One row an asset (its data: the record's position), of one line of text or, with both currencies, of two,
/// in the colours and the font of the journals. Six columns show years, which scroll by themselves: with the
/// bar above them, by one with Ctrl+Left and Ctrl+Right, by five with Alt. Letters look for a name.
class CImmoList : public TableListe {
  Q_OBJECT
 public:
  explicit CImmoList(ContexteUi& contexte);

  /// Reads a record; false when it cannot be read, which gives an empty row.
  using Lecture = std::function<bool(Position, Immobilisation&)>;
  void PoseLecture(Lecture lecture) { m_lecture = std::move(lecture); }
  /// New rows. The years stay, as far as there are assets.
  void Remplit(const ListeRegistre& liste);
  u32 AnneeDroite() const;  ///< year of the rightmost of the six columns
  /// By so many years, to older ones when negative; held within the years of the assets and today.
  void DefileAnnees(int annees);
  /// Double click beside all rows.
  void SurActivationAilleurs(std::function<void()> action) { m_ailleurs = std::move(action); }

  void ActualisePreferences() override;
  /// All rows, whatever is selected, in the exercice's currency.
  void Copie() const override;
  void keyboardSearch(const QString& texte) override;

 protected:
  Allure AllureDe(int ligne) const override;
  /// The name has what the other columns leave.
  void Ajuste() override;
  void keyPressEvent(QKeyEvent* evenement) override;
  void mouseDoubleClickEvent(QMouseEvent* evenement) override;
  void wheelEvent(QWheelEvent* evenement) override;
  void resizeEvent(QResizeEvent* evenement) override;

 private:
  VueLigne Rangees(Position position) const;
  void MontreAnnees();
  void PlaceBarre();

  Lecture m_lecture;
  std::function<void()> m_ailleurs;
  EnteteRegistre* m_entete;
  QScrollBar* m_annees;  ///< 0 at the current year, below it the years before
  u32 m_anneeCourante;
  MonnaiesRegistre m_monnaies;
  std::vector<int> m_largeurs;  ///< that the columns need
  int m_crans = 0;              ///< of the wheel, in eighths of a degree, not yet used
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
