// `CFrameWndPrint`: the life of a report, from its command to the last page.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPageLayout>
#include <QTimer>
#include <functional>
#include <memory>

#include "reports/catalogue.h"
#include "reports/forms/dialogperiode.h"
#include "reports/forms/etatview.h"

class QPrinter;

namespace fenlor {

class CZNPreviewView;
class Vue;

/// What becomes of a report when it is built.
enum class DemandeEtat {
  SelonPreference = 0,  ///< preview when the preference says so, else print
  Impression = 1,
  Apercu = 2,
};

/// Holds the one report that is open. A preview keeps it as long as its window stands; a print lets it
/// go at its end; one that nobody uses any more goes after two seconds.
class CFrameWndPrint : public QObject {
  Q_OBJECT
 public:
  using Fabrique = std::function<std::unique_ptr<CEtatComptable>(CFenlorApp&, DemandeurCriteres&)>;

  /// `montre` puts the window of a preview on the screen and owns it.
  CFrameWndPrint(ContexteUi& contexte, std::function<void(Vue*)> montre, QObject* parent = nullptr);
  ~CFrameWndPrint() override;

  /// Closes the report that is open, makes and builds one, asking with the form, and prints it or shows
  /// its preview. False when there is none: cancelled, stopped, or a failure that has been told.
  bool Ouvre(const Fabrique& fabrique, DemandeEtat demande);
  /// Closes report and preview.
  void Ferme();
  CEtatComptable* Etat() const { return m_etat.get(); }
  CEtatView* Pages() const { return m_vue.get(); }
  CZNPreviewView* Apercu() const { return m_apercu; }

  /// The page setup dialog. Paper and margins are kept in the settings.
  void Configure();
  const QPageLayout& Feuille() const { return m_feuille; }
  /// The print dialog, then the printer. A preview stays when it is cancelled, and ends otherwise.
  void Imprime();
  /// Prints the pages that the printer is set to, as often as it is, on its own sheet.
  bool ImprimeSur(QPrinter& imprimante);
  /// Asks for a file and writes the report to it.
  void ExportePdf();

 private:
  void MontreApercu();
  CZNPreviewView* LacheApercu();  ///< the window has no report any more
  void FinitApercu();             ///< and is closed
  void LitFeuille();
  void GardeFeuille();
  void Veille();
  u64 Maintenant() const { return static_cast<u64>(m_horloge.elapsed()); }
  QWidget* Proprietaire() const;

  ContexteUi& m_contexte;
  std::function<void(Vue*)> m_montre;
  DemandeurForme m_demandeur;
  std::unique_ptr<CEtatComptable> m_etat;
  std::unique_ptr<CEtatView> m_vue;
  CZNPreviewView* m_apercu = nullptr;  ///< it says when it goes
  QPageLayout m_feuille;
  QString m_imprimante;  ///< chosen last
  QString m_dossierPdf;
  bool m_occupe = false;  ///< a report is being built or printed
  QElapsedTimer m_horloge;
  QTimer m_veille;
};

/// "Grand-livre-2003", or with other days than the exercice's "Grand-livre-20030101-20030331".
QString NomFichierEtat(const CFenlorApp& app, const CEtatComptable& etat);

}  // namespace fenlor
