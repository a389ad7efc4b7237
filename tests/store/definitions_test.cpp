#include "store/definitions.h"

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <random>

#include "store/dates.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

#if defined(__GNUC__)
__attribute__((format(printf, 1, 2)))
#endif
std::string
Imprime(const char* format, ...) {
  char texte[256];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(texte, sizeof texte, format, arguments);
  va_end(arguments);
  return texte;
}

std::string Compose(u16 numFichier, unsigned indice, const void* rec) {
  char sortie[TailleCleMax + 1];
  sortie[TailleCleMax] = '?';
  const unsigned n = DefinitionFichierNumero(numFichier)->compose(indice, rec, sortie);
  EXPECT_LE(n, TailleCleMax);
  EXPECT_EQ(sortie[TailleCleMax], '?');
  return std::string(sortie, n);
}

// Random records: mostly such as the program makes, some of arbitrary bytes.
class Tirage {
 public:
  explicit Tirage(u32 graine) : m_moteur(graine) {}
  u32 Nombre() {
    const u32 n = static_cast<u32>(m_moteur());
    return n & 1 ? n : n >> (n % 31);
  }
  u32 UneDate() {
    return m_moteur() % 16 ? FaitDate(1 + Nombre() % 31, 1 + Nombre() % 12, 1 + Nombre() % 9999) : Nombre();
  }
  i16 Petit() { return static_cast<i16>(m_moteur() % 16 ? Nombre() % 5 : Nombre()); }
  template <std::size_t N>
  void Texte(char (&champ)[N]) {
    std::string texte(Nombre() % N, ' ');
    for (char& c : texte) c = static_cast<char>(1 + m_moteur() % 255);
    PoseTexte(champ, texte);
    if (m_moteur() % 8 == 0) std::memset(champ, 'Z', N);
  }
  template <typename T>
  T Vide() {
    T rec;
    std::memset(&rec, static_cast<int>(m_moteur() % 256), sizeof rec);
    return rec;
  }

 private:
  std::mt19937 m_moteur;
};

constexpr int Tours = 3000;

/// Each key of a record, as it is made of its parts and as it must be.
void Compare(u16 numFichier, const void* rec,
             const std::vector<std::pair<std::string, std::string>>& faitesEtAttendues) {
  unsigned k = 0;
  for (const auto& [faite, attendue] : faitesEtAttendues) {
    ASSERT_EQ(Compose(numFichier, k, rec), attendue) << k;
    ASSERT_EQ(faite, attendue) << k;
    ++k;
  }
}

TEST(Definitions, KeysOfAccounts) {
  Tirage t(1);
  for (int i = 0; i < Tours; ++i) {
    Plan r = t.Vide<Plan>();
    t.Texte(r.Compte), t.Texte(r.Code), t.Texte(r.Rubrique), t.Texte(r.Designation);
    r.Type = t.Petit();
    const std::string compte = LitTexte(r.Compte), code = LitTexte(r.Code), rubrique = LitTexte(r.Rubrique);
    const std::string designation = LitTexte(r.Designation), dix = Imprime("%-10.10s", compte.c_str());
    Compare(FichierComptes, &r,
            {{MakePlanKey1(compte), dix},
             {MakePlanKey2(code, compte), Imprime("%-8.8s", code.c_str()) + dix},
             {MakePlanKey3(rubrique, compte), Imprime("%-3.3s", rubrique.c_str()) + dix},
             {MakePlanKey4(r.Type, compte), Imprime("%1d", r.Type) + dix},
             {MakePlanKey5(designation, compte), Imprime("%-20.20s", designation.c_str()) + dix}});
  }
}

