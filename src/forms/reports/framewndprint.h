// `CFrameWndPrint`: the life of a report, from its command to the last page.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <memory>

#include "forms/reports/dialogperiode.h"
#include "forms/reports/etatview.h"
#include "reports/catalogue.h"
#include "ui/fenetres.h"

class QPrinter;

namespace fenlor {

class CZNPreviewView;

class Impressions;

/// One report that is open, with its temporary files. A preview keeps it as long as its window stands; a
/// print lets it go at its end; one that nobody uses any more goes after two seconds. It is made by
/// `Impressions`, and gone when `Ferme` returns.
class CFrameWndPrint : public QObject {
  Q_OBJECT
 public:
  CFrameWndPrint(Impressions& impressions, ContexteUi& contexte, std::unique_ptr<CEtatComptable> etat);
  ~CFrameWndPrint() override;

  /// Prints the report or shows its preview. False, told, when it cannot be read.
  bool Montre(DemandeEtat demande);
  /// Closes report and preview.
  void Ferme();
  CEtatComptable* Etat() const { return m_etat.get(); }  ///< null once it was closed
  CEtatView* Pages() const { return m_vue.get(); }
  CZNPreviewView* Apercu() const { return m_apercu; }

  /// The print dialog, then the printer. A preview stays when it is cancelled, and ends otherwise.
  void Imprime();
  /// Prints the pages that the printer is set to, as often as it is, on its own sheet.
  bool ImprimeSur(QPrinter& imprimante);
  /// Asks for a file and writes the report to it; a bar of the main window names it then. Closes a report
  /// without a preview.
  void ExportePdf();
  /// The practice's style of paper is the other one from now on.
  void ChangeStyle();
  /// The pages anew, on the sheet that is set.
  void Relit();

 Q_SIGNALS:
  void Fermee();

 private:
  void MontreApercu();
  void DemandePdf();
  CZNPreviewView* LacheApercu();  ///< the window has no report any more
  void FinitApercu();             ///< and is closed
  void Veille();
  u64 Maintenant() const { return static_cast<u64>(m_horloge.elapsed()); }

  Impressions& m_impressions;
  ContexteUi& m_contexte;
  std::unique_ptr<CEtatComptable> m_etat;
  std::unique_ptr<CEtatView> m_vue;
  CZNPreviewView* m_apercu = nullptr;  ///< it says when it goes
  QElapsedTimer m_horloge;
  QTimer m_veille;
};

/// Letters and numbers of a name, with "-" between the words.
QString NomFichierPropre(const QString& nom);
/// "Grand-livre-2003", or with other days than the exercice's "Grand-livre-20030101-20030331".
QString NomFichierEtat(const CFenlorApp& app, const CEtatComptable& etat);

}  // namespace fenlor
