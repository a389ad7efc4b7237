#include <algorithm>
#include <cassert>
#include <cmath>
#include <numbers>

#include "core/valeurs.h"
#include "graphiques/dessinateur.h"
#include "graphiques/textes.h"

namespace fenlor {

namespace {

constexpr f64 Tour = 2 * std::numbers::pi;
constexpr f64 PasArc = Tour / 180;
constexpr f64 Ecrasement = 0.55, Epaisseur = 0.18;  ///< of the height, of a pie in depth
constexpr f64 Coude = 1.08;                         ///< of the radius: where the leader line turns
constexpr f64 RayonMinimal = 0.22;                  ///< of the smaller side; below it labels are left out
constexpr f64 LibelleMaximal = 0.3;                 ///< of the width

struct Secteur {
  std::size_t point;
  f64 debut, fin;  ///< angles, clockwise from the top
  Encre encre;
  std::string texte;
  f64 y = 0;  ///< of its label

  f64 Milieu() const { return (debut + fin) / 2; }
  bool ADroite() const { return Milieu() < Tour / 2; }
};

std::string TexteSecteur(const std::string& libelle, f64 part) {
  assert(part >= 0 && part <= 1);
  const f64 pourcent = Arrondi(part * 100, 1);
  const std::string nombre = pourcent > 0 ? FormatMontant(pourcent, 1) : Texte(MotPartInfime);
  return TexteFormat(FormatPart, {libelle, nombre});
}

class Camembert {
 public:
  Camembert(Dessinateur& dessin, bool relief) : m_d(dessin), m_relief(relief) {
    f64 somme = 0;
    for (std::size_t i = 0; i < m_d.Nombre(); ++i) somme += std::abs(m_d.Valeur(i));
    f64 angle = 0;
    for (std::size_t i = 0; i < m_d.Nombre(); ++i) {
      const f64 valeur = std::abs(m_d.Valeur(i));
      if (valeur == 0) continue;
      const f64 suite = angle + Tour * (valeur / somme);
      m_secteurs.push_back({i, angle, suite, {}, TexteSecteur(m_d.Libelle(i), valeur / somme)});
      m_negatif = m_negatif || m_d.Valeur(i) < 0;
      m_positif = m_positif || m_d.Valeur(i) > 0;
      angle = suite;
    }
    assert(angle <= Tour * (1 + 1e-9));
    PoseEncres();
  }

  void Dessine() {
    Place();
    if (m_secteurs.empty()) {
      DessineVide();
      return;
    }
    if (m_relief)
      for (const Secteur& s : m_secteurs) DessineTranche(s);
    for (const Secteur& s : m_secteurs) m_d.Polygone(Contour(s), s.encre, static_cast<int>(s.point), true);
    if (m_textes) {
      Etiquette(true);
      Etiquette(false);
    }
    if (m_note)
      m_d.Ecrit({m_centre.x, m_d.Cadre().bas - m_d.Ligne() / 2},
                m_d.Coupe(Texte(TexteValeursAbsolues), m_d.Cadre().Largeur()), Cote::Centre);
  }

 private:
  void PoseEncres() {
    const std::size_t teintes = CouleursSerie.size();
    for (std::size_t n = 0; n < m_secteurs.size(); ++n) m_secteurs[n].encre = {Teinte(n % teintes)};
    // The last one lies beside the first.
    if (m_secteurs.size() > 1 && m_secteurs.size() % teintes == 1) m_secteurs.back().encre = {Teinte(5)};
  }
  static u8 Teinte(std::size_t rang) { return static_cast<u8>(TeinteSerie + rang); }

  void Place() {
    CadreForme cadre = m_d.Cadre();
    m_note = m_negatif && m_positif && cadre.Hauteur() > 8 * m_d.Ligne();
    if (m_note) cadre.bas -= 1.5 * m_d.Ligne();
    const f64 bord = 2 * m_d.Trait();
    cadre = {cadre.gauche + bord, cadre.haut + bord, cadre.droite - bord, cadre.bas - bord};
    m_centre = {(cadre.gauche + cadre.droite) / 2, (cadre.haut + cadre.bas) / 2};
    for (const Secteur& s : m_secteurs) m_largeurTexte = std::max(m_largeurTexte, m_d.Largeur(s.texte));
    m_largeurTexte = std::min(m_largeurTexte, LibelleMaximal * cadre.Largeur());
    const f64 aplat = m_relief ? Ecrasement : 1;
    const auto rayon = [&](f64 marge, f64 coude, f64 ligne) {
      const f64 haut = (cadre.Hauteur() - ligne) / (2 * coude * aplat + (m_relief ? Epaisseur : 0));
      return std::max(0.0, std::min((cadre.Largeur() / 2 - marge) / coude, haut));
    };
    m_rayon = rayon(m_largeurTexte + m_d.Police(), Coude, m_d.Ligne());
    m_textes = m_rayon >= RayonMinimal * std::min(cadre.Largeur(), cadre.Hauteur());
    if (!m_textes) m_rayon = rayon(0, 1, 0);
    m_epaisseur = m_relief ? Epaisseur * m_rayon : 0;
    m_aplat = aplat;
    m_centre.y -= m_epaisseur / 2;
    m_haut = cadre.haut;
    m_bas = cadre.bas;
  }

