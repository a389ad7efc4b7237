// What the tests of the small forms of the journals share: a practice, the forms shown, their fields by name.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <string>

#include "journal/cabinetmedical.h"
#include "outils/uidetest.h"
#include "outils/verifieformulaire.h"
#include "store/texte1252.h"

namespace fenlor::test {

class FormesJournal : public CabinetMedical {
 protected:
  CadreDeTest Cadre;
  Preferences Dessin;
  ContexteUi Ui{App(), Cadre, Dessin};

  void SetUp() override {
    Installe();
    ChargePreferences(Dessin, App(), QApplication::palette());
  }
  static void Montre(QDialog& f) {
    f.show();
    f.activateWindow();
    QApplication::processEvents();
    VerifieFormulaire(f);
  }
  static std::string Focus(QDialog& f) {
    return f.focusWidget() ? f.focusWidget()->objectName().toStdString() : "";
  }
  static QAbstractButton& Case(QDialog& f, const char* nom) { return Trouve<QAbstractButton>(f, nom); }
  static QLineEdit& Champ(QDialog& f, const char* nom) { return Trouve<QLineEdit>(f, nom); }
  static QComboBox& Liste(QDialog& f, const std::string& nom) { return Trouve<QComboBox>(f, nom.c_str()); }
  static void Choisit(QDialog& f, const char* nom, int rang) {
    Liste(f, nom).setCurrentIndex(rang);
    if (rang >= 0) Q_EMIT Liste(f, nom).activated(rang);
  }
  static void Ok(QDialog& f) { Clique(Case(f, "ok")); }
  static bool Actif(QDialog& f, const char* nom) { return Trouve<QWidget>(f, nom).isEnabled(); }
};

}  // namespace fenlor::test
