#include "ui/positionfenetre.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <array>
#include <charconv>

#include "core/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"
#include "ui/preferences.h"
#include "ui/textes.h"

namespace fenlor {

namespace {

constexpr int lointain = 100'000;  ///< no screen reaches there

std::optional<int> LitNombre(const std::string& champ) {
  int valeur = 0;
  const auto [fin, erreur] = std::from_chars(champ.data(), champ.data() + champ.size(), valeur);
  if (erreur != std::errc() || fin != champ.data() + champ.size()) return std::nullopt;
  return std::clamp(valeur, -lointain, lointain);
}

/// The window's place when it is neither maximised nor reduced.
QRect PlaceNormale(const QWidget& fenetre) {
  const QRect normale = fenetre.normalGeometry();
  const bool autre = fenetre.isMaximized() || fenetre.isMinimized() || fenetre.isFullScreen();
  return autre && normale.isValid() ? normale : QRect(fenetre.pos(), fenetre.size());
}

}  // namespace

std::optional<PositionFenetre> LitPosition(const CFenlorApp& app, const std::string& section) {
  if (!CabinetOuvert(app)) return std::nullopt;
  const std::string texte = app.Reglages.LitIni(section, Texte(CleFenetre));
  std::array<int, 4> nombres{};
  for (unsigned i = 0; i < nombres.size(); ++i) {
    const auto nombre = LitNombre(ChampTexte(i, texte, ','));
    if (!nombre) return std::nullopt;
    nombres[i] = *nombre;
  }
  return PositionFenetre{QRect(nombres[0], nombres[1], nombres[2], nombres[3]),
                         Parametres::IsOui(app.Reglages.LitIni(section, Texte(CleAgrandie)))};
}

bool EcritPosition(CFenlorApp& app, const std::string& section, const PositionFenetre& position) {
  if (!CabinetOuvert(app)) return true;
  const QRect& r = position.rect;
  const std::string texte = TexteFormat(
      FormatPosition,
      {std::to_string(r.x()), std::to_string(r.y()), std::to_string(r.width()), std::to_string(r.height())});
  return app.Magasin.Reglages().Ecrit(
      {{section, Texte(CleFenetre), texte},
       {section, Texte(CleAgrandie), Texte(position.agrandie ? MotOui : MotNon)}});
}

QRect AjustePosition(const QRect& rect, const QSize& zone, const QSize& minimum, bool redimensionnable) {
  QRect place = rect;
  place.moveTo(std::max(rect.x(), 0), std::max(rect.y(), 0));
  if (redimensionnable) place.setSize(rect.size().expandedTo(minimum).boundedTo(zone));
  if (place.x() + place.width() > zone.width()) place.moveLeft(0);
  if (place.y() + place.height() > zone.height()) place.moveTop(0);
  return place;
}

bool RestaurePosition(QWidget& fenetre, const CFenlorApp& app, const std::string& section) {
  const auto position = LitPosition(app, section);
  if (!position) return false;
  const QScreen* ecran = QGuiApplication::screenAt(position->rect.center());
  if (!ecran) ecran = QGuiApplication::primaryScreen();
  const QRect zone = ecran->availableGeometry();
  const bool redimensionnable = fenetre.minimumSize() != fenetre.maximumSize();
  const QSize minimum = fenetre.minimumSizeHint().expandedTo(fenetre.minimumSize());
  const QRect place =
      AjustePosition(position->rect.translated(-zone.topLeft()), zone.size(), minimum, redimensionnable);
  if (redimensionnable) fenetre.resize(place.size());
  fenetre.move(place.topLeft() + zone.topLeft());
  return position->agrandie;
}

bool SauvePosition(const QWidget& fenetre, CFenlorApp& app, const std::string& section) {
  return EcritPosition(app, section, {PlaceNormale(fenetre), fenetre.isMaximized()});
}

}  // namespace fenlor
