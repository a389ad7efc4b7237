// QIF: a letter and a value on each line, "^" behind each operation.
#include <algorithm>
#include <cassert>

#include "banque/relevetexte.h"
#include "banque/textes.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

struct EnCours {
  u32 rang = 0;
  std::string date, montant, tiers, memo, numero;
  bool vide = true;
};

/// "11/ 5' 3" as some programs pad it: "11/5'03".
std::string JourNet(std::string_view texte) {
  std::string jour(texte);
  if (jour.find(':') == std::string::npos) std::erase(jour, ' ');
  const std::size_t siecle = jour.find('\'');
  if (siecle != std::string::npos && siecle + 2 == jour.size()) jour.insert(siecle + 1, 1, '0');
  return jour;
}

/// Blanks in front of the letter are none of the value.
std::string_view SansRetrait(std::string_view ligne) {
  return ligne.substr(std::min(ligne.find_first_not_of(" \t"), ligne.size()));
}

/// How the file writes days and amounts: it has no other word for it than what all of them say.
struct Ecritures {
  explicit Ecritures(std::string_view texte) {
    std::vector<std::string> jours, montants;
    for (std::string_view ligne; LigneSuivante(texte, ligne);) {
      ligne = SansRetrait(ligne);
      if (jours.size() + montants.size() >= 2 * OperationsReleveMax) break;
      if (ligne.starts_with('D')) jours.push_back(JourNet(ligne.substr(1, 20)));
      if (ligne.starts_with('T')) montants.emplace_back(ligne.substr(1, 40));
    }
    ordre = OrdreDes(jours);
    decimale = DecimaleDes(montants);
  }
  OrdreDate ordre = OrdreDate::JourMoisAnnee;
  char decimale = 0;
};

class LecteurQif {
 public:
  LecteurQif(LectureReleve& lecture, const Ecritures& ecritures)
      : m_lecture(lecture), m_ecritures(ecritures) {}

  void Ligne(u32 rang, std::string_view ligne) {
    assert(rang > 0);
    if (ligne.size() > LigneReleveMax) return m_lecture.Plainte(rang, PlainteLigneLongue);
    ligne = SansRetrait(ligne);
    if (ligne.empty()) return;
    if (ligne.front() == '!') return Section(rang, ligne);
    if (ligne.front() == '^') return Fin();
    const std::string valeur(ligne.substr(1));
    if (m_section == Section_::Compte) {
      if (ligne.front() == 'N') m_compte = LibelleNet(valeur);
      return;
    }
    if (m_section == Section_::Autre) return;
    if (m_operation.vide) m_operation = {rang, {}, {}, {}, {}, {}, false};
    switch (ligne.front()) {
      case 'D':
        m_operation.date = valeur;
        break;
      case 'T':
      case 'U':
        m_operation.montant = valeur;
        break;
      case 'P':
        m_operation.tiers = valeur;
        break;
      case 'M':
        m_operation.memo = valeur;
        break;
      case 'N':
        m_operation.numero = valeur;
        break;
      default:
        break;  // categories, parts and marks of other programs
    }
  }

  void Fin() {
    if (m_section == Section_::Operations && !m_operation.vide) Operation();
    m_operation = {};
  }
  /// Some spare the last end; without an end of line the file was cut, who knows where.
  void FinFichier(bool entier) {
    if (!entier && !m_operation.vide && m_section == Section_::Operations) {
      m_lecture.Plainte(m_operation.rang, PlainteInachevee);
      m_operation = {};
    }
    Fin();
  }

 private:
  enum class Section_ : u8 { Operations, Compte, Autre };

  void Section(u32 rang, std::string_view ligne) {
    Fin();
    const std::string mot = LibelleNu(ligne);
    if (mot.starts_with("OPTION") || mot.starts_with("CLEAR")) return;
    if (mot == "ACCOUNT") {
      m_section = Section_::Compte;
      return;
    }
    const bool operations = mot == "TYPEBANK" || mot == "TYPECASH" || mot == "TYPECCARD" ||
                            mot == "TYPEOTHL" || mot == "TYPEOTHA";
    m_section = operations ? Section_::Operations : Section_::Autre;
    if (!operations) m_lecture.Plainte(rang, PlainteInconnu, {LibelleNet(ligne)});
  }

  void Operation() {
    assert(!m_operation.vide && m_operation.rang > 0);
    const EnCours& o = m_operation;
    OperationBanque operation;
    operation.rang = o.rang;
    operation.date = LitJour(JourNet(o.date), m_ecritures.ordre);
    if (operation.date == 0) return m_lecture.Plainte(o.rang, PlainteDate, {LibelleNet(o.date)});
    const auto centimes = LitCentimes(o.montant, m_ecritures.decimale);
    if (!centimes) return m_lecture.Plainte(o.rang, PlainteMontant, {LibelleNet(o.montant)});
    if (CompareSansCasse(LibelleNet(o.tiers), "Opening Balance") == 0)
      return m_lecture.Plainte(o.rang, PlainteSoldeInitial);
    operation.libelle = LibelleDe({o.tiers, o.memo});
    if (operation.libelle.empty()) operation.libelle = o.numero;
    if (!m_lecture.Place(o.rang)) return;
    AjouteOperation(m_lecture, m_lecture.Compte(m_compte, {}), operation, *centimes);
  }

  LectureReleve& m_lecture;
  const Ecritures m_ecritures;
  Section_ m_section = Section_::Operations;
  std::string m_compte;
  EnCours m_operation;
};

}  // namespace

void LitQif(std::string_view octets, LectureReleve& lecture) {
  const std::string texte = EnWindows1252(EnUtf8(octets, DevineJeu(octets)));
  LecteurQif lecteur(lecture, Ecritures(texte));
  std::string_view reste = texte;
  u32 rang = 0;
  for (std::string_view ligne; LigneSuivante(reste, ligne);) lecteur.Ligne(++rang, ligne);
  lecteur.FinFichier(texte.ends_with('\n') || texte.ends_with('\r'));
}

}  // namespace fenlor
