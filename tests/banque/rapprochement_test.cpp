#include "banque/rapprochement.h"

#include <map>
#include <random>

#include "banque/textes.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "core/textes.h"
#include "journal/cabinetmedical.h"
#include "journal/textes.h"
#include "session/verification.h"

namespace fenlor::test {
namespace {

constexpr Date Jour(unsigned jour, unsigned mois = 3) { return FaitDate(jour, mois, 2003); }

class Rapprochement : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }

  FicheOperation Fiche(Date date, f64 montant, i16 sens = 1, std::string_view compte = "512") {
    FicheOperation fiche;
    fiche.compte = std::string(compte);
    fiche.date = date;
    fiche.libelle = "VIR";
    fiche.sens = sens;
    fiche.montant = montant;
    return fiche;
  }
  Position Ajoute(const FicheOperation& fiche) {
    FicheOperation ecrite = fiche;
    EXPECT_EQ(0u, EnregistreOperation(App(), ecrite).numero);
    return ecrite.position;
  }
  /// Position of the entry's line on the account.
  Position LigneDe(u32 mouvement, std::string_view compte = "512") {
    for (const Position position : Magasin().LignesMouvement(App().PathExercice, mouvement))
      if (Lu(position).Compte == Long(compte)) return position;
    return 0;
  }
  Position Recette(Date date, f64 montant) {
    return LigneDe(AjouteSimple(JournalRecettes, date, "706", montant, "512"));
  }
  Line Lu(Position position) {
    Line ligne{};
    EXPECT_TRUE(Magasin().ReadLines(App().PathExercice, position, ligne));
    return ligne;
  }
  std::size_t NbOperations(std::string_view compte = "512") {
    return LitOperations(App(), Long(compte)).size();
  }
  BilanRapprochement Automatique(Date du = Jour(1, 1), Date au = Jour(31, 12), bool confirmation = false) {
    BilanRapprochement bilan;
    EXPECT_EQ(0u, RapprocheAutomatique(App(), {{Long("512"), du, au}, confirmation, true}, bilan).numero);
    return bilan;
  }
  std::vector<std::string> Verifie() {
    std::vector<std::string> phrases;
    VerifieExercice(App(), [&](const std::string& p) { phrases.push_back(VersUtf8(p)); });
    return phrases;
  }
};

