#include "forms/master/pageoptionpassword.h"

#include "core/texte.h"
#include "store/motdepasse.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionPassword::CPageOptionPassword(ContexteUi& contexte)
    : CZNPage(contexte, u"Mot de passe"_s, "PageOptionPassword") {
  for (EditeurTexte* champ : {&m_ancien, &m_nouveau, &m_verification})
    champ->setEchoMode(QLineEdit::Password);
  Formulaire{*this}
      .Texte(u"Le mot de passe est demandé à l'ouverture du cabinet. "_s +
             u"Un nouveau mot de passe vide supprime la protection."_s)
      .Champ(u"&Ancien :"_s, m_ancien, "ancien")
      .Limite(LongueurMotDePasse)
      .Champ(u"No&uveau :"_s, m_nouveau, "nouveau")
      .Limite(LongueurMotDePasse)
      .Champ(u"&Vérification :"_s, m_verification, "verification")
      .Limite(LongueurMotDePasse)
      .Pousse();
}

bool CPageOptionPassword::Charge() {
  m_ancien.setEnabled(MotDePasseExiste(App()));
  for (EditeurTexte* champ : {&m_ancien, &m_nouveau, &m_verification}) champ->clear();
  return true;
}

SaisieMotDePasse CPageOptionPassword::Valeur() const {
  return {m_ancien.Valeur(), m_nouveau.Valeur(), m_verification.Valeur()};
}

bool CPageOptionPassword::Controle() { return Refuse(ControleMotDePasse(App(), Valeur())); }

bool CPageOptionPassword::Enregistre() {
  if (!EcritMotDePasse(App(), Valeur())) return DitEchecReglages(App());
  return Charge();
}

}  // namespace fenlor
