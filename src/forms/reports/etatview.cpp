#include "forms/reports/etatview.h"
#include "core/cles.h"

#include <QPainter>
#include <algorithm>

namespace fenlor {

QPageLayout FeuilleParDefaut() {
  constexpr qreal marge = 10;
  return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(marge, marge, marge, marge),
                     QPageLayout::Millimeter);
}

QPageLayout FeuillePour(const CEtatDoc& doc, QPageLayout feuille) {
  if (doc.Paysage()) feuille.setOrientation(QPageLayout::Landscape);
  return feuille;
}

bool CEtatView::Prepare(const QPageLayout& feuille) {
  m_feuille = feuille;
  m_device = PeripheriqueQt(m_feuille);
  const StylePapier style = m_doc.Style();
  m_page = PreparePage(
      m_device,
      LitPoliceImpressions(m_app.Reglages.LitIni(Texte(SecPreferences), Texte(ClePoliceImpressions)), style),
      m_app.Reglages.IsBrouillon(), true, style);
  m_qui = LitIdentiteEtat(m_app);
  auto pages = PagineEtat(m_doc, m_doc.Mesures(), static_cast<u32>(std::max(0, m_page.lignesParPage)),
                          DessinDe(style).titresSuivis);
  m_pages = pages ? std::move(*pages) : TablePages{};
  return pages.has_value();
}

bool CEtatView::DessinePage(QPainter& peintre, qreal unitesParPouce, u32 n) {
  peintre.save();
  const qreal echelle = unitesParPouce / UnitesPeripherique;
  peintre.scale(echelle, echelle);
  m_device.Peint(&peintre);
  const bool dessinee =
      fenlor::DessinePage({m_doc, m_pages, m_page, m_qui, m_app.Magasin.Today()}, n, m_device);
  m_device.Peint(nullptr);
  peintre.restore();
  return dessinee;
}

}  // namespace fenlor
