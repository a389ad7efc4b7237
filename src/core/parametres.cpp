#include "core/parametres.h"

#include <cassert>

#include "core/cles.h"
#include "core/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr Date limiteFrancDefaut = FaitDate(18, 2, 2002);

}  // namespace

std::string Parametres::LitIni(const std::string& section, const std::string& cle) const {
  assert(!section.empty() && !cle.empty());
  return DecodeRetours(m_magasin.Reglages().Lit(section, cle));
}

std::string Parametres::LitIniExercice(const std::string& exercice, const std::string& cle) const {
  const std::string nom = Exercice(exercice);
  return nom.empty() ? std::string() : LitIni(nom, cle);
}

bool Parametres::EcritIni(const std::string& section, const std::string& cle, const std::string& valeur) {
  assert(!section.empty() && !cle.empty());
  return m_magasin.Reglages().Ecrit(section, cle, EncodeRetours(valeur));
}

bool Parametres::EcritIniExercice(const std::string& exercice, const std::string& cle,
                                  const std::string& valeur) {
  const std::string nom = Exercice(exercice);
  return !nom.empty() && EcritIni(nom, cle, valeur);
}

bool Parametres::IsOui(const std::string& valeur) { return CompareSansCasse(valeur, Texte(MotOui)) == 0; }

bool Parametres::IsExerciceCloture(const std::string& exercice) const {
  return !EstVide(LitIniExercice(exercice, Texte(CleCloture)));
}

bool Parametres::IsFige(const std::string& exercice) const {
  return m_magasin.QVEnLecture() || IsExerciceCloture(exercice);
}

bool Parametres::IsTVA(const std::string& exercice) const {
  return IsOui(LitIniExercice(exercice, Texte(CleTVA)));
}

bool Parametres::IsEuro(const std::string& exercice) const {
  return IsOui(LitIniExercice(exercice, Texte(CleEuro)));
}

bool Parametres::IsFraisKm() const { return IsOui(LitIniExercice({}, Texte(CleFraisKm))); }
bool Parametres::IsBrouillon() const { return Preference(CleBrouillon); }
bool Parametres::IsPrevisualisation() const { return Preference(ClePrevisualisation); }
bool Parametres::IsPapierSoigne() const {
  return CompareSansCasse(LitIni(Texte(SecPreferences), Texte(CleStyleEtats)), Texte(MotSoignee)) == 0;
}
bool Parametres::IsVirgule() const { return Preference(CleVirgule); }
bool Parametres::IsEntree() const { return Preference(CleEntree); }
bool Parametres::IsModeDebug() const { return Preference(CleModeDebug); }
bool Parametres::ZeroDansBoite() const { return Preference(CleZeroDansBoite); }

bool Parametres::IsFinDeSession() const {
  const std::string valeur = LitIni(Texte(SecPreferences), Texte(CleFinDeSession));
  return EstVide(valeur) || IsOui(valeur);
}

bool Parametres::IsSauverFenetres() {
  const std::string valeur = LitIni(Texte(SecFenlor), Texte(CleSauverFenetres));
  if (EstVide(valeur) && !m_magasin.QVEnLecture())
    EcritIni(Texte(SecFenlor), Texte(CleSauverFenetres), Texte(MotOui));
  return EstVide(valeur) || IsOui(valeur);
}

bool Parametres::IsRapprochementEspeces() const {
  return IsOui(LitIni(Texte(SecRapprochement), Texte(CleEspeces)));
}

Date Parametres::GetLimiteFranc() const {
  const Date limite = GetDate(LitIni(Texte(SecPreferences), Texte(CleLimiteFranc)));
  return limite ? limite : limiteFrancDefaut;
}

Date Parametres::GetDebutExercice(const std::string& exercice) const {
  return GetDate(LitIniExercice(exercice, Texte(CleDebut)));
}

Date Parametres::GetFinExercice(const std::string& exercice) const {
  return GetDate(LitIniExercice(exercice, Texte(CleFin)));
}

char Parametres::SeparateurDecimal() const {
  std::string texte;
  const bool lu =
      m_magasin.QVGetRegString("HKEY_LOCAL_MACHINE", "", Texte(SecIntl), Texte(CleSDecimal), texte);
  return lu && !texte.empty() ? texte.front() : ',';
}

std::string Parametres::Exercice(const std::string& exercice) const {
  return exercice.empty() ? m_magasin.NomExercice() : exercice;
}

bool Parametres::Preference(const TexteFixe& cle) const {
  return IsOui(LitIni(Texte(SecPreferences), Texte(cle)));
}

}  // namespace fenlor
