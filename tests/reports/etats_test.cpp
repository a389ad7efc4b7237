// Journal, balance, centralisation, VAT and reconciled lines: golden reports of the small book, and sums over
// random books.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <random>

#include "core/valeurs.h"
#include "journal/cabinetmedical.h"
#include "master/comptes.h"
#include "outils/systemefautif.h"
#include "pages/textes.h"
#include "reports/etatbalance.h"
#include "reports/etatcentralisation.h"
#include "reports/etatjournal.h"
#include "reports/etatrapprochement.h"
#include "reports/etattva.h"
#include "reports/livresetat.h"
#include "reports/petitlivre.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

using test::AffichageLivre;
using test::DemandeurScript;
using test::Long;
using test::TexteEtat;

class JournalDeTest : public CEtatJournalDoc {
 public:
  JournalDeTest(CFenlorApp& app, DemandeurCriteres& demandeur, DemandeListe demande, bool comptable)
      : CEtatJournalDoc(app, demandeur) {
    SetCriteres(demande, comptable);
  }
};

// ------------------------------------------------------------ Golden reports

class EtatsTest : public test::PetitLivre {
 protected:
  DemandeListe Mois(i16 journal, unsigned mois, const std::string& filtre = {}) {
    DemandeListe demande;
    demande.journal = journal;
    demande.mois = Le(1, mois);
    demande.filtre = filtre.empty() ? filtre : Long(filtre);
    demande.mode = ListeToutes;
    return demande;
  }
  /// Takes the accounts of all other classes off the chart.
  void GardeComptes(std::string_view classes) {
    CPlan plan(App(), {});
    ASSERT_TRUE(plan.OpenFile());
    for (bool suite = plan.First(0); suite; suite = plan.Next(0))
      if (classes.find(plan.Rec->Compte[0]) == std::string_view::npos) {
        ASSERT_TRUE(plan.Delete(plan.GetPos()));
      }
  }
};

TEST_F(EtatsTest, InFranc) {
  Installe(AffichageLivre::Franc);
  VerifieEtat<CEtatBalanceDoc>("balance-franc");
  EXPECT_EQ(Demandeur.Nombre, 0u) << "the balance asks nothing";
  VerifieEtat<CEtatCentralisationDoc>("centralisation-franc",
                                      [](CriteresEtat& c) { c.compte = Long("512"); });
  EXPECT_EQ(Demandeur.Forme, FormeCriteres::Compte);
  EXPECT_EQ(Demandeur.Comptes, unsigned{MasqueTous});
  VerifieEtat<CEtatCentralisationDoc>("centralisation-montant-franc", [](CriteresEtat& c) {
    c.compte = Long("512");
    c.affichage = AffichageMontant;
  });
  VerifieEtat<CEtatTVADoc>("tva-franc");
  EXPECT_EQ(Demandeur.Forme, FormeCriteres::Periode);
  VerifieEtat<CEtatRapprochementDoc>("rapprochement-franc");
  EXPECT_EQ(Demandeur.Forme, FormeCriteres::Periode);
}

TEST_F(EtatsTest, InEuro) {
  Installe(AffichageLivre::Euro);
  VerifieEtat<CEtatBalanceDoc>("balance-euro");
  VerifieEtat<CEtatCentralisationDoc>("centralisation-euro");
  VerifieEtat<CEtatCentralisationDoc>("centralisation-montant-euro", [](CriteresEtat& c) {
    c.compte = Long("4451");
    c.affichage = AffichageMontant;
  });
  VerifieEtat<CEtatTVADoc>("tva-euro");
  VerifieEtat<CEtatRapprochementDoc>("rapprochement-euro");
}

