// Statements into the file of operations: each operation once, however often and in whatever format it comes.
#include "banque/importreleve.h"

#include <map>

#include "banque/fabriquereleves.h"
#include "banque/operations.h"
#include "banque/textes.h"
#include "core/btfiles.h"
#include "outils/cabinetdetest.h"
#include "outils/systemefautif.h"
#include "store/annulation.h"
#include "store/cumuls.h"

namespace fenlor::test {
namespace {

using S = SortOperation;
constexpr FormatReleve Formats[] = {FormatReleve::Ofx, FormatReleve::Camt, FormatReleve::Qif,
                                    FormatReleve::Cfonb, FormatReleve::Csv};
constexpr const char* Compte512 = "5120000000";

class ImportReleve : public CabinetDeTest {
 protected:
  explicit ImportReleve(Systeme* disque = nullptr) : CabinetDeTest(Cles::Memoire, 256u << 10, disque) {}
  void SetUp() override {
    ASSERT_TRUE(CreeExercice("2003"));
    ASSERT_TRUE(PoseCompte(Compte512, Tresorerie, "BQ", "Banque", 1));
  }

  /// "new/known/outside/unreadable".
  std::string Importe(const std::string& octets, bool inverse = false) {
    LectureReleve lecture = LitReleve(octets, FormatReleve::Inconnu);
    if (inverse)
      for (Releve& releve : lecture.comptes)
        for (OperationBanque& o : releve.operations) o.sens = !o.sens;
    ApercuReleve apercu;
    Refus refus = PrepareReleve(App(), "512", lecture, {}, apercu);
    if (!refus) refus = ImporteReleve(App(), apercu);
    if (refus) return VersUtf8(refus.texte);
    std::string texte;
    for (const std::size_t n : apercu.nombres) texte += (texte.empty() ? "" : "/") + std::to_string(n);
    return texte;
  }

