// The device that paints: screen, printer and PDF alike, through a QPainter.
#pragma once

#include <QFont>
#include <QPageLayout>
#include <array>

#include "pages/peripherique.h"

class QPainter;

namespace fenlor {

/// Counts 1,200 units to the inch whatever it paints on. Fonts are measured in these units too,
/// by the design of the face and never by a screen: pages break alike on all paint devices, and as
/// on an `Enregistreur` of the same sheet.
class PeripheriqueQt : public Peripherique {
 public:
  /// The printable part of the sheet, as it is turned.
  explicit PeripheriqueQt(const QPageLayout& feuille);

  /// Paints here from now on; the painter's unit is 1/1200 inch, its origin the corner of what can
  /// be printed. Without one (null, as at first) the device only measures.
  void Peint(QPainter* peintre) { m_peintre = peintre; }

  i32 Largeur() const override { return m_largeur; }
  i32 Hauteur() const override { return m_hauteur; }
  i32 UnitesParPouce() const override { return UnitesPeripherique; }
  /// "Courier", and a face that the machine lacks, is a face of fixed width that it has, drawn so narrow
  /// that the 144 columns of the page hold a character each.
  void FaitPolice(unsigned style, const PoliceEtat& police) override;
  /// 10 points, fixed width.
  void FaitPoliceBrouillon() override;
  i32 HauteurPolice(unsigned style) const override { return Fonte(style).hauteur; }
  Etendue Mesure(unsigned style, std::string_view texte) const override;
  /// Nothing is clipped: what an italic letter leans out is seen.
  void DessineTexte(unsigned style, const Rectangle& cadre, Alignement alignement,
                    std::string_view texte) override;
  /// A unit of thickness is drawn as 6, a hair that paper shows; on a screen as a pixel at least.
  void DessineTrait(i32 gauche, i32 droite, i32 y, i32 epaisseur) override;
  void Remplit(const Rectangle& cadre, Ton ton) override;

 private:
  struct PoliceQt {
    QFont fonte;
    i32 hauteur = 0;
    qreal montee = 0;                ///< from the top of the cell to the base line
    qreal etroitesse = 1;            ///< of the letters' width, at most 1
    std::array<float, 256> avances;  ///< of each Windows-1252 character
  };
  const PoliceQt& Fonte(unsigned style) const { return m_polices[style % NbStyles]; }
  void Prepare(PoliceQt& police, const QString& face, i32 hauteur, bool gras, bool italique, bool souligne);
  void Resserre(PoliceQt& police) const;

  i32 m_largeur;
  i32 m_hauteur;
  QPainter* m_peintre = nullptr;
  std::array<PoliceQt, NbStyles> m_polices;
};

}  // namespace fenlor
