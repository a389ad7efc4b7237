// bench_listes [RUNS [ACCOUNTS...]]
// Opens and sorts the chart of accounts with so many accounts (5000 and 50000) beside an
// empty list window of the same run, and says how many rows were read to paint the window and to
// turn a page. Offscreen, unless QT_QPA_PLATFORM says otherwise; the practices are made through the
// store in a temporary directory, removed at the end unless something fails. It judges nothing of that.
// Then it types a word into the quick filter of 10000 accounts, key by key, in processor time, beside a plain
// scan of their records. The bar: 50 ms a key. Then it paints a screen of the register of assets, each row
// read anew, with 2000 assets beside 20. The bar: at most 1.5 times as long; the status is 1 when a bar is
// missed, unless the sizes are other ones.
#include <QApplication>
#include <QLineEdit>
#include <QScrollBar>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "core/btfiles.h"
#include "core/texte.h"
#include "dialoguemuet.h"
#include "fenetresbanc.h"
#include "forms/assets/immolist.h"
#include "forms/assets/immoview.h"
#include "forms/master/comptesview.h"
#include "master/comptes.h"
#include "mesures.h"
#include "store/magasincles.h"
#include "store/texte1252.h"

namespace fenlor::bench {

namespace {

constexpr int Designation = 2, Solde = 5;  // columns of the chart
constexpr unsigned PeuDeBiens = 20, Biens = 2000, PeinturesParTour = 20;
constexpr double BarreRegistre = 1.5;
constexpr unsigned ComptesFiltres = 10'000;
constexpr double BarreFiltreMs = 50;

/// A practice of its own with so many accounts and assets.
class Cabinet {
 public:
  Cabinet(const std::string& dossier, unsigned comptes, unsigned biens = 0) {
    OptionsQVAPI options;
    options.cles = &m_cles;
    options.dossierRegistre = options.dossierRegistreMachine = dossier + "/registre";
    m_magasin = std::make_unique<QVAPI>(options);
    m_app = std::make_unique<CFenlorApp>(*m_magasin, m_dialogue);
    m_app->PathCabinet = dossier + "/cabinet";
    std::filesystem::create_directories(m_app->PathCabinet);
    const Date debut = FaitDate(1, 1, 2003), fin = FaitDate(31, 12, 2003);
    const bool ouvert = m_magasin->QVOpenSession(1) && m_magasin->QVOpenCompta(m_app->PathCabinet, {}) &&
                        m_magasin->QVCreateExercice("2003", debut, fin, true, false) &&
                        m_magasin->QVOpenExercice("2003");
    if (!ouvert) Echec(m_magasin->QVErreurTexte(m_magasin->QVFileErrorCode()));
    m_app->NomExercice = "2003";
    m_app->PathExercice = m_magasin->PathExercice();
    m_app->ExerciceOuvert = 1;
    Remplit(comptes);
    Equipe(biens);
    ChargePreferences(m_dessin, *m_app, QApplication::palette());
    m_ui = std::make_unique<ContexteUi>(ContexteUi{*m_app, m_cadre, m_dessin});
  }
  ~Cabinet() {
    m_app.reset();
    m_magasin->QVCloseSession();
  }
  Cabinet(const Cabinet&) = delete;
  Cabinet& operator=(const Cabinet&) = delete;
  ContexteUi& Ui() { return *m_ui; }

 private:
  /// Receipts and expenses whose names and totals come in no order.
  void Remplit(unsigned comptes) {
    static const char* const mots[] = {"Honoraires", "Loyer",     "Fournitures",
                                       "Carburant",  "Assurance", "Cotisations"};
    CPlan plan(*m_app, m_app->PathExercice);
    if (!plan.OpenFile()) Echec("no chart");
    QVAPI::Unite unite(*m_magasin);
    char texte[81];
    for (u32 i = 0, alea = 12345; i < comptes; ++i) {
      alea = alea * 1664525u + 1013904223u;
      plan.ClearRec();
      std::snprintf(texte, sizeof texte, "%c8%08u", i % 2 ? '6' : '7', i);
      PoseTexte(plan.Rec->Compte, texte);
      std::snprintf(texte, sizeof texte, "C%07u", i);
      PoseTexte(plan.Rec->Code, texte);
      std::snprintf(texte, sizeof texte, "%s %05u du cabinet", mots[(alea >> 24) % 6], (alea >> 8) % 100000u);
      PoseTexte(plan.Rec->Designation, texte);
      plan.Rec->Type = i % 2 ? Depense : Recette;
      plan.Rec->PartPro = 100;
      plan.Rec->CreditEuro = (alea >> 4) % 1000000u / 100.0;
      if (!plan.Add()) Echec("account refused");
    }
    if (!unite.Valide()) Echec("accounts not saved");
  }

