#include "ctl/dialoguectl.h"

namespace fenlor {

void DialogueCtl::Erreur(unsigned numero, const std::string& texte) {
  m_numero = numero;
  m_texte = texte;
  m_erreur = true;
}

int DialogueCtl::Message(unsigned style, unsigned numero, const std::string& texte) {
  const unsigned boutons = style & 0x0F;
  if (boutons == BoutonsOk) {
    m_information = texte;
    return RepOk;
  }
  const bool ouiNon = boutons == BoutonsOuiNon || boutons == BoutonsNonOuiAnnuler || boutons == BoutonsSerie;
  if (ouiNon && !m_declinees.contains(numero) && (m_oui || m_ordonnees.contains(numero))) return RepOui;
  m_numero = numero;
  m_texte = texte;
  if (ouiNon) return RepNon;
  return boutons == BoutonsReessayerAbandonnerIgnorer ? RepAbandonner : RepAnnuler;
}

void DialogueCtl::Oublie() {
  m_numero = 0;
  m_erreur = false;
  m_texte.clear();
}

}  // namespace fenlor
