// A list of choices into which one types: what may be meant drops down below.
#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <vector>

class QComboBox;
class QFocusEvent;
class QLineEdit;

namespace fenlor {

/// Makes a combo box one that is typed into. The row that the text means is chosen at each letter, as if by
/// the user (`QComboBox::activated`), and the text becomes that row's when the field is left; Down and Up in
/// the rows below choose, too (`ListeTapee`). Belongs to the combo box.
class ChoixTape : public QObject {
  Q_OBJECT
 public:
  struct Sens {
    int rang = -1;           ///< the row that is meant, -1 for none
    std::vector<int> rangs;  ///< those that are proposed
    QStringList textes;      ///< what is shown of them
  };
  using Cherche = std::function<Sens(const QString& tape)>;
  /// What a text that means no row does: it stays, and no row is chosen; or the row that stood there stays
  /// and gives the field its text again.
  enum class Inconnu { SansChoix, GardeLeChoix };
  ChoixTape(QComboBox& choix, Inconnu inconnu, Cherche cherche);

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  void Suit(const QString& tape);
  void Prend(int rang);

  QComboBox& m_choix;
  QLineEdit& m_editeur;
  const Inconnu m_inconnu;
  const Cherche m_cherche;
  std::vector<int> m_rangs;  ///< proposed last
};

/// What is typed over goes at the first key, as in a field that is no list.
void ChoisitTout(QComboBox& champ, const QFocusEvent& evenement);

}  // namespace fenlor
