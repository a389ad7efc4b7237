// bench_immobilisations [RUNS [ASSETS]]
// Builds the annex of so many assets (2000), bought over twenty years, every tenth with a corrected year,
// beside two reads of the same assets in the same run: along their key, and with the schedule of each. Prints
// the ratios; judges none. The practice is made in a temporary directory, removed at the end.
#include <cstdio>
#include <filesystem>
#include <string>

#include "assets/annuites.h"
#include "classeur.h"
#include "core/btfiles.h"
#include "dialoguemuet.h"
#include "mesures.h"
#include "reports/etatamortissements.h"
#include "store/texte1252.h"

namespace fenlor::bench {

namespace {

class ToutLExercice : public DemandeurCriteres {
 public:
  bool Demande(FormeCriteres, const std::string&, unsigned, CriteresEtat&) override { return true; }
};

class Registre {
 public:
  Registre(const std::string& dossier, u32 nombre)
      : m_classeur(dossier), m_app(m_classeur.Magasin(), m_dialogue), m_fichier(m_app, dossier) {
    QVAPI& magasin = m_classeur.Magasin();
    m_app.PathCabinet = dossier;
    CAmortissements corrections(m_app, dossier);
    if (!m_fichier.OpenFile() || !corrections.OpenFile()) Echec("the files cannot be opened");
    QVAPI::Unite unite(magasin);
    for (u32 n = 1; n <= nombre; ++n) Ajoute(n);
    if (!unite.Valide()) Echec("the assets cannot be written");
  }

  u32 Annexe() {
    CEtatAmortissementsDoc etat(m_app, m_demandeur);
    if (etat.OnNewDocument()) Echec("no report");
    return etat.NombreBlocs();
  }
  u32 Lecture() {
    u32 lus = 0;
    m_classeur.Magasin().QVParcoursCle(m_fichier.NumCle, {}, {}, [&](Position, const void* rec) {
      m_vus += static_cast<const Immobilisation*>(rec)->Numero;
      ++lus;
      return true;
    });
    return lus;
  }
  void Calculs() {
    CAmortissements corrections(m_app, m_app.PathCabinet);
    if (!corrections.OpenFile()) Echec("the corrections cannot be read");
    m_classeur.Magasin().QVParcoursCle(m_fichier.NumCle, {}, {}, [&](Position, const void* rec) {
      const Immobilisation immo = *static_cast<const Immobilisation*>(rec);
      CCalculEtatAmortissements calcul(m_app, &immo);
      f64 franc = 0, euro = 0;
      calcul.CalculAmortissements(0, franc, euro);
      m_vus += calcul.AnnuiteEuro > 0;
      return true;
    });
  }
  u64 Vus() const { return m_vus; }

 private:
  void Ajoute(u32 n) {
    Immobilisation immo{};
    immo.Numero = n;
    PoseTexte(immo.Designation, "Immobilisation " + std::to_string(n));
    immo.DateAchat = FaitDate(1 + n % 28, 1 + n % 12, 1984 + n % 20);
    immo.PrixEuro = immo.ValeurAmortissableEuro = 500.0 + n;
    immo.PrixFranc = immo.ValeurAmortissableFranc = 10 * immo.PrixEuro;
    immo.TypeAmortissement = n % 4 == 0;
    immo.Duree = 10;
    immo.TauxAnnuel = n % 4 == 0 ? 22.5 : 10;
    Amortissement reel{};
    reel.Numero = n;
    reel.Annee = Annee(immo.DateAchat);
    reel.ReelEuro = reel.ReelFranc = 1;
    QVAPI& magasin = m_classeur.Magasin();
    if (!magasin.WriteImmobilisations(immo) || (n % 10 == 0 && !magasin.WriteAmortissements(reel)))
      Echec("an asset cannot be written");
  }

  Classeur m_classeur;
  DialogueMuet m_dialogue;
  ToutLExercice m_demandeur;
  SeanceDuBanc m_app;
  CImmobilisations m_fichier;
  u64 m_vus = 0;
};

int Principal(unsigned tours, unsigned nombre) {
  const std::string dossier = DossierDuBanc();
  {
    Registre registre(dossier, nombre);
    if (registre.Lecture() != nombre || registre.Annexe() < nombre) Echec("not all assets are there");
    const Paires lecture = MesurePaires(
        tours, [&] { registre.Lecture(); }, [&] { registre.Annexe(); });
    const Paires calculs = MesurePaires(
        tours, [&] { registre.Calculs(); }, [&] { registre.Annexe(); });
    std::printf("annex of %u assets %s; medians of %u runs\n", nombre, EnTemps(lecture.autre).c_str(), tours);
    std::printf("beside reading them            %s   ratio %7.2f\n", EnTemps(lecture.nous).c_str(),
                lecture.rapport);
    std::printf("beside their schedules         %s   ratio %7.2f\n", EnTemps(calculs.nous).c_str(),
                calculs.rapport);
    if (registre.Vus() == 0) Echec("nothing was read");
  }
  std::filesystem::remove_all(dossier);
  return 0;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  const auto nombre = [&](int place, unsigned defaut) {
    return fenlor::bench::Argument(argc, argv, place, defaut, "[RUNS [ASSETS]]");
  };
  return fenlor::bench::Principal(nombre(1, 15), nombre(2, 2000));
}
