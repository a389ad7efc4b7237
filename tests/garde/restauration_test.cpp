// Books saved and brought back, on disks that fail and machines that lose their power.
#include "garde/restauration.h"

#include <atomic>
#include <filesystem>
#include <mutex>
#include <thread>

#include "core/btfiles.h"
#include "core/cles.h"
#include "garde/conservation.h"
#include "garde/inventaire.h"
#include "garde/lecturearchives.h"
#include "garde/restes.h"
#include "garde/sauvegarde.h"
#include "garde/textes.h"
#include "journal/cabinetmedical.h"
#include "outils/systemecoupure.h"
#include "outils/systemefautif.h"
#include "outils/systemesanssynchro.h"
#include "session/verification.h"
#include "store/exercices.h"
#include "store/ouverture.h"

using namespace fenlor;
using namespace fenlor::test;

namespace {

/// Every record of the open exercice, and its settings.
std::string Livres(CFenlorApp& app) {
  std::string tout;
  for (const u16 numero : {FichierJournal, FichierComptes, FichierRubriques, FichierBanques}) {
    const Ouverture ouverture(app.Magasin, numero);
    EXPECT_TRUE(ouverture);
    const std::size_t taille = DefinitionFichierNumero(numero)->taille;
    app.Magasin.QVParcours(numero, [&](Position, const void* rec) {
      tout.append(static_cast<const char*>(rec), taille);
      return true;
    });
  }
  for (const std::string& cle : app.Magasin.Reglages().Cles(app.NomExercice))
    tout += cle + "=" + app.Magasin.Reglages().Lit(app.NomExercice, cle) + "\n";
  return tout;
}

class Garde : public CabinetMedical {
 public:
  Garde() { Installe(); }
  explicit Garde(Systeme* systeme) : CabinetMedical(Cles::Memoire, 256u << 10, systeme) { Installe(); }
  void TestBody() override {}
  void Saisit(int combien) {
    for (int i = 0; i < combien; ++i) ASSERT_NE(Enregistre(Ecriture(1, "706", 20 + i)), 0u);
  }
  std::vector<std::string> Fichiers(const std::string& dossier) {
    std::vector<std::string> noms;
    SystemePosix().Liste(dossier, noms);
    return noms;
  }
  std::string Sauve(const std::string& motDePasse = {}) {
    SauvegardeFaite faite;
    const Refus refus = Sauvegarde(App(), {ailleurs.Chemin(), false, motDePasse}, faite);
    EXPECT_FALSE(refus) << refus.texte;
    return faite.chemin;
  }
  std::vector<u32> Biens() {
    std::vector<u32> numeros;
    CImmobilisations immo(App(), {});
    EXPECT_TRUE(immo.OpenFile());
    for (bool bien = immo.First(0); bien; bien = immo.Next(0)) numeros.push_back(immo.Rec->Numero);
    return numeros;
  }
  void AjouteBien(u32 numero) {
    CImmobilisations immo(App(), {});
    immo.Rec->Numero = numero;
    immo.Rec->DateAchat = FaitDate(1, 3, 2003);
    ASSERT_TRUE(immo.OpenFile() && immo.Add());
  }
  DossierTemporaire ailleurs{true};
};

using GardeTest = Garde;

}  // namespace

