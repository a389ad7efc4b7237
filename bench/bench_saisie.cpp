// bench_saisie [ENTRIES [MONTH]]
// The journal window and its form at work, offscreen:
// - painting a screen of rows of a month with 100 entries and with so many (MONTH, 10000): rows read
//   and time of each; the second must not depend on the number of rows;
// - saving so many entries (ENTRIES, 200) typed into the form in that window, the windows of journals,
//   treasury and accounts refreshed after each: syncs of the disk and processor time of one.
// The status is 1 when a bar is missed (with the default sizes): one sync, 20 ms.
#include <QAbstractButton>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <filesystem>
#include <memory>

#include "classeur.h"
#include "dialoguemuet.h"
#include "fenetresbanc.h"
#include "forms/journal/dialogecriture.h"
#include "forms/journal/ecritureview.h"
#include "forms/journal/ecrlist.h"
#include "forms/master/comptesview.h"

namespace fenlor::bench {

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr unsigned MoisPlein = 3, MoisCourt = 5, Annee2003 = 2003;
constexpr double BarreProcesseur = 20e-3;

class Cabinet {
 public:
  explicit Cabinet(const std::string& dossier)
      : m_classeur(dossier), m_app(m_classeur.Magasin(), m_dialogue), m_ui{m_app, m_bureau, m_dessin} {
    QVAPI& magasin = m_classeur.Magasin();
    m_app.PathCabinet = magasin.PathCabinet();
    m_app.ExerciceOuvert = 1;
    m_app.TauxEuroCourant = magasin.GetTauxEuro(FaitDate(1, 1, Annee2003));
    ChargePreferences(m_dessin, m_app, QApplication::palette());
  }
  void Remplit(unsigned mois, unsigned nombre) {
    QVAPI& magasin = m_classeur.Magasin();
    QVAPI::Unite unite(magasin);
    for (unsigned n = 0; n < nombre; ++n) {
      EcrSimple rec = m_classeur.Ecriture(m_serie++);
      while (rec.Journal != JournalRecettes) rec = m_classeur.Ecriture(m_serie++);
      rec.Date = FaitDate(1 + n * 28 / nombre, mois, Annee2003);
      rec.Ligne = n + 1;
      if (!magasin.AddEcrSimple(magasin.PathExercice(), rec)) Echec("an entry is refused");
    }
    if (!unite.Valide()) Echec("the unit is undone");
  }
  template <class V, class... Arguments>
  V& Ouvre(Arguments&&... arguments) {
    auto vue = std::make_unique<V>(m_ui, std::forward<Arguments>(arguments)...);
    V& ouverte = *vue;
    m_vues.push_back(std::move(vue));
    ouverte.resize(1000, 600);
    ouverte.Charge();
    ouverte.show();
    QApplication::processEvents();
    return ouverte;
  }
  /// The state in which the next journal window comes up.
  void PoseMois(unsigned mois) {
    const std::string etat = "< Tous >, " + std::to_string(mois - 1) + ", Toutes, 0";
    if (!m_app.Reglages.EcritIniExercice({}, "Recettes", etat)) Echec("no settings");
  }
  void FermeTout() { m_vues.clear(); }
  CFenlorApp& App() { return m_app; }
  ContexteUi& Ui() { return m_ui; }