TEST_F(EtatsTest, InBothCurrencies) {
  Installe(AffichageLivre::Double);
  VerifieEtat<CEtatBalanceDoc>("balance-double");
  VerifieEtat<CEtatCentralisationDoc>("centralisation-double",
                                      [](CriteresEtat& c) { c.compte = Long("512"); });
  VerifieEtat<CEtatCentralisationDoc>("centralisation-montant-double", [](CriteresEtat& c) {
    c.compte = Long("512");
    c.affichage = AffichageMontant;
  });
  VerifieEtat<CEtatTVADoc>("tva-double");
  VerifieEtat<CEtatRapprochementDoc>("rapprochement-double");
}

TEST_F(EtatsTest, JournalAlwaysInBothCurrencies) {
  Installe(AffichageLivre::Euro);
  VerifieEtat<JournalDeTest>("journal-recettes", {}, Mois(JournalRecettes, 1), false);
  VerifieEtat<JournalDeTest>("journal-recettes-lignes", {}, Mois(JournalRecettes, 1), true);
  VerifieEtat<JournalDeTest>("journal-recettes-512", {}, Mois(JournalRecettes, 2, "512"), false);
  VerifieEtat<JournalDeTest>("journal-recettes-512-lignes", {}, Mois(JournalRecettes, 2, "512"), true);
  VerifieEtat<JournalDeTest>("journal-od", {}, Mois(JournalOD, 2, "512"), false);
  EXPECT_EQ(Demandeur.Nombre, 0u);

  DemandeListe partielle = Mois(JournalDepenses, 1, "599");
  partielle.criteres.Toutes = 0;
  partielle.criteres.Pointees = 1;
  VerifieEtat<JournalDeTest>("journal-depenses-partiel", {}, partielle, false);
  JournalDeTest etat(App(), Demandeur, partielle, false);
  ASSERT_TRUE(etat.OnNewDocument());
  EXPECT_EQ(etat.TitreDocument(), "Ecritures de dépenses"_w);
}

TEST_F(EtatsTest, EmptyBooks) {
  Installe(AffichageLivre::Euro, false);
  VerifieEtat<CEtatTVADoc>("tva-vide");
  VerifieEtat<CEtatRapprochementDoc>("rapprochement-vide");
  VerifieEtat<JournalDeTest>("journal-vide", {}, Mois(JournalOD, 1), true);
  VerifieEtat<CEtatCentralisationDoc>("centralisation-vide", [](CriteresEtat& c) { c.compte = Long("999"); });
  GardeComptes("");
  VerifieEtat<CEtatBalanceDoc>("balance-vide");
}

TEST_F(EtatsTest, ClassesUpToFiveMakeTheBalanceSheet) {
  Installe(AffichageLivre::Euro);
  GardeComptes("145");
  VerifieEtat<CEtatBalanceDoc>("balance-jusqua-5");
  GardeComptes("14");
  VerifieEtat<CEtatBalanceDoc>("balance-sans-5");
}

TEST_F(EtatsTest, TheSideOfABalanceIsThatOfTheFranc) {
  Installe(AffichageLivre::Euro, false);
  CPlan plan(App(), {});
  ASSERT_TRUE(plan.OpenFile());
  PoseTexte(plan.Rec->Compte, Long("706"));
  ASSERT_TRUE(plan.Find(0));
  plan.Rec->DebitFranc = plan.Rec->CreditFranc = 100;
  plan.Rec->DebitEuro = 15.24;
  plan.Rec->CreditEuro = 15.25;
  ASSERT_TRUE(plan.Update());
  CEtatBalanceDoc etat(App(), Demandeur);
  ASSERT_TRUE(etat.OnNewDocument());
  EXPECT_NE(TexteEtat(etat).find(
                "\\R07715,24 \x80\\T078\\R09715,25 \x80\\T098\\R117-0,01 \x80\\T118\\R144\n\\S002"),
            std::string::npos);
}

