#include <QListWidget>
#include <QLocalServer>
#include <QLocalSocket>
#include <fstream>

#include "app/gestioncommandes.h"
#include "app/instanceunique.h"
#include "app/lienparent.h"
#include "app/mainframe.h"
#include "app/programme.h"
#include "auto/modeleauto.h"
#include "forms/session/comboexercices.h"
#include "garde/sauvegarde.h"
#include "journal/choixcomptes.h"
#include "outils/uidetest.h"
#include "store/motdepasse.h"

namespace fenlor::test {

namespace fs = std::filesystem;

namespace {

/// Starts the whole program on a practice of its own.
class DemarrageTest : public ::testing::Test {
 protected:
  DemarrageTest() {
    qputenv("XDG_RUNTIME_DIR", m_ailleurs.Chemin().c_str());
    qputenv("FENLOR_AUJOURDHUI", "15/03/2003");
    fs::permissions(m_ailleurs.Chemin(), fs::perms::owner_all);
  }
  ~DemarrageTest() override {
    m_programme.reset();
    qunsetenv("FENLOR_AUJOURDHUI");
  }

  OptionsProgramme Options() const {
    OptionsProgramme options;
    options.ligne.pathCabinet = Cabinet();
    options.accueil = false;
    options.pathProgrammes = m_ailleurs.Chemin();
    options.magasin.dossierRegistre = m_ailleurs.Chemin() + "/utilisateur";
    options.magasin.dossierRegistreMachine = m_ailleurs.Chemin() + "/machine";
    return options;
  }
  bool Demarre() { return Demarre(Options()); }
  bool Demarre(OptionsProgramme options) {
    m_programme.reset();
    m_programme = std::make_unique<Programme>(std::move(options));
    return m_programme->InitInstance();
  }
  void Arrete() {
    m_programme->App().EcranFinDeSession = false;
    m_programme->Cadre().close();
    m_programme->ExitInstance();
    m_programme.reset();
  }
  /// First start: the form proposes the year, Ok creates it, the options follow.
  void PremierDemarrage() {
    robot.Attend("DialogNewExercice", [](QDialog& d) { Clique(Trouve<QAbstractButton>(d, "ok")); });
    robot.Attend("SheetOptions", [](QDialog& d) { Clique(Trouve<QAbstractButton>(d, "ok")); });
    ASSERT_TRUE(Demarre());
  }
  /// That, and its end.
  void PremierSejour() {
    PremierDemarrage();
    Arrete();
  }
  std::string Reglage(const std::string& section, const std::string& cle) const {
    SystemePosix systeme;
    return Profil(systeme, Cabinet() + "/fenlor.ini").Lit(section, cle);
  }
  void EcritReglage(const std::string& section, const std::string& cle, const std::string& valeur) const {
    SystemePosix systeme;
    ASSERT_TRUE(Profil(systeme, Cabinet() + "/fenlor.ini", true).Ecrit(section, cle, valeur));
  }
  /// A box whose text holds `extrait`, answered with the button of that text.
  static std::function<void(QDialog&)> Boite(const char* extrait, const QString& bouton) {
    return [extrait = QString::fromUtf8(extrait), bouton](QDialog& d) {
      const QString tout = Textes(d);
      EXPECT_TRUE(tout.contains(extrait)) << tout.toStdString();
      Clique(Bouton(d, bouton));
    };
  }
  const std::string& Cabinet() const { return m_cabinet.Chemin(); }
  CFenlorApp& App() { return m_programme->App(); }