TEST_F(Rapprochement, UneOperationEstControleeDansLOrdre) {
  const auto refus = [&](auto change) {
    FicheOperation fiche = Fiche(Jour(10), 12.5);
    change(fiche);
    const Refus r = EnregistreOperation(App(), fiche);
    return std::pair(r.numero, std::string(r.champ));
  };
  using F = FicheOperation&;
  using R = std::pair<unsigned, std::string>;
  EXPECT_EQ(R(ErrCompteObligatoire, "compte"), refus([](F f) { f.compte = " "; }));
  EXPECT_EQ(R(ErrCompteNonBancaire, "compte"), refus([](F f) { f.compte = "531", f.date = 0; }));
  EXPECT_EQ(R(ErrTexteTropLong, "libelle"), refus([](F f) { f.libelle.assign(81, 'x'), f.date = 0; }));
  EXPECT_EQ(R(ErrDateOperation, "date"), refus([](F f) { f.date = 0, f.montant = 0; }));
  EXPECT_EQ(R(ErrDateIncorrecte, "date"), refus([](F f) { f.date = Jour(31, 2), f.montant = 0; }));
  EXPECT_EQ(R(ErrDateIncorrecte, "dateValeur"), refus([](F f) { f.dateValeur = Jour(0), f.montant = 0; }));
  EXPECT_EQ(R(ErrMontantOperation, "montant"), refus([](F f) { f.montant = 0; }));
  EXPECT_EQ(R(ErrMontantBornes, "montant"), refus([](F f) { f.montant = -1; }));
  EXPECT_EQ(R(ErrMontantBornes, "montant"), refus([](F f) { f.montant = MontantMax; })) << "in Franc";
  EXPECT_EQ(R(ErrOperationAbsente, ""), refus([](F f) { f.position = 3; }));
  EXPECT_EQ(0u, NbOperations());

  const Position place = Ajoute(Fiche(Jour(10), 12.5));
  OperationLue lue;
  ASSERT_FALSE(LitOperation(App(), place, lue));
  EXPECT_EQ(Jour(10), +lue.rec.DateValeur);
  EXPECT_EQ(81.99, +lue.rec.MontantFranc);  // 12,50 at 6,55957
  // A label is changed, both amounts stay; another amount is converted.
  lue.rec.MontantFranc = 82.00;
  ASSERT_TRUE(Magasin().OpenBanques({}) && Magasin().QVWriteRec(FichierBanques, place, &lue.rec));
  FicheOperation fiche = FicheDe(App(), lue, true);
  fiche.libelle = "CHQ";
  for (const f64 franc : {82.00, 131.19}) {
    ASSERT_FALSE(EnregistreOperation(App(), fiche));
    ASSERT_FALSE(LitOperation(App(), fiche.position, lue));
    EXPECT_EQ(franc, +lue.rec.MontantFranc);
    fiche.montant = 20;
  }
  EXPECT_EQ(1u, NbOperations());
  Boite.Reponses = {RepNon, RepOui};
  EXPECT_EQ(QuestionSupprimeOperation, SupprimeOperation(App(), fiche.position, true).numero);
  EXPECT_EQ("Suppression de l'opération :\n10/03/2003, CHQ, 20,00 €"_w, Boite.Questions.back().texte);
  EXPECT_FALSE(SupprimeOperation(App(), fiche.position, true));
  EXPECT_EQ(0u, NbOperations());
  Regle("2003", "Cloture", "31/12/2003");
  EXPECT_EQ(ErrExerciceCloture, EnregistreOperation(App(), fiche).numero);
}

TEST_F(Rapprochement, LesEcrituresARapprocher) {
  const u32 perso = Enregistre(Ecriture(JournalDepenses, "6154", 119.6, "512", Jour(31)));
  const u32 od = EnregistreLesLignes({{Long("512"), "Apport", 0, 30, 0}, {Long("531"), "Apport", 30, 0, 0}});
  const Position rapprochee = Recette(Jour(2), 50), autre = Recette(Jour(1, 4), 50);
  ASSERT_TRUE(rapprochee && autre && perso && od);
  ASSERT_TRUE(Magasin().RappLines(App().PathExercice, rapprochee, {}));
  const auto lignes = LignesARapprocher(App(), {Long("512"), Jour(1), Jour(31)});
  ASSERT_EQ(2u, lignes.size()) << "by date; neither the reconciled line nor April";
  EXPECT_EQ(LigneDe(od), lignes[0].position);
  EXPECT_EQ(LigneDe(perso), lignes[1].position);
  EXPECT_EQ(14960, CumulLignes(lignes, {0, 1}, true));
  EXPECT_EQ("6154", Contrepartie(App(), Lu(lignes[1].position))) << "neither tax nor personal share";
  EXPECT_EQ("531", Contrepartie(App(), Lu(lignes[0].position)));
  EXPECT_THAT(LignesARapprocher(App(), {Long("512"), Jour(31), Jour(1)}), IsEmpty());

  const std::vector<LigneARapprocher> melees = {{1, 0, 0, 0, true}, {2, 0, 0, 0, false}, {3, 0, 0, 0, true}};
  EXPECT_THAT(MemeSens(melees, {0, 2}, 2), ElementsAre(0, 2));
  EXPECT_THAT(MemeSens(melees, {0, 1, 2}, 1), ElementsAre(1));

  // The clock stands in March 2003.
  PropositionRapprochement p = ProposeRapprochement(App(), {});
  EXPECT_THAT((std::vector{p.du, p.au, p.operation}), ElementsAre(Jour(1), Jour(31), Jour(1)));
  Ajoute(Fiche(Jour(5, 4), 1));
  Ajoute(Fiche(Jour(14, 2), 1));
  p = ProposeRapprochement(App(), LitOperations(App(), Long("512")));
  EXPECT_THAT((std::vector{p.du, p.au, p.operation}), ElementsAre(Jour(1, 4), Jour(30, 4), Jour(5, 4)));
}

