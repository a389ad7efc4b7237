#include "app/personnaliser.h"

#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int roleNumero = Qt::UserRole;

QPushButton* FaitBouton(const QString& texte, const char* nom, QBoxLayout& colonne) {
  auto* bouton = new QPushButton(texte);
  bouton->setObjectName(QString::fromLatin1(nom));
  bouton->setAutoDefault(false);
  colonne.addWidget(bouton);
  return bouton;
}

QLabel* FaitLibelle(const QString& texte, QWidget* champ, QBoxLayout& colonne) {
  auto* libelle = new QLabel(texte);
  libelle->setBuddy(champ);
  colonne.addWidget(libelle);
  return libelle;
}

}  // namespace

CDialogPersonnaliser::CDialogPersonnaliser(ContexteUi& contexte, const ContenuBarre& contenu,
                                           FournitAction action, QWidget* parent)
    : CZNDialog(contexte, u"Personnaliser la barre d'icônes"_s, "DialogPersonnaliser", parent),
      m_action(std::move(action)) {
  m_disponibles =
      new CListeCommandes([this](const Commande& c) { return m_action(c.numero) != nullptr; }, false);
  m_disponibles->setObjectName(u"disponibles"_s);
  m_contenu = new QListWidget;
  m_contenu->setObjectName(u"contenu"_s);
  m_contenu->setAccessibleName(u"Contenu de la barre"_s);
  m_contenu->setDragDropMode(QAbstractItemView::InternalMove);
  m_contenu->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_contenu->setMinimumWidth(m_disponibles->Table().minimumWidth());
  m_contenu->setIconSize(m_disponibles->Table().iconSize());

  auto* gauche = new QVBoxLayout;
  FaitLibelle(u"&Commandes :"_s, m_disponibles, *gauche);
  gauche->addWidget(m_disponibles, 1);
  auto* milieu = new QVBoxLayout;
  milieu->addStretch();
  m_ajouter = FaitBouton(u"&Ajouter"_s, "ajouter", *milieu);
  m_retirer = FaitBouton(u"&Retirer"_s, "retirer", *milieu);
  milieu->addSpacing(milieu->spacing() + fontMetrics().height());
  m_monter = FaitBouton(u"&Monter"_s, "monter", *milieu);
  m_descendre = FaitBouton(u"&Descendre"_s, "descendre", *milieu);
  auto* separateur = FaitBouton(u"&Séparateur"_s, "separateur", *milieu);
  milieu->addStretch();
  auto* defaut = FaitBouton(u"&Par défaut"_s, "defaut", *milieu);
  m_ajouter->setToolTip(u"Ins"_s);
  m_retirer->setToolTip(u"Suppr"_s);
  m_monter->setToolTip(u"Alt+Haut"_s);
  m_descendre->setToolTip(u"Alt+Bas"_s);

  m_taille = new EditeurChoix;
  m_taille->setObjectName(u"taille"_s);
  m_taille->setAccessibleName(u"Taille des images"_s);
  for (std::size_t i = 0; i < taillesIcones.size(); ++i)
    m_taille->Ajoute(De1252(QString::fromUtf8(nomsTailles[i]).remove(u'&')),
                     std::to_string(taillesIcones[i]));
  m_textes = new EditeurChoix;
  m_textes->setObjectName(u"textes"_s);
  m_textes->setAccessibleName(u"Place des textes"_s);
  for (const NomTextes& nom : nomsTextes)
    m_textes->Ajoute(De1252(QString::fromUtf8(nom.texte).remove(u'&')), std::to_string(nom.style));
  auto* droite = new QVBoxLayout;
  FaitLibelle(u"&Barre :"_s, m_contenu, *droite);
  droite->addWidget(m_contenu, 1);
  auto* aspect = new QFormLayout;
  aspect->addRow(u"&Images :"_s, m_taille);
  aspect->addRow(u"&Textes :"_s, m_textes);
  droite->addLayout(aspect);

  auto* rangee = new QHBoxLayout(&Zone());
  rangee->addLayout(gauche, 1);
  rangee->addLayout(milieu);
  rangee->addLayout(droite, 1);

  Relie(*separateur, *defaut);
  Remplit(contenu);
  Boutons(Mode::Simple);
}

