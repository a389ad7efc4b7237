#include "master/forms/dialogcompteparticulier.h"

#include <QLayout>
#include <QPushButton>

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

ChampsComptesParticuliers::ChampsComptesParticuliers(CFenlorApp& app, QWidget* parent)
    : QWidget(parent),
      m_app(app),
      m_virementRecette(m_modele),
      m_virementDepense(m_modele),
      m_perso(m_modele),
      m_ecartCredit(m_modele),
      m_ecartDebit(m_modele) {
  Formulaire{*this}
      .Champ(u"Compte de virement interne en &recettes"_s, m_virementRecette, "virementRecette")
      .Champ(u"Compte de virement interne en &dépenses"_s, m_virementDepense, "virementDepense")
      .Champ(u"Compte de répartition &personnelle"_s, m_perso, "perso")
      .Champ(u"Compte d'écart en &crédit"_s, m_ecartCredit, "ecartCredit")
      .Champ(u"Compte d'écart en d&ébit"_s, m_ecartDebit, "ecartDebit");
  layout()->setContentsMargins(0, 0, 0, 0);
}

void ChampsComptesParticuliers::Charge() {
  m_modele.Charge(m_app);
  Choisit(LitComptesParticuliers(m_app));
}

void ChampsComptesParticuliers::Recharge() {
  const ComptesParticuliers choisis = Valeur();
  m_modele.Charge(m_app);
  Choisit(choisis);
}

void ChampsComptesParticuliers::Choisit(const ComptesParticuliers& comptes) {
  m_virementRecette.Choisit(comptes.virementRecette);
  m_virementDepense.Choisit(comptes.virementDepense);
  m_perso.Choisit(comptes.perso);
  m_ecartCredit.Choisit(comptes.ecartCredit);
  m_ecartDebit.Choisit(comptes.ecartDebit);
}

ComptesParticuliers ChampsComptesParticuliers::Valeur() const {
  return {m_virementRecette.Valeur(), m_virementDepense.Valeur(), m_perso.Valeur(), m_ecartCredit.Valeur(),
          m_ecartDebit.Valeur()};
}

CDialogCompteParticulier::CDialogCompteParticulier(ContexteUi& contexte, std::function<bool()> nouveau,
                                                   QWidget* parent)
    : CZNDialog(contexte, u"Comptes particuliers"_s, "DialogCompteParticulier", parent),
      m_champs(contexte.App) {
  Formulaire{Zone()}.Seul(m_champs, "comptes").Pousse();
  if (nouveau) {
    connect(&AjouteBouton(u"Nou&veau..."_s, "nouveau"), &QPushButton::clicked, this, [this, nouveau] {
      if (nouveau()) m_champs.Recharge();
    });
  }
  Boutons(Mode::Simple);
  m_champs.Charge();
}

bool CDialogCompteParticulier::Enregistre() {
  return EcritComptesParticuliers(App(), m_champs.Valeur()) || DitEchecReglages(App());
}

}  // namespace fenlor
