#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <random>
#include <sstream>

#include "core/btfiles.h"
#include "core/valeurs.h"
#include "outils/systemefautif.h"
#include "reports/etatbalance.h"
#include "reports/etatdetail.h"
#include "reports/etatextrait.h"
#include "reports/etatgrandlivre.h"
#include "reports/petitlivre.h"
#include "store/texte1252.h"

namespace fenlor::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::pair<AffichageLivre, const char*> affichages[] = {
    {AffichageLivre::Franc, "franc"}, {AffichageLivre::Euro, "euro"}, {AffichageLivre::Double, "double"}};

class GrandsLivres : public PetitLivre {
 protected:
  using PetitLivre::PetitLivre;

  template <class Etat>
  std::string Texte(std::function<void(CriteresEtat&)> change = {}) {
    Demandeur.Change = std::move(change);
    Etat etat(App(), Demandeur);
    EXPECT_TRUE(etat.OnNewDocument());
    VerifiePages(etat, "");
    return VersUtf8(TexteEtat(etat));
  }
  template <class Etat>
  bool Construit(std::function<void(CriteresEtat&)> change = {}) {
    Demandeur.Change = std::move(change);
    Etat etat(App(), Demandeur);
    return etat.OnNewDocument();
  }
};

/// Lines of a markup that hold `contient`, each as its texts between the codes, empty ones left out.
std::vector<std::vector<std::string>> Rangees(const std::string& texte, const std::string& contient) {
  std::vector<std::vector<std::string>> rangees;
  std::istringstream flux(texte);
  for (std::string ligne; std::getline(flux, ligne);) {
    if (ligne.find(contient) == std::string::npos) continue;
    auto& cellules = rangees.emplace_back();
    std::string cellule;
    for (std::size_t i = 0; i <= ligne.size(); ++i) {
      if (i < ligne.size() && ligne[i] != '\\') {
        cellule += ligne[i];
        continue;
      }
      if (!cellule.empty()) cellules.push_back(std::exchange(cellule, {}));
      if (i < ligne.size())
        i += std::string_view("TRMNSC").find(ligne[i + 1]) != std::string_view::npos ? 4 : 1;
    }
  }
  return rangees;
}

i64 Centimes(const std::string& montant) {
  const bool debit = montant.starts_with("D ");
  const i64 valeur = std::llround(TexteVersMontant(debit ? montant.substr(2) : montant) * 100);
  return debit ? -valeur : valeur;
}

/// What stands in the column that begins with `code`, in cents.
i64 Colonne(const std::string& ligne, const std::string& code) {
  const std::size_t debut = ligne.find(code);
  if (debut == std::string::npos) return 0;
  const std::size_t place = debut + code.size();
  return Centimes(ligne.substr(place, ligne.find('\\', place) - place));
}

std::vector<std::string> LignesAvec(const std::string& texte, const std::string& contient) {
  std::vector<std::string> lignes;
  std::istringstream flux(texte);
  for (std::string ligne; std::getline(flux, ligne);)
    if (ligne.find(contient) != std::string::npos) lignes.push_back(ligne);
  return lignes;
}

TEST_F(GrandsLivres, DetailMarkup) {
  for (const auto& [affichage, nom] : affichages) {
    PetitLivre::Installe(affichage);
    VerifieEtat<CEtatDetailDoc>(std::string("detail-") + nom);
    Magasin().QVCloseExercice();
  }
  EXPECT_EQ(Demandeur.Forme, FormeCriteres::GenreEtPeriode);
  EXPECT_EQ(Demandeur.Propose.genre, EtatToutes);
}

TEST_F(GrandsLivres, CentralisedDetailMarkup) {
  Installe(AffichageLivre::Double);
  for (const auto& [centralisation, nom] :
       {std::pair{ParJour, "jour"}, {ParSemaine, "semaine"}, {ParMois, "mois"}})
    VerifieEtat<CEtatDetailDoc>(std::string("detail-recettes-") + nom,
                                [centralisation = centralisation](CriteresEtat& c) {
                                  c.genre = EtatRecettes;
                                  c.centralisation = centralisation;
                                });
  Magasin().QVCloseExercice();
  Installe(AffichageLivre::Euro);
  VerifieEtat<CEtatDetailDoc>("detail-toutes-mois-euro", [](CriteresEtat& c) { c.centralisation = ParMois; });
}