TEST_F(GardeTest, AllerEtRetour) {
  Saisit(30);
  const std::string avant = Livres(App());
  const std::string claire = Sauve(), fermee = Sauve("secret");
  EXPECT_EQ(LitFichier(fermee).find("manifeste"), std::string::npos);
  for (const std::string& chemin : {claire, fermee}) {
    Saisit(5);
    ASSERT_NE(Livres(App()), avant);
    RestaurationFaite faite;
    ASSERT_FALSE(Restaure(App(), {chemin, "secret", {}}, faite));
    EXPECT_EQ(Livres(App()), avant);
    EXPECT_EQ(App().NomExercice, "2003");
    EXPECT_EQ(VerifieExercice(App(), [](const std::string& constat) { ADD_FAILURE() << constat; }), 0u);
    ASSERT_EQ(faite.exercices.size(), 1u);
    EXPECT_EQ(faite.manifeste.exercices[0].ecritures, 30u);
    EXPECT_TRUE(faite.exercices[0].constats.empty());
    EXPECT_FALSE(LitFichier(App().PathCabinet + "/" + faite.exercices[0].ancien + "/JOURNAL.dat").empty());
  }
  EXPECT_TRUE(Rouvre());
  EXPECT_EQ(Livres(App()), avant);
  RestaurationFaite faite;
  Boite.ArretApres = 0;
  EXPECT_EQ(Restaure(App(), {claire, "", {}}, faite).numero, ErrRestaurationAbandonnee);
  SauvegardeFaite sauvee;
  // Wherever it is stopped: in the copy, the archive, the reading back.
  int moment = 0;
  for (Refus refus; moment == 0 || refus; ++moment) {
    Boite.Oublie();
    Boite.ArretApres = moment;
    refus = Sauvegarde(App(), {ailleurs.Chemin(), false, {}}, sauvee);
    EXPECT_TRUE(!refus || refus.numero == ErrArchiveInterrompue) << refus.texte;
    EXPECT_EQ(Fichiers(ailleurs.Chemin()).size(), refus ? 2u : 3u) << moment;
  }
  EXPECT_GT(moment, 15);
  Boite.ArretApres = -1;
  EXPECT_EQ(Sauvegarde(App(), {ailleurs / "stop", false, {}}, sauvee).numero, ErrArchiveEcriture);
  EXPECT_EQ(Restaure(App(), {fermee, "faux", {}}, faite).numero, ErrArchiveMotDePasse);
  EXPECT_EQ(Restaure(App(), {claire, "", {"2004"}}, faite).numero, 3208u);
  EXPECT_EQ(Livres(App()), avant);
}

TEST_F(GardeTest, AutreMachine) {
  Saisit(12);
  const std::string avant = Livres(App());
  ASSERT_TRUE(App().Reglages.EcritIni("Activite", "Identification", "Docteur MARCHAND"));
  SauvegardeFaite sauvee;
  ASSERT_FALSE(Sauvegarde(App(), {ailleurs.Chemin(), true, {}}, sauvee));
  CabinetDeTest* autre = new Jumeau;
  RestaurationFaite faite;
  const Refus refus = Restaure(autre->App(), {sauvee.chemin, {}, {}}, faite);
  EXPECT_FALSE(refus) << refus.texte;
  EXPECT_TRUE(faite.cabinet);
  EXPECT_EQ(autre->App().Reglages.LitIni("Activite", "Identification"), "Docteur MARCHAND");
  ASSERT_TRUE(autre->OuvreExercice("2003"));
  EXPECT_EQ(Livres(autre->App()), avant);
  delete autre;
}

TEST_F(GardeTest, CeQuiSertATousLesExercices) {
  const auto ramene = [&](const std::string& archive, std::deque<int> reponses) {
    Boite.Oublie();
    Boite.Reponses = reponses;
    RestaurationFaite faite;
    const Refus refus = Restaure(App(), {archive, {}, {}}, faite);
    return refus ? std::to_string(refus.numero) : faite.communsGardes;
  };
  AjouteBien(1);
  AjouteBien(2);
  const std::string archive = Sauve(), immo = App().PathCabinet + "/Immo.dat";
  EXPECT_EQ(ramene(archive, {}), "") << "nothing differs, nothing is asked";
  AjouteBien(3);
  EXPECT_EQ(ramene(archive, {RepAnnuler}), "3561");
  EXPECT_EQ(ramene(archive, {RepNon}), "immobilisations");
  EXPECT_EQ(Biens(), (std::vector<u32>{1, 2, 3}));
  EXPECT_EQ(ramene(archive, {RepOui}), "");
  EXPECT_EQ(Biens(), (std::vector<u32>{1, 2}));
  const auto noms = Fichiers(App().PathCabinet);
  EXPECT_EQ(std::count_if(noms.begin(), noms.end(), [](auto& n) { return n.starts_with("Immo.avant-"); }), 1);
  // Nothing would be lost: nothing is asked.
  for (const bool absent : {true, false}) {
    ASSERT_TRUE(Magasin().QVCloseSession());
    absent ? (void)SystemePosix().Supprime(immo) : EcritFichier(immo, std::string(3000, 'x'));
    ASSERT_TRUE(Rouvre() && OuvreExercice("2003"));
    EXPECT_EQ(ramene(archive, {}), "");
    EXPECT_TRUE(Boite.NumerosQuestions().empty());
    EXPECT_EQ(Biens(), (std::vector<u32>{1, 2}));
  }
  EXPECT_TRUE(Rouvre());
  EXPECT_EQ(VerifieExercice(App(), [](const std::string& constat) { ADD_FAILURE() << constat; }), 0u);
}

