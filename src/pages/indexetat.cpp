#include "pages/indexetat.h"

#include <cassert>

namespace fenlor {

bool CommenceEnTitre(std::string_view bloc) {
  constexpr std::size_t argument = 3;
  bool gras = false;
  for (std::size_t i = 0; i < bloc.size(); ++i) {
    const char c = bloc[i];
    if (c == '\n' || c == '\r' || c == ' ') continue;
    if (c != '\\' || i + 1 == bloc.size()) return gras;
    const char code = bloc[++i];
    if (code == 'S') return false;
    if (code == '0' || code == 'B') gras = code == 'B';
    if (std::string_view("TRCMN").find(code) != std::string_view::npos) i += argument;
  }
  return false;
}

void CompteurBlocs::Compte(std::string_view texte, u32 lignesEntete, u32 lignesPied,
                           std::vector<BlocEtat>& fermes) {
  assert(m_ouvert.lignes == 0 && m_ouvert.drapeaux == 0);  // each write closes its last block
  [[maybe_unused]] const u32 avant = m_offset;
  bool debutLigne = true;
  bool ferme = true;
  const std::size_t taille = texte.size();
  std::size_t debutBloc = 0;
  const auto finit = [&](std::size_t fin) {
    if (CommenceEnTitre(texte.substr(debutBloc, fin - debutBloc))) m_ouvert.drapeaux |= BlocTitre;
    debutBloc = fin;
    Ferme(fermes);
  };
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
        finit(i + 1);
        ferme = true;
        break;
      default:
        break;
    }
  }
  if (!ferme) finit(taille);
  assert(m_offset - avant == static_cast<u32>(taille));
  assert(taille == 0 || fermes.back().fin == m_offset);
}

void CompteurBlocs::CompteBloc(std::size_t taille, u32 lignes, bool titre, std::vector<BlocEtat>& fermes) {
  assert(taille > 0 && m_ouvert.lignes == 0 && m_ouvert.drapeaux == 0);
  m_offset += static_cast<u32>(taille);
  m_ouvert.lignes = lignes;
  if (titre) m_ouvert.drapeaux = BlocTitre;
  Ferme(fermes);
}

void CompteurBlocs::Ferme(std::vector<BlocEtat>& fermes) {
  m_ouvert.fin = m_offset;
  assert(fermes.empty() || fermes.back().fin < m_ouvert.fin);
  fermes.push_back(m_ouvert);
  m_nbLignes += m_ouvert.lignes;
  m_ouvert = {};
}

}  // namespace fenlor
