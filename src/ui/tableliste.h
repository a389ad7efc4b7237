// The painted base of all lists and journals: full rows of one or more lines of text, drawn by the
// program so that a long text ends in "...".
#pragma once

#include <QTreeView>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ui/fenetres.h"
#include "ui/modeleliste.h"

class QMenu;

namespace fenlor {

class LigneFiltre;

/// Enter or a double click activates the selected row, Ctrl+C copies what is selected and Ctrl+Shift+C all,
/// letters look for a row in the first column, "/" and Ctrl+Shift+F open the quick filter, Escape closes it.
class TableListe : public QTreeView {
  Q_OBJECT
 public:
  using Donnee = ModeleListe::Donnee;
  explicit TableListe(ContexteUi& contexte, QWidget* parent = nullptr);

  ModeleListe& Modele() { return *m_modele; }
  const ModeleListe& Modele() const { return *m_modele; }

  /// A table of columns, and how the record of a row is read. Widths are pixels with the desktop's font,
  /// and grow with a larger list font; a title is never cut.
  template <class Fiche>
  void Definit(TableColonnes<Fiche> colonnes, std::function<bool(Donnee, Fiche&)> lit) {
    m_modele->Definit(std::move(colonnes), std::move(lit));
    ColonnesPosees();
  }
  /// Rows are records of the caller's own, in their order; `Relit` when they changed. A row is no index of
  /// them, for a filter hides rows: `RangDe` is.
  template <class Fiche>
  void Suit(TableColonnes<Fiche> colonnes, const std::vector<Fiche>& fiches) {
    m_nombre = [&fiches] { return fiches.size(); };
    Definit<Fiche>(std::move(colonnes), [&fiches](Donnee rang, Fiche& fiche) {
      if (rang >= fiches.size()) return false;
      fiche = fiches[static_cast<std::size_t>(rang)];
      return true;
    });
  }
  /// Selects one of the records that `Suit` gave; the next one that shows, else the last; none below 0.
  void Relit(int choisie);
  /// Place of a row's record among all that the list has, the hidden ones included; -1 for no row.
  int RangDe(int ligne) const;
  int RangChoisi() const { return RangDe(LigneChoisie()); }
  std::vector<int> RangsChoisis() const;
  /// Selects that record's row where it shows.
  void SelectionneRang(int rang);

  /// Widths of the columns now, in pixels.
  std::vector<int> Largeurs() const;
  /// False, and nothing changes, unless there is a width above 0 for each column.
  bool PoseLargeurs(const std::vector<int>& largeurs);
  /// The user gave a column another width.
  bool LargeursChangees() const { return m_largeursChangees; }

  /// The user may move the columns by their titles, show or hide them with `MenuColonnes`, and do both by
  /// keyboard in a form (`CDialogColonnes`).
  void PermetColonnes();
  struct ColonneRangee {
    int rang;  ///< in the table
    QString titre;
    bool montree;
  };
  /// The columns from left to right.
  std::vector<ColonneRangee> Colonnes() const;
  /// Arranges them so, as the user wants it. Each of them is there once, and one of them shows.
  void RangeColonnes(const std::vector<ColonneRangee>& colonnes);
  /// Columns and widths as in the table.
  void RangeCommeALOrigine();
  /// A menu of the columns, which goes by itself; null unless they may be shown and hidden.
  QMenu* MenuColonnes();
  /// How the user arranged the columns: titles in their order, "-" before a hidden one, "=" and a width
  /// behind one that was given another; empty: as in the table. Titles that are not there now are kept for
  /// later.
  std::string Rangement() const;
  /// Arranges them so, now and whenever the columns change.
  void PoseRangement(const std::string& rangement);

  /// With an index: sets or clears selection and focus of that row and scrolls it into
  /// view; with a negative one: applies the state to every selected row.
  void SelectionneLigne(int ligne, bool etat = true);
  void LignePrecedente();
  void LigneSuivante();
  int LigneChoisie() const;                 ///< the first one, -1 when none is
  std::vector<int> LignesChoisies() const;  ///< from first to last
  int NbChoisies() const;
  /// Data of the first selected row; 0 when none is.
  Donnee DonneeChoisie() const { return m_modele->DonneeDe(LigneChoisie()); }
  int Haut() const { return indexAt(QPoint(0, 0)).row(); }  ///< first visible row, -1 when there is none
  void PoseHaut(int ligne);
  /// Puts the titles and the selected rows on the clipboard, a line for each line of text, cells separated
  /// by tabs. Without any it stays as it is.
  virtual void Copie() const;
  /// The same of all rows that show.
  virtual void CopieTout() const;

