#include "forms/garde/wizardsauvegarde.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStorageInfo>

#include "garde/inventaire.h"
#include "garde/optionssauvegarde.h"
#include "garde/textes.h"
#include "store/texte1252.h"
#include "ui/editeurs.h"
#include "ui/radios.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

class PageDestination : public QWizardPage {
 public:
  PageDestination(CWizardSauvegarde& wizard, const BlocSauvegarde& bloc, bool complet)
      : m_wizard(wizard),
        m_destinations(DestinationsIci(wizard.App(), bloc.destination)),
        m_formulaire(*this),
        m_dossier(m_formulaire, m_destinations.dossiers,
                  m_destinations.dossiers.empty() ? std::string() : m_destinations.dossiers.front()) {
    setTitle(u"Où sauvegarder, et quoi ?"_s);
    const std::string exercice = ExerciceDuBloc(bloc);
    m_avis.setWordWrap(true);
    m_avis.setAlignment(Qt::AlignTop | Qt::AlignLeft);
    m_avis.setMinimumHeight(3 * fontMetrics().lineSpacing());  // what is below stays where it is
    m_formulaire.Seul(m_avis, "avis")
        .Groupe(u"Ce qui est sauvegardé"_s)
        .Case(m_unExercice, exercice.empty() ? u"L'&exercice ouvert"_s : u"L'&exercice "_s + Q(exercice),
              "exercice")
        .Case(m_tout, u"&Tout le cabinet : chaque exercice, les immobilisations, les réglages"_s, "complet")
        .FinGroupe();
    const Conservation c = LitOptionsSauvegarde(m_wizard.App()).conservation;
    m_formulaire
        .Texte(TexteQ(TexteConservation,
                      {std::to_string(c.jours), std::to_string(c.semaines), std::to_string(c.mois)}))
        .Pousse();
    UnDes({&m_unExercice, &m_tout});
    m_unExercice.setEnabled(!exercice.empty());
    (exercice.empty() || complet ? m_tout : m_unExercice).setChecked(true);
    connect(&m_dossier.Champ(), &QComboBox::currentTextChanged, this, [this] { Avise(); });
    Avise();
  }
  bool validatePage() override {
    if (!m_wizard.Accepte(PrepareDestination(m_wizard.App(), m_destinations, m_dossier.Dossier())))
      return false;
    if (!m_wizard.Accepte(m_dossier.Controle())) return false;
    if (!m_wizard.Accepte(RetientDossier(m_wizard.App(), m_dossier.Dossier()))) return false;
    m_wizard.Demande.dossier = m_dossier.Dossier();
    m_wizard.Demande.complet = m_tout.isChecked();
    return true;
  }

 private:
  /// What the folder has room for, and whether it would be lost together with the books.
  void Avise() {
    QString avis;
    const std::string dossier = m_dossier.Dossier();
    if (m_dossier.Controle()) {
      if (!dossier.empty() && dossier == m_destinations.propre) avis = TexteQ(TexteDossierACreer);
    } else {
      const QStorageInfo la(CheminQ(dossier)), livres(CheminQ(m_wizard.App().PathCabinet));
      avis = Q(TexteFormat(TextePlaceLibre, {TailleLisible(static_cast<u64>(la.bytesAvailable()))}));
      if (la.rootPath() == livres.rootPath()) avis += u"\n"_s + TexteQ(TexteMemeDisque);
    }
    m_avis.setText(avis);
  }

  CWizardSauvegarde& m_wizard;
  const Destinations m_destinations;
  Formulaire m_formulaire;
  ChoixDossier m_dossier;
  QLabel m_avis;
  QRadioButton m_unExercice, m_tout;
  FinDesLiens m_finLiens{*this};
};

