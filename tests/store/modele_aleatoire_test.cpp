// Random operations on the books and on a naive model of them, compared all the
// way. FENLOR_PAS sets the number of operations, FENLOR_GRAINE the seed.

#include <algorithm>
#include <random>

#include "store/comparaison_livres.h"

namespace fenlor::test {
namespace {

constexpr std::size_t EcrituresVisees = 600;

class Essai : public ComparaisonLivres {
 public:
  Essai(bool clesEnMemoire, unsigned graine) : ComparaisonLivres(clesEnMemoire), m_hasard(graine) {}

  /// One random operation, compared.
  void Pas(unsigned profondeur = 0) {
    ++m_pas;
    m_profondeur = profondeur;
    // Acts by their share of a hundred, when there are few entries and when there are enough.
    const struct {
      unsigned jusque[2];
      void (Essai::*acte)();
    } actes[] = {{{24, 8}, &Essai::AjouteTypee},     {{32, 12}, &Essai::AjouteOD},
                 {{44, 44}, &Essai::ChangeTypee},    {{56, 56}, &Essai::Retire},
                 {{61, 61}, &Essai::ChangeEnTete},   {{68, 68}, &Essai::ChangeLigne},
                 {{73, 73}, &Essai::Rapproche},      {{77, 77}, &Essai::Marque},
                 {{81, 81}, &Essai::RefaitOD},       {{86, 86}, &Essai::Refus},
                 {{89, 89}, &Essai::NumerosLibres},  {{94, 94}, &Essai::Unite},
                 {{96, 96}, &Essai::EchangeComptes}, {{97, 97}, &Essai::Recalcule},
                 {{98, 98}, &Essai::Rouvre}};
    const bool plein = m_modele.ecritures.size() > EcrituresVisees;
    const unsigned tirage = Entre(0, 99);
    const auto* acte = std::find_if(std::begin(actes), std::end(actes),
                                    [&](const auto& a) { return tirage < a.jusque[plein]; });
    if (acte != std::end(actes)) (this->*acte->acte)();
    if (m_pas % 25 == 0) CompareTotaux();
    if (m_pas % 1000 == 0 && profondeur == 0) CompareTout();
  }

  /// A unit of more lines than the engine keeps in memory, with inner units that
  /// are undone; `valide` keeps the whole.
  void GrandeUnite(bool valide) {
    const ModeleLivres avant = m_modele;
    {
      QVAPI::Unite unite(*m_livres);
      for (const bool interneValide : {true, true, true, false, true}) {
        const ModeleLivres avantInterne = m_modele;
        QVAPI::Unite interne(*m_livres);
        m_compare = false;
        for (int i = 0; i < 1500; ++i) Entre(0, 9) ? AjouteTypee() : Retire();
        m_compare = true;
        if (interneValide) {
          ASSERT_TRUE(interne.Valide());
        } else {
          m_modele = avantInterne;
        }
      }
      CompareTotaux();
      if (valide) {
        ASSERT_TRUE(unite.Valide());
      } else {
        m_modele = avant;
      }
    }
    CompareTout();
    NumerosLibres();
  }

  void Recalcule() {
    // Totals that are wrong beforehand: the recalculation owes nothing to them.
    if (Entre(0, 1)) {
      Plan plan = m_livres.Compte(Choix(m_comptes));
      const Position position = m_livres->ReadPlan(plan, 0);
      plan.CreditEuro += 12.34;
      plan.PersoFranc = -0.0;
      plan.RappDebitFranc = 1e-7;
      ASSERT_TRUE(m_livres->QVWriteRec(FichierComptes, position, &plan));
    }
    Statistiques stats;
    std::memset(&stats, 0xFF, sizeof stats);
    ASSERT_TRUE(m_livres->QVCalculCompta("", stats));
    const Statistiques attendues = m_modele.Compte();
    EXPECT_EQ(std::memcmp(&stats, &attendues, sizeof stats), 0);
    CompareTotaux();
  }

