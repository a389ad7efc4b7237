// `CGraphWinView`: the window of a chart, with its values beside it.
#pragma once

#include <memory>

#include "forms/graphiques/graphwindoc.h"
#include "forms/graphiques/widgetgraphique.h"
#include "ui/editeurs.h"
#include "ui/tableliste.h"
#include "ui/vue.h"

namespace fenlor {

/// What is shown is what was asked for: entries of a later day do not change it. Any number may stand open.
class CGraphWinView : public Vue {
  Q_OBJECT
 public:
  CGraphWinView(ContexteUi& contexte, std::unique_ptr<CGraphWinDoc> document);
  ~CGraphWinView() override;

  WidgetGraphique& Graphique() { return *m_graphique; }
  TableListe& Valeurs() { return *m_valeurs; }
  void Charge() override;
  void Actualise() override {}
  void AppliqueDessin() override;
  QSize sizeHint() const override;

 protected:
  void contextMenuEvent(QContextMenuEvent* evenement) override;

 private:
  void DeclareCommandes();
  void PoseGenre(GenreGraphique genre);
  void Restaure();  ///< the frame, minimised while a preview was looked at

  std::unique_ptr<CGraphWinDoc> m_document;
  WidgetGraphique* m_graphique;
  TableListe* m_valeurs;
  EditeurChoix* m_genres;
  FinDesLiens m_finLiens{*this};
};

/// The command: a window for the chart that the user asks for, shown by `montre`, if he does.
void OuvreGraphique(ContexteUi& contexte, Impressions& impressions, const std::function<void(Vue*)>& montre);

}  // namespace fenlor
