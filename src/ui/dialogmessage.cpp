#include "ui/dialogmessage.h"

#include <QApplication>
#include <QClipboard>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTextDocument>
#include <QTextEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <memory>

#include "ui/images.h"
#include "ui/modales.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr unsigned masqueBoutons = 15;
constexpr unsigned masqueIcone = 0xF0;
constexpr int largeurTexte = 52;  ///< in characters
constexpr int largeurTexteLong = 84;
constexpr int largeurTabulation = 7;
constexpr int longueurTexteLong = 800;  ///< from here on the box is wider

struct LigneBouton {
  int reponse;
  const char16_t* texte;
  const char* image = "";
};
constexpr LigneBouton lignesBoutons[] = {
    {RepOk, u"&Ok", "valider"},
    {RepAnnuler, u"A&nnuler", "annuler"},
    {RepAbandonner, u"&Abandonner"},
    {RepReessayer, u"&Reéssayer"},
    {RepIgnorer, u"&Ignorer"},
    {RepOui, u"&Oui", "valider"},
    {RepTous, u"&Tous"},
    {RepNon, u"&Non"},
};

std::vector<int> Reponses(unsigned style) {
  static const std::map<unsigned, std::vector<int>> reponses = {
      {BoutonsOkAnnuler, {RepOk, RepAnnuler}},
      {BoutonsReessayerAbandonnerIgnorer, {RepReessayer, RepAbandonner, RepIgnorer}},
      {BoutonsNonOuiAnnuler, {RepNon, RepOui, RepAnnuler}},
      {BoutonsOuiNon, {RepOui, RepNon}},
      {BoutonsReessayerAnnuler, {RepReessayer, RepAnnuler}},
      {BoutonsSerie, {RepOui, RepNon, RepTous, RepAnnuler}},
  };
  const auto ligne = reponses.find(style & masqueBoutons);
  return ligne == reponses.end() ? std::vector<int>{RepOk} : ligne->second;
}

QIcon Icone(unsigned style, const QStyle& apparence) {
  struct LigneIcone {
    unsigned style;
    const char* nom;
    QStyle::StandardPixmap secours;
  };
  static constexpr LigneIcone icones[] = {
      {IconeStop, "stop", QStyle::SP_MessageBoxCritical},
      {IconeQuestion, "question", QStyle::SP_MessageBoxQuestion},
      {IconeAttention, "attention", QStyle::SP_MessageBoxWarning},
      {IconeInformation, "information", QStyle::SP_MessageBoxInformation}};
  for (const LigneIcone& icone : icones)
    if ((style & masqueIcone) == icone.style)
      return ImageExiste(icone.nom) ? Image(icone.nom) : apparence.standardIcon(icone.secours);
  return {};
}

}  // namespace

std::vector<BoutonMessage> BoutonsDe(unsigned style) {
  std::vector<BoutonMessage> boutons;
  for (const int reponse : Reponses(style))
    for (const LigneBouton& ligne : lignesBoutons)
      if (ligne.reponse == reponse)
        boutons.push_back({QString::fromUtf16(ligne.texte), reponse, ligne.image});
  // Four letters for four buttons: "&Non" has the one of "A&nnuler".
  if ((style & masqueBoutons) == BoutonsSerie) boutons.back().texte = u"&Annuler"_s;
  return boutons;
}

int ReponseFuite(unsigned style) {
  const std::vector<int> reponses = Reponses(style);
  if (style & FuitePremier) return reponses.front();
  for (const int fuite : {RepAnnuler, RepNon, RepAbandonner})
    if (std::find(reponses.begin(), reponses.end(), fuite) != reponses.end()) return fuite;
  return reponses.front();
}

