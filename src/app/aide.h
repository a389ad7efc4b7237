// `CFenetreAide`: the help, pages of the program's own.
#pragma once

#include <QDialog>
#include <QStringList>
#include <vector>

#include "ui/fenetres.h"
#include "ui/findesliens.h"

class QLineEdit;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;
class QUrl;

namespace fenlor {

/// A page of the contents list.
struct PageAide {
  QString fichier;  ///< "options.html"
  QString titre;
  bool sousChapitre;
};
/// In the order of the list, which docs/aide/sommaire.json gives with the addresses below.
std::vector<PageAide> PagesAide();
/// Where the help on a window or form stands: "options.html#tva". "index.html" for an unknown name.
QString AdresseAide(const QString& nom);
/// Words of a page, without its markup.
QString TexteAide(const QString& fichier);

/// One window for the whole program; not modal, keeps its place in the settings.
class CFenetreAide : public QDialog {
  Q_OBJECT
 public:
  CFenetreAide(ContexteUi& contexte, QWidget* parent);

  /// Shows the page of a window or form, by its object name, in front of all; the contents page
  /// for an unknown name. Beside a modal form it stays usable.
  void Montre(const QString& page);
  /// The same of a page of the contents list, "options.html".
  void MontreFichier(const QString& adresse);

  void done(int resultat) override;

 protected:
  void changeEvent(QEvent* evenement) override;
  void keyPressEvent(QKeyEvent* evenement) override;
  void showEvent(QShowEvent* evenement) override;

 private:
  void Cherche(const QString& mots);
  void SuisPage(const QUrl& page);
  void PoseCouleurs();
  void Surligne();

  ContexteUi& m_contexte;
  QTextBrowser* m_texte;
  QTreeWidget* m_sommaire;
  QLineEdit* m_recherche;
  bool m_placee = false;
  bool m_suit = false;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