// Whoever brought books back a hundred times in one minute could not open his practice any more.
TEST_F(GardeTest, UnNomPrisNeFermePasLeCabinet) {
  const std::string cabinet = App().PathCabinet, avant = "2003.avant-20030315-1000";
  const std::string cote = "2003.remplace~";
  const auto seme = [&](const std::string& nom) {
    std::filesystem::create_directory(cabinet + "/" + nom);
    EcritFichier(cabinet + "/" + nom + "/x", nom);
  };
  seme(avant);
  seme("pret");
  Boite.Oublie();
  EXPECT_FALSE(Magasin().QVInstalleExercice("2003", cabinet + "/pret", {}, avant));
  EXPECT_EQ(Boite.Erreurs.size(), 1u);
  EXPECT_TRUE(Rouvre() && !App().NomExercice.empty()) << "nothing was moved";
  // A stop between the new books and the other name of the old ones.
  seme(cote);
  ASSERT_TRUE(Magasin().Reglages().Ecrit("2003", CleAvant, avant));
  EXPECT_TRUE(Rouvre());
  EXPECT_EQ(LitFichier(cabinet + "/" + avant + "/x"), avant);
  EXPECT_EQ(LitFichier(cabinet + "/" + avant + "-2/x"), cote);
  EXPECT_EQ(App().Reglages.LitIniExercice("2003", CleAvant), "");
}

TEST(GardeRestes, SontOtesALaProchaineOuverture) {
  SystemePosix posix;
  SystemeFautif systeme(posix);
  Garde garde(&systeme);
  const std::string cabinet = garde.App().PathCabinet, copies = garde.ailleurs.Chemin(),
                    part = "Fenlor_c_2003_20030301_1000.fnz.part",
                    tenue = "Fenlor_c_2003_20030302_1000.fnz.part";
  const auto seme = [&] {
    ASSERT_EQ(posix.CreeDossier(cabinet + "/restauration~"), 0);
    ASSERT_EQ(posix.CreeDossier(cabinet + "/restauration~/2003"), 0);
    for (const char* nom :
         {"restauration~/fenlor.ini", "restauration~/2003/JOURNAL.dat", "copie-12-3.tmp", "fenlor.ini.tmp"})
      EcritFichier(cabinet + "/" + nom, "x");
    for (const std::string& nom : {part, tenue, std::string("photo.part"), std::string("copie-a.tmp")})
      EcritFichier(copies + "/" + nom, "x");
  };
  const auto range = [&] {
    RangeRestes(garde.App());
    return garde.Magasin().AvertissementsMagasin().size();
  };
  const auto note = [&] {
    EXPECT_TRUE(garde.Magasin().Reglages().Ecrit(Texte(SecFenlor), Texte(CleSauvegardeEnCours),
                                                 garde.ailleurs.Chemin()));
  };
  seme();
  EcritFichier(cabinet + "/copie-notes.tmp", "x");
  std::unique_ptr<Fichier> autre;
  ASSERT_EQ(posix.Ouvre(copies + "/" + tenue, Systeme::LectureEcriture, autre), 0);
  ASSERT_EQ(TientFichier(*autre), 0);
  note();
  EXPECT_EQ(range(), 0u);
  auto noms = garde.Fichiers(copies);
  std::sort(noms.begin(), noms.end());
  EXPECT_EQ(noms, (std::vector<std::string>{tenue, "copie-a.tmp", "photo.part"}));
  EXPECT_FALSE(posix.Existe(cabinet + "/restauration~"));
  for (const char* nom : {"/copie-12-3.tmp", "/fenlor.ini.tmp"}) EXPECT_FALSE(posix.Existe(cabinet + nom));
  EXPECT_TRUE(posix.Existe(cabinet + "/copie-notes.tmp"));

  seme();
  systeme.SurChemin("fnz.part");
  systeme.Programme(1, EACCES, SystemeFautif::Suppression, false);
  note();
  EXPECT_EQ(range(), 1u);
  EXPECT_TRUE(posix.Existe(copies + "/" + part));
  EXPECT_EQ(range(), 0u) << "told once";
}

