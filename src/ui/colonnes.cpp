#include "ui/colonnes.h"

#include <QTextBoundaryFinder>
#include <algorithm>

#include "core/valeurs.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

Qt::Alignment LitAlignement(const std::string& lettre) {
  if (lettre == "R") return Qt::AlignRight;
  return lettre == "C" ? Qt::AlignHCenter : Qt::AlignLeft;
}

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

std::vector<Colonne> LitColonnes(const std::string& texte) {
  std::vector<Colonne> colonnes;
  for (unsigned champ = 0;; champ += 3) {
    const std::string titre = ChampTexte(champ, texte, '|');
    if (titre.empty()) return colonnes;
    colonnes.push_back({Q(titre), LitAlignement(ChampTexte(champ + 1, texte, '|')),
                        std::max(TexteVersEntier(ChampTexte(champ + 2, texte, '|')), 0)});
  }
}

std::vector<int> LargeursPourcent(const std::vector<Colonne>& colonnes, int largeurClient) {
  std::vector<int> largeurs;
  int reste = largeurClient;
  for (const Colonne& colonne : colonnes) {
    largeurs.push_back(static_cast<int>(colonne.largeur * 0.01 * largeurClient));
    reste -= largeurs.back();
  }
  if (!largeurs.empty()) largeurs.back() = std::max(largeurs.back() + reste, 0);
  return largeurs;
}

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