void CDialogPersonnaliser::Relie(const QPushButton& separateur, const QPushButton& defaut) {
  connect(m_ajouter, &QPushButton::clicked, this, &CDialogPersonnaliser::Ajoute);
  connect(m_retirer, &QPushButton::clicked, this, &CDialogPersonnaliser::Retire);
  connect(m_monter, &QPushButton::clicked, this, [this] { Deplace(-1); });
  connect(m_descendre, &QPushButton::clicked, this, [this] { Deplace(1); });
  connect(&separateur, &QPushButton::clicked, this, [this] { Insere(0); });
  connect(&defaut, &QPushButton::clicked, this, [this] { Remplit(ContenuParDefaut()); });
  connect(m_disponibles, &CListeCommandes::Activee, this, &CDialogPersonnaliser::Ajoute);
  connect(m_disponibles, &CListeCommandes::ChoixChange, this, &CDialogPersonnaliser::ActualiseBoutons);
  connect(m_contenu, &QListWidget::currentRowChanged, this, &CDialogPersonnaliser::ActualiseBoutons);
  const auto touche = [](const QKeySequence& sequence, QWidget* sur, auto geste) {
    connect(new QShortcut(sequence, sur, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, sur, geste);
  };
  touche(Qt::Key_Insert, m_disponibles, [this] { Ajoute(); });
  touche(Qt::Key_Delete, m_contenu, [this] { Retire(); });
  touche(Qt::ALT | Qt::Key_Up, m_contenu, [this] { Deplace(-1); });
  touche(Qt::ALT | Qt::Key_Down, m_contenu, [this] { Deplace(1); });
}

void CDialogPersonnaliser::Remplit(const ContenuBarre& contenu) {
  m_contenu->clear();
  for (const unsigned numero : contenu.Commandes) {
    m_contenu->setCurrentRow(m_contenu->count() - 1);
    Insere(numero);
  }
  m_contenu->setCurrentRow(Voisine(-1, 1));
  m_taille->Choisit(std::to_string(contenu.Taille));
  m_textes->Choisit(std::to_string(contenu.Textes));
  ActualiseBoutons();
}

void CDialogPersonnaliser::Insere(unsigned numero) {
  const Commande* commande = numero ? TrouveCommande(numero) : nullptr;
  auto* ligne = new QListWidgetItem;
  ligne->setData(roleNumero, numero);
  ligne->setFlags(ligne->flags() & ~Qt::ItemIsDropEnabled);
  if (commande) {
    ligne->setText(NomCommande(*commande));
    ligne->setIcon(ImageDeLigne(commande->image, *m_contenu, m_contenu->iconSize().width()));
  } else {
    ligne->setText(u"――――――――"_s);
    ligne->setData(Qt::AccessibleTextRole, u"Séparateur"_s);
  }
  const int place = m_contenu->currentRow() + 1;
  m_contenu->insertItem(place, ligne);
  ligne->setHidden(numero && !m_action(numero));
  m_contenu->setCurrentRow(place);
  ActualiseBoutons();
}

ContenuBarre CDialogPersonnaliser::Contenu() const {
  ContenuBarre contenu;
  for (int i = 0; i < m_contenu->count(); ++i)
    contenu.Commandes.push_back(m_contenu->item(i)->data(roleNumero).toUInt());
  contenu.Taille = std::stoi(m_taille->Valeur());
  contenu.Textes = static_cast<Qt::ToolButtonStyle>(std::stoi(m_textes->Valeur()));
  return contenu;
}

int CDialogPersonnaliser::LigneDe(unsigned numero) const {
  for (int i = 0; i < m_contenu->count(); ++i)
    if (m_contenu->item(i)->data(roleNumero).toUInt() == numero) return i;
  return -1;
}

int CDialogPersonnaliser::Voisine(int ligne, int pas) const {
  do {
    ligne += pas;
  } while (ligne >= 0 && ligne < m_contenu->count() && m_contenu->item(ligne)->isHidden());
  return ligne < m_contenu->count() ? ligne : -1;
}

void CDialogPersonnaliser::Ajoute() {
  const unsigned numero = m_disponibles->Choisie();
  if (!numero) return;
  if (const int ligne = LigneDe(numero); ligne >= 0)
    m_contenu->setCurrentRow(ligne);
  else
    Insere(numero);
}

void CDialogPersonnaliser::Retire() {
  const int ligne = m_contenu->currentRow();
  if (ligne < 0) return;
  const int suivante = Voisine(ligne, 1), choisie = suivante >= 0 ? suivante : Voisine(ligne, -1);
  QListWidgetItem* const reste = choisie >= 0 ? m_contenu->item(choisie) : nullptr;
  delete m_contenu->takeItem(ligne);
  m_contenu->setCurrentItem(reste);
  ActualiseBoutons();
}

void CDialogPersonnaliser::Deplace(int pas) {
  const int ligne = m_contenu->currentRow();
  const int vers = ligne < 0 ? -1 : Voisine(ligne, pas);
  if (vers < 0) return;
  QListWidgetItem* item = m_contenu->takeItem(ligne);
  m_contenu->insertItem(vers, item);
  m_contenu->setCurrentRow(vers);
  ActualiseBoutons();
}

void CDialogPersonnaliser::ActualiseBoutons() {
  const int ligne = m_contenu->currentRow();
  const unsigned numero = m_disponibles->Choisie();
  m_ajouter->setEnabled(numero && LigneDe(numero) < 0);
  m_retirer->setEnabled(ligne >= 0);
  m_monter->setEnabled(ligne >= 0 && Voisine(ligne, -1) >= 0);
  m_descendre->setEnabled(ligne >= 0 && Voisine(ligne, 1) >= 0);
}

}  // namespace fenlor
