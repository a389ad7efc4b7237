#include "forms/master/dialogplan.h"

#include <QPushButton>

#include "core/erreursexercice.h"
#include "forms/master/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogPlan::CDialogPlan(ContexteUi& contexte, SuiteFiches* vue, i16 type, Position position, QWidget* parent)
    : DialogCompte(contexte, "DialogPlan", FormeCompte::RecettesDepenses, type, vue, position, parent),
      m_affectation(contexte.App),
      m_soldes(contexte.App),
      m_repartition(contexte.App) {
  Formulaire formulaire = Champs();
  CodeEtNumero(formulaire, u"Code :"_s, u"Compte :"_s);
  formulaire.Champ(u"Désignation :"_s, Designation(), "designation");
  m_affectation.Declare(formulaire);
  m_soldes.Declare(formulaire, {{"T.T.C. :", "ttc", &SoldesCompte::ttc},
                                {"H.T. :", "ht", &SoldesCompte::ht},
                                {"Professionnel :", "professionnel", &SoldesCompte::professionnel},
                                {"T.V.A. :", "montantTva", &SoldesCompte::tva}});
  m_repartition.Declare(formulaire);
  formulaire.Pousse();
  Ouvre();
}

bool CDialogPlan::Nouveau(ContexteUi& contexte, QWidget* parent) {
  CFenlorApp& app = contexte.App;
  if (!app.Dit(app.ControleEcriture())) return false;
  const int reponse = app.MessageId(BoutonsNonOuiAnnuler | IconeQuestion, QuestionCompteRecettes);
  if (reponse != RepOui && reponse != RepNon) return false;
  return Nouveau(contexte, reponse == RepOui ? i16{Recette} : i16{Depense}, parent);
}

bool CDialogPlan::Nouveau(ContexteUi& contexte, i16 type, QWidget* parent) {
  CDialogPlan forme(contexte, nullptr, type, 0, parent);
  forme.exec();
  return forme.AChange();
}

void CDialogPlan::Montre() {
  DialogCompte::Montre();
  const bool personnel = !Ajout() && EstComptePersonnel(App(), EnMain().compte);
  m_affectation.Montre(EnMain());
  m_soldes.Montre(Compte());
  m_repartition.Montre(EnMain(), Type() == Depense && !personnel);
  FigeChamp(Code(), personnel);
  FigeChamp(Designation(), personnel);
  if (personnel) FigeChamp(Numero(), true);
  m_affectation.PermetRubrique(!personnel);
  m_affectation.PermetTVA(!personnel);
  if (auto* ok = findChild<QPushButton*>(u"ok"_s)) ok->setEnabled(!personnel);
}

void CDialogPlan::Vide() {
  DialogCompte::Vide();
  m_affectation.Vide();
}

}  // namespace fenlor
