#include "app/apropos.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <map>

#include "app/textes.h"
#include "core/textes.h"
#include "session/lancement.h"
#include "ui/images.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

QString TexteVersion() {
  return u"%1.%2.%3"_s.arg(VersionProgramme).arg(RevisionProgramme).arg(BuildProgramme);
}

QString NomEdition(const CFenlorApp& app) {
  static const std::map<int, QString> noms = {{0, u"Quorbane"_s},
                                              {1, u"Quorbane Édition Spéciale"_s},
                                              {3, u"Tessamaris"_s},
                                              {4, u"Tessamaris Édition Spéciale"_s}};
  const auto nom = noms.find(app.Edition);
  return nom == noms.end() ? u"autonome"_s : nom->second;
}

CDialogAbout::CDialogAbout(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"À propos de la Fenlor"_s, "DialogAbout", parent) {
  const auto ligne = [this](const QString& texte, const char* nom) {
    auto* label = new QLabel(texte, this);
    label->setObjectName(QString::fromLatin1(nom));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setFocusPolicy(Qt::NoFocus);
    return label;
  };
  auto* produit = ligne(TexteQ(TitreApplication), "produit");
  QFont grand = produit->font();
  grand.setPointSizeF(grand.pointSizeF() * 2);
  grand.setBold(true);
  produit->setFont(grand);

  auto* droite = new QVBoxLayout;
  const int ecart = fontMetrics().height() / 2;
  droite->addWidget(produit);
  droite->addWidget(ligne(u"Comptabilité des professions libérales"_s, "sousTitre"));
  droite->addSpacing(ecart);
  droite->addWidget(
      ligne(TexteQ(FormatVersion, {TexteVersion().toStdString()}) + u", édition "_s + NomEdition(App()),
            "version"));
  droite->addWidget(ligne(
      u"Réalisé avec Qt %1 (utilisé sous licence LGPL version 3)."_s.arg(QString::fromLatin1(qVersion())),
      "qt"));
  droite->addSpacing(ecart);
  auto* licence = ligne(
      u"Fenlor est un logiciel libre : vous pouvez le redistribuer et le modifier selon les termes de la "
      "licence publique générale GNU, version 3 ou ultérieure (GPL-3.0-or-later)."_s,
      "licence");
  licence->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  droite->addWidget(licence);
  droite->addWidget(
      ligne(u"Il est fourni dans l'espoir qu'il sera utile, mais sans garantie d'aucune sorte, pas même la "
            "garantie implicite de qualité marchande ou d'adéquation à un usage particulier."_s,
            "garantie"));
  droite->addStretch(1);

  auto* image = new QLabel(this);
  image->setAlignment(Qt::AlignTop);
  const int cote = fontMetrics().height() * 4;
  const QIcon icone = Image("fenlor");
  if (!icone.isNull()) image->setPixmap(icone.pixmap(QSize(cote, cote), devicePixelRatioF()));
  auto* rangee = new QHBoxLayout(&Zone());
  rangee->addWidget(image);
  rangee->addSpacing(ecart);
  rangee->addLayout(droite, 1);
  Boutons(Mode::Consultation);
}

}  // namespace fenlor
