#include "ui/czndialog.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QSet>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>
#include <algorithm>

#include "ui/editeurs.h"
#include "ui/images.h"
#include "ui/lignefiltre.h"
#include "ui/modales.h"
#include "ui/tableliste.h"
#include "ui/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

/// As large as its content wants, and no larger than the screen allows.
class Defilement : public QScrollArea {
 public:
  explicit Defilement(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setWidgetResizable(true);
  }
  QSize sizeHint() const override {
    QSize taille = widget()->sizeHint();
    if (const QLayout* zone = widget()->layout(); zone && zone->hasHeightForWidth())
      taille.setHeight(std::max(taille.height(), zone->totalHeightForWidth(taille.width())));
    return taille.boundedTo(Place());
  }
  QSize minimumSizeHint() const override { return widget()->minimumSizeHint().boundedTo(Place()); }

 protected:
  /// A page that was read meanwhile may need more room.
  bool eventFilter(QObject* objet, QEvent* evenement) override {
    if (objet == widget() && evenement->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::eventFilter(objet, evenement);
  }

 private:
  /// What a screen leaves to the fields, with some height for title and buttons.
  QSize Place() const {
    const int ligne = fontMetrics().height();
    return screen()->availableSize() - QSize(2 * ligne, 7 * ligne);
  }
};

/// The line above the fields of a form of a closed exercice.
QWidget* LigneRaison(bool enLecture, QWidget* parent) {
  auto* ligne = new QWidget(parent);
  auto* rangee = new QHBoxLayout(ligne);
  const int cote = ligne->fontMetrics().height();
  auto* image = new QLabel(ligne);
  image->setPixmap(Image("exercice-clos").pixmap(QSize(cote, cote), ligne->devicePixelRatioF()));
  auto* texte = new QLabel(enLecture ? u"Cabinet en lecture seule : tout se consulte, rien ne se modifie."_s
                                     : u"Exercice clôturé : tout se consulte, rien ne se modifie."_s,
                           ligne);
  texte->setObjectName(u"raison"_s);
  texte->setWordWrap(true);
  rangee->addWidget(image);
  rangee->addWidget(texte, 1);
  ligne->hide();
  return ligne;
}

/// Text of a widget that its access key stands in; empty for others.
QString TexteAcces(const QWidget& widget) {
  if (const auto* bouton = qobject_cast<const QAbstractButton*>(&widget)) return bouton->text();
  if (const auto* groupe = qobject_cast<const QGroupBox*>(&widget)) return groupe->title();
  const auto* libelle = qobject_cast<const QLabel*>(&widget);
  return libelle && libelle->buddy() ? libelle->text() : QString();
}

/// Scrolls to a field, in whatever it stands.
void Deroule(QWidget& champ) {
  for (QWidget* parent = champ.parentWidget(); parent; parent = parent->parentWidget())
    if (auto* defilement = qobject_cast<QScrollArea*>(parent)) defilement->ensureWidgetVisible(&champ);
}

QPushButton* FaitBouton(const QString& texte, const char* nom, const QIcon& image, QWidget* parent) {
  auto* bouton = new QPushButton(image, texte, parent);
  bouton->setObjectName(QLatin1String(nom));
  return bouton;
}

bool EstSaisie(const QWidget* widget) {
  return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget) ||
         qobject_cast<const QComboBox*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget);
}

bool PrendFocus(const QWidget* widget) {
  return widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) &&
         !widget->focusProxy();
}

}  // namespace

CZNDialog::CZNDialog(ContexteUi& contexte, const QString& titre, const char* nom, QWidget* parent)
    : QDialog(FenetreDessous(parent, contexte.Cadre.Cadre())), m_contexte(contexte) {
  SurvitAuParent(*this);
  setObjectName(QString::fromUtf8(nom));
  setWindowTitle(titre);
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  auto* defilement = new Defilement(this);
  m_zone = new QWidget;
  defilement->setWidget(m_zone);
  m_raison = LigneRaison(App().Magasin.QVEnLecture(), this);
  m_boutons = new QHBoxLayout;
  auto* pile = new QVBoxLayout(this);
  // The fields bring their own margins, so that a scroll bar stands at the edge.
  const QMargins marges = pile->contentsMargins();
  m_boutons->setSpacing(pile->spacing());
  pile->setContentsMargins(0, 0, 0, 0);
  pile->setSpacing(0);
  m_boutons->setContentsMargins(marges.left(), 0, marges.right(), marges.bottom());
  m_raison->layout()->setContentsMargins(marges.left(), marges.top(), marges.right(), 0);
  pile->addWidget(m_raison);
  pile->addWidget(defilement, 1);
  pile->addLayout(m_boutons);
  m_boutons->addStretch(1);
  connect(qApp, &QApplication::focusChanged, this, &CZNDialog::QuitteMontant);
}

