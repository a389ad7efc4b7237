#include "ui/pageprefpolices.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <climits>
#include <cstdlib>

#include "core/cles.h"
#include "core/textes.h"
#include "ui/facesfixes.h"
#include "ui/texteqt.h"
#include "ui/textes.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int tailleBlanche = 10;  ///< points the dialog starts from when the setting has no size

struct Reglage {
  TexteFixe cle;
  const char16_t* libelle;
  const char* nom;
};
constexpr std::array<Reglage, CPagePrefPolices::NbPolices> reglages = {{
    {ClePoliceListes, u"Police des &listes :", "listes"},
    {ClePoliceJournaux, u"Police des &journaux :", "journaux"},
    {ClePoliceValidees, u"Police des écritures &validées :", "validees"},
    {ClePoliceSaisies, u"Police des &saisies :", "saisies"},
    {ClePoliceImpressions, u"Police des &impressions :", "impressions"},
}};

bool DesJournaux(unsigned cle) { return cle == ClePoliceJournaux || cle == ClePoliceValidees; }

/// The style of a face that comes nearest to what a setting can say. The font dialog would take the
/// first one, an oblique at times, where the upright style is not called "Normal".
QString StyleProche(const QFont& police) {
  QString proche;
  int moindre = INT_MAX;
  for (const QString& style : QFontDatabase::styles(police.family())) {
    const auto dit = [&](const QString& mot) { return style.contains(mot, Qt::CaseInsensitive); };
    const bool penche = dit(u"Italic"_s) || dit(u"Oblique"_s);
    const int ecart = 4 * std::abs(QFontDatabase::weight(police.family(), style) - police.weight()) +
                      (penche != police.italic() ? 1000 : 0) +
                      (dit(u"Condensed"_s) || dit(u"Expanded"_s) ? 1 : 0);
    if (ecart >= moindre) continue;
    moindre = ecart;
    proche = style;
  }
  return proche;
}

/// What the font dialog opens on.
QFont Depart(const std::string& texte) {
  Police police = LitPolice(texte, false);
  if (EstVide(PolicePartie(texte, 0))) police.face = Texte(PoliceSysteme);
  if (TexteVersEntier(PolicePartie(texte, 1)) == 0) police.taille = tailleBlanche;
  QFont depart = FaitPolice(police);
  depart.setFamily(QFontInfo(depart).family());
  if (const QString style = StyleProche(depart); !style.isEmpty()) depart.setStyleName(style);
  return depart;
}

}  // namespace

CPagePrefPolices::CPagePrefPolices(ContexteUi& contexte)
    : CZNPage(contexte, u"Polices"_s, "PagePrefPolices") {
  auto* groupe = new QGroupBox(u"Polices"_s, this);
  auto* grille = new QGridLayout(groupe);
  grille->setColumnStretch(2, 1);
  Formulaire f{*this};
  f.Case(m_defaut, u"Polices par défaut"_s, "policeDefaut").Seul(*groupe, "polices").Pousse();

  for (std::size_t i = 0; i < NbPolices; ++i) {
    const QString nom = QString::fromLatin1(reglages[i].nom);
    const int rang = static_cast<int>(i);
    Ligne& ligne = m_lignes[i];
    auto* libelle = new QLabel(QString::fromUtf16(reglages[i].libelle), groupe);
    ligne.exemple = new QLabel(TexteQ(ExemplePolice), groupe);
    ligne.exemple->setObjectName(nom + u"Exemple"_s);
    ligne.exemple->setFrameStyle(QFrame::StyledPanel);
    ligne.exemple->setAutoFillBackground(true);
    ligne.exemple->setMargin(2);
    ligne.exemple->setFixedSize(fontMetrics().averageCharWidth() * 22, fontMetrics().lineSpacing() * 2);
    ligne.description = new QLabel(groupe);
    ligne.description->setObjectName(nom + u"Description"_s);
    ligne.description->setWordWrap(true);
    ligne.description->setMinimumWidth(fontMetrics().averageCharWidth() * 26);
    ligne.couleur = nullptr;
    if (reglages[i].cle != ClePoliceImpressions) {
      ligne.couleur = new BoutonCouleur(BoutonCouleur::Palette::Textes, groupe);
      ligne.couleur->setObjectName(nom + u"Couleur"_s);
      grille->addWidget(ligne.couleur, rang, 3);
      connect(ligne.couleur, &BoutonCouleur::Change, this, [this, i] { Colore(i); });
    }
    ligne.modifie = new QPushButton(u"Modifier..."_s, groupe);
    ligne.modifie->setObjectName(nom + u"Modifier"_s);
    ligne.modifie->setAutoDefault(false);
    libelle->setBuddy(ligne.modifie);
    const QString lu = QString::fromUtf16(reglages[i].libelle).remove(u'&').remove(u" :"_s);
    ligne.modifie->setAccessibleName(lu);
    if (ligne.couleur) ligne.couleur->setAccessibleName(lu + u", couleur du texte"_s);
    connect(ligne.modifie, &QPushButton::clicked, this, [this, i] { Modifie(i); });
    grille->addWidget(libelle, rang, 0);
    grille->addWidget(ligne.exemple, rang, 1);
    grille->addWidget(ligne.description, rang, 2);
    grille->addWidget(ligne.modifie, rang, 4);
  }
  connect(&m_defaut, &QCheckBox::toggled, groupe, &QWidget::setDisabled);
}

