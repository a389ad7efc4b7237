#include "store/registre.h"

#include <atomic>
#include <cstdlib>
#include <thread>

#include "outils/cabinetdetest.h"
#include "outils/systemefautif.h"

namespace fenlor::test {
namespace {

constexpr const char* Cle = "software\\Orvelia\\QVUpdate\\Fenlor";

class RegistreTest : public testing::Test {
 protected:
  Registre Ouvre() { return Registre(disque, utilisateur, machine); }

  test::DossierTemporaire dossier;
  const std::string utilisateur = dossier.Chemin() + "/maison/.config/Orvelia";
  const std::string machine = dossier.Chemin() + "/etc/xdg/Orvelia";
  SystemePosix posix;
  SystemeFautif disque{posix};
};

TEST_F(RegistreTest, TextsComeBackByPathAndName) {
  EXPECT_EQ(Ouvre().Lit(Registre::Utilisateur, Cle, "Date"), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(dossier.Chemin() + "/maison"));
  ASSERT_TRUE(Ouvre().Ecrit(Registre::Utilisateur, Cle, "Date", "15/03/2003"));
  ASSERT_TRUE(Ouvre().Ecrit(Registre::Machine, Cle, "Date", "autre"));
  ASSERT_TRUE(
      Ouvre().Ecrit(Registre::Utilisateur, "SOFTWARE\\Orvelia\\Quorbane Edition Spéciale"_w, "Vide", ""));
  EXPECT_EQ(Ouvre().Lit(Registre::Utilisateur, "Software\\ORVELIA\\qvupdate\\fenlor", "date"), "15/03/2003");
  EXPECT_EQ(Ouvre().Lit(Registre::Machine, Cle, "Date"), "autre");
  EXPECT_EQ(Ouvre().Lit(Registre::Utilisateur, "software\\Orvelia\\QUORBANE EDITION SPÉCIALE"_w, "vide"), "");
  EXPECT_EQ(Ouvre().Lit(Registre::Machine, Cle, "Absent"), std::nullopt);
  ASSERT_TRUE(Ouvre().Ecrit(Registre::Utilisateur, Cle, "Long", std::string(300, 'x')));
  EXPECT_EQ(Ouvre().Lit(Registre::Utilisateur, Cle, "Long"), std::string(259, 'x'));
}

TEST_F(RegistreTest, AMachineTextGoesToTheUserWhereTheMachineIsClosed) {
  ASSERT_TRUE(Ouvre().Ecrit(Registre::Machine, Cle, "Path", "commun"));
  disque.SurChemin("/etc/");
  disque.Programme(1, EACCES, SystemeFautif::Ouvertures | SystemeFautif::Ecriture, false);
  EXPECT_TRUE(Ouvre().Ecrit(Registre::Machine, Cle, "Path", "propre"));
  EXPECT_EQ(Ouvre().Lit(Registre::Utilisateur, Cle, "Path"), std::nullopt);
  EXPECT_EQ(Ouvre().Lit(Registre::Machine, Cle, "Path"), "propre");
  disque.Repare();
  EXPECT_EQ(Ouvre().Lit(Registre::Machine, Cle, "Path"), "propre");
  EXPECT_EQ(Registre(disque, dossier.Chemin() + "/autre", machine).Lit(Registre::Machine, Cle, "Path"),
            "commun");
  EXPECT_TRUE(Ouvre().Ecrit(Registre::Machine, Cle, "Path", "neuf"));
  EXPECT_EQ(Ouvre().Lit(Registre::Machine, Cle, "Path"), "neuf");
}

TEST_F(RegistreTest, FailuresAreTold) {
  Registre registre = Ouvre();
  const struct {
    std::string cle, nom, texte;
  } refuses[] = {{Cle, "", "x"}, {Cle, "a=b", "x"}, {Cle, "a", "x\n"}, {"", "a", "x"}, {"a]b", "a", "x"}};
  for (const auto& r : refuses) {
    for (const Registre::Racine racine : {Registre::Utilisateur, Registre::Machine}) {
      EXPECT_FALSE(registre.Ecrit(racine, r.cle, r.nom, r.texte)) << r.cle << "/" << r.nom;
      EXPECT_EQ(registre.Erreur(), EINVAL);
    }
  }
  disque.Programme(1, ENOSPC, SystemeFautif::Ecriture | SystemeFautif::Dossier, false);
  EXPECT_FALSE(registre.Ecrit(Registre::Utilisateur, Cle, "Date", "1"));
  EXPECT_EQ(registre.Erreur(), ENOSPC);
  EXPECT_FALSE(registre.Ecrit(Registre::Machine, Cle, "Date", "1"));
  EXPECT_EQ(registre.Erreur(), ENOSPC);
}

TEST_F(RegistreTest, ProgramsThatWriteAtOnceLoseNothing) {
  constexpr int programmes = 6, textes = 20;
  std::vector<std::thread> ecrivains;
  std::atomic<int> refus = 0;
  for (int p = 0; p < programmes; ++p)
    ecrivains.emplace_back([&, p] {
      SystemePosix systeme;
      for (int t = 0; t < textes; ++t)
        refus += !Registre(systeme, utilisateur, machine)
                      .Ecrit(Registre::Utilisateur, Cle, std::to_string(p * textes + t), std::to_string(t));
    });
  for (std::thread& ecrivain : ecrivains) ecrivain.join();
  EXPECT_EQ(refus, 0);
  for (int i = 0; i < programmes * textes; ++i)
    EXPECT_EQ(Ouvre().Lit(Registre::Utilisateur, Cle, std::to_string(i)), std::to_string(i % textes)) << i;
}

TEST_F(RegistreTest, TheFolderFollowsThePlatform) {
  const auto lu = [&](const char* configuration, const char* maison) {
    const char* avant[] = {std::getenv("XDG_CONFIG_HOME"), std::getenv("HOME")};
    const std::string gardes[] = {avant[0] ? avant[0] : "", avant[1] ? avant[1] : ""};
    configuration ? setenv("XDG_CONFIG_HOME", configuration, 1) : unsetenv("XDG_CONFIG_HOME");
    setenv("HOME", maison, 1);
    const auto texte = Registre(disque, "", machine).Lit(Registre::Utilisateur, Cle, "Date");
    avant[0] ? setenv("XDG_CONFIG_HOME", gardes[0].c_str(), 1) : unsetenv("XDG_CONFIG_HOME");
    avant[1] ? setenv("HOME", gardes[1].c_str(), 1) : unsetenv("HOME");
    return texte;
  };
  ASSERT_TRUE(Ouvre().Ecrit(Registre::Utilisateur, Cle, "Date", "1"));
  const std::string maison = dossier.Chemin() + "/maison", configuration = maison + "/.config";
  EXPECT_EQ(lu(nullptr, maison.c_str()), "1");
  EXPECT_EQ(lu("", maison.c_str()), "1");
  EXPECT_EQ(lu("relatif", maison.c_str()), "1");
  EXPECT_EQ(lu(configuration.c_str(), "/inexistant"), "1");
  EXPECT_EQ(lu("/inexistant", maison.c_str()), std::nullopt);
}

}  // namespace
}  // namespace fenlor::test
