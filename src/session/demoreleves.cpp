#include "session/demoreleves.h"

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <vector>

#include "banque/operations.h"
#include "banque/rapprochement.h"
#include "core/btfiles.h"
#include "core/erreurs.h"
#include "core/valeurs.h"
#include "session/textes.h"
#include "store/cumuls.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr const char* Compte = "5120000000";

struct Operation {
  Date date = 0;
  i64 centimes = 0;  ///< above 0: money that comes in
  std::string libelle;
};

bool Avant(const Operation& a, const Operation& b) { return a.date < b.date; }

/// The lines that wait, as the bank has them: two days later, in capitals; one in twelve has not come yet.
bool LitMois(CFenlorApp& app, Date premier, std::vector<Operation>& operations) {
  Date debut = 0, fin = 0;
  GetMonth(premier, debut, fin);
  CLines lignes(app, app.PathExercice);
  assert(debut == premier && debut < fin);
  if (!lignes.OpenFile()) return false;
  PoseTexte(lignes.Rec->Compte, Compte);
  lignes.Rec->DateLigne = PrevDate(PrevDate(debut));
  unsigned rang = 0;
  for (bool la = lignes.Browse(2); la; la = lignes.Next(2)) {
    const Line& ligne = *lignes.Rec;
    const Date date = NextDate(NextDate(ligne.DateLigne));
    if (LitTexte(ligne.Compte) != Compte || date > fin) break;
    if (ligne.Rapprochee || ++rang % 12 == 0) continue;
    const i64 centimes = Centimes(ligne.MontantEuro);
    operations.push_back({date, ligne.Sens ? -centimes : centimes, EnMajuscules(LitTexte(ligne.Libelle))});
  }
  const unsigned mois = Mois(debut), annee = Annee(debut);
  operations.push_back({FaitDate(6, mois, annee), -1450, "COMMISSION CARTE BANCAIRE"});
  operations.push_back({FaitDate(17, mois, annee), 6230, "VIR REMBOURSEMENT MUTUELLE CONFRERES"});
  operations.push_back({FaitDate(28, mois, annee), -740, "FRAIS D'ENVOI DE CHEQUIER"});
  std::stable_sort(operations.begin(), operations.end(), Avant);
  return true;
}

std::string Decimal(i64 centimes, char point) {
  const i64 absolu = centimes < 0 ? -centimes : centimes;
  assert(absolu >= 0);
  return (centimes < 0 ? "-" : "") + std::to_string(absolu / 100) + point +
         std::to_string(100 + absolu % 100).substr(1);
}

std::string Ofx(const std::vector<Operation>& operations, i64 solde, Date fin) {
  std::string texte =
      "OFXHEADER:100\r\nDATA:OFXSGML\r\nVERSION:102\r\nSECURITY:NONE\r\nENCODING:USASCII\r\nCHARSET:1252\r\n"
      "COMPRESSION:NONE\r\nOLDFILEUID:NONE\r\nNEWFILEUID:NONE\r\n\r\n<OFX>\r\n<SIGNONMSGSRSV1><SONRS><STATUS>"
      "<CODE>0"
      "<SEVERITY>INFO</STATUS><DTSERVER>" +
      StrSDate(fin) +
      "<LANGUAGE>FRA</SONRS></"
      "SIGNONMSGSRSV1>\r\n<BANKMSGSRSV1><STMTTRNRS><TRNUID>1<STATUS><CODE>0<SEVERITY>INFO"
      "</"
      "STATUS><STMTRS><CURDEF>EUR<BANKACCTFROM><BANKID>10000<BRANCHID>20000<ACCTID>00012345678<ACCTTYPE>"
      "CHECKING"
      "</BANKACCTFROM>\r\n<BANKTRANLIST><DTSTART>" +
      StrSDate(FaitDate(1, Mois(fin), Annee(fin))) + "<DTEND>" + StrSDate(fin) + "\r\n";
  unsigned numero = 0;
  for (const Operation& o : operations)
    texte += std::string("<STMTTRN><TRNTYPE>") + (o.centimes > 0 ? "CREDIT" : "DEBIT") + "<DTPOSTED>" +
             StrSDate(o.date) + "<TRNAMT>" + Decimal(o.centimes, '.') + "<FITID>" + StrSDate(o.date) +
             std::to_string(1000 + ++numero) + "<NAME>" + o.libelle.substr(0, 32) +
             (o.libelle.size() > 32 ? "<MEMO>" + o.libelle.substr(32) : std::string()) + "</STMTTRN>\r\n";
  return texte + "</BANKTRANLIST><LEDGERBAL><BALAMT>" + Decimal(solde, '.') + "<DTASOF>" + StrSDate(fin) +
         "</LEDGERBAL></STMTRS></STMTTRNRS></BANKMSGSRSV1></OFX>\r\n";
}

std::string Tableau(const std::vector<Operation>& operations, i64 solde, Date fin) {
  std::string texte = "Compte n° : 10000 20000 00012345678\r\n"_w + "Solde au " + StrDate(fin) + ";" +
                      Decimal(solde, ',') + "\r\n\r\n" +
                      "Date opération;Date de valeur;Libellé;Débit euros;Crédit euros\r\n"_w;
  for (const Operation& o : operations)
    texte += StrDate(o.date) + ';' + StrDate(NextDate(o.date)) + ';' + o.libelle + ';' +
             (o.centimes < 0 ? Decimal(-o.centimes, ',') + ";" : ";" + Decimal(o.centimes, ',')) + "\r\n";
  return texte;
}

bool Ecrit(QVAPI& magasin, const std::string& chemin, const std::string& octets) {
  assert(!octets.empty());
  const int fichier = magasin.QVCreateFile(chemin);
  if (fichier < 0) return false;
  const auto taille = static_cast<u32>(octets.size());
  const bool ecrit = magasin.QVWriteFile(fichier, octets.data(), taille) == static_cast<int>(taille);
  return magasin.QVCloseFile(fichier) && ecrit;
}

}  // namespace

Refus EcritRelevesDemo(CFenlorApp& app, unsigned premierMois) {
  assert(premierMois >= 1 && premierMois < 12 && !app.PathCabinet.empty());
  QVAPI& magasin = app.Magasin;
  const std::string dossier = app.PathCabinet + "/releves";
  const int code = magasin.SystemeFichiers().CreeDossier(dossier);
  if (code != 0 && code != EEXIST) return Refus(ErrCreationFichier, "", {dossier});
  const unsigned annee = Annee(app.Reglages.GetDebutExercice());
  i64 solde = Centimes(LitSoldes(app, Compte, true).livres);
  for (const OperationLue& o : LitOperations(app, Compte))
    solde += (o.rec.Sens ? 1 : -1) * Centimes(o.rec.MontantEuro);
  for (unsigned mois = premierMois; mois < premierMois + 2; ++mois) {
    std::vector<Operation> operations;
    Date premier = 0, fin = 0;
    GetMonth(FaitDate(1, mois, annee), premier, fin);
    if (!LitMois(app, premier, operations)) return app.EchecMagasin();
    for (const Operation& o : operations) solde += o.centimes;
    const bool ofx = mois == premierMois;
    const std::string chemin =
        dossier + "/" + std::to_string(annee) + "-" + std::to_string(mois) + (ofx ? ".ofx" : ".csv");
    if (!Ecrit(magasin, chemin, ofx ? Ofx(operations, solde, fin) : Tableau(operations, solde, fin)))
      return Refus(ErrCreationFichier, "", {chemin});
  }
  return {};
}

}  // namespace fenlor
