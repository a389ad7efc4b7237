#include "forms/journal/dialogmouvement.h"

#include <QLabel>
#include <QShortcut>
#include <string_view>

#include "core/erreursexercice.h"
#include "core/valeurs.h"
#include "forms/journal/textes.h"
#include "forms/master/champscompte.h"
#include "journal/textes.h"
#include "store/texte1252.h"
#include "ui/listeeditee.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;
using namespace std::string_view_literals;

namespace {

constexpr int LargeurListe = 90, LargeurSolde = 12;  // characters

QString Titre(const OuvertureEcriture& ouverture) {
  const TexteFixe& journal = ouverture.journal == JournalRecettes   ? TitreRecette
                             : ouverture.journal == JournalDepenses ? TitreDepense
                                                                    : TitreOD;
  return TexteQ(TitreEcriture, {Texte(journal), Texte(ouverture.mouvement ? MotModification : MotAjout)});
}

}  // namespace

CDialogMouvement::CDialogMouvement(ContexteUi& contexte, const OuvertureEcriture& ouverture, QWidget* parent)
    : FormulaireEcriture(contexte, Titre(ouverture), "DialogMouvement", ouverture, parent) {
  Declare();
  m_libelle.Charge(App());
  if (Ajout())
    Commence();
  else
    m_lue = Charge(m_ouverture.mouvement);
  FigeSiCloture();
  Actualise();
}

CDialogMouvement::~CDialogMouvement() = default;

void CDialogMouvement::Declare() {
  m_liste =
      new ListeEditee(Contexte(), ListeEditee::Genre::LignesEnGrand, u"Lignes"_s,
                      {[this] { OuvreLigne(false); }, [this] { OuvreLigne(true); }, [this] { Supprime(); },
                       [this](int ligne) {
                         const bool permis = !m_cloture && !Verrouillee();
                         return ListeEditee::Permis{permis, permis && ligne >= 0, permis && ligne >= 0};
                       }});
  m_liste->Table().PoseTexteVide(u"Aucune ligne : la touche Inser en ajoute une"_s);
  const auto montant = [this](f64 LigneODLue::*cote) {
    return
        [this, cote](const LigneODLue& l) { return (m_monnaie.Euro() ? FormatEuro : FormatFranc)(l.*cote); };
  };
  m_liste->Table().Suit<LigneODLue>(
      {{"Compte", 20, [this](const LigneODLue& l) { return App().Magasin.GetShortCompte(l.compte); }},
       {"Libellé"_w, 40, [](const LigneODLue& l) { return l.libelle; }},
       {"Débit"_w, 20, montant(&LigneODLue::debit), Cote::Droite},
       {"Crédit"_w, 20, montant(&LigneODLue::credit), Cote::Droite}},
      m_lignes.lignes);
  m_liste->setMinimumWidth(LargeurListe * fontMetrics().averageCharWidth());
  m_solde.setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_solde.setMinimumWidth(LargeurSolde * fontMetrics().horizontalAdvance(u'0'));
  auto* solde = new QLabel(u"Solde :"_s, m_liste);
  solde->setBuddy(&m_solde);
  m_solde.setObjectName(u"solde"_s);
  m_liste->AjouteAuBout(*solde);
  m_liste->AjouteAuBout(m_solde);
  Formulaire formulaire{Zone()};
  m_jour.Declare(formulaire, u"Date :"_s, "date");
  formulaire.Champ(u"Libellé :"_s, m_libelle, "libelle")
      .SurDepart([this] { SuitLibelle(); })
      .Seul(*m_liste, nullptr, true)
      .Champ(u"Pointée :"_s, m_pointee, "pointee")
      .Suite(u"Validée :"_s, m_coche, "validee");
  m_monnaie.Declare(formulaire);
  m_jour.SurDepart([this] { m_monnaie.QuitteDate(m_jour.Valeur()); });
  m_monnaie.SurChangement([this] { ChangeMonnaie(); });
  PoseBoutons();
}

void CDialogMouvement::PoseBoutons() {
  const bool voisins = ADesVoisins();
  if (!Ajout())
    connect(new QShortcut(QKeySequence(Qt::ALT | Qt::Key_U), this), &QShortcut::activated, this,
            [this] { Force(); });
  Boutons(Ajout() ? Mode::Ajout : Mode::Modification, voisins);
  if (!voisins || m_ouverture.journal != JournalOD || m_cloture) return;
  QPushButton& nouvelle = AjouteBouton(u"N&ouvelle"_s, "ajouter");
  nouvelle.setObjectName(u"nouvelle"_s);
  nouvelle.setToolTip(u"Enregistrer celle-ci si elle a changé, et en saisir une nouvelle"_s);
  connect(&nouvelle, &QPushButton::clicked, this, [this] { Nouvelle(); });
}

