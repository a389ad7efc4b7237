#include "forms/journal/dialogvirement.h"

#include <algorithm>
#include <string_view>

#include "forms/journal/textes.h"
#include "journal/textes.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;
using namespace std::string_view_literals;

namespace fenlor {

bool CDialogVirement::PeutOuvrir(ContexteUi& contexte) {
  return contexte.App.Dit(ControleVirement(contexte.App));
}

CDialogVirement::CDialogVirement(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, Q(Texte(LibelleVirement)), "DialogVirement", parent),
      m_montant(App().Reglages),
      m_monnaie(App()) {
  Declare();
  Boutons(Mode::Ajout);
  // Today, or the day of the exercice that is next to it.
  const Date date = std::clamp(App().Magasin.Today(), App().Reglages.GetDebutExercice(),
                               std::max(App().Reglages.GetDebutExercice(), App().Reglages.GetFinExercice()));
  m_date.PoseReference(date);
  m_date.Pose(date);
  m_de.Charge(App());
  m_vers.Charge(App());
  m_libelle.Charge(App());
  m_libelle.Pose(Texte(LibelleVirement));
  m_monnaie.Pose(App().Reglages.IsEuro());
  m_monnaie.QuitteDate(date);
  MontreTransit();
  Vide();
  Focalise(m_de);
}

CDialogVirement::~CDialogVirement() = default;

void CDialogVirement::Declare() {
  Formulaire formulaire{Zone()};
  formulaire.Champ(u"&Date du virement :"_s, m_date, "date")
      .Limite(10)
      .SurDepart([this] { m_monnaie.QuitteDate(m_date.Valeur()); })
      .Champ(u"Virement du c&ompte :"_s, m_de, "de")
      .ACote(m_transitDe, "transitDe")
      .Champ(u"&Vers le compte :"_s, m_vers, "vers")
      .SurChangement([this] { m_paiement.PoseTresorerie(m_vers.Choisi(), m_mode); })
      .ACote(m_transitVers, "transitVers")
      .Champ(u"&Libellé :"_s, m_libelle, "libelle");
  m_paiement.Declare(formulaire);
  formulaire.Champ(u"&Montant :"_s, m_montant, "montant").Largeur(16);
  m_monnaie.Declare(formulaire);
  formulaire.Pousse();
  AligneMontant();
  const auto montant = [this] {
    return m_montant.EstVide() ? std::optional<f64>{} : std::optional<f64>{m_montant.Valeur()};
  };
  AstuceAutreMonnaie(m_montant, App(), montant, [this] { return m_monnaie.Euro(); });
}

/// The amount stands under the fields above, beyond the group between them.
void CDialogVirement::AligneMontant() {
  int largeur = 0;
  QLabel* libelle = nullptr;
  for (QLabel* label : Zone().findChildren<QLabel*>()) {
    if (!label->buddy()) continue;
    largeur = std::max(largeur, label->sizeHint().width());
    if (label->buddy() == &m_montant) libelle = label;
  }
  if (libelle) libelle->setMinimumWidth(largeur);
}

void CDialogVirement::MontreTransit() {
  const std::vector<CompteOffert> comptes = ComptesParNumero(App());
  const auto montre = [&](Lecture& champ, const std::string& compte) {
    const CompteOffert* trouve = CompteDeNumero(comptes, compte);
    champ.Pose(trouve ? trouve->Texte() : std::string{});
  };
  montre(m_transitDe, App().Magasin.GetCompteVireFrom());
  montre(m_transitVers, App().Magasin.GetCompteVireTo());
}

void CDialogVirement::accept() {
  m_enregistre = false;
  CZNDialog::accept();
  if (m_enregistre) Focalise(m_de);
}

const TexteFixe& CDialogVirement::QuestionFermer() const { return QuestionEnregistrerVirement; }

bool CDialogVirement::Enregistre() {
  SaisieVirement saisie;
  saisie.date = m_date.Valeur();
  if (const CompteOffert* de = m_de.Choisi()) saisie.de = de->compte;
  if (const CompteOffert* vers = m_vers.Choisi()) saisie.vers = vers->compte;
  saisie.libelle = m_libelle.Valeur();
  saisie.euro = m_monnaie.Euro();
  saisie.montant = m_montant.Valeur();
  saisie.paiement = m_paiement.Valeur();
  VirementFait fait;
  const bool enregistre = Refuse(EnregistreVirement(App(), saisie, fait));
  MontreTransit();  // the rule may have asked for other accounts
  if (!enregistre) return false;
  m_mode = saisie.paiement;
  return true;
}

void CDialogVirement::Vide() {
  m_de.setCurrentIndex(-1);
  m_vers.setCurrentIndex(-1);
  m_montant.clear();
  m_paiement.Marque(PaiementAutre);
  m_paiement.PoseTresorerie(nullptr, m_mode);
  m_enregistre = true;
}

void CDialogVirement::Pointe(const Refus& refus) {
  if (refus.champ == "monnaie"sv)
    Focalise(m_monnaie.Bouton(m_monnaie.Euro()));
  else
    CZNDialog::Pointe(refus);
}

}  // namespace fenlor
