// CAMT.053: a statement in XML. Prefixes of its names are not looked at.
#include <pugixml.hpp>

#include <algorithm>
#include <cassert>

#include "banque/relevetexte.h"
#include "banque/textes.h"
#include "core/valeurs.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

using Noeud = pugi::xml_node;

std::string_view NomLocal(const char* nom) {
  const std::string_view texte = nom;
  const std::size_t place = texte.find(':');
  return place == std::string_view::npos ? texte : texte.substr(place + 1);
}

Noeud Enfant(Noeud noeud, std::string_view nom) {
  for (const Noeud enfant : noeud.children())
    if (NomLocal(enfant.name()) == nom) return enfant;
  return {};
}

/// The element that names lead to, one below the other.
Noeud Chemin(Noeud noeud, std::initializer_list<std::string_view> noms) {
  for (const std::string_view nom : noms) noeud = Enfant(noeud, nom);
  return noeud;
}

std::string TexteDe(Noeud noeud) { return LibelleNet(EnWindows1252(noeud.text().get())); }

/// A day may be followed by a time zone, "2003-11-03+01:00", or "Z".
Date JourDe(Noeud noeud) {
  const Noeud jour = Enfant(noeud, "Dt");
  return LitJour(TexteDe(jour ? jour : Enfant(noeud, "DtTm")).substr(0, 10), OrdreDate::AnneeMoisJour);
}

std::string MonnaieDe(Noeud noeud) {
  return LibelleNet(EnWindows1252(Enfant(noeud, "Amt").attribute("Ccy").value()));
}

/// Depth is told before anything walks down.
struct Profondeur : pugi::xml_tree_walker {
  bool for_each(pugi::xml_node&) override { return depth() < static_cast<int>(ProfondeurReleveMax); }
};

class LecteurCamt {
 public:
  explicit LecteurCamt(LectureReleve& lecture) : m_lecture(lecture) {}

  /// `coupee`: an element that the file's end or a fault cut, or none.
  void Releve_(Noeud noeud, Noeud coupee) {
    ++m_releve;
    const Noeud compte = Enfant(noeud, "Acct");
    std::string numero = TexteDe(Chemin(compte, {"Id", "IBAN"}));
    if (numero.empty()) numero = TexteDe(Chemin(compte, {"Id", "Othr", "Id"}));
    std::string monnaie = TexteDe(Enfant(compte, "Ccy"));
    if (monnaie.empty()) monnaie = MonnaieDe(Enfant(noeud, "Bal"));
    for (const Noeud enfant : noeud.children()) {
      const std::string_view nom = NomLocal(enfant.name());
      if (nom == "Ntry" && enfant != coupee) Ecriture(enfant, numero, monnaie);
      if (nom == "Bal") Solde(enfant, m_lecture.Compte(numero, monnaie));
    }
  }

 private:
  /// With its sign; none: complained about.
  std::optional<i64> Montant(Noeud noeud, u32 rang, const TexteFixe& plainte) {
    const std::string texte = TexteDe(Enfant(noeud, "Amt")), sens = TexteDe(Enfant(noeud, "CdtDbtInd"));
    const auto centimes = LitCentimes(texte, '.');
    if (centimes && *centimes >= 0 && (sens == "CRDT" || sens == "DBIT"))
      return sens == "CRDT" ? *centimes : -*centimes;
    m_lecture.Plainte(rang, plainte, {centimes ? sens : texte});
    return {};
  }

  void Solde(Noeud noeud, Releve& releve) {
    if (TexteDe(Chemin(noeud, {"Tp", "CdOrPrtry", "Cd"})) != "CLBD") return;
    const Date date = JourDe(Enfant(noeud, "Dt"));
    if (const auto solde = Montant(noeud, 0, PlainteSolde); solde && date >= releve.dateSolde) {
      releve.solde = solde;
      releve.dateSolde = date;
    }
  }

  void Ecriture(Noeud noeud, const std::string& numero, const std::string& monnaie) {
    assert(noeud);
    OperationBanque operation;
    operation.rang = ++m_rang;
    operation.releve = m_releve;
    if (!m_lecture.Place(m_rang)) return;
    std::string etat = TexteDe(Enfant(noeud, "Sts"));
    if (etat.empty()) etat = TexteDe(Chemin(noeud, {"Sts", "Cd"}));
    if (!etat.empty() && etat != "BOOK") return m_lecture.Plainte(m_rang, PlainteEnAttente, {etat});
    const Noeud jour = Enfant(noeud, "BookgDt");
    operation.date = JourDe(jour ? jour : Enfant(noeud, "ValDt"));
    if (operation.date == 0) return m_lecture.Plainte(m_rang, PlainteDate, {TexteDe(Enfant(jour, "Dt"))});
    operation.dateValeur = JourDe(Enfant(noeud, "ValDt"));
    const auto centimes = Montant(noeud, m_rang, PlainteMontant);
    assert(operation.date != 0);
    if (!centimes) return;
    operation.monnaie = MonnaieDe(noeud);
    operation.id = TexteDe(Enfant(noeud, "AcctSvcrRef"));
    if (operation.id.empty())
      operation.id = TexteDe(Chemin(noeud, {"NtryDtls", "TxDtls", "Refs", "AcctSvcrRef"}));
    operation.libelle = TexteDe(Enfant(noeud, "AddtlNtryInf"));
    if (operation.libelle.empty()) Nomme(noeud, *centimes > 0, operation);
    Releve& releve = m_lecture.Compte(numero, monnaie);
    AjouteOperation(m_lecture, releve, std::move(operation), *centimes);
  }

