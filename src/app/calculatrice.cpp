#include "app/calculatrice.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextOption>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/textes.h"
#include "core/valeurs.h"
#include "ui/positionfenetre.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

struct ToucheClavier {
  int cle;
  Touche touche;
};
constexpr ToucheClavier clavier[] = {
    {Qt::Key_Comma, Touche::Virgule},
    {Qt::Key_Period, Touche::Virgule},
    {Qt::Key_Plus, Touche::Plus},
    {Qt::Key_Minus, Touche::Moins},
    {Qt::Key_Asterisk, Touche::Fois},
    {Qt::Key_multiply, Touche::Fois},
    {Qt::Key_X, Touche::Fois},
    {Qt::Key_Slash, Touche::Divise},
    {Qt::Key_division, Touche::Divise},
    {Qt::Key_Colon, Touche::Divise},
    {Qt::Key_Percent, Touche::Pourcent},
    {Qt::Key_Equal, Touche::Egal},
    {Qt::Key_Enter, Touche::Egal},
    {Qt::Key_Return, Touche::Egal},
    {Qt::Key_Backspace, Touche::Efface},
    {Qt::Key_Delete, Touche::CE},
    {Qt::Key_N, Touche::Signe},
    {Qt::Key_plusminus, Touche::Signe},
    {Qt::Key_C, Touche::C},
    {Qt::Key_F5, Touche::MPlus},
    {Qt::Key_F6, Touche::MMoins},
    {Qt::Key_F7, Touche::MR},
    {Qt::Key_F8, Touche::MC},
};

}  // namespace

CDialogCalculatrice::CDialogCalculatrice(ContexteUi& contexte, QWidget* parent)
    : QDialog(parent), m_contexte(contexte), m_separateur(contexte.App.Reglages.SeparateurDecimal()) {
  setObjectName(u"DialogCalculatrice"_s);
  setWindowTitle(u"Calculatrice"_s);
  setAttribute(Qt::WA_DeleteOnClose);
  setFocusPolicy(Qt::StrongFocus);

  m_bande = new QPlainTextEdit(this);
  m_bande->setObjectName(u"bande"_s);
  m_bande->setAccessibleName(u"Bande"_s);
  m_bande->setReadOnly(true);
  m_bande->setUndoRedoEnabled(false);
  m_bande->setFocusPolicy(Qt::ClickFocus);
  m_bande->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  m_bande->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QTextOption droite(Qt::AlignRight);
  droite.setWrapMode(QTextOption::NoWrap);
  m_bande->document()->setDefaultTextOption(droite);

  QFrame* cadre = FaitEcran();
  m_remarque = new QLabel(this);
  m_remarque->setObjectName(u"remarque"_s);

  QGridLayout* touches = FaitTouches();
  auto* copie = new QToolButton(this);
  auto* colle = new QToolButton(this);
  for (auto [bouton, texte, astuce, nom] :
       {std::tuple{copie, u"Copier"_s, u"Copier le résultat (Ctrl+C)"_s, "copie"},
        std::tuple{colle, u"Coller"_s, u"Coller un nombre (Ctrl+V)"_s, "colle"}}) {
    bouton->setObjectName(QString::fromLatin1(nom));
    bouton->setText(texte);
    bouton->setToolTip(astuce);
    bouton->setAccessibleName(astuce);
    bouton->setAutoRaise(true);
    bouton->setFocusPolicy(Qt::NoFocus);
  }
  connect(copie, &QToolButton::clicked, this, &CDialogCalculatrice::Copie);
  connect(colle, &QToolButton::clicked, this, &CDialogCalculatrice::Colle);
  auto* pied = new QHBoxLayout;
  pied->addWidget(m_remarque, 1);
  pied->addWidget(copie);
  pied->addWidget(colle);

  auto* colonne = new QVBoxLayout(this);
  colonne->addWidget(m_bande, 1);
  colonne->addWidget(cadre);
  colonne->addLayout(pied);
  colonne->addLayout(touches);
  m_bande->setMinimumHeight(m_bande->fontMetrics().lineSpacing() * 3);
  resize(minimumSizeHint().width(), minimumSizeHint().height() + m_bande->fontMetrics().lineSpacing() * 4);
  Montre();
}

QFrame* CDialogCalculatrice::FaitEcran() {
  auto* cadre = new QFrame(this);
  cadre->setFrameShape(QFrame::StyledPanel);
  cadre->setBackgroundRole(QPalette::Base);
  cadre->setForegroundRole(QPalette::Text);
  cadre->setAutoFillBackground(true);
  m_temoin = new QLabel(cadre);
  m_temoin->setObjectName(u"temoin"_s);
  m_affichage = new QLabel(cadre);
  m_affichage->setObjectName(u"affichage"_s);
  m_affichage->setAccessibleName(u"Résultat"_s);
  m_affichage->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  m_affichage->setTextInteractionFlags(Qt::TextSelectableByMouse);
  m_affichage->setFocusPolicy(Qt::NoFocus);
  for (QLabel* label : {m_temoin, m_affichage}) {
    label->setForegroundRole(QPalette::Text);
    label->setBackgroundRole(QPalette::Base);
  }
  QFont grand = font();
  grand.setPointSizeF(grand.pointSizeF() * 1.8);
  m_affichage->setFont(grand);
  m_affichage->setMinimumWidth(QFontMetrics(grand).horizontalAdvance(u"-000 000 000 000 000,0"_s));
  m_temoin->setMinimumWidth(fontMetrics().horizontalAdvance(u"M ÷ "_s));
  auto* ecran = new QHBoxLayout(cadre);
  ecran->addWidget(m_temoin);
  ecran->addWidget(m_affichage, 1);
  return cadre;
}

