// Journal, balance, centralisation, VAT and reconciled lines: golden reports of the small book, and what goes
// wrong.

#include <algorithm>

#include "core/erreursexercice.h"
#include "journal/cabinetmedical.h"
#include "outils/systemefautif.h"
#include "pages/textes.h"
#include "reports/catalogue.h"
#include "reports/etatbalance.h"
#include "reports/etatcentralisation.h"
#include "reports/etatjournal.h"
#include "reports/etatrapprochement.h"
#include "reports/etattva.h"
#include "reports/livresetat.h"
#include "reports/petitlivre.h"

namespace fenlor::test {
namespace {

class JournalDeTest : public CEtatJournalDoc {
 public:
  JournalDeTest(CFenlorApp& app, DemandeurCriteres& demandeur, DemandeListe demande, bool comptable)
      : CEtatJournalDoc(app, demandeur) {
    SetCriteres(demande, comptable);
  }
};

// ------------------------------------------------------------ Golden reports

class EtatsTest : public PetitLivre {
 protected:
  DemandeListe Mois(i16 journal, unsigned mois, const std::string& filtre = {}) {
    DemandeListe demande;
    demande.journal = journal;
    demande.mois = Le(1, mois);
    demande.filtre = filtre.empty() ? filtre : Long(filtre);
    demande.mode = ListeToutes;
    return demande;
  }
  /// Takes the accounts of all other classes off the chart.
  void GardeComptes(std::string_view classes) {
    CPlan plan(App(), {});
    ASSERT_TRUE(plan.OpenFile());
    for (bool suite = plan.First(0); suite; suite = plan.Next(0))
      if (classes.find(plan.Rec->Compte[0]) == std::string_view::npos) {
        ASSERT_TRUE(plan.Delete(plan.GetPos()));
      }
  }
};

TEST_F(EtatsTest, InEachDisplay) {
  for (const auto& [affichage, monnaie] : affichages) {
    Installe(affichage);
    const std::string nom = monnaie;
    const bool euro = affichage == AffichageLivre::Euro;
    VerifieEtat<CEtatBalanceDoc>("balance-" + nom);
    EXPECT_EQ(Demandeur.Forme, FormeCriteres::Mouvements) << "the balance asks nothing else";
    VerifieEtat<CEtatCentralisationDoc>("centralisation-" + nom, [&](CriteresEtat& c) {
      if (!euro) c.compte = Long("512");
    });
    EXPECT_EQ(Demandeur.Forme, FormeCriteres::Compte);
    EXPECT_EQ(Demandeur.Comptes, unsigned{MasqueTous});
    VerifieEtat<CEtatCentralisationDoc>("centralisation-montant-" + nom, [&](CriteresEtat& c) {
      c.compte = Long(euro ? "4451" : "512");
      c.affichage = AffichageMontant;
    });
    VerifieEtat<CEtatTVADoc>("tva-" + nom);
    EXPECT_EQ(Demandeur.Forme, FormeCriteres::Periode);
    VerifieEtat<CEtatRapprochementDoc>("rapprochement-" + nom);
    EXPECT_EQ(Demandeur.Forme, FormeCriteres::Periode);
    Magasin().QVCloseExercice();
  }
}

TEST_F(EtatsTest, JournalAlwaysInBothCurrencies) {
  Installe(AffichageLivre::Euro);
  VerifieEtat<JournalDeTest>("journal-recettes", {}, Mois(JournalRecettes, 1), false);
  VerifieEtat<JournalDeTest>("journal-recettes-lignes", {}, Mois(JournalRecettes, 1), true);
  VerifieEtat<JournalDeTest>("journal-recettes-512", {}, Mois(JournalRecettes, 2, "512"), false);
  VerifieEtat<JournalDeTest>("journal-recettes-512-lignes", {}, Mois(JournalRecettes, 2, "512"), true);
  VerifieEtat<JournalDeTest>("journal-od", {}, Mois(JournalOD, 2, "512"), false);
  EXPECT_EQ(Demandeur.Nombre, 0u);

  DemandeListe partielle = Mois(JournalDepenses, 1, "599");
  partielle.criteres.Toutes = 0;
  partielle.criteres.Pointees = 1;
  VerifieEtat<JournalDeTest>("journal-depenses-partiel", {}, partielle, false);
  JournalDeTest etat(App(), Demandeur, partielle, false);
  ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
  EXPECT_EQ(etat.TitreDocument(), "Ecritures de dépenses"_w);
}

TEST_F(EtatsTest, EmptyBooks) {
  Installe(AffichageLivre::Euro, false);
  VerifieEtat<CEtatTVADoc>("tva-vide");
  VerifieEtat<CEtatRapprochementDoc>("rapprochement-vide");
  VerifieEtat<JournalDeTest>("journal-vide", {}, Mois(JournalOD, 1), true);
  VerifieEtat<CEtatCentralisationDoc>("centralisation-vide", [](CriteresEtat& c) { c.compte = Long("999"); });
  GardeComptes("");
  VerifieEtat<CEtatBalanceDoc>("balance-vide");
}

TEST_F(EtatsTest, ClassesUpToFiveMakeTheBalanceSheet) {
  Installe(AffichageLivre::Euro);
  GardeComptes("145");
  VerifieEtat<CEtatBalanceDoc>("balance-jusqua-5");
  GardeComptes("14");
  VerifieEtat<CEtatBalanceDoc>("balance-sans-5");
}

TEST_F(EtatsTest, TheSideOfABalanceIsThatOfTheFranc) {
  Installe(AffichageLivre::Euro, false);
  ChangeCompte("706", [](Plan& rec) {
    rec.DebitFranc = rec.CreditFranc = 100;
    rec.DebitEuro = 15.24;
    rec.CreditEuro = 15.25;
  });
  CEtatBalanceDoc etat(App(), Demandeur);
  ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
  EXPECT_NE(TexteEtat(etat).find(
                "\\R07715,24 \x80\\T078\\R09715,25 \x80\\T098\\R117-0,01 \x80\\T118\\R144\n\\S002"),
            std::string::npos);
}

TEST_F(EtatsTest, LinesCountByTheirOwnKindAndDate) {
  Installe(AffichageLivre::Euro);
  const u32 mouvement = Ajoute(JournalRecettes, Le(31, 3), "706", 80, 0, 0, "512", "Avril");
  ChangeLignes(mouvement, [&](Line& l) {
    l.DateLigne = Le(1, 4);
    if (l.TypeCompte == Recette) l.Rapprochee = 1;
  });
  const auto lignes = [&](Date du, Date au) {
    Demandeur.Change = [=](CriteresEtat& c) { c.du = du, c.au = au; };
    CEtatRapprochementDoc etat(App(), Demandeur);
    EXPECT_TRUE(App().Dit(etat.OnNewDocument()));
    const std::string texte = TexteEtat(etat);
    return std::count(texte.begin(), texte.end(), '\x80');
  };
  EXPECT_EQ(lignes(Le(1, 1), Le(31, 12)), 4) << "the line of account 706 is marked, and is none";
  ChangeLignes(mouvement, [&](Line& l) { l.Rapprochee = 1; });
  EXPECT_EQ(lignes(Le(31, 3), Le(31, 3)), 0);
  EXPECT_EQ(lignes(Le(1, 4), Le(1, 4)), 2);
  EXPECT_EQ(lignes(Le(2, 4), Le(1, 4)), 0) << "a period turned round";
}

// ------------------------------------------------------------ What goes wrong

class EtatsEnPanne : protected DisqueDeTest, public PetitLivre {
 protected:
  EtatsEnPanne() : PetitLivre(Cles::Memoire, 256u << 10, &Disque) {}