/// A drive goes away in the middle of a backup, and leaves the empty folder on which it stood.
TEST(GardeRestes, UnDisqueRetireGardeSaNote) {
  Garde garde;
  const std::string usb = garde.ailleurs.Chemin() + "/usb", ailleurs = garde.ailleurs.Chemin() + "/autre",
                    part = "/Fenlor_c_2003_20030301_1000.fnz.part";
  std::filesystem::create_directory(usb);
  std::filesystem::create_directory(ailleurs);
  {
    const NoteSauvegarde note(garde.App(), usb);
    EcritFichier(usb + part, "x");
    std::filesystem::rename(usb, usb + "~");
    std::filesystem::create_directory(usb);
  }
  RangeRestes(garde.App());
  { const NoteSauvegarde autre(garde.App(), ailleurs); }
  std::filesystem::remove(usb);
  std::filesystem::rename(usb + "~", usb);
  { const NoteSauvegarde suivante(garde.App(), usb); }
  EXPECT_FALSE(std::filesystem::exists(usb + part)) << "the next backup there removes it";
  EcritFichier(usb + part, "x");
  RangeRestes(garde.App());
  EXPECT_TRUE(std::filesystem::exists(usb + part)) << "no note is left";
}

/// A drive whose first read does not come back.
struct DisqueMuet : SystemePosix {
  std::mutex Verrou;
  std::unique_lock<std::mutex> Tenu{Verrou};
  std::atomic<bool> Atteint{false};
  int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) override {
    Atteint = true;
    Atteint.notify_all();
    const std::lock_guard attend(Verrou);
    return SystemePosix::Ouvre(chemin, mode, fichier);
  }
};

TEST(GardeRestes, UneLectureQuiNeRevientPasEstAbandonnee) {
  auto disque = std::make_shared<DisqueMuet>();
  const std::weak_ptr<DisqueMuet> fin = disque;
  unsigned dites = 0;
  {
    LectureArchives lecture;
    lecture.Commence(disque, "/nulle/part", std::vector<ArchiveLue>(2),
                     [&](std::size_t, const ArchiveLue&) { ++dites; });
    disque->Atteint.wait(false);
  }  // would wait for ever with the thread
  disque->Tenu.unlock();
  disque.reset();
  while (!fin.expired()) std::this_thread::yield();
  EXPECT_EQ(dites, 0u);
}

TEST(GardePannes, SauvegarderEntreDeuxSaisies) {
  // A session has one thread: it photographs between two units of work. The archive may be written by another
  // one while the entries go on.
  SystemePosix posix;
  Garde garde(&posix);
  const char* const texte = std::getenv("FENLOR_SAISIES");
  const unsigned voulues = texte ? static_cast<unsigned>(std::atoi(texte)) : 300;
  for (unsigned saisies = 0; saisies < voulues;) {
    Photographie photographie;
    ASSERT_FALSE(photographie.Prend(garde.App(), {"2003"}, false));
    const unsigned alors = saisies;
    SauvegardeFaite faite;
    Refus refus;
    std::thread ecrivain([&] {
      refus = EcritSauvegarde(posix, photographie, {garde.ailleurs.Chemin(), false, {}}, faite);
    });
    for (unsigned n = 0; n < voulues / 5; ++n, ++saisies) garde.Saisit(1);
    ecrivain.join();
    ASSERT_FALSE(refus) << refus.texte;
    Jumeau autre;
    RestaurationFaite rendue;
    ASSERT_FALSE(Restaure(autre.App(), {faite.chemin, {}, {}}, rendue));
    EXPECT_TRUE(rendue.exercices[0].constats.empty());
    EXPECT_EQ(rendue.manifeste.exercices[0].ecritures, alors);
    ASSERT_TRUE(autre.OuvreExercice("2003"));
    EXPECT_EQ(autre.Magasin().GetJournalRec(0), alors * 2);
  }
}