  /// Bought in the same year, so that each row costs the same.
  void Equipe(unsigned biens) {
    CImmobilisations fichier(*m_app, m_app->PathCabinet);
    if (!fichier.OpenFile()) Echec("no register");
    QVAPI::Unite unite(*m_magasin);
    for (u32 i = 1; i <= biens; ++i) {
      Immobilisation bien{};
      bien.Numero = i;
      PoseTexte(bien.Designation, "Equipement du cabinet " + std::to_string(i));
      bien.DateAchat = FaitDate(1 + i % 28, 1 + i % 12, 1993);
      bien.PrixEuro = bien.ValeurAmortissableEuro = 1000 + i;
      bien.Duree = 20;
      bien.TauxAnnuel = 5;
      if (!m_magasin->WriteImmobilisations(bien)) Echec("asset refused");
    }
    if (!unite.Valide()) Echec("assets not saved");
  }

  FabriqueLmdb m_cles;
  DialogueMuet m_dialogue;
  std::unique_ptr<QVAPI> m_magasin;
  std::unique_ptr<CFenlorApp> m_app;
  SansCadre m_cadre;
  Preferences m_dessin;
  std::unique_ptr<ContexteUi> m_ui;
};

/// A list window that shows nothing in the same columns.
class ListeVide : public CZNListView {
 public:
  explicit ListeVide(ContexteUi& contexte) : CZNListView(contexte, "Vide", 0) {
    Table().Definit<Plan>(ColonnesComptes(contexte.App, ListeComptes::PlanComptable),
                          [](ModeleListe::Donnee, Plan&) { return false; });
  }

 protected:
  void FillList() override { Table().Modele().Vide(); }
};

struct Mesure {
  std::vector<double> ouverture, lecture, triTexte, triMontant;
  unsigned lignes = 0;    ///< in the list
  unsigned visibles = 0;  ///< on a page
  unsigned peintes = 0;   ///< read for the first painting
  unsigned page = 0;      ///< read for the next page
};

/// Opens a window, sorts it, turns a page.
void MesureFenetre(const std::function<std::unique_ptr<CZNListView>()>& fait, Mesure& m) {
  std::unique_ptr<CZNListView> vue;
  m.ouverture.push_back(Duree([&] {
    vue = fait();
    vue->resize(800, 500);
    vue->Charge();
    Peinture peinture(*vue->Table().viewport());
    vue->show();
    peinture.Attend();
  }));
  TableListe& table = vue->Table();
  m.lignes = static_cast<unsigned>(table.Modele().NbLignes());
  m.peintes = table.Modele().NbLectures();
  m.visibles = static_cast<unsigned>(table.verticalScrollBar()->pageStep());
  if (m.lignes == 0) return;
  {
    Peinture peinture(*table.viewport());
    table.verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    peinture.Attend();
    m.page = table.Modele().NbLectures();
  }
  const auto trie = [&](int colonne) {
    const int derniere = table.Modele().NbLignes() - 2;  // above the empty row
    const ModeleListe::Donnee avant = table.Modele().DonneeDe(derniere);
    const double duree = Duree([&] {
      Peinture peinture(*table.viewport());
      table.TrieParColonne(colonne);
      peinture.Attend();
    });
    if (table.Modele().DonneeDe(derniere) == avant) Echec("a sort that moved nothing");
    return duree;
  };
  m.triTexte.push_back(trie(Designation));
  m.triMontant.push_back(trie(Solde));
}

void Ecrit(const std::string& quoi, const Mesure& m, const Mesure& vide) {
  const double ouverture = Mediane(m.ouverture), reference = Mediane(vide.ouverture);
  std::printf("%-18s open %10s (%6.2fx)", quoi.c_str(), EnTemps(ouverture).c_str(), ouverture / reference);
  if (m.lignes > 0) {
    const double texte = Mediane(m.triTexte), montant = Mediane(m.triMontant);
    std::printf(
        "   its list %10s   sort by name %10s (%6.2fx), by balance %10s (%6.2fx)   "
        "rows read: %u to paint, %u for a page of %u",
        EnTemps(Mediane(m.lecture)).c_str(), EnTemps(texte).c_str(), texte / reference,
        EnTemps(montant).c_str(), montant / reference, m.peintes, m.page, m.visibles);
  }
  std::printf("\n");
}

/// Seconds of painting a screen of the register.
class PeintureRegistre {
 public:
  explicit PeintureRegistre(ContexteUi& ui) : m_vue(ui) {
    m_vue.resize(1600, 300);
    Peinture peinture(*m_vue.Liste().viewport());
    m_vue.Charge();
    m_vue.show();
    peinture.Attend();
    m_vue.Liste().Modele().NbLectures();
  }
  double operator()() {
    return Duree([this] {
             for (unsigned i = 0; i < PeinturesParTour; ++i) {
               m_vue.Liste().Redessine();
               m_vue.Liste().viewport()->repaint();
             }
           }) /
           PeinturesParTour;
  }
  unsigned LignesLues() { return m_vue.Liste().Modele().NbLectures(); }

