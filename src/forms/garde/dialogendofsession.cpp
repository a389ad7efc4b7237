#include "forms/garde/dialogendofsession.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "forms/garde/qvbwizard.h"
#include "garde/textes.h"
#include "ui/images.h"
#include "ui/texteqt.h"
#include "ui/voyant.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int LignesImage = 4;  ///< height of the picture
constexpr int Caracteres = 66;  ///< width of the texts

QLabel* Paragraphe(const QString& texte) {
  auto* label = new QLabel(texte);
  label->setWordWrap(true);
  return label;
}

QFont Gras(QFont police) {
  police.setBold(true);
  return police;
}

}  // namespace

CDialogEndOfSession::CDialogEndOfSession(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"Fenlor : Fin de session"_s, "DialogEndOfSession", parent) {
  const BilanSession bilan = LitBilanSession(App());
  auto* image = new QLabel;
  const int cote = LignesImage * fontMetrics().height();
  image->setPixmap(Image("sauvegarder").pixmap(QSize(cote, cote), devicePixelRatioF()));
  auto* fin = Paragraphe(u"Cette session de Comptabilité va se terminer."_s);
  fin->setFont(Gras(fin->font()));
  auto* tete = new QWidget;
  auto* rangee = new QHBoxLayout(tete);
  rangee->setContentsMargins(0, 0, 0, 0);
  rangee->addWidget(image, 0, Qt::AlignTop);
  rangee->addWidget(
      ColonneDeChamps(
          *tete,
          [&](Formulaire& f) {
            f.Seul(*fin, "fin")
                .Texte(
                    u"Cliquez sur TERMINER pour quitter la Comptabilité\nCliquez sur ANNULER pour ne "
                    u"pas quitter."_s);
          }),
      1);

  tete->setMinimumWidth(
      std::min(Caracteres * fontMetrics().averageCharWidth(), screen()->availableSize().width() - 4 * cote));
  Formulaire f{Zone()};
  f.Seul(*tete, nullptr);
  Ligne(f, "lampeSauvegarde", bilan.lampeSauvegarde, "sauvegarde",
        TexteQ(TexteJoursSauvegarde, {std::to_string(bilan.joursSauvegarde)}));
  if (!bilan.verifiee.empty()) f.Seul(*Paragraphe(Q(bilan.verifiee)), "verifiee");
  auto* sauvegarder = new QPushButton(u"Sauvegarder maintenant..."_s);
  sauvegarder->setObjectName(u"sauvegarder"_s);
  f.Texte(
       u"Pensez à faire régulièrement des sauvegardes de vos fichiers. Si vous désirez le faire maintenant, "
       u"cliquez sur le bouton \"Sauvegarder maintenant\""_s)
      .Rangee({sauvegarder});
  connect(sauvegarder, &QPushButton::clicked, this, [this] {
    m_fin = Sauvegarder;
    accept();
  });
  // Updates start from the menu: the button is as idle as it always was.
  auto* miseAJour = new QPushButton(u"Mettre à jour maintenant..."_s);
  miseAJour->setObjectName(u"mettreAJour"_s);
  miseAJour->setEnabled(bilan.miseAJour);
  if (bilan.miseAJour)
    Ligne(f, "lampeMiseAJour", bilan.lampeMiseAJour, "miseAJour",
          TexteQ(TexteJoursMiseAJour, {std::to_string(bilan.joursMiseAJour)}));
  f.Rangee({miseAJour}).Case(m_afficher, u"&Afficher cet écran en fin de session "_s, "afficher").Pousse();
  m_afficher.setChecked(App().Reglages.IsFinDeSession());

  // Enter ends the session wherever the focus stands.
  for (QPushButton* bouton : {sauvegarder, miseAJour}) bouton->setAutoDefault(false);
  Boutons(Mode::Simple);
  findChild<QPushButton*>(u"ok"_s)->setText(u"&Terminer"_s);
  findChild<QPushButton*>(u"annuler"_s)->setText(u"Annuler"_s);
  AjouteAide();
}

void CDialogEndOfSession::Ligne(Formulaire& formulaire, const char* voyant, EtatLampe etat, const char* texte,
                                const QString& phrase) {
  auto* rangee = new QWidget;
  auto* place = new QHBoxLayout(rangee);
  place->setContentsMargins(0, 0, 0, 0);
  auto* lampe = new Voyant;
  lampe->setObjectName(QString::fromUtf8(voyant));
  lampe->Pose(etat == EtatLampe::Alarme    ? Voyant::Etat::Alarme
              : etat == EtatLampe::Allumee ? Voyant::Etat::Allume
                                           : Voyant::Etat::Eteint);
  auto* age = new QLabel(phrase);
  age->setObjectName(QString::fromUtf8(texte));
  place->addWidget(lampe);
  place->addWidget(age, 1);
  formulaire.Seul(*rangee, nullptr);
}

/// A preference that cannot be written is told, and keeps nobody here.
bool CDialogEndOfSession::Enregistre() {
  App().Dit(EcritFinDeSession(App(), m_afficher.isChecked()));
  return true;
}

int CDialogEndOfSession::exec() { return CZNDialog::exec() == Accepted ? m_fin : Annuler; }

bool PeutFermer(ContexteUi& contexte) {
  CFenlorApp& app = contexte.App;
  int fin = CDialogEndOfSession::Terminer;
  if (MontreFinDeSession(app)) fin = CDialogEndOfSession(contexte, contexte.Cadre.Cadre()).exec();
  if (fin == CDialogEndOfSession::Annuler) return false;
  Manifeste faite;
  if (fin == CDialogEndOfSession::Sauvegarder) faite = SauvegardeMaintenant(contexte);
  // What stops it is told, and the program closes: the answer was given.
  app.Dit(SauvegardeFinDeSession(app, faite));
  return true;
}

}  // namespace fenlor