 private:
  unsigned Entre(unsigned bas, unsigned haut) {
    return std::uniform_int_distribution<unsigned>(bas, haut)(m_hasard);
  }
  bool Pile() { return Entre(0, 1) != 0; }
  template <class T>
  T Choix(const std::vector<T>& valeurs) {
    return valeurs[Entre(0, static_cast<unsigned>(valeurs.size()) - 1)];
  }
  u32 HasardDate() { return FaitDate(Entre(1, 31), Choix<unsigned>({1, 2, 12}), 2003); }

  SaisieModele HasardSaisie() {
    SaisieModele s;
    s.journal = Pile() ? 1 : 2;
    s.genre = Entre(0, 2) ? GenreSimple : GenreStandard;
    s.libelle = "Libelle " + std::to_string(Entre(1, 50));
    if (Entre(0, 5) == 0) s.piece = "F" + std::to_string(Entre(1, 99));
    if (Entre(0, 5) == 0) {
      s.tiers = "EDF";
      s.lienId = Entre(1, 1000);
      s.lienA = -static_cast<i32>(Entre(1, 1000));
    }
    s.compte = s.journal == 1 ? Choix<std::string>({"7060000000", "7080000000"})
                              : Choix<std::string>({"6061000000", "6251000000", "1080000000"});
    s.ligne = Entre(1, 300);
    s.date = HasardDate();
    s.euro = Pile();
    s.validee = Entre(0, 9) == 0;
    s.pointee = Entre(0, 9) == 0;
    i64 total = Entre(1, Entre(0, 3) ? 90000 : 12);
    if (Entre(0, 9) == 0) total = -total;
    const i64 part = Choix<i64>({total, total, 0, total * 6 / 10, total * 12 / 10});
    i64 taxe = 0;
    if (Entre(0, 2) == 0) {
      taxe = Choix<i64>({part, part * 164 / 1000});
      s.compteTaxe = s.journal == 1 ? "4457000000" : "4456000000";
      s.taux = 19.6;
    }
    s.total = DansLesDeux(total, s.euro);
    s.part = DansLesDeux(part, s.euro);
    s.taxe = DansLesDeux(taxe, s.euro);
    if (Entre(0, 3) == 0) s.comptePerso = Choix<std::string>({"1080000000", "5800000000"});
    i64 reste = total;
    const unsigned lignes = s.genre == GenreSimple ? 1 : Entre(1, 4);
    for (unsigned i = 1; i <= lignes; ++i) {
      TresorModele t;
      t.compte = Choix<std::string>({"5121000000", "5121000000", "5122000000", "5300000000"});
      const i64 montant = i == lignes ? reste : Choix<i64>({0, total / 3, total + 5});
      reste -= montant;
      t.montant = DansLesDeux(montant, s.euro);
      t.mode = Pile() ? PaiementAutre : PaiementCheque;
      t.rapprochee = Entre(0, 7) == 0;
      t.remise = Entre(0, 7) == 0;
      t.pointee = s.genre == GenreStandard && Entre(0, 9) == 0;
      s.tresor.push_back(t);
    }
    return s;
  }

  u32 HasardEcriture(const std::function<bool(const EcritureModele&)>& convient = nullptr) {
    if (m_modele.ecritures.empty()) return 0;
    const u32 depart = Entre(1, m_modele.ecritures.rbegin()->first);
    auto place = m_modele.ecritures.lower_bound(depart);
    for (std::size_t i = 0; i < m_modele.ecritures.size(); ++i, ++place) {
      if (place == m_modele.ecritures.end()) place = m_modele.ecritures.begin();
      if (!convient || convient(place->second)) return place->first;
    }
    return 0;
  }
  u32 HasardGenre(bool od) {
    return HasardEcriture([od](const EcritureModele& e) { return (e.lignes[0].genre == GenreOD) == od; });
  }