/// Every how many calls one fails; 1 for all of them.
unsigned Pas(unsigned ordinaire) {
  const char* const texte = std::getenv("FENLOR_PAS");
  return texte ? static_cast<unsigned>(std::atoi(texte)) : ordinaire;
}

TEST(GardePannes, UnDisqueQuiManqueNeLaisseRienDeFaux) {
  SystemeSansSynchro posix;
  SystemeFautif systeme(posix);
  Garde garde(&systeme);
  garde.Saisit(10);
  const std::string avant = Livres(garde.App());
  unsigned faits = 0, refusees = 0;
  // On the drive of the backup alone, and on that of the books as well.
  for (const bool livres : {false, true})
    for (const bool uneFois : {true, false})
      for (unsigned k = 1;; k += livres ? Pas(7) : 1, ++faits) {
        SCOPED_TRACE(testing::Message() << livres << " call " << k << (uneFois ? "" : " and all behind it"));
        systeme.SurChemin(livres ? std::string() : garde.ailleurs.Chemin());
        systeme.Programme(k, k % 2 ? ENOSPC : EIO, SystemeFautif::Tous, uneFois);
        SauvegardeFaite faite;
        const Refus refus = Sauvegarde(garde.App(), {garde.ailleurs.Chemin(), k % 2 == 0, {}}, faite);
        const bool manque = systeme.NbPannes() != 0;
        systeme.Repare();
        refusees += refus.numero != 0;
        EXPECT_TRUE(!refus || refus.dit || !refus.texte.empty());
        ASSERT_TRUE(garde.Rouvre());
        RangeRestes(garde.App());
        unsigned bonnes = 0;
        for (const std::string& nom : garde.Fichiers(garde.ailleurs.Chemin())) {
          const std::string chemin = garde.ailleurs / nom;
          Manifeste manifeste;
          EXPECT_TRUE(nom.ends_with(".fnz")) << nom;
          EXPECT_FALSE(ParcourtArchive(posix, chemin, {}, manifeste)) << nom;
          ++bonnes;
          posix.Supprime(chemin);
        }
        // A drive that goes away once the name stands keeps a good one: nobody can remove it.
        EXPECT_TRUE(bonnes == (refus ? 0 : 1) || (bonnes == 1 && !uneFois)) << refus.texte;
        if (!manque) break;
      }
  EXPECT_GT(faits, 25u);
  EXPECT_EQ(Livres(garde.App()), avant);
  std::cout << faits << " failing calls, " << refusees << " backups refused\n";
}

TEST(GardePannes, CeQuiArreteUneSauvegardeEstNomme) {
  SystemePosix posix;
  SystemeFautif systeme(posix);
  Garde garde(&systeme);
  const std::string cabinet = garde.App().PathCabinet, copies = garde.ailleurs.Chemin();
  const struct {
    std::string chemin;
    int erreur;
    unsigned genres;
    unsigned numero;
    std::string dossier, raison;
  } cas[] = {{copies, EACCES, SystemeFautif::Mesurage, ErrArchiveEcriture, copies, "refus"},
             {"/copie-", ENOSPC, SystemeFautif::Tous, ErrCopieLivres, cabinet + " :", "espace"},
             {"/copie-", ENOSPC, SystemeFautif::Ecriture, ErrCopieLivres, cabinet + " :", "espace"},
             {cabinet + "/fenlor.ini", EIO, SystemeFautif::Lectures, ErrArchiveLivres, "fenlor.ini", ""}};
  for (const auto& c : cas) {
    systeme.SurChemin(c.chemin);
    systeme.Programme(1, c.erreur, c.genres, false);
    SauvegardeFaite faite;
    const Refus refus = Sauvegarde(garde.App(), {copies, false, {}}, faite);
    systeme.Repare();
    EXPECT_EQ(refus.numero, c.numero) << refus.texte;
    for (const std::string& mot : {c.dossier, c.raison})
      EXPECT_NE(refus.texte.find(mot), std::string::npos) << refus.texte;
  }
  std::vector<ArchiveLue> archives;
  EXPECT_EQ(ListeArchives(systeme, copies + "/absent", archives).numero, ErrDossierIllisible);
  ASSERT_TRUE(garde.Magasin().QVCloseSession() && garde.Magasin().QVOpenSession(1));
  systeme.SurChemin("/fenlor.ini");
  systeme.Programme(1, EACCES, SystemeFautif::Tous, false);
  EXPECT_FALSE(garde.Magasin().QVOpenCompta(cabinet, {}));
  EXPECT_EQ(garde.Magasin().QVFichierErreur(), cabinet + "/fenlor.ini");
  systeme.Repare();
}

