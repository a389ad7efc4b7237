#include "forms/journal/dialogcritere.h"

#include <QApplication>
#include <QSignalBlocker>
#include <algorithm>
#include <string>

#include "core/btfiles.h"
#include "core/valeurs.h"
#include "forms/master/frappecompte.h"
#include "journal/textes.h"
#include "session/textes.h"
#include "store/texte1252.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

namespace {

constexpr u16 editionAutonome = 2;
constexpr u32 cleGroupe = 1;
constexpr int jours = 31;

/// Group of the headings that fit a journal. None of the last is ever made.
constexpr i16 GroupeRubriques(i16 journal) {
  return journal == JournalRecettes ? 0 : journal == JournalDepenses ? 1 : 4;
}

i16 TypeComptes(i16 journal) { return journal == JournalRecettes ? Recette : Depense; }

template <std::size_t N>
void LitBorne(char (&champ)[N], const EditeurChoix& liste) {
  PoseTexte(champ, liste.Valeur());
}

}  // namespace

CDialogCritere::CDialogCritere(ContexteUi& contexte, i16 journal, const CritereEcriture& criteres,
                               QWidget* parent)
    : CZNDialog(contexte, u"Critères d'affichages des écritures"_s, "DialogCritere", parent),
      m_criteres(criteres),
      m_paires{Paire{&CritereEcriture::Pointees, &CritereEcriture::NonPointees},
               Paire{&CritereEcriture::Remises, &CritereEcriture::NonRemises},
               Paire{&CritereEcriture::Rapprochees, &CritereEcriture::NonRapprochees},
               Paire{&CritereEcriture::Associees, &CritereEcriture::NonAssociees}},
      m_montants(App().Reglages) {
  Formulaire formulaire{Zone()};
  DeclareMarques(formulaire);
  m_montants.Declare(formulaire, u"Tous &les montants"_s);
  DeclareBornes(formulaire, m_comptes, u"Comptes"_s, u"Tous les &comptes"_s, "Comptes");
  DeclareBornes(formulaire, m_rubriques, u"Rubriques"_s, u"Toutes les r&ubriques"_s, "Rubriques");
  DeclareBornes(formulaire, m_jours, u"Jours"_s, u"Tous les &jours"_s, "Jours");
  formulaire.Pousse();
  RemplitComptes(journal);
  RemplitRubriques(journal);
  RemplitJours();
  Montre();
  RetientJours();
  connect(&m_jours.de, &QComboBox::currentIndexChanged, this, [this] { SuitJour(true); });
  connect(&m_jours.a, &QComboBox::currentIndexChanged, this, [this] { SuitJour(false); });
  connect(qApp, &QApplication::focusChanged, this, [this] { RetientJours(); });
  Permet();
  Boutons(Mode::Simple);
}

CDialogCritere::~CDialogCritere() = default;

void CDialogCritere::DeclareMarques(Formulaire& formulaire) {
  static const struct {
    QString presente, absente;
    const char *nom, *oppose;
  } textes[] = {{u"&Pointées"_s, u"Non po&intées"_s, "pointees", "nonPointees"},
                {u"&Remises"_s, u"Non re&mises"_s, "remises", "nonRemises"},
                {u"Rapproc&hées"_s, u"Non r&approchées"_s, "rapprochees", "nonRapprochees"},
                {u"A&ssociées"_s, u"Non associé&es"_s, "associees", "nonAssociees"}};
  formulaire.Groupe(u"Ecritures"_s)
      .Case(m_toutes, u"&Toutes les écritures"_s, "toutes")
      .SurChangement([this] { Permet(); });
  int largeur = 0;
  for (std::size_t i = 0; i < m_paires.size(); ++i) {
    Paire& paire = m_paires[i];
    paire.oppose.setText(textes[i].absente);
    formulaire.Case(paire.coche, textes[i].presente, textes[i].nom)
        .SurChangement([this] { Permet(); })
        .ACote(paire.oppose, textes[i].oppose)
        .SurChangement([this] { Permet(); });
    paire.coche.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    largeur = std::max(largeur, paire.coche.sizeHint().width());
  }
  formulaire.FinGroupe();
  for (Paire& paire : m_paires) paire.coche.setMinimumWidth(largeur + paire.coche.fontMetrics().height());
  if (App().Edition == editionAutonome) {
    m_paires.back().coche.hide();
    m_paires.back().oppose.hide();
  }
}

void CDialogCritere::DeclareBornes(Formulaire& formulaire, Bornes& bornes, const QString& groupe,
                                   const QString& tout, const char* nom) {
  const std::string nomTout = "tous" + std::string(nom), nomDe = "de" + std::string(nom),
                    nomA = "a" + std::string(nom);
  bornes.de.setAccessibleName(groupe + u" : entre"_s);
  bornes.a.setAccessibleName(groupe + u" : et"_s);
  formulaire.Groupe(groupe)
      .Case(bornes.tout, tout, nomTout.c_str())
      .SurChangement([this] { Permet(); })
      .Champ(u"Entre : "_s, bornes.de, nomDe.c_str())
      .Largeur(12)
      .Suite(u"et :"_s, bornes.a, nomA.c_str())
      .Largeur(12)
      .FinGroupe();
}

void CDialogCritere::Bornes::Ajoute(const std::string& code, const std::string& astuce) {
  for (EditeurChoix* liste : {&de, &a}) {
    liste->Ajoute(code, code);
    liste->setItemData(liste->count() - 1, Q(astuce), Qt::ToolTipRole);
  }
}

