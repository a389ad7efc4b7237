#include "ui/preferences.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <algorithm>
#include <cerrno>

#include "core/cles.h"
#include "core/textes.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

namespace {

constexpr int pasZoom[] = {75, 90, 100, 110, 125, 150, 175, 200, 250};  ///< percent
constexpr double pixelsParPoint = 96.0 / 72.0;

QColor CouleurParDefaut(const TexteFixe& cle) {
  const CouleursJournaux defaut = JournauxParDefaut();
  if (cle == CleCouleurBordures) return defaut.bordure;
  if (cle == CleCouleurImpaire) return defaut.impaire;
  return cle == CleCouleurPaires ? defaut.paire : defaut.fond;
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
  QColor Couleur(const TexteFixe& cle) { return LitCouleur(Lit(cle, EcritCouleur(CouleurParDefaut(cle)))); }

  void EcritManquantes() {
    if (!m_manquantes.empty()) m_app.Magasin.Reglages().Ecrit(m_manquantes);
  }

 private:
  CFenlorApp& m_app;
  bool m_ouvert;
  std::vector<Profil::Changement> m_manquantes;
};

void ChargeCouleurs(Preferences& p, const CFenlorApp& app, Lecteur& lecteur, const QPalette& palette) {
  const JeuCouleurs jeu = JeuRegle(app);
  p.CouleurSysteme = jeu != JeuCouleurs::Classique;
  CouleursJournaux reglees;
  if (jeu == JeuCouleurs::Classique)  // the others leave blank keys blank
    reglees = {lecteur.Couleur(CleCouleurBordures), lecteur.Couleur(CleCouleurImpaire),
               lecteur.Couleur(CleCouleurPaires), lecteur.Couleur(CleCouleurFond)};
  const CouleursJournaux journaux = JournauxDe(jeu, reglees, palette);
  p.CouleurBordure = journaux.bordure;
  p.CouleurImpaire = journaux.impaire;
  p.CouleurPaire = journaux.paire;
  p.CouleurFond = journaux.fond;
  p.FondApplication = palette.brush(QPalette::Dark);
  p.FondBouton = palette.brush(QPalette::Button);
  p.Fond = QBrush(p.CouleurFond);
  p.Bordure1 = QPen(p.CouleurBordure, 1);
  p.Bordure2 = QPen(p.CouleurBordure, 2);
  p.ReliefClair = QPen(palette.color(QPalette::Light), 1);
  p.ReliefSombre = QPen(palette.color(QPalette::Dark), 1);
}

void Agrandit(QFont& police, double pourCent) {
  if (pourCent != 100 && police.pointSizeF() > 0) police.setPointSizeF(police.pointSizeF() * pourCent / 100);
}

void ChargePolices(Preferences& p, Lecteur& lecteur, const QPalette& palette, int zoom) {
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
  for (QFont* f : {&p.PoliceListes, &p.PoliceJournaux, &p.PoliceValidees, &p.PoliceSaisies, &p.PoliceTextes,
                   &p.PoliceMois})
    Agrandit(*f, zoom);
  const QColor base = palette.color(QPalette::Base);
  for (QColor* c : {&p.TexteListes, &p.TexteSaisies}) *c = LisibleSur(*c, base, base, texteBureau);
  for (QColor* c : {&p.TexteJournaux, &p.TexteValidees})
    *c = LisibleSur(*c, p.CouleurImpaire, p.CouleurPaire, texteBureau);
}

/// Of a damaged setting too something that can be read and fits a window.
double Points(int taille) {
  const double points = taille < 0 ? -1.0 * taille / pixelsParPoint : taille;
  return std::clamp(points, 4.0, 96.0);
}

}  // namespace

void ChargePreferences(Preferences& preferences, CFenlorApp& app, const QPalette& palette) {
  Lecteur lecteur(app);
  PaletteProgramme programme = std::move(preferences.Palette);
  const int zoomProgramme = preferences.ZoomProgramme;
  preferences = {};
  preferences.Palette = std::move(programme);
  ChargeCouleurs(preferences, app, lecteur, palette);
  preferences.ZoomProgramme = zoomProgramme;
  ChargePolices(preferences, lecteur, palette, LitZoom(app));
  lecteur.EcritManquantes();
}

int LitZoom(const CFenlorApp& app) {
  if (!CabinetOuvert(app)) return 100;
  const int zoom = TexteVersEntier(app.Reglages.LitIni(Texte(SecPreferences), Texte(CleZoom)));
  return zoom >= pasZoom[0] && zoom <= pasZoom[std::size(pasZoom) - 1] ? zoom : 100;
}

bool ChangeZoom(CFenlorApp& app, int sens) {
  const int zoom = LitZoom(app);
  const int* suivant = std::upper_bound(std::begin(pasZoom), std::end(pasZoom), zoom);
  const int* avant = std::lower_bound(std::begin(pasZoom), std::end(pasZoom), zoom);
  int nouveau = 100;
  if (sens > 0) nouveau = suivant == std::end(pasZoom) ? zoom : *suivant;
  if (sens < 0) nouveau = avant == std::begin(pasZoom) ? zoom : *(avant - 1);
  return nouveau != zoom && CabinetOuvert(app) &&
         app.Reglages.EcritIni(Texte(SecPreferences), Texte(CleZoom), std::to_string(nouveau));
}

void AppliquePreferences(Preferences& preferences, CFenlorApp& app) {
  if (const int zoom = LitZoom(app); zoom != preferences.ZoomProgramme) {
    QFont police = QApplication::font();
    Agrandit(police, 100.0 * zoom / preferences.ZoomProgramme);
    QApplication::setFont(police);
    preferences.ZoomProgramme = zoom;
  }
  preferences.Palette.Pose(JeuRegle(app));
  ChargePreferences(preferences, app, QGuiApplication::palette());
}

JeuCouleurs JeuRegle(const CFenlorApp& app) {
  const auto oui = [&app](const TexteFixe& cle) {
    return CabinetOuvert(app) && Parametres::IsOui(app.Reglages.LitIni(Texte(SecPreferences), Texte(cle)));
  };
  if (oui(CleContrasteEleve)) return JeuCouleurs::Contraste;
  return oui(CleCouleurSysteme) ? JeuCouleurs::Bureau : JeuCouleurs::Classique;
}

QColor CouleurReglee(const CFenlorApp& app, const TexteFixe& cle) {
  const std::string valeur = app.Reglages.LitIni(Texte(SecPreferences), Texte(cle));
  return EstVide(valeur) ? CouleurParDefaut(cle) : LitCouleur(valeur);
}

std::string PoliceReglee(const CFenlorApp& app, const TexteFixe& cle) {
  const std::string valeur = app.Reglages.LitIni(Texte(SecPreferences), Texte(cle));
  if (!EstVide(valeur)) return valeur;
  return cle == ClePoliceImpressions ? impressionsDefaut : Texte(PoliceParDefaut);
}

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

}  // namespace fenlor
