#include "ui/editeurs.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QSignalBlocker>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QValidator>

#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

/// What an editor may hold of a text: controls become blanks, what the code page
/// lacks goes. `lignes` keeps line ends.
QString Filtre(const QString& texte, bool lignes) {
  QString garde;
  for (const char32_t c : texte.normalized(QString::NormalizationForm_C).toUcs4()) {
    const bool saut = c == '\n' || c == 0x2028 || c == 0x2029;
    if (saut) {
      garde += lignes ? QChar(u'\n') : QChar(u' ');
    } else if (c < 32) {
      if (c == '\t') garde += u' ';
    } else if (const QString un = QString::fromUcs4(&c, 1); c != 127 && TientEn1252(un)) {
      garde += un;
    }
  }
  return garde;
}

QString Majuscules(const QString& texte) { return Q(EnMajuscules(De1252(texte))); }

/// Never refuses: takes out of the text what may not stand in it, so that typing,
/// pasting and dropping are all held to the same.
class Filtreur : public QValidator {
 public:
  Filtreur(QObject* parent, const bool& majuscules) : QValidator(parent), m_majuscules(majuscules) {}
  State validate(QString& texte, int& place) const override {
    const QString filtre = Filtre(texte, false);
    if (filtre != texte) {
      place = static_cast<int>(Filtre(texte.left(place), false).size());
      texte = filtre;
    }
    if (m_majuscules) texte = Majuscules(texte);
    return Acceptable;
  }

 private:
  const bool& m_majuscules;
};

int Octets(const QString& texte) { return static_cast<int>(texte.size() + texte.count(u'\n')); }

}  // namespace

EditeurTexte::EditeurTexte(QWidget* parent) : QLineEdit(parent) {
  setValidator(new Filtreur(this, m_majuscules));
}

std::string EditeurTexte::Valeur() const { return De1252(text()); }
void EditeurTexte::Pose(const std::string& texte) {
  setText(Q(texte));
  setCursorPosition(0);
}
void EditeurTexte::PoseMajuscules(bool majuscules) { m_majuscules = majuscules; }

void EditeurTexte::keyPressEvent(QKeyEvent* evenement) {
  const QString texte = evenement->text();
  // The access key of a button that is disabled is no letter.
  if (evenement->modifiers() == Qt::AltModifier && !texte.isEmpty()) return evenement->ignore();
  if (!m_majuscules || texte.isEmpty() || !texte.front().isLower())
    return QLineEdit::keyPressEvent(evenement);
  // Not left to the validator, which would wipe the undo history.
  QKeyEvent majuscule(evenement->type(), evenement->key(), evenement->modifiers(),
                      Majuscules(Filtre(texte, false)), evenement->isAutoRepeat(),
                      static_cast<quint16>(evenement->count()));
  QLineEdit::keyPressEvent(&majuscule);
  evenement->setAccepted(majuscule.isAccepted());
}

EditeurTexteLong::EditeurTexteLong(QWidget* parent) : QPlainTextEdit(parent) {
  setTabChangesFocus(true);
  setLineWrapMode(WidgetWidth);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

std::string EditeurTexteLong::Valeur() const { return De1252(toPlainText()); }

void EditeurTexteLong::Pose(const std::string& texte) {
  const QSignalBlocker silence(this);
  setPlainText(Q(texte));
}

void EditeurTexteLong::PoseLimite(int octets) { m_limite = octets; }

void EditeurTexteLong::PoseLignes(int lignes) {
  m_lignes = lignes;
  updateGeometry();
}

QSize EditeurTexteLong::sizeHint() const {
  return {QPlainTextEdit::sizeHint().width(), minimumSizeHint().height()};
}

QSize EditeurTexteLong::minimumSizeHint() const {
  const int marge = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
  return {QPlainTextEdit::minimumSizeHint().width(), m_lignes * fontMetrics().lineSpacing() + marge};
}

/// Puts as much of the text as the limit leaves room for in place of the selection.
void EditeurTexteLong::Insere(const QString& texte) {
  QString insere = Filtre(texte, true);
  const int pris = Octets(toPlainText()) - Octets(textCursor().selection().toPlainText());
  while (!insere.isEmpty() && pris + Octets(insere) > m_limite) insere.chop(1);
  if (!insere.isEmpty()) textCursor().insertText(insere);
  ensureCursorVisible();
}

void EditeurTexteLong::keyPressEvent(QKeyEvent* evenement) {
  const bool fin = evenement->key() == Qt::Key_Return || evenement->key() == Qt::Key_Enter;
  const bool commande = evenement->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  const bool altGr = evenement->modifiers().testFlags(Qt::ControlModifier | Qt::AltModifier);
  const QString texte = evenement->text();
  const bool frappe = !texte.isEmpty() && texte.front().isPrint() && (!commande || altGr);
  if (isReadOnly() || !(frappe || (fin && !commande))) return QPlainTextEdit::keyPressEvent(evenement);
  if (fin) {
    QTextCursor place = textCursor();
    place.setPosition(place.selectionEnd());
    setTextCursor(place);
  }
  Insere(fin ? QStringLiteral("\n") : texte);
  evenement->accept();
}

void EditeurTexteLong::inputMethodEvent(QInputMethodEvent* evenement) {
  const QString texte = evenement->commitString();
  if (isReadOnly() || texte.isEmpty()) return QPlainTextEdit::inputMethodEvent(evenement);
  QInputMethodEvent vide;
  QPlainTextEdit::inputMethodEvent(&vide);  // ends the composition
  Insere(texte);
  evenement->accept();
}

void EditeurTexteLong::insertFromMimeData(const QMimeData* source) {
  if (!isReadOnly() && source && source->hasText()) Insere(source->text());
}

EditeurChoix::EditeurChoix(QWidget* parent) : QComboBox(parent) {
  setSizeAdjustPolicy(AdjustToContents);
  setMaxVisibleItems(20);
}

void EditeurChoix::Ajoute(const std::string& texte, const std::string& valeur) {
  addItem(Q(texte), QByteArray::fromStdString(valeur));
}
std::string EditeurChoix::Valeur() const { return currentData().toByteArray().toStdString(); }
bool EditeurChoix::Choisit(const std::string& valeur) {
  const int rang = findData(QByteArray::fromStdString(valeur));
  setCurrentIndex(rang);
  return rang >= 0;
}

Lecture::Lecture(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setTextInteractionFlags(Qt::TextSelectableByMouse);
}
void Lecture::Pose(const std::string& texte) { setText(Q(texte)); }
std::string Lecture::Valeur() const { return De1252(text()); }

}  // namespace fenlor
