// The column description of a table, "Code|L|80|Compte|L|80", and the cutting
// of a text that does not fit its cell.
#pragma once

#include <QFontMetrics>
#include <QString>
#include <string>
#include <vector>

namespace fenlor {

struct Colonne {
  QString titre;
  Qt::Alignment alignement;  ///< Qt::AlignLeft, AlignRight or AlignHCenter
  int largeur;               ///< pixels in a view, percent of the client width in a form
};

/// Groups of title, letter ("L", "R", "C"; any other is left) and width between "|", up to
/// the first empty title. `texte` is Windows-1252.
std::vector<Colonne> LitColonnes(const std::string& texte);

/// Pixels of each column from its percentage: truncated, the last one takes what remains.
std::vector<int> LargeursPourcent(const std::vector<Colonne>& colonnes, int largeurClient);

/// The text when its extent plus `marge` fits into `largeur`, else as many of its
/// characters as fit together with "..."; "..." alone when none does.
QString ClipText(const QString& texte, int largeur, int marge, const QFontMetrics& mesure);

}  // namespace fenlor
