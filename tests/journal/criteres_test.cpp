#include "journal/criteres.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <set>

#include "core/btfiles.h"
#include "journal/cabinetmedical.h"
#include "journal/listejournal.h"
#include "store/texte1252.h"

namespace fenlor::test {
namespace {

using Hasard = std::mt19937;

int Tire(Hasard& h, int de, int a) { return std::uniform_int_distribution<int>(de, a)(h); }
bool Chance(Hasard& h, int surCent) { return Tire(h, 1, 100) <= surCent; }

/// All lines by entry, read one by one.
using Livres = std::map<u32, std::vector<Line>>;

Livres LitLivres(CabinetMedical& cabinet) {
  Livres livres;
  CLines lignes(cabinet.App(), cabinet.App().PathExercice);
  EXPECT_TRUE(lignes.OpenFile());
  constexpr u32 parEcriture = 4;
  for (bool lue = lignes.First(parEcriture); lue; lue = lignes.Next(parEcriture))
    livres[+lignes.Rec->Mouvement].push_back(*lignes.Rec);
  return livres;
}

i64 EnCents(f64 montant) { return std::llround(montant * 100); }

/// The criteria once more, step by step and reading whatever they need.
class Temoin {
 public:
  Temoin(CabinetMedical& cabinet, const Livres& livres, const DemandeListe& demande)
      : m_cabinet(cabinet), m_livres(livres), m_demande(demande) {}

  bool Montre(const std::vector<Line>& lignes) {
    const auto validee = std::count_if(lignes.begin(), lignes.end(), [](const Line& l) { return l.Validee; });
    const bool finale = validee == std::ssize(lignes);
    if (m_demande.mode == 1 && !finale) return false;
    if (m_demande.mode == 2 && finale) return false;
    if (!m_demande.filtre.empty()) {
      bool dessus = false;
      for (const Line& l : lignes) dessus = dessus || LitTexte(l.Compte) == m_demande.filtre;
      if (!dessus) return false;
    }
    bool marque = false, pasDeMarque = true, bornes = false;
    i64 somme = 0;
    for (const Line& l : lignes) {
      marque = marque || Marque(l);
      pasDeMarque = pasDeMarque && PasDeMarque(l);
      bornes = bornes || DansBornes(l);
      if (l.Sens == 0 && (m_demande.filtre.empty() || LitTexte(l.Compte) == m_demande.filtre))
        somme += EnCents(C().MontantEuro ? l.MontantEuro : l.MontantFranc);
    }
    const bool montant =
        C().TousMontants || (EnCents(C().MontantMin) <= somme && somme <= EnCents(C().MontantMax));
    return marque && pasDeMarque && bornes && montant;
  }

  MoisJournal Liste() {
    std::vector<std::pair<Date, u32>> ordre;
    for (const auto& [mouvement, lignes] : m_livres)
      if (lignes[0].Journal == m_demande.journal && lignes[0].Date >= m_demande.mois)
        ordre.emplace_back(+lignes[0].Date, mouvement);
    std::sort(ordre.begin(), ordre.end());
    MoisJournal mois;
    std::array<i64, 4> cents{};
    for (const auto& [date, mouvement] : ordre) {
      if ((date >> 8 & 255) != (m_demande.mois >> 8 & 255)) break;
      const std::vector<Line>& lignes = m_livres.at(mouvement);
      if (!Montre(lignes)) continue;
      mois.entrees.push_back({mouvement, static_cast<u32>(lignes.size())});
      for (const Line& l : lignes) {
        const bool filtre = !m_demande.filtre.empty();
        if (filtre && LitTexte(l.Compte) != m_demande.filtre) continue;
        if (filtre || l.Sens == 0) cents[0] += EnCents(l.MontantFranc), cents[2] += EnCents(l.MontantEuro);
        if (filtre || l.Sens != 0) cents[1] += EnCents(l.MontantFranc), cents[3] += EnCents(l.MontantEuro);
      }
    }
    const auto unite = [](i64 c) { return static_cast<f64>(c) / 100; };
    mois.totaux = {unite(cents[0]), unite(cents[1]), unite(cents[2]), unite(cents[3])};
    return mois;
  }

 private:
  const CritereEcriture& C() const { return m_demande.criteres; }

