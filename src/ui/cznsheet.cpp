#include "ui/cznsheet.h"

#include <QShortcut>
#include <QVBoxLayout>

namespace fenlor {

CZNPage::CZNPage(ContexteUi& contexte, const QString& titre, const char* nom)
    : m_contexte(contexte), m_titre(titre) {
  setObjectName(QString::fromUtf8(nom));
}

bool CZNPage::Refuse(const Refus& refus) {
  if (!App().Dit(refus)) CZNDialog::Focalise(*this, refus.champ);
  return !refus;
}

CZNSheet::CZNSheet(ContexteUi& contexte, const QString& titre, const char* nom, QWidget* parent)
    : CZNDialog(contexte, titre, nom, parent), m_onglets(new QTabWidget) {
  m_onglets->setObjectName(QStringLiteral("onglets"));
  auto* zone = new QVBoxLayout(&Zone());
  zone->addWidget(m_onglets);
  const auto raccourci = [this](QKeyCombination touches, int pas) {
    connect(new QShortcut(QKeySequence(touches), this), &QShortcut::activated, this,
            [this, pas] { Tourne(pas); });
  };
  raccourci(Qt::CTRL | Qt::Key_PageDown, 1);
  raccourci(Qt::CTRL | Qt::Key_PageUp, -1);
  raccourci(Qt::CTRL | Qt::Key_Tab, 1);
  raccourci(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, -1);
}

void CZNSheet::AjoutePage(CZNPage* page) {
  m_pages.push_back(page);
  m_onglets->addTab(page, page->Titre());
}

void CZNSheet::Fini(std::vector<CZNPage*> ordre) {
  m_ordre = ordre.empty() ? m_pages : std::move(ordre);
  Boutons(Mode::Simple);
  connect(m_onglets, &QTabWidget::currentChanged, this, [this](int indice) {
    if (!isVisible()) return;
    if (Ouvre(indice)) {
      m_courante = indice;
    } else {
      // What was typed elsewhere stays.
      m_onglets->setCurrentIndex(m_courante);
      m_onglets->setTabEnabled(indice, false);
    }
  });
}

/// Reads the page when it is seen for the first time; false when it is refused.
bool CZNSheet::Ouvre(int indice) {
  if (indice < 0 || indice >= static_cast<int>(m_pages.size())) return true;
  CZNPage& page = *m_pages[static_cast<std::size_t>(indice)];
  if (!page.m_montree) page.m_montree = page.Charge();
  return page.m_montree;
}

void CZNSheet::Tourne(int pas) {
  const int nombre = m_onglets->count();
  int indice = m_onglets->currentIndex();
  do {
    indice = (indice + pas + nombre) % nombre;
  } while (!m_onglets->isTabEnabled(indice) && indice != m_onglets->currentIndex());
  m_onglets->setCurrentIndex(indice);
}

int CZNSheet::exec() { return Ouvre(m_onglets->currentIndex()) ? CZNDialog::exec() : Rejected; }

void CZNSheet::showEvent(QShowEvent* evenement) {
  m_courante = m_onglets->currentIndex();
  if (!Ouvre(m_onglets->currentIndex()))
    QMetaObject::invokeMethod(this, &QDialog::reject, Qt::QueuedConnection);
  CZNDialog::showEvent(evenement);
}

QString CZNSheet::PageAide() const {
  const QWidget* page = m_onglets->currentWidget();
  return page ? page->objectName() : objectName();
}

bool CZNSheet::Enregistre() {
  const auto refuse = [this](CZNPage* page) {
    if (m_onglets->currentWidget() != page) m_onglets->setCurrentWidget(page);
    return false;
  };
  for (CZNPage* page : m_ordre)
    if (page->m_montree && !page->Controle()) return refuse(page);
  for (CZNPage* page : m_ordre)
    if (page->m_montree && !page->Enregistre()) return refuse(page);
  Apres();
  return true;
}

}  // namespace fenlor
