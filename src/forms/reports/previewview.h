// `CZNPreviewView`: the window that shows a report before it is printed.
#pragma once

#include "forms/reports/etatview.h"
#include "ui/vue.h"

namespace fenlor {

class CPreviewToolBar;
class FeuillesApercu;

/// Its name for the help is "FenetreApercuAvantImpression".
class CZNPreviewView : public Vue {
  Q_OBJECT
 public:
  /// `etat` outlives the window or is taken away (`Detache`); `titre` is the report's.
  CZNPreviewView(ContexteUi& contexte, PagesDessinees& etat, const std::string& titre);
  ~CZNPreviewView() override;

  FeuillesApercu& Feuilles() { return *m_feuilles; }
  CPreviewToolBar& Barre() { return *m_barre; }
  /// Shows no report any more.
  void Detache();
  /// The report's pages are other ones.
  void Relit();

  void Actualise() override {}
  /// Print font and draft mode are those of the preferences.
  void AppliqueDessin() override;
  QSize sizeHint() const override;

 Q_SIGNALS:
  void Imprime();
  void Exporte();
  void AutreStyle();
  void Terminee();  ///< it was closed, or is thrown away

 protected:
  void keyPressEvent(QKeyEvent* evenement) override;
  void closeEvent(QCloseEvent* evenement) override;

 private:
  void Ferme();

  PagesDessinees* m_etat;
  FeuillesApercu* m_feuilles;
  CPreviewToolBar* m_barre;
  FinDesLiens m_finLiens{*this};
};

}  // namespace fenlor