  void AjouteTypee() {
    const SaisieModele s = HasardSaisie();
    u32 voulu = 0;
    if (Entre(0, 9) == 0)
      voulu = Pile() ? m_modele.MouvementLibre() + Entre(0, 5) : Entre(1, m_modele.MouvementLibre());
    const bool pris = m_modele.ecritures.contains(voulu);
    u32 donne = 0;
    if (s.genre == GenreSimple) {
      EcrSimple rec = Simple(s);
      rec.Mouvement = voulu;
      donne = m_livres->AddEcrSimple(m_ex, rec);
      EXPECT_EQ(+rec.Mouvement, donne ? donne : voulu);
    } else {
      EcrStandard rec = Standard(s);
      rec.Mouvement = voulu;
      donne = m_livres->AddEcrStandard(m_ex, rec);
      m_livres->LibereLignes(rec);
    }
    ASSERT_EQ(donne, pris ? 0 : voulu ? voulu : m_modele.MouvementLibre());
    if (donne) m_modele.ecritures[donne] = {s, m_modele.Deplie(s)};
    CompareEcriture(pris ? voulu : donne);
  }

  void ChangeTypee() {
    const u32 mouvement = HasardGenre(false);
    if (!mouvement) return;
    const SaisieModele s = HasardSaisie();
    EcritureModele& ecriture = m_modele.ecritures[mouvement];
    if (s.genre == GenreSimple) {
      EcrSimple rec = Simple(s);
      ASSERT_TRUE(m_livres->UpdateEcrSimple(m_ex, mouvement, rec));
    } else {
      EcrStandard rec = Standard(s);
      ASSERT_TRUE(m_livres->UpdateEcrStandard(m_ex, mouvement, rec));
      m_livres->LibereLignes(rec);
    }
    ecriture = {s, m_modele.Change(ecriture.lignes, s)};
    CompareEcriture(mouvement);
  }

  void AjouteLigneOD(u32 mouvement, const LigneModele& l) {
    Line line{};
    line.Mouvement = mouvement;
    line.Journal = l.journal;
    line.Ligne = l.ligne;
    line.Date = l.date;
    line.DateLigne = l.dateLigne;
    line.SaisieEuro = l.euro;
    PoseLien(line, l.lienId);
    line.LienA = l.lienA;
    line.Validee = l.validee;
    line.Pointee = l.pointee;
    line.Rapprochee = l.rapprochee;
    line.Remise = l.remise;
    line.DateRemise = l.dateRemise;
    line.RappDate = l.rappDate;
    line.RappDateValeur = l.rappDateValeur;
    line.RappFranc = EnUnites(l.rapp[0]);
    line.RappEuro = EnUnites(l.rapp[1]);
    line.RappSens = l.rappCredit;
    line.Rang = 12345;
    PoseTexte(line.Libelle, l.libelle);
    PoseTexte(line.Tiers, l.tiers);
    PoseTexte(line.Designation, l.designation);
    PoseTexte(line.Compte, l.compte);
    PoseTexte(line.RappCompte, l.rappCompte);
    PoseTexte(line.RappLibelle, l.rappLibelle);
    line.ModePaiement = l.mode;
    const bool inverse = Pile();
    line.Sens = l.credit != inverse;
    line.MontantFranc = EnUnites(inverse ? -l.montant[0] : l.montant[0]);
    line.MontantEuro = EnUnites(inverse ? -l.montant[1] : l.montant[1]);
    ASSERT_NE(m_livres->AddLines(m_ex, line), 0u);
    m_modele.ecritures[mouvement].lignes.push_back(l);
  }

  LigneModele HasardLigneOD() {
    LigneModele l;
    l.journal = 3;
    l.role = RoleLibre;
    l.libelle = "OD";
    l.designation = "Ligne " + std::to_string(Entre(1, 9));
    l.ligne = Entre(1, 300);
    l.date = l.dateLigne = HasardDate();
    l.euro = Pile();
    l.compte = Choix(m_comptes);
    l.typeCompte = m_modele.comptes[l.compte].type;
    l.credit = Pile();
    l.montant = DansLesDeux(Entre(1, 5000), l.euro);
    l.rapprochee = Entre(0, 5) == 0;
    l.remise = Entre(0, 5) == 0;
    return l;
  }

