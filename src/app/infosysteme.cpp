#include "app/infosysteme.h"

#include <QClipboard>
#include <QDirIterator>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QStorageInfo>
#include <QSysInfo>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "app/apropos.h"
#include "app/textes.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

QString Chemin(const std::string& octets) { return QFile::decodeName(QByteArray::fromStdString(octets)); }

/// Thousands apart with a blank that the code page has.
std::string Nombre(qint64 nombre) {
  return De1252(QLocale().toString(nombre).replace(QChar(0x202F), QChar(0x00A0)));
}

QString Memoire() {
  QFile fichier(u"/proc/meminfo"_s);
  qint64 totale = -1, libre = -1;
  if (fichier.open(QIODevice::ReadOnly))
    for (const QByteArray& ligne : fichier.readAll().split('\n')) {
      const QList<QByteArray> mots = ligne.simplified().split(' ');
      if (mots.size() < 2) continue;
      if (mots[0] == "MemTotal:") totale = mots[1].toLongLong() / 1024;
      if (mots[0] == "MemAvailable:") libre = mots[1].toLongLong() / 1024;
    }
  return totale < 0 || libre < 0 ? TexteQ(InfoInconnu) : TexteQ(InfoMemoire, {Nombre(totale), Nombre(libre)});
}

QString Taille(const std::string& dossier) {
  qint64 taille = 0;
  QDirIterator fichiers(Chemin(dossier), QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                        QDirIterator::Subdirectories);
  while (fichiers.hasNext()) {
    fichiers.next();
    taille += fichiers.fileInfo().size();
  }
  return TexteQ(InfoKo, {Nombre((taille + 1023) / 1024)});
}

GroupeInformations Ecrans(const QWidget* fenetre) {
  GroupeInformations groupe{u"Affichage"_s, {}};
  const QList<QScreen*> ecrans = QGuiApplication::screens();
  for (qsizetype i = 0; i < ecrans.size(); ++i) {
    const QScreen& ecran = *ecrans[i];
    const QSize points = ecran.size() * ecran.devicePixelRatio();
    QString titre = ecrans.size() == 1 ? u"Écran"_s : u"Écran %1"_s.arg(i + 1);
    if (ecrans.size() > 1 && fenetre && fenetre->screen() == &ecran) titre += u" (celui-ci)"_s;
    groupe.lignes.push_back(
        {titre, TexteQ(InfoEcran, {std::to_string(points.width()), std::to_string(points.height()),
                                   std::to_string(qRound(ecran.devicePixelRatio() * 100))})});
  }
  groupe.lignes.push_back({u"Système graphique"_s, QGuiApplication::platformName()});
  return groupe;
}

}  // namespace

std::vector<GroupeInformations> InformationsSysteme(CFenlorApp& app, const QWidget* fenetre) {
  std::vector<GroupeInformations> groupes;
  groupes.push_back({u"Programme"_s,
                     {{u"Version de Fenlor"_s, TexteVersion()},
                      {u"Édition"_s, NomEdition(app)},
                      {u"Version de Qt"_s, QString::fromLatin1(qVersion())},
                      {u"Dossier du programme"_s, Chemin(app.PathProgrammes)}}});

  GroupeInformations cabinet{u"Cabinet"_s, {{u"Dossier du cabinet"_s, Chemin(app.PathCabinet)}}};
  cabinet.lignes.push_back({u"Nombre d'exercices"_s, QString::number(app.Magasin.GetExercicesRec())});
  cabinet.lignes.push_back({u"Taille du cabinet"_s, Taille(app.PathCabinet)});
  const QStorageInfo disque(Chemin(app.PathCabinet));
  constexpr qint64 mega = 1 << 20;
  cabinet.lignes.push_back(
      {u"Espace sur le disque"_s,
       disque.isValid() && disque.isReady()
           ? TexteQ(InfoDisque, {Nombre(disque.bytesAvailable() / mega), Nombre(disque.bytesTotal() / mega)})
           : TexteQ(InfoInconnu)});
  const bool ouvert = !app.NomExercice.empty();
  cabinet.lignes.push_back({u"Exercice ouvert"_s, ouvert ? Q(app.NomExercice) : u"aucun"_s});
  if (ouvert) {
    cabinet.lignes.push_back({u"Dossier de l'exercice"_s, Chemin(app.PathExercice)});
    cabinet.lignes.push_back({u"Taille de l'exercice"_s, Taille(app.PathExercice)});
  }
  groupes.push_back(std::move(cabinet));

  groupes.push_back({u"Machine"_s,
                     {{u"Système"_s, QSysInfo::prettyProductName()},
                      {u"Noyau"_s, QSysInfo::kernelType() + u' ' + QSysInfo::kernelVersion()},
                      {u"Processeur"_s, QSysInfo::currentCpuArchitecture()},
                      {u"Mémoire"_s, Memoire()}}});
  groupes.push_back(Ecrans(fenetre));
  return groupes;
}

CDialogInfoSystem::CDialogInfoSystem(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"Informations système"_s, "DialogInfoSystem", parent),
      m_groupes(InformationsSysteme(App(), parent ? parent : this)) {
  auto* arbre = new QTreeWidget(this);
  arbre->setObjectName(u"informations"_s);
  arbre->setAccessibleName(u"Informations système"_s);
  arbre->setColumnCount(2);
  arbre->setHeaderHidden(true);
  arbre->setRootIsDecorated(false);
  arbre->setItemsExpandable(false);
  arbre->setTextElideMode(Qt::ElideMiddle);
  int lignes = 0;
  for (const GroupeInformations& groupe : m_groupes) {
    auto* tete = new QTreeWidgetItem(arbre, {groupe.titre});
    QFont gras = arbre->font();
    gras.setBold(true);
    tete->setFont(0, gras);
    tete->setFirstColumnSpanned(true);
    tete->setExpanded(true);
    for (const Information& ligne : groupe.lignes) {
      auto* element = new QTreeWidgetItem(tete, {ligne.titre, ligne.valeur});
      element->setToolTip(1, ligne.valeur);
    }
    lignes += 1 + static_cast<int>(groupe.lignes.size());
  }
  arbre->resizeColumnToContents(0);
  arbre->resizeColumnToContents(1);
  const int hauteurLigne = arbre->sizeHintForIndex(arbre->model()->index(0, 0)).height();
  arbre->setMinimumWidth(fontMetrics().averageCharWidth() * 75);
  arbre->setMinimumHeight(qMin(lignes, 24) * hauteurLigne + 2 * arbre->frameWidth());
  auto* colonne = new QVBoxLayout(&Zone());
  colonne->addWidget(arbre, 1);
  auto* dit = new QLabel(this);
  dit->setObjectName(u"dit"_s);
  colonne->addWidget(dit);

  Boutons(Mode::Consultation);
  connect(&AjouteBouton(u"&Copier"_s, "copier"), &QPushButton::clicked, this, [this, dit] {
    Copie();
    dit->setText(TexteQ(InfoCopie));
  });
  arbre->setFocus();
}

void CDialogInfoSystem::Copie() {
  QString texte;
  for (const GroupeInformations& groupe : m_groupes) {
    if (!texte.isEmpty()) texte += u'\n';
    texte += groupe.titre + u'\n';
    for (const Information& ligne : groupe.lignes) texte += u"  %1 : %2\n"_s.arg(ligne.titre, ligne.valeur);
  }
  QGuiApplication::clipboard()->setText(texte);
}

}  // namespace fenlor
