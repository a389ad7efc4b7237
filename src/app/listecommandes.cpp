#include "app/listecommandes.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/images.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int roleNumero = Qt::UserRole;
constexpr int roleCherche = Qt::UserRole + 1;

}  // namespace

QString SansAccents(const QString& texte) {
  QString repli;
  for (const QChar c : texte.normalized(QString::NormalizationForm_KD))
    if (!c.isMark()) repli += c == u'’' ? u'\'' : c.toLower();
  return repli;
}

QString NomCommande(const Commande& commande) {
  QString nom = QString::fromUtf8(commande.texte).remove(u'&');
  if (nom.endsWith(u"..."_s)) nom.chop(3);
  if (nom.endsWith(u'.') && !nom.chopped(2).endsWith(u'.')) nom.chop(1);
  return nom;
}

QString NomMenu(Menu menu) {
  if (menu == Menu::Aide) return u"Aide"_s;
  if (menu == Menu::Aucun) return u"Autres"_s;
  return QString::fromUtf8(TitreMenu(menu)).remove(u'&');
}

QIcon ImageDeLigne(const char* nom, const QWidget& liste, int cote) {
  const QPixmap image = Image(nom).pixmap(QSize(cote, cote), liste.devicePixelRatioF());
  QPixmap choisie = image;
  if (!choisie.isNull()) {
    QPainter peintre(&choisie);
    peintre.setCompositionMode(QPainter::CompositionMode_SourceIn);
    peintre.fillRect(choisie.rect(), liste.palette().color(QPalette::HighlightedText));
  }
  QIcon icone(image);
  icone.addPixmap(choisie, QIcon::Selected);
  return icone;
}

CListeCommandes::CListeCommandes(const std::function<bool(const Commande&)>& retenue, bool raccourcis,
                                 QWidget* parent)
    : QWidget(parent), m_recherche(new QLineEdit(this)), m_table(new QTreeWidget(this)) {
  m_recherche->setObjectName(u"recherche"_s);
  m_recherche->setPlaceholderText(u"Chercher une commande"_s);
  m_recherche->setAccessibleName(u"Chercher une commande"_s);
  m_recherche->setClearButtonEnabled(true);
  m_recherche->installEventFilter(this);
  m_table->setObjectName(u"commandes"_s);
  m_table->setAccessibleName(u"Commandes"_s);
  m_table->setColumnCount(raccourcis ? 2 : 1);
  m_table->setHeaderLabels(raccourcis ? QStringList{u"Commande"_s, u"Raccourci"_s}
                                      : QStringList{u"Commande"_s});
  m_table->setHeaderHidden(!raccourcis);
  m_table->setRootIsDecorated(false);
  m_table->setUniformRowHeights(true);
  m_table->setAllColumnsShowFocus(true);
  m_table->header()->setStretchLastSection(false);
  m_table->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  if (raccourcis) m_table->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);

  const int cote = style()->pixelMetric(QStyle::PM_SmallIconSize);
  m_table->setIconSize({cote, cote});
  int largeur = 0;
  for (int i = 0; i <= static_cast<int>(Menu::Aucun); ++i) {
    QTreeWidgetItem* titre = nullptr;
    for (const Commande& commande : TableCommandes()) {
      if (static_cast<int>(commande.menu) != i || !retenue(commande)) continue;
      const QString menu = NomMenu(commande.menu);
      if (!titre) {
        titre = new QTreeWidgetItem(m_table, {menu});
        titre->setFlags(Qt::NoItemFlags);
        QFont gras = m_table->font();
        gras.setBold(true);
        titre->setFont(0, gras);
        titre->setForeground(0, m_table->palette().brush(QPalette::Active, QPalette::Text));
      }
      auto* ligne = new QTreeWidgetItem(m_table, {NomCommande(commande)});
      ligne->setIcon(0, ImageDeLigne(commande.image, *m_table, cote));
      largeur = std::max(largeur, m_table->fontMetrics().horizontalAdvance(ligne->text(0)));
      ligne->setToolTip(0, QString::fromUtf8(commande.explication));
      ligne->setData(0, roleNumero, commande.numero);
      ligne->setData(0, roleCherche, SansAccents(menu + u' ' + NomCommande(commande)));
    }
  }

  auto* colonne = new QVBoxLayout(this);
  colonne->setContentsMargins(0, 0, 0, 0);
  colonne->addWidget(m_recherche);
  colonne->addWidget(m_table, 1);
  setFocusProxy(m_recherche);
  m_table->setMinimumWidth(largeur + cote + m_table->verticalScrollBar()->sizeHint().width() +
                           m_table->fontMetrics().averageCharWidth() * (raccourcis ? 24 : 6));
  m_table->setMinimumHeight(m_table->fontMetrics().height() * 7);

  connect(m_recherche, &QLineEdit::textChanged, this, &CListeCommandes::Filtre);
  connect(m_table, &QTreeWidget::currentItemChanged, this, &CListeCommandes::ChoixChange);
  connect(m_table, &QTreeWidget::itemDoubleClicked, this, [this] {
    if (Choisie()) Q_EMIT Activee();
  });
  Filtre({});
}