TEST_F(GrandsLivres, ExtractMarkup) {
  for (const auto& [affichage, nom] : affichages) {
    Installe(affichage);
    const auto banque = [](CriteresEtat& c) { c.compte = "5120000000"; };
    VerifieEtat<CEtatExtraitDoc>(std::string("extrait-") + nom, banque);
    VerifieEtat<CEtatExtraitDoc>(std::string("extrait-montant-") + nom, [&](CriteresEtat& c) {
      banque(c);
      c.affichage = AffichageMontant;
    });
    Magasin().QVCloseExercice();
  }
  EXPECT_EQ(Demandeur.Forme, FormeCriteres::CompteEtPeriode);
  EXPECT_EQ(Demandeur.Comptes, MasqueTous);
}

TEST_F(GrandsLivres, ExtractOfAllAccountsMarkup) {
  Installe(AffichageLivre::Euro);
  VerifieEtat<CEtatExtraitDoc>("extrait-tous", [this](CriteresEtat& c) { c.du = Le(1, 2); });
}

TEST_F(GrandsLivres, LedgerMarkup) {
  for (const auto& [affichage, nom] : affichages) {
    Installe(affichage);
    VerifieEtat<CEtatGrandLivreDoc>(std::string("grand-livre-") + nom);
    VerifieEtat<CEtatGrandLivreDoc>(std::string("grand-livre-montant-") + nom,
                                    [](CriteresEtat& c) { c.affichage = AffichageMontant; });
    Magasin().QVCloseExercice();
  }
  EXPECT_EQ(Demandeur.Forme, FormeCriteres::PeriodeEtAffichage);
  EXPECT_EQ(Demandeur.Propose.affichage, AffichageCreditDebit);
}

TEST_F(GrandsLivres, BooksWithoutEntries) {
  Installe(AffichageLivre::Euro, false);
  VerifieEtat<CEtatDetailDoc>("detail-vide");
  const std::string grandLivre = Texte<CEtatGrandLivreDoc>();
  EXPECT_EQ(Rangees(grandLivre, "Total :").size(), 9u);
  EXPECT_THAT(Rangees(grandLivre, "Total :")[0], ElementsAre("Total :"));
  EXPECT_THAT(LignesAvec(grandLivre, "Total du mois"), IsEmpty());
  // An account that is not in the chart means all of them, as "*" does.
  EXPECT_EQ(Texte<CEtatExtraitDoc>([](CriteresEtat& c) { c.compte = "9990000000"; }),
            Texte<CEtatExtraitDoc>());
}

// A sum that comes to nothing shows as nothing, whatever its additions leave behind.
TEST_F(GrandsLivres, SumsOfNothingAreEmpty) {
  Installe(AffichageLivre::Euro, false);
  for (const f64 montant : {0.1, 0.2, -0.3})
    Ajoute(JournalRecettes, Le(3, 1), "706", montant, 0, 0, "512", "x");
  const auto montant = [](CriteresEtat& c) {
    c.compte = "7060000000";
    c.affichage = AffichageMontant;
  };
  EXPECT_THAT(Rangees(Texte<CEtatExtraitDoc>(montant), "Total :")[0], ElementsAre("Total :"));
  EXPECT_THAT(Rangees(Texte<CEtatExtraitDoc>([](CriteresEtat& c) { c.compte = "7060000000"; }), "Total :")[0],
              ElementsAre("Total :", "0,30 €", "0,30 €"));
  for (const auto& total : Rangees(Texte<CEtatGrandLivreDoc>(montant), "Total :"))
    EXPECT_THAT(total, ElementsAre("Total :"));
}