 private:
  Classeur m_classeur;
  DialogueMuet m_dialogue;
  SeanceDuBanc m_app;
  SansCadre m_bureau;
  Preferences m_dessin;
  ContexteUi m_ui;
  std::vector<std::unique_ptr<Vue>> m_vues;
  unsigned m_serie = 0;
};

struct Ecran {
  double temps = 0;
  unsigned lues = 0;
  int rangees = 0;
};

/// Turns pages of a month's list.
Ecran MesurePeinture(Cabinet& cabinet, unsigned mois) {
  cabinet.PoseMois(mois);
  auto& vue = cabinet.Ouvre<CEcritureView>(JournalRecettes);
  CEcrList& liste = vue.Liste();
  std::vector<double> temps;
  Ecran ecran;
  ecran.rangees = vue.GetEcrCount();
  for (int tour = 0; tour <= 20; ++tour) {
    const auto action = tour % 2 ? QAbstractSlider::SliderPageStepAdd : QAbstractSlider::SliderPageStepSub;
    liste.Redessine();
    liste.Modele().NbLectures();
    Peinture peinture(*liste.viewport());
    const double duree = Duree([&] {
      liste.verticalScrollBar()->triggerAction(action);
      peinture.Attend();
    });
    if (tour == 0) continue;
    temps.push_back(duree);
    ecran.lues = std::max(ecran.lues, liste.Modele().NbLectures());
  }
  ecran.temps = Mediane(temps);
  cabinet.FermeTout();
  return ecran;
}

template <class T>
T& Champ(QWidget& forme, const char* nom) {
  T* champ = forme.findChild<T*>(QLatin1String(nom));
  if (!champ) Echec(std::string("no field ") + nom);
  return *champ;
}

void Tape(QWidget& forme, const char* nom, const QString& texte) {
  auto& champ = Champ<QLineEdit>(forme, nom);
  champ.setFocus(Qt::TabFocusReason);
  champ.selectAll();
  QTest::keyClicks(&champ, texte);
}

struct Sauvegardes {
  double processeur = 0, pire = 0, horloge = 0;
  double synchros = 0;
};

Sauvegardes MesureSaisie(Cabinet& cabinet, unsigned ecritures) {
  cabinet.PoseMois(MoisPlein);
  auto& vue = cabinet.Ouvre<CEcritureView>(JournalRecettes);
  cabinet.Ouvre<CEcritureView>(JournalDepenses);
  cabinet.Ouvre<CEcritureView>(JournalOD);
  cabinet.Ouvre<CTresorerieView>();
  cabinet.Ouvre<CPlanView>(Recette);
  cabinet.Ouvre<CPlanView>(Depense);
  cabinet.Ouvre<CPlanComptableView>();
  const std::vector<CompteOffert> comptes = ComptesParCode(cabinet.App(), Recette);
  const std::vector<CompteOffert> tresorerie = ComptesParCode(cabinet.App(), Tresorerie);
  if (comptes.empty() || tresorerie.empty()) Echec("no accounts");

  OuvertureEcriture ouverture;
  ouverture.journal = JournalRecettes;
  ouverture.date = FaitDate(28, MoisPlein, Annee2003);
  ouverture.tresorerie = tresorerie.front().compte;
  ouverture.proprietaire = &vue;
  CDialogEcriture forme(cabinet.Ui(), ouverture);
  forme.setModal(false);
  forme.show();
  forme.activateWindow();
  QApplication::processEvents();

  std::vector<double> processeur, horloge;
  const u64 synchros = cabinet.App().Magasin.NbSynchros();
  const int avant = vue.GetEcrCount();
  for (unsigned i = 0; i < ecritures; ++i) {
    Tape(forme, "code", QString::fromStdString(comptes.front().code));
    Champ<QWidget>(forme, "libelle").setFocus(Qt::TabFocusReason);
    Tape(forme, "ttc", QString::number(20 + i % 50));
    QApplication::processEvents();
    const u32 derniere = forme.Derniere();
    const double debut = Secondes(CLOCK_PROCESS_CPUTIME_ID);
    horloge.push_back(Duree([&] {
      Champ<QAbstractButton>(forme, "ok").click();
      QApplication::processEvents();
    }));
    processeur.push_back(Secondes(CLOCK_PROCESS_CPUTIME_ID) - debut);
    if (forme.Derniere() == derniere) Echec("an entry was not saved");
  }
  if (vue.GetEcrCount() != avant + static_cast<int>(ecritures)) Echec("the window did not follow");
  const auto ecart = static_cast<double>(cabinet.App().Magasin.NbSynchros() - synchros);
  return {Mediane(processeur), *std::max_element(processeur.begin(), processeur.end()), Mediane(horloge),
          ecart / ecritures};
}

int Principal(unsigned ecritures, unsigned mois, bool juge) {
  std::string dossier = (std::filesystem::temp_directory_path() / "fenlor-bench-XXXXXX").string();
  if (!mkdtemp(dossier.data())) Echec("no temporary directory");
  Sauvegardes s;
  {
    Cabinet cabinet(dossier);
    cabinet.Remplit(MoisPlein, mois);
    cabinet.Remplit(MoisCourt, 100);
    const Ecran court = MesurePeinture(cabinet, MoisCourt);
    const Ecran plein = MesurePeinture(cabinet, MoisPlein);
    std::printf("a screen of %d rows: %s, %u entries read;  of %d rows: %s, %u read;  ratio %.2f\n",
                court.rangees, EnTemps(court.temps).c_str(), court.lues, plein.rangees,
                EnTemps(plein.temps).c_str(), plein.lues, plein.temps / court.temps);
    s = MesureSaisie(cabinet, ecritures);
    cabinet.FermeTout();
  }
  std::filesystem::remove_all(dossier);
  std::printf(
      "saving one entry among %u, seven windows refreshed: processor %s (worst %s), clock %s, %.2f syncs\n",
      mois, EnTemps(s.processeur).c_str(), EnTemps(s.pire).c_str(), EnTemps(s.horloge).c_str(), s.synchros);
  if (!juge) return 0;
  const bool tenue = s.synchros <= 1.0 && s.processeur <= BarreProcesseur;
  std::printf("bars: 1 sync, %s: %s\n", EnTemps(BarreProcesseur).c_str(), tenue ? "ok" : "MISSED");
  return tenue ? 0 : 1;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  fenlor::bench::SansEcran();
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  const QStringList arguments = QApplication::arguments().mid(1);
  const unsigned ecritures = arguments.isEmpty() ? 200 : arguments[0].toUInt();
  const unsigned mois = arguments.size() < 2 ? 10'000 : arguments[1].toUInt();
  if (ecritures == 0 || mois == 0) {
    std::fprintf(stderr, "bench_saisie [ENTRIES [MONTH]]\n");
    return 2;
  }
  return fenlor::bench::Principal(ecritures, mois, arguments.isEmpty());
}
