#include "forms/assets/dialogcession.h"

#include <QPushButton>

#include "assets/textes.h"
#include "forms/assets/textes.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int largeurNomCede = 36;  // characters; a longer name goes on below

}  // namespace

FormeFin::FormeFin(ContexteUi& contexte, const TexteFixe& titre, const char* nom, Immobilisation& immo,
                   Depot depot, QWidget* parent)
    : CZNDialog(contexte, TexteQ(titre), nom, parent), m_immo(immo), m_depot(std::move(depot)) {
  m_designation.Pose(LitTexte(immo.Designation));
  m_achat.Pose(StrDate(immo.DateAchat));
}

Formulaire& FormeFin::Declare(Formulaire& formulaire, const QString& libelle) {
  m_designation.setWordWrap(true);
  return formulaire.Champ(u"Désignation :"_s, m_designation, "designation")
      .Largeur(largeurNomCede)
      .Champ(u"Date d'achat :"_s, m_achat, "dateAchat")
      .Champ(libelle, m_date, "date")
      .Limite(10);
}

void FormeFin::Ouvre(Date date) {
  m_date.PoseReference(date);
  m_date.Pose(date);
  Boutons(Mode::Modification);
  AjouteAide();
  QPushButton& supprimer = AjouteBouton(u"&Supprimer"_s, "supprimer");
  supprimer.setEnabled(m_immo.DateCession != 0);
  connect(&supprimer, &QPushButton::clicked, this, [this] { Annule(); });
  if (FigeSiCloture()) supprimer.setEnabled(false);
}

bool FormeFin::Depose(const Immobilisation& immo) {
  if (m_depot && !Refuse(m_depot(immo))) return false;
  m_immo = immo;
  return true;
}

bool FormeFin::Enregistre() {
  Immobilisation immo = m_immo;
  return Refuse(Pose(immo)) && Depose(immo);
}

/// Whoever does not want it has left the form.
void FormeFin::Annule() {
  Immobilisation immo = m_immo;
  if (!App().Dit(AnnuleCession(App(), immo, Saisie()))) return done(Rejected);
  if (Depose(immo)) done(Accepted);
}

CDialogCession::CDialogCession(ContexteUi& contexte, Immobilisation& immo, Depot depot, QWidget* parent)
    : FormeFin(contexte, TitreCession, "DialogCession", immo, std::move(depot), parent),
      m_prix(App().Reglages),
      m_monnaie(App()) {
  const FicheCession cession = CessionDe(App(), immo);
  Formulaire formulaire{Zone()};
  Declare(formulaire, u"Date de cession :"_s)
      .SurDepart([this] { m_monnaie.QuitteDate(m_date.Valeur()); })
      .Champ(u"Prix de cession :"_s, m_prix, "prix")
      .Limite(16);
  m_monnaie.Declare(formulaire);
  formulaire.Pousse();
  m_prix.Pose(cession.prix);
  m_monnaie.Pose(cession.euro);
  m_monnaie.QuitteDate(cession.date);
  Ouvre(cession.date);
}

Refus CDialogCession::Pose(Immobilisation& immo) {
  return PoseCession(App(), {m_date.Valeur(), m_prix.Valeur(), m_monnaie.Euro()}, immo);
}

std::optional<FicheCession> CDialogCession::Saisie() const {
  if (m_prix.Refus() != 0) return std::nullopt;
  return FicheCession{m_date.Valeur(), m_prix.Valeur(), m_monnaie.Euro()};
}

CDialogRebut::CDialogRebut(ContexteUi& contexte, Immobilisation& immo, Depot depot, QWidget* parent)
    : FormeFin(contexte, MotRebut, "DialogRebut", immo, std::move(depot), parent) {
  Formulaire formulaire{Zone()};
  Declare(formulaire, u"Date de rebut :"_s).Pousse();
  Ouvre(CessionDe(App(), immo).date);
}

Refus CDialogRebut::Pose(Immobilisation& immo) { return PoseRebut(App(), m_date.Valeur(), immo); }

}  // namespace fenlor