  struct Nomme {
    std::string nom;
    std::unique_ptr<CEtatComptable> etat;
  };
  /// All reports of the catalogue: the journal as its window prints it, without the slip, whose ticks have
  /// tests of their own.
  std::vector<Nomme> Etats() {
    std::vector<Nomme> etats;
    for (const DefinitionEtat& d : CatalogueEtats())
      if (d.nom != std::string_view("remise") && d.nom != std::string_view("journal"))
        etats.push_back({d.nom, d.fabrique(App(), Demandeur)});
    DemandeListe demande;
    demande.mois = Annee.empty() ? 0 : Le(1, 1);
    demande.mode = ListeToutes;
    etats.push_back({"journal", std::make_unique<JournalDeTest>(App(), Demandeur, demande, true)});
    return etats;
  }
};

TEST_F(EtatsEnPanne, StoppedCancelledOrNotWritten) {
  const TemporaireAPart temporaire;
  for (const auto& [nom, etat] : Etats()) {
    EXPECT_FALSE(App().Dit(etat->OnNewDocument())) << nom;
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrAucunExercice}) << nom;
    Boite.Oublie();
  }
  Installe(AffichageLivre::Euro);
  for (const auto& [nom, etat] : Etats()) {
    SCOPED_TRACE(nom);
    Demandeur.Accepte = false;
    Demandeur.Change = [](CriteresEtat& c) { c.centralisation = ParMois; };
    const unsigned demandes = Demandeur.Nombre;
    const bool construit = App().Dit(etat->OnNewDocument());
    EXPECT_EQ(construit, Demandeur.Nombre == demandes) << "without a form there is nothing to cancel";
    Demandeur.Accepte = true;

    // Stopped at each of its steps, until one is behind the last; the book has no assets.
    const bool biens = nom == "amortissements" || nom == "immobilisations" || nom == "plus-values";
    for (int k = 0;; ++k) {
      Boite.NbArrets = 0;
      Boite.ArretApres = k;
      const unsigned ouvertures = Boite.Ouvertures;
      const bool fini = App().Dit(etat->OnNewDocument());
      EXPECT_EQ(Boite.Ouvertures, ouvertures + 1);
      EXPECT_TRUE(Boite.Profondeur == 0 && Boite.Annulable && Boite.Erreurs.empty());
      if (!fini) {
        EXPECT_LE(Boite.Place, static_cast<u32>(k) + 1) << "goes on after it was stopped";
      }
      if (!fini) continue;
      EXPECT_TRUE(biens || (k > 0 && Boite.Place > 0 && Boite.Maximum >= Boite.Place));
      break;
    }
    Boite.ArretApres = -1;

    Disque.SurChemin("FNL");
    Disque.Programme(2, ENOSPC, SystemeFautif::Ecriture, false);
    EXPECT_FALSE(App().Dit(etat->OnNewDocument()));
    Disque.Repare();
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{ErrEtatEcriture});
    EXPECT_EQ(Boite.Profondeur, 0u);
    Boite.Oublie();
    EXPECT_TRUE(App().Dit(etat->OnNewDocument())) << "and once more, on a disk with room";
  }
}

