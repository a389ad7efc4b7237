#include "app/pageaccueil.h"

#include <QAction>
#include <QCommandLinkButton>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/commandes.h"
#include "app/textes.h"
#include "ui/roleaccessible.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int LargeurPhrase = 70, LargeurCommandes = 60;  // characters

}  // namespace

PageAccueil::PageAccueil(ContexteUi& contexte, std::function<QAction*(unsigned)> action,
                         std::function<void(const Destination&)> ouvre, QWidget* parent)
    : QWidget(parent), m_contexte(contexte), m_action(std::move(action)) {
  setObjectName(u"PageAccueil"_s);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  m_defile = new QScrollArea(this);
  DonneRole(*m_defile, QAccessible::Pane);
  m_defile->setObjectName(u"accueil"_s);
  m_defile->setAccessibleName(u"Page d'accueil"_s);
  m_defile->setFrameShape(QFrame::NoFrame);
  m_defile->setWidgetResizable(true);
  m_defile->setBackgroundRole(QPalette::Base);
  auto* milieu = new QWidget(m_defile);
  m_defile->setWidget(milieu);
  m_titre = new QLabel(milieu);
  m_titre->setObjectName(u"titre"_s);
  QFont grand = m_titre->font();
  grand.setPointSizeF(grand.pointSizeF() * 1.7);
  m_titre->setFont(grand);
  m_phrase = new QLabel(milieu);
  m_phrase->setObjectName(u"phrase"_s);
  m_phrase->setWordWrap(true);
  m_phrase->setMaximumWidth(fontMetrics().averageCharWidth() * LargeurPhrase);
  auto* commandes = new QWidget(milieu);
  commandes->setMaximumWidth(fontMetrics().averageCharWidth() * LargeurCommandes);
  m_boutons = new QVBoxLayout(commandes);
  m_boutons->setContentsMargins({});
  m_situation = new PanneauSituation(contexte, std::move(ouvre), milieu);

  m_colonnes = new QHBoxLayout;
  m_colonnes->addWidget(commandes, 1, Qt::AlignTop);
  m_colonnes->addSpacing(2 * fontMetrics().height());
  m_colonnes->addWidget(m_situation, 0, Qt::AlignTop);
  auto* pile = new QVBoxLayout;
  pile->addStretch(2);
  pile->addWidget(m_titre);
  pile->addWidget(m_phrase);
  pile->addSpacing(fontMetrics().height());
  pile->addLayout(m_colonnes);
  pile->addStretch(3);
  auto* rangee = new QHBoxLayout(milieu);
  rangee->addStretch(1);
  rangee->addLayout(pile, 20);
  rangee->addStretch(1);
  auto* tout = new QVBoxLayout(this);
  tout->setContentsMargins({});
  tout->addWidget(m_defile);
}

void PageAccueil::Montre(const QString& titre, const QString& phrase,
                         const std::vector<unsigned>& commandes) {
  m_titre->setText(titre);
  m_phrase->setText(phrase);
  while (QLayoutItem* vieux = m_boutons->takeAt(0)) {
    // The click that leads here may come from one of them.
    if (QWidget* widget = vieux->widget()) {
      widget->hide();
      widget->deleteLater();
    }
    delete vieux;
  }
  for (const unsigned numero : commandes) {
    QAction* action = m_action(numero);
    if (!action || !action->isEnabled()) continue;
    QString texte = action->text();
    texte.remove(u'&');
    auto* bouton = new QCommandLinkButton(texte, action->statusTip(), this);
    bouton->setObjectName(u"commande%1"_s.arg(numero));
    bouton->setIcon(action->icon());
    connect(bouton, &QCommandLinkButton::clicked, action, &QAction::trigger);
    m_boutons->addWidget(bouton);
  }
}

void PageAccueil::Dispose() {
  m_colonnes->setDirection(QBoxLayout::LeftToRight);
  m_defile->widget()->layout()->activate();
  // The bar that stands at its edge comes later.
  const int large = m_defile->width() - m_defile->verticalScrollBar()->sizeHint().width();
  if (m_defile->widget()->minimumSizeHint().width() > large)
    m_colonnes->setDirection(QBoxLayout::BottomToTop);
}

void PageAccueil::resizeEvent(QResizeEvent* evenement) {
  QWidget::resizeEvent(evenement);
  Dispose();
}

void PageAccueil::Actualise() {
  CFenlorApp& app = m_contexte.App;
  m_situation->Actualise();
  if (!app.NomExercice.empty() && app.ExerciceOuvert) {
    const TexteFixe& etat = app.Magasin.QVEnLecture()          ? AccueilEnLecture
                            : app.Reglages.IsExerciceCloture() ? AccueilCloture
                                                               : AccueilQueFaire;
    Montre(TexteQ(AccueilExercice, {app.NomExercice}), TexteQ(etat),
           {1012, 1013, 1014, 1016, 1020, CmdOptions, CmdPreferences, CmdProprietes, CmdAide});
  } else if (app.Magasin.GetExercicesRec() == 0) {
    Montre(TexteQ(AccueilBienvenue), TexteQ(AccueilPremier),
           {CmdNouvelExercice, CmdRestaurerCabinet, CmdDemonstration, CmdAide});
  } else {
    Montre(TexteQ(AccueilAucun), TexteQ(AccueilChoisir),
           {CmdOuvrirExercice, CmdNouvelExercice, CmdRestaurerCabinet, CmdDemonstration, CmdAide});
  }
  Dispose();
}

}  // namespace fenlor
