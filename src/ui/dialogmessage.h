// `CDialogMessage`: a text, an icon, and the buttons of a style word.
#pragma once

#include <QDialog>
#include <vector>

#include "core/dialogue.h"
#include "ui/findesliens.h"

class QTextEdit;

namespace fenlor {

/// Buttons of a style word, left to right, with their results. The order of set 3
/// ("&Non", "&Oui", "A&nnuler") is the reverse of set 4 on purpose.
struct BoutonMessage {
  QString texte;
  int reponse;
  const char* image;  ///< name of the picture, may be empty
};
std::vector<BoutonMessage> BoutonsDe(unsigned style);
/// What Escape and the close box answer: with `FuitePremier` the first button, else cancel, no, abandon, or
/// the only one.
int ReponseFuite(unsigned style);

/// A message (`objectName` "DialogMessage", buttons "bouton1" by their results). The text is wrapped
/// and can be selected; the box grows with it up to the height of the screen, then the text scrolls. Enter
/// is the first button shown, or the second (`DefautSecond`); the letter of an access key works without Alt;
/// Ctrl+C copies title (which holds an error's number) and text. A beep goes with the box.
class CDialogMessage : public QDialog {
  Q_OBJECT
 public:
  CDialogMessage(const QString& titre, const QString& texte, unsigned style, QWidget* parent);
  int Reponse() const { return m_reponse; }  ///< a ReponseMessage, once it was run

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;
  void reject() override;
  void showEvent(QShowEvent* evenement) override;

 private:
  void Repond(int reponse);
  void AjusteTexte(QTextEdit& texte);
  QString m_texte;
  unsigned m_style;
  int m_reponse;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
