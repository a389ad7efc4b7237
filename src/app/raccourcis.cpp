#include "app/raccourcis.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

#include "app/textes.h"
#include "master/textes.h"
#include "ui/preferences.h"
#include "ui/roleaccessible.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto aucun = "-";

Qt::KeyboardModifiers Modificateurs(const QKeySequence& touche) {
  return touche[0].keyboardModifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
}

/// Nothing for a text that is no single key.
std::optional<QKeySequence> LitTouche(const std::string& texte) {
  if (texte == aucun) return QKeySequence();
  const auto touche = QKeySequence::fromString(Q(texte), QKeySequence::PortableText);
  if (touche.count() != 1 || touche[0].key() == Qt::Key_unknown || !RaccourciPermis(touche))
    return std::nullopt;
  return touche;
}

/// Key of a command's entry: a number of the table; 0 for anything else.
unsigned LitNumero(const std::string& cle) {
  unsigned numero = 0;
  const auto [fin, erreur] = std::from_chars(cle.data(), cle.data() + cle.size(), numero);
  return erreur == std::errc() && fin == cle.data() + cle.size() && TrouveCommande(numero) ? numero : 0;
}

/// The command that has to give its key up; 0 when no two share one.
unsigned Intrus(const TableRaccourcis& table, const TableRaccourcis& defauts) {
  std::map<QString, unsigned> titulaires;
  for (const Commande& commande : TableCommandes()) {
    const QKeySequence& touche = table.at(commande.numero);
    if (touche.isEmpty()) continue;
    const auto [place, libre] =
        titulaires.emplace(touche.toString(QKeySequence::PortableText), commande.numero);
    if (libre) continue;
    return defauts.at(commande.numero) == touche ? place->second : commande.numero;
  }
  return 0;
}

}  // namespace

TableRaccourcis RaccourcisParDefaut() {
  TableRaccourcis table;
  for (const Commande& commande : TableCommandes())
    table[commande.numero] =
        QKeySequence::fromString(QString::fromUtf8(commande.raccourci), QKeySequence::PortableText);
  return table;
}

TableRaccourcis LitRaccourcis(CFenlorApp& app) {
  const TableRaccourcis defauts = RaccourcisParDefaut();
  TableRaccourcis table = defauts;
  if (!CabinetOuvert(app)) return table;
  const std::string section = Texte(SecRaccourcis);
  for (const std::string& cle : app.Magasin.Reglages().Cles(section)) {
    const unsigned numero = LitNumero(cle);
    const auto touche = numero ? LitTouche(app.Reglages.LitIni(section, cle)) : std::nullopt;
    if (touche) table[numero] = *touche;
  }
  while (const unsigned intrus = Intrus(table, defauts)) table[intrus] = defauts.at(intrus);
  return table;
}

bool EcritRaccourcis(CFenlorApp& app, const TableRaccourcis& table) {
  if (!CabinetOuvert(app)) return true;
  const std::string section = Texte(SecRaccourcis);
  std::vector<Profil::Changement> changements;
  for (const auto& [numero, defaut] : RaccourcisParDefaut()) {
    const auto place = table.find(numero);
    std::optional<std::string> valeur;
    if (place != table.end() && place->second != defaut)
      valeur = place->second.isEmpty() ? aucun : De1252(place->second.toString(QKeySequence::PortableText));
    changements.push_back({section, std::to_string(numero), valeur});
  }
  return app.Magasin.Reglages().Ecrit(changements);
}

bool RaccourciPermis(const QKeySequence& touche) {
  if (touche.count() != 1) return false;
  const int cle = touche[0].key();
  const auto modificateurs = Modificateurs(touche);
  switch (cle) {
    case Qt::Key_Escape:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      return false;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      return (modificateurs & ~Qt::KeyboardModifiers(Qt::ShiftModifier)) != Qt::NoModifier;
    default:
      break;
  }
  if (cle >= Qt::Key_Escape) return true;
  // What follows types a character, alone or with Shift; Alt with one is a menu's.
  return modificateurs & (Qt::ControlModifier | Qt::MetaModifier);
}

unsigned TrouveRaccourci(const TableRaccourcis& table, const QKeySequence& touche) {
  if (touche.isEmpty()) return 0;
  const auto place = std::ranges::find_if(table, [&](const auto& ligne) { return ligne.second == touche; });
  return place == table.end() ? 0 : place->first;
}

bool SaisieTouche::event(QEvent* evenement) {
  if (evenement->type() == QEvent::KeyPress || evenement->type() == QEvent::ShortcutOverride) {
    auto* touche = static_cast<QKeyEvent*>(evenement);
    const int cle = touche->key();
    const auto modificateurs = touche->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const bool duFormulaire =
        cle == Qt::Key_Tab || cle == Qt::Key_Backtab || cle == Qt::Key_Escape ||
        ((cle == Qt::Key_Return || cle == Qt::Key_Enter) && modificateurs == Qt::NoModifier) ||
        (cle < Qt::Key_Escape && modificateurs == Qt::AltModifier);
    if (duFormulaire) {
      evenement->ignore();
      return evenement->type() == QEvent::KeyPress && QWidget::event(evenement);
    }
  }
  return QKeySequenceEdit::event(evenement);
}

void SaisieTouche::keyPressEvent(QKeyEvent* evenement) {
  const int cle = evenement->key();
  if (cle == Qt::Key_Tab || cle == Qt::Key_Backtab || cle == Qt::Key_Escape || cle == Qt::Key_Return ||
      cle == Qt::Key_Enter) {
    if (!(evenement->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))) {
      evenement->ignore();
      return;
    }
  }
  if (cle == Qt::Key_Shift || cle == Qt::Key_Control || cle == Qt::Key_Alt || cle == Qt::Key_Meta ||
      cle == Qt::Key_AltGr)
    return;
  clear();
  QKeySequenceEdit::keyPressEvent(evenement);
  const QKeySequence lue = keySequence();
  if (lue.isEmpty()) return;
  // One key only, taken at once: the base waits for a second one before it tells.
  clear();
  setKeySequence(QKeySequence(lue[0]));
}

