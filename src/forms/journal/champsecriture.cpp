#include "forms/journal/champsecriture.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolTip>
#include <QWheelEvent>

#include "core/valeurs.h"
#include "forms/master/champscompte.h"
#include "forms/master/frappecompte.h"
#include "master/libelles.h"
#include "ui/listetapee.h"
#include "ui/radios.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::size_t proposesAuPlus = 50;
constexpr int LargeurJour = 4, LargeurLibelle = 40, LargeurCodeTresorerie = 10;

class SansRoulette : public QObject {
 public:
  explicit SansRoulette(QComboBox& liste) : QObject(&liste) { liste.installEventFilter(this); }

 protected:
  bool eventFilter(QObject* liste, QEvent* evenement) override {
    if (evenement->type() != QEvent::Wheel || static_cast<QComboBox*>(liste)->hasFocus()) return false;
    evenement->ignore();
    return true;
  }
};

/// Computes a tool tip as it is asked for.
class AstuceCalculee : public QObject {
 public:
  AstuceCalculee(QWidget& champ, std::function<QString()> texte)
      : QObject(&champ), m_texte(std::move(texte)) {
    champ.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* champ, QEvent* evenement) override {
    if (evenement->type() != QEvent::ToolTip) return false;
    QToolTip::showText(static_cast<QHelpEvent*>(evenement)->globalPos(), m_texte(),
                       static_cast<QWidget*>(champ));
    return true;
  }

 private:
  std::function<QString()> m_texte;
};

}  // namespace

void PrepareListe(QComboBox& liste, int caracteres) {
  liste.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  liste.setMinimumContentsLength(caracteres);
  liste.setFocusPolicy(Qt::StrongFocus);
  new SansRoulette(liste);
}

void ElargitListe(QComboBox& liste) {
  const int barre = liste.style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 8;
  liste.view()->setMinimumWidth(liste.view()->sizeHintForColumn(0) + barre);
}

ChampJour::ChampJour(QWidget* parent) : QComboBox(parent), m_mois(new QLabel(this)) {
  setEditable(true);
  setCompleter(nullptr);
  setInsertPolicy(NoInsert);
  lineEdit()->setMaxLength(2);
  lineEdit()->setValidator(new QRegularExpressionValidator(QRegularExpression(u"\\d{0,2}"_s), this));
  setMaxVisibleItems(31);
  setFocusPolicy(Qt::StrongFocus);
  new SansRoulette(*this);
  connect(lineEdit(), &QLineEdit::textEdited, this, [this] { Suit(); });
  connect(this, &QComboBox::activated, this, [this] { Suit(); });
}

void ChampJour::Declare(Formulaire& formulaire, const QString& libelle, const char* nom) {
  formulaire.Champ(libelle, *this, nom)
      .Largeur(LargeurJour)
      .SurDepart([this] {
        if (m_depart) m_depart();
      })
      .ACote(*m_mois, "mois");
}

void ChampJour::Pose(Date date) {
  const QSignalBlocker silence(this);
  m_date = date;
  clear();
  for (unsigned jour = 1; jour <= GetNbJours(date); ++jour) addItem(QString::number(jour));
  setCurrentIndex(static_cast<int>(Jour(date)) - 1);
  m_mois->setText(Q(StrMonth(date)));
}

unsigned ChampJour::JourTape() const {
  const unsigned jour = currentText().toUInt();
  return jour <= GetNbJours(m_date) ? jour : 0;
}

bool ChampJour::EstValide() const { return JourTape() != 0; }

void ChampJour::Suit() {
  const unsigned jour = JourTape();
  if (jour == 0 || jour == Jour(m_date)) return;
  m_date = FaitDate(jour, Mois(m_date), Annee(m_date));
}

void ChampJour::focusInEvent(QFocusEvent* evenement) {
  QComboBox::focusInEvent(evenement);
  ChoisitTout(*this, *evenement);
}

void ChampJour::focusOutEvent(QFocusEvent* evenement) {
  if (evenement->reason() != Qt::PopupFocusReason && evenement->reason() != Qt::ActiveWindowFocusReason) {
    const QSignalBlocker silence(this);
    setCurrentIndex(static_cast<int>(JourTape()) - 1);
    if (JourTape() == 0) clearEditText();
  }
  QComboBox::focusOutEvent(evenement);
}

void ChampJour::keyPressEvent(QKeyEvent* evenement) {
  // Steps start from the day that was typed, not from the row last chosen.
  const int touche = evenement->key();
  if (touche == Qt::Key_Up || touche == Qt::Key_Down || touche == Qt::Key_PageUp ||
      touche == Qt::Key_PageDown || touche == Qt::Key_F4) {
    const QSignalBlocker silence(this);
    setCurrentIndex(static_cast<int>(Jour(m_date)) - 1);
  }
  QComboBox::keyPressEvent(evenement);
}

ChoixPaiement::ChoixPaiement() { UnDes({&m_cheque, &m_autre}); }