  bool Marque(const Line& l) const {
    if (C().Toutes) return true;
    if (C().Pointees && l.Pointee == 0) return false;
    if (C().Remises && l.Remise == 0) return false;
    if (C().Rapprochees && l.Rapprochee == 0) return false;
    return !(C().Associees && l.LienB < 0x10000);
  }
  bool PasDeMarque(const Line& l) const {
    if (C().Toutes) return true;
    if (C().NonPointees && l.Pointee != 0) return false;
    if (C().NonRemises && l.Remise != 0) return false;
    if (C().NonRapprochees && l.Rapprochee != 0) return false;
    return !(C().NonAssociees && l.LienB >= 0x10000);
  }
  bool DansBornes(const Line& l) {
    if (!C().TousComptes) {
      std::string court = LitTexte(l.Compte);
      while (court.size() > 1 && court.back() == '0') court.pop_back();
      if (court < std::string(C().CompteDe) || court > std::string(C().CompteA)) return false;
    }
    if (!C().ToutesRubriques) {
      const std::string rubrique = LitTexte(m_cabinet.LitCompte(LitTexte(l.Compte)).Rubrique);
      if (rubrique < std::string(C().RubriqueDe) || rubrique > std::string(C().RubriqueA)) return false;
    }
    const unsigned jour = l.Date & 255;
    return C().TousJours || (C().JourDe <= jour && jour <= C().JourA);
  }

  CabinetMedical& m_cabinet;
  const Livres& m_livres;
  const DemandeListe& m_demande;
};

class Criteres : public CabinetMedical {
 protected:
  void SetUp() override { Installe(); }

  void PoseRubriques() {
    CPlan plan(App(), App().PathExercice);
    ASSERT_TRUE(plan.OpenFile());
    const std::pair<const char*, const char*> rubriques[] = {
        {"706", "01 "}, {"7065", "02 "}, {"7070", "03 "}, {"6132", "13A"}, {"6063", "08 "}, {"4451", "TVA"}};
    for (const auto& [compte, rubrique] : rubriques) {
      PoseTexte(plan.Rec->Compte, Long(compte));
      ASSERT_TRUE(plan.Find(0)) << compte;
      const Position ancienne = plan.GetPos();
      Plan change = *plan.Rec;
      PoseTexte(change.Rubrique, rubrique);
      ASSERT_TRUE(plan.Delete(ancienne));
      *plan.Rec = change;
      ASSERT_TRUE(plan.Add());
    }
  }

  /// Entries of every kind from February to April, their lines marked at random.
  void Remplit(Hasard& h, int nombre) {
    constexpr const char* tresoreries[] = {"512", "514", "531"};
    constexpr const char* recettes[] = {"706", "7065", "7070"};
    constexpr const char* depenses[] = {"6132", "6063", "6154"};
    QVAPI& magasin = Magasin();
    const u32 plan = magasin.OpenPlan({}), journal = magasin.OpenJournal({});
    QVAPI::Unite unite(magasin);
    for (int i = 0; i < nombre; ++i) {
      const Date date =
          FaitDate(static_cast<unsigned>(Tire(h, 1, 28)), static_cast<unsigned>(Tire(h, 2, 4)), 2003);
      const f64 montant = Tire(h, -2000, 20000) / 100.0 + 0.01;
      u32 mouvement = 0;
      if (const int kind = Tire(h, 1, 5); kind == 1) {
        EXPECT_FALSE(Essaie(
            OD({{tresoreries[Tire(h, 0, 2)], {}, montant, 0}, {"108", {}, 0, montant - 1}, {"706", {}, 0, 1}},
               date)));
        mouvement = Faite.mouvement;
      } else {
        const bool recette = kind < 4;
        SaisieEcriture saisie = Ecriture(recette ? JournalRecettes : JournalDepenses,
                                         recette ? recettes[Tire(h, 0, 2)] : depenses[Tire(h, 0, 2)], montant,
                                         tresoreries[Tire(h, 0, 2)], date);
        if (Chance(h, 30)) {
          saisie.genre = GenreStandard;
          saisie.tresoreries = {{Long("512"), montant - 0.5}, {Long(tresoreries[Tire(h, 0, 2)]), 0.5}};
        }
        mouvement = Enregistre(saisie);
      }
      ASSERT_NE(mouvement, 0u);
      const u32 validee = Chance(h, 40), pointee = Chance(h, 30), melee = Chance(h, 10);
      const u32 lien = Chance(h, 20) ? 0x10000u : Chance(h, 20) ? 0xFFFFu : 0u;
      ChangeLignes(mouvement, [&](Line& ligne) {
        ligne.Validee = melee ? Chance(h, 50) : validee;
        ligne.Pointee = pointee;
        ligne.LienB = lien;
        ligne.Rapprochee = Chance(h, 30);
        ligne.Remise = Chance(h, 30);
      });
    }
    ASSERT_TRUE(unite.Valide());
    magasin.ClosePlan(plan);
    magasin.CloseJournal(journal);
  }

