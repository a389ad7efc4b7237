// What closing an exercice asks for, and that nothing of it changes behind its seal without being seen.
#include "garde/cloture.h"
#include "garde/attestation.h"
#include "garde/sceau.h"
#include "garde/textes.h"
#include "journal/cabinetmedical.h"
#include "session/entretien.h"
#include "store/ouverture.h"

using namespace fenlor;
using namespace fenlor::test;

namespace {

struct DemandeurSansQuestion : DemandeurCriteres {
  bool Demande(FormeCriteres, const std::string&, unsigned, CriteresEtat&) override {
    ADD_FAILURE() << "a question";
    return false;
  }
};

class Fermeture : public CabinetMedical {
 public:
  Fermeture() { Installe(); }
  u32 Valide(u32 mouvement) {
    EXPECT_TRUE(Magasin().ValidMouvements(App().PathExercice, mouvement, 1));
    return mouvement;
  }
  Refus Ferme(std::initializer_list<int> reponses) {
    PropositionCloture proposition;
    if (const Refus refus = ProposeCloture(App(), proposition)) return refus;
    EXPECT_EQ(proposition.date, Magasin().Today());
    Boite.Reponses = reponses;
    return Cloture(App(), proposition);
  }
  EtatSceau Sceau() {
    Examen = {};
    const Refus refus = ExamineSceau(App(), Examen);
    EXPECT_FALSE(refus) << refus.texte;
    return Examen.etat;
  }
  ExamenSceau Examen;
};

}  // namespace

TEST_F(Fermeture, CeQuElleDemande) {
  const u32 recette = Enregistre(Ecriture(1, "706", 20));
  EXPECT_TRUE(Ferme({RepNon}).dit);
  const Refus brouillon = Ferme({RepOui});
  EXPECT_EQ(brouillon.numero, 3033u);
  EXPECT_NE(brouillon.texte.find("2003"), std::string::npos);
  Valide(recette);
  EXPECT_EQ(Ferme({RepOui, RepNon}).numero, QuestionClotureNonRapprochees);
  EXPECT_FALSE(App().Reglages.IsExerciceCloture());
  EXPECT_EQ(Sceau(), EtatSceau::Absent);
  ASSERT_FALSE(Ferme({RepOui, RepOui}));
  EXPECT_EQ(App().Reglages.LitIniExercice("2003", "Cloture"), "15/03/2003");
  EXPECT_EQ(Ferme({}).numero, 3056u);
  EXPECT_EQ(Sceau(), EtatSceau::Intact);
  // A year without an entry has nothing to be asked about.
  ASSERT_TRUE(CreeExercice("2004"));
  ASSERT_FALSE(Ferme({RepOui}));
}

TEST_F(Fermeture, SonPapier) {
  DemandeurSansQuestion demandeur;
  CEtatAttestationDoc ouvert(App(), demandeur);
  EXPECT_EQ(ouvert.OnNewDocument().numero, ErrExerciceOuvert.numero);
  for (const f64 montant : {119.6, 20.4}) Valide(Enregistre(Ecriture(JournalRecettes, "706", montant)));
  Valide(Enregistre(Ecriture(JournalDepenses, "6154", 10)));
  ASSERT_FALSE(Ferme({RepOui, RepOui}));
  CEtatAttestationDoc etat(App(), demandeur);
  ASSERT_FALSE(etat.OnNewDocument());
  const std::string texte = etat.LitTexte(0, etat.TailleTexte());
  const std::string sceau = App().Reglages.LitIniExercice("2003", "Sceau");
  for (const std::string& morceau :
       {std::string("15/03/2003"), std::string("01/01/2003 au 31/12/2003"), sceau.substr(0, 32),
        sceau.substr(32), std::string("Intact"), "Recettes\\R070" + std::string("2\\R0904\\R112140,00 €"_w)})
    EXPECT_NE(texte.find(morceau), std::string::npos) << morceau << "\n" << texte;
  ChangeLignes(1, [](Line& ligne) { ligne.MontantEuro += 1; });
  ASSERT_FALSE(etat.OnNewDocument());
  EXPECT_NE(etat.LitTexte(0, etat.TailleTexte()).find("Rompu"), std::string::npos);
}

TEST_F(Fermeture, CeQueLeSceauVoit) {
  std::vector<u32> entrees;
  for (int i = 0; i < 20; ++i) entrees.push_back(Valide(Enregistre(Ecriture(1, "706", 20 + i))));
  ASSERT_FALSE(Ferme({RepOui, RepOui}));
  ASSERT_EQ(Sceau(), EtatSceau::Intact);
  // What may be done to a closed exercice leaves it whole.
  Reconstruction reconstruction;
  ASSERT_FALSE(ReconstruitCles(App(), {"JOURNAL", "COMPTES", "RUBRIQUE", "BANQUE"}, reconstruction));
  Statistiques statistiques{};
  ASSERT_TRUE(RecalculComptes(App(), statistiques));
  EXPECT_EQ(Sceau(), EtatSceau::Intact);
  for (const std::string& cle : {"Debut"_w, "Fin"_w, "TVA"_w, "EURO"_w, "Frais kilométriques"_w}) {
    const std::string juste = App().Reglages.LitIniExercice("2003", cle);
    ASSERT_TRUE(App().Reglages.EcritIniExercice("2003", cle, juste + "x"));
    EXPECT_EQ(Sceau(), EtatSceau::Rompu) << cle;
    EXPECT_NE(Examen.constats.at(0).find("fenlor.ini"), std::string::npos);
    ASSERT_TRUE(App().Reglages.EcritIniExercice("2003", cle, juste));
  }
  // A cent behind the rules' back is named by its entry.
  ChangeLignes(entrees[7], [](Line& ligne) {
    if (ligne.Rang == 0) ligne.MontantEuro += 0.01;
  });
  EXPECT_EQ(Sceau(), EtatSceau::Rompu);
  ASSERT_EQ(Examen.constats.size(), 4u);  // the line, and the total of its account
  EXPECT_NE(Examen.constats[3].find(std::to_string(entrees[7]) + ", ligne 0"), std::string::npos);
  EXPECT_NE(Examen.constats[1].find("compte "), std::string::npos);
  ChangeLignes(entrees[7], [](Line& ligne) {
    if (ligne.Rang == 0) ligne.MontantEuro -= 0.01;
  });
  // One gone, one more, the list itself, or that of the books as they are now.
  {
    const Ouverture journal(Magasin(), FichierJournal);
    Line ligne{};
    ASSERT_TRUE(Magasin().QVReadRec(FichierJournal, Lignes(entrees[3]).empty() ? 0 : 1, &ligne));
    ASSERT_NE(Magasin().QVAddRec(FichierJournal, &ligne), 0u);
  }
  EXPECT_EQ(Sceau(), EtatSceau::Rompu);
  EXPECT_NE(Examen.constats[0].find("JOURNAL"), std::string::npos);
  std::string presents, hexa;
  ASSERT_FALSE(CalculeSceau(App(), presents, hexa));
  for (const std::string& liste : {std::string("x"), presents}) {
    EcritFichier(App().PathExercice + "/SCEAU.dat", liste);
    EXPECT_EQ(Sceau(), EtatSceau::SansListe);
  }
}
