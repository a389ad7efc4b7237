// How a report fills its strings: the few conversions of the numbered formats, on
// Windows-1252 text.
#pragma once

#include <concepts>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/texte.h"
#include "store/enregistrements.h"

namespace fenlor {

/// One value of a format: a text, a whole number or a character. Holds no copy of a
/// text, so it lives no longer than the call that it is written in.
class ArgumentEtat {
 public:
  ArgumentEtat(std::string_view texte) : m_texte(texte) {}
  ArgumentEtat(const std::string& texte) : m_texte(texte) {}
  ArgumentEtat(const char* texte) : m_texte(texte) {}
  ArgumentEtat(char caractere) : m_nombre(caractere), m_genre(Genre::Caractere) {}
  template <std::integral Entier>
  requires(!std::same_as<Entier, bool>) ArgumentEtat(Entier nombre)
      : m_nombre(static_cast<i64>(nombre)), m_genre(Genre::Nombre) {}

  /// Its text for a conversion: at most `precision` bytes of a text (negative: all),
  /// widened to `largeur` with blanks, or with zeros in front of a number.
  void Ajoute(std::string& sortie, std::size_t largeur, int precision, bool aGauche, bool zeros) const;
  /// No byte of it is markup or ends a line.
  bool SansMarque() const;

 private:
  enum class Genre { Texte, Nombre, Caractere };
  std::string_view m_texte;
  i64 m_nombre = 0;
  Genre m_genre = Genre::Texte;
};

/// A format: the number of a text of the table, or the string itself. Taken apart once, for the rows of a
/// report are thousands.
class FormatEtat {
 public:
  FormatEtat(const TexteFixe& texte) : FormatEtat(Texte(texte)) {}
  FormatEtat(const char* format) : FormatEtat(std::string(format)) {}
  FormatEtat(std::string format);
  const std::string& Format() const { return m_format; }
  /// As `RemplitEtat`.
  void Remplit(std::string& sortie, std::span<const ArgumentEtat> arguments) const;
  /// Filled with arguments without markup it is one block of so many lines; nothing: who knows.
  std::optional<u32> LignesDuBloc() const { return m_lignes; }
  bool Titre() const { return m_titre; }  ///< `CommenceEnTitre`

 private:
  /// A stretch of the format as it stands, and the conversion behind it.
  struct Morceau {
    u32 debut = 0, taille = 0;
    bool conversion = false, aGauche = false, zeros = false;
    u32 largeur = 0;
    int precision = -1;
  };
  std::string m_format;
  std::vector<Morceau> m_morceaux;
  std::optional<u32> m_lignes;
  bool m_titre = false;
};

/// Appends the filled format: %s, %d, %u, %ld, %lu, %c and %%, with "-", "0", width
/// and precision ("%03d", "%-8.8s"). Arguments are taken in order, each in its own
/// way whatever the letter; a missing one prints nothing, and a "%" that begins no
/// conversion stands for itself.
void RemplitEtat(std::string& sortie, std::string_view format, std::span<const ArgumentEtat> arguments);
inline void RemplitEtat(std::string& sortie, std::string_view format,
                        std::initializer_list<ArgumentEtat> arguments) {
  RemplitEtat(sortie, format, std::span(arguments.begin(), arguments.size()));
}

/// Text that a person typed, safe inside markup: each backslash is doubled.
std::string EchappeEtat(std::string_view texte);

}  // namespace fenlor