  CritereEcriture Tires(Hasard& h) {
    CritereEcriture c = CriteresParDefaut(App());
    if (Chance(h, 60)) {
      c.Toutes = 0;
      for (u32 CritereEcriture::*marque :
           {&CritereEcriture::Pointees, &CritereEcriture::Remises, &CritereEcriture::Rapprochees,
            &CritereEcriture::Associees, &CritereEcriture::NonPointees, &CritereEcriture::NonRemises,
            &CritereEcriture::NonRapprochees, &CritereEcriture::NonAssociees})
        c.*marque = Chance(h, 15);
    }
    if (Chance(h, 30)) {
      c.TousMontants = 0;
      c.MontantMin = Tire(h, 0, 10000) / 100.0;
      c.MontantMax = c.MontantMin + Tire(h, 0, 10000) / 100.0;
      c.MontantEuro = Chance(h, 50);
    }
    if (Chance(h, 30)) {
      c.TousComptes = 0;
      constexpr const char* bornes[] = {"108", "512", "6", "6063", "706", "7065", "707", "9"};
      const int de = Tire(h, 0, 7);
      PoseTexte(c.CompteDe, bornes[de]);
      PoseTexte(c.CompteA, bornes[Tire(h, de, 7)]);
    }
    if (Chance(h, 30)) {
      c.ToutesRubriques = 0;
      constexpr const char* bornes[] = {"01 ", "02 ", "08 ", "13A", "TVA"};
      const int de = Tire(h, 0, 4);
      PoseTexte(c.RubriqueDe, bornes[de]);
      PoseTexte(c.RubriqueA, bornes[Tire(h, de, 4)]);
    }
    if (Chance(h, 30)) {
      c.TousJours = 0;
      c.JourDe = static_cast<u32>(Tire(h, 1, 28));
      c.JourA = c.JourDe + static_cast<u32>(Tire(h, 0, 10));
    }
    return c;
  }
};

TEST_F(Criteres, CommeUnFiltreNaif) {
  for (const unsigned graine : {1u, 2u}) {
    Hasard h(graine);
    ASSERT_NO_FATAL_FAILURE(PoseRubriques());
    ASSERT_NO_FATAL_FAILURE(Remplit(h, 120));
    const Livres livres = LitLivres(*this);
    CPlan plan(App(), App().PathExercice);
    CLines lignes(App(), App().PathExercice);
    ASSERT_TRUE(plan.OpenFile() && lignes.OpenFile());
    std::size_t listees = 0, ecartees = 0;
    for (int essai = 0; essai < 250; ++essai) {
      DemandeListe demande;
      demande.journal = static_cast<i16>(Tire(h, 1, 3));
      demande.mois = FaitDate(1, static_cast<unsigned>(Tire(h, 2, 5)), 2003);
      demande.mode = static_cast<u16>(Tire(h, 1, 3));
      if (demande.journal != JournalOD && Chance(h, 40)) demande.filtre = Long(Chance(h, 50) ? "512" : "531");
      demande.criteres = Tires(h);
      SCOPED_TRACE(::testing::Message() << "graine " << graine << ", essai " << essai);

      Temoin temoin(*this, livres, demande);
      const MoisJournal attendu = temoin.Liste();
      MoisJournal mois;
      ASSERT_FALSE(ListeMois(App(), demande, mois));
      std::vector<u32> numeros, attendus;
      for (const EntreeListe& e : mois.entrees) numeros.push_back(e.mouvement);
      for (const EntreeListe& e : attendu.entrees) attendus.push_back(e.mouvement);
      ASSERT_EQ(numeros, attendus);
      for (std::size_t i = 0; i < numeros.size(); ++i)
        EXPECT_EQ(mois.entrees[i].lignes, attendu.entrees[i].lignes);
      const auto totaux = [](const TotauxListe& t) {
        return std::array{t.debitFranc, t.creditFranc, t.debitEuro, t.creditEuro};
      };
      EXPECT_EQ(totaux(mois.totaux), totaux(attendu.totaux));
      TotauxListe lus;
      ASSERT_FALSE(TotauxEntrees(App(), demande, numeros, lus));
      EXPECT_EQ(totaux(lus), totaux(attendu.totaux));
      const std::set<u32> presents(numeros.begin(), numeros.end());
      for (const auto& [mouvement, lues] : livres) {
        if (Chance(h, 80)) continue;
        bool listee = false;
        ASSERT_FALSE(EstListee(App(), demande, mouvement, listee));
        EXPECT_EQ(listee, presents.contains(mouvement)) << mouvement;
      }
      listees += numeros.size();
      if (numeros.empty()) ++ecartees;
    }
    // Neither everything nor nothing passed.
    EXPECT_GT(listees, 250u);
    EXPECT_GT(ecartees, 25u);
    EXPECT_LT(ecartees, 200u);
  }
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
  EXPECT_FALSE(PasseCriteres(c, {}, {})) << "no line";
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
  montant.MontantMin = montant.MontantMax = 0.3;
  EXPECT_TRUE(PasseCriteres(montant, {}, {debit, autre})) << "sums are whole cents";
}

}  // namespace
}  // namespace fenlor::test