// Which lines of the file close a month of the ledger: the next one, whoever it belongs to.
TEST_F(GrandsLivres, LedgerMonthTotals) {
  struct Cas {
    const char* nom;
    std::vector<std::pair<const char*, unsigned>> recettes;  ///< account and month, on 512
    unsigned au;                                             ///< last month asked for
    std::map<std::string, unsigned> totaux;                  ///< month totals expected
  };
  const Cas cas[] = {
      {"one month, the next account begins in it", {{"706", 1}, {"707", 1}}, 12, {}},
      {"one month, the next account begins in another",
       {{"706", 2}, {"707", 1}},
       12,
       {{"512", 1}, {"706", 1}}},
      {"last account of the file", {{"707", 1}, {"707", 2}}, 12, {{"512", 2}, {"707", 2}}},
      {"a later day of the same account", {{"706", 1}, {"706", 2}}, 1, {{"512", 1}, {"706", 1}}},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.nom);
    Installe(AffichageLivre::Euro, false);
    for (const auto& [compte, mois] : c.recettes)
      Ajoute(JournalRecettes, Le(5, mois), compte, 10, 0, 0, "512", "x");
    const std::string texte = Texte<CEtatGrandLivreDoc>([&](CriteresEtat& k) { k.au = Le(28, c.au); });
    std::map<std::string, unsigned> totaux;
    std::string compte;
    std::istringstream flux(texte);
    for (std::string ligne; std::getline(flux, ligne);) {
      if (ligne.find("Compte de") != std::string::npos)
        compte = Rangees(ligne, "Compte de")[0][1].substr(0, 3);
      if (ligne.find("Total du mois") != std::string::npos) ++totaux[compte];
    }
    EXPECT_EQ(totaux, c.totaux);
    Magasin().QVCloseExercice();
    ASSERT_TRUE(Magasin().QVDeleteExercice(Annee));
  }
}

// Weeks are cut at the month; a line before any receipts account has none above it.
TEST_F(GrandsLivres, Buckets) {
  Installe(AffichageLivre::Euro, false);
  // 31/03/2003 is a Monday.
  for (const Date date : {Le(31, 3), Le(1, 4), Le(6, 4), Le(7, 4)})
    Ajoute(JournalRecettes, date, "706", 10, 0, 0, "512", "x");
  const auto par = [](int centralisation) {
    return [centralisation](CriteresEtat& c) {
      c.genre = EtatRecettes;
      c.centralisation = centralisation;
    };
  };
  const auto dates = [](const std::string& texte) {
    std::vector<std::string> trouvees;
    for (const auto& rangee : Rangees(texte, "Honoraires"))
      trouvees.push_back(rangee[0] + " " + rangee.back());
    return trouvees;
  };
  EXPECT_THAT(dates(Texte<CEtatDetailDoc>(par(ParSemaine))),
              ElementsAre("31/03/2003 10,00 €", "01/04/2003 20,00 €", "07/04/2003 10,00 €"));
  EXPECT_THAT(dates(Texte<CEtatDetailDoc>(par(ParMois))),
              ElementsAre("Mars 2003 10,00 €", "Avril 2003 30,00 €"));
  EXPECT_EQ(dates(Texte<CEtatDetailDoc>(par(ParJour))).size(), 4u);

  const u32 premiere = Ajoute(JournalRecettes, Le(1, 3), "706", 5, 0, 0, "512", "x");
  for (const Position p : Magasin().LignesMouvement(App().PathExercice, premiere)) {
    Line ligne;
    ASSERT_TRUE(Magasin().ReadLines(App().PathExercice, p, ligne));
    if (ligne.TypeCompte != Recette) continue;
    ligne.TypeCompte = Autre;
    ASSERT_TRUE(Magasin().WriteJournal(ligne));
  }
  const std::string texte = Texte<CEtatDetailDoc>(par(ParMois));
  // The two rows without a main account come first, without a date.
  EXPECT_THAT(Rangees(texte, "512")[0], ElementsAre("Banque", "512", "5,00 €"));
  EXPECT_THAT(Rangees(texte, "Total:")[0], ElementsAre("Total:", "45,00 €", "45,00 €"));
}

struct LigneAttendue {
  std::string compte, designation;
  u32 numero;
  Date date;
  bool credit;
  i64 franc, euro;
};