/// What was changed is saved before, as on the way to a neighbour; a refusal keeps the form.
void CDialogMouvement::Nouvelle() {
  m_nouvelle = true;
  Modifie() ? accept() : reject();
  if (isVisible()) m_nouvelle = false;
}

bool CDialogMouvement::Charge(u32 mouvement) {
  ODLue od;
  if (!App().Dit(LitOD(App(), mouvement, od))) return false;
  m_monnaie.Pose(od.saisie.euro);
  // From the limit on the entry is worked on in Euro, whatever it was typed in.
  if (m_monnaie.Ouvre(od.saisie.date) && !App().Dit(LitOD(App(), mouvement, od, true))) return false;
  m_mouvement = mouvement;
  m_ouverture.journal = od.saisie.journal;
  m_jour.Pose(od.saisie.date);
  m_libelle.Pose(od.saisie.libelle);
  m_libelleDesLignes = od.saisie.libelle;
  m_lignes = {std::move(od.lignes), -1};
  m_validee = m_etaitValidee = od.saisie.validee;
  m_liee = od.liee;
  m_pointee.setChecked(od.pointee);
  m_forcee = m_modifiee = false;
  NoteVoisins(true);
  return true;
}

void CDialogMouvement::Reprend(const SaisieSuspendue& reprise) {
  const SaisieEcriture& saisie = reprise.ecriture;
  m_jour.Pose(saisie.date);
  m_libelle.Pose(saisie.libelle);
  m_libelleDesLignes = saisie.libelle;
  m_monnaie.Pose(saisie.euro);
  m_lignes = {};
  for (const LigneODSaisie& ligne : reprise.lignes) m_lignes.lignes.push_back({ligne, {}});
  m_modifiee = true;
  Actualise();
  if (!reprise.ligneOuverte) return;
  // Once this form stands: it would come before it.
  QMetaObject::invokeMethod(
      this,
      [this, ligne = reprise.ligne] {
        m_lignes.choisie = static_cast<int>(ligne.rang) - 1;
        Actualise();
        OuvreLigne(ligne.rang != 0, ligne);
      },
      Qt::QueuedConnection);
}

std::optional<SaisieSuspendue> CDialogMouvement::Suspendue() const {
  const auto ligne = m_ligneOuverte ? m_ligneOuverte->Suspendue() : std::nullopt;
  if (m_cloture || (!ligne && !Modifie())) return std::nullopt;
  const SaisieOD saisie = Saisie();
  SaisieSuspendue suspendue;
  suspendue.ligneOuverte = ligne.has_value();
  if (ligne) suspendue.ligne = *ligne;
  suspendue.operationDiverse = true;
  suspendue.ecriture.journal = saisie.journal;
  suspendue.ecriture.mouvement = saisie.mouvement;
  suspendue.ecriture.date = m_jour.Valeur();
  suspendue.ecriture.libelle = saisie.libelle;
  suspendue.ecriture.euro = saisie.euro;
  suspendue.lignes = saisie.lignes;
  return suspendue;
}

void CDialogMouvement::SuitLibelle() {
  const std::string libelle = m_libelle.Valeur();
  if (libelle == m_libelleDesLignes) return;
  fenlor::SuitLibelle(m_lignes.lignes, m_libelleDesLignes, libelle);
  m_libelleDesLignes = libelle;
  Actualise();
}

void CDialogMouvement::Actualise() {
  m_liste->Relit(m_lignes.choisie);
  m_solde.Pose((m_monnaie.Euro() ? FormatEuro : FormatFranc)(m_lignes.Solde()));
  ActualiseEtat();
}

void CDialogMouvement::ActualiseEtat() {
  const bool permis = !m_cloture && !Verrouillee();
  m_liste->ActualiseBoutons();
  m_coche.setChecked(m_validee);
  if (!m_cloture) {
    PermetChamp(m_jour, permis);
    PermetChamp(m_libelle, permis);
    m_monnaie.Permet(permis);
    // What the hidden command made final can be saved like that.
    if (auto* ok = findChild<QPushButton*>(u"ok"_s))
      ok->setEnabled(permis || (m_forcee && m_validee != m_etaitValidee));
  }
  MontreVoisins();
}

