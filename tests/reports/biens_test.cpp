
#include "assets/annuites.h"
#include "reports/etatamortissements.h"
#include "reports/etatimmobilisations.h"
#include "reports/etatpmv.h"
#include "reports/petitlivre.h"

namespace fenlor::test {
namespace {

/// A small register, amounts in Euro, Franc at 6.55957:
///
///    1  01/07/1973  cabinet, 30 years, L 3.33          30,000.00
///    2  01/03/1996  radiographie, D 60 over 5           20,000.00
///    3  15/03/2000  table, L 20, VAT 19.6               1,000.00  (2001: 50.00 instead of 200.00)
///    4  10/06/1999  voiture, L 20, sold for 15,000     10,000.00  gain above its depreciation
///    5  01/01/2000  ordinateur, L 33.33, sold for 100   3,000.00  loss
///    6  01/04/2000  fauteuil, L 10, scrapped              800.00
///    7  01/10/2000  logiciel, E 100                     1,200.00
///    8  01/02/2000  droit au bail, no value             5,000.00
///
/// Sold and scrapped on 01/02 of the book's year.
class Biens : public PetitLivre {
 protected:
  Immobilisation& Bien(const char* achat, std::string_view nom, f64 valeur, u8 type, f64 duree, f64 taux) {
    Immobilisation& immo = m_biens.emplace_back();
    immo.Numero = static_cast<u32>(m_biens.size());
    PoseTexte(immo.Designation, nom);
    immo.DateAchat = GetDate(achat);
    immo.PrixEuro = immo.ValeurAmortissableEuro = valeur;
    immo.TypeAmortissement = type;
    immo.Duree = duree;
    immo.TauxAnnuel = taux;
    return immo;
  }
  void Ecrit() {
    for (Immobilisation& immo : m_biens) {
      immo.PrixFranc = QVAPI::ConvertEuroToFranc(TauxFranc, immo.PrixEuro);
      immo.TVAFranc = QVAPI::ConvertEuroToFranc(TauxFranc, immo.TVAEuro);
      immo.ValeurAmortissableFranc = QVAPI::ConvertEuroToFranc(TauxFranc, immo.ValeurAmortissableEuro);
      immo.PrixCessionFranc = QVAPI::ConvertEuroToFranc(TauxFranc, immo.PrixCessionEuro);
      ASSERT_TRUE(Magasin().WriteImmobilisations(immo));
    }
    m_biens.clear();
  }
  void Cede(Immobilisation& immo, f64 prix) {
    immo.DateCession = Le(1, 2);
    immo.PrixCessionEuro = prix;
    immo.Rebut = prix == 0;
  }
  void InstalleBiens(AffichageLivre affichage) {
    m_biens.reserve(10);
    Installe(affichage, false);
    Bien("01/07/1973", "Cabinet, 12 rue des Tilleuls", 30000, Lineaire, 30, 3.33);
    Bien("01/03/1996", "Radiographie", 20000, Degressif, 5, 60);
    Immobilisation& table = Bien("15/03/2000", "Table d'examen \\ Dupont & Fils", 1000, Lineaire, 5, 20);
    table.PrixEuro = 1196;
    table.TVAEuro = 196;
    Cede(Bien("10/06/1999", "Voiture", 10000, Lineaire, 5, 20), 15000);
    Cede(Bien("01/01/2000", "Ordinateur", 3000, Lineaire, 3, 33.33), 100);
    Cede(Bien("01/04/2000", "Fauteuil", 800, Lineaire, 10, 10), 0);
    Bien("01/10/2000", "Logiciel", 1200, Exceptionnel, 1, 100);
    Bien("01/02/2000", "Droit au bail", 5000, Lineaire, 10, 10).ValeurAmortissableEuro = 0;
    Ecrit();
    Amortissement reel{};
    reel.Numero = 3;
    reel.Annee = 2001;
    reel.ReelEuro = 50;
    reel.ReelFranc = 327.98;
    ASSERT_TRUE(Magasin().WriteAmortissements(reel));
  }
  template <class Etat>
  std::string TexteDe() {
    Etat etat(App(), Demandeur);
    const Refus refus = etat.OnNewDocument();
    return refus ? std::to_string(refus.numero) : VersUtf8(test::TexteEtat(etat));
  }

