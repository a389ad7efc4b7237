#include "reports/livresetat.h"

#include <cassert>

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "pages/formatetat.h"
#include "store/indicescles.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::size_t LargeurCompte = 10;

}  // namespace

bool LivresEtat::Ouvre() {
  assert(!m_plan && !m_lignes);
  if (m_app.PathExercice.empty())
    m_etat.Abandonne(Refus(ErrAucunExercice));
  else if (!m_plan.emplace(m_app, m_app.PathExercice).OpenFile() ||
           !m_lignes.emplace(m_app, m_app.PathExercice).OpenFile())
    m_etat.Abandonne(EchecFichier());
  return m_etat.EnCours();
}

u32 LivresEtat::NombreComptes() const {
  assert(m_plan);
  return m_app.Magasin.QVNumberOfKey(m_plan->NumCle);
}
u32 LivresEtat::NombreLignes() const {
  assert(m_lignes);
  return m_app.Magasin.QVNumberOfKey(m_lignes->NumCle);
}

std::string LivresEtat::CompteCourt(const Plan& plan) const {
  return EchappeEtat(m_app.NumeroCourt(LitTexte(plan.Compte)));
}

void LivresEtat::Comptes(const SuiteComptes& suite) { ParcoursComptes(IndicePlanCompte, {}, {}, suite); }

void LivresEtat::ComptesDuType(i16 type, const SuiteComptes& suite) {
  assert(type >= 0 && type <= 8);  // one digit in the key
  ParcoursComptes(IndicePlanType, std::to_string(type), std::to_string(type + 1), suite);
}

void LivresEtat::Compte(std::string_view compte, const SuiteComptes& suite) {
  const std::string cle = MakePlanKey1(compte);
  ParcoursComptes(IndicePlanCompte, cle, cle + '\0', suite);
}

void LivresEtat::LignesDuCompte(std::string_view compte, Date du, Date au, const SuiteLignes& suite) {
  const std::string prefixe = MakeJournalKey3(compte, 0, 0, 0, 0, 0).substr(0, LargeurCompte);
  assert(prefixe.size() == LargeurCompte);
  ParcoursLignes(IndiceCompteDate, prefixe, du, au, suite);
}

void LivresEtat::LignesDepuis(std::string_view compte, Date du,
                              const std::function<bool(const Line&)>& suite) {
  assert(m_lignes && suite);
  ParcourtFichier<Line>(m_app, m_etat, *m_lignes, IndiceCompteDate, MakeJournalKey3(compte, du, 0, 0, 0, 0),
                        {}, suite);
}

void LivresEtat::LignesDatees(Date du, Date au, const SuiteLignes& suite) {
  ParcoursLignes(IndiceDateCompte, {}, du, au, suite);
}

void LivresEtat::EchecLecture() {
  assert(m_lignes);
  m_lignes->ErreurLecture();
  m_etat.Abandonne(EchecFichier());
}

void LivresEtat::ParcoursComptes(u32 cle, const std::string& debut, const std::string& fin,
                                 const SuiteComptes& suite) {
  assert(m_plan && (fin.empty() || debut < fin));
  ParcourtFichier<Plan>(m_app, m_etat, *m_plan, cle, debut, fin, suite);
}

void LivresEtat::ParcoursLignes(u32 cle, const std::string& prefixe, Date du, Date au,
                                const SuiteLignes& suite) {
  assert(m_lignes);
  assert(prefixe.empty() || prefixe.size() == LargeurCompte);
  ParcourtFichier<Line>(m_app, m_etat, *m_lignes, cle, prefixe + StrSDate(du),
                        prefixe + StrSDate(au) + '\xFF', suite);
}

}  // namespace fenlor