QPushButton& CZNDialog::AjouteBouton(const QString& texte, const char* nom) {
  QPushButton* bouton = FaitBouton(texte, nom, Image(nom), this);
  int place = 0;
  while (!m_boutons->itemAt(place)->spacerItem()) ++place;
  m_boutons->insertWidget(place, bouton);
  return *bouton;
}

void CZNDialog::Boutons(Mode mode, bool voisins) {
  m_mode = mode;
  if (voisins) {
    auto* precedent = FaitBouton(u"&Précédent"_s, "precedent", Image("precedent"), this);
    auto* suivant = FaitBouton(u"&Suivant"_s, "suivant", Image("suivant"), this);
    m_boutons->addWidget(precedent);
    m_boutons->addWidget(suivant);
    connect(precedent, &QPushButton::clicked, this, [this, precedent] { VersVoisin(-1, *precedent); });
    connect(suivant, &QPushButton::clicked, this, [this, suivant] { VersVoisin(1, *suivant); });
  }
  if (mode != Mode::Consultation) {
    m_defaut = mode == Mode::Ajout ? FaitBouton(u"&Enregistrer"_s, "ok", Image("valider"), this)
                                   : FaitBouton(u"&Ok"_s, "ok", Image("valider"), this);
    m_boutons->addWidget(m_defaut);
    connect(m_defaut, &QPushButton::clicked, this, &QDialog::accept);
  }
  const bool ferme = mode == Mode::Ajout || mode == Mode::Consultation;
  auto* annuler = ferme ? FaitBouton(u"&Fermer"_s, "annuler", Image("annuler"), this)
                        : FaitBouton(u"A&nnuler"_s, "annuler", Image("annuler"), this);
  m_boutons->addWidget(annuler);
  connect(annuler, &QPushButton::clicked, this, &QDialog::reject);
  // Last in the tab order, first in the row.
  if (voisins) AjouteAide();
  if (!m_defaut) m_defaut = annuler;
  m_defaut->setDefault(true);
  AppliqueDessin();
}

void CZNDialog::AjouteAide() {
  connect(&AjouteBouton(u"&Aide"_s, "aide"), &QPushButton::clicked, this,
          [this] { m_contexte.Cadre.Aide(PageAide()); });
}

void CZNDialog::AjouteIssuesEtat() {
  const std::pair<QString, const char*> issues[] = {
      {u"&Aperçu"_s, "apercu"}, {u"&Imprimer"_s, "imprimante"}, {u"&PDF..."_s, "pdf"}};
  for (const auto& [texte, nom] : issues)
    connect(&AjouteBouton(texte, nom), &QPushButton::clicked, this, [this, issue = QLatin1String(nom)] {
      m_issue = issue;
      m_mode == Mode::Consultation ? done(Accepted) : accept();
      if (result() != Accepted) m_issue.clear();
    });
}

void CZNDialog::ChoisitToucheAide() {
  auto* aide = findChild<QPushButton*>(u"aide"_s, Qt::FindDirectChildrenOnly);
  if (!aide) return;
  QSet<QKeySequence> prises;
  for (const QWidget* widget : findChildren<QWidget*>())
    if (widget != aide) prises += QKeySequence::mnemonic(TexteAcces(*widget));
  for (const QString& texte : {u"&Aide"_s, u"A&ide"_s, u"Ai&de"_s, u"Aid&e"_s, u"Aide"_s}) {
    aide->setText(texte);
    if (!prises.contains(QKeySequence::mnemonic(texte))) return;
  }
}

/// Font and colour of typed texts, as the preferences have them.
void CZNDialog::AppliqueDessin() {
  const Preferences& dessin = m_contexte.Dessin;
  QPalette couleurs;
  bool colore = false;
  const auto applique = [&](QPalette::ColorRole texte, QPalette::ColorRole fond) {
    const QColor& couleur = dessin.TexteSaisies;
    if (!couleur.isValid() || Contraste(couleur, palette().color(QPalette::Active, fond)) < contrasteTexte)
      return;
    couleurs.setColor(QPalette::Active, texte, couleur);
    couleurs.setColor(QPalette::Inactive, texte, couleur);
    colore = true;
  };
  applique(QPalette::Text, QPalette::Base);
  applique(QPalette::ButtonText, QPalette::Button);
  if (m_lectureSeule) {
    couleurs = PaletteLecture();
    colore = true;
    m_zone->setPalette(couleurs);
  }
  for (QWidget* champ : m_zone->findChildren<QWidget*>()) {
    const bool lecture = qobject_cast<Lecture*>(champ);
    if (!EstSaisie(champ) && !lecture) continue;
    champ->setFont(dessin.PoliceSaisies);
    if (colore && !lecture) champ->setPalette(couleurs);
  }
}

