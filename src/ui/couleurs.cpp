#include "ui/couleurs.h"

#include <QGuiApplication>
#include <QScopedValueRollback>
#include <algorithm>
#include <cassert>
#include <cmath>

namespace fenlor {

namespace {

constexpr Teintes fonds = {{{qRgb(224, 224, 255), u"Bleu clair"},
                            {qRgb(224, 255, 224), u"Vert clair"},
                            {qRgb(255, 255, 224), u"Jaune clair"},
                            {qRgb(224, 224, 224), u"Gris clair"},
                            {qRgb(192, 192, 255), u"Bleu"},
                            {qRgb(192, 255, 192), u"Vert"},
                            {qRgb(255, 255, 192), u"Jaune"},
                            {qRgb(192, 192, 192), u"Gris"}}};
constexpr Teintes textes = {{{qRgb(0, 0, 0), u"Noir"},
                             {qRgb(80, 80, 80), u"Gris foncé"},
                             {qRgb(0, 0, 128), u"Bleu foncé"},
                             {qRgb(0, 0, 224), u"Bleu vif"},
                             {qRgb(0, 96, 0), u"Vert foncé"},
                             {qRgb(160, 0, 0), u"Rouge"},
                             {qRgb(112, 0, 112), u"Violet"},
                             {qRgb(112, 64, 0), u"Marron"}}};

constexpr double contrasteAttenue = 5;

double Luminance(const QColor& couleur) {
  const auto canal = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
  return 0.2126 * canal(couleur.redF()) + 0.7152 * canal(couleur.greenF()) + 0.0722 * canal(couleur.blueF());
}

/// `part` of a, the rest of b.
QColor Mele(const QColor& a, const QColor& b, float part) {
  const auto canal = [part](float x, float y) { return std::clamp(part * x + (1 - part) * y, 0.0F, 1.0F); };
  return QColor::fromRgbF(canal(a.redF(), b.redF()), canal(a.greenF(), b.greenF()),
                          canal(a.blueF(), b.blueF()));
}

/// What a colour that lets something through looks like.
QColor Opaque(const QColor& couleur, const QColor& dessous) {
  return couleur.alpha() == 255 ? couleur : Mele(couleur, dessous, couleur.alphaF());
}

/// `couleur` moved towards black or white no further than it must be.
QColor Eloigne(const QColor& couleur, const QColor& de) {
  const QColor but = Contraste(Noir(), de) >= Contraste(Blanc(), de) ? Noir() : Blanc();
  for (float part = 1; part > 0; part -= 0.05F)
    if (const QColor essai = Mele(couleur, but, part); Contraste(essai, de) >= contrasteTexte) return essai;
  return but;
}

using Role = QPalette::ColorRole;
struct Paire {
  Role texte, fond;
};
/// In this order: what comes later is written on what an earlier row settled.
constexpr Paire paires[] = {{QPalette::WindowText, QPalette::Window},
                            {QPalette::Text, QPalette::Base},
                            {QPalette::Text, QPalette::AlternateBase},
                            {QPalette::ButtonText, QPalette::Button},
                            {QPalette::ToolTipText, QPalette::ToolTipBase},
                            {QPalette::PlaceholderText, QPalette::Base},
                            {QPalette::Link, QPalette::Base},
                            {QPalette::LinkVisited, QPalette::Base},
                            {QPalette::Highlight, QPalette::HighlightedText}};
constexpr QPalette::ColorGroup groupes[] = {QPalette::Active, QPalette::Inactive, QPalette::Disabled};

}  // namespace

double Contraste(const QColor& a, const QColor& b) {
  const auto [moins, plus] = std::minmax({Luminance(a), Luminance(b)});
  return (plus + 0.05) / (moins + 0.05);
}

QColor LisibleSur(const QColor& texte, const QColor& impaire, const QColor& paire, const QColor& secours) {
  const auto moindre = [&](const QColor& c) { return std::min(Contraste(c, impaire), Contraste(c, paire)); };
  for (const QColor& essai : {texte, secours})
    if (moindre(essai) >= contrasteTexte) return essai;
  return moindre(Noir()) >= moindre(Blanc()) ? Noir() : Blanc();
}

QColor Lisible(const QColor& texte, const QColor& fond, double minimum) {
  assert(minimum <= contrasteTexte);  // one of black and white always has as much
  if (Contraste(texte, fond) >= minimum) return texte;
  return Contraste(Noir(), fond) >= Contraste(Blanc(), fond) ? Noir() : Blanc();
}

QColor Attenue(const QColor& texte, const QColor& fond) {
  for (float part = 0.5F; part < 1; part += 0.05F)
    if (const QColor faible = Mele(texte, fond, part); Contraste(faible, fond) >= contrasteAttenue)
      return faible;
  return texte;
}

bool EstSombre(const QPalette& palette) { return palette.color(QPalette::Base).lightnessF() < 0.5; }

QColor CouleurFaute(const QPalette& palette) {
  return EstSombre(palette) ? QColor(255, 150, 150) : QColor(180, 0, 0);
}

QColor CouleurLien(const QPalette& palette) {
  const QColor lien = palette.color(QPalette::Link);
  if (Contraste(lien, palette.color(QPalette::Base)) >= contrasteTexte) return lien;
  return EstSombre(palette) ? QColor(138, 180, 248) : QColor(0, 60, 170);
}

QPalette PaletteSombre() {
  const QColor fond(45, 45, 48), base(30, 30, 30), texte(230, 230, 230), faible(150, 150, 150),
      accent(42, 110, 180);
  QPalette palette(fond, fond);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, fond);
  palette.setColor(QPalette::ToolTipBase, fond);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Blanc());
  palette.setColor(QPalette::Link, QColor(110, 175, 255));
  palette.setColor(QPalette::LinkVisited, QColor(180, 150, 255));
  for (const Role role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, texte);
    palette.setColor(QPalette::Disabled, role, faible);
  }
  palette.setColor(QPalette::PlaceholderText, faible);
  return palette;
}

