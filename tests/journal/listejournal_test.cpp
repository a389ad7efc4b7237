#include "journal/listejournal.h"

#include <cstdio>

#include "core/btfiles.h"
#include "core/texte.h"
#include "journal/cabinetmedical.h"

namespace fenlor::test {
namespace {

class ListeJournal : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }

  DemandeListe Demande(i16 journal = JournalRecettes, u16 mode = ListeToutes, std::string_view filtre = {},
                       Date mois = FaitDate(1, 3, 2003)) {
    DemandeListe demande;
    demande.journal = journal;
    demande.mois = mois;
    demande.mode = mode;
    demande.filtre = Long(filtre);
    demande.criteres = CriteresParDefaut(App());
    return demande;
  }
  MoisJournal Liste(const DemandeListe& demande) {
    MoisJournal mois;
    EXPECT_FALSE(ListeMois(App(), demande, mois));
    return mois;
  }
  TotauxListe Totaux(const DemandeListe& demande, const std::vector<u32>& mouvements) {
    TotauxListe totaux;
    EXPECT_FALSE(TotauxEntrees(App(), demande, mouvements, totaux));
    return totaux;
  }
  bool Listee(const DemandeListe& demande, u32 mouvement) {
    bool listee = false;
    EXPECT_FALSE(EstListee(App(), demande, mouvement, listee));
    return listee;
  }
  std::vector<u32> Numeros(const DemandeListe& demande) {
    std::vector<u32> numeros;
    for (const EntreeListe& e : Liste(demande).entrees) numeros.push_back(e.mouvement);
    return numeros;
  }
  std::string Euros(const TotauxListe& t) {
    char texte[64];
    std::snprintf(texte, sizeof texte, "%.2f %.2f", t.debitEuro, t.creditEuro);
    return texte;
  }
  void Deplace(u32 mouvement, Date date) {
    Mouvement entete = Entete(mouvement);
    entete.Date = date;
    ASSERT_TRUE(Magasin().UpdateMouvements(App().PathExercice, mouvement, entete));
  }
  u32 Fractionnee(f64 banque, f64 caisse) {
    return Enregistre(Multiple(JournalRecettes, "706", {{"512", banque}, {"531", caisse}}));
  }
  /// "libelle|tresorerie|euro|flags|rubrique|compte|designation" of each row.
  std::vector<std::string> Rangees(u32 mouvement, bool comptable, std::string_view filtre = {}) {
    EntreeJournal entree;
    EXPECT_TRUE(LitEntreeJournal(App(), mouvement, comptable, Long(filtre), entree));
    std::vector<std::string> textes;
    for (const RangeeJournal& r : entree.rangees) {
      char montant[48];
      std::snprintf(montant, sizeof montant, "%s%.2f", comptable ? r.credit ? "C " : "D " : "", r.euro);
      const std::string marques = std::string(r.pointee ? "P" : "") + (r.remise ? "B" : "") +
                                  (r.rapprochee ? "R" : "") + (r.validee ? "V" : "");
      textes.push_back(r.libelle + '|' + r.tresorerie + '|' + montant + '|' + marques + '|' + r.compte + '|' +
                       r.designation);
    }
    return textes;
  }
  using Textes = std::vector<std::string>;
};