TEST_F(EtatsTest, LongTextsAndLargeAmountsStayOnTheSheet) {
  Installe(AffichageLivre::Double);
  const std::string longue(80, 'W');
  ASSERT_TRUE(PoseCompte("4457", Tva, "TVALONGU", longue) &&
              PoseCompte("5129", Tresorerie, "BANQUELO", longue, 1));
  CLines lignes(App(), {});
  ASSERT_TRUE(lignes.OpenFile());
  QVAPI::Unite unite(Magasin());
  for (unsigned i = 0; i < 80; ++i) {
    SaisieOD od;
    od.date = Le(1 + i % 28, 6);
    od.libelle = longue;
    od.lignes = {{Long("4457"), longue, 9999999999.99, 0}, {Long("5129"), longue, 0, 9999999999.99}};
    const u32 mouvement = EnregistreOD(App(), od).mouvement;
    ASSERT_NE(mouvement, 0u);
    ChangeLignes(mouvement, [](Line& l) { l.Rapprochee = 1; });
  }
  ASSERT_TRUE(unite.Valide());
  const auto dessine = [](CEtatComptable&& etat) {
    ASSERT_TRUE(etat.OnNewDocument());
    VerifiePages(etat, VersUtf8(etat.TitreDocument()));
  };
  dessine(CEtatBalanceDoc(App(), Demandeur));
  dessine(CEtatCentralisationDoc(App(), Demandeur));
  dessine(CEtatTVADoc(App(), Demandeur));
  dessine(CEtatRapprochementDoc(App(), Demandeur));
  dessine(JournalDeTest(App(), Demandeur, Mois(JournalOD, 6), true));
  dessine(JournalDeTest(App(), Demandeur, Mois(JournalOD, 6), false));
}

TEST_F(EtatsTest, LinesCountByTheirOwnKindAndDate) {
  Installe(AffichageLivre::Euro);
  const u32 mouvement = Ajoute(JournalRecettes, Le(31, 3), "706", 80, 0, 0, "512", "Avril");
  ChangeLignes(mouvement, [&](Line& l) {
    l.DateLigne = Le(1, 4);
    if (l.TypeCompte == Recette) l.Rapprochee = 1;
  });
  const auto lignes = [&](Date du, Date au) {
    Demandeur.Change = [=](CriteresEtat& c) { c.du = du, c.au = au; };
    CEtatRapprochementDoc etat(App(), Demandeur);
    EXPECT_TRUE(etat.OnNewDocument());
    const std::string texte = TexteEtat(etat);
    return std::count(texte.begin(), texte.end(), '\x80');
  };
  EXPECT_EQ(lignes(Le(1, 1), Le(31, 12)), 4) << "the line of account 706 is marked, and is none";
  ChangeLignes(mouvement, [&](Line& l) { l.Rapprochee = 1; });
  EXPECT_EQ(lignes(Le(31, 3), Le(31, 3)), 0);
  EXPECT_EQ(lignes(Le(1, 4), Le(1, 4)), 2);
  EXPECT_EQ(lignes(Le(2, 4), Le(1, 4)), 0) << "a period turned round";
}

// ------------------------------------------------------------ Random books

using Colonnes = std::vector<f64>;

/// Amounts of a line of markup: what follows each "\Rnnn", a debit balance negative.
Colonnes Montants(const std::string& ligne) {
  Colonnes lus;
  for (std::size_t p = ligne.find("\\R"); p != std::string::npos; p = ligne.find("\\R", p + 1)) {
    const std::string texte = ligne.substr(p + 5, ligne.find('\\', p + 5) - p - 5);
    lus.push_back(texte.starts_with("D ") ? -TexteVersMontant(texte.substr(2)) : TexteVersMontant(texte));
  }
  return lus;
}

bool Contient(const std::string& texte, const char* morceau) {
  return texte.find(morceau) != std::string::npos;
}

class LivresAleatoires : public test::CabinetMedical {
 protected:
  explicit LivresAleatoires(Systeme* systeme = nullptr)
      : CabinetMedical(test::Cles::Memoire, 256u << 10, systeme) {}

