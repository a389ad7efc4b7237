#include "recherche/requete.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "core/valeurs.h"
#include "store/dates.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::string_view blancs = " \t\r\n";
constexpr f64 montantMax = 1e13;  ///< in cents still exact

bool EstChiffre(char c) { return c >= '0' && c <= '9'; }
bool EstMotif(char c) { return EstChiffre(c) || (c >= 'A' && c <= 'Z') || static_cast<u8>(c) >= 0x80; }
bool Chiffres(std::string_view texte) {
  return !texte.empty() && std::all_of(texte.begin(), texte.end(), EstChiffre);
}
unsigned Nombre(std::string_view chiffres) {
  assert(chiffres.size() <= 8);
  unsigned nombre = 0;
  assert(chiffres.empty() || Chiffres(chiffres));
  for (const char c : chiffres) nombre = 10 * nombre + static_cast<unsigned>(c - '0');
  return nombre;
}

std::string Plie(std::string_view texte) {
  std::string plie;
  AjouteSansAccents(plie, texte);
  return plie;
}

/// 1 to 12 for the name of a month, 0 for any other word.
unsigned MoisNomme(std::string_view plie) {
  for (unsigned mois = 1; mois <= 12; ++mois)
    if (plie == Plie(NomMois(mois))) return mois;
  return 0;
}

/// Two digits are of the century that the date fields take them for; 0 for none.
unsigned AnneeEcrite(std::string_view chiffres) {
  if (chiffres.size() == 4) return Nombre(chiffres);
  if (chiffres.empty() || chiffres.size() > 2) return 0;
  return Nombre(chiffres) + (Nombre(chiffres) >= 50 ? 1900 : 2000);
}

/// A year, a month of a year, a day of a month; a leap year stands for one that is not told.
bool Existe(const DateCherchee& d) {
  if (d.jour == 0) return d.mois <= 12 && d.annee > 0;
  return IsDateOk(FaitDate(d.jour, d.mois, d.annee ? d.annee : 2000));
}

std::vector<std::string_view> Parties(std::string_view texte, std::string_view separateurs) {
  assert(!separateurs.empty());
  std::vector<std::string_view> parties;
  while (true) {
    const std::size_t fin = texte.find_first_of(separateurs);
    parties.push_back(texte.substr(0, fin));
    if (fin == std::string_view::npos) return parties;
    texte.remove_prefix(fin + 1);
  }
}

std::vector<DateCherchee> DatesDe(std::string_view mot) {
  std::vector<DateCherchee> dates;
  const auto ajoute = [&dates](const DateCherchee& date) {
    if (Existe(date)) dates.push_back(date);
  };
  std::vector<std::string_view> parties = Parties(mot, "/.-");
  if (!std::all_of(parties.begin(), parties.end(), Chiffres)) return dates;
  if (parties.size() == 1) {
    const std::string_view chiffres = parties[0];
    if (chiffres.size() == 4 && Nombre(chiffres) >= 1900 && Nombre(chiffres) < 2100)
      ajoute({0, 0, Nombre(chiffres)});
    if (chiffres.size() != 4 && chiffres.size() != 6 && chiffres.size() != 8) return dates;
    parties = {chiffres.substr(0, 2), chiffres.substr(2, 2)};
    if (chiffres.size() > 4) parties.push_back(chiffres.substr(4));
  }
  const auto courte = [&](std::size_t i) { return parties[i].size() <= 2; };
  if (parties.size() == 2 && courte(0) && courte(1)) ajoute({Nombre(parties[0]), Nombre(parties[1]), 0});
  if (parties.size() == 2 && courte(0) && Nombre(parties[0]) > 0 && parties[1].size() == 4)
    ajoute({0, Nombre(parties[0]), Nombre(parties[1])});
  if (parties.size() == 3 && courte(0) && courte(1) && AnneeEcrite(parties[2]) > 0)
    ajoute({Nombre(parties[0]), Nombre(parties[1]), AnneeEcrite(parties[2])});
  if (parties.size() == 3 && parties[0].size() == 4 && courte(1) && courte(2))
    ajoute({Nombre(parties[2]), Nombre(parties[1]), Nombre(parties[0])});
  return dates;
}

void LitMontant(std::string_view mot, MotCherche& cherche) {
  // 0703 is the 7th of March.
  if (mot.size() > 1 && mot[0] == '0' && Chiffres(mot)) return;
  const std::optional<std::string> norme = NormeMontant(mot);
  if (!norme || norme->empty()) return;
  const f64 centimes = std::fabs(std::strtod(norme->c_str(), nullptr)) * 100;
  if (centimes >= montantMax) return;
  cherche.montant = std::llround(centimes);
  cherche.avecCentimes = norme->find('.') != std::string::npos;
}

}  // namespace

