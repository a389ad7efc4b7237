#include "pages/interprete.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <optional>
#include <utility>

namespace fenlor {

namespace {

constexpr std::size_t morceauPied = 256;
constexpr std::size_t tailleArgument = 3;
/// Nothing is drawn as far away as this; sums of positions stay within 32 bits.
constexpr i32 loin = 1 << 29;

/// What a code does to the text before it: draws it, and parts it from what follows. `marque`: the byte is no
/// text itself.
struct Effet {
  bool dessine = false, separe = false, marque = false;
};
constexpr std::array<Effet, 256> Effets = [] {
  std::array<Effet, 256> effets{};
  for (const char code : std::string_view("0123BIULTMNCR")) effets[static_cast<u8>(code)].dessine = true;
  for (const char code : std::string_view("123LTMNCR")) effets[static_cast<u8>(code)].separe = true;
  for (const char marque : std::string_view("\\\n\r")) effets[static_cast<u8>(marque)].marque = true;
  return effets;
}();

i32 Avance(i32 position, i32 de) { return std::min(loin, position + std::min(loin, de)); }

/// At most three characters: blanks, then digits up to the first other one.
i32 LitArgument(std::string_view texte) {
  const auto chiffre = [&](std::size_t i) { return static_cast<u8>(texte[i] - '0'); };
  if (texte.size() >= tailleArgument && chiffre(0) <= 9 && chiffre(1) <= 9 && chiffre(2) <= 9)
    return chiffre(0) * 100 + chiffre(1) * 10 + chiffre(2);
  const std::size_t fin = std::min(tailleArgument, texte.size());
  std::size_t i = 0;
  while (i < fin && texte[i] == ' ') ++i;
  i32 valeur = 0;
  for (; i < fin && chiffre(i) <= 9; ++i) valeur = valeur * 10 + chiffre(i);
  assert(valeur >= 0 && valeur < 1000);
  return valeur;
}

/// Column of the first "\T" in what is left of the line.
std::optional<i32> TabulationSuivante(std::string_view texte) {
  for (std::size_t i = 0; i < texte.size() && texte[i] != '\n'; ++i) {
    if (texte[i] != '\\') continue;
    if (++i < texte.size() && texte[i] == 'T') return LitArgument(texte.substr(i + 1));
  }
  return std::nullopt;
}

}  // namespace

void InterpreteEtat::FinitPage() { m_lignes.Dessine(); }

i32 InterpreteEtat::InterpreteTexte(i32 depart, std::string_view texte) {
  Plume plume{depart, m_etat.margeGauche, 0, {}, texte.substr(0, texte.find('\0'))};
  const auto estMarque = [](char c) { return Effets[static_cast<u8>(c)].marque; };
  while (!plume.source.empty()) {
    const auto marque = std::find_if(plume.source.begin(), plume.source.end(), estMarque);
    plume.run.append(plume.source.begin(), marque);
    plume.source.remove_prefix(static_cast<std::size_t>(marque - plume.source.begin()));
    if (plume.source.empty()) break;
    if (plume.source.front() == '\\' && plume.source.size() > 1) {
      Code(plume, plume.source[1]);
      continue;
    }
    if (plume.source.front() == '\n') FinLigne(plume);
    plume.source.remove_prefix(1);
  }
  Dessine(plume);
  assert(plume.source.empty() && plume.run.empty());
  return plume.y;
}

void InterpreteEtat::Code(Plume& plume, char code) {
  assert(plume.source.size() >= 2 && plume.source[0] == '\\');
  const i32 avant = plume.x;
  const Effet effet = Effets[static_cast<u8>(code)];
  if (effet.dessine) Dessine(plume);
  plume.source.remove_prefix(2);
  if (effet.separe) plume.texte.reset();
  switch (code) {
    case '0':
      m_etat.souligne = m_etat.gras = m_etat.italique = false;
      break;
    case '1':
    case '2':
    case '3':
      m_etat.ligne = std::array{Alignement::Gauche, Alignement::Centre, Alignement::Droite}[code - '1'];
      break;
    case 'B':
      m_etat.gras = true;
      break;
    case 'I':
      m_etat.italique = true;
      break;
    case 'U':
      m_etat.souligne = true;
      break;
    case 'L':
      m_etat.course = Course::Place;
      break;
    case 'C':
    case 'R':
      m_ancre = Colonnes(plume);
      m_ancreNeuve = true;
      m_etat.course = code == 'C' ? Course::Centree : Course::ADroite;
      break;
    case 'T':
      plume.x = Colonnes(plume);
      m_ancreNeuve = false;
      break;
    case 'M':
    case 'N': {
      // With "N" a position is compared with a distance from the other edge: reports are laid out
      // on what comes of it.
      i32& bord = code == 'M' ? m_etat.margeGauche : m_etat.margeDroite;
      const i32 marge = Colonnes(plume);
      if (avant == bord) plume.x = marge;
      bord = marge;
      break;
    }
    case 'S': {
      const i32 epaisseur = Argument(plume);
      m_lignes.Trait(m_etat.margeGauche, m_page.largeur - m_etat.margeDroite,
                     Avance(plume.depart, plume.y) + 1, epaisseur);
      break;
    }
    case 'F':
      plume.y = Avance(plume.y, DessinePied(Avance(plume.depart, plume.y)));
      break;
    case 'H':
      plume.y = Avance(plume.y, DessineEntete(Avance(plume.depart, plume.y)));
      break;
    case 'G':
    case 'X':
      break;
    case 'P':
      plume.y = m_page.lignesParPage * m_page.interligne - plume.depart;
      break;
    default:
      plume.run += code;
  }
}

i32 InterpreteEtat::Argument(Plume& plume) {
  const i32 valeur = LitArgument(plume.source);
  plume.source.remove_prefix(std::min(tailleArgument, plume.source.size()));
  return valeur;
}

void InterpreteEtat::FinLigne(Plume& plume) {
  Dessine(plume);
  plume.texte.reset();
  plume.x = m_etat.margeGauche;
  plume.y = Avance(plume.y, m_page.interligne);
  m_etat.ligne = Alignement::Gauche;
  m_etat.course = Course::Place;
}

void InterpreteEtat::Dessine(Plume& plume) { plume.x = Avance(plume.x, DessineRun(plume)); }

unsigned InterpreteEtat::Style() const {
  return (m_etat.souligne ? StyleSouligne : 0u) | (m_etat.italique ? StyleItalique : 0u) |
         (m_etat.gras ? StyleGras : 0u);
}

i32 InterpreteEtat::DessineRun(Plume& plume) {
  std::string& run = plume.run;
  if (run.empty()) return 0;
  if (Papier().aligne && FinitAColonne()) run.erase(run.find_last_not_of(' ') + 1);
  if (Papier().milliers) GroupeMilliers(run, FinitAColonne());
  const Etendue etendue = m_peripherique.Mesure(Style(), run);
  assert(etendue.largeur >= 0 && etendue.hauteur >= 0);
  if (plume.texte && plume.yTexte == plume.y) {
    m_lignes.Continue(*plume.texte, Style(), run, etendue.largeur);
  } else {
    plume.texte = m_lignes.Commence(PlaceRun(plume, etendue), Style(), run, etendue.largeur);
    plume.yTexte = plume.y;
  }
  run.clear();
  return etendue.largeur;
}

bool InterpreteEtat::FinitAColonne() const { return m_etat.course == Course::ADroite && m_ancreNeuve; }

PlaceTexte InterpreteEtat::PlaceRun(const Plume& plume, const Etendue& etendue) const {
  PlaceTexte place{Avance(plume.depart, plume.y), etendue.hauteur};
  place.marge = m_etat.margeGauche;
  place.limite = m_page.largeur - m_etat.margeDroite;
  place.gauche = std::max(plume.x, place.marge);
  place.droite = place.limite;
  if (m_etat.ligne != Alignement::Gauche) {
    place.alignement = m_etat.ligne;
    place.gauche = place.marge;
  } else if (m_etat.course == Course::Centree) {
    place.alignement = Alignement::Centre;
    place.droite = std::max(m_ancre, Avance(plume.x, etendue.largeur));
  } else {
    const bool aDroite = m_etat.course == Course::ADroite;
    if (aDroite) place.alignement = Alignement::Droite;
    if (aDroite && std::min(m_ancre, place.limite) > place.gauche) {
      place.droite = m_ancre;
    } else {
      const bool finit = FinitAColonne() && Papier().aligne;
      place.debute = aDroite && !finit;
      if (const auto tabulation = TabulationSuivante(plume.source)) {
        place.droite = *tabulation * m_page.unite;
        place.colonneSuivante = place.droite <= place.limite;
        if (finit) place.droite -= m_page.unite;
      }
    }
  }
  place.droite = std::min(place.droite, place.limite);
  assert(place.gauche >= place.marge && place.droite <= place.limite);
  return place;
}

i32 InterpreteEtat::DessineTitre(i32 depart, std::string_view premier, std::string_view second) {
  const Trace avant = m_etat;
  m_etat.margeGauche = m_etat.margeDroite = 0;
  i32 hauteur = InterpreteTexte(depart, premier);
  hauteur += InterpreteTexte(depart + hauteur, second);
  m_lignes.SansBande(depart + hauteur);
  m_etat = avant;
  return hauteur;
}

template <class Dessin>
i32 InterpreteEtat::DessineCadre(bool& dedans, Dessin&& dessin) {
  if (std::exchange(dedans, true)) return 0;
  const Trace avant = m_etat;
  m_etat.margeGauche = m_etat.margeDroite = 0;
  m_etat.ligne = Alignement::Gauche;
  m_etat.course = Course::Place;
  const i32 hauteur = dessin();
  assert(dedans);  // header and footer are never drawn inside themselves
  m_etat = avant;
  dedans = false;
  return hauteur;
}

i32 InterpreteEtat::DessineEntete(i32 depart) {
  return DessineCadre(m_dansEntete, [&] { return InterpreteTexte(depart, m_entete); });
}

i32 InterpreteEtat::DessinePied(i32 depart) {
  return DessineCadre(m_dansPied, [&] {
    i32 hauteur = 0;
    std::string_view reste = m_pied;
    while (!reste.empty()) {
      std::string_view morceau = reste.substr(0, morceauPied);
      if (const std::size_t retour = morceau.find('\n'); retour != std::string_view::npos)
        morceau = morceau.substr(0, retour + 1);
      assert(!morceau.empty() && morceau.size() <= morceauPied);
      reste.remove_prefix(morceau.size());
      if (morceau.back() == '\n') morceau.remove_suffix(1);
      hauteur += InterpreteTexte(depart + hauteur, morceau);
    }
    return hauteur;
  });
}

}  // namespace fenlor
