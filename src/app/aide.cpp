#include "app/aide.h"

#include <QEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScreen>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextDocumentFragment>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "app/listecommandes.h"
#include "app/textes.h"
#include "ui/couleurs.h"
#include "ui/positionfenetre.h"
#include "ui/texteqt.h"

static void InitRessources() { Q_INIT_RESOURCE(aide); }

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

/// "options#tva" is "options.html#tva".
QString Adresse(QString court) {
  const qsizetype diese = court.indexOf(u'#');
  return court.insert(diese < 0 ? court.size() : diese, u".html"_s);
}

QByteArray LitFichier(const QString& fichier) {
  static const bool pret = (InitRessources(), true);
  (void)pret;
  QFile page(u":/aide/"_s + fichier);
  return page.open(QIODevice::ReadOnly) ? page.readAll() : QByteArray();
}

/// The pages, and where the help on each window stands.
const QJsonObject& Sommaire() {
  static const QJsonObject sommaire = QJsonDocument::fromJson(LitFichier(u"sommaire.json"_s)).object();
  return sommaire;
}

/// Words to look for. Small ones ("de", "la") count only when there is nothing else.
QStringList Mots(const QString& cherche) {
  const QStringList tous = SansAccents(cherche).split(u' ', Qt::SkipEmptyParts);
  QStringList longs;
  for (const QString& mot : tous)
    if (mot.size() > 2) longs += mot;
  return longs.isEmpty() ? tous : longs;
}

/// Place of a word, or of the beginning of one, from `depuis` on; -1 when there is none.
qsizetype PlaceMot(const QString& texte, const QString& mot, qsizetype depuis = 0) {
  for (qsizetype p = texte.indexOf(mot, depuis); p >= 0; p = texte.indexOf(mot, p + 1))
    if (p == 0 || !texte[p - 1].isLetterOrNumber()) return p;
  return -1;
}

/// The shortcuts of the commands that exist, as rows of a table.
QString TableRaccourcis() {
  QString table =
      u"<table cellpadding=\"3\"><tr><th align=\"left\">Touche</th><th align=\"left\">Commande</th>"
      "<th align=\"left\">Menu</th></tr>"_s;
  for (const Commande& commande : TableCommandes()) {
    if (!commande.action || !*commande.raccourci) continue;
    const QKeySequence touches(QString::fromLatin1(commande.raccourci), QKeySequence::PortableText);
    table += u"<tr><td><b>%1</b></td><td>%2</td><td>%3</td></tr>"_s.arg(
        touches.toString(QKeySequence::NativeText).toHtmlEscaped(), NomCommande(commande).toHtmlEscaped(),
        QString::fromUtf8(TitreMenu(commande.menu)).remove(u'&'));
  }
  return table + u"</table>"_s;
}

/// Serves the pages with what stands in no file filled in.
class Navigateur : public QTextBrowser {
 public:
  using QTextBrowser::QTextBrowser;
  QVariant loadResource(int type, const QUrl& nom) override {
    if (type != QTextDocument::HtmlResource) return QTextBrowser::loadResource(type, nom);
    QString page = QString::fromUtf8(LitFichier(nom.fileName()));
    if (page.contains(u"<!--raccourcis-->"_s)) page.replace(u"<!--raccourcis-->"_s, TableRaccourcis());
    return page;
  }
};

constexpr int RoleFichier = Qt::UserRole;

}  // namespace

std::vector<PageAide> PagesAide() {
  std::vector<PageAide> pages;
  for (const QJsonValue& page : Sommaire()["pages"_L1].toArray())
    pages.push_back(
        {Adresse(page["fichier"_L1].toString()), page["titre"_L1].toString(), page["niveau"_L1].toInt() > 0});
  return pages;
}

QString AdresseAide(const QString& nom) {
  return Adresse(Sommaire()["fenetres"_L1][nom].toString(u"index"_s));
}

