#include "store/annulation.h"

#include <cassert>

namespace fenlor {

std::size_t UniteRetenue::Taille() const {
  std::size_t taille = sizeof *this + nom.size() + octets.size() + ecarts.size() * sizeof(Ecart);
  for (const ReglageRetenu& r : reglages) taille += sizeof r + r.avant.size() + r.apres.size();
  for (const TexteRetenu& t : textes) taille += sizeof t + t.avant.size() + t.apres.size();
  return taille;
}

void Retenues::Borne() {
  while (!m_faites.empty() && (m_taille > RetenueMax || m_faites.size() > UnitesRetenuesMax)) {
    m_taille -= m_faites.front().Taille();
    m_faites.pop_front();
  }
  ++m_version;
}

void Retenues::Ajoute(UniteRetenue unite) {
  for (const UniteRetenue& u : m_defaites) m_taille -= u.Taille();
  m_defaites.clear();
  m_taille += unite.Taille();
  m_faites.push_back(std::move(unite));
  Borne();
}

void Retenues::Bascule(bool refaire, UniteRetenue contraire) {
  assert(!Pile(refaire).empty());
  m_taille -= Pile(refaire).back().Taille();
  Pile(refaire).pop_back();
  m_taille += contraire.Taille();
  Pile(!refaire).push_back(std::move(contraire));
  Borne();
}

void Retenues::Oublie() {
  m_faites.clear();
  m_defaites.clear();
  m_taille = 0;
  ++m_version;
}

}  // namespace fenlor
