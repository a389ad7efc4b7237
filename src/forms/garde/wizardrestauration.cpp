#include "forms/garde/wizardrestauration.h"

#include <QLabel>
#include <QListWidget>
#include <QScreen>
#include <QTimer>
#include <algorithm>

#include "garde/lecturearchives.h"
#include "garde/textes.h"
#include "store/texte1252.h"
#include "ui/casesvisibles.h"
#include "ui/czndialog.h"
#include "ui/editeurs.h"
#include "ui/tableliste.h"
#include "ui/texteqt.h"

namespace fenlor {

using namespace Qt::Literals::StringLiterals;

namespace {

enum Page { PageIdArchive, PageIdMotDePasse, PageIdExercices, PageIdFaite };
constexpr int caracteres = 92;  ///< width of the list

std::string Etat(const ArchiveLue& archive) {
  if (archive.refus.numero == ErrArchiveEtrangere) return Texte(MotEtrangere);
  if (archive.refus) return Texte(MotEndommagee);
  return Texte(archive.protegee ? MotProtegee : archive.lue ? MotBonne : MotEnLecture);
}

/// "15/03/2003 14:05", also of one that only its name tells of.
std::string Quand(const ArchiveLue& archive) {
  const std::string& m = archive.moment;
  if (m.size() < 12) return {};
  return m.substr(6, 2) + "/" + m.substr(4, 2) + "/" + m.substr(0, 4) + " " + m.substr(8, 2) + ":" +
         m.substr(10, 2);
}

TableColonnes<ArchiveLue> Colonnes() {
  const auto connue = [](const ArchiveLue& a, const std::string& texte) {
    return a.refus ? std::string() : a.protegee ? std::string("?") : texte;
  };
  return {{"Date", 19, Quand},
          {"Exercices", 17, [=](const ArchiveLue& a) { return connue(a, a.Exercices()); }},
          {"Ecritures", 11, [=](const ArchiveLue& a) { return connue(a, std::to_string(a.Ecritures())); },
           Cote::Droite},
          {"Taille", 14, [](const ArchiveLue& a) { return TailleLisible(a.taille); }, Cote::Droite},
          {"Etat", 17, Etat},
          {"Fichier", 22, [](const ArchiveLue& a) { return DepuisUtf8(a.nom).value_or(a.nom); }}};
}

class PageArchive : public QWizardPage {
 public:
  PageArchive(CWizardRestauration& wizard, const BlocSauvegarde& bloc)
      : m_wizard(wizard),
        m_destinations(DestinationsIci(wizard.App(), bloc.destination)),
        m_formulaire(*this),
        m_dossier(m_formulaire, m_destinations.dossiers,
                  DossierDeDepart(wizard.App(), m_destinations, bloc.destination)),
        m_liste(new CZNListCtrl(wizard.Contexte())) {
    setTitle(u"Quelle sauvegarde restaurer ?"_s);
    m_liste->setAccessibleName(u"Sauvegardes"_s);
    m_liste->setMinimumWidth(std::min(caracteres * fontMetrics().averageCharWidth(),
                                      screen()->availableSize().width() - 8 * fontMetrics().height()));
    m_liste->Suit(Colonnes(), m_archives);
    m_detail.setWordWrap(true);
    m_detail.setAccessibleName(u"Raison"_s);
    m_detail.setMinimumHeight(2 * fontMetrics().lineSpacing());
    m_formulaire.Seul(*m_liste, "liste", true).Seul(m_detail, "detail");
    connect(&m_dossier.Champ(), &QComboBox::currentTextChanged, this, [this] { m_horloge.start(); });
    connect(m_liste, &TableListe::SelectionChangee, this, [this] { Choisit(); });
    m_liste->SurActivation([this] {
      if (isComplete()) m_wizard.next();
    });
    m_horloge.setSingleShot(true);
    m_horloge.setInterval(300);
    connect(&m_horloge, &QTimer::timeout, this, [this] { Relit(); });
    Relit();
  }
  bool isComplete() const override {
    const ArchiveLue* archive = Choisie();
    return archive && !archive->refus;
  }
  bool validatePage() override {
    if (m_horloge.isActive()) {
      // Another folder was typed, and its archives were not read yet.
      m_horloge.stop();
      Relit();
      return false;
    }
    // The folder is not remembered: backups go on where they went.
    if (!isComplete()) return false;
    m_wizard.Archive = *Choisie();
    m_wizard.Demande = {Joint(m_dossier.Dossier(), m_wizard.Archive.nom), {}, {}};
    return true;
  }

