// What the drawings of all kinds share: adding shapes, depth, the frame of reference with its axes. Internal
// to graphiques/.
#pragma once

#include <cassert>

#include "graphiques/axe.h"
#include "graphiques/dessin.h"

namespace fenlor {

/// Collects the shapes of one chart.
class Dessinateur {
 public:
  /// All outlive the object.
  Dessinateur(const SerieGraphique& serie, const PlaceGraphique& place, const MesureTexte& mesure,
              DessinGraphique& dessin);

  const SerieGraphique& Serie() const { return m_serie; }
  const CadreForme& Cadre() const { return m_place.graphique; }
  std::size_t Nombre() const { return m_serie.points.size(); }
  f64 Valeur(std::size_t i) const;
  const std::string& Libelle(std::size_t i) const {
    assert(i < Nombre());
    return m_serie.points[i].libelle;
  }
  bool ToutNul() const;

  f64 Police() const { return m_place.hauteurTexte; }       ///< height of the font
  f64 Ligne() const { return 1.3 * m_place.hauteurTexte; }  ///< from one text to the next below it
  f64 Largeur(const std::string& texte) const { return m_mesure.Largeur(texte, Police(), false); }
  f64 Trait() const { return m_place.hauteurTexte / 12; }  ///< the thinnest line

  void Polygone(std::vector<PointForme> points, Encre encre, int point = -1, bool bord = false);
  void Trace(PointForme a, PointForme b, Encre encre, f64 epaisseur = 1);
  /// A line of text; the anchor is in the middle of its height.
  void Ecrit(PointForme milieu, const std::string& texte, Cote cote, bool debout = false);
  /// In the middle of what is not taken by labels.
  void Annonce(const std::string& texte);
  void PosePlan(const CadreForme& plan) { m_plan = plan; }
  void Zone(CadreForme cadre, std::size_t point);
  void Titre();
  /// The text cut to a width, with dots at its end.
  std::string Coupe(const std::string& texte, f64 largeur) const {
    return Coupe(texte, largeur, Police(), false);
  }
  std::string Coupe(const std::string& texte, f64 largeur, f64 hauteur, bool gras) const;

  /// A body whose front is `face` and whose depth is `prof`: its visible sides, lit from above, then its
  /// front.
  void Corps(const std::vector<PointForme>& face, PointForme prof, Encre encre, int point);
  /// The sides alone.
  void Flancs(const std::vector<PointForme>& face, PointForme prof, Encre encre, int point);

 private:
  const SerieGraphique& m_serie;
  const PlaceGraphique& m_place;
  const MesureTexte& m_mesure;
  DessinGraphique& m_dessin;
  CadreForme m_plan;  ///< without the room of the labels
};

/// Ink of a value: one colour above zero, another below.
Encre EncreValeur(f64 valeur);

/// Axis of values, grid, labels of the points, walls where there is depth.
class Repere {
 public:
  enum class Sens { Vertical, Horizontal };  ///< of the values

  /// Draws what lies behind the chart. `profondeur`: part of a slot that bodies reach back, at most `recul`
  /// of the smaller side of the chart; 0: flat.
  Repere(Dessinateur& dessin, Sens sens, f64 profondeur, f64 recul = 0.14);

  /// Position of a value along its axis.
  f64 Valeur(f64 valeur) const;
  /// Middle of the slot of a point, across the axis of values.
  f64 Milieu(std::size_t i) const;
  f64 Case() const { return m_case; }
  const EchelleAxe& Echelle() const { return m_echelle; }
  PointForme Profondeur() const { return m_prof; }
  const CadreForme& Plan() const { return m_plan; }
  /// The point of the front of a value at a place across.
  PointForme Place(f64 travers, f64 valeur) const;
  /// A bar from zero to a value, `part` of a slot thick.
  std::vector<PointForme> Barre(std::size_t i, f64 part) const;
  /// The line of zero, over what was drawn.
  void LigneZero();

 private:
  bool Vertical() const { return m_sens == Sens::Vertical; }
  void PlaceValeurs();
  void PlaceLibelles();
  void PlaceProfondeur();
  void DessineParois();
  void DessineValeurs();
  void DessineLibelles();

  Dessinateur& m_d;
  const Sens m_sens;
  const f64 m_part, m_recul;  ///< of the depth
  CadreForme m_plan;          ///< the front
  PointForme m_prof{0, 0};
  EchelleAxe m_echelle;
  f64 m_case = 0;
  bool m_textesValeurs = true, m_textesPoints = true;
  bool m_debout = false;      ///< labels below a vertical chart
  std::size_t m_unSur = 1;    ///< labels that are written
  i64 m_graduationSur = 1;    ///< steps that are written
  f64 m_largeurLibelles = 0;  ///< room for the labels
};

void DessineBarres(Dessinateur& dessin, Repere::Sens sens, bool relief);
void DessineAires(Dessinateur& dessin, bool relief);
void DessineCourbes(Dessinateur& dessin, bool relief);
void DessineNuage(Dessinateur& dessin);
void DessineSurface(Dessinateur& dessin);
void DessineSecteurs(Dessinateur& dessin, bool relief);

}  // namespace fenlor