TEST(GardePannes, UnDisqueQuiNeGardePasCeQuIlAcquitte) {
  SystemePosix posix;
  SystemeFautif systeme(posix);
  Garde garde(&systeme);
  garde.Saisit(3);
  // The archive itself, and the copy that it is made of.
  for (const char* menti : {".part", "copie-"}) {
    systeme.Ment(menti);
    SauvegardeFaite faite;
    EXPECT_EQ(Sauvegarde(garde.App(), {garde.ailleurs.Chemin(), false, {}}, faite).numero, 3524u) << menti;
    EXPECT_TRUE(garde.Fichiers(garde.ailleurs.Chemin()).empty()) << menti;
  }
}

TEST(GardePannes, UnDisqueQuiRelitUneAutreSauvegarde) {
  struct Ailleurs : SystemePosix {
    int Ouvre(const std::string& chemin, Ouverture mode, std::unique_ptr<Fichier>& fichier) override {
      const bool autre = mode == Lecture && chemin.ends_with(".part") && !sienne.empty();
      return SystemePosix::Ouvre(autre ? sienne : chemin, mode, fichier);
    }
    std::string sienne;
  } systeme;
  Garde garde(&systeme);
  systeme.sienne = garde.Sauve();
  garde.Saisit(1);
  SauvegardeFaite faite;
  EXPECT_EQ(Sauvegarde(garde.App(), {garde.ailleurs.Chemin(), false, {}}, faite).numero, 3524u);
}

