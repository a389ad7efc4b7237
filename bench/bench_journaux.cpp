// bench_journaux [RUNS [ENTRIES]]
// Lists a month with so many entries (10000) of four lines each, as a journal window does when it
// opens, beside two plain reads of the same lines in the same run: along the key with one ordinary
// read of the store a line, and in place. Months on both sides hold entries too. The practice is made
// through the store in a temporary directory, removed at the end unless something fails. The bar: the
// list costs at most 3 times the plain read; the status is 1 when it is missed, unless the size is
// another one.
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "classeur.h"
#include "dialoguemuet.h"
#include "journal/listejournal.h"
#include "mesures.h"
#include "store/definitions.h"

namespace fenlor::bench {

namespace {

constexpr u16 CleMois = 75;
constexpr unsigned EcrituresBarre = 10'000;
constexpr double Barre = 3;

/// Receipts of March in order of dates, and a tenth of them in February and in April.
void Remplit(Classeur& classeur, unsigned ecritures) {
  QVAPI& magasin = classeur.Magasin();
  const std::string exercice = magasin.PathExercice();
  QVAPI::Unite unite(magasin);
  unsigned serie = 0;
  const auto ajoute = [&](unsigned mois, unsigned nombre) {
    for (unsigned n = 0; n < nombre; ++n) {
      EcrSimple rec = classeur.Ecriture(serie++);
      while (rec.Journal != JournalRecettes) rec = classeur.Ecriture(serie++);
      rec.Date = FaitDate(1 + n * 28 / nombre, mois, 2003);
      rec.Ligne = n + 1;
      if (!magasin.AddEcrSimple(exercice, rec)) Echec("an entry is refused");
    }
  };
  ajoute(2, ecritures / 10);
  ajoute(3, ecritures);
  ajoute(4, ecritures / 10);
  if (!unite.Valide()) Echec("the unit is undone");
}

class Mois {
 public:
  explicit Mois(QVAPI& magasin) : m_magasin(magasin), m_app(magasin, m_dialogue) {
    m_demande.mois = FaitDate(1, 3, 2003);
    m_demande.mode = ListeToutes;
    m_demande.criteres = CriteresParDefaut(m_app);
    m_debut = MakeJournalKey1(JournalRecettes, m_demande.mois, 0, 0, {}, 0);
    m_fin = MakeJournalKey1(JournalRecettes, FaitDate(1, 4, 2003), 0, 0, {}, 0);
  }

  MoisJournal Liste() {
    MoisJournal mois;
    if (ListeMois(m_app, m_demande, mois)) Echec("the month cannot be listed");
    return mois;
  }
  void Selection(const std::vector<u32>& mouvements) {
    TotauxListe totaux;
    if (TotauxEntrees(m_app, m_demande, mouvements, totaux)) Echec("the rows cannot be summed up");
  }
  void Rangee(u32 mouvement) {
    EntreeJournal entree;
    if (!LitEntreeJournal(m_app, mouvement, true, {}, entree)) Echec("an entry cannot be read");
  }
  void Criteres() {
    CritereEcriture& c = m_demande.criteres;
    c.Toutes = c.TousMontants = c.TousComptes = c.ToutesRubriques = c.TousJours = 0;
    c.NonRapprochees = 1;
    c.MontantMax = 1e6;
    PoseBorne(c.CompteDe, "1");
    PoseBorne(c.CompteA, "9");
    PoseBorne(c.RubriqueDe, "0");
    PoseBorne(c.RubriqueA, "Z");
    c.JourDe = 1;
    c.JourA = 31;
  }
  /// Lines read one by one.
  unsigned UneParUne() {
    unsigned lignes = 0;
    std::string cle = m_debut;
    Line ligne;
    for (Position p = m_magasin.QVBrowseKey(CleMois, cle); p && cle < m_fin;
         p = m_magasin.QVNextKey(CleMois, cle)) {
      if (!m_magasin.QVReadRec(FichierJournal, p, &ligne)) Echec("a line cannot be read");
      m_vues += ligne.Mouvement;
      ++lignes;
    }
    return lignes;
  }
  /// Lines looked at where they stand.
  unsigned EnPlace() {
    unsigned lignes = 0;
    m_magasin.QVParcoursCle(CleMois, m_debut, m_fin, [&](Position, const void* rec) {
      m_vues += static_cast<const Line*>(rec)->Mouvement;
      ++lignes;
      return true;
    });
    return lignes;
  }
  u64 Vues() const { return m_vues; }