TEST_F(Rapprochement, LeManuelEstControleDansLOrdrePuisFaitDUnSeulTenant) {
  const Position a = Recette(Jour(10), 30), b = Recette(Jour(10), 20), tard = Recette(Jour(12), 20);
  const Position ailleurs = LigneDe(AjouteSimple(JournalRecettes, Jour(10), "706", 20, "514"), "514");
  const Position operation = Ajoute(Fiche(Jour(11), 50));
  const auto refus = [&](Position o, const std::vector<Position>& lignes) {
    return RapprocheManuel(App(), o, lignes, true).numero;
  };
  EXPECT_EQ(ErrSansOperationChoisie, refus(0, {}));
  EXPECT_EQ(ErrOperationAbsente, refus(operation + 1, {}));
  EXPECT_EQ(ErrSansEcritureChoisie, refus(operation, {}));
  EXPECT_EQ(ErrLigneNonRapprochable, refus(operation, {a, ailleurs}));
  EXPECT_EQ(ErrLigneNonRapprochable, refus(operation, {a, a}));
  EXPECT_EQ(ErrLigneNonRapprochable, refus(operation, {9999}));
  EXPECT_EQ(ErrTotalRapprochement, refus(operation, {a})) << "before the date";
  EXPECT_EQ(ErrEcritureApresOperation, refus(operation, {a, tard}));
  EXPECT_EQ(0u, +Lu(a).Rapprochee);

  EXPECT_EQ(0u, refus(operation, {a, b}));
  EXPECT_EQ(0u, NbOperations());
  const Line ligne = Lu(b);
  EXPECT_TRUE(ligne.Rapprochee != 0);
  EXPECT_STREQ("Essai", ligne.RappLibelle) << "a copy of itself";
  EXPECT_EQ(Jour(10), +ligne.RappDate);
  EXPECT_EQ(Magasin().Today(), +ligne.RappDateValeur);
  EXPECT_EQ(20, +ligne.RappEuro);
  EXPECT_EQ(ErrLigneNonRapprochable, refus(Ajoute(Fiche(Jour(11), 20)), {b})) << "once";
  EXPECT_EQ(50, LitSoldes(App(), Long("512"), true).livres);
  EXPECT_THAT(Verifie(), IsEmpty());

  // What the bank debits, the books do not debit: only when the user insists.
  const Position debit = Ajoute(Fiche(Jour(12), 20, 0));
  EXPECT_EQ(QuestionMemeSens, refus(debit, {tard}));
  EXPECT_EQ("L'opération est au Débit de la banque"_w, Boite.Questions.back().texte.substr(0, 37));
  Boite.Reponses = {RepOui};
  EXPECT_EQ(0u, refus(debit, {tard}));
}

TEST_F(Rapprochement, ChaqueOuiEstAcquisAvantLaQuestionSuivante) {
  for (const unsigned jour : {3, 4, 5}) {
    Recette(Jour(jour), 50);
    Ajoute(Fiche(Jour(jour), 50));
  }
  std::vector<std::size_t> acquis;  // questions asked when a unit became durable
  Magasin().QVSuitChangements([&](const QVAPI::Changements&) { acquis.push_back(Boite.Questions.size()); });
  Boite.Reponses = {RepOui, RepOui, RepAnnuler};
  EXPECT_EQ(2u, Automatique(Jour(1), Jour(31), true).rapproches);
  EXPECT_EQ(
      "Rapprochement de l'opération :\n\n03/03/2003, VIR, 50,00 €\n\navec l'écriture :\n\n"
      "03/03/2003, Essai, 50,00 €"_w,
      Boite.Questions[0].texte);
  EXPECT_THAT(acquis, ElementsAre(1u, 2u));
  acquis.clear();
  EXPECT_EQ(1u, Automatique().rapproches);
  EXPECT_EQ(1u, acquis.size()) << "one unit without questions";
  Magasin().QVSuitChangements({});
}

