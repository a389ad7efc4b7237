// The walk of one model beside a simulation that knows no arithmetic of dates: it looks at one day after the
// other. FENLOR_PARCOURS says how many models.
#include "auto/parcoursauto.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <random>

namespace fenlor {
namespace {

/// Is `jour` a day of the schedule that began on `debut`, `ecart` days before?
bool Tombe(Date debut, Date jour, int ecart, int code) {
  const auto leJour = [&](unsigned voulu) { return Jour(jour) == std::min(voulu, GetNbJours(jour)); };
  const unsigned mois = (Annee(jour) - Annee(debut)) * 12 + Mois(jour) - Mois(debut);
  switch (code) {
    case 2:
      return ecart % 7 == 0;
    case 3:
      return ecart % 14 == 0;
    case 4:
      return leJour(Jour(debut)) || leJour(Jour(debut) > 15 ? Jour(debut) - 15 : Jour(debut) + 15);
    case 5:
      return ecart % 28 == 0;
    case 6:
      return leJour(Jour(debut));
    case 7:
      return mois % 2 == 0 && leJour(Jour(debut));
    case 8:
      return mois % 3 == 0 && leJour(Jour(debut));
    case 9:
      return mois % 6 == 0 && leJour(Jour(debut));
    default:
      return false;
  }
}

Date Suivante(Date debut, Date apres, int code) {
  if (code <= 1 || code > 9) return 0;
  Date jour = debut;
  for (int ecart = 0;; jour = NextDate(jour), ++ecart)
    if (jour > apres && (ecart == 0 || Tombe(debut, jour, ecart, code))) return jour;
}

/// What happens, told step by step.
struct Simulation {
  std::vector<std::pair<Date, Date>> ecritures;
  std::vector<Date> annonces;
  Date refusee = 0;
  bool partie = false;

  void Vit(EcrituresAuto& m, const CalendrierAuto& c) {
    const Date reference = m.Date;
    u32 restant = m.NbRestants != 0 ? m.NbRestants : m.NbPaiements;
    Date date = m.DerniereEcheance != 0 ? Suivante(reference, m.DerniereEcheance, m.Periodicite) : m.Date;
    Date confirme = 0, ancienne = 0;
    while (restant != 0) {
      if (date > c.aujourdhui) break;
      restant = restant - 1;
      if (c.debut <= date && date <= c.fin) {
        if (!m.SaisieEuro && date >= c.limiteFranc) {
          refusee = date;
          break;
        }
        if (m.Annoncer) {
          annonces.push_back(date);
        } else {
          ecritures.emplace_back(date, ancienne);
          confirme = ancienne = date;
        }
      }
      date = date == 0 ? 0 : Suivante(reference, date, m.Periodicite);
    }
    if (confirme == 0) return;
    partie = restant < 1;
    if (partie) return;
    m.NbRestants = restant;
    m.DerniereEcheance = confirme;
    m.Date = date;
  }
};

class Hasard {
 public:
  explicit Hasard(unsigned graine) : m_source(graine) {}
  unsigned Tire(unsigned sous) { return static_cast<unsigned>(m_source() % sous); }
  Date Jour(unsigned annee, unsigned annees) {
    const Date mois = FaitDate(1, 1 + Tire(12), annee + Tire(annees));
    // The ends of the months are where schedules go wrong.
    return mois + (Tire(3) == 0 ? GetNbJours(mois) - 1 - Tire(3) : Tire(GetNbJours(mois)));
  }

