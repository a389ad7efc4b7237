#include "ui/formulaire.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QStyle>
#include <algorithm>

#include "core/fiche.h"
#include "ui/editeurs.h"

namespace fenlor {

namespace {

constexpr int largeurMax = 40;  ///< characters, however much the field holds

/// Keeps a field as wide as so many characters of its font, whatever the font becomes.
class LargeurSuivie : public QObject {
 public:
  LargeurSuivie(QWidget& champ, int caracteres) : QObject(&champ), m_champ(champ), m_caracteres(caracteres) {
    champ.installEventFilter(this);
    Ajuste();
  }
  void Pose(int caracteres) {
    m_caracteres = caracteres;
    Ajuste();
  }

 protected:
  bool eventFilter(QObject*, QEvent* evenement) override {
    if (evenement->type() == QEvent::FontChange || evenement->type() == QEvent::StyleChange) Ajuste();
    return false;
  }

 private:
  void Ajuste() {
    const QFontMetrics mesure(m_champ.font());
    const int caractere = std::max(mesure.averageCharWidth(), mesure.horizontalAdvance(u'0'));
    int cadre = 0;
    if (qobject_cast<QLabel*>(&m_champ)) {
      m_champ.setMinimumWidth(m_caracteres * caractere);
      return;
    }
    if (qobject_cast<QLineEdit*>(&m_champ)) {
      cadre = m_champ.sizeHint().width() - 17 * mesure.horizontalAdvance(u'x');
      // A picture at the end, as that of a date, stands beside the text.
      for (const QAction* image : m_champ.actions())
        if (!image->icon().isNull()) cadre += m_champ.style()->pixelMetric(QStyle::PM_SmallIconSize) * 3 / 2;
    } else if (auto* zone = qobject_cast<QPlainTextEdit*>(&m_champ)) {
      cadre = 2 * (zone->frameWidth() + static_cast<int>(zone->document()->documentMargin())) +
              zone->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    } else {
      cadre = 2 * mesure.height();  // arrow and frame
    }
    m_champ.setFixedWidth(m_caracteres * caractere + cadre);
    m_champ.setSizePolicy(QSizePolicy::Fixed, m_champ.sizePolicy().verticalPolicy());
  }
  QWidget& m_champ;
  int m_caracteres;
};

/// "&Prénom :" is "Prénom".
QString NomAccessible(QString libelle) {
  libelle.remove(u'&');
  libelle = libelle.trimmed();
  while (libelle.endsWith(u':') || libelle.endsWith(u' ')) libelle.chop(1);
  return libelle;
}

/// Nothing is computed from an amount that cannot be read: the form refuses it.
std::function<void()> SiLisible(QWidget* champ, std::function<void()> action) {
  const auto* montant = qobject_cast<EditeurMontant*>(champ);
  if (!montant) return action;
  return [montant, action = std::move(action)] {
    if (montant->Refus() == 0) action();
  };
}

bool Cancelle(const QWidget& champ) { return champ.objectName() == QLatin1String("annuler"); }

}  // namespace

Formulaire::Formulaire(QWidget& zone, const TableFiche* table)
    : m_zone(zone), m_table(table), m_colonne(new QVBoxLayout(&zone)) {}

Formulaire& Formulaire::Groupe(const QString& titre, const char* nom) {
  FinGroupe();
  auto* cadre = new QGroupBox(titre, &m_zone);
  if (nom) cadre->setObjectName(QString::fromUtf8(nom));
  m_groupe = new QVBoxLayout(cadre);
  m_colonne->addWidget(cadre);
  return *this;
}

Formulaire& Formulaire::FinGroupe() {
  m_groupe = nullptr;
  m_grille = nullptr;
  m_rangee = nullptr;
  m_dernier = nullptr;
  return *this;
}

QBoxLayout* Formulaire::Pile() { return m_groupe ? m_groupe : m_colonne; }

QGridLayout* Formulaire::Grille() {
  if (!m_grille) {
    m_grille = new QGridLayout;
    m_ligne = -1;
    Pile()->addLayout(m_grille);
  }
  return m_grille;
}

/// Names the widget and makes it the last one of the form.
void Formulaire::Place(QWidget& widget, const char* nom, const QString& libelle) {
  if (nom) widget.setObjectName(QString::fromUtf8(nom));
  const QString accessible = NomAccessible(libelle);
  // A shown value is its own name to a reader; its label is told by the buddy.
  if (!accessible.isEmpty() && widget.accessibleName().isEmpty() && !qobject_cast<QLabel*>(&widget))
    widget.setAccessibleName(accessible);
  m_dernier = &widget;
  if (m_table && nom) Applique(nom);
}

/// What the table of the record says of the field.
void Formulaire::Applique(const char* nom) {
  const ChampFiche* champ = m_table->Trouve(nom);
  if (!champ) return;
  if (auto* texte = qobject_cast<EditeurTexte*>(m_dernier))
    texte->PoseMajuscules(champ->genre == GenreChamp::Code || champ->genre == GenreChamp::Compte);
  if (auto* montant = qobject_cast<EditeurMontant*>(m_dernier))
    montant->PoseNegatif(champ->genre == GenreChamp::MontantSigne);
  const unsigned limite = m_table->Limite(*champ);
  if (limite > 0 && !qobject_cast<QComboBox*>(m_dernier)) Limite(static_cast<int>(limite));
}

/// A cell for fields side by side. The empty end takes what they leave.
QBoxLayout* Formulaire::Rangement() {
  auto* rangee = new QHBoxLayout;
  rangee->addItem(new QSpacerItem(0, 0, QSizePolicy::Expanding, QSizePolicy::Minimum));
  return rangee;
}

/// Into the open row, after the fields that are there. One that can
/// grow does so before the empty end.
void Formulaire::Range(QWidget& widget) {
  const bool large = widget.sizePolicy().horizontalPolicy() & QSizePolicy::ExpandFlag;
  // The empty end is an item without a widget: a null one would be found there.
  const int place = m_dernier ? m_rangee->indexOf(m_dernier) + 1 : 0;
  m_rangee->insertWidget(place, &widget, large ? 1 : 0);
}

void Formulaire::PlaceChamp(const QString& libelle, QWidget& editeur, const char* nom, int colonne) {
  auto* texte = new QLabel(libelle);
  texte->setBuddy(&editeur);
  QGridLayout* grille = Grille();
  const bool haut = qobject_cast<QPlainTextEdit*>(&editeur) ||
                    editeur.sizePolicy().verticalPolicy() & QSizePolicy::ExpandFlag;
  grille->addWidget(texte, m_ligne, colonne, haut ? Qt::AlignTop : Qt::AlignVCenter);
  m_rangee = Rangement();
  // The last field of a row has the rest of it.
  grille->addLayout(m_rangee, m_ligne, colonne + 1, 1, -1);
  Range(editeur);
  for (int i = 0; i < grille->columnCount(); ++i) grille->setColumnStretch(i, i == grille->columnCount() - 1);
  Place(editeur, nom, libelle);
}

Formulaire& Formulaire::Champ(const QString& libelle, QWidget& editeur, const char* nom) {
  Grille();
  ++m_ligne;
  m_colonneGrille = 0;
  PlaceChamp(libelle, editeur, nom, 0);
  return *this;
}

Formulaire& Formulaire::Suite(const QString& libelle, QWidget& editeur, const char* nom) {
  if (!m_grille || !m_rangee) return Champ(libelle, editeur, nom);
  if (m_colonneGrille < 0) {  // beside a check box: in its cell
    auto* texte = new QLabel(libelle);
    texte->setBuddy(&editeur);
    ACote(*texte).ACote(editeur, nom);
    Place(editeur, nom, libelle);
    return *this;
  }
  m_grille->removeItem(m_rangee);
  m_grille->addLayout(m_rangee, m_ligne, m_colonneGrille + 1);
  m_colonneGrille += 2;
  PlaceChamp(libelle, editeur, nom, m_colonneGrille);
  return *this;
}

Formulaire& Formulaire::Seul(QWidget& widget, const char* nom, bool etire) {
  m_grille = nullptr;
  m_rangee = new QHBoxLayout;
  m_rangee->addWidget(&widget);
  if (qobject_cast<QAbstractButton*>(&widget)) m_rangee->addStretch(1);
  Pile()->addLayout(m_rangee, etire ? 1 : 0);
  if (etire) {
    widget.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    if (m_groupe) m_colonne->setStretch(m_colonne->count() - 1, 1);
  }
  auto* cadre = qobject_cast<QGroupBox*>(widget.parentWidget());
  Place(widget, nom,
        cadre && m_groupe && !qobject_cast<QAbstractButton*>(&widget) ? cadre->title() : QString());
  return *this;
}

Formulaire& Formulaire::Case(QAbstractButton& bouton, const QString& texte, const char* nom) {
  bouton.setText(texte);
  Grille();
  ++m_ligne;
  m_colonneGrille = -1;
  m_rangee = Rangement();
  m_grille->addLayout(m_rangee, m_ligne, 0, 1, -1);
  Range(bouton);
  Place(bouton, nom, {});
  return *this;
}

Formulaire& Formulaire::ACote(QWidget& widget, const char* nom) {
  if (!m_rangee) return Seul(widget, nom);
  Range(widget);
  Place(widget, nom, {});
  return *this;
}

Formulaire& Formulaire::Texte(const QString& texte) {
  m_grille = nullptr;
  auto* paragraphe = new QLabel(texte);
  paragraphe->setWordWrap(true);
  Pile()->addWidget(paragraphe);
  m_rangee = nullptr;
  m_dernier = paragraphe;
  return *this;
}

Formulaire& Formulaire::Rangee(std::initializer_list<QWidget*> boutons) {
  m_grille = nullptr;
  m_rangee = new QHBoxLayout;
  Pile()->addLayout(m_rangee);
  for (QWidget* bouton : boutons) {
    m_rangee->addWidget(bouton);
    m_dernier = bouton;
  }
  m_rangee->addStretch(1);
  return *this;
}

Formulaire& Formulaire::Pousse() {
  m_grille = nullptr;
  Pile()->addStretch(1);
  return *this;
}

Formulaire& Formulaire::Limite(int caracteres) {
  // A pasted amount may be longer than the value that it stands for.
  if (auto* montant = qobject_cast<EditeurMontant*>(m_dernier))
    montant->PoseLimite(caracteres);
  else if (auto* ligne = qobject_cast<QLineEdit*>(m_dernier))
    ligne->setMaxLength(caracteres);
  if (auto* lignes = qobject_cast<EditeurTexteLong*>(m_dernier)) lignes->PoseLimite(caracteres);
  return Largeur(std::min(caracteres, largeurMax));
}

Formulaire& Formulaire::Largeur(int caracteres) {
  if (!m_dernier) return *this;
  for (QObject* enfant : m_dernier->children()) {
    if (auto* suivie = dynamic_cast<LargeurSuivie*>(enfant)) {
      suivie->Pose(caracteres);
      return *this;
    }
  }
  new LargeurSuivie(*m_dernier, caracteres);
  // Only a spacer that expands takes what a row of fixed fields leaves.
  if (QLayoutItem* fin = m_rangee ? m_rangee->itemAt(m_rangee->count() - 1) : nullptr;
      fin && fin->spacerItem()) {
    fin->spacerItem()->changeSize(0, 0, QSizePolicy::Expanding, QSizePolicy::Minimum);
    m_rangee->invalidate();
  }
  return *this;
}

Formulaire& Formulaire::SurChangement(std::function<void()> action) {
  action = SiLisible(m_dernier, std::move(action));
  if (auto* ligne = qobject_cast<QLineEdit*>(m_dernier))
    QObject::connect(ligne, &QLineEdit::textEdited, ligne, [action] { action(); });
  else if (auto* lignes = qobject_cast<QPlainTextEdit*>(m_dernier))
    QObject::connect(lignes, &QPlainTextEdit::textChanged, lignes, action);
  else if (auto* choix = qobject_cast<QComboBox*>(m_dernier))
    QObject::connect(choix, &QComboBox::activated, choix, [action] { action(); });
  else if (auto* nombre = qobject_cast<QSpinBox*>(m_dernier))
    QObject::connect(nombre, &QSpinBox::valueChanged, nombre, [action] { action(); });
  else if (auto* bouton = qobject_cast<QAbstractButton*>(m_dernier))
    QObject::connect(bouton, &QAbstractButton::clicked, bouton, [action] { action(); });
  return *this;
}

Formulaire& Formulaire::SurDepart(std::function<void()> action) {
  QWidget* champ = m_dernier;
  if (!champ) return *this;
  action = SiLisible(champ, std::move(action));
  const auto dans = [](const QWidget* ancetre, const QWidget* widget) {
    return widget && (widget == ancetre || ancetre->isAncestorOf(widget));
  };
  QObject::connect(qApp, &QApplication::focusChanged, champ,
                   [champ, dans, action](QWidget* de, QWidget* vers) {
                     if (!dans(champ, de) || !vers || dans(champ, vers) ||
                         vers->window() != champ->window() || Cancelle(*vers))
                       return;
                     // During a click a box would swallow the release of the button.
                     if (QApplication::mouseButtons() == Qt::NoButton)
                       action();
                     else
                       QMetaObject::invokeMethod(champ, action, Qt::QueuedConnection);
                   });
  return *this;
}

Formulaire& Formulaire::Inactif() {
  if (m_dernier) m_dernier->setEnabled(false);
  return *this;
}

Formulaire& Formulaire::Astuce(const QString& texte) {
  if (m_dernier) m_dernier->setToolTip(texte);
  return *this;
}

QWidget* ColonneDeChamps(QWidget& zone, const std::function<void(Formulaire&)>& declare) {
  auto* colonne = new QWidget(&zone);
  Formulaire formulaire{*colonne};
  colonne->layout()->setContentsMargins(0, 0, 0, 0);
  declare(formulaire);
  return colonne;
}

}  // namespace fenlor
