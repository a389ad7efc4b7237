#include "forms/master/pageoptionconseils.h"

#include "core/texte.h"
#include "master/options.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionAssociation::CPageOptionAssociation(ContexteUi& contexte)
    : CZNPage(contexte, u"Association"_s, "PageOptionAssociation") {
  m_identification.PoseLignes(4);
  Formulaire{*this}
      .Texte(u"Association agréée dont le praticien est membre."_s)
      .Champ(u"&Identification :"_s, m_identification, "identification")
      .Limite(TailleIdentification)
      .Champ(u"N&uméro : "_s, m_numero, "numero")
      .Limite(TailleIdentification)
      .Champ(u"Année d'&adhésion : "_s, m_annee, "annee")
      .Limite(TailleIdentification)
      .Pousse();
}

bool CPageOptionAssociation::Charge() {
  const OptionsAssociation options = LitAssociation(App());
  m_identification.Pose(options.identification);
  m_numero.Pose(options.numero);
  m_annee.Pose(options.annee);
  return true;
}

bool CPageOptionAssociation::Enregistre() {
  return EcritAssociation(App(), {m_identification.Valeur(), m_numero.Valeur(), m_annee.Valeur()}) ||
         DitEchecReglages(App());
}

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