TEST_F(ListeJournal, FiltreSurUneEcritureFractionnee) {
  const u32 fractionnee = Fractionnee(60, 40);
  const u32 banque = Enregistre(Ecriture(JournalRecettes, "706", 10));
  const u32 rendue = Enregistre(Ecriture(JournalRecettes, "706", -15, "531", FaitDate(16, 3, 2003)));

  EXPECT_EQ(Euros(Liste(Demande()).totaux), "125.00 125.00");
  EXPECT_EQ(Numeros(Demande(JournalRecettes, ListeToutes, "512")), (std::vector{fractionnee, banque}));
  EXPECT_EQ(Euros(Liste(Demande(JournalRecettes, ListeToutes, "512")).totaux), "70.00 70.00");
  // Whatever their side: the cash paid out counts as the cash received.
  const DemandeListe caisse = Demande(JournalRecettes, ListeToutes, "531");
  EXPECT_EQ(Numeros(caisse), (std::vector{fractionnee, rendue}));
  EXPECT_EQ(Euros(Liste(caisse).totaux), "55.00 55.00");
  EXPECT_EQ(Euros(Totaux(caisse, {rendue})), "15.00 15.00");
  EXPECT_EQ(Euros(Totaux(Demande(), {rendue, banque})), "25.00 25.00");
  EXPECT_EQ(Euros(Totaux(caisse, {})), "0.00 0.00");
  EXPECT_TRUE(Numeros(Demande(JournalRecettes, ListeToutes, "514")).empty());

  ChangeLignes(fractionnee, [](Line& l) {
    if (LitTexte(l.Compte) == Long("531")) l.Rapprochee = 1;
    if (LitTexte(l.Compte) == Long("512")) l.Remise = 1;
  });
  EXPECT_EQ(Rangees(fractionnee, false), Textes{"Essai|***|100.00|BR|706|Honoraires"});
  EXPECT_EQ(Rangees(fractionnee, false, "531"), Textes{"Essai|***|40.00|R|706|Honoraires"});
  EXPECT_EQ(Rangees(fractionnee, true, "531"),
            (Textes{"Essai||C 100.00||706|Honoraires", "Essai||D 60.00|B|512|Banque",
                    "Essai||D 40.00|R|531|Caisse"}))
      << "every line, whatever the account of the window";
  EXPECT_EQ(Rangees(rendue, false), Textes{"Essai|CA|-15.00||706|Honoraires"});
  EXPECT_EQ(Rangees(rendue, true), (Textes{"Essai||D 15.00||706|Honoraires", "Essai||C 15.00||531|Caisse"}));
}

TEST_F(ListeJournal, MoisParSonNumeroSeul) {
  ASSERT_TRUE(Magasin().QVCreateExercice("2004", FaitDate(1, 1, 2004), FaitDate(30, 6, 2005), true, true));
  ASSERT_TRUE(OuvreExercice("2004"));
  ASSERT_TRUE(PoseCompte("512", Tresorerie, "BQ"));
  ASSERT_TRUE(PoseCompte("706", Recette, "HONOR"));
  const auto le = [&](unsigned jour, unsigned mois, unsigned annee) {
    return AjouteSimple(JournalRecettes, FaitDate(jour, mois, annee), "706", 10, "512");
  };
  const auto mois = [&](unsigned numero, unsigned annee) {
    return Numeros(Demande(JournalRecettes, ListeToutes, {}, FaitDate(1, numero, annee)));
  };
  const u32 mars = le(5, 3, 2004), autreMars = le(5, 3, 2005);
  EXPECT_EQ(mois(3, 2004), (std::vector{mars, autreMars})) << "nothing between them stops the walk";
  EXPECT_EQ(mois(3, 2005), std::vector{autreMars});
  const u32 avril = le(5, 4, 2004);
  EXPECT_EQ(mois(3, 2004), std::vector{mars});
  EXPECT_EQ(mois(4, 2004), std::vector{avril});
  EXPECT_TRUE(mois(5, 2004).empty()) << "the next entry lies in another month";
  // Another journal does not stop it: it stands elsewhere in the key.
  ASSERT_TRUE(PoseCompte("6132", Depense, "LOYER"));
  AjouteSimple(JournalDepenses, FaitDate(7, 3, 2004), "6132", 10, "512");
  EXPECT_EQ(mois(3, 2004), std::vector{mars});
  // A day that the month does not have stays in the month.
  Deplace(avril, FaitDate(31, 2, 2004));
  EXPECT_EQ(mois(2, 2004), std::vector{avril});
  EXPECT_EQ(mois(3, 2004), (std::vector{mars, autreMars}));
  EXPECT_TRUE(Listee(Demande(JournalRecettes, ListeToutes, {}, FaitDate(1, 2, 2004)), avril));
}