void CDialogMouvement::OuvreLigne(bool modification, const std::optional<LigneSuspendue>& reprise) {
  if (m_cloture) {
    App().Dit(App().ControleEcriture());
    return;
  }
  if (Verrouillee() && !modification) return;
  m_lignes.choisie = modification ? m_liste->Table().RangChoisi() : -1;
  if (modification && m_lignes.choisie < 0) return;
  CDialogLine::Ouverture ouverture{
      m_jour.Valeur(), m_monnaie.Euro(), modification, Verrouillee(), m_libelle.Valeur(), {}, reprise};
  ouverture.change = [this, modification] {
    m_modifiee = true;
    if (!modification) m_lignes.choisie = static_cast<int>(m_lignes.lignes.size()) - 1;
    Actualise();
  };
  CDialogLine forme(Contexte(), m_lignes, ouverture, this);
  m_ligneOuverte = &forme;
  forme.exec();
  m_ligneOuverte = nullptr;
  m_garde.Note();
  // A run of lines that ends balanced leaves nothing but to save.
  if (forme.Change() && !modification && m_lignes.Solde() == 0)
    CZNDialog::Focalise("ok");
  else
    CZNDialog::Focalise(m_liste->Table());
}

void CDialogMouvement::Supprime() {
  if (m_cloture) {
    App().Dit(App().ControleEcriture());
    return;
  }
  const std::vector<int> rangs = m_liste->Table().RangsChoisis();
  if (Verrouillee() || rangs.empty()) return;
  for (auto rang = rangs.rbegin(); rang != rangs.rend(); ++rang)
    m_lignes.lignes.erase(m_lignes.lignes.begin() + *rang);
  m_lignes.choisie = rangs.front();
  m_modifiee = true;
  Actualise();
  CZNDialog::Focalise(m_liste->Table());
}

/// The digits stay, they are of the other currency now.
void CDialogMouvement::ChangeMonnaie() {
  m_lignes.choisie = m_liste->Table().RangChoisi();
  Actualise();
}

/// The hidden command: what is final or linked can be changed, a draft becomes final. Written by OK.
void CDialogMouvement::Force() {
  if (m_cloture) {
    App().Dit(App().ControleEcriture());
    return;
  }
  const auto oui = [this](const TexteFixe& question, std::initializer_list<std::string> arguments = {}) {
    return App().MessageId(BoutonsOuiNon | IconeQuestion, question, arguments) == RepOui;
  };
  const bool libere = Verrouillee();
  if (m_validee && m_etaitValidee && !oui(QuestionInvalider)) return;
  if (m_liee && !oui(QuestionEditerLiee)) return;
  if (!libere && !m_etaitValidee && !oui(QuestionValiderOD, {StrDate(m_jour.Valeur()), m_libelle.Valeur()}))
    return;
  m_validee = !libere;
  m_liee = false;
  m_forcee = true;
  ActualiseEtat();
}

bool CDialogMouvement::Modifie() const {
  if (Verrouillee() && (!m_forcee || m_validee == m_etaitValidee)) return false;
  return (Ajout() ? !m_lignes.lignes.empty() : m_modifiee || m_forcee) || CZNDialog::Modifie();
}

SaisieOD CDialogMouvement::Saisie() const {
  SaisieOD saisie;
  saisie.journal = m_ouverture.journal;
  saisie.mouvement = m_mouvement;
  saisie.date = m_jour.Saisie();
  saisie.libelle = m_libelle.Valeur();
  saisie.euro = m_monnaie.Euro();
  saisie.lignes = LignesSaisies(m_lignes.lignes);
  saisie.validee = m_validee;
  saisie.forcee = m_forcee;
  return saisie;
}

bool CDialogMouvement::Enregistre() {
  EcritureFaite faite;
  if (!Refuse(EnregistreOD(App(), Saisie(), faite))) return false;
  m_modifiee = false;
  NoteFaite(faite);
  return true;
}

void CDialogMouvement::Pointe(const Refus& refus) {
  if (refus.rang >= 0) m_liste->Table().SelectionneRang(refus.rang);
  if (refus.champ == "date"sv) CZNDialog::Focalise(m_jour);
  if (refus.champ == "lignes"sv || refus.rang >= 0) CZNDialog::Focalise(m_liste->Table());
}

void CDialogMouvement::Vide() {
  m_libelle.Pose({});
  m_libelleDesLignes.clear();
  m_lignes = {};
  m_modifiee = false;
  Actualise();
}

}  // namespace fenlor