  /// The quick filter: opens its line above the list.
  void OuvreFiltre();
  /// Rows that hold all these words show; what was selected stays so where it shows.
  void PoseFiltre(const QString& mots);
  void OteFiltre();  ///< closes the line, too
  /// Refills the rows through `remplit`. Selected rows and the first visible one are found again by their
  /// data, else by their place.
  void Recharge(const std::function<void()>& remplit);
  /// The records changed, the rows are the same.
  void Redessine();

  /// A click on a title sorts.
  void PoseTriable(bool triable) { m_triable = triable; }
  int ColonneTriee() const { return m_colonneTriee; }  ///< -1 before the first click
  void TrieParColonne(int colonne);
  /// Enter or double click on a row.
  void SurActivation(std::function<void()> action) { m_activation = std::move(action); }
  /// What the tool tip of a row tells, below the text of a cell that is cut.
  void PoseBulle(std::function<QString(int ligne)> bulle) { m_bulle = std::move(bulle); }
  /// Text shown in the middle while there is no row.
  void PoseTexteVide(const QString& texte);
  const QString& TexteVide() const { return m_texteVide; }
  /// Takes colours and fonts of the preferences again.
  virtual void ActualisePreferences();

  int Marge(int colonne) const;  ///< pixels beside texts and titles
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  void keyboardSearch(const QString& texte) override;

 Q_SIGNALS:
  /// The user arranged the columns.
  void ColonnesRangees();
  void SelectionChangee(const std::vector<int>& ajoutees, const std::vector<int>& retirees);

 protected:
  /// How a row is painted unless it is selected; an invalid colour: none.
  struct Allure {
    QColor texte, fond, traits;
    QFont police;
  };
  virtual Allure AllureDe(int ligne) const;
  /// Gives the columns the widths of their table, unless there are others since.
  virtual void Ajuste();
  /// The user drew it to another width, in a list that keeps them with the arrangement.
  bool EstTiree(int colonne) const { return m_tirees.contains(colonne); }
  /// The columns are other ones: the arrangement holds for them too.
  void ReprendRangement();
  void resizeEvent(QResizeEvent* evenement) override;
  /// Sets widths that are not the user's doing.
  void PlaceColonnes(const std::vector<int>& largeurs);
  void ColonnesPosees();
  bool EstMarque(int colonne) const;
  QRect PlaceTexte(const QRect& cellule, int colonne) const;
  QSize TailleLignes(int lignes, int caracteres) const;

  void drawRow(QPainter* peintre, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
  int sizeHintForColumn(int colonne) const override;
  bool viewportEvent(QEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;
  void mouseDoubleClickEvent(QMouseEvent* evenement) override;
  void paintEvent(QPaintEvent* evenement) override;
  void selectionChanged(const QItemSelection& choisies, const QItemSelection& quittees) override;

  ContexteUi& m_contexte;
  int m_hauteurTexte = 1;
  int m_margePremiere = 2, m_margeAutres = 6;  ///< beside the texts
  int m_debut = 0, m_trait = 0;                ///< before the first column, of the rule behind a column
  bool m_choisitDerniere = false;              ///< a refresh with no selection selects the last row
  bool m_retientTirees = false;                ///< widths the user drew are part of the arrangement

 private:
  bool Choisit(const std::vector<Donnee>& donnees);
  void CopieLignes(const std::vector<int>& lignes) const;
  void DessineCellule(QPainter& peintre, const QRect& cellule, int colonne, const QString& texte) const;

  struct Arrangement {
    QString titre;
    bool cachee = false;
    int largeur = 0;  ///< 0: not drawn
  };
  void Note();
  void Montre(int colonne, bool montree);

  ModeleListe* m_modele;
  std::vector<Arrangement> m_rangement;  ///< empty: as in the table
  std::map<int, int> m_tirees;           ///< widths by column
  bool m_permis = false;
  std::function<std::size_t()> m_nombre;
  std::function<void()> m_activation;
  std::function<QString(int)> m_bulle;
  QString m_texteVide;
  LigneFiltre* m_filtre = nullptr;
  int m_colonneTriee = -1;
  int m_hauteurVue =
      0;  ///< of the viewport when it got its size: in another parent the event knows no old one
  bool m_triable = false;
  bool m_place = false;            ///< widths are changing, not by the user
  bool m_largeursPropres = false;  ///< widths are no more those of the table
  bool m_largeursChangees = false;
};

/// The same table inside a form: widths are percentages of the client width.
class CZNListCtrl : public TableListe {
  Q_OBJECT
 public:
  explicit CZNListCtrl(ContexteUi& contexte, QWidget* parent = nullptr);

 protected:
  void resizeEvent(QResizeEvent* evenement) override;
  void Ajuste() override;
};

}  // namespace fenlor
