#include "forms/garde/wizardgarde.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QStorageInfo>

#include "core/fenlorapp.h"
#include "garde/textes.h"
#include "ui/czndialog.h"
#include "ui/images.h"
#include "ui/modales.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

CWizardGarde::CWizardGarde(ContexteUi& contexte, const QString& titre, const char* nom, const QString& fait,
                           QWidget* parent)
    : QWizard(FenetreDessous(parent, contexte.Cadre.Cadre())), m_contexte(contexte) {
  SurvitAuParent(*this);
  setObjectName(QString::fromUtf8(nom));
  setWindowTitle(titre);
  setWizardStyle(ClassicStyle);
  setOptions(NoBackButtonOnStartPage | NoBackButtonOnLastPage | NoCancelButtonOnLastPage | HaveHelpButton |
             HelpButtonOnRight);
  const struct {
    WizardButton quel;
    QString texte;
    const char* nom;
    const char* image;
  } boutons[] = {{BackButton, u"&Précédent"_s, "precedent", "precedent"},
                 {NextButton, u"&Suivant"_s, "suivant", "suivant"},
                 {CommitButton, fait, "faire", "valider"},
                 {FinishButton, u"&Fermer"_s, "fermer", "valider"},
                 {CancelButton, u"A&nnuler"_s, "annuler", "annuler"},
                 {HelpButton, u"A&ide"_s, "aide", "aide"}};
  for (const auto& b : boutons) {
    setButtonText(b.quel, b.texte);
    button(b.quel)->setObjectName(QString::fromUtf8(b.nom));
    button(b.quel)->setIcon(Image(b.image));
  }
  connect(this, &QWizard::helpRequested, this, [this] { m_contexte.Cadre.Aide(objectName()); });
}

bool CWizardGarde::Accepte(const Refus& refus) {
  if (App().Dit(refus)) return true;
  if (currentPage()) CZNDialog::Focalise(*currentPage(), refus.champ);
  return false;
}

void CWizardGarde::keyPressEvent(QKeyEvent* evenement) {
  if (evenement->key() == Qt::Key_F1)
    m_contexte.Cadre.Aide(objectName());
  else if (!m_contexte.Cadre.Touche(evenement->keyCombination()))
    QWizard::keyPressEvent(evenement);
}

/// Room for the largest page, title and buttons from the beginning: no page is cut, and no button moves.
void CWizardGarde::showEvent(QShowEvent* evenement) {
  const int ligne = fontMetrics().height();
  QSize place;
  for (const int id : pageIds()) place = place.expandedTo(page(id)->sizeHint());
  place += QSize(3 * ligne, 8 * ligne);
  setMinimumSize(place.boundedTo(screen()->availableSize() - QSize(ligne, 3 * ligne)));
  QWizard::showEvent(evenement);
}

ChoixDossier::ChoixDossier(Formulaire& formulaire, const std::vector<std::string>& dossiers,
                           const std::string& choisi)
    : m_champ(new QComboBox) {
  auto* parcourir = new QPushButton(u"Pa&rcourir..."_s);
  m_champ->setEditable(true);
  m_champ->setInsertPolicy(QComboBox::NoInsert);
  m_champ->setMinimumContentsLength(34);
  m_champ->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  formulaire.Champ(u"&Dossier :"_s, *m_champ, "dossier").ACote(*parcourir, "parcourir");
  for (const std::string& dossier : dossiers) m_champ->addItem(CheminQ(dossier));
  // The list chooses its first row by itself.
  m_champ->setCurrentText(CheminQ(choisi));
  QObject::connect(parcourir, &QPushButton::clicked, m_champ, [champ = m_champ] {
    const QString choisi = QFileDialog::getExistingDirectory(champ->window(), u"Dossier des sauvegardes"_s,
                                                             champ->currentText());
    if (!choisi.isEmpty()) champ->setCurrentText(choisi);
  });
}

std::string ChoixDossier::Dossier() const {
  const QString texte = m_champ->currentText().trimmed();
  return texte.isEmpty() ? std::string() : OctetsDe(QDir::cleanPath(texte));
}

Refus ChoixDossier::Controle() const {
  const std::string dossier = Dossier();
  if (dossier.empty()) return Refus(ErrDossierSauvegardeAbsent, "dossier");
  const QDir ici(CheminQ(dossier));
  if (!ici.isAbsolute() || !ici.exists())
    return Refus(ErrDossierSauvegardeInconnu, "dossier", {De1252(CheminQ(dossier))});
  return {};
}

Destinations DestinationsIci(const CFenlorApp& app, const std::string& retenu) {
  std::vector<Volume> volumes;
  for (const QStorageInfo& ici : QStorageInfo::mountedVolumes()) {
    if (!ici.isValid() || !ici.isReady()) continue;
    Volume& volume = volumes.emplace_back();
    volume.racine = OctetsDe(ici.rootPath());
    volume.peripherique = ici.device().toStdString();
    volume.lectureSeule = ici.isReadOnly();
    const QString bloc = QString::fromLocal8Bit(ici.device()).section(u'/', -1);
    // A partition stands in the folder of its drive.
    for (const QString& marque : {u"/removable"_s, u"/../removable"_s}) {
      QFile fichier(u"/sys/class/block/"_s + bloc + marque);
      if (!bloc.isEmpty() && fichier.open(QIODevice::ReadOnly) && fichier.read(1) == "1")
        volume.amovible = true;
    }
  }
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return ProposeDestinations(retenu, volumes, OctetsDe(documents),
                             OctetsDe(QDir::cleanPath(CheminQ(app.PathCabinet))));
}

QString CheminQ(const std::string& octets) { return QFile::decodeName(QByteArray::fromStdString(octets)); }
std::string OctetsDe(const QString& chemin) { return QFile::encodeName(chemin).toStdString(); }

}  // namespace fenlor
