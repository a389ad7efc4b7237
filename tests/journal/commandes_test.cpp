#include "journal/cabinetmedical.h"
#include "journal/corbeille.h"
#include "journal/textes.h"
#include "journal/traitements.h"

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
    m_standard = Enregistre(Multiple(JournalDepenses, "6132", {{"512", 50}, {"531", 30}}));
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
    if (avecFiche) AvecFiche(recette, [](auto ecrit, auto, auto) { ASSERT_NE(0u, ecrit()); });
  }

  /// Gives writing, reading and deleting of the parent application's record of `Lie`.
  template <class Geste>
  void AvecFiche(bool recette, Geste geste) {
    QVAPI& magasin = Magasin();
    if (recette) {
      const u32 poignee = magasin.OpenRecettes({});
      RecetteLiee rec{};
      rec.LienPoste = 3;
      rec.LienA = 5;
      rec.LienB = 0x10007;
      geste([&] { return magasin.WriteRecettes(rec); }, [&] { return magasin.ReadRecettes(rec, 2); },
            [&](Position p) { return magasin.DeleteRecettes(p); });
      magasin.CloseRecettes(poignee);
    } else {
      const u32 poignee = magasin.OpenDepenses({});
      DepenseLiee rec{};
      rec.LienA = 5;
      rec.LienB = 7;
      PoseTexte(rec.Tiers, "DURAND");
      geste([&] { return magasin.WriteDepenses(rec); }, [&] { return magasin.ReadDepenses(rec, 0); },
            [&](Position p) { return magasin.DeleteDepenses(p); });
      magasin.CloseDepenses(poignee);
    }
  }
  /// The parent application's receipt, or expense, of `Lie`; 0 when it is gone.
  Position Fiche(bool recette, bool supprime = false) {
    Position position = 0;
    AvecFiche(recette, [&](auto, auto lit, auto efface) {
      position = lit();
      if (position && supprime) efface(position);
    });
    return position;
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
  const auto rapprochee = [&](u32 m) {
    return [this, m] {
      Rapproche(m);
      return m;
    };
  };
  const Cas cas[] = {
      {"non", [&] { return m_simple; }, RepNon, QuestionSuppression, QuestionSuppression, true},
      {"rapprochée, non", rapprochee(m_simple), RepNon, QuestionSuppressionRapprochee,
       QuestionSuppressionRapprochee, true},
      {"rapprochée, oui", [&] { return m_simple; }, RepOui, QuestionSuppressionRapprochee, 0, false},
      {"déjà partie", [&] { return m_simple; }, RepOui, 0, ErrEcritureInconnue, false},
      {"standard rapprochée, non", rapprochee(m_standard), RepNon, QuestionSuppressionRapprochee,
       QuestionSuppressionRapprochee, true},
      {"opération diverse rapprochée, non", rapprochee(m_od), RepNon, QuestionSuppressionRapprochee,
       QuestionSuppressionRapprochee, true},
      {"standard validée", validee(m_standard), RepOui, 0, 3016, true},
      {"opération diverse validée", validee(m_od), RepOui, 0, 3017, true},
      {"opération diverse en brouillard",
       [&] {
         ChangeEntete(m_od, [](Mouvement& e) { e.Validee = 0; });
         ChangeLignes(m_od, [](Line& l) { l.Rapprochee = 0; });
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
    const Refus r = SupprimeEcriture(App(), mouvement);
    Boite.Reponses.clear();
    EXPECT_EQ(c.erreur, r.numero);
    EXPECT_EQ(c.question ? std::vector<unsigned>{c.question} : std::vector<unsigned>{},
              Boite.NumerosQuestions());
    EXPECT_EQ(c.reste, Existe(mouvement));
  }
  EXPECT_EQ(0, f64{LitCompte("706").CreditEuro});
}

TEST_F(CommandesTest, SuppressionDUneEcritureLiee) {
  enum Plus : unsigned { SansFiche = 1, Validee = 2, Rapprochee = 4 };
  struct Cas {
    const char* quoi;
    i16 genre;
    bool recette;
    u16 edition;
    i16 application;
    unsigned plus;
    unsigned question;  ///< 0: none
    unsigned erreur;    ///< with the answer yes
    std::size_t messages;
  };
  constexpr unsigned R = QuestionRecetteQuorbane, F = QuestionRecetteFeuille, D = QuestionDepenseQuorbane;
  const Cas cas[] = {
      {"recette, édition 0", GenreSimple, true, 0, 0, 0, R, 0, 0},
      {"recette, édition 1", GenreSimple, true, 1, 1, 0, F, 0, 0},
      {"recette, édition 4", GenreStandard, true, 4, 4, 0, F, 0, 0},
      {"dépense, édition 0", GenreSimple, false, 0, 0, 0, D, 0, 0},
      {"dépense, édition 4", GenreSimple, false, 4, 4, 0, D, 0, 0},
      {"autre application", GenreSimple, true, 2, 0, 0, 0, 3040, 1},
      {"autre application, fiche disparue", GenreSimple, true, 2, 0, SansFiche, 0, 3040, 1},
      {"fiche disparue", GenreSimple, true, 0, 0, SansFiche, 0, 3038, 0},
      {"fiche disparue, dépense", GenreStandard, false, 0, 0, SansFiche, 0, 3038, 0},
      {"validée : avant le lien", GenreSimple, true, 0, 0, Validee, 0, 3016, 1},
      {"validée d'une autre application", GenreStandard, true, 2, 0, Validee, 0, 3016, 1},
      {"rapprochée : la question du lien seule", GenreSimple, true, 0, 0, Rapprochee, R, 0, 0},
      {"opération diverse : sans question ni examen", GenreOD, true, 2, 0, 0, 0, 0, 0},
      {"opération diverse validée", GenreOD, true, 0, 0, Validee, 0, 0, 0},
      {"opération diverse, fiche disparue", GenreOD, false, 0, 0, SansFiche, 0, 3038, 0},
  };
  for (const Cas& c : cas) {
    SCOPED_TRACE(c.quoi);
    // The practice outlives each case: start from the same three entries.
    for (const u32 m : {m_simple, m_standard, m_od})
      if (Existe(m)) Magasin().RemoveMouvements(App().PathExercice, m);
    for (const bool recette : {true, false}) Fiche(recette, true);
    FaitEcritures();
    const u32 mouvement = c.genre == GenreOD ? m_od : c.genre == GenreSimple ? m_simple : m_standard;
    Lie(mouvement, c.recette, c.application, !(c.plus & SansFiche));
    if (c.plus & Validee) ChangeEntete(mouvement, [](Mouvement& e) { e.Validee = 1; });
    if (c.plus & Rapprochee) Rapproche(mouvement);
    App().Edition = c.edition;

    Boite.Oublie();
    Boite.Reponses.clear();
    if (c.question) {
      EXPECT_EQ(c.question, SupprimeEcriture(App(), mouvement).numero);
      EXPECT_TRUE(Existe(mouvement) && Fiche(c.recette)) << "answered no";
      EXPECT_NE(Boite.Questions.back().texte.find("Essai"), std::string::npos) << "the label";
      Boite.Oublie();
    }
    Boite.Reponses = {RepOui};
    const Refus r = SupprimeEcriture(App(), mouvement);
    Boite.Reponses.clear();
    EXPECT_EQ(c.erreur, r.numero);
    EXPECT_EQ(c.question ? std::vector<unsigned>{c.question} : std::vector<unsigned>{},
              Boite.NumerosQuestions());
    EXPECT_EQ(c.erreur != 0, Existe(mouvement));
    EXPECT_EQ(c.erreur != 0 && !(c.plus & SansFiche), Fiche(c.recette) != 0)
        << "the record goes with the entry";
    EXPECT_EQ(c.messages, r && !r.dit ? 1u : 0u) << "of a record that is gone nothing is shown";
  }
  std::vector<Suppression> corbeille;
  u32 rendue = 0;
  ASSERT_FALSE(LitCorbeille(App(), corbeille));
  ASSERT_FALSE(RestaureSuppression(App(), corbeille.at(0).numero, rendue));
  EXPECT_EQ(0u, u32{Entete(rendue).LienId}) << "that record is gone";
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
    EXPECT_EQ(c.question, ValideEcriture(App(), c.mouvement, true).numero) << "answered no";
    EXPECT_EQ(0u, u32{Entete(c.mouvement).Validee});
    EXPECT_EQ(c.texte, VersUtf8(Boite.Questions.back().texte));
    Boite.Reponses = {RepOui};
    EXPECT_FALSE(ValideEcriture(App(), c.mouvement, true));
    EXPECT_EQ(1u, u32{Entete(c.mouvement).Validee});
    EXPECT_FALSE(ValideEcriture(App(), c.mouvement, true)) << "already: no question";
    Boite.Reponses = {RepOui};
    EXPECT_FALSE(ValideEcriture(App(), c.mouvement, false));
    EXPECT_EQ(0u, u32{Entete(c.mouvement).Validee});
    EXPECT_EQ((std::vector<unsigned>{c.question, c.question, QuestionInvalider}), Boite.NumerosQuestions());
  }
  EXPECT_EQ(unsigned{ErrEcritureInconnue}, ValideEcriture(App(), 99, true).numero);
}

TEST_F(CommandesTest, Rapprochement) {
  Magasin().FixeAujourdhui(FaitDate(20, 3, 2003));
  EXPECT_EQ(unsigned{QuestionRapprocher}, RapprocheEcriture(App(), m_standard, true).numero) << "answered no";
  EXPECT_EQ((std::vector<u32>{0, 0, 0}), Rapprochees(m_standard));
  EXPECT_EQ("Date\t\t: 15/03/2003\nLibellé\t\t: Essai\nDébit\t\t: 50,00 €\n\nRapprocher cette écriture?",
            VersUtf8(Boite.Questions.back().texte));
  Boite.Defaut = RepOui;
  EXPECT_FALSE(RapprocheEcriture(App(), m_standard, true));
  EXPECT_EQ((std::vector<u32>{0, 1, 0}), Rapprochees(m_standard)) << "the bank alone";
  const Line banque = Lignes(m_standard)[1];
  EXPECT_EQ(Long("512"), LitTexte(banque.RappCompte));
  EXPECT_EQ("Essai", LitTexte(banque.RappLibelle));
  EXPECT_EQ(FaitDate(15, 3, 2003), u32{banque.RappDate});
  EXPECT_EQ(FaitDate(20, 3, 2003), u32{banque.RappDateValeur});
  EXPECT_EQ(50, f64{banque.RappEuro});
  EXPECT_EQ(1u, u32{banque.RappSens});
  EXPECT_EQ(50, f64{LitCompte("512").RappCreditEuro});

  Regle("Rapprochement", "Especes", "Oui");
  EXPECT_FALSE(RapprocheEcriture(App(), m_standard, true));
  EXPECT_EQ((std::vector<u32>{0, 1, 1}), Rapprochees(m_standard)) << "cash too";
  EXPECT_EQ(2u, CompteRapprochables(App(), m_standard).nombre);
  EXPECT_EQ(2u, CompteRapprochables(App(), m_standard).rapprochees);
  EXPECT_FALSE(RapprocheEcriture(App(), m_standard, false));
  EXPECT_EQ((std::vector<u32>{0, 0, 0}), Rapprochees(m_standard));
  EXPECT_EQ("", LitTexte(Lignes(m_standard)[1].RappCompte));
  EXPECT_EQ(0, f64{LitCompte("512").RappCreditEuro});

  Boite.Oublie();
  EXPECT_FALSE(RapprocheEcriture(App(), m_standard, false)) << "nothing to change";
  EXPECT_TRUE(Boite.Questions.empty());
  Regle("Rapprochement", "Especes", "Non");
  const u32 especes = Enregistre(Ecriture(JournalRecettes, "706", 20, "531"));
  EXPECT_EQ(3116u, RapprocheEcriture(App(), especes, true).numero);
  EXPECT_EQ(0u, CompteRapprochables(App(), especes).nombre);
  EXPECT_FALSE(RapprocheEcriture(App(), m_standard, true));
  // The seal of a closure covers all marks of an entry.
  Regle("2003", "Cloture", "31/01/2004");
  EXPECT_EQ(1u, CompteRapprochables(App(), m_standard).rapprochees);
  EXPECT_EQ(3056u, RapprocheEcriture(App(), m_standard, false).numero);
  EXPECT_EQ(3056u, PointeEcriture(App(), m_standard).numero);
  EXPECT_EQ(3056u, ValideEcriture(App(), m_standard, true).numero);
  DemandeListe liste;
  u32 nombre = 0;
  EXPECT_EQ(3056u, RenumeroteEcritures(App(), liste, nombre).numero);
  BilanLot bilan;
  EXPECT_EQ(3056u, TraiteBrouillard(App(), {}, bilan).numero);
}

}  // namespace
}  // namespace fenlor::test