bool DateCherchee::Convient(Date date) const {
  return (jour == 0 || jour == Jour(date)) && (mois == 0 || mois == Mois(date)) &&
         (annee == 0 || annee == Annee(date));
}

bool MotCherche::Montant(i64 centimes) const {
  if (!montant) return false;
  assert(*montant >= 0);
  const i64 valeur = centimes < 0 ? -centimes : centimes;
  return avecCentimes ? valeur == *montant : valeur - valeur % 100 == *montant && valeur != 0;
}

Force MotCherche::SurDate(Date date) const {
  Force force = ForceAucune;
  for (const DateCherchee& d : dates)
    if (d.Convient(date)) force = std::max(force, d.jour != 0 ? ForceExacte : ForceDebut);
  return force;
}

Requete::Requete(std::string_view texte) {
  std::vector<std::string_view> mots;
  for (const std::string_view mot : Parties(texte, blancs))
    if (!mot.empty()) mots.push_back(mot);
  for (std::size_t i = 0; i < mots.size(); ++i) {
    if (m_mots.size() == MotsAuPlus) {
      m_trop = true;
      return;
    }
    MotCherche& mot = m_mots.emplace_back();
    mot.plie = Plie(mots[i]);
    mot.dates = DatesDe(mots[i]);
    if (const unsigned mois = MoisNomme(mot.plie)) mot.dates.push_back({0, mois, 0});
    if (Chiffres(mots[i]) && mots[i].size() <= 2 && i + 1 < mots.size())
      if (const DateCherchee date{Nombre(mots[i]), MoisNomme(Plie(mots[i + 1])), 0};
          date.mois && Existe(date)) {
        mot.dates.push_back(date);
        mot.forceMontant = ForceDebut;
      }
    LitMontant(mots[i], mot);
  }
}

bool Requete::AvecMontant() const {
  return std::any_of(m_mots.begin(), m_mots.end(), [](const MotCherche& m) { return m.montant.has_value(); });
}

void Accord::Note(std::size_t mot, Force force) {
  assert(mot < Requete::MotsAuPlus);
  if (force > De(mot)) m_forces = (m_forces & ~(u64{3} << (2 * mot))) | u64{force} << (2 * mot);
}

void Accord::Ajoute(const Accord& autre) {
  for (std::size_t mot = 0; autre.m_forces >> (2 * mot); ++mot) {
    Note(mot, autre.De(mot));
    if (mot + 1 == Requete::MotsAuPlus) break;
  }
}

bool Accord::Entier(const Requete& requete) const {
  assert(requete.Mots().size() <= Requete::MotsAuPlus);
  for (std::size_t mot = 0; mot < requete.Mots().size(); ++mot)
    if (De(mot) == ForceAucune) return false;
  return true;
}

unsigned Accord::Note(const Requete& requete) const {
  unsigned somme = 0;
  for (std::size_t mot = 0; mot < requete.Mots().size(); ++mot) somme += De(mot);
  const auto nombre = static_cast<unsigned>(requete.Mots().size());
  return nombre == 0 ? 0 : somme * 100 / (nombre * ForceExacte);
}

void Comparateur::Texte(std::string_view texte, Accord& accord, Force auPlus) {
  assert(auPlus != ForceAucune);
  if (texte.empty()) return;
  m_plie.clear();
  AjouteSansAccents(m_plie, texte);
  for (std::size_t mot = 0; mot < m_requete.Mots().size(); ++mot) {
    const std::string& plie = m_requete.Mots()[mot].plie;
    if (plie.empty() || accord.De(mot) >= auPlus) continue;
    std::size_t place = m_plie.find(plie);
    if (place == std::string::npos) continue;
    Force force = plie.size() == m_plie.size() ? ForceExacte : ForceDedans;
    for (; force == ForceDedans && place != std::string::npos; place = m_plie.find(plie, place + 1))
      if (place == 0 || !EstMotif(m_plie[place - 1])) force = ForceDebut;
    accord.Note(mot, std::min(force, auPlus));
  }
}

void Comparateur::Code(std::string_view code, Accord& accord) {
  if (code.empty()) return;
  m_plie.clear();
  AjouteSansAccents(m_plie, code);
  for (std::size_t mot = 0; mot < m_requete.Mots().size(); ++mot) {
    const std::string& plie = m_requete.Mots()[mot].plie;
    if (!plie.empty() && m_plie.starts_with(plie))
      accord.Note(mot, plie.size() == m_plie.size() ? ForceExacte : ForceDebut);
  }
}

}  // namespace fenlor