  void AjouteOD() {
    u32 mouvement = Entre(0, 3) ? 0 : HasardGenre(true);
    if (!mouvement) {
      mouvement = m_livres->GetFreeMouvementsID(m_ex, 3);
      ASSERT_EQ(mouvement, m_modele.MouvementLibre());
    }
    for (unsigned n = Entre(1, 4); n > 0; --n) AjouteLigneOD(mouvement, HasardLigneOD());
    CompareEcriture(mouvement);
  }

  /// As the form of the operations diverses saves.
  void RefaitOD() {
    const u32 mouvement = HasardGenre(true);
    if (!mouvement) return;
    QVAPI::Unite unite(*m_livres);
    std::vector<LigneModele> lignes = m_modele.ecritures[mouvement].lignes;
    ASSERT_TRUE(m_livres->RemoveMouvements(m_ex, mouvement));
    m_modele.ecritures.erase(mouvement);
    std::shuffle(lignes.begin(), lignes.end(), m_hasard);
    for (const LigneModele& l : lignes) {
      if (l.montant == Cents{}) continue;
      AjouteLigneOD(mouvement, l);
    }
    if (Pile() || !m_modele.ecritures.contains(mouvement)) AjouteLigneOD(mouvement, HasardLigneOD());
    ASSERT_TRUE(unite.Valide());
    CompareEcriture(mouvement);
  }

  void Retire() {
    const u32 mouvement = Entre(0, 4) ? HasardEcriture() : m_modele.MouvementLibre() - 1;
    if (!mouvement) return;
    const unsigned par = Entre(0, 2);
    ASSERT_TRUE(par == 0   ? m_livres->RemoveMouvements(m_ex, mouvement)
                : par == 1 ? m_livres->RemoveEcrSimple(m_ex, mouvement)
                           : m_livres->RemoveEcrStandard(m_ex, mouvement));
    m_modele.ecritures.erase(mouvement);
    CompareEcriture(mouvement);
  }

  void ChangeEnTete() {
    const u32 mouvement = HasardEcriture();
    if (!mouvement) return;
    Mouvement enTete{};
    ASSERT_EQ(m_livres->ReadMouvements(m_ex, mouvement, enTete), mouvement);
    EcritureModele& ecriture = m_modele.ecritures[mouvement];
    enTete.Date = HasardDate();
    enTete.Ligne = Entre(1, 300);
    if (Pile()) PoseTexte(enTete.Libelle, "Autre");
    if (Entre(0, 3) == 0) PoseLien(enTete, Entre(0, 9));
    ASSERT_TRUE(m_livres->UpdateMouvements(m_ex, mouvement, enTete));
    for (LigneModele& l : ecriture.lignes) {
      l.date = l.dateLigne = enTete.Date;
      l.ligne = enTete.Ligne;
      l.libelle = LitTexte(enTete.Libelle);
      l.lienId = enTete.LienId;
      l.lienA = enTete.LienA;
      l.tiers = LitTexte(enTete.Tiers);
      l.validee = enTete.Validee != 0;
      l.pointee = enTete.Pointee != 0;
    }
    CompareEcriture(mouvement);
  }

  /// Position of one line of an entry.
  Position HasardLigne(u32 mouvement, std::size_t& rang) {
    const std::vector<Position> positions = m_livres->LignesMouvement(m_ex, mouvement);
    EXPECT_EQ(positions.size(), m_modele.ecritures[mouvement].lignes.size());
    rang = Entre(0, static_cast<unsigned>(positions.size()) - 1);
    return positions[rang];
  }

