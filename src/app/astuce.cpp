#include "app/astuce.h"

#include <QCheckBox>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/textes.h"
#include "core/valeurs.h"
#include "session/textes.h"
#include "store/systeme.h"
#include "ui/images.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

int LitReglage(CFenlorApp& app, const TexteFixe& cle, int defaut) {
  std::string texte;
  const bool lu = app.Magasin.QVGetRegString("HKEY_CURRENT_USER", Texte(CleRegistreFenlor), Texte(SecAstuce),
                                             Texte(cle), texte);
  return lu && !EstVide(texte) ? TexteVersEntier(texte) : defaut;
}

void EcritReglage(CFenlorApp& app, const TexteFixe& cle, int valeur) {
  app.Magasin.QVSetRegString("HKEY_CURRENT_USER", Texte(CleRegistreFenlor), Texte(SecAstuce), Texte(cle),
                             std::to_string(valeur));
}

}  // namespace

QStringList LitAstuces(const std::string& dossier) {
  QFile fichier(QFile::decodeName(QByteArray::fromStdString(Joint(dossier, Texte(FichierAstuces)))));
  if (!fichier.open(QIODevice::ReadOnly)) return {};
  QStringList astuces;
  for (const QString& ligne : QString::fromUtf8(fichier.readAll()).split(u'\n'))
    if (const QString astuce = ligne.simplified(); !astuce.isEmpty()) astuces += astuce;
  return astuces;
}

CQVTipOfDay::CQVTipOfDay(ContexteUi& contexte, const QStringList& astuces, QWidget* parent)
    : CZNDialog(contexte, u"Astuce du jour"_s, "DialogAstuce", parent),
      m_astuces(astuces),
      m_place(LitReglage(App(), ClePosition, 0) % astuces.size()) {
  auto* lampe = new QLabel(this);
  lampe->setAlignment(Qt::AlignTop);
  const int cote = fontMetrics().height() * 2;
  const QIcon image = Image("astuce");
  if (!image.isNull()) lampe->setPixmap(image.pixmap(QSize(cote, cote), devicePixelRatioF()));
  m_numero = new QLabel(this);
  m_numero->setObjectName(u"numero"_s);
  m_texte = new QLabel(this);
  m_texte->setObjectName(u"texte"_s);
  m_texte->setTextFormat(Qt::PlainText);
  m_texte->setWordWrap(true);
  m_texte->setAlignment(Qt::AlignTop | Qt::AlignLeft);
  m_texte->setTextInteractionFlags(Qt::TextSelectableByMouse);
  m_texte->setFocusPolicy(Qt::NoFocus);
  QFont police = m_texte->font();
  police.setPointSizeF(police.pointSizeF() * 1.15);
  m_texte->setFont(police);
  const QFontMetrics mesure(police);
  const int largeur = mesure.averageCharWidth() * 55;
  int hauteur = 0;
  for (const QString& astuce : m_astuces)
    hauteur =
        qMax(hauteur, mesure.boundingRect(QRect(0, 0, largeur, 10000), Qt::TextWordWrap, astuce).height());
  m_texte->setMinimumSize(largeur, hauteur + mesure.leading());
  m_demarrage = new QCheckBox(u"&Afficher les astuces au démarrage"_s, this);
  m_demarrage->setObjectName(u"demarrage"_s);
  m_demarrage->setChecked(LitReglage(App(), CleDemarrage, 1) != 0);

  auto* droite = new QVBoxLayout;
  droite->addWidget(m_numero);
  droite->addSpacing(fontMetrics().height() / 2);
  droite->addWidget(m_texte, 1);
  auto* haut = new QHBoxLayout;
  haut->addWidget(lampe);
  haut->addSpacing(fontMetrics().height() / 2);
  haut->addLayout(droite, 1);
  auto* colonne = new QVBoxLayout(&Zone());
  colonne->addLayout(haut, 1);
  colonne->addSpacing(fontMetrics().height() / 2);
  colonne->addWidget(m_demarrage);

  Boutons(Mode::Consultation);
  m_demarrage->setEnabled(true);
  for (const auto& [texte, nom, pas] :
       {std::tuple{u"&Précédente"_s, "precedente", -1}, std::tuple{u"&Suivante"_s, "suivante", 1}}) {
    QPushButton& bouton = AjouteBouton(texte, nom);
    bouton.setEnabled(m_astuces.size() > 1);
    connect(&bouton, &QPushButton::clicked, this, [this, pas = pas] {
      m_place = (m_place + pas + m_astuces.size()) % m_astuces.size();
      Montre();
    });
  }
  Montre();
}

void CQVTipOfDay::Montre() {
  m_numero->setText(TexteQ(FormatAstuce, {std::to_string(m_place + 1), std::to_string(m_astuces.size())}));
  m_texte->setText(m_astuces.at(m_place));
  m_texte->setAccessibleName(m_texte->text());
}

void CQVTipOfDay::done(int resultat) {
  EcritReglage(App(), ClePosition, static_cast<int>(m_place) + 1);
  EcritReglage(App(), CleDemarrage, m_demarrage->isChecked() ? 1 : 0);
  CZNDialog::done(resultat);
}

void MontreAstuce(ContexteUi& contexte, QWidget* parent) {
  const QStringList astuces = LitAstuces(contexte.App.PathProgrammes);
  if (astuces.isEmpty()) return;
  CQVTipOfDay fenetre(contexte, astuces, parent);
  fenetre.exec();
}

void AstuceDemarrage(ContexteUi& contexte, QWidget* parent) {
  if (LitReglage(contexte.App, CleDemarrage, 1) != 0) MontreAstuce(contexte, parent);
}

}  // namespace fenlor