bool CPagePrefPolices::Charge() {
  m_defaut.setChecked(
      Parametres::IsOui(App().Reglages.LitIni(Texte(SecPreferences), Texte(ClePoliceDefaut))));
  for (std::size_t i = 0; i < NbPolices; ++i) Montre(i);
  return true;
}

void CPagePrefPolices::Montre(std::size_t rang) {
  const Ligne& ligne = m_lignes[rang];
  const std::string texte = PoliceReglee(App(), reglages[rang].cle);
  const Police police = LitPolice(texte, false);
  const QColor couleur =
      police.couleur ? LitCouleur(std::to_string(*police.couleur)) : palette().color(QPalette::Text);
  const QColor fond =
      DesJournaux(reglages[rang].cle) ? Contexte().Dessin.CouleurImpaire : palette().color(QPalette::Base);
  QFont fonte = FaitPolice(police);
  if (reglages[rang].cle == ClePoliceImpressions) fonte.setFamily(FaceImprimee(Q(police.face)));
  ligne.exemple->setFont(fonte);
  QPalette couleurs = palette();
  couleurs.setColor(QPalette::Window, fond);
  couleurs.setColor(QPalette::WindowText, Lisible(couleur, fond));
  ligne.exemple->setPalette(couleurs);
  ligne.description->setText(DecritPolice(police));
  if (ligne.couleur) ligne.couleur->Pose(couleur);
}

void CPagePrefPolices::Modifie(std::size_t rang) {
  const std::string texte = PoliceReglee(App(), reglages[rang].cle);
  QFontDialog dialogue(Depart(texte), this);
  dialogue.setObjectName(u"DialogPolice"_s);
  if (dialogue.exec() != QDialog::Accepted) return;
  const Police ancienne = LitPolice(texte, false);
  const QColor couleur = ancienne.couleur ? LitCouleur(std::to_string(*ancienne.couleur)) : QColor();
  Range(rang, EcritPolice(dialogue.selectedFont(), couleur, reglages[rang].cle == ClePoliceImpressions));
}

void CPagePrefPolices::Colore(std::size_t rang) {
  Police police = LitPolice(PoliceReglee(App(), reglages[rang].cle), false);
  police.couleur = TexteVersLong(EcritCouleur(m_lignes[rang].couleur->Couleur()));
  Range(rang, EcritPolice(police));
}

void CPagePrefPolices::Range(std::size_t rang, const std::string& texte) {
  const Reglage& reglage = reglages[rang];
  if (App().Reglages.EcritIni(Texte(SecPreferences), Texte(reglage.cle), texte)) {
    ChargePreferences(Contexte().Dessin, App(), QApplication::palette());
    Contexte().Cadre.Note(ReglagePreferences);
  } else {
    DitEchecReglages(App());
  }
  Montre(rang);
}

bool CPagePrefPolices::Enregistre() {
  return App().Reglages.EcritIni(Texte(SecPreferences), Texte(ClePoliceDefaut),
                                 Texte(m_defaut.isChecked() ? MotOui : MotNon)) ||
         DitEchecReglages(App());
}

}  // namespace fenlor
