#include "ui/textecoupe.h"

#include <QTextBoundaryFinder>
#include <algorithm>
#include <vector>

namespace fenlor {

namespace {

/// Ends of the characters of a text as a reader counts them: an accent or the second half of
/// a pair belongs to the one before.
std::vector<qsizetype> FinsDeCaractere(const QString& texte) {
  std::vector<qsizetype> fins{0};
  QTextBoundaryFinder chercheur(QTextBoundaryFinder::Grapheme, texte);
  for (qsizetype fin = chercheur.toNextBoundary(); fin > 0; fin = chercheur.toNextBoundary())
    fins.push_back(fin);
  return fins;
}

}  // namespace

QString ClipText(const QString& texte, int largeur, int marge, const QFontMetrics& mesure) {
  if (mesure.horizontalAdvance(texte) + marge <= largeur) return texte;
  const QString suite = QStringLiteral("...");
  const int place = largeur - marge - mesure.horizontalAdvance(suite);
  const std::vector<qsizetype> fins = FinsDeCaractere(texte);
  const auto tient = [&](qsizetype fin) { return mesure.horizontalAdvance(texte.left(fin)) <= place; };
  auto choisie = std::partition_point(fins.begin(), fins.end(), tient);
  // Kerning can make a longer beginning a pixel narrower than a shorter one.
  constexpr std::ptrdiff_t voisins = 4;
  choisie += std::min<std::ptrdiff_t>(voisins, fins.end() - choisie);
  while (choisie != fins.begin() && !tient(*--choisie)) {
  }
  return texte.left(tient(*choisie) ? *choisie : 0) + suite;
}

}  // namespace fenlor
