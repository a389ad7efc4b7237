// The books as a bookkeeper would keep them on paper: entries with their lines,
// in memory, everything else summed up from them whenever it is asked. Amounts
// are whole cents, Franc first. It shares nothing with the store but the records.
#pragma once

#include <array>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "store/enregistrements.h"

namespace fenlor {

using Cents = std::array<i64, 2>;

inline Cents operator+(const Cents& a, const Cents& b) { return {a[0] + b[0], a[1] + b[1]}; }
inline Cents operator-(const Cents& a, const Cents& b) { return {a[0] - b[0], a[1] - b[1]}; }

struct TresorModele {
  std::string compte;
  Cents montant{};
  i16 mode = 0;
  bool rapprochee = false, pointee = false, remise = false;
};

/// What a form would hand to the store.
struct SaisieModele {
  i16 journal = 1, genre = GenreSimple;
  std::string libelle, piece, tiers, compte, comptePerso, compteTaxe;
  u32 ligne = 0, date = 0, lienId = 0;
  i32 lienA = 0;
  bool euro = false, validee = false, pointee = false;
  Cents total{}, part{}, taxe{};
  f64 taux = 0;
  std::vector<TresorModele> tresor;
};

struct LigneModele {
  i16 journal = 0, genre = 0, typeCompte = 0, mode = 0;
  std::string libelle, piece, tiers, designation, compte, principal, compteTaxe, rappCompte, rappLibelle;
  u32 ligne = 0, date = 0, dateLigne = 0, lienId = 0, dateRemise = 0, rappDate = 0, rappDateValeur = 0;
  i32 lienA = 0;
  int role = 0;
  Cents montant{}, rapp{};
  f64 taux = 0;
  bool credit = false, euro = false, validee = false, pointee = false, rapprochee = false, remise = false,
       rappCredit = false;

  bool operator==(const LigneModele&) const = default;
};

struct EcritureModele {
  SaisieModele saisie;
  std::vector<LigneModele> lignes;  ///< index: `Rang`
};

struct CompteModele {
  i16 type = 0;
  bool bancaire = false;
};

/// Perso, TVA, credit, debit, reconciled credit, reconciled debit.
using TotauxModele = std::array<Cents, 6>;

class ModeleLivres {
 public:
  std::map<std::string, CompteModele> comptes;
  std::map<u32, EcritureModele> ecritures;
  std::string comptePerso;

  std::vector<LigneModele> Deplie(const SaisieModele& s) const {
    std::vector<LigneModele> lignes;
    const bool recette = s.journal == 1;
    const auto ajoute = [&](int role, const std::string& compte, Cents m) -> LigneModele* {
      if (m[0] == 0 && m[1] == 0) return nullptr;
      LigneModele l;
      l.journal = s.journal;
      l.genre = s.genre;
      l.libelle = s.libelle;
      l.piece = s.piece;
      l.tiers = s.tiers;
      l.ligne = s.ligne;
      l.date = l.dateLigne = s.date;
      l.lienId = s.lienId;
      l.lienA = s.lienA;
      l.euro = s.euro;
      l.validee = s.validee;
      l.pointee = s.pointee;
      l.taux = s.taux;
      l.principal = s.compte;
      l.compteTaxe = s.compteTaxe;
      l.role = role;
      l.compte = compte;
      l.designation = "Compte " + compte;
      l.typeCompte = comptes.at(compte).type;
      const bool negatif = s.euro ? (m[1] ? m[1] < 0 : m[0] < 0) : (m[0] ? m[0] < 0 : m[1] < 0);
      const bool credit = role == RoleTresorerie ? !recette : recette;
      l.credit = negatif ? !credit : credit;
      l.montant = {std::abs(m[0]), std::abs(m[1])};
      lignes.push_back(l);
      return &lignes.back();
    };
    ajoute(RoleCompte, s.compte, s.part - s.taxe);
    ajoute(RoleTva, s.compteTaxe, s.taxe);
    ajoute(RolePerso, s.comptePerso.empty() ? comptePerso : s.comptePerso, s.total - s.part);
    for (const TresorModele& t : s.tresor) {
      LigneModele* l = ajoute(RoleTresorerie, t.compte, t.montant);
      if (!l) continue;
      l->mode = t.mode;
      l->rapprochee = t.rapprochee;
      l->remise = t.remise;
      l->pointee = s.pointee || t.pointee;
    }
    return lignes;
  }