TEST(Definitions, KeysOfHeadings) {
  Tirage t(2);
  for (int i = 0; i < Tours; ++i) {
    Rubrique r = t.Vide<Rubrique>();
    t.Texte(r.Rubrique), t.Texte(r.Designation);
    r.TypeRubrique = t.Petit();
    r.Ligne = static_cast<i16>(i % 300 - 20);
    const std::string rubrique = LitTexte(r.Rubrique), designation = LitTexte(r.Designation);
    const std::string trois = Imprime("%-3.3s", rubrique.c_str());
    Compare(FichierRubriques, &r,
            {{MakeRubriquesKey1(rubrique), trois},
             {MakeRubriquesKey2(r.TypeRubrique, rubrique), Imprime("%1d", r.TypeRubrique) + trois},
             {MakeRubriquesKey3(designation, rubrique), Imprime("%-20.20s", designation.c_str()) + trois},
             {MakeRubriquesKey4(r.Ligne, rubrique),
              Imprime("%-3.3s", Imprime("%02d", r.Ligne).c_str()) + trois}});
  }
  EXPECT_LT(MakeRubriquesKey4(12, "A"), MakeRubriquesKey4(125, "A"));
  EXPECT_LT(MakeRubriquesKey4(125, "A"), MakeRubriquesKey4(13, "A"));
  EXPECT_LT(MakeRubriquesKey4(9, "A"), MakeRubriquesKey4(10, "A"));
}

TEST(Definitions, KeysOfBankOperationsAndAssets) {
  Tirage t(3);
  for (int i = 0; i < Tours; ++i) {
    Banque r = t.Vide<Banque>();
    t.Texte(r.Compte);
    r.Date = t.UneDate();
    r.Sens = t.Petit();
    const std::string compte = LitTexte(r.Compte), dix = Imprime("%-10.10s", compte.c_str()),
                      jour = Imprime("%-8.8s", StrSDate(r.Date).c_str());
    Compare(FichierBanques, &r,
            {{MakeBanquesKey1(compte, r.Date), dix + jour},
             {MakeBanquesKey2(r.Date, compte), jour + dix},
             {MakeBanquesKey3(r.Sens, compte, r.Date), Imprime("%1d", r.Sens) + dix + jour}});

    Immobilisation m = t.Vide<Immobilisation>();
    m.Numero = t.Nombre(), m.DateAchat = t.UneDate();
    const std::string numero = Imprime("%010u", m.Numero);
    Compare(FichierImmo, &m,
            {{MakeImmobilisationsKey1(m.DateAchat, m.Numero),
              Imprime("%-8.8s", StrSDate(m.DateAchat).c_str()) + numero},
             {MakeImmobilisationsKey2(m.Numero), numero}});
    Amortissement a = t.Vide<Amortissement>();
    a.Numero = t.Nombre(), a.Annee = t.Nombre();
    Compare(FichierAmo, &a,
            {{MakeAmortissementsKey(a.Numero, a.Annee), Imprime("%010u%04u", a.Numero, a.Annee)}});
  }
}

TEST(Definitions, KeysOfLinksSortAsTheirNumbers) {
  RecetteLiee r{};
  DepenseLiee d{};
  r.LienPoste = 7, r.LienB = 0x20001, r.LienId = 42, r.Date = FaitDate(1, 2, 2003);
  d.LienB = 12, d.Date = r.Date;
  PoseTexte(d.Tiers, "DUPONT");
  std::string avant[2];
  for (const i32 lienA : {-2147483647 - 1, -70000, -1, 0, 1, 999, 2147483647}) {
    r.LienA = d.LienA = lienA;
    const std::string lien = Imprime("%011lld", static_cast<long long>(lienA) + 2147483648LL);
    const std::string cleRecette = "00007" + lien + "0000131073", cleDepense = lien + "0000000012DUPONT   ";
    EXPECT_EQ(Compose(FichierRecettes, 0, &r), "0000000042" + cleRecette);
    EXPECT_EQ(Compose(FichierRecettes, 1, &r), "20030201" + cleRecette);
    EXPECT_EQ(Compose(FichierRecettes, 2, &r), cleRecette);
    EXPECT_EQ(Compose(FichierDepenses, 0, &d), cleDepense);
    EXPECT_EQ(Compose(FichierDepenses, 1, &d), "20030201" + cleDepense);
    EXPECT_LT(avant[0], cleRecette);
    EXPECT_LT(avant[1], cleDepense);
    avant[0] = cleRecette, avant[1] = cleDepense;
  }
}

}  // namespace
}  // namespace fenlor
