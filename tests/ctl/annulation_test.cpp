// Random units of every kind, taken back and done again in random depth, against copies of the export at each
// step. FENLOR_PAS sets the number of steps, FENLOR_GRAINE the seed, FENLOR_MORTS the number of kills.
#include "session/annulation.h"

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <random>

#include "banque/operations.h"
#include "banque/rapprochement.h"
#include "core/btfiles.h"
#include "core/erreursexercice.h"
#include "ctl/enregistrementjson.h"
#include "journal/controles.h"
#include "journal/corbeille.h"
#include "journal/saisie.h"
#include "journal/textes.h"
#include "journal/traitements.h"
#include "master/libelles.h"
#include "outils/cabinetdetest.h"
#include "session/textes.h"
#include "store/champs.h"
#include "store/definitions.h"
#include "store/ouverture.h"

namespace fenlor {
namespace {

constexpr const char *Banque512 = "5120000000", *Caisse = "5300000000", *Honoraires = "7060000000",
                     *Achats = "6060000000";

class Reprises : public test::CabinetDeTest {
 protected:
  explicit Reprises(test::Cles cles = test::Cles::Lmdb) : CabinetDeTest(cles) {
    EXPECT_TRUE(CreeExercice("2003"));
    PoseCompte(Banque512, Tresorerie, "512", "Banque", 1);
    PoseCompte(Caisse, Tresorerie, "530", "Caisse");
    PoseCompte(Honoraires, Recette, "HON", "Honoraires");
    PoseCompte(Achats, Depense, "ACH", "Achats");
    Boite.Defaut = RepOui;
    SuitReprises(App());
  }

  std::string Nom(Sens sens = Sens::Annuler) { return VersUtf8(NomReprise(App(), sens)); }
  unsigned Fais(Sens sens = Sens::Annuler) { return Reprend(App(), sens).numero; }

