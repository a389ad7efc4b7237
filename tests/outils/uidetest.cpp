#include "outils/uidetest.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QTimer>
#include <algorithm>

namespace fenlor::test {

unsigned CadreDeTest::Nombre(const std::string& appel) const {
  return static_cast<unsigned>(std::count(Appels.begin(), Appels.end(), appel));
}

QString Textes(const QWidget& fenetre) {
  QString tout = fenetre.windowTitle();
  for (const QLabel* texte : fenetre.findChildren<QLabel*>()) tout += u'\n' + texte->text();
  for (const QTextEdit* texte : fenetre.findChildren<QTextEdit*>()) tout += u'\n' + texte->toPlainText();
  for (const QPlainTextEdit* texte : fenetre.findChildren<QPlainTextEdit*>())
    tout += u'\n' + texte->toPlainText();
  return tout;
}

Robot::Robot() { qApp->installEventFilter(this); }

Robot::~Robot() {
  for (const Attente& attente : m_attentes) ADD_FAILURE() << attente.nom << " never opened";
}

void Robot::Attend(const char* nom, std::function<void(QDialog&)> geste) {
  m_attentes.push_back({nom, std::move(geste)});
}

bool Robot::eventFilter(QObject* objet, QEvent* evenement) {
  auto* dialogue = qobject_cast<QDialog*>(objet);
  if (evenement->type() != QEvent::Show || !dialogue || !dialogue->isModal()) return false;
  QTimer::singleShot(0, this, [this, fenetre = QPointer<QDialog>(dialogue)] {
    if (!fenetre || !fenetre->isVisible()) return;
    const std::string nom = fenetre->objectName().toStdString();
    Vues.push_back(nom);
    if (m_attentes.empty() || m_attentes.front().nom != nom) {
      ADD_FAILURE() << "unexpected window " << nom << ", waiting for "
                    << (m_attentes.empty() ? "none" : m_attentes.front().nom) << "\n"
                    << Textes(*fenetre).toStdString();
      fenetre->reject();
      if (fenetre && fenetre->isVisible()) fenetre->done(QDialog::Rejected);
      return;
    }
    const auto geste = m_attentes.front().geste;
    m_attentes.pop_front();
    try {
      geste(*fenetre);
    } catch (const std::exception& erreur) {
      ADD_FAILURE() << nom << ": " << erreur.what();
    }
    if (fenetre && fenetre->isVisible() && ::testing::Test::HasFailure()) fenetre->done(QDialog::Rejected);
  });
  return false;
}

namespace {

void TapeA(QWidget& champ, const QString& texte) {
  for (const QChar c : texte) {
    if (c < QChar(128)) {
      QTest::keyClicks(&champ, QString(c));
    } else {  // QTest knows the keys of ASCII alone
      QKeyEvent frappe(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QString(c));
      QApplication::sendEvent(&champ, &frappe);
    }
  }
}

}  // namespace

UiDeTest::UiDeTest() { ChargePreferences(Dessin, App(), QApplication::palette()); }

void MontreFenetre(QWidget& fenetre) {
  fenetre.show();
  fenetre.activateWindow();
  QApplication::processEvents();
}

void Va(QWidget& champ) {
  champ.window()->activateWindow();
  champ.setFocus(Qt::TabFocusReason);
  QApplication::processEvents();
}

void Tape(QWidget& champ, const QString& texte) {
  Va(champ);
  QTest::keyClick(&champ, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&champ, Qt::Key_Delete);
  TapeA(champ, texte);
}

QString Lu(QWidget& f, const char* nom) {
  if (const auto* liste = f.findChild<QComboBox*>(QLatin1String(nom))) return liste->currentText();
  if (const auto* ligne = f.findChild<QLineEdit*>(QLatin1String(nom))) return ligne->text();
  return Trouve<QLabel>(f, nom).text();
}

void Choisit(QComboBox& liste, int rang) {
  liste.setCurrentIndex(rang);
  if (rang >= 0) Q_EMIT liste.activated(rang);
}

std::string Focus(const QWidget& f) {
  return f.focusWidget() ? f.focusWidget()->objectName().toStdString() : "";
}

void Touche(QWidget& f, int touche, Qt::KeyboardModifiers avec) {
  QApplication::processEvents();
  QTest::keyClick(f.focusWidget() ? f.focusWidget() : &f, static_cast<Qt::Key>(touche), avec);
  QApplication::processEvents();
}

void Frappe(QWidget& f, const QString& texte) { TapeA(*f.focusWidget(), texte); }

QStringList Rangs(const TableListe& liste, int colonnes) {
  QStringList rangs;
  const ModeleListe& modele = liste.Modele();
  for (int ligne = 0; ligne < modele.NbLignes(); ++ligne) {
    QStringList cellules;
    for (int i = 0; i < (colonnes ? colonnes : modele.columnCount()); ++i) cellules += modele.Champ(ligne, i);
    rangs += cellules.join(u'|');
  }
  return rangs;
}

void ChoisitRang(TableListe& liste, const QString& premiere) {
  const auto rang = Rangs(liste, 1).indexOf(premiere);
  EXPECT_GE(rang, 0) << "no row " << premiere.toStdString();
  liste.SelectionneLigne(static_cast<int>(rang));
}

void Frappe(QPointer<QWindow> fenetre, QKeyCombination touche, const QString& texte) {
  QMetaObject::invokeMethod(
      qApp,
      [=] {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
          if (fenetre) qt_handleKeyEvent(fenetre, type, touche.key(), touche.keyboardModifiers(), texte);
      },
      Qt::QueuedConnection);
}

void Clique(QAbstractButton& bouton) { QTest::mouseClick(&bouton, Qt::LeftButton); }

QAbstractButton& Bouton(QWidget& fenetre, const QString& texte) {
  for (QAbstractButton* bouton : fenetre.findChildren<QAbstractButton*>())
    if (bouton->text() == texte) return *bouton;
  throw std::runtime_error("no button " + texte.toStdString());
}

std::vector<std::string> OrdreTab(QWidget& fenetre) {
  std::vector<std::string> noms;
  for (QWidget* w = fenetre.nextInFocusChain(); w && w != &fenetre; w = w->nextInFocusChain())
    if ((w->focusPolicy() & Qt::TabFocus) && w->isVisibleTo(&fenetre) && w->isEnabledTo(&fenetre) &&
        !w->objectName().isEmpty() && !w->objectName().startsWith(QLatin1String("qt_")))
      noms.push_back(w->objectName().toStdString());
  return noms;
}

}  // namespace fenlor::test
