#include "forms/journal/voisins.h"

namespace fenlor {

void VoisinsEcriture::Note(const ListeEcritures* liste, const std::function<bool(u32)>& convient) {
  m_avant = m_apres = 0;
  const int ici = liste ? liste->GetEcrSel() : -1;
  if (ici < 0) return;
  const auto cherche = [&](int pas) -> u32 {
    for (int rang = ici + pas; rang >= 0 && rang < liste->GetEcrCount(); rang += pas)
      if (const u32 mouvement = liste->GetEcrId(rang); mouvement && convient(mouvement)) return mouvement;
    return 0;
  };
  m_avant = cherche(-1);
  m_apres = cherche(1);
}

void ChoisitEcriture(ListeEcritures& liste, u32 mouvement) {
  int rang = 0;
  while (rang < liste.GetEcrCount() && liste.GetEcrId(rang) != mouvement) ++rang;
  if (rang == liste.GetEcrCount()) return;
  for (int ici = liste.GetEcrSel(); ici >= 0 && ici != rang;) {
    ici < rang ? liste.SelectNext() : liste.SelectPrev();
    const int suivant = liste.GetEcrSel();
    if (suivant == ici) return;
    ici = suivant;
  }
}

}  // namespace fenlor
