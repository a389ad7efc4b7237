#include "forms/master/dialogcompteparticulier.h"

#include <QLayout>
#include <QPushButton>
#include <algorithm>

#include "core/erreursexercice.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

ChampsComptesParticuliers::ChampsComptesParticuliers(CFenlorApp& app, QWidget* parent)
    : QWidget(parent),
      m_app(app),
      m_choix{ChoixDeCompte(m_modele), ChoixDeCompte(m_modele), ChoixDeCompte(m_modele),
              ChoixDeCompte(m_modele), ChoixDeCompte(m_modele)} {
  Formulaire{*this}
      .Champ(u"Compte de virement interne en &recettes"_s, m_choix[VirementRecette], "virementRecette")
      .Champ(u"Compte de virement interne en &dépenses"_s, m_choix[VirementDepense], "virementDepense")
      .Champ(u"Compte de répartition &personnelle"_s, m_choix[Perso], "perso")
      .Champ(u"Compte d'écart en &crédit"_s, m_choix[EcartCredit], "ecartCredit")
      .Champ(u"Compte d'écart en d&ébit"_s, m_choix[EcartDebit], "ecartDebit");
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
  for (std::size_t i = 0; i < m_choix.size(); ++i) m_choix[i].Choisit(comptes[i]);
}

ComptesParticuliers ChampsComptesParticuliers::Valeur() const {
  ComptesParticuliers comptes;
  std::transform(m_choix.begin(), m_choix.end(), comptes.begin(), [](const auto& c) { return c.Valeur(); });
  return comptes;
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

CPageOptionCompte::CPageOptionCompte(ContexteUi& contexte)
    : CZNPage(contexte, u"Comptes particuliers"_s, "PageOptionCompte"), m_champs(contexte.App) {
  Formulaire{*this}.Seul(m_champs, "comptes").Pousse();
}

bool CPageOptionCompte::Charge() {
  if (!App().Dit(App().ControleEcriture())) return false;
  m_champs.Charge();
  return true;
}

bool CPageOptionCompte::Enregistre() {
  return EcritComptesParticuliers(App(), m_champs.Valeur()) || DitEchecReglages(App());
}

}  // namespace fenlor