TEST_F(EtatsEnPanne, ADiskThatFillsUpEndsTheWork) {
  Installe(AffichageLivre::Double);
  for (int i = 6100; i < 6199; ++i) ASSERT_TRUE(PoseCompte(std::to_string(i), Depense, {}, "Frais"));
  CEtatCentralisationDoc etat(App(), Demandeur);
  ASSERT_TRUE(App().Dit(etat.OnNewDocument()));
  ASSERT_GT(etat.TailleTexte(), 65536u) << "more than one write";
  const u32 pas = Boite.Place;
  Disque.SurChemin("FNL");
  Disque.Programme(2, ENOSPC, SystemeFautif::Ecriture, false);
  EXPECT_FALSE(App().Dit(etat.OnNewDocument()));
  EXPECT_LT(Boite.Place, pas) << "no further record is read";
}

/// Gives up at the second record of each walk.
class EtatQuiRenonce : public CEtatComptable {
 public:
  EtatQuiRenonce(CFenlorApp& app, DemandeurCriteres& demandeur, int parcours)
      : CEtatComptable(app, demandeur), m_parcours(parcours) {}
  int Vus = 0;

 protected:
  void BuildEtat() override {
    LivresEtat livres(App, *this);
    ASSERT_TRUE(livres.Ouvre());
    const Date fin = App.Reglages.GetFinExercice();
    const auto vu = [this](const auto&) {
      if (++Vus == 2) Abandonne();
    };
    if (m_parcours == 0) livres.Comptes(vu);
    if (m_parcours == 1) livres.LignesDatees(0, fin, vu);
    if (m_parcours == 2) livres.LignesDepuis({}, 0, [&](const Line& l) { return vu(l), true; });
  }

 private:
  int m_parcours;
};

TEST_F(EtatsEnPanne, AWalkEndsWithItsReport) {
  Installe(AffichageLivre::Euro);
  for (const int parcours : {0, 1, 2}) {
    EtatQuiRenonce etat(App(), Demandeur, parcours);
    EXPECT_FALSE(App().Dit(etat.OnNewDocument()));
    EXPECT_EQ(etat.Vus, 2) << parcours;
  }
}

}  // namespace
}  // namespace fenlor::test
