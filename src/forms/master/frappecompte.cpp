#include "forms/master/frappecompte.h"

#include "ui/texteqt.h"

namespace fenlor {

QStringList TextesProposes(const std::vector<const CompteOffert*>& proposes) {
  QStringList textes;
  for (const CompteOffert* compte : proposes)
    textes += Q(compte->code.empty() ? compte->Texte() : compte->code + "   " + compte->Texte());
  return textes;
}

void TapeComptes(QComboBox& choix, const std::vector<CompteOffert>& comptes, ChoixTape::Inconnu inconnu) {
  new ChoixTape(choix, inconnu, [&comptes](const QString& tape) {
    const std::string texte = De1252(tape);
    const auto rang = [&](const CompteOffert* compte) {
      return compte ? static_cast<int>(compte - comptes.data()) : -1;
    };
    const auto proposes = ComptesProposes(comptes, texte);
    ChoixTape::Sens sens{rang(CompteTape(comptes, texte)), {}, TextesProposes(proposes)};
    for (const CompteOffert* compte : proposes) sens.rangs.push_back(rang(compte));
    return sens;
  });
}

}  // namespace fenlor