QPalette CZNDialog::PaletteLecture() const {
  QPalette lecture;
  const auto couleur = [this](QPalette::ColorRole role) { return palette().color(QPalette::Active, role); };
  const QColor fond = couleur(QPalette::Window);
  for (const QPalette::ColorGroup etat : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    lecture.setColor(etat, QPalette::Base, fond);
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText})
      lecture.setColor(etat, role, Attenue(couleur(role), fond));
    lecture.setColor(etat, QPalette::ButtonText,
                     Attenue(couleur(QPalette::ButtonText), couleur(QPalette::Button)));
  }
  return lecture;
}

bool CZNDialog::FigeSiCloture() {
  const bool cloture = App().Reglages.IsFige();
  if (cloture) LectureSeule();
  m_raison->setVisible(cloture);
  return cloture;
}

void CZNDialog::LectureSeule() {
  m_lectureSeule = true;
  AppliqueDessin();
  for (QWidget* champ : m_zone->findChildren<QWidget*>()) {
    if (EstSaisie(champ) && !qobject_cast<QComboBox*>(champ)) {
      champ->setProperty("readOnly", true);
    } else if (qobject_cast<QPushButton*>(champ)) {
      champ->setEnabled(false);
    } else if (qobject_cast<QComboBox*>(champ) || qobject_cast<QAbstractButton*>(champ)) {
      if (!qobject_cast<QToolButton*>(champ)) champ->setEnabled(false);
    }
  }
  auto* ok = findChild<QPushButton*>(u"ok"_s, Qt::FindDirectChildrenOnly);
  auto* annuler = findChild<QPushButton*>(u"annuler"_s, Qt::FindDirectChildrenOnly);
  if (!ok || !annuler) return;
  ok->hide();
  ok->setEnabled(false);
  annuler->setText(u"&Fermer"_s);
  m_defaut = annuler;
  m_defaut->setDefault(true);
  m_mode = Mode::Consultation;
}

bool CZNDialog::Refuse(const TexteFixe& erreur, QWidget& champ,
                       std::initializer_list<std::string> arguments) {
  App().ReportErreur(erreur, arguments);
  Focalise(champ);
  return false;
}

bool CZNDialog::Refuse(const Refus& refus) {
  if (!App().Dit(refus)) Pointe(refus);
  return !refus;
}

void CZNDialog::Pointe(const Refus& refus) { Focalise(refus.champ); }

void CZNDialog::Focalise(QWidget& champ) {
  for (QWidget *page = &champ, *parent = champ.parentWidget(); parent;
       page = parent, parent = parent->parentWidget()) {
    if (auto* onglets = qobject_cast<QTabWidget*>(parent->parentWidget());
        onglets && onglets->indexOf(page) >= 0)
      onglets->setCurrentWidget(page);
  }
  Deroule(champ);
  champ.window()->setAttribute(Qt::WA_KeyboardFocusChange);  // a check box shows that it has the focus
  champ.setFocus(Qt::OtherFocusReason);
  if (auto* ligne = qobject_cast<QLineEdit*>(&champ)) ligne->selectAll();
  if (auto* choix = qobject_cast<QComboBox*>(&champ); choix && choix->lineEdit())
    choix->lineEdit()->selectAll();
  // Were several lines selected, the next key would replace them all.
  if (auto* lignes = qobject_cast<QPlainTextEdit*>(&champ)) lignes->moveCursor(QTextCursor::End);
  if (auto* nombre = qobject_cast<QAbstractSpinBox*>(&champ)) nombre->selectAll();
}

void CZNDialog::Focalise(const QWidget& parent, const char* nom) {
  if (!*nom) return;
  if (auto* champ = parent.findChild<QWidget*>(QString::fromUtf8(nom))) Focalise(*champ);
}