  std::vector<Immobilisation> m_biens;
};

TEST_F(Biens, LesTroisEtatsDansLesTroisAffichages) {
  for (const auto& [affichage, nom] : affichages) {
    InstalleBiens(affichage);
    VerifieEtat<CEtatAmortissementsDoc>(std::string("amortissements-") + nom);
    VerifieEtat<CEtatPMVDoc>(std::string("plus-values-") + nom);
    VerifieEtat<CEtatImmobilisationsDoc>(std::string("immobilisations-") + nom);
  }
}

TEST_F(Biens, SansBienEtNomsLongs) {
  Installe(AffichageLivre::Double, false);
  VerifieEtat<CEtatAmortissementsDoc>("amortissements-vide");
  VerifieEtat<CEtatPMVDoc>("plus-values-vide");
  VerifieEtat<CEtatImmobilisationsDoc>("immobilisations-vide");
  m_biens.reserve(10);
  Immobilisation& immo = Bien("31/12/1960", std::string(80, 'W'), 2999999.99, Lineaire, 50, 2);
  immo.TVAEuro = 512345.67;
  Cede(immo, 123456.78);
  Bien("01/01/1901", "Cave", 10000, Lineaire, 125, 0.8);
  Ecrit();
  VerifieEtat<CEtatAmortissementsDoc>("amortissements-long");
  VerifieEtat<CEtatPMVDoc>("plus-values-long");
  VerifieEtat<CEtatImmobilisationsDoc>("immobilisations-long");
}

TEST_F(Biens, LesAnneesDesPlusValues) {
  InstalleBiens(AffichageLivre::Euro);
  const struct {
    const char* exercice;
    bool deux;
    const char *avec, *sans;
  } cas[] = {{"1998", false, "\\T064\\R07598394", " €"},
             {"1998", true, "\\T064\\R07598394", " €"},
             {"1999", false, "\\R07515000,00 €", "98394"},
             {"2000", true, "\\T064\\R07598394", "@"},
             {"2000", true, "\\R07515000,00 €", "@"}};
  for (const auto& c : cas) {
    App().NomExercice = c.exercice;
    App().AfficherDouble = c.deux;
    Demandeur.Change = [](CriteresEtat& criteres) {
      criteres.du = GetDate("31/01/2003"), criteres.au = GetDate("01/02/2003");
    };
    const std::string texte = TexteDe<CEtatPMVDoc>();
    EXPECT_NE(texte.find(c.avec), std::string::npos) << c.exercice << c.avec;
    EXPECT_EQ(texte.find(c.sans), std::string::npos) << c.exercice << c.sans;
  }
  Demandeur.Change = [](CriteresEtat& criteres) { criteres.du = GetDate("01/02/2003"); };
  EXPECT_EQ(TexteDe<CEtatPMVDoc>().find("Voiture"), std::string::npos) << "the first day does not count";
}

TEST_F(Biens, UnArretGardeCeQuiEstEcrit) {
  InstalleBiens(AffichageLivre::Euro);
  Boite.ArretApres = 1;
  const std::string annexe = TexteDe<CEtatAmortissementsDoc>();
  EXPECT_NE(annexe.find("Radiographie"), std::string::npos);
  EXPECT_EQ(annexe.find("Voiture"), std::string::npos);
  EXPECT_NE(annexe.find("50000,00 €"), std::string::npos) << "the sums of two";
  Boite.NbArrets = 0;
  const std::string registre = TexteDe<CEtatImmobilisationsDoc>();
  EXPECT_NE(registre.find("Radiographie"), std::string::npos);
  EXPECT_EQ(registre.find("Voiture"), std::string::npos);
  EXPECT_EQ(registre.substr(registre.size() - 2), "\\X");
  Boite.NbArrets = 0;
  EXPECT_EQ(TexteDe<CEtatPMVDoc>().find("Voiture"), std::string::npos) << "no report at all";
}

}  // namespace
}  // namespace fenlor::test
