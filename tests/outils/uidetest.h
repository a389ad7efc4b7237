// What form tests stand on: a practice of their own, a main window that only
// notes what it is asked, and a robot that answers modal windows.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QWindow>

#include "outils/cabinetdetest.h"
#include "outils/verifieformulaire.h"
#include "ui/fenetres.h"
#include "ui/tableliste.h"
#include "ui/texteqt.h"

namespace fenlor::test {

using namespace Qt::Literals::StringLiterals;

/// Notes the calls in order: "FermeToutes", "Aide DialogIndex".
class CadreDeTest : public Fenetres {
 public:
  std::vector<std::string> Appels;
  /// Times a call was made.
  unsigned Nombre(const std::string& appel) const;

  void FermeToutes() override { Appels.push_back("FermeToutes"); }
  void Sauve() override { Appels.push_back("Sauve"); }
  void Restaure() override { Appels.push_back("Restaure"); }
  void MontreExercice() override { Appels.push_back("MontreExercice"); }
  void Aide(const QString& page) override { Appels.push_back("Aide " + page.toStdString()); }
  bool Touche(const QKeySequence&) override { return false; }
  QWidget* Cadre() override { return nullptr; }
  void Offre(const Proposition& offre) override { Appels.push_back("Offre " + offre.texte.toStdString()); }

 protected:
  void Actualisees(bool dessin) override {
    if (dessin) Appels.push_back("Dessin");
  }
};

/// Answers modal windows in the order in which they open. Each `Attend` names the
/// window (`objectName`) and says what a person would do there; a window that nobody waits for,
/// or of another name, is a failure of the test and is closed.
class Robot : public QObject {
 public:
  Robot();
  ~Robot() override;  ///< a window still awaited is a failure
  void Attend(const char* nom, std::function<void(QDialog&)> geste);
  /// Names of the windows that opened.
  std::vector<std::string> Vues;

 protected:
  bool eventFilter(QObject* objet, QEvent* evenement) override;

 private:
  struct Attente {
    std::string nom;
    std::function<void(QDialog&)> geste;
  };
  std::deque<Attente> m_attentes;
};

/// Fixture of the form tests. Errors and questions of the rules go to `Boite`, the script.
class UiDeTest : public CabinetDeTest {
 public:
  UiDeTest();

  CadreDeTest Cadre;
  Preferences Dessin;
  ContexteUi Ui{App(), Cadre, Dessin};
  Robot robot;
};

/// Child of a name; a failure, and an exception that ends the test, when there is none.
template <class T>
T& Trouve(QObject& racine, const char* nom) {
  T* trouve = racine.findChild<T*>(QString::fromUtf8(nom));
  if (!trouve) throw std::runtime_error(std::string("no widget named ") + nom);
  return *trouve;
}

/// Empties a field and types a text into it, key by key, having given it the focus.
void Tape(QWidget& champ, const QString& texte);
/// Gives the focus to a widget, as Tab would: the field before is left.
void Va(QWidget& champ);
/// Queues a key for a window, as the window system does for the one that has the keyboard when it is
/// typed: whatever opens before the key is looked at does not get it.
void Frappe(QPointer<QWindow> fenetre, QKeyCombination touche, const QString& texte = {});
void Clique(QAbstractButton& bouton);
/// On the screen, with the keyboard.
void MontreFenetre(QWidget& fenetre);

// A form by the names of its fields, as most tests speak of it.
inline QAbstractButton& Case(QWidget& f, const char* nom) { return Trouve<QAbstractButton>(f, nom); }
inline QLineEdit& Champ(QWidget& f, const char* nom) { return Trouve<QLineEdit>(f, nom); }
inline QComboBox& Liste(QWidget& f, const char* nom) { return Trouve<QComboBox>(f, nom); }
inline bool Actif(QWidget& f, const char* nom) { return Trouve<QWidget>(f, nom).isEnabled(); }
inline void Ok(QWidget& f) { Clique(Case(f, "ok")); }
/// What a list, a field or a label shows.
QString Lu(QWidget& f, const char* nom);
/// A row of a list, chosen as a person does.
void Choisit(QComboBox& liste, int rang);
/// The field that has the focus; empty: none.
std::string Focus(const QWidget& f);
/// A key for it, or for the form.
void Touche(QWidget& f, int touche, Qt::KeyboardModifiers avec = {});
/// Types a text into it.
void Frappe(QWidget& f, const QString& texte);
/// The rows of a list, "|" between the first `colonnes` cells of each; 0: all.
QStringList Rangs(const TableListe& liste, int colonnes = 0);
/// Selects the row that begins with this cell.
void ChoisitRang(TableListe& liste, const QString& premiere);

/// Button of a text ("&Ok"), wherever it stands in the window.
QAbstractButton& Bouton(QWidget& fenetre, const QString& texte);
/// Title, labels and texts of a window, one a line.
QString Textes(const QWidget& fenetre);
/// Widgets of a window in tab order, by name; those without a name are left out.
std::vector<std::string> OrdreTab(QWidget& fenetre);

}  // namespace fenlor::test
