#include "app/gestioncommandes.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QStandardPaths>

#include "app/listefenetres.h"
#include "app/mainframe.h"
#include "app/reprises.h"
#include "forms/reports/impressions.h"
#include "forms/session/comboexercices.h"
#include "ui/images.h"
#include "ui/texteqt.h"
#include "ui/vue.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The desktop can show a page: a browser is named, or the opener is there.
bool NavigateurPresent() {
  return !qEnvironmentVariableIsEmpty("BROWSER") || !QStandardPaths::findExecutable(u"xdg-open"_s).isEmpty();
}

}  // namespace

Commandes::Commandes(CMainFrame& cadre)
    : QObject(&cadre),
      m_cadre(cadre),
      m_etats(new Impressions(
          cadre.Contexte(), [&cadre](Vue* vue) { cadre.Ouvre(vue); }, this)),
      m_navigateur(NavigateurPresent()) {
  for (const Commande& commande : TableCommandes()) {
    if (!commande.action) continue;
    auto* action = new QAction(Image(commande.image), QString::fromUtf8(commande.texte), &cadre);
    action->setObjectName(u"commande%1"_s.arg(commande.numero));
    action->setStatusTip(QString::fromUtf8(commande.explication));
    action->setCheckable(commande.bascule);
    QString bulle = action->text();
    bulle.remove(u'&');
    if (bulle.endsWith(u"..."_s)) bulle.chop(3);
    action->setToolTip(bulle);
    if (commande.numero == CmdQuitter) action->setMenuRole(QAction::QuitRole);
    connect(action, &QAction::triggered, this, [this, numero = commande.numero] { Execute(numero); });
    m_actions[commande.numero] = action;
    // Shortcuts work also when the bar that shows them is hidden.
    cadre.addAction(action);
  }
}

void Commandes::FaitMenus(QMenuBar& barre) {
  for (int i = 0; i < static_cast<int>(Menu::Aucun); ++i) {
    const Menu place = static_cast<Menu>(i);
    QMenu* menu = nullptr;
    bool separateur = false;
    for (const Commande& commande : TableCommandes()) {
      if (commande.menu != place) continue;
      separateur = separateur || commande.separateur;
      QAction* action = Action(commande.numero);
      if (!action) continue;
      if (!menu) {
        menu = barre.addMenu(QString::fromUtf8(TitreMenu(place)));
        menu->setToolTipsVisible(false);
        connect(menu, &QMenu::aboutToShow, this, &Commandes::ActualiseEtats);
      } else if (separateur) {
        menu->addSeparator();
      }
      separateur = false;
      menu->addAction(action);
    }
    if (menu && place == Menu::Graphique) m_menuGraphique = menu->menuAction();
    if (menu && place == Menu::Fenetre) new ListeFenetres(*menu, m_cadre.Zone());
  }
}

bool Commandes::Disponible(const Commande& commande) const {
  CFenlorApp& app = m_cadre.App();
  switch (commande.quand) {
    case Quand::Toujours:
      return true;
    case Quand::Exercice:
      return app.ExerciceOuvert != 0;
    case Quand::SansExercice:
      return app.ExerciceOuvert == 0;
    case Quand::ExerciceVivant:
      return app.ExerciceOuvert != 0 && !app.Reglages.IsFige();
    case Quand::ComboRempli:
      return m_cadre.Combo().count() > 0;
    case Quand::NavigateurWeb:
      return m_navigateur;
    case Quand::FenetreActive:
      return m_cadre.VueActive() != nullptr;
    case Quand::ARetirer:
      return app.ExerciceOuvert != 0 && !NomReprise(app, Sens::Annuler).empty();
    case Quand::ARetablir:
      return app.ExerciceOuvert != 0 && !NomReprise(app, Sens::Retablir).empty();
    case Quand::Vue: {
      const Vue* vue = m_cadre.VueActive();
      return vue && vue->Disponible(commande.numero);
    }
  }
  return false;
}

bool Commandes::EstCoche(const Commande& commande) const {
  if (const QWidget* barre = m_cadre.BarreDe(commande.numero)) return !barre->isHidden();
  if (commande.numero == CmdCalculatrice) return m_cadre.CalculatriceOuverte();
  if (commande.numero == CmdOnglets) return m_cadre.EnOnglets();
  if (commande.numero == CmdPleinEcran) return m_cadre.isFullScreen();
  if (commande.quand == Quand::Vue) {
    const Vue* vue = m_cadre.VueActive();
    return vue && vue->Coche(commande.numero);
  }
  return commande.bit != 0 && m_cadre.EstOuvert(commande.bit);
}

void Commandes::ActualiseEtats() {
  const Vue* vue = m_cadre.VueActive();
  if (m_menuGraphique) m_menuGraphique->setVisible(vue && vue->Connait(CmdAires));
  for (const Commande& commande : TableCommandes()) {
    QAction* action = Action(commande.numero);
    if (!action) continue;
    action->setEnabled(Disponible(commande));
    if (commande.quand == Quand::ARetirer || commande.quand == Quand::ARetablir)
      action->setText(TexteReprise(m_cadre.App(), commande));
    if (commande.bascule) action->setChecked(EstCoche(commande));
  }
}

void Commandes::Execute(unsigned numero) {
  const Commande* commande = TrouveCommande(numero);
  if (m_cadre.Derriere()) return;
  if (commande && commande->action && Disponible(*commande)) commande->action(m_cadre, numero);
  m_cadre.Actualise();
  ActualiseEtats();
}

}  // namespace fenlor
