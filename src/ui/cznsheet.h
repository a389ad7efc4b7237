// Property sheets: pages behind tabs, read when first shown, written on OK only
// when they were shown.
#pragma once

#include <QTabWidget>
#include <vector>

#include "ui/czndialog.h"

namespace fenlor {

class CZNSheet;

/// One page. `objectName` is its class name without "C" ("PageOptionTVA").
class CZNPage : public QWidget {
  Q_OBJECT
 public:
  CZNPage(ContexteUi& contexte, const QString& titre, const char* nom);

  const QString& Titre() const { return m_titre; }
  CFenlorApp& App() { return m_contexte.App; }
  ContexteUi& Contexte() { return m_contexte; }
  bool Montree() const { return m_montree; }

  /// Reads the settings into the fields; called once, when the page is first shown. The
  /// page's fields are made in its constructor. False (a refusal, told): the page stays closed, the
  /// sheet shows the one before; a sheet that opens on it does not open.
  virtual bool Charge() = 0;
  /// Checks what was typed; false after a refusal that has been told.
  virtual bool Controle() { return true; }
  /// Writes; called on OK for the pages that were shown, once all checks passed.
  virtual bool Enregistre() = 0;

 protected:
  /// As in `CZNDialog`.
  bool Refuse(const Refus& refus);

 private:
  friend class CZNSheet;
  ContexteUi& m_contexte;
  QString m_titre;
  bool m_montree = false;
  FinDesLiens m_finLiens{*this};
};

class CZNSheet : public CZNDialog {
  Q_OBJECT
 public:
  CZNSheet(ContexteUi& contexte, const QString& titre, const char* nom, QWidget* parent = nullptr);
  /// Takes the page; tabs stand in the order of the calls.
  void AjoutePage(CZNPage* page);
  /// After the last page: buttons, tabs. `ordre` is the order of saving, that of the tabs when empty.
  void Fini(std::vector<CZNPage*> ordre = {});
  /// Not shown at all, and rejected, when the first page is refused.
  int exec() override;

 protected:
  /// Controls and saves the shown pages. After the last one was saved: `Apres`.
  bool Enregistre() override;
  /// That of the page in front.
  QString PageAide() const override;
  virtual void Apres() {}
  void showEvent(QShowEvent* evenement) override;

 private:
  bool Ouvre(int indice);
  void Tourne(int pas);
  QTabWidget* m_onglets;
  int m_courante = 0;  ///< last page that was shown
  std::vector<CZNPage*> m_pages, m_ordre;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
