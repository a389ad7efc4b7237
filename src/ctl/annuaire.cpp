#include "ctl/annuaire.h"

#include <algorithm>
#include <cstring>

#include "core/valeurs.h"
#include "store/definitions.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

std::string CodeNorme(std::string_view code) { return EnMajuscules(CompacteTexte(code)); }

}  // namespace

bool AnnuaireComptes::Charge(CFenlorApp& app) {
  m_comptes.clear();
  const bool lu = app.Magasin.QVParcours(FichierComptes, [this](Position, const void* rec) {
    Plan plan;
    std::memcpy(&plan, rec, sizeof plan);
    m_comptes.push_back(plan);
    return true;
  });
  if (!lu) return false;

  std::sort(m_comptes.begin(), m_comptes.end(),
            [](const Plan& a, const Plan& b) { return LitTexte(a.Compte) < LitTexte(b.Compte); });
  m_parNumero.clear();
  m_parCode.clear();
  for (std::size_t i = 0; i < m_comptes.size(); ++i) {
    m_parNumero.emplace(LitTexte(m_comptes[i].Compte), i);
    const std::string code = CodeNorme(LitTexte(m_comptes[i].Code));
    if (!code.empty()) m_parCode[code].push_back(i);
  }
  return true;
}

const Plan* AnnuaireComptes::ParNumero(const std::string& longue) const {
  const auto it = m_parNumero.find(longue);
  return it == m_parNumero.end() ? nullptr : &m_comptes[it->second];
}

const Plan* AnnuaireComptes::ParCode(int type, const std::string& code) const {
  const auto it = m_parCode.find(CodeNorme(code));
  if (it == m_parCode.end()) return nullptr;
  for (const std::size_t i : it->second)
    if (type < 0 || m_comptes[i].Type == type) return &m_comptes[i];
  return nullptr;
}

}  // namespace fenlor
