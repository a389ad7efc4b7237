#include "master/forms/dialogtauxtva.h"

#include "core/valeurs.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int TailleCompte = 10, TailleTaux = 6;
}

CDialogTauxTVA::CDialogTauxTVA(ContexteUi& contexte, const std::vector<LigneTva>& lignes, QWidget* parent)
    : CDialogTauxTVA(contexte, u"Ajout d'un compte de T.V.A."_s, &lignes, {},
                     ProposeCompteTva(contexte.App, lignes), parent) {}

CDialogTauxTVA::CDialogTauxTVA(ContexteUi& contexte, const LigneTva& ligne, QWidget* parent)
    : CDialogTauxTVA(contexte, u"Modification d'un compte de T.V.A."_s, nullptr, ligne,
                     CompacteTexte(contexte.App.Magasin.GetShortCompte(ligne.compte)), parent) {}

CDialogTauxTVA::CDialogTauxTVA(ContexteUi& contexte, const QString& titre,
                               const std::vector<LigneTva>* lignes, const LigneTva& ligne,
                               const std::string& compte, QWidget* parent)
    : CZNDialog(contexte, titre, "DialogTauxTVA", parent),
      m_lignes(lignes),
      m_ligne(ligne),
      m_taux(contexte.App.Reglages) {
  Formulaire{Zone()}
      .Groupe(u"Compte de T.V.A."_s)
      .Champ(u"&Compte :"_s, m_compte, "compte")
      .Limite(TailleCompte)
      .SurDepart([this] { QuitteCompte(); })
      .Champ(u"&Taux :"_s, m_taux, "taux")
      .Limite(TailleTaux)
      .ACote(*new QLabel(u"%"_s))
      .FinGroupe()
      .Pousse();
  m_compte.PoseMajuscules(true);
  m_compte.Pose(compte);
  m_taux.Pose(ligne.taux);
  if (!m_lignes) {
    m_compte.setReadOnly(true);
    m_taux.setFocus();
  }
  setMinimumWidth(fontMetrics().horizontalAdvance(titre) * 3 / 2);  // the frame shows it whole
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
  m_compte.Pose(CompacteTexte(App().Magasin.GetShortCompte(compte)));
  Refuse(ControleNumeroTva(App(), *m_lignes, compte));
}

bool CDialogTauxTVA::Enregistre() {
  const LigneTva saisie = Valeur();
  return Refuse(m_lignes ? ControleAjoutTva(App(), *m_lignes, saisie) : ControleTauxTva(saisie.taux));
}

}  // namespace fenlor
