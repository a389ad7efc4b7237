#include "forms/reports/previewview.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "forms/reports/feuillesapercu.h"
#include "forms/reports/previewtoolbar.h"
#include "forms/reports/textes.h"
#include "ui/images.h"
#include "ui/texteqt.h"

namespace fenlor {

CZNPreviewView::CZNPreviewView(ContexteUi& contexte, PagesDessinees& etat, const std::string& titre)
    : Vue(contexte, Texte(TitreApercu), 0),
      m_etat(&etat),
      m_feuilles(new FeuillesApercu(this)),
      m_barre(new CPreviewToolBar(*m_feuilles, this)) {
  setWindowTitle(TexteQ(FormatTitreApercu, {titre}));
  setWindowIcon(Image("apercu"));
  auto* pile = new QVBoxLayout(this);
  pile->setContentsMargins(0, 0, 0, 0);
  pile->setSpacing(0);
  pile->addWidget(m_barre);
  pile->addWidget(m_feuilles, 1);
  setFocusProxy(m_feuilles);
  connect(m_barre, &CPreviewToolBar::Imprime, this, &CZNPreviewView::Imprime);
  connect(m_barre, &CPreviewToolBar::Exporte, this, &CZNPreviewView::Exporte);
  connect(m_barre, &CPreviewToolBar::AutreStyle, this, &CZNPreviewView::AutreStyle);
  connect(m_barre, &CPreviewToolBar::Ferme, this, &CZNPreviewView::Ferme);
  Relit();
  Declare({{CmdImprimer, [this] { Q_EMIT Imprime(); }}});
}

CZNPreviewView::~CZNPreviewView() { Q_EMIT Terminee(); }

void CZNPreviewView::Detache() {
  m_etat = nullptr;
  m_feuilles->Pose(nullptr);
}

void CZNPreviewView::Relit() {
  m_feuilles->Pose(m_etat);
  m_barre->MontreStyle(LitStylePapier(App()) == StylePapier::Soignee);
}

void CZNPreviewView::AppliqueDessin() {
  if (!m_etat) return;
  m_etat->Prepare(m_etat->Feuille());
  Relit();
}

QSize CZNPreviewView::sizeHint() const {
  return m_feuilles->sizeHint() + QSize(0, m_barre->sizeHint().height());
}

void CZNPreviewView::Ferme() { (parentWidget() ? parentWidget() : this)->close(); }

void CZNPreviewView::keyPressEvent(QKeyEvent* evenement) {
  const bool ctrl = evenement->modifiers() == Qt::ControlModifier;
  if (evenement->key() == Qt::Key_Escape) return Ferme();
  if (ctrl && evenement->key() == Qt::Key_P) return Q_EMIT Imprime();
  if (ctrl && evenement->key() == Qt::Key_E) return Q_EMIT Exporte();
  if (!evenement->modifiers() && evenement->key() == Qt::Key_S) return Q_EMIT AutreStyle();
  Vue::keyPressEvent(evenement);
}

void CZNPreviewView::closeEvent(QCloseEvent* evenement) {
  Vue::closeEvent(evenement);
  if (evenement->isAccepted()) Q_EMIT Terminee();
}

}  // namespace fenlor
