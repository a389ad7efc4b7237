#include "master/tauxeuro.h"

#include <algorithm>
#include <cassert>

#include "core/erreurssaisie.h"
#include "core/valeurs.h"
#include "master/lotreglages.h"
#include "master/textes.h"

namespace fenlor {

namespace {

bool Avant(const TauxEuro& a, const TauxEuro& b) { return a.date < b.date; }

std::string LigneTaux(const TauxEuro& ligne) {
  assert(IsDateOk(ligne.date) && ligne.taux > 0);
  return StrDate(ligne.date) + '|' + FormatMontant(ligne.taux, DecimalesTauxEuro, '.');
}

/// A whole number from 1, as the keys of the table are.
bool EstNumero(const std::string& cle) {
  return !cle.empty() && std::all_of(cle.begin(), cle.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::vector<TauxEuro> LitTauxEuro(CFenlorApp& app) {
  std::vector<TauxEuro> lignes;
  const char separateur = app.Reglages.SeparateurDecimal();
  const std::string section = Texte(SecTauxEuro);
  for (unsigned n = 1;; ++n) {
    const std::string texte = app.Reglages.LitIni(section, std::to_string(n));
    if (texte.empty()) break;
    // A settings file may come from a machine with the other separator.
    std::string nombre = ChampTexte(1, texte, '|');
    std::replace(nombre.begin(), nombre.end(), ',', '.');
    const TauxEuro ligne{GetDate(ChampTexte(0, texte, '|')), TexteVersMontant(nombre, separateur)};
    if (IsDateOk(ligne.date) && ligne.taux > 0) lignes.push_back(ligne);
  }
  std::stable_sort(lignes.begin(), lignes.end(), Avant);
  return lignes;
}

Refus ControleTauxEuro(const std::vector<TauxEuro>& lignes, const TauxEuro& saisie, int modifie) {
  if (!IsDateOk(saisie.date)) return Refus(ErrDateIncorrecte, "date");
  for (std::size_t i = 0; i < lignes.size(); ++i)
    if (lignes[i].date == saisie.date && static_cast<int>(i) != modifie)
      return Refus(ErrDateTauxExistante, "date", {StrDate(saisie.date)});
  if (!(Arrondi(saisie.taux, DecimalesTauxEuro) > 0)) return Refus(ErrTauxConversion, "taux");
  return {};
}

int PlaceTauxEuro(std::vector<TauxEuro>& lignes, const TauxEuro& saisie, int modifie) {
  assert(modifie < static_cast<int>(lignes.size()) && std::is_sorted(lignes.begin(), lignes.end(), Avant));
  if (modifie >= 0) lignes.erase(lignes.begin() + modifie);
  const auto place = std::upper_bound(lignes.begin(), lignes.end(), saisie, Avant);
  const auto indice = place - lignes.begin();
  assert(indice >= 0);
  lignes.insert(place, saisie);
  return static_cast<int>(indice);
}

bool EcritTauxEuro(CFenlorApp& app, const std::vector<TauxEuro>& lignes) {
  assert(std::is_sorted(lignes.begin(), lignes.end(), Avant));
  const std::string section = Texte(SecTauxEuro);
  const std::vector<TauxEuro> avant = LitTauxEuro(app);
  const bool pareil =
      std::equal(avant.begin(), avant.end(), lignes.begin(), lignes.end(),
                 [](const TauxEuro& a, const TauxEuro& b) { return a.date == b.date && a.taux == b.taux; });
  LotReglages lot(app);
  if (!pareil) {
    for (const std::string& cle : app.Magasin.Reglages().Cles(section))
      if (EstNumero(cle) && (cle.size() > 9 || cle.front() == '0' || std::stoul(cle) > lignes.size()))
        lot.Supprime(section, cle);
    for (std::size_t i = 0; i < lignes.size(); ++i)
      lot.Pose(section, std::to_string(i + 1), LigneTaux(lignes[i]));
  }
  if (!lot.Ecrit()) return false;
  app.TauxEuroCourant = lignes.empty() ? 0 : lignes.back().taux;
  return true;
}

}  // namespace fenlor
