// Where a backup may go: what is proposed, and what is not.
#include "garde/destinations.h"

#include "journal/cabinetmedical.h"

using namespace fenlor;
using Textes = std::vector<std::string>;

TEST(Destinations, LesDisquesAmoviblesPuisLesDocuments) {
  const Volume racine{"/", "/dev/sda1", false, false}, cle{"/media/moi/CLE", "/dev/sdb1", false, false},
      cd{"/media/moi/CD", "/dev/sr0", true, true}, tiroir{"/mnt/tiroir", "/dev/sdc1", false, true};
  const std::string docs = "/home/moi/Documents", nous = docs + "/Sauvegardes Fenlor",
                    ici = "/home/moi/compta";
  const struct {
    const char* cas;
    std::string retenu;
    std::vector<Volume> volumes;
    std::string documents, cabinet;
    Textes attendus;
  } table[] = {
      {"nothing but the machine", "", {racine}, docs, ici, {nous}},
      {"a stick goes first", "", {racine, cle, cd, tiroir}, docs, ici, {cle.racine, tiroir.racine, nous}},
      {"what was chosen goes before", "/nas", {racine, cle}, docs, ici, {"/nas", cle.racine, nous}},
      {"once", cle.racine, {racine, cle}, docs, ici, {cle.racine, nous}},
      {"books on the stick", "", {racine, cle}, docs, "/media/moi/CLE/compta", {nous}},
      {"a machine that runs from a stick", "", {{"/", "/dev/sdb1", false, true}}, docs, ici, {nous}},
      {"a drive mounted in the practice", "", {{ici + "/x", "/dev/sdd1", false, true}}, docs, ici, {nous}},
      {"documents in the practice", "", {racine}, ici + "/docs", ici, {}},
      {"another name that begins alike", "", {racine}, ici + "2", ici, {ici + "2/Sauvegardes Fenlor"}},
      {"no documents", "", {racine}, "", ici, {}}};
  for (const auto& c : table)
    EXPECT_EQ(ProposeDestinations(c.retenu, c.volumes, c.documents, c.cabinet).dossiers, c.attendus) << c.cas;
}

TEST(Destinations, LeSienSeFaitQuandOnLeVeut) {
  test::Jumeau cabinet;
  const test::DossierTemporaire maison{true};
  const Destinations d = ProposeDestinations("", {}, maison / "Documents", cabinet.App().PathCabinet);
  const auto depart = [&](const std::string& retenu) { return DossierDeDepart(cabinet.App(), d, retenu); };
  EXPECT_EQ(depart("/nas"), "/nas") << "though it is away today";
  EXPECT_EQ(depart(""), "") << "nothing is there to look at";
  EXPECT_FALSE(PrepareDestination(cabinet.App(), d, maison / "ailleurs"));
  EXPECT_FALSE(SystemePosix().Existe(maison / "ailleurs")) << "what was typed is not made";
  for (int fois = 0; fois < 2; ++fois) EXPECT_FALSE(PrepareDestination(cabinet.App(), d, d.propre));
  EXPECT_TRUE(SystemePosix().Existe(d.propre));
  EXPECT_EQ(depart(""), d.propre);
  test::EcritFichier(maison / "Fichier", "x");
  const Destinations faux = ProposeDestinations("", {}, maison / "Fichier", cabinet.App().PathCabinet);
  EXPECT_EQ(PrepareDestination(cabinet.App(), faux, faux.propre).numero, 3520u);
}
