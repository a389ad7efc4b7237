#include "journal/traitements.h"

#include "core/erreurs.h"
#include "core/texte.h"
#include "journal/cabinetmedical.h"
#include "journal/textes.h"
#include "outils/systemefautif.h"
#include "store/definitions.h"

namespace fenlor::test {
namespace {

class Traitements : public CabinetMedical {
 public:
  explicit Traitements(Systeme* systeme = nullptr) : CabinetMedical(Cles::Memoire, 256u << 10, systeme) {}
  void SetUp() override { Installe(); }

  u32 Recette(Date date, f64 ttc = 100) {
    return Enregistre(Ecriture(JournalRecettes, "706", ttc, "512", date));
  }
  void Valide(u32 mouvement, bool valide = true) {
    ASSERT_TRUE(Magasin().ValidMouvements(App().PathExercice, mouvement, valide));
  }
  void Lie(u32 mouvement) {
    Mouvement entete = Entete(mouvement);
    entete.LienId = 7;
    entete.Reserve134 = 8;
    entete.LienB = 0x10007;
    ASSERT_TRUE(Magasin().UpdateMouvements(App().PathExercice, mouvement, entete));
  }
  DemandeValidation Annee() {
    DemandeValidation demande;
    demande.du = FaitDate(1, 1, 2003);
    demande.au = FaitDate(31, 12, 2003);
    return demande;
  }
  std::vector<u32> Validees(const std::vector<u32>& mouvements) {
    std::vector<u32> validees;
    for (const u32 m : mouvements) validees.push_back(+Entete(m).Validee);
    return validees;
  }
  std::vector<std::string> AnomaliesDesCles() {
    const u32 poignee = Magasin().OpenJournal({});
    const EtatFichier etat = Magasin().QVVerifie(FichierJournal);
    Magasin().CloseJournal(poignee);
    return etat.anomalies;
  }
};

TEST_F(Traitements, CeQuiPasseEstValide) {
  // One letter an entry, of which one line has the mark.
  const u32 a = Recette(FaitDate(1, 3, 2003), 50), b = Recette(FaitDate(15, 3, 2003));
  const u32 c = Enregistre(Ecriture(JournalDepenses, "6132", 150, "512", FaitDate(31, 3, 2003)));
  const u32 d = EnregistreLesLignes({{"512", {}, 30, 0}, {"531", {}, 0, 30}});
  ChangeLignes(a, [](Line& ligne) { ligne.Rapprochee = ligne.Rang == 0; });
  ChangeLignes(b, [](Line& ligne) { ligne.Pointee = ligne.Rang == 1; });
  ChangeLignes(c, [](Line& ligne) { ligne.Remise = ligne.Rang == 1; });
  using D = DemandeValidation;
  const auto montants = [](f64 min, f64 max, bool euro) {
    return [=](D& demande) {
      demande.tousMontants = false;
      demande.montantMin = min;
      demande.montantMax = max;
      demande.euro = euro;
    };
  };
  const struct {
    const char* validees;
    std::function<void(D&)> choix;
  } cas[] = {
      {"abcd", [](D&) {}},
      {"ab", [](D& d) { d.journal = JournalRecettes; }},
      {"c", [](D& d) { d.journal = JournalDepenses; }},
      {"d", [](D& d) { d.journal = JournalOD; }},
      {"abd", [](D& d) { d.du = FaitDate(1, 3, 2003), d.au = FaitDate(15, 3, 2003); }},
      {"", [](D& d) { d.du = FaitDate(2, 3, 2003), d.au = FaitDate(14, 3, 2003); }},
      {"a", [](D& d) { d.toutes = false, d.rapprochees = true; }},
      {"bc", [](D& d) { d.toutes = false, d.pointees = d.remises = true; }},
      {"", [](D& d) { d.toutes = false; }},
      {"ab", montants(50, 100, true)},
      {"a", montants(300, 400, false)},
      {"abcd", montants(0, 0, true)},
      {"b", [&](D& d) { montants(50, 100, true)(d), d.toutes = false, d.pointees = true; }},
  };
  for (const auto& cas1 : cas) {
    DemandeValidation demande = Annee();
    cas1.choix(demande);
    BilanLot bilan;
    ASSERT_FALSE(TraiteBrouillard(App(), demande, bilan));
    std::string validees;
    for (const auto& [lettre, m] : {std::pair{'a', a}, {'b', b}, {'c', c}, {'d', d}}) {
      const std::vector<Line> lignes = Lignes(m);
      if (lignes[0].Validee && lignes[1].Validee) validees += lettre;
      EXPECT_EQ(!lignes[0].Validee, !lignes[1].Validee);
    }
    EXPECT_EQ(validees, cas1.validees) << (&cas1 - cas);
    EXPECT_EQ(validees.size(), bilan.ecritures);
    demande = Annee();
    demande.action = ActionBrouillard::Devalider;
    ASSERT_FALSE(TraiteBrouillard(App(), demande, bilan));
  }
}

TEST_F(Traitements, ProgressionEtArret) {
  std::vector<u32> mouvements;
  for (unsigned jour = 1; jour <= 5; ++jour) mouvements.push_back(Recette(FaitDate(jour, 3, 2003)));
  const u64 avant = Magasin().NbSynchros();
  Boite.ArretApres = 2;
  BilanLot r;
  ASSERT_FALSE(TraiteBrouillard(App(), Annee(), r));
  EXPECT_TRUE(r.arrete);
  EXPECT_EQ(2u, r.ecritures);
  EXPECT_EQ((std::vector<u32>{1, 1, 0, 0, 0}), Validees(mouvements)) << "what is done stays";
  EXPECT_EQ(avant + 1, Magasin().NbSynchros());

  Boite = {};
  ASSERT_FALSE(TraiteBrouillard(App(), Annee(), r));
  EXPECT_FALSE(r.arrete);
  EXPECT_EQ(3u, r.ecritures);
  EXPECT_EQ(10u, r.lignes);
  EXPECT_EQ(avant + 2, Magasin().NbSynchros()) << "a batch costs one sync";
  EXPECT_EQ(Texte(TitreValidation), Boite.Titre);
  EXPECT_TRUE(Boite.Annulable);
  EXPECT_EQ(10u, Boite.Maximum) << "sized by lines";
  EXPECT_EQ(10u, Boite.Place);
  EXPECT_EQ(0u, Boite.Profondeur);

  Boite = {};
  DemandeValidation vide = Annee();
  vide.du = FaitDate(1, 5, 2003);
  ASSERT_FALSE(TraiteBrouillard(App(), vide, r));
  EXPECT_EQ(0u, r.lignes + r.ecritures);
  EXPECT_EQ(1u, Boite.Ouvertures) << "shown and closed";
  EXPECT_EQ(0u, Boite.Place);
  EXPECT_EQ(avant + 2, Magasin().NbSynchros());
}

class TraitementsPanne : protected DisqueDeTest, public Traitements {
 protected:
  TraitementsPanne() : Traitements(&Disque) {}
};

TEST_F(TraitementsPanne, UnDisquePleinArreteEtNeLaisseRienAMoitie) {
  std::vector<u32> mouvements;
  for (unsigned jour = 1; jour <= 3; ++jour) mouvements.push_back(Recette(FaitDate(jour, 3, 2003)));
  BilanLot bilan;
  const unsigned refuses = AChaquePanne(
      Disque, ErrMagasin,
      [&] {
        Boite.Oublie();
        return TraiteBrouillard(App(), Annee(), bilan);
      },
      [&](const Refus& refus) {
        const u32 etat = refus ? 0 : 1;
        EXPECT_EQ(std::vector<u32>(3, etat), Validees(mouvements));
        EXPECT_EQ(3 * etat, bilan.ecritures);
        EXPECT_EQ(refus.dit, !Boite.Erreurs.empty()) << "told once";
        EXPECT_EQ(0u, Boite.Profondeur);
        for (const u32 m : mouvements) Valide(m, false);
      });
  EXPECT_GT(refuses, 0u);
}

TEST_F(Traitements, Delier) {
  const u32 liee = Recette(FaitDate(3, 3, 2003)), libre = Recette(FaitDate(4, 3, 2003));
  Lie(liee);
  Valide(liee);
  DemandeValidation demande = Annee();
  demande.action = ActionBrouillard::Delier;
  BilanLot bilan;
  ASSERT_FALSE(TraiteBrouillard(App(), demande, bilan));
  EXPECT_EQ(1u, bilan.ecritures);
  const Mouvement entete = Entete(liee);
  EXPECT_EQ(0u, u32{entete.LienId} + u32{entete.Reserve134});
  EXPECT_EQ(0x10007u, u32{entete.LienB}) << "the link's own keys stay";
  EXPECT_EQ((std::vector<u32>{1, 0}), Validees({liee, libre}));
  EXPECT_EQ(std::vector<std::string>{}, AnomaliesDesCles());
}

TEST_F(Traitements, Renumerotation) {
  const u32 a = Recette(FaitDate(3, 3, 2003)), b = Recette(FaitDate(2, 3, 2003)),
            c = Recette(FaitDate(1, 3, 2003));
  const u32 validee = Recette(FaitDate(4, 3, 2003));
  Recette(FaitDate(4, 4, 2003));
  Valide(validee);
  const auto numeros = [&] {
    std::vector<u32> lignes;
    for (const u32 m : {a, b, c, validee}) lignes.push_back(+Entete(m).Ligne);
    return lignes;
  };
  DemandeListe demande;
  demande.mois = FaitDate(1, 3, 2003);
  demande.mode = ListeToutes;
  Boite.Reponses = {RepNon, RepOui};
  u32 nombre = 0;
  EXPECT_EQ(unsigned{QuestionRenumerotation}, RenumeroteEcritures(App(), demande, nombre).numero);
  EXPECT_EQ((std::vector<u32>{1, 2, 3, 4}), numeros());
  EXPECT_EQ(0u, Boite.Ouvertures);
  const u64 avant = Magasin().NbSynchros();
  EXPECT_FALSE(RenumeroteEcritures(App(), demande, nombre));
  EXPECT_EQ(4u, nombre);
  EXPECT_EQ((std::vector<u32>{3, 2, 1, 4}), numeros());
  EXPECT_EQ(avant + 1, Magasin().NbSynchros());
  EXPECT_EQ(8u, Boite.Maximum) << "twice the rows";
  EXPECT_EQ(8u, Boite.Place);
  EXPECT_EQ((std::vector<std::string>{Texte(TexteRenumerotation)}), Boite.Textes);
  EXPECT_EQ(1u, +Entete(validee).Validee);

  // Others of the month are hidden, whatever hides them.
  DemandeListe parMode = demande, parCompte = demande, parCritere = demande;
  parMode.mode = ListeBrouillard;
  parCompte.filtre = Long("531");
  parCritere.criteres.TousJours = 0;
  parCritere.criteres.JourDe = parCritere.criteres.JourA = 4;
  for (const DemandeListe& partie : {parMode, parCompte, parCritere}) {
    Boite.Oublie();
    EXPECT_EQ(unsigned{QuestionRenumeroterPartie}, RenumeroteEcritures(App(), partie, nombre).numero);
    EXPECT_EQ(BoutonsNonOuiAnnuler | IconeAttention, Boite.Questions.front().style) << "no by default";
  }
  Boite.Reponses = {RepOui};
  ASSERT_FALSE(RenumeroteEcritures(App(), parCritere, nombre));
  EXPECT_EQ((std::vector<u32>{3, 2, 1, 1}), numeros());
  EXPECT_EQ(std::vector<std::string>{}, AnomaliesDesCles());
}

TEST_F(Traitements, UneSelectionEstUneUnite) {
  const u32 a = Recette(FaitDate(2, 3, 2003)), liee = Recette(FaitDate(3, 3, 2003));
  const u32 b = Recette(FaitDate(4, 3, 2003));
  Lie(liee);
  const std::vector<u32> choisies = {a, 999, liee, b};
  const u64 avant = Magasin().NbSynchros();
  EXPECT_FALSE(PointeEcritures(App(), choisies));
  EXPECT_EQ(avant + 1, Magasin().NbSynchros());
  EXPECT_TRUE(Entete(a).Pointee && Entete(liee).Pointee && Entete(b).Pointee);
  EXPECT_EQ(3103u, DeplaceEcritures(App(), choisies, 5).numero) << "the linked one alone";
  EXPECT_EQ(avant + 2, Magasin().NbSynchros());
  EXPECT_EQ(FaitDate(2, 5, 2003), u32{Entete(a).Date});
  EXPECT_EQ(FaitDate(3, 3, 2003), u32{Entete(liee).Date});
  EXPECT_EQ(FaitDate(4, 5, 2003), u32{Entete(b).Date});
  EXPECT_EQ((std::vector<u32>{1, 2}), (std::vector<u32>{Entete(a).Ligne, Entete(b).Ligne}));
}

TEST_F(Traitements, AutreMois) {
  const u32 mars = Recette(FaitDate(31, 3, 2003)), liee = Recette(FaitDate(2, 3, 2003));
  const u32 fevrier = Recette(FaitDate(28, 2, 2003));
  Lie(liee);
  Valide(mars);
  unsigned mois = 0;
  EXPECT_FALSE(ControleDeplacement(App(), mars, mois));
  EXPECT_EQ(3u, mois);

  struct Cas {
    u32 mouvement;
    unsigned mois;
    unsigned erreur;
  };
  for (const Cas& c : {Cas{liee, 4, 3103}, Cas{999, 4, ErrEcritureInconnue}, Cas{mars, 0, ErrChampInvalide},
                       Cas{mars, 13, ErrChampInvalide}}) {
    EXPECT_EQ(c.erreur, DeplaceEcriture(App(), c.mouvement, c.mois).numero);
  }
  EXPECT_EQ(3103u, ControleDeplacement(App(), liee, mois).numero);
  EXPECT_EQ(FaitDate(2, 3, 2003), u32{Entete(liee).Date});

  EXPECT_FALSE(DeplaceEcriture(App(), mars, 2))
      << "a validated one too, and no look at the days of the month";
  for (const Line& ligne : Lignes(mars)) {
    EXPECT_EQ(FaitDate(31, 2, 2003), u32{ligne.Date});
    EXPECT_EQ(FaitDate(31, 2, 2003), u32{ligne.DateLigne});
    EXPECT_EQ(1u, u32{ligne.Validee});
  }
  EXPECT_EQ(std::vector<std::string>{}, AnomaliesDesCles());
  EXPECT_EQ(100, f64{LitCompte("706").CreditEuro} - 200) << "totals do not move";
  const auto libre = [&](unsigned m) {
    return Magasin().GetFreeJournalLine(App().PathExercice, JournalRecettes, {}, FaitDate(1, m, 2003));
  };
  EXPECT_EQ(2u, u32{Entete(mars).Ligne}) << "behind February's own entry";
  EXPECT_EQ(3u, libre(3));

  DemandeValidation demande = Annee();
  demande.du = FaitDate(28, 2, 2003);
  demande.au = FaitDate(1, 3, 2003);
  BilanLot bilan;
  ASSERT_FALSE(TraiteBrouillard(App(), demande, bilan));
  EXPECT_EQ(1u, bilan.ecritures);
  EXPECT_EQ(1u, +Entete(fevrier).Validee) << "31 February stands between 28 February and 1 March";
  demande.action = ActionBrouillard::Devalider;
  ASSERT_FALSE(TraiteBrouillard(App(), demande, bilan));
  EXPECT_EQ(2u, bilan.ecritures);

  EXPECT_FALSE(DeplaceEcriture(App(), mars, 2)) << "there already";
  EXPECT_FALSE(DeplaceEcriture(App(), mars, 12));
  EXPECT_EQ(FaitDate(31, 12, 2003), u32{Entete(mars).Date});

  Regle("2003", "Cloture", "31/01/2004");
  EXPECT_EQ(3056u, DeplaceEcriture(App(), mars, 1).numero);
  EXPECT_EQ(3056u, ControleDeplacement(App(), mars, mois).numero);
}

}  // namespace
}  // namespace fenlor::test
