// The quick filter above a list: a line of words, and what is left with them.
#pragma once

#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;

namespace fenlor {

class TableListe;

/// Stands above its list in whatever layout holds it, whose place both take together. Arrows and Enter go
/// to the list, Escape closes it.
class LigneFiltre : public QWidget {
  Q_OBJECT
 public:
  /// Null when the list stands in no layout.
  static LigneFiltre* Au(TableListe& liste);

  void Ouvre();
  /// All rows show again.
  void Ferme();

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  explicit LigneFiltre(TableListe& liste, QWidget* parent);
  void Bilan();
  TableListe& m_liste;
  QLineEdit* m_texte;
  QLabel* m_bilan;
  QTimer m_lecture;  ///< of the rows, while nothing is typed yet
};

}  // namespace fenlor
