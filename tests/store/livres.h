// Books for the tests of entries: a directory with "COMPTES" and "JOURNAL" and a
// small chart, no exercice around them. Syncs are left out: these tests look at
// what is written, not at when it is safe.
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "outils/cabinetdetest.h"
#include "outils/systemesanssynchro.h"
#include "store/definitions.h"
#include "store/qvapi.h"

namespace fenlor {

constexpr Date Mars15 = FaitDate(15, 3, 2003);

struct CompteEssai {
  const char* numero;
  i16 type;
  i16 bancaire;
};

/// The chart of the test books.
inline const std::vector<CompteEssai>& ComptesEssai() {
  static const std::vector<CompteEssai> comptes = {
      {"5121000000", Tresorerie, 1}, {"5122000000", Tresorerie, 1}, {"5300000000", Tresorerie, 0},
      {"7060000000", Recette, 0},    {"7080000000", Recette, 0},    {"6061000000", Depense, 0},
      {"6251000000", Depense, 0},    {"4457000000", Tva, 0},        {"4456000000", Tva, 0},
      {"1080000000", Autre, 0},      {"5800000000", Autre, 0},      {"6580000000", Depense, 0},
  };
  return comptes;
}

class Livres {
 public:
  /// Keys in an ordered map, or in LMDB.
  explicit Livres(bool clesEnMemoire = true) : m_clesEnMemoire(clesEnMemoire) {
    std::filesystem::create_directory(Exercice());
    Ouvre();
    for (const CompteEssai& compte : ComptesEssai())
      AjouteCompte(compte.numero, compte.type, compte.bancaire);
    EXPECT_TRUE(m_magasin->SetComptePerso("1080000000"));
  }
  ~Livres() { Ferme(); }
  Livres(const Livres&) = delete;
  Livres& operator=(const Livres&) = delete;

  QVAPI* operator->() { return m_magasin.get(); }
  QVAPI& operator*() { return *m_magasin; }
  const std::string& Dossier() const { return m_dossier.Chemin(); }
  std::string Exercice() const { return m_dossier / "2003"; }

  /// Ends the session and begins a new one on the same files.
  void Rouvre() {
    Ferme();
    Ouvre();
  }
  void FermeFichiers() {
    if (m_journal) m_magasin->CloseJournal(m_journal);
    if (m_plan) m_magasin->ClosePlan(m_plan);
    m_journal = m_plan = 0;
  }
  void OuvreFichiers() {
    m_plan = m_magasin->OpenPlan(Exercice());
    m_journal = m_magasin->OpenJournal(Exercice());
    ASSERT_NE(m_plan, 0u) << m_magasin->QVErreurTexte(m_magasin->QVFileErrorCode());
    ASSERT_NE(m_journal, 0u) << m_magasin->QVErreurTexte(m_magasin->QVFileErrorCode());
  }

  void AjouteCompte(const std::string& numero, i16 type, i16 bancaire) {
    Plan plan{};
    PoseTexte(plan.Compte, numero);
    PoseTexte(plan.Code, numero.substr(0, 4));
    PoseTexte(plan.Designation, "Compte " + numero);
    plan.Type = type;
    plan.TypeTresorerie = bancaire;
    plan.PartPro = 100;
    AjoutePlan(plan);
  }
  Position AjoutePlan(const Plan& plan) {
    const Position position = m_magasin->QVAddRec(FichierComptes, &plan);
    EXPECT_NE(position, 0u);
    for (unsigned i = 0; i < 5; ++i) {
      char texte[TailleCleMax];
      const unsigned n = DefinitionFichierNumero(FichierComptes)->compose(i, &plan, texte);
      EXPECT_TRUE(m_magasin->QVAddKey(static_cast<u16>(69 + i), std::string(texte, n), position));
    }
    return position;
  }
  Plan Compte(const std::string& numero) {
    Plan plan{};
    PoseTexte(plan.Compte, numero);
    EXPECT_NE(m_magasin->ReadPlan(plan, 0), 0u) << numero;
    return plan;
  }
  std::vector<Line> Lignes(u32 mouvement) {
    std::vector<Line> lignes;
    for (const Position position : m_magasin->LignesMouvement(Exercice(), mouvement)) {
      EXPECT_TRUE(m_magasin->ReadLines(Exercice(), position, lignes.emplace_back()));
    }
    return lignes;
  }

