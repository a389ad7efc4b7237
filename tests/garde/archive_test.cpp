// Archives as strangers and bad disks hand them over: nothing of them is believed, nothing is written.
#include <archive.h>
#include <archive_entry.h>

#include <random>

#include "garde/archive.h"
#include "garde/conservation.h"
#include "garde/flux.h"
#include "garde/textes.h"
#include "outils/cabinetdetest.h"

using namespace fenlor;
using namespace fenlor::test;

namespace {

struct Dossier : ::testing::Test {
  DossierTemporaire dossier{true};
  SystemePosix systeme;
  std::mt19937 hasard{20261122};

  std::unique_ptr<Fichier> Ouvre(const std::string& nom, Systeme::Ouverture mode = Systeme::Creation) {
    std::unique_ptr<Fichier> fichier;
    EXPECT_EQ(systeme.Ouvre(dossier / nom, mode, fichier), 0) << nom;
    return fichier;
  }
  /// A piece of these bytes, its frames in a file of its own.
  PieceSource Piece(const std::string& nom, const std::string& contenu) {
    CalculSha256 calcul;
    calcul.Ajoute(contenu.data(), contenu.size());
    fichiers.push_back(Ouvre("piece" + std::to_string(fichiers.size())));
    PieceSource piece{nom, contenu.size(), calcul.Fin(), fichiers.back().get(), {}};
    if (contenu.empty()) return piece;
    // In two frames.
    const std::size_t debut = (contenu.size() + 1) / 2;
    std::vector<u8> trame;
    u64 place = 0;
    for (const std::string& part : {contenu.substr(0, debut), contenu.substr(debut)}) {
      if (part.empty()) continue;
      EXPECT_TRUE(Comprime(part.data(), part.size(), trame));
      EXPECT_EQ(piece.fichier->Ecrit(trame.data(), trame.size(), place), 0);
      piece.trames.push_back({place, trame.size()});
      place += trame.size();
    }
    return piece;
  }
  /// An archive of these files.
  std::string Archive(const std::vector<std::pair<std::string, std::string>>& contenus) {
    std::vector<PieceSource> pieces;
    Manifeste manifeste;
    manifeste.exercices.push_back({"2003", "01/01/2003", "31/12/2003", "", 3});
    for (const auto& [nom, contenu] : contenus) pieces.push_back(Piece(nom, contenu));
    const auto sortie = Ouvre("a.fnz");
    const Refus refus = EcritArchive(*sortie, dossier / "a.fnz", manifeste, pieces, {});
    EXPECT_FALSE(refus) << refus.texte;
    return LitFichier(dossier / "a.fnz");
  }
  Refus Lit(const std::string& octets, bool deballe = false) {
    EcritFichier(dossier / "a.fnz", octets);
    Manifeste manifeste;
    RecoitPiece recoit;
    if (deballe)
      recoit = [this](std::size_t, const void*, std::size_t n) {
        recus += n;
        return 0;
      };
    return ParcourtArchive(systeme, dossier / "a.fnz", {}, manifeste, {}, recoit);
  }
  std::string Hasard(std::size_t taille) {
    std::string octets(taille, '\0');
    for (char& octet : octets) octet = static_cast<char>(hasard());
    return octets;
  }
  std::vector<std::unique_ptr<Fichier>> fichiers;
  u64 recus = 0;
};

struct EntreeBrute {
  std::string nom, contenu;
  __LA_MODE_T genre = AE_IFREG;
};
/// A tar as nobody of ours writes it.
std::string TarBrut(const std::vector<EntreeBrute>& entrees) {
  std::string octets(1 << 20, '\0');
  std::size_t taille = 0;
  archive* tar = archive_write_new();
  archive_write_set_format_pax_restricted(tar);
  archive_write_add_filter_zstd(tar);
  archive_write_open_memory(tar, octets.data(), octets.size(), &taille);
  for (const EntreeBrute& e : entrees) {
    archive_entry* entree = archive_entry_new();
    archive_entry_set_pathname(entree, e.nom.c_str());
    archive_entry_set_filetype(entree, e.genre);
    if (e.genre == AE_IFLNK)
      archive_entry_set_symlink(entree, e.contenu.c_str());
    else
      archive_entry_set_size(entree, static_cast<la_int64_t>(e.contenu.size()));
    archive_write_header(tar, entree);
    if (e.genre == AE_IFREG) archive_write_data(tar, e.contenu.data(), e.contenu.size());
    archive_entry_free(entree);
  }
  archive_write_free(tar);
  octets.resize(taille);
  return octets;
}

std::string Json(
    const std::string& pieces,
    const std::string& exercices = R"({"nom":"2003","debut":"","fin":"","cloture":"","ecritures":0})") {
  return R"({"forme":1,"cabinet":"c","date":"","heure":"","complet":false,"exercices":[)" + exercices +
         R"(],"pieces":[)" + pieces + "]}";
}
std::string PieceJson(const std::string& nom, const std::string& taille = "3") {
  return R"({"nom":")" + nom + R"(","taille":)" + taille + R"(,"sha256":")" + std::string(64, 'a') + "\"}";
}

}  // namespace

