#include "ctl/optionscommunes.h"

#include <algorithm>
#include <cassert>

#include "core/valeurs.h"
#include "ctl/json.h"
#include "journal/listejournal.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr const char* Chiffres = "0123456789";

/// "texte" when the value passes, else the refusal and the value.
template <class Test>
FormeOption Forme(std::string texte, std::string refus, Test test) {
  return {std::move(texte), [refus = std::move(refus), test](const std::string& valeur) {
            return test(valeur) ? std::string() : refus + " : " + valeur;
          }};
}

bool QueDesChiffres(const std::string& texte) {
  return texte.find_first_not_of(Chiffres) == std::string::npos;
}

bool EstNombre(const std::string& texte) {
  constexpr std::size_t longueurMax = 16;
  return texte.size() <= longueurMax && texte.find_first_not_of("0123456789.,") == std::string::npos &&
         texte.find_first_of(Chiffres) != std::string::npos &&
         texte.find_first_of(".,") == texte.find_last_of(".,");
}

}  // namespace

FormeOption FormeDate() {
  return {"JJ/MM/AAAA", [](const std::string& texte) {
            return IsDateOk(GetDate(texte)) ? std::string() : "date incorrecte : " + texte + " (JJ/MM/AAAA)";
          }};
}

FormeOption FormeMois() {
  return {"MM/AAAA", [](const std::string& texte) {
            return IsDateOk(GetDate("01/" + texte)) ? std::string()
                                                    : "mois incorrect : " + texte + " (MM/AAAA)";
          }};
}

FormeOption FormeNombre() { return Forme("NOMBRE", "nombre incorrect", EstNombre); }

FormeOption FormeMontant() {
  return {"NOMBRE", [](const std::string& texte) {
            const std::string nombre = texte.substr(texte.starts_with('-') ? 1 : 0);
            return EstNombre(nombre) ? std::string() : "nombre incorrect : " + nombre;
          }};
}

FormeOption FormeNumero(u32 limite) {
  return Forme("N", "numéro incorrect", [limite](const std::string& texte) {
    constexpr std::size_t longueurMax = 10;
    const bool chiffres = !texte.empty() && texte.size() <= longueurMax && QueDesChiffres(texte);
    const u64 numero = chiffres ? std::stoull(texte) : 0;
    return numero >= 1 && numero <= limite;
  });
}

FormeOption FormeNumeros() { return {"N...", FormeNumero().faute}; }

FormeOption FormeChiffres(const std::string& texte, std::size_t minimum, std::size_t maximum,
                          const std::string& refus) {
  assert(minimum <= maximum);
  return Forme(texte, refus, [minimum, maximum](const std::string& valeur) {
    return valeur.size() >= minimum && valeur.size() <= maximum && QueDesChiffres(valeur);
  });
}

FormeOption FormeMots(std::vector<std::string> mots) {
  assert(!mots.empty());
  const auto joint = [mots](const char* separateur) {
    std::string liste;
    for (const std::string& mot : mots) liste += (liste.empty() ? "" : separateur) + mot;
    return liste;
  };
  return {joint("|"), [mots, liste = joint(", ")](const std::string& texte) {
            const bool connu = std::find(mots.begin(), mots.end(), texte) != mots.end();
            return connu ? std::string() : "mot inconnu : " + texte + " (" + liste + ")";
          }};
}

FormeOption FormeJournal() { return FormeMots({"recettes", "depenses", "od"}); }
FormeOption FormeMode() { return FormeMots({"validees", "brouillard", "toutes"}); }
FormeOption FormeMonnaie() { return FormeMots({"franc", "euro"}); }

i16 JournalNomme(const std::string& mot) {
  if (mot == "recettes") return JournalRecettes;
  if (mot == "depenses") return JournalDepenses;
  return mot == "od" ? i16{JournalOD} : i16{0};
}

u16 ModeNomme(const std::string& mot) {
  return mot == "validees" ? ListeValidees : mot == "brouillard" ? ListeBrouillard : ListeToutes;
}

bool PoseOption(Contexte& contexte, const char* champ, const std::optional<std::string>& utf8,
                std::string& valeur) {
  if (!utf8) return true;
  const auto texte = DepuisUtf8(*utf8);
  const auto commande = [](char c) { return static_cast<unsigned char>(c) < 32; };
  if (!texte) return contexte.Invalide(champ, raison::CaractereImpossible());
  if (std::any_of(texte->begin(), texte->end(), commande))
    return contexte.Invalide(champ, "un caractère de contrôle est interdit."_w);
  valeur = *texte;
  return true;
}

}  // namespace fenlor
