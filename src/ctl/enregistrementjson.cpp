#include "ctl/enregistrementjson.h"

#include <cassert>
#include <cstring>
#include <limits>

#include "core/erreurssaisie.h"
#include "session/textes.h"
#include "store/dates.h"
#include "store/octets.h"
#include "store/qvapi.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

template <class T>
Refus PoseEntier(const Json& valeur, const Champ& champ, u8* place) {
  constexpr i64 minimum = std::numeric_limits<T>::min(), maximum = std::numeric_limits<T>::max();
  assert(champ.taille == sizeof(T));
  const auto entier = EntierJson(valeur, minimum, maximum);
  if (!entier) return RefusChamp(champ.nom, raison::EntierAttendu(minimum, maximum));
  PoseValeur(place, static_cast<T>(*entier));
  return {};
}

Refus PoseTexteChamp(const Json& valeur, const Champ& champ, u8* place) {
  if (!valeur.is_string()) return RefusChamp(champ.nom, raison::TexteAttendu());
  auto texte = DepuisUtf8(valeur.get_ref<const std::string&>());
  if (!texte) return RefusChamp(champ.nom, raison::CaractereImpossible());
  if (texte->find('\0') != std::string::npos)
    return RefusChamp(champ.nom, "le caractère nul est interdit."_w);
  assert(champ.taille > 1);
  const std::size_t maximum = champ.taille - 1u;
  if (texte->size() > maximum) return Refus(ErrTexteTropLong, "", {champ.nom, std::to_string(maximum)});
  if (champ.type == TypeChamp::Compte) texte = QVAPI::GetLongCompte(*texte);
  std::memcpy(place, texte->data(), texte->size());
  return {};
}

Refus PoseDate(const Json& valeur, const Champ& champ, u8* place) {
  if (!valeur.is_string()) return PoseEntier<u32>(valeur, champ, place);
  const std::string& texte = valeur.get_ref<const std::string&>();
  const Date date = GetDate(texte);
  if (date == 0 && !texte.empty()) return RefusChamp(champ.nom, "une date JJ/MM/AAAA est attendue."_w);
  PoseValeur(place, date);
  return {};
}

Refus PoseMontant(const Json& valeur, const Champ& champ, u8* place) {
  if (!valeur.is_number()) return RefusChamp(champ.nom, raison::NombreAttendu());
  assert(champ.taille == sizeof(f64));
  PoseValeur(place, valeur.get<f64>());
  return {};
}

Refus PoseChamp(const Json& valeur, const Champ& champ, u8* place) {
  switch (champ.type) {
    case TypeChamp::Texte:
    case TypeChamp::Compte:
      return PoseTexteChamp(valeur, champ, place);
    case TypeChamp::Entier16:
      return PoseEntier<i16>(valeur, champ, place);
    case TypeChamp::Entier32:
      return PoseEntier<i32>(valeur, champ, place);
    case TypeChamp::EntierU8:
      return PoseEntier<u8>(valeur, champ, place);
    case TypeChamp::EntierU16:
      return PoseEntier<u16>(valeur, champ, place);
    case TypeChamp::EntierU32:
      return PoseEntier<u32>(valeur, champ, place);
    case TypeChamp::DateC:
      return PoseDate(valeur, champ, place);
    case TypeChamp::Montant:
      return PoseMontant(valeur, champ, place);
    case TypeChamp::Reserve:
      break;
  }
  return {};
}

}  // namespace

void AjouteEnregistrement(std::string& sortie, std::span<const Champ> champs, const void* rec) {
  assert(rec && !champs.empty());
  char separateur = '{';
  for (const Champ& champ : champs) {
    if (champ.type == TypeChamp::Reserve) continue;
    const u8* place = static_cast<const u8*>(rec) + champ.offset;
    sortie.push_back(separateur);
    separateur = ',';
    sortie.push_back('"');
    sortie += champ.nom;
    sortie += "\":";
    switch (champ.type) {
      case TypeChamp::Texte:
      case TypeChamp::Compte: {
        const char* texte = reinterpret_cast<const char*>(place);
        AjouteTexteJson(sortie, {texte, strnlen(texte, champ.taille)});
        break;
      }
      case TypeChamp::Entier16:
        AjouteEntierJson(sortie, LitValeur<i16>(place));
        break;
      case TypeChamp::Entier32:
        AjouteEntierJson(sortie, LitValeur<i32>(place));
        break;
      case TypeChamp::EntierU8:
        AjouteEntierJson(sortie, LitValeur<u8>(place));
        break;
      case TypeChamp::EntierU16:
        AjouteEntierJson(sortie, LitValeur<u16>(place));
        break;
      case TypeChamp::EntierU32:
        AjouteEntierJson(sortie, LitValeur<u32>(place));
        break;
      case TypeChamp::DateC: {
        const Date date = LitValeur<u32>(place);
        const std::string texte = StrDate(date);
        if (GetDate(texte) == date)
          AjouteTexteJson(sortie, texte);
        else
          AjouteEntierJson(sortie, date);
        break;
      }
      case TypeChamp::Montant:
        AjouteNombreJson(sortie, LitValeur<f64>(place));
        break;
      case TypeChamp::Reserve:
        break;
    }
  }
  sortie += "}\n";
}

Refus LitEnregistrement(const Json& objet, std::span<const Champ> champs, void* rec) {
  assert(rec && !champs.empty());
  std::memset(rec, 0, champs.back().offset + std::size_t{champs.back().taille});
  std::size_t pris = 0;
  for (const Champ& champ : champs) {
    if (champ.type == TypeChamp::Reserve) continue;
    const auto it = objet.find(champ.nom);
    if (it == objet.end()) continue;
    ++pris;
    if (Refus refus = PoseChamp(*it, champ, static_cast<u8*>(rec) + champ.offset)) return refus;
  }
  if (pris == objet.size()) return {};
  for (const auto& [nom, valeur] : objet.items()) {
    bool connu = false;
    for (const Champ& champ : champs) connu = connu || (champ.type != TypeChamp::Reserve && nom == champ.nom);
    if (!connu) return Refus(ErrChampInconnu, "", {DepuisUtf8(nom.substr(0, 80)).value_or("?")});
  }
  return {};
}

}  // namespace fenlor
