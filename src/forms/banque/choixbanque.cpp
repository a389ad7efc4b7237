#include "forms/banque/choixbanque.h"

#include <utility>

#include "forms/master/frappecompte.h"

namespace fenlor {

ChoixBanque::ChoixBanque(QWidget* parent) : EditeurChoix(parent) {
  TapeComptes(*this, m_comptes, ChoixTape::Inconnu::GardeLeChoix);
}

void ChoixBanque::Charge(CFenlorApp& app) {
  clear();
  m_comptes.clear();
  for (CompteOffert& compte : ComptesParCode(app, Tresorerie)) {
    if (!compte.banque) continue;
    Ajoute(compte.code.empty() ? compte.Texte() : compte.code + " " + compte.designation, compte.compte);
    m_comptes.push_back(std::move(compte));
  }
  setCurrentIndex(m_comptes.empty() ? -1 : 0);
}

}  // namespace fenlor
