// Account numbers, special accounts, Franc and Euro.
#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>

#include "store/etat.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::size_t LongueurCompte = 10;
constexpr f64 TauxLegal = 6.55957;
constexpr const char* SectionComptes = "COMPTES";

bool EstBlancCompte(char c) { return static_cast<unsigned char>(c) <= 32 || c == '\xA0'; }

/// Number of leading characters of an account number that stay, zeros included.
std::size_t ChiffresSignificatifs(EtatQVAPI& etat) {
  if (!etat.reglages) return 1;
  static const std::string section = "Préférences"_w, zeros = "Zéros Significatifs"_w,
                           nombre = "Nombre de chiffres"_w;
  if (CompareSansCasse(etat.reglages->Lit(section, zeros), "Oui") != 0) return 1;
  const std::string valeur = etat.reglages->Lit(section, nombre);
  unsigned n = 0;
  std::from_chars(valeur.data(), valeur.data() + valeur.size(), n);
  return std::clamp<std::size_t>(n, 1, LongueurCompte);
}

std::string LitCompteParticulier(EtatQVAPI& etat, const std::string& cle) {
  assert(!cle.empty());
  return etat.reglages ? QVAPI::GetLongCompte(etat.reglages->Lit(SectionComptes, cle)) : std::string();
}

bool EcritCompteParticulier(EtatQVAPI& etat, const std::string& cle, const std::string& compte) {
  assert(!cle.empty());
  if (!etat.reglages) return etat.Refuse(ErrPasOuvert);
  if (etat.reglages->Ecrit(SectionComptes, cle, QVAPI::GetLongCompte(compte))) return true;
  return etat.Refuse(etat.reglages->Erreur());
}

f64 AuCentime(f64 montant) { return std::floor(montant * 100.0 + 0.5) / 100.0; }

/// One row of "TAUX EURO": date and rate with a bar between them.
bool LitLigneTaux(const std::string& ligne, Date& date, f64& taux) {
  const std::size_t barre = ligne.find('|');
  if (barre == std::string::npos) return false;
  std::string nombre = ligne.substr(barre + 1);
  nombre.erase(std::remove_if(nombre.begin(), nombre.end(), EstBlancCompte), nombre.end());
  std::replace(nombre.begin(), nombre.end(), ',', '.');
  std::string jour = ligne.substr(0, barre);
  jour.erase(std::remove_if(jour.begin(), jour.end(), EstBlancCompte), jour.end());
  date = GetDate(jour);
  const auto lu =
      std::from_chars(nombre.data(), nombre.data() + nombre.size(), taux, std::chars_format::fixed);
  return IsDateOk(date) && lu.ec == std::errc() && std::isfinite(taux) && taux > 0;
}

}  // namespace

std::string QVAPI::GetLongCompte(const std::string& texte) {
  std::string compte;
  for (const char c : texte)
    if (!EstBlancCompte(c) && compte.size() < LongueurCompte) compte += Majuscule(c);
  if (!compte.empty()) compte.resize(LongueurCompte, '0');
  assert(compte.empty() || compte.size() == LongueurCompte);
  return compte;
}

std::string QVAPI::GetShortCompte(const std::string& compte) {
  std::string court = compte;
  while (!court.empty() && EstBlancCompte(court.back())) court.pop_back();
  if (court.empty() || court.back() != '0') return court;
  const std::size_t reste = ChiffresSignificatifs(*m_etat);
  while (court.size() > reste && court.back() == '0') court.pop_back();
  return court;
}

std::string QVAPI::GetCompteVireFrom() { return LitCompteParticulier(*m_etat, "Virement Dépense"_w); }
std::string QVAPI::GetCompteVireTo() { return LitCompteParticulier(*m_etat, "Virement Recette"); }
std::string QVAPI::GetComptePerso() { return LitCompteParticulier(*m_etat, "Prelevement"); }
std::string QVAPI::GetCompteEcartCredit() { return LitCompteParticulier(*m_etat, "Ecart Credit"); }
std::string QVAPI::GetCompteEcartDebit() { return LitCompteParticulier(*m_etat, "Ecart Debit"); }

bool QVAPI::SetCompteVireFrom(const std::string& compte) {
  return EcritCompteParticulier(*m_etat, "Virement Dépense"_w, compte);
}
bool QVAPI::SetCompteVireTo(const std::string& compte) {
  return EcritCompteParticulier(*m_etat, "Virement Recette", compte);
}
bool QVAPI::SetComptePerso(const std::string& compte) {
  return EcritCompteParticulier(*m_etat, "Prelevement", compte);
}
bool QVAPI::SetCompteEcartCredit(const std::string& compte) {
  return EcritCompteParticulier(*m_etat, "Ecart Credit", compte);
}
bool QVAPI::SetCompteEcartDebit(const std::string& compte) {
  return EcritCompteParticulier(*m_etat, "Ecart Debit", compte);
}

f64 QVAPI::GetTauxEuro(Date date) {
  if (!m_etat->reglages) return TauxLegal;
  Date meilleure = 0, premiere = 0;
  f64 enVigueur = TauxLegal, premier = TauxLegal;
  for (unsigned n = 1;; ++n) {
    const std::string ligne = m_etat->reglages->Lit("TAUX EURO", std::to_string(n));
    if (ligne.empty()) break;
    Date validite = 0;
    f64 taux = 0;
    if (!LitLigneTaux(ligne, validite, taux)) continue;
    if (validite <= date && validite >= meilleure) {
      meilleure = validite;
      enVigueur = taux;
    }
    if (premiere == 0 || validite < premiere) {
      premiere = validite;
      premier = taux;
    }
  }
  return meilleure != 0 ? enVigueur : premier;
}

f64 QVAPI::ConvertFrancToEuro(f64 taux, f64 montant) { return AuCentime(montant / taux); }
f64 QVAPI::ConvertEuroToFranc(f64 taux, f64 montant) { return AuCentime(montant * taux); }

}  // namespace fenlor
