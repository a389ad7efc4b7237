#include "master/lotreglages.h"

#include <cassert>

#include "core/textes.h"
#include "core/valeurs.h"

namespace fenlor {

namespace {

/// Calls `acte` with section, key and text of each field that is a setting.
template <class Acte>
void PourChaque(const TableFiche& table, const void* options, const std::string& section, const Acte& acte) {
  const std::string ici = section.empty() ? Texte({0, table.enregistrement}) : section;
  assert(!ici.empty());
  for (const ChampFiche& champ : table.champs)
    if (*champ.stocke) acte(ici, Texte({0, champ.stocke}), *std::get<std::string*>(ValeurDe(champ, options)));
}

}  // namespace

void LitReglages(const CFenlorApp& app, const TableFiche& table, void* options, const std::string& section) {
  PourChaque(table, options, section,
             [&](const std::string& ici, const std::string& cle, std::string& texte) {
               texte = app.Reglages.LitIni(ici, cle);
             });
}

void LotReglages::Pose(const TableFiche& table, const void* options, const std::string& section) {
  PourChaque(table, options, section,
             [&](const std::string& ici, const std::string& cle, const std::string& texte) {
               Pose(ici, cle, texte);
             });
}

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