void CDialogCritere::RemplitComptes(i16 journal) {
  m_offerts = journal == JournalOD ? ComptesParNumero(App()) : ComptesParCode(App(), TypeComptes(journal));
  for (const CompteOffert& compte : m_offerts) m_comptes.Ajoute(compte.court, compte.designation);
  for (EditeurChoix* borne : {&m_comptes.de, &m_comptes.a}) TapeComptes(*borne, m_offerts);
}

void CDialogCritere::RemplitRubriques(i16 journal) {
  CRubriques rubriques(App(), App().PathExercice);
  if (!rubriques.OpenFile()) return;
  const i16 groupe = GroupeRubriques(journal);
  rubriques.Rec->TypeRubrique = groupe;
  for (bool trouve = rubriques.Browse(cleGroupe); trouve && rubriques.Rec->TypeRubrique == groupe;
       trouve = rubriques.Next(cleGroupe))
    m_rubriques.Ajoute(LitTexte(rubriques.Rec->Rubrique), LitTexte(rubriques.Rec->Designation));
}

void CDialogCritere::RemplitJours() {
  for (EditeurChoix* liste : {&m_jours.de, &m_jours.a})
    for (int jour = 1; jour <= jours; ++jour) liste->Ajoute(std::to_string(jour));
}

void CDialogCritere::Montre() {
  const CritereEcriture& c = m_criteres;
  m_toutes.setChecked(c.Toutes);
  for (Paire& paire : m_paires) {
    paire.coche.setChecked(c.*paire.presente);
    paire.oppose.setChecked(c.*paire.absente && !(c.*paire.presente));
  }
  m_montants.Pose(c.TousMontants, c.MontantEuro);
  m_montants.PoseBornes(c.MontantMin, c.MontantMax);
  m_comptes.tout.setChecked(c.TousComptes);
  m_comptes.de.Choisit(LitTexte(c.CompteDe));
  m_comptes.a.Choisit(LitTexte(c.CompteA));
  m_rubriques.tout.setChecked(c.ToutesRubriques);
  m_rubriques.de.Choisit(LitTexte(c.RubriqueDe));
  m_rubriques.a.Choisit(LitTexte(c.RubriqueA));
  m_jours.tout.setChecked(c.TousJours);
  m_jours.de.setCurrentIndex(c.JourDe ? static_cast<int>(c.JourDe) - 1 : 0);
  m_jours.a.setCurrentIndex(c.JourA ? static_cast<int>(c.JourA) - 1 : jours - 1);
}

void CDialogCritere::Permet() {
  for (Paire& paire : m_paires) {
    if (paire.coche.isChecked()) paire.oppose.setChecked(false);
    paire.coche.setEnabled(!m_toutes.isChecked() && !paire.oppose.isChecked());
    paire.oppose.setEnabled(!m_toutes.isChecked() && !paire.coche.isChecked());
  }
  for (Bornes* bornes : {&m_comptes, &m_rubriques, &m_jours}) {
    bornes->de.setEnabled(!bornes->tout.isChecked());
    bornes->a.setEnabled(!bornes->tout.isChecked());
  }
  // With nothing to choose from the box could only come back ticked.
  m_rubriques.tout.setEnabled(m_rubriques.de.count() > 0 || !m_rubriques.tout.isChecked());
}

void CDialogCritere::SuitJour(bool premier) {
  QComboBox &change = premier ? m_jours.de : m_jours.a, &autre = premier ? m_jours.a : m_jours.de;
  (premier ? m_jourDe : m_jourA) = change.currentIndex();
  const QSignalBlocker silence(autre);
  autre.setCurrentIndex(premier ? std::max(m_jourA, m_jourDe) : std::min(m_jourDe, m_jourA));
}

/// Until the focus moves, a bound that gave way comes back as far as it can: the first key of "20" stands for
/// the 2nd, which must not leave the other bound there.
void CDialogCritere::RetientJours() {
  m_jourDe = m_jours.de.currentIndex();
  m_jourA = m_jours.a.currentIndex();
}

bool CDialogCritere::Enregistre() {
  for (EditeurChoix* borne : {&m_comptes.de, &m_comptes.a})
    if (borne->isEnabled() && borne->currentIndex() < 0 && !EstVide(De1252(borne->currentText())))
      return Refuse(ErrCompteIncorrect, *borne);
  CritereEcriture& c = m_criteres;
  c.Toutes = m_toutes.isChecked();
  for (const Paire& paire : m_paires) {
    c.*paire.presente = paire.coche.isChecked();
    c.*paire.absente = paire.oppose.isChecked();
  }
  c.TousMontants = m_montants.Tous();
  c.MontantMin = m_montants.Min();
  c.MontantMax = m_montants.Max();
  c.MontantEuro = m_montants.Euro();
  c.TousComptes = m_comptes.tout.isChecked();
  LitBorne(c.CompteDe, m_comptes.de);
  LitBorne(c.CompteA, m_comptes.a);
  c.ToutesRubriques = m_rubriques.tout.isChecked();
  LitBorne(c.RubriqueDe, m_rubriques.de);
  LitBorne(c.RubriqueA, m_rubriques.a);
  c.TousJours = m_jours.tout.isChecked();
  c.JourDe = static_cast<u32>(m_jours.de.currentIndex() + 1);
  c.JourA = static_cast<u32>(m_jours.a.currentIndex() + 1);
  NormaliseCriteres(App(), c);
  return true;
}

}  // namespace fenlor
