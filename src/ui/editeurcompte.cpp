#include <QAbstractItemView>
#include <QCompleter>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStringListModel>
#include <algorithm>

#include "core/valeurs.h"
#include "ui/editeurs.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

constexpr int longueurCompte = 10;

/// As it is searched: lower case, without accents.
QString Replie(const QString& texte) {
  QString replie;
  for (const QChar c : texte.normalized(QString::NormalizationForm_KD).toLower()) {
    if (c.isMark()) continue;
    if (c == QChar(0x153))
      replie += QLatin1String("oe");
    else if (c == QChar(0xE6))
      replie += QLatin1String("ae");
    else
      replie += c;
  }
  return replie;
}

/// Words of a name, each after one blank.
QString Mots(const QString& nom) {
  QString mots(u' ');
  for (const QChar c : Replie(nom)) {
    if (c.isLetterOrNumber())
      mots += c;
    else if (!mots.endsWith(u' '))
      mots += u' ';
  }
  return mots;
}

}  // namespace

EditeurCompte::EditeurCompte(QVAPI& magasin, std::function<std::vector<ChoixCompte>()> source,
                             QWidget* parent)
    : QLineEdit(parent),
      m_magasin(magasin),
      m_source(std::move(source)),
      m_completion(new QCompleter(this)),
      m_liste(new QStringListModel(this)) {
  setMaxLength(longueurCompte);
  m_completion->setModel(m_liste);
  m_completion->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  m_completion->setMaxVisibleItems(12);
  m_completion->setWidget(this);
  m_completion->popup()->setObjectName(QStringLiteral("comptes"));
  m_completion->popup()->installEventFilter(this);
  installEventFilter(this);  // before the completer, which keeps a departure from a field with an open list
  connect(m_completion, qOverload<const QModelIndex&>(&QCompleter::activated), this,
          [this](const QModelIndex& index) { Prend(index.row()); });
  connect(this, &QLineEdit::textEdited, this, [this] {
    if (!m_choisi) OuvreListe(false);
  });
}

const std::vector<EditeurCompte::Ligne>& EditeurCompte::Lignes() const {
  if (m_chargee) return m_lignes;
  m_chargee = true;
  for (ChoixCompte& choix : m_source()) {
    Ligne ligne;
    const QString court = Q(CompacteTexte(m_magasin.GetShortCompte(choix.compte)));
    ligne.numero = Replie(Q(choix.compte));
    ligne.code = Replie(Q(CompacteTexte(choix.code)));
    ligne.nom = Mots(Q(choix.designation));
    ligne.affichage = court + QLatin1String("  ") + Q(choix.designation);
    ligne.choix = std::move(choix);
    m_lignes.push_back(std::move(ligne));
  }
  return m_lignes;
}

void EditeurCompte::Recharge() {
  m_completion->popup()->hide();
  m_proposees.clear();
  m_lignes.clear();
  m_chargee = false;
}

/// Accounts that the text may mean, in the order of the list; all of them for a blank text.
std::vector<const EditeurCompte::Ligne*> EditeurCompte::Cherche(const QString& texte) const {
  const QString replie = Replie(texte.simplified());
  const QString numero = QString(replie).remove(u' '), mot = Mots(texte).trimmed();
  std::vector<const Ligne*> trouvees;
  for (const Ligne& ligne : Lignes())
    if (ligne.numero.startsWith(numero) || (!replie.isEmpty() && ligne.code.startsWith(replie)) ||
        (!mot.isEmpty() && ligne.nom.contains(QLatin1Char(' ') + mot)))
      trouvees.push_back(&ligne);
  return trouvees;
}

const EditeurCompte::Ligne* EditeurCompte::Trouve() const {
  const std::string compte = QVAPI::GetLongCompte(De1252(text()));
  if (compte.empty()) return nullptr;
  for (const Ligne& ligne : Lignes())
    if (CompareComptes(ligne.choix.compte, compte) == 0) return &ligne;
  const QString code = Replie(text().simplified());
  const Ligne* parCode = nullptr;
  unsigned codes = 0;
  for (const Ligne& ligne : Lignes()) {
    if (ligne.code != code) continue;
    parCode = &ligne;
    ++codes;
  }
  if (codes == 1) return parCode;
  const std::vector<const Ligne*> trouvees = Cherche(text());
  return trouvees.size() == 1 ? trouvees[0] : nullptr;
}