 private:
  CImmoView m_vue;
};

/// False when the bar is missed.
bool MesureRegistre(const std::string& dossier, unsigned tours, unsigned peu, unsigned beaucoup) {
  Cabinet petit(dossier + "/peu", 0, peu), grand(dossier + "/beaucoup", 0, beaucoup);
  PeintureRegistre un(petit.Ui()), autre(grand.Ui());
  std::vector<double> durees, autres, rapports;
  for (unsigned tour = 0; tour <= tours; ++tour) {
    const double a = un(), b = autre();
    if (tour == 0) continue;  // warms fonts and caches
    durees.push_back(a);
    autres.push_back(b);
    rapports.push_back(b / a);
  }
  const double rapport = Mediane(rapports);
  const unsigned lues = un.LignesLues();
  if (lues == 0 || autre.LignesLues() != lues) Echec("not the same number of rows was painted");
  std::printf("register: a screen of %u rows painted: %u assets %s, %u assets %s   ratio %.2f <= %g %s\n",
              lues / PeinturesParTour / (tours + 1), peu, EnTemps(Mediane(durees)).c_str(), beaucoup,
              EnTemps(Mediane(autres)).c_str(), rapport, BarreRegistre,
              rapport <= BarreRegistre ? "ok" : "MISSED");
  return rapport <= BarreRegistre;
}

/// False when the bar is missed.
bool MesureFiltre(const std::string& dossier, unsigned tours, unsigned comptes) {
  Cabinet cabinet(dossier + "/filtre", comptes);
  CFenlorApp& app = cabinet.Ui().App;
  const QString mot = QStringLiteral("cabine");
  std::vector<std::vector<double>> touches(static_cast<std::size_t>(mot.size()));
  std::vector<double> parcours, lectures;
  u64 vues = 0;
  for (unsigned tour = 0; tour <= tours; ++tour) {
    CPlanComptableView vue(cabinet.Ui());
    vue.resize(800, 500);
    vue.Charge();
    vue.show();
    QApplication::processEvents();
    const double ouverture = TempsProcesseur([&] {
      vue.Table().OuvreFiltre();
      while (vue.Table().Modele().PrepareFiltre(1)) QApplication::processEvents();
    });
    if (tour > 0) lectures.push_back(ouverture);
    auto* champ = vue.findChild<QLineEdit*>(QStringLiteral("filtre"));
    for (qsizetype i = 0; i < mot.size(); ++i) {
      const double duree = TempsProcesseur([&] {
        Peinture peinture(*vue.Table().viewport());
        champ->insert(QString(mot[i]));
        peinture.Attend();
      });
      if (tour > 0) touches[static_cast<std::size_t>(i)].push_back(duree);
    }
    if (vue.Table().Modele().NbLignes() == 0) Echec("nothing was found");
    const double scan = TempsProcesseur([&] {
      app.Magasin.QVParcours(FichierComptes, [&](Position, const void* rec) {
        for (unsigned i = 0; i < sizeof(Plan); i += 64) vues += static_cast<const u8*>(rec)[i];
        return true;
      });
    });
    if (tour > 0) parcours.push_back(scan);
  }
  if (vues == 0) Echec("nothing was read");
  double pire = 0;
  std::printf("filter of %u rows, processor time: opened and read %.1f ms   a key:", comptes,
              Mediane(lectures) * 1e3);
  for (std::size_t i = 0; i < touches.size(); ++i) {
    pire = std::max(pire, Mediane(touches[i]));
    std::printf(" %.1f", Mediane(touches[i]) * 1e3);
  }
  const bool tenue = pire * 1e3 <= BarreFiltreMs;
  std::printf(" ms   plain scan %.3f ms   the slowest within %g ms: %s\n", Mediane(parcours) * 1e3,
              BarreFiltreMs, tenue ? "ok" : "MISSED");
  return tenue;
}

int Principal(unsigned tours, const std::vector<unsigned>& tailles, bool rapide) {
  std::string dossier = (std::filesystem::temp_directory_path() / "fenlor-bench-XXXXXX").string();
  if (!mkdtemp(dossier.data())) Echec("no temporary directory");
  {
    std::vector<std::unique_ptr<Cabinet>> cabinets;
    for (const unsigned taille : tailles)
      cabinets.push_back(std::make_unique<Cabinet>(dossier + '/' + std::to_string(taille), taille));
    Mesure vide;
    std::vector<Mesure> mesures(tailles.size());
    for (unsigned tour = 0; tour <= tours; ++tour) {
      if (tour == 1) {  // the first round warms fonts and caches
        vide = {};
        mesures.assign(tailles.size(), {});
      }
      ContexteUi& premier = cabinets.front()->Ui();
      MesureFenetre([&] { return std::make_unique<ListeVide>(premier); }, vide);
      for (std::size_t i = 0; i < tailles.size(); ++i) {
        ContexteUi& ui = cabinets[i]->Ui();
        mesures[i].lecture.push_back(Duree([&] { PositionsComptes(ui.App, ListeComptes::PlanComptable); }));
        MesureFenetre([&] { return std::make_unique<CPlanComptableView>(ui); }, mesures[i]);
      }
    }
    std::printf("medians of %u runs; the ratios are to opening the empty window\n", tours);
    Ecrit("empty list window", vide, vide);
    for (const Mesure& m : mesures) Ecrit(std::to_string(m.lignes) + " rows", m, vide);
  }
  const bool filtre = MesureFiltre(dossier, tours, rapide ? tailles.front() : ComptesFiltres);
  const bool tenue = MesureRegistre(dossier, tours, PeuDeBiens, rapide ? PeuDeBiens : Biens) && filtre;
  std::filesystem::remove_all(dossier);
  return tenue || rapide ? 0 : 1;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  fenlor::bench::SansEcran();
  QApplication application(argc, argv);
  const QStringList arguments = application.arguments().mid(1);
  unsigned tours = 9;
  std::vector<unsigned> tailles;
  for (const QString& argument : arguments) {
    const unsigned nombre = argument.toUInt();
    if (nombre == 0) {
      std::fprintf(stderr, "bench_listes [RUNS [ACCOUNTS...]]\n");
      return 2;
    }
    if (&argument == &arguments.front())
      tours = nombre;
    else
      tailles.push_back(nombre);
  }
  const bool rapide = !tailles.empty();
  if (tailles.empty()) {
    tailles.push_back(5000);
    tailles.push_back(50000);
  }
  return fenlor::bench::Principal(tours, tailles, rapide);
}
