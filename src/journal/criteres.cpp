#include "journal/criteres.h"

#include <algorithm>

#include "store/cumuls.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

std::string_view SansBlancsDerriere(std::string_view texte) {
  return texte.substr(0, texte.find_last_not_of(' ') + 1);
}

bool Entre(std::string_view texte, const std::string& de, const std::string& a) {
  return de <= texte && texte <= a;
}

bool MarquesPresentes(const CritereEcriture& c, const LigneCritere& ligne) {
  return (!c.Pointees || ligne.pointee) && (!c.Remises || ligne.remise) &&
         (!c.Rapprochees || ligne.rapprochee) && (!c.Associees || ligne.associee);
}

bool MarquesAbsentes(const CritereEcriture& c, const LigneCritere& ligne) {
  return !(c.NonPointees && ligne.pointee) && !(c.NonRemises && ligne.remise) &&
         !(c.NonRapprochees && ligne.rapprochee) && !(c.NonAssociees && ligne.associee);
}

/// Bounds of the texts, cut out of the record once for all lines of an entry.
class Bornes {
 public:
  explicit Bornes(const CritereEcriture& criteres)
      : m_criteres(criteres),
        m_compteDe(LitTexte(criteres.CompteDe)),
        m_compteA(LitTexte(criteres.CompteA)),
        m_rubriqueDe(SansBlancsDerriere(LitTexte(criteres.RubriqueDe))),
        m_rubriqueA(SansBlancsDerriere(LitTexte(criteres.RubriqueA))) {}

  bool Contient(const LigneCritere& ligne) const {
    return (m_criteres.TousComptes || Entre(ligne.court, m_compteDe, m_compteA)) &&
           (m_criteres.ToutesRubriques ||
            Entre(SansBlancsDerriere(ligne.rubrique), m_rubriqueDe, m_rubriqueA)) &&
           (m_criteres.TousJours || (ligne.jour >= m_criteres.JourDe && ligne.jour <= m_criteres.JourA));
  }

 private:
  const CritereEcriture& m_criteres;
  const std::string m_compteDe, m_compteA, m_rubriqueDe, m_rubriqueA;
};

bool MontantDansBornes(const CritereEcriture& criteres, const std::string& filtre,
                       const std::vector<LigneCritere>& lignes) {
  if (criteres.TousMontants) return true;
  i64 somme = 0;
  for (const LigneCritere& ligne : lignes) {
    if (ligne.credit || (!filtre.empty() && ligne.compte != filtre)) continue;
    somme += Centimes(criteres.MontantEuro ? ligne.euro : ligne.franc);
  }
  const f64 montant = DeCentimes(somme);
  return criteres.MontantMin <= montant && montant <= criteres.MontantMax;
}

}  // namespace

CritereEcriture CriteresParDefaut(CFenlorApp& app) {
  CritereEcriture criteres;
  criteres.MontantEuro = app.Reglages.IsEuro();
  return criteres;
}

void NormaliseCriteres(CFenlorApp& app, CritereEcriture& c) {
  constexpr u16 autonome = 2;
  if (app.Edition == autonome) c.Associees = c.NonAssociees = 0;
  const bool marque = c.Pointees || c.Remises || c.Rapprochees || c.Associees || c.NonPointees ||
                      c.NonRemises || c.NonRapprochees || c.NonAssociees;
  if (!marque) c.Toutes = 1;
  if (c.MontantMin == 0 && c.MontantMax == 0) c.TousMontants = 1;
  if (!c.CompteDe[0] || !c.CompteA[0]) c.TousComptes = 1;
  if (!c.RubriqueDe[0] || !c.RubriqueA[0]) c.ToutesRubriques = 1;
  if (!c.JourDe || !c.JourA) c.TousJours = 1;
}

bool EstPartielle(const CritereEcriture& c) {
  return !(c.Toutes && c.TousMontants && c.TousComptes && c.ToutesRubriques && c.TousJours);
}

bool PasseCriteres(const CritereEcriture& criteres, const std::string& filtre,
                   const std::vector<LigneCritere>& lignes) {
  if (lignes.empty()) return false;
  if (!criteres.Toutes) {
    const auto presentes = [&](const LigneCritere& ligne) { return MarquesPresentes(criteres, ligne); };
    const auto absentes = [&](const LigneCritere& ligne) { return MarquesAbsentes(criteres, ligne); };
    if (std::none_of(lignes.begin(), lignes.end(), presentes)) return false;
    if (!std::all_of(lignes.begin(), lignes.end(), absentes)) return false;
  }
  const Bornes bornes(criteres);
  const auto contient = [&](const LigneCritere& ligne) { return bornes.Contient(ligne); };
  return std::any_of(lignes.begin(), lignes.end(), contient) && MontantDansBornes(criteres, filtre, lignes);
}

}  // namespace fenlor
