// CAMT.053: a statement in XML. Prefixes of its names are not looked at.
#include <pugixml.hpp>

#include <cassert>

#include "banque/relevetexte.h"
#include "banque/textes.h"
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

Date JourDe(Noeud noeud) {
  const Noeud jour = Enfant(noeud, "Dt");
  return LitJour(TexteDe(jour ? jour : Enfant(noeud, "DtTm")), OrdreDate::AnneeMoisJour);
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
    const Noeud compte = Enfant(noeud, "Acct");
    std::string numero = TexteDe(Chemin(compte, {"Id", "IBAN"}));
    if (numero.empty()) numero = TexteDe(Chemin(compte, {"Id", "Othr", "Id"}));
    const std::string monnaie = TexteDe(Enfant(compte, "Ccy"));
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
    operation.monnaie = LibelleNet(EnWindows1252(Enfant(noeud, "Amt").attribute("Ccy").value()));
    const Noeud detail = Chemin(noeud, {"NtryDtls", "TxDtls"});
    operation.id = TexteDe(Enfant(noeud, "AcctSvcrRef"));
    if (operation.id.empty()) operation.id = TexteDe(Chemin(detail, {"Refs", "AcctSvcrRef"}));
    operation.libelle = TexteDe(Enfant(noeud, "AddtlNtryInf"));
    if (operation.libelle.empty()) operation.libelle = Libelle(detail, *centimes > 0);
    Releve& releve = m_lecture.Compte(numero, monnaie);
    AjouteOperation(m_lecture, releve, std::move(operation), *centimes);
  }

  static std::string Libelle(Noeud detail, bool credit) {
    const Noeud parties = Enfant(detail, "RltdPties"), autre = Enfant(parties, credit ? "Dbtr" : "Cdtr");
    const std::string nom = TexteDe(Enfant(autre, "Nm")), groupe = TexteDe(Chemin(autre, {"Pty", "Nm"}));
    std::string objet = TexteDe(Chemin(detail, {"RmtInf", "Ustrd"}));
    if (objet.empty()) objet = TexteDe(Enfant(detail, "AddtlTxInf"));
    return LibelleDe({nom.empty() ? groupe : nom, objet});
  }

  LectureReleve& m_lecture;
  u32 m_rang = 0;
};

/// Characters as the declaration names them: the library knows no Windows-1252.
JeuTexte JeuDeclare(std::string_view octets) {
  const JeuTexte jeu = DevineJeu(octets);
  if (jeu == JeuTexte::Utf16) return jeu;
  const std::string_view tete = octets.substr(0, std::min<std::size_t>(octets.find("?>"), 256));
  const std::string hautes = EnMajuscules(tete);
  const bool latin = hautes.find("1252") != std::string::npos || hautes.find("8859") != std::string::npos;
  return latin ? JeuTexte::Windows1252 : jeu;
}

}  // namespace

void LitCamt(std::string_view octets, LectureReleve& lecture) {
  const std::string texte = EnUtf8(octets, JeuDeclare(octets));
  pugi::xml_document document;
  const auto resultat =
      document.load_buffer(texte.data(), texte.size(), pugi::parse_default, pugi::encoding_utf8);
  // What stands before the fault was read whole, but for the last entry.
  if (!resultat) lecture.Plainte(0, PlainteXml, {std::to_string(resultat.offset)});
  Profondeur profondeur;
  if (!document.traverse(profondeur)) return lecture.Plainte(0, PlainteProfondeur);
  LecteurCamt lecteur(lecture);
  const Noeud message = Chemin(document, {"Document", "BkToCstmrStmt"});
  const Noeud coupee = resultat ? Noeud() : message.last_child().last_child();
  for (const Noeud enfant : message.children())
    if (NomLocal(enfant.name()) == "Stmt") lecteur.Releve_(enfant, coupee);
}

}  // namespace fenlor
