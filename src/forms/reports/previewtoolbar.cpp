#include "forms/reports/previewtoolbar.h"

#include <QAction>
#include <QLabel>
#include <QStyle>

#include "forms/reports/feuillesapercu.h"
#include "forms/reports/textes.h"
#include "ui/images.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

CPreviewToolBar::CPreviewToolBar(FeuillesApercu& feuilles, QWidget* parent)
    : QToolBar(parent), m_feuilles(feuilles) {
  setObjectName(u"barreApercu"_s);
  setWindowTitle(u"Aperçu"_s);
  setMovable(false);
  const int cote = style()->pixelMetric(QStyle::PM_SmallIconSize);
  setIconSize({cote, cote});
  const auto action = [this](const char* nom, const char* image, const QString& texte, const QString& touche,
                             auto geste) {
    auto* a = addAction(Image(image), texte);
    a->setObjectName(QLatin1String(nom));
    widgetForAction(a)->setObjectName(u"bouton-"_s + QLatin1String(nom));
    a->setToolTip(touche.isEmpty() ? texte : u"%1 (%2)"_s.arg(texte, touche));
    connect(a, &QAction::triggered, this, geste);
    return a;
  };
  FeuillesApercu& f = m_feuilles;
  action("imprimer", "imprimante", u"Imprimer..."_s, u"Ctrl+P"_s, [this] { Q_EMIT Imprime(); });
  action("pdf", "pdf", u"Exporter en PDF..."_s, u"Ctrl+E"_s, [this] { Q_EMIT Exporte(); });
  m_soignee =
      action("soignee", "style-papier", u"Présentation soignée"_s, u"S"_s, [this] { Q_EMIT AutreStyle(); });
  m_soignee->setCheckable(true);
  addSeparator();
  m_unePage = action("unePage", "une-page", u"Une page"_s, {}, [&f] { f.Montre(1); });
  m_deuxPages = action("deuxPages", "deux-pages", u"Deux pages"_s, {}, [&f] { f.Montre(2); });
  m_unePage->setCheckable(true);
  m_deuxPages->setCheckable(true);
  // The mark shows what is, also after a click on the one that is marked.
  connect(m_unePage, &QAction::triggered, this, &CPreviewToolBar::Actualise);
  connect(m_deuxPages, &QAction::triggered, this, &CPreviewToolBar::Actualise);
  addSeparator();
  m_premiere = action("premiere", "page-premiere", u"Première page"_s, u"Origine"_s, [&f] { f.VaPage(1); });
  m_precedente = action("precedente", "page-precedente", u"Page précédente"_s, u"Page préc."_s,
                        [&f] { f.VaPage(f.Page() - 1); });
  m_page = new QLabel(this);
  m_page->setObjectName(u"numeroPage"_s);
  m_page->setAlignment(Qt::AlignCenter);
  m_page->setMargin(cote / 3);
  addWidget(m_page);
  m_suivante = action("suivante", "page-suivante", u"Page suivante"_s, u"Page suiv."_s,
                      [&f] { f.VaPage(f.Page() + 1); });
  m_derniere = action("derniere", "page-derniere", u"Dernière page"_s, u"Fin"_s,
                      [&f] { f.VaPage(f.DernierePremiere()); });
  addSeparator();
  m_plus = action("zoomPlus", "zoom-plus", u"Agrandir"_s, u"Ctrl++"_s, [&f] { f.Agrandit(); });
  m_moins = action("zoomMoins", "zoom-moins", u"Réduire"_s, u"Ctrl+-"_s, [&f] { f.Reduit(); });
  m_ajuste = action("ajuste", "zoom-ajuste", u"Page entière"_s, u"Ctrl+0"_s, [&f] { f.Ajuste(); });
  addSeparator();
  action("fermer", "fermer-fenetre", u"Fermer l'aperçu"_s, u"Echap"_s, [this] { Q_EMIT Ferme(); });
  connect(&f, &FeuillesApercu::Change, this, &CPreviewToolBar::Actualise);
  Actualise();
}

void CPreviewToolBar::Actualise() {
  const FeuillesApercu& f = m_feuilles;
  const u32 pages = f.NombrePages(), montrees = f.Montrees(), page = f.Page();
  const bool choix = !f.EstAgrandi() && !(pages <= 1 && montrees == 1);
  m_unePage->setEnabled(choix);
  m_deuxPages->setEnabled(choix);
  m_unePage->setChecked(montrees == 1);
  m_deuxPages->setChecked(montrees == 2);
  m_premiere->setEnabled(pages > montrees);
  m_derniere->setEnabled(pages > montrees);
  m_precedente->setEnabled(page > 1);
  m_suivante->setEnabled(page < f.DernierePremiere());
  m_plus->setEnabled(f.PeutAgrandir());
  m_moins->setEnabled(f.EstAgrandi());
  m_ajuste->setEnabled(f.EstAgrandi());
  const u32 derniere = std::min(pages, page + montrees - 1);
  m_page->setText(derniere > page ? TexteQ(FormatPagesApercu, {std::to_string(page), std::to_string(derniere),
                                                               std::to_string(pages)})
                                  : TexteQ(FormatPageApercu, {std::to_string(page), std::to_string(pages)}));
}

}  // namespace fenlor