CDialogRaccourcis::CDialogRaccourcis(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"Raccourcis clavier"_s, "DialogRaccourcis", parent),
      m_table(LitRaccourcis(contexte.App)) {
  m_liste = new CListeCommandes(
      [](const Commande& c) { return c.action != nullptr && c.menu != Menu::Aucun; }, true);
  m_liste->setObjectName(u"liste"_s);
  auto* libelleListe = new QLabel(u"&Commandes :"_s);
  libelleListe->setBuddy(&m_liste->Recherche());
  m_touche = new SaisieTouche;
  DonneRole(*m_touche, QAccessible::EditableText);
  m_touche->setObjectName(u"touche"_s);
  m_touche->setAccessibleName(u"Nouveau raccourci"_s);
  auto* libelle = new QLabel(u"Nou&veau raccourci :"_s);
  libelle->setBuddy(m_touche);
  const auto bouton = [](const QString& texte, const char* nom) {
    auto* b = new QPushButton(texte);
    b->setObjectName(QString::fromLatin1(nom));
    b->setAutoDefault(false);
    return b;
  };
  m_affecter = bouton(u"&Affecter"_s, "affecter");
  m_supprimer = bouton(u"&Supprimer"_s, "supprimer");
  m_defaut = bouton(u"Par &défaut"_s, "defaut");
  auto* tout = bouton(u"&Tout par défaut"_s, "tout");

  auto* saisie = new QHBoxLayout;
  saisie->addWidget(libelle);
  saisie->addWidget(m_touche, 1);
  saisie->addWidget(m_affecter);
  auto* rangee = new QHBoxLayout;
  rangee->addWidget(m_supprimer);
  rangee->addWidget(m_defaut);
  rangee->addStretch();
  rangee->addWidget(tout);
  auto* colonne = new QVBoxLayout(&Zone());
  colonne->addWidget(libelleListe);
  colonne->addWidget(m_liste, 1);
  colonne->addLayout(saisie);
  colonne->addLayout(rangee);

  connect(m_liste, &CListeCommandes::ChoixChange, this, &CDialogRaccourcis::MontreChoix);
  connect(m_liste, &CListeCommandes::Activee, m_touche, [this] { m_touche->setFocus(); });
  connect(m_touche, &QKeySequenceEdit::keySequenceChanged, this, &CDialogRaccourcis::ActualiseBoutons);
  connect(m_affecter, &QPushButton::clicked, this, &CDialogRaccourcis::Affecte);
  connect(m_supprimer, &QPushButton::clicked, this, [this] { Pose(m_liste->Choisie(), {}); });
  connect(m_defaut, &QPushButton::clicked, this,
          [this] { PoseLibre(m_liste->Choisie(), m_defauts[m_liste->Choisie()]); });
  connect(tout, &QPushButton::clicked, this, [this] {
    for (const auto& [numero, touche] : m_defauts) Pose(numero, touche);
  });

  for (const auto& [numero, touche] : m_table)
    m_liste->PoseRaccourci(numero, touche.toString(QKeySequence::NativeText));
  MontreChoix();
  Boutons(Mode::Simple);
}

void CDialogRaccourcis::MontreChoix() {
  m_touche->clear();
  ActualiseBoutons();
}

void CDialogRaccourcis::ActualiseBoutons() {
  const unsigned numero = m_liste->Choisie();
  m_touche->setEnabled(numero != 0);
  m_affecter->setEnabled(numero && !m_touche->keySequence().isEmpty());
  m_supprimer->setEnabled(numero && !m_table[numero].isEmpty());
  m_defaut->setEnabled(numero && m_table[numero] != m_defauts[numero]);
}

void CDialogRaccourcis::Pose(unsigned numero, const QKeySequence& touche) {
  m_table[numero] = touche;
  m_liste->PoseRaccourci(numero, touche.toString(QKeySequence::NativeText));
  MontreChoix();
}

void CDialogRaccourcis::Affecte() {
  const unsigned numero = m_liste->Choisie();
  const QKeySequence touche = m_touche->keySequence();
  if (!numero || touche.isEmpty()) return;
  if (RaccourciPermis(touche))
    PoseLibre(numero, touche);
  else
    Refuse(ErrRaccourciInterdit, *m_touche, {De1252(touche.toString(QKeySequence::NativeText))});
}

void CDialogRaccourcis::PoseLibre(unsigned numero, const QKeySequence& touche) {
  if (const unsigned autre = TrouveRaccourci(m_table, touche); autre && autre != numero)
    Refuse(ErrRaccourciPris, *m_touche,
           {De1252(touche.toString(QKeySequence::NativeText)), De1252(NomCommande(*TrouveCommande(autre)))});
  else
    Pose(numero, touche);
}

bool CDialogRaccourcis::Enregistre() {
  // A key that was typed and not assigned is meant.
  if (m_affecter->isEnabled()) {
    Affecte();
    if (m_affecter->isEnabled()) return false;
  }
  return EcritRaccourcis(App(), m_table) || DitEchecReglages(App());
}

void CDialogRaccourcis::keyPressEvent(QKeyEvent* evenement) {
  const bool entree = evenement->key() == Qt::Key_Return || evenement->key() == Qt::Key_Enter;
  if (entree && m_touche->hasFocus() && m_affecter->isEnabled()) {
    Affecte();
    return;
  }
  CZNDialog::keyPressEvent(evenement);
}

}  // namespace fenlor