/// What stands in the fields, in a form that can be compared.
QStringList CZNDialog::Etat() const {
  QStringList etat;
  for (const QWidget* champ : m_zone->findChildren<QWidget*>()) {
    if (qobject_cast<const LigneFiltre*>(champ->parentWidget())) continue;  // what to look for is no record
    if (const auto* montant = qobject_cast<const EditeurMontant*>(champ); montant && montant->Refus() == 0)
      etat += QString::number(montant->Valeur(), 'g', 15);  // however it is written
    else if (const auto* ligne = qobject_cast<const QLineEdit*>(champ))
      etat += ligne->text();
    else if (const auto* lignes = qobject_cast<const QPlainTextEdit*>(champ))
      etat += lignes->toPlainText();
    else if (const auto* choix = qobject_cast<const QComboBox*>(champ))
      etat += QString::number(choix->currentIndex());
    else if (const auto* bouton = qobject_cast<const QAbstractButton*>(champ);
             bouton && bouton->isCheckable())
      etat += bouton->isChecked() ? u"1"_s : u"0"_s;
  }
  return etat;
}

/// The field that keys go to; that of the form itself while it is not the active window.
QWidget* CZNDialog::ChampCourant() const {
  QWidget* champ = QApplication::focusWidget();
  if (!champ || !isAncestorOf(champ) || champ->window() != this) champ = focusWidget();
  return champ && m_zone->isAncestorOf(champ) ? champ : nullptr;
}

bool CZNDialog::Modifie() const { return Etat() != m_etat; }

/// Leaves the current field for a button; false when the field takes the focus back.
bool CZNDialog::Quitte(QWidget& bouton) {
  if (ChampCourant()) bouton.setFocus(Qt::OtherFocusReason);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);  // departures put off during the click
  return !ChampCourant();
}

/// An amount that cannot be read is refused as its field is left, unless the form is left too.
void CZNDialog::QuitteMontant(QWidget* de, const QWidget* vers) {
  const auto* liste = qobject_cast<QComboBox*>(de);
  auto* montant = qobject_cast<EditeurMontant*>(liste ? liste->lineEdit() : de);
  if (!montant || !m_zone->isAncestorOf(montant) || !montant->isVisible() || !vers ||
      vers->window() != this || vers->objectName() == "annuler"_L1 || montant->Refus() == 0)
    return;
  // During a click a box would swallow the release of the button.
  if (QApplication::mouseButtons() == Qt::NoButton)
    RefuseMontant(*montant);
  else
    QMetaObject::invokeMethod(
        montant, [this, montant] { RefuseMontant(*montant); }, Qt::QueuedConnection);
}

bool CZNDialog::RefuseMontant(EditeurMontant& champ) {
  const TexteFixe refus = champ.Refus();
  if (refus == 0 || !champ.isEnabled() || champ.isReadOnly()) return true;
  const auto arguments = champ.ArgumentsRefus();
  Refuse(refus, champ, {arguments[0], arguments[1], arguments[2]});
  champ.Normalise();
  return false;
}

bool CZNDialog::ControleMontants() {
  for (EditeurMontant* champ : m_zone->findChildren<EditeurMontant*>())
    if (!champ->isHidden() && !RefuseMontant(*champ)) return false;
  return true;
}

bool CZNDialog::QuitteChamps() { return (!m_defaut || Quitte(*m_defaut)) && ControleMontants(); }

const TexteFixe& CZNDialog::QuestionFermer() const { return QuestionEnregistrerSaisie; }

/// True when what was typed was saved or is to be given up.
bool CZNDialog::EnregistreAvantFermer() {
  switch (App().MessageId(BoutonsNonOuiAnnuler | IconeQuestion | DefautSecond, QuestionFermer())) {
    case RepOui:
      return QuitteChamps() && Enregistre();
    case RepNon:
      return true;
    default:
      return false;
  }
}

int CZNDialog::exec() {
  ContexteUi& contexte = m_contexte;
  const QPointer<QWidget> dessous = parentWidget() ? parentWidget()->window() : contexte.Cadre.Cadre();
  const int resultat = QDialog::exec();
  // Where a question and its form go at once, a window manager may find nobody to give the keyboard to.
  const QWidget* active = QApplication::activeWindow();
  if (dessous && dessous->isVisible() && !(active && active->isVisible())) dessous->activateWindow();
  contexte.Cadre.Actualise();
  return resultat;
}

void CZNDialog::done(int resultat) {
  m_occupe = true;
  QDialog::done(resultat);
}

void CZNDialog::accept() {
  if (m_occupe || m_mode == Mode::Consultation) return;
  QWidget* champ = ChampCourant();
  if (!QuitteChamps()) return;
  m_occupe = true;
  const bool enregistre = Enregistre();
  m_contexte.Cadre.Actualise();
  m_occupe = false;
  if (!enregistre) {
    if (champ && !ChampCourant()) champ->setFocus(Qt::OtherFocusReason);
    return;
  }
  if (m_mode != Mode::Ajout) return QDialog::accept();
  Vide();
  OublieSaisie();
  VersPremier();
}