TEST_F(ListeJournal, UneEcritureQuitteLaListe) {
  const u32 mouvement = Enregistre(Ecriture(JournalRecettes, "706", 100));
  const u32 autre = Enregistre(Ecriture(JournalRecettes, "706", 50));
  struct Cas {
    const char* quoi;
    DemandeListe demande;
    std::function<void()> change;
  };
  const auto sans = [&](u32 CritereEcriture::*marque) {
    DemandeListe demande = Demande();
    demande.criteres.Toutes = 0;
    demande.criteres.*marque = 1;
    return demande;
  };
  DemandeListe quinze = Demande(), autreCompte = Demande();
  quinze.criteres.TousJours = 0;
  quinze.criteres.JourDe = quinze.criteres.JourA = 15;
  autreCompte.criteres.TousComptes = 0;
  PoseTexte(autreCompte.criteres.CompteDe, "7065");
  PoseTexte(autreCompte.criteres.CompteA, "7065");
  EXPECT_TRUE(Numeros(autreCompte).empty());
  DemandeListe rubrique = Demande();
  rubrique.criteres.ToutesRubriques = 0;
  PoseTexte(rubrique.criteres.RubriqueDe, "01");
  PoseTexte(rubrique.criteres.RubriqueA, "99");
  const auto poseRubrique = [&](const char* code) {
    ChangeCompte("706", [code](Plan& rec) { PoseTexte(rec.Rubrique, code); });
  };
  poseRubrique("02 ");
  const Cas cas[] = {
      {"pointed", sans(&CritereEcriture::NonPointees),
       [&] { ASSERT_FALSE(PointeEcriture(App(), mouvement)); }},
      {"remitted", sans(&CritereEcriture::NonRemises),
       [&] { ChangeLignes(mouvement, [](Line& l) { l.Remise = l.Role == RoleTresorerie; }); }},
      {"linked", sans(&CritereEcriture::NonAssociees),
       [&] { ChangeLignes(mouvement, [](Line& l) { l.LienB = 0x10000; }); }},
      {"of another day", quinze, [&] { Deplace(mouvement, FaitDate(16, 3, 2003)); }},
      {"reconciled", sans(&CritereEcriture::NonRapprochees),
       [&] { ChangeLignes(mouvement, [](Line& l) { l.Rapprochee = l.Role == RoleTresorerie; }); }},
      {"validated", Demande(JournalRecettes, ListeBrouillard),
       [&] { ASSERT_TRUE(Magasin().ValidMouvements(App().PathExercice, mouvement, 1)); }},
      {"a draft again", Demande(JournalRecettes, ListeValidees),
       [&] { ASSERT_TRUE(Magasin().ValidMouvements(App().PathExercice, mouvement, 0)); }},
      {"of another month", Demande(), [&] { Deplace(mouvement, FaitDate(15, 5, 2003)); }},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    EXPECT_TRUE(Listee(c.demande, mouvement));
    c.change();
    EXPECT_FALSE(Listee(c.demande, mouvement));
    EXPECT_EQ(Numeros(c.demande).size(), c.demande.mode == ListeValidees ? 0u : 1u);
  }
  EXPECT_TRUE(Listee(rubrique, autre));
  poseRubrique("A1 ");
  EXPECT_FALSE(Listee(rubrique, autre));
  EXPECT_TRUE(Numeros(rubrique).empty());
  ASSERT_TRUE(Magasin().RemoveMouvements(App().PathExercice, autre));
  EXPECT_FALSE(Listee(Demande(), autre));
  EXPECT_TRUE(Boite.Erreurs.empty());
}