class PageProtection : public QWizardPage {
 public:
  explicit PageProtection(CWizardSauvegarde& wizard) : m_wizard(wizard) {
    setTitle(u"Protection"_s);
    setCommitPage(true);
    Formulaire{*this}
        .Case(m_proteger, u"Proté&ger la sauvegarde par un mot de passe"_s, "proteger")
        .Champ(u"&Mot de passe :"_s, m_motDePasse, "motDePasse")
        .Champ(u"Encore une f&ois :"_s, m_encore, "encore")
        .Texte(
            u"Un mot de passe oublié ne se retrouve pas : la sauvegarde est alors perdue, pour vous comme "
            u"pour "
            u"nous. Il n'est pas celui du cabinet ; notez-le en lieu sûr."_s)
        .Pousse();
    for (QLineEdit* champ : {&m_motDePasse, &m_encore}) {
      champ->setEchoMode(QLineEdit::Password);
      champ->setEnabled(false);
      connect(&m_proteger, &QCheckBox::toggled, champ, &QWidget::setEnabled);
    }
  }
  bool validatePage() override {
    DemandeSauvegarde& demande = m_wizard.Demande;
    demande.motDePasse = m_proteger.isChecked() ? m_motDePasse.text().toStdString() : std::string();
    if (m_proteger.isChecked() && (demande.motDePasse.empty() || m_motDePasse.text() != m_encore.text()))
      return m_wizard.Accepte(Refus(ErrMotDePasseSauvegarde, "motDePasse"));
    CFenlorApp& app = m_wizard.App();
    if (!m_wizard.Accepte(Sauvegarde(app, demande, m_wizard.Faite))) return false;
    app.MotDePasseSauvegarde = demande.motDePasse;
    // The backup stands, whatever becomes of the older ones.
    app.Dit(Purge(app.Magasin.SystemeFichiers(), demande.dossier, LitOptionsSauvegarde(app).conservation,
                  demande.motDePasse, m_wizard.Retirees));
    return true;
  }

 private:
  CWizardSauvegarde& m_wizard;
  QCheckBox m_proteger;
  QLineEdit m_motDePasse, m_encore;
  FinDesLiens m_finLiens{*this};
};

class PageFaite : public QWizardPage {
 public:
  explicit PageFaite(CWizardSauvegarde& wizard) : m_wizard(wizard) {
    setTitle(u"Sauvegarde faite"_s);
    for (Lecture* champ : {&m_fichier, &m_retirees}) champ->setWordWrap(true);
    Formulaire{*this}
        .Texte(u"Les livres sont dans ce fichier. Il a été relu jusqu'au dernier octet et comparé à eux."_s)
        .Champ(u"Fichier :"_s, m_fichier, "fichier")
        .Champ(u"Taille :"_s, m_taille, "taille")
        .Champ(u"Exercices :"_s, m_exercices, "exercices")
        .Champ(u"Ecritures :"_s, m_ecritures, "ecritures")
        .Champ(u"Protection :"_s, m_protection, "protection")
        .Champ(u"Sauvegardes retirées :"_s, m_retirees, "retirees")
        .Pousse();
  }
  void initializePage() override {
    const SauvegardeFaite& faite = m_wizard.Faite;
    ArchiveLue lue;
    lue.manifeste = faite.manifeste;
    m_fichier.setText(CheminQ(faite.chemin));
    m_taille.Pose(TailleLisible(faite.taille));
    m_exercices.Pose(lue.Exercices());
    m_ecritures.Pose(std::to_string(lue.Ecritures()));
    m_protection.Pose(Texte(m_wizard.Demande.motDePasse.empty() ? MotSansMotDePasse : MotParMotDePasse));
    std::string retirees;
    for (const std::string& nom : m_wizard.Retirees) retirees += (retirees.empty() ? "" : "\r\n") + nom;
    m_retirees.Pose(retirees.empty() ? Texte(MotAucuneRetiree) : retirees);
  }

 private:
  CWizardSauvegarde& m_wizard;
  Lecture m_fichier, m_taille, m_exercices, m_ecritures, m_protection, m_retirees;
};

}  // namespace

CWizardSauvegarde::CWizardSauvegarde(ContexteUi& contexte, const BlocSauvegarde& bloc, bool complet,
                                     QWidget* parent)
    : CWizardGarde(contexte, u"Sauvegarde"_s, "WizardSauvegarde", u"&Sauvegarder"_s, parent) {
  addPage(new PageDestination(*this, bloc, complet));
  addPage(new PageProtection(*this));
  addPage(new PageFaite(*this));
}

}  // namespace fenlor
