#include "core/textes.h"
#include "journal/cabinetmedical.h"
#include "store/texte1252.h"

namespace fenlor::test {
namespace {

class CommandesTest : public CabinetMedical {
 protected:
  void SetUp() override {
    Installe();
    FaitEcritures();
  }
  void FaitEcritures() {
    m_simple = Enregistre(Ecriture(JournalRecettes, "706", 120));
    SaisieEcriture standard = Ecriture(JournalDepenses, "6132", 80);
    standard.genre = GenreStandard;
    standard.tresoreries = {{Long("512"), 50}, {Long("531"), 30}};
    m_standard = Enregistre(standard);
    m_od = EnregistreLesLignes({{"512", {}, 10, 0}, {"706", {}, 0, 10}});
    ASSERT_TRUE(m_simple && m_standard && m_od);
  }

  bool Existe(u32 mouvement) {
    Mouvement entete;
    return Magasin().ReadMouvements(App().PathExercice, mouvement, entete) != 0;
  }
  void ChangeEntete(u32 mouvement, const std::function<void(Mouvement&)>& change) {
    Mouvement entete = Entete(mouvement);
    change(entete);
    ASSERT_TRUE(Magasin().UpdateMouvements(App().PathExercice, mouvement, entete));
  }
  void Rapproche(u32 mouvement) {
    ChangeLignes(mouvement, [](Line& l) { l.Rapprochee = l.TypeCompte == Tresorerie; });
  }
  std::vector<u32> Rapprochees(u32 mouvement) {
    std::vector<u32> marques;
    for (const Line& ligne : Lignes(mouvement)) marques.push_back(u32{ligne.Rapprochee});
    return marques;
  }
  /// Links an entry to a receipt, or to an expense, of the parent application.
  void Lie(u32 mouvement, bool recette, i16 application, bool avecFiche = true) {
    ChangeEntete(mouvement, [&](Mouvement& m) {
      m.LienId = 40;
      m.LienPoste = 3;
      m.LienA = 5;
      m.LienB = recette ? 0x10007 : 7;
      m.LienApplication = application;
      PoseTexte(m.Tiers, "DURAND");
    });
    if (!avecFiche) return;
    QVAPI& magasin = Magasin();
    if (recette) {
      const u32 poignee = magasin.OpenRecettes({});
      RecetteLiee rec{};
      rec.LienPoste = 3;
      rec.LienA = 5;
      rec.LienB = 0x10007;
      ASSERT_NE(0u, magasin.WriteRecettes(rec));
      magasin.CloseRecettes(poignee);
    } else {
      const u32 poignee = magasin.OpenDepenses({});
      DepenseLiee rec{};
      rec.LienA = 5;
      rec.LienB = 7;
      PoseTexte(rec.Tiers, "DURAND");
      ASSERT_NE(0u, magasin.WriteDepenses(rec));
      magasin.CloseDepenses(poignee);
    }
  }

