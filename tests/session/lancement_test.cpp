#include "session/lancement.h"

#include "outils/cabinetdetest.h"
#include "store/motdepasse.h"

namespace fenlor::test {
namespace {

namespace fs = std::filesystem;

/// "C=... D=... ..." of what was given.
std::string Resume(const ArgumentsLancement& l) {
  std::string texte;
  const auto ajoute = [&texte](char lettre, const std::optional<std::string>& valeur) {
    if (valeur) texte += std::string(texte.empty() ? "" : " ") + lettre + "=" + *valeur;
  };
  ajoute('C', l.nomCabinet);
  ajoute('D', l.pathCabinet);
  ajoute('F', l.pathMagasin);
  ajoute('H', l.parent ? std::optional(std::to_string(*l.parent)) : std::nullopt);
  ajoute('P', l.pathProgrammes);
  ajoute('S', l.edition);
  ajoute('U', l.utilisateur);
  if (l.aide) texte += " aide";
  if (l.version) texte += " version";
  for (const std::string& mot : l.inconnus) texte += " ?" + mot;
  return texte;
}

TEST(Lancement, LigneDeCommande) {
  const struct {
    std::vector<std::string> mots;
    const char* attendu;
  } cas[] = {
      {{}, ""},
      {{"/D", "/srv/mon cabinet", "/s", "Quorbane"}, "D=/srv/mon cabinet S=Quorbane"},
      {{"/C", "Dr Roux", "/F", "/f", "/P", "/p", "/U", "/u"}, "C=Dr Roux F=/f P=/p U=/u"},
      {{"/D", "/H", "/H", "12"}, "D=/H H=12"},
      {{"/D", " \t", "/U", ""}, ""},
      {{"/D"}, ""},
      {{"/D", "/a", "/D", "/b"}, "D=/b"},
      {{"/H12"}, "H=12"},
      {{"/h", "12abc34"}, "H=12"},
      {{"/H", "/D", "/srv"}, "D=/srv"},
      {{"/H", "-5"}, " ?-5"},
      {{"/H"}, ""},
      {{"/D/srv/a b", "/p/opt", "/S/x"}, "D=/srv/a b P=/opt ?/S/x"},
      {{"/D \"/srv/mon cabinet\" /H 12 /S\"TMES\""}, "D=/srv/mon cabinet H=12 S=TMES"},
      {{"/H ab12/D \"x\""}, "D=x H=12"},
      {{"/H -12 /D \"  \" /U \"moi"}, "U=moi"},
      {{"/X", "/Z9", "/D", "/srv"}, "D=/srv ?/X ?/Z9"},
      {{"/X \"a\" /C \"b\""}, "C=b"},
      {{"/srv/data/nulle part"}, " ?/srv/data/nulle part"},
      {{"cabinet", "/S", "QVES"}, "S=QVES ?cabinet"},
      {{"/tmp/../tmp/"}, "D=/tmp"},
      {{"/tmp", "/H", "3", "."}, "D=/tmp H=3 ?."},
      {{"/tmp", "/D", "/srv"}, "D=/srv ?/tmp"},
      {{"--help"}, " aide"},
      {{"-h", "--version", "--vite", "/H", "3"}, "H=3 aide version ?--vite"},
      {{"/C", "--help"}, "C=--help"},
  };
  for (const auto& c : cas) {
    std::string ligne;
    for (const std::string& mot : c.mots) ligne += "[" + mot + "]";
    EXPECT_EQ(Resume(LitLigneCommande(c.mots)), c.attendu) << ligne;
  }
  for (const char lettre : {'C', 'D', 'F', 'H', 'P', 'S', 'U'})
    EXPECT_NE(AideLigneCommande().find(std::string("  /") + lettre + " "), std::string::npos) << lettre;
}

TEST(Lancement, DossierDuCabinet) {
  const test::DossierTemporaire dossier;
  const std::string prog = dossier.Chemin();
  EXPECT_EQ(DossierCabinetDefaut(prog, "/d", "/h"), "/d/fenlor/cabinet");
  EXPECT_EQ(DossierCabinetDefaut(prog, "relatif", "/h"), "/h/.local/share/fenlor/cabinet");
  EXPECT_EQ(DossierCabinetDefaut(prog, "", ""), prog);
  test::EcritFichier(prog + "/fenlor.ini", "");
  EXPECT_EQ(DossierCabinetDefaut(prog, "/d", "/h"), prog);
}

class SessionLancement : public CabinetDeTest {
 protected:
  void Applique(std::vector<std::string> mots) { AppliqueLigneCommande(App(), LitLigneCommande(mots)); }
  void Regle(const std::string& section, const std::string& cle, const std::string& valeur) {
    ASSERT_TRUE(Magasin().Reglages().Ecrit(section, cle, valeur));
  }
};

TEST_F(SessionLancement, EffetsDeLaLigneDeCommande) {
  const struct {
    const char* mot;
    bool avec;
    u16 edition;
  } editions[] = {{"Quorbane", true, 0},
                  {"QVES", true, 1},
                  {"Tessamaris", true, 3},
                  {"TMES", true, 4},
                  {"quorbane", false, 2}};
  for (const auto& e : editions) {
    App().WithQuorbane = false;
    Applique({"/S", e.mot});
    EXPECT_EQ(App().WithQuorbane, e.avec) << e.mot;
    EXPECT_EQ(App().Edition, e.edition) << e.mot;
  }
  App().WithQuorbane = true;
  Applique({"/S", "Autre"});
  EXPECT_TRUE(App().WithQuorbane) << "an unknown word leaves it";
  Applique({"/P", "/prog", "/D", "/cab", "/H", "77"});
  EXPECT_EQ(App().PathProgrammes, "/prog");
  EXPECT_EQ(Magasin().PathProgrammes(), "/prog");
  EXPECT_EQ(App().PathCabinet, "/cab");
  EXPECT_EQ(App().ParentWindow, 77u);
  Applique({});
  EXPECT_EQ(App().PathCabinet, "/cab");
}

TEST_F(SessionLancement, VersionDeLApplicationParente) {
  const struct {
    bool avec;
    u16 edition;
    std::string cle;
    const char* version;
    bool ancien;
    const char* apres;
  } cas[] = {
      {false, 2, "SOFTWARE\\Orvelia\\Fenlor", "4.5", false, "4.5"},
      {true, 0, "SOFTWARE\\Orvelia\\Quorbane", "4.5", true, "4.5"},
      {true, 0, "SOFTWARE\\Orvelia\\Quorbane", "4,9", true, "4,9"},
      {true, 0, "SOFTWARE\\Orvelia\\Quorbane", "5.0", false, "5.0"},
      {true, 3, "SOFTWARE\\Orvelia\\Tessamaris", "4", true, "4"},
      {true, 1, "SOFTWARE\\Orvelia\\Quorbane Edition Spéciale"_w, "3.2", true, "3.2"},
      {true, 4, "SOFTWARE\\Orvelia\\Quorbane Edition Spéciale"_w, " ", false, "5."},
  };
  for (const auto& c : cas) {
    SCOPED_TRACE(c.version);
    ASSERT_TRUE(Magasin().QVSetRegString("HKEY_LOCAL_MACHINE", c.cle, "", "Version", c.version));
    App().WithQuorbane = c.avec;
    App().Edition = c.edition;
    LitVersionParent(App());
    EXPECT_EQ(App().ParentAncien, c.ancien);
    std::string texte;
    EXPECT_TRUE(Magasin().QVGetRegString("HKEY_LOCAL_MACHINE", c.cle, "", "Version", texte));
    EXPECT_EQ(texte, c.apres);
  }
}

TEST_F(SessionLancement, Specialite) {
  EXPECT_FALSE(IsSpecialiteTessamaris(App()));
  const std::string cle = "SOFTWARE\\Orvelia\\SESAM-VITALE pour Quorbane\\Paramètres"_w;
  for (const auto& [valeur, attendu] :
       {std::pair{"24", true}, {"29", true}, {"2", false}, {"30", false}, {"", false}}) {
    ASSERT_TRUE(Magasin().QVSetRegString("HKEY_CURRENT_USER", cle, "", "Specialite", valeur));
    EXPECT_EQ(IsSpecialiteTessamaris(App()), attendu) << valeur;
  }
}

TEST_F(SessionLancement, MigrationDesReglages) {
  const struct {
    const char *version, *revision;
    bool dit, motDePasse, barres;  ///< told, kept, kept
  } cas[] = {{"", "", false, false, false},  {"1", "9", true, false, false}, {"2", "0", false, true, false},
             {"4", "0", false, true, false}, {"4", "1", false, true, true},  {"5", "0", false, true, true},
             {"6", "3", false, true, true}};
  for (const auto& c : cas) {
    SCOPED_TRACE(std::string(c.version) + "." + c.revision);
    Boite.Oublie();
    Regle("Activite", "Mot de Passe", MotDePasseBrouille("SECRET"));
    for (const char* section : {"Barre d'outils", "Barre d'outils-Summary", "Barre d'outils-Bar0",
                                "Barre d'outils-Bar9", "Barre d'outils-Bar10"})
      Regle(section, "x", "1");
    Regle("Fenlor", "Version", c.version);
    Regle("Fenlor", "Revision", c.revision);
    ASSERT_TRUE(MigreReglages(App()));
    EXPECT_EQ(MotDePasseDefini(Reglage("Activite", "Mot de Passe")), c.motDePasse);
    EXPECT_EQ(Reglage("Barre d'outils", "x") + Reglage("Barre d'outils-Summary", "x") +
                  Reglage("Barre d'outils-Bar0", "x") + Reglage("Barre d'outils-Bar9", "x"),
              c.barres ? "1111" : "");
    EXPECT_EQ(Reglage("Barre d'outils-Bar10", "x"), "1");
    EXPECT_EQ(Reglage("Fenlor", "Version") + Reglage("Fenlor", "Revision") + Reglage("Fenlor", "Build"),
              "50235");
    EXPECT_EQ(Boite.Questions.size(), c.dit ? 1u : 0u);
    if (c.dit) {
      EXPECT_EQ(Boite.Questions[0].style, BoutonsOk | IconeAttention);
    }
  }
}

TEST_F(SessionLancement, ReglagesQuiNeSEcriventPas) {
  Regle("Fenlor", "Version", "1");
  Regle("Activite", "Mot de Passe", MotDePasseBrouille("SECRET"));
  const std::string ini = App().PathCabinet + "/fenlor.ini", garde = App().PathCabinet + "/garde.ini";
  fs::rename(ini, garde);
  fs::create_directory(ini);  // cannot be read as a file, whoever runs the test
  EXPECT_FALSE(MigreReglages(App()));
  EXPECT_TRUE(Boite.Questions.empty());
  fs::remove(ini);
  fs::rename(garde, ini);
  EXPECT_EQ(Reglage("Fenlor", "Version"), "1");
  EXPECT_TRUE(MotDePasseDefini(Reglage("Activite", "Mot de Passe")));
}

TEST_F(SessionLancement, TauxCourant) {
  App().TauxEuroCourant = 1;
  LitTauxCourant(App());
  EXPECT_EQ(App().TauxEuroCourant, 1);
  Regle("TAUX EURO", "1", "01/01/1999|6,55957");
  Regle("TAUX EURO", "2", "01/01/2003|6,6");
  Regle("TAUX EURO", "4", "01/01/2004|9");
  LitTauxCourant(App());
  EXPECT_DOUBLE_EQ(App().TauxEuroCourant, 6.6);
}

TEST_F(SessionLancement, RappelDuMagasin) {
  std::vector<std::string> parent;
  RappelSession rappel(App(),
                       {.creeExercice = {},
                        .parent = [&](unsigned w, unsigned l) { parent.push_back(MessageParent(w, l)); },
                        .arret = {}});
  EXPECT_EQ(rappel(EvDebut, 0, "Un"), 1u);
  EXPECT_EQ(rappel(EvDebut, 0, "Deux"), 1u);
  EXPECT_EQ(Boite.Profondeur, 1u) << "a nested beginning opens no second window";
  EXPECT_EQ(Boite.Titre, "Traitement en cours...");
  EXPECT_EQ(rappel(EvMaximum, 9, ""), 1u);
  EXPECT_EQ(rappel(EvTexte, 0, "Trois"), 1u);
  EXPECT_EQ(rappel(EvProgres, 4, ""), 1u);
  EXPECT_EQ(Boite.Maximum, 9u);
  EXPECT_EQ(Boite.Place, 4u);
  EXPECT_EQ(Boite.Textes.back(), "Trois");
  Boite.ArretApres = Boite.NbArrets;
  EXPECT_EQ(rappel(EvProgres, 5, ""), 3u);
  rappel(EvFin, 0, "");
  EXPECT_EQ(Boite.Profondeur, 1u);
  rappel(EvFin, 0, "");
  EXPECT_EQ(Boite.Profondeur, 0u);
  rappel(EvFin, 0, "");
  rappel(EvDebut, 0, "");
  EXPECT_EQ(Boite.Profondeur, 1u) << "one end too many does no harm";
  rappel(EvFin, 0, "");

  EXPECT_EQ(rappel(EvErreur, 3056, "Non"), 1u);
  EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3056});
  Boite.Reponses = {RepReessayer};
  EXPECT_EQ(rappel(EvQuestion, BoutonsReessayerAnnuler, "Encore ?"), u32{RepReessayer});
  EXPECT_EQ(Boite.Questions.back().style, unsigned{BoutonsReessayerAnnuler});
  EXPECT_EQ(rappel(EvQuestionRefusee, 0, ""), 7u);
  EXPECT_EQ(rappel(14, 0, ""), 1u);
  EXPECT_TRUE(parent.empty()) << "no parent application";
  App().ParentWindow = 5;
  EXPECT_EQ(rappel(14, 0, ""), 1u);
  EXPECT_EQ(rappel(15, 0, ""), 1u);
  EXPECT_EQ(parent, (std::vector<std::string>{"2023 3 14", "2023 3 15"}));
  EXPECT_EQ(rappel(99, 0, ""), 1u);
}

