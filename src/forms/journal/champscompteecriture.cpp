#include <QApplication>
#include <QFocusEvent>
#include <QSignalBlocker>
#include <utility>

#include "core/texte.h"
#include "core/valeurs.h"
#include "forms/journal/champsecriture.h"
#include "forms/master/champscompte.h"
#include "forms/master/frappecompte.h"
#include "store/texte1252.h"
#include "ui/listetapee.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int TailleCode = 10, LargeurCompte = 40;
}  // namespace

/// Tells that the code is left, and whether by Tab or Enter.
class ChampsCompteEcriture::Depart : public QObject {
 public:
  explicit Depart(ChampsCompteEcriture& champs) : QObject(&champs.m_champCode) {
    champs.m_champCode.installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this, &champs](QWidget* de, QWidget* vers) {
      if (de == &champs.m_champCode && vers && vers->window() == de->window()) champs.QuitteCode(m_enAvant);
    });
  }

 protected:
  bool eventFilter(QObject*, QEvent* evenement) override {
    if (evenement->type() == QEvent::FocusOut)
      m_enAvant = static_cast<QFocusEvent*>(evenement)->reason() == Qt::TabFocusReason;
    return false;
  }

 private:
  bool m_enAvant = false;
};

ChampsCompteEcriture::ChampsCompteEcriture(CFenlorApp& app,
                                           std::function<std::vector<CompteOffert>()> comptes,
                                           std::function<bool()> nouveau)
    : m_app(app), m_source(std::move(comptes)), m_nouveau(std::move(nouveau)) {
  PrepareListe(m_liste, LargeurCompte);
  m_liste.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  Recharge();
}

void ChampsCompteEcriture::Declare(Formulaire& formulaire) {
  m_boutonNouveau.setText(u"&Nouveau..."_s);
  // Reached by its key: Tab and Enter go on from a code to its account.
  m_boutonNouveau.setFocusPolicy(Qt::ClickFocus);
  formulaire.Groupe(u"Compte"_s)
      .Champ(u"Code :"_s, m_champCode, "code")
      .Limite(TailleCode)
      .ACote(m_boutonNouveau, "nouveau")
      .Champ(u"Compte :"_s, m_liste, "compte")
      .Champ(u"Rubrique :"_s, m_rubrique, "rubrique")
      .Largeur(LargeurCompte)
      .FinGroupe();
  new Depart(*this);
  new ListeTapee(
      m_champCode, m_champCode, [this](const QString& tape) { return Propose(De1252(tape)); },
      [this](int rang) { Prend(rang); });
  QObject::connect(&m_champCode, &QLineEdit::textEdited, &m_champCode, [this] {
    m_frappe = true;
    ChercheCode();
  });
  QObject::connect(&m_liste, &QComboBox::activated, &m_liste, [this](int rang) {
    m_frappe = false;
    Montre(rang);
    const CompteOffert* compte = Choisi();
    m_champCode.Pose(compte ? compte->code : std::string{});
    if (m_choix) m_choix();
  });
  QObject::connect(&m_boutonNouveau, &QPushButton::clicked, &m_boutonNouveau, [this] { Nouveau(); });
}

void ChampsCompteEcriture::Recharge() {
  const std::string garde = Choisi() ? Choisi()->compte : std::string{};
  const QSignalBlocker silence(&m_liste);
  m_comptes = m_source();
  m_liste.clear();
  for (const CompteOffert& compte : m_comptes) m_liste.addItem(Q(compte.Texte()));
  ElargitListe(m_liste);
  const CompteOffert* compte = CompteDeNumero(m_comptes, garde);
  Montre(compte ? static_cast<int>(compte - m_comptes.data()) : -1);
}

const CompteOffert* ChampsCompteEcriture::Choisi() const {
  const int rang = m_liste.currentIndex();
  return rang >= 0 && rang < static_cast<int>(m_comptes.size()) ? &m_comptes[static_cast<std::size_t>(rang)]
                                                                : nullptr;
}

void ChampsCompteEcriture::Choisit(const std::string& compte) {
  const CompteOffert* trouve = CompteDeNumero(m_comptes, compte);
  m_frappe = false;
  Montre(trouve ? static_cast<int>(trouve - m_comptes.data()) : -1);
  m_champCode.Pose(trouve ? trouve->code : std::string{});
}

void ChampsCompteEcriture::Permet(bool permis) {
  PermetChamp(m_champCode, permis);
  PermetChamp(m_liste, permis);
  m_boutonNouveau.setEnabled(permis);
}

void ChampsCompteEcriture::Montre(int rang) {
  const QSignalBlocker silence(&m_liste);
  m_liste.setCurrentIndex(rang);
  const CompteOffert* compte = Choisi();
  m_rubrique.Pose(compte ? TexteRubrique(m_app, compte->rubrique) : std::string{});
  m_rubrique.setToolTip(m_rubrique.text());
}

/// Row of the account that the code or number means, -1 for none.
int ChampsCompteEcriture::Trouve() const {
  const CompteOffert* trouve = CompteTape(m_comptes, m_champCode.Valeur());
  return trouve ? static_cast<int>(trouve - m_comptes.data()) : -1;
}

void ChampsCompteEcriture::ChercheCode() {
  const int rang = Trouve();
  if (rang == m_liste.currentIndex()) return;
  Montre(rang);
  if (m_choix) m_choix();
}

QStringList ChampsCompteEcriture::Propose(const std::string& tape) {
  m_proposes.clear();
  const auto proposes = ComptesProposes(m_comptes, tape);
  for (const CompteOffert* compte : proposes) m_proposes.push_back(compte->compte);
  return TextesProposes(proposes);
}

void ChampsCompteEcriture::Prend(int rang) {
  Choisit(m_proposes.at(static_cast<std::size_t>(rang)));
  if (m_choix) m_choix();
}

void ChampsCompteEcriture::QuitteCode(bool enAvant) {
  const bool frappe = std::exchange(m_frappe, false), choisi = Choisi();
  if (EstVide(m_champCode.Valeur())) return;
  // The list may have changed since the last letter.
  if (!choisi) Montre(Trouve());
  if (!Choisi()) return;
  if (frappe) m_champCode.Pose(Choisi()->code);
  if ((frappe || !choisi) && m_choix) m_choix();
  if (enAvant && m_code) m_code();
}

bool ChampsCompteEcriture::CodeInconnu() const { return !Choisi() && !EstVide(m_champCode.Valeur()); }

/// An account that was made is the one that was missing.
void ChampsCompteEcriture::Nouveau() {
  if (!m_nouveau || !m_nouveau()) return;
  const std::vector<CompteOffert> avant = m_comptes;
  Recharge();
  const CompteOffert* fait = nullptr;
  for (const CompteOffert& compte : m_comptes)
    if (!CompteDeNumero(avant, compte.compte)) fait = &compte;
  if (fait) {
    Choisit(fait->compte);
    if (m_choix) m_choix();
  }
  m_champCode.setFocus(Qt::OtherFocusReason);
}

}  // namespace fenlor
