#include "pages/indexetat.h"

namespace fenlor {

void CompteurBlocs::Compte(std::string_view texte, u32 lignesEntete, u32 lignesPied,
                           std::vector<BlocEtat>& fermes) {
  bool debutLigne = true;
  bool ferme = true;
  const std::size_t taille = texte.size();
  for (std::size_t i = 0; i < taille; ++i) {
    ++m_offset;
    const char c = texte[i];
    ferme = false;
    if (c == '\n') {
      ++m_ouvert.lignes;
      debutLigne = true;
      continue;
    }
    const bool auDebut = debutLigne;
    debutLigne = false;
    if (c != '\\' || i + 1 == taille) continue;
    ++i;
    ++m_offset;
    switch (texte[i]) {
      case 'F':
        m_ouvert.lignes += lignesPied;
        break;
      case 'H':
        m_ouvert.lignes += lignesEntete;
        m_ouvert.drapeaux |= BlocEntete;
        break;
      case 'X':
        m_ouvert.drapeaux |= BlocFinEntete;
        break;
      case 'P':
        m_ouvert.drapeaux |= BlocSaut;
        if (!auDebut) ++m_ouvert.lignes;
        [[fallthrough]];
      case 'G':
        Ferme(fermes);
        ferme = true;
        break;
      default:
        break;
    }
  }
  if (!ferme) Ferme(fermes);
}

void CompteurBlocs::Ferme(std::vector<BlocEtat>& fermes) {
  m_ouvert.fin = m_offset;
  fermes.push_back(m_ouvert);
  m_nbLignes += m_ouvert.lignes;
  m_ouvert = {};
}

}  // namespace fenlor