  /// Texts of the errors told since the last look.
  std::vector<std::string> erreurs;
  /// Events of the long operations: number, value, text.
  struct Evenement {
    u32 numero, valeur;
    std::string texte;
  };
  std::vector<Evenement> evenements;
  u32 reponse = 0;

 private:
  void Ouvre() {
    OptionsQVAPI options;
    options.systeme = &m_systeme;
    if (m_clesEnMemoire) options.cles = &m_cles;
    options.tailleReprise = 64u << 10;  // large units go behind the file early
    options.dossierRegistre = options.dossierRegistreMachine = m_dossier / "registre";
    m_magasin = std::make_unique<QVAPI>(options);
    ASSERT_TRUE(m_magasin->QVOpenSession(1));
    m_magasin->QVSetCallback([this](u32 evenement, u32 valeur, const std::string& texte) {
      if (evenement == EvErreur) {
        erreurs.push_back(texte);
      } else {
        evenements.push_back({evenement, valeur, texte});
      }
      return reponse;
    });
    ASSERT_TRUE(m_magasin->QVOpenCompta(Dossier(), ""))
        << m_magasin->QVErreurTexte(m_magasin->QVFileErrorCode());
    OuvreFichiers();
  }
  void Ferme() {
    if (!m_magasin) return;
    FermeFichiers();
    EXPECT_TRUE(m_magasin->QVCloseSession());
    m_magasin.reset();
  }

  SystemeSansSynchro m_systeme;
  FabriqueMemoire m_cles;
  bool m_clesEnMemoire;
  test::DossierTemporaire m_dossier;
  std::unique_ptr<QVAPI> m_magasin;
  u32 m_plan = 0, m_journal = 0;
};

/// A simple entry in Euro, with 6.55957 Francs for one Euro; amounts with tax,
/// professional share and tax.
inline EcrSimple EcritureSimple(i16 journal, Date date, const char* compte, f64 montant, f64 repartition,
                                f64 taxe, const char* tresorerie = "5121000000") {
  EcrSimple rec{};
  rec.Journal = journal;
  rec.Genre = GenreSimple;
  rec.Ligne = 1;
  rec.Date = date;
  rec.SaisieEuro = 1;
  rec.EstRecette = journal == JournalRecettes;
  PoseTexte(rec.Libelle, "Consultations");
  PoseTexte(rec.Compte, compte);
  PoseTexte(rec.CompteTresorerie, tresorerie);
  if (taxe != 0) {
    PoseTexte(rec.CompteTaxe, journal == JournalRecettes ? "4457000000" : "4456000000");
    rec.TauxTaxe = 19.6;
  }
  const auto franc = [](f64 euro) { return std::floor(euro * 6.55957 * 100 + 0.5) / 100; };
  rec.MontantEuro = montant;
  rec.MontantFranc = franc(montant);
  rec.RepartitionEuro = repartition;
  rec.RepartitionFranc = franc(repartition);
  rec.TaxeEuro = taxe;
  rec.TaxeFranc = franc(taxe);
  return rec;
}

inline Line LigneOD(u32 mouvement, Date date, const char* compte, bool credit, f64 euro,
                    const char* libelle = "Virement") {
  Line ligne{};
  ligne.Mouvement = mouvement;
  ligne.Journal = JournalOD;
  ligne.Genre = GenreOD;
  ligne.Ligne = 1;
  ligne.Date = ligne.DateLigne = date;
  ligne.SaisieEuro = 1;
  PoseTexte(ligne.Libelle, libelle);
  PoseTexte(ligne.Designation, libelle);
  PoseTexte(ligne.Compte, compte);
  ligne.Sens = credit;
  ligne.MontantEuro = euro;
  ligne.MontantFranc = std::floor(euro * 6.55957 * 100 + 0.5) / 100;
  return ligne;
}

/// "compte C euro/franc" for each line, in order of `Rang`.
inline std::vector<std::string> Decrit(const std::vector<Line>& lignes) {
  std::vector<std::string> textes;
  for (std::size_t i = 0; i < lignes.size(); ++i) {
    const Line& l = lignes[i];
    EXPECT_EQ(+l.Rang, i);
    char texte[80];
    std::snprintf(texte, sizeof texte, "%s %c %.2f/%.2f", LitTexte(l.Compte).c_str(), l.Sens ? 'C' : 'D',
                  l.MontantEuro, l.MontantFranc);
    textes.emplace_back(texte);
  }
  return textes;
}

}  // namespace fenlor