  /// What `exporter` writes of every file, along every key too, and the labels.
  std::string Export() {
    std::string tout;
    for (const DefinitionFichier& def : Definitions()) {
      const Ouverture ouverture(Magasin(), def.numero);
      EXPECT_TRUE(ouverture) << def.nom;
      const auto champs = Champs(def.numero);
      const auto ajoute = [&](Position, const void* rec) {
        AjouteEnregistrement(tout, champs, rec);
        tout += '\n';
        return true;
      };
      EXPECT_TRUE(Magasin().QVParcours(def.numero, ajoute));
      for (u16 cle = 0; cle < def.nbCles; ++cle)
        EXPECT_TRUE(Magasin().QVParcoursCle(def.premiereCle + cle, {}, {}, [&](Position p, const void*) {
          tout += std::to_string(p) + ' ';
          return true;
        }));
    }
    std::ifstream libelles(App().PathExercice + "/TEXTES.dat", std::ios::binary);
    tout.append(std::istreambuf_iterator<char>(libelles), {});
    return tout + App().Reglages.LitIni("Essai", "Compteur");
  }
};

TEST_F(Reprises, NomsEtRefus) {
  EXPECT_EQ(Fais(), ErrRienAReprendre.numero);
  const u32 une =
      AjouteSimple(JournalRecettes, FaitDate(10, 3, 2003), Honoraires, 20, Banque512, "Consultation");
  EXPECT_EQ(Nom(), "saisie de « Consultation », 20,00 €");
  ASSERT_TRUE(Magasin().RemoveEcrSimple(App().PathExercice, une));
  EXPECT_EQ(Nom(), "suppression de « Consultation », 20,00 €");
  EXPECT_EQ(Fais(), 0u);
  EXPECT_EQ(Lignes(une).size(), 2u);
  EXPECT_EQ(Nom(), "saisie de « Consultation », 20,00 €");
  EXPECT_EQ(Nom(Sens::Retablir), "suppression de « Consultation », 20,00 €");
  EXPECT_EQ(Fais(Sens::Retablir), 0u);
  EXPECT_TRUE(Lignes(une).empty());
  EXPECT_EQ(Fais(), 0u);

  // What was validated since is refused by name, and nothing is done; reconciling it may be taken back.
  const Position banque = Magasin().LignesMouvement(App().PathExercice, une)[1];
  ASSERT_TRUE(Magasin().ValidEcrSimple(App().PathExercice, une, 1));
  EXPECT_EQ(Nom(), "saisie de « Consultation », 20,00 €");
  const Refus refus = Reprend(App(), Sens::Annuler);
  EXPECT_EQ(refus.numero, ErrRepriseValidee.numero);
  EXPECT_NE(refus.texte.find("Consultation"), std::string::npos);
  EXPECT_EQ(Lignes(une).size(), 2u);
  Banque operation{};
  ASSERT_TRUE(Magasin().RappLines(App().PathExercice, banque, operation));
  EXPECT_EQ(Nom(), "rapprochement de « Consultation »");
  EXPECT_EQ(Fais(), 0u);
  EXPECT_EQ(+Lignes(une)[1].Rapprochee, 0u);

  // Somebody else changed it since: by a unit that is not kept.
  const u32 deux = AjouteSimple(JournalDepenses, FaitDate(11, 3, 2003), Achats, 5, Caisse, "Timbres");
  Line ligne = Lignes(deux)[0];
  PoseTexte(ligne.Piece, "F12");
  {
    QVAPI::Unite unite(Magasin());
    unite.SansRetour();
    const Position position = Magasin().LignesMouvement(App().PathExercice, deux)[0];
    ASSERT_TRUE(Magasin().UpdateLines(App().PathExercice, position, ligne));
    ASSERT_TRUE(unite.Valide());
  }
  const std::string avant = Export();
  EXPECT_EQ(Fais(), ErrRepriseChangee.numero);
  EXPECT_EQ(Export(), avant);

  // A unit that is undone leaves nothing to take back, and what was taken back stays possible.
  const u64 version = Magasin().QVVersionReprises();
  {
    QVAPI::Unite unite(Magasin(), "jamais");
    AjouteSimple(JournalDepenses, FaitDate(12, 3, 2003), Achats, 5, Caisse);
  }
  EXPECT_EQ(Magasin().QVVersionReprises(), version);
  ASSERT_TRUE(App().Reglages.EcritIniExercice({}, "Cloture", "1"));
  EXPECT_EQ(Fais(), ErrExerciceCloture.numero);
  Magasin().QVCloseExercice();
  EXPECT_EQ(Nom(), "");
}

TEST_F(Reprises, LaCorbeilleRendCeQuiFutSupprime) {
  const auto corbeille = [this] {
    std::vector<Suppression> suppressions;
    EXPECT_EQ(LitCorbeille(App(), suppressions).numero, 0u);
    return suppressions;
  };
  const u32 une =
      AjouteSimple(JournalRecettes, FaitDate(10, 3, 2003), Honoraires, 20, Banque512, "Consultation");
  const u32 deux = AjouteSimple(JournalDepenses, FaitDate(11, 3, 2003), Achats, 5, Caisse, "Timbres");
  ASSERT_EQ(SupprimeEcritures(App(), {une, deux}).numero, 0u);
  ASSERT_EQ(corbeille().size(), 2u);
  EXPECT_EQ(LitTexte(corbeille()[0].lignes[0].Libelle), "Timbres");
  EXPECT_EQ(corbeille()[1].Montant(true), 20);
  // Taken back it is there no more; deleted again it is there once.
  EXPECT_EQ(Fais(), 0u);
  EXPECT_EQ(corbeille().size(), 1u);
  EXPECT_EQ(SupprimeEcriture(App(), deux).numero, 0u);
  ASSERT_EQ(corbeille().size(), 2u);

  // A later session: under their own numbers, with their totals.
  ASSERT_TRUE(Rouvre());
  u32 mouvement = 0;
  for (const Suppression& s : corbeille()) {
    EXPECT_EQ(RestaureSuppression(App(), s.numero, mouvement).numero, 0u);
    EXPECT_EQ(mouvement, +s.lignes[0].Mouvement);
  }
  EXPECT_TRUE(corbeille().empty());
  EXPECT_EQ(+LitCompte(Banque512).DebitEuro, 20);
  EXPECT_EQ(+LitCompte(Caisse).CreditEuro, 5);
  EXPECT_EQ(RestaureSuppression(App(), 99, mouvement).numero, ErrSuppressionAbsente.numero);

  // Under another number when its own is taken; an account that is gone refuses, and nothing is done.
  ASSERT_EQ(SupprimeEcriture(App(), deux).numero, 0u);
  ASSERT_EQ(AjouteSimple(JournalRecettes, FaitDate(12, 3, 2003), Honoraires, 7, Banque512, "Autre"), deux);
  ASSERT_EQ(corbeille().size(), 1u);
  EXPECT_EQ(RestaureSuppression(App(), corbeille()[0].numero, mouvement).numero, 0u);
  EXPECT_NE(mouvement, deux);
  EXPECT_TRUE(corbeille().empty()) << "under its new number";
  ASSERT_EQ(SupprimeEcriture(App(), mouvement).numero, 0u);
  {
    CPlan plan(App(), App().PathExercice);
    ASSERT_TRUE(plan.OpenFile());
    PoseTexte(plan.Rec->Compte, Achats);
    ASSERT_TRUE(plan.Find(0) && plan.Delete(plan.Position));
  }
  const u32 numero = corbeille()[0].numero;
  EXPECT_NE(RestaureSuppression(App(), numero, mouvement).numero, 0u);
  EXPECT_EQ(corbeille().size(), 1u);

  // Ninety days, and a file that somebody damaged: the next deletion sets it aside.
  Magasin().FixeAujourdhui(FaitDate(13, 6, 2003));
  EXPECT_EQ(corbeille().size(), 1u);
  Magasin().FixeAujourdhui(FaitDate(14, 6, 2003));
  EXPECT_EQ(corbeille().size(), 0u);
  {
    std::fstream fichier(App().PathExercice + "/CORBEILLE.dat",
                         std::ios::in | std::ios::out | std::ios::binary);
    fichier.seekp(40);
    fichier.put('x');
  }
  std::vector<Suppression> suppressions;
  EXPECT_EQ(LitCorbeille(App(), suppressions).numero, ErrCorbeilleEndommagee.numero);
  EXPECT_EQ(SupprimeEcriture(App(), une).numero, 0u);
  EXPECT_EQ(corbeille().size(), 1u);
  EXPECT_EQ(Magasin().AvertissementsMagasin().size(), 1u);
  ASSERT_TRUE(App().Reglages.EcritIniExercice({}, "Cloture", "1"));
  EXPECT_EQ(RestaureSuppression(App(), 1, mouvement).numero, ErrExerciceCloture.numero);
}

/// One random unit of one of the kinds; the number of units that it made is 0 or 1.
class Hasard : public Reprises {
 protected:
  unsigned Entre(unsigned bas, unsigned haut) {
    return std::uniform_int_distribution<unsigned>(bas, haut)(m_hasard);
  }
  Date Jour() { return FaitDate(Entre(1, 28), Entre(1, 12), 2003); }
  f64 Montant() { return Entre(100, 600) / 100.0; }
  u32 UnMouvement() {
    std::vector<u32> tous;
    Magasin().QVParcours(FichierJournal, [&](Position, const void* rec) {
      tous.push_back(+static_cast<const Line*>(rec)->Mouvement);
      return true;
    });
    return tous.empty() ? 0 : tous[Entre(0, static_cast<unsigned>(tous.size()) - 1)];
  }
  Position Une(u16 fichier) {
    std::vector<Position> toutes;
    Magasin().QVParcours(fichier, [&](Position p, const void*) { return toutes.push_back(p), true; });
    return toutes.empty() ? 0 : toutes[Entre(0, static_cast<unsigned>(toutes.size()) - 1)];
  }
  Banque UneOperation() {
    Banque rec{};
    PoseTexte(rec.Compte, Banque512);
    PoseTexte(rec.Libelle, "VIR " + std::to_string(Entre(1, 99)));
    rec.Date = rec.DateValeur = Jour();
    rec.MontantEuro = Montant();
    rec.MontantFranc = QVAPI::ConvertEuroToFranc(6.55957, rec.MontantEuro);
    rec.Sens = static_cast<i16>(Entre(0, 1));
    return rec;
  }