QGridLayout* CDialogCalculatrice::FaitTouches() {
  auto* touches = new QGridLayout;
  touches->setSpacing(fontMetrics().height() / 4);
  const auto touche = [this](Touche t) { return [this, t] { Appuie(t); }; };
  using T = Touche;
  Bouton(*touches, 0, 0, u"F → €"_s, u"Francs en Euros"_s, u"E"_s, "francEuro", [this] { Convertit(true); });
  Bouton(*touches, 0, 1, u"€ → F"_s, u"Euros en Francs"_s, u"F"_s, "euroFranc", [this] { Convertit(false); });
  Bouton(*touches, 0, 2, u"⌫"_s, u"Effacer un chiffre"_s, u"Retour arrière"_s, "efface", touche(T::Efface));
  Bouton(*touches, 0, 3, u"CE"_s, u"Effacer le nombre"_s, u"Suppr"_s, "ce", touche(T::CE));
  Bouton(*touches, 0, 4, u"C"_s, u"Tout effacer"_s, u"Échap"_s, "c", touche(T::C));
  Bouton(*touches, 0, 5, u"%"_s, u"Pour cent"_s, u"%"_s, "pourcent", touche(T::Pourcent));
  struct Ligne {
    const char16_t* texte;
    const char16_t* parle;
    const char16_t* cle;
    const char* nom;
    Touche touche;
  };
  static constexpr Ligne lignes[4][4] = {
      {{u"MC", u"Vider la mémoire", u"F8", "mc", T::MC},
       {u"7", u"7", u"7", "chiffre7", T::Chiffre7},
       {u"8", u"8", u"8", "chiffre8", T::Chiffre8},
       {u"9", u"9", u"9", "chiffre9", T::Chiffre9}},
      {{u"MR", u"Rappeler la mémoire", u"F7", "mr", T::MR},
       {u"4", u"4", u"4", "chiffre4", T::Chiffre4},
       {u"5", u"5", u"5", "chiffre5", T::Chiffre5},
       {u"6", u"6", u"6", "chiffre6", T::Chiffre6}},
      {{u"M-", u"Retirer de la mémoire", u"F6", "mmoins", T::MMoins},
       {u"1", u"1", u"1", "chiffre1", T::Chiffre1},
       {u"2", u"2", u"2", "chiffre2", T::Chiffre2},
       {u"3", u"3", u"3", "chiffre3", T::Chiffre3}},
      {{u"M+", u"Ajouter à la mémoire", u"F5", "mplus", T::MPlus},
       {u"0", u"0", u"0", "chiffre0", T::Chiffre0},
       {u",", u"Virgule", u", ou .", "virgule", T::Virgule},
       {u"±", u"Changer de signe", u"N", "signe", T::Signe}},
  };
  static constexpr Ligne operations[] = {{u"÷", u"Diviser", u"/", "divise", T::Divise},
                                         {u"×", u"Multiplier", u"*", "fois", T::Fois},
                                         {u"-", u"Soustraire", u"-", "moins", T::Moins},
                                         {u"+", u"Ajouter", u"+", "plus", T::Plus}};
  const auto pose = [&](int ligne, int colonne, const Ligne& l) {
    Bouton(*touches, ligne, colonne, QString::fromUtf16(l.texte), QString::fromUtf16(l.parle),
           QString::fromUtf16(l.cle), l.nom, touche(l.touche));
  };
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < 4; ++j) pose(i + 1, j, lignes[i][j]);
    pose(i + 1, 4, operations[i]);
  }
  Bouton(*touches, 1, 5, u"="_s, u"Résultat"_s, u"Entrée"_s, "egal", touche(T::Egal), 4);
  return touches;
}

void CDialogCalculatrice::Bouton(QGridLayout& grille, int ligne, int colonne, const QString& texte,
                                 const QString& parle, const QString& touche, const char* nom,
                                 std::function<void()> action, int hauteur) {
  auto* bouton = new QPushButton(texte, this);
  bouton->setObjectName(QString::fromLatin1(nom));
  bouton->setAccessibleName(parle);
  bouton->setToolTip(parle == touche ? parle : u"%1 (%2)"_s.arg(parle, touche));
  bouton->setAutoDefault(false);
  bouton->setFocusPolicy(Qt::NoFocus);
  const int cote = fontMetrics().height() * 2;
  bouton->setMinimumSize(qMax(cote * 5 / 4, fontMetrics().horizontalAdvance(texte) + cote / 2), cote);
  bouton->setSizePolicy(QSizePolicy::Expanding, hauteur > 1 ? QSizePolicy::Expanding : QSizePolicy::Fixed);
  connect(bouton, &QPushButton::clicked, this, std::move(action));
  grille.addWidget(bouton, ligne, colonne, hauteur, 1);
}

