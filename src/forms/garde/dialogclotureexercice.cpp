#include "forms/garde/dialogclotureexercice.h"

#include <QPushButton>

#include "forms/session/commandesexercice.h"
#include "store/dates.h"
#include "ui/editeurs.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogClotureExercice::CDialogClotureExercice(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"Cloture de l'exercice"_s, "DialogClotureExercice", parent) {
  m_refus = ProposeCloture(App(), m_proposition);
  auto* attention = new QLabel(u"ATTENTION !"_s);
  QFont gras = attention->font();
  gras.setBold(true);
  attention->setFont(gras);
  const auto lecture = [](const std::string& texte) -> Lecture& {
    auto* champ = new Lecture;
    champ->Pose(texte);
    return *champ;
  };
  Formulaire{Zone()}
      .Seul(*attention, "attention")
      .Texte(
          u"La clôture rend l'exercice définitif : aucune écriture, aucun compte, aucune rubrique n'y pourra "
          u"plus être ajouté, modifié ou supprimé. Personne ne peut revenir sur une clôture."_s)
      .Texte(u"Toutes les écritures doivent être validées. Faites d'abord une sauvegarde."_s)
      .Champ(u"Exercice :"_s, lecture(m_proposition.exercice), "exercice")
      .Champ(u"Période du :"_s, lecture(StrDate(m_proposition.debut)), "debut")
      .Suite(u"au :"_s, lecture(StrDate(m_proposition.fin)), "fin")
      .Champ(u"Date de cloture :"_s, lecture(StrDate(m_proposition.date)), "date")
      .Pousse();
  Boutons(Mode::Simple);
  findChild<QPushButton*>(u"ok"_s)->setText(u"Clôture"_s);
  AjouteAide();
}

int CDialogClotureExercice::exec() { return App().Dit(m_refus) ? CZNDialog::exec() : Rejected; }

bool CDialogClotureExercice::Enregistre() {
  return Refuse(Cloture(App(), m_proposition, FichiersSeul(Contexte())));
}

void CommandeCloture(ContexteUi& contexte) {
  if (CDialogClotureExercice(contexte, contexte.Cadre.Cadre()).Execute())
    CommandeFermerExercice(contexte);
  else
    contexte.Cadre.MontreExercice();
}

}  // namespace fenlor