  DossierTemporaire m_cabinet, m_ailleurs;
  std::unique_ptr<Programme> m_programme;
  Robot robot;
};

}  // namespace

TEST_F(DemarrageTest, DuPremierLancementALaFermeture) {
  PremierDemarrage();
  EXPECT_EQ(App().NomExercice, "2003");
  EXPECT_EQ(+App().ExerciceOuvert, 1u);
  EXPECT_EQ(m_programme->Cadre().windowTitle(), QStringLiteral("Fenlor Exercice : 2003"));
  EXPECT_EQ(m_programme->Cadre().Combo().count(), 1);
  Arrete();
  EXPECT_EQ(Reglage("Activite", "Exercice"), "2003");
  EXPECT_EQ(Reglage("Fenlor", "Version"), "5");

  // Found as it was left: no form, no question.
  ASSERT_TRUE(Demarre());
  EXPECT_EQ(App().NomExercice, "2003");
  m_programme->Cadre().Table().Execute(CmdFermerExercice);
  EXPECT_EQ(m_programme->Cadre().windowTitle(), QStringLiteral("Fenlor"));
  Arrete();
  EXPECT_EQ(Reglage("Activite", "Exercice"), "") << "none was open: the next start asks";
  robot.Attend("DialogOpenExercice", [](QDialog& d) { d.reject(); });
  ASSERT_TRUE(Demarre());
  EXPECT_EQ(App().NomExercice, "");
}

TEST_F(DemarrageTest, SurUneAutreMachine) {
  PremierDemarrage();
  const DossierTemporaire copies{true}, neuve;
  SauvegardeFaite faite;
  ASSERT_FALSE(Sauvegarde(App(), {copies.Chemin(), true, {}}, faite));
  Arrete();

  OptionsProgramme options = Options();
  options.ligne.pathCabinet = neuve.Chemin();
  robot.Attend("DialogNewExercice", [](QDialog& d) { d.reject(); });
  ASSERT_TRUE(Demarre(options));
  robot.Attend("WizardRestauration", [&](QDialog& d) {
    Trouve<QComboBox>(d, "dossier").setCurrentText(QString::fromStdString(copies.Chemin()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Trouve<QAbstractButton>(d, "suivant").isEnabled(); }, 30'000));
    for (const char* nom : {"suivant", "faire", "fermer"}) Clique(Trouve<QAbstractButton>(d, nom));
  });
  const std::string bouton = "commande" + std::to_string(CmdRestaurerCabinet);
  Clique(Trouve<QAbstractButton>(m_programme->Cadre(), bouton.c_str()));
  EXPECT_EQ(m_programme->Cadre().Combo().count(), 1);
}

/// At the start, when an exercice is opened, when another is chosen in the bar: each morning once.
TEST_F(DemarrageTest, LesEcheancesViennentALOuverture) {
  PremierDemarrage();
  for (const bool annoncer : {true, false}) {
    FicheAuto fiche = NouvelleAuto(App());
    fiche.compte = ComptesParCode(App(), Recette).front().compte;
    fiche.tresorerie = ComptesParCode(App(), Tresorerie).front().compte;
    fiche.montants.ttc = fiche.montants.professionnel = 10;
    fiche.date = FaitDate(15, 3, 2003);
    fiche.annoncer = annoncer;
    fiche.periodicite = 2;
    fiche.nombre = PaiementsMax;
    ASSERT_FALSE(EnregistreFiche(App(), fiche));
  }
  const auto ecritures = [this] {
    Mouvement entete{};
    u32 nombre = 0;
    while (App().Magasin.ReadMouvements(App().PathExercice, nombre + 1, entete)) ++nombre;
    return nombre;
  };
  Arrete();
  const auto annule = [](QDialog& d) { Clique(Trouve<QAbstractButton>(d, "annuler")); };
  qputenv("FENLOR_AUJOURDHUI", "16/03/2003");
  robot.Attend("DialogAutoEcheance", annule);
  ASSERT_TRUE(Demarre());
  EXPECT_EQ(ecritures(), 1u);

  App().Magasin.FixeAujourdhui(FaitDate(22, 3, 2003));
  robot.Attend("DialogOpenExercice", [](QDialog& d) {
    Trouve<QListWidget>(d, "exercices").setCurrentRow(0);
    Clique(Trouve<QAbstractButton>(d, "ok"));
  });
  robot.Attend("DialogAutoEcheance", annule);
  m_programme->Cadre().Table().Execute(CmdOuvrirExercice);
  EXPECT_EQ(ecritures(), 2u);

  App().Magasin.FixeAujourdhui(FaitDate(29, 3, 2003));
  robot.Attend("DialogAutoEcheance", annule);
  for (const char* fois : {"once", "nothing more that day"}) {
    m_programme->Cadre().Table().Execute(CmdFermerExercice);
    Q_EMIT m_programme->Cadre().Combo().activated(0);
    EXPECT_EQ(ecritures(), 3u) << fois;
  }
  Arrete();
  EXPECT_EQ(Reglage("2003", "Consultation"), "29/03/2003");
}

TEST_F(DemarrageTest, RenoncerAuPremierExerciceLaisseLaFenetre) {
  robot.Attend("DialogNewExercice", [](QDialog& d) { Clique(Trouve<QAbstractButton>(d, "annuler")); });
  ASSERT_TRUE(Demarre());
  EXPECT_EQ(App().NomExercice, "");
  EXPECT_TRUE(m_programme->Cadre().isVisible());
  EXPECT_FALSE(m_programme->Cadre().Table().Action(CmdOptions)->isEnabled());
}

TEST_F(DemarrageTest, LeMotDePasseGardeLaPorte) {
  PremierSejour();
  EcritReglage("Activite", "Mot de Passe", MotDePasseBrouille("Secret"));
  robot.Attend("DialogPassword", [](QDialog& d) { Clique(Trouve<QAbstractButton>(d, "annuler")); });
  EXPECT_FALSE(Demarre());
  robot.Attend("DialogPassword", [&](QDialog& d) {
    QLineEdit& champ = *d.findChild<QLineEdit*>();
    Tape(champ, QStringLiteral("secret"));
    Clique(Trouve<QAbstractButton>(d, "ok"));
  });
  ASSERT_TRUE(Demarre());
  EXPECT_EQ(App().NomExercice, "2003");
  EXPECT_FALSE(App().Magasin.QVHasCallback());
}

TEST_F(DemarrageTest, ExerciceInutilisable) {
  PremierSejour();
  fs::rename(Cabinet() + "/2003", Cabinet() + "/ailleurs");
  robot.Attend("DialogMessage", Boite("Le répertoire de l'exercice est invalide !", QStringLiteral("&Ok")));
  ASSERT_TRUE(Demarre());
  EXPECT_EQ(App().NomExercice, "");
  EXPECT_EQ(+App().ExerciceOuvert, 0u);
  EXPECT_EQ(m_programme->Cadre().Combo().count(), 1) << "the name stays in the list";
  EXPECT_EQ(m_programme->Cadre().Combo().currentIndex(), -1);
}

TEST_F(DemarrageTest, DesClesEndommageesSontDitesUneFois) {
  PremierSejour();
  const std::string idx = Cabinet() + "/2003/COMPTES.idx";
  const auto temps = fs::last_write_time(idx);
  std::fstream(idx, std::ios::in | std::ios::out | std::ios::binary).seekp(-1, std::ios::end).put('x');
  fs::last_write_time(idx, temps);
  robot.Attend("DialogMessage", Boite("COMPTES.idx est endommagé", QStringLiteral("&Ok")));
  ASSERT_TRUE(Demarre());
  Arrete();
  ASSERT_TRUE(Demarre());
}

TEST_F(DemarrageTest, UnFichierEndommageSeReconstruitEtLExerciceSOuvre) {
  PremierSejour();
  std::fstream(Cabinet() + "/2003/COMPTES.dat", std::ios::in | std::ios::out | std::ios::binary)
      .seekp(1100)
      .put('\x7f');
  robot.Attend("DialogMessage", Boite("COMPTES.dat) endommagé", QStringLiteral("&Ok")));
  robot.Attend("DialogMessage", Boite("Faut-il reconstruire", QStringLiteral("&Oui")));
  robot.Attend("DialogIndex", [](QDialog& f) { Clique(Bouton(f, QStringLiteral("&Ok"))); });
  robot.Attend("DialogMessage", Boite("corrigés pendant", QStringLiteral("&Ok")));
  ASSERT_TRUE(Demarre());
  EXPECT_EQ(App().NomExercice, "2003");
  EXPECT_EQ(+App().ExerciceOuvert, 1u);
}

TEST_F(DemarrageTest, LaNoteDUnArretEtDesReglagesChangesSontDits) {
  PremierSejour();
  std::ofstream(Cabinet() + "/fenlor.ini", std::ios::app | std::ios::binary) << "[Ajout]\r\n";
  OptionsProgramme options = Options();
  options.note = "Erreur 3441 : le fichier JOURNAL.dat";
  robot.Attend("DialogMessage", Boite("modifié hors de Fenlor.\nErreur 3441", QStringLiteral("&Ok")));
  ASSERT_TRUE(Demarre(options));
}

TEST_F(DemarrageTest, DesReglagesVidesNeCachentPasLesLivres) {
  PremierSejour();
  EcritFichier(Cabinet() + "/fenlor.ini", std::string(300, '\0') + "[Activ");
  robot.Attend("DialogMessage", Boite("2003", QStringLiteral("&Ok")));
  ASSERT_TRUE(Demarre());
  EXPECT_EQ(App().NomExercice, "");
  EXPECT_TRUE(fs::exists(Cabinet() + "/2003/JOURNAL.dat"));
}

TEST_F(DemarrageTest, LeCabinetQuiDisparaitNArretePasLeProgramme) {
  PremierDemarrage();
  fs::rename(Cabinet(), Cabinet() + ".parti");
  robot.Attend("SheetOptions", [&](QDialog& d) {
    robot.Attend("DialogMessage", Boite("Les réglages n'ont pas pu être enregistrés", QStringLiteral("&Ok")));
    Tape(Trouve<QLineEdit>(d, "siret"), QStringLiteral("123"));
    Clique(Trouve<QAbstractButton>(d, "ok"));
    EXPECT_TRUE(d.isVisible()) << "what was typed is still there";
    Clique(Trouve<QAbstractButton>(d, "annuler"));
  });
  m_programme->Cadre().Table().Execute(CmdOptions);
  robot.Attend("DialogMessage", Boite("Il n'y a pas d'exercices !", QStringLiteral("&Ok")));
  m_programme->Cadre().Table().Execute(CmdOuvrirExercice);

  // The disk is back, and so are the books.
  fs::rename(Cabinet() + ".parti", Cabinet());
  robot.Attend("DialogOpenExercice", [](QDialog& d) { Clique(Trouve<QAbstractButton>(d, "ok")); });
  m_programme->Cadre().Table().Execute(CmdOuvrirExercice);
  EXPECT_EQ(App().NomExercice, "2003");
  EXPECT_EQ(+App().ExerciceOuvert, 1u);
}

TEST_F(DemarrageTest, CabinetTenuParUnAutre) {
  PremierSejour();
  QVAPI autre;
  ASSERT_TRUE(autre.QVOpenSession(1) && autre.QVOpenCompta(Cabinet(), {}));
  robot.Attend("DialogMessage", Boite("Ce cabinet est déjà ouvert (processus", QStringLiteral("&Ok")));
  EXPECT_FALSE(Demarre() || m_programme->AutreInstance());
}

TEST_F(DemarrageTest, LaVariableDonneLeCabinetSansDossier) {
  PremierSejour();
  OptionsProgramme options = Options();
  options.ligne.pathCabinet.reset();
  qputenv("FENLOR_CABINET", Cabinet().c_str());
  EXPECT_TRUE(Demarre(options));
  qunsetenv("FENLOR_CABINET");
  EXPECT_EQ(App().PathCabinet, Cabinet());
}

TEST_F(DemarrageTest, UnDossierInconnuEstDemande) {
  OptionsProgramme options = Options();
  options.ligne.pathCabinet = Cabinet() + "/nouveau/ici";
  robot.Attend("DialogMessage", Boite("Faut-il y créer un nouveau cabinet ?", QStringLiteral("&Non")));
  EXPECT_FALSE(Demarre(options) || fs::exists(Cabinet() + "/nouveau"));
}

TEST_F(DemarrageTest, UneInstanceParCabinet) {
  PremierDemarrage();
  const QString chemin = QString::fromStdString(Cabinet());
  int appels = 0;
  InstanceUnique premiere(chemin + QStringLiteral("/a"));
  ASSERT_TRUE(premiere.Ecoute([&] { ++appels; }));
  const InstanceUnique voisine(chemin + QStringLiteral("/b"));
  EXPECT_FALSE(voisine.AppelleAutre());
  // The one who answers needs its event loop: ask from a raw socket.
  QLocalSocket prise;
  prise.connectToServer(premiere.Nom());
  ASSERT_TRUE(prise.waitForConnected(1000));
  prise.write("montre\n");
  prise.flush();
  EXPECT_TRUE(QTest::qWaitFor([&] { return appels == 1 && prise.canReadLine(); }, 5000));
  EXPECT_EQ(prise.readLine(), "ok\n");
}

TEST_F(DemarrageTest, LApplicationMereEstPrevenueDeLaFin) {
  QLocalServer ecoute;
  OptionsProgramme options = Options();
  options.ligne.parent = 900000u + static_cast<unsigned>(getpid());
  options.ligne.edition = "Quorbane";
  ASSERT_TRUE(ecoute.listen(NomPriseParent(*options.ligne.parent)));
  robot.Attend("DialogNewExercice", [](QDialog& d) { d.reject(); });
  ASSERT_TRUE(Demarre(options));
  EXPECT_EQ(+App().Edition, 0);
  Arrete();
  ASSERT_TRUE(ecoute.waitForNewConnection(2000));
  QLocalSocket* prise = ecoute.nextPendingConnection();
  ASSERT_TRUE(prise->canReadLine() || prise->waitForReadyRead(2000));
  EXPECT_EQ(prise->readAll(), "2023 1 0\n");
}

}  // namespace fenlor::test
