// The reports that are open, and what they share: sheet, printer, folder.
#pragma once

#include <QObject>
#include <QPageLayout>
#include <functional>
#include <vector>

#include "forms/reports/dialogperiode.h"
#include "forms/reports/framewndprint.h"

namespace fenlor {

class Vue;

/// Any number of reports stand side by side, each with a window and temporary files of its own. One at a
/// time is being built, printed or asked about: its boxes are modal.
class Impressions : public QObject {
  Q_OBJECT
 public:
  using Fabrique = std::function<std::unique_ptr<CEtatComptable>(CFenlorApp&, DemandeurCriteres&)>;

  /// `montre` puts the window of a preview on the screen and owns it.
  Impressions(ContexteUi& contexte, std::function<void(Vue*)> montre, QObject* parent = nullptr);
  ~Impressions() override;

  /// Makes and builds a report, asking with the form, and does with it what the button of the
  /// form says, else `demande`. False when there
  /// is none: cancelled, stopped, a failure that has been told, or another one is at work.
  bool Ouvre(const Fabrique& fabrique, DemandeEtat demande);
  /// In the order in which they were opened.
  const std::vector<CFrameWndPrint*>& Etats() const { return m_etats; }
  CFrameWndPrint* Dernier() const { return m_etats.empty() ? nullptr : m_etats.back(); }

  /// The page setup dialog. Paper and margins are kept in the settings, and the previews follow.
  void Configure();

  // -- For the reports

  /// The sheet of the settings, as it is now.
  void LitFeuille();
  const QPageLayout& Feuille() const { return m_feuille; }
  /// The pages of all of them anew.
  void Relit();
  void Montre(Vue* apercu) { m_montre(apercu); }
  QWidget* Proprietaire() const;
  QString Imprimante;  ///< chosen last
  QString DossierPdf;
  bool Occupe = false;  ///< a report is being built or printed

 private:
  void GardeFeuille();

  ContexteUi& m_contexte;
  std::function<void(Vue*)> m_montre;
  DemandeurForme m_demandeur;
  std::vector<CFrameWndPrint*> m_etats;
  QPageLayout m_feuille;
};

}  // namespace fenlor
