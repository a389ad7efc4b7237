#include "core/textes.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <iterator>
#include <vector>

#include "core/tabletextes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

/// A table with its texts in the program's own code page, in the order of its rows.
class Converties {
 public:
  explicit Converties(TableTextes table) : m_table(table) {
    m_textes.reserve(table.size());
    for (const LigneTexte& ligne : table) {
      auto texte = DepuisUtf8(ligne.utf8);
      assert(texte);
      m_textes.push_back(texte.value_or(ligne.utf8));
    }
  }
  const std::string* Trouve(unsigned numero) const {
    const auto ligne = std::lower_bound(m_table.begin(), m_table.end(), numero,
                                        [](const LigneTexte& l, unsigned n) { return l.numero < n; });
    if (ligne == m_table.end() || ligne->numero != numero) return nullptr;
    return &m_textes[static_cast<std::size_t>(ligne - m_table.begin())];
  }

 private:
  TableTextes m_table;
  std::vector<std::string> m_textes;
};

const std::string* Trouve(unsigned numero) {
  static const std::array<Converties, 3> tables = {Converties(TextesMessages()), Converties(TextesMots()),
                                                   Converties(TextesEtats())};
  const std::size_t table = (numero >= PremierMot) + (numero >= PremierTexteEtat);
  return tables[table].Trouve(numero);
}

/// Length of the conversion that begins behind a "%" at `debut`, 0 when none does.
std::size_t TailleConversion(const std::string& format, std::size_t debut) {
  std::size_t i = debut;
  if (i < format.size() && format[i] == 'l') ++i;
  if (i >= format.size()) return 0;
  const char sorte = format[i];
  return sorte == 'd' || sorte == 'u' || (sorte == 's' && i == debut) ? i + 1 - debut : 0;
}

}  // namespace

std::string Texte(unsigned numero) {
  const std::string* texte = Trouve(numero);
  return texte ? *texte : std::string();
}

bool TexteExiste(unsigned numero) { return Trouve(numero) != nullptr; }

std::string RemplitFormat(const std::string& format, std::initializer_list<std::string> arguments) {
  std::string resultat;
  auto suivant = arguments.begin();
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      resultat += format[i];
    } else if (i + 1 < format.size() && format[i + 1] == '%') {
      resultat += '%';
      ++i;
    } else if (const std::size_t taille = TailleConversion(format, i + 1)) {
      if (suivant != arguments.end()) resultat += *suivant++;
      i += taille;
    } else {
      resultat += '%';
    }
  }
  return resultat;
}

std::string TexteFormat(unsigned numero, std::initializer_list<std::string> arguments) {
  return RemplitFormat(Texte(numero), arguments);
}

std::string TexteErreur(unsigned numero, std::initializer_list<std::string> arguments) {
  return TexteExiste(numero) ? TexteFormat(numero, arguments)
                             : TexteFormat(FormatErreurInconnue, {std::to_string(numero)});
}

}  // namespace fenlor