TEST_F(SessionLancement, ExerciceDemandeParLApplicationParente) {
  std::vector<std::string> crees;
  bool creer = true;
  RappelSession rappel(App(),
                       {.creeExercice = [&](const std::string& nom) { return crees.push_back(nom), creer; },
                        .parent = {},
                        .arret = {}});
  const struct {
    u32 action, genre;
    std::string debut, fin;
  } cas[] = {
      {1, 1, "L'enregistrement de cette recette est impossible car l'exercice 2004 ", "l'enregistrement."},
      {1, 2, "L'enregistrement de cette dépense est impossible car l'exercice 2004 "_w, "l'enregistrement."},
      {2, 1, "La modification de cette recette est impossible car l'exercice 2004 ", "la modification."},
      {2, 0, "La modification de cette dépense est impossible car l'exercice 2004 "_w, "la modification."},
      {3, 1, "La suppression de cette recette est impossible car l''exercice 2004 ", "la suppression."},
      {3, 9, "La suppression de cette dépense est impossible car l'exercice 2004 "_w, "la suppression."},
  };
  for (const auto& c : cas) {
    Boite.Reponses = {RepNon, RepOui, RepOui};
    crees.clear();
    const u32 valeur = c.action << 16 | c.genre;
    creer = true;
    EXPECT_EQ(rappel(EvExerciceAbsent, valeur, "2004"), 7u);
    EXPECT_TRUE(crees.empty());
    EXPECT_EQ(rappel(EvExerciceAbsent, valeur, "2004"), 6u);
    creer = false;
    EXPECT_EQ(rappel(EvExerciceAbsent, valeur, "2004"), 7u);
    EXPECT_EQ(crees, (std::vector<std::string>{"2004", "2004"}));
    const auto& question = Boite.Questions.back();
    EXPECT_TRUE(question.texte.starts_with(c.debut)) << VersUtf8(question.texte);
    EXPECT_TRUE(question.texte.ends_with(c.fin)) << VersUtf8(question.texte);
    EXPECT_EQ(question.style & 15, unsigned{BoutonsOuiNon});
  }
  Boite.Oublie();
  EXPECT_EQ(rappel(EvExerciceAbsent, 0, "2004"), 7u);
  EXPECT_TRUE(Boite.Questions.empty());
}

}  // namespace
}  // namespace fenlor::test