QSize CListeCommandes::sizeHint() const {
  return QSize(QWidget::sizeHint().width(), fontMetrics().height() * 22);
}

unsigned CListeCommandes::Choisie() const {
  const QTreeWidgetItem* ligne = m_table->currentItem();
  return ligne && !ligne->isHidden() ? ligne->data(0, roleNumero).toUInt() : 0;
}

QTreeWidgetItem* CListeCommandes::Ligne(unsigned numero) const {
  for (int i = 0; i < m_table->topLevelItemCount(); ++i)
    if (m_table->topLevelItem(i)->data(0, roleNumero).toUInt() == numero) return m_table->topLevelItem(i);
  return nullptr;
}

void CListeCommandes::PoseRaccourci(unsigned numero, const QString& texte) {
  if (QTreeWidgetItem* ligne = numero ? Ligne(numero) : nullptr) ligne->setText(1, texte);
}

void CListeCommandes::Filtre(const QString& texte) {
  const QStringList mots = SansAccents(texte).split(u' ', Qt::SkipEmptyParts);
  QTreeWidgetItem* titre = nullptr;
  QTreeWidgetItem* premiere = nullptr;
  for (int i = 0; i < m_table->topLevelItemCount(); ++i) {
    QTreeWidgetItem* ligne = m_table->topLevelItem(i);
    if (ligne->data(0, roleNumero).toUInt() == 0) {
      titre = ligne;
      titre->setHidden(true);
      continue;
    }
    const QString cherche = ligne->data(0, roleCherche).toString();
    const bool montre = std::ranges::all_of(mots, [&](const QString& mot) { return cherche.contains(mot); });
    ligne->setHidden(!montre);
    if (!montre) continue;
    if (titre) titre->setHidden(false);
    if (!premiere) premiere = ligne;
  }
  if (!Choisie()) m_table->setCurrentItem(premiere);
  Q_EMIT ChoixChange();
}

bool CListeCommandes::eventFilter(QObject* objet, QEvent* evenement) {
  if (objet == m_recherche && evenement->type() == QEvent::KeyPress) {
    auto* touche = static_cast<QKeyEvent*>(evenement);
    const int cle = touche->key();
    if ((cle == Qt::Key_Down || cle == Qt::Key_Up) && touche->modifiers() == Qt::NoModifier) {
      const QTreeWidgetItem* avant = m_table->currentItem();
      QTreeWidgetItem* ligne = const_cast<QTreeWidgetItem*>(avant);
      do {
        ligne = cle == Qt::Key_Down ? m_table->itemBelow(ligne) : m_table->itemAbove(ligne);
      } while (ligne && ligne->data(0, roleNumero).toUInt() == 0);
      if (ligne) m_table->setCurrentItem(ligne);
      return true;
    }
  }
  return QWidget::eventFilter(objet, evenement);
}

}  // namespace fenlor
