#include "forms/master/pageoptionadressebanque.h"

#include "store/texte1252.h"
#include "ui/champsfiche.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

std::string EnUneLigne(const std::string& texte) {
  std::string ligne;
  for (const char c : texte) {
    if (c == '\n')
      ligne += ", ";
    else if (c != '\r')
      ligne += c;
  }
  return ligne;
}

}  // namespace

CPageOptionAdresseBanque::CPageOptionAdresseBanque(ContexteUi& contexte)
    : CZNPage(contexte, u"Banques"_s, "PageOptionAdresseBanque"),
      m_liste(contexte, ListeEditee::Genre::Page, u"Banques"_s,
              {[this] { Saisit(); }, [this] { Saisit(); }, [this] { Supprime(); },
               [this](int ligne) { return Permis(ligne); }}) {
  m_liste.Table().Suit<AdresseBanque>(
      {{"Compte associé"_w, 20, [](const AdresseBanque& b) { return b.code; }},
       {"Nom et adresse", 46, [](const AdresseBanque& b) { return EnUneLigne(b.identification); }},
       {"Numéro de compte"_w, 34, [](const AdresseBanque& b) { return b.compte; }}},
      m_banques);
  Formulaire{*this}
      .Seul(m_liste, "banques", true)
      .Case(m_especes, u"Autoriser le &rapprochement des écritures en espèces"_s, "especes");
  m_liste.Table().PoseTexteVide(u"Le plan comptable n'a pas de compte bancaire."_s);
}

bool CPageOptionAdresseBanque::Charge() {
  m_banques = LitAdressesBanque(App());
  m_especes.setChecked(App().Reglages.IsRapprochementEspeces());
  m_liste.Relit(0);
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
  const int ligne = m_liste.Table().RangChoisi();
  AdresseBanque& banque = m_banques[static_cast<std::size_t>(ligne)];
  CDialogAdresseBanque saisie(Contexte(), banque, window());
  if (!saisie.Execute()) return;
  banque = saisie.Valeur();
  m_liste.Relit(ligne);
}

void CPageOptionAdresseBanque::Supprime() {
  const int ligne = m_liste.Table().RangChoisi();
  AdresseBanque& banque = m_banques[static_cast<std::size_t>(ligne)];
  banque = {banque.code, {}, {}};
  m_liste.Relit(ligne);
}

CDialogAdresseBanque::CDialogAdresseBanque(ContexteUi& contexte, const AdresseBanque& banque, QWidget* parent)
    : CZNDialog(contexte, u"Etablissements bancaires"_s, "DialogAdresseBanque", parent), m_banque(banque) {
  m_identification.PoseLignes(4);
  Formulaire{Zone(), &AdresseBanque::Table}
      .Champ(u"Compte associé : "_s, m_code, "code")
      .Champ(u"Nom et a&dresse : "_s, m_identification, "identification")
      .Champ(u"Numéro de &compte : "_s, m_compte, "compte")
      .Pousse();
  m_code.Pose(banque.code);
  MontreChamps(Zone(), AdresseBanque::Table, &m_banque);
  Boutons(Mode::Simple);
}

bool CDialogAdresseBanque::Enregistre() {
  LitChamps(Zone(), AdresseBanque::Table, &m_banque);
  return true;
}

}  // namespace fenlor