QString TexteAide(const QString& fichier) {
  static QHash<QString, QString> textes;
  QString& texte = textes[fichier];
  if (texte.isEmpty()) {
    static const QRegularExpression balise(u"<[^>]*>"_s);
    texte = QString::fromUtf8(LitFichier(fichier)).replace(balise, u" "_s);
  }
  return texte;
}

namespace {

QTreeWidget* FaitSommaire(QWidget* parent) {
  auto* sommaire = new QTreeWidget(parent);
  sommaire->setObjectName(u"sommaire"_s);
  sommaire->setAccessibleName(u"Sommaire"_s);
  sommaire->setHeaderHidden(true);
  sommaire->setRootIsDecorated(false);
  sommaire->setItemsExpandable(false);
  QTreeWidgetItem* chapitre = nullptr;
  for (const PageAide& page : PagesAide()) {
    auto* element =
        page.sousChapitre && chapitre ? new QTreeWidgetItem(chapitre) : new QTreeWidgetItem(sommaire);
    element->setText(0, page.titre);
    element->setData(0, RoleFichier, page.fichier);
    if (!page.sousChapitre) chapitre = element;
  }
  sommaire->expandAll();
  sommaire->resizeColumnToContents(0);
  return sommaire;
}

QLineEdit* FaitRecherche(QWidget* parent) {
  auto* recherche = new QLineEdit(parent);
  recherche->setObjectName(u"recherche"_s);
  recherche->setAccessibleName(u"Chercher dans l'aide"_s);
  recherche->setPlaceholderText(u"Chercher dans toutes les pages"_s);
  recherche->setClearButtonEnabled(true);
  recherche->setMinimumWidth(recherche->fontMetrics().horizontalAdvance(recherche->placeholderText()) +
                             6 * recherche->fontMetrics().height() / 2);
  return recherche;
}

}  // namespace

CFenetreAide::CFenetreAide(ContexteUi& contexte, QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      m_contexte(contexte) {
  setObjectName(u"FenetreAide"_s);
  setWindowTitle(u"Aide de Fenlor"_s);

  m_texte = new Navigateur(this);
  m_texte->setObjectName(u"texte"_s);
  m_texte->setAccessibleName(u"Page d'aide"_s);
  m_texte->setOpenExternalLinks(false);
  m_texte->document()->setDocumentMargin(fontMetrics().height());
  m_sommaire = FaitSommaire(this);
  m_recherche = FaitRecherche(this);

  auto* barre = new QHBoxLayout;
  const auto bouton = [&](const QString& texte, const QString& astuce, Qt::ArrowType fleche,
                          const char* nom) {
    auto* b = new QToolButton(this);
    b->setObjectName(QString::fromLatin1(nom));
    b->setText(texte);
    b->setToolTip(astuce);
    b->setAccessibleName(astuce);
    b->setArrowType(fleche);
    b->setToolButtonStyle(fleche == Qt::NoArrow ? Qt::ToolButtonTextOnly : Qt::ToolButtonTextBesideIcon);
    b->setAutoRaise(true);
    barre->addWidget(b);
    return b;
  };
  auto* avant = bouton(u"Précédent"_s, u"Page précédente (Alt+Gauche)"_s, Qt::LeftArrow, "precedent");
  auto* apres = bouton(u"Suivant"_s, u"Page suivante (Alt+Droite)"_s, Qt::RightArrow, "suivant");
  auto* accueil = bouton(u"Sommaire"_s, u"Première page (Alt+Origine)"_s, Qt::NoArrow, "accueil");
  avant->setEnabled(false);
  apres->setEnabled(false);
  barre->addStretch(1);
  barre->addWidget(m_recherche);

  auto* partage = new QSplitter(this);
  partage->addWidget(m_sommaire);
  partage->addWidget(m_texte);
  partage->setStretchFactor(1, 1);
  partage->setChildrenCollapsible(false);
  const int caractere = fontMetrics().averageCharWidth();
  m_sommaire->setMinimumWidth(12 * caractere);
  const int largeurSommaire = qMin(m_sommaire->columnWidth(0) + 2 * caractere, 40 * caractere);
  partage->setSizes({largeurSommaire, 125 * caractere - largeurSommaire});
  auto* colonne = new QVBoxLayout(this);
  colonne->addLayout(barre);
  colonne->addWidget(partage, 1);
  resize(caractere * 125, fontMetrics().height() * 36);
  for (auto [un, autre] : {std::pair<QWidget*, QWidget*>{avant, apres},
                           {apres, accueil},
                           {accueil, m_recherche},
                           {m_recherche, m_sommaire},
                           {m_sommaire, m_texte}})
    setTabOrder(un, autre);

  connect(m_texte, &QTextBrowser::backwardAvailable, avant, &QWidget::setEnabled);
  connect(m_texte, &QTextBrowser::forwardAvailable, apres, &QWidget::setEnabled);
  connect(avant, &QToolButton::clicked, m_texte, &QTextBrowser::backward);
  connect(apres, &QToolButton::clicked, m_texte, &QTextBrowser::forward);
  connect(accueil, &QToolButton::clicked, this, [this] { Montre(u"index"_s); });
  connect(m_texte, &QTextBrowser::sourceChanged, this, &CFenetreAide::SuisPage);
  connect(m_recherche, &QLineEdit::textChanged, this, &CFenetreAide::Cherche);
  connect(m_sommaire, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* element) {
    if (!element || m_suit) return;
    m_texte->setSource(QUrl(u"qrc:/aide/"_s + element->data(0, RoleFichier).toString()));
  });
  PoseCouleurs();
  m_texte->setSource(QUrl(u"qrc:/aide/"_s + AdresseAide(u"index"_s)));
}

