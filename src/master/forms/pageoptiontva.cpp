#include "master/forms/pageoptiontva.h"

#include "core/valeurs.h"
#include "master/forms/dialogtauxtva.h"
#include "master/forms/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionTVA::CPageOptionTVA(ContexteUi& contexte)
    : CZNPage(contexte, u"T.V.A."_s, "PageOptionTVA"),
      m_liste(contexte, u"Comptes de T.V.A."_s,
              {[this] { Ajoute(); }, [this] { Modifie(); }, [this] { Supprime(); },
               [this](int ligne) {
                 return ListeEditee::Permis{m_ouvert, m_ouvert && ligne >= 0, m_ouvert && ligne >= 0};
               }}) {
  const auto compte = [this](const LigneTva& l) {
    return CompacteTexte(App().Magasin.GetShortCompte(l.compte));
  };
  const auto taux = [this](const LigneTva& l) {
    return TexteFormat(FormatTaux, {FormatMontant(l.taux, 2, App().Reglages.SeparateurDecimal())});
  };
  m_liste.Table().Suit<LigneTva>({{"Compte", 40, compte}, {"Taux", 60, taux, Cote::Droite}}, m_lignes);
  Formulaire{*this}.Seul(m_liste, "comptes", true);
  m_liste.Table().PoseTexteVide(u"Aucun compte de T.V.A."_s);
}

bool CPageOptionTVA::Charge() {
  m_ouvert = !App().Reglages.IsExerciceCloture();
  m_lignes = LitComptesTva(App());
  m_liste.Relit(0);
  return true;
}

bool CPageOptionTVA::Enregistre() {
  unsigned comptes = 0;
  if (const Refus refus = AppliqueComptesTva(App(), m_lignes, comptes)) return Refuse(refus);
  if (comptes > 0) {
    m_lignes = LitComptesTva(App());
    m_liste.Relit(m_liste.Table().LigneChoisie());
  }
  return true;
}

LigneTva& CPageOptionTVA::Choisie() {
  return m_lignes[static_cast<std::size_t>(m_liste.Table().LigneChoisie())];
}

void CPageOptionTVA::Ajoute() {
  CDialogTauxTVA saisie(Contexte(), m_lignes, window());
  if (!saisie.Execute()) return;
  m_lignes.push_back(saisie.Valeur());
  m_liste.Relit(static_cast<int>(m_lignes.size()) - 1);
}

void CPageOptionTVA::Modifie() {
  if (!Refuse(ControleModificationTva(App(), Choisie()))) return;
  CDialogTauxTVA saisie(Contexte(), Choisie(), window());
  if (!saisie.Execute()) return;
  Choisie() = saisie.Valeur();
  m_liste.Relit(m_liste.Table().LigneChoisie());
}

void CPageOptionTVA::Supprime() {
  if (!Refuse(ControleSuppressionTva(App(), Choisie()))) return;
  const int ligne = m_liste.Table().LigneChoisie();
  m_lignes.erase(m_lignes.begin() + ligne);
  m_liste.Relit(ligne);
}

}  // namespace fenlor