/// Entries at random over some accounts, two years wide apart in amounts; and what was written.
class LivresAuHasard : public GrandsLivres {
 protected:
  void Remplit(unsigned graine, unsigned ecritures) {
    std::mt19937 hasard(graine);
    const auto tire = [&](unsigned n) { return static_cast<unsigned>(hasard() % n); };
    const u32 plan = Magasin().OpenPlan({}), journal = Magasin().OpenJournal({});
    QVAPI::Unite unite(Magasin());
    for (unsigned i = 0; i < ecritures; ++i) {
      const bool recette = tire(2);
      const char* compte = recette ? (tire(2) ? "706" : "707") : (tire(2) ? "606" : "613");
      const f64 montant = (1 + tire(100000)) / 100.0 * (tire(8) ? 1 : -1);
      Ajoute(recette ? JournalRecettes : JournalDepenses, Le(1 + tire(28), 1 + tire(12)), compte, montant,
             tire(3) ? 0 : Arrondi2(montant / 6), tire(3) ? 0 : Arrondi2(montant / 4),
             tire(2) ? "512" : "531", "x");
    }
    ASSERT_TRUE(unite.Valide());
    ASSERT_TRUE(Magasin().ClosePlan(plan) && Magasin().CloseJournal(journal));
    CLines lignes(App(), {});
    ASSERT_TRUE(lignes.OpenFile());
    ASSERT_TRUE(Magasin().QVParcours(lignes.NumFichier, [this](Position, const void* rec) {
      const Line& l = *static_cast<const Line*>(rec);
      Lignes.push_back({Magasin().GetShortCompte(LitTexte(l.Compte)), VersUtf8(LitTexte(l.Designation)),
                        l.Ligne, l.DateLigne, l.Sens != 0, std::llround(l.MontantFranc * 100),
                        std::llround(l.MontantEuro * 100)});
      return true;
    }));
  }
  /// Debit and credit of an account within a period, in cents of Euro.
  std::pair<i64, i64> Somme(const std::string& compte, Date du, Date au) const {
    std::pair<i64, i64> somme;
    for (const LigneAttendue& l : Lignes)
      if (l.compte == compte && l.date >= du && l.date <= au)
        (l.credit ? somme.second : somme.first) += l.euro;
    return somme;
  }

  std::vector<LigneAttendue> Lignes;
};

TEST_F(LivresAuHasard, LedgerIsTheBalance) {
  for (const unsigned graine : {1u, 2u, 3u}) {
    Lignes.clear();
    Installe(graine == 2 ? AffichageLivre::Double : AffichageLivre::Euro, false);
    Remplit(graine, 200);
    const bool deux = graine == 2;
    const std::string texte = Texte<CEtatGrandLivreDoc>();
    std::map<std::string, std::pair<i64, i64>> comptes, mois, rangees;
    std::string compte;
    std::istringstream flux(texte);
    for (std::string ligne; std::getline(flux, ligne);) {
      const std::pair montants{Colonne(ligne, deux ? "\\R097" : "\\R077"),
                               Colonne(ligne, deux ? "\\R144" : "\\R097")};
      const auto ajoute = [&](auto& sommes) {
        sommes[compte].first += montants.first;
        sommes[compte].second += montants.second;
      };
      if (const auto tete = Rangees(ligne, "Compte de");
          !tete.empty() || ligne.find("Autre compte") != std::string::npos) {
        const std::string numero = Rangees(ligne, "ompte")[0][1];
        compte = numero.substr(0, numero.find(' '));
      } else if (ligne.find("Total du mois") != std::string::npos) {
        ajoute(mois);
      } else if (ligne.find("Total :") != std::string::npos) {
        ajoute(comptes);
        if (!deux) {
          EXPECT_EQ(Colonne(ligne, "\\R117") - Colonne(ligne, "\\R144"), montants.first - montants.second);
          EXPECT_EQ(std::min(Colonne(ligne, "\\R117"), Colonne(ligne, "\\R144")), 0);
        }
      } else if (ligne.find("/2") != std::string::npos && ligne.find("\\T030") != std::string::npos) {
        ajoute(rangees);
      }
    }
    ASSERT_EQ(comptes.size(), 9u);
    for (const auto& [numero, somme] : comptes) {
      SCOPED_TRACE(numero);
      EXPECT_EQ(somme, Somme(numero, 0, ~0u));
      const Plan plan = LitCompte(numero);
      EXPECT_EQ(somme, (std::pair{i64{std::llround(plan.DebitEuro * 100)},
                                  i64{std::llround(plan.CreditEuro * 100)}}));
      EXPECT_EQ(somme, rangees[numero]);
      if (mois.contains(numero)) {
        EXPECT_EQ(somme, mois[numero]);
      }
    }
    EXPECT_GE(mois.size(), 7u);
    Magasin().QVCloseExercice();
    ASSERT_TRUE(Magasin().QVDeleteExercice(Annee));
  }
}

