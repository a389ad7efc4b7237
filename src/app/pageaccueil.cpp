#include "app/pageaccueil.h"

#include <QAction>
#include <QCommandLinkButton>
#include <QLabel>
#include <QVBoxLayout>

#include "app/commandes.h"
#include "app/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

PageAccueil::PageAccueil(ContexteUi& contexte, std::function<QAction*(unsigned)> action, QWidget* parent)
    : QWidget(parent), m_contexte(contexte), m_action(std::move(action)) {
  setObjectName(u"PageAccueil"_s);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  m_titre = new QLabel(this);
  m_titre->setObjectName(u"titre"_s);
  QFont grand = m_titre->font();
  grand.setPointSizeF(grand.pointSizeF() * 1.7);
  m_titre->setFont(grand);
  m_phrase = new QLabel(this);
  m_phrase->setObjectName(u"phrase"_s);
  m_phrase->setWordWrap(true);
  const int largeur = fontMetrics().averageCharWidth() * 70;
  auto* colonne = new QVBoxLayout;
  m_boutons = new QVBoxLayout;
  colonne->addStretch(2);
  colonne->addWidget(m_titre);
  colonne->addSpacing(fontMetrics().height() / 2);
  colonne->addWidget(m_phrase);
  colonne->addSpacing(fontMetrics().height());
  colonne->addLayout(m_boutons);
  colonne->addStretch(3);
  auto* milieu = new QWidget(this);
  milieu->setLayout(colonne);
  milieu->setMaximumWidth(largeur);
  auto* rangee = new QHBoxLayout(this);
  rangee->addStretch(1);
  rangee->addWidget(milieu, 8);
  rangee->addStretch(1);
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

void PageAccueil::Actualise() {
  CFenlorApp& app = m_contexte.App;
  if (!app.NomExercice.empty() && app.ExerciceOuvert) {
    const bool clos = app.Reglages.IsExerciceCloture();
    Montre(TexteQ(AccueilExercice, {app.NomExercice}), TexteQ(clos ? AccueilCloture : AccueilQueFaire),
           {1012, 1013, 1014, 1016, 1020, CmdOptions, CmdPreferences, CmdProprietes, CmdAide});
  } else if (app.Magasin.GetExercicesRec() == 0) {
    Montre(TexteQ(AccueilBienvenue), TexteQ(AccueilPremier), {CmdNouvelExercice, CmdDemonstration, CmdAide});
  } else {
    Montre(TexteQ(AccueilAucun), TexteQ(AccueilChoisir),
           {CmdOuvrirExercice, CmdNouvelExercice, CmdDemonstration, CmdAide});
  }
}

}  // namespace fenlor
