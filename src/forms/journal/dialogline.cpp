#include "forms/journal/dialogline.h"

#include "core/valeurs.h"
#include "forms/journal/textes.h"
#include "forms/master/dialogplancomptable.h"
#include "journal/controles.h"
#include "journal/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CDialogLine::CDialogLine(ContexteUi& contexte, LignesOD& lignes, const Ouverture& ouverture, QWidget* parent)
    : CZNDialog(contexte,
                TexteQ(TitreEcriture,
                       {Texte(TitreLigneOD), Texte(ouverture.modification ? MotModification : MotAjout)}),
                "DialogLine", parent),
      m_lignes(lignes),
      m_ouverture(ouverture),
      m_lecture(ouverture.lecture || contexte.App.Reglages.IsFige()),
      m_compte(
          contexte.App, [this] { return ComptesParNumero(App()); }, [this] { return Nouveau(); }),
      m_debit(contexte.App.Reglages),
      m_credit(contexte.App.Reglages) {
  Declare();
  if (ouverture.modification) {
    Montre();
  } else {
    m_libelle.Pose(ouverture.libelle);
    MontreCompte();
  }
  if (!FigeSiCloture() && m_lecture) LectureSeule();
  Actualise();
}

void CDialogLine::Declare() {
  Formulaire formulaire{Zone()};
  m_compte.Declare(formulaire);
  m_compte.SurChoix([this] { ChoisitCompte(); });
  m_compte.SurCode([this] { Focalise(m_libelle); });
  m_libelle.Charge(App());
  formulaire.Champ(u"Libellé :"_s, m_libelle, "libelle");
  m_paiement.Declare(formulaire);
  m_solder.setText(u"&Solder"_s);
  m_solder.setToolTip(u"Porter sur cette ligne ce qui équilibre l'écriture"_s);
  formulaire.Groupe(u"Montants"_s)
      .Champ(u"Débit :"_s, m_debit, "debit")
      .Limite(TailleMontant)
      .SurChangement([this] { m_credit.clear(); })
      .Suite(u"Crédit :"_s, m_credit, "credit")
      .Limite(TailleMontant)
      .SurChangement([this] { m_debit.clear(); })
      .Champ(u"Solde :"_s, m_solde, "solde")
      .Largeur(TailleMontant)
      .Suite({}, m_solder, "solder")
      .FinGroupe();
  m_marques.Declare(formulaire);
  formulaire.Pousse();
  m_solde.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  connect(&m_solder, &QPushButton::clicked, this, [this] { Solde(); });
  for (EditeurMontant* champ : {&m_debit, &m_credit}) AstuceAutreMonnaie(*champ, App(), m_ouverture.euro);
  Boutons(m_ouverture.modification ? Mode::Modification : Mode::Ajout, m_ouverture.modification);
}

void CDialogLine::showEvent(QShowEvent* evenement) {
  CZNDialog::showEvent(evenement);
  // After the base noted what stood there: all of it was typed.
  if (m_ouverture.reprise && !m_vue) Reprend(*m_ouverture.reprise);
  m_vue = true;
}

void CDialogLine::Reprend(const LigneSuspendue& reprise) {
  m_compte.Choisit(reprise.saisie.compte);
  if (!reprise.code.empty()) m_compte.Code().setText(Q(reprise.code));
  m_libelle.Pose(reprise.saisie.libelle);
  m_paiement.Marque(reprise.saisie.paiement);
  MontreCompte();
  m_debit.setText(Q(reprise.debit));
  m_credit.setText(Q(reprise.credit));
}

std::optional<LigneSuspendue> CDialogLine::Suspendue() const {
  if (m_lecture || !Modifie()) return std::nullopt;
  LigneSuspendue ligne;
  if (m_ouverture.modification) ligne.rang = static_cast<u32>(m_lignes.choisie + 1);
  if (const CompteOffert* compte = m_compte.Choisi()) ligne.saisie.compte = compte->compte;
  if (m_compte.CodeInconnu()) ligne.code = m_compte.CodeTape();
  ligne.saisie.libelle = m_libelle.Valeur();
  ligne.saisie.paiement = m_paiement.Valeur();
  ligne.debit = De1252(m_debit.text());
  ligne.credit = De1252(m_credit.text());
  return ligne;
}