void CFenetreAide::Montre(const QString& page) { MontreFichier(AdresseAide(page)); }

void CFenetreAide::MontreFichier(const QString& adresse) {
  m_texte->setSource(QUrl(u"qrc:/aide/"_s + adresse));
  setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  SuitModale(*this);
  raise();
  activateWindow();
}

void CFenetreAide::SuisPage(const QUrl& page) {
  const QString fichier = page.fileName();
  m_suit = true;
  for (QTreeWidgetItemIterator i(m_sommaire); *i; ++i)
    if ((*i)->data(0, RoleFichier).toString() == fichier) m_sommaire->setCurrentItem(*i);
  m_suit = false;
  Surligne();
}

void CFenetreAide::Cherche(const QString& mots) {
  const QStringList cherches = Mots(mots);
  QTreeWidgetItem* premier = nullptr;
  const auto filtre = [&](const auto& moi, QTreeWidgetItem* element) -> bool {
    bool visible = false;
    for (int i = 0; i < element->childCount(); ++i) visible |= moi(moi, element->child(i));
    bool contient = true;
    if (!cherches.isEmpty()) {
      const QUrl url(u"qrc:/aide/"_s + element->data(0, RoleFichier).toString());
      const QString page = m_texte->loadResource(QTextDocument::HtmlResource, url).toString();
      const QString texte =
          SansAccents(element->text(0) + u' ' + QTextDocumentFragment::fromHtml(page).toPlainText());
      contient = std::all_of(cherches.begin(), cherches.end(),
                             [&](const QString& mot) { return PlaceMot(texte, mot) >= 0; });
      contient = contient && element->data(0, RoleFichier).toString() != u"index.html"_s;
    }
    QFont police = element->font(0);
    police.setBold(contient && !cherches.isEmpty());
    element->setFont(0, police);
    element->setHidden(!(visible || contient));
    if (contient && !premier) premier = element;
    return visible || contient;
  };
  QTreeWidgetItem* courant = m_sommaire->currentItem();
  for (int i = 0; i < m_sommaire->topLevelItemCount(); ++i) filtre(filtre, m_sommaire->topLevelItem(i));
  m_recherche->setToolTip(premier ? QString() : TexteQ(AideRienTrouve, {De1252(mots)}));
  QPalette couleurs = palette();
  if (!premier) couleurs.setColor(QPalette::Text, CouleurFaute(couleurs));
  m_recherche->setPalette(couleurs);
  if (premier && !cherches.isEmpty() && courant && !courant->font(0).bold())
    m_sommaire->setCurrentItem(premier);
  Surligne();
}