void CDialogCalculatrice::Appuie(Touche touche) {
  m_remarque->clear();
  m_calcul.Appuie(touche);
  Montre();
}

void CDialogCalculatrice::Convertit(bool versEuro) {
  if (m_calcul.Erreur()) return;
  QVAPI& magasin = m_contexte.App.Magasin;
  const f64 taux = magasin.GetTauxEuro(magasin.Today());
  const f64 montant = m_calcul.Valeur().Montant();
  const auto converti = Decimal::DeMontant(versEuro ? QVAPI::ConvertFrancToEuro(taux, montant)
                                                    : QVAPI::ConvertEuroToFranc(taux, montant));
  if (converti)
    m_calcul.Convertit(*converti, versEuro ? "F" : "€", versEuro ? "€" : "F");
  else
    m_calcul.Echoue();
  std::string texte = FormatMontant(taux, 5, m_separateur);
  m_remarque->setText(TexteQ(CalculTaux, {texte}));
  Montre();
}

void CDialogCalculatrice::Copie() {
  if (m_calcul.Erreur()) return;
  QApplication::clipboard()->setText(QString::fromStdString(m_calcul.Valeur().Texte(m_separateur)));
}

void CDialogCalculatrice::Colle() {
  const auto lu = Decimal::LitColle(QApplication::clipboard()->text().toStdString());
  m_remarque->setText(lu ? QString() : TexteQ(CalculPasNombre));
  if (lu)
    m_calcul.Pose(*lu);
  else
    QApplication::beep();
  Montre();
}

QString CDialogCalculatrice::Groupe(const std::string& nombre) const {
  QString texte = QString::fromStdString(nombre);
  texte.replace(u',', QLatin1Char(m_separateur));
  qsizetype fin = texte.indexOf(QLatin1Char(m_separateur));
  if (fin < 0) fin = texte.size();
  const qsizetype debut = texte.startsWith(u'-') ? 1 : 0;
  for (qsizetype p = fin - 3; p > debut; p -= 3) texte.insert(p, QChar(0x00A0));
  return texte;
}

void CDialogCalculatrice::Montre() {
  const QString texte = m_calcul.Erreur() ? TexteQ(CalculErreur) : Groupe(m_calcul.Affichage());
  m_affichage->setText(texte);
  m_affichage->setAccessibleDescription(texte);
  m_temoin->setText((m_calcul.MemoirePleine() ? u"M "_s : QString()) +
                    QString::fromStdString(m_calcul.Operation()));
  QString bande;
  for (const Calcul::Ligne& ligne : m_calcul.Bande()) {
    const QString nombre = ligne.signe == "E" ? TexteQ(CalculErreur) : Groupe(ligne.nombre);
    const QString signe = ligne.signe == "E" ? QString() : QString::fromStdString(ligne.signe);
    if (!bande.isEmpty()) bande += u'\n';
    bande += nombre + u' ' + signe.leftJustified(3, QChar(0x00A0));
  }
  if (bande != m_bande->toPlainText()) {
    m_bande->setPlainText(bande);
    m_bande->verticalScrollBar()->setValue(m_bande->verticalScrollBar()->maximum());
  }
}

void CDialogCalculatrice::keyPressEvent(QKeyEvent* evenement) {
  if (evenement->matches(QKeySequence::Copy)) return Copie();
  if (evenement->matches(QKeySequence::Paste)) return Colle();
  if (evenement->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
    return QDialog::keyPressEvent(evenement);
  const int cle = evenement->key();
  if (cle >= Qt::Key_0 && cle <= Qt::Key_9) return Appuie(static_cast<Touche>(cle - Qt::Key_0));
  for (const ToucheClavier& t : clavier)
    if (t.cle == cle) return Appuie(t.touche);
  switch (cle) {
    case Qt::Key_E:
      return Convertit(true);
    case Qt::Key_F:
      return Convertit(false);
    case Qt::Key_F9:
      return reject();
    case Qt::Key_F1:
      return m_contexte.Cadre.Aide(objectName());
    case Qt::Key_Escape:
      return m_calcul.EstVide() ? reject() : Appuie(Touche::C);
    default:
      return QDialog::keyPressEvent(evenement);
  }
}

void CDialogCalculatrice::showEvent(QShowEvent* evenement) {
  if (!m_placee) {
    m_placee = true;
    resize(size().boundedTo(screen()->availableGeometry().size() * 19 / 20));
    RestaurePosition(*this, m_contexte.App, Texte(SecCalculatrice));
    setFocus();
  }
  QDialog::showEvent(evenement);
}

void CDialogCalculatrice::done(int resultat) {
  if (isVisible()) SauvePosition(*this, m_contexte.App, Texte(SecCalculatrice));
  QDialog::done(resultat);
}

}  // namespace fenlor
