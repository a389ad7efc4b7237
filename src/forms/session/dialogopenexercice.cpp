#include "forms/session/dialogopenexercice.h"

#include "core/cles.h"
#include "forms/session/dialogpassword.h"
#include "forms/session/lignesexercices.h"
#include "forms/session/textes.h"
#include "session/exercices.h"
#include "session/textes.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

CDialogOpenExercice::CDialogOpenExercice(ContexteUi& contexte, bool motDePasse, std::string& destination,
                                         QWidget* parent)
    : CZNDialog(contexte, u"Ouvrir un exercice"_s, "DialogOpenExercice", parent),
      m_avecMotDePasse(motDePasse),
      m_destination(destination) {
  Formulaire(Zone()).Seul(m_liste, "exercices", true);
  m_liste.setAccessibleName(u"Exercices"_s);
  m_liste.setIconSize(QSize(1, 1) * m_liste.fontMetrics().height());
  m_liste.setSpacing(m_liste.fontMetrics().height() / 8);
  m_liste.setMinimumWidth(m_liste.fontMetrics().averageCharWidth() * 46);
  Remplit();
  connect(&m_liste, &QListWidget::itemDoubleClicked, this, [this] { accept(); });
  Boutons(Mode::Simple);
}

int CDialogOpenExercice::exec() {
  if (App().Magasin.GetExercicesRec() != 0) return CZNDialog::exec();
  App().ReportErreur(ErrPasDExercice);
  return Rejected;
}

void CDialogOpenExercice::Remplit() {
  const std::string courant = App().NomExercice.empty() ? App().Magasin.GetLastExercice() : App().NomExercice;
  for (const LigneExercice& ligne : LignesExercices(App())) {
    auto* element = new QListWidgetItem(ImageExercice(ligne.cloture), Q(ligne.texte), &m_liste);
    element->setData(Qt::UserRole, Q(ligne.nom));
    element->setData(Qt::AccessibleTextRole, LigneParlee(ligne));
    if (ligne.cloture) element->setToolTip(u"Exercice clôturé"_s);
    if (ligne.nom == courant) m_liste.setCurrentItem(element);
  }
}

bool CDialogOpenExercice::Enregistre() {
  const QListWidgetItem* choisi = m_liste.currentItem();
  if (!choisi || !choisi->isSelected()) return false;
  if (m_avecMotDePasse && !CDialogPassword(Contexte(), this).Execute()) return false;
  m_destination = De1252(choisi->data(Qt::UserRole).toString());
  // Who opens the exercice says so when the name cannot be noted.
  App().Reglages.EcritIni(Texte(SecActivite), Texte(CleExercice), m_destination);
  return true;
}

}  // namespace fenlor