  void ChangeLigne() {
    const u32 mouvement = HasardEcriture();
    if (!mouvement) return;
    std::size_t rang = 0;
    const Position position = HasardLigne(mouvement, rang);
    LigneModele& l = m_modele.ecritures[mouvement].lignes[rang];
    Line line{};
    ASSERT_TRUE(m_livres->ReadLines(m_ex, position, line));
    switch (Entre(0, l.genre == GenreOD ? 4 : 2)) {
      case 0:
        l.rapprochee = !l.rapprochee;
        line.Rapprochee = l.rapprochee;
        break;
      case 1:
        l.remise = !l.remise;
        l.dateRemise = l.remise ? HasardDate() : 0;
        line.Remise = l.remise;
        line.DateRemise = l.dateRemise;
        break;
      case 2:
        l.validee = false;
        line.Validee = 0;
        break;
      case 3:
        l.compte = Choix(m_comptes);
        l.typeCompte = m_modele.comptes[l.compte].type;
        PoseTexte(line.Compte, l.compte);
        break;
      default:
        l.montant = DansLesDeux(Entre(0, 5000), l.euro);
        line.MontantFranc = EnUnites(l.montant[0]);
        line.MontantEuro = EnUnites(l.montant[1]);
        l.date = line.Date = HasardDate();
        l.ligne = line.Ligne = Entre(1, 300);
    }
    ASSERT_TRUE(m_livres->UpdateLines(m_ex, position, line));
    CompareEcriture(mouvement);
  }

  void Rapproche() {
    const u32 mouvement = HasardEcriture();
    if (!mouvement) return;
    std::size_t rang = 0;
    const Position position = HasardLigne(mouvement, rang);
    LigneModele& l = m_modele.ecritures[mouvement].lignes[rang];
    Banque operation{};
    l.rappCompte = "5121000000";
    l.rappLibelle = "Releve";
    l.rappDate = operation.Date = HasardDate();
    l.rappDateValeur = operation.DateValeur = HasardDate();
    l.rapp = {Entre(1, 999), Entre(1, 999)};
    l.rappCredit = Pile();
    l.rapprochee = true;
    PoseTexte(operation.Compte, l.rappCompte);
    PoseTexte(operation.Libelle, l.rappLibelle);
    operation.MontantFranc = EnUnites(l.rapp[0]);
    operation.MontantEuro = EnUnites(l.rapp[1]);
    operation.Sens = l.rappCredit;
    ASSERT_TRUE(m_livres->RappLines(m_ex, position, operation));
    CompareEcriture(mouvement);
  }

  void Marque() {
    const u32 mouvement = HasardEcriture();
    if (!mouvement) return;
    std::vector<LigneModele>& lignes = m_modele.ecritures[mouvement].lignes;
    if (Pile()) {
      const bool etait =
          std::any_of(lignes.begin(), lignes.end(), [](const LigneModele& l) { return l.pointee; });
      ASSERT_TRUE(m_livres->ReverseMarkMouvements(m_ex, mouvement));
      for (LigneModele& l : lignes) l.pointee = !etait;
    } else {
      const u32 valide = Entre(0, 1);
      ASSERT_TRUE(Pile() ? m_livres->ValidMouvements(m_ex, mouvement, valide)
                         : m_livres->ValidEcrSimple(m_ex, mouvement, valide));
      for (LigneModele& l : lignes) l.validee = valide != 0;
    }
    CompareEcriture(mouvement);
  }

  void Refus() {
    const u32 mouvement = HasardGenre(false);
    SaisieModele s = HasardSaisie();
    s.genre = GenreSimple;
    s.tresor.resize(1);
    s.tresor[0].montant = s.total;
    const unsigned sorte = Entre(0, 2);
    EcrSimple rec = Simple(s);
    if (sorte == 0) PoseTexte(rec.CompteTresorerie, "5199999999");
    if (sorte == 1) rec.MontantFranc = rec.MontantEuro = 0;
    if (sorte == 2) rec.MontantFranc = 1e15;
    EXPECT_EQ(m_livres->AddEcrSimple(m_ex, rec), 0u);
    EXPECT_FALSE(m_livres->UpdateEcrSimple(m_ex, mouvement, rec));
    EXPECT_FALSE(m_livres->RemoveMouvements(m_ex, m_modele.MouvementLibre()));
    if (const u32 od = HasardGenre(true)) {
      rec = Simple(s);
      EXPECT_FALSE(m_livres->UpdateEcrSimple(m_ex, od, rec));
      CompareEcriture(od);
    }
    if (mouvement) CompareEcriture(mouvement);
  }