void ChoixPaiement::Declare(Formulaire& formulaire) {
  m_autre.setText(u"&Autre"_s);
  formulaire.Groupe(u"Mode de paiement"_s)
      .Case(m_cheque, u"&Chèque"_s, "cheque")
      .ACote(m_autre, "autre")
      .FinGroupe();
  Montre();
}

void ChoixPaiement::PoseTresorerie(const CompteOffert* compte, i16 mode) {
  m_ouvert = compte && compte->banque;
  if (compte) Marque(m_ouvert ? mode : i16{PaiementAutre});
  Montre();
}

void ChoixPaiement::PoseLigne(const CompteOffert* compte) {
  m_ouvert = compte && compte->type == Tresorerie;
  if (m_ouvert && !m_autre.isChecked()) m_cheque.setChecked(true);
  Montre();
}

void ChoixPaiement::Marque(i16 mode) { (mode == PaiementAutre ? m_autre : m_cheque).setChecked(true); }

void ChoixPaiement::Efface() {
  m_cheque.group()->setExclusive(false);
  m_cheque.setChecked(false);
  m_autre.setChecked(false);
  m_cheque.group()->setExclusive(true);
}

void ChoixPaiement::Permet(bool permis) {
  m_permis = permis;
  Montre();
}

void ChoixPaiement::Montre() {
  m_cheque.setEnabled(m_permis && m_ouvert);
  m_autre.setEnabled(m_permis && m_ouvert);
}

ChampLibelle::ChampLibelle(QWidget* parent) : QComboBox(parent), m_editeur(new EditeurTexte) {
  setEditable(true);
  setLineEdit(m_editeur);
  setCompleter(nullptr);
  setInsertPolicy(NoInsert);
  m_editeur->setMaxLength(static_cast<int>(LongueurLibelle));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  PrepareListe(*this, LargeurLibelle);
  connect(m_editeur, &QLineEdit::textEdited, this, [this](const QString& texte) { m_debut = texte; });
  new ListeTapee(
      *this, *m_editeur, [this](const QString& tape) { return Proposes(tape); },
      [this](int rang) {
        m_editeur->Pose(m_proposes.at(static_cast<std::size_t>(rang)));
        m_editeur->selectAll();
        Q_EMIT activated(-1);
      });
}

void ChampLibelle::Charge(CFenlorApp& app) {
  std::vector<std::string> libelles;
  app.Dit(LitLibelles(app, libelles));
  const QString texte = currentText();
  const QSignalBlocker silence(this);
  clear();
  m_dernier = false;
  m_liste = libelles;
  for (const std::string& libelle : libelles) addItem(Q(libelle));
  ElargitListe(*this);
  setCurrentIndex(-1);
  setEditText(texte);
}

void ChampLibelle::ProposeDernier(const std::string& libelle) {
  const QString texte = currentText();
  const QSignalBlocker silence(this);
  if (m_dernier) removeItem(0);
  m_dernier = !libelle.empty();
  if (m_dernier) insertItem(0, Q(libelle));
  ElargitListe(*this);
  setCurrentIndex(-1);
  setEditText(texte);
}

QStringList ChampLibelle::Proposes(const QString& tape) {
  m_proposes = LibellesProposes(m_connus, m_liste, De1252(tape), proposesAuPlus);
  QStringList rangees;
  for (const std::string& libelle : m_proposes) rangees += Q(libelle);
  return rangees;
}

std::string ChampLibelle::Valeur() const { return m_editeur->Valeur(); }

void ChampLibelle::Pose(const std::string& libelle) {
  const QSignalBlocker silence(this);
  m_debut.clear();
  m_propose.clear();
  setCurrentIndex(-1);
  m_editeur->Pose(libelle);
}

void ChampLibelle::Propose(const std::string& designation) {
  if (const std::string libelle = Valeur(); !EstVide(libelle) && libelle != m_propose) return;
  Pose(designation);
  m_propose = Valeur();
}

void ChampLibelle::SurChangement(std::function<void()> action) {
  connect(m_editeur, &QLineEdit::textEdited, this, [action] { action(); });
  connect(this, &QComboBox::activated, this, [action] { action(); });
}

void ChampLibelle::focusInEvent(QFocusEvent* evenement) {
  QComboBox::focusInEvent(evenement);
  ChoisitTout(*this, *evenement);
}

/// Next label that begins with what was typed; false when there is none.
bool ChampLibelle::Cherche(int pas) {
  if (m_debut.isEmpty()) return false;
  for (int i = 0, rang = currentIndex(); i < count(); ++i) {
    rang = rang < 0 && pas < 0 ? count() - 1 : (rang + pas + count()) % count();
    if (!itemText(rang).startsWith(m_debut, Qt::CaseInsensitive)) continue;
    setCurrentIndex(rang);
    Q_EMIT activated(rang);
    return true;
  }
  return false;
}

