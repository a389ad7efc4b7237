#include "master/forms/dialogcompte.h"

#include <QPushButton>

#include "core/valeurs.h"
#include "master/forms/champscompte.h"
#include "master/forms/comptesview.h"
#include "master/forms/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int TailleCode = 8, TailleNumero = 10, TailleDesignation = 80;

}  // namespace

DialogCompte::DialogCompte(ContexteUi& contexte, const char* nom, FormeCompte forme, i16 type,
                           ComptesView* vue, Position position, QWidget* parent)
    : CZNDialog(contexte, {}, nom, parent), m_forme(forme), m_vue(vue), m_derniere(position) {
  if (position == 0)
    m_fiche = NouvelleFiche(contexte.App, forme, type);
  else
    m_lu = LitFiche(contexte.App, position, m_fiche, m_compteLu);
}

int DialogCompte::exec() { return m_lu ? CZNDialog::exec() : static_cast<int>(Rejected); }

void DialogCompte::ChampCode(Formulaire& formulaire, const QString& libelle) {
  formulaire.Champ(libelle, m_code, "code")
      .Limite(TailleCode)
      .SurChangement([this] { MontreTitre(); })
      .SurDepart([this] { QuitteCode(); });
}

void DialogCompte::ChampNumero(Formulaire& formulaire, const QString& libelle) {
  formulaire.Champ(libelle, m_numero, "compte").Limite(TailleNumero).SurDepart([this] { QuitteNumero(); });
  m_numero.PoseMajuscules(true);
}

void DialogCompte::ChampDesignation(Formulaire& formulaire, const QString& libelle) {
  formulaire.Champ(libelle, m_designation, "designation").Limite(TailleDesignation);
}

void DialogCompte::Ouvre() {
  Boutons(Ajout() ? Mode::Ajout : Mode::Modification, true);
  Presente();
}

void DialogCompte::MontreTitre() {
  const unsigned type = static_cast<unsigned>(Type());
  if (!Ajout())
    setWindowTitle(TexteQ(TitreCompte[type], {CompacteTexte(m_code.Valeur())}));
  else
    setWindowTitle(TexteQ(m_forme == FormeCompte::PlanComptable ? TitreAjoutAuPlan : TitreAjoutCompte[type]));
}

void DialogCompte::Montre() {
  m_code.Pose(m_fiche.code);
  m_numero.Pose(CompacteTexte(App().Magasin.GetShortCompte(QVAPI::GetLongCompte(m_fiche.compte))));
  m_designation.Pose(m_fiche.designation);
  FigeChamp(m_numero, ADesMouvements(m_compteLu));
}

void DialogCompte::Presente() {
  Montre();
  MontreTitre();
  const auto permet = [this](const QString& nom, int pas) {
    if (auto* bouton = findChild<QPushButton*>(nom))
      bouton->setEnabled(!Ajout() && m_vue && m_vue->Voisin(pas) != 0);
  };
  permet(u"precedent"_s, -1);
  permet(u"suivant"_s, 1);
  FigeSiCloture();
}

void DialogCompte::Lit(FicheCompte& fiche) const {
  fiche.code = m_code.Valeur();
  fiche.compte = m_numero.Valeur();
  fiche.designation = m_designation.Valeur();
}

FicheCompte DialogCompte::Saisie() const {
  FicheCompte fiche = m_fiche;
  fiche.type = Type();
  Lit(fiche);
  return fiche;
}

FicheCompte DialogCompte::Suivante() { return NouvelleFiche(App(), m_forme, Type()); }

void DialogCompte::QuitteCode() {
  if (m_code.isReadOnly() || m_code.Valeur() == m_fiche.code) return;
  if (!ControleCode(App(), m_forme, Saisie())) CZNDialog::Focalise(m_code);
}

void DialogCompte::QuitteNumero() {
  const std::string compte = QVAPI::GetLongCompte(m_numero.Valeur());
  if (m_numero.isReadOnly() || compte.empty()) return;
  m_numero.Pose(CompacteTexte(App().Magasin.GetShortCompte(compte)));
  if (compte == QVAPI::GetLongCompte(m_fiche.compte)) return;
  if (!ControleNumero(App(), m_forme, Saisie())) CZNDialog::Focalise(m_numero);
}

bool DialogCompte::Enregistre() {
  FicheCompte fiche = Saisie();
  if (const ResultatMaster resultat = EnregistreCompte(App(), m_forme, fiche); !resultat) {
    if (*resultat.champ) CZNDialog::Focalise(resultat.champ);
    return false;
  }
  m_derniere = fiche.position;
  m_aChange = true;
  if (!Ajout()) {
    m_fiche = fiche;
    if (m_vue) m_vue->Remplace(fiche.position);
  }
  return true;
}

void DialogCompte::Vide() {
  m_fiche = Suivante();
  m_compteLu = {};
  Presente();
}

void DialogCompte::Voisin(int pas) {
  const Position position = m_vue ? m_vue->Voisin(pas) : 0;
  FicheCompte fiche;
  Plan compte{};
  if (position == 0 || !LitFiche(App(), position, fiche, compte)) return;
  m_vue->VaVers(pas);
  m_fiche = fiche;
  m_compteLu = compte;
  m_derniere = position;
  Presente();
}

}  // namespace fenlor
