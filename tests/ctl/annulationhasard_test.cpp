// Random units of every kind, taken back and done again in random depth, against copies of the export at each
// step. FENLOR_PAS sets the number of steps, FENLOR_GRAINE the seed, FENLOR_MORTS the number of kills.
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>

#include "banque/operations.h"
#include "banque/rapprochement.h"
#include "ctl/reprises.h"
#include "journal/controles.h"
#include "journal/traitements.h"
#include "master/libelles.h"

namespace fenlor::test {
namespace {

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
    EXPECT_FALSE(EcritLibelles(App(), {"Libelle " + std::to_string(Entre(1, 99)), "Autre"}));
  }

  std::mt19937 m_hasard{[] {
    const char* graine = std::getenv("FENLOR_GRAINE");
    return graine ? static_cast<unsigned>(std::strtoul(graine, nullptr, 10)) : 20261122u;
  }()};
};

TEST_F(Hasard, ToutRevientOctetPourOctet) {
  std::vector<std::string> libelles;
  ASSERT_FALSE(LitLibelles(App(), libelles));
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
}  // namespace fenlor::test
