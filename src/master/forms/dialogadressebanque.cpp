#include "master/forms/dialogadressebanque.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogAdresseBanque::CDialogAdresseBanque(ContexteUi& contexte, const AdresseBanque& banque, QWidget* parent)
    : CZNDialog(contexte, u"Etablissements bancaires"_s, "DialogAdresseBanque", parent) {
  m_identification.PoseLignes(4);
  Formulaire{Zone()}
      .Champ(u"Compte associé : "_s, m_code, "code")
      .Champ(u"Nom et a&dresse : "_s, m_identification, "identification")
      .Limite(TailleIdentification)
      .Champ(u"Numéro de &compte : "_s, m_compte, "compte")
      .Limite(TailleIdentification)
      .Pousse();
  m_code.Pose(banque.code);
  m_identification.Pose(banque.identification);
  m_compte.Pose(banque.compte);
  Boutons(Mode::Simple);
}

AdresseBanque CDialogAdresseBanque::Valeur() const {
  return {m_code.Valeur(), m_identification.Valeur(), m_compte.Valeur()};
}

}  // namespace fenlor