void ChampLibelle::keyPressEvent(QKeyEvent* evenement) {
  const int touche = evenement->key();
  const bool seule = !(evenement->modifiers() & ~Qt::KeypadModifier);
  if (seule && (touche == Qt::Key_Down || touche == Qt::Key_Up) && Cherche(touche == Qt::Key_Down ? 1 : -1))
    return evenement->accept();
  QComboBox::keyPressEvent(evenement);
}

ChoixTresorerie::ChoixTresorerie(QWidget* parent) : QComboBox(parent) {
  PrepareListe(*this, LargeurCodeTresorerie);
  TapeComptes(*this, m_comptes);
}

void ChoixTresorerie::Charge(CFenlorApp& app) {
  const std::string garde = Choisi() ? Choisi()->compte : std::string{};
  const QSignalBlocker silence(this);
  m_comptes = ComptesParCode(app, Tresorerie);
  clear();
  for (const CompteOffert& compte : m_comptes) addItem(Q(compte.code.empty() ? compte.court : compte.code));
  Choisit(garde);
}

const CompteOffert* ChoixTresorerie::Choisi() const {
  const int rang = currentIndex();
  return rang >= 0 && rang < Nombre() ? &m_comptes[static_cast<std::size_t>(rang)] : nullptr;
}

bool ChoixTresorerie::Choisit(const std::string& compte) {
  const CompteOffert* trouve = CompteDeNumero(m_comptes, compte);
  setCurrentIndex(trouve ? static_cast<int>(trouve - m_comptes.data()) : m_comptes.empty() ? -1 : 0);
  return trouve;
}

std::string ChoixTresorerie::Inconnu() const {
  return currentIndex() < 0 ? De1252(currentText()) : std::string();
}

void ChoixTresorerie::RetapeInconnu(const std::string& texte) {
  const QSignalBlocker silence(this);
  setCurrentIndex(-1);
  setEditText(Q(texte));
}

void ChampsTresorerieEcriture::Declare(Formulaire& formulaire) {
  formulaire.Champ(u"Code :"_s, m_code, "tresorerie")
      .SurChangement([this] { Suit(); })
      .Champ(u"Désignation :"_s, m_designation, "designation");
  DeclarePaiement(formulaire);
}

void ChampsTresorerieEcriture::DeclareCompte(Formulaire& formulaire, const QString& libelle) {
  formulaire.Champ(libelle, m_code, "tresorerie")
      .SurChangement([this] { Suit(); })
      .ACote(m_designation, "designation");
}

void ChampsTresorerieEcriture::Suit() { Montre(m_banque ? m_paiement.Valeur() : m_mode); }

void ChampsTresorerieEcriture::Pose(const std::string& compte, i16 paiement) {
  if (!compte.empty()) m_code.Choisit(compte);
  Montre(paiement);
}

void ChampsTresorerieEcriture::Permet(bool permis) {
  PermetChamp(m_code, permis);
  m_paiement.Permet(permis);
}

void ChampsTresorerieEcriture::Montre(i16 paiement) {
  const CompteOffert* compte = m_code.Choisi();
  m_mode = paiement;
  m_banque = compte && compte->banque;
  m_designation.Pose(compte ? compte->designation : std::string{});
  m_paiement.PoseTresorerie(compte, paiement);
}

Coche::Coche(QWidget* parent) : QCheckBox(parent) { setFocusPolicy(Qt::NoFocus); }

void CochesMarques::Declare(Formulaire& formulaire) {
  formulaire.Champ(u"Pointée :"_s, m_pointee, "pointee")
      .Suite(u"Rapprochée :"_s, m_rapprochee, "rapprochee")
      .Suite(u"Remise :"_s, m_remise, "remise")
      .Suite(u"Validée :"_s, m_validee, "validee");
}

void CochesMarques::Pose(const MarquesEcriture& marques) {
  m_pointee.setChecked(marques.pointee);
  m_rapprochee.setChecked(marques.rapprochee);
  m_remise.setChecked(marques.remise);
  m_validee.setChecked(marques.validee);
}

void AstuceAutreMonnaie(EditeurMontant& champ, CFenlorApp& app, bool euro) {
  const auto montant = [&champ] { return champ.EstVide() ? std::nullopt : std::optional(champ.Valeur()); };
  AstuceAutreMonnaie(champ, app, montant, [euro] { return euro; });
}

void AstuceAutreMonnaie(QWidget& champ, CFenlorApp& app, std::function<std::optional<f64>()> montant,
                        std::function<bool()> euro) {
  new AstuceCalculee(champ, [&app, montant = std::move(montant), euro = std::move(euro)]() -> QString {
    const std::optional<f64> valeur = montant();
    const f64 taux = app.TauxEuroCourant;
    if (!valeur || !(taux > 0)) return {};
    return Q(euro() ? FormatFranc(*valeur * taux) : FormatEuro(*valeur / taux));
  });
}

}  // namespace fenlor