  void NumerosLibres() {
    EXPECT_EQ(m_livres->GetFreeMouvementsID(m_ex, 1), m_modele.MouvementLibre());
    for (const i16 journal : {i16{1}, i16{2}, i16{3}}) {
      for (const unsigned mois : {1u, 2u, 3u, 12u}) {
        const u32 date = FaitDate(Entre(1, 28), mois, 2003);
        EXPECT_EQ(m_livres->GetFreeJournalLine(m_ex, static_cast<u16>(journal), "", date),
                  m_modele.LigneLibre(journal, date));
      }
    }
  }

  void Rouvre() {
    if (m_profondeur != 0 || Entre(0, 19) != 0) return;
    m_livres.Rouvre();
    CompareTout();
  }

  void Unite() {
    const unsigned profondeur = m_profondeur;
    if (profondeur == 3) return;
    const ModeleLivres avant = m_modele;
    {
      QVAPI::Unite unite(*m_livres);
      for (unsigned n = Entre(1, 6); n > 0; --n) {
        Pas(profondeur + 1);
        if (testing::Test::HasFatalFailure()) return;
      }
      if (Pile()) {
        ASSERT_TRUE(unite.Valide());
        return;
      }
    }
    m_modele = avant;
    NumerosLibres();
    CompareTotaux();
    if (const u32 mouvement = HasardEcriture()) CompareEcriture(mouvement);
    if (Entre(0, 9) == 0) CompareTout();
  }

  /// Two accounts change places in the file; while they are away nothing can be
  /// entered on them.
  void EchangeComptes() {
    std::vector<std::string> deux = m_comptes;
    std::shuffle(deux.begin(), deux.end(), m_hasard);
    deux.resize(2);
    QVAPI::Unite unite(*m_livres);
    std::vector<Plan> plans;
    for (const std::string& numero : deux) {
      Plan plan = m_livres.Compte(numero);
      ASSERT_TRUE(m_livres->DeletePlan(m_livres->ReadPlan(plan, 0)));
      plans.push_back(plan);
    }
    EXPECT_EQ(
        m_livres->AddLines(m_ex, LigneOD(m_modele.MouvementLibre(), HasardDate(), deux[0].c_str(), true, 1)),
        0u);
    for (const Plan& plan : plans) m_livres.AjoutePlan(plan);
    ASSERT_TRUE(unite.Valide());
  }

  std::mt19937 m_hasard;
  unsigned m_pas = 0, m_profondeur = 0;
};

unsigned DepuisEnvironnement(const char* nom, unsigned defaut) {
  const char* texte = std::getenv(nom);
  return texte && *texte ? static_cast<unsigned>(std::strtoul(texte, nullptr, 10)) : defaut;
}

void Joue(bool clesEnMemoire) {
  const unsigned pas = DepuisEnvironnement("FENLOR_PAS", 3000);
  const unsigned graine = DepuisEnvironnement("FENLOR_GRAINE", 20030315);
  Essai essai(clesEnMemoire, graine);
  for (unsigned i = 0; i < pas; ++i) {
    SCOPED_TRACE("step " + std::to_string(i) + ", seed " + std::to_string(graine));
    essai.Pas();
    if (testing::Test::HasFailure()) return;
  }
  essai.Recalcule();
  essai.CompareTout();
}

TEST(ModeleAleatoire, UnitePlusGrandeQueLaMemoire) {
  for (const bool clesEnMemoire : {true, false}) {
    Essai essai(clesEnMemoire, 7);
    for (int i = 0; i < 300; ++i) essai.Pas();
    essai.GrandeUnite(false);
    essai.GrandeUnite(true);
    if (testing::Test::HasFailure()) return;
    for (int i = 0; i < 300; ++i) essai.Pas();
    essai.Recalcule();
    essai.CompareTout();
  }
}

TEST(ModeleAleatoire, ClesEnMemoire) { Joue(true); }
TEST(ModeleAleatoire, ClesLmdb) { Joue(false); }

}  // namespace
}  // namespace fenlor::test
