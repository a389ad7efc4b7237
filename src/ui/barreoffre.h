// A bar that offers something without standing in the way: one sentence and a few buttons at the bottom of
// a window. It never takes the focus.
#pragma once

#include <QFrame>
#include <QString>
#include <QTimer>
#include <functional>
#include <vector>

class QHBoxLayout;
class QLabel;

namespace fenlor {

struct Proposition {
  struct Choix {
    QString libelle;  ///< with its "&", at a letter that no menu of the main window has
    std::function<void()> action;
  };
  QString texte;
  std::vector<Choix> choix;
  int duree = 0;  ///< ms until it goes by itself; 0: it stays until it is answered
};

/// Shows one proposition at a time, the last one; a button hides the bar, then does its work. What stays
/// until it is answered comes back when one that went by itself stood before it.
class BarreOffre : public QFrame {
  Q_OBJECT
 public:
  /// Hidden until something is offered.
  explicit BarreOffre(QWidget* parent = nullptr);
  void Offre(const Proposition& proposition);
  /// Nothing is offered any more.
  void Retire();

 private:
  void Montre(const Proposition& proposition);
  void Passe();
  Proposition m_durable;  ///< what stays; no text: none
  bool m_passagere = false;
  QLabel* m_texte;
  QHBoxLayout* m_rangee;
  QTimer m_horloge;
};

}  // namespace fenlor