  /// Who it is with. Money that comes back comes from whom it went to.
  static std::string Tiers(Noeud detail, bool debiteur) {
    const Noeud autre = Chemin(detail, {"RltdPties", debiteur ? "Dbtr" : "Cdtr"});
    const std::string nom = TexteDe(Enfant(autre, "Nm"));
    return nom.empty() ? TexteDe(Chemin(autre, {"Pty", "Nm"})) : nom;
  }

  static std::string Objet(Noeud detail) {
    std::string objet;
    for (const Noeud enfant : Enfant(detail, "RmtInf").children())
      if (NomLocal(enfant.name()) == "Ustrd") objet = LibelleNet(objet + ' ' + TexteDe(enfant));
    if (objet.empty()) objet = TexteDe(Enfant(detail, "AddtlTxInf"));
    return objet.empty() ? TexteDe(Chemin(detail, {"RmtInf", "Strd", "CdtrRefInf", "Ref"})) : objet;
  }

  /// By its transactions: the only one's party and subject, else how many there are and with whom.
  static void Nomme(Noeud noeud, bool credit, OperationBanque& operation) {
    const std::string retour = TexteDe(Enfant(noeud, "RvslInd"));
    const bool debiteur = credit != (retour == "true" || retour == "1");
    std::vector<Noeud> details;
    unsigned annoncees = 0;
    for (const Noeud groupe : noeud.children()) {
      if (NomLocal(groupe.name()) != "NtryDtls") continue;
      annoncees += static_cast<unsigned>(
          std::clamp(TexteVersEntier(TexteDe(Chemin(groupe, {"Btch", "NbOfTxs"}))), 0, 999999));
      for (const Noeud detail : groupe.children())
        if (NomLocal(detail.name()) == "TxDtls") details.push_back(detail);
    }
    const unsigned nombre = std::max(annoncees, static_cast<unsigned>(details.size()));
    const Noeud premier = details.empty() ? Noeud() : details.front();
    const std::string seul = LibelleDe({Tiers(premier, debiteur), Objet(premier)});
    operation.libelle = seul;
    operation.ancienLibelle = LibelleDe({Tiers(premier, credit), Objet(premier)});
    if (nombre <= 1) return;
    std::string noms;
    for (const Noeud detail : details) {
      const std::string nom = Tiers(detail, debiteur), dit = nom.empty() ? Objet(detail) : nom;
      if (!dit.empty() && noms.size() < 80 && noms.find(dit) == std::string::npos)
        noms += (noms.empty() ? " : " : ", ") + dit;
    }
    operation.libelle = TexteFormat(LibelleLot, {std::to_string(nombre)}) + noms;
  }

  LectureReleve& m_lecture;
  u32 m_rang = 0, m_releve = 0;
};

}  // namespace

void LitCamt(std::string_view octets, LectureReleve& lecture) {
  // By the bytes, whatever the declaration names: banks' programs write another one than they declare.
  std::string texte = EnUtf8(octets, DevineJeu(octets));
  std::replace(texte.begin(), texte.end(), '\0', ' ');  // the end of all for the library
  pugi::xml_document document;
  const auto resultat =
      document.load_buffer(texte.data(), texte.size(), pugi::parse_default, pugi::encoding_utf8);
  // What stands before the fault was read whole, but for the last entry.
  if (!resultat) lecture.Plainte(0, PlainteXml, {std::to_string(resultat.offset)});
  Profondeur profondeur;
  if (!document.traverse(profondeur)) return lecture.Plainte(0, PlainteProfondeur);
  LecteurCamt lecteur(lecture);
  const Noeud corps = Enfant(document, "Document"), message = Enfant(corps, "BkToCstmrStmt");
  // Accounts of a day that is not over, and notices: their entries come again in a statement.
  if (const Noeud autre = corps.first_child(); resultat && autre && !message)
    return lecture.Plainte(0, PlainteInconnu, {LibelleNet(EnWindows1252(autre.name()))});
  const Noeud coupee = resultat ? Noeud() : message.last_child().last_child();
  for (const Noeud enfant : message.children())
    if (NomLocal(enfant.name()) == "Stmt") lecteur.Releve_(enfant, coupee);
}

}  // namespace fenlor