TEST_F(Rapprochement, UneEcritureNaitDeSonOperation) {
  const Position frais = Ajoute(Fiche(Jour(10), 12.5, 0)),
                 horsExercice = Ajoute(Fiche(FaitDate(2, 1, 2004), 5));
  SaisieEcriture saisie;
  EXPECT_EQ(ErrDateIncorrecte, ProposeEcriture(App(), horsExercice, saisie).numero);
  ASSERT_FALSE(ProposeEcriture(App(), frais, saisie));
  EXPECT_EQ(JournalDepenses, saisie.journal);
  EXPECT_EQ(12.5, saisie.montants.ttc);
  EXPECT_EQ(Long("512"), saisie.tresorerie);
  EXPECT_EQ("VIR", saisie.libelle);
  EXPECT_EQ(ErrCompteIncorrect, EnregistreEcritureDe(App(), frais, saisie, Faite).numero);

  const u32 avant = Magasin().GetJournalRec(0);
  SaisieEcriture autre = Ecriture(JournalDepenses, "6132", 12.4, "512", Jour(10));
  EXPECT_EQ(ErrEcritureSansLigne, EnregistreEcritureDe(App(), frais, autre, Faite).numero);
  autre = Ecriture(JournalDepenses, "6132", 12.5, "512", Jour(11));
  EXPECT_EQ(ErrEcritureApresOperation, EnregistreEcritureDe(App(), frais, autre, Faite).numero);
  EXPECT_EQ(avant, Magasin().GetJournalRec(0)) << "nothing of the entry stays";
  EXPECT_EQ(0u, Faite.mouvement);

  saisie.compte = Long("6132");
  saisie.montants = ChaineMontants(App(), LitCompte("6132"), 12.5);
  ASSERT_FALSE(EnregistreEcritureDe(App(), frais, saisie, Faite));
  EXPECT_TRUE(Lu(LigneDe(Faite.mouvement)).Rapprochee != 0);
  EXPECT_EQ(1u, NbOperations());
  EXPECT_THAT(Verifie(), IsEmpty());
}

/// So many that the keys of the operations are made again rather than each taken away.
TEST_F(Rapprochement, BeaucoupDOperationsLaissentLeursClesJustes) {
  constexpr unsigned nombre = 1100, restent = 20;
  {
    QVAPI::Unite unite(Magasin());
    for (unsigned i = 0; i < nombre; ++i) Recette(Jour(1 + i % 28), 10 + i % 300);
    for (unsigned i = 0; i < nombre + restent; ++i)
      Ajoute(Fiche(Jour(28), i < nombre ? 10 + i % 300 : 5000 + i));
    ASSERT_TRUE(unite.Valide());
  }
  CBanques banques(App(), App().PathExercice);
  CLines lignes(App(), App().PathExercice);
  CPlan plan(App(), App().PathExercice);
  ASSERT_TRUE(banques.OpenFile() && lignes.OpenFile() && plan.OpenFile());
  Magasin().QVRetientUnites(true);
  {
    QVAPI::Unite abandonnee(Magasin());
    EXPECT_EQ(nombre, Automatique().rapproches);
    EXPECT_EQ(restent, NbOperations());  // who looks makes the keys again
  }
  EXPECT_EQ(nombre + restent, NbOperations());
  EXPECT_THAT(Verifie(), IsEmpty());
  EXPECT_EQ(nombre, Automatique().rapproches);
  EXPECT_EQ(restent, NbOperations());
  EXPECT_THAT(Verifie(), IsEmpty());
  ASSERT_TRUE(Magasin().QVReprend(false));
  EXPECT_EQ(nombre + restent, NbOperations());
  EXPECT_THAT(Verifie(), IsEmpty());
}

