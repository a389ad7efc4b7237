// bench_echeances [RUNS [MODELS [ENTRIES]]]
// Opens an exercice with so many automatic entries (400), none due, as the program does: opening and the walk
// of the day. Beside it the same exercice without any, in turn. Prints the processor time of both and their
// ratio.
#include <unistd.h>

#include <filesystem>

#include "auto/echeances.h"
#include "auto/ecrituresauto.h"
#include "classeur.h"
#include "dialoguemuet.h"
#include "mesures.h"
#include "session/exercices.h"
#include "store/texte1252.h"

namespace fenlor::bench {

namespace {

/// A practice that is opened day after day.
class Cabinet {
 public:
  Cabinet(const std::string& dossier, unsigned modeles) : m_app(m_magasin, m_dialogue) {
    if (!m_magasin.QVOpenSession(1) || !m_magasin.QVOpenCompta(dossier, {})) Echec("no practice");
    m_app.PathCabinet = dossier;
    Ouvre();
    CEcrituresAuto autos(m_app);
    QVAPI::Unite unite(m_magasin);
    for (unsigned i = 0; i < modeles; ++i) {
      autos.Clear();
      autos.Rec.Genre = JournalDepenses;
      autos.Rec.Date = FaitDate(1 + i % 28, 12, 2003);
      autos.Rec.MontantEuro = 10 + i;
      autos.Rec.NbPaiements = autos.Rec.NbRestants = 12;
      autos.Rec.Periodicite = 6;
      PoseTexte(autos.Rec.Libelle, "Modele " + std::to_string(i));
      if (!autos.Write()) Echec("a model is refused");
    }
    if (!unite.Valide()) Echec("the unit is undone");
  }

  /// Seconds of processor time on a day that has not been walked.
  double Matin(Date jour) {
    FermeExercice(m_app);
    m_magasin.FixeAujourdhui(jour);
    const double debut = Secondes(CLOCK_PROCESS_CPUTIME_ID);
    Ouvre();
    BilanEcheances bilan;
    if (CalculeEcheances(m_app, bilan) || !bilan.parcouru || !bilan.faites.empty()) Echec("no walk");
    return Secondes(CLOCK_PROCESS_CPUTIME_ID) - debut;
  }

 private:
  void Ouvre() {
    if (OuvreExercice(m_app, "2003")) Echec("no exercice");
  }
  QVAPI m_magasin;
  DialogueMuet m_dialogue;
  CFenlorApp m_app;
};

int Lance(unsigned courses, unsigned modeles, unsigned ecritures) {
  namespace fs = std::filesystem;
  const std::string dossier = fs::temp_directory_path() / ("fenlor-echeances-" + std::to_string(getpid()));
  const std::string sans = dossier + "/sans", avec = dossier + "/avec";
  fs::create_directories(sans);
  Classeur(sans).Remplit(ecritures);
  fs::copy(sans, avec, fs::copy_options::recursive);
  std::vector<double> nous, autre, rapports;
  {
    Cabinet charge(avec, modeles), vide(sans, 0);
    Date jour = FaitDate(1, 3, 2003);
    for (unsigned i = 0; i <= courses; ++i, jour = NextDate(jour)) {
      const bool avant = i % 2 == 0;
      double temps = avant ? charge.Matin(jour) : 0;
      const double sansModele = vide.Matin(jour);
      if (!avant) temps = charge.Matin(jour);
      if (i == 0) continue;  // the first opening warms up
      nous.push_back(temps);
      autre.push_back(sansModele);
      rapports.push_back(temps / sansModele);
    }
  }
  fs::remove_all(dossier);
  Tableau tableau;
  tableau.Titre("opening with " + std::to_string(modeles) +
                " models, none due, beside none (processor time)");
  tableau.EnTete();
  tableau.Ligne("opening and walk", EnTemps(Mediane(nous)), EnTemps(Mediane(autre)), Mediane(rapports), "x",
                0, false);
  return 0;
}

}  // namespace
}  // namespace fenlor::bench

int main(int argc, char** argv) {
  const auto nombre = [&](int rang, unsigned defaut) {
    return argc > rang ? static_cast<unsigned>(std::strtoul(argv[rang], nullptr, 10)) : defaut;
  };
  return fenlor::bench::Lance(nombre(1, 60), nombre(2, 400), nombre(3, 500));
}