  std::multimap<Date, i64> EnAttente() {
    std::multimap<Date, i64> operations;
    for (const OperationLue& o : LitOperations(App(), Compte512))
      operations.emplace(Date{o.rec.Date}, (o.rec.Sens ? 1 : -1) * Centimes(o.rec.MontantEuro));
    return operations;
  }
  template <class Fichier>
  std::size_t NombreDe() {
    Fichier fichier(App(), App().PathExercice);
    return PositionsDe(App(), fichier).size();
  }
};

std::string Comptes(std::size_t nouvelles, std::size_t connues) {
  return std::to_string(nouvelles) + "/" + std::to_string(connues) + "/0/0";
}

// Twenty files of each format: the first part of a month, again, all of it, and all of it in the four others.
TEST_F(ImportReleve, ChaqueOperationUneFois) {
  std::multimap<Date, i64> vraies;
  unsigned serie = 0;
  for (const FormatReleve premier : Formats) {
    for (int banque = 0; banque < NbBanques; ++banque) {
      for (unsigned mois = 1; mois <= 4; ++mois) {
        SCOPED_TRACE(std::string(MotsFormatReleve[static_cast<int>(premier)]) + " " + std::to_string(banque) +
                     " " + std::to_string(mois));
        const auto mienne = OperationsVraies(++serie, FaitDate(1, mois, 2003), 28);
        auto debut = mienne;
        std::erase_if(debut, [](const OperationVraie& o) { return Jour(o.date) > 14; });
        for (const OperationVraie& o : mienne) vraies.emplace(o.date, o.centimes);
        const auto fichier = [&](FormatReleve format, const std::vector<OperationVraie>& operations) {
          return Importe(FabriqueReleve(format, banque, operations, 100),
                         format == FormatReleve::Csv && banque == 3);
        };
        ASSERT_EQ(fichier(premier, debut), Comptes(debut.size(), 0));
        ASSERT_EQ(fichier(premier, debut), Comptes(0, debut.size()));
        ASSERT_EQ(fichier(premier, mienne), Comptes(mienne.size() - debut.size(), debut.size()));
        for (const FormatReleve format : Formats)
          ASSERT_EQ(fichier(format, mienne), Comptes(0, mienne.size()));
      }
    }
  }
  const auto attente = EnAttente();
  EXPECT_TRUE(std::is_permutation(attente.begin(), attente.end(), vraies.begin(), vraies.end()));
  EXPECT_EQ(NombreDe<CReleves>(), vraies.size());
}

std::string Ofx(const std::string& lignes) {
  return "<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><CURDEF>EUR<BANKACCTFROM><ACCTID>1</"
         "BANKACCTFROM><BANKTRANLIST>" +
         lignes + "</BANKTRANLIST></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>";
}
std::string Ligne(const char* date, const char* montant, const char* id, const char* nom) {
  return std::string("<STMTTRN><DTPOSTED>") + date + "<TRNAMT>" + montant + "<FITID>" + id + "<NAME>" + nom +
         "</STMTTRN>\n";
}

TEST_F(ImportReleve, UnLibelleCoupeEstLeMeme) {
  const auto qif = [](const std::string& nom) {
    return "!Type:Bank\nD10/03/2003\nT-10,00\nP" + nom + "\n^\n";
  };
  EXPECT_EQ(Importe(Ofx(Ligne("20030310", "-10", "A", "PRLV SEPA MUTUELLE SOIGNANTS"))), "1/0/0/0");
  EXPECT_EQ(Importe(qif("PRLV SEPA MUTUELLE SOIGNANTS COTISATION DE MARS")), "0/1/0/0");
  EXPECT_EQ(Importe(qif("PRLV SEPA LOYER")), "1/0/0/0");
  EXPECT_EQ(Importe(qif("GARAGE DU PORT (CARTE 09/03)")), "1/0/0/0");
  EXPECT_EQ(Importe("Date;Libellé;Montant\n10/03/2003;Carte 09/03 Garage du Port;-10\n"
                    "10/03/2003;Carte 08/03 Garage du Port;-10\n"),
            "1/1/0/0")
      << "the same words";
}

TEST_F(ImportReleve, CeQuUnIdentifiantVaut) {
  const std::string a = Ligne("20030310", "-10", "A", "CARTE"), b = Ligne("20030310", "-10", "B", "CARTE");
  EXPECT_EQ(Importe(Ofx(a)), "1/0/0/0");
  EXPECT_EQ(Importe(Ofx(b)), "1/0/0/0");  // equal but for the bank's id
  EXPECT_EQ(Importe(Ofx(Ligne("20030311", "-10", "A", "CARTE MEME"))), "0/1/0/0");  // the bank moved it
  // The bank counts anew in each file: "A" is another operation now, and ids say nothing.
  EXPECT_EQ(Importe(Ofx(Ligne("20030312", "-99", "A", "LOYER") + Ligne("20030310", "-10", "C", "CARTE"))),
            "1/1/0/0");
  // What stands more than once in a file is no id.
  EXPECT_EQ(Importe(Ofx(Ligne("20030401", "-5", "Z", "UN") + Ligne("20030402", "-6", "Z", "DEUX"))),
            "2/0/0/0");
  EXPECT_EQ(Importe(Ofx(Ligne("20030401", "-5", "Z", "TROIS"))), "1/0/0/0");
  // Without ids of the file's own kind labels decide, in whatever length; equal ones by their number.
  EXPECT_EQ(Importe("Date;Libellé;Montant\n10/03/2003;carte;-10\n10/03/2003;Carte;-10\n10/03/2003;CARTE;-10\n"
                    "12/03/2003;Virement;-99\n"),
            "2/2/0/0");
}

std::string Camt(const std::string& releves) {
  return "<Document><BkToCstmrStmt>" + releves + "</BkToCstmrStmt></Document>";
}
std::string Ntry(const char* jour, const char* id, const std::string& detail = "") {
  return std::string("<Ntry><Amt Ccy=\"EUR\">60</Amt><CdtDbtInd>CRDT</CdtDbtInd><BookgDt><Dt>") + jour +
         "</Dt></BookgDt><AcctSvcrRef>" + id + "</AcctSvcrRef>" + detail + "</Ntry>";
}

// An id that is none, or a mandate's, month after month; a month behind its days; a label of earlier
// versions.
TEST_F(ImportReleve, RienNeSePerdParUnIdentifiant) {
  for (const char* jour : {"2003-01-05", "2003-02-05"}) {
    EXPECT_EQ(Importe(Camt("<Stmt>" + Ntry(jour, "NOTPROVIDED") + "</Stmt>")), "1/0/0/0");
    EXPECT_EQ(Importe(std::string("Date;Libellé;Référence;Montant\n") + jour + ";LOYER;RUM 1;-500\n"),
              "1/0/0/0");
  }
  const std::string a = Ntry("2003-03-05", "A"), b = Ntry("2003-03-06", "B");
  EXPECT_EQ(Importe(Camt("<Stmt>" + a + "</Stmt><Stmt>" + b + "</Stmt><Stmt>" + a + b + "</Stmt>")),
            "2/2/0/0");
  EXPECT_EQ(Importe("!Type:Bank\nD05/04/2003\nT60\nPDUPONT\n^\n"), "1/0/0/0");
  const auto tx = [](const char* nom) {
    return std::string("<TxDtls><RltdPties><Dbtr><Nm>") + nom + "</Nm></Dbtr></RltdPties></TxDtls>";
  };
  const std::string lot = "<NtryDtls>" + tx("DUPONT") + tx("DURAND") + "</NtryDtls>";
  EXPECT_EQ(Importe(Camt("<Stmt>" + Ntry("2003-04-05", "0", lot) + "</Stmt>")), "0/1/0/0");
}

TEST_F(ImportReleve, LaFormeRetenueSuitLaBanque) {
  const std::string titres = "Date;Libellé;Débit;Crédit\n", lignes = "05/03/2003;Électricité;1;\n";
  ASSERT_FALSE(RetientForme(App(), Compte512, ProposeCsv(titres + lignes)));
  const auto retenue = FormeRetenue(App(), Compte512, *DepuisUtf8(titres + lignes));
  ASSERT_TRUE(retenue);
  EXPECT_EQ(retenue->jeu, JeuTexte::Windows1252);
  EXPECT_FALSE(FormeRetenue(App(), Compte512, "Date;Libellé;Crédit;Débit\n" + lignes))
      << "sides would change";
}

TEST_F(ImportReleve, CeQuiResteDehors) {
  // The last day of the exercice and the day behind; a currency that the books do not know; a row without a
  // date.
  EXPECT_EQ(Importe("Date;Date valeur;Libellé;Montant;Devise\n31/12/2003;02/01/2004;a;1;EUR\n"
                    "01/01/2004;;b;2;EUR\n30/12/2003;;c;3;USD\nx;;d;4;EUR\n29/12/2003;;e;65,60;FRF\n"),
            "2/0/1/2");
  const auto operations = LitOperations(App(), Compte512);
  ASSERT_EQ(operations.size(), 2u);
  EXPECT_EQ(Centimes(operations[0].rec.MontantFranc), 6560);
  EXPECT_EQ(Centimes(operations[0].rec.MontantEuro), 1000);
  EXPECT_EQ(Centimes(operations[1].rec.MontantFranc), 656);
  EXPECT_EQ(+operations[0].rec.DateValeur, FaitDate(29, 12, 2003));
  EXPECT_EQ(+operations[1].rec.DateValeur, FaitDate(2, 1, 2004));
  Importe("Solde (FRANCS);8 098,18\nDate;Libellé;Montant en francs\n28/11/2003;Achat;-81,99\n");
  EXPECT_FALSE(LitSoldeReleve(App(), Compte512).value().euro);
}

TEST_F(ImportReleve, ResteConnueApresSonDepartEtEnUneSynchronisation) {
  const std::string octets =
      FabriqueReleve(FormatReleve::Ofx, 0, OperationsVraies(1, FaitDate(1, 3, 2003), 31), 5000);
  const u64 avant = Magasin().NbSynchros();
  const std::string fait = Importe(octets);
  EXPECT_EQ(Magasin().NbSynchros(), avant + 1);
  const auto solde = LitSoldeReleve(App(), Compte512);
  ASSERT_TRUE(solde);
  EXPECT_EQ(Centimes(solde->montant), 5000);
  Boite.Defaut = RepOui;
  for (const OperationLue& o : LitOperations(App(), Compte512))
    ASSERT_FALSE(SupprimeOperation(App(), o.position, true));
  EXPECT_EQ(Importe(octets), "0/" + fait.substr(0, fait.find('/')) + "/0/0");
  EXPECT_EQ(NombreDe<CBanques>(), 0u);
  // An older balance leaves the later one, as does one behind the exercice.
  for (const char* jour : {"<DTASOF>20030131", "<DTASOF>20040101"}) {
    std::string autre = octets;
    autre.replace(autre.find("<DTASOF>20031231"), 16, jour);
    autre.replace(autre.find("50.00\n", autre.find("BALAMT")), 5, "10.00");
    Importe(autre);
    EXPECT_EQ(Centimes(LitSoldeReleve(App(), Compte512)->montant), 5000) << jour;
  }
}

class ImportSurDisque : protected DisqueDeTest, public ImportReleve {
 protected:
  ImportSurDisque() : ImportReleve(&Disque) {}
};

/// The balance of a statement stands and goes with its operations, whichever call of the disk fails.
TEST_F(ImportSurDisque, LeSoldeVaAvecLesOperations) {
  const std::string octets =
      FabriqueReleve(FormatReleve::Ofx, 0, OperationsVraies(1, FaitDate(1, 3, 2003), 31), 5000);
  const auto solde = [&] { return LitSoldeReleve(App(), Compte512).has_value(); };
  const auto numero = [&] {
    return !App().Reglages.LitIni(Texte(SecReleves), TexteFormat(CleNumeroBanque, {Compte512})).empty();
  };
  CBanques banques(App(), App().PathExercice);
  CReleves releves(App(), App().PathExercice);
  ASSERT_TRUE(banques.OpenFile() && releves.OpenFile());
  Magasin().QVRetientUnites(true);
  Disque.Sauf(NomFichierRetenues);  // what fails there costs the taking back alone
  unsigned essais = 0, refuses = 0;
  for (bool panne = true; panne;) {
    Disque.Programme(++essais, ENOSPC, SystemeFautif::Ecriture | SystemeFautif::Synchro);
    const std::string fait = Importe(octets);
    panne = Disque.NbPannes() != 0;
    Disque.Repare();
    const bool ecrit = fait.ends_with("/0/0/0");
    refuses += !ecrit;
    ASSERT_EQ(solde(), ecrit) << "failure " << essais << ": " << fait;
    ASSERT_EQ(numero(), ecrit) << "failure " << essais << ": " << fait;
    ASSERT_EQ(EnAttente().empty(), !ecrit) << "failure " << essais << ": " << fait;
    if (!ecrit) continue;
    ASSERT_TRUE(Magasin().QVReprend(false));
    ASSERT_FALSE(solde()) << "taken back with its import";
  }
  EXPECT_GT(refuses, 2u);
  // What an earlier program, killed between the two, left: all is known, and the balance comes again.
  Importe(octets);
  ASSERT_FALSE(EcritSoldeReleve(App(), Compte512, {}));
  EXPECT_EQ(Importe(octets).substr(0, 2), "0/");
  EXPECT_TRUE(solde());
}

TEST_F(ImportReleve, LeCompteDuFichier) {
  const std::string deux =
      "!Account\nNUN\n^\n!Type:Bank\nD01/03/2003\nT1\n^\n!Account\nNDEUX\n^\n!Type:Bank\nD01/03/"
      "2003\nT2\n^\n";
  const LectureReleve lecture = LitReleve(deux, FormatReleve::Inconnu);
  ApercuReleve apercu;
  EXPECT_EQ(PrepareReleve(App(), "512", lecture, {}, apercu).numero, ErrPlusieursComptes.numero);
  EXPECT_EQ(PrepareReleve(App(), "512", lecture, "TROIS", apercu).numero, ErrNumeroBanque.numero);
  EXPECT_EQ(PrepareReleve(App(), "706", lecture, {}, apercu).numero, 3450u);
  ASSERT_FALSE(PrepareReleve(App(), "512", lecture, "DEUX", apercu));
  ASSERT_FALSE(ImporteReleve(App(), apercu));
  EXPECT_EQ(Importe(deux), "0/1/0/0");  // the choice is remembered
  const LectureReleve autre =
      LitReleve("!Account\nNUN\n^\n!Type:Bank\nD01/03/2003\nT1\n^\n", FormatReleve::Inconnu);
  ASSERT_FALSE(PrepareReleve(App(), "512", autre, {}, apercu));
  EXPECT_EQ(apercu.autreNumero, "DEUX");
  LectureReleve monnaies;
  for (const char* monnaie : {"EUR", "USD"}) monnaies.Compte("DEUX", monnaie);
  EXPECT_EQ(PrepareReleve(App(), "512", monnaies, {}, apercu).numero, ErrPlusieursComptes.numero);
  ASSERT_FALSE(PrepareReleve(App(), "512", monnaies, "DEUX USD", apercu));
  EXPECT_EQ(apercu.monnaie, "") << "neither is taken for the other";
}

}  // namespace
}  // namespace fenlor::test