TEST_F(Rapprochement, LesSoldesSontCeuxDeLaBanque) {
  ChangeCompte("512", [](Plan& rec) { rec.SoldeInitialEuro = -100; });  // 100 € on the account
  Ajoute(Fiche(Jour(10), 30.1, 1));
  Recette(Jour(10), 30.1);
  Automatique();
  SoldesRapprochement soldes = LitSoldes(App(), Long("512"), true);
  EXPECT_EQ(130.1, soldes.livres);
  EXPECT_FALSE(soldes.releve);
  ASSERT_FALSE(EcritSoldeReleve(App(), Long("512"), SoldeReleve{130.2, true, Jour(31)}));
  soldes = LitSoldes(App(), Long("512"), true);
  EXPECT_EQ(0.1, soldes.Difference()) << "whole cents";
  EXPECT_EQ(Jour(31), LitSoldeReleve(App(), Long("512"))->date);
  ASSERT_FALSE(EcritSoldeReleve(App(), Long("512"), SoldeReleve{0, false, 0}));
  EXPECT_EQ(0, LitSoldeReleve(App(), Long("512"))->montant);
  EXPECT_FALSE(LitSoldeReleve(App(), Long("512"))->euro);
  ASSERT_FALSE(EcritSoldeReleve(App(), Long("512"), {}));
  EXPECT_FALSE(LitSoldeReleve(App(), Long("512")));
}

// ------------------------------------------------- The naive twin

/// The two nested walks as they are told, over the records.
struct Jumelles {
  struct L {
    Position position;
    Line rec;
  };
  std::vector<OperationLue> operations;
  std::vector<L> lignes;
  std::map<Position, Banque> paires;  ///< line to operation
  u32 questions = 0;

  /// `reponses`: to the questions, none without; `arret`: operations until the user stops.
  void Marche(const std::vector<int>& reponses, bool confirmation, std::size_t arret) {
    for (std::size_t i = 0; i < operations.size() && i < arret; ++i)
      if (!Une(operations[i].rec, reponses, confirmation)) return;
  }
  bool Une(const Banque& operation, const std::vector<int>& reponses, bool confirmation) {
    for (L& ligne : lignes) {
      if ((ligne.rec.Sens != 0) == (operation.Sens != 0) || ligne.rec.DateLigne > operation.Date ||
          ligne.rec.Rapprochee || ligne.rec.MontantFranc != operation.MontantFranc ||
          ligne.rec.MontantEuro != operation.MontantEuro)
        continue;
      const int reponse = confirmation ? reponses[questions++ % reponses.size()] : int{RepOui};
      if (reponse == RepAnnuler) return false;
      if (reponse != RepOui) continue;
      ligne.rec.Rapprochee = 1;
      paires[ligne.position] = operation;
      return true;
    }
    return true;
  }
};

class RapprochementAuHasard : public Rapprochement {
 protected:
  unsigned Tire(unsigned sous) { return static_cast<unsigned>(m_hasard() % sous); }

  /// An account of its own, with some lines and some operations whose amounts often meet.
  Jumelles Livre(const std::string& compte) {
    PoseCompte(compte, Tresorerie, {}, {}, 1);
    const unsigned montants = 1 + Tire(5);
    const auto montant = [&] { return (1 + Tire(montants)) * 12.34; };
    for (unsigned i = Tire(9); i > 0; --i) {
      const i16 journal = Tire(3) ? JournalRecettes : JournalDepenses;
      EcrSimple rec = Simple(journal, Jour(1 + Tire(20)), journal == JournalRecettes ? "706" : "6132",
                             Tire(8) ? montant() : -montant(), compte);
      if (Tire(6) == 0) rec.MontantFranc = rec.RepartitionFranc = rec.MontantFranc + 0.01;
      EXPECT_NE(0u, Magasin().AddEcrSimple(App().PathExercice, rec));
    }
    for (unsigned i = Tire(9); i > 0; --i) {
      FicheOperation fiche = Fiche(Jour(5 + Tire(20)), montant(), Tire(3) != 0, compte);
      fiche.libelle = std::to_string(i);
      Ajoute(fiche);
    }
    Jumelles livre;
    livre.operations = LitOperations(App(), Long(compte));
    CLines lignes(App(), App().PathExercice);
    EXPECT_TRUE(lignes.OpenFile());
    PoseTexte(lignes.Rec->Compte, Long(compte));
    lignes.Rec->DateLigne = Jour(1);
    for (bool lu = lignes.Browse(2); lu && Long(compte) == lignes.Rec->Compte; lu = lignes.Next(2))
      livre.lignes.push_back({lignes.Position, *lignes.Rec});
    return livre;
  }

