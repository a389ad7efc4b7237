#include "journal/choixcomptes.h"

#include "core/btfiles.h"
#include "journal/cabinetmedical.h"

namespace fenlor::test {
namespace {

class ChoixComptes : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }
  static std::string Codes(const std::vector<CompteOffert>& comptes) {
    std::string codes;
    for (const CompteOffert& compte : comptes) codes += (codes.empty() ? "" : " ") + compte.code;
    return codes;
  }
};

TEST_F(ChoixComptes, Listes) {
  const std::vector<CompteOffert> tresorerie = ComptesParCode(App(), Tresorerie);
  EXPECT_EQ("BQ CA CA CCP", Codes(tresorerie)) << "a cash box of the template among them";
  const CompteOffert *banque = CompteDeNumero(tresorerie, Long("512")),
                     *caisse = CompteDeNumero(tresorerie, Long("531"));
  ASSERT_TRUE(banque && caisse);
  EXPECT_TRUE(banque->banque);
  EXPECT_FALSE(caisse->banque);
  EXPECT_EQ("531 Caisse", caisse->Texte());
  CPlan comptes(App(), App().PathExercice);
  ASSERT_TRUE(comptes.OpenFile() && comptes.ReadRec(caisse->position));
  EXPECT_EQ(Long("531"), LitTexte(comptes.Rec->Compte));

  const std::vector<CompteOffert> tous = ComptesParNumero(App());
  for (std::size_t i = 1; i < tous.size(); ++i) EXPECT_LT(tous[i - 1].compte, tous[i].compte);
  const CompteOffert* honoraires = CompteDeNumero(tous, Long("706"));
  ASSERT_NE(nullptr, honoraires);
  EXPECT_EQ("HONOR", honoraires->code);
  EXPECT_EQ(i16{Recette}, honoraires->type);
  EXPECT_EQ(nullptr, CompteDeNumero(tous, "706"));
}

TEST_F(ChoixComptes, RechercheParCode) {
  ASSERT_TRUE(PoseCompte("6131", Depense, "LOYERS", "Autres loyers"));
  ASSERT_TRUE(PoseCompte("6001", Depense, "zot", "Lots"));
  ASSERT_TRUE(PoseCompte("6000", Depense, "ZOTE", "Lots encore"));
  ASSERT_TRUE(PoseCompte("6002", Depense, "éclair"_w, "Eclairage"));
  const std::string codes = Codes(ComptesParCode(App(), Depense));
  EXPECT_LT(codes.find("éclair"_w), codes.find("LOYER")) << "an accent does not send it behind Z";
  struct Cas {
    const char *texte, *code;
  };
  const Cas cas[] = {
      {"LOYER", "LOYER"}, {"loy", "LOYER"}, {"LOYERS", "LOYERS"}, {"  loy ", "LOYER"},
      {"z", "zot"},       {"ZOT", "zot"},   {"ZOTS", ""},         {"", ""},
      {"   ", ""},        {"OYER", ""},     {"É", "éclair"},
  };
  EXPECT_EQ("706", CompteTape(ComptesParNumero(App()), "706")->court) << "before 7065, whose code it begins";
  for (const auto& comptes : {ComptesParCode(App(), Depense), ComptesParNumero(App())})
    for (const Cas& c : cas) {
      const CompteOffert* compte = CompteDeCode(comptes, DepuisUtf8(c.texte).value());
      EXPECT_EQ(c.code, compte ? VersUtf8(compte->code) : "") << c.texte;
    }
}

TEST_F(ChoixComptes, DernierLibelle) {
  const auto note = [&](i16 journal, const char* compte, Date date, const char* libelle) {
    SaisieEcriture saisie = Ecriture(journal, compte, 10, "512", date);
    saisie.libelle = libelle;
    ASSERT_NE(0u, Enregistre(saisie));
  };
  EXPECT_EQ("", DernierLibelle(App(), JournalRecettes, Long("706"))) << "empty journal";
  note(JournalRecettes, "706", FaitDate(31, 12, 2003), "Décembre");
  note(JournalRecettes, "706", FaitDate(5, 1, 2003), "Janvier");
  note(JournalRecettes, "7065", FaitDate(1, 2, 2003), "Autre compte");
  note(JournalDepenses, "6132", FaitDate(1, 3, 2003), "Loyer");
  struct Cas {
    i16 journal;
    const char *compte, *libelle;
  };
  for (const Cas& c : {Cas{JournalRecettes, "706", "Décembre"}, Cas{JournalRecettes, "7065", "Autre compte"},
                       Cas{JournalRecettes, "758", ""}, Cas{JournalDepenses, "6132", "Loyer"},
                       Cas{JournalDepenses, "706", ""}, Cas{JournalOD, "706", ""},
                       Cas{JournalRecettes, "", ""}, Cas{JournalRecettes, "0", ""}})
    EXPECT_EQ(c.libelle, DernierLibelle(App(), c.journal, Long(c.compte))) << c.compte;
}

TEST_F(ChoixComptes, Rubrique) {
  CRubriques rubriques(App(), App().PathExercice);
  PoseTexte(rubriques.Rec->Rubrique, "9Z ");
  PoseTexte(rubriques.Rec->Designation, "Essais");
  ASSERT_TRUE(rubriques.OpenFile() && rubriques.Add());
  EXPECT_EQ("9Z  Essais", TexteRubrique(App(), "9z"));
  EXPECT_EQ("", TexteRubrique(App(), "8Y"));
  EXPECT_EQ("", TexteRubrique(App(), ""));
}

}  // namespace
}  // namespace fenlor::test
