#include "forms/journal/formulaireecriture.h"

#include <QPushButton>

#include "forms/journal/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

FormulaireEcriture::FormulaireEcriture(ContexteUi& contexte, const QString& titre, const char* nom,
                                       const OuvertureEcriture& ouverture, QWidget* parent)
    : CZNDialog(contexte, titre, nom, parent),
      m_ouverture(ouverture),
      m_cloture(contexte.App.Reglages.IsFige()),
      m_mouvement(ouverture.mouvement),
      m_monnaie(contexte.App) {}

int FormulaireEcriture::exec() { return m_lue ? CZNDialog::exec() : int{Rejected}; }

void FormulaireEcriture::done(int resultat) {
  CZNDialog::done(resultat);
  m_garde.Oublie();
}

void FormulaireEcriture::showEvent(QShowEvent* evenement) {
  CZNDialog::showEvent(evenement);
  // After the base noted what stood there: all of it was typed.
  if (m_ouverture.reprise && !m_vue) Reprend(*m_ouverture.reprise);
  m_vue = true;
  m_garde.Commence();
}

void FormulaireEcriture::Commence() {
  m_jour.Pose(m_ouverture.date);
  m_monnaie.Pose(App().Reglages.IsEuro());
  m_monnaie.Ouvre(m_ouverture.date);
}

void FormulaireEcriture::NoteVoisins(bool operationsDiverses) {
  const bool toutes = operationsDiverses && m_ouverture.journal == JournalOD;
  m_voisins.Note(m_ouverture.consultation ? nullptr : m_ouverture.proprietaire, [=, this](u32 voisin) {
    Mouvement entete{};
    return toutes || (App().Magasin.ReadMouvements(App().PathExercice, voisin, entete) &&
                      (entete.Genre == GenreOD) == operationsDiverses);
  });
}

void FormulaireEcriture::MontreVoisins() {
  for (const auto& [nom, pas] : {std::pair{u"precedent"_s, -1}, {u"suivant"_s, 1}})
    if (auto* bouton = findChild<QPushButton*>(nom, Qt::FindDirectChildrenOnly))
      bouton->setEnabled(m_voisins.De(pas) != 0);
}

void FormulaireEcriture::NoteFaite(const EcritureFaite& faite) {
  m_derniere = faite.mouvement;
  m_change = true;
  m_garde.Oublie();
}

void FormulaireEcriture::Voisin(int pas) {
  if (const u32 voisin = m_voisins.De(pas)) {
    ChoisitEcriture(*m_ouverture.proprietaire, voisin);
    Charge(voisin);
  }
  Actualise();
}

const TexteFixe& FormulaireEcriture::QuestionFermer() const { return QuestionEnregistrer; }

}  // namespace fenlor
