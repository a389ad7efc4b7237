#include "banque/fabriquereleves.h"

#include <cstdio>

#include "store/texte1252.h"

namespace fenlor::test {

namespace {

using Operations = std::vector<OperationVraie>;

std::string Jours(Date date, const char* forme, bool anneeDevant = true) {
  char texte[40];
  const unsigned a = Annee(date), m = Mois(date), j = Jour(date);
  std::snprintf(texte, sizeof texte, forme, anneeDevant ? a : j, m, anneeDevant ? j : a);
  return texte;
}
std::string Iso(Date date, const char* trait = "-") {
  return Jours(date, (std::string("%04u") + trait + "%02u" + trait + "%02u").c_str());
}
std::string Francais(Date date) { return Jours(date, "%02u/%02u/%04u", false); }
std::string Court(Date date) {
  char texte[16];
  std::snprintf(texte, sizeof texte, "%02u%02u%02u", Jour(date), Mois(date), Annee(date) % 100);
  return texte;
}

/// "-1234,50"; with groups "-1 234,50".
std::string Montant(i64 centimes, char point, const char* groupe = "") {
  const i64 absolu = centimes < 0 ? -centimes : centimes;
  std::string entiers = std::to_string(absolu / 100), bas = std::to_string(100 + absolu % 100).substr(1);
  if (*groupe && entiers.size() > 3) entiers.insert(entiers.size() - 3, groupe);
  return (centimes < 0 ? "-" : "") + entiers + point + bas;
}

std::string Code(const std::string& utf8, int banque) {
  if (banque == 1) return DepuisUtf8(utf8).value();
  if (banque != 2) return utf8;
  std::string octets = "\xFF\xFE";
  const std::string texte = DepuisUtf8(utf8).value();
  for (const char c : texte) {
    const bool oe = c == '\x8C';  // the one character above U+00FF that the labels have
    octets += oe ? std::string("\x52\x01") : std::string{c, 0};
  }
  return octets;
}

std::string Capitales(const std::string& utf8) { return VersUtf8(EnMajuscules(DepuisUtf8(utf8).value())); }

std::string Remplace(std::string texte, const std::string& de, const std::string& vers) {
  for (std::size_t p = 0; (p = texte.find(de, p)) != std::string::npos; p += vers.size())
    texte.replace(p, de.size(), vers);
  return texte;
}
std::string Sur(const std::string& texte) { return Remplace(Remplace(texte, "&", "&amp;"), "<", "&lt;"); }

/// At a character: `n` of them, the rest.
std::pair<std::string, std::string> Coupe(const std::string& utf8, std::size_t n) {
  const std::string texte = DepuisUtf8(utf8).value();
  return {VersUtf8(texte.substr(0, n)), texte.size() > n ? VersUtf8(texte.substr(n)) : std::string()};
}

std::string Ofx(int banque, const Operations& operations, i64 solde) {
  const bool xml = banque == 2;
  const auto champ = [xml](const std::string& nom, const std::string& valeur) {
    if (valeur.empty()) return std::string();
    return '<' + nom + '>' + Sur(valeur) + (xml ? "</" + nom + ">\n" : "\n");
  };
  std::string texte =
      xml ? "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<?OFX OFXHEADER=\"200\" VERSION=\"211\"?>\n"
          : std::string("OFXHEADER:100\r\nDATA:OFXSGML\r\nVERSION:102\r\nSECURITY:NONE\r\n") +
                (banque == 1 ? "ENCODING:USASCII\r\nCHARSET:1252\r\n"
                             : "ENCODING:UTF-8\r\nCHARSET:NONE\r\n") +
                "COMPRESSION:NONE\r\nOLDFILEUID:NONE\r\nNEWFILEUID:NONE\r\n\r\n";
  texte += "<OFX><SIGNONMSGSRSV1><SONRS><STATUS>" + champ("CODE", "0") + champ("SEVERITY", "INFO") +
           "</STATUS>" + champ("DTSERVER", "20031231") + champ("LANGUAGE", "FRA") +
           "</SONRS></SIGNONMSGSRSV1>\n<BANKMSGSRSV1>" + "<STMTTRNRS>" + champ("TRNUID", "1") + "<STMTRS>" +
           champ("CURDEF", "EUR") + "<BANKACCTFROM>" + champ("BANKID", "10000") + champ("BRANCHID", "20000") +
           champ("ACCTID", "0001234567" + std::to_string(banque)) + champ("ACCTTYPE", "CHECKING") +
           "</BANKACCTFROM><BANKTRANLIST>\n";
  for (const OperationVraie& o : operations) {
    const auto [nom, memo] = Coupe(o.libelle, 32);
    texte += "<STMTTRN>" + champ("TRNTYPE", o.centimes > 0 ? "CREDIT" : "DEBIT") +
             champ("DTPOSTED", Iso(o.date, "") + (banque == 4 ? "233000.000[-5:EST]" : "")) +
             champ("TRNAMT", Montant(o.centimes, banque == 1 ? ',' : '.')) +
             champ("FITID", banque == 1   ? "0"
                            : banque == 3 ? Iso(o.date, "") + Montant(o.centimes, '.')
                                          : o.id) +
             champ("NAME", nom) + champ("MEMO", banque == 4 ? o.libelle : memo) + "</STMTTRN>\n";
  }
  texte += "</BANKTRANLIST><LEDGERBAL>" + champ("BALAMT", Montant(solde, '.')) + champ("DTASOF", "20031231") +
           "</LEDGERBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>\n";
  return banque == 1 ? Code(texte, 1) : texte;
}

std::string Camt(int banque, const Operations& operations, i64 solde) {
  const std::string p = banque == 1 ? "ns:" : "";
  const auto champ = [&](const std::string& nom, const std::string& dedans) {
    return "<" + p + nom + ">" + dedans + "</" + p + nom.substr(0, nom.find(' ')) + ">";
  };
  const auto montant = [&](i64 centimes) {
    return champ("Amt Ccy=\"EUR\"", Montant(centimes < 0 ? -centimes : centimes, '.')) +
           champ("CdtDbtInd", centimes < 0 ? "DBIT" : "CRDT");
  };
  std::string corps =
      champ("Acct", champ("Id", champ("IBAN", "FR761000020000000123456" + std::to_string(banque))) +
                        champ("Ccy", "EUR")) +
      champ("Bal", champ("Tp", champ("CdOrPrtry", champ("Cd", "CLBD"))) + montant(solde) +
                       champ("Dt", champ("Dt", "2003-12-31")));
  for (const OperationVraie& o : operations) {
    const auto [nom, objet] = Coupe(o.libelle, 12);
    const std::string detail =
        banque == 2 ? champ("RltdPties", champ(o.centimes < 0 ? "Cdtr" : "Dbtr", champ("Nm", Sur(nom)))) +
                          champ("RmtInf", champ("Ustrd", Sur(objet)))
                    : std::string();
    const std::string jour =
        banque == 4 ? champ("DtTm", Iso(o.date) + "T23:59:00+09:00") : champ("Dt", Iso(o.date));
    corps += champ("Ntry", montant(o.centimes) + champ("Sts", banque == 3 ? champ("Cd", "BOOK") : "BOOK") +
                               champ("BookgDt", jour) + champ("ValDt", champ("Dt", Iso(NextDate(o.date)))) +
                               (banque == 1 ? "" : champ("AcctSvcrRef", "R" + o.id)) +
                               champ("NtryDtls", champ("TxDtls", detail)) +
                               (banque == 2 ? "" : champ("AddtlNtryInf", Sur(o.libelle)))) +
             "\n";
  }
  const std::string texte = std::string("<?xml version=\"1.0\" encoding=\"") +
                            (banque == 1 ? "ISO-8859-1" : "UTF-8") + "\"?>\n<" + p +
                            "Document xmlns=\"urn:iso:std:iso:20022:tech:xsd:camt.053.001.02\">" +
                            champ("BkToCstmrStmt", champ("Stmt", corps)) + "</" + p + "Document>\n";
  return banque == 1 ? Code(texte, 1) : texte;
}

std::string Qif(int banque, const Operations& operations) {
  const char* fin = banque == 3 ? "\r\n" : "\n";
  std::string texte = std::string("!Type:Bank") + fin;
  for (const OperationVraie& o : operations) {
    const auto [tiers, memo] = Coupe(o.libelle, banque == 0 ? 20 : 80);
    const std::string annee = std::to_string(Annee(o.date));
    const std::string date =
        banque == 2 ? Francais(o.date).substr(0, 5) + "'" + annee.substr(2) : Francais(o.date);
    texte += "D" + date + fin + "T" + Montant(o.centimes, banque == 1 ? ',' : '.', banque == 3 ? "," : "") +
             fin + "P" + tiers + fin + (memo.empty() ? "" : "M" + memo + fin) + "^" + fin;
  }
  if (banque == 4) texte.resize(texte.size() - 2);
  return Code(texte, banque);
}

std::string Signe(i64 centimes, bool accents) {
  char chiffres[24];
  std::snprintf(chiffres, sizeof chiffres, "%014lld",
                static_cast<long long>(centimes < 0 ? -centimes : centimes));
  std::string texte = chiffres;
  const int dernier = texte.back() - '0';
  texte.pop_back();
  if (dernier > 0) return texte + static_cast<char>((centimes < 0 ? 'J' : 'A') + dernier - 1);
  return texte + (accents ? (centimes < 0 ? "è" : "é") : (centimes < 0 ? "}" : "{"));
}

std::string Cfonb(int banque, const Operations& operations, i64 solde) {
  const std::string fin = banque == 1 ? "" : "\r\n", compte = "0001234567" + std::to_string(banque);
  const auto large = [](const std::string& utf8, std::size_t n) {
    std::string texte = DepuisUtf8(utf8).value().substr(0, n);
    return VersUtf8(texte + std::string(n - texte.size(), ' '));
  };
  const auto tete = [&](const char* genre, Date date) {
    return std::string(genre) + "10000    20000EUR2 " + compte + "  " + Court(date);
  };
  const Date fin2003 = FaitDate(31, 12, 2003);
  std::string texte =
      tete("01", FaitDate(1, 1, 2003)) + large("", 50) + Signe(0, banque == 4) + large("", 16) + fin;
  for (const OperationVraie& o : operations) {
    const auto [debut, suite] = Coupe(banque == 3 ? o.libelle : Capitales(o.libelle), 31);
    texte += tete("04", o.date) + "  " + Court(NextDate(o.date)) + large(debut, 31) + "  " +
             (banque == 0 ? large(o.id, 7) : "0000000") + "  " + Signe(o.centimes, banque == 4) +
             large("", 16) + fin;
    if (!suite.empty()) texte += tete("05", o.date) + "     LIB" + large(suite, 70) + "  " + fin;
  }
  texte += tete("07", fin2003) + large("", 50) + Signe(solde, banque == 4) + large("", 16) + fin;
  return banque == 4 ? Code(texte, 1) : banque == 3 ? texte : DepuisUtf8(texte).value();
}

std::string Csv(int banque, const Operations& operations, i64 solde) {
  const std::string s = banque == 2 ? "\t" : banque == 3 ? "," : ";";
  std::string texte = banque == 0 ? "\xEF\xBB\xBF"
                                    "Compte n° : 00012345670\nSolde au 31/12/2003;" +
                                        Montant(solde, ',') + "\n\n"
                                  : "";
  if (banque == 0) texte += "Date;Libellé;Montant;Devise\n";
  if (banque == 1) texte += "Date opération;Date valeur;Libellé;Débit;Crédit\r\n";
  if (banque == 2) texte += "Date\tRéférence\tNature de l'opération\tDébit euros\tCrédit euros\n";
  if (banque == 3) texte += "\"Date\",\"Description\",\"Amount\",\"Balance\"\n";
  i64 reste = 1000000;
  for (const OperationVraie& o : operations) {
    const std::string debit = o.centimes < 0 ? Montant(banque == 1 ? o.centimes : -o.centimes, ',', " ") : "";
    const std::string credit = o.centimes > 0 ? Montant(o.centimes, ',', " ") : "";
    reste += o.centimes;
    if (banque == 0)
      texte +=
          Francais(o.date) + s + Remplace(o.libelle, " ", "  ") + s + Montant(o.centimes, ',') + s + "EUR\n";
    if (banque == 1)
      texte +=
          Francais(o.date) + s + Francais(NextDate(o.date)) + s + o.libelle + s + debit + s + credit + "\r\n";
    if (banque == 2)
      texte += Francais(o.date) + s + o.id + s + Capitales(o.libelle) + s + debit + s + credit + "\n";
    if (banque == 3)
      texte += "\"" + Iso(o.date) + "\",\"" + Remplace(o.libelle, "\"", "\"\"") + "\",\"" +
               Montant(-o.centimes, '.', ",") + "\",\"" + Montant(reste, '.') + "\"\n";
    if (banque == 4) texte += Francais(o.date) + s + o.libelle + s + Montant(o.centimes, ',') + "\n";
  }
  return Code(texte, banque);
}

}  // namespace

std::vector<OperationVraie> OperationsVraies(unsigned serie, Date premier, unsigned jours) {
  static const char* const libelles[] = {"Remise de chèques",
                                         "Virement SEPA reçu de la C.P.A.M. du Maine-et-Loire",
                                         "Virement SEPA reçu de la C.P.A.M. de la Sarthe",
                                         "Prélèvement Électricité & gaz",
                                         "Carte 12/03 Garage \"du Port\"",
                                         "Frais de tenue de compte",
                                         "Œuvres < 3 ans"};
  std::mt19937 hasard(serie);
  std::vector<OperationVraie> operations;
  Date date = premier;
  for (unsigned jour = 0; jour < jours; ++jour, date = NextDate(date)) {
    for (unsigned n = hasard() % 3; n > 0; --n) {
      OperationVraie o{
          date, i64{serie} * 20000 + 1 + static_cast<i64>(hasard() % 19000), libelles[hasard() % 7], {}};
      if (hasard() % 2) o.centimes = -o.centimes;
      for (unsigned k = hasard() % 5 == 0 ? 2 : 1; k > 0; --k) {
        o.id = std::to_string(serie * 1000 + operations.size() + 1);
        operations.push_back(o);
      }
      // The same amount on the same day, and nearly the same label.
      if (hasard() % 8 == 0) {
        o.libelle = o.libelle == libelles[1] ? libelles[2] : libelles[1];
        o.id = std::to_string(serie * 1000 + operations.size() + 1);
        operations.push_back(o);
      }
    }
  }
  return operations;
}

std::string FabriqueReleve(FormatReleve format, int banque, const std::vector<OperationVraie>& operations,
                           i64 solde) {
  if (format == FormatReleve::Ofx) return Ofx(banque, operations, solde);
  if (format == FormatReleve::Camt) return Camt(banque, operations, solde);
  if (format == FormatReleve::Qif) return Qif(banque, operations);
  if (format == FormatReleve::Cfonb) return Cfonb(banque, operations, solde);
  return Csv(banque, operations, solde);
}

}  // namespace fenlor::test
