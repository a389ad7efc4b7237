#include "ui/texteqt.h"

#include "store/texte1252.h"

namespace fenlor {

QString Q(std::string_view texte) {
  QString resultat = QString::fromStdString(VersUtf8(texte));
  resultat.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return resultat;
}

std::string De1252(const QString& texte) {
  std::string resultat;
  resultat.reserve(static_cast<std::size_t>(texte.size()));
  for (const char32_t c : texte.toUcs4()) {
    if (c == '\n') {
      resultat += "\r\n";
    } else if (c >= 32 && c < 127) {
      resultat += static_cast<char>(c);
    } else {
      const auto octets = DepuisUtf8(QString::fromUcs4(&c, 1).toStdString());
      resultat += octets ? *octets : "?";
    }
  }
  return resultat;
}

bool TientEn1252(const QString& texte) { return DepuisUtf8(texte.toStdString()).has_value(); }

QString TexteQ(const TexteFixe& texte, std::initializer_list<std::string> arguments) {
  return Q(TexteFormat(texte, arguments));
}

}  // namespace fenlor
