#include "reports/livresetat.h"

#include <cstring>

#include "core/textes.h"
#include "core/valeurs.h"
#include "pages/formatetat.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr u32 CleNumero = 0, CleType = 3;            // of the chart
constexpr u32 CleCompteDate = 2, CleDateCompte = 3;  // of the journal
constexpr std::size_t LargeurCompte = 10;
constexpr unsigned erreurSansExercice = 3209;

}  // namespace

std::string_view NomDeLigne(const Line& ligne) {
  const bool propre = ligne.Genre == GenreOD && ligne.Designation[0] != '\0';
  return propre ? std::string_view(ligne.Designation, strnlen(ligne.Designation, sizeof ligne.Designation))
                : std::string_view(ligne.Libelle, strnlen(ligne.Libelle, sizeof ligne.Libelle));
}

bool LivresEtat::Ouvre() {
  if (m_app.PathExercice.empty()) return m_app.ReportErreur(erreurSansExercice);
  return m_plan.emplace(m_app, m_app.PathExercice).OpenFile() &&
         m_lignes.emplace(m_app, m_app.PathExercice).OpenFile();
}

u32 LivresEtat::NombreComptes() const { return m_app.Magasin.QVNumberOfKey(m_plan->NumCle); }
u32 LivresEtat::NombreLignes() const { return m_app.Magasin.QVNumberOfKey(m_lignes->NumCle); }

std::string LivresEtat::CompteCourt(const Plan& plan) const {
  return EchappeEtat(CompacteTexte(m_app.Magasin.GetShortCompte(LitTexte(plan.Compte))));
}

bool LivresEtat::Comptes(const SuiteComptes& suite) { return ParcoursComptes(CleNumero, {}, {}, suite); }

bool LivresEtat::ComptesDuType(i16 type, const SuiteComptes& suite) {
  return ParcoursComptes(CleType, std::to_string(type), std::to_string(type + 1), suite);
}

bool LivresEtat::Compte(std::string_view compte, const SuiteComptes& suite) {
  const std::string cle = MakePlanKey1(compte);
  return ParcoursComptes(CleNumero, cle, cle + '\0', suite);
}

bool LivresEtat::LignesDuCompte(std::string_view compte, Date du, Date au, const SuiteLignes& suite) {
  const std::string prefixe = MakeJournalKey3(compte, 0, 0, 0, 0, 0).substr(0, LargeurCompte);
  return ParcoursLignes(CleCompteDate, prefixe, du, au, suite);
}

bool LivresEtat::LignesDepuis(std::string_view compte, Date du, const SuiteLignes& suite) {
  const auto ligne = [&](Position, const void* rec) { return suite(*static_cast<const Line*>(rec)); };
  return m_app.Magasin.QVParcoursCle(static_cast<u16>(m_lignes->NumCle + CleCompteDate),
                                     MakeJournalKey3(compte, du, 0, 0, 0, 0), {}, ligne) ||
         EchecLecture();
}

bool LivresEtat::LignesDatees(Date du, Date au, const SuiteLignes& suite) {
  return ParcoursLignes(CleDateCompte, {}, du, au, suite);
}

bool LivresEtat::EchecLecture() {
  m_lignes->Erreur(0, MessageLecture);
  return false;
}

bool LivresEtat::ParcoursComptes(u32 cle, const std::string& debut, const std::string& fin,
                                 const SuiteComptes& suite) {
  const auto compte = [&](Position, const void* rec) { return suite(*static_cast<const Plan*>(rec)); };
  if (m_app.Magasin.QVParcoursCle(static_cast<u16>(m_plan->NumCle + cle), debut, fin, compte)) return true;
  m_plan->Erreur(0, MessageLecture);
  return false;
}

bool LivresEtat::ParcoursLignes(u32 cle, const std::string& prefixe, Date du, Date au,
                                const SuiteLignes& suite) {
  const std::string debut = prefixe + StrSDate(du), fin = prefixe + StrSDate(au) + '\xFF';
  const auto ligne = [&](Position, const void* rec) { return suite(*static_cast<const Line*>(rec)); };
  return m_app.Magasin.QVParcoursCle(static_cast<u16>(m_lignes->NumCle + cle), debut, fin, ligne) ||
         EchecLecture();
}

}  // namespace fenlor