CDialogMessage::CDialogMessage(const QString& titre, const QString& texte, unsigned style, QWidget* parent)
    : QDialog(parent), m_texte(texte), m_style(style), m_reponse(ReponseFuite(style)) {
  SurvitAuParent(*this);
  setObjectName(u"DialogMessage"_s);
  setWindowTitle(titre);

  auto* colonne = new QVBoxLayout(this);
  colonne->setSpacing(fontMetrics().height() * 2 / 3);
  auto* haut = new QHBoxLayout;
  haut->setSpacing(fontMetrics().averageCharWidth() * 2);
  colonne->addLayout(haut, 1);
  if (const QIcon icone = Icone(style, *this->style()); !icone.isNull()) {
    auto* image = new QLabel(this);
    image->setObjectName(u"icone"_s);
    const int cote = this->style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    image->setPixmap(icone.pixmap(QSize(cote, cote), devicePixelRatio()));
    haut->addWidget(image, 0, Qt::AlignTop);
  }
  auto* zone = new QTextEdit(this);
  zone->setObjectName(u"texte"_s);
  haut->addWidget(zone, 1);
  AjusteTexte(*zone);

  auto* trait = new QFrame(this);
  trait->setFrameStyle(QFrame::HLine | QFrame::Sunken);
  colonne->addWidget(trait);
  auto* bas = new QHBoxLayout;
  bas->addStretch(1);
  colonne->addLayout(bas);
  int avantDefaut = style & DefautSecond ? 1 : 0;
  for (const BoutonMessage& b : BoutonsDe(style)) {
    auto* bouton = new QPushButton(Image(b.image), b.texte, this);
    bouton->setObjectName(u"bouton%1"_s.arg(b.reponse));
    const bool defaut = avantDefaut-- == 0;
    bouton->setDefault(defaut);
    if (defaut) bouton->setFocus();
    connect(bouton, &QPushButton::clicked, this, [this, reponse = b.reponse] { Repond(reponse); });
    bas->addWidget(bouton);
  }
}

/// The whole text where the screen has room for it, else it scrolls.
void CDialogMessage::AjusteTexte(QTextEdit& texte) {
  texte.setReadOnly(true);
  texte.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  texte.setFrameStyle(QFrame::NoFrame);
  texte.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  texte.viewport()->setAutoFillBackground(false);
  QPalette couleurs = palette();
  couleurs.setColor(QPalette::Text, couleurs.color(QPalette::WindowText));
  texte.setPalette(couleurs);
  texte.setAccessibleName(m_texte);
  texte.setPlainText(m_texte);
  texte.document()->setDocumentMargin(0);
  texte.setTabStopDistance(QFontMetrics(texte.font()).averageCharWidth() * largeurTabulation);
  texte.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

  const QFontMetrics mesure(texte.font());
  const int caracteres = m_texte.size() < longueurTexteLong ? largeurTexte : largeurTexteLong;
  const int largeur = mesure.averageCharWidth() * caracteres;
  const std::unique_ptr<QTextDocument> essai(texte.document()->clone());
  essai->setDocumentMargin(0);
  essai->setTextWidth(largeur);
  const int voulue = int(essai->size().height()) + 1;
  const int permise = screen()->availableSize().height() * 6 / 10;
  const bool defile = voulue > permise;
  texte.setVerticalScrollBarPolicy(defile ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  texte.setFocusPolicy(defile ? Qt::StrongFocus : Qt::ClickFocus);
  const int barre = defile ? texte.style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
  texte.setMinimumSize(largeur + barre, std::clamp(voulue, mesure.lineSpacing() * 3, permise));
}

void CDialogMessage::Repond(int reponse) {
  m_reponse = reponse;
  done(Accepted);
}

void CDialogMessage::reject() {
  m_reponse = ReponseFuite(m_style);
  QDialog::reject();
}

void CDialogMessage::showEvent(QShowEvent* evenement) {
  QDialog::showEvent(evenement);
  QApplication::beep();
}

void CDialogMessage::keyPressEvent(QKeyEvent* evenement) {
  if (evenement->matches(QKeySequence::Copy)) {
    QApplication::clipboard()->setText(windowTitle() + u"\n\n"_s + m_texte);
    return;
  }
  if (evenement->modifiers() == Qt::NoModifier) {
    for (const BoutonMessage& b : BoutonsDe(m_style)) {
      const QKeySequence acces = QKeySequence::mnemonic(b.texte);
      if (!acces.isEmpty() && acces[0].key() == evenement->key()) return Repond(b.reponse);
    }
  }
  QDialog::keyPressEvent(evenement);
}

}  // namespace fenlor
