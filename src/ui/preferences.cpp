#include "ui/preferences.h"

#include <QFontDatabase>
#include <QPalette>
#include <algorithm>
#include <cerrno>
#include <cmath>

#include "core/cles.h"
#include "core/textes.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

namespace {

constexpr double contrasteMinimal = 3;
constexpr double pixelsParPoint = 96.0 / 72.0;

struct CouleurDefaut {
  const TexteFixe& cle;
  u32 couleur;
};
constexpr CouleurDefaut couleursDefaut[] = {{CleCouleurBordures, 32768},
                                            {CleCouleurImpaire, 12648447},
                                            {CleCouleurPaires, 16777215},
                                            {CleCouleurFond, 14745599}};

std::string CouleurParDefaut(const TexteFixe& cle) {
  for (const CouleurDefaut& defaut : couleursDefaut)
    if (defaut.cle == cle) return std::to_string(defaut.couleur);
  return {};
}

/// Fonts of the reports are a name and points, and no program writes them unasked.
constexpr const char* impressionsDefaut = "Courier, 10";

/// Reads the section and gathers the defaults of what is blank.
class Lecteur {
 public:
  explicit Lecteur(CFenlorApp& app) : m_app(app), m_ouvert(CabinetOuvert(app)) {}

  std::string Lit(const TexteFixe& cle, const std::string& defaut) {
    if (!m_ouvert) return defaut;
    const std::string valeur = m_app.Reglages.LitIni(Texte(SecPreferences), Texte(cle));
    if (!EstVide(valeur)) return valeur;
    m_manquantes.push_back({Texte(SecPreferences), Texte(cle), defaut});
    return defaut;
  }
  bool Oui(const TexteFixe& cle) { return Parametres::IsOui(Lit(cle, Texte(MotNon))); }
  QColor Couleur(const TexteFixe& cle) { return LitCouleur(Lit(cle, CouleurParDefaut(cle))); }

  void EcritManquantes() {
    if (!m_manquantes.empty()) m_app.Magasin.Reglages().Ecrit(m_manquantes);
  }

