// What may be taken back, what may not and why, and the trash.
#include "session/annulation.h"

#include <sys/wait.h>
#include <unistd.h>

#include "core/erreursexercice.h"
#include "ctl/reprises.h"
#include "journal/controles.h"
#include "journal/corbeille.h"
#include "journal/textes.h"
#include "journal/traitements.h"
#include "master/libelles.h"
#include "session/textes.h"

namespace fenlor::test {
namespace {

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

  // Ninety days.
  Magasin().FixeAujourdhui(FaitDate(13, 6, 2003));
  EXPECT_EQ(corbeille().size(), 1u);
  Magasin().FixeAujourdhui(FaitDate(14, 6, 2003));
  EXPECT_EQ(corbeille().size(), 0u);
  for (const u32 reste : {une, deux}) ASSERT_EQ(SupprimeEcriture(App(), reste).numero, 0u);
  EXPECT_GT(corbeille().at(0).numero, corbeille().at(1).numero) << "no number comes again";
  ASSERT_TRUE(App().Reglages.EcritIniExercice({}, "Cloture", "1"));
  EXPECT_EQ(RestaureSuppression(App(), 1, mouvement).numero, ErrExerciceCloture.numero);
}

struct ReprisesDisque : DisqueDeTest, Reprises {
  ReprisesDisque() : Reprises(&Disque) {}
  u32 Saisit(f64 montant) {
    return AjouteSimple(JournalRecettes, FaitDate(10, 3, 2003), Honoraires, montant, Banque512, "Acte");
  }
  /// An entry and a setting as one unit.
  void SaisitEtCompte(const std::string& compteur) {
    QVAPI::Unite unite(Magasin());
    Saisit(20);
    App().Reglages.EcritIni("Essai", "Compteur", compteur);
    EXPECT_TRUE(unite.Valide());
  }
};

TEST_F(ReprisesDisque, UnDisquePleinCouteLeRetourJamaisLOperation) {
  const u32 une = Saisit(20);
  Disque.SurChemin(NomFichierRetenues);
  Disque.Programme(1, ENOSPC, SystemeFautif::Ecriture);
  const u32 deux = Saisit(21);
  ASSERT_EQ(Lignes(deux).size(), 2u);
  EXPECT_FALSE(EstGardee(App(), Sens::Annuler));
  const Refus refus = Reprend(App(), Sens::Annuler);
  EXPECT_EQ(refus.numero, ErrReprisePerdue.numero);
  EXPECT_THAT(VersUtf8(refus.texte), HasSubstr("saisie de « Acte », 21,00 €"));
  EXPECT_THAT(VersUtf8(refus.texte), HasSubstr("Aucun espace"));
  // The next one is kept, and behind it nothing can be reached.
  Saisit(22);
  EXPECT_TRUE(EstGardee(App(), Sens::Annuler));
  Disque.Programme(1, EIO, SystemeFautif::Lectures);
  EXPECT_EQ(Fais(), 3214u);
  EXPECT_EQ(Fais(), 0u);
  Disque.Programme(1, ENOSPC, SystemeFautif::Ecriture);
  EXPECT_EQ(Fais(Sens::Retablir), 0u) << "doing again writes nothing that is not kept";
  EXPECT_EQ(Fais(), 0u);
  EXPECT_EQ(Fais(), ErrReprisePerdue.numero);
  EXPECT_EQ(Lignes(une).size(), 2u);
}

// The process ends at each call of the disk in turn: slots and settings go back together, or neither.
TEST_F(ReprisesDisque, UneMortAChaqueAppelDuRetour) {
  App().Reglages.EcritIni("Essai", "Compteur", "1");
  Export();
  unsigned mortes = 0, avant = 0;
  for (unsigned k = 1, statut = SystemeFautif::StatutTue; statut != 0; ++k) {
    SCOPED_TRACE("call " + std::to_string(k));
    Magasin().QVCloseSession();
    int tube[2];
    ASSERT_EQ(pipe(tube), 0);
    const pid_t enfant = fork();
    if (enfant == 0) {
      if (!Rouvre()) _exit(1);
      SuitReprises(App());
      const std::size_t vide = std::hash<std::string>()(Export());
      SaisitEtCompte(std::to_string(k + 1));
      const std::size_t etats[]{vide, std::hash<std::string>()(Export())};
      if (write(tube[1], etats, sizeof etats) != sizeof etats) _exit(1);
      Disque.Tue(true);
      Disque.Programme(k, EIO, SystemeFautif::Tous & ~(SystemeFautif::Lectures | SystemeFautif::Mesurage));
      _exit(Fais() == 0 && Disque.NbPannes() == 0 ? 0 : 1);
    }
    std::size_t etats[2]{};
    ASSERT_EQ(read(tube[0], etats, sizeof etats), ssize_t{sizeof etats});
    close(tube[0]);
    close(tube[1]);
    int fin = 0;
    waitpid(enfant, &fin, 0);
    statut = static_cast<unsigned>(WEXITSTATUS(fin));
    ASSERT_TRUE(statut == 0 || statut == SystemeFautif::StatutTue) << statut;
    ASSERT_TRUE(Rouvre());
    const std::size_t present = std::hash<std::string>()(Export());
    ASSERT_TRUE(present == etats[0] || present == etats[1]) << "half of it was taken back";
    EXPECT_FALSE(Magasin().Reglages().Existe("Annulation"));
    mortes += statut != 0;
    avant += present == etats[1];
  }
  EXPECT_GT(mortes, 10u);
  EXPECT_GT(avant, 3u);
}

// The note of the settings stands, the undo fails, and so does the note's removal: units go on only without
// the note, for the next one would have the number that it bears.
TEST_F(ReprisesDisque, UnRetourManqueNeRevientPasParSaNote) {
  App().Reglages.EcritIni("Essai", "Compteur", "1");
  unsigned restees = 0;
  for (unsigned k = 1; restees == 0 && k < 100; ++k) {
    SCOPED_TRACE("from call " + std::to_string(k));
    SaisitEtCompte(std::to_string(k + 1));
    Disque.Programme(k, EIO, SystemeFautif::Tous & ~(SystemeFautif::Lectures | SystemeFautif::Mesurage),
                     false);
    ASSERT_NE(Fais(), 0u) << "no note ever stayed";
    restees += Magasin().Reglages().Existe("Annulation");
    const u32 refusee = Saisit(21);
    Disque.Repare();
    EXPECT_TRUE(refusee == 0 && Saisit(22) != 0);
    ASSERT_TRUE(Rouvre());
    EXPECT_EQ(App().Reglages.LitIni("Essai", "Compteur"), std::to_string(k + 1));
    SuitReprises(App());
  }
  EXPECT_EQ(restees, 1u);
}

TEST_F(Reprises, CeQuUnAutreAChangeEstASonAuteur) {
  std::vector<std::string> libelles;
  ASSERT_FALSE(LitLibelles(App(), libelles));
  ASSERT_FALSE(EcritLibelles(App(), {"Un", "Deux"}));
  EXPECT_EQ(Nom(), "modification des libellés");
  const std::string chemin = App().PathExercice + "/TEXTES.dat", texte = LitFichier(chemin);
  EcritFichier(chemin, texte + "Trois\r\n");
  EXPECT_EQ(Fais(), ErrRepriseChangee.numero);
  EXPECT_EQ(LitFichier(chemin), texte + "Trois\r\n");
  EcritFichier(chemin, texte);
  EXPECT_EQ(Fais(), 0u);
  EXPECT_EQ(Fais(Sens::Retablir), 0u);
  EXPECT_EQ(LitFichier(chemin), texte);

  // A setting that was typed since stays, and the entry goes all the same.
  {
    QVAPI::Unite unite(Magasin());
    AjouteSimple(JournalRecettes, FaitDate(10, 3, 2003), Honoraires, 20, Banque512);
    for (const char* compteur : {"1", "2"}) App().Reglages.EcritIni("Essai", "Compteur", compteur);
    ASSERT_TRUE(unite.Valide());
  }
  EXPECT_EQ(Fais(), 0u);
  EXPECT_EQ(App().Reglages.LitIni("Essai", "Compteur"), "") << "written twice, it goes back to before both";
  EXPECT_EQ(Fais(Sens::Retablir), 0u);
  App().Reglages.EcritIni("Essai", "Compteur", "3");
  EXPECT_EQ(Fais(), 0u);
  EXPECT_EQ(App().Reglages.LitIni("Essai", "Compteur"), "3");

  // Whoever opened the practice meanwhile, or recovered it: nothing is left to take back.
  ASSERT_TRUE(Rouvre());
  SuitReprises(App());
  EXPECT_EQ(Fais(), ErrRienAReprendre.numero);
}

}  // namespace
}  // namespace fenlor::test
