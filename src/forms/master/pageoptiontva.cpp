#include "forms/master/pageoptiontva.h"

#include "core/valeurs.h"
#include "forms/master/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int TailleCompteTva = 10, TailleTauxTva = 6;
}

CPageOptionTVA::CPageOptionTVA(ContexteUi& contexte)
    : CZNPage(contexte, u"T.V.A."_s, "PageOptionTVA"),
      m_liste(contexte, ListeEditee::Genre::Page, u"Comptes de T.V.A."_s,
              {[this] { Ajoute(); }, [this] { Modifie(); }, [this] { Supprime(); },
               [this](int ligne) {
                 return ListeEditee::Permis{m_ouvert, m_ouvert && ligne >= 0, m_ouvert && ligne >= 0};
               }}) {
  const auto compte = [this](const LigneTva& l) { return App().NumeroCourt(l.compte); };
  const auto taux = [this](const LigneTva& l) {
    return TexteFormat(FormatTaux, {FormatMontant(l.taux, 2, App().Reglages.SeparateurDecimal())});
  };
  m_liste.Table().Suit<LigneTva>({{"Compte", 40, compte}, {"Taux", 60, taux, Cote::Droite}}, m_lignes);
  Formulaire{*this}.Seul(m_liste, "comptes", true);
  m_liste.Table().PoseTexteVide(u"Aucun compte de T.V.A."_s);
}

bool CPageOptionTVA::Charge() {
  m_ouvert = !App().Reglages.IsFige();
  m_lignes = LitComptesTva(App());
  m_liste.Relit(0);
  return true;
}

bool CPageOptionTVA::Enregistre() {
  unsigned comptes = 0;
  if (const Refus refus = AppliqueComptesTva(App(), m_lignes, comptes)) return Refuse(refus);
  if (comptes > 0) {
    m_lignes = LitComptesTva(App());
    m_liste.Relit(m_liste.Table().RangChoisi());
  }
  return true;
}

LigneTva& CPageOptionTVA::Choisie() {
  return m_lignes[static_cast<std::size_t>(m_liste.Table().RangChoisi())];
}

void CPageOptionTVA::Ajoute() {
  const LigneTva proposee{0, ProposeCompteTva(App(), m_lignes), 0};
  CDialogTauxTVA saisie(Contexte(), &m_lignes, proposee, window());
  if (!saisie.Execute()) return;
  m_lignes.push_back(saisie.Valeur());
  m_liste.Relit(static_cast<int>(m_lignes.size()) - 1);
}

void CPageOptionTVA::Modifie() {
  if (!Refuse(ControleModificationTva(App(), Choisie()))) return;
  CDialogTauxTVA saisie(Contexte(), nullptr, Choisie(), window());
  if (!saisie.Execute()) return;
  Choisie() = saisie.Valeur();
  m_liste.Relit(m_liste.Table().RangChoisi());
}

void CPageOptionTVA::Supprime() {
  if (!Refuse(ControleSuppressionTva(App(), Choisie()))) return;
  const int ligne = m_liste.Table().RangChoisi();
  m_lignes.erase(m_lignes.begin() + ligne);
  m_liste.Relit(ligne);
}

CDialogTauxTVA::CDialogTauxTVA(ContexteUi& contexte, const std::vector<LigneTva>* lignes,
                               const LigneTva& ligne, QWidget* parent)
    : CZNDialog(contexte, lignes ? u"Ajout d'un compte de T.V.A."_s : u"Modification d'un compte de T.V.A."_s,
                "DialogTauxTVA", parent),
      m_lignes(lignes),
      m_ligne(ligne),
      m_taux(contexte.App.Reglages) {
  Formulaire{Zone()}
      .Groupe(u"Compte de T.V.A."_s)
      .Champ(u"&Compte :"_s, m_compte, "compte")
      .Limite(TailleCompteTva)
      .SurDepart([this] { QuitteCompte(); })
      .Champ(u"&Taux :"_s, m_taux, "taux")
      .Limite(TailleTauxTva)
      .ACote(*new QLabel(u"%"_s))
      .FinGroupe()
      .Pousse();
  m_compte.PoseMajuscules(true);
  m_compte.Pose(App().NumeroCourt(ligne.compte));
  m_taux.Pose(ligne.taux);
  if (!m_lignes) {
    m_compte.setReadOnly(true);
    m_taux.setFocus();
  }
  setMinimumWidth(fontMetrics().horizontalAdvance(windowTitle()) * 3 / 2);  // the frame shows it whole
  Boutons(Mode::Simple);
}

LigneTva CDialogTauxTVA::Valeur() const {
  LigneTva ligne = m_ligne;
  if (m_lignes) ligne.compte = QVAPI::GetLongCompte(m_compte.Valeur());
  // A rate that shows the same is the same, however many decimals the account has.
  if (Arrondi2(ligne.taux) != m_taux.Valeur()) ligne.taux = m_taux.Valeur();
  return ligne;
}

void CDialogTauxTVA::QuitteCompte() {
  if (!m_lignes) return;
  const std::string compte = QVAPI::GetLongCompte(m_compte.Valeur());
  if (compte.empty()) return;
  m_compte.Pose(App().NumeroCourt(compte));
  Refuse(ControleNumeroTva(App(), *m_lignes, compte));
}

bool CDialogTauxTVA::Enregistre() {
  const LigneTva saisie = Valeur();
  return Refuse(m_lignes ? ControleAjoutTva(App(), *m_lignes, saisie) : ControleTauxTva(saisie.taux));
}

}  // namespace fenlor
