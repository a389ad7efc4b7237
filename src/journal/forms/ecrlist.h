// `CEcrList`: the list of a journal window.
#pragma once

#include <QTreeView>
#include <functional>
#include <vector>

#include "journal/forms/modeleecritures.h"
#include "ui/fenetres.h"

namespace fenlor {

/// One row an entry, of one line of text or, in "Journal comptable", of one for each line. Rows are
/// drawn by the program in the colours and fonts of the preferences; several can be selected. Enter or
/// a double click activates, letters do nothing.
class CEcrList : public QTreeView {
  Q_OBJECT
 public:
  explicit CEcrList(ContexteUi& contexte, QWidget* parent = nullptr);

  ModeleEcritures& Modele() { return *m_modele; }
  const ModeleEcritures& Modele() const { return *m_modele; }

  /// Takes colours and fonts of the preferences again; the next `Recharge` measures the columns by them.
  void ActualisePreferences();
  /// Refills, in the columns of these currencies, wide enough for these totals. The selected entries stay
  /// so as far as they are listed, else the index, else the last row is selected; the first visible row
  /// stays.
  void Recharge(std::vector<EntreeListe> entrees, const MonnaiesListe& monnaies, bool comptable,
                const TotauxListe& totaux = {});
  /// The entries changed, the rows are the same.
  void Redessine();
  /// What all columns need, the vertical scroll bar and the frame included. In a wider list the texts have
  /// the rest.
  int LargeurColonnes() const;
  bool ALaColonne(ChampJournal champ) const;
  /// Left and right edge of a column in the list's coordinates, empty without that column.
  QRect PlaceColonne(ChampJournal champ) const;

  /// Selected rows from first to last.
  std::vector<int> LignesChoisies() const;
  int PremiereChoisie() const;  ///< -1 when none is
  int NbChoisies() const;
  /// Selects one row alone and brings it into view.
  void SelectionneLigne(int ligne);
  int Haut() const;  ///< first visible row, -1 when there is none
  void PoseHaut(int ligne);

  /// Double click on a row or beside all, Enter on a row.
  void SurActivation(std::function<void(bool surLigne)> action) { m_activation = std::move(action); }
  /// Shown while there is no row.
  void PoseTexteVide(const QString& texte);
  const QString& TexteVide() const { return m_texteVide; }

  QSize sizeHint() const override;
  void keyboardSearch(const QString&) override {}

 Q_SIGNALS:
  void SelectionChangee(const std::vector<int>& ajoutees, const std::vector<int>& retirees);
  /// Columns moved: layout, sideways scrolling, resizing.
  void ColonnesDeplacees();

 protected:
  void drawRow(QPainter* peintre, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  void paintEvent(QPaintEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;
  void mouseDoubleClickEvent(QMouseEvent* evenement) override;
  void wheelEvent(QWheelEvent* evenement) override;
  void resizeEvent(QResizeEvent* evenement) override;
  bool viewportEvent(QEvent* evenement) override;
  void scrollContentsBy(int dx, int dy) override;
  void selectionChanged(const QItemSelection& choisies, const QItemSelection& quittees) override;
  void updateGeometries() override;

 private:
  void PoseColonnes(const MonnaiesListe& monnaies, bool comptable, const TotauxListe& totaux);
  void Etire();
  void Choisit(const std::vector<u32>& mouvements, int sinon);
  int HauteurTexte() const { return m_hauteurTexte; }
  const QFont& PoliceDe(const EntreeJournal& entree) const;
  void DessineCellule(QPainter& peintre, const QRect& cellule, const EntreeJournal& entree,
                      std::size_t rangee, ChampJournal champ) const;
  void DescendDUneLigne(int sens);

  ContexteUi& m_contexte;
  ModeleEcritures* m_modele;
  std::function<void(bool)> m_activation;
  QString m_texteVide;
  std::vector<int> m_largeurs;  ///< that the columns need
  int m_hauteurTexte = 1;
  int m_crans = 0;  ///< of the wheel, in eighths of a degree, not yet used
};

}  // namespace fenlor
