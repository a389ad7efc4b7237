// A small medical practice for the tests of the rules: its chart is the few accounts
// below, on top of the template's.
//
//   512 BQ, 514 CCP bank; 531 CA cash
//   706 receipts; 7065 receipts, 60 % professional; 7070 receipts with VAT at 19.6 %
//   6132 expenses; 6063 expenses with VAT at 19.6 %; 6154 the same, 60 % professional
//   108 personal share; 758 and 658 deviations at credit and debit; 4451 VAT
#pragma once

#include "journal/saisie.h"
#include "outils/cabinetdetest.h"

namespace fenlor::test {

inline std::string Long(std::string_view compte) { return QVAPI::GetLongCompte(std::string(compte)); }

class CabinetMedical : public CabinetDeTest {
 public:
  using CabinetDeTest::CabinetDeTest;

  /// An exercice of that year with the chart above.
  void Installe(const std::string& annee = "2003", bool euro = true, bool tva = true);
  void PoseTaxe(std::string_view compte, i16 type, std::string_view compteTva, f64 partPro);

  /// A valid receipt or expense as its form would hold it.
  SaisieEcriture Ecriture(i16 journal, std::string_view compte, f64 ttc, std::string_view tresorerie = "512",
                          Date date = FaitDate(15, 3, 2003));
  /// One that several treasury accounts share.
  SaisieEcriture Multiple(i16 journal, std::string_view compte,
                          std::vector<std::pair<const char*, f64>> tresoreries,
                          Date date = FaitDate(15, 3, 2003));
  /// Saves it as `Faite`.
  Refus Essaie(const SaisieEcriture& saisie) { return EnregistreEcriture(App(), saisie, Faite = {}); }
  Refus Essaie(const SaisieOD& saisie) { return EnregistreOD(App(), saisie, Faite = {}); }
  /// Its number, 0 when it was refused.
  u32 Enregistre(const SaisieEcriture& saisie) { return Essaie(saisie) ? 0 : Faite.mouvement; }
  SaisieOD OD(std::vector<LigneODSaisie> lignes, Date date = FaitDate(15, 3, 2003));
  u32 EnregistreLesLignes(std::vector<LigneODSaisie> lignes) {
    return Essaie(OD(std::move(lignes))) ? 0 : Faite.mouvement;
  }

  /// Lines of an entry as a bookkeeper writes them: "512 D 119.60 784.52", Euro first.
  std::vector<std::string> LignesLues(u32 mouvement);
  /// Reads the setting and puts another one in its place.
  void Regle(const std::string& section, const std::string& cle, const std::string& valeur);
  Mouvement Entete(u32 mouvement);

  EcritureFaite Faite;
};

/// Another practice, for what the first one was told by its forms told by the rule.
class Jumeau : public CabinetMedical {
  void TestBody() override {}
};
/// The first entries of both, and every account, are the same to the byte.
void CompareLivres(CabinetMedical& un, CabinetMedical& autre, u32 ecritures);

}  // namespace fenlor::test
