#include "forms/master/dialogtresorerie.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogTresorerie::CDialogTresorerie(ContexteUi& contexte, SuiteFiches* vue, Position position,
                                     QWidget* parent)
    : DialogCompte(contexte, "DialogTresorerie", FormeCompte::Tresorerie, Tresorerie, vue, position, parent),
      m_tresorerie(contexte.App) {
  Formulaire formulaire = Champs();
  CodeEtNumero(formulaire, u"&Code :"_s, u"Com&pte :"_s);
  formulaire.Champ(u"&Désignation :"_s, Designation(), "designation");
  m_tresorerie.Declare(formulaire);
  m_tresorerie.DeclareSoldes(formulaire);
  formulaire.Pousse();
  m_tresorerie.Banque().setChecked(true);
  connect(&m_tresorerie.Banque(), &QCheckBox::clicked, this, [this] { ProposeNumero(); });
  Ouvre();
}

void CDialogTresorerie::ProposeNumero() {
  if (Ajout()) Numero().Pose(ProposeNumeroTresorerie(App(), m_tresorerie.Banque().isChecked()));
}

void CDialogTresorerie::Montre() {
  DialogCompte::Montre();
  m_tresorerie.Montre(EnMain(), Compte());
}

FicheCompte CDialogTresorerie::Nouvelle() {
  FicheCompte fiche = DialogCompte::Nouvelle();
  fiche.banque = m_tresorerie.Banque().isChecked();
  fiche.compte = ProposeNumeroTresorerie(App(), fiche.banque);
  return fiche;
}

}  // namespace fenlor