QPalette PaletteContraste(bool sombre) {
  const QColor texte = sombre ? Blanc() : Noir(), fond = sombre ? Noir() : Blanc();
  const QColor voisin = Mele(texte, fond, 0.07F), trait = Mele(texte, fond, 0.6F),
               faible = Mele(texte, fond, 0.7F);
  QPalette palette(fond, fond);
  for (const Role role : {QPalette::Base, QPalette::ToolTipBase}) palette.setColor(role, fond);
  // Fields stand out from the form, so that one that is only read does not look like them.
  for (const Role role : {QPalette::Window, QPalette::Button, QPalette::AlternateBase})
    palette.setColor(role, voisin);
  for (const Role role : {QPalette::Light, QPalette::Midlight, QPalette::Mid, QPalette::Dark})
    palette.setColor(role, trait);
  palette.setColor(QPalette::Shadow, texte);
  for (const Role role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, texte);
    palette.setColor(QPalette::Disabled, role, faible);
  }
  palette.setColor(QPalette::PlaceholderText, faible);
  palette.setColor(QPalette::Highlight, sombre ? QColor(0, 80, 180) : QColor(0, 0, 128));
  palette.setColor(QPalette::HighlightedText, Blanc());
  palette.setColor(QPalette::Link, sombre ? QColor(255, 224, 0) : QColor(0, 0, 160));
  palette.setColor(QPalette::LinkVisited, sombre ? QColor(255, 190, 255) : QColor(96, 0, 96));
  palette.setColor(QPalette::BrightText, fond);
  return palette;
}

QPalette PaletteLisible(const QPalette& bureau) {
  QPalette palette = bureau;
  for (const QPalette::ColorGroup groupe : groupes) {
    for (const auto& [texte, fond] : paires) {
      const QColor dessous = palette.color(groupe, fond);
      const QColor dessus = Opaque(palette.color(groupe, texte), dessous);
      if (dessus != palette.color(groupe, texte) || Contraste(dessus, dessous) < contrasteTexte)
        palette.setColor(groupe, texte, Eloigne(dessus, dessous));
    }
  }
  return palette;
}

CouleursJournaux JournauxParDefaut() {
  return {QColor(0, 128, 0), QColor(255, 255, 192), QColor(255, 255, 255), QColor(255, 255, 224)};
}

CouleursJournaux JournauxDe(JeuCouleurs jeu, const CouleursJournaux& reglees, const QPalette& palette) {
  const QColor base = palette.color(QPalette::Base), texte = palette.color(QPalette::Text);
  if (jeu == JeuCouleurs::Bureau) return {texte, base, base, base};
  const bool defaut = reglees == JournauxParDefaut() && EstSombre(palette);
  if (jeu == JeuCouleurs::Classique && !defaut) return reglees;
  return {Mele(texte, base, defaut ? 0.4F : 1), palette.color(QPalette::AlternateBase), base, base};
}

void PaletteProgramme::Pose(JeuCouleurs jeu) {
  if (m_enCours) return;
  const QScopedValueRollback garde(m_enCours, true);
  const QPalette actuelle = QGuiApplication::palette();
  // Whoever sets another palette sets other roles; a desktop that goes dark leaves ours as they are.
  if (!m_bureau || actuelle.resolveMask() != m_posee.resolveMask()) m_bureau = actuelle;
  QGuiApplication::setPalette(*m_bureau);
  const QPalette bureau = QGuiApplication::palette();
  QGuiApplication::setPalette(jeu == JeuCouleurs::Contraste ? PaletteContraste(EstSombre(bureau))
                                                            : PaletteLisible(bureau));
  m_posee = QGuiApplication::palette();
}

const Teintes& TeintesFonds() { return fonds; }
const Teintes& TeintesTextes() { return textes; }

QColor Blanc(int opacite) { return QColor(255, 255, 255, opacite); }
QColor Noir(int opacite) { return QColor(0, 0, 0, opacite); }
QColor BlancPapier() { return Blanc(); }
QColor NoirEncre() { return Noir(); }
QColor TeinteBande() { return QColor(232, 238, 245); }
QColor GrisFilet() { return QColor(170, 176, 184); }

CouleursAccueil AccueilDe(bool tessamaris) {
  return tessamaris
             ? CouleursAccueil{QColor(0x5b, 0x2a, 0x4f), QColor(0x7c, 0x3d, 0x64), QColor(0xf5, 0xc8, 0xa8)}
             : CouleursAccueil{QColor(0x0f, 0x4c, 0x5c), QColor(0x1a, 0x66, 0x5c), QColor(0xf2, 0xd4, 0x92)};
}

QColor Lampe() { return QColor(0xd6, 0x28, 0x28); }

CouleursLivre LivreDe(bool ferme) {
  return ferme ? CouleursLivre{QColor(0x5c, 0x1f, 0x1f), QColor(0xb0, 0x48, 0x48), QColor(0xf4, 0xee, 0xdc),
                               QColor(0xf0, 0xc8, 0xc8)}
               : CouleursLivre{QColor(0x2c, 0x50, 0x7a), {}, QColor(0xfb, 0xf8, 0xee), {}};
}

}  // namespace fenlor
