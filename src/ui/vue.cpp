#include "ui/vue.h"

#include "ui/texteqt.h"

namespace fenlor {

Vue::Vue(ContexteUi& contexte, const std::string& titre, u32 bit)
    : m_contexte(contexte), m_titre(titre), m_bit(bit) {
  setWindowTitle(Q(titre));
  setObjectName(PageAide());
}

void Vue::Declare(const std::vector<CommandeVue>& lignes) {
  for (const CommandeVue& ligne : lignes) m_commandes[ligne.numero] = ligne;
}

bool Vue::Disponible(unsigned commande) const {
  const auto ligne = m_commandes.find(commande);
  return ligne != m_commandes.end() && (!ligne->second.disponible || ligne->second.disponible());
}

bool Vue::Coche(unsigned commande) const {
  const auto ligne = m_commandes.find(commande);
  return ligne != m_commandes.end() && ligne->second.coche && ligne->second.coche();
}

void Vue::Execute(unsigned commande) {
  if (Disponible(commande)) m_commandes[commande].execute();
}

void Vue::SurImpression(const std::function<void(bool)>& impression,
                        const std::function<bool()>& disponible) {
  Declare({{CmdImprimer, [impression] { impression(false); }, disponible},
           {CmdApercu, [impression] { impression(true); }, disponible}});
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