  const std::string& Exercice() { return App().PathExercice; }

  void Saisit(bool recette) {
    AjouteSimple(recette ? JournalRecettes : JournalDepenses, Jour(), recette ? Honoraires : Achats,
                 Montant(), Entre(0, 1) ? Banque512 : Caisse, "L" + std::to_string(Entre(1, 9)));
  }
  void Modifie(u32 mouvement) {
    EcrSimple rec{};
    if (!mouvement || !Magasin().ReadEcrSimple(Exercice(), mouvement, rec)) return;
    rec.MontantEuro = rec.RepartitionEuro = Montant();
    rec.MontantFranc = rec.RepartitionFranc = QVAPI::ConvertEuroToFranc(6.55957, rec.MontantEuro);
    if (Entre(0, 1)) rec.Date = Jour();
    Magasin().UpdateEcrSimple(Exercice(), mouvement, rec);
  }
  /// Several entries as one unit, and inner ones that are undone.
  void Plusieurs() {
    QVAPI::Unite unite(Magasin());
    for (unsigned n = Entre(1, 9); n > 0; --n) {
      QVAPI::Unite interne(Magasin());
      Saisit(true);
      if (const u32 autre = UnMouvement()) Magasin().RemoveMouvements(Exercice(), autre);
      if (n != 3) interne.Valide();
    }
    EXPECT_TRUE(unite.Valide());
  }
  void Renumerote(bool recette) {
    DemandeListe demande;
    demande.journal = recette ? JournalRecettes : JournalDepenses;
    demande.mois = Entre(1, 12);
    u32 nombre = 0;
    EXPECT_EQ(RenumeroteEcritures(App(), demande, nombre).numero, 0u);
  }
  void SaisitOD() {
    QVAPI::Unite unite(Magasin());
    const u32 numero = Magasin().GetFreeMouvementsID(Exercice(), JournalOD);
    for (u32 rang = 0; rang < 2; ++rang) {
      Line ligne{};
      ligne.Mouvement = numero;
      ligne.Journal = JournalOD;
      ligne.Genre = GenreOD;
      ligne.Ligne = 1;
      ligne.Sens = rang;
      ligne.Date = ligne.DateLigne = Jour();
      ligne.MontantEuro = ligne.MontantFranc = 7;
      PoseTexte(ligne.Compte, rang ? Caisse : Banque512);
      Magasin().AddLines(Exercice(), ligne);
    }
    EXPECT_TRUE(unite.Valide());
  }
  void Importe() {
    std::vector<Banque> operations(Entre(1, 5));
    for (Banque& rec : operations) rec = UneOperation();
    EXPECT_EQ(AjouteOperations(App(), operations).numero, 0u);
  }
  void Rapproche() {
    const DemandeAutomatique demande{{Banque512, FaitDate(1, 1, 2003), FaitDate(31, 12, 2003)}, false, true};
    BilanRapprochement bilan;
    (void)RapprocheAutomatique(App(), demande, bilan);
  }
  void ChangeCompte() {
    const std::string compte = std::to_string(Entre(6100, 6130)) + "000000";
    CPlan plan(App(), Exercice());
    ASSERT_TRUE(plan.OpenFile());
    PoseTexte(plan.Rec->Compte, compte);
    if (plan.Find(0) && Entre(0, 1)) {
      EXPECT_TRUE(plan.Delete(plan.Position));
      return;
    }
    PoseTexte(plan.Rec->Compte, compte);
    PoseTexte(plan.Rec->Code, compte.substr(1, 3));
    PoseTexte(plan.Rec->Designation, "Compte " + std::to_string(Entre(1, 9)));
    plan.Rec->Type = Depense;
    EXPECT_TRUE(plan.Add());
  }
  void ChangeBien() {
    Immobilisation bien{};
    bien.Numero = Entre(1, 6);
    bien.DateAchat = Jour();
    bien.PrixEuro = Montant();
    EXPECT_TRUE(Magasin().WriteImmobilisations(bien));
  }
  void ChangeModele() {
    const Ouverture automatiques(Magasin(), FichierAuto);
    const u32 nombre = Magasin().GetEcrituresAutoRec(automatiques.Poignee());
    if (nombre > 2 && Entre(0, 1)) {
      EXPECT_TRUE(Magasin().DeleteEcrituresAuto(Entre(1, nombre), automatiques.Poignee()));
      return;
    }
    EcrituresAuto rec{};
    rec.Date = Jour();
    rec.MontantEuro = Montant();
    EXPECT_TRUE(Magasin().WriteEcrituresAuto(rec, automatiques.Poignee()));
  }
  void ChangeReglage() {
    QVAPI::Unite unite(Magasin());
    App().Reglages.EcritIni("Essai", "Compteur", std::to_string(Entre(1, 99)));
    EXPECT_TRUE(unite.Valide());
  }

