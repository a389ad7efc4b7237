#include "assets/immobilisations.h"

#include "assets/amortissements.h"
#include "assets/cessions.h"
#include "assets/detail.h"
#include "assets/dureetaux.h"
#include "core/cles.h"
#include "core/valeurs.h"
#include "outils/cabinetdetest.h"

namespace fenlor::test {
namespace {

/// "3042 dateAchat", empty when nothing was refused.
std::string Dit(const Refus& refus) {
  return refus ? std::to_string(refus.numero) + (*refus.champ ? std::string(" ") + refus.champ : "")
               : std::string();
}

class Immobilisations : public CabinetDeTest {
 protected:
  void SetUp() override { ASSERT_TRUE(CreeExercice("2003")); }

  FicheImmobilisation Bien(const char* achat = "15/03/2001", f64 prix = 1196) {
    FicheImmobilisation fiche = NouvelleImmobilisation(App());
    fiche.designation = "Table d'examen";
    fiche.dateAchat = GetDate(achat);
    fiche.prix = prix;
    fiche.tauxTva = 19.6;
    fiche.tva = CalculMontantsAchat(prix, fiche.tauxTva).tva;
    fiche.valeur = CalculMontantsAchat(prix, fiche.tauxTva).horsTaxe;
    return fiche;
  }
  FicheImmobilisation Enregistre(FicheImmobilisation fiche) {
    EXPECT_EQ(Dit(EnregistreFiche(App(), fiche)), "");
    return fiche;
  }
  std::size_t Nombre() {
    CImmobilisations fichier(App(), App().PathCabinet);
    return PositionsDe(App(), fichier).size();
  }
};

TEST_F(Immobilisations, CeQuiEstEcritSeRelitSousLeMemeNumero) {
  FicheImmobilisation fiche = Enregistre(Bien());
  EXPECT_EQ(+fiche.rec.Numero, 1u);
  EXPECT_EQ(+fiche.rec.TVAEuro, 196.0);
  EXPECT_EQ(+fiche.rec.ValeurAmortissableFranc, 6559.57);
  fiche.monnaie = 0;
  fiche.prix = 655.96;
  fiche.dateAchat = GetDate("15/03/2000");
  fiche.designation = "Divan";
  fiche = Enregistre(fiche);
  FicheImmobilisation relue;
  ASSERT_FALSE(LitFiche(App(), PositionImmobilisation(App(), 1), relue));
  EXPECT_EQ(relue.designation + StrDate(relue.dateAchat), "Divan15/03/2000");
  EXPECT_EQ(relue.prix, 655.96) << "in the currency of the asset";
  EXPECT_EQ(+relue.rec.PrixEuro, 100);
  EXPECT_EQ(Nombre(), 1u);

  // A number is never given twice: not after a deletion, not when the last asset is the one that goes.
  Boite.Reponses = {RepNon, RepOui};
  EXPECT_TRUE(SupprimeFiche(App(), relue));
  EXPECT_EQ(Nombre(), 1u);
  EXPECT_FALSE(SupprimeFiche(App(), relue));
  EXPECT_EQ(Boite.Questions[0].texte, "Suppression de l'aquisition \"Divan\" du 15/03/2000 ?");
  EXPECT_EQ(Nombre(), 0u);
  EXPECT_EQ(+Enregistre(Bien()).rec.Numero, 2u);
  EXPECT_EQ(Dit(EnregistreFiche(App(), relue)), "3484") << "it is gone, and does not come back";
  EXPECT_EQ(Nombre(), 1u);
}

TEST_F(Immobilisations, RefusDansLeurOrdre) {
  FicheImmobilisation existante = Bien();
  existante.rec.DateCession = GetDate("10/02/2002");
  PoseAcquisition(App(), existante);
  ASSERT_EQ(Dit(EcritImmobilisation(App(), existante)), "");
  using Change = void (*)(FicheImmobilisation&);
  const struct {
    const char* refus;
    Change change;
  } cas[] = {
      {"3206 designation", [](auto& f) { f.designation.assign(81, 'x'), f.dateAchat = 0; }},
      {"3104 dateAchat", [](auto& f) { f.dateAchat = 0, f.tauxTva = -1; }},
      {"3104 dateAchat", [](auto& f) { f.dateAchat = FaitDate(31, 2, 2002); }},
      {"3401 tauxTva", [](auto& f) { f.tauxTva = 101, f.prix = 1e14; }},
      {"3401 prix", [](auto& f) { f.prix = 1e13, f.duree = 0; }},
      {"3401 duree", [](auto& f) { f.duree = 501; }},
      {"3401 taux", [](auto& f) { f.mode = ParTaux, f.taux = 0.1; }},
      {"3485 taux", [](auto& f) { f.duree = 3, f.taux = 33.34; }},
      {"", [](auto& f) { f.duree = 3, f.taux = 33.33; }},
      {"3485 taux", [](auto& f) { f.type = Exceptionnel; }},
      {"3483 duree", [](auto& f) { f.type = Degressif, f.duree = 7, f.taux = 35; }},
      {"", [](auto& f) { f.type = Degressif, f.duree = 5, f.taux = 35; }},
      {"3483 duree", [](auto& f) { f.type = Degressif, f.duree = 5, f.taux = 60, f.monnaie = 0; }},
      {"3042 dateAchat", [](auto& f) { f.monnaie = 0, f.dateAchat = GetDate("19/02/2002"); }},
      {"3015 dateAchat", [](auto& f) { f.monnaie = 0, f.dateAchat = GetDate("18/02/2002"); }},
      {"", [](auto& f) { f.monnaie = 0, f.dateAchat = GetDate("10/02/2002"); }},
  };
  for (const auto& c : cas) {
    FicheImmobilisation fiche = existante;
    c.change(fiche);
    EXPECT_EQ(Dit(ControleAcquisition(App(), fiche)), c.refus) << &c - cas;
  }
  existante.rec.Duree = existante.duree = 700;
  EXPECT_EQ(Dit(ControleAcquisition(App(), existante)), "") << "imported so, and left so";
  EXPECT_EQ(Dit(EnregistreFiche(App(), existante)), "");
}

TEST_F(Immobilisations, UnExerciceClotureLesFige) {
  FicheImmobilisation fiche = Enregistre(Bien());
  DetailAmortissements detail;
  ASSERT_FALSE(LitDetail(App(), fiche.position, detail));
  App().Reglages.EcritIniExercice("2003", Texte(CleCloture), "31/12/2003");
  EXPECT_EQ(Dit(EnregistreFiche(App(), fiche)), "3056");
  EXPECT_EQ(Dit(EcritImmobilisation(App(), fiche)), "3056");
  EXPECT_EQ(Dit(SupprimeFiche(App(), fiche)), "3056");
  EXPECT_EQ(Dit(EnregistreDetail(App(), detail)), "3056");
  EXPECT_EQ(Nombre(), 1u);
}

TEST_F(Immobilisations, DureeEtTauxEnToutePassage) {
  using Geste = void (*)(DureeEtTaux&);
  const Geste lineaire = [](auto& d) { d.ChangeType(Lineaire); };
  const Geste degressif = [](auto& d) { d.ChangeType(Degressif); };
  const Geste exceptionnel = [](auto& d) { d.ChangeType(Exceptionnel); };
  const Geste parDuree = [](auto& d) { d.ChangeMode(ParDuree); };
  const Geste parTaux = [](auto& d) { d.ChangeMode(ParTaux); };
  // Behind the colon what can be changed: m modes, d life, t rate, l in lists.
  const struct {
    const char* cas;
    u8 type, mode;
    f64 duree, taux;
    std::vector<Geste> gestes;
    const char* attendu;
  } cas[] = {
      {"as it stands", Lineaire, ParDuree, 7.125, 14, {}, "7.125 14: md"},
      {"a life", Lineaire, ParDuree, 10, 10, {[](auto& d) { d.ChangeDuree(7); }}, "7 14.29: md"},
      {"nothing", Lineaire, ParDuree, 10, 10, {[](auto& d) { d.ChangeDuree(0); }}, "0.01 1: md"},
      {"no rate", Lineaire, ParTaux, 10, 10, {[](auto& d) { d.ChangeTaux(0); }}, "1 0.01: mt"},
      {"a huge rate", Lineaire, ParTaux, 10, 10, {[](auto& d) { d.ChangeTaux(99999); }}, "0.01 99999: mt"},
      {"the other one", Lineaire, ParDuree, 8, 12.5, {parTaux}, "8 12.5: mt"},
      {"and back", Lineaire, ParTaux, 8, 12.5, {parDuree}, "8 12.5: md"},
      {"7 years take the row of 6.66", Lineaire, ParDuree, 7, 14.29, {degressif}, "6.66 33.75: mdl"},
      {"below all rows", Lineaire, ParDuree, 2, 50, {degressif}, "3 41.66: mdl"},
      {"the last rate not above", Lineaire, ParTaux, 4, 25, {degressif}, "20 11.25: mdtl"},
      {"no rate so low", Lineaire, ParTaux, 10, 10, {degressif}, "3 41.66: mdtl"},
      {"by rate alone", Degressif, ParDuree, 5, 35, {parTaux}, "5 35: mtl"},
      {"by life alone", Degressif, ParTaux, 5, 35, {parDuree}, "5 35: mdl"},
      {"opened by rate", Degressif, ParTaux, 5, 35, {}, "5 35: mdtl"},
      {"no such row", Degressif, ParDuree, 7, 99, {}, "3 41.66: mdl"},
      {"a row", Degressif, ParDuree, 5, 35, {[](auto& d) { d.ChoisitRangee(6); }}, "10 22.5: mdl"},
      {"the row's life", Degressif, ParDuree, 6.66, 33.75, {lineaire}, "6.66 15.02: md"},
      {"the row's rate", Degressif, ParTaux, 5, 35, {lineaire}, "2.86 35: mt"},
      {"1 and 100", Lineaire, ParDuree, 8, 12.5, {exceptionnel, parTaux}, "1 100: "},
      {"from the lists", Degressif, ParTaux, 8, 28.12, {exceptionnel}, "1 100: "},
      {"back from 1 and 100", Exceptionnel, ParTaux, 1, 100, {lineaire}, "1 100: mt"},
      {"the row chosen before", Degressif, ParDuree, 8, 28.12, {exceptionnel, lineaire}, "8 12.5: md"},
      {"1 year is below all", Exceptionnel, ParDuree, 1, 100, {degressif}, "3 41.66: mdl"},
      {"another table",
       Degressif,
       ParDuree,
       5,
       35,
       {[](auto& d) { d.ChangeDate(GetDate("01/02/1996")); }},
       "5 60: mdl"},
  };
  for (const auto& c : cas) {
    DureeEtTaux saisie(App(), GetDate("15/03/2003"), c.type, c.mode, c.duree, c.taux);
    for (const Geste geste : c.gestes) geste(saisie);
    const auto nombre = [](f64 x) {
      std::string texte = FormatMontant(x, 3, '.');
      texte.erase(texte.find_last_not_of('0') + 1);
      return texte.back() == '.' ? texte.substr(0, texte.size() - 1) : texte;
    };
    std::string vu = nombre(saisie.Duree()) + ' ' + nombre(saisie.Taux()) + ": ";
    if (saisie.ModesActifs()) vu += 'm';
    if (saisie.DureeActive()) vu += 'd';
    if (saisie.TauxActif()) vu += 't';
    if (saisie.EnListes()) vu += 'l';
    EXPECT_EQ(vu, c.attendu) << c.cas;
  }
  EXPECT_EQ(TexteDuree(App(), 6.66) + TexteTaux(App(), 50), "6,66 ans50,00 %");
}

TEST_F(Immobilisations, MontantsDAchat) {
  const MontantsAchat sans = CalculMontantsAchat(100, 0), avec = CalculMontantsAchat(100.07, 19.6);
  EXPECT_EQ(sans.tva, 0);
  EXPECT_EQ(sans.horsTaxe, 100);
  EXPECT_EQ(avec.tva, 16.40);
  EXPECT_EQ(avec.horsTaxe, 83.67);
}

TEST_F(Immobilisations, CessionEtRebutDansLeurOrdre) {
  Immobilisation immo = Enregistre(Bien()).rec;
  const Date jour = Magasin().Today();  // 15/03/2003
  const struct {
    const char* refus;
    FicheCession cession;
  } cas[] = {
      {"3104 date", {0, -1, false}},
      {"3401 prix", {GetDate("14/03/2001"), -1, false}},
      {"3043 date", {GetDate("19/02/2002"), 10, false}},
      {"3013 date", {GetDate("14/03/2001"), 10, false}},
      {"3014 date", {NextDate(jour), 10, true}},
      {"", {GetDate("15/03/2001"), 10, false}},
      {"", {GetDate("18/02/2002"), 10, false}},
      {"", {jour, 10, true}},
  };
  for (const auto& c : cas) {
    Immobilisation copie = immo;
    EXPECT_EQ(Dit(PoseCession(App(), c.cession, copie)), c.refus);
    EXPECT_EQ(EstCedee(copie), !*c.refus) << "a refusal changes nothing";
    EXPECT_EQ(copie.PrixCessionEuro != 0, !*c.refus);
  }
  // The rate of today, not that of the sale.
  ASSERT_TRUE(App().Reglages.EcritIni("TAUX EURO", "1", "01/01/2003|5"));
  ASSERT_EQ(Dit(PoseCession(App(), {GetDate("01/02/2002"), 100, false}, immo)), "");
  EXPECT_EQ(+immo.PrixCessionEuro, 20);
  const FicheCession vue = CessionDe(App(), immo);
  EXPECT_EQ(vue.prix, 20) << "in the currency of the exercice";
  EXPECT_FALSE(vue.euro) << "though it was typed in the other";
  ASSERT_EQ(Dit(PoseCession(App(), {GetDate("02/02/2002"), vue.prix, vue.euro}, immo)), "");
  EXPECT_EQ(+immo.PrixCessionFranc, 100) << "what nobody touched stays";
  EXPECT_EQ(Dit(ControleRebut(immo)), "3045");
  EXPECT_EQ(Dit(PoseRebut(App(), jour, immo)), "3045");
  Boite.Reponses = {RepNon, RepOui, RepOui};
  EXPECT_EQ(Dit(AnnuleCession(App(), immo)), "3481");
  EXPECT_TRUE(EstCedee(immo));
  EXPECT_EQ(Dit(AnnuleCession(App(), immo)), "");
  EXPECT_EQ(immo.DateCession + immo.Rebut, 0u);
  EXPECT_EQ(CessionDe(App(), immo).date, jour);
  EXPECT_EQ(Dit(PoseRebut(App(), GetDate("14/03/2001"), immo)), "3013 date");
  EXPECT_EQ(Dit(PoseRebut(App(), NextDate(jour), immo)), "3014 date");
  EXPECT_EQ(Dit(PoseRebut(App(), 0, immo)), "3104 date");
  ASSERT_EQ(Dit(PoseRebut(App(), jour, immo)), "");
  EXPECT_EQ(immo.PrixCessionEuro + immo.PrixCessionFranc, 0);
  EXPECT_EQ(Dit(PoseCession(App(), {jour, 1, true}, immo)), "3044");
  EXPECT_EQ(Dit(AnnuleCession(App(), immo)), "");
  EXPECT_FALSE(EstRebutee(immo) || EstCedee(immo));
}

class Detail : public Immobilisations {
 protected:
  /// 1,000 over 5 years from 15/03/2001: 158.89 in the first.
  DetailAmortissements Lit() {
    DetailAmortissements detail;
    EXPECT_EQ(Dit(LitDetail(App(), PositionImmobilisation(App(), 1), detail)), "");
    return detail;
  }
  std::vector<std::string> Textes() {
    std::vector<std::string> textes;
    const DetailAmortissements detail = Lit();
    for (const LigneDetail& l : detail.lignes)
      textes.push_back(std::to_string(l.annee) + ' ' + FormatMontant(l.theorique, 2, '.') +
                       (l.Corrigee() ? ' ' + FormatMontant(l.reel, 2, '.') : ""));
    return textes;
  }
  /// Record of a year; of `Annee` 0 when there is none.
  Amortissement Correction(u32 annee) {
    Amortissement rec{};
    rec.Numero = 1;
    rec.Annee = annee;
    return Magasin().ReadAmortissements(rec) != 0 ? rec : Amortissement{};
  }
  void Installe() {
    FicheImmobilisation fiche = Bien();
    fiche.duree = 5;
    fiche.taux = 20;
    Enregistre(fiche);
  }
};

TEST_F(Detail, LesCorrectionsSontCellesDeLaListe) {
  Installe();
  EXPECT_THAT(Textes(), ElementsAre("2001 158.89", "2002 200.00", "2003 200.00"));
  DetailAmortissements detail = Lit();
  detail.lignes[0].reel = 758.89;
  ASSERT_EQ(Dit(EnregistreDetail(App(), detail)), "");
  EXPECT_EQ(+Correction(2001).ReelFranc, 4977.99);
  EXPECT_EQ(+Correction(2002).Annee, 0u) << "as computed: no record";
  EXPECT_THAT(Textes(), ElementsAre("2001 158.89 758.89", "2002 200.00", "2003 41.11"));
  detail = Lit();
  detail.lignes[2].reel = 10;
  ASSERT_EQ(Dit(EnregistreDetail(App(), detail)), "");
  // A rate that changed moves what is typed from now on, and nothing that stood.
  ASSERT_TRUE(App().Reglages.EcritIni("TAUX EURO", "1", "01/01/2003|5"));
  detail = Lit();
  detail.lignes[0].reel = detail.lignes[0].theorique;
  detail.lignes[1].reel = 20;
  ASSERT_EQ(Dit(EnregistreDetail(App(), detail)), "");
  EXPECT_EQ(+Correction(2001).Annee, 0u) << "reset";
  EXPECT_EQ(+Correction(2002).ReelFranc, 100);
  EXPECT_EQ(+Correction(2003).ReelFranc, 65.6);
  EXPECT_THAT(Textes(), ElementsAre("2001 158.89", "2002 200.00 20.00", "2003 200.00 10.00"));
  // What was corrected to the amount that is computed now loses its record.
  detail = Lit();
  detail.lignes[2].theorique = 10;
  ASSERT_EQ(Dit(EnregistreDetail(App(), detail)), "");
  EXPECT_EQ(+Correction(2003).Annee, 0u);
}

TEST_F(Detail, RefuseEtGardeLesAnciennes) {
  Installe();
  DetailAmortissements detail = Lit();
  detail.lignes[0].reel = 1;
  detail.lignes[1].reel = 5e13;
  const Refus refus = EnregistreDetail(App(), detail);
  EXPECT_EQ(Dit(refus), "3401 reel");
  EXPECT_EQ(refus.rang, 1);
  EXPECT_EQ(+Correction(2001).Annee, 0u) << "nothing of it";
  Boite.Reponses = {RepOui};
  ASSERT_FALSE(SupprimeFiche(App(), FicheA<FicheImmobilisation>(PositionImmobilisation(App(), 1))));
  detail.lignes[1].reel = 2;
  EXPECT_EQ(Dit(EnregistreDetail(App(), detail)), "3484");
  FicheImmobilisation sansValeur = Bien();
  sansValeur.valeur = 0;
  EXPECT_EQ(Dit(LitDetail(App(), Enregistre(sansValeur).position, detail)), "3482");
}

}  // namespace
}  // namespace fenlor::test
