#include "forms/session/dialogindex.h"

#include "forms/session/textes.h"
#include "session/entretien.h"
#include "ui/casesvisibles.h"
#include "ui/texteqt.h"

using namespace Qt::Literals::StringLiterals;

namespace fenlor {

CDialogIndex::CDialogIndex(ContexteUi& contexte, QWidget* parent)
    : CZNDialog(contexte, u"Reconstruction des clés"_s, "DialogIndex", parent) {
  Formulaire(Zone())
      .Texte(
          u"Les clés d'accès des fichiers cochés vont être reconstruites. Les enregistrements "
          "inutilisables sont écartés."_s)
      .Seul(m_fichiers, "fichiers", true)
      .Case(m_choisir, u"&Choisir un fichier"_s, "choisir")
      .SurChangement([this] {
        for (int i = 0; i < m_fichiers.count(); ++i)
          m_fichiers.item(i)->setCheckState(m_choisir.checkState());
      })
      .Astuce(u"Coche ou décoche tous les fichiers"_s);
  m_fichiers.setAccessibleName(u"Fichiers à reconstruire"_s);
  m_choisir.setChecked(true);
  for (const FichierReconstructible& fichier : FichiersReconstructibles()) {
    auto* element = new QListWidgetItem(TexteQ(fichier.libelle), &m_fichiers);
    element->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    element->setCheckState(Qt::Checked);
    element->setData(Qt::UserRole, QString::fromLatin1(fichier.nom));
  }
  m_fichiers.setItemDelegate(new CasesVisibles(&m_fichiers));
  m_fichiers.setCurrentRow(0);
  m_fichiers.setSpacing(m_fichiers.fontMetrics().height() / 8);
  m_fichiers.setMinimumWidth(m_fichiers.fontMetrics().averageCharWidth() * 48);
  m_fichiers.setSizeAdjustPolicy(QListWidget::AdjustToContents);
  // The box changes its mark by itself, before the click is told.
  connect(&m_fichiers, &QListWidget::itemPressed, this,
          [this](QListWidgetItem* element) { m_marque = element->checkState(); });
  connect(&m_fichiers, &QListWidget::itemClicked, this, [this](QListWidgetItem* element) {
    if (element->checkState() == m_marque)
      element->setCheckState(m_marque == Qt::Checked ? Qt::Unchecked : Qt::Checked);
  });
  Boutons(Mode::Simple);
}

bool CDialogIndex::Enregistre() {
  std::vector<std::string> noms;
  for (int i = 0; i < m_fichiers.count(); ++i)
    if (m_fichiers.item(i)->checkState() == Qt::Checked)
      noms.push_back(m_fichiers.item(i)->data(Qt::UserRole).toString().toStdString());
  Refus refus;
  Reconstruction resultat;
  AvecFichiersSeul(Contexte(), [&] { refus = ReconstruitCles(App(), noms, resultat); });
  App().Dit(refus);
  for (const FichierReconstruit& fichier : resultat.fichiers) {
    if (fichier.rapport.arrete) continue;
    for (int i = 0; i < m_fichiers.count(); ++i)
      if (m_fichiers.item(i)->data(Qt::UserRole).toString().toStdString() == fichier.nom)
        m_fichiers.item(i)->setCheckState(Qt::Unchecked);
  }
  if (const std::string resume = ResumeReconstruction(resultat); !resume.empty())
    App().MessageId(BoutonsOk | IconeInformation, InfoReconstruction, {resume});
  return !resultat.arrete;
}

}  // namespace fenlor