  void Remplit(AffichageLivre affichage, unsigned graine, int ecritures) {
    m_affichage = affichage;
    m_euro = affichage != AffichageLivre::Franc;
    m_annee = affichage == AffichageLivre::Franc ? 2001 : affichage == AffichageLivre::Euro ? 2003 : 2002;
    Installe(std::to_string(m_annee), m_euro, true);
    App().AfficherDouble = affichage == AffichageLivre::Double;
    std::mt19937 hasard(graine);
    const auto choix = [&](const char* a, const char* b, const char* c) {
      return std::array{a, b, c}[hasard() % 3];
    };
    CPlan plan(App(), {});
    CLines lignes(App(), {});
    ASSERT_TRUE(plan.OpenFile() && lignes.OpenFile());
    QVAPI::Unite unite(Magasin());
    for (int i = 0; i < ecritures; ++i) {
      const Date date = FaitDate(1 + hasard() % 28, 1 + hasard() % 12, m_annee);
      const f64 ttc = static_cast<f64>(1 + hasard() % 999999) / 100;
      const char* const tresorerie = choix("512", "514", "531");
      u32 mouvement = 0;
      if (hasard() % 5 == 0) {
        SaisieOD od = OD({{"512", {}, ttc, 0}, {tresorerie, {}, 0, ttc}}, date);
        od.euro = m_euro;
        mouvement = EnregistreOD(App(), od).mouvement;
      } else {
        const bool recette = hasard() % 2 != 0;
        const char* const compte = recette ? choix("706", "7065", "7070") : choix("6132", "6063", "6154");
        SaisieEcriture s =
            Ecriture(recette ? JournalRecettes : JournalDepenses, compte, ttc, tresorerie, date);
        s.euro = m_euro;
        mouvement = Enregistre(s);
      }
      ASSERT_NE(mouvement, 0u);
      if (hasard() % 3 == 0) ChangeLignes(mouvement, [](Line& l) { l.Rapprochee = 1; });
    }
    ASSERT_TRUE(unite.Valide());
  }

  /// Sums over the lines that are wanted, read in no order.
  SommesEtat Somme(const std::function<bool(const Line&)>& compte) {
    SommesEtat sommes;
    CLines lignes(App(), {});
    EXPECT_TRUE(lignes.OpenFile());
    EXPECT_TRUE(Magasin().QVParcours(FichierJournal, [&](Position, const void* rec) {
      const Line& ligne = *static_cast<const Line*>(rec);
      if (compte(ligne)) sommes.Ajoute(ligne);
      return true;
    }));
    return sommes;
  }

  /// The columns of a report: the first four, or debit and credit, of which `soldes` adds the balance.
  Colonnes Attendues(const SommesEtat& s, bool soldes = false) const {
    if (m_affichage == AffichageLivre::Double)
      return {s.debitFranc, s.debitEuro, s.creditFranc, s.creditEuro};
    const f64 debit = m_euro ? s.debitEuro : s.debitFranc, credit = m_euro ? s.creditEuro : s.creditFranc;
    if (!soldes) return {debit, credit};
    return {debit, credit, std::max(debit - credit, 0.0), std::max(credit - debit, 0.0)};
  }
  static void Egales(const Colonnes& lues, const Colonnes& attendues, const std::string& quoi) {
    ASSERT_GE(lues.size(), attendues.size()) << VersUtf8(quoi);
    for (std::size_t i = 0; i < attendues.size(); ++i)
      EXPECT_NEAR(lues[i], attendues[i], 0.001) << VersUtf8(quoi) << ", column " << i;
  }

  static std::vector<std::string> Rangees(CEtatDoc&& etat) {
    EXPECT_TRUE(etat.OnNewDocument());
    const std::string texte = TexteEtat(etat);
    std::vector<std::string> rangees;
    for (std::size_t debut = 0, fin; debut < texte.size(); debut = fin + 1) {
      fin = std::min(texte.find('\n', debut), texte.size());
      rangees.push_back(texte.substr(debut, fin - debut));
    }
    return rangees;
  }
  /// The line of totals, before "\X".
  static const std::string& Total(const std::vector<std::string>& rangees) {
    return rangees.at(rangees.size() - 2);
  }