void CZNDialog::reject() {
  if (m_occupe) return;
  if (m_mode != Mode::Ajout || !isVisible() || !Modifie() || EnregistreAvantFermer()) QDialog::reject();
}

void CZNDialog::VersVoisin(int pas, QWidget& bouton) {
  if (m_occupe) return;
  QWidget* champ = ChampCourant();
  if (!Quitte(bouton)) return;
  m_occupe = true;
  const bool va = m_mode == Mode::Consultation || !Modifie() || (ControleMontants() && Enregistre());
  m_contexte.Cadre.Actualise();
  m_occupe = false;
  if (!va) return;
  Voisin(pas);
  OublieSaisie();
  if (champ && !ChampCourant()) Focalise(*champ);
}

/// Focus to the first field that takes it.
void CZNDialog::VersPremier() {
  for (QWidget* w = nextInFocusChain(); w && w != this; w = w->nextInFocusChain())
    if (m_zone->isAncestorOf(w) && PrendFocus(w) && !qobject_cast<QTabBar*>(w)) return Focalise(*w);
}

/// Ctrl and plus, minus or 0, as in the main window.
bool CZNDialog::Zoome(const QKeyEvent& evenement) {
  if (!(evenement.modifiers() & Qt::ControlModifier)) return false;
  const int touche = evenement.key();
  const bool plus = touche == Qt::Key_Plus || touche == Qt::Key_Equal;
  if (!plus && touche != Qt::Key_Minus && touche != Qt::Key_0) return false;
  m_contexte.Cadre.Zoome(plus ? 1 : touche == Qt::Key_Minus ? -1 : 0);
  m_contexte.Cadre.Actualise();
  AppliqueDessin();
  for (TableListe* table : findChildren<TableListe*>()) table->ActualisePreferences();
  adjustSize();
  return true;
}

void CZNDialog::keyPressEvent(QKeyEvent* evenement) {
  const bool entree = evenement->key() == Qt::Key_Return || evenement->key() == Qt::Key_Enter;
  const bool seule = !(evenement->modifiers() & ~Qt::KeypadModifier);
  if (evenement->key() == Qt::Key_F1 && seule) {
    evenement->accept();
    m_contexte.Cadre.Aide(PageAide());
    return;
  }
  if (!entree || !seule) {
    if (Zoome(*evenement)) return;
    if (m_contexte.Cadre.Touche(QKeySequence(evenement->keyCombination())))
      evenement->accept();
    else
      QDialog::keyPressEvent(evenement);
    return;
  }
  evenement->accept();
  QWidget* champ = ChampCourant();
  if (champ && !qobject_cast<QPushButton*>(champ) && App().Reglages.IsEntree()) {
    QWidget* suivant = champ->nextInFocusChain();
    while (suivant != champ && (!PrendFocus(suivant) || champ->isAncestorOf(suivant)))
      suivant = suivant->nextInFocusChain();
    // From the last field on come the buttons, the default one first.
    setAttribute(Qt::WA_KeyboardFocusChange);
    if (m_zone->isAncestorOf(suivant) && !qobject_cast<QPushButton*>(suivant)) {
      focusNextChild();
      if (focusWidget()) Deroule(*focusWidget());
    } else if (m_defaut) {
      m_defaut->setFocus(Qt::TabFocusReason);
    }
    return;
  }
  if (m_defaut && m_defaut->isEnabled()) m_defaut->click();
}

/// The size for what stands in the fields now: values and fonts came since they were laid out, and the
/// toolkit keeps what they needed then.
void CZNDialog::Ajuste() {
  AppliqueDessin();
  for (QWidget* champ : findChildren<QWidget*>()) champ->updateGeometry();
  if (!testAttribute(Qt::WA_Resized)) adjustSize();
}

void CZNDialog::showEvent(QShowEvent* evenement) {
  if (!m_vue) Ajuste();
  m_occupe = false;
  QDialog::showEvent(evenement);
  if (m_vue) return;
  m_vue = true;
  ChoisitToucheAide();
  auto* ok = findChild<QPushButton*>(u"ok"_s, Qt::FindDirectChildrenOnly);
  auto* annuler = findChild<QPushButton*>(u"annuler"_s, Qt::FindDirectChildrenOnly);
  // Where nothing can be saved no field looks as if it waited for something.
  if (annuler && !(ok && ok->isEnabled()))
    annuler->setFocus(Qt::OtherFocusReason);
  else if (!focusWidget() || qobject_cast<QTabBar*>(focusWidget()))
    VersPremier();
  OublieSaisie();
}

}  // namespace fenlor
