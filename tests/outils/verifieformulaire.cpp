#include "outils/verifieformulaire.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <utility>

#include "ui/preferences.h"

namespace fenlor::test {

using namespace Qt::Literals::StringLiterals;

namespace {

bool EstInterne(const QWidget& widget) {
  return widget.objectName().startsWith(QLatin1String("qt_")) ||
         qobject_cast<QAbstractSpinBox*>(widget.parentWidget()) ||
         qobject_cast<QComboBox*>(widget.parentWidget()) || qobject_cast<QTabBar*>(widget.parentWidget()) ||
         qobject_cast<QLineEdit*>(widget.parentWidget()) || qobject_cast<const QHeaderView*>(&widget);
}

/// Texts that the system gives with their access key. Two of them may clash; any other gives way.
const QStringList& TextesDonnes() {
  static const QStringList textes =
      QStringLiteral(
          u"&Ok|A&nnuler|&Enregistrer|&Fermer|&Précédent|&Suivant|N&ouvelle|&Oui|&Non|&Abandonner|"
          u"&Reéssayer|&Ignorer|&Nouveau...|P&rofessionnelle :|&Chèque|&Autre|&Multiple|&Simplifiée|"
          u"&Solder|&Code :|Com&pte :|&Désignation :|Compte &bancaire :|Solde &initial débit :|"
          u"&Recette|&Dépense|Résu&ltat|&Taxe|&Compteur|&Distance|Au&jourd'hui|La &semaine :|"
          u"Le &mois :|L'&exercice|La &période :|Copi&er|&Modifier|&Supprimer|&Manuel|&Automatique|"
          u"&Aperçu|&Imprimer|&PDF...|Tout &imprimer|Rien im&primer|&Confirmation|&Créer "
          u"l'écriture...|&Importer un relevé...")
          .split(u'|');
  return textes;
}

bool EstBouton(const QWidget& widget) { return qobject_cast<const QAbstractButton*>(&widget); }
bool EstZone(const QWidget& widget) {
  return qobject_cast<const QAbstractItemView*>(&widget) || qobject_cast<const QPlainTextEdit*>(&widget);
}
bool EstEntree(const QWidget& widget) {
  return EstBouton(widget) || EstZone(widget) || qobject_cast<const QLineEdit*>(&widget) ||
         qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget);
}

std::string Nom(const QWidget& widget) {
  if (!widget.objectName().isEmpty()) return widget.objectName().toStdString();
  std::string nom = widget.metaObject()->className();
  if (const auto* bouton = qobject_cast<const QAbstractButton*>(&widget))
    nom += " " + bouton->text().toStdString();
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) nom += " " + label->text().toStdString();
  return nom;
}

/// What a screen reader lacks of a widget that takes the focus.
std::string FauteVoix(const QWidget& widget) {
  if (widget.focusPolicy() == Qt::NoFocus || widget.focusProxy()) return {};
  QAccessibleInterface* voix = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
  if (!voix || voix->role() == QAccessible::NoRole || voix->role() == QAccessible::Client)
    return "has no role";
  return voix->text(QAccessible::Name).trimmed().isEmpty() ? "has no name to be read" : "";
}

class Verification {
 public:
  explicit Verification(QWidget& fenetre) : m_fenetre(fenetre) {}

  std::vector<std::string> Fais() {
    const QSize place = m_fenetre.screen()->availableSize().expandedTo({1024, 700});
    if (m_fenetre.width() > place.width() || m_fenetre.height() > place.height())
      Faute(m_fenetre,
            "is " + std::to_string(m_fenetre.width()) + " x " + std::to_string(m_fenetre.height()));
    const QList<QWidget*> tous = m_fenetre.findChildren<QWidget*>();
    for (const QWidget* widget : tous)
      if (const auto* label = qobject_cast<const QLabel*>(widget); label && label->buddy() && Vu(*label))
        m_libelles[label->buddy()] = label;
    for (const QWidget* widget : tous) {
      if (!Vu(*widget) || EstInterne(*widget)) continue;
      Touche(*widget);
      Coupe(*widget);
      Lis(*widget);
      Annonce(*widget);
      if (EstEntree(*widget) && widget->isEnabled()) Entree(*widget);
    }
    return std::move(m_fautes);
  }

 private:
  bool Vu(const QWidget& widget) const {
    return widget.isVisibleTo(&m_fenetre) && widget.window() == &m_fenetre;
  }
  void Faute(const QWidget& widget, const std::string& quoi) {
    m_fautes.push_back(Nom(widget) + ": " + quoi);
  }

  void Entree(const QWidget& champ) {
    if (champ.objectName().isEmpty()) return Faute(champ, "has no name");
    if (m_noms.contains(champ.objectName())) Faute(champ, "is the name of two inputs");
    m_noms[champ.objectName()] = &champ;
    if (const auto* bouton = qobject_cast<const QAbstractButton*>(&champ)) {
      if (bouton->text().isEmpty() && bouton->accessibleName().isEmpty() && !m_libelles.contains(&champ))
        Faute(champ, "has neither text nor label");
      return;
    }
    if (champ.accessibleName().isEmpty()) Faute(champ, "has no accessible name");
    const auto* ligne = qobject_cast<const QLineEdit*>(&champ);
    if (ligne && !ligne->placeholderText().isEmpty()) return;
    if (!m_libelles.contains(&champ) && !EstZone(champ) && !SuitUnBouton(champ)) Faute(champ, "has no label");
  }
  /// A field that goes on the text of a check box or radio button at its left.
  bool SuitUnBouton(const QWidget& champ) const {
    for (const auto* bouton : champ.parentWidget()->findChildren<QAbstractButton*>())
      if (bouton->isCheckable() && !bouton->text().isEmpty() && bouton->geometry().right() <= champ.x() &&
          bouton->y() < champ.geometry().center().y() &&
          bouton->geometry().bottom() > champ.geometry().center().y())
        return true;
    return false;
  }