 private:
  std::mt19937 m_source;
};

TEST(ParcoursAuto, CommeLaSimulation) {
  const char* demandes = std::getenv("FENLOR_PARCOURS");
  const unsigned nombre = demandes ? static_cast<unsigned>(std::atoi(demandes)) : 400;
  unsigned ecritures = 0, annonces = 0, refusees = 0, parties = 0;
  for (unsigned graine = 1; graine <= nombre; ++graine) {
    Hasard hasard(graine);
    CalendrierAuto c;
    c.debut = hasard.Jour(2000, 3);
    c.fin = PrevDate(DecaleAnnees(FaitDate(std::min(Jour(c.debut), 28u), Mois(c.debut), Annee(c.debut)),
                                  1 + static_cast<int>(hasard.Tire(2))));
    c.limiteFranc = hasard.Jour(2001, 3);
    EcrituresAuto modele{};
    modele.Date = hasard.Tire(3) ? c.debut : hasard.Jour(1999, 4);
    for (unsigned n = hasard.Tire(200); n > 0; --n) modele.Date = NextDate(modele.Date);
    modele.SaisieEuro = hasard.Tire(3) != 0;
    modele.Periodicite = static_cast<i16>(hasard.Tire(10));
    modele.NbPaiements = hasard.Tire(4) == 0 ? hasard.Tire(3) : 1 + hasard.Tire(30);
    modele.NbRestants = hasard.Tire(2) ? 0 : modele.NbPaiements;
    modele.Annoncer = hasard.Tire(4) == 0;
    c.aujourdhui = modele.Date;
    for (unsigned jour = 0; jour < 12; ++jour) {
      SCOPED_TRACE("graine " + std::to_string(graine) + ", " + StrDate(c.aujourdhui));
      EcrituresAuto attendu = modele;
      Simulation s;
      s.Vit(attendu, c);
      const ParcoursModele p = ParcourtModele(modele, c);
      std::vector<std::pair<Date, Date>> faites;
      for (const ParcoursModele::Ecriture& e : p.ecritures) faites.emplace_back(e.date, e.dateNumero);
      ASSERT_EQ(faites, s.ecritures);
      ASSERT_EQ(p.annonces, s.annonces);
      ASSERT_EQ(p.refusee, s.refusee);
      ASSERT_EQ(p.epuise, s.partie);
      ASSERT_EQ(p.change, !faites.empty());
      ecritures += static_cast<unsigned>(faites.size());
      annonces += static_cast<unsigned>(p.annonces.size());
      refusees += p.refusee != 0;
      parties += p.epuise;
      if (p.epuise) break;
      if (p.change) {
        ASSERT_EQ(std::memcmp(&p.suite, &attendu, sizeof attendu), 0);
        modele = p.suite;
        ASSERT_TRUE(ParcourtModele(modele, c).ecritures.empty()) << "a second walk of the day enters nothing";
      }
      if (!p.annonces.empty() && hasard.Tire(2)) {
        ASSERT_TRUE(Confirme(modele, c.aujourdhui));
        ASSERT_LE(+modele.NbRestants, 999u);
      }
      for (unsigned n = hasard.Tire(90); n > 0; --n) c.aujourdhui = NextDate(c.aujourdhui);
    }
  }
  std::cout << ecritures << " entries, " << annonces << " announced, " << refusees << " in Franc too late, "
            << parties << " models at their end\n";
  EXPECT_TRUE(ecritures && annonces && refusees && parties);
}

TEST(ParcoursAuto, CeQuiNEstPasUneDateNeTournePas) {
  const CalendrierAuto c{FaitDate(1, 6, 2003), FaitDate(1, 1, 2003), FaitDate(31, 12, 2003),
                         FaitDate(18, 2, 2002)};
  EcrituresAuto m{};
  m.SaisieEuro = 1;
  m.NbPaiements = 0xFFFFFFFF;
  for (const Date date : {0u, FaitDate(31, 2, 2003), FaitDate(1, 13, 2003)}) {
    m.Date = date;
    m.Periodicite = 6;
    EXPECT_FALSE(ParcourtModele(m, c).change) << date;
  }
  m.Date = FaitDate(2, 5, 2003);
  m.Periodicite = 77;
  const ParcoursModele p = ParcourtModele(m, c);
  EXPECT_TRUE(p.ecritures.size() == 1 && p.epuise) << "an unknown code is due once";
}

TEST(ParcoursAuto, UneConfirmation) {
  EcrituresAuto m{};
  m.NbPaiements = 3;
  for (const u32 reste : {2u, 1u, 0u, 2u}) {
    EXPECT_TRUE(Confirme(m, FaitDate(5, 5, 2003)));
    EXPECT_EQ(+m.NbRestants, reste);
  }
  EXPECT_EQ(+m.DerniereEcheance, FaitDate(5, 5, 2003));
  m.NbPaiements = m.NbRestants = 0;
  EXPECT_FALSE(Confirme(m, FaitDate(5, 5, 2003))) << "it goes";
}

}  // namespace
}  // namespace fenlor
