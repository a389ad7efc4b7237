#include "forms/graphiques/dialogprintgraph.h"

#include <algorithm>

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogPrintGraph::CDialogPrintGraph(ContexteUi& contexte, TaillePapier& taille, QWidget* parent)
    : CZNDialog(contexte, u"Impression du graphique"_s, "DialogPrintGraph", parent), m_taille(taille) {
  Formulaire{Zone()}
      .Groupe(u"Surface utilisée"_s)
      .Case(m_tailles[0], u"P&leine page"_s, "pleine")
      .Case(m_tailles[1], u"&Demi page"_s, "demi")
      .Case(m_tailles[2], u"&Quart de page"_s, "quart")
      .Case(m_tailles[3], u"&Proportionnelle"_s, "proportionnelle")
      .FinGroupe();
  QRadioButton& choisie = m_tailles[static_cast<std::size_t>(taille)];
  choisie.setChecked(true);
  Boutons(Mode::Simple);
  AjouteAide();
  choisie.setFocus();
}

bool CDialogPrintGraph::Enregistre() {
  const auto cochee = std::find_if(m_tailles.begin(), m_tailles.end(),
                                   [](const QRadioButton& bouton) { return bouton.isChecked(); });
  m_taille = static_cast<TaillePapier>(cochee - m_tailles.begin());
  return true;
}

}  // namespace fenlor