bool CDialogLine::Nouveau() {
  CDialogPlanComptable forme(Contexte(), nullptr, 0, this);
  forme.exec();
  return forme.AChange();
}

void CDialogLine::Montre() {
  const LigneODLue& ligne = m_lignes.lignes[static_cast<std::size_t>(m_lignes.choisie)];
  m_compte.Choisit(ligne.compte);
  m_libelle.Pose(ligne.libelle);
  m_paiement.Marque(ligne.paiement);
  MontreCompte();
  m_debit.clear();
  m_credit.clear();
  if (ligne.credit != 0)
    m_credit.Pose(ligne.credit);
  else
    m_debit.Pose(ligne.debit);
  m_propre = SoldeOD({ligne});
  m_marques.Pose(ligne.marques);
}

void CDialogLine::MontreCompte() { m_paiement.PoseLigne(m_compte.Choisi()); }

void CDialogLine::ChoisitCompte() {
  MontreCompte();
  const CompteOffert* compte = m_compte.Choisi();
  if (compte && !m_compte.EnFrappe() && EstVide(m_libelle.Valeur())) m_libelle.Pose(compte->designation);
}

f64 CDialogLine::SoldeAutres() const { return Arrondi2(m_lignes.Solde() - m_propre) + 0.0; }

void CDialogLine::Actualise() {
  const f64 solde = m_lignes.Solde();
  m_solde.Pose(m_ouverture.euro ? FormatEuro(solde) : FormatFranc(solde));
  m_solder.setEnabled(!m_lecture && SoldeAutres() != 0);
  const int nombre = static_cast<int>(m_lignes.lignes.size());
  if (auto* precedent = findChild<QPushButton*>(u"precedent"_s))
    precedent->setEnabled(!m_lecture && m_lignes.choisie > 0);
  if (auto* suivant = findChild<QPushButton*>(u"suivant"_s))
    suivant->setEnabled(!m_lecture && m_lignes.choisie + 1 < nombre);
}

bool CDialogLine::Enregistre() {
  const CompteOffert* compte = m_compte.Choisi();
  if (!compte) return Refuse(ErrCompteIncorrect, m_compte.Code());
  LigneODSaisie ligne;
  ligne.compte = compte->compte;
  ligne.libelle = m_libelle.Valeur();
  ligne.credit = m_credit.Valeur();
  if (ligne.credit == 0) ligne.debit = m_debit.Valeur();
  ligne.paiement = m_paiement.Valeur();
  if (ligne.debit == 0 && ligne.credit == 0) return Refuse(ErrDebitOuCredit, m_debit);
  if (m_ouverture.modification)
    static_cast<LigneODSaisie&>(m_lignes.lignes[static_cast<std::size_t>(m_lignes.choisie)]) = ligne;
  else
    m_lignes.lignes.push_back({ligne, {}});
  m_propre = m_ouverture.modification ? SoldeOD({ligne}) : 0;
  m_change = true;
  if (m_ouverture.change) m_ouverture.change();
  Actualise();
  return true;
}

void CDialogLine::Vide() {
  m_compte.Vide();
  m_libelle.Pose({});
  m_paiement.Efface();
  MontreCompte();
  m_debit.clear();
  m_credit.clear();
}

void CDialogLine::Voisin(int pas) {
  m_lignes.choisie += pas;
  if (m_ouverture.change) m_ouverture.change();
  Montre();
  Actualise();
}

void CDialogLine::Solde() {
  m_solder.setFocus(Qt::OtherFocusReason);  // reached by its key, it leaves the field before
  const f64 solde = SoldeAutres();
  m_debit.clear();
  m_credit.clear();
  (solde > 0 ? m_debit : m_credit).Pose(solde > 0 ? solde : -solde);
  if (!Enregistre()) return;
  if (m_ouverture.modification)
    CZNDialog::Focalise("ok");
  else
    QDialog::accept();
}

}  // namespace fenlor