 private:
  const ArchiveLue* Choisie() const {
    const int ligne = m_liste->RangChoisi();
    return ligne < 0 ? nullptr : &m_archives[static_cast<std::size_t>(ligne)];
  }
  void Relit() {
    m_archives.clear();
    m_refus = m_dossier.Controle();
    if (!m_refus)
      m_refus = ListeArchives(m_wizard.App().Magasin.SystemeFichiers(), m_dossier.Dossier(), m_archives);
    m_liste->PoseTexteVide(m_dossier.Dossier().empty() ? u"Choisissez le dossier des sauvegardes."_s
                                                       : u"Il n'y a pas de sauvegarde dans ce dossier."_s);
    m_liste->Relit(m_archives.empty() ? -1 : 0);
    Choisit();
    Verifie();
  }
  /// What an archive says of itself stands at its beginning. Whether it is whole takes reading it, which goes
  /// on beside the list, from the first row to the last.
  void Verifie() {
    // On a disk of its own, so that a drive that hangs keeps neither this window nor the program.
    m_lecture.Commence(std::make_shared<SystemePosix>(), m_dossier.Dossier(), m_archives,
                       [this, tour = ++m_tour](std::size_t rang, const ArchiveLue& archive) {
                         QMetaObject::invokeMethod(
                             this, [this, tour, rang, archive] { Note(tour, rang, archive); },
                             Qt::QueuedConnection);
                       });
  }
  void Note(unsigned tour, std::size_t rang, const ArchiveLue& archive) {
    if (tour != m_tour) return;  // of a folder that was left since
    m_archives[rang] = archive;
    m_liste->Redessine();
    Choisit();
  }
  /// Why the row, or the folder, is of no use stands under the list: it is no answer to a command.
  void Choisit() {
    const ArchiveLue* archive = Choisie();
    m_detail.Pose(archive                                     ? archive->refus.texte
                  : m_dossier.Champ().currentText().isEmpty() ? std::string()
                                                              : m_refus.texte);
    Q_EMIT completeChanged();
  }

  CWizardRestauration& m_wizard;
  const Destinations m_destinations;
  std::vector<ArchiveLue> m_archives;
  Refus m_refus;  ///< of the folder
  Formulaire m_formulaire;
  ChoixDossier m_dossier;
  CZNListCtrl* m_liste;
  Lecture m_detail;
  QTimer m_horloge;
  unsigned m_tour = 0;  ///< of reading the folder
  LectureArchives m_lecture;
  FinDesLiens m_finLiens{*this};
};

class PageMotDePasse : public QWizardPage {
 public:
  explicit PageMotDePasse(CWizardRestauration& wizard) : m_wizard(wizard) {
    setTitle(u"Mot de passe"_s);
    Formulaire{*this}
        .Texte(u"Cette sauvegarde est protégée. Son mot de passe est celui qui a été choisi en la faisant."_s)
        .Champ(u"&Mot de passe :"_s, m_motDePasse, "motDePasse")
        .Pousse();
    m_motDePasse.setEchoMode(QLineEdit::Password);
  }
  bool validatePage() override {
    DemandeRestauration& demande = m_wizard.Demande;
    demande.motDePasse = m_motDePasse.text().toStdString();
    Refus refus = LitManifesteArchive(m_wizard.App().Magasin.SystemeFichiers(), demande.chemin,
                                      demande.motDePasse, m_wizard.Archive.manifeste);
    refus.champ = "motDePasse";
    return m_wizard.Accepte(refus);
  }

