// A small book whose figures can be added up by hand, and the comparison of a report with its expected
// markup.
//
// Amounts in the currency that the book is kept in; the other one is derived at 6.55957:
//
//   10/01  1  receipt  706 500.00                    on 512         validated, reconciled on 15/01
//   24/01  2  receipt  707 100.00, VAT 19.60         on 512         on a slip, pointed
//   30/01  3  receipt  706 200.00                    on 531
//   01/02  1  receipt  706 300.00                    on 512 250.00, 531 50.00
//   15/01  1  expense  606  50.00, VAT 9.80          on 512
//   05/02  1  expense  613 300.00, personal 100.00   on 512         reconciled on 08/02
//   12/03  1  expense  606  25.00, VAT 4.90          on 531
//   28/02  1  OD       512 D 150.00, 531 C 150.00
//
//            debit    credit                debit    credit
//   108     100.00                  606      75.00
//   4451     14.70     19.60        613     300.00
//   512    1019.60    459.80        658                       no line, no heading
//   531     250.00    179.90        706              1000.00
//                                   707               100.00
//   total  1759.30   1759.30
//
// 512 was opened with a debit balance of 1000.00. Headings: 01, 08, 15 of accounts; 07 = 01, 32 = 08+15,
// 41 = &AMORT, 46 = 07-32-41.
#pragma once

#include <optional>

#include "outils/cabinetdetest.h"
#include "reports/etatcomptable.h"

namespace fenlor::test {

constexpr f64 TauxFranc = 6.55957;

/// Answers a form's questions with what a test says, and remembers them.
class DemandeurScript : public DemandeurCriteres {
 public:
  std::function<void(CriteresEtat&)> Change;  ///< what differs from the proposal
  bool Accepte = true;

  unsigned Nombre = 0;  ///< questions so far; below: the last one
  FormeCriteres Forme{};
  std::string Titre;
  unsigned Comptes = 0;
  CriteresEtat Propose;

  bool Demande(FormeCriteres forme, const std::string& titre, unsigned comptes,
               CriteresEtat& criteres) override;
};

/// The three displays of a report.
enum class AffichageLivre { Franc, Euro, Double };
inline constexpr std::pair<AffichageLivre, const char*> affichages[] = {
    {AffichageLivre::Franc, "franc"}, {AffichageLivre::Euro, "euro"}, {AffichageLivre::Double, "double"}};

class PetitLivre : public CabinetDeTest {
 public:
  using CabinetDeTest::CabinetDeTest;

  /// Franc: exercice 2001 kept in Franc. Euro: 2003. Double: 2002, kept in Euro, both shown. `ecritures`
  /// false: the accounts alone.
  void Installe(AffichageLivre affichage, bool ecritures = true);

  DemandeurScript Demandeur;
  std::string Annee;  ///< "2001"

  /// Day of the book's year.
  Date Le(unsigned jour, unsigned mois) const;
  /// A receipt or an expense. `taxe` is inside `montant`, `perso` too. Its number.
  u32 Ajoute(i16 journal, Date date, std::string_view compte, f64 montant, f64 taxe, f64 perso,
             std::string_view tresorerie, std::string_view libelle);

  /// Compares the whole markup of a built report with attendus/`nom`.txt; a missing expectation fails. With
  /// FENLOR_ATTENDUS=ecrire in the environment the file is written anew instead.
  static void VerifieMarquage(CEtatDoc& etat, const std::string& nom);
  /// Builds a report and compares it. `change` as in `DemandeurScript`.
  template <class Etat, class... Arguments>
  void VerifieEtat(const std::string& nom, std::function<void(CriteresEtat&)> change = {},
                   Arguments... arguments) {
    Demandeur.Change = std::move(change);
    Etat etat(App(), Demandeur, arguments...);
    ASSERT_TRUE(App().Dit(etat.OnNewDocument())) << nom;
    VerifieMarquage(etat, nom);
    VerifiePages(etat, nom);
  }
  /// Draws all pages on the recorder: no run may pass the edges of the sheet, vanish or cover another one,
  /// but for the journal's heading "V", which stands where another one does.
  static void VerifiePages(CEtatDoc& etat, const std::string& nom);
  /// Compares what the pages show in a style with attendus/`nom`.txt, as `VerifieMarquage`.
  static void VerifieFeuilles(CEtatDoc& etat, StylePapier style, const std::string& nom);

 private:
  f64 Franc(f64 montant) const;
  f64 Euro(f64 montant) const;

  bool m_euro = true;
};

/// A folder for temporary files of its own, while it lives.
class TemporaireAPart {
 public:
  TemporaireAPart();
  ~TemporaireAPart();
  TemporaireAPart(const TemporaireAPart&) = delete;
  TemporaireAPart& operator=(const TemporaireAPart&) = delete;
  std::size_t Nombre() const;  ///< of files and folders in it

 private:
  DossierTemporaire m_dossier;
  std::optional<std::string> m_avant;
};

/// The markup in UTF-8: title, header and footer, then each block and a line that tells its height and what
/// it holds: "== 2 H".
std::string Marquage(CEtatDoc& etat);
/// Markup of all blocks alone, Windows-1252.
std::string TexteEtat(CEtatDoc& etat);

}  // namespace fenlor::test