  void Annonce(const QWidget& widget) {
    if (const std::string faute = FauteVoix(widget); !faute.empty()) Faute(widget, faute);
  }

  void Touche(const QWidget& widget) {
    QString texte;
    if (const auto* label = qobject_cast<const QLabel*>(&widget))
      texte = label->buddy() ? label->text() : QString();
    else if (const auto* bouton = qobject_cast<const QAbstractButton*>(&widget))
      texte = bouton->text();
    else if (const auto* groupe = qobject_cast<const QGroupBox*>(&widget))
      texte = groupe->title();
    if (const auto* onglets = qobject_cast<const QTabBar*>(&widget))
      for (int i = 0; i < onglets->count(); ++i) Note(widget, onglets->tabText(i));
    Note(widget, texte);
  }
  void Note(const QWidget& widget, const QString& texte) {
    const QString touche = QKeySequence::mnemonic(texte).toString();
    if (touche.isEmpty()) return;
    if (m_touches.contains(touche)) {
      const auto& [autre, sonTexte] = m_touches[touche];
      if (!TextesDonnes().contains(texte) || !TextesDonnes().contains(sonTexte))
        Faute(widget, touche.toStdString() + " is also that of " + Nom(*autre));
    }
    m_touches[touche] = {&widget, texte};
  }

  /// Text that does not stand out from what it is written on, greyed or not.
  void Lis(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const auto* bouton = qobject_cast<const QAbstractButton*>(&widget);
    const bool saisie = qobject_cast<const QLineEdit*>(&widget) || EstZone(widget);
    if (!(saisie || (label && !label->text().isEmpty()) || (bouton && !bouton->text().isEmpty()) ||
          qobject_cast<const QComboBox*>(&widget)))
      return;
    const QPalette::ColorGroup etat = widget.isEnabled() ? QPalette::Active : QPalette::Disabled;
    const QColor texte = widget.palette().color(etat, saisie ? QPalette::Text : widget.foregroundRole());
    const QColor fond = widget.palette().color(etat, saisie ? QPalette::Base : widget.backgroundRole());
    if (Contraste(texte, fond) < contrasteTexte)
      Faute(widget, "hardly stands out: " + texte.name().toStdString() + " on " + fond.name().toStdString());
  }

  /// Text that needs more room than its widget has.
  void Coupe(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const auto* bouton = qobject_cast<const QAbstractButton*>(&widget);
    const auto* groupe = qobject_cast<const QGroupBox*>(&widget);
    if (label && label->wordWrap()) {
      if (label->heightForWidth(label->width()) > label->height()) Faute(widget, "is cut at its lower edge");
      return;
    }
    if (!label && !bouton && !groupe && !qobject_cast<const QComboBox*>(&widget)) return;
    const auto* poussoir = qobject_cast<const QPushButton*>(&widget);
    // A style gives push buttons more room than a digit needs.
    const QSize veut = poussoir ? poussoir->minimumSizeHint().boundedTo(
                                      {poussoir->fontMetrics().horizontalAdvance(poussoir->text()) +
                                           (poussoir->icon().isNull() ? 0 : poussoir->iconSize().width()) +
                                           poussoir->fontMetrics().averageCharWidth(),
                                       poussoir->height()})
                       : groupe ? groupe->minimumSizeHint()
                       : label  ? label->sizeHint()
                                : widget.minimumSizeHint();
    if (veut.width() > widget.width() || veut.height() > widget.height())
      Faute(widget, "is cut: " + std::to_string(widget.width()) + " x " + std::to_string(widget.height()) +
                        " of " + std::to_string(veut.width()) + " x " + std::to_string(veut.height()));
  }

  QWidget& m_fenetre;
  QMap<const QWidget*, const QLabel*> m_libelles;
  QMap<QString, const QWidget*> m_noms;
  QMap<QString, std::pair<const QWidget*, QString>> m_touches;
  std::vector<std::string> m_fautes;
};

}  // namespace

std::vector<std::string> FautesFormulaire(QWidget& fenetre) {
  if (!fenetre.isVisible()) return {"is not shown"};
  QApplication::processEvents();
  return Verification(fenetre).Fais();
}

void VerifieVoix(QWidget& fenetre) {
  for (const QWidget* widget : fenetre.findChildren<QWidget*>()) {
    if (!widget->isVisibleTo(&fenetre) || EstInterne(*widget)) continue;
    const std::string faute = FauteVoix(*widget);
    EXPECT_EQ(faute, "") << fenetre.windowTitle().toStdString() << ": " << Nom(*widget) << " "
                         << widget->metaObject()->className();
  }
  for (const QMenu* menu : fenetre.findChildren<QMenu*>())
    for (const QAction* action : menu->actions())
      EXPECT_TRUE(action->isSeparator() || !action->text().trimmed().isEmpty())
          << menu->title().toStdString();
}

void VerifieFormulaire(QWidget& fenetre) {
  for (const std::string& faute : FautesFormulaire(fenetre))
    ADD_FAILURE() << fenetre.objectName().toStdString() << ", " << faute;
}

}  // namespace fenlor::test
