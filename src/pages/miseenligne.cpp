#include "pages/miseenligne.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>
#include <map>
#include <utility>

namespace fenlor {

namespace {

constexpr char suite[] = "\x85";  // "…"
constexpr std::size_t tailleSigle = 3;
constexpr i32 rienAGauche = std::numeric_limits<i32>::min();

/// Dates, line numbers, amounts with their side and their currency.
constexpr std::array<bool, 256> DeNombre = [] {
  std::array<bool, 256> table{};
  for (const char c : std::string_view("0123456789 ,.-/%DF\x80\x1F")) table[static_cast<u8>(c)] = true;
  return table;
}();
bool EstNombre(std::string_view texte) {
  return std::all_of(texte.begin(), texte.end(), [](char c) { return DeNombre[static_cast<u8>(c)]; });
}

i32 Milieu(i32 a, i32 b) { return static_cast<i32>((i64{a} + b) / 2); }

}  // namespace

void GroupeMilliers(std::string& run, bool colonne) {
  constexpr std::size_t millier = 3, cents = 2;
  const auto place = [&](bool chiffre, std::size_t i) {
    while (i < run.size() && (run[i] >= '0' && run[i] <= '9') != chiffre) ++i;
    return i;
  };
  const std::size_t debut = place(true, 0), unites = place(false, debut);
  if (unites <= debut + millier || !EstNombre(run)) return;
  const bool virgule = unites < run.size() && run[unites] == ',';
  const std::size_t fin = virgule ? place(false, unites + 1) : unites;
  // Nothing else that counts: a date is no amount.
  if ((virgule ? fin - unites - 1 != cents : !colonne) || place(true, fin) != run.size()) return;
  for (std::size_t i = unites; i > debut + millier;) run.insert(i -= millier, 1, BlancFin);
}

bool MiseEnLigne::Groupe::AGauche() const { return place.alignement == Alignement::Gauche || place.debute; }

bool MiseEnLigne::Groupe::Montree() const { return !AGauche() || place.droite > place.gauche; }

i32 MiseEnLigne::Groupe::Cle() const {
  if (AGauche()) return place.gauche;
  return place.alignement == Alignement::Droite ? place.droite : Milieu(place.gauche, place.droite);
}

i32 MiseEnLigne::Groupe::Reserve() const {
  if (AGauche()) return place.gauche;
  const i64 voulue = place.alignement == Alignement::Droite
                         ? place.droite - largeur
                         : (i64{place.gauche} + place.droite - largeur) / 2;
  return static_cast<i32>(std::max<i64>(voulue, place.gauche));
}

bool MiseEnLigne::Groupe::Figure() const {
  return nombre || (place.alignement == Alignement::Droite && !place.debute);
}

std::size_t MiseEnLigne::Commence(const PlaceTexte& place, unsigned style, std::string_view run,
                                  i32 largeur) {
  m_groupes.push_back({place});
  const std::size_t texte = m_groupes.size() - 1;
  Continue(texte, style, run, largeur);
  return texte;
}

void MiseEnLigne::Continue(std::size_t texte, unsigned style, std::string_view run, i32 largeur) {
  assert(texte < m_groupes.size() && largeur >= 0);
  Groupe& groupe = m_groupes[texte];
  groupe.largeur += largeur;
  groupe.nombre = groupe.nombre && (EstNombre(run) || (groupe.premier == Aucun && run.size() <= tailleSigle));
  (groupe.premier == Aucun ? groupe.premier : m_runs[groupe.dernier].suivant) = m_runs.size();
  groupe.dernier = m_runs.size();
  m_runs.push_back({style, m_textes.size(), run.size(), largeur, texte, {}});
  m_textes += run;
}

void MiseEnLigne::Trait(i32 gauche, i32 droite, i32 y, i32 epaisseur) {
  m_runs.push_back({0, 0, 0, epaisseur, Aucun, {gauche, y, droite, y}});
}

void MiseEnLigne::Dessine() {
  if (m_papier.mesure) MesureColonnes();
  std::vector<std::size_t> ordre(m_groupes.size());
  for (std::size_t i = 0; i < ordre.size(); ++i) ordre[i] = i;
  const auto cle = [this](std::size_t i) { return std::pair(m_groupes[i].place.haut, m_groupes[i].Cle()); };
  const auto avant = [&](auto a, auto b) { return cle(a) < cle(b); };
  // As they came, but where a heading or a footer stands among them.
  if (!std::is_sorted(ordre.begin(), ordre.end(), avant)) std::stable_sort(ordre.begin(), ordre.end(), avant);
  Lignes lignes;
  for (std::size_t debut = 0, fin = 0; debut < ordre.size(); debut = fin) {
    const Groupe& premier = m_groupes[ordre[debut]];
    while (fin < ordre.size() && m_groupes[ordre[fin]].place.haut == premier.place.haut) ++fin;
    lignes.emplace_back(premier.place.haut, m_runs[premier.premier].style & StyleGras);
    PlaceLigne(std::span(ordre).subspan(debut, fin - debut));
  }
  DessineBandes(lignes);
  for (const Run& run : m_runs) {
    assert(run.groupe == Aucun || run.groupe < m_groupes.size());
    if (run.groupe == Aucun)
      DessineTrait(run.cadre, run.largeur);
    else
      m_peripherique.DessineTexte(run.style, run.cadre, m_groupes[run.groupe].place.alignement, TexteDe(run));
  }
  m_runs.clear();
  m_groupes.clear();
  m_textes.clear();
  m_bords.clear();
}

void MiseEnLigne::DessineTrait(const Rectangle& cadre, i32 epaisseur) {
  if (m_papier.filet)
    m_peripherique.Remplit({cadre.gauche, cadre.haut, cadre.droite, cadre.haut + m_papier.filet}, Ton::Filet);
  else
    m_peripherique.DessineTrait(cadre.gauche, cadre.droite, cadre.haut, epaisseur);
}

void MiseEnLigne::DessineBandes(const Lignes& lignes) {
  if (!m_papier.bandes) return;
  std::map<i32, Rectangle> bandes;
  const auto grasse = [&](i32 haut) {
    const auto ligne = std::lower_bound(lignes.begin(), lignes.end(), std::pair(haut, false));
    return haut >= m_sansBande && ligne != lignes.end() && *ligne == std::pair(haut, true);
  };
  for (const Run& run : m_runs) {
    if (run.groupe != Aucun) continue;
    const i32 dessous = run.cadre.haut - 1, gauche = std::max(0, run.cadre.gauche - m_ecart),
              droite = std::min(m_page.largeur, run.cadre.droite + m_ecart);
    for (const i32 pas : {-m_page.interligne, m_page.interligne}) {
      i32 haut = pas < 0 && !grasse(dessous) ? dessous + pas : dessous;
      for (; grasse(haut); haut += pas)
        bandes.try_emplace(haut, Rectangle{gauche, haut, droite, haut + m_page.interligne});
    }
  }
  for (const auto& [haut, cadre] : bandes) m_peripherique.Remplit(cadre, Ton::Bande);
}

void MiseEnLigne::PlaceLigne(std::span<const std::size_t> ligne) {
  i32 libre = rienAGauche;  // behind the texts that are placed
  for (std::size_t i = 0; i < ligne.size(); ++i) {
    Groupe& groupe = m_groupes[ligne[i]];
    const PlaceTexte& place = groupe.place;
    Etend(groupe, place.gauche, 0);
    const bool aGauche = groupe.AGauche();
    if (!groupe.Montree()) continue;
    // A line number is worth more than the white behind it.
    const i32 ecart = aGauche && groupe.nombre ? m_ecart * 2 / 3 : m_ecart;
    i32 gauche = std::max(place.marge, libre);
    i32 droite = place.limite;
    // One that shows nothing takes no room.
    std::size_t n = i + 1;
    while (n < ligne.size() && !m_groupes[ligne[n]].Montree()) ++n;
    if (n < ligne.size()) droite = std::min(droite, Borne(groupe, m_groupes[ligne[n]]) - ecart);
    if (aGauche) {
      gauche = std::max(gauche, place.gauche);
      const auto bord = place.colonneSuivante ? m_bords.find(place.droite) : m_bords.end();
      const i32 fin =
          bord == m_bords.end() ? place.droite : std::max(bord->second, Milieu(place.gauche, place.droite));
      droite = std::min(droite, fin - (place.colonneSuivante ? ecart : 0));
    } else if (place.alignement == Alignement::Droite && !aGauche) {
      droite = std::min(droite, place.droite);
    }
    if (droite <= gauche) continue;
    [[maybe_unused]] const i32 avant = libre;
    libre = std::max(libre, Place(groupe, gauche, droite) + ecart);
    // Nothing covers its neighbour, and nothing leaves the line.
    assert(m_runs[groupe.premier].cadre.gauche >= avant);
    assert(m_runs[groupe.dernier].cadre.droite <= place.limite);
  }
}

/// What the next text may ask for: its column, but never more than half of what lies between the two, and
/// nothing of a figure that ends where it should.
i32 MiseEnLigne::Borne(const Groupe& groupe, const Groupe& suivant) const {
  const i32 cle = groupe.Cle(), autre = suivant.Cle(), reserve = suivant.Reserve();
  const bool finit = groupe.place.alignement == Alignement::Droite && !groupe.AGauche();
  return std::max(reserve, finit ? std::min(autre, cle + m_ecart) : Milieu(cle, autre));
}

i32 MiseEnLigne::Place(Groupe& groupe, i32 gauche, i32 droite) {
  assert(gauche < droite);
  const PlaceTexte& place = groupe.place;
  i32 largeur = static_cast<i32>(std::min<i64>(groupe.largeur, droite - gauche));
  if (largeur < groupe.largeur && !groupe.Figure() &&
      i64{largeur} * 100 < groupe.largeur * m_papier.etroitesse) {
    Raccourcit(groupe, largeur);
    largeur = static_cast<i32>(std::min<i64>(largeur, groupe.largeur * m_papier.etroitesse / 100));
  }
  i32 debut = gauche;
  if (place.alignement == Alignement::Droite && !groupe.AGauche()) debut = place.droite - largeur;
  if (place.alignement == Alignement::Centre)
    debut = static_cast<i32>((i64{place.gauche} + place.droite - largeur) / 2);
  assert(largeur >= 0 && largeur <= droite - gauche);
  debut = std::clamp(debut, gauche, droite - largeur);
  Etend(groupe, debut, largeur);
  return debut + largeur;
}

/// As many characters as the place holds beside the dots, all drawn as narrow as a text may be.
void MiseEnLigne::Raccourcit(Groupe& groupe, i32 place) {
  assert(groupe.premier != Aucun && place > 0);
  const auto large = [&](const Run& run, std::size_t n) {
    return i64{m_peripherique.Mesure(run.style, std::string(TexteDe(run).substr(0, n)) + suite).largeur};
  };
  const auto tient = [&](i64 largeur) { return largeur * m_papier.etroitesse <= i64{place} * 100; };
  i64 avant = 0;
  std::size_t dernier = groupe.premier;  // the run that is shortened, the ones behind it are left out
  for (std::size_t i; (i = m_runs[dernier].suivant) != Aucun; dernier = i) {
    const i64 apres = avant + m_runs[dernier].largeur;
    if (!tient(apres + large(m_runs[i], 0))) break;
    avant = apres;
  }
  Run& run = m_runs[dernier];
  std::size_t de = 0, a = run.taille;
  while (de < a) {
    const std::size_t n = (de + a + 1) / 2;
    tient(avant + large(run, n)) ? de = n : a = n - 1;
  }
  std::string texte(TexteDe(run).substr(0, de));
  texte.resize(texte.find_last_not_of(' ') + 1);
  texte += suite;
  run.debut = m_textes.size();
  run.taille = texte.size();
  m_textes += texte;
  run.largeur = m_peripherique.Mesure(run.style, texte).largeur;
  for (std::size_t i = run.suivant; i != Aucun; i = m_runs[i].suivant) m_runs[i].largeur = 0;
  groupe.largeur = avant + run.largeur;
}

void MiseEnLigne::Etend(const Groupe& groupe, i32 gauche, i32 largeur) {
  const PlaceTexte& place = groupe.place;
  const i32 haut = place.haut + (m_papier.interligne ? (m_page.interligne - place.hauteur) / 2 : 0);
  i64 avant = 0;
  const auto bord = [&] {
    return gauche + static_cast<i32>(avant * largeur / std::max<i64>(1, groupe.largeur));
  };
  for (std::size_t i = groupe.premier; i != Aucun; i = m_runs[i].suivant) {
    Run& run = m_runs[i];
    run.cadre = {bord(), haut, 0, haut + place.hauteur};
    avant += run.largeur;
    run.cadre.droite = bord();
    assert(run.cadre.droite >= run.cadre.gauche);
  }
  assert(avant == groupe.largeur);
}

}  // namespace fenlor