  void Compare(Jumelles& livre, const std::string& compte) {
    for (const Jumelles::L& ligne : livre.lignes) {
      const Line lue = Lu(ligne.position);
      ASSERT_EQ(+ligne.rec.Rapprochee, +lue.Rapprochee);
      if (!lue.Rapprochee) continue;
      const Banque& operation = livre.paires.at(ligne.position);
      ASSERT_STREQ(operation.Libelle, lue.RappLibelle);
      ASSERT_EQ(+operation.Date, +lue.RappDate);
    }
    ASSERT_EQ(livre.operations.size() - livre.paires.size(), NbOperations(compte));
  }

  std::mt19937 m_hasard{20031122};
};

TEST_F(RapprochementAuHasard, LesPairesSontCellesDesDeuxParcours) {
  const u32 plan = Magasin().OpenPlan({}), journal = Magasin().OpenJournal({}),
            banques = Magasin().OpenBanques({});
  ASSERT_TRUE(plan && journal && banques);
  u32 paires = 0, refuses = 0;
  for (unsigned tour = 0; tour < 2000; ++tour) {
    SCOPED_TRACE(tour);
    const std::string compte = std::to_string(5130000 + tour);
    std::optional<QVAPI::Unite> unite(Magasin());
    Jumelles livre = Livre(compte);
    const bool confirmation = Tire(3) == 0;
    std::vector<int> reponses(64, RepOui);
    for (int& reponse : reponses) reponse = Tire(3) ? RepOui : Tire(8) ? RepNon : RepAnnuler;
    const std::size_t arret = Tire(4) ? livre.operations.size() : Tire(9);
    livre.Marche(reponses, confirmation, arret);

    Boite.Oublie();
    Boite.Reponses.assign(reponses.begin(), reponses.end());
    Boite.NbArrets = 0;
    Boite.ArretApres = static_cast<int>(arret);
    BilanRapprochement bilan;
    const Refus refus =
        RapprocheAutomatique(App(), {{Long(compte), Jour(1), Jour(31)}, confirmation, true}, bilan);
    ASSERT_TRUE(unite->Valide());
    ASSERT_EQ(livre.operations.empty() ? ErrSansOperation.numero
              : livre.lignes.empty()   ? ErrSansEcriture.numero
                                       : 0u,
              refus.numero);
    refuses += refus.numero != 0;
    ASSERT_EQ(livre.paires.size(), bilan.rapproches);
    ASSERT_EQ(confirmation ? livre.questions : 0u, Boite.Questions.size());
    ASSERT_NO_FATAL_FAILURE(Compare(livre, compte));
    paires += bilan.rapproches;
  }
  EXPECT_GT(paires, 1500u);
  EXPECT_LT(refuses, 600u);

  // Cumulative and reconciled totals are those of a recalculation, bit for bit.
  std::map<std::string, Plan> avant;
  Magasin().QVParcours(FichierComptes, [&](Position, const void* rec) {
    const Plan& compte = *static_cast<const Plan*>(rec);
    avant[LitTexte(compte.Compte)] = compte;
    return true;
  });
  Statistiques statistiques{};
  ASSERT_TRUE(Magasin().QVCalculCompta({}, statistiques));
  EXPECT_EQ(paires, statistiques.NbRapprochees);
  for (const auto& [compte, plus] : avant) {
    const Plan recalcule = LitCompte(compte);
    ASSERT_EQ(0, std::memcmp(&plus.PersoFranc, &recalcule.PersoFranc, 12 * sizeof(f64))) << compte;
  }
  ASSERT_TRUE(Magasin().ClosePlan(plan) && Magasin().CloseJournal(journal) &&
              Magasin().CloseBanques(banques));
  EXPECT_THAT(Verifie(), IsEmpty());
}

}  // namespace
}  // namespace fenlor::test
