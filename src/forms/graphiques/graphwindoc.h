// `CGraphWinDoc`: a chart from its criteria to paper and files.
#pragma once

#include "graphiques/dessin.h"
#include "ui/fenetres.h"

namespace fenlor {

class Impressions;
class WidgetGraphique;

class CGraphWinDoc {
 public:
  /// Both outlive the document.
  CGraphWinDoc(ContexteUi& contexte, Impressions& impressions)
      : m_contexte(contexte), m_impressions(impressions) {}

  /// Asks what to chart. False when there is nothing to show.
  bool OnNewDocument();
  const SerieGraphique& Serie() const { return m_serie; }

  /// Asks how much of a sheet the chart takes, then prints it or shows its preview; `finit` runs at the end
  /// of the preview, if `qui` still lives.
  void Imprime(GenreGraphique genre, bool apercu, QObject* qui, const std::function<void()>& finit);
  void Exporte(const WidgetGraphique& vue);
  /// On the clipboard.
  void CopieImage(const WidgetGraphique& vue) const;
  void CopieValeurs() const;
  /// Both: whoever pastes takes what he can hold.
  void Copie(const WidgetGraphique& vue) const;

 private:
  ContexteUi& m_contexte;
  Impressions& m_impressions;
  SerieGraphique m_serie;
  TaillePapier m_taille = TaillePapier::Proportionnelle;
};

}  // namespace fenlor
