#include "app/programme.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <cerrno>

#include "app/astuce.h"
#include "app/ecranaccueil.h"
#include "app/fabriques.h"
#include "app/gestioncommandes.h"
#include "app/instanceunique.h"
#include "app/lienparent.h"
#include "app/mainframe.h"
#include "app/reprises.h"
#include "app/textes.h"
#include "core/cles.h"
#include "core/erreurs.h"
#include "core/valeurs.h"
#include "forms/auto/dialogautoecheance.h"
#include "forms/garde/dialogendofsession.h"
#include "forms/session/commandesexercice.h"
#include "forms/session/dialognewexercice.h"
#include "forms/session/dialogopenexercice.h"
#include "forms/session/dialogpassword.h"
#include "garde/restes.h"
#include "session/exercices.h"
#include "session/miseajour.h"
#include "session/textes.h"
#include "store/texte1252.h"
#include "ui/preferences.h"
#include "ui/texteqt.h"

namespace fenlor {

namespace {

/// A path for a message.
std::string Lisible(const std::string& chemin) { return De1252(QFile::decodeName(chemin.c_str())); }

std::string Environnement(const char* nom) {
  const QByteArray valeur = qgetenv(nom);
  return valeur.toStdString();
}

}  // namespace

Programme::Programme(OptionsProgramme options)
    : m_options(std::move(options)), m_magasin(m_options.magasin), m_app(m_magasin, m_dialogue) {}

Programme::~Programme() {
  ExitInstance();
  m_cadre.reset();
}

void Programme::FermeAccueil() { m_accueil.reset(); }

bool Programme::InitInstance() {
  m_app.PathProgrammes = m_options.pathProgrammes;
  m_app.PathCabinet = DossierCabinetDefaut(m_options.pathProgrammes, Environnement("XDG_DATA_HOME"),
                                           QDir::homePath().toStdString());
  if (const std::string cabinet = Environnement("FENLOR_CABINET");
      !cabinet.empty() && !m_options.ligne.pathCabinet && !m_options.ligne.pathMagasin)
    m_options.ligne.pathCabinet = cabinet;
  const bool choisi = m_options.ligne.pathCabinet || m_options.ligne.pathMagasin;
  AppliqueLigneCommande(m_app, m_options.ligne);
  const std::string cabinet = m_options.ligne.pathMagasin.value_or(m_app.PathCabinet);

  m_instance = std::make_unique<InstanceUnique>(QFile::decodeName(cabinet.c_str()));
  if (m_instance->AppelleAutre()) {
    m_autre = true;
    return false;
  }
  if (m_options.accueil && !m_options.ligne.sansAccueil) {
    constexpr int duree = 3500;  // ms
    m_accueil = std::make_unique<EcranAccueil>(IsSpecialiteTessamaris(m_app));
    m_accueil->show();
    QTimer::singleShot(duree, m_accueil.get(), [this] { FermeAccueil(); });
  }
  LitVersionParent(m_app);
  if (RappelleMiseAJour()) return false;
  if (!OuvreMagasin() ||
      (!QDir(QFile::decodeName(cabinet.c_str())).exists() && !(choisi ? ChoisitCabinet() : true)))
    return false;
  errno = 0;
  const int dossier = QDir().mkpath(QFile::decodeName(cabinet.c_str())) ? 0 : errno ? errno : ENOENT;
  if (dossier != 0 || !m_magasin.QVReserveCabinet(m_app.PathCabinet)) {
    FermeAccueil();
    const int code = dossier != 0 ? dossier : m_magasin.QVFileErrorCode();
    if (code == ErrOccupe)
      m_app.ReportErreur(ErrCabinetOccupe, {m_magasin.QVDetenteur()});
    else
      m_app.ReportErreur(ErrCabinet, {Lisible(cabinet), m_magasin.QVErreurTexte(code)});
    return false;
  }
  m_app.PathCabinet = m_magasin.PathCabinet();
  m_instance->Ecoute([this] {
    if (m_cadre) m_cadre->VientDevant();
  });

  if (!m_options.note.empty()) m_magasin.QVAvertit(m_options.note);
  m_cadre = std::make_unique<CMainFrame>(m_app, m_dialogue);
  PoseFabriques(*m_cadre);
  PoseManques(m_dialogue, *m_cadre);
  m_dialogue.PoseSansDemander([this](unsigned question) { return SansDemander(m_app, question); });
  m_cadre->SurFermeture([this] { return PeutFermer(m_cadre->Contexte()); });
  m_cadre->MontreAuDemarrage();
  if (m_accueil) m_accueil->raise();

  m_app.NomExercice = m_app.Reglages.LitIni(Texte(SecActivite), Texte(CleExercice)).substr(0, 15);
  if (EstVide(m_app.NomExercice)) m_app.NomExercice.clear();
  if (!m_app.NomExercice.empty()) RepareDates(m_app, m_app.NomExercice);
  if (!MigreReglages(m_app)) {
    FermeAccueil();
    DitEchecReglages(m_app);
  }
  if (!OuvreCompta()) return false;
  RangeRestes(m_app);
  if (m_app.NomExercice.empty()) PremierExercice();
  OuvreExerciceCourant();
  LitTauxCourant(m_app);
  m_cadre->MontreExercice();
  if (m_premier) m_cadre->Table().Execute(CmdOptions);
  AstuceDemarrage(m_cadre->Contexte(), m_cadre.get());
  return true;
}

bool Programme::RappelleMiseAJour() {
  ChercheMiseAJour(m_app);
  if (m_app.Edition != 2 || !MiseAJourDue(m_app)) return false;
  FermeAccueil();
  return m_miseAJour = RappelMiseAJour(m_app);
}

bool Programme::OuvreMagasin() {
  m_session = m_magasin.QVOpenSession(1);
  if (m_session) return true;
  FermeAccueil();
  return m_app.ReportErreur(ErrIntree, {std::to_string(m_magasin.QVFileErrorCode())});
}

bool Programme::ChoisitCabinet() {
  FermeAccueil();
  return m_app.MessageId(BoutonsOuiNon | IconeQuestion, QuestionNouveauCabinet,
                         {Lisible(m_app.PathCabinet)}) == RepOui;
}

bool Programme::OuvreCompta() {
  if (m_magasin.QVIsComptaPassword(m_app.PathCabinet)) {
    FermeAccueil();
    CDialogPassword motDePasse(m_cadre->Contexte(), m_cadre.get());
    return m_compta = motDePasse.Execute();
  }
  // Set before the opening, so that what the recovery has to say is heard.
  m_magasin.QVSetCallback(RappelSession(
      m_app, {.creeExercice =
                  [this](const std::string& nom) {
                    std::string cree = nom;
                    return CDialogNewExercice(m_cadre->Contexte(), cree, m_cadre.get(), nom).Execute();
                  },
              .parent = [this](unsigned wparam,
                               unsigned lparam) { PrevientParent(m_app.ParentWindow, wparam, lparam); },
              .arret = {}}));
  m_compta = m_magasin.QVOpenCompta(m_app.PathCabinet, {});
  if (!m_compta) {
    FermeAccueil();
    m_app.ReportErreur(ErrCabinet,
                       {Lisible(m_app.PathCabinet), m_magasin.QVErreurTexte(m_magasin.QVFileErrorCode())});
    return false;
  }
  m_magasin.QVSetWithQuorbane(m_app.Edition != 2, m_app.Edition);
  return true;
}

bool Programme::ReglagesPerdus() {
  std::string livres;
  const QDir dossier(QFile::decodeName(m_app.PathCabinet.c_str()));
  for (const QString& nom : dossier.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
    if (QFile::exists(dossier.filePath(nom + QStringLiteral("/JOURNAL.dat"))))
      livres += (livres.empty() ? "" : ", ") + De1252(nom);
  if (livres.empty()) return false;
  m_app.ReportErreur(ErrReglagesVides, {Lisible(m_magasin.Reglages().Chemin()), livres});
  return true;
}

void Programme::PremierExercice() {
  FermeAccueil();
  if (m_magasin.GetExercicesRec() == 0) {
    if (ReglagesPerdus()) return;
    CDialogNewExercice nouveau(m_cadre->Contexte(), m_app.NomExercice, m_cadre.get());
    m_premier = nouveau.Execute();
  } else {
    // The password has been asked already; the form asks only while the books are closed.
    CDialogOpenExercice ouvre(m_cadre->Contexte(), true, m_app.NomExercice, m_cadre.get());
    ouvre.Execute();
  }
}

void Programme::OuvreExerciceCourant() {
  m_app.ExerciceOuvert = 0;
  if (m_app.NomExercice.empty()) return;
  const std::string nom = m_app.NomExercice;
  if (!OuvreOuReconstruit(m_cadre->Contexte(), nom)) {
    FermeAccueil();
    m_app.NomExercice.clear();
    m_premier = false;
    return;
  }
  m_cadre->MontreExercice();
  CalculeEcheances(m_cadre->Contexte(), false, [this] { FermeAccueil(); });
  if (m_app.Reglages.IsSauverFenetres()) m_cadre->Restaure();
}

void Programme::ExitInstance() {
  if (!m_session) return;
  m_session = false;
  FermeAccueil();
  if (m_compta) {
    const std::string section = Texte(SecActivite), cle = Texte(CleExercice);
    if (!m_magasin.QVEnLecture() && m_app.Reglages.LitIni(section, cle) != m_app.NomExercice &&
        !m_app.Reglages.EcritIni(section, cle, m_app.NomExercice))
      DitEchecReglages(m_app);
  }
  if (m_cadre) m_cadre->FermeCalculatrice();
  if (!m_magasin.QVCloseSession()) m_app.Dit(m_app.EchecMagasin());
  m_magasin.QVSetCallback({});
  PrevientParent(m_app.ParentWindow, 1, 0);
  if (m_instance) m_instance->Ferme();
}

}  // namespace fenlor
