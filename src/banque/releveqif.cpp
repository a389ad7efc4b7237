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

/// Day first unless a date of the file says otherwise: the bytes have no other word for it.
OrdreDate OrdreDesDates(std::string_view texte) {
  bool jour = true, mois = true, annee = false;
  for (std::string_view ligne; LigneSuivante(texte, ligne);) {
    if (!ligne.starts_with('D')) continue;
    const std::string_view date = ligne.substr(1);
    jour = jour && LitJour(date, OrdreDate::JourMoisAnnee) != 0;
    mois = mois && LitJour(date, OrdreDate::MoisJourAnnee) != 0;
    annee = annee || LitJour(date, OrdreDate::AnneeMoisJour) != 0;
  }
  if (jour || (!mois && !annee)) return OrdreDate::JourMoisAnnee;
  return mois ? OrdreDate::MoisJourAnnee : OrdreDate::AnneeMoisJour;
}

class LecteurQif {
 public:
  LecteurQif(LectureReleve& lecture, OrdreDate ordre) : m_lecture(lecture), m_ordre(ordre) {}

  void Ligne(u32 rang, std::string_view ligne) {
    assert(rang > 0);
    if (ligne.size() > LigneReleveMax) return m_lecture.Plainte(rang, PlainteLigneLongue);
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
    operation.date = LitJour(o.date, m_ordre);
    if (operation.date == 0) return m_lecture.Plainte(o.rang, PlainteDate, {LibelleNet(o.date)});
    const auto centimes = LitCentimes(o.montant);
    if (!centimes) return m_lecture.Plainte(o.rang, PlainteMontant, {LibelleNet(o.montant)});
    if (CompareSansCasse(LibelleNet(o.tiers), "Opening Balance") == 0)
      return m_lecture.Plainte(o.rang, PlainteSoldeInitial);
    operation.libelle = LibelleDe({o.tiers, o.memo});
    if (operation.libelle.empty()) operation.libelle = o.numero;
    if (!m_lecture.Place(o.rang)) return;
    AjouteOperation(m_lecture, m_lecture.Compte(m_compte, {}), operation, *centimes);
  }

  LectureReleve& m_lecture;
  OrdreDate m_ordre;
  Section_ m_section = Section_::Operations;
  std::string m_compte;
  EnCours m_operation;
};

}  // namespace

void LitQif(std::string_view octets, LectureReleve& lecture) {
  const std::string texte = EnWindows1252(EnUtf8(octets, DevineJeu(octets)));
  LecteurQif lecteur(lecture, OrdreDesDates(texte));
  std::string_view reste = texte;
  u32 rang = 0;
  for (std::string_view ligne; LigneSuivante(reste, ligne);) lecteur.Ligne(++rang, ligne);
  lecteur.FinFichier(texte.ends_with('\n') || texte.ends_with('\r'));
}

}  // namespace fenlor
