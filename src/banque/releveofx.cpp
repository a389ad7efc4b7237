// OFX, SGML or XML. The library takes its bytes on trust, makes nothing of an amount that it cannot read and
// moves dates to the machine's time zone. So it gets a file that was written anew: known elements alone, well
// nested, with short texts; and each operation bears its rank in place of the bank's id. Dates, amounts and
// ids come from the bank's own text.
#include <libofx/libofx.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <map>

#include "banque/relevetexte.h"
#include "banque/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

constexpr std::size_t TexteMax = 255;

/// A day as the bank wrote it: "20031103120000[+1:CET]", some put "2003-11-03".
Date JourDe(std::string_view texte) {
  return LitJour(texte.substr(0, texte.find('-') == 4 ? 10 : 8), OrdreDate::AnneeMoisJour);
}
constexpr std::string_view Agregats[] = {
    "OFX",          "SIGNONMSGSRSV1",    "SONRS",    "STATUS",       "FI",
    "BANKMSGSRSV1", "STMTTRNRS",         "STMTRS",   "BANKACCTFROM", "BANKTRANLIST",
    "STMTTRN",      "LEDGERBAL",         "AVAILBAL", "CCACCTFROM",   "CCSTMTRS",
    "CCSTMTTRNRS",  "CREDITCARDMSGSRSV1"};
constexpr std::string_view Elements[] = {
    "CODE",     "SEVERITY", "DTSERVER", "LANGUAGE", "TRNUID",   "CURDEF", "BANKID",  "BRANCHID", "ACCTID",
    "ACCTTYPE", "DTSTART",  "DTEND",    "TRNTYPE",  "DTPOSTED", "DTUSER", "DTAVAIL", "TRNAMT",   "FITID",
    "CHECKNUM", "NAME",     "MEMO",     "BALAMT",   "DTASOF",   "ORG",    "FID"};

template <std::size_t N>
bool Parmi(const std::string_view (&noms)[N], std::string_view nom) {
  return std::find(std::begin(noms), std::end(noms), nom) != std::end(noms);
}

