// The table behind `CZNListView` and `CZNListCtrl`: full rows, single selection,
// rows drawn by the program so that a long text ends in "...".
#pragma once

#include <QTreeView>
#include <functional>
#include <string>
#include <vector>

#include "core/texte.h"
#include "ui/fenetres.h"
#include "ui/modeleliste.h"

namespace fenlor {

/// Enter or a double click activates the selected row, Ctrl+C copies it, letters look for
/// it in the first column.
class TableListe : public QTreeView {
  Q_OBJECT
 public:
  explicit TableListe(ContexteUi& contexte, QWidget* parent = nullptr);

  ModeleListe& Modele() { return *m_modele; }
  const ModeleListe& Modele() const { return *m_modele; }

  /// Parses a description (Windows-1252) and makes the columns. Widths are pixels
  /// with the desktop's font, and grow with a larger list font; a title is never cut.
  virtual void SetColonnes(const std::string& texte);
  void SetColonnesId(const TexteFixe& colonnes);
  /// Widths of the columns now, in pixels.
  std::vector<int> Largeurs() const;
  /// False, and nothing changes, unless there is a width above 0 for each column.
  bool PoseLargeurs(const std::vector<int>& largeurs);
  /// The user gave a column another width.
  bool LargeursChangees() const { return m_largeursChangees; }

  /// With an index: sets or clears selection and focus of that row and scrolls it into
  /// view; with a negative one: applies the state to every selected row.
  void SelectionneLigne(int ligne, bool etat = true);
  void LignePrecedente();
  void LigneSuivante();
  int LigneChoisie() const;  ///< -1 when none
  /// Data of the selected row; 0 when none is.
  ModeleListe::Donnee DonneeChoisie() const;
  /// Fields of the selected row joined by tabs, Windows-1252; empty when none is.
  std::string TexteLigne() const;
  void Copie();  ///< the same on the clipboard, which stays as it is when no row is selected
  /// Refills the rows through `remplit`; selection and first visible row are found again by
  /// their data, else by their place.
  void Recharge(const std::function<void()>& remplit);

  /// How a click on a title sorts; without it rows keep their order.
  void PoseComparaison(ModeleListe::Comparaison compare);
  int ColonneTriee() const { return m_colonneTriee; }  ///< -1 before the first click
  /// Enter or double click on a row.
  void SurActivation(std::function<void()> action) { m_activation = std::move(action); }
  /// Text shown in the middle while there is no row.
  void PoseTexteVide(const QString& texte);
  void TrieParColonne(int colonne);
  /// Takes the list font of the preferences again.
  void ActualisePreferences();

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  void keyboardSearch(const QString& texte) override;

 Q_SIGNALS:
  void SelectionChangee();

 protected:
  void drawRow(QPainter* peintre, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  int sizeHintForColumn(int colonne) const override;
  bool viewportEvent(QEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;
  void paintEvent(QPaintEvent* evenement) override;
  /// Gives the columns the widths of the description, unless there are others since.
  virtual void Ajuste();
  /// Sets widths that are not the user's doing.
  void PlaceColonnes(const std::vector<int>& largeurs);
  ContexteUi& m_contexte;

 private:
  QSize TailleLignes(int lignes, int caracteres) const;
  void DessineCellule(QPainter& peintre, QRect cellule, const QModelIndex& index) const;
  ModeleListe* m_modele;
  ModeleListe::Comparaison m_compare;
  std::function<void()> m_activation;
  QString m_texteVide;
  int m_colonneTriee = -1;
  bool m_place = false;            ///< widths are changing, not by the user
  bool m_largeursPropres = false;  ///< widths are no more those of the description
  bool m_largeursChangees = false;
};

/// The same table inside a form: widths are percentages of the client width.
class CZNListCtrl : public TableListe {
  Q_OBJECT
 public:
  explicit CZNListCtrl(ContexteUi& contexte, QWidget* parent = nullptr);
  void SetColonnes(const std::string& texte) override;
  /// Recomputes the widths from a description's percentages.
  void AjusteColonnes(const std::string& texte);

 protected:
  void resizeEvent(QResizeEvent* evenement) override;
  void Ajuste() override;

 private:
  std::vector<Colonne> m_pourcents;
};

}  // namespace fenlor