TEST(GardePannes, UneRestaurationSurUnDisqueQuiManque) {
  // Drives that vanish, folders that cannot be written, full disks: at some call, once or from there on.
  SystemeSansSynchro posix;
  SystemeFautif systeme(posix);
  Garde garde(&systeme);
  garde.Saisit(3);
  garde.AjouteBien(1);
  EcritFichier(garde.App().PathExercice + "/CORBEILLE.dat", "what was deleted");
  const std::string ancien = Livres(garde.App()), archive = garde.Sauve();
  garde.Saisit(2);
  garde.AjouteBien(2);
  const std::string recent = Livres(garde.App()), retour = garde.Sauve();
  // What is told names what could not be written.
  for (const char* chemin : {"restauration~/", "fenlor.ini"}) {
    garde.Boite.Oublie();
    garde.Boite.Reponses = {RepOui};
    systeme.SurChemin(garde.App().PathCabinet + "/" + chemin);
    systeme.Programme(1, ENOSPC, SystemeFautif::Ecriture, false);
    RestaurationFaite faite;
    const Refus refus = Restaure(garde.App(), {archive, {}, {}}, faite);
    systeme.Repare();
    const std::string dit = garde.Boite.Erreurs.empty() ? refus.texte : garde.Boite.Erreurs[0].texte;
    EXPECT_NE(dit.find("Aucun espace"), std::string::npos) << dit;
    EXPECT_NE(dit.find(garde.Boite.Erreurs.empty() ? "restauration~" : "fenlor.ini"), std::string::npos)
        << dit;
    EXPECT_EQ(dit.find("La sauvegarde"), std::string::npos) << dit;
    ASSERT_TRUE(garde.Rouvre() && garde.OuvreExercice("2003"));
    ASSERT_EQ(Livres(garde.App()), recent);
  }
  systeme.SurChemin("");
  const int erreurs[] = {EIO, ENOSPC, EACCES, EROFS};
  unsigned manquees = 0, rendues = 0, entre = 0;
  for (const bool uneFois : {true, false})
    for (unsigned k = 1;; k += Pas(23)) {
      SCOPED_TRACE(testing::Message() << "call " << k << (uneFois ? "" : " and all behind it"));
      garde.Boite.Oublie();
      garde.Boite.Reponses = {RepOui};
      systeme.Programme(k, erreurs[k % 4], SystemeFautif::Tous, uneFois);
      RestaurationFaite faite;
      const Refus refus = Restaure(garde.App(), {archive, {}, {}}, faite);
      const bool manque = systeme.NbPannes() != 0;
      systeme.Repare();
      EXPECT_TRUE(!refus || refus.dit || !refus.texte.empty());
      ASSERT_TRUE(garde.Rouvre() && garde.OuvreExercice("2003"));
      RangeRestes(garde.App());
      const std::string trouve = Livres(garde.App());
      EXPECT_TRUE(trouve == ancien || (refus && trouve == recent)) << refus.texte;
      const std::size_t biens = garde.Biens().size();
      EXPECT_EQ(biens, refus && (trouve == recent || biens == 2) ? 2u : 1u) << refus.texte;
      for (const std::string& nom : garde.Fichiers(garde.App().PathCabinet)) {
        EXPECT_EQ(nom.find('~'), std::string::npos) << nom;
        if (nom.find(".avant-") != std::string::npos)
          std::filesystem::remove_all(garde.App().PathCabinet + "/" + nom);
      }
      if (!manque) break;
      ++(trouve == recent ? manquees : biens == 2 ? entre : rendues);
      if (trouve == ancien) {
        garde.Boite.Reponses = {RepOui};
        ASSERT_FALSE(Restaure(garde.App(), {retour, {}, {}}, faite));
      }
      ASSERT_EQ(Livres(garde.App()), recent);
    }
  EXPECT_GT(manquees, 3u);
  std::cout << manquees << " restorations refused by the disk, " << rendues << " done in spite of it, "
            << entre << " but for the assets\n";
}

TEST(GardePannes, UneCoupurePendantLaRestauration) {
  std::set<std::string> vus;
  for (u64 coupure = 1; coupure < 200; ++coupure) {
    Garde garde;
    garde.Saisit(3);
    EcritFichier(garde.App().PathExercice + "/CORBEILLE.dat", "what was deleted");
    const std::string ancien = Livres(garde.App());
    const std::string archive = garde.Sauve();
    garde.Saisit(2);
    const std::string recent = Livres(garde.App());
    const std::string cabinet = garde.Magasin().PathCabinet();
    ASSERT_TRUE(garde.Magasin().QVCloseSession());
    bool coupee = false;
    {
      SystemeCoupure systeme(cabinet);
      OptionsQVAPI options;
      options.systeme = &systeme;
      QVAPI magasin(options);
      CFenlorApp app(magasin, garde.Boite);
      ASSERT_TRUE(magasin.QVOpenSession(1) && magasin.QVOpenCompta(cabinet, ""));
      systeme.CoupeApres(coupure);
      RestaurationFaite faite;
      const Refus refus = Restaure(app, {archive, {}, {}}, faite);
      coupee = systeme.EstCoupe();
      EXPECT_TRUE(coupee || !refus) << refus.texte;
      magasin.QVCloseSession();
      const bool applique = !coupee || systeme.Applique(coupure * 7);
      ASSERT_TRUE(applique);
    }
    ASSERT_TRUE(garde.Rouvre()) << "cut " << coupure;
    ASSERT_TRUE(garde.OuvreExercice("2003")) << "cut " << coupure;
    const std::string trouve = Livres(garde.App());
    EXPECT_TRUE(trouve == ancien || trouve == recent) << "cut " << coupure;
    vus.insert(trouve);
    if (!coupee) break;
  }
  EXPECT_EQ(vus.size(), 2u);
}