TEST_F(LivresAuHasard, ExtractIsTheLinesOfTheAccount) {
  Installe(AffichageLivre::Double, false);
  Remplit(7, 150);
  const Date du = Le(10, 3), au = Le(20, 9);
  for (const std::string compte : {"4451", "512", "706", "108", "658"}) {
    SCOPED_TRACE(compte);
    std::multiset<std::tuple<std::string, u32, i64, i64>> attendues, lues;
    for (const LigneAttendue& l : Lignes)
      if (l.compte == compte && l.date >= du && l.date <= au)
        attendues.emplace(StrDate(l.date), l.numero, l.credit ? l.franc : -l.franc,
                          l.credit ? l.euro : -l.euro);
    const std::string texte = Texte<CEtatExtraitDoc>([&](CriteresEtat& c) {
      c.compte = QVAPI::GetLongCompte(compte);
      c.du = du;
      c.au = au;
      c.affichage = AffichageMontant;
    });
    std::string avant;
    for (const std::string& ligne : LignesAvec(texte, "\\T013")) {
      const auto cellules = Rangees(ligne, "")[0];
      lues.emplace(cellules[1], static_cast<u32>(std::stoul(cellules[0])), Colonne(ligne, "\\R117"),
                   Colonne(ligne, "\\R144"));
      const std::string jour = StrSDate(GetDate(cellules[1]));
      EXPECT_LE(avant, jour);
      avant = jour;
    }
    EXPECT_EQ(lues, attendues);
    const auto somme = Somme(compte, du, au);
    EXPECT_EQ(Colonne(LignesAvec(texte, "Total :")[0], "\\R144"), somme.second - somme.first);
  }
}

TEST_F(LivresAuHasard, CentralisationKeepsTheSums) {
  Installe(AffichageLivre::Double, false);
  Remplit(11, 300);
  const auto sommes = [](const std::string& texte, const std::string& quoi) {
    std::vector<std::array<i64, 4>> toutes;
    for (const std::string& l : LignesAvec(texte, quoi))
      toutes.push_back(
          {Colonne(l, "\\R099"), Colonne(l, "\\R114"), Colonne(l, "\\R129"), Colonne(l, "\\R144")});
    return toutes;
  };
  const auto texte = [this](int centralisation) {
    return Texte<CEtatDetailDoc>([=](CriteresEtat& c) {
      c.genre = EtatRecettes;
      c.centralisation = centralisation;
    });
  };
  const std::string detail = texte(Detaillee);
  const auto mois = sommes(detail, "Total Mois"), total = sommes(detail, "Total:");
  ASSERT_EQ(mois.size(), 12u);
  std::array<i64, 4> addition{};
  for (const auto& m : mois)
    for (std::size_t i = 0; i < 4; ++i) addition[i] += m[i];
  EXPECT_THAT(total, ElementsAre(addition));
  for (const int centralisation : {ParJour, ParSemaine, ParMois}) {
    const std::string central = texte(centralisation);
    EXPECT_EQ(sommes(central, "Total Mois"), mois) << centralisation;
    EXPECT_EQ(sommes(central, "Total:"), total) << centralisation;
    std::array<i64, 4> rangees{};
    for (const auto& r : sommes(central, "\\N001"))
      for (std::size_t i = 0; i < 4; ++i) rangees[i] += r[i];
    EXPECT_EQ(rangees, addition) << centralisation;
  }
}

TEST_F(GrandsLivres, LongAndOddLabels) {
  Installe(AffichageLivre::Double, false);
  const std::string longue(80, 'W');
  Ajoute(JournalRecettes, Le(3, 1), "706", 99999999.99, 0, 0, "512", longue);
  Ajoute(JournalRecettes, Le(4, 1), "706", 1, 0, 0, "512", "\\P\\F\\H100%s");
  const std::string texte = Texte<CEtatDetailDoc>();
  EXPECT_EQ(LignesAvec(texte, longue).size(), 1u + 1u);
  EXPECT_EQ(LignesAvec(texte, "\\\\P\\\\F\\\\H100%s").size(), 2u);
  CPlan plan(App(), {});
  ASSERT_TRUE(plan.OpenFile());
  PoseTexte(plan.Rec->Compte, "5120000000");
  ASSERT_TRUE(plan.Find(0));
  PoseTexte(plan.Rec->Designation, "Banque \\H");
  ASSERT_TRUE(plan.Delete(plan.GetPos()) && plan.Add());
  EXPECT_THAT(Texte<CEtatGrandLivreDoc>(), testing::HasSubstr("512 Banque \\\\H"));
}

