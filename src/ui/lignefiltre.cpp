#include "ui/lignefiltre.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/tableliste.h"
#include "ui/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int marge = 4, caracteresVus = 20;
constexpr std::size_t rangeesParTour = 100;

/// The layout, at any depth below `racine`, in which a widget stands itself.
QLayout* LayoutDe(QLayout* racine, const QWidget& widget) {
  if (!racine || racine->indexOf(&widget) >= 0) return racine;
  for (int i = 0; i < racine->count(); ++i)
    if (QLayout* trouve =
            racine->itemAt(i)->layout() ? LayoutDe(racine->itemAt(i)->layout(), widget) : nullptr;
        trouve && trouve->indexOf(&widget) >= 0)
      return trouve;
  return nullptr;
}

}  // namespace

LigneFiltre* LigneFiltre::Au(TableListe& liste) {
  QWidget* parent = liste.parentWidget();
  QLayout* place = parent ? LayoutDe(parent->layout(), liste) : nullptr;
  if (!place) return nullptr;
  auto* ensemble = new QWidget(parent);
  ensemble->setSizePolicy(liste.sizePolicy());
  auto* pile = new QVBoxLayout(ensemble);
  pile->setContentsMargins(0, 0, 0, 0);
  pile->setSpacing(0);
  delete place->replaceWidget(&liste, ensemble, Qt::FindDirectChildrenOnly);
  auto* ligne = new LigneFiltre(liste, ensemble);
  pile->addWidget(ligne);
  pile->addWidget(&liste, 1);
  ensemble->show();
  liste.show();
  QWidget* avant = liste.previousInFocusChain();
  setTabOrder(avant, ligne->m_texte);
  setTabOrder(ligne->m_texte, &liste);
  return ligne;
}

LigneFiltre::LigneFiltre(TableListe& liste, QWidget* parent)
    : QWidget(parent), m_liste(liste), m_texte(new QLineEdit(this)), m_bilan(new QLabel(this)) {
  setObjectName(u"ligneFiltre"_s);
  m_texte->setObjectName(u"filtre"_s);
  m_texte->setAccessibleName(TexteQ(NomFiltre));
  m_texte->setPlaceholderText(TexteQ(IndiceFiltre));
  m_bilan->setObjectName(u"bilanFiltre"_s);
  // A narrow list cuts the figures, not the words.
  m_bilan->setMinimumWidth(1);
  m_texte->setMinimumWidth(caracteresVus * m_texte->fontMetrics().averageCharWidth());
  auto* ferme = new QToolButton(this);
  ferme->setObjectName(u"fermeFiltre"_s);
  ferme->setText(u"×"_s);
  ferme->setAutoRaise(true);
  ferme->setFocusPolicy(Qt::NoFocus);
  ferme->setToolTip(TexteQ(FermeFiltre));
  ferme->setAccessibleName(TexteQ(FermeFiltre));
  auto* rangee = new QHBoxLayout(this);
  rangee->setContentsMargins(marge, marge, marge, marge);
  rangee->addWidget(m_texte, 1);
  rangee->addWidget(m_bilan);
  rangee->addWidget(ferme);
  m_texte->installEventFilter(this);
  connect(ferme, &QToolButton::clicked, this, &LigneFiltre::Ferme);
  connect(m_texte, &QLineEdit::textChanged, this, [this](const QString& mots) { m_liste.PoseFiltre(mots); });
  const ModeleListe* modele = &m_liste.Modele();
  connect(modele, &QAbstractItemModel::modelReset, this, &LigneFiltre::Bilan);
  connect(modele, &QAbstractItemModel::rowsInserted, this, &LigneFiltre::Bilan);
  connect(modele, &QAbstractItemModel::rowsRemoved, this, &LigneFiltre::Bilan);
  connect(modele, &QAbstractItemModel::dataChanged, this, &LigneFiltre::Bilan);
  connect(&m_lecture, &QTimer::timeout, this, [this] {
    if (isHidden() || !m_liste.Modele().PrepareFiltre(rangeesParTour)) m_lecture.stop();
  });
}

void LigneFiltre::Ouvre() {
  show();
  m_texte->setFocus(Qt::ShortcutFocusReason);
  m_texte->selectAll();
  m_lecture.start();
  Bilan();
}

void LigneFiltre::Ferme() {
  const bool dedans = window()->focusWidget() == m_texte;
  m_texte->clear();
  hide();
  if (dedans) m_liste.setFocus();
}

void LigneFiltre::Bilan() {
  if (isHidden()) return;
  ModeleListe& modele = m_liste.Modele();
  QStringList parties{
      TexteQ(FormatFiltre, {std::to_string(modele.NbLignes()), std::to_string(modele.NbToutes())})};
  for (int i = 0; modele.EstFiltre() && i < modele.columnCount(); ++i) {
    const ModeleListe::Titre& titre = modele.Titres()[static_cast<std::size_t>(i)];
    const bool somme = (titre.cote & Qt::AlignRight) && !titre.texte.contains(u"Taux"_s);
    if (const QString total = somme ? modele.Total(i) : QString(); !total.isEmpty())
      parties += titre.texte + u" : "_s + total;
  }
  m_bilan->setText(parties.join(u"   "_s));
  m_bilan->setToolTip(parties.join(u'\n'));
}

bool LigneFiltre::eventFilter(QObject* objet, QEvent* evenement) {
  const bool frappe = evenement->type() == QEvent::KeyPress || evenement->type() == QEvent::ShortcutOverride;
  if (objet != m_texte || !frappe) return QWidget::eventFilter(objet, evenement);
  auto* touche = static_cast<QKeyEvent*>(evenement);
  switch (touche->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      break;
    default:
      return QWidget::eventFilter(objet, evenement);
  }
  evenement->accept();
  if (evenement->type() == QEvent::ShortcutOverride) return true;
  if (touche->key() == Qt::Key_Escape) {
    Ferme();
    return true;
  }
  m_liste.setFocus();
  const bool entree = touche->key() == Qt::Key_Return || touche->key() == Qt::Key_Enter;
  if (!entree) QCoreApplication::sendEvent(&m_liste, evenement);
  return true;
}

}  // namespace fenlor