 private:
  CWizardRestauration& m_wizard;
  QLineEdit m_motDePasse;
};

class PageExercices : public QWizardPage {
 public:
  explicit PageExercices(CWizardRestauration& wizard) : m_wizard(wizard), m_liste(new QListWidget) {
    setTitle(u"Ce qui est restauré"_s);
    setCommitPage(true);
    m_liste->setAccessibleName(u"Exercices"_s);
    m_liste->setItemDelegate(new CasesVisibles(m_liste));
    m_quand.setWordWrap(true);
    m_quand.setAccessibleName(u"Sauvegarde"_s);
    Formulaire{*this}
        .Seul(m_quand, "quand")
        .Seul(*m_liste, "exercices", true)
        .Texte(
            u"Chaque exercice coché remplace en entier celui du même nom. Les livres d'aujourd'hui ne sont "
            u"pas "
            u"effacés : ils restent à côté, dans un dossier qui porte la date, jusqu'à ce que vous le "
            u"retiriez."_s);
  }
  void initializePage() override {
    const CFenlorApp& app = m_wizard.App();
    const Manifeste& manifeste = m_wizard.Archive.manifeste;
    m_quand.Pose(TexteFormat(TexteSauvegardeDu, {manifeste.date, manifeste.heure, manifeste.cabinet}));
    const std::vector<std::string> presents = app.Magasin.ListeExercices();
    const auto present = [&](const std::string& nom) {
      return std::find(presents.begin(), presents.end(), nom) != presents.end();
    };
    bool ouvert = false;
    for (const ExerciceArchive& e : manifeste.exercices) ouvert = ouvert || e.nom == app.NomExercice;
    m_liste->clear();
    for (const ExerciceArchive& e : manifeste.exercices) {
      const TexteFixe& phrase = present(e.nom) ? FormatExerciceRemplace : FormatExerciceNouveau;
      auto* ligne =
          new QListWidgetItem(TexteQ(phrase, {e.nom, e.debut, e.fin, std::to_string(e.ecritures)}), m_liste);
      ligne->setData(Qt::UserRole, Q(e.nom));
      ligne->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
      ligne->setCheckState(!ouvert || e.nom == app.NomExercice ? Qt::Checked : Qt::Unchecked);
    }
    // The cursor stands on what comes back: another row would look as if it were chosen.
    int premiere = 0;
    while (premiere + 1 < m_liste->count() && m_liste->item(premiere)->checkState() != Qt::Checked)
      ++premiere;
    m_liste->setCurrentRow(premiere);
  }
  bool validatePage() override {
    DemandeRestauration& demande = m_wizard.Demande;
    demande.exercices.clear();
    for (int i = 0; i < m_liste->count(); ++i)
      if (m_liste->item(i)->checkState() == Qt::Checked)
        demande.exercices.push_back(De1252(m_liste->item(i)->data(Qt::UserRole).toString()));
    if (demande.exercices.empty()) return m_wizard.Accepte(Refus(ErrSauvegardeSansExercice, "exercices"));
    return m_wizard.Accepte(Restaure(m_wizard.App(), demande, m_wizard.Faite));
  }

 private:
  CWizardRestauration& m_wizard;
  Lecture m_quand;
  QListWidget* m_liste;
};

class PageRestauree : public QWizardPage {
 public:
  explicit PageRestauree(CWizardRestauration& wizard) : m_wizard(wizard) {
    setTitle(u"Restauration faite"_s);
    m_bilan.setReadOnly(true);
    m_bilan.setAccessibleName(u"Bilan"_s);
    m_phrase.setWordWrap(true);
    Formulaire{*this}.Seul(m_phrase, "phrase").Seul(m_bilan, "bilan", true);
  }
  void initializePage() override {
    const RestaurationFaite& faite = m_wizard.Faite;
    std::string bilan;
    bool constats = false;
    for (const ExerciceRestaure& e : faite.exercices) {
      constats = constats || !e.constats.empty();
      bilan += TexteFormat(FormatRestaure, {e.nom}) + "\r\n";
      if (!e.ancien.empty()) bilan += TexteFormat(FormatAncien, {e.ancien}) + "\r\n";
      for (const std::string& constat : e.constats) bilan += TexteFormat(FormatConstat, {constat}) + "\r\n";
    }
    if (!faite.communsGardes.empty()) bilan += TexteFormat(AvisCommunsGardes, {faite.communsGardes}) + "\r\n";
    if (faite.cabinet) bilan += Texte(TexteCabinetRestaure) + "\r\n";
    m_bilan.setPlainText(Q(bilan));
    m_phrase.setText(
        constats ? u"Les livres sont en place tels qu'ils avaient été sauvés. La vérification y a trouvé ce "
                   u"qui suit."_s
                 : u"Les livres de la sauvegarde sont en place. Ils ont été ouverts et vérifiés."_s);
  }

 private:
  CWizardRestauration& m_wizard;
  QLabel m_phrase;
  QPlainTextEdit m_bilan;
};

}  // namespace

CWizardRestauration::CWizardRestauration(ContexteUi& contexte, const BlocSauvegarde& bloc, QWidget* parent)
    : CWizardGarde(contexte, u"Restauration"_s, "WizardRestauration", u"&Restaurer"_s, parent) {
  setPage(PageIdArchive, new PageArchive(*this, bloc));
  setPage(PageIdMotDePasse, new PageMotDePasse(*this));
  setPage(PageIdExercices, new PageExercices(*this));
  setPage(PageIdFaite, new PageRestauree(*this));
}

int CWizardRestauration::nextId() const {
  const bool protegee = currentId() == PageIdArchive ? Archive.protegee : true;
  return currentId() == PageIdArchive && !protegee ? PageIdExercices : QWizard::nextId();
}

}  // namespace fenlor
