
#include <map>
#include <sstream>

#include "core/btfiles.h"
#include "core/valeurs.h"
#include "outils/systemefautif.h"
#include "reports/etatbalance.h"
#include "reports/etatcentralisation.h"
#include "reports/etatdetail.h"
#include "reports/etatextrait.h"
#include "reports/etatgrandlivre.h"
#include "reports/fichiercentral.h"
#include "reports/petitlivre.h"

namespace fenlor::test {
namespace {

class GrandsLivres : public PetitLivre {
 protected:
  using PetitLivre::PetitLivre;

  template <class Etat>
  std::string Texte(std::function<void(CriteresEtat&)> change = {}) {
    Demandeur.Change = std::move(change);
    Etat etat(App(), Demandeur);
    EXPECT_TRUE(App().Dit(etat.OnNewDocument()));
    VerifiePages(etat, "");
    return VersUtf8(TexteEtat(etat));
  }
  template <class Etat>
  bool Construit(std::function<void(CriteresEtat&)> change = {}) {
    Demandeur.Change = std::move(change);
    Etat etat(App(), Demandeur);
    return App().Dit(etat.OnNewDocument());
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

std::vector<std::string> LignesAvec(const std::string& texte, const std::string& contient) {
  std::vector<std::string> lignes;
  std::istringstream flux(texte);
  for (std::string ligne; std::getline(flux, ligne);)
    if (ligne.find(contient) != std::string::npos) lignes.push_back(ligne);
  return lignes;
}

// What is drawn, and where: the styles differ, the texts do not.
TEST_F(GrandsLivres, PagesOfBothStyles) {
  Installe(AffichageLivre::Euro);
  const auto compare = [this](auto etat, const std::string& nom) {
    ASSERT_TRUE(App().Dit(etat->OnNewDocument()));
    VerifieFeuilles(*etat, StylePapier::Classique, "page-" + nom + "-classique");
    VerifieFeuilles(*etat, StylePapier::Soignee, "page-" + nom + "-soignee");
  };
  Demandeur.Change = [](CriteresEtat& c) { c.mouvementes = true; };
  compare(std::make_unique<CEtatBalanceDoc>(App(), Demandeur), "balance");
  compare(std::make_unique<CEtatGrandLivreDoc>(App(), Demandeur), "grand-livre");
  Demandeur.Change = [](CriteresEtat& c) { c.compte = QVAPI::GetLongCompte("512"); };
  compare(std::make_unique<CEtatExtraitDoc>(App(), Demandeur), "extrait");
}

TEST_F(GrandsLivres, OnlyAccountsWithMovements) {
  Installe(AffichageLivre::Euro);
  const auto verifie = [](const std::string& tous, const std::string& mouvementes) {
    EXPECT_NE(tous.find("658"), std::string::npos);
    EXPECT_EQ(mouvementes.find("658"), std::string::npos) << mouvementes;
    for (const char* compte : {"108", "512", "531", "706"})
      EXPECT_NE(mouvementes.find(compte), std::string::npos) << compte;
    // The totals are the same.
    EXPECT_EQ(mouvementes.substr(mouvementes.rfind("Total")), tous.substr(tous.rfind("Total")));
  };
  const auto filtre = [](CriteresEtat& c) { c.mouvementes = true; };
  verifie(Texte<CEtatExtraitDoc>(), Texte<CEtatExtraitDoc>(filtre));
  verifie(Texte<CEtatCentralisationDoc>(), Texte<CEtatCentralisationDoc>(filtre));
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
    VerifieEtat<CEtatExtraitDoc>(std::string("extrait-solde-") + nom, [&](CriteresEtat& c) {
      banque(c);
      c.soldeProgressif = true;
      c.du = Le(1, 2);
      if (affichage == AffichageLivre::Franc) c.affichage = AffichageMontant;
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

TEST_F(GrandsLivres, LongAndOddLabels) {
  Installe(AffichageLivre::Double, false);
  const std::string longue(80, 'W');
  Ajoute(JournalRecettes, Le(3, 1), "706", 99999999.99, 0, 0, "512", longue);
  Ajoute(JournalRecettes, Le(4, 1), "706", 1, 0, 0, "512", "\\P\\F\\H100%s");
  const std::string texte = Texte<CEtatDetailDoc>();
  EXPECT_EQ(LignesAvec(texte, longue).size(), 1u + 1u);
  EXPECT_EQ(LignesAvec(texte, "\\\\P\\\\F\\\\H100%s").size(), 2u);
  ChangeCompte("512", [](Plan& rec) { PoseTexte(rec.Designation, "Banque \\H"); });
  EXPECT_THAT(Texte<CEtatGrandLivreDoc>(), testing::HasSubstr("512 Banque \\\\H"));
}

class LivresSurDisqueFautif : private DisqueDeTest, public GrandsLivres {
 protected:
  LivresSurDisqueFautif() : GrandsLivres(Cles::Memoire, 256u << 10, &Disque) {}
  using DisqueDeTest::Disque;
};

TEST_F(LivresSurDisqueFautif, WorkFileThatFails) {
  Installe(AffichageLivre::Euro);
  const TemporaireAPart temporaire;
  const auto parMois = [](CriteresEtat& c) { c.centralisation = ParMois; };
  {
    FichierCentral central(App());
    ASSERT_TRUE(central.Cree());
    EXPECT_EQ(temporaire.Nombre(), 0u) << "a program that is killed here leaves amounts behind";
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
