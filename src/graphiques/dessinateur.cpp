#include "graphiques/dessinateur.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "core/valeurs.h"

namespace fenlor {

namespace {

constexpr char TroisPoints[] = "\x85";                              // one character of three dots
constexpr f64 MilieuLigneBase = (MonteeTexte - DescenteTexte) / 2;  // of the height of the font
constexpr f64 TitreReduit = 0.6;                                    // a longer title is cut
constexpr int LumiereDessus = 28, OmbreCote = 26, OmbreDessous = 38;
constexpr f64 ReculX = 0.8, ReculY = 0.6;  // of the depth, as it is seen
constexpr f64 EcartGraduations = 1.5;      // lines of text
constexpr f64 EcartDebout = 0.65;          // of the font: labels on end begin below the texts beside them
constexpr f64 EcartBas = 1.25;             // of the font: to the middle of the values below rows of labels
constexpr f64 PlanMinimal = 0.45;          // of the chart, or its texts are left out

f64 AireSignee(const std::vector<PointForme>& face) {
  assert(face.size() >= 3);
  f64 aire = 0;
  for (std::size_t i = 0, j = face.size() - 1; i < face.size(); j = i++)
    aire += face[j].x * face[i].y - face[i].x * face[j].y;
  return aire;
}

/// Light on a side whose normal, of length 1, points there.
int Lumiere(PointForme normale) {
  const f64 dessus = normale.y < 0 ? -normale.y * LumiereDessus : -normale.y * OmbreDessous;
  return static_cast<int>(std::lround(dessus - std::max(0.0, normale.x) * OmbreCote));
}

}  // namespace

Encre EncreValeur(f64 valeur) { return {static_cast<u8>(TeinteSerie + (valeur < 0 ? 1 : 0))}; }

Dessinateur::Dessinateur(const SerieGraphique& serie, const PlaceGraphique& place, const MesureTexte& mesure,
                         DessinGraphique& dessin)
    : m_serie(serie), m_place(place), m_mesure(mesure), m_dessin(dessin), m_plan(place.graphique) {}

f64 Dessinateur::Valeur(std::size_t i) const {
  assert(i < Nombre());
  const f64 valeur = m_serie.points[i].valeur;
  return std::isfinite(valeur) ? valeur : 0;
}

bool Dessinateur::ToutNul() const {
  for (std::size_t i = 0; i < Nombre(); ++i)
    if (Valeur(i) != 0) return false;
  return true;
}

void Dessinateur::Polygone(std::vector<PointForme> points, Encre encre, int point, bool bord) {
  assert(points.size() >= 3);
  assert(point >= -1 && point < static_cast<int>(Nombre()));
  Forme forme;
  forme.points = std::move(points);
  forme.encre = encre;
  forme.point = point;
  forme.bord = bord;
  forme.epaisseur = Trait();
  m_dessin.formes.push_back(std::move(forme));
}

void Dessinateur::Trace(PointForme a, PointForme b, Encre encre, f64 epaisseur) {
  Forme forme;
  assert(epaisseur > 0);
  forme.sorte = SorteForme::Ligne;
  forme.points = {a, b};
  forme.encre = encre;
  forme.epaisseur = epaisseur * Trait();
  m_dessin.formes.push_back(std::move(forme));
}

void Dessinateur::Ecrit(PointForme milieu, const std::string& texte, Cote cote, bool debout) {
  if (texte.empty()) return;
  Forme forme;
  forme.sorte = SorteForme::Texte;
  const f64 base = MilieuLigneBase * Police();
  forme.points = {debout ? PointForme{milieu.x + base, milieu.y} : PointForme{milieu.x, milieu.y + base}};
  forme.texte = texte;
  forme.hauteur = Police();
  forme.cote = cote;
  forme.debout = debout;
  m_dessin.formes.push_back(std::move(forme));
}

void Dessinateur::Annonce(const std::string& texte) {
  if (m_plan.Hauteur() < 3 * Ligne()) return;
  Ecrit({(m_plan.gauche + m_plan.droite) / 2, (m_plan.haut + m_plan.bas) / 2},
        Coupe(texte, m_plan.Largeur() - Police()), Cote::Centre);
}

void Dessinateur::Zone(CadreForme cadre, std::size_t point) {
  assert(point < Nombre());
  m_dessin.zones.push_back({cadre, static_cast<int>(point)});
}

std::string Dessinateur::Coupe(const std::string& texte, f64 largeur, f64 hauteur, bool gras) const {
  assert(hauteur > 0);
  constexpr f64 jeu = 1 + 1e-9;  // a font made to fit does
  if (m_mesure.Largeur(texte, hauteur, gras) <= largeur * jeu) return texte;
  std::string coupe = texte;
  while (!coupe.empty() && m_mesure.Largeur(coupe + TroisPoints, hauteur, gras) > largeur) coupe.pop_back();
  return coupe.empty() ? coupe : coupe + TroisPoints;
}

void Dessinateur::Titre() {
  const CadreForme& cadre = m_place.titre;
  const std::string texte = CompacteTexte(m_serie.titre);
  if (texte.empty() || cadre.Hauteur() <= 0) return;
  const f64 pleine = std::min(m_place.hauteurTitre, cadre.Hauteur() / (MonteeTexte + DescenteTexte));
  const f64 largeur = m_mesure.Largeur(texte, pleine, true);
  Forme titre;
  titre.sorte = SorteForme::Texte;
  titre.hauteur = pleine * std::clamp(cadre.Largeur() / std::max(largeur, 1.0), TitreReduit, 1.0);
  titre.texte = Coupe(texte, cadre.Largeur(), titre.hauteur, true);
  titre.points = {
      {(cadre.gauche + cadre.droite) / 2, (cadre.haut + cadre.bas) / 2 + MilieuLigneBase * titre.hauteur}};
  titre.cote = Cote::Centre;
  titre.gras = true;
  if (!titre.texte.empty()) m_dessin.formes.push_back(std::move(titre));
}

void Dessinateur::Flancs(const std::vector<PointForme>& face, PointForme prof, Encre encre, int point) {
  struct Flanc {
    PointForme a, b;
    int lumiere;
  };
  std::vector<Flanc> flancs;
  const f64 sens = AireSignee(face) > 0 ? 1 : -1;
  for (std::size_t i = 0; i < face.size(); ++i) {
    const PointForme a = face[i], b = face[(i + 1) % face.size()];
    const f64 dx = b.x - a.x, dy = b.y - a.y, longueur = std::hypot(dx, dy);
    if (longueur <= 0) continue;
    const PointForme normale{sens * dy / longueur, -sens * dx / longueur};
    if (normale.x * prof.x + normale.y * prof.y > 0) flancs.push_back({a, b, Lumiere(normale)});
  }
  // What lies further right stands in front: bodies reach back to the right.
  std::stable_sort(flancs.begin(), flancs.end(), [](const Flanc& a, const Flanc& b) {
    return std::min(a.a.x, a.b.x) < std::min(b.a.x, b.b.x);
  });
  for (const Flanc& f : flancs)
    Polygone({f.a, f.b, f.b + prof, f.a + prof}, {encre.teinte, f.lumiere}, point, true);
}

void Dessinateur::Corps(const std::vector<PointForme>& face, PointForme prof, Encre encre, int point) {
  if (prof.x != 0 || prof.y != 0) Flancs(face, prof, encre, point);
  Polygone(face, encre, point, true);
}

Repere::Repere(Dessinateur& dessin, Sens sens, f64 profondeur, f64 recul)
    : m_d(dessin), m_sens(sens), m_part(profondeur), m_recul(recul), m_plan(dessin.Cadre()) {
  assert(m_d.Nombre() > 0);
  m_textesPoints = m_textesValeurs = m_d.Cadre().Hauteur() > 6 * m_d.Ligne();
  // Each needs to know the other's room: the second time both do.
  for (int passe = 0; passe < 2; ++passe) {
    PlaceValeurs();
    PlaceLibelles();
  }
  if (m_plan.Largeur() < PlanMinimal * m_d.Cadre().Largeur() ||
      m_plan.Hauteur() < PlanMinimal * m_d.Cadre().Hauteur()) {
    m_textesPoints = m_textesValeurs = false;
    PlaceValeurs();
    PlaceLibelles();
  }
  m_d.PosePlan(m_plan);
  DessineParois();
  DessineValeurs();
  DessineLibelles();
}

void Repere::PlaceProfondeur() {
  assert(m_part >= 0 && m_recul >= 0);
  const CadreForme& cadre = m_d.Cadre();
  const f64 longueur = Vertical() ? cadre.Largeur() : cadre.Hauteur();
  const f64 recul = std::min(m_part * longueur / static_cast<f64>(m_d.Nombre()),
                             m_recul * std::min(cadre.Largeur(), cadre.Hauteur()));
  m_prof = {recul * ReculX, -recul * ReculY};
}

void Repere::PlaceValeurs() {
  PlaceProfondeur();
  f64 minimum = 0, maximum = 0;
  for (std::size_t i = 0; i < m_d.Nombre(); ++i) {
    minimum = std::min(minimum, m_d.Valeur(i));
    maximum = std::max(maximum, m_d.Valeur(i));
  }
  const f64 longueur = Vertical() ? m_plan.Hauteur() : m_plan.Largeur();
  f64 place = EcartGraduations * m_d.Ligne(), largeur = 0;
  const auto plusLarge = [&] {
    f64 maximale = 0;
    for (const i64 rang : {m_echelle.premier, m_echelle.dernier})
      maximale = std::max(
          maximale, m_d.Largeur(TexteGraduation(m_echelle.Valeur(rang), m_echelle.pas, m_d.Serie().euro)));
    return maximale;
  };
  m_echelle = FaitEchelle(minimum, maximum, static_cast<unsigned>(std::clamp(longueur / place, 1.0, 10.0)));
  largeur = plusLarge();
  if (!Vertical()) {
    place = largeur + 2 * m_d.Police();
    m_echelle = FaitEchelle(minimum, maximum, static_cast<unsigned>(std::clamp(longueur / place, 1.0, 10.0)));
    largeur = plusLarge();
  }
  const CadreForme& cadre = m_d.Cadre();
  // Marks of points reach over the edge of the front.
  const f64 bord = std::min(m_d.Ligne() / 2, cadre.Hauteur() / 10);
  m_plan = {cadre.gauche + 2 * m_d.Trait(), cadre.haut - m_prof.y + bord,
            cadre.droite - m_prof.x - 2 * m_d.Trait(), cadre.bas - bord};
  if (m_textesPoints && Vertical()) m_plan.droite -= m_d.Police() / 2;
  if (m_textesValeurs && Vertical()) {
    m_plan.gauche += largeur + m_d.Police();
  } else if (m_textesValeurs) {
    m_plan.gauche += std::max(m_largeurLibelles + m_d.Police(), largeur / 2);
    m_plan.droite -= std::max(0.0, largeur / 2 - m_prof.x);
    m_plan.bas -= 2 * EcartBas * m_d.Police() - bord;
  }
}

void Repere::PlaceLibelles() {
  const f64 nombre = static_cast<f64>(m_d.Nombre());
  f64 maximale = 0;
  for (std::size_t i = 0; i < m_d.Nombre(); ++i) maximale = std::max(maximale, m_d.Largeur(m_d.Libelle(i)));
  m_case = (Vertical() ? m_plan.Largeur() : m_plan.Hauteur()) / nombre;
  m_unSur = 1;
  if (m_textesPoints && Vertical()) {
    m_debout = maximale + m_d.Police() / 2 > m_case;
    m_largeurLibelles = std::min(maximale, m_d.Cadre().Hauteur() * 0.3);
    m_plan.bas -= m_debout ? m_largeurLibelles + EcartDebout * m_d.Police() : m_d.Ligne();
  } else if (m_textesPoints) {
    m_largeurLibelles = std::min(maximale, m_d.Cadre().Largeur() * 0.35);
  } else {
    m_largeurLibelles = 0;
  }
  if (!Vertical() || m_debout)
    m_unSur = static_cast<std::size_t>(std::max(1.0, std::ceil(m_d.Ligne() / std::max(m_case, 1e-6))));
  const f64 pas = (Vertical() ? m_plan.Hauteur() : m_plan.Largeur()) /
                  static_cast<f64>(m_echelle.dernier - m_echelle.premier);
  const f64 besoin =
      Vertical() ? m_d.Ligne()
                 : m_d.Largeur(TexteGraduation(m_echelle.Maximum(), m_echelle.pas, true)) + m_d.Police() / 2;
  const f64 besoinBas =
      Vertical() ? 0
                 : m_d.Largeur(TexteGraduation(m_echelle.Minimum(), m_echelle.pas, true)) + m_d.Police() / 2;
  m_graduationSur =
      static_cast<i64>(std::max(1.0, std::ceil(std::max(besoin, besoinBas) / std::max(pas, 1e-6))));
}

f64 Repere::Valeur(f64 valeur) const {
  assert(m_echelle.premier < m_echelle.dernier && m_echelle.pas > 0);
  const f64 part = (valeur - m_echelle.Minimum()) / (m_echelle.Maximum() - m_echelle.Minimum());
  return Vertical() ? m_plan.bas - part * m_plan.Hauteur() : m_plan.gauche + part * m_plan.Largeur();
}

f64 Repere::Milieu(std::size_t i) const {
  assert(i < m_d.Nombre());
  return (Vertical() ? m_plan.gauche : m_plan.haut) + (static_cast<f64>(i) + 0.5) * m_case;
}

PointForme Repere::Place(f64 travers, f64 valeur) const {
  return Vertical() ? PointForme{travers, Valeur(valeur)} : PointForme{Valeur(valeur), travers};
}

std::vector<PointForme> Repere::Barre(std::size_t i, f64 part) const {
  assert(part > 0 && part <= 1);
  const f64 demi = part * m_case / 2, milieu = Milieu(i), valeur = m_d.Valeur(i);
  return {Place(milieu - demi, 0), Place(milieu - demi, valeur), Place(milieu + demi, valeur),
          Place(milieu + demi, 0)};
}

void Repere::LigneZero() {
  const PointForme a = Place(Vertical() ? m_plan.gauche : m_plan.haut, 0);
  const PointForme b = Place(Vertical() ? m_plan.droite : m_plan.bas, 0);
  m_d.Trace(a, b, {TeinteAxe}, 1.5);
}

void Repere::DessineParois() {
  const CadreForme& p = m_plan;
  if (m_prof.x == 0) return;
  const PointForme hg{p.gauche, p.haut}, hd{p.droite, p.haut}, bg{p.gauche, p.bas}, bd{p.droite, p.bas};
  m_d.Polygone({hg + m_prof, hd + m_prof, bd + m_prof, bg + m_prof}, {TeinteParoi}, -1, true);
  m_d.Polygone({hg, hg + m_prof, bg + m_prof, bg}, {TeinteParoi, -6}, -1, true);
  m_d.Polygone({bg, bg + m_prof, bd + m_prof, bd}, {TeinteParoi, -12}, -1, true);
}

void Repere::DessineValeurs() {
  assert(m_graduationSur > 0);
  for (i64 rang = m_echelle.premier; rang <= m_echelle.dernier; ++rang) {
    const f64 valeur = m_echelle.Valeur(rang);
    const PointForme a = Place(Vertical() ? m_plan.gauche : m_plan.bas, valeur);
    const PointForme b = Place(Vertical() ? m_plan.droite : m_plan.haut, valeur);
    const Encre encre{rang == 0 ? TeinteAxe : TeinteGrille};
    m_d.Trace(a + m_prof, b + m_prof, encre);
    if (m_prof.x != 0) m_d.Trace(a, a + m_prof, encre);
    if (!m_textesValeurs || rang % m_graduationSur != 0 || (rang != 0 && m_d.ToutNul())) continue;
    const std::string texte = TexteGraduation(valeur, m_echelle.pas, m_d.Serie().euro);
    if (Vertical())
      m_d.Ecrit({a.x - m_d.Police() / 2, a.y}, texte, Cote::Droite);
    else
      m_d.Ecrit({a.x, m_plan.bas + EcartBas * m_d.Police()}, texte, Cote::Centre);
  }
}

void Repere::DessineLibelles() {
  assert(m_unSur > 0);
  for (std::size_t i = 0; i < m_d.Nombre(); ++i) {
    const f64 milieu = Milieu(i), demi = m_case / 2;
    if (Vertical())
      m_d.Zone({milieu - demi, m_d.Cadre().haut, milieu + demi, m_d.Cadre().bas}, i);
    else
      m_d.Zone({m_d.Cadre().gauche, milieu - demi, m_d.Cadre().droite, milieu + demi}, i);
    if (!m_textesPoints || i % m_unSur != 0) continue;
    const std::string libelle =
        !Vertical() || m_debout ? m_d.Coupe(m_d.Libelle(i), m_largeurLibelles) : m_d.Libelle(i);
    const f64 dessous = m_plan.bas + EcartDebout * m_d.Police();
    if (!Vertical())
      m_d.Ecrit({m_plan.gauche - m_d.Police() / 2, milieu}, libelle, Cote::Droite);
    else if (m_debout)
      m_d.Ecrit({milieu, dessous}, libelle, Cote::Droite, true);
    else
      m_d.Ecrit({milieu, m_plan.bas + m_d.Ligne() / 2}, libelle, Cote::Centre);
  }
}

}  // namespace fenlor
