// Accounts and bank operations on the engine alone.
#pragma once

#include <fstream>

#include "outils/cabinetdetest.h"
#include "outils/systemesanssynchro.h"
#include "store/moteur.h"
#include "store/qvapi.h"

namespace fenlor::test {

inline Plan Compte(const std::string& numero, const std::string& code, f64 solde = 0) {
  Plan plan{};
  PoseTexte(plan.Compte, numero);
  PoseTexte(plan.Code, code);
  plan.CreditFranc = solde;
  return plan;
}

inline Banque Operation(const std::string& compte, u32 date, f64 montant) {
  Banque banque{};
  PoseTexte(banque.Compte, compte);
  banque.Date = date;
  banque.MontantFranc = montant;
  return banque;
}

/// A practice with the accounts and the bank file open in its directory.
struct LivresDuMoteur {
  LivresDuMoteur(const std::string& dossier, FabriqueCles& cles, Systeme& systeme,
                 std::size_t reprise = 64 << 10)
      : moteur(systeme, cles, reprise), dossier(dossier) {}
  bool Ouvre() {
    if (!moteur.OuvreCabinet(dossier)) return false;
    for (const auto& [numero, nom] :
         {std::pair<u16, const char*>{FichierComptes, "COMPTES"}, {FichierBanques, "BANQUE"}}) {
      const std::string dat = dossier + "/" + nom + ".dat", idx = dossier + "/" + nom + ".idx";
      const DefinitionFichier& def = *DefinitionFichierNumero(numero);
      if (!std::filesystem::exists(dat) && !(moteur.CreeDat(numero, dat, def.taille) && moteur.Ferme(numero)))
        return false;
      if (!moteur.Ouvre(numero, dat) || !moteur.Ouvre(def.premiereCle, idx)) return false;
    }
    return true;
  }
  template <class Rec>
  Position Ajoute(u16 numero, const Rec& rec) {
    moteur.DebutUnite();
    const Position position = moteur.Ajoute(numero, &rec);
    if (position && moteur.AjouteCles(numero, position, &rec, false) && moteur.ValideUnite()) return position;
    moteur.AnnuleUnite();
    return 0;
  }
  template <class Rec>
  bool Supprime(u16 numero, Position position) {
    Rec rec;
    moteur.DebutUnite();
    if (moteur.Lit(numero, position, &rec) && moteur.SupprimeCles(numero, position, &rec) &&
        moteur.Supprime(numero, position) && moteur.ValideUnite()) {
      return true;
    }
    moteur.AnnuleUnite();
    return false;
  }
  /// Numbers in key order, each with its code: what a user would see.
  std::string Comptes() {
    std::string texte, cle;
    for (Position p = moteur.Premier(69, cle); p; p = moteur.Suivant(69, cle)) {
      Plan plan;
      if (!moteur.Lit(FichierComptes, p, &plan)) return "illisible";
      texte += LitTexte(plan.Compte) + "=" + LitTexte(plan.Code) + " ";
    }
    return texte;
  }
  Moteur moteur;
  std::string dossier;
};

}  // namespace fenlor::test