std::string EditeurCompte::Valeur() const {
  const Ligne* ligne = Trouve();
  return ligne ? ligne->choix.compte : QVAPI::GetLongCompte(De1252(text()));
}
std::string EditeurCompte::Designation() const {
  const Ligne* ligne = Trouve();
  return ligne ? ligne->choix.designation : std::string();
}
void EditeurCompte::Pose(const std::string& compte) {
  setText(Q(CompacteTexte(m_magasin.GetShortCompte(compte))));
}
void EditeurCompte::Normalise() {
  if (const Ligne* ligne = Trouve()) Pose(ligne->choix.compte);
}

void EditeurCompte::OuvreListe(bool tout) {
  QAbstractItemView* liste = m_completion->popup();
  if (isReadOnly() || (!tout && EstVide(De1252(text())))) return liste->hide();
  m_proposees = Cherche(text());
  if (tout && m_proposees.empty()) m_proposees = Cherche({});
  if (m_proposees.empty()) return liste->hide();
  QStringList textes;
  for (const Ligne* ligne : m_proposees) textes += ligne->affichage;
  m_liste->setStringList(textes);
  liste->setFont(font());
  const int large = liste->sizeHintForColumn(0) + liste->verticalScrollBar()->sizeHint().width() + 8;
  m_completion->complete(QRect(0, 0, std::max(width(), large), height()));
  liste->setCurrentIndex(tout ? m_completion->completionModel()->index(0, 0) : QModelIndex());
}

void EditeurCompte::Prend(int rang) {
  if (rang < 0 || rang >= static_cast<int>(m_proposees.size())) return;
  Pose(m_proposees[static_cast<std::size_t>(rang)]->choix.compte);
  m_completion->popup()->hide();
  m_choisi = true;
  Q_EMIT textEdited(text());
  m_choisi = false;
}

/// Leaving closes the list. Keys while it is open: Tab takes the chosen row on its way
/// out; Enter without a chosen row is that of the field.
bool EditeurCompte::eventFilter(QObject* objet, QEvent* evenement) {
  QAbstractItemView* liste = m_completion->popup();
  if (objet == this && evenement->type() == QEvent::FocusOut &&
      static_cast<QFocusEvent*>(evenement)->reason() != Qt::PopupFocusReason)
    liste->hide();
  if (objet != liste || evenement->type() != QEvent::KeyPress)
    return QLineEdit::eventFilter(objet, evenement);
  const auto* touche = static_cast<QKeyEvent*>(evenement);
  const bool entree = touche->key() == Qt::Key_Return || touche->key() == Qt::Key_Enter;
  const bool tab = touche->key() == Qt::Key_Tab || touche->key() == Qt::Key_Backtab;
  const bool choisi = liste->currentIndex().isValid();
  if (tab && choisi) Prend(liste->currentIndex().row());
  if (tab || (entree && !choisi)) {
    liste->hide();
    QCoreApplication::postEvent(
        this, new QKeyEvent(QEvent::KeyPress, touche->key(), touche->modifiers(), touche->text()));
    return true;
  }
  return QLineEdit::eventFilter(objet, evenement);
}

void EditeurCompte::keyPressEvent(QKeyEvent* evenement) {
  const bool alt = evenement->modifiers() & Qt::AltModifier;
  const bool ouvre = evenement->key() == Qt::Key_F4 ? !alt : evenement->key() == Qt::Key_Down && alt;
  if (!ouvre || isReadOnly()) return QLineEdit::keyPressEvent(evenement);
  evenement->accept();
  if (m_completion->popup()->isVisible()) return m_completion->popup()->hide();
  OuvreListe(true);
}

void EditeurCompte::focusOutEvent(QFocusEvent* evenement) {
  if (evenement->reason() != Qt::PopupFocusReason && !isReadOnly()) Normalise();
  QLineEdit::focusOutEvent(evenement);
}

}  // namespace fenlor