TEST_F(ListeJournal, RangeesDeChaqueSorte) {
  // Tax and personal share: 60 % of 119.60, a fifth of it tax.
  const u32 depense = Enregistre(Ecriture(JournalDepenses, "6154", 119.6));
  EXPECT_EQ(Rangees(depense, false), Textes{"Essai|BQ|119.60||6154|Compte 6154"});
  EXPECT_EQ(Rangees(depense, true).size(), 4u);
  EXPECT_EQ(Rangees(depense, true).back(), "Essai||C 119.60||512|Banque");
  // All of it personal: the main account is still the one that was chosen.
  SaisieEcriture privee = Ecriture(JournalDepenses, "6132", 30);
  privee.montants = ChaineProfessionnel(App(), LitCompte("6132"), 30, 0);
  EXPECT_EQ(Rangees(Enregistre(privee), false), Textes{"Essai|BQ|30.00||6132|Loyer"});

  EntreeJournal entree;
  ChangeLignes(depense, [](Line& l) {
    l.Pointee = l.Rang == 0;
    l.Validee = l.Rang != 0;
    l.LienId = 5;
  });
  ASSERT_TRUE(LitEntreeJournal(App(), depense, false, {}, entree));
  EXPECT_TRUE(entree.pointee && entree.liee && !entree.validee) << "one line points, all validate";
  EXPECT_EQ(Rangees(depense, true).front(), "Essai||D 60.00|P|6154|Compte 6154");

  // Words of a line of an opération diverse stand as its label; without any, those of the entry.
  const u32 od = EnregistreLesLignes({{"512", "Chèque reçu"_w, 10, 0}, {"108", {}, 0, 10}});
  EXPECT_EQ(Rangees(od, true),
            (Textes{"Chèque reçu||D 10.00||512|Banque"_w, "Essai d'OD||C 10.00||108|Exploitant"}));

  // An opération diverse in the journal of receipts shows there as an entry does.
  Line ligne{};
  ligne.Mouvement = 900;
  ligne.Journal = JournalRecettes;
  ligne.Ligne = 7;
  ligne.Date = ligne.DateLigne = FaitDate(20, 3, 2003);
  ligne.MontantEuro = 25;
  ligne.MontantFranc = 164;
  ligne.Role = RoleLibre;
  PoseTexte(ligne.Libelle, "Ancienne");
  PoseTexte(ligne.Compte, Long("531"));
  ASSERT_TRUE(Magasin().AddLines(App().PathExercice, ligne));
  PoseTexte(ligne.Compte, Long("706"));
  ligne.Sens = 1;
  ASSERT_TRUE(Magasin().AddLines(App().PathExercice, ligne));
  EXPECT_EQ(Rangees(900, false), Textes{"Ancienne|CA|25.00||706|Honoraires"});
  const DemandeListe caisse = Demande(JournalRecettes, ListeBrouillard, "531");
  EXPECT_EQ(Numeros(caisse), std::vector<u32>{900});
  EXPECT_EQ(Liste(caisse).entrees.front().lignes, 2u);

  EXPECT_FALSE(LitEntreeJournal(App(), 12345, false, {}, entree));
  EXPECT_TRUE(entree.rangees.empty());
}

TEST_F(ListeJournal, TotauxExacts) {
  QVAPI::Unite unite(Magasin());
  const u32 plan = Magasin().OpenPlan({}), journal = Magasin().OpenJournal({});
  for (int i = 0; i < 1000; ++i) AjouteSimple(JournalRecettes, FaitDate(15, 3, 2003), "706", 0.1, "512");
  ASSERT_TRUE(unite.Valide());
  const MoisJournal mois = Liste(Demande());
  EXPECT_EQ(mois.totaux.debitEuro, 100.0);
  EXPECT_EQ(mois.totaux.creditEuro, 100.0);
  EXPECT_EQ(mois.totaux.debitFranc, 660.0);
  Magasin().ClosePlan(plan);
  Magasin().CloseJournal(journal);
}

TEST_F(ListeJournal, JournalTroisSansFiltre) {
  const u32 od = EnregistreLesLignes({{"512", {}, 10, 0}, {"531", {}, 0, 10}});
  EXPECT_EQ(Numeros(Demande(JournalOD, ListeToutes, "514")), std::vector{od});
  EXPECT_EQ(Euros(Liste(Demande(JournalOD, ListeToutes, "512")).totaux), "10.00 10.00");
}

TEST_F(ListeJournal, SansExercice) {
  Enregistre(Ecriture(JournalRecettes, "706", 100));
  const DemandeListe demande = Demande();
  App().NomExercice.clear();
  App().PathExercice.clear();
  MoisJournal mois;
  EXPECT_FALSE(ListeMois(App(), demande, mois));
  EXPECT_TRUE(mois.entrees.empty());
  EXPECT_FALSE(Listee(demande, 1));
  EXPECT_TRUE(Boite.Erreurs.empty());
}

}  // namespace
}  // namespace fenlor::test