void CFenetreAide::Surligne() {
  QList<QTextEdit::ExtraSelection> marques;
  QStringList mots = Mots(m_recherche->text());
  const QString texte = m_texte->document()->toPlainText();
  // Accents fold to one character each here, so that places stay the same.
  QString repli;
  for (const QChar c : texte) {
    const QString un = SansAccents(QString(c));
    repli += un.size() == 1 ? un[0] : c;
  }
  if (const QString phrase = SansAccents(m_recherche->text()).simplified();
      PlaceMot(repli, phrase) >= 0 && !phrase.isEmpty())
    mots = {phrase};
  for (const QString& mot : mots)
    for (qsizetype p = PlaceMot(repli, mot); p >= 0; p = PlaceMot(repli, mot, p + mot.size())) {
      QTextEdit::ExtraSelection marque;
      marque.cursor = QTextCursor(m_texte->document());
      marque.cursor.setPosition(static_cast<int>(p));
      marque.cursor.setPosition(static_cast<int>(p + mot.size()), QTextCursor::KeepAnchor);
      marque.format.setBackground(palette().highlight());
      marque.format.setForeground(palette().highlightedText());
      marques += marque;
    }
  m_texte->setExtraSelections(marques);
  if (marques.isEmpty()) return;
  const auto premiere = std::min_element(marques.begin(), marques.end(), [](const auto& a, const auto& b) {
    return a.cursor.selectionStart() < b.cursor.selectionStart();
  });
  QTextCursor place = premiere->cursor;
  place.setPosition(place.selectionStart());
  m_texte->setTextCursor(place);
}

/// Qt takes the link colour of the application, which is too dark on many dark palettes.
void CFenetreAide::PoseCouleurs() {
  const QString feuille = u"a { color: %1; } h1 { font-size: x-large; } h2 { font-size: large; }"_s.arg(
      CouleurLien(palette()).name());
  if (m_texte->document()->defaultStyleSheet() == feuille) return;
  m_texte->document()->setDefaultStyleSheet(feuille);
  if (m_texte->source().isValid()) m_texte->reload();
}

void CFenetreAide::changeEvent(QEvent* evenement) {
  QDialog::changeEvent(evenement);
  if (evenement->type() == QEvent::PaletteChange) PoseCouleurs();
}

void CFenetreAide::keyPressEvent(QKeyEvent* evenement) {
  const bool alt = evenement->modifiers() == Qt::AltModifier;
  if ((alt && evenement->key() == Qt::Key_Left) || evenement->key() == Qt::Key_Back)
    return m_texte->backward();
  if ((alt && evenement->key() == Qt::Key_Right) || evenement->key() == Qt::Key_Forward)
    return m_texte->forward();
  if ((alt && evenement->key() == Qt::Key_Home) || evenement->key() == Qt::Key_F1) return Montre(u"index"_s);
  if (evenement->matches(QKeySequence::Find)) {
    m_recherche->setFocus();
    return m_recherche->selectAll();
  }
  if (evenement->key() == Qt::Key_Return || evenement->key() == Qt::Key_Enter) return;
  if (evenement->key() == Qt::Key_Escape && !m_recherche->text().isEmpty()) return m_recherche->clear();
  QDialog::keyPressEvent(evenement);
}

void CFenetreAide::showEvent(QShowEvent* evenement) {
  if (!m_placee) {
    m_placee = true;
    resize(size().boundedTo(screen()->availableGeometry().size() * 19 / 20));
    RestaurePosition(*this, m_contexte.App, Texte(SecAide));
    m_texte->setFocus();
  }
  QDialog::showEvent(evenement);
}

void CFenetreAide::done(int resultat) {
  if (isVisible()) SauvePosition(*this, m_contexte.App, Texte(SecAide));
  QDialog::done(resultat);
}

}  // namespace fenlor
