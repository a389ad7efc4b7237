// `CEcrList`: the list of a journal window.
#pragma once

#include <functional>
#include <unordered_map>
#include <vector>

#include "journal/listejournal.h"
#include "ui/tableliste.h"

namespace fenlor {

/// The columns, as rows of the table in ecrlist.cpp.
enum class ChampJournal {
  Ligne,
  Date,
  Libelle,
  Tresorerie,
  MontantFranc,
  MontantEuro,
  DebitFranc,
  CreditFranc,
  DebitEuro,
  CreditEuro,
  SoldeFranc,
  SoldeEuro,
  Pointee,
  Remise,
  Rapprochee,
  Validee,
  Rubrique,
  Compte,
  Designation,
};
QString TitreChamp(ChampJournal champ);

/// One row an entry (its data: the entry's number), of one line of text or, in "Journal comptable", of one
/// for each line, in the colours and fonts of the preferences. Several can be selected; letters do nothing.
class CEcrList : public TableListe {
  Q_OBJECT
 public:
  explicit CEcrList(ContexteUi& contexte, QWidget* parent = nullptr);

  /// Reads an entry; false when it cannot be read, which gives an empty row.
  using Lecture = std::function<bool(u32 mouvement, EntreeJournal&)>;
  void PoseLecture(Lecture lecture) { m_lecture = std::move(lecture); }
  u32 Mouvement(int ligne) const { return static_cast<u32>(Modele().DonneeDe(ligne)); }  ///< 0 for no row
  bool Comptable() const { return m_comptable; }

  void ActualisePreferences() override;
  /// Refills, in the columns of these currencies, wide enough for these totals. Without a selection the
  /// last row is selected. `soldes`: the entries bring the balance of an account, which stands behind each.
  void Recharge(const std::vector<EntreeListe>& entrees, const MonnaiesListe& monnaies, bool comptable,
                const TotauxListe& totaux = {}, bool soldes = false);
  /// What all columns need, the vertical scroll bar and the frame included. In a wider list the texts have
  /// the rest.
  int LargeurColonnes() const;
  bool ALaColonne(ChampJournal champ) const;
  /// Left and right edge of a column in the list's coordinates, empty without that column.
  QRect PlaceColonne(ChampJournal champ) const;

  /// Double click beside all rows.
  void SurActivationAilleurs(std::function<void()> action) { m_ailleurs = std::move(action); }

  QSize sizeHint() const override;
  void keyboardSearch(const QString&) override {}

 Q_SIGNALS:
  /// Columns moved: layout, sideways scrolling, resizing.
  void ColonnesDeplacees();

 protected:
  Allure AllureDe(int ligne) const override;
  /// The label and the account's name share the width that is free as they share what they need.
  void Ajuste() override;
  void mouseDoubleClickEvent(QMouseEvent* evenement) override;
  void wheelEvent(QWheelEvent* evenement) override;
  void resizeEvent(QResizeEvent* evenement) override;
  void scrollContentsBy(int dx, int dy) override;
  void updateGeometries() override;

 private:
  void PoseChamps(const MonnaiesListe& monnaies, bool comptable, const TotauxListe& totaux, bool soldes);
  void DescendDUneLigne(int sens);

  Lecture m_lecture;
  std::function<void()> m_ailleurs;
  std::vector<ChampJournal> m_champs;
  std::vector<int> m_largeurs;                    ///< that the columns need
  std::unordered_map<u32, EntreeListe> m_soldes;  ///< by entry
  bool m_comptable = false;
  int m_crans = 0;  ///< of the wheel, in eighths of a degree, not yet used
};

}  // namespace fenlor
