#include "store/modele.h"

#include <algorithm>
#include <cassert>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>

#include "store/dates.h"
#include "store/qvapi.h"
#include "store/texte1252.h"

namespace fenlor {

// Made at build time from resources/defaut.qvc.
extern const unsigned char ModeleDefaut[];
extern const std::size_t TailleModeleDefaut;

namespace {

constexpr std::size_t TailleMax = 1u << 20;
constexpr const char* Signature = "fenlor-modele";
constexpr int VersionModele = 1;

bool EstBlanc(char c) { return c == ' ' || c == '\t'; }

std::string_view Rogne(std::string_view texte) {
  while (!texte.empty() && EstBlanc(texte.front())) texte.remove_prefix(1);
  while (!texte.empty() && EstBlanc(texte.back())) texte.remove_suffix(1);
  return texte;
}

std::vector<std::string_view> Coupe(std::string_view texte, char separateur) {
  std::vector<std::string_view> parties;
  for (;;) {
    const std::size_t fin = texte.find(separateur);
    parties.push_back(Rogne(texte.substr(0, fin)));
    if (fin == std::string_view::npos) return parties;
    texte.remove_prefix(fin + 1);
  }
}

std::optional<int> Entier(std::string_view texte) {
  int valeur = 0;
  const auto [fin, erreur] = std::from_chars(texte.data(), texte.data() + texte.size(), valeur);
  if (erreur != std::errc() || fin != texte.data() + texte.size()) return std::nullopt;
  return valeur;
}

/// A percentage, with a comma or a point.
std::optional<f64> Pourcentage(std::string_view texte) {
  std::string nombre(texte);
  std::replace(nombre.begin(), nombre.end(), ',', '.');
  f64 valeur = 0;
  const auto [fin, erreur] =
      std::from_chars(nombre.data(), nombre.data() + nombre.size(), valeur, std::chars_format::fixed);
  if (erreur != std::errc() || fin != nombre.data() + nombre.size()) return std::nullopt;
  if (!std::isfinite(valeur) || valeur < 0 || valeur > 100) return std::nullopt;
  return valeur;
}

bool EstLettreOuChiffre(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool EstNumeroCompte(std::string_view texte) {
  return !texte.empty() && texte.size() <= 10 && std::all_of(texte.begin(), texte.end(), EstLettreOuChiffre);
}

/// Stored form of a heading's code: upper case, padded to 3. Empty when it is none.
std::string CodeRubrique(std::string_view texte) {
  if (texte.empty() || texte.size() > 3 || !std::all_of(texte.begin(), texte.end(), EstLettreOuChiffre))
    return {};
  std::string code = EnMajuscules(texte);
  code.resize(3, ' ');
  return code;
}

class Lecteur {
 public:
  Lecteur(Modele& modele, ErreurModele& erreur) : m_modele(modele), m_erreur(erreur) {}

  bool Lit(std::string_view octets) {
    if (octets.size() > TailleMax) return Refuse("Le modèle dépasse un mégaoctet."_w);
    if (octets.substr(0, 3) == "\xEF\xBB\xBF") octets.remove_prefix(3);
    while (!octets.empty()) {
      ++m_ligne;
      const std::size_t fin = octets.find('\n');
      std::string_view brute = octets.substr(0, fin);
      octets.remove_prefix(fin == std::string_view::npos ? octets.size() : fin + 1);
      if (!brute.empty() && brute.back() == '\r') brute.remove_suffix(1);
      const auto ligne = DepuisUtf8(brute);
      if (!ligne)
        return Refuse("Texte illisible : le modèle est en UTF-8, avec les caractères de Windows-1252."_w);
      if (std::any_of(ligne->begin(), ligne->end(),
                      [](char c) { return static_cast<unsigned char>(c) < 32 && c != '\t'; }))
        return Refuse("Caractère de contrôle."_w);
      const std::string_view texte = Rogne(*ligne);
      if (texte.empty() || texte.front() == '#') continue;
      if (!LitLigne(texte)) return false;
    }
    m_ligne = 0;
    if (!m_version) return Refuse("Ce n'est pas un modèle de Fenlor."_w);
    return Verifie();
  }

 private:
  using Section = bool (Lecteur::*)(std::string_view);

  bool Refuse(std::string raison) {
    assert(!raison.empty());
    m_erreur = {m_ligne, std::move(raison)};
    return false;
  }

  bool LitLigne(std::string_view texte) {
    assert(!texte.empty() && m_ligne > 0);
    if (!m_version) return LitVersion(texte);
    if (texte.front() == '[') return OuvreSection(texte);
    if (m_section != nullptr) return (this->*m_section)(texte);
    if (texte.substr(0, 5) != "date ") return Refuse("Une section est attendue."_w);
    m_modele.date = GetDate(std::string(Rogne(texte.substr(5))));
    return IsDateOk(m_modele.date) || Refuse("Date incorrecte."_w);
  }

  bool LitVersion(std::string_view texte) {
    const std::size_t blanc = texte.find(' ');
    if (texte.substr(0, blanc) != Signature || blanc == std::string_view::npos)
      return Refuse("Ce n'est pas un modèle de Fenlor."_w);
    if (Entier(Rogne(texte.substr(blanc))) != VersionModele) return Refuse("Version de modèle inconnue."_w);
    m_version = true;
    return true;
  }

  bool OuvreSection(std::string_view texte) {
    static const std::map<std::string_view, Section> sections = {
        {"[comptes]", &Lecteur::LitCompte},           {"[rubriques]", &Lecteur::LitRubrique},
        {"[particuliers]", &Lecteur::LitParticulier}, {"[reglages]", &Lecteur::LitReglage},
        {"[kilometres]", &Lecteur::LitKilometre},     {"[libelles]", &Lecteur::LitLibelle}};
    const auto trouvee = sections.find(texte);
    if (trouvee == sections.end()) return Refuse("Section inconnue."_w);
    m_section = trouvee->second;
    assert(m_version && m_section);
    return true;
  }

  bool LitCompte(std::string_view texte) {
    struct Sorte {
      i16 type, tresorerie;
    };
    static const std::map<std::string_view, Sorte> sortes = {
        {"banque", {Tresorerie, 1}}, {"caisse", {Tresorerie, 0}}, {"recette", {Recette, 0}},
        {"depense", {Depense, 0}},   {"tva", {Tva, 0}},           {"autre", {Autre, 0}}};
    const auto champs = Coupe(texte, '|');
    if (champs.size() < 4 || champs.size() > 6)
      return Refuse("Un compte s'écrit : numéro | code | type | désignation | rubrique | options."_w);
    Plan compte{};
    if (!EstNumeroCompte(champs[0])) return Refuse("Numéro de compte incorrect."_w);
    const std::string numero = QVAPI::GetLongCompte(std::string(champs[0]));
    if (!m_comptes.emplace(numero, m_ligne).second) return Refuse("Ce numéro de compte existe déjà."_w);
    if (champs[1].empty() || champs[1].size() > 8) return Refuse("Le code d'un compte a 1 à 8 caractères."_w);
    const std::string code = EnMajuscules(champs[1]);
    if (!m_codes.emplace(code, m_ligne).second) return Refuse("Ce code existe déjà."_w);
    const auto sorte = sortes.find(champs[2]);
    if (sorte == sortes.end()) return Refuse("Type de compte inconnu."_w);
    if (champs[3].empty() || champs[3].size() > 80) return Refuse("La désignation a 1 à 80 caractères."_w);
    PoseTexte(compte.Compte, numero);
    PoseTexte(compte.Code, code);
    PoseTexte(compte.Designation, champs[3]);
    compte.Type = sorte->second.type;
    compte.TypeTresorerie = sorte->second.tresorerie;
    compte.PartPro = 100.0;
    assert(compte.Type >= Tresorerie && compte.Type <= Autre);
    if (champs.size() > 4 && !champs[4].empty()) {
      const std::string rubrique = CodeRubrique(champs[4]);
      if (rubrique.empty()) return Refuse("Code de rubrique incorrect."_w);
      PoseTexte(compte.Rubrique, rubrique);
      m_rubriquesCitees.push_back({rubrique, m_ligne});
    }
    if (champs.size() > 5 && !LitOptions(champs[5], compte)) return false;
    m_modele.comptes.push_back(compte);
    return true;
  }

  bool LitOptions(std::string_view texte, Plan& compte) {
    for (const std::string_view option : Coupe(texte, ' ')) {
      if (option.empty()) continue;
      const std::size_t egal = option.find('=');
      const std::string_view nom = option.substr(0, egal);
      const std::string_view valeur =
          egal == std::string_view::npos ? std::string_view() : option.substr(egal + 1);
      if (nom == "tva") {
        if (!EstNumeroCompte(valeur)) return Refuse("Numéro de compte incorrect."_w);
        const std::string numero = QVAPI::GetLongCompte(std::string(valeur));
        PoseTexte(compte.CompteTVA, numero);
        m_comptesCites.push_back({numero, m_ligne});
        continue;
      }
      const auto taux = Pourcentage(valeur);
      if (!taux) return Refuse("Un pourcentage de 0 à 100 est attendu."_w);
      if (nom == "taux")
        compte.TauxTVA = *taux;
      else if (nom == "pro")
        compte.PartPro = *taux;
      else
        return Refuse("Option inconnue."_w);
    }
    return true;
  }

  bool LitRubrique(std::string_view texte) {
    static const std::map<std::string_view, i16> types = {
        {"recette", 0}, {"depense", 1}, {"resultat", 2}, {"taxe", 3}};
    const auto champs = Coupe(texte, '|');
    if (champs.size() < 4 || champs.size() > 5)
      return Refuse("Une rubrique s'écrit : code | ligne | type | désignation | formule."_w);
    Rubrique rubrique{};
    const std::string code = CodeRubrique(champs[0]);
    if (code.empty()) return Refuse("Code de rubrique incorrect."_w);
    if (!m_rubriques.emplace(code, m_ligne).second) return Refuse("Ce code existe déjà."_w);
    const auto ligne = Entier(champs[1]);
    if (!ligne || *ligne < 0 || *ligne > 9999) return Refuse("Numéro de ligne incorrect."_w);
    const auto type = types.find(champs[2]);
    if (type == types.end()) return Refuse("Type de rubrique inconnu."_w);
    if (champs[3].empty() || champs[3].size() > 80) return Refuse("La désignation a 1 à 80 caractères."_w);
    PoseTexte(rubrique.Rubrique, code);
    PoseTexte(rubrique.Designation, champs[3]);
    rubrique.Ligne = static_cast<i16>(*ligne);
    rubrique.TypeRubrique = type->second;
    if (champs.size() > 4) {
      if (champs[4].size() >= sizeof rubrique.Formule)
        return Refuse("Une formule a 127 caractères au plus."_w);
      if (champs[4] == "manuel")
        rubrique.Manuel = 1;
      else
        PoseTexte(rubrique.Formule, champs[4]);
    }
    m_modele.rubriques.push_back(rubrique);
    return true;
  }

  bool LitParticulier(std::string_view texte) {
    static const std::string_view connues[] = {"Prelevement", "Virement Recette", "Ecart Credit",
                                               "Ecart Debit"};
    std::string_view cle, valeur;
    if (!Separe(texte, cle, valeur)) return false;
    if (std::find(std::begin(connues), std::end(connues), cle) == std::end(connues) &&
        cle != "Virement Dépense"_w)
      return Refuse("Compte particulier inconnu."_w);
    if (!EstNumeroCompte(valeur)) return Refuse("Numéro de compte incorrect."_w);
    const std::string numero = QVAPI::GetLongCompte(std::string(valeur));
    m_comptesCites.push_back({numero, m_ligne});
    m_modele.reglages.push_back({"COMPTES", std::string(cle), numero});
    return true;
  }

  bool LitReglage(std::string_view texte) {
    const std::size_t chevron = texte.find('>');
    if (chevron == std::string_view::npos || chevron == 0)
      return Refuse("Un réglage s'écrit : section > clé = valeur."_w);
    const std::string section(Rogne(texte.substr(0, chevron)));
    if (section.find(']') != std::string::npos) return Refuse("Nom de section incorrect."_w);
    std::string_view cle, valeur;
    if (!Separe(Rogne(texte.substr(chevron + 1)), cle, valeur)) return false;
    m_modele.reglages.push_back({section, std::string(cle), std::string(valeur)});
    return true;
  }

  bool LitKilometre(std::string_view texte) {
    std::string_view cle, valeur;
    if (!Separe(texte, cle, valeur)) return false;
    m_modele.reglages.push_back({"FRAIS KILOMETRIQUES", std::string(cle), std::string(valeur)});
    return true;
  }

  bool LitLibelle(std::string_view texte) {
    if (texte.size() > 80) return Refuse("Un libellé a 80 caractères au plus."_w);
    if (texte.front() == '@') return Refuse("Un libellé ne commence pas par @."_w);
    m_modele.libelles.emplace_back(texte);
    return true;
  }

  bool Separe(std::string_view texte, std::string_view& cle, std::string_view& valeur) {
    const std::size_t egal = texte.find('=');
    cle = Rogne(texte.substr(0, egal));
    if (egal == std::string_view::npos || cle.empty() || cle.front() == ';' || cle.front() == '[')
      return Refuse("Un réglage s'écrit : clé = valeur."_w);
    valeur = Rogne(texte.substr(egal + 1));
    return true;
  }

  bool Verifie() {
    if (m_modele.comptes.empty() || m_modele.rubriques.empty())
      return Refuse("Le modèle n'a pas de comptes ou pas de rubriques."_w);
    for (const auto& [rubrique, ligne] : m_rubriquesCitees)
      if (m_rubriques.count(rubrique) == 0)
        return RefuseA(ligne, "Cette rubrique n'est pas dans le modèle."_w);
    for (const auto& [compte, ligne] : m_comptesCites)
      if (m_comptes.count(compte) == 0) return RefuseA(ligne, "Ce compte n'est pas dans le modèle."_w);
    return true;
  }

  bool RefuseA(unsigned ligne, std::string raison) {
    assert(ligne > 0);
    m_ligne = ligne;
    return Refuse(std::move(raison));
  }

  Modele& m_modele;
  ErreurModele& m_erreur;
  unsigned m_ligne = 0;
  bool m_version = false;
  Section m_section = nullptr;
  std::map<std::string, unsigned> m_comptes;
  std::map<std::string, unsigned> m_codes, m_rubriques;
  std::vector<std::pair<std::string, unsigned>> m_rubriquesCitees, m_comptesCites;
};

}  // namespace

bool LitModele(std::string_view octets, Modele& modele, ErreurModele& erreur) {
  modele = Modele();
  erreur = ErreurModele();
  return Lecteur(modele, erreur).Lit(octets);
}

std::string_view ModeleIntegre() { return {reinterpret_cast<const char*>(ModeleDefaut), TailleModeleDefaut}; }

bool ChargeModele(Systeme& systeme, const std::string& pathProgrammes, Modele& modele, ErreurModele& erreur) {
  const std::string chemin = pathProgrammes.empty() ? std::string() : Joint(pathProgrammes, "defaut.qvc");
  if (chemin.empty() || !systeme.Existe(chemin)) return LitModele(ModeleIntegre(), modele, erreur);
  std::unique_ptr<Fichier> fichier;
  Empreinte empreinte;
  int code = systeme.Ouvre(chemin, Systeme::Lecture, fichier);
  if (code == 0) code = fichier->Mesure(empreinte);
  std::string octets;
  if (code == 0) {
    octets.resize(std::min<u64>(empreinte.taille, TailleMax + 1));
    std::size_t lus = 0;
    code = fichier->Lit(octets.data(), octets.size(), 0, lus);
    octets.resize(code == 0 ? lus : 0);
  }
  if (code != 0) {
    erreur = {0, TexteErreurSysteme(code)};
    return false;
  }
  return LitModele(octets, modele, erreur);
}

}  // namespace fenlor
