#include "auto/echeances.h"

#include "auto/ecrituresauto.h"
#include "auto/modeleauto.h"
#include "auto/textes.h"
#include "core/erreursexercice.h"
#include "core/erreurssaisie.h"
#include "journal/cabinetmedical.h"
#include "journal/textes.h"

namespace fenlor {
namespace {

using test::Long;

constexpr Date Le(unsigned jour, unsigned mois) { return FaitDate(jour, mois, 2003); }

class Automatiques : public test::CabinetMedical {
 protected:
  void SetUp() override { Installe(); }

  FicheAuto Modele(Date date, i16 periodicite, u32 nombre, bool annoncer = false,
                   std::string_view compte = "6132", f64 ttc = 100) {
    FicheAuto fiche = NouvelleAuto(App());
    fiche.genre = compte[0] == '7' ? JournalRecettes : JournalDepenses;
    fiche.date = date;
    fiche.tresorerie = "512";
    fiche.compte = compte;
    fiche.libelle = "Modele " + std::to_string(ttc).substr(0, 3);
    fiche.periodicite = periodicite;
    fiche.nombre = nombre;
    fiche.annoncer = annoncer;
    fiche.montants = ChaineMontants(App(), LitCompte(compte), ttc);
    return fiche;
  }
  void Ajoute(FicheAuto fiche) { ASSERT_EQ(EnregistreFiche(App(), fiche).numero, 0u); }
  /// "05/01 1/1": days and line numbers of the entries of both journals, in the order they were made.
  std::string Journal() {
    std::string texte;
    Mouvement entete;
    for (u32 mouvement = 1;; ++mouvement) {
      if (!Magasin().ReadMouvements(App().PathExercice, mouvement, entete)) return texte;
      texte +=
          (texte.empty() ? "" : " ") + StrDate(entete.Date).substr(0, 5) + "/" + std::to_string(entete.Ligne);
    }
  }
  /// "2:9/12 05/04": number, remaining of all payments, next date.
  std::string Modeles() {
    std::vector<EcrituresAuto> modeles;
    EXPECT_FALSE(ListeAutos(App(), modeles));
    std::string texte;
    for (const EcrituresAuto& m : modeles)
      texte += (texte.empty() ? "" : " ") + LitTexte(m.Libelle).substr(7) + ":" +
               std::to_string(m.NbRestants) + "/" + std::to_string(m.NbPaiements) + "," +
               StrDate(m.Date).substr(0, 5);
    return texte;
  }
  BilanEcheances Calcule() {
    BilanEcheances bilan;
    EXPECT_FALSE(CalculeEcheances(App(), bilan));
    return bilan;
  }
  std::string Liste() { return App().Reglages.LitIniExercice({}, "Ecritures automatiques"); }
};

TEST_F(Automatiques, UneFoisParJour) {
  Ajoute(Modele(Le(5, 1), 6, 12));
  Ajoute(Modele(Le(10, 3), 1, 1, false, "6132", 200));  // goes
  Ajoute(Modele(Le(1, 3), 2, 9, true, "706", 300));
  Ajoute(Modele(FaitDate(20, 12, 2002), 6, 2, false, "6132", 400));  // one before the exercice
  Ajoute(Modele(Le(16, 3), 6, 5, false, "6132", 500));               // tomorrow
  EXPECT_EQ(Liste(), "AUTO1,AUTO2,AUTO3,AUTO4,AUTO5");
  const BilanEcheances bilan = Calcule();
  EXPECT_TRUE(bilan.parcouru);
  EXPECT_EQ(Journal(), "05/01/1 05/02/2 05/03/3 10/03/1 20/01/1");
  EXPECT_EQ(Modeles(), "100:9/12,05/04 300:9/9,01/03 500:5/5,16/03");
  EXPECT_EQ(Liste(), "AUTO1,AUTO2,AUTO3");
  ASSERT_EQ(bilan.annoncees.size(), 3u);
  EXPECT_EQ(bilan.annoncees[2].numero, 2u) << "rows follow the renumbering";
  EXPECT_FALSE(Calcule().parcouru);
  Regle("2003", "Consultation", "");
  EXPECT_TRUE(Calcule().faites.empty()) << "a walk whose day was lost enters nothing again";
  EXPECT_EQ(Modeles(), "100:9/12,05/04 300:9/9,01/03 500:5/5,16/03");
  Magasin().FixeAujourdhui(Le(16, 3));
  EXPECT_EQ(Calcule().faites.size(), 1u);
  Magasin().FixeAujourdhui(Le(30, 4));
  Regle("2003", "Cloture", "30/04/2003");
  EXPECT_FALSE(Calcule().parcouru);
  EXPECT_EQ(App().Reglages.LitIniExercice({}, "Consultation"), "16/03/2003");
}

TEST_F(Automatiques, LesConfirmations) {
  Ajoute(Modele(Le(1, 3), 2, 2, true, "706", 100));
  EcrituresAuto sansFin{};
  {
    CEcrituresAuto autos(App());
    ASSERT_TRUE(autos.First());
    sansFin = autos.Rec;
    sansFin.Numero = sansFin.NbPaiements = 0;
    sansFin.NbRestants = 1;
    PoseTexte(sansFin.Libelle, "Modele 200");
    autos.Rec = sansFin;
    ASSERT_TRUE(autos.Write());
  }
  Ajoute(Modele(Le(2, 3), 2, 3, true, "6132", 300));
  std::vector<EcheanceAnnoncee> annoncees = Calcule().annoncees;
  ASSERT_EQ(annoncees.size(), 2u + 1 + 2);
  EXPECT_EQ(annoncees[0].tresorerie, "BQ");
  BilanEcheances bilan;
  ASSERT_FALSE(ConfirmeEcheances(App(), annoncees, {0, 1, 2, 4}, bilan));
  EXPECT_EQ(bilan.faites.size(), 4u);
  EXPECT_EQ(Journal(), "01/03/1 08/03/2 01/03/3 09/03/1");
  EXPECT_EQ(Modeles(), "100:0/2,01/03 300:2/3,02/03") << "the second is gone, the first may begin again";
  ASSERT_FALSE(ListeAnnoncees(App(), annoncees));
  EXPECT_TRUE(annoncees.empty()) << "the last payment is that of today";
  Magasin().FixeAujourdhui(Le(23, 3));
  ASSERT_FALSE(ListeAnnoncees(App(), annoncees));
  ASSERT_EQ(annoncees.size(), 3u);
  ASSERT_FALSE(ConfirmeEcheances(App(), annoncees, {0}, bilan));
  EXPECT_EQ(Modeles(), "100:1/2,01/03 300:2/3,02/03") << "a new cycle, not 4294967295";
  annoncees[1].numero = 77;
  ASSERT_FALSE(ConfirmeEcheances(App(), annoncees, {1}, bilan));
  EXPECT_EQ(bilan.faites.size(), 5u) << "a model that is gone is passed over";
  // What cannot be entered keeps its model as it was; those behind it are entered.
  {
    CEcrituresAuto autos(App());
    ASSERT_TRUE(autos.Read(1));
    PoseTexte(autos.Rec.Compte, "6999000000");
    ASSERT_TRUE(autos.Write());
  }
  Magasin().FixeAujourdhui(Le(30, 3));
  ASSERT_FALSE(ListeAnnoncees(App(), annoncees));
  ASSERT_FALSE(ConfirmeEcheances(App(), annoncees, {0, 1}, bilan));
  EXPECT_EQ(Modeles(), "100:1/2,01/03 300:1/3,02/03");
  ASSERT_EQ(bilan.refus.size(), 1u);
  EXPECT_EQ(bilan.refus[0].rang, 0);
  Regle("2003", "Cloture", "30/04/2003");
  EXPECT_EQ(ConfirmeEcheances(App(), annoncees, {2}, bilan).numero, ErrExerciceCloture.numero);
}

/// A model that cannot be entered stays as it was, whole; the others are entered.
TEST_F(Automatiques, CeQuiEstRefuse) {
  Ajoute(Modele(Le(5, 1), 6, 12));
  Ajoute(Modele(Le(5, 2), 6, 12, false, "6132", 200));
  {
    CEcrituresAuto autos(App());
    ASSERT_TRUE(autos.Read(1));
    PoseTexte(autos.Rec.Compte, "6999000000");
    ASSERT_TRUE(autos.Write());
  }
  FicheAuto franc = Modele(FaitDate(10, 2, 2002), 1, 1, false, "6132", 300);
  franc.euro = false;
  Ajoute(franc);
  {
    CEcrituresAuto autos(App());
    ASSERT_TRUE(autos.Read(3));
    autos.Rec.Date = Le(7, 3);
    ASSERT_TRUE(autos.Write());
  }
  const BilanEcheances bilan = Calcule();
  ASSERT_EQ(bilan.refus.size(), 2u);
  EXPECT_TRUE(bilan.refus[0].dit);
  EXPECT_EQ(bilan.refus[1].numero, ErrEcheanceFranc.numero);
  EXPECT_NE(bilan.refus[1].texte.find("du 07/03/2003 est"), std::string::npos);
  EXPECT_NE(bilan.refus[1].texte.find("18/02/2002."), std::string::npos);
  EXPECT_EQ(Journal(), "05/02/1 05/03/2");
  EXPECT_EQ(Modeles(), "100:12/12,05/01 200:10/12,05/04 300:1/1,07/03");
}

TEST_F(Automatiques, LEntreeEstCelleDuModele) {
  Ajoute(Modele(Le(14, 3), 1, 1, false, "6154", 119.6));
  test::Jumeau jumeau;
  jumeau.Installe();
  SaisieEcriture saisie = Ecriture(JournalDepenses, "6154", 119.6, "512", Le(14, 3));
  saisie.libelle = "Modele 119";
  ASSERT_NE(jumeau.Enregistre(saisie), 0u);
  EXPECT_EQ(Calcule().faites.size(), 1u);
  test::CompareLivres(*this, jumeau, 1);
}

TEST_F(Automatiques, RefusALEnregistrement) {
  const struct {
    void (*change)(FicheAuto&);
    unsigned erreur;
    const char* champ;
  } cas[] = {
      {[](FicheAuto& f) { f.position = 9, f.genre = 3; }, ErrModeleAbsent, "numero"},
      {[](FicheAuto& f) { f.genre = 3, f.date = 0; }, ErrGenreAuto, "genre"},
      {[](FicheAuto& f) { f.date = Le(31, 2), f.compte = ""; }, ErrDateIncorrecte, "date"},
      {[](FicheAuto& f) { f.compte = "706", f.montants.ttc = 0; }, ErrCompteIncorrect, "compte"},
      {[](FicheAuto& f) { f.montants.ttc = 0, f.euro = false; }, ErrMontantNul, "ttc"},
      {[](FicheAuto& f) { f.euro = false, f.tresorerie = ""; }, ErrFrancApresLimite, "monnaie"},
      {[](FicheAuto& f) { f.tresorerie = "6132", f.periodicite = 0; }, ErrCompteIncorrect, "tresorerie"},
      {[](FicheAuto& f) { f.periodicite = 10, f.nombre = 0; }, ErrPeriodicite, "periodicite"},
      {[](FicheAuto& f) { f.nombre = 1000, f.libelle = std::string(81, 'x'); }, ErrNombrePaiements, "nombre"},
      {[](FicheAuto& f) { f.libelle = std::string(81, 'x'); }, ErrTexteTropLong, "libelle"},
      {[](FicheAuto& f) { f.montants.ttc = 1e15; }, ErrChampInvalide, "ttc"},
  };
  for (const auto& c : cas) {
    FicheAuto fiche = Modele(Le(5, 4), 6, 12);
    c.change(fiche);
    const Refus refus = EnregistreFiche(App(), fiche);
    EXPECT_EQ(refus.numero, c.erreur);
    EXPECT_STREQ(refus.champ, c.champ);
  }
  FicheAuto caisse = Modele(Le(5, 4), 6, 12, false, "7065");
  caisse.tresorerie = "531";
  caisse.libelle = "";
  Ajoute(caisse);
  ASSERT_FALSE(LitFiche(App(), 1, caisse));
  EXPECT_TRUE(caisse.paiement == PaiementAutre && caisse.libelle == "Compte 7065");
  EXPECT_TRUE(caisse.montants.professionnel == 60 && caisse.montants.personnel == 40);
  FicheAuto fiche = Modele(Le(5, 4), 6, 12);
  {
    CEcrituresAuto autos(App());
    QVAPI::Unite unite(Magasin());
    ASSERT_TRUE(autos.First());
    for (u32 n = 2; n < ModelesAutoMax; ++n) {
      autos.Rec.Numero = 0;
      ASSERT_TRUE(autos.Write());
    }
    ASSERT_TRUE(unite.Valide());
  }
  fiche.position = 0;
  ASSERT_FALSE(EnregistreFiche(App(), fiche));
  EXPECT_EQ(fiche.position, ModelesAutoMax);
  fiche.position = 0;
  EXPECT_EQ(EnregistreFiche(App(), fiche).numero, ErrNombreAuto.numero);
  EXPECT_EQ(SupprimeFiche(App(), FicheA<FicheAuto>(400)).numero, QuestionSupprimeAuto.numero)
      << "no is what stands first";
  Boite.Reponses = {RepOui};
  EXPECT_EQ(SupprimeFiche(App(), FicheA<FicheAuto>(400)).numero, 0u);
  EXPECT_EQ(SupprimeFiche(App(), FicheA<FicheAuto>(400)).numero, ErrModeleAbsent.numero);
  Regle("2003", "Cloture", "30/04/2003");
  EXPECT_EQ(EnregistreFiche(App(), fiche).numero, ErrExerciceCloture.numero);
}

TEST_F(Automatiques, NombreDePaiements) {
  FicheAuto fiche = Modele(Le(5, 1), 6, 12);
  Ajoute(fiche);
  Calcule();
  ASSERT_FALSE(LitFiche(App(), 1, fiche));
  EXPECT_EQ(fiche.payes, 3u);
  EXPECT_EQ(NombreTape(fiche, 2), 4u);
  EXPECT_EQ(NombreTape(FicheAuto{}, 0), 1u);
  fiche.nombre = NombreTape(fiche, 2);
  ASSERT_FALSE(EnregistreFiche(App(), fiche));
  EXPECT_EQ(Modeles(), "100:1/4,05/04");
  ChangePeriodicite(fiche, 1);
  EXPECT_EQ(fiche.nombre, 4u);
  ChangePeriodicite(fiche, 7);
  EXPECT_EQ(fiche.nombre, 999u);
}

}  // namespace
}  // namespace fenlor
