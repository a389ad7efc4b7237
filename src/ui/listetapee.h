// What a text field proposes while one types: rows under it, which never take the focus.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

class QLineEdit;
class QListWidget;

namespace fenlor {

/// Down and Up go through the rows, and each one that is reached is taken at once, so that Enter leaves the
/// field as ever; a click takes a row too, Escape and leaving the field close the rows. Nothing is taken
/// without one of these keys. Belongs to the field.
class ListeTapee : public QObject {
  Q_OBJECT
 public:
  using Propose = std::function<QStringList(const QString& tape)>;
  using Choisit = std::function<void(int rang)>;
  /// `champ` has the focus: the line edit itself, or the combo box around it. `choisit` gets the row of what
  /// was proposed last.
  ListeTapee(QWidget& champ, QLineEdit& editeur, Propose propose, Choisit choisit);
  ~ListeTapee() override;

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  void Montre(const QStringList& rangees);
  void Va(int rang);
  bool Visible() const;

  QWidget& m_champ;
  const Propose m_propose;
  const Choisit m_choisit;
  QPointer<QListWidget> m_liste;  ///< of the form, made when first needed
};

}  // namespace fenlor
