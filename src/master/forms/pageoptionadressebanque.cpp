#include "master/forms/pageoptionadressebanque.h"

#include "master/forms/dialogadressebanque.h"
#include "master/forms/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionAdresseBanque::CPageOptionAdresseBanque(ContexteUi& contexte)
    : CZNPage(contexte, u"Banques"_s, "PageOptionAdresseBanque"),
      m_liste(contexte, u"Banques"_s, ColonnesAdressesBanque,
              {[this] { Saisit(); }, [this] { Saisit(); }, [this] { Supprime(); },
               [this](int ligne) { return Permis(ligne); }}) {
  Formulaire{*this}
      .Seul(m_liste, "banques", true)
      .Case(m_especes, u"Autoriser le &rapprochement des écritures en espèces"_s, "especes");
  m_liste.Table().PoseTexteVide(u"Le plan comptable n'a pas de compte bancaire."_s);
}

bool CPageOptionAdresseBanque::Charge() {
  m_banques = LitAdressesBanque(App());
  m_especes.setChecked(App().Reglages.IsRapprochementEspeces());
  Montre(0);
  return true;
}

bool CPageOptionAdresseBanque::Enregistre() {
  return EcritAdressesBanque(App(), m_banques, m_especes.isChecked()) || DitEchecReglages(App());
}

ListeEditee::Permis CPageOptionAdresseBanque::Permis(int ligne) const {
  if (ligne < 0) return {};
  const bool vide = m_banques[static_cast<std::size_t>(ligne)].EstVide();
  return {vide, !vide, !vide};
}

void CPageOptionAdresseBanque::Saisit() {
  const int ligne = m_liste.Table().LigneChoisie();
  AdresseBanque& banque = m_banques[static_cast<std::size_t>(ligne)];
  CDialogAdresseBanque saisie(Contexte(), banque, window());
  if (!saisie.Execute()) return;
  banque = saisie.Valeur();
  Montre(ligne);
}

void CPageOptionAdresseBanque::Supprime() {
  const int ligne = m_liste.Table().LigneChoisie();
  AdresseBanque& banque = m_banques[static_cast<std::size_t>(ligne)];
  banque = {banque.code, {}, {}};
  Montre(ligne);
}

void CPageOptionAdresseBanque::Montre(int choisie) {
  std::vector<std::string> lignes;
  for (const AdresseBanque& banque : m_banques)
    lignes.push_back(ListeEditee::Ligne({banque.code, banque.identification, banque.compte}));
  m_liste.Remplit(lignes, choisie);
}

}  // namespace fenlor
