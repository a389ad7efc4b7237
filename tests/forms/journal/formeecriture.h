// What the tests of the form of a receipt or expense share.
#pragma once

#include "forms/journal/dialogecriture.h"
#include "forms/journal/formesjournal.h"
#include "ui/dialogmessage.h"
#include "ui/tableliste.h"

namespace fenlor::test {

using Numeros = std::vector<unsigned>;

/// Fixture: opens the form, reads what it shows, and types into it.
class FormeEcriture : public FormesJournal {
 protected:
  void SetUp() override { Prepare("2003"); }
  void Prepare(const std::string& annee, bool euro = true, bool tva = true) {
    Installe(annee, euro, tva);
    App().TauxEuroCourant = Magasin().GetTauxEuro(FaitDate(15, 3, 2003));
    ChargePreferences(Dessin, App(), QApplication::palette());
  }
  OuvertureEcriture Ouverture(i16 journal, u32 mouvement = 0, Date date = FaitDate(15, 3, 2003)) {
    OuvertureEcriture ouverture;
    ouverture.journal = journal;
    ouverture.date = date;
    ouverture.tresorerie = Long("512");
    ouverture.mouvement = mouvement;
    return ouverture;
  }
  /// The form as it stands on the screen.
  std::unique_ptr<CDialogEcriture> Montre(const OuvertureEcriture& ouverture) {
    auto forme = std::make_unique<CDialogEcriture>(Ui, ouverture);
    forme->setModal(false);
    MontreFenetre(*forme);
    return forme;
  }
  /// A receipt that only lacks its saving.
  std::unique_ptr<CDialogEcriture> Remplie(i16 journal, const QString& code, const QString& ttc,
                                           Date date = FaitDate(15, 3, 2003)) {
    auto forme = Montre(Ouverture(journal, 0, date));
    Tape(*Champ<QLineEdit>(*forme, "code"), code);
    Va(*Champ(*forme, "libelle"));
    Tape(*Champ<QLineEdit>(*forme, "ttc"), ttc);
    return forme;
  }

  template <class T = QWidget>
  static T* Champ(QWidget& f, const char* nom) {
    return &Trouve<T>(f, nom);
  }
  static bool Coche(QWidget& f, const char* nom) { return Trouve<QAbstractButton>(f, nom).isChecked(); }
  static bool Permis(QWidget& f, const char* nom) { return Trouve<QWidget>(f, nom).isEnabledTo(&f); }
  static bool Vu(QWidget& f, const char* nom) { return Trouve<QWidget>(f, nom).isVisibleTo(&f); }
  static QString Montants(QWidget& f) {
    QStringList textes;
    for (const char* nom : {"ttc", "professionnelle", "personnelle", "ht", "tva", "taux"})
      textes += Lu(f, nom);
    return textes.join(u' ');
  }
  static QString LignesTresor(QWidget& f) {
    return Rangs(Trouve<CZNListCtrl>(f, "lignes"), 4).join(u" ; "_s);
  }
  static void Choisit(QWidget& f, const char* nom) {
    Va(*Champ(f, nom));
    Trouve<QAbstractButton>(f, nom).click();
  }
  void Lie(u32 mouvement) {
    ChangeLignes(mouvement, [](Line& ligne) { ligne.LienId = 7; });
  }

  // By keyboard alone: a key goes to whatever field has the focus.
  static void Touche(int touche, Qt::KeyboardModifiers avec = {}) {
    QWidget* champ = QApplication::focusWidget();
    ASSERT_TRUE(champ) << "nothing has the focus";
    QTest::keyClick(champ, static_cast<Qt::Key>(touche), avec);
  }
  static void Frappe(const QString& texte) {
    ASSERT_TRUE(QApplication::focusWidget()) << "nothing has the focus";
    test::Frappe(*QApplication::focusWidget(), texte);
  }
  static void TabVers(const QString& nom, int touche = Qt::Key_Tab) {
    for (int i = 0; i < 25; ++i) {
      QWidget* champ = QApplication::focusWidget();
      if (champ && champ->objectName() == nom) return;
      Touche(touche, touche == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
    }
    ADD_FAILURE() << "Tab never comes to " << nom.toStdString();
  }
  /// The radio button of a group that has the focus, or its neighbour.
  static void TabVersUn(const QString& voulu, const QString& autre) {
    for (int i = 0; i < 25; ++i) {
      auto* bouton = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
      const QString nom = bouton ? bouton->objectName() : QString();
      if (nom == voulu) {
        if (!bouton->isChecked()) Touche(Qt::Key_Space);
        return;
      }
      if (nom == autre) {
        Touche(Qt::Key_Right);
        if (QApplication::focusWidget()->objectName() == autre) Touche(Qt::Key_Left);
      } else {
        Touche(Qt::Key_Tab);
      }
    }
    ADD_FAILURE() << "Tab never comes to " << voulu.toStdString();
  }
};

}  // namespace fenlor::test
