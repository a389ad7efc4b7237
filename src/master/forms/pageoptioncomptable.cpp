#include "master/forms/pageoptioncomptable.h"

#include "core/texte.h"
#include "master/options.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionComptable::CPageOptionComptable(ContexteUi& contexte)
    : CZNPage(contexte, u"Comptable"_s, "PageOptionComptable") {
  m_identification.PoseLignes(4);
  Formulaire{*this}
      .Texte(u"Expert-comptable ou conseil du cabinet."_s)
      .Champ(u"&Identification :"_s, m_identification, "identification")
      .Limite(TailleIdentification)
      .Pousse();
}

bool CPageOptionComptable::Charge() {
  m_identification.Pose(LitComptable(App()));
  return true;
}

bool CPageOptionComptable::Enregistre() {
  return EcritComptable(App(), m_identification.Valeur()) || DitEchecReglages(App());
}

}  // namespace fenlor