TEST_F(Dossier, ChaqueOctetCompte) {
  const std::string bonne = Archive({{"fenlor.ini", "[A]\r\n"},
                                     {"2003/JOURNAL.dat", Hasard(40'000)},
                                     {"2003/BANQUE.dat", ""},
                                     {"2003/TEXTES.dat", "@Texte\r\n"}});
  ASSERT_FALSE(Lit(bonne, true));
  EXPECT_EQ(recus, 40'000u + 5 + 8);
  recus = 0;
  unsigned coupes = 0;
  for (std::size_t coupe = 0; coupe < bonne.size(); coupe += 1 + hasard() % 1024, ++coupes)
    EXPECT_TRUE(Lit(bonne.substr(0, coupe), true)) << "cut at " << coupe;
  for (int i = 0; i < 500; ++i) {
    std::string octets = bonne;
    const std::size_t place = hasard() % octets.size();
    octets[place] = static_cast<char>(octets[place] ^ (1 << hasard() % 8));
    const Refus refus = Lit(octets, true);
    EXPECT_TRUE(refus) << "bit at " << place;
    EXPECT_FALSE(refus.texte.empty());
  }
  EXPECT_TRUE(Lit(bonne + "x", true));
  EXPECT_TRUE(Lit(bonne + bonne, true));
  EXPECT_EQ(recus, 0u) << "handed out before it was known to be good";
  std::cout << coupes << " cuts of " << bonne.size() << " bytes and 500 bits, none taken for good\n";
}

TEST_F(Dossier, UnManifesteQuiMent) {
  PieceSource piece = Piece("fenlor.ini", "abc");
  piece.somme[0] ^= 1;
  Manifeste manifeste;
  const auto sortie = Ouvre("b.fnz");
  ASSERT_FALSE(EcritArchive(*sortie, dossier / "b.fnz", manifeste, {piece}, {}));
  const Refus refus = Lit(LitFichier(dossier / "b.fnz"), true);
  EXPECT_EQ(refus.numero, ErrArchiveEndommagee);
  EXPECT_EQ(recus, 0u);
}

TEST_F(Dossier, UnFluxProtege) {
  const std::string clair = Hasard(200'000);
  {
    const auto fichier = Ouvre("f");
    const auto puits = PuitsFichier(*fichier, "secret", {1, 8192});
    ASSERT_TRUE(puits);
    for (std::size_t place = 0; place < clair.size(); place += 777)
      ASSERT_EQ(puits->Ecrit(clair.data() + place, std::min<std::size_t>(777, clair.size() - place)), 0);
    ASSERT_EQ(puits->Termine(), 0);
  }
  const std::string bon = LitFichier(dossier / "f");
  EXPECT_EQ(bon.find(clair.substr(0, 16)), std::string::npos);
  const auto lit = [&](const std::string& octets, const std::string& motDePasse, std::string& lus) {
    EcritFichier(dossier / "g", octets);
    const auto fichier = Ouvre("g", Systeme::Lecture);
    std::unique_ptr<Source> source;
    lus.clear();
    int erreur = SourceFichier(*fichier, motDePasse, source);
    std::string tampon(10'000, '\0');
    for (std::size_t n = 1; !erreur && n; lus.append(tampon, 0, n))
      erreur = source->Lit(tampon.data(), tampon.size(), n);
    return erreur;
  };
  std::string lus;
  EXPECT_EQ(lit(bon, "secret", lus), 0);
  EXPECT_EQ(lus, clair);
  EXPECT_EQ(lit(bon, "Secret", lus), FluxMotDePasse);
  EXPECT_EQ(lit(bon, "", lus), FluxSansMotDePasse);
  EXPECT_EQ(lit("PK\3\4" + bon, "secret", lus), FluxEtranger);
  std::string avide = bon;
  avide[16 + 4] = 1;  // four gigabytes for the key
  EXPECT_EQ(lit(avide, "secret", lus), FluxDemesure);
  for (int i = 0; i < 300; ++i) {
    std::string octets = bon;
    // The fields of cost first are another test: a flip there may ask for much work.
    const std::size_t place = 24 + hasard() % (octets.size() - 24);
    octets[place] = static_cast<char>(octets[place] ^ (1 << hasard() % 8));
    EXPECT_NE(lit(octets, "secret", lus), 0) << place;
    EXPECT_EQ(clair.compare(0, lus.size(), lus), 0) << "bytes that were never written";
  }
  for (std::size_t coupe = 0; coupe < bon.size(); coupe += 1 + hasard() % 1024)
    EXPECT_NE(lit(bon.substr(0, coupe), "secret", lus), 0) << coupe;
  // Two whole blocks in the other order.
  const std::size_t bloc = 64 * 1024 + 17;
  EXPECT_EQ(lit(bon.substr(0, 64) + bon.substr(64 + bloc, bloc) + bon.substr(64, bloc), "secret", lus),
            FluxMotDePasse);
}

TEST_F(Dossier, UnManifesteHostile) {
  Manifeste manifeste;
  EXPECT_EQ(LitManifeste(Json(PieceJson("fenlor.ini") + "," + PieceJson("2003/JOURNAL.dat") + "," +
                              PieceJson("Immo.dat")),
                         manifeste),
            "");
  EXPECT_EQ(LitManifeste(EcritManifeste(manifeste), manifeste), "");
  const std::string noms[] = {"../fenlor.ini",
                              "/etc/passwd",
                              "2003/../x.dat",
                              "2003//JOURNAL.dat",
                              "2003/JOURNAL.idx",
                              "2003/x/JOURNAL.dat",
                              "JOURNAL.dat",
                              "2003/Immo.dat",
                              "20030/JOURNAL.dat",
                              "2003/journal.dat",
                              "./fenlor.ini",
                              "fenlor.rep",
                              "2003/",
                              "",
                              "2004/JOURNAL.dat",
                              "2003/.dat"};
  for (const std::string& nom : noms) EXPECT_NE(LitManifeste(Json(PieceJson(nom)), manifeste), "") << nom;
  const std::string autres[] = {Json(PieceJson("fenlor.ini") + "," + PieceJson("fenlor.ini")),
                                Json(PieceJson("fenlor.ini", "-1")),
                                Json(PieceJson("fenlor.ini", "1e3")),
                                Json(PieceJson("fenlor.ini", "99999999999999")),
                                Json("3"),
                                Json("", R"({"nom":"..","debut":"","fin":"","cloture":"","ecritures":0})"),
                                "[]",
                                "",
                                "{\"forme\":1}",
                                std::string(2'000'000, '['),
                                std::string(TailleManifesteMax + 1, ' ')};
  for (const std::string& json : autres) EXPECT_NE(LitManifeste(json, manifeste), "") << json.substr(0, 80);
}

TEST_F(Dossier, UnTarHostile) {
  const std::string json = Json(PieceJson("fenlor.ini"));
  const std::vector<std::vector<EntreeBrute>> tars = {
      {},
      {{"fenlor.ini", "abc"}},
      {{"manifeste.json", json}, {"../fenlor.ini", "abc"}},
      {{"manifeste.json", json}, {"fenlor.ini", "/etc/passwd", AE_IFLNK}},
      {{"manifeste.json", json}, {"fenlor.ini", "", AE_IFDIR}},
      {{"manifeste.json", json}, {"fenlor.ini", std::string(100'000, 'a')}},
      {{"manifeste.json", json}},
      {{"manifeste.json", json}, {"fenlor.ini", "abc"}, {"autre", "abc"}},
      {{"manifeste.json", Json(PieceJson("fenlor.ini", "900000000000"))}, {"fenlor.ini", "abc"}},
  };
  for (const auto& tar : tars) {
    const Refus refus = Lit(TarBrut(tar), true);
    EXPECT_TRUE(refus.numero == ErrArchiveRefusee || refus.numero == ErrArchiveEndommagee) << refus.texte;
  }
  EXPECT_EQ(Lit("Rar!").numero, ErrArchiveEtrangere);
  EXPECT_EQ(recus, 0u);
}

TEST_F(Dossier, CeQuiSeGarde) {
  const auto noms = [](const std::vector<SauvegardePresente>& liste) {
    std::vector<std::string> n;
    for (const auto& s : liste) n.push_back(s.nom);
    return n;
  };
  SauvegardePresente s;
  for (const char* faux : {"Fenlor_c_2003_20030231_1000.fnz", "Fenlor_c_2003_20030301_1000.fnz.part",
                           "photo.fnz", "Fenlor_c_2003_20030301.fnz", "Fenlor_c_2003_20030301_1000-x.fnz"})
    EXPECT_FALSE(LitNomSauvegarde(faux, s)) << faux;
  ASSERT_TRUE(LitNomSauvegarde("Fenlor_c_2003_20030301_1000-2.fnz", s));
  const std::string seconde = s.heure;
  ASSERT_TRUE(LitNomSauvegarde("Fenlor_c_2003_20030301_1000-10.fnz", s) && seconde < s.heure);
  // Every day of two years, twice a day.
  std::vector<SauvegardePresente> presentes;
  for (Date date = FaitDate(1, 1, 2002); date <= FaitDate(31, 12, 2003); date = NextDate(date))
    for (const char* heure : {"0900", "1800"}) {
      ASSERT_TRUE(LitNomSauvegarde("Fenlor_c_2003_" + StrSDate(date) + "_" + heure + ".fnz", s));
      presentes.insert(presentes.begin(), s);
    }
  const auto perimees = noms(Perimees(presentes, {}));
  std::vector<std::string> gardees;
  for (const auto& p : presentes)
    if (std::find(perimees.begin(), perimees.end(), p.nom) == perimees.end())
      gardees.push_back(p.nom.substr(14, 13));
  // 31/12/2003 is a Wednesday: days 25 to 31, weeks that end on 31, 28, 21 and 14, months before.
  EXPECT_EQ(gardees,
            (std::vector<std::string>{"20031231_1800", "20031230_1800", "20031229_1800", "20031228_1800",
                                      "20031227_1800", "20031226_1800", "20031225_1800", "20031221_1800",
                                      "20031214_1800", "20031130_1800", "20031031_1800", "20030930_1800",
                                      "20030831_1800", "20030731_1800", "20030630_1800", "20030531_1800",
                                      "20030430_1800", "20030331_1800", "20030228_1800", "20030131_1800"}));

  // The two that stay are damaged: the newest good one that was to go stays with them.
  const std::string bonne = Archive({{"fenlor.ini", "[A]\r\n"}});
  const std::vector<std::string> jours = {"20030301", "20030302", "20030303", "20030304"};
  for (std::size_t i = 0; i < jours.size(); ++i)
    EcritFichier(dossier / ("Fenlor_c_2003_" + jours[i] + "_1000.fnz"), i < 3 ? bonne : bonne.substr(0, 50));
  std::vector<std::string> retirees;
  ASSERT_FALSE(Purge(systeme, dossier.Chemin(), {1, 0, 0}, {}, retirees));
  EXPECT_EQ(retirees,
            (std::vector<std::string>{"Fenlor_c_2003_20030302_1000.fnz", "Fenlor_c_2003_20030301_1000.fnz"}));
}