 private:
  template <std::size_t N>
  static void PoseBorne(char (&borne)[N], const char* texte) {
    std::snprintf(borne, N, "%s", texte);
  }

  QVAPI& m_magasin;
  DialogueMuet m_dialogue;
  SeanceDuBanc m_app;
  DemandeListe m_demande;
  std::string m_debut, m_fin;
  u64 m_vues = 0;
};

double EnMs(double secondes) { return secondes * 1e3; }

/// Prints one list beside both plain reads; the ratio to the line by line one.
double Mesure(Mois& mois, unsigned tours, const char* quoi) {
  std::vector<double> liste, uneParUne, enPlace, rapportUne, rapportPlace;
  for (unsigned tour = 0; tour <= tours; ++tour) {
    const double a = Duree([&] { mois.Liste(); });
    const double b = Duree([&] { mois.UneParUne(); });
    const double c = Duree([&] { mois.EnPlace(); });
    if (tour == 0) continue;  // warms the caches
    liste.push_back(a);
    uneParUne.push_back(b);
    enPlace.push_back(c);
    rapportUne.push_back(a / b);
    rapportPlace.push_back(a / c);
  }
  std::printf("%-28s list %8.3f ms   line by line %8.3f ms   in place %8.3f ms   ratio %5.2f and %5.2f\n",
              quoi, EnMs(Mediane(liste)), EnMs(Mediane(uneParUne)), EnMs(Mediane(enPlace)),
              Mediane(rapportUne), Mediane(rapportPlace));
  return Mediane(rapportUne);
}

int Principal(unsigned tours, unsigned ecritures) {
  const std::string dossier = DossierDuBanc();
  double rapport = 0;
  {
    Classeur classeur(dossier);
    Remplit(classeur, ecritures);
    Mois mois(classeur.Magasin());
    const MoisJournal liste = mois.Liste();
    const unsigned lignes = mois.UneParUne();
    if (liste.entrees.size() != ecritures || lignes != mois.EnPlace())
      Echec("the month is not what was written");
    std::printf("a month of %u entries, %u lines; medians of %u runs\n", ecritures, lignes, tours);
    rapport = Mesure(mois, tours, "no criteria");
    std::vector<u32> tous;
    for (const EntreeListe& e : liste.entrees) tous.push_back(e.mouvement);
    std::vector<double> selection, rangees;
    for (unsigned tour = 0; tour < tours; ++tour) {
      selection.push_back(Duree([&] { mois.Selection(tous); }));
      rangees.push_back(Duree([&] {
        for (const u32 mouvement : tous) mois.Rangee(mouvement);
      }));
    }
    std::printf("totals of all rows selected %8.3f ms   one row read to be drawn %s\n",
                EnMs(Mediane(selection)), EnTemps(Mediane(rangees) / ecritures).c_str());
    mois.Criteres();
    Mesure(mois, tours, "criteria of every group");
    if (mois.Vues() == 0) Echec("nothing was read");
  }
  std::filesystem::remove_all(dossier);
  if (ecritures != EcrituresBarre) return 0;
  std::printf("bar: ratio without criteria <= %g: %s\n", Barre, rapport <= Barre ? "ok" : "MISSED");
  return rapport <= Barre ? 0 : 1;
}

}  // namespace

}  // namespace fenlor::bench

int main(int argc, char** argv) {
  const auto nombre = [&](int place, unsigned defaut) {
    return fenlor::bench::Argument(argc, argv, place, defaut, "[RUNS [ENTRIES]]");
  };
  return fenlor::bench::Principal(nombre(1, 21), nombre(2, fenlor::bench::EcrituresBarre));
}
