#include "forms/master/pageoptionconseils.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionAssociation::CPageOptionAssociation(ContexteUi& contexte)
    : PageOptions(contexte, u"Association"_s, "PageOptionAssociation") {
  m_identification.PoseLignes(4);
  Champs()
      .Texte(u"Association agréée dont le praticien est membre."_s)
      .Champ(u"&Identification :"_s, m_identification, "identification")
      .Champ(u"N&uméro : "_s, m_numero, "numero")
      .Champ(u"Année d'&adhésion : "_s, m_annee, "annee")
      .Pousse();
}

CPageOptionComptable::CPageOptionComptable(ContexteUi& contexte)
    : PageOptions(contexte, u"Comptable"_s, "PageOptionComptable") {
  m_identification.PoseLignes(4);
  Champs()
      .Texte(u"Expert-comptable ou conseil du cabinet."_s)
      .Champ(u"&Identification :"_s, m_identification, "identification")
      .Pousse();
}

}  // namespace fenlor
