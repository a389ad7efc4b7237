#include "ui/vue.h"

#include "ui/texteqt.h"

namespace fenlor {

Vue::Vue(ContexteUi& contexte, const std::string& titre, u32 bit)
    : m_contexte(contexte), m_titre(titre), m_bit(bit) {
  setWindowTitle(Q(titre));
  setObjectName(PageAide());
}

/// "Comptes de trésorerie" is "FenetreComptesDeTresorerie".
QString Vue::PageAide() const {
  QString page = QStringLiteral("Fenetre");
  bool debut = true;
  for (const QChar c : Q(m_titre).normalized(QString::NormalizationForm_D)) {
    if (c.isMark()) continue;
    if (!c.isLetterOrNumber()) {
      debut = true;
    } else {
      page += debut ? c.toUpper() : c;
      debut = false;
    }
  }
  return page;
}

}  // namespace fenlor