  DemandeurScript Demandeur;
  AffichageLivre m_affichage{};
  unsigned m_annee = 0;
  bool m_euro = true;
};

class LivresParAffichage : public LivresAleatoires, public ::testing::WithParamInterface<AffichageLivre> {
 protected:
  void SetUp() override { Remplit(GetParam(), 20 + static_cast<unsigned>(GetParam()), 60); }
};

TEST_P(LivresParAffichage, BalanceIsTheSumOfTheLines) {
  const auto rangees = Rangees(CEtatBalanceDoc(App(), Demandeur));
  SommesEtat lus;  // of the accounts of the section
  for (const std::string& r : rangees) {
    const std::size_t compte = r.find("\\M010\\N010") + 10, fin = r.find("\\T025");
    if (fin != std::string::npos) {
      const std::string longue = Long(r.substr(compte, fin - compte));
      const SommesEtat s = Somme([&](const Line& l) { return LitTexte(l.Compte) == longue; });
      Egales(Montants(r), Attendues(s, true), r);
      lus.Ajoute(s);
    } else if (Contient(r, "BTotal  ")) {
      Egales(Montants(r), Attendues(lus, true), r);
      lus = {};
    }
  }
  const SommesEtat tout = Somme([](const Line&) { return true; });
  Egales(Montants(Total(rangees)), Attendues(tout, true), Total(rangees));

  // What the windows of the accounts show comes to the same.
  CPlan plan(App(), {});
  ASSERT_TRUE(plan.OpenFile());
  f64 debit = 0, credit = 0;
  for (bool trouve = plan.First(0); trouve; trouve = plan.Next(0)) {
    debit += SoldesDe(*plan.Rec, m_euro).debit;
    credit += SoldesDe(*plan.Rec, m_euro).credit;
  }
  EXPECT_NEAR(debit, m_euro ? tout.debitEuro : tout.debitFranc, 0.001);
  EXPECT_NEAR(credit, m_euro ? tout.creditEuro : tout.creditFranc, 0.001);
}

TEST_P(LivresParAffichage, CentralisationIsTheSumOfTheMonths) {
  for (const char* const compte : {"512", "531", "706", "6063", "4451", "108"}) {
    Demandeur.Change = [&](CriteresEtat& c) { c.compte = Long(compte); };
    const auto rangees = Rangees(CEtatCentralisationDoc(App(), Demandeur));
    ASSERT_GT(rangees.size(), 13u);
    for (unsigned m = 1; m <= 13; ++m) {  // the 13th: the total
      const std::string& r = rangees[rangees.size() - 14 + m];
      Egales(Montants(r), Attendues(Somme([&](const Line& l) {
               return LitTexte(l.Compte) == Long(compte) && (m == 13 || Mois(l.DateLigne) == m);
             })),
             r);
    }
  }
}

TEST_P(LivresParAffichage, PeriodsTakeTheLinesBetweenTheirDays) {
  const Date du = FaitDate(10, 2, m_annee), au = FaitDate(20, 11, m_annee);
  Demandeur.Change = [=](CriteresEtat& c) { c.du = du, c.au = au; };
  const auto dedans = [&](const Line& l) { return l.DateLigne >= du && l.DateLigne <= au; };

  Colonnes totaux(4), lignes(4);
  for (const std::string& r : Rangees(CEtatTVADoc(App(), Demandeur))) {
    if (!Contient(r, "T098")) continue;
    const Colonnes lues = Montants(r);
    Colonnes& vers = Contient(r, "BTotal :") ? totaux : lignes;
    std::transform(lues.begin(), lues.end(), vers.begin(), vers.begin(), std::plus<>());
  }
  const Colonnes taxes = Attendues(Somme([&](const Line& l) { return l.TypeCompte == Tva && dedans(l); }));
  Egales(totaux, taxes, "TVA");
  Egales(lignes, taxes, "TVA, lines");

  const auto rapprochees = Rangees(CEtatRapprochementDoc(App(), Demandeur));
  Egales(Montants(Total(rapprochees)), Attendues(Somme([&](const Line& l) {
           return l.TypeCompte == Tresorerie && l.Rapprochee && dedans(l);
         })),
         Total(rapprochees));
}

