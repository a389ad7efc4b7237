#include "forms/graphiques/graphwindoc.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

#include "core/valeurs.h"
#include "forms/graphiques/dialoggraph.h"
#include "forms/graphiques/dialogprintgraph.h"
#include "forms/graphiques/impressiongraphique.h"
#include "forms/graphiques/widgetgraphique.h"
#include "graphiques/ecriture.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr qreal echelleImage = 2;  ///< a picture is sharp on paper and on fine screens

QString TexteCopie(const SerieGraphique& serie) {
  const std::string titre = CompacteTexte(serie.titre);
  return Q((titre.empty() ? "" : titre + '\n') + EcritValeurs(serie));
}

}  // namespace

bool CGraphWinDoc::OnNewDocument() {
  CDialogGraph dialogue(m_contexte, m_contexte.Cadre.Cadre());
  if (!dialogue.Demande()) return false;
  m_serie = dialogue.Serie();
  return true;
}

void CGraphWinDoc::Imprime(GenreGraphique genre, bool apercu, QObject* qui,
                           const std::function<void()>& finit) {
  if (!CDialogPrintGraph(m_contexte, m_taille, m_contexte.Cadre.Cadre()).Execute()) return;
  auto impression =
      std::make_unique<ImpressionGraphique>(m_contexte, m_impressions, m_serie, genre, m_taille);
  if (!apercu) {
    impression->Imprime();
    return;
  }
  QObject::connect(impression.get(), &ImpressionGraphique::ApercuFini, qui, finit);
  impression.release()->MontreApercu();
}

void CGraphWinDoc::Exporte(const WidgetGraphique& vue) {
  ExporteGraphique(m_contexte, m_impressions,
                   {m_serie, vue.Genre(), m_taille, vue.Image(echelleImage), vue.size()});
}

void CGraphWinDoc::CopieImage(const WidgetGraphique& vue) const {
  QGuiApplication::clipboard()->setImage(vue.Image(echelleImage));
}

void CGraphWinDoc::CopieValeurs() const { QGuiApplication::clipboard()->setText(TexteCopie(m_serie)); }

void CGraphWinDoc::Copie(const WidgetGraphique& vue) const {
  auto* donnees = new QMimeData;
  donnees->setImageData(vue.Image(echelleImage));
  donnees->setText(TexteCopie(m_serie));
  QGuiApplication::clipboard()->setMimeData(donnees);
}

}  // namespace fenlor
