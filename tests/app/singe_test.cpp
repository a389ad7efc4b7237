// FENLOR_SINGE=3600 lets the monkey work for so many seconds instead of a few hundred acts,
// FENLOR_SINGE_GRAINE gives its seed, FENLOR_SINGE_JOURNAL the file of its log, FENLOR_SINGE_REJOUE a log to
// play again.
#include <pthread.h>
#include <QApplication>
#include <QEventLoop>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <thread>

#include "app/gestioncommandes.h"
#include "app/mainframe.h"
#include "app/programme.h"
#include "app/singe.h"
#include "outils/cabinetdetest.h"
#include "session/demo.h"
#include "session/exercices.h"
#include "session/verification.h"

// Print and page dialogs that are rejected as they open leave texts inside the toolkit.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libQt6Widgets\n"; }

namespace fenlor::test {

namespace fs = std::filesystem;
using Horloge = std::chrono::steady_clock;

namespace {

constexpr auto patience = std::chrono::seconds(20);  ///< of the watchdog
constexpr auto tournee = std::chrono::minutes(5);    ///< between two verifications of a long run
constexpr unsigned long gestesCourts = 700;

std::string Variable(const char* nom) { return qgetenv(nom).toStdString(); }

/// Ends the program when the event loop stands still, in the thread that stands: a core dump, or
/// the sanitizer with handle_abort=1, then shows where.
class ChienDeGarde {
 public:
  ChienDeGarde() : m_garde(pthread_self()), m_fil([this] { Veille(); }) {}
  ~ChienDeGarde() {
    m_fin = true;
    m_fil.join();
  }
  void Vit() { m_vie = Horloge::now().time_since_epoch().count(); }

