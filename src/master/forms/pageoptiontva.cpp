#include "master/forms/pageoptiontva.h"

#include "core/valeurs.h"
#include "master/forms/dialogtauxtva.h"
#include "master/forms/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CPageOptionTVA::CPageOptionTVA(ContexteUi& contexte)
    : CZNPage(contexte, u"T.V.A."_s, "PageOptionTVA"),
      m_liste(contexte, u"Comptes de T.V.A."_s, ColonnesTauxTva,
              {[this] { Ajoute(); }, [this] { Modifie(); }, [this] { Supprime(); },
               [this](int ligne) {
                 return ListeEditee::Permis{m_ouvert, m_ouvert && ligne >= 0, m_ouvert && ligne >= 0};
               }}) {
  Formulaire{*this}.Seul(m_liste, "comptes", true);
  m_liste.Table().PoseTexteVide(u"Aucun compte de T.V.A."_s);
}

bool CPageOptionTVA::Charge() {
  m_ouvert = !App().Reglages.IsExerciceCloture();
  m_lignes = LitComptesTva(App());
  Montre(0);
  return true;
}

bool CPageOptionTVA::Enregistre() {
  const ApplicationTva resultat = AppliqueComptesTva(App(), m_lignes);
  if (!resultat.fait) return false;
  if (resultat.comptes > 0) {
    m_lignes = LitComptesTva(App());
    Montre(m_liste.Table().LigneChoisie());
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
  Montre(static_cast<int>(m_lignes.size()) - 1);
}

void CPageOptionTVA::Modifie() {
  const ResultatOptions refus = ControleModificationTva(App(), Choisie());
  if (!refus) {
    Refuse(refus.erreur, m_liste.Table());
    return;
  }
  CDialogTauxTVA saisie(Contexte(), Choisie(), window());
  if (!saisie.Execute()) return;
  Choisie() = saisie.Valeur();
  Montre(m_liste.Table().LigneChoisie());
}

void CPageOptionTVA::Supprime() {
  const ResultatOptions refus = ControleSuppressionTva(App(), Choisie());
  if (!refus) {
    Refuse(refus.erreur, m_liste.Table());
    return;
  }
  const int ligne = m_liste.Table().LigneChoisie();
  m_lignes.erase(m_lignes.begin() + ligne);
  Montre(ligne);
}

void CPageOptionTVA::Montre(int choisie) {
  const char separateur = App().Reglages.SeparateurDecimal();
  std::vector<std::string> lignes;
  for (const LigneTva& ligne : m_lignes)
    lignes.push_back(
        ListeEditee::Ligne({CompacteTexte(App().Magasin.GetShortCompte(ligne.compte)),
                            TexteFormat(FormatTaux, {FormatMontant(ligne.taux, 2, separateur)})}));
  m_liste.Remplit(lignes, choisie);
}

}  // namespace fenlor
