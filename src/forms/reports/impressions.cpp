#include "forms/reports/impressions.h"

#include <QApplication>
#include <QPageSetupDialog>
#include <QPrinter>
#include <QScopedValueRollback>
#include <utility>

#include "core/cles.h"
#include "core/valeurs.h"
#include "forms/reports/textes.h"
#include "ui/preferences.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

constexpr qreal dixiemes = 10;       ///< of a millimetre
constexpr int champsMiseEnPage = 6;  ///< of the setting

}  // namespace

Impressions::Impressions(ContexteUi& contexte, std::function<void(Vue*)> montre, QObject* parent)
    : QObject(parent), m_contexte(contexte), m_montre(std::move(montre)), m_demandeur(contexte) {}

Impressions::~Impressions() {
  for (CFrameWndPrint* etat : std::exchange(m_etats, {})) {
    etat->disconnect(this);
    delete etat;
  }
}

QWidget* Impressions::Proprietaire() const {
  QWidget* forme = QApplication::activeModalWidget();
  return forme ? forme : m_contexte.Cadre.Cadre();
}

bool Impressions::Ouvre(const Fabrique& fabrique, DemandeEtat demande) {
  if (Occupe) return false;
  std::unique_ptr<CEtatComptable> fait;
  {
    const QScopedValueRollback occupe(Occupe, true);
    fait = fabrique(m_contexte.App, m_demandeur);
    m_demandeur.Issue();
    if (!fait || !m_contexte.App.Dit(fait->OnNewDocument())) return false;
  }
  if (const DemandeEtat issue = m_demandeur.Issue(); issue != DemandeEtat::SelonPreference) demande = issue;
  auto* etat = new CFrameWndPrint(*this, m_contexte, std::move(fait));
  m_etats.push_back(etat);
  connect(etat, &CFrameWndPrint::Fermee, this, [this, etat] {
    std::erase(m_etats, etat);
    etat->deleteLater();
  });
  LitFeuille();
  return etat->Montre(demande);
}

void Impressions::Configure() {
  if (Occupe) return;
  const QScopedValueRollback occupe(Occupe, true);
  LitFeuille();
  QPrinter imprimante(QPrinter::HighResolution);
  if (!Imprimante.isEmpty()) imprimante.setPrinterName(Imprimante);
  imprimante.setPageLayout(m_feuille);
  QPageSetupDialog dialogue(&imprimante, Proprietaire());
  dialogue.setObjectName(u"DialogMiseEnPage"_s);
  if (dialogue.exec() != QDialog::Accepted) return;
  Imprimante = imprimante.printerName();
  m_feuille = imprimante.pageLayout();
  GardeFeuille();
  Relit();
}

void Impressions::Relit() {
  for (CFrameWndPrint* etat : m_etats) etat->Relit();
}

void Impressions::LitFeuille() {
  m_feuille = FeuilleParDefaut();
  const std::string texte = m_contexte.App.Reglages.LitIni(Texte(SecFenlor), Texte(CleMiseEnPage));
  if (ComptePartie(texte, ',') != champsMiseEnPage) return;
  const auto nombre = [&](unsigned i) { return TexteVersEntier(ChampTexte(i, texte, ',')); };
  const QString cle = Q(ChampTexte(0, texte, ',')).trimmed();
  for (int id = 0; id <= QPageSize::LastPageSize; ++id)
    if (const QPageSize papier(static_cast<QPageSize::PageSizeId>(id)); papier.key() == cle)
      m_feuille.setPageSize(papier);
  m_feuille.setOrientation(nombre(1) ? QPageLayout::Landscape : QPageLayout::Portrait);
  m_feuille.setUnits(QPageLayout::Millimeter);
  m_feuille.setMargins(
      {nombre(2) / dixiemes, nombre(3) / dixiemes, nombre(4) / dixiemes, nombre(5) / dixiemes});
}

void Impressions::GardeFeuille() {
  const QMarginsF marges = m_feuille.margins(QPageLayout::Millimeter);
  const auto dix = [](qreal marge) { return std::to_string(qRound(marge * dixiemes)); };
  const std::string texte = TexteFormat(
      FormatMiseEnPage,
      {De1252(m_feuille.pageSize().key()), m_feuille.orientation() == QPageLayout::Landscape ? "1" : "0",
       dix(marges.left()), dix(marges.top()), dix(marges.right()), dix(marges.bottom())});
  if (!m_contexte.App.Reglages.EcritIni(Texte(SecFenlor), Texte(CleMiseEnPage), texte))
    DitEchecReglages(m_contexte.App);
}

}  // namespace fenlor
