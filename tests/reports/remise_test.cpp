#include "banque/remise.h"

#include "core/valeurs.h"
#include "reports/etatremise.h"
#include "reports/petitlivre.h"

namespace fenlor::test {
namespace {

/// Ticks what a test says.
class DemandeurCoches : public DemandeurScript {
 public:
  explicit DemandeurCoches(CFenlorApp& app) : m_app(app) {}
  std::function<void(ListeRemise&)> Coche;
  std::string Fichier;

  bool DemandeRemise(const std::string& fichier, CriteresRemise& criteres) override {
    Fichier = fichier;
    criteres.compte = QVAPI::GetLongCompte("512");
    criteres.du = m_app.Reglages.GetDebutExercice();
    criteres.au = m_app.Reglages.GetFinExercice();
    criteres.etat = EtatRemise::Tous;
    ListeRemise liste(m_app, fichier);
    EXPECT_FALSE(liste.Remplit(criteres));
    if (Coche) Coche(liste);
    return Accepte;
  }

 private:
  CFenlorApp& m_app;
};

class EtatRemiseCheques : public PetitLivre {
 protected:
  void Etablit(AffichageLivre affichage, const std::string& nom, std::function<void(ListeRemise&)> coche) {
    Installe(affichage);
    ASSERT_TRUE(App().Reglages.EcritIni("BQ", "Compte", "30002 00550"));
    ASSERT_TRUE(App().Reglages.EcritIni("Activite", "Identification", "Docteur A\\B\r\n1, rue du Port"));
    DemandeurCoches demandeur(App());
    demandeur.Coche = std::move(coche);
    {
      CEtatRemiseDoc etat(App(), demandeur);
      ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
      VerifieMarquage(etat, nom);
      VerifiePages(etat, nom);
      EXPECT_FALSE(test::LitFichier(demandeur.Fichier).empty());
      EXPECT_EQ(etat.Criteres().au, App().Reglages.GetFinExercice());
    }
    EXPECT_FALSE(Magasin().QVExistFile(demandeur.Fichier));
  }
  u32 NbRemises() {
    u32 nombre = 0;
    for (u32 mouvement = 1; mouvement <= 8; ++mouvement)
      for (const Line& ligne : Lignes(mouvement)) nombre += ligne.Remise != 0;
    return nombre;
  }
};

TEST_F(EtatRemiseCheques, EnFranc) {
  Etablit(AffichageLivre::Franc, "remise-franc", [](ListeRemise& liste) { liste.BasculeImprime(1); });
  EXPECT_EQ(NbRemises(), 1u);
}
TEST_F(EtatRemiseCheques, EnEuro) {
  Etablit(AffichageLivre::Euro, "remise-euro", [](ListeRemise& liste) { liste.ImprimeTout(true); });
}
TEST_F(EtatRemiseCheques, LesDeuxMonnaies) {
  Etablit(AffichageLivre::Double, "remise-double", [](ListeRemise& liste) {
    EXPECT_FALSE(liste.RemetTout(true));
    liste.ImprimeTout(true);
  });
  EXPECT_GT(NbRemises(), 1u);
}

/// The marks stand whatever becomes of the paper: nothing ticked for it, or the progress stopped.
TEST_F(EtatRemiseCheques, SansPapier) {
  const test::TemporaireAPart temporaire;
  Installe(AffichageLivre::Euro);
  DemandeurCoches demandeur(App());
  const auto refuse = [&] {
    CEtatRemiseDoc etat(App(), demandeur);
    EXPECT_TRUE(etat.OnNewDocument() && Boite.Erreurs.empty());
  };
  demandeur.Accepte = false;
  demandeur.Coche = [](ListeRemise& liste) { EXPECT_FALSE(liste.RemetTout(true)); };
  refuse();
  EXPECT_EQ(NbRemises(), 1u) << "cancelled";
  demandeur.Accepte = true;
  refuse();
  EXPECT_GT(NbRemises(), 1u);
  demandeur.Coche = [](ListeRemise& liste) {
    EXPECT_FALSE(liste.RemetTout(false));
    liste.ImprimeTout(true);
  };
  Boite.ArretApres = 0;
  refuse();
  EXPECT_EQ(NbRemises(), 0u);
  EXPECT_EQ(temporaire.Nombre(), 0u);
}

}  // namespace
}  // namespace fenlor::test
