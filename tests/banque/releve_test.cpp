// Readers of statements: what each takes, what each complains of.
#include <gtest/gtest.h>

#include "banque/fabriquereleves.h"
#include "banque/relevecsv.h"
#include "store/texte1252.h"

namespace fenlor {
namespace {

/// "03/11/2003 -1250 Libellé [id]" for each operation, then "rank: reason" for each complaint.
std::string Lu(const LectureReleve& lecture) {
  std::string texte;
  for (const Releve& releve : lecture.comptes)
    for (const OperationBanque& o : releve.operations)
      texte += StrDate(o.date) + ' ' + std::to_string(o.sens ? o.centimes : -o.centimes) + ' ' +
               VersUtf8(o.libelle) + (o.id.empty() ? "" : " [" + o.id + "]") +
               (o.monnaie == "USD" ? " USD\n" : "\n");
  for (const PlainteReleve& plainte : lecture.plaintes)
    texte += std::to_string(plainte.rang) + ": " + VersUtf8(plainte.raison) + '\n';
  return texte;
}
/// "number currency balance day;" for each account.
std::string Comptes(const LectureReleve& lecture) {
  std::string texte;
  for (const Releve& r : lecture.comptes)
    texte += r.compte + ' ' + r.monnaie + ' ' + (r.solde ? std::to_string(*r.solde) : "-") + ' ' +
             StrDate(r.dateSolde) + ';';
  return texte;
}
std::string Lu(std::string_view octets) { return Lu(LitReleve(octets, FormatReleve::Inconnu)); }

TEST(Releves, MontantsEtDatesDesBanques) {
  const struct {
    const char* texte;
    char decimale;
    std::optional<i64> centimes;
  } montants[] = {{"-1 234,50", ',', -123450},
                  {"1.234,5", ',', 123450},
                  {"1,234.50", '.', 123450},
                  {"12,30-", ',', -1230},
                  {"+ 7 \x80", ',', 700},
                  {"12 EUR", 0, 1200},
                  {"1.234", 0, {}},
                  {"1.234.567", 0, 123456700},
                  {"0.500", 0, 50},
                  {"(1 000,50 \x80)", ',', -100050},
                  {"(-1)", ',', {}},
                  {"1.23", 0, 123},
                  {"1.234", '.', {}},
                  {"1,2,3", ',', {}},
                  {"12a", ',', {}},
                  {"", ',', {}},
                  {"--1", ',', {}},
                  {"0,005", ',', {}},
                  {"0,500", ',', 50},
                  {"12 34,00", ',', {}},
                  {"1'000'000.00", 0, 100000000},
                  {"9999999999999999", ',', {}}};
  for (const auto& m : montants) EXPECT_EQ(LitCentimes(m.texte, m.decimale), m.centimes) << m.texte;
  const struct {
    const char* texte;
    OrdreDate ordre;
    Date date;
  } dates[] = {{"3/11/2003", OrdreDate::JourMoisAnnee, FaitDate(3, 11, 2003)},
               {"031103", OrdreDate::JourMoisAnnee, FaitDate(3, 11, 2003)},
               {"2003-11-03T12:00", OrdreDate::AnneeMoisJour, FaitDate(3, 11, 2003)},
               {"03/11'03", OrdreDate::JourMoisAnnee, FaitDate(3, 11, 2003)},
               {"11/03/99", OrdreDate::MoisJourAnnee, FaitDate(3, 11, 1999)},
               {"31/11/2003", OrdreDate::JourMoisAnnee, 0},
               {"3//2003", OrdreDate::JourMoisAnnee, 0},
               {"03/11/2103", OrdreDate::JourMoisAnnee, 0},
               {"99999999", OrdreDate::AnneeMoisJour, 0}};
  for (const auto& d : dates) EXPECT_EQ(LitJour(d.texte, d.ordre), d.date) << d.texte;
}

TEST(Releves, UneLigneIllisibleNArreteRienEtSeDit) {
  EXPECT_EQ(
      Lu("Date;Libellé;Montant\n03/11/2003;\"a;\nb\";1,00\nx;y;z\n\n05/11/2003;c;quatre\n06/11/"
         "2003;\"jamais\n"
         "07/11/2003;d ≠ €;-2\n08/11/2003;e;0\n"),
      "03/11/2003 100 a; b\n07/11/2003 -200 d ? €\n4: La date \"x\" est illisible.\n"
      "6: Le montant \"quatre\" est illisible.\n7: Cette ligne est trop longue, ou un guillemet n'y est pas "
      "fermé.\n9: Le montant est nul.\n");
  EXPECT_EQ(
      Lu("!Type:Bank\nD03/11/2003\nT1,00\nPa\n^\nD2003\nT1\n^\n!Type:Invst\nD04/11/2003\nT1\n^\n!Type:Bank\n"
         "D05/11/2003\nT2.5\n^\nD06/11/2003\nT12"),
      "03/11/2003 100 a\n05/11/2003 250 \n6: La date \"2003\" est illisible.\n9: \"!Type:Invst\" n'est pas "
      "reconnu à cette place.\n17: L'opération est inachevée : le fichier est coupé.\n");
  EXPECT_EQ(Lu("<OFX><BANKMSGSRSV1><STMTTRNRS><STMTRS><BANKTRANLIST>\n"
               "<STMTTRN><DTPOSTED>20031103<TRNAMT>-1.00<FITID>1<NAME>a &amp; <![CDATA[b<c]]></STMTTRN>\n"
               "<STMTTRN><DTPOSTED>2003<TRNAMT>1<NAME>b</STMTTRN>\n<STMTTRN><DTPOSTED>20031104<TRNAMT>abc</"
               "STMTTRN>\n"
               "<STMTTRN><DTPOSTED>20031105"),
            "03/11/2003 -100 a & b<c [1]\n3: La date \"2003\" est illisible.\n4: Le montant \"abc\" est "
            "illisible.\n"
            "5: L'opération est inachevée : le fichier est coupé.\n");
  const std::string ecriture =
      "<Ntry><Amt Ccy=\"EUR\">1.00</Amt><CdtDbtInd>DBIT</CdtDbtInd><BookgDt><Dt>2003-11-03</Dt>"
      "</BookgDt><Sts>BOOK</Sts></Ntry>";
  std::string attente = ecriture;
  attente.replace(attente.find("BOOK"), 4, "PDNG");
  EXPECT_EQ(Lu("<Document><BkToCstmrStmt><Stmt>" + ecriture + attente + "<Ntry/>" + ecriture + "<Ntry><Amt>"),
            "03/11/2003 -100 \n03/11/2003 -100 \n0: Le fichier est abîmé ou coupé à partir de l'octet 402.\n"
            "2: La banque n'a pas encore passé cette opération (PDNG).\n3: La date \"\" est illisible.\n");
}

TEST(Releves, BornesEtFichiersVides) {
  EXPECT_EQ(Lu(""), "0: Ce fichier ne contient aucune opération.\n");
  EXPECT_EQ(Lu("bonjour"), "0: Les colonnes de la date et du montant ne sont pas désignées.\n");
  EXPECT_EQ(Lu(std::string(TailleReleveMax + 1, ' ')), "0: Le fichier dépasse 64 Mio : il n'est pas lu.\n");
  std::string profond = "<Document><BkToCstmrStmt>";
  for (int i = 0; i < 100000; ++i) profond += "<Stmt>";
  EXPECT_NE(Lu(profond).find("profondément"), std::string::npos);
  std::string ofx = "<OFX>";
  for (int i = 0; i < 1000; ++i) ofx += "<STMTRS>";
  EXPECT_EQ(Lu(ofx), "0: Le fichier est imbriqué trop profondément.\n");
  const std::string longue(LigneReleveMax + 10, 'x');
  EXPECT_EQ(Lu("Date;Montant\n01/01/2003;" + longue + "\n02/01/2003;1\n"),
            "02/01/2003 100 \n2: Cette ligne est trop longue, ou un guillemet n'y est pas fermé.\n");
}

TEST(Releves, UnTableauProposeSaForme) {
  using C = ColonneReleve;
  const auto operations = test::OperationsVraies(1, FaitDate(1, 3, 2003), 31);
  for (int banque = 0; banque < test::NbBanques; ++banque) {
    SCOPED_TRACE(banque);
    const std::string octets = test::FabriqueReleve(FormatReleve::Csv, banque, operations, 123456);
    const FormeCsv forme = ProposeCsv(octets);
    EXPECT_EQ(forme.separateur, ";;\t,;"[banque]);
    EXPECT_EQ(forme.decimale, banque == 3 ? '.' : ',');
    EXPECT_EQ(forme[C::Debit], banque == 1 || banque == 2 ? 3 : -1);
    EXPECT_EQ(forme.inverse, banque == 1);
    EXPECT_EQ(forme.entete, banque == 0 ? 4u : banque == 4 ? 0u : 1u);
    const auto relue = FormeDepuis(TexteForme(forme));
    ASSERT_TRUE(relue);
    EXPECT_EQ(FormePour(octets, *relue), forme);
  }
  EXPECT_TRUE(FormeDepuis("0|59|44|0|0|0|-1|1|-1|2|-1|-1|-1|-1|-1")) << "of an earlier version";
  EXPECT_FALSE(FormeDepuis("0|59|44|0|0|-1|-1|-1|-1|-1|-1|-1|-1|-1|-1") || FormeDepuis("rien"));
}

std::string Ofx(const std::string& releves) { return "<OFX><BANKMSGSRSV1>" + releves + "</OFX>"; }
std::string ReleveOfx(const std::string& suite, const char* monnaie = "EUR") {
  return std::string("<STMTTRNRS><STMTRS><CURDEF>") + monnaie + "<BANKACCTFROM><ACCTID>12</BANKACCTFROM>" +
         "<BANKTRANLIST>" + suite + "</STMTRS></STMTTRNRS>";
}
std::string Une(const char* jour, const char* montant, const char* suite = "") {
  return std::string("<STMTTRN><DTPOSTED>") + jour + "<TRNAMT>" + montant + "<NAME>a" + suite + "</STMTTRN>";
}
std::string Camt(const std::string& suite) {
  return "<Document><BkToCstmrStmt><Stmt>" + suite + "</Stmt></BkToCstmrStmt></Document>";
}
std::string Ntry(const char* sens, const std::string& suite, const char* jour = "2003-11-03") {
  return std::string("<Ntry><Amt Ccy=\"EUR\">60.00</Amt><CdtDbtInd>") + sens +
         "</CdtDbtInd><Sts>BOOK</Sts><BookgDt><Dt>" + jour + "</Dt></BookgDt>" + suite + "</Ntry>";
}
std::string Tx(const std::string& debiteur, const std::string& suite = "") {
  return "<TxDtls><RltdPties><Dbtr><Nm>" + debiteur + "</Nm></Dbtr>" + suite + "</RltdPties></TxDtls>";
}

struct Cas {
  std::string octets;
  const char *lu, *comptes = nullptr;
};
void Lis(const std::vector<Cas>& tous) {
  for (const auto& [octets, lu, comptes] : tous) {
    const LectureReleve lecture = LitReleve(octets, FormatReleve::Inconnu);
    EXPECT_EQ(Lu(lecture), lu) << octets;
    const std::string siens = Comptes(lecture);
    EXPECT_EQ(comptes ? comptes : siens, siens) << octets;
  }
}

/// What banks write in ways of their own: never another day, side or amount, and nothing without a word.
TEST(Releves, HabitudesDesBanques) {
  const std::string trois = "D05/11/2003\nT-12.500\nPa\n^\nD06/11/2003\nT";
  Lis({// An account in two currencies, the later balance of one of them, an operation in another.
       {Ofx(ReleveOfx(Une("20031103", "-1", "<CURRENCY><CURSYM>USD</CURRENCY>") + "</BANKTRANLIST>" +
                      "<LEDGERBAL><BALAMT>2<DTASOF>20031231</LEDGERBAL>") +
            ReleveOfx("<LEDGERBAL><BALAMT>1<DTASOF>20031130</LEDGERBAL>") +
            ReleveOfx(Une("20031104", "-2"), "USD")),
        "03/11/2003 -100 a USD\n04/11/2003 -200 a USD\n", "12 EUR 200 31/12/2003;12 USD - ;"},
       {Camt("<Bal><Tp><CdOrPrtry><Cd>CLBD</Cd></CdOrPrtry></Tp><Amt Ccy=\"USD\">1</Amt>"
             "<CdtDbtInd>CRDT</CdtDbtInd><Dt><Dt>2003-11-30</Dt></Dt></Bal>"),
        "0: Ce fichier ne contient aucune opération.\n", " USD 100 30/11/2003;"},
       {Ofx(ReleveOfx(Une("20031103", "-12.500") + Une("2003-11-04", "3.250"))),
        "03/11/2003 -1250 a\n04/11/2003 325 a\n"},
       {Camt(Ntry("CRDT", "<NtryDtls><Btch><NbOfTxs>3</NbOfTxs></Btch>" + Tx("D") + Tx("E") + "</NtryDtls>")),
        "03/11/2003 6000 3 opérations : D, E\n"},
       {Camt(Ntry("CRDT", "<RvslInd>true</RvslInd><NtryDtls>" + Tx("MOI", "<Cdtr><Nm>EDF</Nm></Cdtr>") +
                              "</NtryDtls>")),
        "03/11/2003 6000 EDF\n"},
       {Camt(Ntry("DBIT", "", "2003-11-03+01:00") +
             Ntry("DBIT", "<AddtlNtryInf>a" + std::string(1, '\0') + "é</AddtlNtryInf>", "2003-11-05Z")),
        "03/11/2003 -6000 \n05/11/2003 -6000 a é\n"},
       {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" +
            Camt(Ntry("DBIT", "<AddtlNtryInf>é</AddtlNtryInf>")),
        "03/11/2003 -6000 é\n"},
       {"<Document><BkToCstmrAcctRpt><Rpt/></BkToCstmrAcctRpt></Document><!-- camt.052 -->",
        "0: \"BkToCstmrAcctRpt\" n'est pas reconnu à cette place.\n"},
       {"!Type:Bank\nD11/ 5' 3\nT(1.00)\nPa\n^\nD11/25/03\nT1,234.00\nPb\n^\nDx\nT1\n^\n",
        "05/11/2003 -100 a\n25/11/2003 123400 b\n10: La date \"x\" est illisible.\n"},
       {trois + "1.25\n^\n", "05/11/2003 -1250 a\n06/11/2003 125 \n"},
       {trois + "1,25\n^\n", "05/11/2003 -1250000 a\n06/11/2003 125 \n"},
       {trois + "1\n^\n", "06/11/2003 100 \n1: Le montant \"-12.500\" est illisible.\n"}});
}

TEST(Releves, UnTableauInconnuSeLitCommeUnHommeLeLirait) {
  const std::string titres = "Date;Libellé;";
  Lis({// Two currencies side by side: the balance is that of the amounts.
       {"Numéro Compte ;1234567A020\nDate ;30/11/2003\nSolde (EUROS) ;1 234,56\nSolde (FRANCS) ;8 098,18\n\n"
        "Date;Libellé;Montant(EUROS);Montant(FRANCS)\n28/11/2003;Achat;-12,50;-81,99\n",
        "28/11/2003 -1250 Achat\n", "1234567A020 EUR 123456 30/11/2003;"},
       {"Relevé du compte n° : 12\nSolde (EUROS);1 234,56\nSolde (FRANCS);8 098,18\nDate;Libellé;Montant en "
        "francs\n28/11/2000;Achat;-81,99\n",
        "28/11/2000 -8199 Achat\n", "12 FRF 809818 ;"},
       {"Date,Who,Amount,Currency\n2003-11-05,ACME,-10.50,EUR\n2003-11-06,\"Smith, John\",\"1,000.00\",EUR\n",
        "05/11/2003 -1050 ACME\n06/11/2003 100000 Smith, John\n"},
       {"05/11/03\tLOYER\t-500,00\n06/11/03\tCPAM\t300,25\n31/02/03\tFAUX\t1,00\n",
        "05/11/2003 -50000 LOYER\n06/11/2003 30025 CPAM\n3: La date \"31/02/03\" est illisible.\n"},
       // Nobody knows whose balance it is; that of the only account.
       {"Solde au 30/11/2003;5\naccountNum;dateOp;label;amount;accountLabel\n11;05/11/2003;a;1;C\n"
        "12;05/11/2003;b;2;L\n",
        "05/11/2003 100 a\n05/11/2003 200 b\n", "  500 30/11/2003;11  - ;12  - ;"},
       {"Solde au 30/11/2003;5\nCompte;Date;Montant\n11;05/11/2003;1\n", "05/11/2003 100 \n",
        "11  500 30/11/2003;"},
       {titres + "Montant;Débit/Crédit\n05/11/2003;a;12,00;D\n06/11/2003;b;1;C\n",
        "05/11/2003 -1200 a\n06/11/2003 100 b\n"},
       {titres + "Type;Montant\n05/11/2003;a;Débit;12,00\n06/11/2003;b;Crédit;1\n",
        "05/11/2003 -1200 a\n06/11/2003 100 b\n"},
       {titres + "Sens;Montant\n05/11/2003;a;-;12,00\n06/11/2003;b;+;1\n",
        "05/11/2003 -1200 a\n06/11/2003 100 b\n"},
       {"Booking "
        "date,Text,Debit,Credit,Balance\n11/05/2003,a,1.00,,9.00\n11/06/2003,b,1.00,,8.00\n11/07/2003,c,"
        "1.00,,7.00\n11/08/2003,d,1.00,,6.00\n11/25/2003,e,,2.00,8.00\n",
        "05/11/2003 -100 a\n06/11/2003 -100 b\n07/11/2003 -100 c\n08/11/2003 -100 d\n25/11/2003 200 e\n"},
       {"Jour;Quoi;Moins;Plus\n05/11/2003;a;1,00;\n06/11/2003;b;1,00;\n07/11/2003;c;;2,00\n",
        "05/11/2003 -100 a\n06/11/2003 -100 b\n07/11/2003 200 c\n"},
       {titres + "Débit;Crédit\n01/11/2003;Solde précédent;;5\n05/11/2003;Solde facture 12;1;\n"
                 "30/11/2003;Solde au 30/11/2003;4;\n",
        "05/11/2003 -100 Solde facture 12\n2: Un solde initial n'est pas une opération.\n",
        "  -400 30/11/2003;"},
       {"Date,Amount\n2003-11-05,-1.00\n", "05/11/2003 -100 \n"}});
}

TEST(Releves, ChaqueFormatRendLesOperationsEtLeSolde) {
  const auto operations = test::OperationsVraies(2, FaitDate(1, 3, 2003), 31);
  for (const auto format :
       {FormatReleve::Ofx, FormatReleve::Camt, FormatReleve::Qif, FormatReleve::Cfonb, FormatReleve::Csv}) {
    for (int banque = 0; banque < test::NbBanques; ++banque) {
      SCOPED_TRACE(std::string(MotsFormatReleve[static_cast<int>(format)]) + " " + std::to_string(banque));
      const std::string octets = test::FabriqueReleve(format, banque, operations, -123456);
      EXPECT_EQ(DevineFormat(octets), format);
      LectureReleve lecture = LitReleve(octets, format);
      ASSERT_EQ(lecture.plaintes.size(), 0u) << Lu(lecture);
      ASSERT_EQ(lecture.comptes.size(), 1u);
      const Releve& releve = lecture.comptes[0];
      const bool inverse = format == FormatReleve::Csv && banque == 3;  // nothing in the file says so
      ASSERT_EQ(releve.operations.size(), operations.size());
      for (std::size_t i = 0; i < operations.size(); ++i) {
        const OperationBanque& o = releve.operations[i];
        EXPECT_EQ(o.date, operations[i].date);
        EXPECT_EQ(o.sens ? o.centimes : -o.centimes,
                  inverse ? -operations[i].centimes : operations[i].centimes);
        EXPECT_EQ(LibelleNu(o.libelle), LibelleNu(DepuisUtf8(operations[i].libelle).value()));
      }
      const bool solde = format != FormatReleve::Qif && (format != FormatReleve::Csv || banque == 0);
      EXPECT_EQ(releve.solde, solde ? std::optional<i64>(-123456) : std::nullopt);
      EXPECT_EQ(releve.dateSolde, solde ? FaitDate(31, 12, 2003) : 0u);
    }
  }
}

}  // namespace
}  // namespace fenlor