 private:
  CFenlorApp& m_app;
  bool m_ouvert;
  std::vector<Profil::Changement> m_manquantes;
};

double Luminance(const QColor& couleur) {
  const auto canal = [](double c) { return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
  return 0.2126 * canal(couleur.redF()) + 0.7152 * canal(couleur.greenF()) + 0.0722 * canal(couleur.blueF());
}

/// A text drawn on the rows of both colours.
QColor LisibleSur(const QColor& texte, const QColor& impaire, const QColor& paire) {
  const auto moindre = [&](const QColor& c) { return std::min(Contraste(c, impaire), Contraste(c, paire)); };
  if (moindre(texte) >= contrasteMinimal) return texte;
  return moindre(Qt::black) >= moindre(Qt::white) ? QColor(Qt::black) : QColor(Qt::white);
}

void ChargeCouleurs(Preferences& p, Lecteur& lecteur, const QPalette& palette) {
  p.CouleurSysteme = lecteur.Oui(CleCouleurSysteme);
  if (p.CouleurSysteme) {
    p.CouleurBordure = palette.color(QPalette::Text);
    p.CouleurImpaire = p.CouleurPaire = p.CouleurFond = palette.color(QPalette::Base);
  } else {
    p.CouleurBordure = lecteur.Couleur(CleCouleurBordures);
    p.CouleurImpaire = lecteur.Couleur(CleCouleurImpaire);
    p.CouleurPaire = lecteur.Couleur(CleCouleurPaires);
    p.CouleurFond = lecteur.Couleur(CleCouleurFond);
  }
  p.FondApplication = palette.brush(QPalette::Dark);
  p.FondBouton = palette.brush(QPalette::Button);
  p.Fond = QBrush(p.CouleurFond);
  p.Bordure1 = QPen(p.CouleurBordure, 1);
  p.Bordure2 = QPen(p.CouleurBordure, 2);
  p.ReliefClair = QPen(palette.color(QPalette::Light), 1);
  p.ReliefSombre = QPen(palette.color(QPalette::Dark), 1);
}

void ChargePolices(Preferences& p, Lecteur& lecteur, const QPalette& palette) {
  const QColor texteBureau = palette.color(QPalette::Text);
  if (lecteur.Oui(ClePoliceDefaut)) {
    const QFont police = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    for (QFont* f : {&p.PoliceListes, &p.PoliceJournaux, &p.PoliceValidees, &p.PoliceSaisies, &p.PoliceTextes,
                     &p.PoliceMois})
      *f = police;
    for (QColor* c : {&p.TexteListes, &p.TexteJournaux, &p.TexteValidees, &p.TexteSaisies}) *c = texteBureau;
  } else {
    const auto lit = [&](const TexteFixe& cle, QFont& police, QColor* couleur) {
      const Police lue = LitPolice(lecteur.Lit(cle, Texte(PoliceParDefaut)), p.CouleurSysteme);
      police = FaitPolice(lue);
      if (couleur) *couleur = lue.couleur ? LitCouleur(std::to_string(*lue.couleur)) : texteBureau;
    };
    lit(ClePoliceListes, p.PoliceListes, &p.TexteListes);
    lit(ClePoliceJournaux, p.PoliceJournaux, &p.TexteJournaux);
    lit(ClePoliceValidees, p.PoliceValidees, &p.TexteValidees);
    lit(ClePoliceSaisies, p.PoliceSaisies, &p.TexteSaisies);
    lit(ClePoliceTextes, p.PoliceTextes, nullptr);
    lit(ClePoliceMois, p.PoliceMois, nullptr);
  }
  for (QColor* c : {&p.TexteListes, &p.TexteSaisies})
    if (Contraste(*c, palette.color(QPalette::Base)) < contrasteMinimal) *c = texteBureau;
  for (QColor* c : {&p.TexteJournaux, &p.TexteValidees})
    *c = LisibleSur(*c, p.CouleurImpaire, p.CouleurPaire);
}

/// Of a damaged setting too something that can be read and fits a window.
double Points(int taille) {
  const double points = taille < 0 ? -1.0 * taille / pixelsParPoint : taille;
  return std::clamp(points, 4.0, 96.0);
}

}  // namespace

void ChargePreferences(Preferences& preferences, CFenlorApp& app, const QPalette& palette) {
  Lecteur lecteur(app);
  preferences = {};
  ChargeCouleurs(preferences, lecteur, palette);
  ChargePolices(preferences, lecteur, palette);
  lecteur.EcritManquantes();
}

QColor CouleurReglee(const CFenlorApp& app, const TexteFixe& cle) {
  const std::string valeur = app.Reglages.LitIni(Texte(SecPreferences), Texte(cle));
  return LitCouleur(EstVide(valeur) ? CouleurParDefaut(cle) : valeur);
}

std::string PoliceReglee(const CFenlorApp& app, const TexteFixe& cle) {
  const std::string valeur = app.Reglages.LitIni(Texte(SecPreferences), Texte(cle));
  if (!EstVide(valeur)) return valeur;
  return cle == ClePoliceImpressions ? impressionsDefaut : Texte(PoliceParDefaut);
}

double Contraste(const QColor& a, const QColor& b) {
  const auto [moins, plus] = std::minmax({Luminance(a), Luminance(b)});
  return (plus + 0.05) / (moins + 0.05);
}

QColor CouleurFaute(const QPalette& palette) {
  const bool fondSombre = palette.color(QPalette::Base).lightnessF() < 0.5;
  return fondSombre ? QColor(255, 150, 150) : QColor(180, 0, 0);
}

QColor Lisible(const QColor& texte, const QColor& fond) { return LisibleSur(texte, fond, fond); }

bool CabinetOuvert(const CFenlorApp& app) { return !app.Magasin.PathCabinet().empty(); }

bool DitEchecReglages(CFenlorApp& app) { return app.Dit(app.EchecReglages()); }

QFont FaitPolice(const Police& police) {
  QFont resultat = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  const QString face = Q(police.face);
  if (QFontDatabase::hasFamily(face)) resultat.setFamily(face);
  resultat.setPointSizeF(Points(police.taille ? police.taille : Police{}.taille));
  resultat.setWeight(QFont::Weight(police.Poids()));
  resultat.setItalic(police.italique);
  resultat.setUnderline(police.souligne);
  resultat.setStrikeOut(police.barre);
  return resultat;
}

std::string EcritPolice(const QFont& police, const QColor& couleur, bool enPoints) {
  const double points = police.pixelSize() > 0 ? police.pixelSize() / pixelsParPoint : police.pointSizeF();
  Police resultat;
  resultat.face = De1252(police.family());
  std::replace(resultat.face.begin(), resultat.face.end(), ',', ' ');
  resultat.taille = enPoints ? qRound(points) : -qRound(points * pixelsParPoint);
  if (couleur.isValid()) resultat.couleur = TexteVersLong(EcritCouleur(couleur));
  resultat.gras = police.weight() == QFont::Bold;
  resultat.italique = police.italic();
  resultat.souligne = police.underline();
  resultat.barre = police.strikeOut();
  return EcritPolice(resultat);
}

std::string EcritPolice(const Police& police) {
  const auto coche = [](bool oui) { return std::string(oui ? "1" : "0"); };
  return TexteFormat(FormatPolice,
                     {police.face, std::to_string(police.taille),
                      police.couleur ? std::to_string(*police.couleur) : std::string(), coche(police.gras),
                      coche(police.italique), coche(police.souligne), coche(police.barre)});
}

QString DecritPolice(const Police& police) {
  QString texte = QStringLiteral("%1 %2").arg(Q(police.face)).arg(qRound(Points(police.taille)));
  if (police.gras) texte += TexteQ(MotGras);
  if (police.italique) texte += TexteQ(MotItalique);
  if (police.souligne) texte += TexteQ(MotSouligne);
  if (police.barre) texte += TexteQ(MotBarre);
  return texte;
}

QColor LitCouleur(std::string_view texte) {
  const auto valeur = static_cast<u32>(TexteVersLong(texte));
  return QColor(int(valeur & 255), int(valeur >> 8 & 255), int(valeur >> 16 & 255));
}

std::string EcritCouleur(const QColor& couleur) {
  return std::to_string(couleur.red() | couleur.green() << 8 | couleur.blue() << 16);
}

QPalette PaletteSombre() {
  const QColor fond(45, 45, 48), base(30, 30, 30), texte(230, 230, 230), faible(140, 140, 140),
      accent(42, 110, 180);
  QPalette palette(fond, fond);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, fond);
  palette.setColor(QPalette::ToolTipBase, fond);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(110, 175, 255));
  palette.setColor(QPalette::LinkVisited, QColor(180, 150, 255));
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, texte);
    palette.setColor(QPalette::Disabled, role, faible);
  }
  palette.setColor(QPalette::PlaceholderText, faible);
  return palette;
}

}  // namespace fenlor