TEST_F(GrandsLivres, AbortAndRefusalLeaveNoReport) {
  Installe(AffichageLivre::Euro);
  const TemporaireAPart temporaire;
  const auto parMois = [](CriteresEtat& c) { c.centralisation = ParMois; };
  for (const int apres : {0, 3, 12, 17}) {
    Boite.NbArrets = 0;
    Boite.ArretApres = apres;
    EXPECT_FALSE(Construit<CEtatDetailDoc>(parMois)) << apres;
    Boite.NbArrets = 0;
    EXPECT_FALSE(Construit<CEtatExtraitDoc>()) << apres;
    Boite.NbArrets = 0;
    EXPECT_FALSE(Construit<CEtatGrandLivreDoc>()) << apres;
    EXPECT_EQ(Boite.Profondeur, 0u);
  }
  Boite.ArretApres = -1;
  Demandeur.Accepte = false;
  EXPECT_FALSE(Construit<CEtatDetailDoc>());
  EXPECT_FALSE(Construit<CEtatExtraitDoc>());
  EXPECT_FALSE(Construit<CEtatGrandLivreDoc>());
  EXPECT_THAT(Boite.Erreurs, IsEmpty());
  EXPECT_EQ(temporaire.Nombre(), 0u);
}

struct DisqueFautif {
  SystemePosix Posix;
  SystemeFautif Disque{Posix};
};

class LivresSurDisqueFautif : private DisqueFautif, public GrandsLivres {
 protected:
  LivresSurDisqueFautif() : GrandsLivres(Cles::Memoire, 256u << 10, &Disque) {}
  using DisqueFautif::Disque;
};

TEST_F(LivresSurDisqueFautif, FailedWritesLeaveNoReport) {
  Installe(AffichageLivre::Euro);
  const TemporaireAPart temporaire;
  const auto parMois = [](CriteresEtat& c) { c.centralisation = ParMois; };
  Disque.SurChemin("/FNL");
  for (const unsigned genre : {SystemeFautif::Ecriture, SystemeFautif::Ouvertures})
    for (unsigned k = 1; k <= 2; ++k) {
      Boite.Oublie();
      Disque.Programme(k, ENOSPC, genre);
      EXPECT_FALSE(Construit<CEtatGrandLivreDoc>()) << genre << " " << k;
      EXPECT_EQ(Boite.Erreurs.size(), 1u) << genre << " " << k;
      Disque.Repare();
      EXPECT_EQ(temporaire.Nombre(), 0u);
    }
  // Of the work file: without it the report lacks the centralised rows, without a word; one that
  // takes no more rows is a failure.
  Disque.SurChemin("Central.qvd");
  Boite.Oublie();
  Disque.Programme(1, ENOSPC, SystemeFautif::Ouvertures);
  const std::string sans = Texte<CEtatDetailDoc>(parMois);
  EXPECT_EQ(Disque.NbPannes(), 1u);
  EXPECT_THAT(LignesAvec(sans, "\\T019Honoraires"), IsEmpty());
  EXPECT_THAT(Rangees(sans, "Total:")[0], ElementsAre("Total:", "1119,60 €", "1119,60 €"));
  EXPECT_THAT(Boite.Erreurs, IsEmpty());
  Disque.Programme(1, ENOSPC, SystemeFautif::Reservation, false);
  EXPECT_FALSE(Construit<CEtatDetailDoc>(parMois));
  EXPECT_EQ(Boite.Erreurs.size(), 1u);
  Disque.Repare();
  EXPECT_EQ(temporaire.Nombre(), 0u);
  EXPECT_TRUE(Construit<CEtatDetailDoc>(parMois));
}

}  // namespace
}  // namespace fenlor::test
