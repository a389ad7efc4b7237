#include "journal/criteres.h"

#include "journal/cabinetmedical.h"

namespace fenlor::test {
namespace {

class Criteres : public CabinetMedical {};

TEST_F(Criteres, ChaqueMarquePresenteOuAbsente) {
  using C = CritereEcriture;
  const struct {
    u32 C::*presente;
    u32 C::*absente;
    bool LigneCritere::*marque;
  } marques[] = {{&C::Pointees, &C::NonPointees, &LigneCritere::pointee},
                 {&C::Remises, &C::NonRemises, &LigneCritere::remise},
                 {&C::Rapprochees, &C::NonRapprochees, &LigneCritere::rapprochee},
                 {&C::Associees, &C::NonAssociees, &LigneCritere::associee}};
  for (const auto& m : marques)
    for (const bool marquee : {false, true}) {
      C c;
      c.Toutes = 0;
      c.*m.presente = 1;
      LigneCritere ligne;
      ligne.*m.marque = marquee;
      EXPECT_EQ(PasseCriteres(c, {}, {ligne}), marquee) << &m - marques;
      std::swap(c.*m.presente, c.*m.absente);
      EXPECT_EQ(PasseCriteres(c, {}, {ligne}), !marquee) << &m - marques;
      c.Toutes = 1;
      EXPECT_TRUE(PasseCriteres(c, {}, {ligne}));
    }
}

TEST_F(Criteres, BornesDUneLigne) {
  CritereEcriture tout, bornes;
  bornes.TousComptes = bornes.ToutesRubriques = bornes.TousJours = 0;
  for (CritereEcriture* c : {&tout, &bornes}) {
    PoseTexte(c->CompteDe, "706");
    PoseTexte(c->CompteA, "707");
    PoseTexte(c->RubriqueDe, "01 ");
    PoseTexte(c->RubriqueA, "13A");
    c->JourDe = 5;
    c->JourA = 10;
  }
  const struct {
    const char *compte, *rubrique;
    unsigned jour;
    bool passe;
  } cas[] = {{"706", "01", 5, true},   {"707", "13A", 10, true},  {"7065", "02 ", 7, true},
             {"705", "02 ", 7, false}, {"7071", "02 ", 7, false}, {"706", "00 ", 7, false},
             {"706", "13B", 7, false}, {"706", "", 7, false},     {"706", "02 ", 4, false},
             {"706", "02 ", 11, false}};
  LigneCritere ligne;
  for (const auto& c : cas) {
    ligne.court = c.compte;
    ligne.rubrique = c.rubrique;
    ligne.jour = c.jour;
    EXPECT_EQ(PasseCriteres(bornes, {}, {ligne}), c.passe) << c.compte << " " << c.rubrique << " " << c.jour;
    EXPECT_TRUE(PasseCriteres(tout, {}, {ligne}));
  }
  LigneCritere autre = ligne;
  ligne.jour = autre.jour = 7;
  ligne.court = "512";
  autre.rubrique = "TVA";
  EXPECT_FALSE(PasseCriteres(bornes, {}, {ligne, autre})) << "all bounds hold on one and the same line";
  EXPECT_FALSE(PasseCriteres(tout, {}, {})) << "no line";
}

TEST_F(Criteres, CeQueOkFaitDesChamps) {
  const auto normalise = [&](u16 edition, auto&& change) {
    App().Edition = edition;
    CritereEcriture c = CriteresParDefaut(App());
    c.Toutes = c.TousMontants = c.TousComptes = c.ToutesRubriques = c.TousJours = 0;
    c.Pointees = 1;
    c.MontantMax = 10;
    PoseTexte(c.CompteDe, "706");
    PoseTexte(c.CompteA, "707");
    PoseTexte(c.RubriqueDe, "01 ");
    PoseTexte(c.RubriqueA, "02 ");
    c.JourDe = 1;
    c.JourA = 31;
    change(c);
    NormaliseCriteres(App(), c);
    return std::string{c.Toutes ? 'T' : '-', c.TousMontants ? 'M' : '-', c.TousComptes ? 'C' : '-',
                       c.ToutesRubriques ? 'R' : '-', c.TousJours ? 'J' : '-'};
  };
  using C = CritereEcriture;
  EXPECT_EQ(normalise(2, [](C&) {}), "-----");
  EXPECT_EQ(normalise(2, [](C& c) { c.Pointees = 0; }), "T----");
  EXPECT_EQ(normalise(2, [](C& c) { c.Pointees = 0, c.NonRemises = 1; }), "-----");
  EXPECT_EQ(normalise(2, [](C& c) { c.Pointees = 0, c.Associees = 1; }), "T----")
      << "nothing is linked alone";
  EXPECT_EQ(normalise(1, [](C& c) { c.Pointees = 0, c.NonAssociees = 1; }), "-----");
  EXPECT_EQ(normalise(2, [](C& c) { c.MontantMax = 0; }), "-M---");
  EXPECT_EQ(normalise(2, [](C& c) { c.MontantMin = 5, c.MontantMax = 0; }), "-----");
  EXPECT_EQ(normalise(2, [](C& c) { c.CompteA[0] = 0; }), "--C--");
  EXPECT_EQ(normalise(2, [](C& c) { c.RubriqueDe[0] = 0; }), "---R-");
  EXPECT_EQ(normalise(2, [](C& c) { c.JourDe = 0; }), "----J");

  CritereEcriture c;
  EXPECT_FALSE(EstPartielle(c));
  for (u32 CritereEcriture::*tout :
       {&C::Toutes, &C::TousMontants, &C::TousComptes, &C::ToutesRubriques, &C::TousJours}) {
    c.*tout = 0;
    EXPECT_TRUE(EstPartielle(c));
    c.*tout = 1;
  }
}

TEST_F(Criteres, BornesEtMarquesPartagees) {
  const std::string banque = Long("512");
  LigneCritere debit, credit;
  debit.compte = banque;
  debit.court = "512";
  debit.euro = 100;
  debit.jour = credit.jour = 31;
  credit = debit;
  credit.credit = true;
  credit.rapprochee = true;
  CritereEcriture c;
  EXPECT_TRUE(PasseCriteres(c, {}, {debit, credit}));
  c.Toutes = 0;
  c.Rapprochees = 1;
  EXPECT_TRUE(PasseCriteres(c, {}, {debit, credit}));
  c.Rapprochees = 0;
  c.NonRapprochees = 1;
  EXPECT_FALSE(PasseCriteres(c, {}, {debit, credit})) << "one reconciled line excludes";
  // Every checked mark holds on one and the same line.
  debit.pointee = true;
  c.NonRapprochees = 0;
  c.Rapprochees = c.Pointees = 1;
  EXPECT_FALSE(PasseCriteres(c, {}, {debit, credit}));

  CritereEcriture montant;
  montant.TousMontants = 0;
  montant.MontantMax = 100;
  EXPECT_TRUE(PasseCriteres(montant, {}, {debit, credit})) << "the bound itself";
  montant.MontantMin = 100;
  EXPECT_TRUE(PasseCriteres(montant, banque, {debit, credit})) << "the debit alone";
  EXPECT_FALSE(PasseCriteres(montant, Long("531"), {debit, credit}));
  montant.MontantMin = 0;
  EXPECT_TRUE(PasseCriteres(montant, Long("531"), {debit, credit})) << "a lower bound of 0 lets 0 through";
  debit.euro = 0.1;
  LigneCritere autre = debit;
  autre.euro = 0.2;
  autre.franc = 7;
  montant.MontantMin = montant.MontantMax = 0.3;
  EXPECT_TRUE(PasseCriteres(montant, {}, {debit, autre})) << "sums are whole cents";
  montant.MontantEuro = 0;
  montant.MontantMin = montant.MontantMax = 7;
  EXPECT_TRUE(PasseCriteres(montant, {}, {debit, autre}));
}

}  // namespace
}  // namespace fenlor::test