  /// Lines of a changed entry: those that persist keep their marks.
  std::vector<LigneModele> Change(const std::vector<LigneModele>& avant, const SaisieModele& s) const {
    std::vector<LigneModele> apres = Deplie(s), restantes = avant;
    bool pointee = false;
    for (const LigneModele& l : avant) pointee = pointee || l.pointee;
    for (LigneModele& l : apres) {
      LigneModele marques;
      marques.pointee = pointee;
      for (std::size_t i = 0; i < restantes.size(); ++i) {
        if (restantes[i].compte == l.compte && restantes[i].credit == l.credit) {
          marques = restantes[i];
          restantes.erase(restantes.begin() + static_cast<std::ptrdiff_t>(i));
          break;
        }
      }
      l.pointee = marques.pointee;
      l.remise = marques.remise;
      l.dateRemise = marques.dateRemise;
      l.rapprochee = marques.rapprochee;
      l.rappCompte = marques.rappCompte;
      l.rappLibelle = marques.rappLibelle;
      l.rappDate = marques.rappDate;
      l.rappDateValeur = marques.rappDateValeur;
      l.rapp = marques.rapp;
      l.rappCredit = marques.rappCredit;
    }
    return apres;
  }

  std::map<std::string, TotauxModele> Totaux() const {
    std::map<std::string, TotauxModele> totaux;
    for (const auto& [numero, compte] : comptes) totaux[numero] = {};
    for (const auto& [mouvement, ecriture] : ecritures) {
      for (const LigneModele& l : ecriture.lignes) {
        TotauxModele& t = totaux[l.compte];
        Cents& cote = t[l.credit ? 2 : 3];
        cote = cote + l.montant;
        if (l.rapprochee) t[l.credit ? 4 : 5] = t[l.credit ? 4 : 5] + l.montant;
        if (l.role != RoleTva && l.role != RolePerso) continue;
        const i16 type = comptes.at(l.principal).type;
        if (type != Recette && type != Depense) continue;
        Cents& part = totaux[l.principal][l.role == RolePerso ? 0 : 1];
        part = l.credit ? part + l.montant : part - l.montant;
      }
    }
    return totaux;
  }

  u32 MouvementLibre() const { return ecritures.empty() ? 1 : ecritures.rbegin()->first + 1; }

  u32 LigneLibre(i16 journal, u32 date) const {
    u32 haute = 0;
    for (const auto& [mouvement, ecriture] : ecritures) {
      for (const LigneModele& l : ecriture.lignes) {
        if (l.journal == journal && l.date >> 8 == date >> 8 && l.ligne > haute) haute = l.ligne;
      }
    }
    return haute + 1;
  }

  Statistiques Compte() const {
    Statistiques s{};
    for (const auto& [mouvement, ecriture] : ecritures) {
      bool validee = true, pointee = false, attend = false;
      for (const LigneModele& l : ecriture.lignes) {
        validee = validee && l.validee;
        pointee = pointee || l.pointee;
        if (!l.rapprochee && comptes.at(l.compte).bancaire) attend = true;
        if (l.rapprochee) ++s.NbRapprochees;
        if (l.remise) ++s.NbRemises;
      }
      const i16 journal = ecriture.lignes.front().journal;
      if (journal == 1) ++s.NbRecettes;
      if (journal == 2) ++s.NbDepenses;
      if (journal == 3) ++s.NbOD;
      s.NbValidees += validee;
      s.NbPointees += pointee;
      s.NbNonRapprochees += attend;
    }
    return s;
  }
};

}  // namespace fenlor