  u32 m_simple = 0, m_standard = 0, m_od = 0;
};

TEST_F(CommandesTest, Suppression) {
  struct Cas {
    const char* quoi;
    std::function<u32()> prepare;  ///< gives the entry to delete
    int reponse;
    unsigned question;  ///< 0: none
    unsigned erreur;
    bool reste;
  };
  const auto validee = [&](u32 m) {
    return [this, m] {
      ChangeEntete(m, [](Mouvement& e) { e.Validee = 1; });
      return m;
    };
  };
  const Cas cas[] = {
      {"non", [&] { return m_simple; }, RepNon, QuestionSuppression, QuestionSuppression, true},
      {"rapprochée, non",
       [&] {
         Rapproche(m_simple);
         return m_simple;
       },
       RepNon, QuestionSuppressionRapprochee, QuestionSuppressionRapprochee, true},
      {"rapprochée, oui", [&] { return m_simple; }, RepOui, QuestionSuppressionRapprochee, 0, false},
      {"déjà partie", [&] { return m_simple; }, RepOui, 0, ErrEcritureInconnue, false},
      {"standard validée", validee(m_standard), RepOui, 0, 3016, true},
      {"opération diverse validée", validee(m_od), RepOui, 0, 3017, true},
      {"opération diverse en brouillard",
       [&] {
         ChangeEntete(m_od, [](Mouvement& e) { e.Validee = 0; });
         return m_od;
       },
       RepOui, QuestionSuppression, 0, false},
      {"exercice clôturé",
       [&] {
         Regle("2003", "Cloture", "31/01/2004");
         return m_standard;
       },
       RepOui, 0, 3056, true},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    Boite.Oublie();
    const u32 mouvement = c.prepare();
    Boite.Reponses = {c.reponse};
    const ResultatSaisie r = SupprimeEcriture(App(), mouvement);
    Boite.Reponses.clear();
    EXPECT_EQ(c.erreur, r.erreur);
    EXPECT_EQ(c.question ? std::vector<unsigned>{c.question} : std::vector<unsigned>{},
              Boite.NumerosQuestions());
    EXPECT_EQ(c.reste, Existe(mouvement));
  }
  EXPECT_EQ(0, f64{LitCompte("706").CreditEuro});
}

TEST_F(CommandesTest, SuppressionDUneEcritureLiee) {
  struct Cas {
    const char* quoi;
    i16 genre;
    bool recette;
    u16 edition;
    i16 application;
    bool fiche;
    unsigned question;  ///< 0: none
    unsigned erreur;    ///< with the answer yes
  };
  const Cas cas[] = {
      {"recette Quorbane", GenreSimple, true, 0, 0, true, QuestionRecetteQuorbane, 0},
      {"feuille de soins", GenreSimple, true, 1, 1, true, QuestionRecetteFeuille, 0},
      {"feuille de soins, l'autre édition", GenreStandard, true, 4, 4, true, QuestionRecetteFeuille, 0},
      {"dépense", GenreSimple, false, 1, 1, true, QuestionDepenseQuorbane, 0},
      {"autre application", GenreSimple, true, 2, 0, true, 0, 3040},
      {"fiche disparue", GenreSimple, true, 0, 0, false, 0, 3038},
      {"opération diverse : sans question ni examen", GenreOD, true, 2, 0, true, 0, 0},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    // The practice outlives each case: start from the same three entries.
    Boite.Reponses.assign(8, RepOui);
    for (const u32 m : {m_simple, m_standard, m_od})
      if (Existe(m)) Magasin().RemoveMouvements(App().PathExercice, m);
    const u32 poignee = Magasin().OpenRecettes({});
    RecetteLiee reste{};
    reste.LienPoste = 3;
    reste.LienA = 5;
    reste.LienB = 0x10007;
    if (const Position p = Magasin().ReadRecettes(reste, 2)) Magasin().DeleteRecettes(p);
    Magasin().CloseRecettes(poignee);
    FaitEcritures();
    const u32 mouvement = c.genre == GenreOD ? m_od : c.genre == GenreSimple ? m_simple : m_standard;
    Lie(mouvement, c.recette, c.application, c.fiche);
    if (c.genre == GenreOD) ChangeEntete(mouvement, [](Mouvement& e) { e.Validee = 1; });
    App().Edition = c.edition;

    Boite.Oublie();
    Boite.Reponses.clear();
    if (c.question) {
      EXPECT_EQ(c.question, SupprimeEcriture(App(), mouvement).erreur);
      EXPECT_TRUE(Existe(mouvement)) << "answered no";
    }
    Boite.Reponses = {RepOui};
    const ResultatSaisie r = SupprimeEcriture(App(), mouvement);
    Boite.Reponses.clear();
    EXPECT_EQ(c.erreur, r.erreur);
    EXPECT_EQ(c.question ? std::vector<unsigned>(2, c.question) : std::vector<unsigned>{},
              Boite.NumerosQuestions());
    EXPECT_EQ(c.erreur != 0, Existe(mouvement));
    EXPECT_EQ(c.erreur == 3040, Boite.Erreurs.size() == 1) << "of a record that is gone nothing is shown";
  }
}

TEST_F(CommandesTest, Validation) {
  struct Cas {
    u32 mouvement;
    unsigned question;
    const char* texte;
  };
  const Cas cas[] = {
      {m_simple, QuestionValiderSimple,
       "Trésorerie\t: BQ\nDate\t\t: 15/03/2003\nLibellé\t\t: Essai\nCrédit\t\t: 120,00 €\n\nValider cette "
       "écriture ?"},
      {m_standard, QuestionValiderStandard,
       "Date\t\t: 15/03/2003\nLibellé\t\t: Essai\nDébit\t\t: 80,00 €\n\nValider cette écriture ?"},
      {m_od, QuestionValiderOD,
       "Date\t\t: 15/03/2003\nLibellé\t\t: Essai d'OD\n\nValider cette opération diverse ?"},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.texte);
    Boite.Oublie();
    EXPECT_EQ(c.question, ValideEcriture(App(), c.mouvement, true).erreur) << "answered no";
    EXPECT_EQ(0u, u32{Entete(c.mouvement).Validee});
    EXPECT_EQ(c.texte, VersUtf8(Boite.Questions.back().texte));
    Boite.Reponses = {RepOui};
    EXPECT_TRUE(ValideEcriture(App(), c.mouvement, true));
    EXPECT_EQ(1u, u32{Entete(c.mouvement).Validee});
    EXPECT_TRUE(ValideEcriture(App(), c.mouvement, true)) << "already: no question";
    Boite.Reponses = {RepOui};
    EXPECT_TRUE(ValideEcriture(App(), c.mouvement, false));
    EXPECT_EQ(0u, u32{Entete(c.mouvement).Validee});
    EXPECT_EQ((std::vector<unsigned>{c.question, c.question, QuestionInvalider}), Boite.NumerosQuestions());
  }
  EXPECT_EQ(unsigned{ErrEcritureInconnue}, ValideEcriture(App(), 99, true).erreur);
}

TEST_F(CommandesTest, Pointage) {
  EXPECT_TRUE(PointeEcriture(App(), m_standard));
  EXPECT_EQ(1u, u32{Entete(m_standard).Pointee});
  Regle("2003", "Cloture", "31/01/2004");
  EXPECT_TRUE(PointeEcriture(App(), m_standard)) << "a closed exercice does not matter";
  EXPECT_EQ(0u, u32{Entete(m_standard).Pointee});
  EXPECT_EQ(unsigned{ErrEcritureInconnue}, PointeEcriture(App(), 99).erreur);
}

TEST_F(CommandesTest, Rapprochement) {
  EXPECT_EQ(unsigned{QuestionRapprocher}, RapprocheEcriture(App(), m_standard, true).erreur) << "answered no";
  EXPECT_EQ((std::vector<u32>{0, 0, 0}), Rapprochees(m_standard));
  EXPECT_EQ("Date\t\t: 15/03/2003\nLibellé\t\t: Essai\nDébit\t\t: 50,00 €\n\nRapprocher cette écriture?",
            VersUtf8(Boite.Questions.back().texte));
  Boite.Defaut = RepOui;
  EXPECT_TRUE(RapprocheEcriture(App(), m_standard, true));
  EXPECT_EQ((std::vector<u32>{0, 1, 0}), Rapprochees(m_standard)) << "the bank alone";
  const Line banque = Lignes(m_standard)[1];
  EXPECT_EQ(Long("512"), LitTexte(banque.RappCompte));
  EXPECT_EQ("Essai", LitTexte(banque.RappLibelle));
  EXPECT_EQ(FaitDate(15, 3, 2003), u32{banque.RappDateValeur});
  EXPECT_EQ(50, f64{banque.RappEuro});
  EXPECT_EQ(1u, u32{banque.RappSens});
  EXPECT_EQ(50, f64{LitCompte("512").RappCreditEuro});

  Regle("Rapprochement", "Especes", "Oui");
  EXPECT_TRUE(RapprocheEcriture(App(), m_standard, true));
  EXPECT_EQ((std::vector<u32>{0, 1, 1}), Rapprochees(m_standard)) << "cash too";
  EXPECT_TRUE(RapprocheEcriture(App(), m_standard, false));
  EXPECT_EQ((std::vector<u32>{0, 0, 0}), Rapprochees(m_standard));
  EXPECT_EQ("", LitTexte(Lignes(m_standard)[1].RappCompte));
  EXPECT_EQ(0, f64{LitCompte("512").RappCreditEuro});

  Boite.Oublie();
  EXPECT_TRUE(RapprocheEcriture(App(), m_standard, false)) << "nothing to change";
  EXPECT_TRUE(Boite.Questions.empty());
  Regle("Rapprochement", "Especes", "Non");
  const u32 especes = Enregistre(Ecriture(JournalRecettes, "706", 20, "531"));
  EXPECT_EQ(3116u, RapprocheEcriture(App(), especes, true).erreur);
}

}  // namespace
}  // namespace fenlor::test