/// Entities of the bank's text, once; what is none stays as it is.
std::string SansEntites(std::string_view texte) {
  static constexpr std::pair<std::string_view, std::string_view> entites[] = {
      {"&amp;", "&"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&nbsp;", " "}};
  std::string clair;
  for (std::size_t i = 0; i < texte.size();) {
    const auto* trouvee = std::find_if(std::begin(entites), std::end(entites), [&](const auto& e) {
      return texte.substr(i, e.first.size()) == e.first;
    });
    if (trouvee != std::end(entites)) {
      clair += trouvee->second;
      i += trouvee->first.size();
    } else {
      clair.push_back(texte[i++]);
    }
  }
  return clair;
}

std::string AvecEntites(std::string_view texte) {
  std::string sur;
  for (const char c : texte)
    sur += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
  return sur;
}

/// The bank's own words for an operation, and for a balance.
struct Brut {
  u32 rang = 0;
  OperationBanque operation;
  i64 centimes = 0;
};
struct SoldeBrut {
  std::optional<i64> centimes;
  Date date = 0;
};

/// Reads the tags and writes the file for the library.
class Redacteur {
 public:
  Redacteur(std::string_view texte, LectureReleve& lecture)
      : m_texte(texte), m_lecture(lecture), m_decimale(DecimaleDesMontants()) {}

  /// False, with a complaint: nothing can be made of it.
  bool Redige() {
    sortie =
        "OFXHEADER:100\nDATA:OFXSGML\nVERSION:102\nSECURITY:NONE\nENCODING:UTF-8\nCHARSET:NONE\n"
        "COMPRESSION:NONE\nOLDFILEUID:NONE\nNEWFILEUID:NONE\n\n";
    std::size_t place = 0;
    while ((place = Saute(m_texte.find('<', place))) != std::string_view::npos) {
      const std::size_t fin = m_texte.find('>', place);
      if (fin == std::string_view::npos) break;
      const std::size_t suite = std::min(m_texte.find('<', fin), m_texte.size());
      if (!Balise(EnMajuscules(m_texte.substr(place + 1, std::min<std::size_t>(fin - place - 1, 64))),
                  m_texte.substr(fin + 1, suite - fin - 1), place))
        return false;
      place = suite;
    }
    if (m_dans) m_lecture.Plainte(m_rang, PlainteInachevee);
    while (!m_pile.empty()) {
      const bool coupee = m_dans && m_pile.back() == "STMTTRN";
      if (coupee) m_dans = false;
      coupee ? m_pile.pop_back() : Ferme();
    }
    return true;
  }

  std::string sortie;
  std::vector<Brut> operations;
  std::vector<SoldeBrut> soldes;  ///< one for each statement, in the file's order

 private:
  char DecimaleDesMontants() const {
    constexpr std::string_view Balise = "TRNAMT>";
    std::vector<std::string> montants;
    for (std::size_t place = 0; (place = m_texte.find('<', place)) != std::string_view::npos; ++place) {
      if (montants.size() == OperationsReleveMax) break;
      if (EnMajuscules(m_texte.substr(place + 1, Balise.size())) != Balise) continue;
      const std::size_t debut = place + 1 + Balise.size();
      montants.push_back(
          LibelleNet(m_texte.substr(debut, std::min(m_texte.find('<', debut), debut + 40) - debut)));
    }
    return DecimaleDes(montants);
  }

  /// There are no groups in the format: where the file shows no sign, the last one of the amount it is.
  static std::optional<i64> Centimes(const std::string& montant, char decimale) {
    const std::size_t dernier = montant.find_last_of(".,");
    const char sien = dernier == std::string::npos ? '.' : montant[dernier];
    return LitCentimes(montant, decimale ? decimale : sien);
  }

  /// Past comments.
  std::size_t Saute(std::size_t place) {
    while (place != std::string_view::npos && m_texte.substr(place, 4) == "<!--") {
      const std::size_t fin = m_texte.find("-->", place);
      place = fin == std::string_view::npos ? fin : m_texte.find('<', fin);
    }
    return place;
  }

  /// Line of the file, counted on from the last one asked about. Some files have no end of line but CR.
  u32 LigneDe(std::size_t place) {
    assert(place >= m_compte && place <= m_texte.size());
    m_ligne += static_cast<u32>(std::count(m_texte.begin() + static_cast<std::ptrdiff_t>(m_compte),
                                           m_texte.begin() + static_cast<std::ptrdiff_t>(place), m_fin));
    m_compte = place;
    return m_ligne;
  }

  bool Balise(const std::string& nom, std::string_view valeur, std::size_t place) {
    if (nom.starts_with("/")) {
      Fermante(nom.substr(1));
      return true;
    }
    if (nom == "CURRENCY" && m_dans) {
      m_autreMonnaie = true;
    } else if (nom == "CURSYM" && m_autreMonnaie) {
      m_champs.emplace(nom, LibelleLong(valeur));
    } else if (Parmi(Agregats, nom)) {
      if (m_pile.size() >= ProfondeurReleveMax) {
        m_lecture.Plainte(0, PlainteProfondeur);
        return false;
      }
      if (nom == "STMTTRN") Commence(LigneDe(place));
      if (nom == "STMTRS" || nom == "CCSTMTRS") {
        soldes.push_back({});
        m_compteDit = false;
      }
      if (nom == "BANKACCTFROM" || nom == "CCACCTFROM") m_compteDit = true;
      // The library drops operations of no account.
      if (nom == "BANKTRANLIST" && !m_dans && !m_compteDit)
        sortie += "<BANKACCTFROM><BANKID>-<ACCTID>-<ACCTTYPE>CHECKING</BANKACCTFROM>\n";
      if (!m_dans) sortie += '<' + nom + ">\n";
      m_pile.push_back(nom);
    } else if (Parmi(Elements, nom)) {
      Element(nom, LibelleLong(valeur));
    }
    return true;
  }

  static std::string LibelleLong(std::string_view valeur) {
    std::string clair = SansEntites(valeur.substr(0, LigneReleveMax));
    for (char& c : clair)
      if (static_cast<unsigned char>(c) < 32) c = ' ';
    const std::size_t debut = clair.find_first_not_of(' ');
    if (debut == std::string::npos) return {};
    clair = clair.substr(debut, clair.find_last_not_of(' ') - debut + 1);
    if (clair.size() > TexteMax) {
      std::size_t fin = TexteMax;
      while (fin > 0 && (clair[fin] & 0xC0) == 0x80) --fin;
      clair.resize(fin);
    }
    return clair;
  }

  void Element(const std::string& nom, const std::string& valeur) {
    if (valeur.empty()) return;
    if (m_dans) {
      m_champs.emplace(nom, valeur);
      return;
    }
    if (!m_pile.empty() && m_pile.back() == "LEDGERBAL" && !soldes.empty()) {
      if (nom == "BALAMT") soldes.back().centimes = Centimes(EnWindows1252(valeur), 0);
      if (nom == "DTASOF") soldes.back().date = JourDe(valeur);
      return;
    }
    // Dates outside operations are of no use, and the library trusts them.
    if (!nom.starts_with("DT")) sortie += '<' + nom + '>' + AvecEntites(valeur) + '\n';
  }

  void Fermante(const std::string& nom) {
    if (nom == "CURRENCY") m_autreMonnaie = false;
    if (std::find(m_pile.begin(), m_pile.end(), nom) == m_pile.end()) return;
    while (m_pile.back() != nom) Ferme();
    assert(!m_pile.empty());
    Ferme();
  }

  void Ferme() {
    assert(!m_pile.empty());
    const std::string nom = m_pile.back();
    m_pile.pop_back();
    if (nom == "STMTTRN" && m_dans) return Termine();
    if (!m_dans) sortie += "</" + nom + ">\n";
  }

  void Commence(u32 rang) {
    if (m_dans) m_lecture.Plainte(m_rang, PlainteInachevee);
    m_dans = true;
    m_autreMonnaie = false;
    m_rang = rang;
    m_champs.clear();
  }

  std::string Champ(const char* nom) const {
    const auto trouve = m_champs.find(nom);
    return trouve == m_champs.end() ? std::string() : trouve->second;
  }

  void Termine() {
    assert(m_dans && m_rang > 0);
    m_dans = false;
    Brut brut;
    brut.rang = brut.operation.rang = m_rang;
    brut.operation.releve = static_cast<u32>(soldes.size());
    const std::string date = Champ("DTPOSTED"), montant = EnWindows1252(Champ("TRNAMT"));
    brut.operation.date = JourDe(date);
    if (brut.operation.date == 0) return m_lecture.Plainte(m_rang, PlainteDate, {LibelleNet(date)});
    brut.operation.dateValeur = JourDe(Champ("DTAVAIL"));
    const auto centimes = Centimes(montant, m_decimale);
    if (!centimes) return m_lecture.Plainte(m_rang, PlainteMontant, {LibelleNet(montant)});
    if (operations.size() >= OperationsReleveMax) return m_lecture.Plainte(m_rang, PlainteTropOperations);
    brut.centimes = *centimes;
    brut.operation.id = LibelleNet(EnWindows1252(Champ("FITID")));
    brut.operation.monnaie = EnMajuscules(LibelleNet(EnWindows1252(Champ("CURSYM"))));
    operations.push_back(brut);
    char jour[16];
    std::snprintf(jour, sizeof jour, "%04u%02u%02u", Annee(brut.operation.date), Mois(brut.operation.date),
                  Jour(brut.operation.date));
    sortie += "<STMTTRN><TRNTYPE>OTHER<DTPOSTED>" + std::string(jour) + "<TRNAMT>1.00<FITID>" +
              std::to_string(operations.size());
    for (const char* nom : {"NAME", "MEMO"})
      if (const std::string texte = Champ(nom); !texte.empty())
        sortie += '<' + std::string(nom) + '>' + AvecEntites(texte);
    sortie += "</STMTTRN>\n";
  }

  std::string_view m_texte;
  LectureReleve& m_lecture;
  std::vector<std::string> m_pile;
  std::map<std::string, std::string> m_champs;  ///< of the operation at hand; the first of a name counts
  bool m_dans = false;                          ///< in an operation
  bool m_autreMonnaie = false;                  ///< in what says that it is in another currency
  bool m_compteDit = false;                     ///< of the statement at hand
  u32 m_rang = 0, m_ligne = 1;
  std::size_t m_compte = 0;
  const char m_fin = m_texte.find('\n') == std::string_view::npos ? '\r' : '\n';
  const char m_decimale;  ///< of the file's amounts; 0: they show none
};

/// What the library tells, by the ranks that it was given.
struct Recu {
  struct Compte {
    std::string numero, monnaie;
  };
  struct Operation {
    std::string compte, nom, memo;
  };
  std::vector<Compte> comptes;
  std::map<std::size_t, Operation> operations;
};

/// Nothing for the account that the writer made up.
std::string NumeroDit(const std::string& numero) {
  return LibelleNu(numero).empty() ? std::string() : numero;
}

template <std::size_t N>
std::string TexteBorne(const char (&texte)[N]) {
  return LibelleNet(EnWindows1252(std::string_view(texte, strnlen(texte, N))));
}

int RecoitReleve(const OfxStatementData donnees, void* recu) {
  static_cast<Recu*>(recu)->comptes.push_back(
      {donnees.account_id_valid ? NumeroDit(TexteBorne(donnees.account_id)) : std::string(),
       donnees.currency_valid ? TexteBorne(donnees.currency) : std::string()});
  return 0;
}

int RecoitOperation(const OfxTransactionData donnees, void* recu) {
  const std::string rang = donnees.fi_id_valid ? TexteBorne(donnees.fi_id) : std::string();
  if (rang.empty() || rang.size() > 7 ||
      !std::all_of(rang.begin(), rang.end(), [](char c) { return c >= '0' && c <= '9'; }))
    return 0;
  static_cast<Recu*>(recu)->operations[std::stoul(rang)] = {
      donnees.account_id_valid ? NumeroDit(TexteBorne(donnees.account_id)) : std::string(),
      donnees.name_valid ? TexteBorne(donnees.name) : std::string(),
      donnees.memo_valid ? TexteBorne(donnees.memo) : std::string()};
  return 0;
}

/// The library reads files alone: one in memory.
bool Analyse(const std::string& texte, Recu& recu) {
  // It speaks its mind on the standard error otherwise.
  for (int* message :
       {&ofx_PARSER_msg, &ofx_DEBUG_msg, &ofx_STATUS_msg, &ofx_INFO_msg, &ofx_WARNING_msg, &ofx_ERROR_msg})
    *message = 0;
  const int fichier = memfd_create("releve", MFD_CLOEXEC);
  if (fichier < 0) return false;
  std::string_view reste = texte;
  while (!reste.empty()) {
    const ssize_t ecrits = write(fichier, reste.data(), reste.size());
    if (ecrits <= 0) break;
    reste.remove_prefix(static_cast<std::size_t>(ecrits));
  }
  bool lu = false;
  if (reste.empty()) {
    const LibofxContextPtr contexte = libofx_get_new_context();
    ofx_set_statement_cb(contexte, RecoitReleve, &recu);
    ofx_set_transaction_cb(contexte, RecoitOperation, &recu);
    lu = libofx_proc_file(contexte, ("/proc/self/fd/" + std::to_string(fichier)).c_str(), OFX) == 0;
    libofx_free_context(contexte);
  }
  close(fichier);
  return lu;
}

/// Marked sections as plain text with entities.
std::string SansSections(const std::string& texte) {
  constexpr std::string_view Debut = "<![CDATA[", Fin = "]]>";
  std::string plat;
  std::size_t place = 0;
  for (std::size_t debut; (debut = texte.find(Debut, place)) != std::string::npos;) {
    const std::size_t dedans = debut + Debut.size(), fin = std::min(texte.find(Fin, dedans), texte.size());
    plat.append(texte, place, debut - place);
    plat += AvecEntites(std::string_view(texte).substr(dedans, fin - dedans));
    place = std::min(fin + Fin.size(), texte.size());
  }
  return plat.append(texte, place);
}

}  // namespace

void LitOfx(std::string_view octets, LectureReleve& lecture) {
  const std::string texte = SansSections(EnUtf8(octets, DevineJeu(octets)));
  Redacteur redacteur(texte, lecture);
  if (!redacteur.Redige() || (redacteur.operations.empty() && redacteur.soldes.empty())) return;
  assert(redacteur.operations.size() <= OperationsReleveMax);
  Recu recu;
  if (!Analyse(redacteur.sortie, recu) && recu.operations.empty() && !redacteur.operations.empty())
    return lecture.Plainte(0, PlainteOfx);
  for (std::size_t i = 0; i < recu.comptes.size(); ++i) {
    Releve& releve = lecture.Compte(recu.comptes[i].numero, recu.comptes[i].monnaie);
    if (recu.comptes.size() != redacteur.soldes.size() || !redacteur.soldes[i].centimes) continue;
    if (releve.solde && releve.dateSolde > redacteur.soldes[i].date) continue;
    releve.solde = redacteur.soldes[i].centimes;
    releve.dateSolde = redacteur.soldes[i].date;
  }
  for (std::size_t i = 0; i < redacteur.operations.size(); ++i) {
    const Brut& brut = redacteur.operations[i];
    const auto recue = recu.operations.find(i + 1);
    if (recue == recu.operations.end()) {
      lecture.Plainte(brut.rang, PlainteOfx);
      continue;
    }
    OperationBanque operation = brut.operation;
    operation.libelle = LibelleDe({recue->second.nom, recue->second.memo});
    // One account may have statements in several currencies: they come in the order of the file.
    auto compte = std::find_if(recu.comptes.begin(), recu.comptes.end(),
                               [&](const auto& c) { return c.numero == recue->second.compte; });
    if (brut.operation.releve > 0 && recu.comptes.size() == redacteur.soldes.size())
      compte = recu.comptes.begin() + static_cast<std::ptrdiff_t>(brut.operation.releve - 1);
    const std::string monnaie = compte == recu.comptes.end() ? std::string() : compte->monnaie;
    if (operation.monnaie.empty()) operation.monnaie = monnaie;
    Releve& releve = lecture.Compte(recue->second.compte, monnaie);
    AjouteOperation(lecture, releve, std::move(operation), brut.centimes);
  }
}

}  // namespace fenlor
