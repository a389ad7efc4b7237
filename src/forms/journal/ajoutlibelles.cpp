#include "forms/journal/ajoutlibelles.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QToolTip>
#include <algorithm>
#include <memory>

#include "master/libelles.h"
#include "master/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

AjoutLibelles::AjoutLibelles(ContexteUi& contexte, ChampLibelle& champ, QWidget& forme)
    : QObject(&forme), m_contexte(contexte), m_champ(champ) {
  auto* ajout = new QAction(u"Ajouter aux &libellés"_s, &champ);
  ajout->setShortcut(Qt::CTRL | Qt::Key_L);
  ajout->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  champ.addAction(ajout);
  connect(ajout, &QAction::triggered, this, &AjoutLibelles::Ajoute);
  champ.lineEdit()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(champ.lineEdit(), &QWidget::customContextMenuRequested, this, &AjoutLibelles::Menu);
  champ.setToolTip(u"Ctrl+L ajoute ce libellé à la liste."_s);
}

void AjoutLibelles::Menu(const QPoint& place) {
  const std::unique_ptr<QMenu> menu(m_champ.lineEdit()->createStandardContextMenu());
  menu->addSeparator();
  menu->addActions(m_champ.actions());
  menu->exec(m_champ.lineEdit()->mapToGlobal(place));
}

void AjoutLibelles::Ajoute() {
  const std::string libelle = NormeLibelle(m_champ.Valeur());
  if (!LibelleRelisible(libelle)) {
    m_contexte.App.ReportErreur(ErrLibelleRefuse);
    return;
  }
  const bool nouveau = m_champ.findText(Q(libelle), Qt::MatchExactly | Qt::MatchCaseSensitive) < 0;
  if (nouveau) m_champ.addItem(Q(libelle));
  m_ajoutes.push_back(libelle);
  QToolTip::showText(m_champ.mapToGlobal(QPoint(0, m_champ.height() / 2)),
                     nouveau ? u"Libellé ajouté à la liste."_s : u"Ce libellé est dans la liste."_s,
                     &m_champ);
}

void AjoutLibelles::Ecrit() {
  std::vector<std::string> libelles;
  if (m_ajoutes.empty() || !m_contexte.App.Dit(LitLibelles(m_contexte.App, libelles))) return;
  const std::size_t avant = libelles.size();
  for (const std::string& libelle : m_ajoutes)
    if (std::find(libelles.begin(), libelles.end(), libelle) == libelles.end()) libelles.push_back(libelle);
  m_ajoutes.clear();
  if (libelles.size() > avant) m_contexte.App.Dit(EcritLibelles(m_contexte.App, libelles));
}

}  // namespace fenlor
