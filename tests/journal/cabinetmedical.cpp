#include "journal/cabinetmedical.h"

#include <cstdio>
#include <cstring>

#include "core/btfiles.h"

namespace fenlor::test {

void CabinetMedical::Installe(const std::string& annee, bool euro, bool tva) {
  ASSERT_TRUE(CreeExercice(annee, euro, tva));
  // One opening and one sync for the whole chart.
  const u32 plan = Magasin().OpenPlan({});
  QVAPI::Unite unite(Magasin());
  ASSERT_TRUE(PoseCompte("512", Tresorerie, "BQ", "Banque", 1));
  ASSERT_TRUE(PoseCompte("514", Tresorerie, "CCP", "Postal", 1));
  ASSERT_TRUE(PoseCompte("531", Tresorerie, "CA", "Caisse", 0));
  ASSERT_TRUE(PoseCompte("4451", Tva, "TVA", "T.V.A. 19.60%"));
  PoseTaxe("4451", Tva, {}, 100);
  ASSERT_TRUE(PoseCompte("706", Recette, "HONOR", "Honoraires"));
  PoseTaxe("7065", Recette, {}, 60);
  PoseTaxe("7070", Recette, "4451", 100);
  ASSERT_TRUE(PoseCompte("6132", Depense, "LOYER", "Loyer"));
  PoseTaxe("6063", Depense, "4451", 100);
  PoseTaxe("6154", Depense, "4451", 60);
  ASSERT_TRUE(PoseCompte("108", Autre, "EXPLOIT", "Exploitant"));
  ASSERT_TRUE(PoseCompte("758", Recette, "ECARTC", "Ecarts"));
  ASSERT_TRUE(PoseCompte("658", Depense, "ECARTD", "Ecarts"));
  ASSERT_TRUE(unite.Valide());
  ASSERT_TRUE(Magasin().ClosePlan(plan));
  ASSERT_TRUE(Magasin().SetComptePerso("108"));
  ASSERT_TRUE(Magasin().SetCompteEcartCredit("758"));
  ASSERT_TRUE(Magasin().SetCompteEcartDebit("658"));
}

void CabinetMedical::PoseTaxe(std::string_view compte, i16 type, std::string_view compteTva, f64 partPro) {
  CPlan plan(App(), App().PathExercice);
  PoseTexte(plan.Rec->Compte, Long(compte));
  PoseTexte(plan.Rec->Code, compte);
  PoseTexte(plan.Rec->Designation, "Compte " + std::string(compte));
  plan.Rec->Type = type;
  PoseTexte(plan.Rec->CompteTVA, Long(compteTva));
  plan.Rec->TauxTVA = type == Tva ? 19.6 : 0;
  plan.Rec->PartPro = partPro;
  ASSERT_TRUE(plan.OpenFile() && plan.Add());
}

SaisieEcriture CabinetMedical::Ecriture(i16 journal, std::string_view compte, f64 ttc,
                                        std::string_view tresorerie, Date date) {
  SaisieEcriture saisie;
  saisie.journal = journal;
  saisie.date = date;
  saisie.compte = Long(compte);
  saisie.libelle = "Essai";
  saisie.tresorerie = Long(tresorerie);
  saisie.montants = ChaineMontants(App(), LitCompte(compte), ttc);
  return saisie;
}

SaisieEcriture CabinetMedical::Multiple(i16 journal, std::string_view compte,
                                        std::vector<std::pair<const char*, f64>> tresoreries, Date date) {
  f64 ttc = 0;
  for (const auto& [numero, montant] : tresoreries) ttc += montant;
  SaisieEcriture saisie = Ecriture(journal, compte, ttc, {}, date);
  saisie.genre = GenreStandard;
  for (const auto& [numero, montant] : tresoreries) saisie.tresoreries.push_back({Long(numero), montant});
  return saisie;
}

SaisieOD CabinetMedical::OD(std::vector<LigneODSaisie> lignes, Date date) {
  SaisieOD saisie;
  saisie.date = date;
  saisie.libelle = "Essai d'OD";
  saisie.lignes = std::move(lignes);
  for (LigneODSaisie& ligne : saisie.lignes) ligne.compte = Long(ligne.compte);
  return saisie;
}

std::vector<std::string> CabinetMedical::LignesLues(u32 mouvement) {
  std::vector<std::string> textes;
  for (const Line& ligne : Lignes(mouvement)) {
    char texte[128];
    std::snprintf(texte, sizeof texte, "%s %c %.2f %.2f",
                  Magasin().GetShortCompte(LitTexte(ligne.Compte)).c_str(), ligne.Sens ? 'C' : 'D',
                  f64{ligne.MontantEuro}, f64{ligne.MontantFranc});
    textes.emplace_back(texte);
  }
  return textes;
}

void CabinetMedical::Regle(const std::string& section, const std::string& cle, const std::string& valeur) {
  ASSERT_TRUE(App().Reglages.EcritIni(section, cle, valeur));
}

Mouvement CabinetMedical::Entete(u32 mouvement) {
  Mouvement entete{};
  EXPECT_TRUE(Magasin().ReadMouvements(App().PathExercice, mouvement, entete));
  return entete;
}

void CompareLivres(CabinetMedical& un, CabinetMedical& autre, u32 ecritures) {
  for (u32 m = 1; m <= ecritures; ++m) {
    const std::vector<Line> a = un.Lignes(m), b = autre.Lignes(m);
    ASSERT_TRUE(!a.empty() && a.size() == b.size()) << m;
    EXPECT_EQ(std::memcmp(a.data(), b.data(), a.size() * sizeof(Line)), 0) << m;
  }
  CPlan plan(un.App(), un.App().PathExercice);
  ASSERT_TRUE(plan.OpenFile());
  for (bool lu = plan.First(0); lu; lu = plan.Next(0)) {
    const Plan compte = autre.LitCompte(un.Magasin().GetShortCompte(LitTexte(plan.Rec->Compte)));
    EXPECT_EQ(std::memcmp(plan.Rec, &compte, sizeof compte), 0) << LitTexte(plan.Rec->Compte);
  }
}

}  // namespace fenlor::test