TEST_P(LivresParAffichage, JournalAddsUpWhatItLists) {
  for (const i16 journal : {JournalRecettes, JournalDepenses, JournalOD}) {
    for (const std::string& filtre : {std::string(), Long("512")}) {
      DemandeListe demande;
      demande.journal = journal;
      demande.mois = FaitDate(1, 6, m_annee);
      demande.mode = ListeToutes;
      demande.filtre = filtre;
      const bool filtree = journal != JournalOD && !filtre.empty();
      const auto listee = [&](const Line& l) {
        return l.Journal == journal && Mois(l.Date) == 6 && (!filtree || LitTexte(l.Compte) == filtre);
      };
      const SommesEtat s = Somme(listee);
      const auto detail = Rangees(JournalDeTest(App(), Demandeur, demande, true));
      Egales(Montants(Total(detail)), {s.debitFranc, s.creditFranc, s.debitEuro, s.creditEuro},
             Total(detail));
      if (journal == JournalOD) continue;
      // One row an entry: what came into the treasury, or left it.
      const SommesEtat t = Somme([&](const Line& l) { return listee(l) && l.TypeCompte == Tresorerie; });
      const f64 signe = journal == JournalRecettes ? 1 : -1;
      const auto ecritures = Rangees(JournalDeTest(App(), Demandeur, demande, false));
      Egales(Montants(Total(ecritures)),
             {signe * (t.debitFranc - t.creditFranc), signe * (t.debitEuro - t.creditEuro)},
             Total(ecritures));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Displays, LivresParAffichage,
                         ::testing::Values(AffichageLivre::Franc, AffichageLivre::Euro,
                                           AffichageLivre::Double));

// ------------------------------------------------------------ What goes wrong

class EtatsEnPanne : public LivresAleatoires {
 protected:
  EtatsEnPanne() : LivresAleatoires(&Fautif()) {}
  ~EtatsEnPanne() override { Fautif().Repare(); }
  static SystemeFautif& Fautif() {
    static SystemePosix posix;
    static SystemeFautif systeme(posix);
    return systeme;
  }

  std::vector<std::unique_ptr<CEtatComptable>> Etats() {
    std::vector<std::unique_ptr<CEtatComptable>> etats;
    etats.push_back(std::make_unique<CEtatBalanceDoc>(App(), Demandeur));
    etats.push_back(std::make_unique<CEtatCentralisationDoc>(App(), Demandeur));
    etats.push_back(std::make_unique<CEtatTVADoc>(App(), Demandeur));
    etats.push_back(std::make_unique<CEtatRapprochementDoc>(App(), Demandeur));
    DemandeListe demande;
    demande.mois = FaitDate(1, 6, m_annee);
    demande.mode = ListeToutes;
    etats.push_back(std::make_unique<JournalDeTest>(App(), Demandeur, demande, true));
    return etats;
  }
};

TEST_F(EtatsEnPanne, StoppedCancelledOrNotWritten) {
  Remplit(AffichageLivre::Euro, 7, 150);
  for (const auto& etat : Etats()) {
    Demandeur.Accepte = false;
    const unsigned demandes = Demandeur.Nombre;
    const bool construit = etat->OnNewDocument();
    const std::string nom = VersUtf8(etat->TitreDocument());
    EXPECT_EQ(construit, Demandeur.Nombre == demandes)
        << nom << ": without a form there is nothing to cancel";
    Demandeur.Accepte = true;

    Boite.ArretApres = Boite.NbArrets + 1;
    const unsigned ouvertures = Boite.Ouvertures;
    EXPECT_FALSE(etat->OnNewDocument()) << nom;
    EXPECT_EQ(Boite.Ouvertures, ouvertures + 1) << nom;
    EXPECT_EQ(Boite.Place, 2u) << nom << " goes on after it was stopped";
    EXPECT_EQ(Boite.Profondeur, 0u) << nom;
    EXPECT_TRUE(Boite.Annulable);
    EXPECT_TRUE(Boite.Erreurs.empty()) << nom;
    Boite.ArretApres = -1;

    Fautif().SurChemin("FNL");
    Fautif().Programme(2, ENOSPC, SystemeFautif::Ecriture, false);
    EXPECT_FALSE(etat->OnNewDocument()) << nom;
    Fautif().Repare();
    ASSERT_EQ(Boite.Erreurs.size(), 1u) << nom;
    EXPECT_EQ(Boite.Erreurs[0].numero, unsigned{ErrEtatEcriture});
    EXPECT_EQ(Boite.Profondeur, 0u) << nom;
    Boite.Oublie();
    EXPECT_TRUE(etat->OnNewDocument()) << nom << ": and once more, on a disk with room";
  }
}

TEST_F(EtatsEnPanne, ADiskThatFillsUpEndsTheWork) {
  Remplit(AffichageLivre::Double, 8, 20);
  for (int i = 60; i < 90; ++i) ASSERT_TRUE(PoseCompte("6" + std::to_string(i), Depense, {}, "Frais"));
  CEtatCentralisationDoc etat(App(), Demandeur);
  ASSERT_TRUE(etat.OnNewDocument());
  ASSERT_GT(etat.TailleTexte(), 65536u) << "more than one write";
  const u32 pas = Boite.Place;
  Fautif().SurChemin("FNL");
  Fautif().Programme(2, ENOSPC, SystemeFautif::Ecriture, false);
  EXPECT_FALSE(etat.OnNewDocument());
  EXPECT_LT(Boite.Place, pas) << "no further record is read";
}

/// Gives up at the second record of each walk.
class EtatQuiRenonce : public CEtatComptable {
 public:
  EtatQuiRenonce(CFenlorApp& app, DemandeurCriteres& demandeur, int parcours)
      : CEtatComptable(app, demandeur), m_parcours(parcours) {}
  int Vus = 0;

 protected:
  void BuildEtat() override {
    LivresEtat livres(App, *this);
    ASSERT_TRUE(livres.Ouvre());
    const Date fin = App.Reglages.GetFinExercice();
    const auto vu = [this](const auto&) {
      if (++Vus == 2) Abandonne();
    };
    if (m_parcours == 0) livres.Comptes(vu);
    if (m_parcours == 1) livres.LignesDatees(0, fin, vu);
    if (m_parcours == 2) livres.LignesDepuis({}, 0, [&](const Line& l) { return vu(l), true; });
  }

 private:
  int m_parcours;
};

TEST_F(EtatsEnPanne, AWalkEndsWithItsReport) {
  Remplit(AffichageLivre::Euro, 8, 20);
  for (const int parcours : {0, 1, 2}) {
    EtatQuiRenonce etat(App(), Demandeur, parcours);
    EXPECT_FALSE(etat.OnNewDocument());
    EXPECT_EQ(etat.Vus, 2) << parcours;
  }
}

TEST_F(EtatsEnPanne, NoExerciceNoReport) {
  for (const auto& etat : Etats()) {
    EXPECT_FALSE(etat->OnNewDocument());
    EXPECT_EQ(Boite.NumerosErreurs(), std::vector<unsigned>{3209});
    Boite.Oublie();
  }
}

}  // namespace
}  // namespace fenlor
