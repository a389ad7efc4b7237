#include "ui/dialogfiche.h"

#include <QPushButton>

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

DialogFiche::DialogFiche(ContexteUi& contexte, const char* nom, const TableFiche& table, void* fiche,
                         SuiteFiches* vue, Position position, QWidget* parent)
    : CZNDialog(contexte, {}, nom, parent),
      m_table(table),
      m_fiche(fiche),
      m_vue(vue),
      m_position(position),
      m_derniere(position) {}

int DialogFiche::exec() { return m_lu ? CZNDialog::exec() : static_cast<int>(Rejected); }

void DialogFiche::Ouvre() {
  if (Ajout())
    Commence();
  else
    m_lu = LitA(m_position);
  Boutons(Ajout() ? Mode::Ajout : Mode::Modification, true);
  Presente();
}

void DialogFiche::Presente() {
  Montre();
  MontreTitre();
  const auto permet = [this](const QString& nom, int pas) {
    if (auto* bouton = findChild<QPushButton*>(nom))
      bouton->setEnabled(!Ajout() && m_vue && m_vue->Voisin(pas) != 0);
  };
  permet(u"precedent"_s, -1);
  permet(u"suivant"_s, 1);
  FigeSiCloture();
}

bool DialogFiche::Enregistre() {
  Position position = 0;
  if (const Refus refus = SauveSaisie(position)) return Refuse(refus);
  m_derniere = position;
  m_aChange = true;
  if (!Ajout()) {
    m_position = position;
    if (m_vue) m_vue->Remplace(position);
  }
  return true;
}

void DialogFiche::Vide() {
  Commence();
  Presente();
}

void DialogFiche::Voisin(int pas) {
  const Position position = m_vue ? m_vue->Voisin(pas) : 0;
  if (position == 0 || !LitA(position)) return;
  m_vue->VaVers(pas);
  m_position = m_derniere = position;
  Presente();
}

}  // namespace fenlor