  PointForme Bord(f64 angle, f64 facteur = 1) const {
    return {m_centre.x + std::sin(angle) * m_rayon * facteur,
            m_centre.y - std::cos(angle) * m_rayon * m_aplat * facteur};
  }
  std::vector<PointForme> Arc(f64 debut, f64 fin) const {
    assert(debut <= fin);
    std::vector<PointForme> points;
    const int pas = std::max(1, static_cast<int>(std::ceil((fin - debut) / PasArc)));
    for (int i = 0; i <= pas; ++i) points.push_back(Bord(debut + (fin - debut) * i / pas));
    return points;
  }
  std::vector<PointForme> Contour(const Secteur& s) const {
    std::vector<PointForme> points = Arc(s.debut, s.fin);
    if (m_secteurs.size() > 1) points.push_back(m_centre);
    return points;
  }
  /// The rim below the front half, from a quarter of the turn to three.
  void DessineTranche(const Secteur& s) {
    const f64 debut = std::max(s.debut, Tour / 4), fin = std::min(s.fin, 3 * Tour / 4);
    if (fin <= debut) return;
    std::vector<PointForme> points = Arc(debut, fin);
    const std::size_t dessus = points.size();
    for (std::size_t i = dessus; i-- > 0;) points.push_back(points[i] + PointForme{0, m_epaisseur});
    m_d.Polygone(points, {s.encre.teinte, -30}, static_cast<int>(s.point), true);
  }
  void DessineVide() {
    const std::vector<PointForme> tour = Arc(0, Tour);
    m_d.Polygone(tour, {TeinteParoi}, -1, true);
  }

  /// Labels of one side, from top to bottom, moved apart; the smallest shares go without where all have no
  /// room.
  void Etiquette(bool droite) {
    assert(m_textes && m_rayon >= 0);
    std::vector<Secteur*> cote;
    for (Secteur& s : m_secteurs)
      if (s.ADroite() == droite) cote.push_back(&s);
    const auto place = static_cast<std::size_t>(std::max(0.0, (m_bas - m_haut) / m_d.Ligne()));
    std::stable_sort(cote.begin(), cote.end(), [](const Secteur* a, const Secteur* b) {
      return a->fin - a->debut > b->fin - b->debut;
    });
    if (cote.size() > place) cote.resize(place);
    std::sort(cote.begin(), cote.end(), [&](const Secteur* a, const Secteur* b) {
      return droite ? a->debut < b->debut : a->debut > b->debut;
    });
    f64 libre = m_haut + m_d.Ligne() / 2;
    for (Secteur* s : cote) {
      s->y = std::max(libre, Bord(s->Milieu(), Coude).y);
      libre = s->y + m_d.Ligne();
    }
    f64 limite = m_bas - m_d.Ligne() / 2;
    for (auto s = cote.rbegin(); s != cote.rend(); ++s) {
      (*s)->y = std::min((*s)->y, limite);
      limite = (*s)->y - m_d.Ligne();
    }
    for (const Secteur* s : cote) Legende(*s);
  }
  void Legende(const Secteur& s) {
    const f64 sens = s.ADroite() ? 1 : -1;
    const f64 x = m_centre.x + sens * m_rayon * Coude;
    // A rim below the edge would hide the line's beginning.
    const f64 angle = s.Milieu();
    const bool devant = m_relief && std::cos(angle) < 0;
    const PointForme depart = devant ? Bord(angle) + PointForme{0, m_epaisseur} : Bord(angle);
    m_d.Trace(depart, {x, s.y}, {TeinteAxe});
    m_d.Trace({x, s.y}, {x + sens * m_d.Police() / 2, s.y}, {TeinteAxe});
    m_d.Ecrit({x + sens * m_d.Police() * 0.75, s.y}, m_d.Coupe(s.texte, m_largeurTexte),
              s.ADroite() ? Cote::Gauche : Cote::Droite);
  }

  Dessinateur& m_d;
  const bool m_relief;
  std::vector<Secteur> m_secteurs;
  bool m_negatif = false, m_positif = false, m_note = false, m_textes = false;
  PointForme m_centre;
  f64 m_rayon = 0, m_aplat = 1, m_epaisseur = 0, m_largeurTexte = 0, m_haut = 0, m_bas = 0;
};

}  // namespace

void DessineSecteurs(Dessinateur& dessin, bool relief) { Camembert(dessin, relief).Dessine(); }

}  // namespace fenlor