  void UneUnite() {
    const u32 mouvement = UnMouvement();
    const bool recette = Entre(0, 1) != 0;
    const unsigned sorte = Entre(0, 20);
    if (sorte < 5) return Saisit(recette);
    if (sorte < 7) return Modifie(mouvement);
    if (sorte < 9 && mouvement) Magasin().RemoveMouvements(Exercice(), mouvement);
    if (sorte == 9) Plusieurs();
    if (sorte == 10 && mouvement) Magasin().ReverseMarkMouvements(Exercice(), mouvement);
    if (sorte == 11) Renumerote(recette);
    if (sorte == 12) SaisitOD();
    if (sorte == 13) Importe();
    if (sorte == 14) Rapproche();
    if (sorte == 15)
      if (const Position position = Une(FichierBanques)) (void)SupprimeOperation(App(), position, true);
    if (sorte == 16) ChangeCompte();
    if (sorte == 17) ChangeBien();
    if (sorte == 18) ChangeModele();
    if (sorte == 19) ChangeReglage();
    if (sorte < 20) return;
    EXPECT_TRUE(App().Dit(EcritLibelles(App(), {"Libelle " + std::to_string(Entre(1, 99)), "Autre"})));
  }

  std::mt19937 m_hasard{[] {
    const char* graine = std::getenv("FENLOR_GRAINE");
    return graine ? static_cast<unsigned>(std::strtoul(graine, nullptr, 10)) : 20261122u;
  }()};
};

TEST_F(Hasard, ToutRevientOctetPourOctet) {
  std::vector<std::string> libelles;
  ASSERT_TRUE(App().Dit(LitLibelles(App(), libelles)));
  // Held open, as windows do: a file is made before a unit begins.
  std::vector<Ouverture> tenus;
  for (const DefinitionFichier& def : Definitions()) tenus.emplace_back(Magasin(), def.numero);
  const char* voulus = std::getenv("FENLOR_PAS");
  unsigned faites = 0, reprises = 0;
  std::vector<std::string> pas{Export()};  // the naive model: a copy at each step
  std::size_t ici = 0;
  for (unsigned n = voulus ? static_cast<unsigned>(std::strtoul(voulus, nullptr, 10)) : 400; n > 0; --n) {
    if (Entre(0, 3) != 0) {
      const u64 version = Magasin().QVVersionReprises();
      UneUnite();
      if (Magasin().QVVersionReprises() == version) continue;
      ASSERT_EQ(Magasin().QVVersionReprises(), version + 1);
      pas.resize(++ici);
      pas.push_back(Export());
      ++faites;
      continue;
    }
    for (unsigned fois = Entre(1, 12); fois > 0 && ici > 0; --fois, ++reprises) {
      const std::string nom = Nom();
      ASSERT_EQ(Fais(Sens::Annuler), 0u) << nom;
      ASSERT_EQ(Nom(Sens::Retablir), nom);
      ASSERT_TRUE(Export() == pas[--ici]) << "taken back: " << nom << ", step " << ici;
    }
    for (unsigned fois = Entre(0, 12); fois > 0 && ici + 1 < pas.size(); --fois, ++reprises) {
      const std::string nom = Nom(Sens::Retablir);
      ASSERT_EQ(Fais(Sens::Retablir), 0u) << nom;
      ASSERT_TRUE(Export() == pas[++ici]) << "done again: " << nom << ", step " << ici;
    }
  }
  EXPECT_GT(faites, 100u);
  EXPECT_GT(reprises, 100u);
  while (ici > 0) {
    ASSERT_EQ(Fais(Sens::Annuler), 0u);
    --ici;
  }
  EXPECT_EQ(Export(), pas[0]);
  for (const DefinitionFichier& def : Definitions()) {
    const EtatFichier etat = Magasin().QVVerifie(def.numero);
    EXPECT_TRUE(etat.anomalies.empty()) << def.nom << ": " << etat.anomalies[0];
  }
}

/// What a run that may be killed tells before each step: the state it stands in, and the one it goes to where
/// that is known.
struct Annonce {
  std::size_t ici = 0, la = 0;
};

TEST_F(Hasard, UneMortNeLaisseRienAMoitieRepris) {
  const char* voulues = std::getenv("FENLOR_MORTS");
  const unsigned morts = voulues ? static_cast<unsigned>(std::strtoul(voulues, nullptr, 10)) : 12;
  const auto etat = [this] { return std::hash<std::string>()(Export()); };
  Export();  // makes the files
  unsigned pendant = 0;
  for (unsigned tuees = 0; tuees < morts || pendant < morts / 4; ++tuees) {
    Magasin().QVCloseSession();
    int tube[2];
    ASSERT_EQ(pipe(tube), 0);
    const pid_t enfant = fork();
    if (enfant == 0) {
      m_hasard.seed(tuees);
      if (!Rouvre()) _exit(1);
      SuitReprises(App());
      std::vector<Ouverture> tenus;
      for (const DefinitionFichier& def : Definitions()) tenus.emplace_back(Magasin(), def.numero);
      for (std::vector<std::size_t> pas{etat()};;) {
        const u64 version = Magasin().QVVersionReprises();
        const bool reprend = pas.size() > 1 && Entre(0, 2) != 0;
        const Annonce annonce{pas.back(), reprend ? pas[pas.size() - 2] : 0};
        if (write(tube[1], &annonce, sizeof annonce) != sizeof annonce) _exit(1);
        if (!reprend) UneUnite();
        if (reprend && Fais() != 0) _exit(1);
        if (Magasin().QVVersionReprises() == version) continue;
        if (reprend) pas.pop_back();
        if (!reprend) pas.push_back(etat());
      }
    }
    close(tube[1]);
    Annonce annonce, derniere;
    ASSERT_EQ(read(tube[0], &derniere, sizeof derniere), ssize_t{sizeof derniere}) << "the run did not begin";
    usleep(Entre(1, 150) * 1000);
    kill(enfant, SIGKILL);
    int fin = 0;
    waitpid(enfant, &fin, 0);
    ASSERT_TRUE(WIFSIGNALED(fin)) << "it ended by itself";
    while (read(tube[0], &annonce, sizeof annonce) == ssize_t{sizeof annonce}) derniere = annonce;
    close(tube[0]);
    ASSERT_TRUE(Rouvre());
    EXPECT_EQ(Nom(), "") << "images of a session that is gone";
    const std::size_t present = etat();
    if (derniere.la != 0) {
      ++pendant;
      ASSERT_TRUE(present == derniere.ici || present == derniere.la) << "after " << tuees << " kills";
    }
    for (const DefinitionFichier& def : Definitions()) {
      const Ouverture ouverture(Magasin(), def.numero);
      ASSERT_TRUE(Magasin().QVVerifie(def.numero).anomalies.empty()) << def.nom;
    }
  }
}

}  // namespace
}  // namespace fenlor