 private:
  void Veille() {
    Vit();
    while (!m_fin) {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      if (Horloge::now().time_since_epoch() - Horloge::duration(m_vie.load()) < patience) continue;
      std::cerr << "the event loop stands still\n";
      pthread_kill(m_garde, SIGABRT);
      return;
    }
  }
  std::atomic<bool> m_fin = false;
  std::atomic<Horloge::rep> m_vie = Horloge::now().time_since_epoch().count();
  const pthread_t m_garde;
  std::thread m_fil;
};

/// The practice of the demo, the program on it, and the monkey.
class SingeTest : public ::testing::Test {
 protected:
  SingeTest() {
    const std::string ailleurs = m_ailleurs.Chemin();
    for (const char* nom : {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
      qputenv(nom, ailleurs.c_str());
    qputenv("FENLOR_AUJOURDHUI", "15/03/2003");
    fs::permissions(ailleurs, fs::perms::owner_all);
    m_dossier = fs::current_path();
    fs::current_path(ailleurs);
    QApplication::setQuitOnLastWindowClosed(false);
  }
  ~SingeTest() override {
    m_programme.reset();
    qunsetenv("FENLOR_AUJOURDHUI");
    fs::current_path(m_dossier);
  }

  OptionsQVAPI Magasin() const {
    OptionsQVAPI options;
    options.dossierRegistre = m_ailleurs.Chemin() + "/utilisateur";
    options.dossierRegistreMachine = m_ailleurs.Chemin() + "/machine";
    return options;
  }
  void FaitDemo() {
    QVAPI magasin(Magasin());
    CFenlorApp app(magasin, m_boite);
    fs::remove_all(Cabinet());
    fs::create_directories(Cabinet());
    ASSERT_TRUE(magasin.QVOpenSession(1) && magasin.QVOpenCompta(Cabinet(), {}));
    app.PathCabinet = Cabinet();
    ASSERT_FALSE(RemplitDemo(app, [](const ResumeDemo&) {}));
    magasin.QVCloseSession();
  }
  /// Opens the practice anew, without windows, and looks at every exercice.
  void Verifie() {
    SystemePosix systeme;
    Profil(systeme, Cabinet() + "/fenlor.ini").Ecrit("Activite", "Mot de Passe", "");
    bool reste = false;
    {
      QVAPI magasin(Magasin());
      CFenlorApp app(magasin, m_boite);
      app.PathCabinet = Cabinet();
      ASSERT_TRUE(magasin.QVOpenSession(1) && magasin.QVOpenCompta(Cabinet(), {}))
          << magasin.QVErreurTexte(magasin.QVFileErrorCode());
      for (const LigneExercice& exercice : LignesExercices(app)) {
        ASSERT_FALSE(OuvreExercice(app, exercice.nom)) << exercice.nom;
        reste = reste || exercice.nom == "2003";
        VerifieExercice(app, [&](const std::string& constat) {
          ADD_FAILURE() << exercice.nom << ": " << VersUtf8(constat);
        });
        FermeExercice(app);
      }
      magasin.QVCloseSession();
    }
    if (!reste) FaitDemo();  // it has deleted them: that was its right
  }
  /// One stay in the program: start, acts until `fini`, end.
  void Sejourne(Singe& singe, ChienDeGarde& garde, const std::function<bool()>& fini) {
    QEventLoop boucle;
    bool quitte = false;
    singe.PoseCadre([this] { return m_cadre; });
    OptionsProgramme options;
    options.ligne.pathCabinet = Cabinet();
    options.accueil = false;
    options.pathProgrammes = m_ailleurs.Chemin();
    options.magasin = Magasin();
    m_programme = std::make_unique<Programme>(std::move(options));
    bool ouvert = true;
    singe.Commence(
        [&] {
          garde.Vit();
          return fini() || !ouvert || (m_cadre && !m_cadre->isVisible());
        },
        [&] {
          quitte = true;
          boucle.quit();
        });
    ouvert = m_programme->InitInstance();
    if (ouvert) {
      m_cadre = &m_programme->Cadre();
      // They start programs: this one again, the browser, the update.
      for (const unsigned numero : {CmdDemonstration, CmdPageWeb, CmdCourrier, CmdMiseAJour})
        m_cadre->Table().Action(numero)->disconnect();
    }
    if (!quitte) boucle.exec();
    m_cadre = nullptr;
    m_programme->App().EcranFinDeSession = false;
    if (ouvert) m_programme->Cadre().close();
    m_programme->ExitInstance();
    m_programme.reset();
  }
  void Travaille(u_int64_t graine, unsigned secondes) {
    const std::string choisi = Variable("FENLOR_SINGE_JOURNAL"), rejoue = Variable("FENLOR_SINGE_REJOUE");
    Singe singe(graine, choisi);
    if (!rejoue.empty()) singe.Rejoue(rejoue);
    std::cout << "seed " << graine << std::endl;
    ChienDeGarde garde;
    FaitDemo();
    const auto debut = Horloge::now();
    const auto fini = [&] {
      if (!rejoue.empty()) return singe.Epuise();
      return secondes ? Horloge::now() - debut > std::chrono::seconds(secondes)
                      : singe.Gestes() >= gestesCourts;
    };
    do {
      const auto entree = Horloge::now();
      Sejourne(singe, garde, [&] { return fini() || Horloge::now() - entree > tournee; });
      garde.Vit();
      Verifie();
      std::cout << singe.Gestes() << " acts, " << singe.Vues().size() << " forms seen" << std::endl;
    } while (!fini() && !HasFailure());
    EXPECT_FALSE(singe.Vues().empty());
  }
  std::string Cabinet() const { return m_ailleurs.Chemin() + "/cabinet"; }

  DossierTemporaire m_ailleurs;
  fs::path m_dossier;
  DialogueScript m_boite;
  std::unique_ptr<Programme> m_programme;
  CMainFrame* m_cadre = nullptr;
};

}  // namespace

TEST_F(SingeTest, GraineFixe) {
  const std::string graine = Variable("FENLOR_SINGE_GRAINE"), duree = Variable("FENLOR_SINGE");
  Travaille(graine.empty() ? 20031 : std::stoull(graine), static_cast<unsigned>(std::atoi(duree.c_str())));
}

TEST_F(SingeTest, GraineAuHasard) {
  if (!Variable("FENLOR_SINGE").empty() || !Variable("FENLOR_SINGE_REJOUE").empty())
    GTEST_SKIP() << "the other one works";
  Travaille(std::random_device{}(), 0);
}

}  // namespace fenlor::test
