#include "master/forms/pageoptioncompte.h"
#include "core/erreurs.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionCompte::CPageOptionCompte(ContexteUi& contexte)
    : CZNPage(contexte, u"Comptes particuliers"_s, "PageOptionCompte"), m_champs(contexte.App) {
  Formulaire{*this}.Seul(m_champs, "comptes").Pousse();
}

bool CPageOptionCompte::Charge() {
  if (App().Reglages.IsExerciceCloture()) return App().ReportErreur(ErrExerciceCloture);
  m_champs.Charge();
  return true;
}

bool CPageOptionCompte::Enregistre() {
  return EcritComptesParticuliers(App(), m_champs.Valeur()) || DitEchecReglages(App());
}

}  // namespace fenlor
