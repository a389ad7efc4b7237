#include "master/lotreglages.h"

#include "core/textes.h"
#include "core/valeurs.h"

namespace fenlor {

void LotReglages::Pose(const std::string& section, const std::string& cle, const std::string& valeur) {
  std::string texte = EncodeRetours(valeur);
  for (char& c : texte)
    if (static_cast<unsigned char>(c) < 32) c = ' ';
  PoseBrut(section, cle, texte);
}

void LotReglages::PoseOui(const std::string& section, const std::string& cle, bool oui) {
  if (Parametres::IsOui(m_app.Reglages.LitIni(section, cle)) != oui)
    Pose(section, cle, Texte(oui ? MotOui : MotNon));
}

void LotReglages::PoseBrut(const std::string& section, const std::string& cle, const std::string& valeur) {
  if (m_app.Magasin.Reglages().Lit(section, cle) != valeur) m_changements.push_back({section, cle, valeur});
}

void LotReglages::Supprime(const std::string& section, const std::string& cle) {
  m_changements.push_back({section, cle, std::nullopt});
}

bool LotReglages::Ecrit() {
  // Even without a change: what could not be read must not pass for written.
  return m_app.Magasin.Reglages().Ecrit(m_changements);
}

}  // namespace fenlor
